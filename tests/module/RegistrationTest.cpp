#include <gtest/gtest.h>

#include "zel/com/ComPtr.h"
#include "RegistryScope.h"
#include "Server.h"

namespace zel {

// The start of the platform's own registrar, which reads the same script language.
struct IPlatformRegistrar : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AddReplacement(LPCOLESTR key, LPCOLESTR item) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearReplacements() = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegisterSz(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
};

namespace {

// The whole classes root, where "FOLDER" stands for that of the module's file.
std::string Tree(const RegistryScope& registry, const std::filesystem::path& file) {
    std::string tree = registry.Tree();
    const std::string folder = ToUtf8(file.parent_path());
    for (std::size_t at; (at = tree.find(folder)) != tree.npos;) tree.replace(at, folder.size(), "FOLDER");
    return tree;
}

class RegistrationTest : public testing::Test {
protected:
    const std::filesystem::path file_ = BuiltFile("tests/module/" ZEL_ODD_FOLDER "/ZEL_BRU.dll");
    Server server_{file_};
    RegistryScope registry_;
};

TEST_F(RegistrationTest, IsTheSameEveryTimeAndUndoneButForTheTypeLibrary) {
    for (const char call : {'+', '+', '-', '-', '+', '-'}) {
        EXPECT_EQ(call == '+' ? server_.Register() : server_.Unregister(), S_OK);
        EXPECT_EQ(Tree(registry_, file_),
                  TextOf(call == '+' ? ZEL_EXPECTED "registered.txt" : ZEL_EXPECTED "unregistered.txt"));
    }
}

TEST_F(RegistrationTest, StopsAtTheFirstRefusalAndIsHealedByTheNext) {
    registry_.Block(L"ZEL_BRU.ZEL_Collection");
    EXPECT_EQ(server_.Register(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    const std::string tree = registry_.Tree();
    EXPECT_TRUE(tree.find("ZEL_Header") != tree.npos && tree.find("ZEL_Definition") == tree.npos);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L"ZEL_BRU.ZEL_Collection");
    EXPECT_EQ(server_.Register(), S_OK);
    EXPECT_EQ(Tree(registry_, file_), TextOf(ZEL_EXPECTED "registered.txt"));
}

constexpr CLSID kRegistrar = {0x44EC053A, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};
constexpr IID kIRegistrar = {0x44EC053B, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

TEST(PlatformRegistrar, MakesTheSameOfTheScripts) {
    const std::filesystem::path file = BuiltFile("ZEL_BRU.dll");
    ComPtr<IPlatformRegistrar> registrar;
    ComPtr<ITypeLib> library;
    ASSERT_EQ(CoCreateInstance(kRegistrar, nullptr, CLSCTX_ALL, kIRegistrar, registrar.OutVoid()), S_OK);
    RegistryScope registry;
    EXPECT_EQ(registrar->AddReplacement(L"MODULE", file.c_str()), S_OK);
    for (UINT id = 102; id <= 105; ++id)
        EXPECT_EQ(registrar->ResourceRegisterSz(file.c_str(), MAKEINTRESOURCEW(id), L"REGISTRY"), S_OK);
    EXPECT_EQ(LoadTypeLib(file.c_str(), library.Out()), S_OK);
    EXPECT_EQ(RegisterTypeLib(library.Get(), file.wstring().data(), nullptr), S_OK);
    EXPECT_EQ(Tree(registry, file), TextOf(ZEL_EXPECTED "registered.txt"));
}

}  // namespace
}  // namespace zel
