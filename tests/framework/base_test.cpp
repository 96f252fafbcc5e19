// The element base: sizes, places, states, reports; and the free helpers.
#include <bench/bench.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_base.h>

#include <cmath>

namespace {

using namespace kx::test;

struct Plain : CKxDevUI_Base {
    using CKxDevUI_Base::CKxDevUI_Base;
    using CKxDevUI_Base::ReportError;
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override {
        return m_hWnd = AddChild(parent, L"STATIC", 0, {x, y, x + cx, y + cy});
    }
};

// A control and, beside it, children of its parent.
struct Base : testing::Test {
    ~Base() override { CKxGUILayoutManager::SetGuiZoom(1.0), KX_SetMessageBoxHandler(nullptr, nullptr); }
    static std::string Nominal(CKxDevUI_Base& control) {
        SIZE size{};
        control.GetWindowSize(&size);
        return std::to_string(size.cx) + " " + std::to_string(size.cy);
    }
    HWND Child(const wchar_t* windowClass, const std::wstring& text, DWORD style = 0, DWORD exStyle = 0) {
        return CreateWindowExW(exStyle, windowClass, text.c_str(), WS_CHILD | style, 7, 8, 300, 20, parent.Window(),
                               nullptr, nullptr, nullptr);
    }

    RecordingParent parent;
    Plain control{30, 40};
};
using Helpers = Base;

TEST_F(Base, TakesTheHeightFirst) {
    Plain none, sized(20, 101);
    EXPECT_EQ(Nominal(none) + ", " + Nominal(sized), "-1 -1, 101 20");
    sized.SetTitle(L"Objective");
    sized.SetEnabled(false);
    sized.SetId(6);
    Plain copy(sized);
    EXPECT_TRUE(!copy.GetEnabled() && copy.GetId() == 6 && copy.GetTitle() == L"Objective");
    EXPECT_EQ(Nominal(copy), "101 20");
}

TEST_F(Base, MovesAndSizes) {
    control.Create(parent.Window(), 10, 20, 50, 60, true, true);
    const auto zoom = [] { CKxGUILayoutManager::SetGuiZoom(1.5); };
    // Moved it keeps the size it has, or is given the nominal one, not zoomed.
    Play({{[&] { control.MoveWindowRelative(1, 2); }, "11 22 50 60, 40 30"},
          {[&] { zoom(), control.MoveWindow(-1, 50); }, "11 50 40 30, 40 30"},
          {[&] { control.MoveWindow(12, -1); }, "12 50 40 30, 40 30"},
          {[&] { control.ResizeWindow(70, -1); }, "12 50 70 30, 70 30"},
          {[&] { control.ResizeWindow(-1, 31); }, "12 50 70 31, 70 31"},
          {[&] { control.ResizeWindowRelative(-20, 5); }, "12 50 50 36, 50 36"}},
         [this] { return PlaceOf(control) + ", " + Nominal(control); });
    EXPECT_EQ(
        CallText("zoomed", control.GetPositionX(), control.GetPositionY(), control.GetWidth(), control.GetHeight()),
        "zoomed(12, 50, 75, 54)");
    Plain unsized;
    unsized.ResizeWindowRelative(5, 7);
    EXPECT_EQ(Nominal(unsized), "4 6");
}

TEST_F(Base, ShowsAndHidesOnlyOnChange) {
    control.Create(parent.Window(), 0, 0, 10, 10, true, true);
    ShowWindow(control, SW_HIDE);
    // It counts as visible already.
    Play({{[&] { control.SetVisible(true); }, "hidden"},
          {[&] { control.SetVisible(false), control.SetVisible(true); }, "shown"}},
         [this] { return IsWindowVisible(control) ? "shown" : "hidden"; });
}

TEST_F(Base, ReportsWithTheLabelsName) {
    const HWND edit = Child(L"EDIT", L"", WS_VISIBLE);
    std::wstring shown;
    const auto box = [](HWND, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* to) {
        EXPECT_EQ(CallText("box", caption, style, timeout), "box(\"Error!\", 16, -1)");
        *static_cast<std::wstring*>(to) = text;
        return IDOK;
    };
    KX_SetMessageBoxHandler(box, &shown);
    const std::wstring longText(3000, L'x');
    const std::tuple<HWND, const wchar_t*, std::wstring> rows[] = {
        {Child(L"STATIC", L"Step:"), L"bad", L"Step: bad"},
        {nullptr, nullptr, L""},
        {Child(L"STATIC", L"Step"), longText.c_str(), L"Step: " + longText.substr(0, 999 - 6)},
        {Child(L"STATIC", longText), L"bad", longText.substr(0, 999)},
    };
    for (const auto& [label, text, expected] : rows) {
        BringToFront(parent.Window());
        SetFocus(nullptr);
        control.ReportError(text, true, edit, label);
        EXPECT_EQ(shown, expected);
        EXPECT_EQ(GetFocus(), edit);
    }
}

TEST_F(Helpers, FindTheNearestValueTheLaterOfTwo) {
    const double values[] = {1, 2, 4, 4, 10};
    const std::pair<double, long> rows[] = {{0, 0}, {1.5, 1}, {4, 3}, {7, 4}, {100, 4}, {std::nan(""), 0}};
    for (const auto& [value, expected] : rows)
        EXPECT_EQ(FindNearestValue(value, values, 5), expected) << value;
    EXPECT_TRUE(FindNearestValue(1, values, 0) == -1 && FindNearestValue(1, values, -3) == -1);
    EXPECT_EQ(FindNearestValue(1, nullptr, 5), -1);
}

// From edits and from the host's settings.
TEST_F(Helpers, ReadNumbers) {
    const HWND edit = Child(L"EDIT", L"");
    // 77: none.
    const std::tuple<std::wstring, double, int> rows[] = {{L" \uFF0D3 ", -3, -3},
                                                          {L"1,5", 1.5, 77},
                                                          {L"12a", 77, 77},
                                                          {L"2147483648", 2147483648, 77},
                                                          {std::wstring(255, L'0'), 0, 0}};
    for (const auto& [text, number, whole] : rows) {
        SetWindowTextW(edit, text.c_str());
        SetSettingsSource([&, &shown = text](const wchar_t*, const wchar_t* name, CKxStringW& value) {
            if (std::wstring(name) == L"bad") throw 1;
            value = shown.c_str();
            return std::wstring(name) == L"known";
        });
        double typed = 77, set = 77;
        int typedWhole = 77, setWhole = 77;
        EXPECT_EQ(GetWndDouble(edit, typed), number != 77);
        EXPECT_EQ(GetWndInt(edit, typedWhole), whole != 77);
        EXPECT_EQ(GetSettingDouble(L"s", L"known", set), number != 77);
        EXPECT_EQ(GetSettingInt(L"s", L"known", setWhole), whole != 77);
        EXPECT_FALSE(GetSettingDouble(L"s", L"bad", set) || GetSettingInt(L"s", L"unknown", setWhole));
        EXPECT_TRUE(typed == number && set == number && typedWhole == whole && setWhole == whole) << Narrow(text);
    }
    SetSettingsSource(nullptr);
    double none = 0;
    SetWindowTextW(edit, std::wstring(256, L'0').c_str());
    EXPECT_FALSE(GetWndDouble(edit, none)) << "nobody has typed that";
}

TEST_F(Helpers, BoldifyMarkedCaptions) {
    const auto isBold = [](HWND window) {
        return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)) == KX_GetDefaultGuiFontBold();
    };
    const std::pair<HWND, bool> rows[] = {
        {Child(L"STATIC", L"Camera", 0, WS_EX_TRANSPARENT), true},
        {Child(L"STATIC", std::wstring(253, L'x'), 0, WS_EX_TRANSPARENT), true},
        {Child(L"STATIC", std::wstring(254, L'x'), 0, WS_EX_TRANSPARENT), false},
        {Child(L"STATIC", L"Camera"), false},
        {Child(L"BUTTON", L"Camera", 0, WS_EX_TRANSPARENT), false},
    };
    BoldifyCaptions(parent.Window());
    for (const auto& [window, bold] : rows)
        EXPECT_EQ(isBold(window), bold) << Narrow(TextOf(window));
    EXPECT_LT(RectInParent(rows[0].first).right, 207) << "no wider than its text";
}

}  // namespace
