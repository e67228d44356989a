#include "ControlTest.h"

#include <objsafe.h>
#include <olectl.h>

#include "Container.h"
#include "ZEL_Collection.h"
#include "ZEL_Definition.h"
#include "ZEL_Header.h"

namespace zel {
namespace {

constexpr FORMATETC kPicture = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};

const IID kControlInterfaces[] = {
    __uuidof(IViewObjectEx),
    __uuidof(IViewObject2),
    __uuidof(IViewObject),
    __uuidof(IOleInPlaceObjectWindowless),
    __uuidof(IOleInPlaceObject),
    __uuidof(IOleWindow),
    __uuidof(IOleInPlaceActiveObject),
    __uuidof(IOleControl),
    __uuidof(IOleObject),
    __uuidof(IPersistStreamInit),
    __uuidof(IPersist),
    __uuidof(ISpecifyPropertyPages),
    __uuidof(IQuickActivate),
    __uuidof(IPersistStorage),
    __uuidof(IDataObject),
    __uuidof(IProvideClassInfo),
    __uuidof(IProvideClassInfo2),
};

using ContractTest = ControlTest;

TEST_F(ContractTest, TheStoreAloneHasTheNineteenInterfacesAndNoMore) {
    EXPECT_EQ(Module::LockCount(), 3);
    const auto identity = StoreAs<IUnknown>();
    const auto answers = [&](REFIID iid) {
        ComPtr<IUnknown> face;
        return SUCCEEDED(store_->QueryInterface(iid, face.OutVoid())) &&
               face.As<IUnknown>().Get() == identity.Get();
    };
    EXPECT_TRUE(answers(__uuidof(IBRU_Store)) && answers(IID_IDispatch));
    for (const IID& iid : kControlInterfaces) EXPECT_TRUE(answers(iid)) << std::hex << iid.Data1;
    for (const IID& iid : {IID_IConnectionPointContainer, IID_ISupportErrorInfo, IID_IPersistStream,
                           IID_IPersistFile, IID_IPersistPropertyBag, IID_IPersistMemory, IID_IObjectSafety,
                           IID_IRunnableObject, IID_IOleCache, IID_IPointerInactive, IID_IPerPropertyBrowsing,
                           IID_IOleInPlaceSite, IID_IMarshal, IID_IClassFactory})
        EXPECT_FALSE(answers(iid)) << std::hex << iid.Data1;
    const ComPtr<IDispatch> others[] = {Make<ZEL_Header>(), Make<ZEL_Collection>(), Make<ZEL_Definition>()};
    for (const auto& other : others)
        for (const IID& iid : kControlInterfaces)
            EXPECT_EQ(other->QueryInterface(iid, ComPtr<IUnknown>().OutVoid()), E_NOINTERFACE);
}

TEST_F(ContractTest, DescribesItselfFromRegistrationAndTypeLibrary) {
    DWORD status = 0;
    EXPECT_EQ(store_->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status, 0x20591u);
    LPOLESTR type = nullptr;
    ASSERT_EQ(store_->GetUserType(USERCLASSTYPE_FULL, &type), S_OK);
    EXPECT_STREQ(type, L"BRU_Store Class");
    CoTaskMemFree(type);

    ComPtr<ITypeInfo> info;
    ASSERT_EQ(StoreAs<IProvideClassInfo>()->GetClassInfo(info.Out()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, CLSID_BRU_Store);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    info->ReleaseTypeAttr(attributes);

    GUID events = CLSID_BRU_Store;
    EXPECT_EQ(StoreAs<IProvideClassInfo2>()->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), E_FAIL);
    EXPECT_EQ(events, GUID_NULL);
    EXPECT_EQ(StoreAs<IProvideClassInfo2>()->GetGUID(2, &events), E_INVALIDARG);
    CAUUID pages = {7, nullptr};
    EXPECT_EQ(StoreAs<ISpecifyPropertyPages>()->GetPages(&pages), S_OK);
    EXPECT_EQ(pages.cElems, 0u);
}

TEST_F(ContractTest, VerbsAreThoseOfTheRegistration) {
    ComPtr<IEnumOLEVERB> verbs;
    EXPECT_EQ(store_->EnumVerbs(verbs.Out()), OLEOBJ_E_NOVERBS);
    const std::wstring key = L"CLSID\\" + ClassText() + L"\\Verb\\1";
    RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, L"&Look,0,2", 0);
    ASSERT_EQ(store_->EnumVerbs(verbs.Out()), S_OK);
    OLEVERB verb = {};
    ASSERT_EQ(verbs->Next(1, &verb, nullptr), S_OK);
    EXPECT_STREQ(verb.lpszVerbName, L"&Look");
    CoTaskMemFree(verb.lpszVerbName);
}

