#include "BRU_Store.h"

#include <fstream>
#include <memory>

#include "zel/com/Boundary.h"
#include "DefinitionTree.h"
#include "PaintStore.h"
#include "Property.h"
#include "Text.h"

namespace zel {
namespace {

// 2 by 2 inches.
constexpr SIZEL kNaturalExtent = {5080, 5080};

// A file stream with room for many records between two calls of the system. The buffer outlives the stream.
template <class Stream>
class BufferedFile {
public:
    BufferedFile(const std::string& path, std::ios_base::openmode mode) : buffer_(new char[kBufferSize]) {
        stream_.rdbuf()->pubsetbuf(buffer_.get(), kBufferSize);
        stream_.open(path, mode | std::ios_base::binary);
    }

    bool IsOpen() const { return stream_.is_open(); }
    Stream& Get() { return stream_; }

private:
    static constexpr std::streamsize kBufferSize = 65536;

    std::unique_ptr<char[]> buffer_;
    Stream stream_;
};

// Both ways of refusing a version: in the result and, where the caller wants it, in the out-value.
HRESULT RefuseVersion(LONG* Result) noexcept {
    if (Result) *Result = 1;
    return S_FALSE;
}

template <class T, class Interface>
HRESULT GetLive(const ComPtr<T>& object, Interface** pVal) noexcept {
    if (!pVal || !object) return S_FALSE;
    return object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(pVal));
}

}  // namespace

BRU_Store::BRU_Store()
    : ControlCore(CLSID_BRU_Store, kNaturalExtent),
      header_(Make<ZEL_Header>()),
      definitions_(Make<ZEL_Collection>()) {
    if (header_) header_->Assign(file_.header);
}

HRESULT BRU_Store::get_Header(IZEL_Header** pVal) noexcept { return GetLive(header_, pVal); }

HRESULT BRU_Store::put_Header(IZEL_Header* newVal) noexcept {
    if (!newVal || !header_) return S_FALSE;
    return Boundary([&] {
        header_->Assign(ZEL_Header::Gather(*newVal));
        return S_OK;
    });
}

HRESULT BRU_Store::get_Definitions(IZEL_Collection** pVal) noexcept { return GetLive(definitions_, pVal); }

HRESULT BRU_Store::put_Definitions(IZEL_Collection* newVal) noexcept {
    if (!newVal || !definitions_) return S_FALSE;
    definitions_->Copy(newVal);
    return S_OK;
}

HRESULT BRU_Store::LoadFromFile(BSTR FileName, LONG* Result) noexcept {
    if (Result) *Result = 0;
    return Boundary([&] {
        ReadImage(ToPath(FileName));
        if (!file_.HasDefinitions()) return RefuseVersion(Result);
        PublishImage();
        return S_OK;
    });
}

HRESULT BRU_Store::SaveToFile(BSTR FileName, LONG* Result) noexcept {
    if (Result) *Result = 0;
    return Boundary([&] {
        GatherImage();
        if (!file_.HasDefinitions() || file_.GetVersion() < SketchFile::kOldestSavedVersion)
            return RefuseVersion(Result);
        return WriteImage(ToPath(FileName));
    });
}

HRESULT BRU_Store::get_DefinitionType(unsigned char* pVal) noexcept {
    return GetValue(file_.DefinitionType, pVal);
}
HRESULT BRU_Store::put_DefinitionType(unsigned char newVal) noexcept {
    return PutValue(file_.DefinitionType, newVal);
}

HRESULT BRU_Store::get_Flags(LONG* pVal) noexcept { return GetValue(file_.FileFlags, pVal); }
HRESULT BRU_Store::put_Flags(LONG newVal) noexcept { return PutValue(file_.FileFlags, newVal); }

HRESULT BRU_Store::Paint(HDC hdc, const RECT& bounds) noexcept {
    PaintStore(hdc, bounds);
    return S_OK;
}

void BRU_Store::ReadImage(const std::string& path) {
    BufferedFile<std::ifstream> file(path, std::ios_base::in);
    if (file.IsOpen()) file_.Read(file.Get());
}

// A write that fails is not reported: only the opening is judged.
HRESULT BRU_Store::WriteImage(const std::string& path) {
    BufferedFile<std::ofstream> file(path, std::ios_base::out);
    if (!file.IsOpen()) return S_FALSE;
    file_.Write(file.Get());
    return S_OK;
}

void BRU_Store::PublishImage() {
    VariantArray items = Publish(file_.definitions);
    if (header_) header_->Assign(file_.header);
    if (definitions_) definitions_->SwapItems(items);
}

// The version of the image is that of the header from here on, whether it can be saved or not.
void BRU_Store::GatherImage() {
    const FileHeader header = header_ ? ZEL_Header::Gather(*header_.Get()) : file_.header;
    if (definitions_) file_.definitions = Gather(*definitions_.Get());
    file_.header = header;
    file_.SetVersion(header.image.FileVersion);
}

}  // namespace zel
