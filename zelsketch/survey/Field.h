#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "zel/record/CountedText.h"
#include "zel/record/LittleEndian.h"

namespace zel {

enum class FieldKind { kNumber, kDouble, kCounted, kFixed, kShort, kOpening, kClosing, kLeftOver };

constexpr FieldKind KindOf(const std::uint8_t&) { return FieldKind::kNumber; }
constexpr FieldKind KindOf(const LittleEndian<std::uint16_t>&) { return FieldKind::kNumber; }
constexpr FieldKind KindOf(const LittleEndian<std::int32_t>&) { return FieldKind::kNumber; }
constexpr FieldKind KindOf(const LittleEndian<double>&) { return FieldKind::kDouble; }
template <std::size_t n>
constexpr FieldKind KindOf(const CountedText<n>&) {
    return FieldKind::kCounted;
}
template <std::size_t n>
constexpr FieldKind KindOf(const FixedText<n>&) {
    return FieldKind::kFixed;
}

// Where a definition stands: its index in the file's list, then in the members of that definition, and so on.
using Place = std::vector<std::uint32_t>;

// One field as it stands in a file. A field that the file's end cuts is completed: with zeros, or with what
// a writer always puts there.
struct Field {
    std::string_view name;
    FieldKind kind;
    std::size_t offset;
    std::string_view bytes;
    std::size_t present;  // how many of the bytes the file has
    const Place*
        place;  // of the definition it belongs to, which owns a list's opening and closing; else empty

    // "Definitions[2].AreaCode"
    std::string FullName() const;
    std::size_t Missing() const { return bytes.size() - present; }
    std::size_t Byte(std::size_t index) const { return static_cast<unsigned char>(bytes[index]); }

    // Numbers: the value; those of 4 bytes are signed.
    std::int64_t Integer() const;
    // Texts: what a reader of the field sees. The tag and the NULs of a ShortString are no concern here.
    std::string_view Text() const;
    // How long a writer lets the text be.
    std::size_t MaxLength() const;
    // Texts: what stands behind the text, without the NULs that follow it.
    std::string_view Behind() const;
    // Texts: whether the text alone tells all the bytes.
    bool IsPlain() const;
};

// Is shown the fields of a file in file order. What a field belongs to follows from the calls before it:
// the header's come first; a list's fields stand between an opening and its closing; a definition's end with
// its list of members.
class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;

    virtual void OnField(const Field& field) = 0;
    virtual void OnHeaderEnd() {}
    virtual void OnDefinition(const Place& /*place*/) {}
};

}  // namespace zel
