#include <windows.h>
#include <ole2.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "zel/automation/BRU_Store.h"
#include "zel/com/Bstr.h"
#include "Container.h"
#include "module/Server.h"

namespace zel {
namespace {

using Size = std::pair<LONG, LONG>;

// A store of this program's, so that its locks can be counted. Clients of COM find the built module's.
class ControlTest : public testing::Test {
protected:
    void SetUp() override {
        OleInitialize(nullptr);
        Module::Attach(GetModuleHandleW(nullptr), nullptr, 0);
        ASSERT_EQ(module_->Register(), S_OK);
        MakeStore();
    }
    void TearDown() override {
        store_.Reset();
        EXPECT_EQ(Module::LockCount(), 0);
        EXPECT_EQ(module_->CanUnloadNow(), S_OK);
        ControlWindow::ReleaseClass();
        EXPECT_FALSE(HasClass(GetModuleHandleW(nullptr)));
        Module::Detach();
        OleUninitialize();
        const HMODULE unloaded = GetModuleHandleW(L"ZEL_BRU.dll");
        module_.reset();
        for (int i = 0; i < 2; ++i) CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_FALSE(HasClass(unloaded));
    }

    static bool HasClass(HINSTANCE instance) {
        WNDCLASSW found;
        return GetClassInfoW(instance, L"zel.Control", &found);
    }
    void MakeStore() { store_ = Make<BRU_Store>().As<IOleObject>(); }
    HRESULT Do(LONG verb, IOleClientSite* site = nullptr) const {
        return store_->DoVerb(verb, nullptr, site, 0, nullptr, nullptr);
    }
    // Ends all that a container has to end before it goes.
    void Leave() const {
        store_->Close(OLECLOSE_NOSAVE);
        store_->SetClientSite(nullptr);
        store_.As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    }
    HRESULT SetExtent(LONG width, LONG height) const {
        SIZEL extent = {width, height};
        return store_->SetExtent(DVASPECT_CONTENT, &extent);
    }
    Size Extent() const {
        RECTL shown = {};
        store_.As<IViewObjectEx>()->GetRect(DVASPECT_CONTENT, &shown);
        return {shown.right, shown.bottom};
    }

    std::unique_ptr<Server> module_ = std::make_unique<Server>();
    ComPtr<IOleObject> store_;
    FORMATETC picture_ = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
};

template <class... Entries>
std::vector<IID> Iids(Interfaces<Entries...>) {
    return {__uuidof(typename InterfaceEntry<Entries>::Interface)...};
}
template <class Table, class... Bases>
Table TableOf(const Object<Table, Bases...>&);

TEST_F(ControlTest, TheStoreHasTheNineteenInterfacesInOrderAndNoMore) {
    const auto nineteen = Iids(
        Interfaces<IBRU_Store, IDispatch, IViewObjectEx, IViewObject2, IViewObject,
                   IOleInPlaceObjectWindowless, IOleInPlaceObject, IOleWindow, IOleInPlaceActiveObject,
                   IOleControl, IOleObject, IPersistStreamInit, IPersist, ISpecifyPropertyPages,
                   IQuickActivate, IPersistStorage, IDataObject, IProvideClassInfo, IProvideClassInfo2>());
    EXPECT_TRUE(Iids(decltype(TableOf(std::declval<BRU_Store>()))()) == nineteen);
    EXPECT_EQ(Module::LockCount(), 3);
    ComPtr<IUnknown> face;
    for (const IID& iid : nineteen) {
        store_->QueryInterface(iid, face.OutVoid());
        EXPECT_EQ(face.As<IUnknown>().Get(), store_.As<IUnknown>().Get()) << std::hex << iid.Data1;
    }
    ComPtr<ITypeInfo> info;
    Bstr name;
    ASSERT_EQ(store_.As<IProvideClassInfo>()->GetClassInfo(info.Out()), S_OK);
    info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr);
    EXPECT_STREQ(name.Get(), L"BRU_Store");
    GUID source;
    EXPECT_EQ(store_.As<IProvideClassInfo2>()->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), E_FAIL);
    EXPECT_EQ(store_.As<IProvideClassInfo2>()->GetGUID(2, &source), E_INVALIDARG);
}

