#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "zel/record/CountedText.h"
#include "EntityGeometry.h"
#include "zel/record/LittleEndian.h"
#include "zel/list/TypedRecord.h"
#include "zel/record/Versioned.h"

namespace zel {

// The fields that all entities have, whatever their kind.
struct EntityFields {
    std::int32_t EntityKind = 0;  // stands in the file as the type code before the record
    Point AnchorA{};
    Point AnchorB{};
    LittleEndian<double> EntityMeasure1{};
    std::int32_t EntityShort = 0;  // 16 bits in the file
    LittleEndian<double> EntityMeasure2{};
    LittleEndian<double> EntityMeasure3{};
    FixedText<32> PrimaryStyle{};
    FixedText<32> SecondaryStyle{};
    LittleEndian<std::uint16_t> OrderIndex{};
};

// One drawn element, and the geometry that its kind calls for. A new one is empty and zero, without a
// geometry. Entities of kind 13 nest as deep as memory allows; no operation needs more stack for it.
class EntityRecord : public TypedRecord, public Versioned, public EntityFields {
public:
    using PassedAs = EntityRecord;
    static constexpr char kTypeCodeName[] = "EntityKind";

    EntityRecord() = default;
    // Copies the geometry with its version.
    EntityRecord(const EntityRecord& other);
    EntityRecord& operator=(const EntityRecord& other);
    ~EntityRecord() override;

    // Replaces the geometry by one of EntityKind.
    std::istream& Read(std::istream& stream) override;
    // Writing at version 2 or below lowers OrderIndex for good.
    std::ostream& Write(std::ostream& stream) override;
    std::int16_t TypeCode() const override { return static_cast<std::int16_t>(EntityKind); }
    void SetTypeCode(std::int16_t code) override { EntityKind = code; }
    const void* Body() const override { return &EntityKind; }

    template <class Archive>
    void Pass(Archive& archive);

    // For the walks over nested lists (Nested.h).
    template <class Archive>
    void Head(Archive& archive);
    template <class Archive>
    void Tail(Archive& archive);
    static constexpr char kNestedName[] = "Entities";
    TypedRecordList<EntityRecord>* Nested() { return Geometry ? Geometry->Nested() : nullptr; }
    const TypedRecordList<EntityRecord>* Nested() const {
        return Geometry ? std::as_const(*Geometry).Nested() : nullptr;
    }
    // Everything but the nested entities.
    void CopyFields(const EntityRecord& other);

    // SetVersion does not reach it: it keeps the version that it was read with, as do the entities nested in
    // it.
    std::unique_ptr<EntityGeometry> Geometry;
};

}  // namespace zel
