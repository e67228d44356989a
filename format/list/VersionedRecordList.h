#pragma once

#include "RecordList.h"
#include "zel/record/Versioned.h"

namespace zel {

// A RecordList that gives its version to the records it reads. T also has SetVersion.
template <class T>
class VersionedRecordList : public RecordList<T>, public Versioned {
public:
    // Reaches the records already held.
    void SetVersion(std::int32_t version) override {
        Versioned::SetVersion(version);
        for (T& element : *this) element.SetVersion(version);
    }
    std::istream& Read(std::istream& stream) override {
        Reader reader(stream);
        Pass(reader);
        return stream;
    }

    // A new record at the end, with the list's version.
    T& Append() {
        T& element = RecordList<T>::Append();
        element.SetVersion(GetVersion());
        return element;
    }

    template <class Archive>
    void Pass(Archive& archive, const char* name = nullptr) {
        PassMarkerList(archive, *this, name);
    }
};

}  // namespace zel
