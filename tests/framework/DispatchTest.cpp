#include <gtest/gtest.h>

#include "ProbeObject.h"
#include "Variant.h"

namespace zel {
namespace {

TEST(Dispatch, CallsThroughTheModulesOwnTypeLibrary) {
    ModuleScope module;
    auto probe = Make<ProbeObject>();
    wchar_t name[] = L"vALUE";
    LPOLESTR names[] = {name};
    DISPID id = 0;
    ASSERT_EQ(probe->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), S_OK);
    EXPECT_EQ(id, 7);

    Variant argument = Variant::Int(41);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments = {argument.InOut(), &put, 1, 1};
    DISPPARAMS none = {};
    Variant value;
    EXPECT_EQ(probe->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &arguments, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(probe->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, value.Out(), nullptr, nullptr),
              S_OK);
    EXPECT_EQ(value.Type(), VT_I4);
    EXPECT_EQ(V_I4(&value.Get()), 41);
}

TEST(Dispatch, RefusesWhatIsNotThere) {
    ModuleScope module;
    auto probe = Make<ProbeObject>();
    ComPtr<ITypeInfo> info;
    UINT count = 0;
    DISPPARAMS none = {};
    EXPECT_EQ(probe->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(probe->GetTypeInfo(0, 0, info.Out()), S_OK);
    EXPECT_EQ(probe->GetTypeInfo(1, 0, info.Out()), DISP_E_BADINDEX);
    EXPECT_EQ(probe->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(probe->Invoke(7, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(probe->Invoke(8, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
}

}  // namespace
}  // namespace zel
