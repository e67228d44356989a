#pragma once

#include <cstdint>

#include "zel/record/Streamed.h"

namespace zel {

// The first interface of a record that stands in a typed list, where its type code precedes it.
class TypedRecord : public Streamed {
public:
    virtual std::int16_t TypeCode() const = 0;
    // Receives the code that was read. Ignored by classes whose code is a constant.
    virtual void SetTypeCode(std::int16_t) {}
    // The address of the record's own data, its first field; null where it has none. Nothing here calls it:
    // it is for host programs that know the type by its code.
    virtual const void* Body() const = 0;
};

}  // namespace zel
