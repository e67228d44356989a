#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "FieldForm.h"
#include "LongString.h"
#include "PlainString.h"
#include "ShortString.h"

namespace zel {

// Presents the calls of Reader to a walk over named fields, and leaves to the class behind it where the bytes
// come from and what is made of each field. Lists tell it where their elements begin.
class NamedReader {
public:
    static constexpr bool kReads = true;

    virtual ~NamedReader() = default;

    // The next `width` bytes, which are a field. Where the source ends they are completed.
    virtual std::string_view Take(FieldForm form, const char* name, std::size_t width) = 0;
    // The bytes that are still to be taken.
    virtual std::string_view Rest() const = 0;
    // Around the elements of a list; its opening was taken, its closing will be.
    virtual void BeginElements(const char* list) = 0;
    virtual void EndElements() = 0;
    // An element is a record, or a field that has no name of its own.
    virtual void BeginRecord() = 0;
    virtual void EndRecord() = 0;
    virtual void BeginValue() = 0;
    // For content that cannot be what it claims: nothing more is taken.
    virtual void Fail() = 0;

    std::int32_t version() const { return version_; }
    void SetVersion(std::int32_t version) { version_ = version; }

    template <class T>
    void Field(T& field, const char* name) {
        static_assert(alignof(T) == 1 && std::is_trivially_copyable_v<T>, "a field is its bytes in the file");
        std::memcpy(&field, Take(FormOf(field), name, sizeof field).data(), sizeof field);
    }
    void Field(ShortString& field, const char* name) {
        Keep(Take({FieldKind::kShort}, name, 2 + Peek(1)).substr(2), field.text);
    }
    void Field(PlainString& field, const char* name) { Keep(TakePlain(name), field.text); }
    void Field(LongString& field, const char* name) {
        const auto count = static_cast<std::int16_t>(Peek(0) | Peek(1) << 8);
        const std::size_t length = count > 0 ? static_cast<std::size_t>(count) : 0;
        Keep(Take({FieldKind::kLong}, name, 2 + length).substr(2), field.text);
    }

    template <class... T>
    void Fields(const Named<T>&... fields) {
        (Field(fields.field, fields.name), ...);
    }

    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        if (version_ >= introduced) Field(field, name);
    }

    template <std::size_t n>
    void PlainText(FixedText<n>& text, const char* name) {
        if (const std::string_view characters = TakePlain(name); !characters.empty()) text.Put(characters);
    }

    // A working variable.
    template <class T>
    void Value(T& value, const char* name) {
        LittleEndian<T> stored;
        Field(stored, name);
        value = stored;
    }

    // A byte of what comes next, 0 where there is none.
    std::size_t Peek(std::size_t index) const {
        return index < Rest().size() ? static_cast<unsigned char>(Rest()[index]) : 0;
    }
    // Whether an element of a marker-framed list starts here.
    bool AtElement() const { return Peek(0) != 0; }

private:
    std::string_view TakePlain(const char* name) {
        return Take({FieldKind::kPlain}, name, 1 + Peek(0)).substr(1);
    }
    static void Keep(std::string_view characters, std::string& text) {
        if (!characters.empty()) text.assign(UpToNul(characters));
    }

    std::int32_t version_ = 0;
};

}  // namespace zel
