#include "JsonWriter.h"

#include <algorithm>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {

JsonWriter::JsonWriter(std::ostream& out) : out_(out) {
    Open('{');
    Key("Header");
    Open('{');
}

void JsonWriter::OnField(const Field& field) {
    missing_ += field.Missing();

    if (field.kind == FieldKind::kClosing) {
        Close(']');
        if (field.name == "Members") Close('}');
        return;
    }
    if (field.kind == FieldKind::kOpening) {
        if (field.Byte(0) != 1) {
            Key(std::string(field.name) + "Opening");
            buffer_ += std::to_string(field.Byte(0));
        }
        Key(field.name);
        return Open('[');
    }
    Key(field.name);
    Value(field);
}

void JsonWriter::OnDefinition(const Place&) {
    NewLine();
    Open('{');
}

void JsonWriter::Finish() {
    if (missing_) {
        Key("CutShort");
        buffer_ += std::to_string(missing_);
    }
    Close('}');
    buffer_ += '\n';
    Flush();
}

void JsonWriter::Value(const Field& field) {
    switch (field.kind) {
        case FieldKind::kNumber:
            buffer_ += std::to_string(field.Integer());
            return;
        case FieldKind::kDouble: {
            const std::uint64_t bits = DoubleBits(field);
            buffer_ += IsExactDecimal(bits) ? Decimal(bits) : '"' + HexNumber(bits, 8) + '"';
            return;
        }
        case FieldKind::kLeftOver:
            buffer_ += '"' + HexDigits(field.bytes) + '"';
            return;
        default:
            field.IsPlain() ? String(field.Text()) : PartsOfText(field);
    }
}

void JsonWriter::PartsOfText(const Field& field) {
    buffer_ += "{ \"text\": ";
    String(field.Text());
    if (field.kind == FieldKind::kShort) buffer_ += ", \"tag\": " + std::to_string(field.Byte(0));
    if (field.kind == FieldKind::kCounted && field.Byte(0) != field.Text().size())
        buffer_ += ", \"count\": " + std::to_string(field.Byte(0));
    if (const auto behind = field.Behind(); !behind.empty())
        buffer_ += ", \"behind\": \"" + HexDigits(behind) + '"';
    buffer_ += " }";
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

void JsonWriter::Key(std::string_view name) {
    NewLine();
    buffer_ += '"';
    buffer_ += name;
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
