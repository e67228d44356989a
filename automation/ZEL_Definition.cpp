#include "ZEL_Definition.h"

#include <new>

#include "FlatRelease.h"
#include "Gathering.h"

namespace zel {
namespace {

// Where the fields of a record come from: the getters of any implementation of the interface, or the fields
// of an object of this class without its getters, which could fail for memory and not say so.
class OthersFields : Gathering<IZEL_Definition> {
public:
    using Gathering::Gathering;

    template <class Getter, class Field>
    void Text(Getter get, const Field&, Field& field) {
        Gathering::Text(get, field);
    }
    template <class Getter, class Field>
    void Number(Getter get, const Field&, Field& field) {
        Gathering::Number(get, field);
    }
};

struct OwnFields {
    template <class Getter, class Field>
    void Text(Getter, const Field& own, Field& field) {
        CopyText(own, field);
    }
    template <class Getter, class Field>
    void Number(Getter, const Field& own, Field& field) {
        field = own;
    }
};

// The properties in the order in which they are read, those before Members and those behind it.
template <class Source>
void WalkBeforeMembers(Source&& from, const DefinitionFields& own, DefinitionFields& to) {
    from.Text(&IZEL_Definition::get_AreaCode, own.AreaCode, to.AreaCode);
    from.Text(&IZEL_Definition::get_AreaDescription, own.block.AreaDescription, to.block.AreaDescription);
    from.Text(&IZEL_Definition::get_AreaName, own.block.AreaName, to.block.AreaName);
    from.Number(&IZEL_Definition::get_CalcType, own.block.CalcType, to.block.CalcType);
    from.Number(&IZEL_Definition::get_DimensionType, own.block.DimensionType, to.block.DimensionType);
    from.Number(&IZEL_Definition::get_FillColor, own.block.FillColor, to.block.FillColor);
    from.Number(&IZEL_Definition::get_FillPattern, own.block.FillPattern, to.block.FillPattern);
    from.Number(&IZEL_Definition::get_Hidden, own.Hidden, to.Hidden);
    from.Number(&IZEL_Definition::get_LineColor, own.block.LineColor, to.block.LineColor);
}

template <class Source>
void WalkBehindMembers(Source&& from, const DefinitionFields& own, DefinitionFields& to) {
    from.Number(&IZEL_Definition::get_Multiplier, own.block.Multiplier, to.block.Multiplier);
    from.Number(&IZEL_Definition::get_PostArea, own.block.PostArea, to.block.PostArea);
    from.Number(&IZEL_Definition::get_PostDescription, own.block.PostDescription, to.block.PostDescription);
    from.Text(&IZEL_Definition::get_SegmentStyle, own.block.SegmentStyle, to.block.SegmentStyle);
    from.Text(&IZEL_Definition::get_SubtractAreaCode, own.SubtractAreaCode, to.SubtractAreaCode);
    from.Number(&IZEL_Definition::get_WallHeight, own.block.WallHeight, to.block.WallHeight);
    from.Number(&IZEL_Definition::get_WallWidth, own.block.WallWidth, to.block.WallWidth);
}

}  // namespace

ZEL_Definition::ZEL_Definition() : members_(Make<ZEL_Collection>()) {
    if (!members_) throw std::bad_alloc();
    OwnClass<ZEL_Definition, IZEL_Definition>::Note(*this);
}

ZEL_Definition::~ZEL_Definition() { FlatRelease::Release(std::move(members_)); }

void ZEL_Definition::GatherBeforeMembers(IZEL_Definition& source, DefinitionRecord& record) {
    if (const auto* own = Own(source)) return WalkBeforeMembers(OwnFields(), own->fields_, record);
    WalkBeforeMembers(OthersFields(source), record, record);
}

void ZEL_Definition::GatherBehindMembers(IZEL_Definition& source, DefinitionRecord& record) {
    if (const auto* own = Own(source)) return WalkBehindMembers(OwnFields(), own->fields_, record);
    WalkBehindMembers(OthersFields(source), record, record);
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

}  // namespace zel
