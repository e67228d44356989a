#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

#include "zel/record/CountedText.h"
#include "zel/record/LongString.h"
#include "zel/record/PlainString.h"
#include "zel/record/ShortString.h"
#include "zel/list/ValueList.h"
#include "Target.h"

namespace zel {

// The layout of files, told a second time: as tables of fields and by code of its own, against which the fuzz
// targets hold what the library reads and what it writes.

// How the file has a field, where that differs from how memory has it.
enum class Form {
    kRaw,           // the bytes themselves
    kCounted,       // a CountedText, in which reading and writing put a NUL
    kFlags,         // header flags: reading adds those that the file's type and version imply
    kShort,         // a byte that is written as 6, a count byte, characters
    kPlain,         // a count byte, characters
    kLong,          // a signed 16-bit count, characters
    kStyle,         // 255, 254, 253 for three names, any other byte in front of a plain text
    kGroupStyle,    // the same, but 1 to 252 stand alone
    kMarks,         // two bytes that are written as 6 and 1
    kNumber,        // a 16-bit number from a table of codes
    kFixed,         // a count byte and five characters
    kLink,          // 0 for 0xFFFF
    kFirst,         // 16 bits of the first value of a list
    kIndices,       // a byte, each value plus one in 32 bits, a zero byte
    kNarrow,        // 16 bits of 32, signed
    kOrder,         // less one, unless 0
    kPlaceholders,  // 1 and 0
};

constexpr int kOn = 1000;  // and in all later versions

// A field's value in memory as bytes, and its name.
template <class Record>
struct FieldPlace {
    std::string_view (*value)(const Record& record, Form form, std::string& scratch);
    const char* (*name)();
};

// A field in the versions `since` to `until`. `width` is that in the file or, of a text, the most characters
// that memory keeps, 0 for any number.
template <class Record>
struct Row {
    int since;
    int until;
    Form form;
    std::size_t width;
    FieldPlace<Record> place;
    bool (*present)(const Record& record) = nullptr;
};

inline std::string_view BytesOf(const void* from, std::size_t size) {
    return {static_cast<const char*>(from), size};
}
inline std::string_view ValueOf(const ShortString& field, Form, std::string&) { return field.text; }
inline std::string_view ValueOf(const PlainString& field, Form, std::string&) { return field.text; }
inline std::string_view ValueOf(const LongString& field, Form, std::string&) { return field.text; }
inline std::string_view ValueOf(const ValueList& field, Form, std::string& scratch) {
    scratch.clear();
    for (const std::uint32_t value : field) scratch += BytesOf(&value, sizeof value);
    return scratch;
}
template <std::size_t n>
std::string_view ValueOf(const FixedText<n>& field, Form form, std::string&) {
    return form == Form::kRaw ? BytesOf(&field, n) : field.Text();
}
template <class T>
std::string_view ValueOf(const T& field, Form, std::string&) {
    static_assert(std::is_trivially_copyable_v<T>);
    return BytesOf(&field, sizeof field);
}

template <auto kField>
struct FieldAt {
    template <class Record>
    static std::string_view Value(const Record& record, Form form, std::string& scratch) {
        return ValueOf(record.*kField, form, scratch);
    }
    static const char* Name() { return __PRETTY_FUNCTION__; }
    template <class Record>
    constexpr operator FieldPlace<Record>() const {
        return {&Value<Record>, &Name};
    }
};
template <auto kField>
constexpr FieldAt<kField> At;

constexpr struct {
    template <class Record>
    constexpr operator FieldPlace<Record>() const {
        return {[](const Record&, Form, std::string&) { return std::string_view(); },
                [] { return "bytes without a meaning"; }};
    }
} kNowhere;

constexpr std::string_view kAreaCodes[] = {"",     "GLA1", "GLA2", "GLA3", "GLA4", "GLA5", "GLA6", "GLA7",
                                           "GLA8", "GLA9", "GLA0", "GBA1", "GBA2", "GBA3", "GBA4", "GBA5",
                                           "GBA6", "GBA7", "GBA8", "GBA9", "GBA0", "BSMT", "P/P",  "GAR",
                                           "LAND", "SITE", "OTH",  "NCA",  "FF",   "WIN"};
constexpr std::string_view kStyleNames[] = {"S1", "BYBLOCK", "BYLAYER"};  // 253 to 255

inline unsigned Byte(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }
inline unsigned Word(std::string_view bytes) { return Byte(bytes, 0) + 256 * Byte(bytes, 1); }
inline void AppendWord(std::string& to, unsigned word) {
    to += static_cast<char>(word);
    to += static_cast<char>(word >> 8);
}
// `by` is added to a number of any width.
inline std::string Shifted(std::string_view number, int by) {
    std::string sum(number);
    for (char& digit : sum) {
        const int value = static_cast<unsigned char>(digit) + by;
        digit = static_cast<char>(value);
        by = value < 0 ? -1 : value > 255;
    }
    return sum;
}

// Takes a file apart by the tables and holds every field against what the library read from the same bytes.
// Done where the bytes end too early: what is there has been compared then, unless the read was given up
// there
// (`isWhole` false), which leaves the last record open.
class Comparison {
public:
    Comparison(std::string_view bytes, int fileVersion, bool isWhole = true)
        : version(fileVersion), geometryVersion(fileVersion), rest_(bytes), isWhole_(isWhole) {}