TEST_F(ControlTest, QuickActivationConnectsAndAdviseSinksHearOfChanges) {
    Container container(Site::kPlain);
    QACONTAINER question = {};
    QACONTROL answer = {};
    question.cbSize = offsetof(QACONTAINER, pPropertyNotifySink);  // as older containers know it
    question.pClientSite = &container;
    question.pAdviseSink = &container;
    EXPECT_EQ(store_.As<IQuickActivate>()->QuickActivate(&question, &answer), E_INVALIDARG);
    answer.cbSize = sizeof answer;
    EXPECT_EQ(store_.As<IQuickActivate>()->QuickActivate(&question, &answer), S_OK);
    EXPECT_EQ(answer.dwMiscStatus, 0x20591u);
    EXPECT_EQ(answer.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));

    DWORD ole = 0, data = 0;
    EXPECT_EQ(store_->Advise(&container, &ole), S_OK);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(store_.As<IDataObject>()->DAdvise(&picture_, ADVF_NODATA, &container, &data), S_OK);
    EXPECT_EQ(SetExtent(-1, 1), E_INVALIDARG);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(SetExtent(1, 1), S_OK);
    EXPECT_EQ(container.TakeLog(), "OnViewChange OnDataChange OnDataChange");
    EXPECT_EQ(store_.As<IDataObject>()->DUnadvise(data), S_OK);
    store_.As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE | ADVF_PRIMEFIRST, &container);
    EXPECT_EQ(container.TakeLog(), "OnViewChange");
    EXPECT_EQ(SetExtent(2, 2), S_OK);
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(store_->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(container.TakeLog(),
              "OnDataChange CanInPlaceActivate OnInPlaceActivate "
              "GetWindowContext GetWindow OnInPlaceDeactivate OnClose");
    // Closed, it still stands in its container, which may open it again.
    EXPECT_EQ(SetExtent(3, 3), S_OK);
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_EQ(store_->Close(OLECLOSE_PROMPTSAVE), S_OK);
    EXPECT_EQ(store_->Unadvise(ole), S_OK);
    EXPECT_EQ(store_->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(container.TakeLog(),
              "OnDataChange CanInPlaceActivate OnInPlaceActivate GetWindowContext GetWindow SaveObject "
              "OnInPlaceDeactivate OnClose");
    store_.Reset();
    EXPECT_FALSE(container.IsReleasedLate);
}

TEST_F(ControlTest, AStreamHoldsTheExtentAndADamagedOneChangesNothing) {
    const auto persist = store_.As<IPersistStreamInit>();
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Out());
    stream->Write("\x45\x23\1\0\xBC\2\0\0\1\0\0\0\0\0\0\x80\0\0\0\x80\1\0\0\0half", 28, nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_EQ(persist->InitNew(), S_OK);
    Container full(Site::kPlain);
    EXPECT_EQ(persist->Save(&full, TRUE), STG_E_MEDIUMFULL);
    EXPECT_EQ(persist->IsDirty(), S_OK);
    EXPECT_EQ(Extent(), Size(5080, 5080));
    EXPECT_EQ(persist->Load(stream.Get()), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_FALSE);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(persist->Load(stream.Get()), STG_E_DOCFILECORRUPT);
    EXPECT_EQ(Extent(), Size(0x12345, 700));
    EXPECT_EQ(SetExtent(0x12345, 700), S_OK);
    EXPECT_EQ(persist->IsDirty(), S_FALSE) << "nothing has changed";
}

BOOL CALLBACK Stop(ULONG_PTR) { return FALSE; }

TEST_F(ControlTest, AnswersForAllOfItsContentAlone) {
    const auto view = store_.As<IViewObjectEx>();
    const auto data = store_.As<IDataObject>();
    const RECTL bounds = {0, 0, 9, 9};
    SIZEL size = {};
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, 0, nullptr, &size), S_OK);
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, 1, nullptr, &size), DV_E_LINDEX);
    EXPECT_EQ(view->GetExtent(DVASPECT_ICON, -1, nullptr, &size), DV_E_DVASPECT);
    const HDC hdc = GetDC(nullptr);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, hdc, &bounds, nullptr, Stop, 0),
              E_ABORT);
    ReleaseDC(nullptr, hdc);
    for (const auto& [mode, extent] :
         {std::pair{DVEXTENT_INTEGRAL, Size(1, 2)}, {DVEXTENT_CONTENT, Size(5080, 5080)}}) {
        DVEXTENTINFO wish = {sizeof wish, static_cast<ULONG>(mode), {1, 2}};
        view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wish, &size);
        EXPECT_EQ(Size(size.cx, size.cy), extent);
    }
    DVTARGETDEVICE device = {};
    FORMATETC icon = picture_, canonical = {};
    icon.dwAspect = DVASPECT_ICON;
    icon.ptd = &device;
    EXPECT_EQ(data->QueryGetData(&icon), DV_E_DVASPECT);
    EXPECT_EQ(data->GetCanonicalFormatEtc(&icon, &canonical), DATA_S_SAMEFORMATETC);
    EXPECT_EQ(canonical.ptd, nullptr);
}

