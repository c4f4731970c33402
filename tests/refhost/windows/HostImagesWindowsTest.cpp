// The host's icons on Windows.

#include "host/GisUtility.h"

#include <windows.h>

#include <gtest/gtest.h>

using VeltoGis::CModuleConfiguration;

namespace {

struct IconPixels {
    int width = 0;
    int height = 0;
    COLORREF centre = 0;
};

// The icon's size and the colour at its centre, drawn on white.
IconPixels Draw(HICON icon)
{
    IconPixels pixels;
    ICONINFO info{};
    if (!GetIconInfo(icon, &info))
        return pixels;
    BITMAP bitmap{};
    GetObjectW(info.hbmColor ? info.hbmColor : info.hbmMask, sizeof bitmap, &bitmap);
    pixels.width = bitmap.bmWidth;
    pixels.height = info.hbmColor ? bitmap.bmHeight : bitmap.bmHeight / 2;
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    HDC screen = GetDC(nullptr);
    HDC canvas = CreateCompatibleDC(screen);
    HBITMAP target = CreateCompatibleBitmap(screen, pixels.width, pixels.height);
    HGDIOBJ previous = SelectObject(canvas, target);
    RECT all{0, 0, pixels.width, pixels.height};
    FillRect(canvas, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawIconEx(canvas, 0, 0, icon, pixels.width, pixels.height, 0, nullptr, DI_NORMAL);
    pixels.centre = GetPixel(canvas, pixels.width / 2, pixels.height / 2 + pixels.height / 8);
    SelectObject(canvas, previous);
    DeleteObject(target);
    DeleteDC(canvas);
    ReleaseDC(nullptr, screen);
    return pixels;
}

} // namespace

TEST(HostImagesOnWindows, NamedIconsComeAtTheSizeAskedForOncePerProcess)
{
    const CModuleConfiguration& host = *CModuleConfiguration::Instance();
    struct {
        const WChar* name;
        bool reddish;
    } icons[] = {{WTEXT("IDI_OPEN"), false}, {WTEXT("IDI_DELETE"), true}};
    for (const auto& icon : icons) {
        for (const int size : {16, 24, 32}) {
            SCOPED_TRACE(testing::Message() << (icon.reddish ? "IDI_DELETE " : "IDI_OPEN ") << size);
            auto* image = static_cast<HICON>(host.LoadImageW(icon.name, IMAGE_ICON, size, size, 0));
            ASSERT_NE(image, nullptr);
            EXPECT_EQ(host.LoadImageW(icon.name, IMAGE_ICON, size, size, 0), image);
            const IconPixels pixels = Draw(image);
            EXPECT_EQ(pixels.width, size);
            EXPECT_EQ(pixels.height, size);
            // The open folder is yellow (red and green high, blue low), the cross red.
            EXPECT_GT(GetRValue(pixels.centre), 150);
            EXPECT_LT(GetBValue(pixels.centre), 120);
            if (icon.reddish)
                EXPECT_LT(GetGValue(pixels.centre), 100);
            else
                EXPECT_GT(GetGValue(pixels.centre), 150);
        }
    }
    EXPECT_EQ(host.GetIcon(WTEXT("IDI_DELETE")), host.LoadImageW(WTEXT("IDI_DELETE"), IMAGE_ICON, 16, 16, 0));
}

TEST(HostImagesOnWindows, UnknownNameHasNoIcon)
{
    const CModuleConfiguration& host = *CModuleConfiguration::Instance();
    EXPECT_EQ(host.GetIcon(WTEXT("IDI_OPEN2")), nullptr);
    EXPECT_EQ(host.LoadImageW(WTEXT("IDI_OPEN2"), IMAGE_ICON, 16, 16, 0), nullptr);
    EXPECT_EQ(host.LoadImageW(nullptr, IMAGE_ICON, 16, 16, 0), nullptr);
    EXPECT_EQ(host.GetIcon(WTEXT("")), nullptr);
}
