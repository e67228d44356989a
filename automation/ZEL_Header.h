#pragma once

#include "zel/com/Dispatch.h"
#include "zel/definition/FileHeader.h"
#include "zel/com/Object.h"
#include "OwnClass.h"
#include "ZEL_BRU_members.h"

namespace zel {

// The automation view of one FileHeader, which it owns: each property is one field. A new one has the
// record's defaults, FileVersion 0 among them. Dates are day numbers and times are seconds, as they stand in
// the file.
class ZEL_Header final : public Object<Interfaces<IZEL_Header, IDispatch>, Dispatch<IZEL_Header>> {
public:
    ZEL_Header() noexcept { OwnClass<ZEL_Header, IZEL_Header>::Note(*this); }

    void Assign(const FileHeader& header) noexcept { header_ = header; }

    // Reads every property of any implementation of the interface. What a getter refuses keeps its default.
    // An object of this class is read without its getters, which could fail for memory and not say so.
    static FileHeader Gather(IZEL_Header& source);

    STDMETHODIMP get_TarnVersion(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_TarnVersion(unsigned char newVal) noexcept override;
    STDMETHODIMP get_CreatedBy(BSTR* pVal) noexcept override;
    STDMETHODIMP put_CreatedBy(BSTR newVal) noexcept override;
    STDMETHODIMP get_CreatedByVersion(BSTR* pVal) noexcept override;
    STDMETHODIMP put_CreatedByVersion(BSTR newVal) noexcept override;
    STDMETHODIMP get_CreationDate(LONG* pVal) noexcept override;
    STDMETHODIMP put_CreationDate(LONG newVal) noexcept override;
    STDMETHODIMP get_CreationTime(LONG* pVal) noexcept override;
    STDMETHODIMP put_CreationTime(LONG newVal) noexcept override;
    STDMETHODIMP get_FileVersion(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_FileVersion(unsigned char newVal) noexcept override;
    STDMETHODIMP get_Flags(LONG* pVal) noexcept override;
    STDMETHODIMP put_Flags(LONG newVal) noexcept override;
    STDMETHODIMP get_LastModifiedBy(BSTR* pVal) noexcept override;
    STDMETHODIMP put_LastModifiedBy(BSTR newVal) noexcept override;
    STDMETHODIMP get_ModifiedByVersion(BSTR* pVal) noexcept override;
    STDMETHODIMP put_ModifiedByVersion(BSTR newVal) noexcept override;
    STDMETHODIMP get_ModifiedDate(LONG* pVal) noexcept override;
    STDMETHODIMP put_ModifiedDate(LONG newVal) noexcept override;
    STDMETHODIMP get_ModifiedTime(LONG* pVal) noexcept override;
    STDMETHODIMP put_ModifiedTime(LONG newVal) noexcept override;
    STDMETHODIMP get_ProgramVersionSignature(BSTR* pVal) noexcept override;
    STDMETHODIMP put_ProgramVersionSignature(BSTR newVal) noexcept override;
    STDMETHODIMP get_Signature(BSTR* pVal) noexcept override;
    STDMETHODIMP put_Signature(BSTR newVal) noexcept override;
    STDMETHODIMP get_Type(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_Type(unsigned char newVal) noexcept override;

private:
    FileHeader Gather() const;

    FileHeader header_;
};

}  // namespace zel
