#include "Field.h"

#include <algorithm>

#include "FieldText.h"
#include "zel/text/Text.h"

namespace zel {

std::string Field::FullName() const {
    std::string full = PlaceText(*place);
    if (!full.empty()) full += '.';
    return full.append(name);
}

std::int64_t Field::Integer() const {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) bits |= static_cast<std::uint32_t>(Byte(i)) << (8 * i);
    if (bytes.size() == 4) return static_cast<std::int32_t>(bits);
    return bits;
}

std::string_view Field::Text() const {
    if (kind == FieldKind::kShort) return bytes.substr(2);
    if (kind == FieldKind::kFixed) return UpToNul(bytes);
    return UpToNul(bytes.substr(1, Byte(0)));
}

std::size_t Field::MaxLength() const {
    if (kind == FieldKind::kShort) return 255;
    return bytes.size() - (kind == FieldKind::kFixed ? 1 : 2);
}

std::string_view Field::Behind() const {
    const std::string_view text = Text();
    const std::string_view behind(text.data() + text.size(),
                                  static_cast<std::size_t>(bytes.end() - (text.begin() + text.size())));
    return behind.substr(std::min(behind.find_first_not_of('\0'), behind.size()));
}

bool Field::IsPlain() const {
    if (kind == FieldKind::kShort) return Byte(0) == 6;
    const std::size_t length = Text().size();
    return length <= MaxLength() && (kind == FieldKind::kFixed || Byte(0) == length) && Behind().empty();
}

}  // namespace zel
