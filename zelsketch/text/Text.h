#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zel {

// How numbers, bytes and 8-bit texts are put into words.

// "1 byte", "2 bytes".
std::string Counted(std::size_t count, const std::string& thing);
// Two digits a byte.
std::string HexDigits(std::string_view bytes, std::string_view between = {});
// "0x" and all digits of the width.
std::string HexNumber(std::uint64_t value, std::size_t width);
// The shortest decimal form that gives the same double, where it is finite.
bool IsFinite(std::uint64_t bits);
std::string Decimal(std::uint64_t bits);

// 8-bit text as UTF-8, control characters as \xNN, so that nothing in a file commands a terminal, and a
// backslash in front of those that are to be `escaped`.
std::string Printable(std::string_view text, std::string_view escaped = {});
// The same in quotes.
std::string Quoted(std::string_view text);

// UTF-8 as a terminal may have it: control characters, and bytes that are no UTF-8, as \xNN.
std::string Shown(std::string_view text);

// "2004-02-29" of a day number, or why there is none.
std::string DayText(std::int64_t day);
// "23:59:59" of seconds since midnight, or why there is none.
std::string SecondsText(std::int64_t seconds);

}  // namespace zel
