#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zel {

struct JsonNode {
    enum class Type : std::uint8_t { kNull, kBoolean, kInteger, kDouble, kString, kArray, kObject };

    Type type = Type::kNull;
    bool used = false;     // for a reader that must not overlook a key
    std::string_view key;  // of a member of an object
    std::int64_t integer = 0;
    double number = 0;             // also of an integer
    std::string_view text;         // of a string: valid UTF-8
    std::size_t offset = 0;        // where the value begins in the JSON text
    std::uint32_t firstChild = 0;  // 0: none, as the root is no child
    std::uint32_t nextSibling = 0;
};

// A JSON text as nodes in one array, with the places where they stand. Nesting may be as deep as memory
// allows; nothing recurses.
class JsonTree {
public:
    // Throws Failure (kDamaged) with line, column and what was expected. The text must outlive the tree.
    explicit JsonTree(std::string_view text);

    JsonNode& Root() { return nodes_[0]; }
    JsonNode* FirstChild(const JsonNode& node) { return At(node.firstChild); }
    JsonNode* NextSibling(const JsonNode& node) { return At(node.nextSibling); }
    // A member of an object, from now on used; null where there is none.
    JsonNode* Take(const JsonNode& object, std::string_view key);

    // Throws Failure: "line 3, column 7: " and the message.
    [[noreturn]] void Fail(const JsonNode& node, const std::string& message) const {
        FailAt(node.offset, message);
    }

private:
    class Builder;

    JsonNode* At(std::uint32_t index) { return index ? &nodes_[index] : nullptr; }
    [[noreturn]] void FailAt(std::size_t offset, const std::string& message) const;

    std::string_view text_;
    std::vector<JsonNode> nodes_;
    std::unordered_set<std::string> keys_;
    std::deque<std::string> strings_;
};

}  // namespace zel
