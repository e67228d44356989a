#include <gtest/gtest.h>

#include <windows.h>
#include <psapi.h>

#include <functional>

#include "zel/com/ComPtr.h"
#include "Server.h"

namespace zel {
namespace {

class FactoryTest : public testing::Test {
protected:
    FactoryTest() {
        server_.Call("DllGetClassObject", &CLSID_ZEL_Header, &IID_IClassFactory, factory_.OutVoid());
        factory_->CreateInstance(nullptr, IID_IDispatch, object_.OutVoid());
    }

    Server server_;
    ComPtr<IClassFactory> factory_;
    ComPtr<IDispatch> object_;
};

TEST_F(FactoryTest, KeepsTheModuleByItsObjectsAndByLockServerAlone) {
    EXPECT_EQ(server_.CanUnloadNow(), S_FALSE);
    object_.Reset();
    EXPECT_EQ(server_.CanUnloadNow(), S_OK);
    EXPECT_TRUE(factory_.As<IUnknown>());
    EXPECT_EQ(factory_->LockServer(TRUE), S_OK);
    EXPECT_EQ(server_.CanUnloadNow(), S_FALSE);
    EXPECT_EQ(factory_->LockServer(FALSE), S_OK);
    EXPECT_EQ(server_.CanUnloadNow(), S_OK);
    EXPECT_EQ(factory_.Detach()->Release(), 0u);
}

TEST_F(FactoryTest, WhatIsRefusedClearsThePlaceForItAndNeedsOne) {
    const struct {
        HRESULT refusal;
        std::function<HRESULT(void**)> call;
    } cases[] = {
        {CLASS_E_CLASSNOTAVAILABLE,
         [&](void** o) { return server_.Call("DllGetClassObject", &IID_IZEL_Header, &IID_IUnknown, o); }},
        {E_NOINTERFACE,
         [&](void** o) { return server_.Call("DllGetClassObject", &CLSID_ZEL_Header, &IID_IDispatch, o); }},
        {CLASS_E_NOAGGREGATION,
         [&](void** o) { return factory_->CreateInstance(object_.Get(), IID_IUnknown, o); }},
        {E_NOINTERFACE, [&](void** o) { return factory_->CreateInstance(nullptr, IID_IZEL_Collection, o); }},
        {E_NOINTERFACE, [&](void** o) { return object_->QueryInterface(IID_IClassFactory, o); }},
        {DISP_E_BADINDEX,
         [&](void** o) { return object_->GetTypeInfo(1, 0, reinterpret_cast<ITypeInfo**>(o)); }},
    };
    for (const auto& [refusal, call] : cases) {
        void* out = &out;
        EXPECT_EQ(call(&out), refusal);
        EXPECT_EQ(out, nullptr) << std::hex << refusal;
        EXPECT_EQ(call(nullptr), E_POINTER) << std::hex << refusal;
    }
}

TEST_F(FactoryTest, ObjectsKnowOneDescriptionAndNoReservedInterface) {
    UINT count = 0;
    EXPECT_TRUE(object_->GetTypeInfoCount(&count) == S_OK && count == 1);
    EXPECT_EQ(object_->GetIDsOfNames(IID_IUnknown, nullptr, 0, 0, nullptr), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(object_->Invoke(7, IID_IUnknown, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

// The manifest beside the module in force: its classes can be created although nothing is registered.
class ActivationTest : public testing::Test {
protected:
    ActivationTest() {
        const std::filesystem::path manifest = BuiltFile("ZEL_BRU.manifest");
        ACTCTXW source = {};
        source.cbSize = sizeof source;
        source.lpSource = manifest.c_str();
        context_ = CreateActCtxW(&source);
        ActivateActCtx(context_, &cookie_);
    }
    ~ActivationTest() override {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }

    // Twice: the first call may only mark what is unused.
    static bool Unload() {
        for (int i = 0; i < 2; ++i) CoFreeUnusedLibrariesEx(0, 0);
        return GetModuleHandleW(L"ZEL_BRU.dll") == nullptr;
    }

    static SIZE_T MemoryInUse() {
        PROCESS_MEMORY_COUNTERS counters = {};
        GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return counters.PagefileUsage;
    }

    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

_COM_SMARTPTR_TYPEDEF(IDispatch, __uuidof(IDispatch));
_COM_SMARTPTR_TYPEDEF(IBRU_Store, __uuidof(IBRU_Store));
_COM_SMARTPTR_TYPEDEF(IZEL_Collection, __uuidof(IZEL_Collection));

TEST_F(ActivationTest, MakesEveryClassWithoutARegistry) {
    for (const wchar_t* progId : {L"ZEL_BRU.BRU_Store", L"ZEL_BRU.ZEL_Header.1", L"ZEL_BRU.ZEL_Collection",
                                  L"ZEL_BRU.ZEL_Definition.1"}) {
        EXPECT_NO_THROW(IDispatchPtr{progId}) << progId;
    }
}

// A definition that was loaded outlives its store, and the module waits for it.
TEST_F(ActivationTest, UnloadsAfterTheLastObjectAThousandTimesWithMemoryFlat) {
    const _bstr_t file(L"unload.bru");
    const auto cycle = [&] {
        LONG result = 1;
        _variant_t loaded;
        {
            IBRU_StorePtr store(L"ZEL_BRU.BRU_Store");
            IZEL_CollectionPtr items;
            store->get_Definitions(&items);
            items->Add(_variant_t(IDispatchPtr(L"ZEL_BRU.ZEL_Definition").GetInterfacePtr()));
            EXPECT_EQ(store->SaveToFile(file, &result), S_OK);
            EXPECT_EQ(store->LoadFromFile(file, &result), S_OK);
            store->get_Definitions(&items);
            items->Item(_variant_t(0L), &loaded);
        }
        EXPECT_FALSE(Unload());
        EXPECT_EQ(V_DISPATCH(&loaded)->GetTypeInfo(0, 0, ComPtr<ITypeInfo>().Out()), S_OK);
        loaded.Clear();
        return Unload();
    };
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(cycle());
    const SIZE_T before = MemoryInUse();
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(cycle()) << i;
    // A window class that stayed would have its procedure in code that has gone.
    IDispatchPtr object(L"ZEL_BRU.BRU_Store");
    WNDCLASSW windowClass = {0,       &DefWindowProcW, 0,       0,       GetModuleHandleW(L"ZEL_BRU.dll"),
                             nullptr, nullptr,         nullptr, nullptr, L"zel.Control"};
    EXPECT_TRUE(RegisterClassW(&windowClass));
    object = nullptr;
    EXPECT_TRUE(Unload());
    EXPECT_FALSE(GetClassInfoW(windowClass.hInstance, L"zel.Control", &windowClass));
    EXPECT_NE(TlsAlloc(), TLS_OUT_OF_INDEXES) << "what a thread slot leaks at every turn uses up all";
    // A few pages may come and go; what leaks at every turn adds up to more.
    EXPECT_LT(MemoryInUse(), before + 128 * 1024);
    DeleteFileW(file);
    // Nor did a turn keep the type library, which the platform shares out.
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadTypeLib(BuiltFile("ZEL_BRU.dll").c_str(), library.Out()), S_OK);
    EXPECT_EQ(library.Detach()->Release(), 0u);
}

}  // namespace
}  // namespace zel