TEST_F(ContractTest, RefusesWhatAControlHasNot) {
    ComPtr<IMoniker> moniker;
    ComPtr<IDataObject> data;
    const auto object = StoreAs<IDataObject>();
    EXPECT_EQ(store_->SetMoniker(OLEWHICHMK_OBJREL, nullptr), E_NOTIMPL);
    EXPECT_EQ(store_->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, moniker.Out()), E_NOTIMPL);
    EXPECT_EQ(store_->InitFromData(nullptr, FALSE, 0), E_NOTIMPL);
    EXPECT_EQ(store_->GetClipboardData(0, data.Out()), E_NOTIMPL);
    EXPECT_EQ(store_->Close(3), E_INVALIDARG);
    EXPECT_EQ(StoreAs<IOleInPlaceObject>()->ReactivateAndUndo(), INPLACE_E_NOTUNDOABLE);
    FORMATETC format = kPicture;
    EXPECT_EQ(object->QueryGetData(&format), S_OK);
    format.cfFormat = CF_ENHMETAFILE;
    EXPECT_EQ(object->QueryGetData(&format), DV_E_FORMATETC);
    format = kPicture;
    format.tymed = TYMED_HGLOBAL;
    EXPECT_EQ(object->QueryGetData(&format), DV_E_TYMED);
    format = kPicture;
    format.dwAspect = DVASPECT_ICON;
    EXPECT_EQ(object->QueryGetData(&format), DV_E_DVASPECT);
}

TEST_F(ContractTest, ExtentsAreTwoInchesUntilTheContainerSaysOtherwise) {
    const auto view = StoreAs<IViewObjectEx>();
    SIZEL extent = {}, negative = {-1, 5};
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent), S_OK);
    EXPECT_EQ(extent.cx, 5080);
    EXPECT_EQ(extent.cy, 5080);
    SetExtent(3000, 1000);
    EXPECT_EQ(Extent().cx, 3000);
    RECTL rectangle = {};
    EXPECT_EQ(view->GetRect(DVASPECT_CONTENT, &rectangle), S_OK);
    EXPECT_EQ(rectangle.right, 3000);
    EXPECT_EQ(rectangle.bottom, 1000);
    EXPECT_EQ(store_->SetExtent(DVASPECT_ICON, &extent), DV_E_DVASPECT);
    EXPECT_EQ(store_->SetExtent(DVASPECT_CONTENT, &negative), E_INVALIDARG);
    EXPECT_EQ(Extent().cy, 1000);

    DVEXTENTINFO wish = {sizeof wish, DVEXTENT_CONTENT, {123, 456}};
    EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wish, &extent), S_OK);
    EXPECT_EQ(extent.cx, 5080);
    wish.dwExtentMode = DVEXTENT_INTEGRAL;
    EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wish, &extent), S_OK);
    EXPECT_EQ(extent.cy, 456);
}

TEST_F(ContractTest, AdviseSinksHearOfChangesUntilTheyLeaveOrTheControlCloses) {
    Container container(Site::kPlain);
    FORMATETC format = kPicture;
    DWORD ole = 0, data = 0;
    const auto view = StoreAs<IViewObject>();
    const auto object = StoreAs<IDataObject>();
    EXPECT_EQ(store_->Unadvise(1), OLE_E_NOCONNECTION);
    EXPECT_EQ(store_->Advise(container.Sink(), &ole), S_OK);
    EXPECT_EQ(object->DAdvise(&format, ADVF_NODATA, container.Sink(), &data), S_OK);
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, container.Sink()), S_OK);
    EXPECT_EQ(container.TakeLog(), "OnViewChange");
    SetExtent(1, 1);
    EXPECT_EQ(container.TakeLog(), "OnViewChange OnDataChange");
    SetExtent(1, 1);
    EXPECT_EQ(container.TakeLog(), "");

    EXPECT_EQ(object->DUnadvise(data), S_OK);
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, container.Sink()), S_OK);
    SetExtent(2, 2);
    SetExtent(3, 3);
    EXPECT_EQ(container.TakeLog(), "OnViewChange");
    EXPECT_EQ(store_->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(container.TakeLog(), "OnClose");
    EXPECT_EQ(container.References(), 0);
    EXPECT_EQ(store_->Unadvise(ole), OLE_E_NOCONNECTION);
}

TEST_F(ContractTest, QuickActivationIsAllInOne) {
    Container container(Site::kPlain);
    QACONTAINER question = {};
    QACONTROL answer = {};
    question.cbSize = sizeof question;
    question.pClientSite = container.Client();
    answer.cbSize = 4;
    const auto quick = StoreAs<IQuickActivate>();
    EXPECT_EQ(quick->QuickActivate(&question, &answer), E_INVALIDARG);
    answer.cbSize = sizeof answer;
    EXPECT_EQ(quick->QuickActivate(&question, &answer), S_OK);
    EXPECT_EQ(answer.dwMiscStatus, 0x20591u);
    EXPECT_EQ(answer.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
    ComPtr<IOleClientSite> site;
    EXPECT_EQ(store_->GetClientSite(site.Out()), S_OK);
    EXPECT_EQ(site.Get(), container.Client());
    site.Reset();
    store_->SetClientSite(nullptr);
    EXPECT_EQ(container.References(), 0);
}

}  // namespace
}  // namespace zel
