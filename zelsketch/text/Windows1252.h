#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zel {

// The 8-bit text of files and UTF-8. The code page is Windows-1252, with the five bytes that it leaves open
// standing for the control characters of the same number: each byte has one character of its own, so that
// text goes there and back without loss.

// The character of a byte.
char32_t FromWindows1252(unsigned char byte);
// Nothing where the code page lacks the character.
std::optional<unsigned char> ToWindows1252(char32_t character);

std::string Utf8OfWindows1252(std::string_view bytes);

void AppendUtf8(std::string& text, char32_t character);
// The bytes of UTF-8; nothing where it is none, or the code page lacks a character.
std::optional<std::string> EncodeWindows1252(std::string_view text);

// How many bytes the first character has; 0 where they are no UTF-8.
std::size_t Utf8Size(std::string_view text);
// The first character of valid UTF-8, which is taken off `text`.
char32_t TakeUtf8(std::string_view& text);

}  // namespace zel
