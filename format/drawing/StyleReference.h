#pragma once

#include <cstdint>
#include <string_view>

#include "zel/record/CountedText.h"
#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

// A style in the file is one code byte: 255, 254 or 253 stand for the names below, 0 announces a PlainString
// with any other name. What the codes that no writer gives announce differs by record.
struct StyleReference {
    enum class Announces { kName, kNothing };

    // "BYLAYER", "BYBLOCK" or "S1"; empty for any other code.
    static std::string_view KeywordOf(std::uint8_t code);
    // 0 where the name is no keyword. Case matters.
    static std::uint8_t CodeOf(std::string_view name);

    // `otherCodes` is what the codes 1 to 252 announce. With nothing announced the name stays as it was.
    template <std::size_t n>
    static void Pass(Reader& reader, FixedText<n>& name, Announces otherCodes, const char*) {
        const auto code = reader.Value<std::uint8_t>();
        const std::string_view keyword = KeywordOf(code);
        if (!keyword.empty()) return name.Put(keyword);
        if (code == 0 || otherCodes == Announces::kName) reader.PlainText(name);
    }
    template <std::size_t n>
    static void Pass(Writer& writer, const FixedText<n>& name, Announces, const char*) {
        const std::uint8_t code = CodeOf(name.Text());
        writer.Value(code);
        if (code == 0) writer.PlainText(name);
    }
    // Code and name are one field.
    template <std::size_t n>
    static void Pass(NamedReader& reader, FixedText<n>& name, Announces otherCodes, const char* fieldName) {
        const auto code = static_cast<std::uint8_t>(reader.Peek(0));
        const bool isNamed = code == 0 || (otherCodes == Announces::kName && KeywordOf(code).empty());
        const std::size_t width = isNamed ? 2 + reader.Peek(1) : 1;
        const std::string_view found = NameIn(reader.Take({FieldKind::kStyle}, fieldName, width));
        if (!found.empty()) name.Put(found);
    }
    // The name that the bytes of such a field stand for.
    static std::string_view NameIn(std::string_view bytes) {
        if (bytes.size() > 1) return bytes.substr(2);
        return KeywordOf(static_cast<std::uint8_t>(bytes[0]));
    }
};

}  // namespace zel
