// What area records do beside passing their fields.

#include <gmock/gmock.h>

#include "AreaRecord.h"
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
        {6, "0A 00", "GLA0"},         {0, "14 00", "GBA0"},
        {6, "16 00", "P/P"},          {6, "1D 00", "WIN"},
        {6, "00 00", "old"},          {6, "1E 00", "old"},
        {6, "01 01", "old"},          {7, "03 'GAR' 00 00", "GAR"},
        {7, "05 'GLA1X'", "GLA1X"},   {7, "09 'GLA1X'", "GLA1X"},
        {7, "80 'GLA1X'", "GLA1X"},   {7, "FF 'GL' 00 '1X'", "GL"},
        {7, "00 'GLA1X'", ""},        {7, "", ""},
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
        {0, "0A 00", "GLA0"},
        {7, "05 'GLA1X'", "GLA1XY"},
        {7, "00*6", ""},
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

TEST(AreaRecord, HasZeroForNoLinkUpToVersion10) {
    const std::string before = Hex("06 00 00*41"), after = Hex("00*3 06 00 00 00 00 00 00 00 01 00");
    AreaRecord record;
    record.SetVersion(10);
    ReadFrom(record, before + Hex("FF FF") + after);
    EXPECT_TRUE(SameBytes(before + Hex("00 00") + after, Written(record)));
    EXPECT_EQ(record.LinkIndex, AreaRecord::kNoLink);
    ReadFrom(record, before + Hex("00 00") + after);
    EXPECT_EQ(record.LinkIndex, AreaRecord::kNoLink);
    record.SetVersion(11);
    ReadFrom(record, before + Hex("00 00") + after);
    EXPECT_EQ(record.LinkIndex, 0);
}

TEST(AreaRecord, CountsMembersFromOneInFilesOfVersion24) {
    const auto members = [](const AreaRecord& record) {
        return std::vector<std::uint32_t>(record.MemberIndices.begin(), record.MemberIndices.end());
    };
    AreaRecord record;
    record.SetVersion(24);
    for (const std::uint32_t value : {0, 4}) record.MemberIndices.Append() = value;
    const std::string bytes = Written(record);
    EXPECT_NE(bytes.find(Hex("01 01 00 00 00 05 00 00 00 00")), std::string::npos);
    EXPECT_THAT(members(record), testing::ElementsAre(0, 4));
    EXPECT_EQ(ReadFrom(record, bytes), 0u);
    EXPECT_THAT(members(record), testing::ElementsAre(0, 4));
    // Versions 22 and 23 have one, as it is, and put it behind those already there.
    record.SetVersion(23);
    const std::string one = Written(record);
    ReadFrom(record, one);
    EXPECT_THAT(members(record), testing::ElementsAre(0, 4, 0));
    record.MemberIndices.Clear();
    EXPECT_TRUE(SameBytes(one, Written(record)));
}

}  // namespace
}  // namespace zel
