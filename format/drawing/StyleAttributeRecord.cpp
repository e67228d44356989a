// A style group in the file, the same in all versions:
//
//   order  width  field
//   1      1 + c  GroupName, a PlainString
//   2      2      6 and 1, ignored by readers
//   3      1      GroupAttribute
//   4      1 + n  GroupStyle, a style reference whose codes 1 to 252 announce nothing
//   5      16     GroupValues
//   6      3 + n  Members, typed

#include "StyleAttributeRecord.h"

#include "StyleReference.h"

namespace zel {

void StyleAttributeRecord::SetVersion(std::int32_t version) {
    Versioned::SetVersion(version);
    Members.SetVersion(version);
}

std::istream& StyleAttributeRecord::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& StyleAttributeRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void StyleAttributeRecord::Pass(Archive& archive) {
    std::uint8_t constant[] = {6, 1};
    archive.PlainText(GroupName, "GroupName");
    archive.Fields(Named{constant, "Constant"}, Named{GroupAttribute, "GroupAttribute"});
    if (Archive::kReads) GroupAttributeCopy = GroupAttribute;
    StyleReference::Pass(archive, GroupStyle, StyleReference::Announces::kNothing, "GroupStyle");
    archive.Field(GroupValues, "GroupValues");
    Members.Pass(archive, "Members");
}

template void StyleAttributeRecord::Pass(Reader&);
template void StyleAttributeRecord::Pass(NamedReader&);
template void StyleAttributeRecord::Pass(Writer&);

}  // namespace zel
