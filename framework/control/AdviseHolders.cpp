#include "AdviseHolders.h"

#include "OleFunctions.h"

namespace zel {
namespace {

template <class Holder>
HRESULT Enumerate(const ComPtr<Holder>& holder, IEnumSTATDATA** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return holder ? holder->EnumAdvise(out) : S_OK;
}

}  // namespace

// A sink may end connections from within a call, also while it connects: what is called is held by a
// reference of its own.
HRESULT AdviseHolders::Advise(IAdviseSink* sink, DWORD* connection) noexcept {
    if (!sink || !connection) return E_POINTER;
    *connection = 0;
    const HRESULT result = ole_ ? S_OK : OleFunctions::CreateAdviseHolder(ole_.Out());
    return SUCCEEDED(result) ? ole_.Share()->Advise(sink, connection) : result;
}

HRESULT AdviseHolders::Unadvise(DWORD connection) noexcept {
    return ole_ ? ole_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT AdviseHolders::Enumerate(IEnumSTATDATA** out) const noexcept { return zel::Enumerate(ole_, out); }

HRESULT AdviseHolders::AdviseData(IDataObject* object, FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                  DWORD* connection) noexcept {
    if (!format || !sink || !connection) return E_POINTER;
    *connection = 0;
    const HRESULT result = data_ ? S_OK : OleFunctions::CreateDataAdviseHolder(data_.Out());
    return SUCCEEDED(result) ? data_.Share()->Advise(object, format, flags, sink, connection) : result;
}

HRESULT AdviseHolders::UnadviseData(DWORD connection) noexcept {
    return data_ ? data_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT AdviseHolders::EnumerateData(IEnumSTATDATA** out) const noexcept {
    return zel::Enumerate(data_, out);
}

void AdviseHolders::AdviseView(DWORD flags, IAdviseSink* sink) noexcept {
    view_ = ComPtr<IAdviseSink>(sink);
    viewFlags_ = sink ? flags : 0;
    if (flags & ADVF_PRIMEFIRST) SendViewChange();
}

void AdviseHolders::GetView(DWORD* flags, IAdviseSink** sink) const noexcept {
    if (flags) *flags = viewFlags_;
    if (sink) view_.CopyTo(sink);
}

void AdviseHolders::SendSave() noexcept {
    if (auto holder = ole_.Share()) holder->SendOnSave();
}

void AdviseHolders::SendClose() noexcept {
    if (auto holder = ole_.Share()) holder->SendOnClose();
}

void AdviseHolders::SendViewChange() noexcept {
    auto sink = view_.Share();
    if (!sink) return;
    if (viewFlags_ & ADVF_ONLYONCE) AdviseView(0, nullptr);
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

void AdviseHolders::SendDataChange(IDataObject* object) noexcept {
    if (auto holder = data_.Share()) holder->SendOnDataChange(object, 0, 0);
}

void AdviseHolders::Release() noexcept {
    ole_.Reset();
    data_.Reset();
    AdviseView(0, nullptr);
}

}  // namespace zel
