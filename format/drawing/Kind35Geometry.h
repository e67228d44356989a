#pragma once

#include "EntityGeometry.h"

namespace zel {

// 24 bytes of its own, two points and a value.
class Kind35Geometry : public GeometryOfKind<Kind35Geometry, 35> {
public:
    const void* Body() const override { return &Raw; }

    template <class Archive>
    void Fields(Archive& archive);

    std::uint8_t Raw[24] = {};
    Point First{};
    Point Second{};
    LittleEndian<double> Value{};
};

}  // namespace zel
