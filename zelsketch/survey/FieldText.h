#pragma once

#include <cstdint>
#include <string>

#include "Field.h"

namespace zel {

// How the fields of a file are put into words.

// Its name, or its place in a list of values: "MemberIndices[2]".
std::string NameText(const Field& field);
// A field's value in words, with what is odd about it. Dates as calendar dates, flags explained.
std::string ValueText(const Field& field);
// "Definitions[2].Members[0]"; the middle of a very long one is left out.
std::string PlaceText(const Place& place);

}  // namespace zel
