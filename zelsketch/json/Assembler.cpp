#include "Assembler.h"

#include <algorithm>
#include <charconv>

#include "zel/survey/FileWalk.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Failure.h"
#include "zel/text/Real.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

constexpr char kHexDigits[] = "0123456789abcdefABCDEF";

JsonMember* Find(std::vector<JsonMember>& members, std::string_view name, std::string_view suffix) {
    for (JsonMember& member : members) {
        const std::string_view key = member.key;
        if (!member.isUsed && key.size() == name.size() + suffix.size() &&
            key.substr(0, name.size()) == name && key.substr(name.size()) == suffix)
            return &member;
    }
    return nullptr;
}

}  // namespace

// Where the walk stands in a list: the JSON array's elements, one by one.
class Assembler::Cursor {
public:
    Cursor(Assembler& assembler, DefinitionList&, const char* name)
        : assembler_(assembler), hasNext_(assembler.OpenList(name, next_)) {}

    DefinitionRecord* Next() {
        if (!hasNext_) {
            assembler_.place_.pop_back();
            assembler_.out_ += '\0';
            return nullptr;
        }
        assembler_.StartDefinition(next_);
        hasNext_ = assembler_.json_.NextElement(next_);
        return &assembler_.record_;
    }
    DefinitionRecord* Current() { return &assembler_.record_; }

private:
    Assembler& assembler_;
    JsonValue next_;
    bool hasNext_;
};

Assembler::Assembler(std::string_view json) : json_(json) {
    // As much as a definition without its codes takes, and the header. Too much does no harm: memory that
    // nothing is written to costs nothing.
    out_.reserve(json_.ObjectCount() * 128 + json_.StringBytes());
    if (json_.TypeOf(json_.Root()) != JsonText::Type::kObject)
        json_.Fail(json_.Root().begin, "expected an object with \"Header\" and \"Definitions\", not " +
                                           json_.Excerpt(json_.Root()));
    json_.Members(json_.Root(), root_);
    members_ = &root_;
}

std::string Assembler::Assemble(std::string_view json) {
    Assembler assembler(json);
    WalkFile(assembler);
    assembler.Finish();
    return std::move(assembler.out_);
}

void Assembler::BeginHeader() {
    if (const JsonMember* schema = Take("$schema")) Expect(*schema, JsonText::Type::kString, "a text");
    const JsonMember* header = Take("Header");
    if (header) {
        Expect(*header, JsonText::Type::kObject, "an object with the header's fields");
        json_.Members(header->value, own_);
    }
    place_.push_back({"Header", kNoIndex});
    members_ = &own_;
}

void Assembler::EndHeader() {
    RefuseUnused();
    place_.pop_back();
    members_ = &root_;
}

void Assembler::Finish() {
    members_ = &root_;
    if (const JsonMember* leftOver = Take("LeftOver")) out_ += FromHex(*leftOver);
    if (const JsonMember* cut = Take("CutShort"))
        out_.resize(out_.size() -
                    static_cast<std::size_t>(Integer(*cut, 0, static_cast<std::int64_t>(out_.size()))));
    RefuseUnused();
}

// Whether there is a first element.
bool Assembler::OpenList(const char* name, JsonValue& first) {
    const bool isMembers = !place_.empty();
    if (isMembers && out_[definitionStart_] == '\0')
        json_.Fail(definitionOffset_,
                   PlaceText(place_) + ".AreaCodeTag: expected a tag other than 0, which ends a list");
    if (!isMembers) record_.SetVersion(version_);
    const JsonMember* opening = Take(name, "Opening");
    out_ += static_cast<char>(opening ? Integer(*opening, 0, 255) : 1);
    const JsonMember* list = Take(name);
    if (list) Expect(*list, JsonText::Type::kArray, "an array of definitions");
    if (isMembers) RefuseUnused();
    const bool hasFirst = list && json_.FirstElement(list->value, first);
    place_.push_back({name, kNoIndex});
    return hasFirst;
}

void Assembler::StartDefinition(JsonValue value) {
    ++place_.back().index;
    if (json_.TypeOf(value) != JsonText::Type::kObject)
        json_.Fail(value.begin,
                   PlaceText(place_) + ": expected an object, a definition, not " + json_.Excerpt(value));
    json_.Members(value, own_);
    members_ = &own_;
    definitionStart_ = out_.size();
    definitionOffset_ = value.begin;
    record_.DefinitionFields::operator=({});
}

// From now on used; null where there is none.
JsonMember* Assembler::Take(const char* name, const char* suffix) {
    work_.At(definitionOffset_);
    JsonMember* member = Find(*members_, name, suffix);
    if (member) member->isUsed = true;
    return member;
}

void Assembler::RefuseUnused() const {
    for (const JsonMember& member : *members_) {
        if (member.isUsed) continue;
        const bool isTwice = std::any_of(members_->begin(), members_->end(), [&](const JsonMember& other) {
            return other.isUsed && other.key == member.key;
        });
        json_.Fail(
            member.value.begin,
            PathOf(member) + (isTwice ? "is there twice"
                                      : "has no place here: no such field, or not with this FileVersion "
                                        "and Flags, or not beside these other values"));
    }
}

void Assembler::Field(DefinitionBlock& block, const char*) { block.EachField(*this); }

void Assembler::Field(ShortString&, const char* name) {
    std::string text;
    if (const JsonMember* member = Take(name)) {
        text = Encoded(*member);
        if (text.size() > 255) FailAt(*member, "at most 255 characters");
    }
    const JsonMember* tag = Take(name, "Tag");
    out_ += {static_cast<char>(tag ? Integer(*tag, 0, 255) : 6), static_cast<char>(text.size())};
    out_ += text;
}

