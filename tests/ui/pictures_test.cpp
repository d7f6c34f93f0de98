#include "ui/resource_ids.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

namespace {

// The pictures are compiled into this program and loaded by the system, as in the monitor. The
// system must be able to decode their run-length coding.

struct DeleteBitmap {
    using pointer = HBITMAP;
    void operator()(HBITMAP bitmap) const noexcept { ::DeleteObject(bitmap); }
};
using BitmapHandle = std::unique_ptr<HBITMAP, DeleteBitmap>;

struct DestroyIcon {
    using pointer = HICON;
    void operator()(HICON icon) const noexcept { ::DestroyIcon(icon); }
};
using IconHandle = std::unique_ptr<HICON, DestroyIcon>;

BitmapHandle loadBitmap(int id) {
    return BitmapHandle(static_cast<HBITMAP>(::LoadImageW(
        ::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR)));
}

IconHandle loadIcon(int id, int size) {
    return IconHandle(
        static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                        IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

BITMAP factsOf(HBITMAP bitmap) {
    BITMAP facts{};
    ::GetObjectW(bitmap, sizeof facts, &facts);
    return facts;
}

// A memory device context with a selected bitmap. The destructor selects the former bitmap again.
class Canvas {
public:
    explicit Canvas(HBITMAP bitmap)
        : _memory(::CreateCompatibleDC(nullptr)), _before(::SelectObject(_memory, bitmap)) {}
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        ::SelectObject(_memory, _before);
        ::DeleteDC(_memory);
    }
    COLORREF pixel(int x, int y) const { return ::GetPixel(_memory, x, y); }

private:
    HDC _memory;
    HGDIOBJ _before;
};

COLORREF pixelOf(HBITMAP bitmap, int x, int y) {
    return Canvas(bitmap).pixel(x, y);
}

struct BitmapRow {
    int id;
    int width, height;  // pixels
};

// clang-format off
constexpr BitmapRow kBitmaps[] = {
    {148,   64,  64}, {149,   64,  64}, {150,   64,  64}, {156,   64,  64}, {163, 1494, 120},
    {166,  240,  64}, {167,  240,  64}, {175,  240,  64}, {176,  240,  64}, {177,  440,  64},
    {178,  440,  64}, {179,  240,  64}, {180,  240,  64}, {182,  400, 400}, {186,  400, 300},
    {187,  400, 300}, {188,  400, 300}, {196,  400, 400}, {197,  400, 400}, {198,  400, 400},
    {199,  400, 400}, {200,  400, 400}, {201,  400, 400}, {202,  400, 300}, {203,  400, 300},
    {204,  400, 300}, {205,  400, 400}, {206,  400, 400}, {207,   48,  48}, {208,   48,  48},
    {209,  192, 192}, {211,  440,  64}, {212,  440,  64},
};
// clang-format on

constexpr COLORREF kDialogFace = RGB(240, 240, 240);
constexpr int kIconSizes[] = {16, 20, 24, 28, 32, 40, 48, 56, 64, 256};  // pixels
constexpr int kLargeIconSizes[] = {32, 40, 48, 56, 64};

TEST(PicturesTest, EveryBitmapIsTwiceAsLargeAsItsControlAt96DotsPerInch) {
    for (const BitmapRow& row : kBitmaps) {
        const BitmapHandle bitmap = loadBitmap(row.id);

        ASSERT_NE(bitmap.get(), nullptr) << "bitmap " << row.id;
        const BITMAP facts = factsOf(bitmap.get());
        EXPECT_EQ(facts.bmWidth, row.width) << "bitmap " << row.id;
        EXPECT_EQ(facts.bmHeight, row.height) << "bitmap " << row.id;
    }
}

TEST(PicturesTest, TheDialogsFaceColourIsInTheCornersOfEveryPictureButTheBanner) {
    for (const BitmapRow& row : kBitmaps) {
        if (row.id == IDB_BANNER) continue;
        const BitmapHandle bitmap = loadBitmap(row.id);

        EXPECT_EQ(pixelOf(bitmap.get(), 0, 0), kDialogFace) << "bitmap " << row.id;
        EXPECT_EQ(pixelOf(bitmap.get(), row.width - 1, row.height - 1), kDialogFace)
            << "bitmap " << row.id;
    }
}

TEST(PicturesTest, ABitmapStoredForOneLanguageServesEveryProcess) {
    const BitmapHandle underEnglish = loadBitmap(IDB_STOP);
    const BitmapHandle underChinese = loadBitmap(IDB_BANNER);

    EXPECT_NE(underEnglish.get(), nullptr);
    EXPECT_EQ(pixelOf(underChinese.get(), 1493, 119), RGB(18, 57, 91));
}

TEST(PicturesTest, APressedButtonIsDarkerThanANormalOne) {
    constexpr int kMiddleX = 120;
    constexpr int kMiddleY = 32;

    EXPECT_EQ(pixelOf(loadBitmap(IDB_OK_NORMAL).get(), kMiddleX, kMiddleY), RGB(26, 95, 168));
    EXPECT_EQ(pixelOf(loadBitmap(IDB_OK_PRESSED).get(), kMiddleX, kMiddleY), RGB(17, 70, 128));
    EXPECT_EQ(pixelOf(loadBitmap(IDB_SHOP_NORMAL).get(), kMiddleX, kMiddleY), RGB(230, 235, 242));
    EXPECT_EQ(pixelOf(loadBitmap(IDB_SHOP_PRESSED).get(), kMiddleX, kMiddleY), RGB(195, 206, 221));
}

// The width in pixels of what is loaded for a size; 0 if nothing is.
LONG loadedWidth(int id, int size) {
    const IconHandle icon = loadIcon(id, size);
    ICONINFO parts{};
    if (icon.get() == nullptr || !::GetIconInfo(icon.get(), &parts)) return 0;
    const BitmapHandle mask(parts.hbmMask);
    const BitmapHandle colours(parts.hbmColor);
    return factsOf(colours.get()).bmWidth;
}

TEST(PicturesTest, TheProgramIconLoadsInEverySize) {
    for (const int size : kIconSizes)
        EXPECT_EQ(loadedWidth(IDI_PROGRAM, size), size);
}

TEST(PicturesTest, TheThreeStepIconsLoadInEveryLargeSize) {
    for (const int id : {IDI_STEP_1, IDI_STEP_2, IDI_STEP_3}) {
        for (const int size : kLargeIconSizes)
            EXPECT_EQ(loadedWidth(id, size), size) << id;
    }
}

}  // namespace
