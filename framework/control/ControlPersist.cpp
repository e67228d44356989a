#include "ControlPersist.h"

namespace zel {
namespace {

constexpr wchar_t kContents[] = L"Contents";
constexpr ULONG kSize = 8;

void Put(ULONG value, BYTE* bytes) noexcept {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<BYTE>(value >> 8 * i);
}

LONG Get(const BYTE* bytes) noexcept {
    ULONG value = 0;
    for (int i = 0; i < 4; ++i) value |= static_cast<ULONG>(bytes[i]) << 8 * i;
    return static_cast<LONG>(value);
}

HRESULT ReadExtent(IStream& stream, SIZEL* out) noexcept {
    BYTE bytes[kSize];
    ULONG read = 0;
    const HRESULT result = stream.Read(bytes, kSize, &read);
    if (FAILED(result)) return result;
    const SIZEL extent = {Get(bytes), Get(bytes + 4)};
    if (read != kSize || extent.cx < 0 || extent.cy < 0) return STG_E_DOCFILECORRUPT;
    *out = extent;
    return S_OK;
}

HRESULT WriteExtent(IStream& stream, const SIZEL& extent) noexcept {
    BYTE bytes[kSize];
    Put(extent.cx, bytes);
    Put(extent.cy, bytes + 4);
    ULONG written = 0;
    const HRESULT result = stream.Write(bytes, kSize, &written);
    if (FAILED(result)) return result;
    return written == kSize ? S_OK : STG_E_MEDIUMFULL;
}

}  // namespace

HRESULT ControlPersist::GetClassID(CLSID* out) noexcept {
    if (!out) return E_POINTER;
    *out = ClassId();
    return S_OK;
}

HRESULT ControlPersist::IsDirty() noexcept { return ControlCore::IsDirty() ? S_OK : S_FALSE; }

HRESULT ControlPersist::Load(IStream* stream) noexcept {
    if (!stream) return E_POINTER;
    const ComPtr<IPersistStreamInit> keep(this);
    SIZEL extent;
    const HRESULT result = ReadExtent(*stream, &extent);
    if (FAILED(result)) return result;
    SetDirty(false);
    ChangeExtent(extent);
    return S_OK;
}

HRESULT ControlPersist::Save(IStream* stream, BOOL clearDirty) noexcept {
    if (!stream) return E_POINTER;
    const HRESULT result = WriteExtent(*stream, Extent());
    if (SUCCEEDED(result) && clearDirty) SetDirty(false);
    return result;
}

HRESULT ControlPersist::GetSizeMax(ULARGE_INTEGER* out) noexcept {
    if (!out) return E_POINTER;
    out->QuadPart = kSize;
    return S_OK;
}

HRESULT ControlPersist::InitNew() noexcept {
    const ComPtr<IPersistStreamInit> keep(this);
    SetDirty(true);
    ChangeExtent(NaturalExtent());
    return S_OK;
}

HRESULT ControlPersist::InitNew(IStorage* storage) noexcept { return storage ? InitNew() : E_POINTER; }

HRESULT ControlPersist::Load(IStorage* storage) noexcept {
    if (!storage) return E_POINTER;
    ComPtr<IStream> stream;
    const HRESULT result =
        storage->OpenStream(kContents, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Out());
    return SUCCEEDED(result) ? Load(stream.Get()) : result;
}

HRESULT ControlPersist::Save(IStorage* storage, BOOL sameAsLoad) noexcept {
    if (!storage) return E_POINTER;
    ComPtr<IStream> stream;
    HRESULT result =
        storage->CreateStream(kContents, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.Out());
    if (SUCCEEDED(result)) result = Save(stream.Get(), FALSE);
    if (SUCCEEDED(result)) saved_ = sameAsLoad ? Saved::kItself : Saved::kCopy;
    return result;
}

// A copy becomes the original when the container goes on with its storage.
HRESULT ControlPersist::SaveCompleted(IStorage* storage) noexcept {
    const ComPtr<IPersistStorage> keep(this);
    const Saved saved = saved_;
    saved_ = Saved::kNothing;
    if (saved == Saved::kItself || (saved == Saved::kCopy && storage)) SetDirty(false);
    if (saved != Saved::kNothing) Advises().SendSave();
    return S_OK;
}

HRESULT ControlPersist::HandsOffStorage() noexcept { return S_OK; }

}  // namespace zel
