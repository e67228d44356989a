#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include <gtest/gtest.h>

#include <string>

#include "BRU_Store.h"
#include "ComPtr.h"
#include "Module.h"
#include "Object.h"
#include "module/Server.h"

namespace zel {

// The store as a client of COM meets it: the built module registers it, in the tests' own prefix. Until a
// test asks for that module's, new stores are this program's, so that their locks can be counted.
class ControlTest : public testing::Test {
protected:
    void SetUp() override {
        static const ClassRow kClasses[] = {{CLSID_BRU_Store, 0, &CreateInstance<BRU_Store>}};
        OleInitialize(nullptr);
        Module::Attach(GetModuleHandleW(nullptr), kClasses, 1);
        ComPtr<IUnknown> factory;
        ASSERT_EQ(Module::GetClassObject(CLSID_BRU_Store, IID_IUnknown, factory.OutVoid()), S_OK);
        ASSERT_EQ(CoRegisterClassObject(CLSID_BRU_Store, factory.Get(), CLSCTX_INPROC_SERVER,
                                        REGCLS_MULTIPLEUSE, &registration_),
                  S_OK);
        ASSERT_EQ(module_.Register(), S_OK);
        MakeStore();
    }
    void TearDown() override {
        store_.Reset();
        EXPECT_EQ(Module::LockCount(), 0);
        module_.Unregister();
        if (registration_) UseBuiltModule();
        Module::Detach();
        OleUninitialize();
    }

    void MakeStore() { store_ = Make<BRU_Store>().As<IOleObject>(); }
    template <class T>
    ComPtr<T> StoreAs() const {
        return store_.As<T>();
    }
    SIZEL Extent() const {
        SIZEL extent = {-1, -1};
        store_->GetExtent(DVASPECT_CONTENT, &extent);
        return extent;
    }
    void SetExtent(LONG width, LONG height) const {
        SIZEL extent = {width, height};
        EXPECT_EQ(store_->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    }
    static std::wstring ClassText() {
        wchar_t text[40];
        StringFromGUID2(CLSID_BRU_Store, text, 40);
        return text;
    }
    void UseBuiltModule() { CoRevokeClassObject(std::exchange(registration_, 0)); }

    const Server module_;
    ComPtr<IOleObject> store_;

private:
    DWORD registration_ = 0;
};

}  // namespace zel
