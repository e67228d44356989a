#pragma once

#include <string>

#include "Streamed.h"

namespace zel {

// A text of any length in memory. In the file: a count byte c, then c characters without a NUL. Like a
// ShortString, a text longer than its count can say writes a count that does not match.
class PlainString : public Streamed {
public:
    // A count of 0 leaves the text as it was; a NUL among the characters ends it.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    std::string text;
};

}  // namespace zel
