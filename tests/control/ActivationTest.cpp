#include "ControlTest.h"

#include <olectl.h>

#include "Container.h"

namespace zel {
namespace {

struct Sequence {
    const char* name;
    Site site;
    const char* activation;
    const char* change;  // of the extent, while active
    const char* deactivation;
};

class ActivationTest : public ControlTest, public testing::WithParamInterface<Sequence> {
protected:
    HRESULT Do(LONG verb) { return store_->DoVerb(verb, nullptr, nullptr, 0, nullptr, nullptr); }
    HWND Window() {
        HWND window = nullptr;
        StoreAs<IOleWindow>()->GetWindow(&window);
        return window;
    }
    bool IsShown() { return GetWindowLongW(Window(), GWL_STYLE) & WS_VISIBLE; }
    // All that containers do to a control, whatever it answers.
    void LiveIn(Container& container) {
        FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
        DWORD connection;
        MSG key = {container.Window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        SIZEL extent = {1000, 1000};
        RECT place = {0, 0, 50, 50}, clip = {10, 10, 20, 20};
        LRESULT result;
        store_->SetClientSite(container.Client());
        store_->Advise(container.Sink(), &connection);
        StoreAs<IDataObject>()->DAdvise(&format, 0, container.Sink(), &connection);
        StoreAs<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, container.Sink());
        Do(OLEIVERB_SHOW);
        StoreAs<IOleInPlaceActiveObject>()->TranslateAccelerator(&key);
        StoreAs<IOleInPlaceActiveObject>()->OnDocWindowActivate(TRUE);
        StoreAs<IOleInPlaceObject>()->SetObjectRects(&place, &clip);
        StoreAs<IOleInPlaceObjectWindowless>()->OnWindowMessage(OCM_COMMAND, 0, 0, &result);
        store_->SetExtent(DVASPECT_CONTENT, &extent);
        StoreAs<IOleInPlaceObject>()->UIDeactivate();
        Do(OLEIVERB_UIACTIVATE);
        Do(OLEIVERB_HIDE);
        store_->Close(OLECLOSE_SAVEIFDIRTY);
    }
};

TEST_P(ActivationTest, CallsTheContainerInOrder) {
    Container container(GetParam().site);
    store_->SetClientSite(container.Client());
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(container.TakeLog(), GetParam().activation);
    EXPECT_EQ(Window() == nullptr, GetParam().site == Site::kWindowless);
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    SetExtent(100, 100);
    EXPECT_EQ(container.TakeLog(), GetParam().change);
    EXPECT_EQ(StoreAs<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(container.TakeLog(), GetParam().deactivation);
    EXPECT_EQ(Window(), nullptr);
    EXPECT_EQ(container.References(), 1);
    EXPECT_EQ(store_->SetClientSite(nullptr), S_OK);
    EXPECT_EQ(container.References(), 0);
}

TEST_P(ActivationTest, SurvivesTheRefusalOfAnyCall) {
    int calls = 1;
    for (int refused = 0; refused <= calls; ++refused) {
        SCOPED_TRACE(refused);
        Container container(GetParam().site, refused);
        LiveIn(container);
        EXPECT_EQ(container.References(), 0);
        EXPECT_EQ(container.Places(), 0);
        EXPECT_EQ(GetWindow(container.Window(), GW_CHILD), nullptr);
        store_.Reset();
        EXPECT_EQ(Module::LockCount(), 0);
        if (refused == 0) calls = container.Calls();
        MakeStore();
    }
    EXPECT_GT(calls, 20);
}

TEST_P(ActivationTest, ReleasedInItsPlaceLeavesNothing) {
    Container container(GetParam().site);
    store_->SetClientSite(container.Client());
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    store_.Reset();
    EXPECT_EQ(Module::LockCount(), 0);
    EXPECT_EQ(container.References(), 0);
    EXPECT_EQ(GetWindow(container.Window(), GW_CHILD), nullptr);
}

TEST_P(ActivationTest, MayBeClosedFromWithinItsOwnCalls) {
    Container container(GetParam().site);
    store_->SetClientSite(container.Client());
    EXPECT_EQ(Do(OLEIVERB_UIACTIVATE), S_OK);
    container.CloseFromWithin = store_.Get();
    EXPECT_EQ(StoreAs<IOleInPlaceObject>()->UIDeactivate(), S_OK);
    EXPECT_EQ(container.Places(), 0);
    EXPECT_EQ(container.References(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Containers, ActivationTest,
    testing::Values(Sequence{"Plain", Site::kPlain,
                             "CanInPlaceActivate OnInPlaceActivate GetWindowContext GetWindow OnUIActivate "
                             "SetActiveObject SetBorderSpace",
                             "", "SetActiveObject(null) OnUIDeactivate OnInPlaceDeactivate"},
                    Sequence{"Extended", Site::kExtended,
                             "CanInPlaceActivate OnInPlaceActivateEx GetWindowContext GetWindow "
                             "RequestUIActivate OnUIActivate SetActiveObject SetBorderSpace",
                             "", "SetActiveObject(null) OnUIDeactivate OnInPlaceDeactivateEx"},
                    Sequence{"Windowless", Site::kWindowless,
                             "CanInPlaceActivate CanWindowlessActivate OnInPlaceActivateEx(windowless) "
                             "GetWindowContext RequestUIActivate OnUIActivate SetFocus SetActiveObject "
                             "SetBorderSpace",
                             "InvalidateRect", "SetActiveObject(null) OnUIDeactivate OnInPlaceDeactivateEx"}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(ActivationTest, Verbs) {
    struct Case {
        LONG verb;
        bool userMode;
        HRESULT result;
        const char* calls;  // of an active control
    };
    const Case cases[] = {
        {OLEIVERB_INPLACEACTIVATE, true, S_OK, ""},
        {OLEIVERB_DISCARDUNDOSTATE, true, S_OK, ""},
        {OLEIVERB_OPEN, true, E_NOTIMPL, ""},
        {OLEIVERB_PROPERTIES, true, E_NOTIMPL, ""},
        {OLEIVERB_SHOW, false, S_OK, "ShowObject"},
        {OLEIVERB_PRIMARY, true, S_OK, "ShowObject OnUIActivate SetActiveObject SetBorderSpace"},
        {5, true, OLEOBJ_S_INVALIDVERB, "ShowObject"},
        {OLEIVERB_HIDE, true, S_OK, "SetActiveObject(null) OnUIDeactivate"},
    };
    Container container(Site::kPlain);
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), E_FAIL);
    store_->SetClientSite(container.Client());
    EXPECT_EQ(Do(OLEIVERB_INPLACEACTIVATE), S_OK);
    container.TakeLog();
    for (const Case& tested : cases) {
        container.IsUserMode = tested.userMode;
        EXPECT_EQ(Do(tested.verb), tested.result) << tested.verb;
        EXPECT_EQ(container.TakeLog(), tested.calls) << tested.verb;
    }
    EXPECT_FALSE(IsShown());
    store_->Close(OLECLOSE_NOSAVE);
    // Closed, it finds its container by the site of the verb.
    EXPECT_EQ(store_->DoVerb(OLEIVERB_SHOW, nullptr, container.Client(), 0, nullptr, nullptr), S_OK);
    EXPECT_TRUE(IsShown());
    store_->SetClientSite(nullptr);
    EXPECT_EQ(container.Places(), 0);
}

TEST_F(ActivationTest, CloseSavesOnlyWhatIsDirtyAndWanted) {
    struct Case {
        DWORD option;
        bool dirty;
        const char* calls;
    };
    for (const Case& tested :
         {Case{OLECLOSE_SAVEIFDIRTY, true, "SaveObject"}, Case{OLECLOSE_SAVEIFDIRTY, false, ""},
          Case{OLECLOSE_NOSAVE, true, ""}, Case{OLECLOSE_PROMPTSAVE, true, "SaveObject"}}) {
        Container container(Site::kPlain);
        MakeStore();
        store_->SetClientSite(container.Client());
        if (tested.dirty) SetExtent(7, 7);
        EXPECT_EQ(store_->Close(tested.option), S_OK);
        EXPECT_EQ(container.TakeLog(), tested.calls);
    }
}

TEST_F(ActivationTest, KeysAndReflectedMessagesGoBackToTheContainer) {
    Container container(Site::kWindowless);
    MSG key = {nullptr, WM_KEYDOWN, VK_TAB, 0, 0, {}}, mouse = {nullptr, WM_MOUSEMOVE, 0, 0, 0, {}};
    const auto active = StoreAs<IOleInPlaceActiveObject>();
    const auto windowless = StoreAs<IOleInPlaceObjectWindowless>();
    LRESULT result = 0;
    EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
    EXPECT_EQ(windowless->OnWindowMessage(OCM_NOTIFY, 0, 0, &result), S_FALSE);
    store_->SetClientSite(container.Client());
    Do(OLEIVERB_INPLACEACTIVATE);
    container.TakeLog();
    EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
    EXPECT_EQ(active->TranslateAccelerator(&mouse), S_FALSE);
    EXPECT_EQ(container.TakeLog(), "TranslateAccelerator");
    EXPECT_EQ(windowless->OnWindowMessage(OCM_NOTIFY, 0, 0, &result), S_OK);
    EXPECT_EQ(result, WM_NOTIFY);
    EXPECT_EQ(container.TakeLog(), "OnDefWindowMessage");
    EXPECT_EQ(windowless->OnWindowMessage(WM_LBUTTONDOWN, 0, 0, &result), S_FALSE);
    EXPECT_EQ(container.TakeLog(), "RequestUIActivate OnUIActivate SetFocus SetActiveObject SetBorderSpace");
    store_->Close(OLECLOSE_NOSAVE);
}

}  // namespace
}  // namespace zel
