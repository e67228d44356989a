#pragma once

#include "zel/com/Bstr.h"
#include "Property.h"
#include "zel/record/ShortString.h"

namespace zel {

// Reads an object's properties through its interface into the fields of a record. The results of getters do
// not matter, except that a text whose getter failed is not stored: the field keeps its default. Texts pass
// through one working string, which getters reallocate in place.
template <class Interface>
class Gathering {
public:
    // Borrows the object.
    explicit Gathering(Interface& source) noexcept : source_(source), text_(L"") {}

    void Number(HRESULT (STDMETHODCALLTYPE Interface::*get)(unsigned char*), std::uint8_t& field) {
        (source_.*get)(&field);
    }

    template <class T, class Value>
    void Number(HRESULT (STDMETHODCALLTYPE Interface::*get)(Value*), LittleEndian<T>& field) {
        static_assert(sizeof(Value) == sizeof(T));
        Value value;
        GetValue(field, &value);
        (source_.*get)(&value);
        PutValue(field, value);
    }

    template <class Field>
    void Text(HRESULT (STDMETHODCALLTYPE Interface::*get)(BSTR*), Field& field) {
        if (SUCCEEDED((source_.*get)(text_.InOut()))) PutText(field, text_.Get());
    }

protected:
    Interface& source_;

private:
    Bstr text_;
};

}  // namespace zel
