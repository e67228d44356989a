#include "ControlTest.h"

#include <olectl.h>

#include <memory>

#include "Container.h"
#include "Picture.h"

namespace zel {
namespace {

template <class Function>
Function Entry(const char* name) {
    static const HMODULE atl = LoadLibraryW(L"atl100.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(atl, name)));
}

// A window on the screen, and in it the control: in the system's own control host, or in a container of ours.
class WindowTest : public ControlTest {
protected:
    static void SetUpTestSuite() {
        WNDCLASSW ground = {};
        ground.lpfnWndProc = &DefWindowProcW;
        ground.hInstance = GetModuleHandleW(nullptr);
        static const HBRUSH brush = CreateSolidBrush(kGround);
        ground.hbrBackground = brush;
        ground.lpszClassName = L"Ground";
        RegisterClassW(&ground);
    }
    void SetUp() override {
        ControlTest::SetUp();
        window_ = CreateWindowExW(0, L"Ground", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400, 220, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    }
    void TearDown() override {
        DestroyWindow(window_);
        ControlTest::TearDown();
    }

    // Lets the windows paint until `place` is white in a corner, or three seconds have passed; looks at the
    // screen.
    void ExpectControl(const RECT& place) {
        HDC screen = GetDC(window_);
        for (int i = 0; i < 60 && GetPixel(screen, place.left + 2, place.top + 2) != kWhite; ++i) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            Sleep(50);
        }
        Picture picture(400, 220);
        BitBlt(picture.Dc(), 0, 0, 400, 220, screen, 0, 0, SRCCOPY);
        ReleaseDC(window_, screen);
        picture.ExpectControl(place, RGB(0, 0, 0), RGB(0, 0, 0));
    }

    HWND window_ = nullptr;
};

TEST_F(WindowTest, TheSystemsControlHostShowsTheCaptionInAWhiteBox) {
    ASSERT_TRUE(Entry<BOOL(WINAPI*)()>("AtlAxWinInit")());
    store_.Reset();
    UseBuiltModule();
    const HWND host = CreateWindowExW(0, L"AtlAxWin100", ClassText().c_str(), WS_CHILD | WS_VISIBLE, 40, 30,
                                      300, 150, window_, nullptr, nullptr, nullptr);
    ASSERT_NE(host, nullptr);
    ExpectControl({40, 30, 340, 180});
    EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
    DestroyWindow(host);
    EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

class OwnWindowTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        container_ = std::make_unique<Container>(Site::kExtended, 0, window_);
        store_->SetClientSite(container_->Client());
        store_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, nullptr, 0, nullptr, nullptr);
        StoreAs<IOleWindow>()->GetWindow(&control_);
        ASSERT_NE(control_, nullptr);
    }
    void TearDown() override {
        store_->Close(OLECLOSE_NOSAVE);
        container_.reset();
        WindowTest::TearDown();
    }

    std::unique_ptr<Container> container_;
    HWND control_ = nullptr;
};

TEST_F(OwnWindowTest, ShowsTheCaptionWhereverItIsMovedTo) {
    const RECT place = {15, 25, 275, 150};
    EXPECT_EQ(StoreAs<IOleInPlaceObject>()->SetObjectRects(&place, &place), S_OK);
    ExpectControl(place);
}

TEST_F(OwnWindowTest, ReflectedMessagesGoToTheDefaultProcedure) {
    HDC screen = GetDC(window_);
    const auto wParam = reinterpret_cast<WPARAM>(screen);
    const auto lParam = reinterpret_cast<LPARAM>(control_);
    EXPECT_NE(SendMessageW(control_, OCM_CTLCOLORSTATIC, wParam, lParam), 0);
    EXPECT_EQ(SendMessageW(control_, OCM_CTLCOLORSTATIC, wParam, lParam),
              DefWindowProcW(control_, WM_CTLCOLORSTATIC, wParam, lParam));
    EXPECT_EQ(SendMessageW(control_, OCM__BASE + WM_CLOSE, 0, 0), 0);
    EXPECT_TRUE(IsWindow(control_));
    ReleaseDC(window_, screen);
}

TEST_F(OwnWindowTest, AClickMakesItTheActiveOneUnlessTheContainerDesigns) {
    container_->IsUserMode = false;
    container_->TakeLog();
    SendMessageW(control_, WM_LBUTTONDOWN, 0, 0);
    EXPECT_EQ(container_->TakeLog(), "");
    container_->IsUserMode = true;
    SendMessageW(control_, WM_LBUTTONDOWN, 0, 0);
    EXPECT_EQ(container_->TakeLog(), "RequestUIActivate OnUIActivate SetActiveObject SetBorderSpace");
    EXPECT_EQ(GetFocus(), control_);
    // The container may take the window away.
    DestroyWindow(control_);
    EXPECT_EQ(StoreAs<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(container_->Places(), 0);
}

}  // namespace
}  // namespace zel
