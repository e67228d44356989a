#include "Field.h"

#include <algorithm>

#include "FieldText.h"
#include "zel/drawing/StyleReference.h"
#include "zel/text/Text.h"

namespace zel {

std::string Field::FullName() const {
    std::string full = isOfHeader ? "Header" : PlaceText(*place);
    if (!full.empty()) full += '.';
    return full.append(name);
}

std::uint64_t Field::Bits(std::size_t index) const {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < unit; ++i)
        bits |= static_cast<std::uint64_t>(Byte(index * unit + i)) << (8 * i);
    return bits;
}

std::int64_t Field::Integer(std::size_t index) const {
    const std::uint64_t bits = Bits(index), sign = std::uint64_t{1} << (8 * unit - 1);
    const bool isNegative = kind == FieldKind::kSigned && (bits & sign) != 0;
    return static_cast<std::int64_t>(isNegative ? bits | ~(sign - 1) : bits);
}

std::string_view Field::Text() const {
    switch (kind) {
        case FieldKind::kPlain:
            return bytes.substr(1);
        case FieldKind::kShort:
        case FieldKind::kLong:
            return bytes.substr(2);
        case FieldKind::kFixed:
            return UpToNul(bytes);
        case FieldKind::kStyle:
            return StyleReference::NameIn(bytes);
        default:
            return UpToNul(bytes.substr(1, Byte(0)));
    }
}

std::size_t Field::MaxLength() const {
    switch (kind) {
        case FieldKind::kCounted:
            return bytes.size() - 2;
        case FieldKind::kFixed:
        case FieldKind::kCode:
            return bytes.size() - 1;
        default:
            return 255;
    }
}

std::string_view Field::Behind() const {
    if (kind != FieldKind::kCounted && kind != FieldKind::kFixed && kind != FieldKind::kCode) return {};
    const std::string_view text = Text();
    const std::string_view behind(text.data() + text.size(),
                                  static_cast<std::size_t>(bytes.end() - (text.begin() + text.size())));
    return behind.substr(std::min(behind.find_first_not_of('\0'), behind.size()));
}

bool Field::IsPlain() const {
    if (kind == FieldKind::kShort) return Byte(0) == 6;
    if (kind == FieldKind::kStyle) return bytes.size() == 1 ? !Text().empty() : Byte(0) == 0;
    if (kind == FieldKind::kPlain) return true;
    if (kind == FieldKind::kLong) return Byte(0) + 256 * Byte(1) == Text().size();
    const std::size_t length = Text().size();
    return length <= MaxLength() && (kind == FieldKind::kFixed || Byte(0) == length) && Behind().empty();
}

}  // namespace zel
