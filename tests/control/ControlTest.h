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

namespace zel {

// The module with its store as the only class, known to COM in this process and, by what ole32 reads without
// asking COM, in the registry of the tests' own prefix.
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
        Register(L"", L"BRU_Store Class");
        Register(L"\\MiscStatus", L"0");
        Register(L"\\MiscStatus\\1", L"132497");
        MakeStore();
    }
    void TearDown() override {
        store_.Reset();
        EXPECT_EQ(Module::LockCount(), 0);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, Key().c_str());
        CoRevokeClassObject(registration_);
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
    static void Register(const wchar_t* key, const wchar_t* value) {
        RegSetValueW(HKEY_CLASSES_ROOT, (Key() + key).c_str(), REG_SZ, value, 0);
    }

    ComPtr<IOleObject> store_;

private:
    static std::wstring Key() { return L"CLSID\\" + ClassText(); }

    DWORD registration_ = 0;
};

}  // namespace zel
