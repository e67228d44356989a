#pragma once

#include <stdint.h>
#include <string.h>

// A double among the arguments of a call, as the platform passes it: in the next two words, be they registers
// or stack, whereas the compiler would go on to an even register for a double. Keeps every bit pattern.
class DoubleArgument {
public:
    DoubleArgument() = default;
    DoubleArgument(double value) noexcept { memcpy(words_, &value, sizeof words_); }
    operator double() const noexcept {
        double value;
        memcpy(&value, words_, sizeof value);
        return value;
    }

private:
    uint32_t words_[2];
};
