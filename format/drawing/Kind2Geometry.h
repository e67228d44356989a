#pragma once

#include "EntityGeometry.h"

namespace zel {

// Two points.
class Kind2Geometry : public GeometryOfKind<Kind2Geometry, 2> {
public:
    const void* Body() const override { return &First; }

    template <class Archive>
    void Fields(Archive& archive);

    Point First{};
    Point Second{};
};

}  // namespace zel
