#include <cstring>

#include "Client.h"

namespace zel {
namespace {

using GetText = HRESULT (STDMETHODCALLTYPE IZEL_Definition::*)(BSTR*);
using PutText = HRESULT (STDMETHODCALLTYPE IZEL_Definition::*)(BSTR);

TEST(Definition, Texts) {
    const std::wstring longText(300, L'x');
    struct Case {
        const char* name;
        GetText get;
        PutText put;
        std::size_t kept;
        HRESULT result;  // a code's getter answers 1 after it succeeded
    };
#define TEXT_CASE(name, kept, result) \
    { #name, &IZEL_Definition::get_##name, &IZEL_Definition::put_##name, kept, result }
    const Case cases[] = {TEXT_CASE(AreaCode, 300, S_FALSE), TEXT_CASE(SubtractAreaCode, 300, S_FALSE),
                          TEXT_CASE(AreaName, 19, S_OK), TEXT_CASE(AreaDescription, 19, S_OK),
                          TEXT_CASE(SegmentStyle, 31, S_OK)};
    for (const Case& c : cases) {
        const DefinitionPtr definition = Server::NewDefinition();
        HRESULT result = -1;
        EXPECT_EQ(L"", Get(definition.GetInterfacePtr(), c.get, &result)) << c.name;
        EXPECT_EQ(c.result, result) << c.name;
        EXPECT_EQ(S_OK, (definition->*c.put)(Text(longText.c_str())));
        EXPECT_EQ(c.kept, Get(definition.GetInterfacePtr(), c.get, &result).size()) << c.name;
        EXPECT_EQ(c.result, result) << c.name;
        EXPECT_EQ(S_OK, (definition->*c.put)(nullptr));
        EXPECT_EQ(L"", Get(definition.GetInterfacePtr(), c.get)) << c.name;
        EXPECT_EQ(S_FALSE, (definition->*c.get)(nullptr)) << c.name;
    }
}

template <class Value>
void CheckNumber(const char* name, HRESULT (STDMETHODCALLTYPE IZEL_Definition::*get)(Value*),
                 HRESULT (STDMETHODCALLTYPE IZEL_Definition::*put)(Value), Value value) {
    const DefinitionPtr definition = Server::NewDefinition();
    EXPECT_EQ(Value{}, Get(definition.GetInterfacePtr(), get)) << name;
    EXPECT_EQ(S_OK, (definition->*put)(value)) << name;
    EXPECT_EQ(value, Get(definition.GetInterfacePtr(), get)) << name;
    EXPECT_EQ(S_FALSE, (definition->*get)(nullptr)) << name;
}
#define CHECK_NUMBER(name, value) \
    CheckNumber(#name, &IZEL_Definition::get_##name, &IZEL_Definition::put_##name, value)

TEST(Definition, NumbersAreStoredAsTheyCome) {
    const unsigned char byte = 255;
    const unsigned short word = 65535;
    CHECK_NUMBER(CalcType, byte);
    CHECK_NUMBER(DimensionType, byte);
    CHECK_NUMBER(Hidden, byte);
    CHECK_NUMBER(PostArea, byte);
    CHECK_NUMBER(PostDescription, byte);
    CHECK_NUMBER(FillColor, word);
    CHECK_NUMBER(FillPattern, word);
    CHECK_NUMBER(LineColor, word);
    CHECK_NUMBER(Multiplier, -0.5);
    CHECK_NUMBER(WallHeight, 2.4);
    CHECK_NUMBER(WallWidth, 1e300);
}

// A double on its way through a property, as the file has it: no floating-point register in between.
TEST(Definition, DoublesKeepEveryBit) {
    const TemporaryFile file;
    const unsigned char signalling[8] = {1, 0, 0, 0, 0, 0, 0xf4, 0xff};
    StorePtr store = Server::NewStore();
    AddNew(Definitions(store), L"A");
    LONG result;
    store->SaveToFile(file, &result);
    std::string bytes = file.Bytes();
    const std::size_t multiplier = 107 + 5 + 1 + 3;
    std::memcpy(&bytes[multiplier], signalling, sizeof signalling);
    file.Write(bytes);
    store->LoadFromFile(file, &result);
    unsigned char value[8] = {};
    At(Definitions(store), 0)->get_Multiplier(reinterpret_cast<double*>(value));
    EXPECT_EQ(0, std::memcmp(value, signalling, sizeof value));
    store->SaveToFile(file, &result);
    EXPECT_TRUE(bytes == file.Bytes());
}

TEST(Definition, MembersAreOneLiveCollection) {
    const DefinitionPtr definition = Server::NewDefinition();
    const CollectionPtr members = Members(definition);
    EXPECT_EQ(0, Count(members));
    EXPECT_EQ(2u, References(members));
    const CollectionPtr given = Server::NewCollection();
    AddNew(given, L"A");
    const DefinitionPtr last = AddNew(given, L"B");
    EXPECT_EQ(S_OK, definition->put_Members(given));
    EXPECT_EQ(L"A B", Tree(members));
    last->Release();  // the reference that copying leaves
    EXPECT_EQ(1u, References(given));
    EXPECT_EQ(S_OK, definition->put_Members(members));
    EXPECT_EQ(L"A B", Tree(members));
    EXPECT_EQ(S_FALSE, definition->get_Members(nullptr));
    EXPECT_EQ(S_FALSE, definition->put_Members(nullptr));
}

}  // namespace
}  // namespace zel
