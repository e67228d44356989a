#include "JsonWriter.h"

#include <algorithm>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {

JsonWriter::JsonWriter(std::ostream& out) : out_(out) { Open('{'); }

void JsonWriter::OnHeader() {
    Key("Header");
    Open('{');
}

void JsonWriter::OnField(const Field& field) {
    missing_ += field.Missing();
    if (field.kind == FieldKind::kListEnd) return Close(']');
    if (field.kind == FieldKind::kMarkedList || field.kind == FieldKind::kTypedList) return OpenList(field);
    field.name.empty() ? NewLine() : Key(field.name);
    Value(field);
}

void JsonWriter::OpenList(const Field& field) {
    const std::size_t usual = field.kind == FieldKind::kMarkedList ? 1 : 0;
    if (field.Byte(0) != usual) {
        Key(std::string(field.name) + "Opening");
        buffer_ += std::to_string(field.Byte(0));
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
        buffer_ += std::to_string(missing_);
    }
    Close('}');
    buffer_ += '\n';
    Flush();
}

void JsonWriter::Value(const Field& field) {
    switch (field.kind) {
        case FieldKind::kUnsigned:
        case FieldKind::kSigned:
        case FieldKind::kReal:
            return Numbers(field);
        case FieldKind::kRaw:
        case FieldKind::kLeftOver:
            buffer_ += '"' + HexDigits(field.bytes) + '"';
            return;
        default:
            field.IsPlain() ? String(field.Text()) : PartsOfText(field);
    }
}

void JsonWriter::Numbers(const Field& field) {
    const std::size_t count = field.Count();
    if (count > 1) buffer_ += '[';
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) buffer_ += ", ";
        const std::uint64_t bits = field.Bits(i);
        if (field.kind != FieldKind::kReal) {
            buffer_ += std::to_string(field.Integer(i));
        } else {
            buffer_ += IsExactDecimal(bits) ? Decimal(bits) : '"' + HexNumber(bits, 8) + '"';
        }
    }
    if (count > 1) buffer_ += ']';
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
