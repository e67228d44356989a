#include <tuple>

#include "Client.h"
#include "SmallStack.h"

namespace zel {
namespace {

using StoreTest = AutomationTest;

// A header of version v with both optional sections, as a fresh store writes it.
std::string FreshHeader(char version) {
    std::string header = Hex("07 'TRN4WIN' 00*3 40 10 01 00*2 00 00 00*89");
    header[17] = version;
    return header;
}

TEST_F(StoreTest, FreshOneSavesAnEmptyNewFile) {
    Store store;
    EXPECT_EQ(kDone, store.Save());
    EXPECT_TRUE(SameBytes(FreshHeader(SketchFile::kVersionOfNewFiles) + Hex("00 00*4 01 00"), FileBytes()));
}

TEST_F(StoreTest, SavesAndLoadsWhatEachVersionHolds) {
    const std::pair<char, const char*> versions[] = {{1, "01 06 04 'GLA1' 00*109 01 00 00"},
                                                     {2, "01 06 04 'GLA1' 00*109 07 01 00 00"},
                                                     {3, "01 06 04 'GLA1' 00*109 07 06 01 'S' 01 00 00"},
                                                     {4, "03 01 06 04 'GLA1' 00*109 07 06 01 'S' 01 00 00"}};
    for (const auto& [version, content] : versions) {
        Store store;
        store.header->put_FileVersion(version);
        store.object->put_DefinitionType(3);
        const auto definition = AddNew(*store.definitions, L"GLA1");
        definition->put_Hidden(7);
        Put(*definition, L"SubtractAreaCode", L"S");
        store.definitions->Add(Variant::Int(5).Get());
        EXPECT_EQ(kDone, store.Save());
        EXPECT_TRUE(SameBytes(FreshHeader(version) + Hex(content), FileBytes()));
        store.object->put_DefinitionType(9);
        EXPECT_EQ(kDone, store.Load());
        EXPECT_EQ(version < 4 ? L"9" : L"3", Get(*store.object, L"DefinitionType"));
    }
}

TEST_F(StoreTest, SaveDropsWhatStandsBehindATextsEnd) {
    const auto file = [](const char* name, const char* creator) {
        std::string header = FreshHeader(1);
        header.replace(26, 10, Hex(creator));
        return header + Hex("01 06 02 FC 81 00*9") + Hex(name) + Hex("00*79 01 00 00");
    };
    Store store;
    WriteFile(file("02 E4 00 'BC' 00*16", "'me' 00 'before' 00"));
    EXPECT_EQ(kDone, store.Load());
    EXPECT_EQ(kDone, store.Save());
    EXPECT_TRUE(SameBytes(file("01 E4 00*19", "'me' 00*8"), FileBytes()));
}

TEST_F(StoreTest, SaveRefusesVersionsAndKeepsTheOneItRefused) {
    for (const unsigned char version : {0, SketchFile::kNewestVersion + 1, 255}) {
        Store store;
        WriteFile("untouched");
        store.header->put_FileVersion(version);
        EXPECT_EQ(kVersionRefused, store.Save());
        EXPECT_EQ("untouched", FileBytes());
        EXPECT_EQ(version == 0 ? kDone : kVersionRefused, store.Load(kMissing));
        EXPECT_EQ(S_FALSE, store.object->SaveToFile(nullptr, nullptr));
    }
}

TEST_F(StoreTest, LoadJudgesByTheVersionAlone) {
    const std::string list = Hex("01 06 01 'A' 00*109 01 00");
    const std::tuple<std::string, Outcome, const wchar_t*> cases[] = {
        {FreshHeader(SketchFile::kNewestVersion + 1) + list + Hex("00"), kVersionRefused, L"OLD"},
        {FreshHeader(0) + list + Hex("06 02 'B'"), kDone, L"A B"},
        {"", kDone, L""}};
    for (const auto& [bytes, outcome, tree] : cases) {
        WriteFile(bytes);
        Store store;
        AddNew(*store.definitions, L"OLD");
        EXPECT_EQ(outcome, store.Load()) << bytes.size();
        EXPECT_EQ(tree, Tree(*store.definitions)) << bytes.size();
    }
}

TEST_F(StoreTest, LoadOfAMissingFileDiscardsEdits) {
    Store store;
    AddNew(*store.definitions, L"SAVED");
    EXPECT_EQ(kDone, store.Save());
    AddNew(*store.definitions, L"EDITED");
    store.header->put_Type(9);
    EXPECT_EQ(kDone, store.Load(kMissing));
    EXPECT_EQ(L"SAVED", Tree(*store.definitions));
    EXPECT_EQ(L"0", Get(*store.header, L"Type"));
}

TEST_F(StoreTest, PathThatCannotBeConvertedNamesNoFile) {
    Store store;
    EXPECT_EQ(kNotOpened, store.Save(std::wstring(kFile) + L'\x4e2d'));
}

TEST_F(StoreTest, ObjectsOutliveItAndHoldTheModule) {
    Store store;
    const auto inner = AddNew(AddNew(*store.definitions, L"A")->Members(), L"B");
    EXPECT_EQ(7, Module::LockCount());  // the store, the header, both definitions and three collections
    store.object.Reset();
    store.definitions.Reset();
    EXPECT_EQ(L"B", Get(*inner, L"AreaCode"));
    EXPECT_EQ(3, Module::LockCount());
}

// A chain of members deeper than any call stack is published, gathered and released.
TEST_F(StoreTest, DepthCostsNoStack) {
    constexpr int kDepth = 100000;
    const std::string level = Hex("06 01 'A' 00*110 06 00 01");
    std::string bytes = FreshHeader(5) + Hex("00*5 01");
    for (int i = 0; i < kDepth; ++i) bytes += level;
    bytes.append(kDepth + 1, '\0');
    WriteFile(bytes);
    OnSmallStack([] {
        Store store;
        EXPECT_EQ(kDone, store.Load());
        EXPECT_EQ(kDone, store.Save());
    });
    EXPECT_TRUE(FileBytes() == bytes);
}

}  // namespace
}  // namespace zel