TEST_F(ControlTest, OffersItsKeysAndNoOtherMessages) {
    Container container(Site::kPlain);
    const auto active = store_.As<IOleInPlaceActiveObject>();
    BYTE keys[256] = {}, before[256];
    keys[VK_CONTROL] = 0x80;
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE, &container), S_OK);
    EXPECT_EQ(SendMessageW(container.ControlWindow(), WM_ERASEBKGND, 0, 0), 1);
    container.TakeLog();
    GetKeyboardState(before);
    SetKeyboardState(keys);
    for (const UINT message : {WM_KEYDOWN, WM_PAINT, WM_MOUSEMOVE}) {
        MSG sent = {container.Window, message, VK_TAB, 0, 0, {}};
        EXPECT_EQ(active->TranslateAccelerator(&sent), message == WM_KEYDOWN ? S_OK : S_FALSE);
    }
    SetKeyboardState(before);
    EXPECT_EQ(active->OnDocWindowActivate(TRUE), S_OK);
    EXPECT_EQ(container.TakeLog(), "TranslateAccelerator(2)") << "nor announces itself without its tools";
    Leave();
}

TEST_F(ControlTest, OleCreatesSavesAndLoads) {
    Container container(Site::kPlain);
    ComPtr<IStorage> storage;
    DWORD connection;
    StgCreateDocfile(nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0, storage.Out());
    ASSERT_EQ(OleCreate(CLSID_BRU_Store, IID_IOleObject, OLERENDER_DRAW, nullptr, &container, storage.Get(),
                        store_.OutVoid()),
              S_OK);
    EXPECT_EQ(module_->CanUnloadNow(), S_FALSE);
    SetExtent(222, 333);
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    store_->Advise(&container, &connection);
    container.TakeLog();
    const auto persist = store_.As<IPersistStorage>();
    for (const bool isOwn : {false, true}) {  // or a copy
        EXPECT_EQ(OleSave(persist.Get(), storage.Get(), isOwn), S_OK);
        EXPECT_EQ(persist->IsDirty(), S_OK);
        for (int i = 0; i < 2; ++i) EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
        EXPECT_EQ(persist->IsDirty(), isOwn ? S_FALSE : S_OK);
        EXPECT_EQ(container.TakeLog(), "OnSave");
    }
    store_->Close(OLECLOSE_NOSAVE);
    ASSERT_EQ(OleLoad(storage.Get(), IID_IOleObject, &container, store_.OutVoid()), S_OK);
    EXPECT_EQ(Extent(), Size(222, 333));
    store_->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(container.TakeLog(), "OnInPlaceDeactivate OnClose");
    store_.Reset();
}

