// Every record of a drawing at every version, against layouts that state each gate on their own.

#include "DrawingLayouts.h"
#include "DrawingRecord.h"
#include "SmallStack.h"

namespace zel {
namespace {

template <class Piece>
void ExpectReadsAndWrites(Piece piece, const std::string& layout, int version) {
    const std::string bytes = BytesAt(layout, version);
    piece.SetVersion(version);
    EXPECT_EQ(ReadFrom(piece, bytes), 0u) << "version " << version;
    Piece copy(piece);
    EXPECT_TRUE(SameBytes(bytes, Written(piece))) << "version " << version;
    piece = Piece();
    piece = copy;
    EXPECT_TRUE(SameBytes(bytes, Written(copy))) << "version " << version;
    EXPECT_TRUE(SameBytes(bytes, Written(piece))) << "version " << version;
}

template <class Piece>
Piece Newest(Piece piece, const std::string& layout) {
    piece.SetVersion(kVersions - 1);
    ReadFrom(piece, BytesAt(layout, kVersions - 1));
    return piece;
}

template <class Piece>
void ExpectLayout(const Piece& fresh, Piece newest, const std::string& layout) {
    for (int version = 0; version < kVersions; ++version) {
        ExpectReadsAndWrites(fresh, layout, version);
        newest.SetVersion(version);
        EXPECT_TRUE(SameBytes(BytesAt(layout, version), Written(newest))) << "from 26 to " << version;
    }
}

TEST(Layout, Area) { ExpectLayout(AreaRecord(), Newest(AreaRecord(), kArea), kArea); }

TEST(Layout, Auxiliary) {
    AuxiliaryRecord record;
    record.AuxExtra = 0x19;
    record.AuxMode = 1;
    ExpectLayout(record, Newest(record, kAuxiliary), kAuxiliary);
    std::string other = kAuxiliary;
    record.AuxMode = 2;
    other.replace(other.find("{4-8: 19}"), 9, " 19").replace(5, 2, "02");
    ExpectLayout(record, Newest(record, other), other);
}

TEST(Layout, Style) { ExpectLayout(StyleAttributeRecord(), Newest(StyleAttributeRecord(), kStyle), kStyle); }

TEST(Layout, Drawing) {
    DrawingRecord newest = Newest(DrawingRecord(), kDrawing);
    for (AuxiliaryRecord& record : newest.Auxiliaries) record.AuxExtra = 0x19;
    ExpectLayout(DrawingRecord(), newest, kDrawing);
}

TEST(Layout, EntityOfEachKind) {
    for (const GeometryLayout& geometry : kGeometries) {
        SCOPED_TRACE(geometry.kind);
        EntityRecord record;
        record.SetTypeCode(static_cast<std::int16_t>(geometry.kind));
        for (int version = 0; version < kVersions; ++version)
            ExpectReadsAndWrites(record, kEntityHead + geometry.layout + " 05 00", version);
    }
}

TEST(Layout, ADrawingCutAnywhereFailsTheStreamAndNothingElse) {
    for (const int version : {0, 7, 8, 22, 26}) {
        const std::string bytes = BytesAt(kDrawing, version);
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            std::istringstream stream(bytes.substr(0, size));
            DrawingRecord drawing;
            drawing.SetVersion(version);
            drawing.Read(stream);
            ASSERT_TRUE(stream.eof() && stream.fail()) << "version " << version << ", " << size << " bytes";
            DrawingRecord again(drawing);
            ASSERT_TRUE(SameBytes(Written(drawing), Written(again)));
        }
    }
}

TEST(Layout, FieldsThatAVersionLacksKeepTheirValue) {
    DrawingRecord drawing = Newest(DrawingRecord(), kDrawing);
    const std::string before = Written(drawing);
    AreaRecord& area = *drawing.Areas.begin();
    area.SetVersion(0);
    ReadFrom(area, BytesAt(kArea, 0));
    drawing.SetVersion(26);
    EXPECT_TRUE(SameBytes(before, Written(drawing)));
}

TEST(Depth, EntitiesAHundredThousandLevelsDeepNeedNoStack) {
    constexpr std::size_t kDepth = 100000;
    std::string bytes = Hex("01 00 01 00 01 01 'G' 06 01 00 00 00 00*16");
    for (std::size_t i = 0; i < kDepth; ++i) bytes += Hex("00 01 00 0D 00 00*58 00*4 00*18");
    bytes += Hex("00 00 00");
    for (std::size_t i = 0; i < kDepth; ++i) bytes += Hex("07 00");
    bytes += Hex("00 00*40 00*6");
    std::string written;
    std::int32_t deepest = 0;
    OnSmallStack([&] {
        auto drawing = std::make_unique<DrawingRecord>();
        drawing->SetVersion(26);
        ReadFrom(*drawing, bytes);
        auto copy = std::make_unique<DrawingRecord>(*drawing);
        *drawing = DrawingRecord();
        written = Written(*copy);
        const TypedRecordList<EntityRecord>* list = &copy->Styles.begin()->Members;
        while (!list->empty()) list = list->begin()->Nested();
        deepest = list->GetVersion();
        EntityRecord entity;
        entity = *copy->Styles.begin()->Members.begin();
        entity = EntityRecord();
        copy->Styles.begin()->Members.begin()->Geometry.reset();
    });
    EXPECT_TRUE(written == bytes);
    EXPECT_EQ(deepest, 26);
}

}  // namespace
}  // namespace zel
