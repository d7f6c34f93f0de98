#include "ui/windows/dialog_units.h"

#include <gtest/gtest.h>

namespace {

constexpr int kInTheDesign = 9003, kTwiceAsLarge = 9005;
constexpr int kControls[] = {1004, 1012, 132};

INT_PTR CALLBACK plainProcedure(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

class DesignUnitsTest : public testing::TestWithParam<int> {
protected:
    DesignUnitsTest() : design(make(kInTheDesign)), other(make(GetParam())) {}
    ~DesignUnitsTest() override {
        ::DestroyWindow(design);
        ::DestroyWindow(other);
    }
    static HWND make(int id) {
        return ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), nullptr,
                                    plainProcedure, 0);
    }
    static RECT placeOf(HWND dialog, int control) {
        RECT place{};
        ::GetWindowRect(::GetDlgItem(dialog, control), &place);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    HWND design, other;
};

TEST_P(DesignUnitsTest, TakePlacesToThoseOfTheDesign) {
    const DesignUnits units(other);

    for (const int control : kControls) {
        const RECT place = units(placeOf(other, control));
        const RECT expected = placeOf(design, control);
        EXPECT_TRUE(::EqualRect(&place, &expected)) << control;
    }
}

TEST_P(DesignUnitsTest, TakeTheSizeOfADialogToThatOfTheDesign) {
    RECT made{};
    RECT expected{};
    ::GetClientRect(other, &made);
    ::GetClientRect(design, &expected);

    const SIZE size = DesignUnits(other)(SIZE{made.right, made.bottom});

    EXPECT_EQ(size.cx, expected.right);
    EXPECT_EQ(size.cy, expected.bottom);
}

INSTANTIATE_TEST_SUITE_P(OfEachSize, DesignUnitsTest, testing::Values(kInTheDesign, kTwiceAsLarge));

}  // namespace
