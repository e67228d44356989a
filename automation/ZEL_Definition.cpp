#include "ZEL_Definition.h"

#include <cstddef>

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

// The members of a definition: a collection like any other, but for its place in memory.
class MemberCollection final : public ZEL_Collection {
public:
    static void* operator new(std::size_t size, ZEL_Definition& owner) noexcept;
    static void operator delete(void* place) noexcept;
    static void operator delete(void*, ZEL_Definition&) noexcept {}
};

// A definition and its members in one block of the heap, which is what a load waits for most. Each lives by
// references of its own, so neither is inside the other; the block goes with the last of them.
struct Block {
    alignas(ZEL_Definition) std::byte definition[sizeof(ZEL_Definition)];
    alignas(MemberCollection) std::byte members[sizeof(MemberCollection)];
    volatile LONG used = 2;

    void Leave() noexcept {
        if (InterlockedDecrement(&used) == 0) delete this;
    }
};
static_assert(offsetof(Block, definition) == 0);

void* MemberCollection::operator new(std::size_t, ZEL_Definition& owner) noexcept {
    return reinterpret_cast<Block&>(owner).members;
}

void MemberCollection::operator delete(void* place) noexcept {
    reinterpret_cast<Block*>(static_cast<std::byte*>(place) - offsetof(Block, members))->Leave();
}

}  // namespace

void* ZEL_Definition::operator new(std::size_t) { return new Block; }

void ZEL_Definition::operator delete(void* place) noexcept { static_cast<Block*>(place)->Leave(); }

ZEL_Definition::ZEL_Definition() noexcept
    : members_(ComPtr<ZEL_Collection>::Attach(new (*this) MemberCollection)) {
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
