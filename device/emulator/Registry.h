#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace zel {

std::string Utf8(const std::u16string& text);

struct NoCase {
    bool operator()(const std::u16string& left, const std::u16string& right) const;
};

struct RegistryEntry {
    std::uint32_t type = 0;
    std::string bytes;
};

// A key with all below it. Names differ in more than their case.
struct RegistryTree {
    std::map<std::u16string, RegistryEntry, NoCase> values;
    std::map<std::u16string, std::unique_ptr<RegistryTree>, NoCase> keys;

    RegistryTree* Find(const std::u16string& path, bool create);
    // False: there is none, or it has keys of its own.
    bool Remove(const std::u16string& path);
    void SetText(const std::u16string& path, const std::u16string& name, const std::u16string& text);
    // Every key, indented below the one it is in, after that one's values: "Key", "name=text", "@=default".
    std::string Dump(const std::string& indent = "") const;
};

}  // namespace zel
