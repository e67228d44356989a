#include "JsonText.h"

#include <algorithm>
#include <iterator>

#include <nlohmann/json.hpp>

#include "zel/survey/FieldText.h"
#include "zel/text/Failure.h"
#include "zel/text/LongWork.h"
#include "zel/text/Utf16.h"

namespace zel {
namespace {

// From this length on it is kept where an array or object ends.
constexpr std::size_t kLong = 1024;

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

bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

}  // namespace

// Takes the parser's events, and learns from them where the long containers end.
class JsonText::Parser {
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    explicit Parser(JsonText& json) : json_(json), seen_(json.text_.data()), work_(json.text_.size()) {}

    void Run() {
        const char* begin = json_.text_.data();
        nlohmann::json::sax_parse(WatchedIterator(begin, &seen_),
                                  WatchedIterator(begin + json_.text_.size(), &seen_), this);
    }

    bool null() { return OnElement(); }
    bool boolean(bool) { return OnElement(); }
    bool number_integer(number_integer_t) { return OnElement(); }
    bool number_unsigned(number_unsigned_t) { return OnElement(); }
    bool number_float(number_float_t, const string_t&) { return OnElement(); }
    bool string(string_t& value) {
        json_.stringBytes_ += value.size();
        return OnElement();
    }
    bool binary(binary_t&) { return false; }
    bool start_object(std::size_t) {
        ++json_.objects_;
        return Open(false);
    }
    bool start_array(std::size_t) { return Open(true); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool key(string_t& name) {
        work_.At(Offset());
        levels_.back().key.swap(name);
        return true;
    }
    // A syntax error, or a number beyond all doubles.
    bool parse_error(std::size_t, const std::string& token, const nlohmann::json::exception& error) {
        const std::string_view what = error.what();
        const std::size_t reason = what.find("syntax error");
        if (reason == what.npos) {
            const std::size_t begin = json_.text_.rfind(token, Offset());
            json_.Fail(begin, Path() + "expected a number that a double can hold, not " +
                                  json_.Excerpt({begin, begin + token.size()}));
        }
        // What was read last may be the rest of the text.
        const std::size_t last = what.find("; last read: ");
        const std::size_t expected = what.rfind("; expected ");
        std::string message(what.substr(reason, last == what.npos ? last : last - reason));
        if (last != what.npos && expected != what.npos && expected > last) message += what.substr(expected);
        const bool atEnd = what.find("unexpected end of input") != what.npos;
        json_.Fail(Offset() - (atEnd || Offset() == 0 ? 0 : 1), Path() + message);
    }

private:
    struct OpenContainer {
        bool isArray;
        std::size_t known;  // its place among the long ones, if it becomes one
        std::uint32_t index;
        std::string key;
    };

    bool OnElement() {
        if (!levels_.empty() && levels_.back().isArray) ++levels_.back().index;
        return true;
    }
    bool Open(bool isArray) {
        OnElement();
        levels_.push_back({isArray, json_.longOnes_.size(), kNoIndex, {}});
        json_.longOnes_.push_back({Offset() - 1, 0});
        return true;
    }
    bool Close() {
        JsonValue& value = json_.longOnes_[levels_.back().known];
        value.end = Offset();
        // All within it are shorter still, and gone.
        if (value.end - value.begin < kLong) json_.longOnes_.pop_back();
        levels_.pop_back();
        return true;
    }

    std::size_t Offset() const { return static_cast<std::size_t>(seen_ - json_.text_.data()); }
    // "Definitions[2].AreaCode: ", of the element that comes next where the parser is in an array.
    std::string Path() const {
        Place place;
        for (const OpenContainer& level : levels_) {
            if (!level.isArray) {
                if (!level.key.empty()) place.push_back({level.key, kNoIndex});
                continue;
            }
            if (place.empty() || place.back().index != kNoIndex) place.push_back({{}, kNoIndex});
            place.back().index = level.index + (&level == &levels_.back() ? 1 : 0);
        }
        return place.empty() ? "" : PlaceText(place) + ": ";
    }

    JsonText& json_;
    const char* seen_;
    LongWork work_;
    std::vector<OpenContainer> levels_;
};

JsonText::JsonText(std::string_view text) : converted_(Utf8OfMarkedUtf16(text)), text_(text) {
    if (!converted_.empty()) text_ = converted_;
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") text_.remove_prefix(3);
    Parser(*this).Run();
    root_ = ValueAt(SkipBlanks(0));
}

JsonText::Type JsonText::TypeOf(JsonValue value) const {
    switch (text_[value.begin]) {
        case '{':
            return Type::kObject;
        case '[':
            return Type::kArray;
        case '"':
            return Type::kString;
        case 'n':
            return Type::kNull;
        case 't':
        case 'f':
            return Type::kBoolean;
        default:
            return Type::kNumber;
    }
}

void JsonText::Members(JsonValue object, std::vector<JsonMember>& members) const {
    members.clear();
    for (std::size_t at = object.begin; text_[at] != '}';) {
        at = SkipBlanks(at + 1);
        if (text_[at] == '}') return;
        JsonMember& member = members.emplace_back();
        const JsonValue key{at, EndOfString(at)};
        member.key = String(key);
        member.value = ValueAt(SkipBlanks(SkipBlanks(key.end) + 1));
        at = SkipBlanks(member.value.end);
    }
}

bool JsonText::FirstElement(JsonValue array, JsonValue& element) const {
    const std::size_t at = SkipBlanks(array.begin + 1);
    if (text_[at] == ']') return false;
    element = ValueAt(at);
    return true;
}

bool JsonText::NextElement(JsonValue& element) const {
    const std::size_t at = SkipBlanks(element.end);
    if (text_[at] == ']') return false;
    element = ValueAt(SkipBlanks(at + 1));
    return true;
}

std::string JsonText::String(JsonValue value) const {
    const std::string_view source = Source(value);
    if (source.find('\\') != source.npos) return nlohmann::json::parse(source).get<std::string>();
    return std::string(source.substr(1, source.size() - 2));
}

std::size_t JsonText::SkipBlanks(std::size_t at) const {
    while (at < text_.size() && IsBlank(text_[at])) ++at;
    return at;
}

JsonValue JsonText::ValueAt(std::size_t begin) const {
    const char first = text_[begin];
    if (first == '"') return {begin, EndOfString(begin)};
    if (first == '{' || first == '[') return {begin, EndOfContainer(begin)};
    std::size_t end = begin + 1;
    while (end < text_.size() && std::string_view(",]}").find(text_[end]) == std::string_view::npos &&
           !IsBlank(text_[end]))
        ++end;
    return {begin, end};
}

std::size_t JsonText::EndOfString(std::size_t begin) const {
    std::size_t at = begin + 1;
    for (; text_[at] != '"'; ++at)
        if (text_[at] == '\\') ++at;
    return at + 1;
}

std::size_t JsonText::EndOfContainer(std::size_t begin) const {
    const auto known =
        std::lower_bound(longOnes_.begin(), longOnes_.end(), begin,
                         [](const JsonValue& value, std::size_t at) { return value.begin < at; });
    if (known != longOnes_.end() && known->begin == begin) return known->end;
    std::size_t depth = 0, at = begin;
    do {
        const char c = text_[at];
        if (c == '{' || c == '[') ++depth;
        if (c == '}' || c == ']') --depth;
        at = c == '"' ? EndOfString(at) : at + 1;
    } while (depth > 0);
    return at;
}

void JsonText::Fail(std::size_t offset, const std::string& message) const {
    const std::string_view before = text_.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::string_view inLine = before.substr(before.rfind('\n') + 1);
    const auto column =
        1 + std::count_if(inLine.begin(), inLine.end(), [](char c) { return (c & 0xC0) != 0x80; });
    throw Failure(kDamaged,
                  "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + message);
}

std::string JsonText::Excerpt(JsonValue value) const {
    constexpr std::size_t kMost = 40;
    std::string_view source = Source(value);
    if (source.size() <= kMost) return std::string(source);
    std::size_t end = kMost;
    while ((source[end] & 0xC0) == 0x80) --end;  // no character in halves
    return std::string(source.substr(0, end)) + "...";
}

}  // namespace zel