TEST_F(ControlTest, CallsTheContainerInOrder) {
    const std::tuple<Site, int, const char*> cases[] = {
        {Site::kPlain, 0,
         "CanInPlaceActivate OnInPlaceActivate GetWindowContext GetWindow | OnUIActivate OnFocus "
         "SetActiveObject SetBorderSpace | SaveObject SetActiveObject(null) OnUIDeactivate OnFocus "
         "OnInPlaceDeactivate"},
        {Site::kWindowless, 3,  // refuses to have it windowless
         "CanInPlaceActivate CanWindowlessActivate OnInPlaceActivateEx GetWindowContext GetWindow | "
         "RequestUIActivate OnUIActivate OnFocus SetActiveObject SetBorderSpace | "
         "SaveObject SetActiveObject(null) OnUIDeactivate OnFocus OnInPlaceDeactivateEx"},
        {Site::kWindowless, 0,
         "CanInPlaceActivate CanWindowlessActivate OnInPlaceActivateEx(windowless) GetWindowContext | "
         "RequestUIActivate OnUIActivate SetFocus SetActiveObject SetBorderSpace | OnDefWindowMessage "
         "InvalidateRect SaveObject SetActiveObject(null) OnUIDeactivate OnInPlaceDeactivateEx"}};
    for (const auto& [site, refused, calls] : cases) {
        Container container(site, refused);
        MakeStore();
        EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE, &container), S_OK);
        HWND window = nullptr;
        store_.As<IOleWindow>()->GetWindow(&window);
        EXPECT_EQ(window, container.ControlWindow());
        const auto send = [&](UINT message, WPARAM wParam) {
            LRESULT result = 0;
            if (window) return SendMessageW(window, message, wParam, 0);
            store_.As<IOleInPlaceObjectWindowless>()->OnWindowMessage(message, wParam, 0, &result);
            return result;
        };
        std::string log = container.TakeLog() + " | ";
        send(WM_LBUTTONDOWN, 0);
        EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
        log += container.TakeLog() + " | ";
        const HDC hdc = GetDC(window);
        EXPECT_NE(send(OCM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(hdc)), 0);
        ReleaseDC(window, hdc);
        SetExtent(100, 100);
        EXPECT_EQ(store_->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
        EXPECT_EQ(log + container.TakeLog(), calls);
        Do(OLEIVERB_INPLACEACTIVATE, &container);
        store_.Reset();
    }
}

TEST_F(ControlTest, AnswersVerbsByTheUserModeUntilItsSiteChanges) {
    Container container(Site::kPlain), other(Site::kPlain);
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), E_FAIL);
    for (const auto& [site, refused, log] :
         {std::tuple{Site::kPlain, 2, "CanInPlaceActivate"},
          {Site::kExtended, 6,
           "CanInPlaceActivate OnInPlaceActivateEx GetWindowContext GetWindow "
           "RequestUIActivate OnUIDeactivate"}}) {
        Container polite(site, refused);  // says no with S_FALSE
        EXPECT_EQ(Do(OLEIVERB_UIACTIVATE, &polite), E_FAIL);
        EXPECT_EQ(polite.TakeLog(), log);
        Leave();
    }
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE, &container), S_OK);
    container.TakeLog();
    container.IsUserMode = false;
    EXPECT_EQ(Do(OLEIVERB_OPEN), E_NOTIMPL);
    EXPECT_EQ(Do(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(container.TakeLog(), "ShowObject");
    container.IsUserMode.reset();
    EXPECT_EQ(Do(5), OLEOBJ_S_INVALIDVERB);
    EXPECT_EQ(container.TakeLog(), "ShowObject OnUIActivate OnFocus SetActiveObject SetBorderSpace");
    EXPECT_EQ(Do(OLEIVERB_HIDE), S_OK);
    EXPECT_FALSE(GetWindowLongW(container.ControlWindow(), GWL_STYLE) & WS_VISIBLE);
    DestroyWindow(container.ControlWindow());
    EXPECT_EQ(store_->SetClientSite(&other), S_OK);
    EXPECT_EQ(container.TakeLog(), "SetActiveObject(null) OnUIDeactivate OnFocus OnInPlaceDeactivate");
    EXPECT_TRUE(HasClass(GetModuleHandleW(nullptr))) << "another apartment may be about to use it";
    store_.Reset();
}

TEST_F(ControlTest, StaysWithItsWindowWhenAnotherThreadReleasesIt) {
    Container container(Site::kPlain);
    Do(OLEIVERB_INPLACEACTIVATE, &container);
    const HWND window = container.ControlWindow();
    std::thread([&] { store_.Reset(); }).join();
    EXPECT_NE(Module::LockCount(), 0);
    SendMessageW(window, WM_LBUTTONDOWN, 0, 0);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(ControlTest, GoesWhenTheThreadOfItsWindowHasEnded) {
    std::unique_ptr<Container> container;
    std::thread([&] {
        container = std::make_unique<Container>(Site::kPlain);
        EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE, container.get()), S_OK);
    }).join();
    store_.Reset();
}

