#include "Real.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace zel {

#ifdef __cpp_lib_to_chars

std::string ShortestDecimal(double value) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::optional<double> ParseDecimal(std::string_view text) {
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(value))
        return {};
    return value;
}

#else

// The same for a standard library that converts whole numbers alone.

std::string ShortestDecimal(double value) {
    char scientific[32], fixed[400];
    std::snprintf(fixed, sizeof fixed, "%g", value);
    if (!std::isfinite(value)) return fixed;
    int digits = 0;
    do std::snprintf(scientific, sizeof scientific, "%.*e", digits++, value);
    while (std::strtod(scientific, nullptr) != value);
    const int exponent = std::atoi(std::strchr(scientific, 'e') + 1);
    std::snprintf(fixed, sizeof fixed, "%.*f", std::max(digits - 1 - exponent, 0), value);
    return std::strlen(scientific) < std::strlen(fixed) ? scientific : fixed;
}

std::optional<double> ParseDecimal(std::string_view text) {
    const std::string whole(text);
    if (text.empty() || whole.find_first_not_of("0123456789+-.eE") != whole.npos || text[0] == '+') return {};
    char* end = nullptr;
    const double value = std::strtod(whole.c_str(), &end);
    const bool isLost = value == 0 && whole.find_first_of("123456789") < whole.find_first_of("eE");
    if (*end != '\0' || !std::isfinite(value) || isLost) return {};
    return value;
}

#endif

}  // namespace zel
