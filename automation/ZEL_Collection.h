#pragma once

#include "zel/com/ComPtr.h"
#include "zel/com/Dispatch.h"
#include "zel/com/Object.h"
#include "VariantArray.h"
#include "ZEL_BRU_members.h"

namespace zel {

// A collection of any VARIANTs in insertion order, counted from 0. It owns them; copies of a collection share
// the objects in it. A position is the first 32-bit word of its VARIANT, whatever the type; one that is out
// of range is no error, the call then does nothing. Late-bound calls mean what their script says: see Invoke.
class ZEL_Collection : public Object<Interfaces<IZEL_Collection, IDispatch>, Dispatch<IZEL_Collection>> {
public:
    ZEL_Collection() noexcept;

    // Exchanges all items at once; the caller clears what it gets.
    void SwapItems(VariantArray& items) noexcept { items_.Swap(items); }

    STDMETHODIMP Item(VARIANT index, VARIANT* pItem) noexcept override;
    STDMETHODIMP get_Count(LONG* pVal) noexcept override;
    STDMETHODIMP get__NewEnum(IUnknown** pVal) noexcept override;  // NOLINT(clang-diagnostic-*): a given name
    STDMETHODIMP Add(VARIANT pNew) noexcept override;
    STDMETHODIMP Remove(VARIANT index) noexcept override;
    STDMETHODIMP Copy(IZEL_Collection* pCopy) noexcept override;

    // Script engines pass variables by reference, literals as narrow integers whose upper bits are garbage,
    // and results of arithmetic as floating-point numbers: references are followed, and positions become
    // 32-bit integers. What is no number is a position that no collection has.
    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* value, EXCEPINFO* exception, UINT* badArgument) noexcept override;

protected:
    ~ZEL_Collection() override;

private:
    friend class FlatRelease;

    void AppendItemsOf(IZEL_Collection& other);

    VariantArray items_;
    ZEL_Collection* nextReleased_ = nullptr;  // FlatRelease's
};

}  // namespace zel
