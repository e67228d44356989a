#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

// A value of a JSON text: where it stands.
struct JsonValue {
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct JsonMember {
    std::string key;
    JsonValue value;
    bool isUsed = false;  // for a reader that must not overlook a key
};

// A JSON text with sound syntax, looked through anew for each object that is asked for: what is kept beside
// the text hardly grows with it. Nesting may be as deep as memory allows; nothing recurses.
class JsonText {
public:
    enum class Type { kNull, kBoolean, kNumber, kString, kArray, kObject };

    // UTF-8, or UTF-16 with a byte-order mark. The text must outlive this. Throws Failure (kDamaged) with
    // line, column, path and what was expected.
    explicit JsonText(std::string_view text);
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

    JsonValue Root() const { return root_; }
    Type TypeOf(JsonValue value) const;
    // The members of an object, in place of those that `members` holds.
    void Members(JsonValue object, std::vector<JsonMember>& members) const;
    // The elements of an array. False where there is no further one.
    bool FirstElement(JsonValue array, JsonValue& element) const;
    bool NextElement(JsonValue& element) const;

    std::string_view Source(JsonValue value) const {
        return text_.substr(value.begin, value.end - value.begin);
    }
    // Of a string: UTF-8.
    std::string String(JsonValue value) const;

    // How much there is of what a file is made of, for a guess at its size.
    std::size_t ObjectCount() const { return objects_; }
    std::size_t StringBytes() const { return stringBytes_; }

    // Throws Failure: "line 3, column 7: " and the message.
    [[noreturn]] void Fail(std::size_t offset, const std::string& message) const;
    // The value as it stands in the text, its end left out where it is long.
    std::string Excerpt(JsonValue value) const;

private:
    class Parser;

    std::size_t SkipBlanks(std::size_t at) const;
    JsonValue ValueAt(std::size_t begin) const;
    std::size_t EndOfString(std::size_t begin) const;
    std::size_t EndOfContainer(std::size_t begin) const;

    std::string converted_;  // what was UTF-16
    std::string_view text_;
    JsonValue root_;
    std::vector<JsonValue> longOnes_;  // arrays and objects that are not worth a second look, by their begin
    std::size_t objects_ = 0;
    std::size_t stringBytes_ = 0;
};

}  // namespace zel
