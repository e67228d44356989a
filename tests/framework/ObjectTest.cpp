#include <gtest/gtest.h>

#include "Boundary.h"
#include "ProbeObject.h"

namespace zel {
namespace {

struct Throwing : Object<Interfaces<IUnknown>, IUnknown> {
    Throwing() { throw 1; }
};

TEST(Object, EveryInterfaceOfTheTableIsTheSameObject) {
    auto probe = Make<ProbeObject>();
    ComPtr<IUnknown> identity;
    ASSERT_EQ(probe->QueryInterface(IID_IUnknown, identity.OutVoid()), S_OK);
    for (const IID& iid :
         {__uuidof(IProbe), IID_IDispatch, __uuidof(ILeft), __uuidof(IRight), IID_IPersist}) {
        ComPtr<IUnknown> face, again;
        ASSERT_EQ(probe->QueryInterface(iid, face.OutVoid()), S_OK);
        ASSERT_EQ(face->QueryInterface(IID_IUnknown, again.OutVoid()), S_OK);
        EXPECT_EQ(identity.Get(), again.Get());
    }
    EXPECT_EQ(static_cast<IPersist*>(probe.As<IPersist>().Get()), static_cast<IRight*>(probe.Get()));
}

TEST(Object, RefusesOtherInterfacesAndANullPlace) {
    auto probe = Make<ProbeObject>();
    void* out = &out;
    EXPECT_EQ(probe->QueryInterface(IID_IClassFactory, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(probe->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(References(*probe), 1u);
}

TEST(Object, KeepsTheModuleLoadedUntilItIsDestroyed) {
    auto probe = Make<ProbeObject>();
    EXPECT_EQ(Module::LockCount(), 1);
    ComPtr<IDispatch> other = probe.As<IDispatch>();
    probe.Reset();
    EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
    other.Reset();
    EXPECT_EQ(Module::LockCount(), 0);
}

TEST(Object, OfAThrowingConstructorLeavesNothing) {
    void* out = nullptr;
    EXPECT_EQ(CreateInstance<Throwing>(IID_IUnknown, &out), E_OUTOFMEMORY);
    EXPECT_EQ(Module::LockCount(), 0);
}

TEST(Boundary, LetsNoExceptionOut) {
    EXPECT_EQ(Boundary([]() -> HRESULT { throw std::bad_alloc(); }), S_FALSE);
    EXPECT_EQ(Boundary([]() -> HRESULT { throw 1; }, E_OUTOFMEMORY), E_OUTOFMEMORY);
    EXPECT_EQ(Boundary([] { return E_ABORT; }), E_ABORT);
}

}  // namespace
}  // namespace zel
