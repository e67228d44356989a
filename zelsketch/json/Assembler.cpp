#include "Assembler.h"

#include <algorithm>
#include <limits>

#include "zel/text/Failure.h"
#include "zel/survey/FileWalk.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {

// Where the walk stands in a list: the JSON array's elements, one by one.
class Assembler::Cursor {
public:
    Cursor(Assembler& assembler, DefinitionList&, const char*)
        : assembler_(assembler), next_(assembler.OpenList()) {}

    DefinitionRecord* Next() {
        if (!next_) {
            assembler_.out_ += '\0';
            return nullptr;
        }
        assembler_.StartDefinition(*next_);
        next_ = assembler_.tree_.NextSibling(*next_);
        return &assembler_.record_;
    }
    DefinitionRecord* Current() { return &assembler_.record_; }

private:
    Assembler& assembler_;
    JsonNode* next_;
};

std::string Assembler::Assemble(std::string_view json) {
    Assembler assembler(json);
    WalkFile(assembler);
    assembler.Finish();
    return std::move(assembler.out_);
}

void Assembler::BeginHeader() {
    JsonNode& root = tree_.Root();
    Expect(root, JsonNode::Type::kObject, "an object with \"Header\" and \"Definitions\"");
    object_ = tree_.Take(root, "Header");
    if (object_) Expect(*object_, JsonNode::Type::kObject, "an object with the header's fields");
}

void Assembler::EndHeader() {
    if (object_) RefuseUnused(*object_);
    object_ = &tree_.Root();
}

void Assembler::Finish() {
    JsonNode& root = tree_.Root();
    if (JsonNode* leftOver = tree_.Take(root, "LeftOver")) out_ += FromHex(*leftOver);
    if (JsonNode* cut = tree_.Take(root, "CutShort"))
        out_.resize(out_.size() -
                    static_cast<std::size_t>(Integer(*cut, 0, static_cast<std::int64_t>(out_.size()))));
    RefuseUnused(root);
}

// The first element, null where there is none.
JsonNode* Assembler::OpenList() {
    if (inList_ && out_[definitionStart_] == '\0')
        tree_.Fail(*object_, "expected an AreaCode whose tag is not 0, which ends a list");
    if (!inList_) record_.SetVersion(version_);
    const std::string name = inList_ ? "Members" : "Definitions";
    inList_ = true;
    JsonNode* opening = tree_.Take(*object_, name + "Opening");
    out_ += static_cast<char>(opening ? Integer(*opening, 0, 255) : 1);
    JsonNode* list = tree_.Take(*object_, name);
    if (list) Expect(*list, JsonNode::Type::kArray, "an array of definitions");
    if (object_ != &tree_.Root()) RefuseUnused(*object_);
    return list ? tree_.FirstChild(*list) : nullptr;
}

void Assembler::StartDefinition(JsonNode& node) {
    Expect(node, JsonNode::Type::kObject, "an object, a definition");
    object_ = &node;
    definitionStart_ = out_.size();
    record_.DefinitionFields::operator=({});
}

void Assembler::Expect(const JsonNode& node, JsonNode::Type type, const char* what) const {
    if (node.type != type) tree_.Fail(node, std::string("expected ") + what);
}

void Assembler::RefuseUnused(const JsonNode& object) {
    for (const JsonNode* child = tree_.FirstChild(object); child; child = tree_.NextSibling(*child))
        if (!child->used)
            tree_.Fail(*child,
                       '"' + std::string(child->key) +
                           "\" has no place here: no such field, or not with this FileVersion and Flags");
}

void Assembler::Field(DefinitionBlock& block, const char*) { block.EachField(*this); }

void Assembler::Field(ShortString&, const char* name) {
    TextParts parts;
    if (JsonNode* node = object_ ? tree_.Take(*object_, name) : nullptr) {
        parts = Parts(FieldKind::kShort, *node);
        if (parts.text.size() > 255) tree_.Fail(*node, "expected at most 255 characters");
    }
    out_ += {static_cast<char>(parts.first), static_cast<char>(parts.text.size())};
    out_ += parts.text;
}

// Without a value in the JSON the bytes stay as they are.
void Assembler::Fill(FieldKind kind, const char* name, char* bytes, std::size_t width) {
    JsonNode* node = object_ ? tree_.Take(*object_, name) : nullptr;
    if (!node) return;
    if (kind == FieldKind::kCounted || kind == FieldKind::kFixed) return FillText(kind, *node, bytes, width);
    std::uint64_t bits = 0;
    if (kind == FieldKind::kReal) {
        bits = DoubleBits(*node);
    } else {
        const bool isSigned = kind == FieldKind::kSigned;
        const std::int64_t most = (std::int64_t{1} << (8 * width - (isSigned ? 1 : 0))) - 1;
        bits = static_cast<std::uint64_t>(Integer(*node, isSigned ? -most - 1 : 0, most));
    }
    for (std::size_t i = 0; i < width; ++i) bytes[i] = static_cast<char>(bits >> (8 * i));
}

