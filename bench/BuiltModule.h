#pragma once

#include <windows.h>

#include <cstdlib>

#include "ZEL_BRU.h"
#include "zel/com/ComPtr.h"

namespace zel {

// A new object of a class of the module that was built, without a registration.
template <class Interface>
ComPtr<Interface> Create(REFCLSID clsid) {
    static const HMODULE module = LoadLibraryW(ZEL_MODULE);
    using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClass =
        reinterpret_cast<GetClass>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ComPtr<Interface> object;
    if (getClass(clsid, IID_IClassFactory, factory.OutVoid()) != S_OK ||
        factory->CreateInstance(nullptr, __uuidof(Interface), object.OutVoid()) != S_OK)
        std::abort();
    return object;
}

}  // namespace zel
