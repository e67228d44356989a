#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

// A file as another version, and what that did to it, a line each.
struct Conversion {
    std::string file;
    std::vector<std::string> changed;  // "Header.Flags: 0x00000000 to 0x00000110, ..."
    bool dropsBytes = false;           // that stood where no reader looks
};

class Converter {
public:
    // Of a whole file that has definitions, to a version that is saved.
    static Conversion Convert(std::string_view file, std::int32_t version);

    // Reports the values that the version has no field for, "Definitions[0].Hidden = 1", and gives their
    // number.
    using Report = std::function<void(const std::string&)>;
    static std::size_t ListLosses(std::string_view file, std::int32_t version, const Report& report);
};

}  // namespace zel
