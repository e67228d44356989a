#include "FileHeader.h"

#include <cstdint>

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
    header.SetVersion(0x1234567);
    EXPECT_EQ(header.image.FileVersion, 0x67);
    EXPECT_EQ(FileHeader(header).GetVersion(), 0x1234567);
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
        std::string image, normalized;
    } cases[] = {
        {"09 ee*10 ff*43 00 ee*10 13 ee*20 14 ee*20", "09 ee*9 00 ff*43 00 ee*9 00 13 ee*19 00 14 ee*19 00"},
        {"0a ee*10 ff*43 01 ee*10 00 ee*20 01 ee*20",
         "0a ee*9 00 ff*43 01 ee 00 ee*8 00 ee*19 00 01 ee 00 ee*18"},
        {"01 ee*10 ff*43 ff ee*10 02 ee*20 ff ee*20",
         "01 ee 00 ee*8 ff*43 ff ee*9 00 02 ee*2 00 ee*17 ff ee*19 00"},
    };
    for (const auto& c : cases) {
        FileHeader header;
        EXPECT_EQ(ReadFrom(header, Hex(c.image)), 0u);
        EXPECT_TRUE(SameBytes(Hex(c.normalized), Written(header)));
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
    } cases[] = {{864000000000 - 1, 366, 86399},
                 {864000000000, 367, 0},
                 {-1, 365, 86399},
                 {INT64_MIN, -10674834, 76314}};
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
    } cases[] = {{0, 1601, 1, 1},        {36217, 1700, 2, 28}, {36218, 1700, 3, 1},     {145790, 2000, 2, 29},
                 {146096, 2000, 12, 31}, {-1, 0, 0, 0},        {10675199, 30828, 9, 14}};
    for (const auto& c : cases) {
        const CalendarDate date = CalendarDateOf(c.day * 864000000000);
        EXPECT_EQ(date.year, c.year) << c.day;
        EXPECT_EQ(date.month, c.month) << c.day;
        EXPECT_EQ(date.day, c.dayOfMonth) << c.day;
    }
}

}  // namespace
}  // namespace zel