TEST_F(ControlTest, SurvivesTheRefusalOfAnyCallAndBeingClosedWithinAny) {
    // All that containers do to a control in its place, whatever it answers.
    const auto liveIn = [&](Container& container) {
        const RECT place = {0, 0, 50, 50}, clip = {10, 10, 20, 20};
        MSG key = {container.Window, WM_KEYDOWN, VK_TAB, 0, 0, {}};
        LRESULT result;
        Do(OLEIVERB_SHOW, &container);
        store_.As<IOleInPlaceActiveObject>()->TranslateAccelerator(&key);
        store_.As<IOleInPlaceActiveObject>()->OnDocWindowActivate(TRUE);
        store_.As<IOleInPlaceObject>()->SetObjectRects(&place, &clip);
        store_.As<IOleInPlaceObjectWindowless>()->OnWindowMessage(OCM_COMMAND, 0, 0, &result);
        SetExtent(1000, 1000 + container.Calls);
        store_.As<IOleInPlaceObject>()->UIDeactivate();
        Do(OLEIVERB_UIACTIVATE);
        Do(OLEIVERB_HIDE);
    };
    const std::function<void()> disturbances[] = {
        {},
        [&] { store_->Close(OLECLOSE_NOSAVE); },
        [&] { store_->SetClientSite(nullptr); },
    };
    for (const Site site : {Site::kPlain, Site::kExtended, Site::kWindowless}) {
        for (const auto& disturb : disturbances) {
            bool isReached = true;
            for (int call = 1; isReached; ++call) {
                SCOPED_TRACE(call);
                Container container(site, call, disturb);
                DWORD connection;
                store_->Advise(&container, &connection);
                store_.As<IDataObject>()->DAdvise(&picture_, 0, &container, &connection);
                store_.As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &container);
                liveIn(container);
                isReached = container.Calls >= call;
                ComPtr<IOleClientSite> kept;
                store_->GetClientSite(kept.Out());
                EXPECT_TRUE(kept || container.Places == 0);
                kept.Reset();
                Leave();
                EXPECT_EQ(container.Places, 0);
                MakeStore();
                EXPECT_EQ(Module::LockCount(), 3);
            }
        }
    }
}

constexpr RECT kBounds = {20, 10, 260, 110};

