// An entity in the file; the layout of a geometry opens the file of its class:
//
//   order  width  field
//   1      16     AnchorA
//   2      16     AnchorB
//   3      8      EntityMeasure1
//   4      2      EntityShort, signed
//   5      16     EntityMeasure2, EntityMeasure3
//   6      1 + n  PrimaryStyle, a style reference
//   7      1 + n  SecondaryStyle, a style reference
//   8      n      Geometry, where EntityKind has one
//   9      2      OrderIndex, less one up to version 2

#include "EntityRecord.h"

#include "zel/list/Nested.h"
#include "StyleReference.h"
#include "zel/list/TypedRecordList.h"

namespace zel {

using EntityList = TypedRecordList<EntityRecord>;

EntityRecord::EntityRecord(const EntityRecord& other) : EntityRecord() {
    CopyFields(other);
    if (const EntityList* nested = other.Nested()) CopyNested(*nested, *Nested());
}

EntityRecord& EntityRecord::operator=(const EntityRecord& other) {
    EntityRecord copy(other);
    Versioned::operator=(copy);
    EntityFields::operator=(copy);
    Geometry.swap(copy.Geometry);
    return *this;
}

EntityRecord::~EntityRecord() {
    if (EntityList* nested = Nested()) DrainNested(nested->Elements());
}

void EntityRecord::CopyFields(const EntityRecord& other) {
    Versioned::operator=(other);
    EntityFields::operator=(other);
    Geometry = other.Geometry ? other.Geometry->Clone() : nullptr;
}

std::istream& EntityRecord::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& EntityRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void EntityRecord::Pass(Archive& archive) {
    WalkElement<TypedCursor<Archive, EntityList>>(archive, *this);
}

template <class Archive>
void EntityRecord::Head(Archive& archive) {
    using Announces = StyleReference::Announces;
    LittleEndian<std::int16_t> narrow{static_cast<std::int16_t>(EntityShort)};
    archive.Fields(Named{AnchorA, "AnchorA"}, Named{AnchorB, "AnchorB"},
                   Named{EntityMeasure1, "EntityMeasure1"}, Named{narrow, "EntityShort"},
                   Named{EntityMeasure2, "EntityMeasure2"}, Named{EntityMeasure3, "EntityMeasure3"});
    StyleReference::Pass(archive, PrimaryStyle, Announces::kName, "PrimaryStyle");
    StyleReference::Pass(archive, SecondaryStyle, Announces::kName, "SecondaryStyle");
    if (Archive::kReads) {
        EntityShort = narrow;
        Geometry = EntityGeometry::Make(EntityKind);
        if (Geometry) Geometry->SetVersion(GetVersion());
    }
    if (Geometry) Geometry->Pass(archive);
}

template <class Archive>
void EntityRecord::Tail(Archive& archive) {
    const bool shifted = GetVersion() <= 2;
    if (!Archive::kReads && shifted && OrderIndex != 0) OrderIndex = OrderIndex - 1;
    archive.Field(OrderIndex, "OrderIndex");
    if (Archive::kReads && shifted && OrderIndex != 0) OrderIndex = OrderIndex + 1;  // 65535 becomes 0
}

template void EntityRecord::Pass(Reader&);
template void EntityRecord::Pass(NamedReader&);
template void EntityRecord::Pass(Writer&);

}  // namespace zel
