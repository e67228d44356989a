#include "Client.h"

namespace zel {
namespace {

CollectionPtr Numbers(int count) {
    CollectionPtr items = Server::NewCollection();
    for (int i = 0; i < count; ++i) items->Add(Int(i));
    return items;
}

std::vector<LONG> Values(IZEL_Collection* items) {
    std::vector<LONG> values;
    for (LONG i = 0; i < Count(items); ++i) {
        VARIANT item = Int(0, VT_EMPTY);
        EXPECT_EQ(S_OK, items->Item(Int(i), &item));
        values.push_back(V_I4(&item));
    }
    return values;
}

TEST(Collection, PositionsOutOfRangeDoNothing) {
    const CollectionPtr items = Numbers(2);
    VARIANT text;
    V_VT(&text) = VT_BSTR;
    V_BSTR(&text) = SysAllocString(L"0");
    for (const VARIANT& index : {Int(2), Int(-1), Int(2, VT_UI4), text}) {
        VARIANT item = Int(77);
        EXPECT_EQ(S_OK, items->Item(index, &item));
        EXPECT_EQ(77, V_I4(&item));
        EXPECT_EQ(S_OK, items->Remove(index));
    }
    SysFreeString(V_BSTR(&text));
    EXPECT_EQ(S_OK, items->Item(Int(0), nullptr));
    EXPECT_EQ(S_OK, items->get_Count(nullptr));
    EXPECT_EQ(S_OK, items->Copy(nullptr));
    EXPECT_EQ(2, Count(items));
    // The type of an index does not matter, only its first 32 bits do.
    VARIANT item = Int(0, VT_EMPTY);
    EXPECT_EQ(S_OK, items->Item(Int(1, VT_BOOL), &item));
    EXPECT_EQ(1, V_I4(&item));
}

TEST(Collection, RemovalKeepsTheOrder) {
    const CollectionPtr items = Numbers(7);
    for (const LONG position : {3, 0, 0, 2, 3}) items->Remove(Int(position));
    EXPECT_EQ((std::vector<LONG>{2, 4, 6}), Values(items));
    items->Remove(Int(0, VT_UI4));
    items->Add(Int(9));
    EXPECT_EQ((std::vector<LONG>{4, 6, 9}), Values(items));
    while (Count(items) > 0) items->Remove(Int(0));
    items->Remove(Int(0));
    EXPECT_EQ(0, Count(items));
}

TEST(Collection, OwnsWhatItHolds) {
    const DefinitionPtr object = Server::NewDefinition();
    {
        const CollectionPtr items = Server::NewCollection();
        items->Add(ObjectIn(object));
        items->Add(ObjectIn(object));
        EXPECT_EQ(3u, References(object));
        VARIANT item = ObjectIn(object);
        object->AddRef();
        items->Item(Int(0), &item);  // releases what the place held
        EXPECT_EQ(4u, References(object));
        VariantClear(&item);
        items->Remove(Int(0));
        EXPECT_EQ(2u, References(object));
    }
    EXPECT_EQ(1u, References(object));
    // What a value refers to is stored, never the reference.
    const CollectionPtr items = Server::NewCollection();
    LONG local = 5;
    VARIANT reference = Int(0, VT_BYREF | VT_I4);
    V_I4REF(&reference) = &local;
    items->Add(reference);
    local = 6;
    EXPECT_EQ((std::vector<LONG>{5}), Values(items));
}

TEST(Collection, CopySharesItemsAndKeepsAReferenceToTheLast) {
    const CollectionPtr from = Server::NewCollection(), to = Numbers(3);
    const DefinitionPtr first = Server::NewDefinition(), last = Server::NewDefinition();
    from->Add(ObjectIn(first));
    from->Add(ObjectIn(last));
    EXPECT_EQ(S_OK, to->Copy(from));
    EXPECT_EQ(2, Count(to));
    EXPECT_EQ(3u, References(first));
    EXPECT_EQ(4u, References(last));
    last->Release();  // the one that stays
    EXPECT_EQ(S_OK, to->Copy(to));
    EXPECT_EQ(2, Count(to));
    EXPECT_EQ(3u, References(last));
    EXPECT_EQ(S_OK, to->Copy(Server::NewCollection()));
    EXPECT_EQ(0, Count(to));
    EXPECT_EQ(2u, References(last));
}

TEST(Collection, EnumeratesASnapshot) {
    const CollectionPtr items = Numbers(2);
    IUnknown* unknown = nullptr;
    ASSERT_EQ(S_OK, items->get__NewEnum(&unknown));
    _com_ptr_t<_com_IIID<IEnumVARIANT, &__uuidof(IEnumVARIANT)>> enumerator(unknown);
    unknown->Release();
    items->Add(Int(2));
    items->Remove(Int(0));
    VARIANT values[3];
    ULONG fetched = 0;
    EXPECT_EQ(S_FALSE, enumerator->Next(3, values, &fetched));
    ASSERT_EQ(2u, fetched);
    EXPECT_EQ(0, V_I4(&values[0]));
    EXPECT_EQ(1, V_I4(&values[1]));
    EXPECT_EQ(E_POINTER, items->get__NewEnum(nullptr));
}

}  // namespace
}  // namespace zel
