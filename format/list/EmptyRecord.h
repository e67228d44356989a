#pragma once

#include "TypedRecord.h"
#include "zel/record/Versioned.h"

namespace zel {

// A record without content, of type code 12: in a typed list it is its type code alone.
class EmptyRecord : public TypedRecord, public Versioned {
public:
    using PassedAs = EmptyRecord;
    static constexpr std::int16_t kTypeCode = 12;
    static constexpr char kTypeCodeName[] = "TypeCode";
    static constexpr bool kBodyless = true;

    std::istream& Read(std::istream& stream) override { return stream; }
    std::ostream& Write(std::ostream& stream) override { return stream; }
    std::int16_t TypeCode() const override { return kTypeCode; }
    const void* Body() const override { return nullptr; }

    template <class Archive>
    void Pass(Archive&) {}
};

}  // namespace zel
