#pragma once

#include "EntityGeometry.h"

namespace zel {

// 24 bytes of its own and three values.
class Kind14Geometry : public GeometryOfKind<Kind14Geometry, 14> {
public:
    const void* Body() const override { return &Raw; }

    template <class Archive>
    void Fields(Archive& archive);

    std::uint8_t Raw[24] = {};
    LittleEndian<double> Value1{};
    LittleEndian<double> Value2{};
    LittleEndian<double> Value3{};
};

}  // namespace zel
