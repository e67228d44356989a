#include "AreaCodeTable.h"

#include <algorithm>
#include <iterator>

namespace zel {
namespace {

// In each group of ten the code that ends in 0 is the tenth.
constexpr std::string_view kCodes[] = {
    "GLA1", "GLA2", "GLA3", "GLA4", "GLA5", "GLA6", "GLA7", "GLA8", "GLA9", "GLA0",  //
    "GBA1", "GBA2", "GBA3", "GBA4", "GBA5", "GBA6", "GBA7", "GBA8", "GBA9", "GBA0",  //
    "BSMT", "P/P",  "GAR",  "LAND", "SITE", "OTH",  "NCA",  "FF",   "WIN"};

}  // namespace

std::string_view AreaCodeTable::CodeOf(std::uint16_t number) {
    return number >= 1 && number <= std::size(kCodes) ? kCodes[number - 1] : std::string_view{};
}

std::uint16_t AreaCodeTable::NumberOf(std::string_view code) {
    const auto* found = std::find(std::begin(kCodes), std::end(kCodes), code);
    return found == std::end(kCodes) ? 0 : static_cast<std::uint16_t>(found - kCodes + 1);
}

}  // namespace zel