// A bitmap in memory to draw on, all grey.
class Picture {
public:
    Picture() {
        const RECT all = {0, 0, 280, 120};
        SelectObject(Dc, bitmap_);
        FillRect(Dc, &all, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
        SelectObject(Dc, GetStockObject(DC_PEN));
        SaveDC(Dc);
    }
    ~Picture() {
        DeleteDC(Dc);
        DeleteObject(bitmap_);
    }

    const HDC Dc = CreateCompatibleDC(nullptr);

    void ExpectControl(COLORREF border = 0) const {
        Picture expected;
        RECT bounds = kBounds;
        SetDCPenColor(expected.Dc, border);
        Rectangle(expected.Dc, bounds.left, bounds.top, bounds.right, bounds.bottom);
        DrawTextW(expected.Dc, L"ATL 3.0 : BRU_Store", -1, &bounds, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        RestoreDC(Dc, 1);
        int wrong = 0;
        for (int i = 0; i < 280 * 120; ++i)
            wrong += GetPixel(Dc, i % 280, i / 280) != GetPixel(expected.Dc, i % 280, i / 280);
        EXPECT_EQ(wrong, 0);
    }

private:
    const HBITMAP bitmap_ = CreateBitmap(280, 120, 1, 32, nullptr);
};

TEST_F(ControlTest, IsExactInAnyMappingModeAndRestoresIt) {
    Picture picture;
    RECT bounds = kBounds;
    SetDCPenColor(picture.Dc, RGB(255, 0, 0));
    SetMapMode(picture.Dc, MM_ANISOTROPIC);
    SetWindowExtEx(picture.Dc, 10, -10, nullptr);
    SetViewportOrgEx(picture.Dc, 5, 60, nullptr);
    DPtoLP(picture.Dc, reinterpret_cast<POINT*>(&bounds), 2);
    EXPECT_EQ(OleDraw(store_.Get(), DVASPECT_CONTENT, picture.Dc, &bounds), S_OK);
    LPtoDP(picture.Dc, reinterpret_cast<POINT*>(&bounds), 2);
    EXPECT_TRUE(EqualRect(&bounds, &kBounds));
    picture.ExpectControl(RGB(255, 0, 0));
}

TEST_F(ControlTest, TheMetafilePictureShowsTheControl) {
    STGMEDIUM medium = {};
    SetExtent(2540 * 5 / 2, 2540 * 25 / 24);  // 240 by 100 pixels of a screen with 96 an inch
    ASSERT_EQ(store_.As<IDataObject>()->GetData(&picture_, &medium), S_OK);
    const auto* metafile = static_cast<METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
    EXPECT_EQ(metafile->xExt, 6350);
    Picture picture;
    SetMapMode(picture.Dc, metafile->mm);
    SetViewportOrgEx(picture.Dc, kBounds.left, kBounds.top, nullptr);
    SetViewportExtEx(picture.Dc, 240, 100, nullptr);
    EXPECT_TRUE(PlayMetaFile(picture.Dc, metafile->hMF));
    ReleaseStgMedium(&medium);
    picture.ExpectControl();
}

// What the window shows after everything in it was painted.
void ExpectOnScreen(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    const Picture picture;
    const HDC screen = GetDC(window);
    BitBlt(picture.Dc, kBounds.left, kBounds.top, 240, 100, screen, kBounds.left, kBounds.top, SRCCOPY);
    ReleaseDC(window, screen);
    picture.ExpectControl();
}

TEST_F(ControlTest, WithoutAWindowIsDrawnInItsPlaceAndRestoresTheBrush) {
    Container container(Site::kWindowless);
    Picture picture;
    const HGDIOBJ brush = GetStockObject(GRAY_BRUSH);
    SelectObject(picture.Dc, brush);
    Do(OLEIVERB_INPLACEACTIVATE, &container);
    store_.As<IOleInPlaceObject>()->SetObjectRects(&kBounds, &kBounds);
    store_.As<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture.Dc, nullptr,
                                   nullptr, nullptr, 0);
    std::string reflected;
    for (UINT message = 0; message < 0x400; ++message) {
        LRESULT result;
        const HRESULT own =
            store_.As<IOleInPlaceObjectWindowless>()->OnWindowMessage(OCM__BASE + message, 0, 0, &result);
        if (own == S_OK) reflected += std::to_string(message) + ' ';
    }
    EXPECT_EQ(reflected, "43 44 45 46 47 57 78 273 276 277 306 307 308 309 310 311 312 528 ");
    EXPECT_EQ(GetCurrentObject(picture.Dc, OBJ_BRUSH), brush);
    picture.ExpectControl();
    store_.Reset();
}

TEST_F(ControlTest, TheScreenShowsItInOurContainerAndInTheSystemsControlHost) {
    Container container(Site::kPlain);
    ShowWindow(container.Window, SW_SHOW);
    Do(OLEIVERB_INPLACEACTIVATE, &container);
    const RECT clip = {30, 20, 70, 60}, clipped = {10, 10, 50, 50};
    RECT shown;
    store_.As<IOleInPlaceObject>()->SetObjectRects(&kBounds, &clip);
    GetWindowRgnBox(container.ControlWindow(), &shown);
    EXPECT_TRUE(EqualRect(&shown, &clipped));
    store_.As<IOleInPlaceObject>()->SetObjectRects(&kBounds, &kBounds);
    ExpectOnScreen(container.Window);
    Picture printed;
    SetViewportOrgEx(printed.Dc, kBounds.left, kBounds.top, nullptr);
    SendMessageW(container.ControlWindow(), WM_PRINT, reinterpret_cast<WPARAM>(printed.Dc), PRF_CLIENT);
    printed.ExpectControl();
    store_.Reset();

    const FARPROC init = GetProcAddress(LoadLibraryW(L"atl100.dll"), "AtlAxWinInit");
    ASSERT_TRUE(init && init());
    const HWND host =
        CreateWindowExW(0, L"AtlAxWin100", L"ZEL_BRU.BRU_Store", WS_CHILD | WS_VISIBLE, kBounds.left,
                        kBounds.top, 240, 100, container.Window, nullptr, nullptr, nullptr);
    ExpectOnScreen(container.Window);
    DestroyWindow(host);
}

}  // namespace
}  // namespace zel
