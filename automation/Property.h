#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstring>

#include "zel/com/Boundary.h"
#include "zel/record/CountedText.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/ShortString.h"
#include "Text.h"

namespace zel {

// The getters and putters of properties that stand for one field of a record. Putters never validate; a
// getter answers 1 for a null out-pointer. Numbers are moved as bytes: a double keeps every bit pattern.

template <class Value>
HRESULT GetValue(std::uint8_t field, Value* pVal) noexcept {
    static_assert(sizeof(Value) == 1);
    if (!pVal) return S_FALSE;
    *pVal = field;
    return S_OK;
}

template <class T, class Value>
HRESULT GetValue(const LittleEndian<T>& field, Value* pVal) noexcept {
    static_assert(sizeof(Value) == sizeof(T));
    if (!pVal) return S_FALSE;
    T value;
    field.Load(&value);
    std::memcpy(pVal, &value, sizeof value);
    return S_OK;
}

template <class Field, class Value>
HRESULT PutValue(Field& field, const Value& value) noexcept {
    static_assert(sizeof(Value) == sizeof(Field));
    field = value;
    return S_OK;
}

inline HRESULT PutValue(LittleEndian<double>& field, const double& value) noexcept {
    field.Store(value);
    return S_OK;
}

template <class Field>
HRESULT GetText(const Field& field, BSTR* pVal) noexcept {
    if (!pVal) return S_FALSE;
    ReplaceBstrShort(pVal, field.Text());
    return S_OK;
}

// Cut at what the field holds; the bytes behind the text and its NUL stay as they were.
template <class Field>
HRESULT PutText(Field& field, const OLECHAR* text) noexcept {
    char buffer[kAnsiBufferSize];
    field.Put(ToAnsi(text, Field::kMaxLength, buffer));
    return S_OK;
}

// A code of any length. Its getter answers what the reallocation of the caller's string did, taken as a
// result: 1 after a success and 0 after a failure. Clients depend on it.
inline HRESULT GetText(const ShortString& field, BSTR* pVal) noexcept {
    if (!pVal) return S_FALSE;
    return Boundary([&] { return HRESULT{ReplaceBstr(pVal, field.text)}; }, E_OUTOFMEMORY);
}

inline HRESULT PutText(ShortString& field, const OLECHAR* text) noexcept {
    return Boundary([&] {
        field.text = ToAnsi(text);
        return S_OK;
    });
}

// What getting a text and putting it elsewhere comes to, into a field that is zero: through the code page,
// and without the bytes behind its end.
template <class Field>
void CopyText(const Field& from, Field& to) noexcept {
    const std::string_view text = from.Text();
    if (IsAscii(text)) return to.Put(text);
    wchar_t wide[kWideShortSize];
    ToWideShort(text, wide);
    PutText(to, wide);
}

inline void CopyText(const ShortString& from, ShortString& to) {
    to.text = IsAscii(from.text) ? from.text : ToAnsi(ToWide(from.text).c_str());
}

}  // namespace zel
