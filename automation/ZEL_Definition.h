#pragma once

#include "zel/com/ComPtr.h"
#include "zel/definition/DefinitionRecord.h"
#include "zel/com/Dispatch.h"
#include "zel/com/Object.h"
#include "OwnClass.h"
#include "Property.h"
#include "ZEL_BRU_members.h"
#include "ZEL_Collection.h"

namespace zel {

// The automation view of one area definition: each property is one of the fields that it owns. Its members
// are definition objects in a collection of its own, which is made with it and never exchanged.
class ZEL_Definition final
    : public Object<Interfaces<IZEL_Definition, IDispatch>, Dispatch<IZEL_Definition>> {
public:
    ZEL_Definition() noexcept;

    // A place for the object and its collection, free when both are gone. Throws std::bad_alloc.
    static void* operator new(std::size_t size);
    static void operator delete(void* place) noexcept;

    // Takes over all fields but the members.
    void AssignFields(const DefinitionFields& fields) { fields_ = fields; }
    ZEL_Collection& Members() noexcept { return *members_; }

    // The object behind the interface if it is of this class.
    static ZEL_Definition* Own(IZEL_Definition& object) noexcept {
        return OwnClass<ZEL_Definition, IZEL_Definition>::Cast(object);
    }
    // Reads the properties of any implementation of the interface, in their order: those before Members into
    // the record and those behind it. What a getter refuses keeps its default.
    static void GatherBeforeMembers(IZEL_Definition& source, DefinitionRecord& record);
    static void GatherBehindMembers(IZEL_Definition& source, DefinitionRecord& record);

    STDMETHODIMP get_AreaCode(BSTR* pVal) noexcept override { return GetText(fields_.AreaCode, pVal); }
    STDMETHODIMP put_AreaCode(BSTR newVal) noexcept override { return PutText(fields_.AreaCode, newVal); }
    STDMETHODIMP get_AreaDescription(BSTR* pVal) noexcept override {
        return GetText(fields_.block.AreaDescription, pVal);
    }
    STDMETHODIMP put_AreaDescription(BSTR newVal) noexcept override {
        return PutText(fields_.block.AreaDescription, newVal);
    }
    STDMETHODIMP get_AreaName(BSTR* pVal) noexcept override { return GetText(fields_.block.AreaName, pVal); }
    STDMETHODIMP put_AreaName(BSTR newVal) noexcept override {
        return PutText(fields_.block.AreaName, newVal);
    }
    STDMETHODIMP get_CalcType(unsigned char* pVal) noexcept override {
        return GetValue(fields_.block.CalcType, pVal);
    }
    STDMETHODIMP put_CalcType(unsigned char newVal) noexcept override {
        return PutValue(fields_.block.CalcType, newVal);
    }
    STDMETHODIMP get_DimensionType(unsigned char* pVal) noexcept override {
        return GetValue(fields_.block.DimensionType, pVal);
    }
    STDMETHODIMP put_DimensionType(unsigned char newVal) noexcept override {
        return PutValue(fields_.block.DimensionType, newVal);
    }
    STDMETHODIMP get_FillColor(unsigned short* pVal) noexcept override {
        return GetValue(fields_.block.FillColor, pVal);
    }
    STDMETHODIMP put_FillColor(unsigned short newVal) noexcept override {
        return PutValue(fields_.block.FillColor, newVal);
    }
    STDMETHODIMP get_FillPattern(unsigned short* pVal) noexcept override {
        return GetValue(fields_.block.FillPattern, pVal);
    }
    STDMETHODIMP put_FillPattern(unsigned short newVal) noexcept override {
        return PutValue(fields_.block.FillPattern, newVal);
    }
    STDMETHODIMP get_Hidden(unsigned char* pVal) noexcept override { return GetValue(fields_.Hidden, pVal); }
    STDMETHODIMP put_Hidden(unsigned char newVal) noexcept override {
        return PutValue(fields_.Hidden, newVal);
    }
    STDMETHODIMP get_LineColor(unsigned short* pVal) noexcept override {
        return GetValue(fields_.block.LineColor, pVal);
    }
    STDMETHODIMP put_LineColor(unsigned short newVal) noexcept override {
        return PutValue(fields_.block.LineColor, newVal);
    }
    STDMETHODIMP get_Members(IZEL_Collection** pVal) noexcept override;
    STDMETHODIMP put_Members(IZEL_Collection* newVal) noexcept override;
    STDMETHODIMP get_Multiplier(double* pVal) noexcept override {
        return GetValue(fields_.block.Multiplier, pVal);
    }
    STDMETHODIMP put_Multiplier(DoubleArgument newVal) noexcept override {
        return PutValue(fields_.block.Multiplier, newVal);
    }
    STDMETHODIMP get_PostArea(unsigned char* pVal) noexcept override {
        return GetValue(fields_.block.PostArea, pVal);
    }
    STDMETHODIMP put_PostArea(unsigned char newVal) noexcept override {
        return PutValue(fields_.block.PostArea, newVal);
    }
    STDMETHODIMP get_PostDescription(unsigned char* pVal) noexcept override {
        return GetValue(fields_.block.PostDescription, pVal);
    }
    STDMETHODIMP put_PostDescription(unsigned char newVal) noexcept override {
        return PutValue(fields_.block.PostDescription, newVal);
    }
    STDMETHODIMP get_SegmentStyle(BSTR* pVal) noexcept override {
        return GetText(fields_.block.SegmentStyle, pVal);
    }
    STDMETHODIMP put_SegmentStyle(BSTR newVal) noexcept override {
        return PutText(fields_.block.SegmentStyle, newVal);
    }
    STDMETHODIMP get_SubtractAreaCode(BSTR* pVal) noexcept override {
        return GetText(fields_.SubtractAreaCode, pVal);
    }
    STDMETHODIMP put_SubtractAreaCode(BSTR newVal) noexcept override {
        return PutText(fields_.SubtractAreaCode, newVal);
    }
    STDMETHODIMP get_WallHeight(double* pVal) noexcept override {
        return GetValue(fields_.block.WallHeight, pVal);
    }
    STDMETHODIMP put_WallHeight(DoubleArgument newVal) noexcept override {
        return PutValue(fields_.block.WallHeight, newVal);
    }
    STDMETHODIMP get_WallWidth(double* pVal) noexcept override {
        return GetValue(fields_.block.WallWidth, pVal);
    }
    STDMETHODIMP put_WallWidth(DoubleArgument newVal) noexcept override {
        return PutValue(fields_.block.WallWidth, newVal);
    }

private:
    ~ZEL_Definition() override;

    DefinitionFields fields_;
    ComPtr<ZEL_Collection> members_;
};

}  // namespace zel
