#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zel {

// Doubles and their decimal forms, exactly and whatever the locale.

// The fewest digits that come back as the same double, with an exponent where that is shorter.
std::string ShortestDecimal(double value);
// All of a decimal number, with or without an exponent; nothing where it is none or no double comes near it.
std::optional<double> ParseDecimal(std::string_view text);

}  // namespace zel
