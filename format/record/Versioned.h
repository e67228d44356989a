#pragma once

#include <cstdint>

namespace zel {

// Holds the file version of a piece, by which its fields are present; a new piece has version 0. Who owns the
// piece sets the version before Read or Write.
class Versioned {
public:
    virtual ~Versioned() = default;

    virtual std::int32_t GetVersion() const { return version_; }
    // A piece with versioned parts hands the version on to them.
    virtual void SetVersion(std::int32_t version) { version_ = version; }

protected:
    Versioned() = default;
    Versioned(const Versioned&) = default;
    Versioned& operator=(const Versioned&) = default;

private:
    std::int32_t version_ = 0;
};

}  // namespace zel
