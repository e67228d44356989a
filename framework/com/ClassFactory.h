#pragma once

#include <windows.h>
#include <unknwn.h>

#include "Module.h"

namespace zel {

// The class object of one row. A reference to it does not keep the module loaded: that is what LockServer is
// for.
class ClassFactory final : public IClassFactory {
public:
    static HRESULT Create(const ClassRow& row, REFIID iid, void** out) noexcept;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override;
    STDMETHODIMP_(ULONG) Release() noexcept override;
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** out) noexcept override;
    STDMETHODIMP LockServer(BOOL lock) noexcept override;

private:
    explicit ClassFactory(const ClassRow& row) noexcept : row_(row) {}

    const ClassRow& row_;
    volatile LONG references_ = 1;
};

}  // namespace zel
