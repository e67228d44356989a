#include <cstring>
#include <map>

#include "Client.h"

namespace zel {
namespace {

using Properties = AutomationTest;

// The lines of properties.txt are in the order of the file.
TEST_F(Properties, AreCutAndStandInTheFileAndComeBack) {
    Store store, other;
    const auto header = Make<ZEL_Header>();
    const auto definition = AddNew(*store.definitions, L"");
    std::map<std::wstring, IDispatch*> objects{
        {L"Store", store.object.Get()}, {L"Header", header.Get()}, {L"Definition", definition.Get()}};
    std::wifstream table(ZEL_PROPERTIES);
    std::wstring object, name, initially, put, kept, bytes, expected;
    std::getline(table, bytes);  // the headings
    while (table >> object >> name >> initially >> put >> kept && std::getline(table, bytes)) {
        EXPECT_EQ(initially == L"-" ? L"" : initially, Get(*objects[object], name.c_str())) << name;
        Put(*objects[object], name.c_str(), put);
        EXPECT_EQ(kept, Get(*objects[object], name.c_str())) << name;
        expected += bytes;
    }
    EXPECT_EQ(S_OK, store.object->put_Header(header.Get()));
    EXPECT_EQ(kDone, store.Save());
    EXPECT_EQ(SketchFile::kNewestVersion, FileBytes()[17]) << "the table lacks what is new";
    EXPECT_TRUE(SameBytes(Hex({expected.begin(), expected.end()}), FileBytes()));
    EXPECT_EQ(kDone, other.Load());
    EXPECT_EQ(kDone, other.Save());
    EXPECT_TRUE(SameBytes(Hex({expected.begin(), expected.end()}), FileBytes()));
}

TEST_F(Properties, TakeAnyTextAndAnyDouble) {
    const auto definition = Make<ZEL_Definition>();
    for (const wchar_t* name : {L"AreaCode", L"AreaName"}) {
        Put(*definition, name, L"\x00fc\x20ac");
        EXPECT_EQ(L"\x00fc\x20ac", Get(*definition, name));
    }
    definition->put_AreaCode(nullptr);
    definition->put_AreaName(nullptr);
    EXPECT_EQ(L"", Get(*definition, L"AreaCode") + Get(*definition, L"AreaName"));
    Put(*definition, L"AreaCode", std::wstring(300, L'x'));
    EXPECT_EQ(300u, Get(*definition, L"AreaCode").size());
    // A number that a floating-point register on its way would quiet.
    VARIANT signalling, got;
    V_VT(&signalling) = VT_R8;
    V_UI8(&signalling) = 0xfff4000000000001;
    Call(*definition, L"Multiplier", DISPATCH_PROPERTYPUT, &signalling, nullptr);
    definition->get_Multiplier(&V_R8(&got));
    EXPECT_EQ(V_UI8(&signalling), V_UI8(&got));
}

TEST_F(Properties, Answer1AfterACodeAndForNullPointers) {
    Store store;
    const auto definition = Make<ZEL_Definition>();
    Bstr text(L"previous");
    EXPECT_EQ(S_FALSE, definition->get_AreaCode(text.InOut()));
    EXPECT_EQ(S_FALSE, definition->get_AreaCode(nullptr));
    EXPECT_EQ(S_OK, definition->get_AreaName(text.InOut()));
    EXPECT_EQ(S_FALSE, definition->get_AreaName(nullptr));
    EXPECT_EQ(S_FALSE, definition->get_Hidden(nullptr));
    EXPECT_EQ(S_FALSE, definition->get_Multiplier(nullptr));
    EXPECT_EQ(S_FALSE, definition->get_Members(nullptr));
    EXPECT_EQ(S_FALSE, definition->put_Members(nullptr));
    EXPECT_EQ(S_FALSE, store.object->get_Header(nullptr));
    EXPECT_EQ(S_FALSE, store.object->put_Header(nullptr));
    EXPECT_EQ(S_FALSE, store.object->put_Definitions(nullptr));
}

}  // namespace
}  // namespace zel
