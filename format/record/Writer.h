#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <type_traits>

#include "CountedText.h"
#include "FieldForm.h"
#include "LittleEndian.h"
#include "LongString.h"
#include "PlainString.h"
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
        : stream_(stream), state_(stream), version_(version), sentry_(stream) {}

    std::int32_t version() const { return version_; }
    // Each record walks its fields under its own version.
    void SetVersion(std::int32_t version) { version_ = version; }

    void Bytes(const void* from, std::size_t size) {
        // Below this a copy beats a call; it also keeps the step within pbump's int. A full area may be null.
        constexpr std::size_t kSmall = 4096;
        if (!state_.good() || size > kSmall || size >= PutArea::Size(*state_.rdbuf()))
            return BytesToBuffer(from, size);
        std::memcpy(PutArea::Begin(*state_.rdbuf()), from, size);
        PutArea::Skip(*state_.rdbuf(), size);
    }

    template <class T>
    void Field(const T& field, const char* = nullptr) {
        static_assert(alignof(T) == 1 && std::is_trivially_copyable_v<T>, "a field is its bytes in the file");
        Bytes(&field, sizeof field);
    }
    void Field(const ShortString& field, const char* = nullptr) {
        const std::uint8_t tagAndCount[] = {6, static_cast<std::uint8_t>(field.text.size())};
        Bytes(tagAndCount, sizeof tagAndCount);
        Bytes(field.text.data(), field.text.size());
    }

    void Field(const PlainString& field, const char* = nullptr) { Text<std::uint8_t>(field.text); }
    void Field(const LongString& field, const char* = nullptr) { Text<std::int16_t>(field.text); }

    // Fields that stand one behind the other.
    template <class... T>
    void Fields(const Named<T>&... fields) {
        constexpr std::size_t kSize = (sizeof(T) + ...);
        if (!state_.good() || kSize > PutArea::Size(*state_.rdbuf())) return (Field(fields.field), ...);
        char* to = PutArea::Begin(*state_.rdbuf());
        ((std::memcpy(to, &fields.field, sizeof(T)), to += sizeof(T)), ...);
        PutArea::Skip(*state_.rdbuf(), kSize);
    }

    template <class T>
    void Since(std::int32_t introduced, const T& field, const char* = nullptr) {
        if (version_ >= introduced) Field(field);
    }

    template <std::size_t n>
    void PlainText(const FixedText<n>& text, const char* = nullptr) {
        Text<std::uint8_t>(text.Text());
    }

    template <class T>
    void Value(T value, const char* = nullptr) {
        Field(LittleEndian<T>{value});
    }

    // The length's low bits, then all characters.
    template <class Length>
    void Text(std::string_view text) {
        Value(static_cast<Length>(text.size()));
        Bytes(text.data(), text.size());
    }

    // A record class from elsewhere, through its own operations.
    template <class T>
    void Foreign(T& record) {
        record.Write(stream_);
    }

private:
    // The put area of any stream buffer, which otherwise only the buffer's own class may use.
    struct PutArea : std::streambuf {
        static char* Begin(const std::streambuf& buffer) { return (buffer.*&PutArea::pptr)(); }
        static std::size_t Size(const std::streambuf& buffer) {
            return static_cast<std::size_t>((buffer.*&PutArea::epptr)() - Begin(buffer));
        }
        static void Skip(std::streambuf& buffer, std::size_t size) {
            (buffer.*&PutArea::pbump)(static_cast<int>(size));
        }
    };

    void BytesToBuffer(const void* from, std::size_t size);

    std::ostream& stream_;
    std::ios& state_;  // of the same stream: a virtual base, which would be looked up for every field
    std::int32_t version_;
    std::ostream::sentry sentry_;
};

}  // namespace zel
