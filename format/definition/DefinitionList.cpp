#include "DefinitionList.h"

#include "DefinitionRecord.h"
#include "zel/list/MarkerFraming.h"
#include "zel/list/Nested.h"

namespace zel {

DefinitionList::DefinitionList() = default;

// Delegates, so that a copy which runs out of memory is torn down by the destructor, on a constant stack.
DefinitionList::DefinitionList(const DefinitionList& other) : DefinitionList() {
    Record::operator=(other);
    CopyNested(other, *this);
}

DefinitionList::DefinitionList(DefinitionList&& other) noexcept : records_(std::move(other.records_)) {
    Record::operator=(other);
}

DefinitionList& DefinitionList::operator=(DefinitionList other) noexcept {
    Record::operator=(other);
    records_.swap(other.records_);
    return *this;
}

DefinitionList::~DefinitionList() { Clear(); }

void DefinitionList::SetVersion(std::int32_t version) {
    VisitLists(*this, [version](DefinitionList& list) {
        list.Record::SetVersion(version);
        for (DefinitionRecord& record : list.records_) record.SetOwnVersion(version);
    });
}

std::istream& DefinitionList::Read(std::istream& stream) {
    Reader reader(stream);
    WalkNested<MarkerCursor<Reader, DefinitionList>>(reader, *this);
    return stream;
}

std::ostream& DefinitionList::Write(std::ostream& stream) {
    Writer writer(stream);
    WalkNested<MarkerCursor<Writer, DefinitionList>>(writer, *this);
    return stream;
}

DefinitionRecord& DefinitionList::Append() {
    DefinitionRecord& record = records_.emplace_back();
    record.SetOwnVersion(GetVersion());
    return record;
}

void DefinitionList::Clear() noexcept { DrainNested(records_); }

}  // namespace zel
