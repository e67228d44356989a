#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "zel/record/FieldForm.h"

namespace zel {

// Where a record stands: for each list around it the list's name, and the index in it.
struct Level {
    std::string_view list;
    std::uint32_t index;
};
constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;  // before the first; one more is 0
using Place = std::vector<Level>;

// One field as it stands in a file. A field that the file's end cuts is completed: with zeros, or with what
// a writer always puts there.
struct Field {
    std::string_view name;
    FieldKind kind;
    std::size_t offset;
    std::string_view bytes;
    std::size_t present;   // how many of the bytes the file has
    const Place* place;    // of the record it belongs to, which owns a list's opening and closing; else empty
    std::size_t unit = 0;  // of numbers: the bytes of each
    bool isOfHeader = false;

    // "Definitions[2].AreaCode", "Header.Type", "FileFlags"
    std::string FullName() const;
    std::size_t Missing() const { return bytes.size() - present; }
    std::size_t Byte(std::size_t index) const { return static_cast<unsigned char>(bytes[index]); }

    // Numbers: how many the field holds, and each of them.
    std::size_t Count() const { return bytes.size() / unit; }
    std::int64_t Integer(std::size_t index = 0) const;
    std::uint64_t Bits(std::size_t index = 0) const;
    // Texts: what a reader of the field sees. The tag and the NULs of a ShortString are no concern here.
    std::string_view Text() const;
    // How long a writer lets the text be.
    std::size_t MaxLength() const;
    // Texts: what stands behind the text, without the NULs that follow it.
    std::string_view Behind() const;
    // Texts: whether the text alone tells all the bytes.
    bool IsPlain() const;
};

// Is shown the fields of a file in file order: those of the header, of lists between a list's opening and its
// end, of each record of a list, and what stands between the lists.
class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;

    virtual void OnField(const Field& field) = 0;
    virtual void OnHeader() {}
    virtual void OnHeaderEnd() {}
    virtual void OnRecord(const Place& /*place*/) {}
    virtual void OnRecordEnd() {}
};

}  // namespace zel
