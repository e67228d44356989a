#include "FileHeader.h"

#include <limits>

#include "CalendarDate.h"
#include "HexDump.h"

namespace zel {
namespace {

TEST(FileHeader, SectionsFollowFlags) {
    const struct {
        std::int32_t flags;
        std::string sections;
    } cases[] = {
        {0, ""},
        {FileHeader::kProgramVersionFlag, "02 'P1' 00*8"},
        {FileHeader::kWriterVersionsFlag, "02 'C1' 00*18 02 'M1' 00*18"},
        {0x7fffffff, "02 'P1' 00*8 02 'C1' 00*18 02 'M1' 00*18"},
    };
    for (const auto& c : cases) {
        FileHeader header;
        header.image.Flags = c.flags;
        header.image.ProgramVersionSignature.Put("P1");
        header.image.CreatedByVersion.Put("C1");
        header.image.ModifiedByVersion.Put("M1");
        const std::string bytes = Written(header);
        EXPECT_TRUE(SameBytes(Hex(c.sections), bytes.substr(54)));
        FileHeader back;
        EXPECT_EQ(ReadFrom(back, bytes + "rest"), 4u);
        EXPECT_TRUE(SameBytes(bytes, Written(back)));
    }
}

TEST(FileHeader, ReadAddsTheFlagsThatItsKindImplies) {
    const struct {
        int type, version, flags, added;
    } cases[] = {{5, 4, 0, 0},         {5, 5, 0, 0x110}, {5, 255, 1, 0x110},
                 {1, 20, 0, 0},        {1, 21, 0, 0x10}, {1, 22, 0, 0x110},
                 {1, 21, 0x100, 0x10}, {0, 22, 0, 0},    {2, 255, 0x20, 0}};
    for (const auto& c : cases) {
        FileHeader header;
        header.image.Type = static_cast<std::uint8_t>(c.type);
        header.SetVersion(c.version);
        header.image.Flags = c.flags;
        const std::string bytes = Written(header);
        EXPECT_EQ(bytes.size(), c.flags & 0x100 ? 96u : 54u) << "writing adds none";
        FileHeader back;
        EXPECT_EQ(ReadFrom(back, bytes + std::string(107, '\0')),
                  107u - 11 * (c.added >> 4 & 1) - 42 * (c.added >> 8));
        EXPECT_EQ(back.image.Flags, c.flags | c.added) << c.type << ' ' << c.version;
        EXPECT_EQ(back.GetVersion(), c.version);
    }
}

TEST(FileHeader, VersionIsMirroredInItsByte) {
    FileHeader header;
    EXPECT_EQ(header.GetVersion(), 0);
    header.SetVersion(0x1234567);
    EXPECT_EQ(header.GetVersion(), 0x1234567);
    EXPECT_EQ(header.image.FileVersion, 0x67);
    FileHeader copy;
    copy = header;
    EXPECT_EQ(copy.GetVersion(), 0x1234567);
}

TEST(FileHeader, ShortReadKeepsTheBytesBehind) {
    FileHeader header;
    header.image.FileVersion = 5;
    header.image.Type = 5;
    header.image.Flags = 0;
    EXPECT_EQ(ReadFrom(header, Hex("02 'AB' ee*8 01 00")), 0u);
    EXPECT_TRUE(SameBytes(Hex("02 'AB' 00 ee*7 01 10 01 00 00 05 05 00*89"), Written(header)));
    EXPECT_EQ(header.GetVersion(), 5);
}

TEST(FileHeader, NormalizeEndsEachCountedText) {
    const struct {
        std::size_t offset, largest, last;
    } fields[] = {{0, 9, 10}, {54, 9, 64}, {65, 19, 85}, {86, 19, 106}};
    for (const auto& field : fields) {
        for (const std::size_t count :
             {std::size_t{0}, std::size_t{1}, field.largest, field.largest + 1, std::size_t{255}}) {
            FileHeader header;
            auto* bytes = reinterpret_cast<char*>(&header.image);
            std::fill_n(bytes, sizeof header.image, '\xee');
            bytes[field.offset] = static_cast<char>(count);
            std::string expected(bytes, sizeof header.image);
            expected[count >= 1 && count <= field.largest ? field.offset + 1 + count : field.last] = '\0';
            for (const auto& other : fields)
                if (other.offset != field.offset) expected[other.last] = '\0';
            header.Normalize();
            EXPECT_TRUE(SameBytes(expected, {bytes, sizeof header.image})) << field.offset << ' ' << count;
        }
    }
}

// Day 0 and second 0 stand for the file's date: not even a file of 2001 becomes version 2.
TEST(FileHeader, VersionOneStays) {
    FileHeader header;
    header.SetVersion(1);
    header.image.ModifiedDate = 146600;
    FileHeader back;
    ReadFrom(back, Written(header));
    EXPECT_EQ(back.GetVersion(), 1);
    EXPECT_EQ(back.image.FileVersion, 1);
}

TEST(FileHeader, TicksOfDaysAndSeconds) {
    EXPECT_EQ(FileHeader::DateTimeToFileTime(0, 0), -316224000000000);
    EXPECT_EQ(FileHeader::DateTimeToFileTime(366, 1), 10000000);
    EXPECT_EQ(FileHeader::DateTimeToFileTime(367, -1), 864000000000 - 10000000);
    const struct {
        std::int64_t ticks;
        std::int32_t day, seconds;
    } cases[] = {{0, 366, 0},
                 {-1, 365, 86399},
                 {864000000000 - 1, 366, 86399},
                 {864000000000, 367, 0},
                 {-316224000000000, 0, 0},
                 {std::numeric_limits<std::int64_t>::min(), -10674834, 76314}};
    for (const auto& c : cases) {
        const FileHeader::DateTime time = FileHeader::FileTimeToDateTime(c.ticks);
        EXPECT_EQ(time.day, c.day) << c.ticks;
        EXPECT_EQ(time.seconds, c.seconds) << c.ticks;
    }
}

TEST(CalendarDate, OfDaysSince1601) {
    const struct {
        std::int64_t day;
        int year, month, dayOfMonth;
    } cases[] = {{0, 1601, 1, 1},      {58, 1601, 2, 28},    {59, 1601, 3, 1},      {364, 1601, 12, 31},
                 {36217, 1700, 2, 28}, {36218, 1700, 3, 1},  {145790, 2000, 2, 29}, {145791, 2000, 3, 1},
                 {146097, 2001, 1, 1}, {134774, 1970, 1, 1}, {-1, 0, 0, 0},         {10675199, 30828, 9, 14}};
    for (const auto& c : cases) {
        const CalendarDate date = CalendarDateOf(c.day * 864000000000);
        EXPECT_EQ(date.year, c.year) << c.day;
        EXPECT_EQ(date.month, c.month) << c.day;
        EXPECT_EQ(date.day, c.dayOfMonth) << c.day;
    }
}

}  // namespace
}  // namespace zel
