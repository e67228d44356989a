#include "DefinitionRecord.h"

#include "HexDump.h"

namespace zel {
namespace {

TEST(DefinitionRecord, FieldsArePresentFromTheirVersion) {
    const char* const behindBlock[] = {
        "", "", "09", "09 06 01 'S'", "09 06 01 'S'", "09 06 01 'S'", "09 06 01 'S'"};
    for (int v = 0; v <= 6; ++v) {
        DefinitionRecord record;
        record.SetVersion(v);
        record.AreaCode.text = "GLA1";
        record.block.Multiplier = 1.0;
        record.block.FillPattern = 0x1234;
        record.block.DimensionType = 7;
        record.Hidden = 9;
        record.SubtractAreaCode.text = "S";
        const std::string bytes =
            Hex(std::string("06 04 'GLA1' 00*6 f0 3f 00*92 34 12 00*6 07") + behindBlock[v] + "01 00");
        EXPECT_TRUE(SameBytes(bytes, Written(record))) << "version " << v;
        DefinitionRecord back;
        back.SetVersion(v);
        EXPECT_EQ(ReadFrom(back, bytes + "rest"), 4u);
        EXPECT_EQ(back.Hidden, v >= 2 ? 9 : 0);
        EXPECT_EQ(back.SubtractAreaCode.text, v >= 3 ? "S" : "");
        EXPECT_TRUE(SameBytes(bytes, Written(back))) << "version " << v;
    }
}

TEST(DefinitionRecord, NormalizeEndsEachCountedText) {
    const struct {
        const char* block;
        const char* normalized;
    } cases[] = {
        {"ee*9 00 ee*20 01 ee*20 ee*16 1f ee*32 ee*9",
         "ee*9 00 ee*19 00 01 ee 00 ee*18 ee*16 1f ee*31 00 ee*9"},
        {"ee*9 13 ee*20 14 ee*20 ee*16 20 ee*32 ee*9", "ee*9 13 ee*19 00 14 ee*19 00 ee*16 20 ee*31 00 ee*9"},
        {"ee*9 01 ee*20 ff ee*20 ee*16 01 ee*32 ee*9",
         "ee*9 01 ee 00 ee*18 ff ee*19 00 ee*16 01 ee 00 ee*30 ee*9"},
    };
    for (const auto& c : cases) {
        DefinitionRecord record;
        ReadFrom(record, Hex(std::string("06 00") + c.block + "01 00"));
        EXPECT_TRUE(
            SameBytes(Hex(c.normalized), {reinterpret_cast<char*>(&record.block), sizeof record.block}));
    }
}

TEST(CountedText, TextEndsInsideTheField) {
    CountedText<21> text{25, {}};
    std::fill_n(text.characters, 20, 'x');
    EXPECT_EQ(text.Text(), std::string(20, 'x'));
    text.Normalize();
    EXPECT_EQ(text.Text(), std::string(19, 'x'));
    text.Put("AB");
    EXPECT_TRUE(SameBytes(Hex("02 'AB' 00 'x'*16 00"), {reinterpret_cast<char*>(&text), sizeof text}));
    text.Put(std::string(40, 'y'));
    EXPECT_TRUE(SameBytes(Hex("13 'y'*19 00"), {reinterpret_cast<char*>(&text), sizeof text}));
}

TEST(ShortString, Reads) {
    const struct {
        const char* bytes;
        std::string text;
        std::size_t left;
    } cases[] = {
        {"06 00 'X'", "OLD", 1}, {"ff 02 'ABX'", "AB", 1}, {"06 03 'A' 00 'BX'", "A", 1},
        {"06 03", "", 0},        {"06 03 'AB'", "AB", 0},  {"06", "OLD", 0},
        {"", "OLD", 0},          {"06 01 00", "", 0},      {"06 ff 'y'*256", std::string(255, 'y'), 1}};
    for (const auto& c : cases) {
        ShortString string;
        string.text = "OLD";
        std::istringstream stream(Hex(c.bytes));
        string.Read(stream);
        EXPECT_EQ(string.text, c.text) << c.bytes;
        EXPECT_EQ(static_cast<std::size_t>(stream.rdbuf()->in_avail()), c.left) << c.bytes;
    }
}

TEST(ShortString, LongTextWritesItsLengthsLowByte) {
    ShortString string;
    string.text.assign(259, 'x');
    std::ostringstream stream;
    string.Write(stream);
    EXPECT_TRUE(SameBytes(Hex("06 03 'x'*259"), stream.str()));
}

TEST(DefinitionList, MembersStandBetweenTheirOwnMarkers) {
    const std::string leaf = "06 00 00*109 00 06 00 01 00";
    const std::string bytes = Hex("07 06 00 00*109 00 06 00 aa" + leaf + leaf + "00" + leaf + "00");
    DefinitionList list;
    list.SetVersion(3);
    list.Append();
    EXPECT_EQ(ReadFrom(list, bytes + "rest"), 4u);
    ASSERT_EQ(list.Elements().size(), 2u);
    EXPECT_EQ(list.Elements().front().Members.Elements().size(), 2u);
    EXPECT_TRUE(
        SameBytes(Hex("01 06 00 00*109 00 06 00 01" + leaf + leaf + "00" + leaf + "00"), Written(list)));
}

TEST(DefinitionList, SetVersionReachesEveryDepth) {
    DefinitionList list;
    DefinitionRecord& inner = list.Append().Members.Append().Members.Append();
    list.SetVersion(4);
    EXPECT_EQ(inner.GetVersion(), 4);
    EXPECT_EQ(inner.Members.GetVersion(), 4);
    EXPECT_EQ(inner.Members.Append().GetVersion(), 4);
    DefinitionRecord copy = list.Elements().front();
    copy.SetVersion(2);
    EXPECT_EQ(copy.Members.Elements().front().Members.Elements().front().GetVersion(), 2);
    EXPECT_EQ(inner.GetVersion(), 4);
}

TEST(DefinitionList, EachRecordIsWrittenByItsOwnVersion) {
    DefinitionList list;
    list.SetVersion(3);
    list.Append().Members.Elements().emplace_back();
    list.Append();
    const std::string bytes =
        "01 06 00 00*109 00 06 00 01  06 00 00*109 01 00  00  06 00 00*109 00 06 00 01 00  00";
    EXPECT_TRUE(SameBytes(Hex(bytes), Written(list)));
}

TEST(DefinitionRecord, AMemberCanReplaceItsOwner) {
    DefinitionRecord record;
    record.SetVersion(2);
    DefinitionRecord& member = record.Members.Append();
    member.AreaCode.text = "GBA1";
    member.block.AreaName.count = 1;
    std::fill_n(member.block.AreaName.characters, 20, 'x');
    member.Members.Append().AreaCode.text = "GBA2";
    record = member;
    EXPECT_EQ(record.AreaCode.text, "GBA1");
    EXPECT_EQ(record.block.AreaName.characters[1], '\0') << "a copy is normalized";
    ASSERT_EQ(record.Members.Elements().size(), 1u);
    EXPECT_EQ(record.Members.Elements().front().AreaCode.text, "GBA2");
}

}  // namespace
}  // namespace zel
