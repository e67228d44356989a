#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Outline.h"

namespace zel {

struct Difference {
    enum Kind { kChanged, kAdded, kRemoved, kMoved };
    Kind kind;
    std::string path;    // in the new file; of what was removed, in the old one
    std::string code;    // of a definition that came, went or moved; 8-bit
    std::string before;  // a field's value, or the path that a definition had; empty where there was none
    std::string after;

    const char* KindText() const;
};
// "moved: Definitions[2] "GAR" from Definitions[0]"
std::string LineText(const Difference& difference);

// Says what makes an old file a new one. Definitions of a list belong together if they are the same, or else
// if they have the same code, in their order; one that differs in its code alone, in the same place, has got
// a new one. Those that stand in another order are moved.
class Comparer {
public:
    static std::vector<Difference> Compare(std::string_view oldFile, std::string_view newFile);

private:
    using Indices = std::vector<std::uint32_t>;
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    Comparer(std::string_view oldFile, std::string_view newFile) : old_(oldFile), new_(newFile) {}

    void CompareFields(const Outline::Record& a, const Outline::Record& b);
    void CompareMembers(const Outline::Record& a, const Outline::Record& b);
    Indices Match(const Outline::Record& a, const Outline::Record& b) const;

    Outline old_;
    Outline new_;
    std::vector<Difference> differences_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pending_;  // records to compare, the next one last
};

}  // namespace zel
