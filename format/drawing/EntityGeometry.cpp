#include "EntityGeometry.h"

#include "Kind1Geometry.h"
#include "Kind2Geometry.h"
#include "Kind3Geometry.h"
#include "Kind4Geometry.h"
#include "Kind7Geometry.h"
#include "Kind13Geometry.h"
#include "Kind14Geometry.h"
#include "Kind23Geometry.h"
#include "Kind35Geometry.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

std::unique_ptr<EntityGeometry> EntityGeometry::Make(std::int32_t kind) {
    switch (kind) {
        case 1:
            return std::make_unique<Kind1Geometry>();
        case 2:
            return std::make_unique<Kind2Geometry>();
        case 3:
            return std::make_unique<Kind3Geometry>();
        case 4:
            return std::make_unique<Kind4Geometry>();
        case 7:
            return std::make_unique<Kind7Geometry>();
        case 13:
            return std::make_unique<Kind13Geometry>();
        case 14:
            return std::make_unique<Kind14Geometry>();
        case 23:
            return std::make_unique<Kind23Geometry>();
        case 35:
            return std::make_unique<Kind35Geometry>();
        default:
            return nullptr;
    }
}

std::istream& EntityGeometry::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    if (auto* entities = Nested()) entities->Pass(reader);
    return stream;
}

std::ostream& EntityGeometry::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    if (auto* entities = Nested()) entities->Pass(writer);
    return stream;
}

}  // namespace zel
