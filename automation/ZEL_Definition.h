#pragma once

#include "zel/com/ComPtr.h"
#include "zel/definition/DefinitionRecord.h"
#include "zel/com/Dispatch.h"
#include "zel/com/Object.h"
#include "OwnClass.h"
#include "ZEL_BRU_members.h"
#include "ZEL_Collection.h"

namespace zel {

// The automation view of one area definition: each property is one of the fields that it owns. Its members
// are definition objects in a collection of its own, which is made with it and never exchanged.
class ZEL_Definition final
    : public Object<Interfaces<IZEL_Definition, IDispatch>, Dispatch<IZEL_Definition>> {
public:
    // Throws std::bad_alloc.
    ZEL_Definition();

    // Takes over all fields but the members.
    void AssignFields(const DefinitionFields& fields) { fields_ = fields; }
    ZEL_Collection& Members() noexcept { return *members_; }

    // The object behind the interface if it is of this class.
    static ZEL_Definition* Own(IZEL_Definition& object) noexcept {
        return OwnClass<ZEL_Definition, IZEL_Definition>::Cast(object);
    }
    // Reads the properties of any implementation of the interface, in their order: those before Members into
    // the record and those behind it. What a getter refuses keeps its default. An object of this class is
    // read without its getters, which could fail for memory and not say so.
    static void GatherBeforeMembers(IZEL_Definition& source, DefinitionRecord& record);
    static void GatherBehindMembers(IZEL_Definition& source, DefinitionRecord& record);

    STDMETHODIMP get_AreaCode(BSTR* pVal) noexcept override;
    STDMETHODIMP put_AreaCode(BSTR newVal) noexcept override;
    STDMETHODIMP get_AreaDescription(BSTR* pVal) noexcept override;
    STDMETHODIMP put_AreaDescription(BSTR newVal) noexcept override;
    STDMETHODIMP get_AreaName(BSTR* pVal) noexcept override;
    STDMETHODIMP put_AreaName(BSTR newVal) noexcept override;
    STDMETHODIMP get_CalcType(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_CalcType(unsigned char newVal) noexcept override;
    STDMETHODIMP get_DimensionType(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_DimensionType(unsigned char newVal) noexcept override;
    STDMETHODIMP get_FillColor(unsigned short* pVal) noexcept override;
    STDMETHODIMP put_FillColor(unsigned short newVal) noexcept override;
    STDMETHODIMP get_FillPattern(unsigned short* pVal) noexcept override;
    STDMETHODIMP put_FillPattern(unsigned short newVal) noexcept override;
    STDMETHODIMP get_Hidden(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_Hidden(unsigned char newVal) noexcept override;
    STDMETHODIMP get_LineColor(unsigned short* pVal) noexcept override;
    STDMETHODIMP put_LineColor(unsigned short newVal) noexcept override;
    STDMETHODIMP get_Members(IZEL_Collection** pVal) noexcept override;
    STDMETHODIMP put_Members(IZEL_Collection* newVal) noexcept override;
    STDMETHODIMP get_Multiplier(double* pVal) noexcept override;
    STDMETHODIMP put_Multiplier(DoubleArgument newVal) noexcept override;
    STDMETHODIMP get_PostArea(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_PostArea(unsigned char newVal) noexcept override;
    STDMETHODIMP get_PostDescription(unsigned char* pVal) noexcept override;
    STDMETHODIMP put_PostDescription(unsigned char newVal) noexcept override;
    STDMETHODIMP get_SegmentStyle(BSTR* pVal) noexcept override;
    STDMETHODIMP put_SegmentStyle(BSTR newVal) noexcept override;
    STDMETHODIMP get_SubtractAreaCode(BSTR* pVal) noexcept override;
    STDMETHODIMP put_SubtractAreaCode(BSTR newVal) noexcept override;
    STDMETHODIMP get_WallHeight(double* pVal) noexcept override;
    STDMETHODIMP put_WallHeight(DoubleArgument newVal) noexcept override;
    STDMETHODIMP get_WallWidth(double* pVal) noexcept override;
    STDMETHODIMP put_WallWidth(DoubleArgument newVal) noexcept override;

private:
    ~ZEL_Definition() override;

    void GatherBeforeMembers(DefinitionRecord& record) const;
    void GatherBehindMembers(DefinitionRecord& record) const;

    DefinitionFields fields_;
    ComPtr<ZEL_Collection> members_;
};

}  // namespace zel
