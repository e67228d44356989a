#include <vector>

#include "Client.h"

namespace zel {
namespace {

using ForeignObjects = AutomationTest;

// A client's own implementations of the interfaces. Holds the given objects; notes the type of the positions
// it is asked for.
struct ForeignCollection : Object<Interfaces<IZEL_Collection, IDispatch>, Dispatch<IZEL_Collection>> {
    STDMETHODIMP Item(VARIANT index, VARIANT* pItem) override {
        indexType = V_VT(&index);
        references = References(*this);
        return CopyVariant(pItem, Variant::Object(items.at(V_UI4(&index))).Get());
    }
    STDMETHODIMP get_Count(LONG* pVal) override {
        *pVal = static_cast<LONG>(items.size());
        return S_OK;
    }
    STDMETHODIMP get__NewEnum(IUnknown**) override { return E_NOTIMPL; }
    STDMETHODIMP Add(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP Copy(IZEL_Collection*) override { return E_NOTIMPL; }

    std::vector<IDispatch*> items;
    VARTYPE indexType = VT_EMPTY;
    ULONG references = 0;
};

// Has a code and members, and refuses the rest.
struct ForeignDefinition : Object<Interfaces<IZEL_Definition, IDispatch>, Dispatch<IZEL_Definition>> {
    STDMETHODIMP get_AreaCode(BSTR* pVal) override { return SysReAllocString(pVal, L"FOREIGN"); }
    STDMETHODIMP put_AreaCode(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_Members(IZEL_Collection** pVal) override {
        return members->QueryInterface(IID_IZEL_Collection, reinterpret_cast<void**>(pVal));
    }
    STDMETHODIMP put_Members(IZEL_Collection*) override { return E_NOTIMPL; }
    ZEL_REFUSE(unsigned char, CalcType, DimensionType, Hidden, PostArea, PostDescription)
    ZEL_REFUSE(unsigned short, FillColor, FillPattern, LineColor)
    ZEL_REFUSE(double, Multiplier, WallHeight, WallWidth)
    ZEL_REFUSE(BSTR, AreaDescription, AreaName, SegmentStyle, SubtractAreaCode)

    ComPtr<ForeignCollection> members = Make<ForeignCollection>();
};

TEST_F(ForeignObjects, HeaderThatRefusesLeavesDefaults) {
    Store store;
    const auto header = Make<ForeignHeader>();
    store.header->put_Flags(1);
    EXPECT_EQ(S_OK, store.object->put_Header(header.Get()));
    EXPECT_EQ(L"272", Get(*store.header, L"Flags"));
    EXPECT_EQ(L"TRN4WIN", Get(*store.header, L"Signature"));
}

TEST_F(ForeignObjects, DefinitionsAreSavedAtEveryDepth) {
    Store store, other;
    const auto inner = Make<ForeignDefinition>(), outer = Make<ForeignDefinition>();
    outer->members->items = {store.header.Get(), nullptr, inner.Get()};
    EXPECT_EQ(S_OK, store.object->put_Definitions(outer->members.Get()));
    inner->Release();  // the reference that copying leaves
    EXPECT_EQ(VT_UI4, outer->members->indexType);
    EXPECT_EQ(S_OK, Make<ZEL_Definition>()->put_Members(outer->members.Get()));
    EXPECT_EQ(2u, outer->members->references) << "held meanwhile";
    inner->Release();
    store.definitions->Add(Variant::Object(outer.Get()).Get());
    EXPECT_EQ(kDone, store.Save());
    EXPECT_EQ(VT_I4, outer->members->indexType);
    EXPECT_EQ(kDone, other.Load());
    EXPECT_EQ(L"FOREIGN FOREIGN(FOREIGN)", Tree(*other.definitions));
}

}  // namespace
}  // namespace zel
