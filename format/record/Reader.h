#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <streambuf>
#include <string>
#include <type_traits>

#include "CountedText.h"
#include "FieldForm.h"
#include "LittleEndian.h"
#include "LongString.h"
#include "PlainString.h"
#include "ShortString.h"

namespace zel {

// Reads a record's fields from a stream, straight from its buffer: one sentry for the whole record, no
// seeking. The stream sees what reading field by field with istream::read would leave: a short read sets
// eofbit and failbit (or throws, where the caller asked for that) and later reads fail in turn. Presents the
// calls of Writer, so that one walk over the fields serves both directions; a field's name is for archives
// that show it.
class Reader {
public:
    static constexpr bool kReads = true;

    // The stream must outlive the reader. Fields are present by `version`.
    explicit Reader(std::istream& stream, std::int32_t version = 0)
        : stream_(stream), state_(stream), version_(version) {
        const std::istream::sentry sentry(stream, true);
    }

    std::int32_t version() const { return version_; }
    // Each record walks its fields under its own version.
    void SetVersion(std::int32_t version) { version_ = version; }

    // The number of bytes that were there; the rest of `to` keeps what it held.
    std::size_t Bytes(void* to, std::size_t size) {
        if (!state_.good() || size > Available()) return BytesFromBuffer(to, size);
        std::memcpy(to, GetArea::Begin(*state_.rdbuf()), size);
        Skip(size);
        return size;
    }

    // A field keeps the bytes that could not be read.
    template <class T>
    void Field(T& field, const char* = nullptr) {
        static_assert(alignof(T) == 1 && std::is_trivially_copyable_v<T>, "a field is its bytes in the file");
        Bytes(&field, sizeof field);
    }
    void Field(ShortString& field, const char* = nullptr) {
        std::uint8_t tagAndCount[2] = {};
        Bytes(tagAndCount, sizeof tagAndCount);
        if (tagAndCount[1] > 0) Characters(field.text, tagAndCount[1]);
    }

    void Field(PlainString& field, const char* = nullptr) { Text<std::uint8_t>(field.text); }
    void Field(LongString& field, const char* = nullptr) { Text<std::int16_t>(field.text); }

    // Fields that stand one behind the other.
    template <class... T>
    void Fields(const Named<T>&... fields) {
        constexpr std::size_t kSize = (sizeof(T) + ...);
        if (!state_.good() || kSize > Available()) return (Field(fields.field), ...);
        const char* from = GetArea::Begin(*state_.rdbuf());
        ((std::memcpy(&fields.field, from, sizeof(T)), from += sizeof(T)), ...);
        Skip(kSize);
    }

    template <class T>
    void Since(std::int32_t introduced, T& field, const char* = nullptr) {
        if (version_ >= introduced) Field(field);
    }

    // A PlainString that is held in a fixed buffer, which keeps as much of it as it has room for.
    template <std::size_t n>
    void PlainText(FixedText<n>& text, const char* = nullptr) {
        const std::size_t length = Value<std::uint8_t>();
        if (length == 0) return;
        char characters[UINT8_MAX];
        const std::size_t present = Bytes(characters, length);
        std::memset(characters + present, 0, length - present);
        text.Put({characters, length});
    }

    // A working variable: its missing bytes are 0.
    template <class T>
    T Value() {
        LittleEndian<T> value{};
        Field(value);
        return value;
    }
    template <class T>
    void Value(T& value, const char*) {
        value = Value<T>();
    }

    // A length, then that many characters, of which the text is those before the first NUL. A length below 1
    // leaves the text as it was; characters that are missing count as NULs. A text that there is no memory
    // for stays, and so do its characters.
    template <class Length>
    void Text(std::string& text) {
        const Length length = Value<Length>();
        if (length > 0) Characters(text, static_cast<std::size_t>(length));
    }
    void Characters(std::string& text, std::size_t length);

    // A record class from elsewhere, through its own operations.
    template <class T>
    void Foreign(T& record) {
        record.Read(stream_);
    }

    // Whether an element of a marker-framed list starts here. A zero byte, the list's end, is consumed;
    // any other byte stays and is the first of the element. False at the end of the stream.
    bool AtElement() {
        if (!state_.good() || Available() == 0) return AtElementOfBuffer();
        if (*GetArea::Begin(*state_.rdbuf()) != 0) return true;
        Skip(1);
        return false;
    }

    // Whether a counted list may have a further element. The count goes on past the end of the stream, where
    // elements cost no bytes: up to kMaxMissing of them, so that lists of lists that lie stay small.
    bool MayAppend() { return state_.good() || missing_++ < kMaxMissing; }

    // For content that cannot be what it claims.
    void Fail() { state_.setstate(std::ios_base::failbit); }

private:
    static constexpr std::size_t kMaxMissing = 65536;

    // The get area of any stream buffer, which otherwise only the buffer's own class may use.
    struct GetArea : std::streambuf {
        static const char* Begin(const std::streambuf& buffer) { return (buffer.*&GetArea::gptr)(); }
        static const char* End(const std::streambuf& buffer) { return (buffer.*&GetArea::egptr)(); }
        static void Skip(std::streambuf& buffer, int size) { (buffer.*&GetArea::gbump)(size); }
    };

    std::size_t Available() const {
        const std::streambuf& buffer = *state_.rdbuf();
        return static_cast<std::size_t>(GetArea::End(buffer) - GetArea::Begin(buffer));
    }
    void Skip(std::size_t size) { GetArea::Skip(*state_.rdbuf(), static_cast<int>(size)); }
    bool AtElementOfBuffer();
    std::size_t BytesFromBuffer(void* to, std::size_t size);

    std::istream& stream_;
    std::ios& state_;  // of the same stream: a virtual base, which would be looked up for every field
    std::int32_t version_;
    std::size_t missing_ = 0;
};

}  // namespace zel
