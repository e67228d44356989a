#pragma once

#include <string>
#include <string_view>

namespace zel {

// The UTF-8 of a text that a byte-order mark says is UTF-16; empty for any other. What is no UTF-16 becomes
// what is no UTF-8 either.
std::string Utf8OfMarkedUtf16(std::string_view text);

}  // namespace zel
