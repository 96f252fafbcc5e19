// The container: what it makes of windows and templates, and what its host hears.
#include <bench/bench.h>
#include <bench/script.h>
#include <bench/window.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>

#include <commctrl.h>

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace {

using namespace kx::test;

constexpr int kButton = 7, kEdit = 8;

// Writes down what it hears; makes a button and an edit, or what `act` does in a command.
class Panel : public CKxDevUI_Container {
public:
    explicit Panel(Recorder& record) : m_record(record) {}
    ~Panel() override { Destroy(); }

    LRESULT initResult = 1;
    std::function<void()> act, draw;

protected:
    LRESULT OnInit(UINT message, WPARAM, LPARAM) override {
        m_record.Call("OnInit", message, m_hWnd != nullptr, m_width);
        return initResult;
    }
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_record.Call("OnCommand", LOWORD(wParam), HIWORD(wParam));
        if (const auto action = act) return action(), 0;  // it may delete this object
        return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override {
        m_record.Call("OnScroll", horizontal);
        return CKxDevUI_Container::OnScroll(message, wParam, lParam, horizontal);
    }
    LRESULT OnDrawItem(UINT, WPARAM, LPARAM lParam) override {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (const auto action = std::exchange(draw, nullptr)) action();
        return FillRect(item.hDC, &item.rcItem, KX_GetSysColorBrush(COLOR_WINDOW));
    }

private:
    Recorder& m_record;
};

struct Container : testing::Test {
    ~Container() override { CKxGUILayoutManager::SetGuiZoom(1), KX_SetColorScheme(eKxColorScheme_System); }
    HWND Make(Panel& made, long cx = 200, long cy = 200) {
        return made.Create(parent.Window(), 5, 6, cx, cy, true, true);
    }
    HWND Add(const wchar_t* name, int id, const RECT& place, DWORD style = 0) {
        const HWND child = AddChild(panel, name, id, place, style);
        panel.InsertWindow(child);
        return child;
    }
    std::string Told() { return Brief(parent.Record()); }

    RecordingParent parent;
    Panel panel{parent.Record()};
};

TEST_F(Container, TakesSizesUnlessNegative) {
    ASSERT_TRUE(Make(panel, -1, 70));
    EXPECT_EQ(Told(), "OnInit(1, true, 100)");
    EXPECT_EQ(PlaceOf(panel), "5 6 100 70");
    const HWND first = panel;
    ASSERT_TRUE(Make(panel, 0, 20));
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(panel.GetWidth(), 0);
    panel.initResult = -1;  // OnInit gives up
    EXPECT_EQ(Make(panel), nullptr);
    EXPECT_EQ(HWND{panel}, nullptr);
    EXPECT_EQ(panel.Create(nullptr, 0, 0, 10, 10, true, true), nullptr);
}

TEST_F(Container, AdoptsARegionAndItsPlaceInTheTabOrder) {
    const HWND before = AddChild(parent.Window(), L"BUTTON", 1, {0, 0, 40, 20});
    const HWND inside = AddChild(parent.Window(), L"BUTTON", 2, {110, 110, 150, 130});
    const HWND across = AddChild(parent.Window(), L"BUTTON", 3, {199, 110, 230, 130});
    const HWND after = AddChild(parent.Window(), L"BUTTON", 4, {200, 110, 340, 120});
    ASSERT_TRUE(panel.CreateFromParent(parent.Window(), 100, 100, 100, 60));
    EXPECT_EQ(Told(), "OnInit(1, true, 100)");
    EXPECT_EQ(panel.GetWindows(), (std::list<HWND>{inside, across})) << "also the one that straddles the border";
    EXPECT_EQ(GetParent(across), panel);
    EXPECT_EQ(PlaceOf(inside), "10 10 40 20");
    EXPECT_EQ(GetWindow(panel, GW_HWNDPREV), before);
    EXPECT_EQ(GetWindow(panel, GW_HWNDNEXT), after);

    // By id; a missing one is skipped. Made anew, it destroys what it had.
    Panel byId(parent.Record());
    ASSERT_TRUE(byId.CreateFromParent(parent.Window(), 300, 0, 50, 50, 2, 4, 99));
    EXPECT_EQ(byId.GetWindows(), std::list<HWND>{after});
    ASSERT_TRUE(Make(panel));
    EXPECT_FALSE(IsWindow(inside));
}

TEST_F(Container, TellsControlsFromWindows) {
    Panel inner(parent.Record());
    inner.SetId(77);
    Make(panel), Make(inner);
    const HWND plain = AddChild(parent.Window(), L"STATIC", 5, {20, 30, 40, 60});
    panel.InsertWindow(plain);
    panel.InsertWindow(inner);
    EXPECT_EQ(panel.GetWindows(), std::list<HWND>{plain});
    EXPECT_EQ(panel.GetElement(77), &inner);
    EXPECT_EQ(panel.GetWindow(5), plain);
    EXPECT_EQ(GetParent(inner), panel);
    EXPECT_EQ(GetWindow(plain, GW_HWNDNEXT), HWND{inner}) << "the last in the tab order";
    for (const bool enable : {false, true}) {
        panel.SetEnabled(enable);
        EXPECT_EQ(inner.GetEnabled(), enable);
        EXPECT_EQ(IsWindowEnabled(plain) != FALSE, enable);
        EXPECT_TRUE(IsWindowEnabled(panel)) << "it keeps receiving messages";
    }
    panel.SetEnabled(false);
    EnableWindow(panel, FALSE);
    panel.SetEnabled(true);
    EXPECT_TRUE(IsWindowEnabled(panel));
    // An element that has no window with its id is found as itself.
    inner.SetId(78);
    EXPECT_EQ(reinterpret_cast<CKxDevUI_Base*>(panel.GetWindow(78)), static_cast<CKxDevUI_Base*>(&inner));
    RECT area{1, 2, 3, 4};
    panel.UnionArea(5, &area, false);
    EXPECT_EQ(CallText("", area.left, area.top, area.right, area.bottom), "(1, 2, 40, 60)");
    panel.UnionArea(99, &area, false);
    EXPECT_EQ(panel.UnionArea(5, &area, true), &area);
    EXPECT_EQ(CallText("", area.left, area.top, area.right, area.bottom), "(20, 30, 40, 60)");
    EXPECT_EQ(panel.UnionArea(5, nullptr, true), nullptr);
}

TEST_F(Container, SurvivesWhatHostsDoToIt) {
    Make(panel);
    {
        Panel gone(parent.Record());
        gone.SetId(3);
        gone.Create(panel, 0, 0, 10, 10, true, true);
        panel.InsertElement(&gone);
        panel.InsertElement(&gone);
    }
    EXPECT_EQ(panel.GetElement(3), nullptr);
    panel.SetEnabled(false);
    for (CKxDevUI_Base* const wrong : {static_cast<CKxDevUI_Base*>(nullptr), static_cast<CKxDevUI_Base*>(&panel)})
        panel.InsertElement(wrong);
    for (const HWND wrong : {HWND{nullptr}, HWND{panel}, parent.Window(), GetDesktopWindow()})
        panel.InsertWindow(wrong);
    EXPECT_TRUE(panel.GetWindows().empty());
    EXPECT_EQ(GetParent(panel), parent.Window());

    // Foreign windows with 16 extra bytes, whatever stands in them, are plain windows.
    WNDCLASSW hostile{};
    hostile.lpfnWndProc = DefWindowProcW;
    hostile.cbWndExtra = 16;
    hostile.lpszClassName = L"HostileTest";
    RegisterClassW(&hostile);
    const std::pair<LONG_PTR, LONG_PTR> words[] = {{0, 0}, {5015, 0}, {5015, 0x1234567890}, {0, 0x10}};
    for (const auto& [tag, object] : words) {
        const HWND window = AddChild(parent.Window(), L"HostileTest", 1, {0, 0, 5, 5});
        SetWindowLongPtrW(window, 0, tag);
        SetWindowLongPtrW(window, 8, object);
        panel.InsertWindow(window);
        EXPECT_EQ(panel.GetWindows().back(), window);
    }
    panel.Destroy();
    EXPECT_TRUE(panel.GetWindows().empty());
}

TEST_F(Container, ForwardsUnlessToldNotTo) {
    Make(panel);
    const HWND button = Add(L"BUTTON", kButton, {10, 10, 90, 40}), edit = Add(L"EDIT", kEdit, {10, 50, 90, 70});
    const auto send = [this](UINT message, WPARAM wParam) { SendMessageW(panel, message, wParam, 0); };
    Told();
    Play({{[&] { Click(button, 10, 10); }, "OnCommand(7, 0) 7:0#7"},
          {[&] { send(WM_HSCROLL, 3), send(WM_VSCROLL, 4); }, "OnScroll(true) 3:0=0 OnScroll(false) 4:0=0"},
          {[&] { panel.Init(false), Click(button, 10, 10), send(WM_HSCROLL, 3); }, "OnCommand(7, 0) OnScroll(true)"},
          {[&] { panel.Init(true), Click(edit, 5, 5); }, "OnCommand(8, 256) 8:256#8"},
          // The focus that is lost is not told of.
          {[&] { panel.Destroy(); }, ""}},
         [this] { return Told(); });
    Make(panel);
    EXPECT_EQ(SendMessageW(panel, 0x0500, 1, 0), 0);
    EXPECT_EQ(SendMessageW(panel, 0x83ED, 0, 0), 0);
    EXPECT_EQ(SendMessageW(panel, WM_ERASEBKGND, 0, 0), 1);
    parent.Answer(WM_COMMAND, 5);
    EXPECT_EQ(SendMessageW(panel, WM_COMMAND, 1, 0), 5);
    // What a handler throws is logged.
    panel.act = [] { throw 1; };
    int logged = 0;
    CKxLogFile::SetSink([](const wchar_t*, void* to) { ++*static_cast<int*>(to); }, &logged);
    SendMessageW(panel, WM_COMMAND, 1, 0);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(logged, 1);
}

TEST_F(Container, WaitingEndsWithTheWindow) {
    Make(panel);
    panel.act = [&] { panel.Quit(0); };
    PostMessageW(panel, WM_COMMAND, 1, 0);
    panel.WaitForDialog();
    EXPECT_EQ(HWND{panel}, nullptr);

    Make(panel);
    PostMessageW(parent.Window(), WM_CLOSE, 0, 0);
    panel.WaitForDialog();
    EXPECT_TRUE(IsWindow(parent.Window())) << "the message that ends the loop is not delivered";
    PostQuitMessage(9);
    panel.WaitForDialog();
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 9u);
    Panel(parent.Record()).WaitForDialog();
}

