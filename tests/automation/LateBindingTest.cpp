#include "Client.h"

namespace zel {
namespace {

// Calls as a script engine makes them: one argument or none.
HRESULT Call(IDispatch* object, DISPID member, WORD flags, VARIANT* argument, VARIANT* value) {
    DISPID put = DISPID_PROPERTYPUT;
    const bool puts = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPPARAMS arguments{argument, puts ? &put : nullptr, argument ? 1u : 0u, puts ? 1u : 0u};
    if (value) VariantInit(value);
    return object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, value, nullptr, nullptr);
}

DISPID Named(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID member = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member);
    return member;
}

VARIANT Double(double value) {
    VARIANT variant;
    V_VT(&variant) = VT_R8;
    V_R8(&variant) = value;
    return variant;
}

TEST(LateBinding, PositionsMeanWhatTheScriptSays) {
    const CollectionPtr items = Server::NewCollection();
    for (LONG i = 10; i < 13; ++i) items->Add(Int(i));
    VARIANT variable = Int(1);
    VARIANT reference = Int(0, VT_BYREF | VT_VARIANT);
    V_VARIANTREF(&reference) = &variable;
    struct Case {
        const char* name;
        VARIANT index;
        WORD flags;
        LONG expected;  // 0 for none
    };
    for (const Case& c :
         {Case{"a variable", reference, DISPATCH_METHOD, 11},
          {"a small literal with garbage behind it", Int(0x7ead0002, VT_I2), DISPATCH_METHOD, 12},
          {"a byte with garbage behind it", Int(0x7ead0001, VT_UI1), DISPATCH_METHOD, 11},
          {"a negative literal", Int(0x0000ffff, VT_I2), DISPATCH_METHOD, 0},
          {"a floating-point number", Double(2), DISPATCH_METHOD, 12},
          {"a number beyond all positions", Double(1e10), DISPATCH_METHOD, 0},
          {"got instead of called", Int(0), DISPATCH_PROPERTYGET, 10}}) {
        VARIANT value, index = c.index;
        EXPECT_EQ(S_OK, Call(items, DISPID_VALUE, c.flags, &index, &value)) << c.name;
        EXPECT_EQ(c.expected ? VT_I4 : VT_EMPTY, V_VT(&value)) << c.name;
        EXPECT_TRUE(!c.expected || c.expected == V_I4(&value)) << c.name;
    }
    VARIANT index = reference;
    EXPECT_EQ(S_OK, Call(items, Named(items, L"Remove"), DISPATCH_METHOD, &index, nullptr));
    EXPECT_EQ(S_OK, Call(items, Named(items, L"Add"), DISPATCH_METHOD, &index, nullptr));
    variable = Int(99);
    VARIANT last = Int(2), value;
    EXPECT_EQ(S_OK, Call(items, DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &last, &value));
    EXPECT_EQ(1, V_I4(&value));
    for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_METHOD}) {
        EXPECT_EQ(S_OK, Call(items, DISPID_NEWENUM, flags, nullptr, &value));
        EXPECT_EQ(VT_UNKNOWN, V_VT(&value));
        VariantClear(&value);
    }
}

TEST(LateBinding, PropertiesCoerceAndRefuse) {
    const StorePtr store = Server::NewStore();
    const DISPID type = Named(store, L"DefinitionType");
    VARIANT value, fits = Int(200), tooBig = Int(300);
    EXPECT_EQ(S_OK, Call(store, type, DISPATCH_PROPERTYPUT, &fits, nullptr));
    EXPECT_EQ(DISP_E_OVERFLOW, Call(store, type, DISPATCH_PROPERTYPUT, &tooBig, nullptr));
    EXPECT_EQ(S_OK, Call(store, type, DISPATCH_PROPERTYGET, nullptr, &value));
    EXPECT_EQ(VT_UI1, V_VT(&value));
    EXPECT_EQ(200, V_UI1(&value));
    const CollectionPtr items = Server::NewCollection();
    items->Add(Int(1));
    for (const WORD flags : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
        VARIANT object = ObjectIn(items);
        EXPECT_EQ(S_OK, Call(store, Named(store, L"Definitions"), flags, &object, nullptr));
        EXPECT_EQ(1, Count(Definitions(store)));
        Definitions(store)->Remove(Int(0));
    }
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Call(store, 99, DISPATCH_PROPERTYGET, nullptr, &value));
    EXPECT_EQ(DISPID_UNKNOWN, Named(store, L"NoSuchMember"));
}

}  // namespace
}  // namespace zel
