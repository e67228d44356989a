#include "Text.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "zel/definition/CalendarDate.h"
#include "zel/definition/FileHeader.h"
#include "Real.h"
#include "Windows1252.h"

namespace zel {
namespace {

std::string Format(const char* format, int a, int b, int c) {
    char text[48];
    std::snprintf(text, sizeof text, format, a, b, c);
    return text;
}

}  // namespace

std::string Counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

std::string HexDigits(std::string_view bytes, std::string_view between) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * (2 + between.size()));
    for (const char c : bytes) {
        if (!text.empty()) text += between;
        const auto byte = static_cast<unsigned char>(c);
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

std::string HexNumber(std::uint64_t value, std::size_t width) {
    std::string bytes;
    for (std::size_t i = width; i-- > 0;) bytes += static_cast<char>(value >> (8 * i));
    return "0x" + HexDigits(bytes);
}

bool IsFinite(std::uint64_t bits) {
    constexpr std::uint64_t kExponent = 0x7FF0000000000000;
    return (bits & kExponent) != kExponent;
}

std::string Decimal(std::uint64_t bits) {
    constexpr std::uint64_t kNegativeZero = 0x8000000000000000;
    if (bits == kNegativeZero) return "-0.0";  // many take -0 for a whole number, which has no sign
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return ShortestDecimal(value);
}

std::string Printable(std::string_view text, std::string_view escaped) {
    std::string printable;
    for (const char c : text) {
        const char32_t character = FromWindows1252(static_cast<unsigned char>(c));
        if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            printable += "\\x" + HexDigits({&c, 1});
            continue;
        }
        if (escaped.find(c) != escaped.npos) printable += '\\';
        AppendUtf8(printable, character);
    }
    return printable;
}

std::string Quoted(std::string_view text) { return '"' + Printable(text, "\"\\") + '"'; }

std::string Shown(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t size = Utf8Size(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(size, 1));
        const bool isControl = static_cast<unsigned char>(text[0]) < 0x20 || text[0] == 0x7F ||
                               (text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0);
        shown += size == 0 || isControl ? "\\x" + HexDigits(character, "\\x") : std::string(character);
        text.remove_prefix(character.size());
    }
    return shown;
}

std::string DayText(std::int64_t day) {
    constexpr std::int64_t kDayOf1601 = 366, kDaysOf400Years = 146097;
    // The calendar repeats every 400 years; its conversion knows none before 1601.
    std::int64_t eras = (day - kDayOf1601) / kDaysOf400Years;
    if (day - kDayOf1601 < eras * kDaysOf400Years) --eras;
    const auto dayOfEra = static_cast<std::int32_t>(day - eras * kDaysOf400Years);
    const CalendarDate date = CalendarDateOf(FileHeader::DateTimeToFileTime(dayOfEra, 0));
    const std::int64_t year = date.year + eras * 400;
    if (year < 1 || year > 9999) return "(no date of the years 1 to 9999)";
    return Format("%04d-%02d-%02d", static_cast<int>(year), date.month, date.day);
}

std::string SecondsText(std::int64_t seconds) {
    if (seconds < 0 || seconds >= 86400) return "(not a time of day)";
    const int s = static_cast<int>(seconds);
    return Format("%02d:%02d:%02d", s / 3600, s / 60 % 60, s % 60);
}

}  // namespace zel
