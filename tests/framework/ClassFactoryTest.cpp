#include <gtest/gtest.h>

#include "ProbeObject.h"

namespace zel {
namespace {

class ClassFactoryTest : public testing::Test {
protected:
    ModuleScope module_;
    ComPtr<IClassFactory> factory_;
    void SetUp() override {
        ASSERT_EQ(Module::GetClassObject(CLSID_ProbeClass, IID_IClassFactory, factory_.OutVoid()), S_OK);
    }
};

TEST_F(ClassFactoryTest, MakesObjectsOnlyWithAnInterfaceTheyHave) {
    ComPtr<IProbe> probe;
    EXPECT_EQ(factory_->CreateInstance(nullptr, __uuidof(IProbe), probe.OutVoid()), S_OK);
    EXPECT_EQ(Module::LockCount(), 1);
    void* out = &out;
    EXPECT_EQ(factory_->CreateInstance(nullptr, IID_IClassFactory, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(Module::LockCount(), 1);
    EXPECT_EQ(factory_->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ClassFactoryTest, RefusesAggregation) {
    void* out = &out;
    EXPECT_EQ(factory_->CreateInstance(factory_.Get(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
}

TEST_F(ClassFactoryTest, KeepsTheModuleByLockServerAlone) {
    EXPECT_EQ(Module::CanUnloadNow(), S_OK);
    EXPECT_EQ(factory_->LockServer(TRUE), S_OK);
    EXPECT_EQ(Module::CanUnloadNow(), S_FALSE);
    EXPECT_EQ(factory_->LockServer(FALSE), S_OK);
    EXPECT_EQ(Module::CanUnloadNow(), S_OK);
}

TEST_F(ClassFactoryTest, ClassObjectsAreOnlyForTheTable) {
    void* out = &out;
    EXPECT_EQ(Module::GetClassObject(__uuidof(IProbe), IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(Module::GetClassObject(CLSID_ProbeClass, IID_IDispatch, &out), E_NOINTERFACE);
    EXPECT_EQ(Module::GetClassObject(CLSID_ProbeClass, IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zel
