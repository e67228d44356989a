#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel {

// The names of all fields that files of a version can have, in file order.
struct FieldNames {
    static FieldNames Of(std::int32_t version);

    bool Has(const std::string& name) const;

    std::vector<std::string> header;
    std::vector<std::string> file;  // between the header and the definitions
    std::vector<std::string> definition;
};

}  // namespace zel
