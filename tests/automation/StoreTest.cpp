#include "Client.h"
#include "HexDump.h"

namespace zel {
namespace {

// A header of version v with both optional sections, as a fresh store writes it.
std::string FreshHeader(int version) {
    std::string header = Hex("07 'TRN4WIN' 00*3 40 10 01 00*2 00 00 00*89");
    header[17] = static_cast<char>(version);
    return header;
}

struct Outcome {
    HRESULT returned;
    LONG result;
    bool operator==(const Outcome& other) const {
        return returned == other.returned && result == other.result;
    }
};
void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << "returned " << outcome.returned << ", Result " << outcome.result;
}

Outcome Load(IBRU_Store* store, BSTR path) {
    Outcome outcome{-1, -1};
    outcome.returned = store->LoadFromFile(path, &outcome.result);
    return outcome;
}
Outcome Save(IBRU_Store* store, BSTR path) {
    Outcome outcome{-1, -1};
    outcome.returned = store->SaveToFile(path, &outcome.result);
    return outcome;
}

const Outcome kDone{0, 0}, kNothingDone{1, 0}, kVersionRefused{1, 1};
const Text kMissing(L"no such folder\\no such file");

TEST(Store, FreshOneSavesAnEmptyFileOfVersion5) {
    const TemporaryFile file;
    const StorePtr store = Server::NewStore();
    EXPECT_EQ(5, Get(Header(store).GetInterfacePtr(), &IZEL_Header::get_FileVersion));
    EXPECT_EQ(kDone, Load(store, kMissing));
    EXPECT_EQ(0, Count(Definitions(store)));
    EXPECT_EQ(kDone, Save(store, file));
    EXPECT_TRUE(SameBytes(FreshHeader(5) + Hex("00 00*4 01 00"), file.Bytes()));
}

TEST(Store, SavesWhatEachVersionHolds) {
    struct Case {
        unsigned char version;
        std::string trailer, hidden, subtract;
    };
    for (const Case& c : {Case{1, "", "", ""},
                          {2, "", "07", ""},
                          {3, "", "07", "06 01 'S'"},
                          {4, "03", "07", "06 01 'S'"},
                          {5, "03 04 03 02 01", "07", "06 01 'S'"}}) {
        const TemporaryFile file;
        const StorePtr store = Server::NewStore();
        Header(store)->put_FileVersion(c.version);
        store->put_DefinitionType(3);
        store->put_Flags(0x01020304);
        const DefinitionPtr definition = AddNew(Definitions(store), L"GLA1");
        definition->put_Hidden(7);
        definition->put_SubtractAreaCode(Text(L"S"));
        AddNew(Members(definition), L"M")->put_Hidden(7);
        Definitions(store)->Add(Int(5));
        EXPECT_EQ(kDone, Save(store, file));
        const std::string member =
            Hex("06 01 'M' 00*109 " + c.hidden) + (c.version < 3 ? "" : Hex("06 00")) + Hex("01 00");
        EXPECT_TRUE(SameBytes(FreshHeader(c.version) +
                                  Hex(c.trailer + " 01 06 04 'GLA1' 00*109 " + c.hidden + " " + c.subtract) +
                                  Hex("01") + member + Hex("00 00"),
                              file.Bytes()));

        const StorePtr other = Server::NewStore();
        other->put_DefinitionType(9);
        other->put_Flags(10);
        EXPECT_EQ(kDone, Load(other, file));
        EXPECT_EQ(L"GLA1(M)", Tree(Definitions(other)));
        EXPECT_EQ(c.version >= 4 ? 3 : 9, Get(other.GetInterfacePtr(), &IBRU_Store::get_DefinitionType));
        EXPECT_EQ(c.version >= 5 ? 0x01020304 : 10, Get(other.GetInterfacePtr(), &IBRU_Store::get_Flags));
    }
}

TEST(Store, RefusesVersionsAndKeepsTheOneItRefused) {
    struct Case {
        unsigned char version;
        Outcome save, loadOfNothingAfterwards;
    };
    for (const Case& c : {Case{0, kVersionRefused, kDone},
                          {1, kDone, kDone},
                          {5, kDone, kDone},
                          {6, kVersionRefused, kVersionRefused},
                          {255, kVersionRefused, kVersionRefused}}) {
        const TemporaryFile file;
        file.Write("untouched");
        const StorePtr store = Server::NewStore();
        Header(store)->put_FileVersion(c.version);
        AddNew(Definitions(store), L"KEPT");
        EXPECT_EQ(c.save, Save(store, file)) << int{c.version};
        EXPECT_EQ(c.save == kVersionRefused, file.Bytes() == "untouched") << int{c.version};
        EXPECT_EQ(c.loadOfNothingAfterwards, Load(store, kMissing)) << int{c.version};
        EXPECT_EQ(L"KEPT", Tree(Definitions(store))) << int{c.version};
        EXPECT_EQ(c.version, Get(Header(store).GetInterfacePtr(), &IZEL_Header::get_FileVersion));
    }
}

TEST(Store, LoadJudgesByTheVersionAlone) {
    const std::string record = Hex("06 01 'A' 00*109 01 00");
    struct Case {
        const char* name;
        std::string bytes;
        Outcome load;
        const wchar_t* tree;
    };
    for (const Case& c :
         {Case{"version 0", FreshHeader(0) + Hex("01") + record + Hex("00"), kDone, L"A"},
          {"version 6", FreshHeader(6) + Hex("01") + record + Hex("00"), kVersionRefused, L"OLD"},
          {"list not closed", FreshHeader(0) + Hex("01") + record, kDone, L"A"},
          {"cut in a record", FreshHeader(0) + Hex("01") + record + Hex("06 02 'B'"), kDone, L"A B"},
          {"no list", FreshHeader(0), kDone, L""},
          {"an empty file keeps the version that was there", "", kDone, L""}}) {
        const TemporaryFile file;
        file.Write(c.bytes);
        const StorePtr store = Server::NewStore();
        AddNew(Definitions(store), L"OLD");
        EXPECT_EQ(c.load, Load(store, file)) << c.name;
        EXPECT_EQ(c.tree, Tree(Definitions(store))) << c.name;
    }
}

TEST(Store, ReloadOfAMissingFileDiscardsEdits) {
    const TemporaryFile file;
    const StorePtr store = Server::NewStore();
    AddNew(Definitions(store), L"SAVED");
    EXPECT_EQ(kDone, Save(store, file));
    AddNew(Definitions(store), L"EDITED");
    Header(store)->put_Type(9);
    EXPECT_EQ(kDone, Load(store, kMissing));
    EXPECT_EQ(L"SAVED", Tree(Definitions(store)));
    EXPECT_EQ(0, Get(Header(store).GetInterfacePtr(), &IZEL_Header::get_Type));
}

TEST(Store, NullPointersAndPathsThatDoNotOpen) {
    const StorePtr store = Server::NewStore();
    EXPECT_EQ(1, store->get_Header(nullptr));
    EXPECT_EQ(1, store->put_Header(nullptr));
    EXPECT_EQ(1, store->get_Definitions(nullptr));
    EXPECT_EQ(1, store->put_Definitions(nullptr));
    EXPECT_EQ(1, store->get_DefinitionType(nullptr));
    EXPECT_EQ(1, store->get_Flags(nullptr));
    EXPECT_EQ(0, store->LoadFromFile(nullptr, nullptr));
    EXPECT_EQ(1, store->SaveToFile(nullptr, nullptr));
    EXPECT_EQ(kNothingDone, Save(store, kMissing));
    // A name that the C library cannot convert names no file, not the part of it that could be converted.
    const TemporaryFile file;
    EXPECT_EQ(kNothingDone, Save(store, Text(L"store_test.tmp\x4e2d")));
    EXPECT_EQ("", file.Bytes());
    // A name ends at its first NUL, whatever the string's own length.
    EXPECT_EQ(kDone, Save(store, Text(L"store_test.tmp")));
    Header(store)->put_FileVersion(6);
    EXPECT_EQ(1, store->SaveToFile(nullptr, nullptr));
    EXPECT_EQ(1, store->LoadFromFile(nullptr, nullptr));
}

TEST(Store, PutsCopyTheHeaderAndShareTheDefinitions) {
    const StorePtr store = Server::NewStore();
    const HeaderPtr header = Server::NewHeader();
    header->put_CreatedBy(Text(L"Anna"));
    EXPECT_EQ(0, store->put_Header(header));
    header->put_CreatedBy(Text(L"Berta"));
    EXPECT_EQ(L"Anna", Get(Header(store).GetInterfacePtr(), &IZEL_Header::get_CreatedBy));
    EXPECT_EQ(1u, References(header));

    const CollectionPtr given = Server::NewCollection();
    const DefinitionPtr shared = AddNew(given, L"SHARED");
    AddNew(Definitions(store), L"GONE");
    EXPECT_EQ(0, store->put_Definitions(given));
    shared->put_AreaCode(Text(L"EDITED"));
    EXPECT_EQ(L"EDITED", Tree(Definitions(store)));
    shared->Release();  // the reference that copying leaves
    EXPECT_EQ(Definitions(store).GetInterfacePtr(), Definitions(store).GetInterfacePtr());
}

TEST(Store, EveryObjectHoldsTheModule) {
    EXPECT_TRUE(Server::CanUnload());
    const TemporaryFile file;
    StorePtr store = Server::NewStore();
    AddNew(Members(AddNew(Definitions(store), L"A")), L"B");
    EXPECT_EQ(kDone, Save(store, file));
    EXPECT_EQ(kDone, Load(store, file));
    // What the store made outlives it on the references of clients.
    HeaderPtr header = Header(store);
    DefinitionPtr inner = At(Members(At(Definitions(store), 0)), 0);
    store = nullptr;
    EXPECT_EQ(1u, References(header));
    EXPECT_EQ(1u, References(inner));
    EXPECT_EQ(L"B", Get(inner.GetInterfacePtr(), &IZEL_Definition::get_AreaCode));
    header = nullptr;
    EXPECT_FALSE(Server::CanUnload());
    inner = nullptr;
    EXPECT_TRUE(Server::CanUnload());
}

// A chain of members deeper than any call stack is published, gathered, edited and released.
DWORD WINAPI NestDeep(void*) {
    constexpr int kDepth = 100000;
    const TemporaryFile file;
    std::string bytes = FreshHeader(5) + Hex("00*5 01");
    for (int i = 0; i < kDepth; ++i) bytes += Hex("06 01 'A' 00*110 06 00 01");
    bytes.append(kDepth + 1, '\0');
    file.Write(bytes);
    StorePtr store = Server::NewStore();
    EXPECT_EQ(kDone, Load(store, file));
    EXPECT_EQ(kDone, Load(store, file));
    EXPECT_EQ(kDone, Save(store, file));
    EXPECT_TRUE(file.Bytes() == bytes);
    DefinitionPtr kept = At(Members(At(Definitions(store), 0)), 0);
    store = nullptr;
    EXPECT_EQ(1u, References(kept));
    kept = nullptr;
    EXPECT_TRUE(Server::CanUnload());
    return 0;
}

TEST(Store, DepthCostsNoStack) {
    const HANDLE thread =
        CreateThread(nullptr, 65536, NestDeep, nullptr, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread, INFINITE));
    CloseHandle(thread);
}

}  // namespace
}  // namespace zel
