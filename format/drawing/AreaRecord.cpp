// An area in the file:
//
//   order  width   field                 present in versions
//   1      2       AreaCode, as number   0 to 6
//          6       AreaCode, fixed       7
//          2 + c   AreaCode              8 and up
//   2      2 + c   Label                 13 and up
//   3      1       TypeByte              all
//   4      40      Measure1 .. Measure5  all
//   5      2       LinkIndex             all; "none" is 0 up to version 10, then 0xFFFF
//   6      4       ExtraValue            12 and up
//   7      3       Option1 .. Option3    all
//   8      2 + c   Description           all
//   9      2 + c   StyleName             22 and up
//   10     2       MemberIndices, first  22 and 23
//          2 + 4n  MemberIndices         24 and up; each stands plus one
//   11     2       Word1                 all
//   12     2       Word2                 3 and up
//   13     2       Word3                 10 and up
//   14     8       Long1, Long2          16 and up
//   15     4       Long3                 23 and up
//   16     2       Placeholders          all

#include "AreaRecord.h"

#include <algorithm>

#include "AreaCodeTable.h"
#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {
namespace {

// The form of version 7: a count, then five characters, of which a longer code loses the rest.
struct FixedCode {
    std::uint8_t count;
    char characters[5];
};

constexpr FieldForm FormOf(const FixedCode&) { return {FieldKind::kCode}; }

template <class Archive>
void PassNumber(Archive& archive, std::string& code) {
    std::uint16_t number = Archive::kReads ? std::uint16_t{0} : AreaCodeTable::NumberOf(code);
    archive.Value(number, "AreaCodeNumber");
    if (!Archive::kReads) return;
    const std::string_view found = AreaCodeTable::CodeOf(number);
    if (!found.empty()) code = found;
}

template <class Archive>
void PassFixed(Archive& archive, std::string& code) {
    FixedCode fixed{};
    if (!Archive::kReads) {
        const auto count = static_cast<std::uint8_t>(code.size());  // of 256 characters none is kept
        fixed.count = std::min<std::uint8_t>(count, sizeof fixed.characters);
        std::copy_n(code.data(), fixed.count, fixed.characters);
    }
    archive.Field(fixed, "AreaCode");
    if (Archive::kReads)
        code = UpToNul({fixed.characters, std::min<std::size_t>(fixed.count, sizeof fixed.characters)});
}

// Versions 22 and 23 store one member, as it is.
template <class Archive>
void PassFirst(Archive& archive, ValueList& indices) {
    auto first = static_cast<std::uint16_t>(Archive::kReads || indices.empty() ? 0 : *indices.begin());
    archive.Value(first, "FirstMemberIndex");
    if (Archive::kReads) indices.Append() = first;
}

}  // namespace

std::istream& AreaRecord::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& AreaRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void AreaRecord::Pass(Archive& archive) {
    archive.SetVersion(GetVersion());
    PassAreaCode(archive);
    archive.Since(13, Label, "Label");
    archive.Fields(Named{TypeByte, "TypeByte"}, Named{Measure1, "Measure1"}, Named{Measure2, "Measure2"},
                   Named{Measure3, "Measure3"}, Named{Measure4, "Measure4"}, Named{Measure5, "Measure5"});
    PassLinkIndex(archive);
    archive.Since(12, ExtraValue, "ExtraValue");
    archive.Fields(Named{Option1, "Option1"}, Named{Option2, "Option2"}, Named{Option3, "Option3"});
    archive.Field(Description, "Description");
    archive.Since(22, StyleName, "StyleName");
    PassMemberIndices(archive);
    archive.Field(Word1, "Word1");
    archive.Since(3, Word2, "Word2");
    archive.Since(10, Word3, "Word3");
    archive.Since(16, Long1, "Long1");
    archive.Since(16, Long2, "Long2");
    archive.Since(23, Long3, "Long3");
    Placeholders.Pass(archive, "Placeholders");
}

template <class Archive>
void AreaRecord::PassAreaCode(Archive& archive) {
    if (archive.version() <= 6) return PassNumber(archive, AreaCode.text);
    if (archive.version() == 7) return PassFixed(archive, AreaCode.text);
    archive.Field(AreaCode, "AreaCode");
}

template <class Archive>
void AreaRecord::PassLinkIndex(Archive& archive) {
    if (archive.version() > 10) return archive.Field(LinkIndex, "LinkIndex");
    LittleEndian<std::uint16_t> stored = LinkIndex;
    if (!Archive::kReads && stored == kNoLink) stored = 0;
    archive.Field(stored, "LinkIndex");
    if (Archive::kReads) LinkIndex = stored == 0 ? LittleEndian<std::uint16_t>{kNoLink} : stored;
}

template <class Archive>
void AreaRecord::PassMemberIndices(Archive& archive) {
    if (archive.version() >= 24) return MemberIndices.Pass(archive, 1, "MemberIndices");
    if (archive.version() >= 22) PassFirst(archive, MemberIndices);
}

template void AreaRecord::Pass(Reader&);
template void AreaRecord::Pass(NamedReader&);
template void AreaRecord::Pass(Writer&);

}  // namespace zel
