#pragma once

#include <cstdint>
#include <memory>

#include "zel/record/FieldForm.h"
#include "zel/record/LittleEndian.h"
#include "zel/list/TypedRecord.h"
#include "zel/record/Versioned.h"

namespace zel {

class EntityRecord;
class NamedReader;
class Reader;
class Writer;
template <class T>
class TypedRecordList;

struct Point {
    LittleEndian<double> X;
    LittleEndian<double> Y;
};
constexpr FieldForm FormOf(const Point& point) { return FormOf(point.X); }

// What an entity of one kind consists of, beyond what all entities have. Owned by its entity. It keeps the
// version that it was read with, with all that it owns, and is written by that one, whatever the version of
// the file that is written.
class EntityGeometry : public TypedRecord, public Versioned {
public:
    // Null for a kind that has no geometry.
    static std::unique_ptr<EntityGeometry> Make(std::int32_t kind);

    std::istream& Read(std::istream& stream) final;
    std::ostream& Write(std::ostream& stream) final;

    // All fields but a list of entities, which the walk over nested lists (Nested.h) takes.
    virtual void Pass(Reader& reader) = 0;
    virtual void Pass(NamedReader& reader) = 0;
    virtual void Pass(Writer& writer) = 0;
    virtual TypedRecordList<EntityRecord>* Nested() { return nullptr; }
    const TypedRecordList<EntityRecord>* Nested() const {
        return const_cast<EntityGeometry*>(this)->Nested();
    }

    // A copy without the entities of its list.
    virtual std::unique_ptr<EntityGeometry> Clone() const = 0;
};

// Supplies the protocol to the geometry class `Self` of one kind, which has Fields, a walk over its fields
// but a list of entities.
template <class Self, std::int16_t kKind>
class GeometryOfKind : public EntityGeometry {
public:
    std::int16_t TypeCode() const override { return kKind; }
    std::unique_ptr<EntityGeometry> Clone() const override {
        return std::make_unique<Self>(static_cast<const Self&>(*this));
    }
    void Pass(Reader& reader) override { static_cast<Self*>(this)->Fields(reader); }
    void Pass(NamedReader& reader) override { static_cast<Self*>(this)->Fields(reader); }
    void Pass(Writer& writer) override { static_cast<Self*>(this)->Fields(writer); }
};

}  // namespace zel
