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
