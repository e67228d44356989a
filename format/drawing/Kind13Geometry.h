#pragma once

#include "EntityGeometry.h"
#include "EntityRecord.h"
#include "zel/list/TypedRecordList.h"

namespace zel {

// A group: values and further entities.
class Kind13Geometry : public GeometryOfKind<Kind13Geometry, 13> {
public:
    const void* Body() const override { return &Short; }

    // Reaches the entities as well.
    void SetVersion(std::int32_t version) override;
    std::unique_ptr<EntityGeometry> Clone() const override;
    TypedRecordList<EntityRecord>* Nested() override { return &Entities; }

    template <class Archive>
    void Fields(Archive& archive);

    LittleEndian<std::int16_t> Short{};
    LittleEndian<double> Value1{};
    LittleEndian<double> Value2{};
    TypedRecordList<EntityRecord> Entities;
};

}  // namespace zel
