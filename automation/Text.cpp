#include "Text.h"

#include <stdlib.h>
#include <wchar.h>

#include <algorithm>
#include <memory>
#include <new>

namespace zel {
namespace {

std::size_t LengthOf(const OLECHAR* text) noexcept { return text ? wcslen(text) : 0; }

}  // namespace

std::string ToAnsi(const OLECHAR* text) {
    const auto length = static_cast<int>(LengthOf(text));
    if (length == 0) return {};
    std::string ansi(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_ACP, 0, text, length, ansi.data(), static_cast<int>(ansi.size()), nullptr,
                        nullptr);
    return std::string(UpToNul(ansi));
}

std::string_view ToAnsi(const OLECHAR* text, std::size_t limit, char (&buffer)[kAnsiBufferSize]) noexcept {
    // Two characters may make one (a surrogate pair), and one makes four bytes at most.
    const auto length = static_cast<int>(std::min({LengthOf(text), 2 * limit, kAnsiBufferSize / 4}));
    if (length == 0) return {};
    const int size = WideCharToMultiByte(CP_ACP, 0, text, length, buffer, sizeof buffer, nullptr, nullptr);
    return UpToNul({buffer, static_cast<std::size_t>(size)});
}

std::wstring ToWide(std::string_view text) {
    if (text.empty()) return {};
    const auto length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length)));
    return wide;
}

INT ReplaceBstr(BSTR* place, std::string_view text) { return SysReAllocString(place, ToWide(text).c_str()); }

void ToWideShort(std::string_view text, wchar_t (&wide)[kWideShortSize]) noexcept {
    const auto room = static_cast<int>(kWideShortSize) - 1;
    const auto length = static_cast<int>(text.size());
    wide[length == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide, room)] = L'\0';
}

bool IsAscii(std::string_view text) noexcept {
    unsigned char all = 0;
    for (const char c : text) all |= static_cast<unsigned char>(c);
    return all < 128;
}

INT ReplaceBstrShort(BSTR* place, std::string_view text) noexcept {
    wchar_t wide[kWideShortSize];
    ToWideShort(text, wide);
    return SysReAllocString(place, wide);
}

std::string ToPath(const OLECHAR* name) {
    const std::size_t size = LengthOf(name) + 1;
    const std::unique_ptr<char[]> path(new (std::nothrow) char[size + 1]());
    if (!path || size == 1 || wcstombs(path.get(), name, size) == static_cast<std::size_t>(-1)) return {};
    return path.get();
}

}  // namespace zel
