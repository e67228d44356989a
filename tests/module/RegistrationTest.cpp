#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ComPtr.h"
#include "RegistryScope.h"
#include "Server.h"

namespace zel {

// The platform's own registrar, which reads the same script language.
struct IPlatformRegistrar : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AddReplacement(LPCOLESTR key, LPCOLESTR item) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearReplacements() = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileRegister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileUnregister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringRegister(LPCOLESTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringUnregister(LPCOLESTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
};

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using Lines = std::vector<std::string>;

constexpr wchar_t kClass3[] = L"ZEL_BRU.ZEL_Collection";

struct Class {
    std::string name;
    const CLSID& clsid;
};
const Class kClasses[] = {{"BRU_Store", CLSID_BRU_Store},
                          {"ZEL_Header", CLSID_ZEL_Header},
                          {"ZEL_Collection", CLSID_ZEL_Collection},
                          {"ZEL_Definition", CLSID_ZEL_Definition}};

std::string InBraces(const GUID& guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return ToUtf8(text);
}

// One text of them: a difference is then shown as one.
std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

// The keys and values of all classes.
std::string Expected(const std::string& module) {
    Lines lines = {"CLSID"};
    for (const Class& row : kClasses) {
        const std::string clsid = InBraces(row.clsid), progId = "ZEL_BRU." + row.name,
                          key = "CLSID\\" + clsid;
        const std::string title = row.name + " Class";
        const Lines own = {progId + ".1",
                           progId + ".1|=" + title,
                           progId + ".1\\CLSID",
                           progId + ".1\\CLSID|=" + clsid,
                           progId,
                           progId + "|=" + title,
                           progId + "\\CLSID",
                           progId + "\\CLSID|=" + clsid,
                           progId + "\\CurVer",
                           progId + "\\CurVer|=" + progId + ".1",
                           key,
                           key + "|=" + title,
                           key + "\\ProgID",
                           key + "\\ProgID|=" + progId + ".1",
                           key + "\\VersionIndependentProgID",
                           key + "\\VersionIndependentProgID|=" + progId,
                           key + "\\Programmable",
                           key + "\\InprocServer32",
                           key + "\\InprocServer32|=" + module,
                           key + "\\InprocServer32|ThreadingModel=Both",
                           key + "\\TypeLib",
                           key + "\\TypeLib|=" + InBraces(LIBID_ZEL_BRULib)};
        lines.insert(lines.end(), own.begin(), own.end());
    }
    const std::string store = "CLSID\\" + InBraces(CLSID_BRU_Store);
    const Lines control = {store + "\\Control",         store + "\\Insertable",
                           store + "\\ToolboxBitmap32", store + "\\ToolboxBitmap32|=" + module + ", 101",
                           store + "\\MiscStatus",      store + "\\MiscStatus|=0",
                           store + "\\MiscStatus\\1",   store + "\\MiscStatus\\1|=132497",
                           store + "\\Version",         store + "\\Version|=1.0"};
    lines.insert(lines.end(), control.begin(), control.end());
    std::sort(lines.begin(), lines.end());
    return Joined(lines);
}

// What the scripts wrote: all but what the type library's registration did.
std::string Written(const RegistryScope& registry) {
    Lines lines;
    for (const std::string& line : registry.Tree()) {
        if (line.rfind("Type", 0) != 0 && line.rfind("Interface", 0) != 0) lines.push_back(line);
    }
    return Joined(lines);
}

class RegistrationTest : public testing::Test {
protected:
    const std::wstring file_ = BuiltFile(L"ZEL_BRU.dll");
    const std::string file8_ = ToUtf8(file_);
    Server server_;
    RegistryScope registry_;
};

TEST_F(RegistrationTest, IsTheSameEveryTime) {
    for (const char* call : {"first", "again", "after unregistering"}) {
        EXPECT_EQ(server_.Register(), S_OK) << call;
        EXPECT_EQ(Written(registry_), Expected(file8_)) << call;
        if (call == std::string("first")) continue;
        EXPECT_EQ(server_.Unregister(), S_OK);
    }
}

TEST_F(RegistrationTest, IsUndoneButForTheTypeLibrary) {
    const std::string library = "TypeLib\\" + InBraces(LIBID_ZEL_BRULib);
    ASSERT_EQ(server_.Register(), S_OK);
    EXPECT_EQ(server_.Unregister(), S_OK);
    EXPECT_EQ(server_.Unregister(), S_OK);
    EXPECT_EQ(Written(registry_), "CLSID\n");
    EXPECT_THAT(registry_.Tree(L"TypeLib"), Contains(library + "\\1.0|=ZEL_BRU 1.0 Type Library"));
    EXPECT_THAT(registry_.Tree(L"TypeLib"), Contains(library + "\\1.0\\409\\win32|=" + file8_));
    EXPECT_THAT(registry_.Tree(), Contains("Interface\\" + InBraces(IID_IZEL_Header) + "|=IZEL_Header"));
    ComPtr<ITypeLib> loaded;
    EXPECT_EQ(LoadRegTypeLib(LIBID_ZEL_BRULib, 1, 0, 0x409, loaded.Out()), S_OK);
}

TEST_F(RegistrationTest, StopsAtTheFirstRefusalAndIsHealedByTheNext) {
    registry_.Block(kClass3);
    EXPECT_EQ(server_.Register(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_THAT(registry_.Tree(), Contains("ZEL_BRU.ZEL_Header\\CLSID"));
    EXPECT_THAT(registry_.Tree(), Not(Contains("ZEL_BRU.ZEL_Definition")));
    EXPECT_THAT(registry_.Tree(L"TypeLib"), IsEmpty());
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kClass3);
    EXPECT_EQ(server_.Register(), S_OK);
    EXPECT_EQ(Written(registry_), Expected(file8_));
}

TEST_F(RegistrationTest, NamesTheFileItWasLoadedFrom) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring copy = std::wstring(folder) + L"it's \u00FC b\u0142ank.dll";
    ASSERT_TRUE(CopyFileW(file_.c_str(), copy.c_str(), FALSE));
    EXPECT_EQ(Server(copy).Register(), S_OK);
    EXPECT_EQ(Written(registry_), Expected(ToUtf8(copy)));
    EXPECT_TRUE(DeleteFileW(copy.c_str()));
}

constexpr CLSID kRegistrar = {0x44EC053A, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};
constexpr IID kIRegistrar = {0x44EC053B, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

TEST(PlatformRegistrar, MakesTheSameKeysOfTheScripts) {
    ComScope com;
    const std::wstring file = BuiltFile(L"ZEL_BRU.dll");
    ComPtr<IPlatformRegistrar> registrar;
    ASSERT_EQ(CoCreateInstance(kRegistrar, nullptr, CLSCTX_INPROC_SERVER, kIRegistrar, registrar.OutVoid()),
              S_OK);
    RegistryScope registry;
    ASSERT_EQ(registrar->AddReplacement(L"MODULE", file.c_str()), S_OK);
    for (UINT script = 102; script <= 105; ++script) {
        EXPECT_EQ(registrar->ResourceRegister(file.c_str(), script, L"REGISTRY"), S_OK);
    }
    EXPECT_EQ(Written(registry), Expected(ToUtf8(file)));
}

}  // namespace
}  // namespace zel
