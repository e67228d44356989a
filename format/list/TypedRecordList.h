#pragma once

#include <cstdint>
#include <utility>

#include "ElementList.h"
#include "TypedFraming.h"
#include "zel/record/Versioned.h"

namespace zel {

// Records with a count and a type code each (TypedFraming.h). T is any record class that has, beside Read and
// Write, TypeCode, SetTypeCode and SetVersion. At most 32767 records read back: more write a count that
// readers take for none.
template <class T>
class TypedRecordList : public Versioned, public ElementList<T> {
public:
    TypedRecordList() = default;
    TypedRecordList(const TypedRecordList&) = default;
    TypedRecordList& operator=(const TypedRecordList& other) {
        TypedRecordList::Assign(other);
        return *this;
    }

    // Reaches the records already held.
    void SetVersion(std::int32_t version) override {
        Versioned::SetVersion(version);
        for (T& element : *this) element.SetVersion(version);
    }
    // Copies the version, the records and OmitWhenEmpty.
    virtual void Assign(const TypedRecordList& other) {
        TypedRecordList copy(other);
        Versioned::operator=(copy);
        OmitWhenEmpty = copy.OmitWhenEmpty;
        this->Elements().swap(copy.Elements());
    }
    // Replaces what is held. A list cut short by the end of the stream still gets as many records as it
    // announces, up to a limit that only damaged files meet.
    virtual std::istream& Read(std::istream& stream) {
        Reader reader(stream);
        Pass(reader);
        return stream;
    }
    virtual std::ostream& Write(std::ostream& stream) {
        Writer writer(stream);
        Pass(writer);
        return stream;
    }

    // A new record at the end, with a type code and the list's version.
    T& Append(std::int16_t typeCode) {
        T& element = ElementList<T>::Append();
        element.SetTypeCode(typeCode);
        element.SetVersion(GetVersion());
        return element;
    }

    template <class Archive>
    void Pass(Archive& archive, const char* name = nullptr) {
        TypedCursor<Archive, TypedRecordList> cursor(archive, *this, name);
        while (auto* element = cursor.Next()) PassElement(archive, *element);
    }

    // Whether an empty list is written as one byte. Readers take both forms; files have always had the long
    // one.
    bool OmitWhenEmpty = false;
};

}  // namespace zel
