#include "FieldValue.h"

#include <charconv>
#include <cstring>
#include <optional>

#include "zel/definition/FileHeader.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Failure.h"
#include "zel/text/Real.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

[[noreturn]] void Fail(const Field& field, const std::string& reason) {
    throw Failure(kUnusable, field.FullName() + ": " + reason);
}

// All of a text, or nothing.
template <class T, class... Format>
std::optional<T> Parsed(std::string_view text, Format... format) {
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, format...);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return {};
    return value;
}

// The three whole numbers of "2004-02-29" or "23:59:59".
struct Triple {
    static std::optional<Triple> Of(std::string_view text, char between) {
        const std::size_t first = text.find(between, 1), second = text.find(between, first + 1);
        if (first == text.npos || second == text.npos) return {};
        const auto a = Parsed<int>(text.substr(0, first));
        const auto b = Parsed<int>(text.substr(first + 1, second - first - 1));
        const auto c = Parsed<int>(text.substr(second + 1));
        if (!a || !b || !c) return {};
        return Triple{*a, *b, *c};
    }
    std::int64_t a, b, c;
};

bool IsDate(const Field& field) { return field.name == "CreationDate" || field.name == "ModifiedDate"; }
bool IsTime(const Field& field) { return field.name == "CreationTime" || field.name == "ModifiedTime"; }

// The day number of a date; days that no calendar has are refused.
std::optional<std::int64_t> DayOf(const std::string& text) {
    const auto date = Triple::Of(text, '-');
    if (!date || date->a < 1 || date->a > 9999 || date->b < 1 || date->b > 12) return {};
    // Counted in years that begin on 1 March, from that of the year 0; day 0 is 1 January 1600.
    const std::int64_t year = date->a - (date->b <= 2 ? 1 : 0), month = (date->b + 9) % 12;
    const std::int64_t day =
        365 * year + year / 4 - year / 100 + year / 400 + (153 * month + 2) / 5 + date->c - 1 - 584328;
    if (DayText(day) != text) return {};
    return day;
}

std::optional<std::int64_t> SecondsOf(const std::string& text) {
    const auto time = Triple::Of(text, ':');
    if (!time) return {};
    const std::int64_t seconds = (time->a * 60 + time->b) * 60 + time->c;
    if (SecondsText(seconds) != text) return {};
    return seconds;
}

std::uint64_t WholeNumber(const Field& field, const std::string& value) {
    const auto [least, most] = LimitsOf(field);
    std::optional<std::int64_t> number = value.substr(0, 2) == "0x"
                                             ? Parsed<std::int64_t>(std::string_view(value).substr(2), 16)
                                             : Parsed<std::int64_t>(value);
    if (!number && IsDate(field)) number = DayOf(value);
    if (!number && IsTime(field)) number = SecondsOf(value);
    if (!number || *number < least || *number > most)
        Fail(field, '"' + value + "\" does not fit, a whole number from " + std::to_string(least) + " to " +
                        std::to_string(most) + " does" +
                        (IsDate(field)   ? ", or a date as 2004-02-29"
                         : IsTime(field) ? ", or a time as 23:59:59"
                                         : ""));
    return static_cast<std::uint64_t>(*number);
}

std::uint64_t RealBits(const Field& field, const std::string& value) {
    constexpr std::size_t kBits = 18;
    if (value.size() == kBits && value.substr(0, 2) == "0x")
        if (const auto bits = Parsed<std::uint64_t>(std::string_view(value).substr(2), 16)) return *bits;
    const auto number = ParseDecimal(value);
    if (!number)
        Fail(field,
             '"' + value + "\" does not fit, a number as 1.5 does, or 0x and the 16 digits of its bits");
    std::uint64_t bits = 0;
    std::memcpy(&bits, &*number, sizeof bits);
    return bits;
}

std::string Text(const Field& field, const std::string& value) {
    const std::optional<std::string> text = EncodeWindows1252(value);
    if (!text) Fail(field, '"' + value + "\" does not fit, characters of Windows-1252 do");
    if (text->find('\0') != text->npos) Fail(field, "a NUL does not fit, it would end the text");
    if (text->size() > field.MaxLength())
        Fail(field, '"' + value + "\" has " + Counted(text->size(), "character") + ", at most " +
                        std::to_string(field.MaxLength()) + " fit");
    return *text;
}

std::string BytesWithText(const Field& field, const std::string& text) {
    const char count = static_cast<char>(text.size());
    if (field.kind == FieldKind::kShort) return std::string{'\6', count} + text;
    std::string bytes(field.bytes);
    const std::size_t start = field.kind == FieldKind::kCounted ? 1 : 0;
    if (start) bytes[0] = count;
    bytes.replace(start, text.size(), text);
    bytes[start + text.size()] = bytes.back() = '\0';
    return bytes;
}

}  // namespace

Limits LimitsOf(const Field& field) {
    const bool isSigned = field.kind == FieldKind::kSigned;
    const std::int64_t most = (std::int64_t{1} << (8 * field.unit - (isSigned ? 1 : 0))) - 1;
    return {isSigned ? -most - 1 : 0, most};
}

std::string PlainValue(const Field& field) {
    switch (field.kind) {
        case FieldKind::kUnsigned:
        case FieldKind::kSigned:
            return std::to_string(field.Integer());
        case FieldKind::kReal:
            return IsFinite(field.Bits()) ? Decimal(field.Bits()) : HexNumber(field.Bits(), field.unit);
        default:
            return Shown(Utf8OfWindows1252(UpToNul(field.Text())));
    }
}

std::string BytesWithValue(const Field& field, const std::string& value) {
    if (field.kind != FieldKind::kUnsigned && field.kind != FieldKind::kSigned &&
        field.kind != FieldKind::kReal)
        return BytesWithText(field, Text(field, value));
    const std::uint64_t bits =
        field.kind == FieldKind::kReal ? RealBits(field, value) : WholeNumber(field, value);
    std::string bytes;
    for (std::size_t i = 0; i < field.unit; ++i) bytes += static_cast<char>(bits >> (8 * i));
    return bytes;
}

}  // namespace zel
