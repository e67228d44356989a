#include "JsonTree.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include <nlohmann/json.hpp>

#include "zel/text/Failure.h"

namespace zel {
namespace {

// Walks the text and lets its owner see how far the parser has come.
class WatchedIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    WatchedIterator(const char* at, const char** seen) : at_(at), seen_(seen) {}
    reference operator*() const { return *at_; }
    WatchedIterator& operator++() {
        *seen_ = ++at_;
        return *this;
    }
    bool operator==(const WatchedIterator& other) const { return at_ == other.at_; }
    bool operator!=(const WatchedIterator& other) const { return at_ != other.at_; }

private:
    const char* at_;
    const char** seen_;
};

bool IsPartOfNumberOrWord(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == '+' || c == '-' || c == '.' || c == 'E';
}

}  // namespace

// Takes the parser's events.
class JsonTree::Builder {
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    explicit Builder(JsonTree& tree) : tree_(tree), seen_(tree.text_.data()) {}

    const char** Seen() { return &seen_; }

    bool null() { return Add(JsonNode::Type::kNull, StartOfWord()); }
    bool boolean(bool) { return Add(JsonNode::Type::kBoolean, StartOfWord()); }
    bool number_integer(number_integer_t value) {
        Add(JsonNode::Type::kInteger, StartOfWord());
        tree_.nodes_.back().integer = value;
        tree_.nodes_.back().number = static_cast<double>(value);
        return true;
    }
    bool number_unsigned(number_unsigned_t value) {
        if (value <= static_cast<number_unsigned_t>(std::numeric_limits<std::int64_t>::max()))
            return number_integer(static_cast<number_integer_t>(value));
        return number_float(static_cast<double>(value), {});
    }
    bool number_float(number_float_t value, const string_t&) {
        Add(JsonNode::Type::kDouble, StartOfWord());
        tree_.nodes_.back().number = value;
        return true;
    }
    bool string(string_t& value) {
        Add(JsonNode::Type::kString, StartOfString());
        tree_.nodes_.back().text = Keep(std::move(value));
        return true;
    }
    bool binary(binary_t&) { return false; }
    bool start_object(std::size_t) { return Open(JsonNode::Type::kObject); }
    bool start_array(std::size_t) { return Open(JsonNode::Type::kArray); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool key(string_t& name) {
        key_ = *tree_.keys_.insert(std::move(name)).first;
        return true;
    }
    // A syntax error, or a number beyond all doubles.
    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception& error) {
        const std::string_view what = error.what();
        const std::size_t reason = what.find("syntax error");
        if (reason == what.npos) tree_.FailAt(StartOfWord(), "expected a number that a double can hold");
        // What was read last may be the rest of the text.
        const std::size_t last = what.find("; last read: ");
        const std::size_t expected = what.rfind("; expected ");
        std::string message(what.substr(reason, last == what.npos ? last : last - reason));
        if (last != what.npos && expected != what.npos && expected > last) message += what.substr(expected);
        const bool atEnd = what.find("unexpected end of input") != what.npos;
        tree_.FailAt(Offset() - (atEnd || Offset() == 0 ? 0 : 1), message);
    }

private:
    struct Level {
        std::uint32_t node;
        std::uint32_t lastChild;
    };

    bool Open(JsonNode::Type type) {
        Add(type, Offset() - 1);
        path_.push_back({static_cast<std::uint32_t>(tree_.nodes_.size() - 1), 0});
        return true;
    }
    bool Close() {
        path_.pop_back();
        return true;
    }
    bool Add(JsonNode::Type type, std::size_t offset) {
        const auto index = static_cast<std::uint32_t>(tree_.nodes_.size());
        JsonNode& node = tree_.nodes_.emplace_back();
        node.type = type;
        node.offset = offset;
        if (path_.empty()) return true;
        Level& level = path_.back();
        if (tree_.nodes_[level.node].type == JsonNode::Type::kObject) node.key = key_;
        std::uint32_t& link =
            level.lastChild ? tree_.nodes_[level.lastChild].nextSibling : tree_.nodes_[level.node].firstChild;
        link = index;
        level.lastChild = index;
        return true;
    }
    std::string_view Keep(string_t&& value) {
        return value.empty() ? std::string_view{} : tree_.strings_.emplace_back(std::move(value));
    }

    std::size_t Offset() const { return static_cast<std::size_t>(seen_ - tree_.text_.data()); }
    // The parser may have seen one character behind a number.
    std::size_t StartOfWord() const {
        std::size_t offset = Offset();
        while (offset > 0 && !IsPartOfNumberOrWord(tree_.text_[offset - 1])) --offset;
        while (offset > 0 && IsPartOfNumberOrWord(tree_.text_[offset - 1])) --offset;
        return offset;
    }
    std::size_t StartOfString() const {
        std::size_t offset = Offset() - 1;
        bool escaped = true;
        while (escaped) {
            offset = tree_.text_.rfind('"', offset - 1);
            escaped = false;
            for (std::size_t i = offset; i > 0 && tree_.text_[i - 1] == '\\'; --i) escaped = !escaped;
        }
        return offset;
    }

    JsonTree& tree_;
    const char* seen_;
    std::vector<Level> path_;
    std::string_view key_;
};

JsonTree::JsonTree(std::string_view text) : text_(text) {
    Builder builder(*this);
    const char* begin = text.data();
    nlohmann::json::sax_parse(WatchedIterator(begin, builder.Seen()),
                              WatchedIterator(begin + text.size(), builder.Seen()), &builder);
}

JsonNode* JsonTree::Take(const JsonNode& object, std::string_view key) {
    JsonNode* found = nullptr;
    for (JsonNode* child = FirstChild(object); child; child = NextSibling(*child)) {
        if (child->key != key) continue;
        if (found) Fail(*child, '"' + std::string(key) + "\" is there twice");
        found = child;
        found->used = true;
    }
    return found;
}

void JsonTree::FailAt(std::size_t offset, const std::string& message) const {
    const std::string_view before = text_.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t column = offset - (before.rfind('\n') + 1) + 1;
    throw Failure(kDamaged,
                  "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + message);
}

}  // namespace zel
