#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <string_view>

#include "zel/record/CountedText.h"

namespace zel {

// Between automation strings and the 8-bit text of files, which is in the platform's ANSI code page. A null
// automation string is an empty one, and a string ends at its first NUL.

// The whole text. Characters that the code page lacks become its replacement character.
std::string ToAnsi(const OLECHAR* text);
// At least the first `limit` bytes of the text, without allocating. The bytes live in `buffer`.
constexpr std::size_t kAnsiBufferSize = 512;
std::string_view ToAnsi(const OLECHAR* text, std::size_t limit, char (&buffer)[kAnsiBufferSize]) noexcept;

std::wstring ToWide(std::string_view text);
// The text of a fixed field, ended by a NUL.
constexpr std::size_t kWideShortSize = 64;
void ToWideShort(std::string_view text, wchar_t (&wide)[kWideShortSize]) noexcept;

// Whether all characters are below 128: every ANSI code page gives those back as they were.
bool IsAscii(std::string_view text) noexcept;

// Replaces the caller's string by the text; what SysReAllocString answers.
INT ReplaceBstr(BSTR* place, std::string_view text);
// The same for the texts of fixed fields: nothing is allocated but the caller's string.
INT ReplaceBstrShort(BSTR* place, std::string_view text) noexcept;

// The path that a file is opened by: what the C library makes of the name in at most one byte a character,
// cut there. A name that it cannot convert names no file, and the path is empty.
std::string ToPath(const OLECHAR* name);

}  // namespace zel
