// What entities and style groups do beside passing their fields.

#include "HexDump.h"
#include "Kind13Geometry.h"
#include "StyleAttributeRecord.h"

namespace zel {
namespace {

EntityRecord EntityOf(std::int32_t kind, std::int32_t version, const std::string& rest) {
    EntityRecord record;
    record.EntityKind = kind;
    record.SetVersion(version);
    ReadFrom(record, std::string(58, '\0') + Hex(rest));
    return record;
}

struct StyleCase {
    const char* read;
    const char* name;
    const char* written;
};

TEST(StyleReference, IsAKeywordOrAName) {
    const std::string name255 = "FF 61*255", name31 = "1F 61*31";
    const std::string read = "00 " + name255, kept(31, 'a'), written = "00 " + name31;
    const StyleCase cases[] = {
        {"FF", "BYLAYER", "FF"},
        {"FE", "BYBLOCK", "FE"},
        {"FD", "S1", "FD"},
        {"00 02 'S1'", "S1", "FD"},
        {"07 07 'bylayer'", "bylayer", "00 07 'bylayer'"},
        {"FC 01 'x'", "x", "00 01 'x'"},
        {"00 00", "", "00 00"},
        {"00 03 'a' 00 'b'", "a", "00 01 'a'"},
        {read.c_str(), kept.c_str(), written.c_str()},
    };
    for (const StyleCase& c : cases) {
        EntityRecord record = EntityOf(0, 26, c.read + (' ' + std::string(c.read)) + " 34 12");
        EXPECT_EQ(record.PrimaryStyle.Text(), c.name);
        EXPECT_EQ(record.SecondaryStyle.Text(), c.name);
        EXPECT_EQ(record.OrderIndex, 0x1234);
        EXPECT_TRUE(SameBytes(Hex(c.written + (' ' + std::string(c.written)) + " 34 12"),
                              Written(record).substr(58)));
    }
}

TEST(StyleAttributeRecord, TakesNoNameAfterCodes1To252) {
    const std::string tail = " 11*16 00 00 00", name35 = "23 61*35";
    const StyleCase cases[] = {
        {"07", "old", "00 03 'old'"},
        {"FC", "old", "00 03 'old'"},
        {"FD", "S1", "FD"},
        {"00 24 61*36", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "00 23 61*35"},
    };
    for (const StyleCase& c : cases) {
        StyleAttributeRecord record;
        record.GroupStyle.Put("old");
        EXPECT_EQ(ReadFrom(record, Hex("20 62*32 99 98 97 " + (c.read + tail))), 0u);
        EXPECT_EQ(record.GroupName.Text(), std::string(31, 'b'));
        EXPECT_EQ(record.GroupStyle.Text(), c.name);
        EXPECT_EQ(record.GroupAttributeCopy, 0x97);
        EXPECT_TRUE(SameBytes(Hex("1F 62*31 06 01 97 " + (c.written + tail)), Written(record)));
    }
}

struct OrderCase {
    int version;
    const char* inFile;
    std::uint16_t inMemory;
    const char* written;
    std::uint16_t afterwards;
};

TEST(EntityRecord, LowersTheOrderWithEachSaveUpToVersion2) {
    const OrderCase cases[] = {{2, "05 00", 6, "05 00", 5},
                               {0, "00 00", 0, "00 00", 0},
                               {2, "FF FF", 0, "00 00", 0},
                               {3, "05 00", 5, "05 00", 5}};
    for (const OrderCase& c : cases) {
        EntityRecord record = EntityOf(0, c.version, "00 00 00 00" + (' ' + std::string(c.inFile)));
        EXPECT_EQ(record.OrderIndex, c.inMemory) << c.inFile;
        EXPECT_TRUE(SameBytes(Hex(c.written), Written(record).substr(62)));
        EXPECT_EQ(record.OrderIndex, c.afterwards) << c.inFile;
    }
}

TEST(EntityRecord, GeometryKeepsTheVersionItWasReadWith) {
    constexpr std::size_t kPlain = 58 + 4 + 2;
    EntityRecord old = EntityOf(1, 16, "00 00 00 00 05 00");
    EntityRecord young = EntityOf(1, 17, "00 00 00 00 21*40 05 00");
    old.SetVersion(26);
    young.SetVersion(3);
    EXPECT_EQ(Written(old).size(), kPlain);
    EXPECT_EQ(Written(young).size(), kPlain + 40);
    EntityRecord copy(young);
    EXPECT_EQ(copy.Geometry->GetVersion(), 17);
    EXPECT_TRUE(SameBytes(Written(young), Written(copy)));
    EntityRecord created;
    created.SetVersion(26);
    created.Geometry = EntityGeometry::Make(1);
    EXPECT_EQ(Written(created).size(), kPlain);
}

TEST(EntityRecord, NestedEntitiesKeepTheVersionOfTheirGeometry) {
    const std::string child = "00*58 00 00 00 00 05 00";
    EntityRecord group = EntityOf(13, 2, "00*4 00*18 00 01 00 00 00 " + child + " 00 00");
    auto& geometry = dynamic_cast<Kind13Geometry&>(*group.Geometry);
    EXPECT_EQ(geometry.Entities.begin()->OrderIndex, 6);
    group.SetVersion(26);
    EXPECT_EQ(geometry.GetVersion(), 2);
    EXPECT_EQ(geometry.Entities.GetVersion(), 2);
    const std::string written = Written(group);
    EXPECT_EQ(written[written.size() - 4], 5);
}

TEST(EntityRecord, ListsThatLieAboutTheirCountsCostLittle) {
    // Each of 100 levels claims 32767 entities, and the file ends in the deepest.
    std::string bytes = Hex("00 FF 7F");
    for (int i = 0; i < 100; ++i) bytes += Hex("0D 00 00*58 00*4 00*18 00 FF 7F");
    TypedRecordList<EntityRecord> list;
    ReadFrom(list, bytes);
    std::size_t total = list.size();
    for (auto* inner = &list; !inner->empty(); total += inner->size()) {
        auto* next = inner->begin()->Nested();
        if (!next) break;
        inner = next;
    }
    EXPECT_GE(total, 32767u);
    EXPECT_LT(total, 70000u);
}

TEST(EntityRecord, AClassDerivedFromItIsAskedItself) {
    class Tagged : public EntityRecord {
    public:
        std::istream& Read(std::istream& stream) override { return stream.ignore(1); }
        std::ostream& Write(std::ostream& stream) override { return stream << 't'; }
    };
    TypedRecordList<Tagged> list;
    EXPECT_EQ(ReadFrom(list, Hex("00 01 00 0D 00 'x'")), 0u);
    EXPECT_TRUE(SameBytes(Hex("00 01 00 0D 00 't'"), Written(list)));
}

}  // namespace
}  // namespace zel
