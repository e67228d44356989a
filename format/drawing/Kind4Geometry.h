#pragma once

#include "EntityGeometry.h"

namespace zel {

// Two points and a value.
class Kind4Geometry : public GeometryOfKind<Kind4Geometry, 4> {
public:
    const void* Body() const override { return &First; }

    template <class Archive>
    void Fields(Archive& archive);

    Point First{};
    Point Second{};
    LittleEndian<double> Value{};
};

}  // namespace zel
