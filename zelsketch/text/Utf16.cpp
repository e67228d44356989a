#include "Utf16.h"

#include "Windows1252.h"

namespace zel {

std::string Utf8OfMarkedUtf16(std::string_view text) {
    const std::string_view mark = text.substr(0, 2);
    if (mark != "\xFF\xFE" && mark != "\xFE\xFF") return {};
    const std::size_t low = mark[0] == '\xFF' ? 0 : 1;
    const auto unitAt = [&](std::size_t at) {
        const auto byte = [&](std::size_t i) { return static_cast<char32_t>(text[at + i] & 0xFF); };
        return byte(low) | byte(1 - low) << 8;
    };
    std::string converted;
    converted.reserve(text.size());
    std::size_t at = mark.size();
    for (; at + 1 < text.size(); at += 2) {
        char32_t character = unitAt(at);
        const bool isHigh = character >= 0xD800 && character < 0xDC00 && at + 3 < text.size();
        const char32_t next = isHigh ? unitAt(at + 2) : 0;
        if (next >= 0xDC00 && next < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            at += 2;
        }
        AppendUtf8(converted, character);
    }
    if (at < text.size()) converted += '\xFF';  // half a character
    return converted;
}

}  // namespace zel
