// The element base: sizes, places, states, reports; and the free helpers.
#include <bench/bench.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_base.h>
#include <kxsystem/kx_log.h>

#include <limits>
#include <string>
#include <utility>

namespace {

using namespace kx::test;

class Plain : public CKxDevUI_Base {
public:
    using CKxDevUI_Base::CKxDevUI_Base;
    using CKxDevUI_Base::CorrectZOrder;
    using CKxDevUI_Base::ReportError;
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override {
        m_hWnd =
            CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, x, y, cx, cy, parent, nullptr, nullptr, nullptr);
        return m_hWnd;
    }
};

struct Zoomed {
    explicit Zoomed(double zoom) { CKxGUILayoutManager::SetGuiZoom(zoom); }
    ~Zoomed() { CKxGUILayoutManager::SetGuiZoom(1.0); }
};

SIZE Nominal(CKxDevUI_Base& control) {
    SIZE size{};
    control.GetWindowSize(&size);
    return size;
}

HWND Child(RecordingParent& parent, const wchar_t* windowClass, const std::wstring& text, DWORD style = 0,
           DWORD exStyle = 0, int height = 20) {
    return CreateWindowExW(exStyle, windowClass, text.c_str(), WS_CHILD | style, 7, 8, 300, height, parent.Window(),
                           nullptr, nullptr, nullptr);
}

TEST(Base, TakesTheHeightFirst) {
    Plain none, sized(20, 101);
    EXPECT_TRUE(Nominal(none).cx == -1 && none.GetEnabled() && none.GetVisible() && none.GetTitle().IsEmpty());
    EXPECT_EQ(Nominal(sized).cy, 20);
    none.GetWindowSize(nullptr);

    sized.SetTitle(L"Objective");
    sized.SetEnabled(false);
    sized.SetId(6);
    const Plain copy(sized);
    EXPECT_FALSE(Plain(copy).GetEnabled());
    EXPECT_TRUE(copy.GetId() == 6 && Plain(copy).GetTitle() == L"Objective");
}

TEST(Base, RoundsZoomedSizesAwayFromZero) {
    const Zoomed zoomed(1.25);
    for (const auto& [width, expected] : {std::pair{101L, 126L}, {2L, 3L}, {-2L, -3L}, {0L, 0L}})
        EXPECT_EQ(Plain(0, width).GetWidth(), expected);
}

TEST(Base, MovesAndSizes) {
    RecordingParent parent;
    Plain control(30, 40);
    control.Create(parent.Window(), 10, 20, 50, 60, true, true);
    const auto rect = [&] { return RectInParent(control); };
    control.MoveWindowRelative(1, 2);
    EXPECT_EQ(rect().left, 11);
    EXPECT_EQ(rect().right, 61) << "the size it has, not the nominal one";
    const Zoomed zoomed(1.5);
    control.MoveWindow(-1, 50);
    EXPECT_EQ(rect().left, 11);
    EXPECT_EQ(rect().top, 50);
    EXPECT_EQ(rect().right - rect().left, 40) << "the nominal size, not zoomed";
    control.ResizeWindow(70, -1);
    control.ResizeWindowRelative(-20, 5);
    EXPECT_EQ(rect().right - rect().left, 50);
    EXPECT_EQ(Nominal(control).cy, 35);
    EXPECT_EQ(control.GetPositionY(), 50);
    Plain unsized;
    unsized.ResizeWindowRelative(5, 7);
    EXPECT_EQ(Nominal(unsized).cx, 4);
}

TEST(Base, ShowsAndHidesOnlyOnChange) {
    RecordingParent parent;
    Plain control, windowless;
    control.Create(parent.Window(), 0, 0, 10, 10, true, true);
    ShowWindow(control, SW_HIDE);
    control.SetVisible(true);
    EXPECT_FALSE(IsWindowVisible(control)) << "it counts as visible already";
    control.SetVisible(false);
    control.SetVisible(true);
    EXPECT_TRUE(IsWindowVisible(control));
    control.SetEnabled(false);
    EXPECT_TRUE(IsWindowEnabled(control)) << "the base leaves the window alone";
    windowless.RefreshWindow();
    windowless.SetFocus();
    windowless.MoveWindow(-1, -1);
    EXPECT_EQ(windowless.GetPositionX(), 0);
}

TEST(Base, TakesAPlaceInTheZOrder) {
    RecordingParent parent;
    Plain a, b, c;
    for (Plain* each : {&a, &b, &c})
        each->Create(parent.Window(), 0, 0, 5, 5, true, true);
    c.CorrectZOrder(b);
    EXPECT_EQ(GetWindow(a, GW_HWNDNEXT), c);
    c.CorrectZOrder(a);
    EXPECT_EQ(GetWindow(c, GW_HWNDNEXT), a);
    c.CorrectZOrder(nullptr);
}

