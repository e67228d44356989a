// What steps.txt cannot ask the store: what its calls return beside their result, and what null pointers do.

#include "Client.h"

namespace zel {
namespace {

using StoreTest = AutomationTest;

TEST_F(StoreTest, AnswersBesideTheResult) {
    Store store;
    EXPECT_EQ(std::to_wstring(SketchFile::kVersionOfNewFiles), Get(*store.header, L"FileVersion"));
    EXPECT_EQ(kDone, store.Save());
    EXPECT_EQ(kDone, store.Load());
    EXPECT_EQ(kDone, store.Load(kMissing));
    EXPECT_EQ(kNotOpened, store.Save(kMissing));
    EXPECT_EQ(kNotOpened, store.Save(std::wstring(kFile) + L'\x4e2d'));
    store.header->put_FileVersion(SketchFile::kNewestVersion + 1);
    EXPECT_EQ(kVersionRefused, store.Save());
    EXPECT_EQ(kVersionRefused, store.Load(kMissing));
    EXPECT_EQ(S_FALSE, store.object->SaveToFile(nullptr, nullptr));
}

TEST_F(StoreTest, NullPointersAreRefusedWith1AsIsTheGetOfACode) {
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

TEST_F(StoreTest, ObjectsHoldTheModule) {
    Store store;
    const auto inner = AddNew(AddNew(*store.definitions, L"A")->Members(), L"B");
    EXPECT_EQ(7, Module::LockCount());  // the store, the header, both definitions and three collections
    store.object.Reset();
    store.definitions.Reset();
    EXPECT_EQ(3, Module::LockCount());
}

}  // namespace
}  // namespace zel
