#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "zel/record/CountedText.h"
#include "DefinitionList.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/Record.h"
#include "zel/record/ShortString.h"

namespace zel {

// The fixed part of a definition as it stands in the file.
struct DefinitionBlock {
    LittleEndian<double> Multiplier;
    std::uint8_t CalcType;
    CountedText<21> AreaName;
    CountedText<21> AreaDescription;
    LittleEndian<double> WallWidth;
    LittleEndian<double> WallHeight;
    CountedText<33> SegmentStyle;
    LittleEndian<std::uint16_t> FillPattern;
    LittleEndian<std::uint16_t> LineColor;
    LittleEndian<std::uint16_t> FillColor;
    std::uint8_t PostDescription;
    std::uint8_t PostArea;
    std::uint8_t DimensionType;

    // The fields one by one, for an archive that does not take the block whole.
    template <class Archive>
    void EachField(Archive& archive);
};
static_assert(sizeof(DefinitionBlock) == 109 && alignof(DefinitionBlock) == 1);
static_assert(offsetof(DefinitionBlock, AreaName) == 9 && offsetof(DefinitionBlock, AreaDescription) == 30);
static_assert(offsetof(DefinitionBlock, WallWidth) == 51 && offsetof(DefinitionBlock, SegmentStyle) == 67);
static_assert(offsetof(DefinitionBlock, FillPattern) == 100 &&
              offsetof(DefinitionBlock, DimensionType) == 108);

// All fields of a definition but its members. Copied, assigned and reset as a whole, so that no other place
// lists them.
struct DefinitionFields {
    ShortString AreaCode;
    DefinitionBlock block{};
    std::uint8_t Hidden = 0;
    ShortString SubtractAreaCode;
};
static_assert(std::is_nothrow_move_assignable_v<DefinitionFields>);

// One area definition and, below it, the definitions it is composed of. A new one is empty and zero, with
// version 0.
class DefinitionRecord : public Record, public DefinitionFields {
public:
    DefinitionRecord() = default;
    // A copy is normalized. An assignment that runs out of memory changes nothing.
    DefinitionRecord(const DefinitionRecord& other);
    DefinitionRecord& operator=(const DefinitionRecord& other);

    void SetVersion(std::int32_t version) override;
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;
    // Puts a NUL into each CountedText.
    virtual void Normalize();

    // For the walks over nested lists (Nested.h). An archive is a Reader, a Writer, or what presents their
    // calls.
    template <class Archive>
    void Head(Archive& archive);
    template <class Archive>
    void Tail(Archive&) {}
    static constexpr char kNestedName[] = "Members";
    DefinitionList* Nested() { return &Members; }
    const DefinitionList* Nested() const { return &Members; }
    // Everything but the members.
    void CopyFields(const DefinitionRecord& other);

    DefinitionList Members;

private:
    friend class DefinitionList;

    // Does not reach the members.
    void SetOwnVersion(std::int32_t version) {
        Record::SetVersion(version);
        Members.Record::SetVersion(version);
    }
};

template <class Archive>
void DefinitionBlock::EachField(Archive& archive) {
    archive.Field(Multiplier, "Multiplier");
    archive.Field(CalcType, "CalcType");
    archive.Field(AreaName, "AreaName");
    archive.Field(AreaDescription, "AreaDescription");
    archive.Field(WallWidth, "WallWidth");
    archive.Field(WallHeight, "WallHeight");
    archive.Field(SegmentStyle, "SegmentStyle");
    archive.Field(FillPattern, "FillPattern");
    archive.Field(LineColor, "LineColor");
    archive.Field(FillColor, "FillColor");
    archive.Field(PostDescription, "PostDescription");
    archive.Field(PostArea, "PostArea");
    archive.Field(DimensionType, "DimensionType");
}

// The layout of a definition, up to its members. docs/format.md has it as a table, which a test compares.
template <class Archive>
void DefinitionRecord::Head(Archive& archive) {
    archive.SetVersion(GetVersion());
    if (!Archive::kReads) Normalize();
    archive.Field(AreaCode, "AreaCode");
    archive.Field(block, "block");
    archive.Since(2, Hidden, "Hidden");
    archive.Since(3, SubtractAreaCode, "SubtractAreaCode");
    if (Archive::kReads) Normalize();
}

}  // namespace zel
