#pragma once

#include <windows.h>
#include <oaidl.h>

namespace zel {

// Calls as a script engine makes them: with one argument or none.
inline HRESULT Call(IDispatch& object, const wchar_t* name, WORD flags, VARIANT* argument, VARIANT* value) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID member = DISPID_UNKNOWN, put = DISPID_PROPERTYPUT;
    const HRESULT known = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member);
    if (FAILED(known)) return known;
    const bool puts = flags & DISPATCH_PROPERTYPUT;
    DISPPARAMS arguments{argument, puts ? &put : nullptr, argument ? 1u : 0u, puts ? 1u : 0u};
    return object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, value, nullptr, nullptr);
}

}  // namespace zel
