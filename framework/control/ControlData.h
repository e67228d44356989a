#pragma once

#include <windows.h>
#include <ole2.h>

#include "ControlCore.h"
#include "DesktopGraphics.h"

namespace zel {

// A control's data for its container (IDataObject): one picture of it, where the platform has metafiles.
class ControlData : public IDataObject, protected virtual ControlCore, private Painter {
public:
    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* out) noexcept override;
    STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    STDMETHODIMP QueryGetData(FORMATETC* format) noexcept override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) noexcept override;
    STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) noexcept override;
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** out) noexcept override;
    STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                         DWORD* connection) noexcept override;
    STDMETHODIMP DUnadvise(DWORD connection) noexcept override;
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** out) noexcept override;

protected:
    IDataObject* Data() noexcept override { return this; }

private:
    HRESULT PaintPicture(HDC hdc, const RECT& bounds) noexcept override { return Paint(hdc, bounds); }
};

}  // namespace zel
