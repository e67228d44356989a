#pragma once

#include <iosfwd>
#include <string>

namespace zel {

// A text of any length in memory. In the file: the tag byte 6, a count byte c, then c characters without a
// NUL. A longer text than 255 characters writes a count that does not match (its low 8 bits), followed by all
// characters.
class ShortString {
public:
    ShortString() = default;
    ShortString(const ShortString&) = default;
    ShortString(ShortString&&) = default;
    ShortString& operator=(const ShortString&) = default;
    ShortString& operator=(ShortString&&) = default;
    virtual ~ShortString() = default;

    // A count of 0 leaves the text as it was; a NUL among the characters ends it.
    virtual std::istream& Read(std::istream& stream);
    virtual std::ostream& Write(std::ostream& stream);

    std::string text;
};

}  // namespace zel
