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

// A file stream with room for many records between two calls of the system, which is set aside before it is
// opened. The buffer outlives the stream.
template <class Stream>
class BufferedFile {
public:
    BufferedFile() : buffer_(new char[kBufferSize]) {
        stream_.rdbuf()->pubsetbuf(buffer_.get(), kBufferSize);
    }

    // The stream, or null when the file cannot be opened.
    Stream* Open(const std::string& path) {
        stream_.open(path, std::ios_base::binary);
        return stream_.is_open() ? &stream_ : nullptr;
    }

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

// The file is read beside the image, which it replaces when all is there that is to be published.
HRESULT BRU_Store::LoadFromFile(BSTR FileName, LONG* Result) noexcept {
    if (Result) *Result = 0;
    return Boundary([&] {
        BufferedFile<std::ifstream> file;
        SketchFile loaded;
        CopyImageWithoutDefinitions(loaded);
        std::ifstream* stream = file.Open(ToPath(FileName));
        if (stream) loaded.Read(*stream);
        const SketchFile& image = stream ? loaded : file_;
        const bool refused = !image.HasDefinitions();
        VariantArray items;
        if (!refused) items = Publish(image.definitions);
        if (stream && refused) std::swap(loaded.definitions, file_.definitions);
        if (stream) file_.Swap(loaded);
        if (refused) return RefuseVersion(Result);
        if (header_) header_->Assign(file_.header);
        if (definitions_) definitions_->SwapItems(items);
        return S_OK;
    });
}

// Once the file is open nothing can fail any more but the writing, and that is not reported.
HRESULT BRU_Store::SaveToFile(BSTR FileName, LONG* Result) noexcept {
    if (Result) *Result = 0;
    return Boundary([&] {
        BufferedFile<std::ofstream> file;
        SketchFile gathered;
        GatherImage(gathered);
        gathered.PrepareWrite();
        const std::string path = ToPath(FileName);
        file_.Swap(gathered);
        if (!file_.HasDefinitions() || file_.GetVersion() < SketchFile::kOldestSavedVersion)
            return RefuseVersion(Result);
        std::ofstream* stream = file.Open(path);
        if (!stream) return S_FALSE;
        file_.Write(*stream);
        return S_OK;
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

void BRU_Store::CopyImageWithoutDefinitions(SketchFile& image) const {
    image.SetVersion(file_.GetVersion());
    image.header = file_.header;
    image.DefinitionType = file_.DefinitionType;
    image.FileFlags = file_.FileFlags;
}

// Its version is that of the header object, whether it can be saved or not.
void BRU_Store::GatherImage(SketchFile& image) const {
    CopyImageWithoutDefinitions(image);
    if (header_) image.header = ZEL_Header::Gather(*header_.Get());
    image.definitions = definitions_ ? Gather(*definitions_.Get()) : file_.definitions;
    image.SetVersion(image.header.image.FileVersion);
}

}  // namespace zel