std::int64_t Assembler::Integer(const JsonNode& node, std::int64_t least, std::int64_t most) const {
    if (node.type != JsonNode::Type::kInteger || node.integer < least || node.integer > most)
        tree_.Fail(node,
                   "expected a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return node.integer;
}

std::uint64_t Assembler::DoubleBits(const JsonNode& node) const {
    std::uint64_t bits = 0;
    if (node.type == JsonNode::Type::kInteger || node.type == JsonNode::Type::kDouble) {
        std::memcpy(&bits, &node.number, sizeof bits);
        return bits;
    }
    const bool hasPrefix = node.text.size() == 18 && node.text.substr(0, 2) == "0x";
    const std::size_t digits = node.text.find_first_not_of("0123456789abcdefABCDEF", 2);
    if (node.type != JsonNode::Type::kString || !hasPrefix || digits != node.text.npos)
        tree_.Fail(node, "expected a number, or \"0x\" and the 16 hexadecimal digits of a double");
    return std::stoull(std::string(node.text), nullptr, 16);
}

Assembler::TextParts Assembler::Parts(FieldKind kind, JsonNode& node) {
    const bool isShort = kind == FieldKind::kShort;
    TextParts parts;
    parts.isPlain = node.type == JsonNode::Type::kString;
    if (!parts.isPlain) Expect(node, JsonNode::Type::kObject, "a text, or an object with \"text\"");
    JsonNode* text = parts.isPlain ? &node : tree_.Take(node, "text");
    if (text) parts.text = Encoded(*text);
    parts.first = isShort ? 6 : static_cast<std::int64_t>(parts.text.size());
    if (parts.isPlain) return parts;
    JsonNode* first = kind == FieldKind::kFixed ? nullptr : tree_.Take(node, isShort ? "tag" : "count");
    if (first) parts.first = Integer(*first, 0, 255);
    JsonNode* behind = isShort ? nullptr : tree_.Take(node, "behind");
    if (behind) parts.behind = FromHex(*behind);
    RefuseUnused(node);
    return parts;
}

void Assembler::FillText(FieldKind kind, JsonNode& node, char* bytes, std::size_t width) {
    const TextParts parts = Parts(kind, node);
    const std::size_t most = width - (kind == FieldKind::kCounted ? 1 : 0) - (parts.isPlain ? 1 : 0);
    if (parts.text.size() > most)
        tree_.Fail(node, "expected at most " + std::to_string(most) + " characters");
    if (parts.text.find('\0') != std::string::npos)
        tree_.Fail(node, "expected a text without \\u0000, which ends it");
    if (!parts.isPlain && parts.text.size() + parts.behind.size() > most)
        tree_.Fail(node, "expected at most " + std::to_string(most) + " bytes in \"text\" and \"behind\"");
    std::fill_n(bytes, width, '\0');
    std::copy_backward(parts.behind.begin(), parts.behind.end(), bytes + width);
    if (kind == FieldKind::kCounted) *bytes++ = static_cast<char>(parts.first);
    std::copy(parts.text.begin(), parts.text.end(), bytes);
}

std::string Assembler::Encoded(const JsonNode& node) const {
    Expect(node, JsonNode::Type::kString, "a text");
    std::string bytes;
    for (std::string_view text = node.text; !text.empty();) {
        const std::string_view rest = text;
        const auto byte = ToWindows1252(TakeUtf8(text));
        if (!byte)
            tree_.Fail(node, "expected characters of Windows-1252, which \"" +
                                 std::string(rest.substr(0, rest.size() - text.size())) + "\" is not");
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

std::string Assembler::FromHex(const JsonNode& node) const {
    const bool isHex = node.text.find_first_not_of("0123456789abcdefABCDEF") == node.text.npos;
    if (node.type != JsonNode::Type::kString || !isHex || node.text.size() % 2 != 0)
        tree_.Fail(node, "expected bytes, two hexadecimal digits each");
    const auto digit = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    std::string bytes;
    for (std::size_t i = 0; i < node.text.size(); i += 2)
        bytes += static_cast<char>(digit(node.text[i]) << 4 | digit(node.text[i + 1]));
    return bytes;
}

}  // namespace zel
