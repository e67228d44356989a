#include "Registry.h"

#include <algorithm>
#include <cstring>

namespace zel {
namespace {

char16_t Small(char16_t letter) {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter + 32) : letter;
}

}  // namespace

std::string Utf8(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        if (unit < 0x80) {
            bytes += static_cast<char>(unit);
        } else {
            if (unit >= 0x800) bytes += static_cast<char>(0xE0 | unit >> 12);
            bytes += static_cast<char>(unit >= 0x800 ? 0x80 | (unit >> 6 & 0x3F) : 0xC0 | unit >> 6);
            bytes += static_cast<char>(0x80 | (unit & 0x3F));
        }
    }
    return bytes;
}

bool NoCase::operator()(const std::u16string& left, const std::u16string& right) const {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char16_t a, char16_t b) { return Small(a) < Small(b); });
}

RegistryTree* RegistryTree::Find(const std::u16string& path, bool create) {
    RegistryTree* tree = this;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(u'\\', begin), path.size());
        const std::u16string name = path.substr(begin, end - begin);
        auto found = tree->keys.find(name);
        if (found == tree->keys.end()) {
            if (!create) return nullptr;
            found = tree->keys.emplace(name, std::make_unique<RegistryTree>()).first;
        }
        tree = found->second.get();
        begin = end + 1;
    }
    return tree;
}

bool RegistryTree::Remove(const std::u16string& path) {
    const std::size_t split = path.rfind(u'\\');
    RegistryTree* parent = split == path.npos ? this : Find(path.substr(0, split), false);
    if (!parent) return false;
    const auto found = parent->keys.find(split == path.npos ? path : path.substr(split + 1));
    if (found == parent->keys.end() || !found->second->keys.empty()) return false;
    parent->keys.erase(found);
    return true;
}

void RegistryTree::SetText(const std::u16string& path, const std::u16string& name,
                           const std::u16string& text) {
    Find(path, true)->values[name] = {
        1, std::string(reinterpret_cast<const char*>(text.c_str()), 2 * (text.size() + 1))};
}

std::string RegistryTree::Dump(const std::string& indent) const {
    std::string dump;
    for (const auto& [name, value] : values) {
        std::uint32_t number = 0;
        std::memcpy(&number, value.bytes.data(), std::min(sizeof number, value.bytes.size()));
        const bool isText = value.type == 1;
        const auto* text = reinterpret_cast<const char16_t*>(value.bytes.data());
        dump += indent + (name.empty() ? "@" : Utf8(name)) + "=" +
                (isText ? Utf8(text) : std::to_string(number)) + "\n";
    }
    for (const auto& [name, tree] : keys) dump += indent + Utf8(name) + "\n" + tree->Dump(indent + "    ");
    return dump;
}

}  // namespace zel
