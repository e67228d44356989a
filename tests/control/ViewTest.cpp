#include "ControlTest.h"

#include "Container.h"
#include "Picture.h"

namespace zel {
namespace {

constexpr RECT kBounds = {20, 10, 260, 110};
constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255);

struct Mapping {
    const char* name;
    void (*set)(HDC);
};

class DrawTest : public ControlTest, public testing::WithParamInterface<Mapping> {};

TEST_P(DrawTest, IsTheSameInEveryMappingModeAndLeavesTheContextAsItWas) {
    Picture picture(280, 120);
    HDC hdc = picture.Dc();
    const int saved = SaveDC(hdc);
    HPEN pen = CreatePen(PS_SOLID, 0, kRed);
    HBRUSH brush = CreateSolidBrush(kBlue);
    SelectObject(hdc, pen);
    SelectObject(hdc, brush);
    SetTextColor(hdc, kBlue);
    GetParam().set(hdc);
    RECT bounds = kBounds;
    DPtoLP(hdc, reinterpret_cast<POINT*>(&bounds), 2);
    const int mode = GetMapMode(hdc);
    EXPECT_EQ(OleDraw(store_.Get(), DVASPECT_CONTENT, hdc, &bounds), S_OK);
    EXPECT_EQ(GetMapMode(hdc), mode);
    EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), brush);
    RestoreDC(hdc, saved);
    DeleteObject(pen);
    DeleteObject(brush);
    picture.ExpectControl(kBounds, kRed, kBlue);
}

INSTANTIATE_TEST_SUITE_P(Mappings, DrawTest,
                         testing::Values(Mapping{"Pixels", [](HDC) {}},
                                         Mapping{"MovedOrigin",
                                                 [](HDC hdc) { SetViewportOrgEx(hdc, 13, -40, nullptr); }},
                                         Mapping{"TenTimesFiner",
                                                 [](HDC hdc) {
                                                     SetMapMode(hdc, MM_ANISOTROPIC);
                                                     SetWindowExtEx(hdc, 10, -10, nullptr);
                                                     SetViewportOrgEx(hdc, 5, 60, nullptr);
                                                 }},
                                         Mapping{"Himetric", [](HDC hdc) { SetMapMode(hdc, MM_HIMETRIC); }}),
                         [](const auto& tested) { return tested.param.name; });

using ViewTest = ControlTest;

TEST_F(ViewTest, TheMetafilePictureShowsTheControl) {
    FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
    STGMEDIUM medium = {};
    SetExtent(2540 * 5 / 2, 2540 * 25 / 24);  // 240 by 100 pixels of a screen with 96 an inch
    ASSERT_EQ(StoreAs<IDataObject>()->GetData(&format, &medium), S_OK);
    const auto* metafile = static_cast<METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
    EXPECT_EQ(metafile->mm, MM_ANISOTROPIC);
    EXPECT_EQ(metafile->xExt, 6350);
    Picture picture(280, 120);
    HDC hdc = picture.Dc();
    const int saved = SaveDC(hdc);
    SetTextColor(hdc, kBlue);
    SetMapMode(hdc, MM_ANISOTROPIC);
    SetViewportOrgEx(hdc, kBounds.left, kBounds.top, nullptr);
    SetViewportExtEx(hdc, kBounds.right - kBounds.left, kBounds.bottom - kBounds.top, nullptr);
    EXPECT_TRUE(PlayMetaFile(hdc, metafile->hMF));
    RestoreDC(hdc, saved);
    GlobalUnlock(medium.hMetaFilePict);
    ReleaseStgMedium(&medium);
    picture.ExpectControl(kBounds, RGB(0, 0, 0), kBlue);
}

TEST_F(ViewTest, AWindowlessControlIsDrawnInItsPlaceWhenNoBoundsAreGiven) {
    Picture picture(280, 120);
    Container container(Site::kWindowless);
    RECT place = kBounds;
    const auto draw = [&](DWORD aspect) {
        return StoreAs<IViewObject>()->Draw(aspect, -1, nullptr, nullptr, nullptr, picture.Dc(), nullptr,
                                            nullptr, nullptr, 0);
    };
    EXPECT_EQ(draw(DVASPECT_CONTENT), E_INVALIDARG);
    store_->SetClientSite(container.Client());
    store_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, nullptr, 0, nullptr, nullptr);
    StoreAs<IOleInPlaceObject>()->SetObjectRects(&place, &place);
    EXPECT_EQ(draw(DVASPECT_ICON), DV_E_DVASPECT);
    EXPECT_EQ(draw(DVASPECT_CONTENT), S_OK);
    picture.ExpectControl(kBounds, RGB(0, 0, 0), RGB(0, 0, 0));
    store_->Close(OLECLOSE_NOSAVE);
}

TEST_F(ViewTest, IsHitInsideItsBounds) {
    const auto isHit = [&](const RECT& area) {
        DWORD point = 77, rectangle = 77;
        const auto view = StoreAs<IViewObjectEx>();
        view->QueryHitPoint(DVASPECT_CONTENT, &kBounds, {area.left, area.top}, 0, &point);
        view->QueryHitRect(DVASPECT_CONTENT, &kBounds, &area, 0, &rectangle);
        EXPECT_EQ(point, rectangle);
        return point == HITRESULT_HIT;
    };
    EXPECT_TRUE(isHit({20, 10, 21, 11}) && isHit({259, 109, 300, 300}));
    EXPECT_FALSE(isHit({260, 50, 300, 60}) || isHit({30, 9, 40, 10}));
}

// All graphics objects of the process: each is known to the system by the lower half of its handle.
int GraphicsObjects() {
    int count = 0;
    for (ULONG_PTR i = 1; i < 0x10000; ++i)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(i))) ++count;
    return count;
}

TEST_F(ViewTest, LeavesNoGraphicsObjectsBehind) {
    FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
    Picture picture(280, 120);
    SetMapMode(picture.Dc(), MM_HIMETRIC);
    Container container(Site::kPlain);
    const RECT clip = {15, 15, 30, 30};
    const auto useAll = [&] {
        STGMEDIUM medium = {};
        EXPECT_EQ(StoreAs<IDataObject>()->GetData(&format, &medium), S_OK);
        ReleaseStgMedium(&medium);
        EXPECT_EQ(OleDraw(store_.Get(), DVASPECT_CONTENT, picture.Dc(), &kBounds), S_OK);
        store_->DoVerb(OLEIVERB_SHOW, nullptr, container.Client(), 0, nullptr, nullptr);
        StoreAs<IOleInPlaceObject>()->SetObjectRects(&kBounds, &clip);
        store_->Close(OLECLOSE_NOSAVE);
    };
    useAll();
    const int before = GraphicsObjects();
    for (int i = 0; i < 5; ++i) useAll();
    EXPECT_EQ(GraphicsObjects(), before);
    HPEN pen = CreatePen(PS_SOLID, 0, kRed);
    EXPECT_EQ(GraphicsObjects(), before + 1);
    DeleteObject(pen);
}

}  // namespace
}  // namespace zel