    bool Done() const { return cut_; }
    std::size_t Left() const { return rest_.size(); }

    template <std::size_t n, class Record>
    void Rows(const Row<Record> (&rows)[n], const Record& record, int at) {
        for (const Row<Record>& row : rows) {
            if (cut_ || at < row.since || at > row.until || (row.present && !row.present(record))) continue;
            expected_.clear();
            Expect(row.form, row.width);
            if (!cut_ && isWhole_)
                Check(row.place.value(record, row.form, scratch_) == expected_,
                      "a field is read as it stands in the file:", row.place.name());
        }
    }

    // The elements are those of the file and, unless it is cut, no others.
    template <class List, class Each>
    void Marked(const List& list, Each each) {
        Take(1);
        auto element = list.Elements().begin();
        while (!cut_) {
            if (Take(1) == std::string_view("\0", 1)) break;
            if (cut_) break;
            rest_ = {rest_.data() - 1, rest_.size() + 1};
            Check(element != list.Elements().end(), "a list has all its elements");
            each(*element++);
        }
        Check(element == list.Elements().end(), "a list has no further elements");
    }
    template <class List, class Each>
    void Typed(const List& list, Each each) {
        auto element = list.Elements().begin();
        const bool omitted = Take(1) != std::string_view("\0", 1);
        const std::string_view count = omitted ? std::string_view() : Take(2);
        for (int left = cut_ || omitted ? 0 : static_cast<std::int16_t>(Word(count)); left > 0; --left) {
            const std::string_view code = Take(2);
            if (cut_) break;
            Check(element != list.Elements().end(), "a list has all its elements");
            each(*element++, static_cast<std::int16_t>(Word(code)));
        }
        Check(cut_ || element == list.Elements().end(), "a list has no further elements");
    }

    const int version;
    const int geometryVersion;

private:
    std::string_view Take(std::size_t count) {
        cut_ = cut_ || count > rest_.size();
        if (cut_) return {};
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    unsigned TakeByte() {
        const std::string_view byte = Take(1);
        return cut_ ? 0 : Byte(byte, 0);
    }
    unsigned TakeWord() {
        const std::string_view word = Take(2);
        return cut_ ? 0 : Word(word);
    }
    void ExpectText(std::size_t count, std::size_t most) {
        expected_ = Take(count);
        expected_.resize(std::min(expected_.find('\0'), expected_.size()));
        if (most) expected_.resize(std::min(expected_.size(), most));
    }
    void ExpectStyle(Form form, std::size_t width) {
        const unsigned code = TakeByte();
        if (code >= 253) {
            expected_ = kStyleNames[code - 253];
        } else if (code == 0 || form == Form::kStyle) {
            ExpectText(TakeByte(), width);
        }
    }
    void ExpectIndices() {
        for (Take(1); TakeByte() != 0;) {
            rest_ = {rest_.data() - 1, rest_.size() + 1};
            expected_ += Shifted(Take(4), -1);
        }
    }
    // `expected_` becomes what memory should have.
    void Expect(Form form, std::size_t width) {
        switch (form) {
            case Form::kRaw:
                expected_ = Take(width);
                return;
            case Form::kCounted:
                expected_ = Take(width);
                if (cut_) return;
                if (const unsigned count = Byte(expected_, 0); count >= 1 && count <= width - 2)
                    expected_[1 + count] = '\0';
                else
                    expected_.back() = '\0';
                return;
            case Form::kFlags:
                expected_ = Take(4);
                // A version that is cut off is that of a new file.
                if (!cut_ && !rest_.empty())
                    AddImpliedFlags(Byte(rest_, 0), rest_.size() > 1 ? Byte(rest_, 1) : 5);
                return;
            case Form::kShort:
                Take(1);
                return ExpectText(TakeByte(), width);
            case Form::kPlain:
                return ExpectText(TakeByte(), width);
            case Form::kLong: {
                const unsigned count = TakeWord();
                return ExpectText(count < 0x8000 ? count : 0, width);
            }
            case Form::kStyle:
            case Form::kGroupStyle:
                return ExpectStyle(form, width);
            case Form::kMarks:
                Take(2);
                return;
            case Form::kNumber:
                if (const unsigned number = TakeWord(); number < std::size(kAreaCodes))
                    expected_ = kAreaCodes[number];
                return;
            case Form::kFixed: {
                const unsigned count = TakeByte();
                ExpectText(5, 5);
                expected_.resize(std::min<std::size_t>(count, expected_.size()));
                return;
            }
            case Form::kLink:
                expected_ = Take(2);
                if (expected_ == std::string_view("\0", 2)) expected_ = "\xff\xff";
                return;
            case Form::kFirst:
                expected_ = Take(2);
                expected_.append(2, '\0');
                return;
            case Form::kIndices:
                return ExpectIndices();
            case Form::kNarrow:
                expected_ = Take(2);
                expected_.append(2, !cut_ && Byte(expected_, 1) >= 128 ? '\xff' : '\0');
                return;
            case Form::kOrder:
                expected_ = Take(2);
                if (expected_ != std::string_view("\0", 2)) expected_ = Shifted(expected_, 1);
                return;
            case Form::kPlaceholders:
                Take(1);
                if (TakeByte() != 0) cut_ = true;  // damage, at which readers stop
        }
    }
    void AddImpliedFlags(unsigned type, unsigned fileVersion) {
        const bool both = (type == 5 && fileVersion >= 5) || (type == 1 && fileVersion >= 22);
        if (both || (type == 1 && fileVersion == 21)) expected_[0] = static_cast<char>(expected_[0] | 0x10);
        if (both) expected_[1] = static_cast<char>(expected_[1] | 1);
    }

    std::string_view rest_;
    const bool isWhole_;
    bool cut_ = false;
    std::string expected_;
    std::string scratch_;
};

// Makes of a record in memory the bytes that the tables say.
class Encoding {
public:
    // Geometries keep the version that they were read with.
    Encoding(int fileVersion, int readVersion) : version(fileVersion), geometryVersion(readVersion) {
        bytes_.reserve(4096);
    }

