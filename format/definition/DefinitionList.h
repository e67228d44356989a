#pragma once

#include <list>

#include "zel/record/Record.h"

namespace zel {

class DefinitionRecord;

// Area definitions in file order: those of a file, or the members of one definition. Owns its records.
// In the file: a byte 1, the records, a byte 0; a record is recognised by its non-zero first byte.
// Nesting may be as deep as memory allows; no operation needs more stack for it.
class DefinitionList : public Record {
public:
    using Iterator = std::list<DefinitionRecord>::iterator;

    DefinitionList();
    // Copies the version and the records.
    DefinitionList(const DefinitionList& other);
    DefinitionList(DefinitionList&& other) noexcept;
    DefinitionList& operator=(DefinitionList other) noexcept;
    ~DefinitionList() override;

    // Reaches the records already held, at every depth.
    void SetVersion(std::int32_t version) override;
    // Replaces what is held. Ends at the closing byte or where the stream does.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    // A new record at the end, with the list's version.
    DefinitionRecord& Append();
    void Clear() noexcept;

    std::list<DefinitionRecord>& Elements() { return records_; }
    const std::list<DefinitionRecord>& Elements() const { return records_; }

private:
    std::list<DefinitionRecord> records_;
};

}  // namespace zel
