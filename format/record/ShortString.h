#pragma once

#include <string>

#include "Streamed.h"

namespace zel {

// A text of any length in memory. In the file: the tag byte 6, a count byte c, then c characters without a
// NUL. A longer text than 255 characters writes a count that does not match (its low 8 bits), followed by all
// characters.
class ShortString : public Streamed {
public:
    // A count of 0 leaves the text as it was; a NUL among the characters ends it.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    std::string text;
};

}  // namespace zel
