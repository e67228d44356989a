#pragma once

#include "zel/drawing/DrawingRecord.h"
#include "zel/drawing/Kind13Geometry.h"
#include "zel/drawing/Kind14Geometry.h"
#include "zel/drawing/Kind1Geometry.h"
#include "zel/drawing/Kind23Geometry.h"
#include "zel/drawing/Kind2Geometry.h"
#include "zel/drawing/Kind35Geometry.h"
#include "zel/drawing/Kind3Geometry.h"
#include "zel/drawing/Kind4Geometry.h"
#include "zel/drawing/Kind7Geometry.h"
#include "Layout.h"

namespace zel {

// The drawing by tables (Layout.h).

inline bool IsMode2(const AuxiliaryRecord& record) { return record.AuxMode == 2; }

const Row<AreaRecord> kArea[] = {
    {0, 6, Form::kNumber, 0, At<&AreaRecord::AreaCode>},
    {7, 7, Form::kFixed, 0, At<&AreaRecord::AreaCode>},
    {8, kOn, Form::kShort, 0, At<&AreaRecord::AreaCode>},
    {13, kOn, Form::kShort, 0, At<&AreaRecord::Label>},
    {0, kOn, Form::kRaw, 1, At<&AreaRecord::TypeByte>},
    {0, kOn, Form::kRaw, 8, At<&AreaRecord::Measure1>},
    {0, kOn, Form::kRaw, 8, At<&AreaRecord::Measure2>},
    {0, kOn, Form::kRaw, 8, At<&AreaRecord::Measure3>},
    {0, kOn, Form::kRaw, 8, At<&AreaRecord::Measure4>},
    {0, kOn, Form::kRaw, 8, At<&AreaRecord::Measure5>},
    {0, 10, Form::kLink, 2, At<&AreaRecord::LinkIndex>},
    {11, kOn, Form::kRaw, 2, At<&AreaRecord::LinkIndex>},
    {12, kOn, Form::kRaw, 4, At<&AreaRecord::ExtraValue>},
    {0, kOn, Form::kRaw, 1, At<&AreaRecord::Option1>},
    {0, kOn, Form::kRaw, 1, At<&AreaRecord::Option2>},
    {0, kOn, Form::kRaw, 1, At<&AreaRecord::Option3>},
    {0, kOn, Form::kShort, 0, At<&AreaRecord::Description>},
    {22, kOn, Form::kShort, 0, At<&AreaRecord::StyleName>},
    {22, 23, Form::kFirst, 2, At<&AreaRecord::MemberIndices>},
    {24, kOn, Form::kIndices, 0, At<&AreaRecord::MemberIndices>},
    {0, kOn, Form::kRaw, 2, At<&AreaRecord::Word1>},
    {3, kOn, Form::kRaw, 2, At<&AreaRecord::Word2>},
    {10, kOn, Form::kRaw, 2, At<&AreaRecord::Word3>},
    {16, kOn, Form::kRaw, 4, At<&AreaRecord::Long1>},
    {16, kOn, Form::kRaw, 4, At<&AreaRecord::Long2>},
    {23, kOn, Form::kRaw, 4, At<&AreaRecord::Long3>},
    {0, kOn, Form::kPlaceholders, 2, kNowhere},
};
const Row<AuxiliaryRecord> kAuxiliary[] = {
    {9, kOn, Form::kRaw, 1, At<&AuxiliaryRecord::AuxMode>},
    {0, kOn, Form::kShort, 0, At<&AuxiliaryRecord::AuxName>},
    {0, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxLong>},
    {0, kOn, Form::kRaw, 16, At<&AuxiliaryRecord::AuxBlock16>},
    {0, 20, Form::kNarrow, 2, At<&AuxiliaryRecord::AuxValue1>},
    {0, 20, Form::kNarrow, 2, At<&AuxiliaryRecord::AuxValue2>},
    {0, 20, Form::kNarrow, 2, At<&AuxiliaryRecord::AuxValue3>},
    {0, 20, Form::kNarrow, 2, At<&AuxiliaryRecord::AuxValue4>},
    {0, 20, Form::kNarrow, 2, At<&AuxiliaryRecord::AuxValue5>},
    {21, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxValue1>},
    {21, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxValue2>},
    {21, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxValue3>},
    {21, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxValue4>},
    {21, kOn, Form::kRaw, 4, At<&AuxiliaryRecord::AuxValue5>},
    {0, kOn, Form::kRaw, 8, At<&AuxiliaryRecord::AuxBytes8>},
    {0, kOn, Form::kRaw, 32, At<&AuxiliaryRecord::AuxBytes32>},
    {0, kOn, Form::kRaw, 8, At<&AuxiliaryRecord::AuxReal1>},
    {0, kOn, Form::kRaw, 8, At<&AuxiliaryRecord::AuxReal2>},
    {0, kOn, Form::kRaw, 1, At<&AuxiliaryRecord::AuxFlag>},
    {0, kOn, Form::kRaw, 8, At<&AuxiliaryRecord::AuxBytesTail>},
    {0, 3, Form::kRaw, 1, At<&AuxiliaryRecord::AuxExtra>, &IsMode2},
    {4, 8, Form::kRaw, 1, At<&AuxiliaryRecord::AuxExtra>},
    {9, kOn, Form::kRaw, 1, At<&AuxiliaryRecord::AuxExtra>, &IsMode2},
};
const Row<StyleAttributeRecord> kStyle[] = {
    {0, kOn, Form::kPlain, 31, At<&StyleAttributeRecord::GroupName>},
    {0, kOn, Form::kMarks, 2, kNowhere},
    {0, kOn, Form::kRaw, 1, At<&StyleAttributeRecord::GroupAttribute>},
    {0, kOn, Form::kGroupStyle, 35, At<&StyleAttributeRecord::GroupStyle>},
    {0, kOn, Form::kRaw, 16, At<&StyleAttributeRecord::GroupValues>},
};
const Row<DrawingRecord> kDrawing[] = {
    {2, kOn, Form::kRaw, 24, At<&DrawingRecord::DrawingExtent>},
    {14, kOn, Form::kRaw, 4, At<&DrawingRecord::DrawingLong1>},
    {14, kOn, Form::kRaw, 4, At<&DrawingRecord::DrawingLong2>},
    {14, kOn, Form::kRaw, 4, At<&DrawingRecord::DrawingLong3>},
    {15, kOn, Form::kRaw, 4, At<&DrawingRecord::DrawingLong4>},
};
const Row<EntityRecord> kEntity[] = {
    {0, kOn, Form::kRaw, 16, At<&EntityRecord::AnchorA>},
    {0, kOn, Form::kRaw, 16, At<&EntityRecord::AnchorB>},
    {0, kOn, Form::kRaw, 8, At<&EntityRecord::EntityMeasure1>},
    {0, kOn, Form::kNarrow, 2, At<&EntityRecord::EntityShort>},
    {0, kOn, Form::kRaw, 8, At<&EntityRecord::EntityMeasure2>},
    {0, kOn, Form::kRaw, 8, At<&EntityRecord::EntityMeasure3>},
    {0, kOn, Form::kStyle, 31, At<&EntityRecord::PrimaryStyle>},
    {0, kOn, Form::kStyle, 31, At<&EntityRecord::SecondaryStyle>},
};
const Row<EntityRecord> kBehindGeometry[] = {
    {0, 2, Form::kOrder, 2, At<&EntityRecord::OrderIndex>},
    {3, kOn, Form::kRaw, 2, At<&EntityRecord::OrderIndex>},
};

const Row<Kind1Geometry> kKind1[] = {{17, kOn, Form::kRaw, 40, At<&Kind1Geometry::Raw>}};
const Row<Kind2Geometry> kKind2[] = {
    {0, kOn, Form::kRaw, 16, At<&Kind2Geometry::First>},
    {0, kOn, Form::kRaw, 16, At<&Kind2Geometry::Second>},
};
const Row<Kind3Geometry> kKind3[] = {
    {0, kOn, Form::kRaw, 16, At<&Kind3Geometry::Position>},
    {0, kOn, Form::kRaw, 8, At<&Kind3Geometry::Value>},
};
const Row<Kind4Geometry> kKind4[] = {
    {0, kOn, Form::kRaw, 16, At<&Kind4Geometry::First>},
    {0, kOn, Form::kRaw, 16, At<&Kind4Geometry::Second>},
    {0, kOn, Form::kRaw, 8, At<&Kind4Geometry::Value>},
};
const Row<Kind7Geometry> kKind7[] = {
    {0, kOn, Form::kRaw, 16, At<&Kind7Geometry::Position>},
    {0, kOn, Form::kRaw, 8, At<&Kind7Geometry::Value1>},
    {0, kOn, Form::kLong, 0, At<&Kind7Geometry::Text>},
    {0, kOn, Form::kRaw, 8, At<&Kind7Geometry::Value2>},
    {0, kOn, Form::kRaw, 8, At<&Kind7Geometry::Value3>},
    {0, kOn, Form::kRaw, 8, At<&Kind7Geometry::Value4>},
    {0, kOn, Form::kPlain, 0, At<&Kind7Geometry::Name>},
};
const Row<Kind13Geometry> kKind13[] = {
    {0, kOn, Form::kRaw, 2, At<&Kind13Geometry::Short>},
    {0, kOn, Form::kRaw, 8, At<&Kind13Geometry::Value1>},
    {0, kOn, Form::kRaw, 8, At<&Kind13Geometry::Value2>},
};
const Row<Kind14Geometry> kKind14[] = {
    {0, kOn, Form::kRaw, 24, At<&Kind14Geometry::Raw>},
    {0, kOn, Form::kRaw, 8, At<&Kind14Geometry::Value1>},
    {0, kOn, Form::kRaw, 8, At<&Kind14Geometry::Value2>},
    {0, kOn, Form::kRaw, 8, At<&Kind14Geometry::Value3>},
};
const Row<Kind23Geometry> kKind23[] = {
    {0, kOn, Form::kPlain, 35, At<&Kind23Geometry::Name>},
    {0, kOn, Form::kRaw, 8, At<&Kind23Geometry::Value1>},
    {0, kOn, Form::kRaw, 8, At<&Kind23Geometry::Value2>},
    {0, kOn, Form::kRaw, 8, At<&Kind23Geometry::Value3>},
    {0, kOn, Form::kRaw, 8, At<&Kind23Geometry::Value4>},
    {0, kOn, Form::kRaw, 8, At<&Kind23Geometry::Value5>},
};
const Row<Kind35Geometry> kKind35[] = {
    {0, kOn, Form::kRaw, 24, At<&Kind35Geometry::Raw>},
    {0, kOn, Form::kRaw, 16, At<&Kind35Geometry::First>},
    {0, kOn, Form::kRaw, 16, At<&Kind35Geometry::Second>},
    {0, kOn, Form::kRaw, 8, At<&Kind35Geometry::Value>},
};

template <class Geometry>
const Geometry& As(const EntityRecord& entity) {
    Check(entity.Geometry && entity.Geometry->TypeCode() == entity.EntityKind, "an entity has its geometry");
    return static_cast<const Geometry&>(*entity.Geometry);
}

template <class Pass>
void PassEntities(Pass& pass, const TypedRecordList<EntityRecord>& list, int version);

template <class Pass>
void PassGeometry(Pass& pass, const EntityRecord& entity) {
    const int version = pass.geometryVersion;
    switch (entity.EntityKind) {
        case 1:
            return pass.Rows(kKind1, As<Kind1Geometry>(entity), version);
        case 2:
            return pass.Rows(kKind2, As<Kind2Geometry>(entity), version);
        case 3:
            return pass.Rows(kKind3, As<Kind3Geometry>(entity), version);
        case 4:
            return pass.Rows(kKind4, As<Kind4Geometry>(entity), version);
        case 7:
            return pass.Rows(kKind7, As<Kind7Geometry>(entity), version);
        case 13:
            pass.Rows(kKind13, As<Kind13Geometry>(entity), version);
            return pass.Done() ? void() : PassEntities(pass, As<Kind13Geometry>(entity).Entities, version);
        case 14:
            return pass.Rows(kKind14, As<Kind14Geometry>(entity), version);
        case 23:
            pass.Rows(kKind23, As<Kind23Geometry>(entity), version);
            return pass.Typed(As<Kind23Geometry>(entity).Records,
                              [](const EmptyRecord& record, int) { Check(record.TypeCode() == 12, "12"); });
        case 35:
            return pass.Rows(kKind35, As<Kind35Geometry>(entity), version);
        default:
            Check(!entity.Geometry, "an entity has no geometry");
    }
}

template <class Pass>
void PassEntities(Pass& pass, const TypedRecordList<EntityRecord>& list, int version) {
    Check(list.GetVersion() == version, "a list has its version");
    pass.Typed(list, [&pass, version](const EntityRecord& entity, int code) {
        Check(entity.GetVersion() == version && entity.EntityKind == code, "an entity has version and kind");
        pass.Rows(kEntity, entity, version);
        if (!pass.Done()) PassGeometry(pass, entity);
        pass.Rows(kBehindGeometry, entity, version);
    });
}

template <class Pass>
void PassStyle(Pass& pass, const StyleAttributeRecord& style) {
    Check(style.GetVersion() == pass.version, "a style has the version of its file");
    pass.Rows(kStyle, style, pass.version);
    if (pass.Done()) return;
    Check(style.GroupAttributeCopy == style.GroupAttribute, "the attribute's copy follows it");
    PassEntities(pass, style.Members, pass.version);
}

template <class Pass>
void PassDrawing(Pass& pass, const DrawingRecord& drawing) {
    pass.Marked(drawing.Areas, [&pass](const AreaRecord& area) {
        Check(area.GetVersion() == pass.version, "an area has the version of its file");
        pass.Rows(kArea, area, pass.version);
    });
    if (pass.Done()) return;
    pass.Marked(drawing.Auxiliaries, [&pass](const AuxiliaryRecord& auxiliary) {
        Check(auxiliary.GetVersion() == pass.version, "an auxiliary record has the version of its file");
        pass.Rows(kAuxiliary, auxiliary, pass.version);
    });
    if (pass.Done()) return;
    pass.Marked(drawing.Styles, [&pass](const StyleAttributeRecord& style) { PassStyle(pass, style); });
    pass.Rows(kDrawing, drawing, pass.version);
    if (pass.Done()) return;
    PassEntities(pass, drawing.Entities, pass.version);
    if (pass.Done()) return;
    pass.Typed(drawing.TypedStyles,
               [&pass](const StyleAttributeRecord& style, int) { PassStyle(pass, style); });
}

}  // namespace zel