TEST(Base, ReportsWithTheLabelsName) {
    RecordingParent parent;
    Plain control;
    control.Create(parent.Window(), 0, 0, 10, 10, true, true);
    const auto label = [&](const std::wstring& text) { return Child(parent, L"STATIC", text); };
    const HWND edit = Child(parent, L"EDIT", L"", WS_VISIBLE);
    std::wstring shown;
    const auto box = [](HWND, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* to) {
        EXPECT_STREQ(caption, L"Error!");
        EXPECT_EQ(style, static_cast<UINT>(MB_ICONERROR));
        EXPECT_EQ(timeout, -1);
        *static_cast<std::wstring*>(to) = text;
        return IDOK;
    };
    KX_SetMessageBoxHandler(box, &shown);
    const std::wstring longText(3000, L'x');
    const struct {
        HWND label;
        const wchar_t* text;
        std::wstring expected;
    } rows[] = {
        {label(L"Step"), L"bad", L"Step: bad"},
        {label(L"Step:"), L"bad", L"Step: bad"},
        {nullptr, L"bad", L"bad"},
        {nullptr, nullptr, L""},
        {label(L"Step"), longText.c_str(), L"Step: " + longText.substr(0, 999 - 6)},
        {label(longText), L"bad", longText.substr(0, 999)},
    };
    for (const auto& row : rows) {
        BringToFront(parent.Window());
        SetFocus(nullptr);
        control.ReportError(row.text, true, edit, row.label);
        EXPECT_EQ(shown, row.expected);
        EXPECT_EQ(GetFocus(), edit);
    }
    KX_SetMessageBoxHandler(nullptr, nullptr);

    std::wstring log;
    CKxLogFile::SetSink([](const wchar_t* line, void* to) { *static_cast<std::wstring*>(to) += line; }, &log);
    for (const bool detail : {false, true}) {
        CKxLogFile::SetDetail(detail);
        control.ReportError(detail ? L"loud" : L"quiet", false, nullptr, nullptr);
    }
    CKxLogFile::SetDetail(false);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(log, L"devgui_base(230): CKxDevUI_Base::ReportError - loud");
}

// ---- Free helpers --------------------------------------------------------------------------------------------------

TEST(Helpers, FindsTheNearestValueTheLaterOfTwo) {
    const double values[] = {1, 2, 4, 4, 10};
    const std::pair<double, long> rows[] = {{0, 0}, {1.5, 1}, {4, 3},
                                            {7, 4}, {100, 4}, {std::numeric_limits<double>::quiet_NaN(), 0}};
    for (const auto& [value, expected] : rows)
        EXPECT_EQ(FindNearestValue(value, values, 5), expected) << value;
    EXPECT_EQ(FindNearestValue(1, values, 0), -1);
    EXPECT_EQ(FindNearestValue(1, nullptr, 5), -1);
    EXPECT_EQ(FindNearestValue(1, values, -3), -1);
}

TEST(Helpers, ReadsNumbersFromEdits) {
    RecordingParent parent;
    const HWND edit = Child(parent, L"EDIT", L"");
    const struct {
        const wchar_t* text;
        bool isDouble, isInt;
    } rows[] = {{L"12", true, true},    {L" -3 ", true, true}, {L"1,5", true, false},        {L"", false, false},
                {L"12a", false, false}, {L"x", false, false},  {L"99999999999", true, false}};
    for (const auto& row : rows) {
        SetWindowTextW(edit, row.text);
        double number = 77;
        int whole = 77;
        EXPECT_EQ(GetWndDouble(edit, number), row.isDouble) << Narrow(row.text);
        EXPECT_EQ(GetWndInt(edit, whole), row.isInt) << Narrow(row.text);
        EXPECT_EQ(number == 77, !row.isDouble);
        EXPECT_EQ(whole == 77, !row.isInt);
    }
    double number = 0;
    EXPECT_FALSE(GetWndDouble(nullptr, number));
}

TEST(Helpers, BoldifiesMarkedCaptions) {
    RecordingParent parent;
    const auto font = [](HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); };
    const HWND caption = Child(parent, L"STATIC", L"Camera", 0, WS_EX_TRANSPARENT);
    const HWND others[] = {Child(parent, L"STATIC", L"Camera"),
                           Child(parent, L"STATIC", std::wstring(254, L'x'), 0, WS_EX_TRANSPARENT),
                           Child(parent, L"BUTTON", L"Camera", 0, WS_EX_TRANSPARENT)};
    const HWND line = Child(parent, L"STATIC", L"", SS_SUNKEN, 0, 3);
    const HWND thick = Child(parent, L"STATIC", L"", SS_SUNKEN, 0, 4);
    BoldifyCaptions(parent.Window());
    EXPECT_EQ(font(caption), KX_GetDefaultGuiFontBold());
    for (const HWND other : others)
        EXPECT_NE(font(other), KX_GetDefaultGuiFontBold());
    EXPECT_EQ(GetWndX(caption), 7);
    const RECT rect = RectInParent(caption);
    EXPECT_LT(rect.right - rect.left, 200);
    EXPECT_TRUE(GetWindowLongW(line, GWL_STYLE) & static_cast<LONG>(WS_CLIPSIBLINGS));
    EXPECT_FALSE(GetWindowLongW(thick, GWL_STYLE) & static_cast<LONG>(WS_CLIPSIBLINGS));
    BoldifyCaptions(nullptr);
}

}  // namespace
