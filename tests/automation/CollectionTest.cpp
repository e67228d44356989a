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
    EXPECT_EQ(L"0 1", Tree(*items));
    EXPECT_EQ(S_OK, items->Remove(Typed(VT_BOOL, 1)));
    EXPECT_EQ(L"0", Tree(*items));
}

TEST_F(Collection, RemovalKeepsTheOrder) {
    const auto items = Numbers(7);
    for (const ULONG position : {3, 0, 0, 2, 3}) items->Remove(Typed(VT_UI4, position));
    EXPECT_EQ(L"2 4 6", Tree(*items));
    for (int i = 0; i < 4; ++i) items->Remove(Typed(VT_UI4, 0));
    EXPECT_EQ(L"", Tree(*items));
}

TEST_F(Collection, CopySharesItemsAndKeepsAReferenceToTheLast) {
    const auto from = Make<ZEL_Collection>(), to = Numbers(3);
    const auto first = AddNew(*from, L"A"), last = AddNew(*from, L"B");
    EXPECT_EQ(S_OK, to->Copy(from.Get()));
    EXPECT_EQ(3u, References(*first));
    EXPECT_EQ(4u, References(*last));
    last->Release();  // the one that stays
    EXPECT_EQ(S_OK, to->Copy(to.Get()));
    EXPECT_EQ(L"A B", Tree(*to));
    EXPECT_EQ(S_OK, to->Copy(Numbers(0).Get()));
    EXPECT_EQ(L"", Tree(*to));
    Variant item = Variant::Object(last.Get());
    from->Item(Typed(VT_I4, 0), item.InOut());  // releases what the place held
    from->Remove(Typed(VT_I4, 0));
    EXPECT_EQ(2u, References(*first));
    EXPECT_EQ(2u, References(*last));
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

TEST_F(Collection, EnumeratesASnapshot) {
    const auto items = Numbers(2);
    Variant enumerator;
    VARIANT values[3];
    ULONG fetched = 0;
    ASSERT_EQ(S_OK, Call(*items, L"_NewEnum", DISPATCH_METHOD, nullptr, enumerator.Out()));
    items->Add(Typed(VT_I4, 2));
    items->Remove(Typed(VT_I4, 0));
    const auto walk = ComPtr<IUnknown>(V_UNKNOWN(&enumerator.Get())).As<IEnumVARIANT>();
    EXPECT_EQ(S_FALSE, walk->Next(3, values, &fetched));
    EXPECT_EQ(2u, fetched);
    EXPECT_EQ(0, V_I4(&values[0]));
    EXPECT_EQ(E_POINTER, items->get__NewEnum(nullptr));
}

TEST_F(Collection, LateBoundPositionsMeanWhatTheScriptSays) {
    const auto items = Numbers(3);
    VARIANT variable = Typed(VT_I4, 1), reference = Typed(VT_BYREF | VT_VARIANT, 0);
    V_VARIANTREF(&reference) = &variable;
    for (auto [index, expected] : {std::pair{reference, L"1"},
                                   {Typed(VT_I2, 0x7ead0002), L"2"},
                                   {Typed(VT_R8, 0x4000000000000000), L"2"},    // 2.0
                                   {Typed(VT_R8, 0x41f0000000000000), L""}}) {  // 2 to the 32nd
        Variant value;
        EXPECT_EQ(S_OK, Call(*items, L"Item", DISPATCH_PROPERTYGET, &index, value.Out()));
        EXPECT_EQ(expected, AsText(std::move(value))) << V_UI4(&index);
    }
    Variant beyond = Variant::Int(77);
    for (VARIANT index : {Typed(VT_EMPTY, 0), Typed(VT_NULL, 0), Typed(VT_BOOL, 1), Typed(VT_BSTR, 0),
                          Typed(VT_DISPATCH, 0), Typed(VT_ERROR, 1), Typed(VT_DATE, 0x3ff0000000000000)}) {
        EXPECT_EQ(S_OK, Call(*items, L"Item", DISPATCH_PROPERTYGET, &index, beyond.Out()));
        EXPECT_EQ(S_OK, Call(*items, L"Remove", DISPATCH_METHOD, &index, nullptr));
        EXPECT_EQ(VT_EMPTY, beyond.Type()) << V_VT(&index);
    }
    EXPECT_EQ(L"0 1 2", Tree(*items));
    EXPECT_EQ(S_OK, Call(*items, L"Remove", DISPATCH_METHOD, &reference, nullptr));
    EXPECT_EQ(S_OK, items->Add(reference));
    variable = Typed(VT_I4, 99);  // what a reference refers to was added, not the reference
    VARIANT half = Typed(VT_R8, 0x4004000000000000);
    EXPECT_EQ(S_OK, Call(*items, L"Add", DISPATCH_METHOD, &half, nullptr));
    EXPECT_EQ(L"0 2 1 2.5", Tree(*items));
}

}  // namespace
}  // namespace zel
