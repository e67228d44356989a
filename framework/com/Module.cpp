#include "Module.h"

#include "ClassFactory.h"
#include "TypeLibrary.h"

namespace zel {

void Module::Attach(HINSTANCE instance, const ClassRow* rows, std::size_t count) noexcept {
    instance_ = instance;
    rows_ = rows;
    count_ = count;
}

void Module::Detach() noexcept {
    TypeLibrary::Unload();
    Attach(nullptr, nullptr, 0);
}

HRESULT Module::GetPath(wchar_t (&path)[MAX_PATH]) noexcept {
    const DWORD length = GetModuleFileNameW(instance_, path, MAX_PATH);
    if (length == 0) return HRESULT_FROM_WIN32(GetLastError());
    return length < MAX_PATH ? S_OK : HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
}

HRESULT Module::GetClassObject(REFCLSID clsid, REFIID iid, void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    for (const ClassRow* row = begin(); row != end(); ++row) {
        if (row->clsid == clsid) return ClassFactory::Create(*row, iid, out);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

}  // namespace zel
