#pragma once

#include <windows.h>
#include <ole2.h>

#include "zel/com/ComPtr.h"

namespace zel {

// The three kinds of advise connections to a control: on its document states (save, close), on its data and,
// a single one, on its view. Each holder is made at the first connection.
class AdviseHolders {
public:
    HRESULT Advise(IAdviseSink* sink, DWORD* connection) noexcept;
    HRESULT Unadvise(DWORD connection) noexcept;
    HRESULT Enumerate(IEnumSTATDATA** out) const noexcept;

    HRESULT AdviseData(IDataObject* object, FORMATETC* format, DWORD flags, IAdviseSink* sink,
                       DWORD* connection) noexcept;
    HRESULT UnadviseData(DWORD connection) noexcept;
    HRESULT EnumerateData(IEnumSTATDATA** out) const noexcept;

    // Replaces the connection there was; no sink ends it.
    void AdviseView(DWORD flags, IAdviseSink* sink) noexcept;
    // The places that are not null get what AdviseView was given.
    void GetView(DWORD* flags, IAdviseSink** sink) const noexcept;

    void SendSave() noexcept;
    void SendClose() noexcept;
    void SendViewChange() noexcept;
    void SendDataChange(IDataObject* object) noexcept;
    // Ends all connections.
    void Release() noexcept;

private:
    ComPtr<IOleAdviseHolder> ole_;
    ComPtr<IDataAdviseHolder> data_;
    ComPtr<IAdviseSink> view_;
    DWORD viewFlags_ = 0;
};

}  // namespace zel
