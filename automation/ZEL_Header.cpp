#include "ZEL_Header.h"

#include <utility>

#include "Gathering.h"
#include "Property.h"

namespace zel {

FileHeader ZEL_Header::Gather() const {
    FileHeader header;
    HeaderImage& image = header.image;
    image = header_.image;
    const auto copyText = [](auto& text) {
        const auto from = std::exchange(text, {});
        CopyText(from, text);
    };
    copyText(image.CreatedBy);
    copyText(image.CreatedByVersion);
    copyText(image.LastModifiedBy);
    copyText(image.ModifiedByVersion);
    copyText(image.ProgramVersionSignature);
    copyText(image.Signature);
    return header;
}

FileHeader ZEL_Header::Gather(IZEL_Header& source) {
    if (const auto* own = OwnClass<ZEL_Header, IZEL_Header>::Cast(source)) return own->Gather();
    FileHeader header;
    HeaderImage& image = header.image;
    Gathering<IZEL_Header> from(source);
    from.Number(&IZEL_Header::get_TarnVersion, image.TarnVersion);
    from.Text(&IZEL_Header::get_CreatedBy, image.CreatedBy);
    from.Text(&IZEL_Header::get_CreatedByVersion, image.CreatedByVersion);
    from.Number(&IZEL_Header::get_CreationDate, image.CreationDate);
    from.Number(&IZEL_Header::get_CreationTime, image.CreationTime);
    from.Number(&IZEL_Header::get_FileVersion, image.FileVersion);
    from.Number(&IZEL_Header::get_Flags, image.Flags);
    from.Text(&IZEL_Header::get_LastModifiedBy, image.LastModifiedBy);
    from.Text(&IZEL_Header::get_ModifiedByVersion, image.ModifiedByVersion);
    from.Number(&IZEL_Header::get_ModifiedDate, image.ModifiedDate);
    from.Number(&IZEL_Header::get_ModifiedTime, image.ModifiedTime);
    from.Text(&IZEL_Header::get_ProgramVersionSignature, image.ProgramVersionSignature);
    from.Text(&IZEL_Header::get_Signature, image.Signature);
    from.Number(&IZEL_Header::get_Type, image.Type);
    return header;
}

HRESULT ZEL_Header::get_TarnVersion(unsigned char* pVal) noexcept {
    return GetValue(header_.image.TarnVersion, pVal);
}
HRESULT ZEL_Header::put_TarnVersion(unsigned char newVal) noexcept {
    return PutValue(header_.image.TarnVersion, newVal);
}

HRESULT ZEL_Header::get_CreatedBy(BSTR* pVal) noexcept { return GetText(header_.image.CreatedBy, pVal); }
HRESULT ZEL_Header::put_CreatedBy(BSTR newVal) noexcept { return PutText(header_.image.CreatedBy, newVal); }

HRESULT ZEL_Header::get_CreatedByVersion(BSTR* pVal) noexcept {
    return GetText(header_.image.CreatedByVersion, pVal);
}
HRESULT ZEL_Header::put_CreatedByVersion(BSTR newVal) noexcept {
    return PutText(header_.image.CreatedByVersion, newVal);
}

HRESULT ZEL_Header::get_CreationDate(LONG* pVal) noexcept {
    return GetValue(header_.image.CreationDate, pVal);
}
HRESULT ZEL_Header::put_CreationDate(LONG newVal) noexcept {
    return PutValue(header_.image.CreationDate, newVal);
}

HRESULT ZEL_Header::get_CreationTime(LONG* pVal) noexcept {
    return GetValue(header_.image.CreationTime, pVal);
}
HRESULT ZEL_Header::put_CreationTime(LONG newVal) noexcept {
    return PutValue(header_.image.CreationTime, newVal);
}

HRESULT ZEL_Header::get_FileVersion(unsigned char* pVal) noexcept {
    return GetValue(header_.image.FileVersion, pVal);
}
HRESULT ZEL_Header::put_FileVersion(unsigned char newVal) noexcept {
    return PutValue(header_.image.FileVersion, newVal);
}

HRESULT ZEL_Header::get_Flags(LONG* pVal) noexcept { return GetValue(header_.image.Flags, pVal); }
HRESULT ZEL_Header::put_Flags(LONG newVal) noexcept { return PutValue(header_.image.Flags, newVal); }

HRESULT ZEL_Header::get_LastModifiedBy(BSTR* pVal) noexcept {
    return GetText(header_.image.LastModifiedBy, pVal);
}
HRESULT ZEL_Header::put_LastModifiedBy(BSTR newVal) noexcept {
    return PutText(header_.image.LastModifiedBy, newVal);
}

HRESULT ZEL_Header::get_ModifiedByVersion(BSTR* pVal) noexcept {
    return GetText(header_.image.ModifiedByVersion, pVal);
}
HRESULT ZEL_Header::put_ModifiedByVersion(BSTR newVal) noexcept {
    return PutText(header_.image.ModifiedByVersion, newVal);
}

HRESULT ZEL_Header::get_ModifiedDate(LONG* pVal) noexcept {
    return GetValue(header_.image.ModifiedDate, pVal);
}
HRESULT ZEL_Header::put_ModifiedDate(LONG newVal) noexcept {
    return PutValue(header_.image.ModifiedDate, newVal);
}

HRESULT ZEL_Header::get_ModifiedTime(LONG* pVal) noexcept {
    return GetValue(header_.image.ModifiedTime, pVal);
}
HRESULT ZEL_Header::put_ModifiedTime(LONG newVal) noexcept {
    return PutValue(header_.image.ModifiedTime, newVal);
}

HRESULT ZEL_Header::get_ProgramVersionSignature(BSTR* pVal) noexcept {
    return GetText(header_.image.ProgramVersionSignature, pVal);
}
HRESULT ZEL_Header::put_ProgramVersionSignature(BSTR newVal) noexcept {
    return PutText(header_.image.ProgramVersionSignature, newVal);
}

HRESULT ZEL_Header::get_Signature(BSTR* pVal) noexcept { return GetText(header_.image.Signature, pVal); }
HRESULT ZEL_Header::put_Signature(BSTR newVal) noexcept { return PutText(header_.image.Signature, newVal); }

HRESULT ZEL_Header::get_Type(unsigned char* pVal) noexcept { return GetValue(header_.image.Type, pVal); }
HRESULT ZEL_Header::put_Type(unsigned char newVal) noexcept { return PutValue(header_.image.Type, newVal); }

}  // namespace zel
