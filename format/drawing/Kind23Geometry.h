#pragma once

#include "zel/record/CountedText.h"
#include "zel/list/EmptyRecord.h"
#include "EntityGeometry.h"
#include "zel/list/TypedRecordList.h"

namespace zel {

// A named set of values, with a list of records that have no content.
class Kind23Geometry : public GeometryOfKind<Kind23Geometry, 23> {
public:
    const void* Body() const override { return &Name; }

    void SetVersion(std::int32_t version) override;

    template <class Archive>
    void Fields(Archive& archive);

    FixedText<36> Name{};
    LittleEndian<double> Value1{};
    LittleEndian<double> Value2{};
    LittleEndian<double> Value3{};
    LittleEndian<double> Value4{};
    LittleEndian<double> Value5{};
    TypedRecordList<EmptyRecord> Records;
};

}  // namespace zel
