#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "ControlCore.h"

namespace zel {

// Keeps a control's extent in a container's document, as a stream (IPersistStreamInit) or in the stream
// "Contents" of a storage (IPersistStorage). The stream is 8 bytes: width and height in HIMETRIC, 32 bits
// each, low byte first. No stream or storage is held between calls. Loading is all or nothing.
class ControlPersist : public IPersistStreamInit, public IPersistStorage, protected virtual ControlCore {
public:
    STDMETHODIMP GetClassID(CLSID* out) noexcept override;
    STDMETHODIMP IsDirty() noexcept override;

    STDMETHODIMP Load(IStream* stream) noexcept override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) noexcept override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* out) noexcept override;
    STDMETHODIMP InitNew() noexcept override;

    STDMETHODIMP InitNew(IStorage* storage) noexcept override;
    STDMETHODIMP Load(IStorage* storage) noexcept override;
    // The control is clean when SaveCompleted says that it was no copy.
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) noexcept override;
    STDMETHODIMP SaveCompleted(IStorage* storage) noexcept override;
    STDMETHODIMP HandsOffStorage() noexcept override;

private:
    enum class Saved { kNothing, kItself, kCopy };

    Saved saved_ = Saved::kNothing;
};

}  // namespace zel
