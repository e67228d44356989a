// What area and auxiliary records do beside passing their fields.

#include "AreaRecord.h"
#include "AuxiliaryRecord.h"
#include "HexDump.h"

namespace zel {
namespace {

struct CodeCase {
    int version;
    const char* bytes;
    const char* code;
};

TEST(AreaRecord, ReadsTheCodesOfOldVersions) {
    const CodeCase cases[] = {
        {6, "01 00", "GLA1"},
        {6, "0A 00", "GLA0"},
        {0, "14 00", "GBA0"},
        {6, "16 00", "P/P"},
        {6, "1D 00", "WIN"},
        {6, "00 00", "old"},
        {6, "1E 00", "old"},
        {6, "01 01", "old"},
        {6, "01", "old"},
        {7, "03 'GAR' 00 00", "GAR"},
        {7, "02 'GARXY'", "GA"},
        {7, "05 'GLA1X'", "GLA1X"},
        {7, "09 'GLA1X'", "GLA1X"},
        {7, "80 'GLA1X'", "GLA1X"},
        {7, "FF 'GL' 00 '1X'", "GL"},
        {7, "00 'GLA1X'", ""},
        {7, "", ""},
        {8, "00 01 'G'", "G"},
        {8, "06 00", "old"},
        {8, "06 03 'A' 00 'B'", "A"},
    };
    for (const CodeCase& c : cases) {
        AreaRecord record;
        record.SetVersion(c.version);
        record.AreaCode.text = "old";
        ReadFrom(record, Hex(c.bytes));
        EXPECT_EQ(record.AreaCode.text, c.code) << c.version << ": " << c.bytes;
    }
}

TEST(AreaRecord, WritesTheCodesOfOldVersions) {
    const std::string long128(128, 'c'), long256(256, 'c'), long258(258, 'c');
    const CodeCase cases[] = {
        {6, "19 00", "SITE"},
        {6, "00 00", "Site"},
        {6, "00 00", ""},
        {0, "0A 00", "GLA0"},
        {7, "05 'GLA1X'", "GLA1XY"},
        {7, "00*6", ""},
        {7, "03 'GAR' 00 00", "GAR"},
        {7, "05 'ccccc'", long128.c_str()},
        {7, "00*6", long256.c_str()},
        {7, "02 'cc' 00*3", long258.c_str()},
    };
    for (const CodeCase& c : cases) {
        AreaRecord record;
        record.SetVersion(c.version);
        record.AreaCode.text = c.code;
        const std::string expected = Hex(c.bytes);
        EXPECT_TRUE(SameBytes(expected, Written(record).substr(0, expected.size()))) << c.code;
    }
}

struct LinkCase {
    int version;
    std::uint16_t inFile;
    std::uint16_t inMemory;
    std::uint16_t written;
};

TEST(AreaRecord, HasZeroForNoLinkUpToVersion10) {
    for (const LinkCase& c : {LinkCase{10, 0, 0xFFFF, 0},
                              {10, 0xFFFF, 0xFFFF, 0},
                              {10, 7, 7, 7},
                              {11, 0, 0, 0},
                              {11, 0xFFFF, 0xFFFF, 0xFFFF}}) {
        constexpr std::size_t kOffset = 2 + 1 + 40;
        AreaRecord record;
        record.SetVersion(c.version);
        std::string bytes = Hex("06 00 00*41");
        bytes += {static_cast<char>(c.inFile), static_cast<char>(c.inFile >> 8)};
        ReadFrom(record, bytes);
        EXPECT_EQ(record.LinkIndex, c.inMemory);
        const std::string written = Written(record);
        EXPECT_EQ(static_cast<std::uint8_t>(written[kOffset]), c.written & 0xFF);
        EXPECT_EQ(record.LinkIndex, c.inMemory);
    }
}

std::vector<std::uint32_t> MembersOf(const AreaRecord& record) {
    return {record.MemberIndices.begin(), record.MemberIndices.end()};
}

TEST(AreaRecord, CountsMembersFromOneInFilesOfVersion24) {
    using Values = std::vector<std::uint32_t>;
    AreaRecord record;
    record.SetVersion(24);
    for (const std::uint32_t value : {0, 4}) record.MemberIndices.Append() = value;
    const std::string bytes = Written(record);
    EXPECT_NE(bytes.find(Hex("01 01 00 00 00 05 00 00 00 00")), std::string::npos);
    EXPECT_EQ(MembersOf(record), (Values{0, 4}));
    AreaRecord again;
    again.SetVersion(24);
    again.MemberIndices.Append() = 9;
    EXPECT_EQ(ReadFrom(again, bytes), 0u);
    EXPECT_EQ(MembersOf(again), (Values{0, 4}));
    // Versions 22 and 23 have one, as it is, and put it behind those already there.
    again.SetVersion(23);
    const std::string one = Written(again);
    ReadFrom(again, one);
    EXPECT_EQ(MembersOf(again), (Values{0, 4, 0}));
    again.MemberIndices.Clear();
    EXPECT_TRUE(SameBytes(one, Written(again)));
}

TEST(AreaRecord, CopiesAllButPlaceholders) {
    AreaRecord record;
    record.SetVersion(5);
    record.Placeholders.Resize(2);
    record.MemberIndices.Resize(2);
    AreaRecord copy(record);
    EXPECT_TRUE(copy.Placeholders.empty());
    EXPECT_EQ(copy.MemberIndices.size(), 2u);
    EXPECT_EQ(copy.GetVersion(), 5);
}

TEST(AuxiliaryRecord, CutsValuesToTheWidthOfTheVersion) {
    AuxiliaryRecord record;
    record.SetVersion(20);
    record.AuxValue1 = 70000;
    record.AuxValue2 = -2;
    EXPECT_TRUE(SameBytes(Hex("70 11 FE FF"), Written(record).substr(1 + 2 + 4 + 16, 4)));
}

}  // namespace
}  // namespace zel
