#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zel {

// The text up to its first NUL, or all of it.
inline std::string_view UpToNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// A text field of n bytes in a file block: a count byte L, then the characters and a NUL. At most n - 2
// characters. Bytes behind the NUL are whatever stood there before; they are kept.
template <std::size_t n>
struct CountedText {
    static constexpr std::size_t kMaxLength = n - 2;

    std::uint8_t count;
    char characters[n - 1];

    // What a reader of the field sees, whatever its bytes claim: never past the field's end.
    std::string_view Text() const {
        return UpToNul({characters, std::min<std::size_t>(count, sizeof characters)});
    }

    // Cuts silently at kMaxLength characters.
    void Put(std::string_view text) {
        text = UpToNul(text).substr(0, kMaxLength);
        std::memcpy(characters, text.data(), text.size());
        characters[text.size()] = characters[kMaxLength] = '\0';
        count = static_cast<std::uint8_t>(text.size());
    }

    // Ends the characters with a NUL: behind them where the count is plausible, else in the field's last
    // byte.
    void Normalize() { characters[count >= 1 && count <= kMaxLength ? count : kMaxLength] = '\0'; }
};

// A text field of n bytes without a count: NUL-terminated, at most n - 1 characters.
template <std::size_t n>
struct FixedText {
    static constexpr std::size_t kMaxLength = n - 1;

    char characters[n];

    // Without a NUL the text ends at the field's end.
    std::string_view Text() const { return UpToNul({characters, n}); }

    void Put(std::string_view text) {
        text = UpToNul(text).substr(0, kMaxLength);
        std::memcpy(characters, text.data(), text.size());
        characters[text.size()] = characters[kMaxLength] = '\0';
    }
};

}  // namespace zel
