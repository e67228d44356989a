#include "ControlData.h"

namespace zel {

HRESULT ControlData::GetData(FORMATETC* format, STGMEDIUM* out) noexcept {
    if (!format || !out) return E_POINTER;
    *out = {};
    const HRESULT result = CheckMetafilePicture(*format);
    return SUCCEEDED(result) ? MakeMetafilePicture(Extent(), *this, out) : result;
}

HRESULT ControlData::GetDataHere(FORMATETC*, STGMEDIUM*) noexcept { return E_NOTIMPL; }

HRESULT ControlData::QueryGetData(FORMATETC* format) noexcept {
    return format ? CheckMetafilePicture(*format) : E_POINTER;
}

// The picture is the same for every target device.
HRESULT ControlData::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) noexcept {
    if (!format || !out) return E_POINTER;
    *out = *format;
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT ControlData::SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept { return E_NOTIMPL; }

HRESULT ControlData::EnumFormatEtc(DWORD, IEnumFORMATETC** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlData::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) noexcept {
    const ComPtr<IDataObject> keep(this);
    return Advises().AdviseData(this, format, flags, sink, connection);
}

HRESULT ControlData::DUnadvise(DWORD connection) noexcept { return Advises().UnadviseData(connection); }

HRESULT ControlData::EnumDAdvise(IEnumSTATDATA** out) noexcept { return Advises().EnumerateData(out); }

}  // namespace zel
