#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

namespace zel {

// The bytes that `text` names: hex pairs, quoted characters, "*n" repeating the byte or the group in
// parentheses before it n times in all. Hex("06 04 'GLA1' 00*109") is 115 bytes.
inline std::string Hex(const std::string& text) {
    std::string bytes;
    std::size_t group = 0, repeated = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ' || text[i] == '\n') continue;
        if (text[i] == '(') {
            group = bytes.size();
        } else if (text[i] == ')') {
            repeated = group;
        } else if (text[i] == '*') {
            const std::size_t end = std::min(text.find_first_not_of("0123456789", i + 1), text.size());
            const std::string once = bytes.substr(repeated);
            for (std::size_t count = std::stoul(text.substr(i + 1)); count > 1; --count) bytes += once;
            i = end - 1;
        } else if (text[i] == '\'') {
            const std::size_t end = text.find('\'', i + 1);
            bytes.append(text, i + 1, end - i - 1);
            repeated = bytes.size() - 1;
            i = end;
        } else {
            repeated = bytes.size();
            bytes += static_cast<char>(std::stoul(text.substr(i, 2), nullptr, 16));
            ++i;
        }
    }
    return bytes;
}

// How far apart a test cuts bytes: they are cut everywhere, on the handheld, where that takes minutes, in
// some places.
inline std::size_t CutStep([[maybe_unused]] std::string_view bytes) {
#ifdef UNDER_CE
    return bytes.size() / 20 + 1;
#else
    return 1;
#endif
}

// For EXPECT_TRUE: where bytes differ, shows some of both from the first difference on.
inline testing::AssertionResult SameBytes(std::string_view expected, std::string_view actual) {
    if (expected == actual) return testing::AssertionSuccess();
    std::size_t first = 0;
    while (first < std::min(expected.size(), actual.size()) && expected[first] == actual[first]) ++first;
    return testing::AssertionFailure()
           << "from byte " << first << " on\nexpected " << testing::PrintToString(expected.substr(first, 64))
           << "\nactual   " << testing::PrintToString(actual.substr(first, 64));
}

// What a record writes.
template <class Piece>
std::string Written(Piece& record) {
    std::ostringstream stream;
    record.Write(stream);
    return stream.str();
}

// Reads a record from bytes; gives how many of them it left.
template <class Piece>
std::size_t ReadFrom(Piece& record, const std::string& bytes) {
    std::istringstream stream(bytes);
    record.Read(stream);
    return static_cast<std::size_t>(stream.rdbuf()->in_avail());
}

}  // namespace zel
