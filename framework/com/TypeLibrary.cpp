#include "TypeLibrary.h"

#include "ComPtr.h"
#include "InterfaceInfo.h"
#include "Module.h"
#include "Publish.h"

namespace zel {

HRESULT TypeLibrary::Get(ITypeLib** out) noexcept {
    *out = library_;
    if (*out) return S_OK;
    wchar_t path[MAX_PATH];
    ComPtr<ITypeLib> loaded;
    HRESULT result = Module::GetPath(path);
    if (SUCCEEDED(result)) result = LoadTypeLib(path, loaded.Out());
    if (FAILED(result)) return result;
    *out = Publish(library_, std::move(loaded));
    return S_OK;
}

HRESULT TypeLibrary::GetInfo(REFIID iid, ITypeInfo** out) noexcept {
    ITypeLib* library = nullptr;
    const HRESULT result = Get(&library);
    return SUCCEEDED(result) ? library->GetTypeInfoOfGuid(iid, out) : result;
}

HRESULT TypeLibrary::Register() noexcept {
    wchar_t path[MAX_PATH];
    ITypeLib* library = nullptr;
    HRESULT result = Module::GetPath(path);
    if (SUCCEEDED(result)) result = Get(&library);
    return SUCCEEDED(result) ? RegisterTypeLib(library, path, nullptr) : result;
}

void TypeLibrary::Unload() noexcept {
    InterfaceInfo::ReleaseAll();
    if (ITypeLib* library = library_) library->Release();
    library_ = nullptr;
}

}  // namespace zel