    bool Done() const { return false; }
    const std::string& Bytes() const { return bytes_; }

    template <std::size_t n, class Record>
    void Rows(const Row<Record> (&rows)[n], const Record& record, int at) {
        for (const Row<Record>& row : rows)
            if (at >= row.since && at <= row.until && (!row.present || row.present(record)))
                Append(row.form, row.place.value(record, row.form, scratch_));
    }
    template <class List, class Each>
    void Marked(const List& list, Each each) {
        bytes_ += '\1';
        for (const auto& element : list.Elements()) each(element);
        bytes_ += '\0';
    }
    template <class List, class Each>
    void Typed(const List& list, Each each) {
        bytes_ += '\0';
        AppendWord(bytes_, static_cast<unsigned>(list.size()));
        for (const auto& element : list.Elements()) {
            AppendWord(bytes_, static_cast<std::uint16_t>(element.TypeCode()));
            each(element, element.TypeCode());
        }
    }

    const int version;
    const int geometryVersion;

private:
    void AppendText(std::string_view text) {
        bytes_ += static_cast<char>(text.size());
        bytes_ += text;
    }
    void Append(Form form, std::string_view value) {
        switch (form) {
            case Form::kRaw:
            case Form::kCounted:
            case Form::kFlags:
                bytes_ += value;
                return;
            case Form::kShort:
                bytes_ += '\6';
                return AppendText(value);
            case Form::kPlain:
                return AppendText(value);
            case Form::kLong:
                AppendWord(bytes_, static_cast<unsigned>(value.size()));
                bytes_ += value;
                return;
            case Form::kStyle:
            case Form::kGroupStyle:
                for (int i = 0; i < 3; ++i)
                    if (value == kStyleNames[i]) return void(bytes_ += static_cast<char>(253 + i));
                bytes_ += '\0';
                return AppendText(value);
            case Form::kMarks:
                bytes_ += "\6\1";
                return;
            case Form::kNumber: {
                unsigned number = std::size(kAreaCodes) - 1;
                while (number > 0 && value != kAreaCodes[number]) --number;
                return AppendWord(bytes_, number);
            }
            case Form::kFixed:
                AppendText(value.substr(0, 5));
                bytes_.append(5 - std::min<std::size_t>(value.size(), 5), '\0');
                return;
            case Form::kLink:
                return AppendWord(bytes_, Word(value) == 0xFFFF ? 0 : Word(value));
            case Form::kFirst:
                return AppendWord(bytes_, value.empty() ? 0 : Word(value));
            case Form::kIndices:
                bytes_ += '\1';
                for (; !value.empty(); value.remove_prefix(4)) bytes_ += Shifted(value.substr(0, 4), 1);
                bytes_ += '\0';
                return;
            case Form::kNarrow:
                bytes_ += value.substr(0, 2);
                return;
            case Form::kOrder:
                return AppendWord(bytes_, Word(value) == 0 ? 0 : Word(value) - 1);
            case Form::kPlaceholders:
                bytes_ += std::string_view("\1\0", 2);
        }
    }

    std::string bytes_;
    std::string scratch_;
};

}  // namespace zel