// Without a value in the JSON the bytes stay as they are.
void Assembler::Fill(FieldKind kind, const char* name, char* bytes, std::size_t width) {
    if (kind == FieldKind::kCounted || kind == FieldKind::kFixed) return FillText(kind, name, bytes, width);
    const JsonMember* member = Take(name);
    if (!member) return;
    std::uint64_t bits = 0;
    if (kind == FieldKind::kReal) {
        bits = RealBits(*member, name);
    } else {
        const bool isSigned = kind == FieldKind::kSigned;
        const std::int64_t most = (std::int64_t{1} << (8 * width - (isSigned ? 1 : 0))) - 1;
        bits = Integer(*member, isSigned ? -most - 1 : 0, most);
    }
    for (std::size_t i = 0; i < width; ++i) bytes[i] = static_cast<char>(bits >> (8 * i));
}

std::uint64_t Assembler::Integer(const JsonMember& member, std::int64_t least, std::int64_t most) const {
    const std::string_view source = json_.Source(member.value);
    const char* end = source.data() + source.size();
    std::int64_t value = 0;
    const auto [stop, error] = std::from_chars(source.data(), end, value);
    if (stop != end || error != std::errc() || value < least || value > most)
        FailAt(member, "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<std::uint64_t>(value);
}

std::uint64_t Assembler::RealBits(const JsonMember& member, const char* name) {
    std::uint64_t bits = 0;
    if (json_.TypeOf(member.value) == JsonText::Type::kNumber) {
        const std::string_view source = json_.Source(member.value);
        const std::optional<double> value = ParseDecimal(source);
        if (!value) FailAt(member, "a number that a double comes near");
        std::memcpy(&bits, &*value, sizeof bits);
        return bits;
    }
    const JsonMember* given =
        json_.TypeOf(member.value) == JsonText::Type::kNull ? Take(name, "Bits") : nullptr;
    if (!given) FailAt(member, std::string("a number, or null and \"") + name + "Bits\"");
    const std::string digits =
        json_.TypeOf(given->value) == JsonText::Type::kString ? json_.String(given->value) : "";
    if (digits.size() != 18 || digits.compare(0, 2, "0x") != 0 ||
        digits.find_first_not_of(kHexDigits, 2) != digits.npos)
        FailAt(*given, "\"0x\" and the 16 hexadecimal digits of a double");
    std::from_chars(digits.data() + 2, digits.data() + digits.size(), bits, 16);
    return bits;
}

void Assembler::FillText(FieldKind kind, const char* name, char* bytes, std::size_t width) {
    const JsonMember* member = Take(name);
    const JsonMember* count = kind == FieldKind::kCounted ? Take(name, "Count") : nullptr;
    const JsonMember* behind = Take(name, "Behind");
    if (!member && !count && !behind) return;
    const std::string text = member ? Encoded(*member) : "";
    const std::string rest = behind ? FromHex(*behind) : "";
    // What stands behind it may fill the field; otherwise a NUL does at least.
    const std::size_t most = width - (kind == FieldKind::kCounted ? 1 : 0) - (behind ? 0 : 1);
    if (member && text.size() > most) FailAt(*member, "at most " + Counted(most, "character"));
    if (text.find('\0') != text.npos) FailAt(*member, "a text without \\u0000, which ends it");
    if (behind && text.size() + rest.size() > most)
        FailAt(*behind, "at most " + Counted(most - text.size(), "byte") + " behind the text");
    std::fill_n(bytes, width, '\0');
    std::copy_backward(rest.begin(), rest.end(), bytes + width);
    if (kind == FieldKind::kCounted)
        *bytes++ = static_cast<char>(count ? Integer(*count, 0, 255) : text.size());
    std::copy(text.begin(), text.end(), bytes);
}

std::string Assembler::Encoded(const JsonMember& member) const {
    Expect(member, JsonText::Type::kString, "a text");
    const std::string utf8 = json_.String(member.value);
    std::string bytes;
    for (std::string_view text = utf8; !text.empty();) {
        const std::string_view rest = text;
        const auto byte = ToWindows1252(TakeUtf8(text));
        if (!byte)
            FailAt(member, "characters of Windows-1252, which \"" +
                               std::string(rest.substr(0, rest.size() - text.size())) + "\" is not");
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

std::string Assembler::FromHex(const JsonMember& member) const {
    const bool isText = json_.TypeOf(member.value) == JsonText::Type::kString;
    const std::string digits = isText ? json_.String(member.value) : "";
    if (!isText || digits.find_first_not_of(kHexDigits) != digits.npos || digits.size() % 2 != 0)
        FailAt(member, "bytes, two hexadecimal digits each");
    const auto digit = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes += static_cast<char>(digit(digits[i]) << 4 | digit(digits[i + 1]));
    return bytes;
}

void Assembler::Expect(const JsonMember& member, JsonText::Type type, const char* what) const {
    if (json_.TypeOf(member.value) != type) FailAt(member, what);
}

void Assembler::FailAt(const JsonMember& member, const std::string& expected) const {
    json_.Fail(member.value.begin,
               PathOf(member) + "expected " + expected + ", not " + json_.Excerpt(member.value));
}

std::string Assembler::PathOf(const JsonMember& member) const {
    const std::string place = PlaceText(place_);
    return place + (place.empty() ? "" : ".") + member.key + ": ";
}

}  // namespace zel
