#include "ClassFactory.h"

#include <new>

namespace zel {

HRESULT ClassFactory::Create(const ClassRow& row, REFIID iid, void** out) noexcept {
    auto* factory = new (std::nothrow) ClassFactory(row);
    if (!factory) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(iid, out);
    factory->Release();
    return result;
}

HRESULT ClassFactory::QueryInterface(REFIID iid, void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *out = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept { return InterlockedIncrement(&references_); }

ULONG ClassFactory::Release() noexcept {
    const ULONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : row_.create(iid, out);
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
    lock ? Module::Lock() : Module::Unlock();
    return S_OK;
}

}  // namespace zel
