#pragma once

#include "EntityGeometry.h"

namespace zel {

// 40 bytes of its own, which the entities of early files lack.
class Kind1Geometry : public GeometryOfKind<Kind1Geometry, 1> {
public:
    const void* Body() const override { return &Raw; }

    template <class Archive>
    void Fields(Archive& archive);

    std::uint8_t Raw[40] = {};
};

}  // namespace zel
