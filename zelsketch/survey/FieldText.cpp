#include "FieldText.h"

#include "zel/definition/FileHeader.h"
#include "zel/definition/SketchFile.h"
#include "zel/drawing/AreaCodeTable.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

std::string FlagsText(const Field& field) {
    const auto flags = static_cast<std::uint32_t>(field.Bits());
    std::string text = HexNumber(flags, 4) + "  ";
    std::uint32_t unknown = flags;
    const auto explain = [&](std::uint32_t bit, const char* meaning) {
        if (flags & bit) text += (unknown == flags ? "" : "; ") + HexNumber(bit, 2) + " " + meaning;
        unknown &= ~bit;
    };
    explain(FileHeader::kProgramVersionFlag, "ProgramVersionSignature follows");
    explain(FileHeader::kWriterVersionsFlag, "CreatedByVersion and ModifiedByVersion follow");
    if (unknown) text += "; unknown bits " + HexNumber(unknown, 4);
    return flags ? text : text + "no optional section";
}

std::string TextRemarks(const Field& field) {
    std::string remarks;
    if ((field.kind == FieldKind::kCounted || field.kind == FieldKind::kCode) &&
        field.Byte(0) != field.Text().size())
        remarks += "  (count " + std::to_string(field.Byte(0)) + ")";
    if (field.kind == FieldKind::kShort && field.Byte(0) != 6)
        remarks += "  (tag " + std::to_string(field.Byte(0)) + ")";
    if (field.kind == FieldKind::kStyle && !field.IsPlain())
        remarks += "  (code " + std::to_string(field.Byte(0)) + ")";
    if (const std::size_t behind = field.Behind().size())
        remarks += "  (" + Counted(behind, "byte") + " behind the text)";
    return remarks;
}

std::string RealText(std::uint64_t bits) {
    return Decimal(bits) + (IsFinite(bits) ? "" : "  " + HexNumber(bits, 8));
}

std::string NumbersText(const Field& field) {
    std::string text;
    for (std::size_t i = 0; i < field.Count(); ++i) {
        if (i > 0) text += ", ";
        text += field.kind == FieldKind::kReal ? RealText(field.Bits(i)) : std::to_string(field.Integer(i));
    }
    if (field.name == "Flags") return FlagsText(field);
    if (field.name == "FileVersion" && field.Integer() > SketchFile::kNewestVersion)
        return text + "  (unknown: readers stop behind the header)";
    if (field.name == "FileFlags") return HexNumber(field.Bits(), 4);
    if (field.name == "CreationDate" || field.name == "ModifiedDate")
        return text + "  " + DayText(field.Integer());
    if (field.name == "CreationTime" || field.name == "ModifiedTime")
        return text + "  " + SecondsText(field.Integer());
    if (field.name == "AreaCodeNumber")
        return text + "  " + Quoted(AreaCodeTable::CodeOf(static_cast<std::uint16_t>(field.Bits())));
    return text;
}

std::string TypedListText(const Field& field) {
    if (field.bytes.size() == 1) return "list left out";
    const auto count = static_cast<std::int16_t>(field.Byte(1) | field.Byte(2) << 8);
    return "list of " + std::to_string(count);
}

}  // namespace

std::string ValueText(const Field& field) {
    switch (field.kind) {
        case FieldKind::kUnsigned:
        case FieldKind::kSigned:
        case FieldKind::kReal:
            return NumbersText(field);
        case FieldKind::kRaw:
            return HexDigits(field.bytes, " ");
        case FieldKind::kMarkedList:
            return "list opens";
        case FieldKind::kTypedList:
            return TypedListText(field);
        case FieldKind::kListEnd:
            return "list ends";
        case FieldKind::kLeftOver:
            return Counted(field.bytes.size(), "byte") + " that no reader looks at";
        default:
            return Quoted(field.Text()) + TextRemarks(field);
    }
}

std::string NameText(const Field& field) {
    if (!field.name.empty()) return std::string(field.name);
    return std::string(field.place->back().list) + '[' + std::to_string(field.place->back().index) + ']';
}

std::string PlaceText(const Place& place) {
    constexpr std::size_t kAtEachEnd = 16;
    std::string text;
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (i == kAtEachEnd && place.size() > 2 * kAtEachEnd + 1) {
            const std::size_t skipped = place.size() - 2 * kAtEachEnd;
            text += ".(" + std::to_string(skipped) + " levels)";
            i += skipped;
        }
        if (i > 0) text += '.';
        text += place[i].list;
        if (place[i].index != kNoIndex) text += '[' + std::to_string(place[i].index) + ']';
    }
    return text;
}

}  // namespace zel