TEST_F(Container, PaintsInTheSchemeThatChangesUnderIt) {
    Make(panel);
    Add(L"BUTTON", kButton, {20, 20, 60, 60}, BS_OWNERDRAW);
    bool changed = false;
    panel.draw = [&] { changed = true, KX_SetColorScheme(eKxColorScheme_Dark); };
    panel.RefreshWindow();
    ASSERT_TRUE(PumpUntil([&] { return changed && !GetUpdateRect(panel, nullptr, FALSE); }));
    const Picture picture = Picture::OnScreen(panel);
    EXPECT_EQ(picture.Pixel(5, 5), KX_GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(picture.Pixel(40, 40), KX_GetSysColor(COLOR_WINDOW));
    EXPECT_NE(KX_GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOW));
}

// Counts what a window is told to paint; with `onPaint`, it does so too.
class PaintCount {
public:
    explicit PaintCount(HWND window) : m_window(window) {
        SetWindowSubclass(window, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~PaintCount() { RemoveWindowSubclass(m_window, Procedure, 1); }
    PaintCount(const PaintCount&) = delete;
    PaintCount& operator=(const PaintCount&) = delete;
    int paints = 0;
    std::function<void()> onPaint;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR own) {
        auto& count = *reinterpret_cast<PaintCount*>(own);
        count.paints += message == WM_PAINT;
        if (const auto act = message == WM_PAINT ? std::exchange(count.onPaint, nullptr) : nullptr) act();
        return DefSubclassProc(window, message, wParam, lParam);
    }
    HWND m_window;
};

// A themed child asks for its background by the message that asks for a picture.
TEST_F(Container, TellsAChildsQuestionFromAPicture) {
    Make(panel);
    const HWND asking = AddChild(panel, L"STATIC", 1, {20, 30, 80, 90}),
               filling = AddChild(panel, L"STATIC", 2, {0, 0, 200, 200});
    Pump();
    PaintCount count(filling);
    const kx::ui::WindowDC asked(asking), own(panel);
    const auto print = [&](HDC dc, POINT origin, LPARAM flags, bool clipped = false) {
        const kx::ui::Bitmap bitmap(CreateBitmap(120, 100, 1, 32, nullptr));
        const kx::ui::MemoryDC memory(dc ? nullptr : CreateCompatibleDC(nullptr));
        if (!dc) SelectObject(memory.get(), bitmap.get());
        const HDC target = dc ? dc : memory.get();
        const kx::ui::SavedDC saved(target);
        PatBlt(target, 0, 0, 120, 100, WHITENESS);
        OffsetViewportOrgEx(target, origin.x, origin.y, nullptr);
        if (clipped) IntersectClipRect(target, 0, 0, 0, 0);
        SendMessageW(panel, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(target), flags);
        return GetPixel(target, 25, 35);
    };
    // clang-format off
    const struct { const char* what; HDC dc; POINT origin; LPARAM flags; bool clipped; int painted; } rows[] = {
        {"a child's own DC", asked, {-20, -30}, PRF_CLIENT, false, 0},
        {"a child's own DC, whatever it says", asked, {0, 0}, PRF_CLIENT | PRF_ERASEBKGND, false, 0},
        {"a child's memory DC", nullptr, {-20, -30}, PRF_CLIENT, false, 0},
        {"nothing to paint", nullptr, {0, 0}, PRF_CLIENT, true, 0},
        {"a picture", nullptr, {0, 0}, PRF_CLIENT, false, 1},
        {"a picture where a child would be", nullptr, {-20, -30}, PRF_CLIENT | PRF_ERASEBKGND, false, 1},
        {"a picture in the host's page", nullptr, {20, 30}, PRF_CLIENT, false, 1},
        {"the window's own DC", own, {0, 0}, PRF_CLIENT, false, 1},
    };
    // clang-format on
    for (const auto& row : rows) {
        count.paints = 0;
        const COLORREF color = print(row.dc, row.origin, row.flags, row.clipped);
        EXPECT_EQ(count.paints, row.painted) << row.what;
        EXPECT_EQ(color == KX_GetSysColor(COLOR_BTNFACE), !row.painted && !row.clipped) << row.what;
    }
    for (const bool printed : {false, true}) {
        count.paints = 0;
        COLORREF color = 0;
        count.onPaint = [&] { color = print(nullptr, {0, 0}, PRF_CLIENT); };
        if (printed) print(nullptr, {0, 0}, PRF_CLIENT);
        if (!printed) panel.RefreshWindow();
        Pump();
        EXPECT_EQ(count.paints, 1) << "asked within its own painting";
        EXPECT_EQ(color, KX_GetSysColor(COLOR_BTNFACE));
    }
}

TEST_F(Container, IsQuietAroundThePlatformsControls) {
    Make(panel, 400, 300);
    // clang-format off
    const std::pair<const wchar_t*, DWORD> controls[] = {
        {L"BUTTON", BS_PUSHBUTTON}, {L"BUTTON", BS_AUTOCHECKBOX}, {L"BUTTON", BS_AUTORADIOBUTTON}, {L"BUTTON", BS_GROUPBOX},
        {L"STATIC", 0}, {L"EDIT", WS_BORDER}, {L"LISTBOX", WS_BORDER}, {L"COMBOBOX", CBS_DROPDOWNLIST}, {WC_TABCONTROLW, 0},
        {WC_LISTVIEWW, LVS_REPORT}, {TRACKBAR_CLASSW, 0}, {UPDOWN_CLASSW, 0}, {PROGRESS_CLASSW, 0}, {WC_TREEVIEWW, 0}};
    // clang-format on
    for (int id = 0; const auto& [name, style] : controls) {
        const long x = 10 + id % 4 * 95, y = 10 + id / 4 * 70;
        Add(name, ++id, {x, y, x + 85, y + 60}, style);
    }
    PaintCount count(panel);
    RedrawWindow(panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    EXPECT_TRUE(PumpUntil([&] { return count.paints > 0 && !GetUpdateRect(panel, nullptr, FALSE); }));
    count.paints = 0;
    for (const HWND child : panel.GetWindows())
        InvalidateRect(child, nullptr, TRUE), Pump();
    EXPECT_EQ(count.paints, 0);
}

TEST_F(Container, KeepsAPressOverAZoom) {
    Make(panel);
    const HWND button = Add(L"BUTTON", kButton, {10, 10, 90, 40});
    Press(button, 5, 5);
    for (const double zoom : {1.33, 8.0, 0.25, 1.0})
        EXPECT_TRUE(CKxGUILayoutManager::SetGuiZoom(zoom));
    EXPECT_EQ(PlaceOf(button), "10 10 80 30");
    Told();
    Release();
    EXPECT_EQ(Told(), "OnCommand(7, 0) 7:0#7");
}

TEST_F(Container, HostsThePlatformsOwnDialogsWholeAndInParts) {
    CKxLocale::SetModuleLangId(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_AUSTRIAN));
    const auto takesAll = [](CKxDevUI_Container& dialog) {
        std::size_t children = 0;
        for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            ++children;
        return dialog.GetWindows().size() == children;
    };
    int hosted = 0;
    ForEachPlatformDialog([&](const std::wstring& name, HMODULE module) {
        CKxDevUI_Container whole, left, right;
        if (!whole.CreateFromDlg(parent.Window(), 3, 4, name.c_str(), module, false)) return;
        ++hosted;
        SIZE size{};
        whole.GetWindowSize(&size);
        const long half = size.cx / 2;
        ASSERT_TRUE(left.CreateFromDlgPart(parent.Window(), 0, 0, half, size.cy, name.c_str(), module));
        ASSERT_TRUE(right.CreateFromDlgPart(parent.Window(), half, 0, half, size.cy, name.c_str(), module));
        EXPECT_TRUE(takesAll(whole) && takesAll(left) && takesAll(right)) << Narrow(name);
        EXPECT_EQ(right.GetPositionX(), half);
        const RECT area{0, 0, half, size.cy};
        for (const HWND child : left.GetWindows()) {
            const RECT rect = RectInParent(child);
            RECT common{};
            EXPECT_TRUE(IntersectRect(&common, &rect, &area));
        }
        whole.InsertDialog(0, 0, name.c_str(), module);
        const auto font = SendMessageW(whole.GetWindows().back(), WM_GETFONT, 0, 0);
        EXPECT_TRUE(font == 0 || GetObjectType(reinterpret_cast<HGDIOBJ>(font)) == OBJ_FONT);
    });
    CKxLocale::SetModuleLangId(0);
    EXPECT_GE(hosted, 15);
}

TEST_F(Container, AnswersAMissingTemplateWithNull) {
    const HWND before = Make(panel);
    for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L"NOT_THERE"}) {
        for (const bool modal : {false, true})
            EXPECT_EQ(panel.CreateFromDlg(parent.Window(), 0, 0, name, nullptr, modal), nullptr);
        EXPECT_EQ(panel.CreateFromDlgPart(parent.Window(), 0, 0, 9, 9, name, nullptr), nullptr);
        panel.InsertDialog(0, 0, name, nullptr);
    }
    EXPECT_EQ(panel.CreateFromDlgPart(nullptr, 0, 0, 9, 9, L"X", nullptr), nullptr);
    EXPECT_EQ(panel.CreateFromDlgPart(parent.Window(), static_cast<RECT*>(nullptr), L"X", nullptr), nullptr);
    EXPECT_TRUE(before && panel == before && IsWindow(before)) << "the window of before stays";
    EXPECT_EQ(panel.CreateFromParent(nullptr, 0, 0, 9, 9), nullptr);
}

}  // namespace
