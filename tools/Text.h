#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Field.h"

namespace zel {

// How the tools put the parts of a file into words.

// "1 byte", "2 bytes".
std::string Counted(std::size_t count, const std::string& thing);
// Two digits a byte.
std::string HexDigits(std::string_view bytes, std::string_view between = {});
// "0x" and all digits of the width.
std::string HexNumber(std::uint64_t value, std::size_t width);
// The shortest decimal form that gives the same double; with its bits where that form would not (NaNs,
// infinities, -0).
bool IsExactDecimal(std::uint64_t bits);
std::string Decimal(std::uint64_t bits);
std::uint64_t DoubleBits(const Field& field);

// 8-bit text in quotes as UTF-8, control characters as \xNN, so that nothing in a file commands a terminal.
std::string Quoted(std::string_view text);
// A field's value in words, with what is odd about it. Dates as calendar dates, flags explained.
std::string ValueText(const Field& field);
// "Definitions[2].Members[0]"; the middle of a very long one is left out.
std::string PlaceText(const Place& place);

// "2004-02-29" of a day number, or why there is none.
std::string DayText(std::int64_t day);
// "23:59:59" of seconds since midnight, or why there is none.
std::string SecondsText(std::int64_t seconds);

}  // namespace zel
