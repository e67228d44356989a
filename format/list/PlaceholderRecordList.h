#pragma once

#include "PlaceholderRecord.h"
#include "RecordList.h"

namespace zel {

// In the file always the bytes 1 and 0. Any other second byte is damage: reading stops there and fails the
// stream. Its elements carry nothing, so a copy is empty.
class PlaceholderRecordList : public RecordList<PlaceholderRecord> {
public:
    PlaceholderRecordList() = default;
    PlaceholderRecordList(const PlaceholderRecordList& other) : RecordList(other) { Clear(); }
    PlaceholderRecordList& operator=(const PlaceholderRecordList&) {
        Clear();
        return *this;
    }
};

}  // namespace zel
