// What steps.txt cannot ask a collection: positions of any type through the vtable, and references.

#include "Client.h"

namespace zel {
namespace {

using Collection = AutomationTest;

// A value whose type may have fewer bits; the others are there all the same.
VARIANT Typed(VARTYPE type, ULONGLONG bits) {
    VARIANT variant;
    V_VT(&variant) = type;
    V_UI8(&variant) = bits;
    return variant;
}

TEST_F(Collection, PositionsAreTheFirst32BitsOfAnyType) {
    const auto items = Numbers(2);
    for (const VARIANT& beyond : {Typed(VT_I4, 2), Typed(VT_I4, 0xffffffff), Typed(VT_BSTR, 2)}) {
        Variant item = Variant::Int(77);
        EXPECT_EQ(S_OK, items->Item(beyond, item.InOut()));
        EXPECT_EQ(L"77", AsText(std::move(item)));
        EXPECT_EQ(S_OK, items->Remove(beyond));
    }
    EXPECT_EQ(S_OK, items->Item(Typed(VT_I4, 0), nullptr));
    EXPECT_EQ(S_OK, items->get_Count(nullptr));
    EXPECT_EQ(S_OK, items->Copy(nullptr));
    EXPECT_EQ(E_POINTER, items->get__NewEnum(nullptr));
    EXPECT_EQ(L"0 1", Tree(*items));
    EXPECT_EQ(S_OK, items->Remove(Typed(VT_BOOL, 1)));
    VARIANT variable = Typed(VT_I4, 1), reference = Typed(VT_BYREF | VT_VARIANT, 0);
    V_VARIANTREF(&reference) = &variable;
    EXPECT_EQ(S_OK, items->Add(reference));
    variable = Typed(VT_I4, 99);  // what a reference refers to was added, not the reference
    EXPECT_EQ(L"0 1", Tree(*items));
    VARIANT money = Typed(VT_CY, 10000), unknown = Typed(200, 0);
    Variant item;
    EXPECT_EQ(S_OK, Call(*items, L"Item", DISPATCH_METHOD, &money, item.Out()));
    EXPECT_EQ(L"1", AsText(std::move(item)));
    EXPECT_TRUE(FAILED(Call(*items, L"Add", DISPATCH_METHOD, &unknown, nullptr)));
}

TEST_F(Collection, CopyKeepsAReferenceToTheLast) {
    const auto from = Make<ZEL_Collection>(), to = Numbers(3);
    const auto first = AddNew(*from, L"A"), last = AddNew(*from, L"B");
    EXPECT_EQ(S_OK, to->Copy(from.Get()));
    EXPECT_EQ(3u, References(*first));
    EXPECT_EQ(4u, References(*last));
    last->Release();  // the one that stays
    Variant item = Variant::Object(last.Get());
    from->Item(Typed(VT_I4, 0), item.InOut());  // releases what the place held
    from->Remove(Typed(VT_I4, 0));
    EXPECT_EQ(3u, References(*first));
    EXPECT_EQ(3u, References(*last));
}

// Takes the first item out of a collection as it goes.
struct Remover final : Object<Interfaces<IUnknown>, IUnknown> {
    explicit Remover(ZEL_Collection& from) : items(from) {}
    ~Remover() override { items.Remove(Typed(VT_UI4, 0)); }
    ZEL_Collection& items;
};

TEST_F(Collection, ItemIsThatBeforeWhatThePlaceHeldIsReleased) {
    const auto items = Numbers(2);
    VARIANT place;
    V_VT(&place) = VT_UNKNOWN;
    V_UNKNOWN(&place) = Make<Remover>(*items).Detach();
    EXPECT_EQ(S_OK, items->Item(Typed(VT_UI4, 0), &place));
    EXPECT_EQ(0, V_I4(&place));
    EXPECT_EQ(L"1", Tree(*items));
}

}  // namespace
}  // namespace zel
