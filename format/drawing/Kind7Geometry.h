#pragma once

#include "EntityGeometry.h"
#include "zel/record/LongString.h"
#include "zel/record/PlainString.h"

namespace zel {

// A placed text, with a second short text.
class Kind7Geometry : public GeometryOfKind<Kind7Geometry, 7> {
public:
    const void* Body() const override { return &Position; }

    template <class Archive>
    void Fields(Archive& archive);

    Point Position{};
    LittleEndian<double> Value1{};
    LongString Text;
    LittleEndian<double> Value2{};
    LittleEndian<double> Value3{};
    LittleEndian<double> Value4{};
    PlainString Name;
};

}  // namespace zel
