#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

// Where a value stands, as check prints it, or by code: "Definitions[2].Members[0].AreaName",
// "Definitions[GAR].Multiplier", "Header.CreatedBy", "FileFlags". A code that looks like an index, or has a
// bracket or a quote in it, stands in quotes; an asterisk is every definition of its list. Without a field it
// is the whole header, a definition or a list of them.
struct ValuePath {
    struct Step {
        enum Kind { kIndex, kCode, kEach };
        Kind kind = kEach;
        std::uint32_t index = 0;
        std::string code;  // 8-bit
    };

    // Throws Failure (kUnusable) with the path and what was expected.
    static ValuePath Parse(const std::string& text);

    bool IsOfDefinitions() const { return isList || !steps.empty(); }

    std::string text;  // as it was given
    bool isOfHeader = false;
    bool isList = false;      // ends with a list: Definitions, or the Members of the last step
    std::vector<Step> steps;  // an index or a code for each list
    std::string field;        // empty for all
};

}  // namespace zel
