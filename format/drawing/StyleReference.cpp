#include "StyleReference.h"

namespace zel {
namespace {

constexpr struct {
    std::uint8_t code;
    std::string_view name;
} kKeywords[] = {{255, "BYLAYER"}, {254, "BYBLOCK"}, {253, "S1"}};

}  // namespace

std::string_view StyleReference::KeywordOf(std::uint8_t code) {
    for (const auto& keyword : kKeywords)
        if (keyword.code == code) return keyword.name;
    return {};
}

std::uint8_t StyleReference::CodeOf(std::string_view name) {
    for (const auto& keyword : kKeywords)
        if (keyword.name == name) return keyword.code;
    return 0;
}

}  // namespace zel
