#include <gtest/gtest.h>

#include "Bstr.h"
#include "ProbeObject.h"
#include "Variant.h"

namespace zel {
namespace {

TEST(ComPtr, CountsTheReferencesItOwns) {
    auto probe = Make<ProbeObject>();
    ComPtr<IDispatch> dispatch = probe.Share();
    EXPECT_EQ(References(*probe), 2u);
    dispatch = ComPtr<IDispatch>(dispatch.Get());
    EXPECT_EQ(References(*probe), 2u);
    IUnknown* raw = nullptr;
    dispatch.CopyTo(&raw);
    auto attached = ComPtr<IUnknown>::Attach(raw);
    EXPECT_EQ(References(*probe), 3u);
    dispatch.Out();
    attached.Reset();
    EXPECT_EQ(References(*probe), 1u);
    EXPECT_FALSE(probe.As<IClassFactory>());
}

TEST(Variant, OwnsWhatItHolds) {
    auto probe = Make<ProbeObject>();
    Variant object = Variant::Object(probe.Get());
    Variant copy;
    EXPECT_EQ(copy.CopyFrom(object.Get()), S_OK);
    EXPECT_EQ(References(*probe), 3u);
    Variant moved = std::move(copy);
    EXPECT_EQ(copy.Type(), VT_EMPTY);
    moved = Variant::UnsignedInt(7);
    EXPECT_EQ(References(*probe), 2u);

    VARIANT wrong;
    V_VT(&wrong) = VT_BSTR | VT_VECTOR;
    EXPECT_EQ(object.CopyFrom(wrong), DISP_E_BADVARTYPE);
    EXPECT_EQ(object.Type(), VT_DISPATCH);
    object.Out();
    EXPECT_EQ(References(*probe), 1u);
}

TEST(Bstr, MovesAndLendsItsString) {
    Bstr text(L"a\0b", 3);
    EXPECT_EQ(text.Length(), 3u);
    Bstr moved = std::move(text);
    EXPECT_FALSE(text);
    SysReAllocString(moved.InOut(), L"longer");
    EXPECT_STREQ(moved.Get(), L"longer");
    Bstr attached = Bstr::Attach(moved.Detach());
    EXPECT_EQ(*attached.Out(), nullptr);
}

}  // namespace
}  // namespace zel
