#include <gtest/gtest.h>

#include <windows.h>
#include <psapi.h>

#include "Bstr.h"
#include "ComPtr.h"
#include "Server.h"
#include "Variant.h"

namespace zel {
namespace {

constexpr wchar_t kModule[] = L"ZEL_BRU.dll";

class UnloadTest : public testing::Test {
protected:
    UnloadTest() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        file_ = Bstr((std::wstring(folder) + L"unload.bru").c_str());
    }
    ~UnloadTest() override { DeleteFileW(file_.Get()); }

    template <class Interface>
    static ComPtr<Interface> Create(REFCLSID clsid) {
        ComPtr<Interface> object;
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), object.OutVoid());
        return object;
    }

    static ComPtr<IZEL_Collection> DefinitionsOf(IBRU_Store& store) {
        ComPtr<IZEL_Collection> definitions;
        store.get_Definitions(definitions.Out());
        return definitions;
    }

    void SaveOneDefinition() {
        auto store = Create<IBRU_Store>(CLSID_BRU_Store);
        auto definition = Create<IZEL_Definition>(CLSID_ZEL_Definition);
        DefinitionsOf(*store)->Add(Variant::Object(definition.Get()).Get());
        LONG result = 1;
        EXPECT_EQ(store->SaveToFile(file_.Get(), &result), S_OK);
    }

    // The first definition of the file, which outlives its store.
    Variant LoadDefinition() {
        auto store = Create<IBRU_Store>(CLSID_BRU_Store);
        LONG result = 1;
        EXPECT_EQ(store->LoadFromFile(file_.Get(), &result), S_OK);
        Variant item;
        DefinitionsOf(*store)->Item(Variant::Int(0).Get(), item.Out());
        return item;
    }

    // Twice: the first call may only mark what is unused.
    static bool Unload() {
        for (int i = 0; i < 2; ++i) CoFreeUnusedLibrariesEx(0, 0);
        return GetModuleHandleW(kModule) == nullptr;
    }

    static SIZE_T MemoryInUse() {
        PROCESS_MEMORY_COUNTERS counters = {};
        GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return counters.PagefileUsage;
    }

    ComScope com_;
    ManifestScope manifest_;
    Bstr file_;
};

TEST_F(UnloadTest, WaitsForWhatALoadMade) {
    SaveOneDefinition();
    Variant definition = LoadDefinition();
    EXPECT_EQ(definition.Type(), VT_DISPATCH);
    EXPECT_FALSE(Unload());
    EXPECT_EQ(Server().CanUnloadNow(), S_FALSE);
    definition.Reset();
    EXPECT_EQ(Server().CanUnloadNow(), S_OK);
    EXPECT_TRUE(Unload());
}

TEST_F(UnloadTest, ThousandTimesLeavesMemoryFlat) {
    SaveOneDefinition();
    const auto cycle = [&] {
        Variant definition = LoadDefinition();
        wchar_t name[] = L"AreaCode";
        LPOLESTR names[] = {name};
        DISPID id = 0;
        EXPECT_EQ(V_DISPATCH(&definition.Get())->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
        definition.Reset();
        return Unload();
    };
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(cycle());
    const SIZE_T before = MemoryInUse();
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(cycle()) << i;
    // A few pages may come and go; what leaks at every turn adds up to more.
    EXPECT_LT(MemoryInUse(), before + 128 * 1024);
}

}  // namespace
}  // namespace zel
