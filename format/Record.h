#pragma once

#include <cstdint>
#include <iosfwd>

namespace zel {

// The protocol of every piece of a definition file. Its owner sets the version before Read or Write; fields
// are present from the version that introduced them, in both directions. Neither direction reports errors of
// its own: they are the stream's state.
class Record {
public:
    virtual ~Record() = default;

    virtual std::int32_t GetVersion() const = 0;
    // Hands the version on to the piece's parts.
    virtual void SetVersion(std::int32_t version) = 0;
    virtual std::istream& Read(std::istream& stream) = 0;
    virtual std::ostream& Write(std::ostream& stream) = 0;

protected:
    Record() = default;
    Record(const Record&) = default;
    Record& operator=(const Record&) = default;
};

}  // namespace zel
