#pragma once

#include "ElementList.h"
#include "MarkerFraming.h"
#include "zel/record/Streamed.h"

namespace zel {

// Records without a count or a version: in the file a byte 1, the records, a byte 0. A record is recognised
// by its non-zero first byte; the writer does not guard against a record that starts with zero, which ends
// the list for the reader. T is any record class: its default constructor, Read and Write are used.
template <class T>
class RecordList : public Streamed, public ElementList<T> {
public:
    // Replaces what is held. Ends at the closing byte or where the stream fails.
    std::istream& Read(std::istream& stream) override {
        Reader reader(stream);
        Pass(reader);
        return stream;
    }
    std::ostream& Write(std::ostream& stream) override {
        Writer writer(stream);
        Pass(writer);
        return stream;
    }

    template <class Archive>
    void Pass(Archive& archive, const char* name = nullptr) {
        PassMarkerList(archive, *this, name);
    }
};

}  // namespace zel
