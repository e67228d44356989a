// A definition in the file:
//
//   order  width  field                        present from version
//   1      2 + c  AreaCode                     always
//   2      109    Multiplier .. DimensionType  always
//   3      1      Hidden                       2
//   4      2 + c  SubtractAreaCode             3
//   5      2 + n  Members                      always

#include "DefinitionRecord.h"

#include "zel/list/MarkerFraming.h"
#include "zel/list/Nested.h"

namespace zel {

DefinitionRecord::DefinitionRecord(const DefinitionRecord& other)
    : Record(other), DefinitionFields(other), Members(other.Members) {
    DefinitionRecord::Normalize();
}

DefinitionRecord& DefinitionRecord::operator=(const DefinitionRecord& other) {
    DefinitionRecord copy(other);
    std::swap(Members, copy.Members);
    Record::operator=(copy);
    DefinitionFields::operator=(std::move(copy));
    return *this;
}

void DefinitionRecord::CopyFields(const DefinitionRecord& other) {
    DefinitionFields::operator=(other);
    Record::operator=(other);
    Members.Record::operator=(other.Members);
    Normalize();
}

void DefinitionRecord::SetVersion(std::int32_t version) {
    Record::SetVersion(version);
    Members.SetVersion(version);
}

std::istream& DefinitionRecord::Read(std::istream& stream) {
    Reader reader(stream);
    WalkElement<MarkerCursor<Reader, DefinitionList>>(reader, *this);
    return stream;
}

std::ostream& DefinitionRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    WalkElement<MarkerCursor<Writer, DefinitionList>>(writer, *this);
    return stream;
}

void DefinitionRecord::Normalize() {
    block.AreaName.Normalize();
    block.AreaDescription.Normalize();
    block.SegmentStyle.Normalize();
}

}  // namespace zel
