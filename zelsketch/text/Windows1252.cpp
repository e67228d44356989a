#include "Windows1252.h"

#include <algorithm>
#include <iterator>

namespace zel {
namespace {

// The characters of bytes 0x80 to 0x9F. All others are those of Latin-1.
constexpr char16_t kUpper[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

char32_t FromWindows1252(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? kUpper[byte - 0x80] : byte;
}

std::optional<unsigned char> ToWindows1252(char32_t character) {
    const auto* upper = std::find(std::begin(kUpper), std::end(kUpper), character);
    if (upper != std::end(kUpper)) return static_cast<unsigned char>(0x80 + (upper - kUpper));
    if (character > 0xFF || (character >= 0x80 && character < 0xA0)) return std::nullopt;
    return static_cast<unsigned char>(character);
}

std::string Utf8OfWindows1252(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) AppendUtf8(text, FromWindows1252(static_cast<unsigned char>(c)));
    return text;
}

std::optional<std::string> EncodeWindows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        if (Utf8Size(text) == 0) return std::nullopt;
        const auto byte = ToWindows1252(TakeUtf8(text));
        if (!byte) return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

void AppendUtf8(std::string& text, char32_t character) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            append(0xE0 | character >> 12);
        } else {
            append(0xF0 | character >> 18);
            append(0x80 | (character >> 12 & 0x3F));
        }
        append(0x80 | (character >> 6 & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

std::size_t Utf8Size(std::string_view text) {
    const auto byte = [text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
    };
    const unsigned lead = byte(0);
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    // Longer forms than needed, surrogates, and what lies beyond the last character.
    const bool isOdd = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) >= 0xA0) ||
                       (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) >= 0x90);
    return isOdd ? 0 : size;
}

char32_t TakeUtf8(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = size == 1 ? lead : lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
    text.remove_prefix(size);
    return character;
}

}  // namespace zel
