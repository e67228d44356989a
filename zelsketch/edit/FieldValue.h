#pragma once

#include <cstdint>
#include <string>

#include "zel/survey/Field.h"

namespace zel {

// A field's value as a person types it and a script takes it: a whole number, also hexadecimal behind "0x"; a
// real in decimal, or "0x" and the 16 digits of its bits; a text in UTF-8. Dates may also be typed as
// "2004-02-29", times of day as "23:59:59".

// What a field of whole numbers holds.
struct Limits {
    std::int64_t least;
    std::int64_t most;
};
Limits LimitsOf(const Field& field);

// In decimal; texts with control characters as \xNN.
std::string PlainValue(const Field& field);
// The field's bytes with that value; what stands behind a text stays there. Throws Failure (kUnusable) with
// the field's place, and with what would fit.
std::string BytesWithValue(const Field& field, const std::string& value);

}  // namespace zel
