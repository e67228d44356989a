#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>

#include "LittleEndian.h"
#include "ShortString.h"

namespace zel {

// Writes a record's fields to a stream, straight into its buffer: one sentry for the whole record.
// A buffer that takes less than it is given marks the stream bad; later writes do nothing.
// Presents the calls of Reader, so that one walk over the fields serves both directions.
class Writer {
public:
    static constexpr bool kReads = false;

    // The stream must outlive the writer. Fields are present by `version`.
    explicit Writer(std::ostream& stream, std::int32_t version = 0)
        : stream_(stream), version_(version), sentry_(stream) {}

    std::int32_t version() const { return version_; }

    void Bytes(const void* from, std::size_t size);

    template <class T>
    void Field(const T& field) {
        static_assert(alignof(T) == 1 && std::is_trivially_copyable_v<T>, "a field is its bytes in the file");
        Bytes(&field, sizeof field);
    }
    void Field(const ShortString& field) {
        Value(std::uint8_t{6});
        Text<std::uint8_t>(field.text);
    }

    template <class T>
    void Since(std::int32_t introduced, const T& field) {
        if (version_ >= introduced) Field(field);
    }

    template <class T>
    void Value(T value) {
        Field(LittleEndian<T>{value});
    }

    // The length's low bits, then all characters.
    template <class Length>
    void Text(const std::string& text) {
        Value(static_cast<Length>(text.size()));
        Bytes(text.data(), text.size());
    }

private:
    std::ostream& stream_;
    std::int32_t version_;
    std::ostream::sentry sentry_;
};

}  // namespace zel
