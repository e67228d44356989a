// What entities and style groups do beside passing their fields.

#include "HexDump.h"
#include "zel/drawing/Kind13Geometry.h"
#include "SmallStack.h"
#include "zel/drawing/StyleAttributeRecord.h"

namespace zel {
namespace {

TEST(StyleReference, IsAKeywordOrANameAndInGroupsMayBeNothing) {
    const auto expect = [](std::string inEntity, std::string written, std::string inGroup,
                           std::string writtenInGroup) {
        EntityRecord entity;
        ReadFrom(entity, Hex("00*58 " + inEntity + ' ' + inEntity + " 34 12"));
        EXPECT_TRUE(SameBytes(Hex("00*58 " + written + ' ' + written + " 34 12"), Written(entity)));
        StyleAttributeRecord group;
        group.GroupStyle.Put("old");
        ReadFrom(group, Hex("20 62*32 99 98 97" + inGroup + " 11*16 00 00 00"));
        EXPECT_TRUE(SameBytes(Hex("1F 62*31 06 01 97" + writtenInGroup + " 11*16 00 00 00"), Written(group)));
        EXPECT_EQ(group.GroupAttributeCopy, 0x97);
    };
    for (const char* same : {"FF", "FE", "FD", "00 02 's1'"}) expect(same, same, same, same);
    expect("00 07 'BYLAYER'", "FF", "00 07 'BYLAYER'", "FF");
    expect("00 07 'BYBLOCK'", "FE", "00 07 'BYBLOCK'", "FE");
    expect("00 02 'S1'", "FD", "00 03 'S1' 00", "FD");
    expect("00 00", "00 00", "00 00", "00 03 'old'");
    expect("01 01 'x'", "00 01 'x'", "01", "00 03 'old'");
    expect("FC 01 'x'", "00 01 'x'", "FC", "00 03 'old'");
    expect("00 FF 61*255", "00 1F 61*31", "00 FF 61*255", "00 23 61*35");
}

EntityRecord EntityOf(std::int32_t kind, std::int32_t version, const std::string& behindStyles) {
    EntityRecord record;
    record.EntityKind = kind;
    record.SetVersion(version);
    EXPECT_EQ(ReadFrom(record, Hex("00*62 " + behindStyles)), 0u);
    return record;
}

TEST(EntityRecord, LowersItsOrderWithEachSaveUpToVersion2) {
    const auto expectSaves = [](int version, const char* read, const char* first, const char* second) {
        EntityRecord record = EntityOf(0, version, read);
        EXPECT_TRUE(SameBytes(Hex(first), Written(record).substr(62)));
        EXPECT_TRUE(SameBytes(Hex(second), Written(record).substr(62)));
    };
    expectSaves(2, "05 00", "05 00", "04 00");
    expectSaves(2, "FF FF", "00 00", "00 00");
    expectSaves(0, "00 00", "00 00", "00 00");
    EXPECT_EQ(EntityOf(0, 2, "00 00").OrderIndex, 0);
}

TEST(EntityRecord, GeometryAndWhatItNestsKeepTheVersionTheyWereReadWith) {
    EntityRecord old = EntityOf(1, 16, "05 00"), young = EntityOf(1, 17, "21*40 05 00"), copy;
    old.SetVersion(26);
    young.SetVersion(3);
    copy = young;
    EXPECT_TRUE(SameBytes(Hex("00*62 05 00"), Written(old)));
    EXPECT_TRUE(SameBytes(Hex("00*62 21*40 05 00"), Written(copy)));
    const std::string nested = "00*18 00 01 00 00 00 00*62 ";
    EntityRecord group = EntityOf(13, 2, nested + "05 00 05 00");
    group.SetVersion(26);
    group.Nested()->OmitWhenEmpty = true;
    copy = group;
    EXPECT_EQ(copy.Geometry->GetVersion(), 2);
    EXPECT_EQ(copy.Nested()->begin()->GetVersion(), 2);
    EXPECT_TRUE(SameBytes(Hex("00*62 " + nested + "05 00 06 00"), Written(copy)));
    EXPECT_TRUE(SameBytes(Hex(nested + "04 00"), Written(*copy.Geometry))) << "by itself";
    copy.Nested()->Clear();
    EXPECT_TRUE(SameBytes(Hex("00*18 01"), Written(*copy.Geometry)));
}

const std::string kGroup = Hex("0D 00 00*58 00*4 00*18");

TEST(EntityRecord, ListsThatLieAboutTheirCountsCostLittle) {
    // Each of 100 levels claims 32767 entities, and the file ends in the deepest.
    std::string bytes;
    for (int i = 0; i < 100; ++i) bytes += Hex("00 FF 7F") + kGroup;
    TypedRecordList<EntityRecord> list;
    ReadFrom(list, bytes);
    std::size_t total = 0;
    for (auto* at = &list; at && !at->empty(); at = at->begin()->Nested()) total += at->size();
    EXPECT_GE(total, 32767u);
    EXPECT_LT(total, 70000u);
}

TEST(EntityRecord, ManyLevelsNeedNoStack) {
    std::string opening, closing = Hex("00 00 00"), written;
    for (int i = 0; i < kManyLevels; ++i) opening += Hex("00 01 00") + kGroup, closing += Hex("07 00");
    OnSmallStack([&] {
        TypedRecordList<EntityRecord> list;
        list.SetVersion(26);
        ReadFrom(list, opening + closing);
        TypedRecordList<EntityRecord> copy(list);
        list.Clear();
        written = Written(copy);
        EntityRecord entity;
        entity = *copy.begin();
        copy.begin()->Geometry.reset();
    });
    EXPECT_TRUE(written == opening + closing);
}

}  // namespace
}  // namespace zel
