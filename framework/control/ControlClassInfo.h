#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "ControlCore.h"

namespace zel {

// What a control says of its class (IProvideClassInfo2, ISpecifyPropertyPages): its description in the
// module's type library. It fires no events and has no property pages.
class ControlClassInfo : public IProvideClassInfo2,
                         public ISpecifyPropertyPages,
                         protected virtual ControlCore {
public:
    STDMETHODIMP GetClassInfo(ITypeInfo** out) noexcept override;
    // E_FAIL and no GUID for the source interface, which the class lacks; there are no other kinds.
    STDMETHODIMP GetGUID(DWORD kind, GUID* out) noexcept override;
    STDMETHODIMP GetPages(CAUUID* out) noexcept override;
};

}  // namespace zel
