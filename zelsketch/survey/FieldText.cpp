#include "FieldText.h"

#include "zel/definition/FileHeader.h"
#include "zel/definition/SketchFile.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

std::string FlagsText(const Field& field) {
    const auto flags = static_cast<std::uint32_t>(field.Integer());
    std::string text = HexNumber(flags, 4) + "  ";
    std::uint32_t unknown = flags;
    const auto explain = [&](std::int32_t flag, const char* meaning) {
        const auto bit = static_cast<std::uint32_t>(flag);
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
    if (field.kind == FieldKind::kCounted && field.Byte(0) != field.Text().size())
        remarks += "  (count " + std::to_string(field.Byte(0)) + ")";
    if (field.kind == FieldKind::kShort && field.Byte(0) != 6)
        remarks += "  (tag " + std::to_string(field.Byte(0)) + ")";
    if (const std::size_t behind = field.Behind().size())
        remarks += "  (" + Counted(behind, "byte") + " behind the text)";
    return remarks;
}

std::string NumberText(const Field& field) {
    std::string number = std::to_string(field.Integer());
    if (field.name == "Flags") return FlagsText(field);
    if (field.name == "FileVersion" && field.Integer() > SketchFile::kNewestVersion)
        return number + "  (unknown: readers stop behind the header)";
    if (field.name == "FileFlags") return HexNumber(static_cast<std::uint32_t>(field.Integer()), 4);
    if (field.name == "CreationDate" || field.name == "ModifiedDate")
        return number + "  " + DayText(field.Integer());
    if (field.name == "CreationTime" || field.name == "ModifiedTime")
        return number + "  " + SecondsText(field.Integer());
    return number;
}

}  // namespace

std::uint64_t DoubleBits(const Field& field) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 8; ++i) bits |= static_cast<std::uint64_t>(field.Byte(i)) << (8 * i);
    return bits;
}

std::string ValueText(const Field& field) {
    switch (field.kind) {
        case FieldKind::kNumber:
            return NumberText(field);
        case FieldKind::kDouble: {
            const std::uint64_t bits = DoubleBits(field);
            return Decimal(bits) + (IsExactDecimal(bits) ? "" : "  " + HexNumber(bits, 8));
        }
        case FieldKind::kOpening:
            return "list opens";
        case FieldKind::kClosing:
            return "list ends";
        case FieldKind::kLeftOver:
            return Counted(field.bytes.size(), "byte") + " that no reader looks at";
        default:
            return Quoted(field.Text()) + TextRemarks(field);
    }
}

std::string PlaceText(const Place& place) {
    constexpr std::size_t kAtEachEnd = 4;
    std::string text;
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (i == kAtEachEnd && place.size() > 2 * kAtEachEnd + 1) {
            const std::size_t skipped = place.size() - 2 * kAtEachEnd;
            text += ".(" + std::to_string(skipped) + " levels)";
            i += skipped;
        }
        text += (i == 0 ? "Definitions[" : ".Members[") + std::to_string(place[i]) + "]";
    }
    return text;
}

}  // namespace zel
