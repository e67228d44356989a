#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace zel {

// A little-endian field of a file block: alignment 1, the bytes as they stand in the file, whatever the
// machine's order. Doubles travel as their 8 bytes, so that every bit pattern survives; Load and Store keep
// it so where a conversion through a floating-point register would quiet a signalling NaN.
template <class T>
class LittleEndian {
    static_assert(std::is_arithmetic_v<T>);

public:
    LittleEndian() = default;
    LittleEndian(T value) { Store(value); }
    LittleEndian& operator=(T value) {
        Store(value);
        return *this;
    }
    operator T() const {
        T value;
        Load(&value);
        return value;
    }

    void Load(T* value) const {
        Bits bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bits = static_cast<Bits>(bits | Bits{bytes_[i]} << (8 * i));
        std::memcpy(value, &bits, sizeof bits);
    }
    void Store(const T& value) {
        Bits bits;
        std::memcpy(&bits, &value, sizeof bits);
        for (std::size_t i = 0; i < sizeof(T); ++i) bytes_[i] = static_cast<unsigned char>(bits >> (8 * i));
    }

private:
    using Bits = std::conditional_t<
        sizeof(T) == 8, std::uint64_t,
        std::conditional_t<sizeof(T) == 4, std::uint32_t,
                           std::conditional_t<sizeof(T) == 2, std::uint16_t, std::uint8_t>>>;

    unsigned char bytes_[sizeof(T)];
};

}  // namespace zel
