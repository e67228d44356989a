#pragma once

#include <iosfwd>

#include "Versioned.h"

namespace zel {

// The protocol of a file and of every piece of a definition file. Its owner sets the version before Read or
// Write; fields are present from the version that introduced them, in both directions. Neither direction
// reports errors of its own: they are the stream's state.
class Record : public Versioned {
public:
    virtual std::istream& Read(std::istream& stream) = 0;
    virtual std::ostream& Write(std::ostream& stream) = 0;
};

}  // namespace zel
