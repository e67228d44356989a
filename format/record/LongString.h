#pragma once

#include <string>

#include "Streamed.h"

namespace zel {

// A text of any length in memory. In the file: a signed 16-bit count c, then c characters without a NUL. A
// text of more than 32767 characters writes a count that readers do not take for one.
class LongString : public Streamed {
public:
    // A count below 1 leaves the text as it was; a NUL among the characters ends it.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    std::string text;
};

}  // namespace zel
