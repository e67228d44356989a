#pragma once

#include "EntityGeometry.h"

namespace zel {

// A point and a value.
class Kind3Geometry : public GeometryOfKind<Kind3Geometry, 3> {
public:
    const void* Body() const override { return &Position; }

    template <class Archive>
    void Fields(Archive& archive);

    Point Position{};
    LittleEndian<double> Value{};
};

}  // namespace zel
