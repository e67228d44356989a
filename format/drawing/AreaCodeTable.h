#pragma once

#include <cstdint>
#include <string_view>

namespace zel {

// The area codes that files up to version 6 store as a number, counted from 1.
class AreaCodeTable {
public:
    // Empty for a number that stands for none.
    static std::string_view CodeOf(std::uint16_t number);
    // 0 for a code that is not in the table. Case matters.
    static std::uint16_t NumberOf(std::string_view code);
};

}  // namespace zel
