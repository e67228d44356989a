#pragma once

#include <iosfwd>

namespace zel {

// The first interface of everything that stands inside a list or a record of a drawing: it reads and writes
// itself. Neither direction reports errors of its own: they are the stream's state.
class Streamed {
public:
    virtual ~Streamed() = default;

    virtual std::istream& Read(std::istream& stream) = 0;
    virtual std::ostream& Write(std::ostream& stream) = 0;

protected:
    Streamed() = default;
    Streamed(const Streamed&) = default;
    Streamed& operator=(const Streamed&) = default;
};

}  // namespace zel
