// What a zoom leaves of windows that were not made for it: the platform's controls.
#include <bench/bench.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>

namespace {

using namespace kx::test;
using Manager = CKxGUILayoutManager;

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

// With its list open; 0 for what has none.
long ListHeight(HWND window) {
    RECT list{};
    if (ClassOf(window).starts_with(WC_COMBOBOXW) && (GetWindowLongW(window, GWL_STYLE) & 3) != CBS_SIMPLE)
        SendMessageW(window, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&list));
    return list.bottom - list.top;
}

// Where a window stands, and the measures in it that a font or a size may change.
std::string Measures(HWND window) {
    static constexpr std::tuple<const wchar_t*, UINT, WPARAM> measures[] = {
        // clang-format off
        {WC_COMBOBOXW, CB_GETITEMHEIGHT, WPARAM(-1)}, {WC_COMBOBOXW, CB_GETITEMHEIGHT, 0}, {WC_EDITW, EM_GETMARGINS, 0},
        {WC_LISTBOXW, LB_GETITEMHEIGHT, 0}, {WC_LISTVIEWW, LVM_GETCOLUMNWIDTH, 0}, {WC_TREEVIEWW, TVM_GETITEMHEIGHT, 0},
        // clang-format on
    };
    std::string all = Narrow(ClassOf(window)) + ": " + PlaceOf(window);
    for (const auto& [of, message, wParam] : measures)
        if (ClassOf(window) == of) all += " | " + std::to_string(SendMessageW(window, message, wParam, 0));
    return all + " | " + std::to_string(ListHeight(window));
}

// The window and all below.
std::vector<HWND> Family(HWND window) {
    std::vector<HWND> all{window};
    const auto append = [](HWND child, LPARAM list) -> BOOL {
        return reinterpret_cast<std::vector<HWND>*>(list)->push_back(child), TRUE;
    };
    EnumChildWindows(window, append, reinterpret_cast<LPARAM>(&all));
    return all;
}

std::vector<std::string> AllMeasures(HWND window) {
    std::vector<std::string> all;
    for (const HWND each : Family(window))
        all.push_back(Measures(each));
    return all;
}

void ZoomTo(HWND window, double zoom, int times = 1) {
    Manager::SetGuiZoom(zoom);
    for (int i = 0; i < times; ++i)
        Manager::ResizeWindowToGuiZoom(window, Manager::GetPreviousGuiZoom());
}

// There and back, once and over other zooms.
void ExpectItComesBack(HWND window, const char* what) {
    const auto before = AllMeasures(window);
    for (const std::vector<double>& way : {std::vector{1.5}, {1.5, 0.25, 3, 1.1, 0.75, 2}}) {
        for (const double zoom : way)
            ZoomTo(window, zoom, way.size() > 1 ? 2 : 1);
        ZoomTo(window, 1, 2);
        EXPECT_EQ(AllMeasures(window), before) << what << ", zoomed " << way.size() << " times";
    }
}

void Say(HWND window, UINT message, WPARAM wParam, LPARAM lParam) { SendMessageW(window, message, wParam, lParam); }

struct Control {
    const char* what;
    const wchar_t* name;
    DWORD style = 0;
    std::function<void(HWND)> prepare = {};
};

