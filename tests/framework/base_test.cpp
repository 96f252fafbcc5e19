// The element base: sizes, places, states, reports; and the free helpers.
#include <bench/bench.h>
#include <bench/window.h>
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
        return m_hWnd = AddChild(parent, L"STATIC", 0, {x, y, x + cx, y + cy});
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

TEST(Base, MovesAndSizes) {
    RecordingParent parent;
    Plain control(30, 40), unsized;
    control.Create(parent.Window(), 10, 20, 50, 60, true, true);
    control.MoveWindowRelative(1, 2);
    EXPECT_EQ(PlaceOf(control), "11 22 50 60") << "the size it has, not the nominal one";
    const Zoomed zoomed(1.5);
    control.MoveWindow(-1, 50);
    EXPECT_EQ(PlaceOf(control), "11 50 40 30") << "the nominal size, not zoomed";
    control.ResizeWindow(70, -1);
    control.ResizeWindowRelative(-20, 5);
    EXPECT_EQ(PlaceOf(control), "11 50 50 35");
    EXPECT_EQ(Nominal(control).cy, 35);
    EXPECT_EQ(control.GetWidth(), 75) << "zoomed";
    EXPECT_EQ(control.GetPositionY(), 50);
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
    control.CorrectZOrder(nullptr);
    windowless.RefreshWindow();
    windowless.SetFocus();
    windowless.MoveWindow(-1, -1);
    EXPECT_EQ(windowless.GetPositionX(), 0);
}

TEST(Base, ReportsWithTheLabelsName) {
    RecordingParent parent;
    Plain control;
    const auto label = [&](const std::wstring& text) { return Child(parent, L"STATIC", text); };
    const HWND edit = Child(parent, L"EDIT", L"", WS_VISIBLE);
    std::wstring shown;
    const auto box = [](HWND, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* to) {
        EXPECT_EQ(CallText("box", caption, style, timeout), "box(\"Error!\", 16, -1)");
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
        {label(L"Step:"), L"bad", L"Step: bad"},
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
        double number;  // 77: none
        int whole;
    } rows[] = {{L"12", 12, 12},
                {L" -3 ", -3, -3},
                {L"1,5", 1.5, 77},
                {L"", 77, 77},
                {L"12a", 77, 77},
                {L"x", 77, 77},
                {L"99999999999", 99999999999, 77}};
    for (const auto& row : rows) {
        SetWindowTextW(edit, row.text);
        double number = 77;
        int whole = 77;
        EXPECT_EQ(GetWndDouble(edit, number), row.number != 77) << Narrow(row.text);
        EXPECT_EQ(GetWndInt(edit, whole), row.whole != 77) << Narrow(row.text);
        SetSettingsSource([&](const wchar_t*, const wchar_t* name, CKxStringW& value) {
            if (std::wstring(name) == L"bad") throw 1;
            value = row.text;
            return std::wstring(name) == L"known";
        });
        for (const wchar_t* name : {L"bad", L"unknown", L"known"}) {
            double setting = 77;
            int wholeSetting = 77;
            const bool known = std::wstring(name) == L"known";
            EXPECT_EQ(GetSettingDouble(L"s", name, setting), known && row.number != 77) << Narrow(row.text);
            EXPECT_EQ(GetSettingInt(L"s", name, wholeSetting), known && row.whole != 77) << Narrow(row.text);
            EXPECT_EQ(setting, known ? row.number : 77);
            EXPECT_EQ(wholeSetting, known ? row.whole : 77);
        }
        SetSettingsSource(nullptr);
        EXPECT_EQ(number, row.number);
        EXPECT_EQ(whole, row.whole);
    }
    double none = 0;
    EXPECT_FALSE(GetWndDouble(nullptr, none));
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
    EXPECT_EQ(GetWndY(caption), 8);
    EXPECT_LT(RectInParent(caption).right, 207);
    EXPECT_TRUE(GetWindowLongW(line, GWL_STYLE) & static_cast<LONG>(WS_CLIPSIBLINGS));
    EXPECT_FALSE(GetWindowLongW(thick, GWL_STYLE) & static_cast<LONG>(WS_CLIPSIBLINGS));
    BoldifyCaptions(nullptr);
}

}  // namespace
