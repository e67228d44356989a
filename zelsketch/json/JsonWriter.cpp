#include "JsonWriter.h"

#include <algorithm>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {

JsonWriter::JsonWriter(std::ostream& out, const char* schema) : out_(out) {
    Open('{');
    Key("$schema");
    String(schema);
}

void JsonWriter::OnHeader() {
    Key("Header");
    Open('{');
}

void JsonWriter::OnField(const Field& field) {
    missing_ += field.Missing();
    switch (field.kind) {
        case FieldKind::kListEnd:
            return Close(']');
        case FieldKind::kMarkedList:
        case FieldKind::kTypedList:
            return OpenList(field);
        default:
            break;
    }
    field.name.empty() ? NewLine() : Key(field.name);
    switch (field.kind) {
        case FieldKind::kUnsigned:
        case FieldKind::kSigned:
        case FieldKind::kReal:
            return Numbers(field);
        case FieldKind::kRaw:
        case FieldKind::kLeftOver:
            return String(HexDigits(field.bytes));
        default:
            Text(field);
    }
}

void JsonWriter::OpenList(const Field& field) {
    const std::size_t usual = field.kind == FieldKind::kMarkedList ? 1 : 0;
    if (field.Byte(0) != usual) {
        Key(field.name, "Opening");
        Number(field.Byte(0));
    }
    Key(field.name);
    Open('[');
}

void JsonWriter::OnRecord(const Place&) {
    NewLine();
    Open('{');
}

void JsonWriter::Finish() {
    if (missing_) {
        Key("CutShort");
        Number(missing_);
    }
    Close('}');
    buffer_ += '\n';
    Flush();
}

void JsonWriter::Numbers(const Field& field) {
    const bool isOne = field.Count() == 1;
    std::string numbers, bits;
    bool areFinite = true;
    for (std::size_t i = 0; i < field.Count(); ++i) {
        if (i > 0) numbers += ", ", bits += ", ";
        if (field.kind != FieldKind::kReal) {
            numbers += std::to_string(field.Integer(i));
            continue;
        }
        const bool isFinite = IsFinite(field.Bits(i));
        numbers += isFinite ? Decimal(field.Bits(i)) : "null";
        bits += '"' + HexNumber(field.Bits(i), 8) + '"';
        areFinite = areFinite && isFinite;
    }
    buffer_ += isOne ? numbers : '[' + numbers + ']';
    if (areFinite) return;
    Key(field.name, "Bits");
    buffer_ += isOne ? bits : '[' + bits + ']';
}

void JsonWriter::Text(const Field& field) {
    const std::string_view text = field.Text(), behind = field.Behind();
    String(text);
    if (field.IsPlain()) return;
    const bool isCounted = field.kind == FieldKind::kCounted || field.kind == FieldKind::kCode;
    if (isCounted && field.Byte(0) != text.size()) {
        Key(field.name, "Count");
        Number(field.Byte(0));
    }
    if (!behind.empty() || text.size() > field.MaxLength()) {
        Key(field.name, "Behind");
        String(HexDigits(behind));
    }
    if (field.kind == FieldKind::kShort) {
        Key(field.name, "Tag");
        Number(field.Byte(0));
    }
    if (field.kind == FieldKind::kLong) {
        Key(field.name, "Count");
        buffer_ += std::to_string(static_cast<std::int16_t>(field.Byte(0) | field.Byte(1) << 8));
    }
    if (field.kind == FieldKind::kStyle) {
        Key(field.name, "Code");
        Number(field.Byte(0));
    }
}

void JsonWriter::String(std::string_view text) {
    buffer_ += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t character = FromWindows1252(byte);
        if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            buffer_ += "\\u00" + HexDigits({&c, 1});
            continue;
        }
        if (c == '"' || c == '\\') buffer_ += '\\';
        AppendUtf8(buffer_, character);
    }
    buffer_ += '"';
}

void JsonWriter::Key(std::string_view name, std::string_view suffix) {
    NewLine();
    buffer_ += '"';
    buffer_ += name;
    buffer_ += suffix;
    buffer_ += "\": ";
}

void JsonWriter::NewLine() {
    // Deeper levels are not indented further: a chain of members would grow with the square of its length.
    constexpr std::size_t kDeepest = 16, kFull = 65536;
    if (buffer_.size() >= kFull) Flush();
    if (!first_) buffer_ += ',';
    buffer_ += '\n';
    buffer_.append(2 * std::min(depth_, kDeepest), ' ');
    first_ = false;
}

void JsonWriter::Open(char bracket) {
    buffer_ += bracket;
    ++depth_;
    first_ = true;
}

void JsonWriter::Close(char bracket) {
    const bool empty = first_;
    --depth_;
    first_ = true;
    if (!empty) NewLine();
    buffer_ += bracket;
    first_ = false;
}

void JsonWriter::Flush() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

}  // namespace zel