const Control kControls[] = {
    // clang-format off
    {"list of whole rows, border", WC_LISTBOXW, WS_BORDER}, {"list of columns", WC_LISTBOXW, LBS_MULTICOLUMN},
    {"list, scrolled", WC_LISTBOXW, WS_VSCROLL | WS_HSCROLL | LBS_DISABLENOSCROLL},
    {"list, its owner's rows", WC_LISTBOXW, LBS_OWNERDRAWFIXED, [](HWND w) { Say(w, LB_SETITEMHEIGHT, 0, 19); }},
    {"edit, margins", WC_EDITW, 0, [](HWND w) { Say(w, EM_SETMARGINS, 3, MAKELPARAM(7, 9)); }},
    {"edit, no margins", WC_EDITW, ES_MULTILINE, [](HWND w) { Say(w, EM_SETMARGINS, 3, 0); }},
    {"drop-down list", WC_COMBOBOXW, CBS_DROPDOWNLIST}, {"drop-down", WC_COMBOBOXW, CBS_DROPDOWN},
    {"drop-down, given heights", WC_COMBOBOXW, CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, [](HWND w) {
        Say(w, CB_SETITEMHEIGHT, 0, Manager::Zoomed(19)), Say(w, CB_SETITEMHEIGHT, WPARAM(-1), Manager::Zoomed(23)); }},
    {"drop-down with images", WC_COMBOBOXEXW, CBS_DROPDOWN},
    {"list view", WC_LISTVIEWW, LVS_REPORT, [](HWND w) { AddColumn(w, 55); }},
    {"tree view", WC_TREEVIEWW, 0, [](HWND w) { Say(w, TVM_SETITEMHEIGHT, 22, 0); }},
    {"rebar", REBARCLASSNAMEW, CCS_NOPARENTALIGN | CCS_NORESIZE},
    // clang-format on
};

struct PlatformZoom : testing::Test {
    PlatformZoom() {
        const INITCOMMONCONTROLSEX all{sizeof all, 0xFFFF};
        InitCommonControlsEx(&all);
        m_panel.Create(m_parent.Window(), 0, 0, 700, 600, true, true);
    }
    ~PlatformZoom() override { Manager::SetGuiZoom(1); }
    HWND Add(const Control& control) {
        const RECT place{Manager::Zoomed(11), Manager::Zoomed(13), Manager::Zoomed(154), Manager::Zoomed(114)};
        const HWND window = AddChild(m_panel, control.name, 0, place, control.style, L"text");
        Say(window, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
        if (control.prepare) control.prepare(window);
        m_panel.InsertWindow(window);
        return window;
    }

    RecordingParent m_parent{{700, 600}};
    CKxDevUI_Container m_panel;
};

TEST_F(PlatformZoom, LeavesControlsAsTheyWere) {
    for (const Control& control : kControls) {
        const HWND window = Add(control);
        const long list = ListHeight(window);
        ExpectItComesBack(m_panel, control.what);
        ZoomTo(m_panel, 1.5);
        for (const HWND inner : Family(window)) {
            const RECT rect = RectInParent(inner), around = RectInParent(GetAncestor(inner, GA_PARENT));
            EXPECT_TRUE(rect.right <= around.right - around.left && rect.bottom <= around.bottom - around.top)
                << control.what << ": " << Measures(inner) << " in " << Measures(window);
        }
        EXPECT_GE(ListHeight(window), 1.5 * list - 1) << control.what;
        ZoomTo(m_panel, 1);
        DestroyWindow(window);
    }
}

TEST_F(PlatformZoom, GoesIntoWhatDoesNotPlaceItsChildren) {
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.style = CS_GLOBALCLASS;
    for (const wchar_t* name : {L"KxTestPanel", L"KxTestOwnLayout"})
        description.lpszClassName = name, RegisterClassW(&description);
    Manager::AddClassWithOwnLayout(L"KxTestOwnLayout");
    Manager::AddClassWithOwnLayout(nullptr);
    const std::tuple<const wchar_t*, DWORD, bool> rows[] = {
        {WC_BUTTONW, BS_GROUPBOX, true}, {WC_STATICW, 0, true},      {WC_TABCONTROLW, 0, true},
        {L"KxTestPanel", 0, true},       {WC_LISTVIEWW, 0, false},   {WC_COMBOBOXW, CBS_SIMPLE, false},
        {L"KxTestOwnLayout", 0, false},  {REBARCLASSNAMEW, 0, false}};
    for (const auto& [name, style, goesIn] : rows) {
        const HWND outer = Add({"", name, style});
        const HWND inner = AddChild(outer, WC_EDITW, 0, {10, 20, 50, 40});
        ZoomTo(m_panel, 1.5);
        EXPECT_EQ(PlaceOf(inner), goesIn ? "15 30 60 30" : "10 20 40 20") << Narrow(name);
        ZoomTo(m_panel, 1);
        DestroyWindow(outer);
    }
}

}  // namespace
