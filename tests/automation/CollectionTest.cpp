#include "Client.h"

namespace zel {
namespace {

using Collection = AutomationTest;

// A value whose type may have fewer bits; the others are there all the same.
VARIANT Typed(VARTYPE type, ULONG word) {
    VARIANT variant = Variant::UnsignedInt(word).Get();
    V_VT(&variant) = type;
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
    EXPECT_EQ(2u, References(*first));
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
    struct Case {
        const char* name;
        VARIANT index;
        WORD flags;
        const wchar_t* expected;
    };
    for (const Case& c : {Case{"a variable", reference, DISPATCH_METHOD, L"1"},
                          {"a small literal", Typed(VT_I2, 0x7ead0002), DISPATCH_METHOD, L"2"},
                          {"a byte", Typed(VT_UI1, 0x7ead0001), DISPATCH_METHOD, L"1"},
                          {"a negative literal", Typed(VT_I2, 0x0000ffff), DISPATCH_METHOD, L""},
                          {"2.0", Typed(VT_R4, 0x40000000), DISPATCH_METHOD, L"2"},
                          {"1e10, beyond all positions", Typed(VT_R4, 0x501502f9), DISPATCH_METHOD, L""},
                          {"got instead of called", Typed(VT_I4, 0), DISPATCH_PROPERTYGET, L"0"}}) {
        Variant value;
        VARIANT index = c.index;
        EXPECT_EQ(S_OK, Call(*items, L"Item", c.flags, &index, value.Out())) << c.name;
        EXPECT_EQ(c.expected, AsText(std::move(value))) << c.name;
    }
    EXPECT_EQ(S_OK, Call(*items, L"Remove", DISPATCH_METHOD, &reference, nullptr));
    EXPECT_EQ(S_OK, Call(*items, L"Add", DISPATCH_METHOD, &reference, nullptr));
    variable = Typed(VT_I4, 99);  // what a reference refers to was added, not the reference
    EXPECT_EQ(L"0 2 1", Tree(*items));
}

}  // namespace
}  // namespace zel
