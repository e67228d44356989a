#include "zel/registration/Registrar.h"

#include <gtest/gtest.h>

#include <sstream>

#include "RegistryScope.h"

namespace zel {
namespace {

constexpr wchar_t kModule[] = L"C:\\it's \u00FC b\u0142ank\\%MODULE%.dll";
constexpr wchar_t kScript[] =
    L"HKCR\t{ NoRemove Lone\r\nPlain = s 'it''s {' { val 'a b' = d 0xFFFFFFFF  val n = d 10 } "
    L"NoRemove Kept { ForceRemove {X} = s '%MODULE%, 1' { 'NoRemove' = s '' { val p = s 100%% } } } }";

constexpr char kTree[] = R"(Kept
    o=1
    Other
        {X}
    {X}
        @=C:\it's ü błank\%MODULE%.dll, 1
        NoRemove
            @=
            p=100%
Lone
Plain
    @=it's {
    a b=4294967295
    n=10
    o=1
    Other
)";

class RegistrarTest : public testing::Test {
protected:
    RegistryScope registry_;
};

TEST_F(RegistrarTest, WritesWhatTheScriptSaysAndTakesOutThatAlone) {
    const wchar_t others[] = L"HKCR { Plain { val o = s 1 Other } Kept { val o = s 1 Other { {X} } } Lone }";
    ASSERT_EQ(Registrar::Register(others, L""), S_OK);
    const std::string before = registry_.Tree();
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Registrar::Register(L"HKCR { Kept { {X} { Old { A { B } } } } }", L""), S_OK);
        EXPECT_EQ(Registrar::Register(kScript, kModule), S_OK);
        EXPECT_EQ(registry_.Tree(), kTree);
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Registrar::Unregister(kScript, kModule), S_OK);
        EXPECT_EQ(registry_.Tree(), before);
    }
}

TEST_F(RegistrarTest, StopsWhereAKeyIsRefused) {
    registry_.Block(L"Blocked");
    EXPECT_EQ(Registrar::Register(L"HKCR { Blocked { Below } D }", L""),
              HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_EQ(registry_.Tree(), "Blocked\n");
}

TEST_F(RegistrarTest, RefusesAMalformedScriptWhole) {
    std::wstring deep = L"HKCR {";
    for (int i = 0; i < 100000; ++i) deep += L" A {";
    for (int i = 0; i <= 100000; ++i) deep += L" }";
    std::vector<std::wstring> scripts = {L"A", L"HKCR", L"HKLM { A }", L"HKCR { A", L"HKCR { = s b }", deep};
    std::wistringstream bodies(
        LR"(A { val = s b }; A }; val a = s b; A =; A = s; A = x b; A = d b; A = d 0x;
        A = d 4294967296; ''; A = s 'b; A = s %b%; A = s %; A {; NoRemove)");
    for (std::wstring body; std::getline(bodies, body, L';');) scripts.push_back(L"HKCR { B " + body + L" }");
    for (const std::wstring& script : scripts) {
        EXPECT_EQ(Registrar::Register(script, kModule), HRESULT_FROM_WIN32(ERROR_INVALID_DATA))
            << ToUtf8(script);
        EXPECT_EQ(registry_.Tree(), "");
    }
}

}  // namespace
}  // namespace zel
