#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Registrar.h"
#include "RegistryScope.h"

namespace zel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr wchar_t kModule[] = L"C:\\it's \u00FC b\u0142ank\\m.dll";
constexpr wchar_t kScript[] =
    L"HKCR { Plain = s 'it''s {' { val 'a b' = d 0xFFFFFFFF  val n = d 10 } "
    L"NoRemove Kept { ForceRemove {X} = s '%MODULE%, 1' { 'NoRemove' = s '' { val p = s 100%% } } } }";

class RegistrarTest : public testing::Test {
protected:
    RegistryScope registry_;
};

TEST_F(RegistrarTest, WritesWhatTheScriptSaysAndTakesItOutAgain) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Registrar::Register(kScript, kModule), S_OK);
        EXPECT_THAT(registry_.Tree(),
                    ElementsAre("Kept", "Kept\\{X}", "Kept\\{X}\\NoRemove",
                                "Kept\\{X}\\NoRemove|=", "Kept\\{X}\\NoRemove|p=100%",
                                "Kept\\{X}|=C:\\it's \u00FC b\u0142ank\\m.dll, 1", "Plain", "Plain|=it's {",
                                "Plain|a b=dword:4294967295", "Plain|n=dword:10"));
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Registrar::Unregister(kScript, kModule), S_OK);
        EXPECT_THAT(registry_.Tree(), ElementsAre("Kept"));
    }
}

TEST_F(RegistrarTest, LeavesAloneWhatOthersPutThere) {
    const wchar_t foreign[] =
        L"HKCR { Plain { val o = s 1 Other } Kept { val o = s 1 Other { {X} } {X} { Old { A { B } } } } }";
    ASSERT_EQ(Registrar::Register(foreign, L""), S_OK);
    EXPECT_EQ(Registrar::Register(kScript, kModule), S_OK);
    EXPECT_THAT(registry_.Tree(L"Kept\\{X}\\Old"), IsEmpty());
    EXPECT_EQ(Registrar::Unregister(kScript, kModule), S_OK);
    EXPECT_THAT(registry_.Tree(), ElementsAre("Kept", "Kept\\Other", "Kept\\Other\\{X}", "Kept|o=1", "Plain",
                                              "Plain\\Other", "Plain|o=1"));
}

TEST_F(RegistrarTest, ReturnsTheFirstRefusal) {
    registry_.Block(L"B");
    const wchar_t script[] = L"HKCR { A B { C } D }";
    EXPECT_EQ(Registrar::Register(script, L""), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_THAT(registry_.Tree(), ElementsAre("A", "B"));
    EXPECT_EQ(Registrar::Unregister(script, L""), S_OK);
    EXPECT_EQ(Registrar::Register(script, L""), S_OK);
    EXPECT_THAT(registry_.Tree(), ElementsAre("A", "B", "B\\C", "D"));
}

TEST_F(RegistrarTest, RefusesAMalformedScriptWhole) {
    std::vector<std::wstring> scripts = {L"A",
                                         L"HKCR",
                                         L"HKLM { A }",
                                         L"HKCR { A",
                                         L"HKCR { A } }",
                                         L"HKCR { val a = s b }",
                                         L"HKCR { A = }",
                                         L"HKCR { A = s }",
                                         L"HKCR { A = x b }",
                                         L"HKCR { A = d b }",
                                         L"HKCR { A = d 4294967296 }",
                                         L"HKCR { A = d 0x }",
                                         L"HKCR { A = s 'b }",
                                         L"HKCR { A = s %b% }",
                                         L"HKCR { A = s % }",
                                         L"HKCR { '' }",
                                         L"HKCR { A { val = s b } }",
                                         L"HKCR { NoRemove }",
                                         L"HKCR { = s b }"};
    std::wstring& deep = scripts.emplace_back(L"HKCR {");
    for (int i = 0; i < 100000; ++i) deep += L" A {";
    for (int i = 0; i <= 100000; ++i) deep += L" }";
    for (const std::wstring& script : scripts) {
        EXPECT_EQ(Registrar::Register(script, L""), HRESULT_FROM_WIN32(ERROR_INVALID_DATA)) << ToUtf8(script);
        EXPECT_THAT(registry_.Tree(), IsEmpty());
    }
}

}  // namespace
}  // namespace zel
