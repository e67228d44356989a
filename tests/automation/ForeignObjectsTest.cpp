#include "Foreign.h"

#include "HexDump.h"

namespace zel {
namespace {

TEST(ForeignObjects, HeaderThatRefusesLeavesDefaults) {
    const StorePtr store = Server::NewStore();
    ForeignHeader header;
    EXPECT_EQ(S_OK, store->put_Header(&header));
    EXPECT_EQ(1u, header.references);
    IZEL_Header* live = Header(store);
    EXPECT_EQ(L"client", Get(live, &IZEL_Header::get_CreatedBy));
    EXPECT_EQ(L"", Get(live, &IZEL_Header::get_CreatedByVersion));
    EXPECT_EQ(L"TRN4WIN", Get(live, &IZEL_Header::get_Signature));
    EXPECT_EQ(5, Get(live, &IZEL_Header::get_Type));
    EXPECT_EQ(272, Get(live, &IZEL_Header::get_Flags));
    EXPECT_EQ(0, Get(live, &IZEL_Header::get_FileVersion));
}

TEST(ForeignObjects, DefinitionsAreSavedAtEveryDepth) {
    const TemporaryFile file;
    ForeignDefinition inner(L"INNER"), outer(L"OUTER");
    ForeignHeader noDefinition;
    ForeignCollection members({&noDefinition, &inner}), roots({&outer});
    outer.members = &members;
    {
        const StorePtr store = Server::NewStore();
        EXPECT_EQ(S_OK, store->put_Definitions(&roots));
        EXPECT_EQ(VT_UI4, roots.indexType);
        const DefinitionPtr own = AddNew(Definitions(store), L"OWN");
        EXPECT_EQ(S_OK, own->put_Members(&members));
        LONG result;
        EXPECT_EQ(S_OK, store->SaveToFile(file, &result));
        EXPECT_EQ(VT_I4, members.indexType);
        const StorePtr other = Server::NewStore();
        EXPECT_EQ(S_OK, other->LoadFromFile(file, &result));
        EXPECT_EQ(L"OUTER(INNER) OWN(INNER)", Tree(Definitions(other)));
    }
    // Each collection that copied kept one reference to the last item it fetched.
    EXPECT_EQ(2u, outer.references);
    EXPECT_EQ(2u, inner.references);
    EXPECT_EQ(1u, noDefinition.references);
    EXPECT_EQ(1u, members.references);
    EXPECT_EQ(1u, roots.references);
}

TEST(ForeignObjects, DefinitionAmongItsDescendantsIsSavedOnce) {
    const TemporaryFile file;
    const StorePtr store = Server::NewStore();
    const DefinitionPtr a = AddNew(Definitions(store), L"A");
    const DefinitionPtr b = AddNew(Members(a), L"B");
    Members(b)->Add(ObjectIn(a));
    AddNew(Members(b), L"C");
    Definitions(store)->Add(ObjectIn(b));
    LONG result;
    EXPECT_EQ(S_OK, store->SaveToFile(file, &result));
    const StorePtr other = Server::NewStore();
    EXPECT_EQ(S_OK, other->LoadFromFile(file, &result));
    EXPECT_EQ(L"A(B(C)) B(A C)", Tree(Definitions(other)));
    // The circle would keep itself alive.
    Members(b)->Remove(Int(0));
}

}  // namespace
}  // namespace zel
