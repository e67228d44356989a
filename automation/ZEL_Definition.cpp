#include "ZEL_Definition.h"

#include <new>

#include "FlatRelease.h"
#include "Gathering.h"
#include "Property.h"

namespace zel {

ZEL_Definition::ZEL_Definition() : members_(Make<ZEL_Collection>()) {
    if (!members_) throw std::bad_alloc();
    OwnClass<ZEL_Definition, IZEL_Definition>::Note(*this);
}

ZEL_Definition::~ZEL_Definition() { FlatRelease::Release(std::move(members_)); }

void ZEL_Definition::GatherBeforeMembers(DefinitionRecord& record) const {
    CopyText(fields_.AreaCode, record.AreaCode);
    CopyText(fields_.block.AreaDescription, record.block.AreaDescription);
    CopyText(fields_.block.AreaName, record.block.AreaName);
    record.block.CalcType = fields_.block.CalcType;
    record.block.DimensionType = fields_.block.DimensionType;
    record.block.FillColor = fields_.block.FillColor;
    record.block.FillPattern = fields_.block.FillPattern;
    record.Hidden = fields_.Hidden;
    record.block.LineColor = fields_.block.LineColor;
}

void ZEL_Definition::GatherBehindMembers(DefinitionRecord& record) const {
    record.block.Multiplier = fields_.block.Multiplier;
    record.block.PostArea = fields_.block.PostArea;
    record.block.PostDescription = fields_.block.PostDescription;
    CopyText(fields_.block.SegmentStyle, record.block.SegmentStyle);
    CopyText(fields_.SubtractAreaCode, record.SubtractAreaCode);
    record.block.WallHeight = fields_.block.WallHeight;
    record.block.WallWidth = fields_.block.WallWidth;
}

void ZEL_Definition::GatherBeforeMembers(IZEL_Definition& source, DefinitionRecord& record) {
    if (const auto* own = Own(source)) return own->GatherBeforeMembers(record);
    Gathering<IZEL_Definition> from(source);
    from.Text(&IZEL_Definition::get_AreaCode, record.AreaCode);
    from.Text(&IZEL_Definition::get_AreaDescription, record.block.AreaDescription);
    from.Text(&IZEL_Definition::get_AreaName, record.block.AreaName);
    from.Number(&IZEL_Definition::get_CalcType, record.block.CalcType);
    from.Number(&IZEL_Definition::get_DimensionType, record.block.DimensionType);
    from.Number(&IZEL_Definition::get_FillColor, record.block.FillColor);
    from.Number(&IZEL_Definition::get_FillPattern, record.block.FillPattern);
    from.Number(&IZEL_Definition::get_Hidden, record.Hidden);
    from.Number(&IZEL_Definition::get_LineColor, record.block.LineColor);
}

void ZEL_Definition::GatherBehindMembers(IZEL_Definition& source, DefinitionRecord& record) {
    if (const auto* own = Own(source)) return own->GatherBehindMembers(record);
    Gathering<IZEL_Definition> from(source);
    from.Number(&IZEL_Definition::get_Multiplier, record.block.Multiplier);
    from.Number(&IZEL_Definition::get_PostArea, record.block.PostArea);
    from.Number(&IZEL_Definition::get_PostDescription, record.block.PostDescription);
    from.Text(&IZEL_Definition::get_SegmentStyle, record.block.SegmentStyle);
    from.Text(&IZEL_Definition::get_SubtractAreaCode, record.SubtractAreaCode);
    from.Number(&IZEL_Definition::get_WallHeight, record.block.WallHeight);
    from.Number(&IZEL_Definition::get_WallWidth, record.block.WallWidth);
}

HRESULT ZEL_Definition::get_AreaCode(BSTR* pVal) noexcept { return GetText(fields_.AreaCode, pVal); }
HRESULT ZEL_Definition::put_AreaCode(BSTR newVal) noexcept { return PutText(fields_.AreaCode, newVal); }

HRESULT ZEL_Definition::get_AreaDescription(BSTR* pVal) noexcept {
    return GetText(fields_.block.AreaDescription, pVal);
}
HRESULT ZEL_Definition::put_AreaDescription(BSTR newVal) noexcept {
    return PutText(fields_.block.AreaDescription, newVal);
}

HRESULT ZEL_Definition::get_AreaName(BSTR* pVal) noexcept { return GetText(fields_.block.AreaName, pVal); }
HRESULT ZEL_Definition::put_AreaName(BSTR newVal) noexcept { return PutText(fields_.block.AreaName, newVal); }

HRESULT ZEL_Definition::get_CalcType(unsigned char* pVal) noexcept {
    return GetValue(fields_.block.CalcType, pVal);
}
HRESULT ZEL_Definition::put_CalcType(unsigned char newVal) noexcept {
    return PutValue(fields_.block.CalcType, newVal);
}

HRESULT ZEL_Definition::get_DimensionType(unsigned char* pVal) noexcept {
    return GetValue(fields_.block.DimensionType, pVal);
}
HRESULT ZEL_Definition::put_DimensionType(unsigned char newVal) noexcept {
    return PutValue(fields_.block.DimensionType, newVal);
}

HRESULT ZEL_Definition::get_FillColor(unsigned short* pVal) noexcept {
    return GetValue(fields_.block.FillColor, pVal);
}
HRESULT ZEL_Definition::put_FillColor(unsigned short newVal) noexcept {
    return PutValue(fields_.block.FillColor, newVal);
}

HRESULT ZEL_Definition::get_FillPattern(unsigned short* pVal) noexcept {
    return GetValue(fields_.block.FillPattern, pVal);
}
HRESULT ZEL_Definition::put_FillPattern(unsigned short newVal) noexcept {
    return PutValue(fields_.block.FillPattern, newVal);
}

HRESULT ZEL_Definition::get_Hidden(unsigned char* pVal) noexcept { return GetValue(fields_.Hidden, pVal); }
HRESULT ZEL_Definition::put_Hidden(unsigned char newVal) noexcept { return PutValue(fields_.Hidden, newVal); }

HRESULT ZEL_Definition::get_LineColor(unsigned short* pVal) noexcept {
    return GetValue(fields_.block.LineColor, pVal);
}
HRESULT ZEL_Definition::put_LineColor(unsigned short newVal) noexcept {
    return PutValue(fields_.block.LineColor, newVal);
}

HRESULT ZEL_Definition::get_Members(IZEL_Collection** pVal) noexcept {
    if (!pVal) return S_FALSE;
    return members_->QueryInterface(IID_IZEL_Collection, reinterpret_cast<void**>(pVal));
}

HRESULT ZEL_Definition::put_Members(IZEL_Collection* newVal) noexcept {
    if (!newVal) return S_FALSE;
    const ComPtr<IZEL_Collection> held(newVal);
    members_->Copy(newVal);
    return S_OK;
}

HRESULT ZEL_Definition::get_Multiplier(double* pVal) noexcept {
    return GetValue(fields_.block.Multiplier, pVal);
}
HRESULT ZEL_Definition::put_Multiplier(DoubleArgument newVal) noexcept {
    return PutValue(fields_.block.Multiplier, newVal);
}

HRESULT ZEL_Definition::get_PostArea(unsigned char* pVal) noexcept {
    return GetValue(fields_.block.PostArea, pVal);
}
HRESULT ZEL_Definition::put_PostArea(unsigned char newVal) noexcept {
    return PutValue(fields_.block.PostArea, newVal);
}

HRESULT ZEL_Definition::get_PostDescription(unsigned char* pVal) noexcept {
    return GetValue(fields_.block.PostDescription, pVal);
}
HRESULT ZEL_Definition::put_PostDescription(unsigned char newVal) noexcept {
    return PutValue(fields_.block.PostDescription, newVal);
}

HRESULT ZEL_Definition::get_SegmentStyle(BSTR* pVal) noexcept {
    return GetText(fields_.block.SegmentStyle, pVal);
}
HRESULT ZEL_Definition::put_SegmentStyle(BSTR newVal) noexcept {
    return PutText(fields_.block.SegmentStyle, newVal);
}

HRESULT ZEL_Definition::get_SubtractAreaCode(BSTR* pVal) noexcept {
    return GetText(fields_.SubtractAreaCode, pVal);
}
HRESULT ZEL_Definition::put_SubtractAreaCode(BSTR newVal) noexcept {
    return PutText(fields_.SubtractAreaCode, newVal);
}

HRESULT ZEL_Definition::get_WallHeight(double* pVal) noexcept {
    return GetValue(fields_.block.WallHeight, pVal);
}
HRESULT ZEL_Definition::put_WallHeight(DoubleArgument newVal) noexcept {
    return PutValue(fields_.block.WallHeight, newVal);
}

HRESULT ZEL_Definition::get_WallWidth(double* pVal) noexcept {
    return GetValue(fields_.block.WallWidth, pVal);
}
HRESULT ZEL_Definition::put_WallWidth(DoubleArgument newVal) noexcept {
    return PutValue(fields_.block.WallWidth, newVal);
}

}  // namespace zel
