// The container: what it makes of windows and templates, and what its host hears.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>

#include <commctrl.h>

#include <initializer_list>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kx::test;

constexpr int kButton = 7, kEdit = 8;

class Panel : public CKxDevUI_Container {
public:
    explicit Panel(Recorder& record) : m_record(record) {}
    ~Panel() override { Destroy(); }

    LRESULT initResult = 1;
    std::function<void()> onCommand, onDrawItem;
    void Fill() {
        InsertWindow(AddChild(*this, L"BUTTON", kButton, {10, 10, 90, 40}));
        InsertWindow(AddChild(*this, L"EDIT", kEdit, {10, 50, 90, 70}));
    }

protected:
    LRESULT OnInit(UINT message, WPARAM, LPARAM) override {
        m_record.Call("OnInit", message, m_hWnd != nullptr, m_width);
        return initResult;
    }
    LRESULT OnDestroy(UINT, WPARAM, LPARAM) override { return m_record.Call("OnDestroy"), 1; }
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_record.Call("OnCommand", LOWORD(wParam), HIWORD(wParam));
        if (const auto act = onCommand) return act(), 0;  // it may delete this object
        return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }
    LRESULT OnDrawItem(UINT, WPARAM, LPARAM lParam) override {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (const auto act = std::exchange(onDrawItem, nullptr)) act();
        return FillRect(item.hDC, &item.rcItem, KX_GetSysColorBrush(COLOR_WINDOW));
    }

private:
    Recorder& m_record;
};

int ChildCount(HWND window) {
    int count = 0;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ++count;
    return count;
}

TEST(ContainerCreation, TakesSizesUnlessNegative) {
    RecordingParent parent;
    Recorder record;
    Panel panel(record);
    ASSERT_TRUE(panel.Create(parent.Window(), 5, 6, -1, 70, true, true));
    EXPECT_TRUE(record.Matches({Call("OnInit", 1u, true, 100L)}));
    EXPECT_EQ(PlaceOf(panel), "5 6 100 70");

    const HWND first = panel;
    ASSERT_TRUE(panel.Create(parent.Window(), 0, 0, 0, 20, true, true));
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(panel.GetWidth(), 0);
    wchar_t name[40];
    GetClassNameW(panel, name, 40);
    EXPECT_STREQ(name, L"KxDevUI_Container");
    EXPECT_EQ(GetWindowLongPtrW(panel, 0), 5015);
    EXPECT_EQ(reinterpret_cast<CKxDevUI_Base*>(GetWindowLongPtrW(panel, 8)), &panel);

    panel.initResult = -1;  // OnInit gives up
    EXPECT_EQ(panel.Create(parent.Window(), 0, 0, 10, 10, true, true), nullptr);
    EXPECT_EQ(static_cast<HWND>(panel), nullptr);
}

TEST(ContainerCreation, AdoptsARegionAndItsPlaceInTheTabOrder) {
    RecordingParent parent;
    Recorder record;
    const HWND before = AddChild(parent.Window(), L"BUTTON", 1, {0, 0, 40, 20});
    const HWND inside = AddChild(parent.Window(), L"BUTTON", 2, {110, 110, 150, 130});
    const HWND across = AddChild(parent.Window(), L"BUTTON", 3, {190, 110, 230, 130});
    const HWND after = AddChild(parent.Window(), L"BUTTON", 4, {300, 0, 340, 20});
    Panel panel(record);
    ASSERT_TRUE(panel.CreateFromParent(parent.Window(), 100, 100, 100, 60));
    EXPECT_TRUE(record.Matches({Call("OnInit", 1u, true, 100L)}));
    EXPECT_EQ(panel.GetWindows(), (std::list<HWND>{inside, across})) << "also the one that straddles the border";
    EXPECT_EQ(GetParent(across), panel);
    EXPECT_EQ(PlaceOf(inside), "10 10 40 20");
    EXPECT_EQ(GetWindow(panel, GW_HWNDPREV), before);
    EXPECT_EQ(GetWindow(panel, GW_HWNDNEXT), after);

    // By id; a missing one is skipped. Made anew, it destroys what it had.
    Panel byId(record);
    ASSERT_TRUE(byId.CreateFromParent(parent.Window(), 300, 0, 50, 50, 2, 4, 99));
    EXPECT_EQ(byId.GetWindows(), std::list<HWND>{after});
    ASSERT_TRUE(panel.Create(parent.Window(), 0, 0, 10, 10, true, true));
    EXPECT_FALSE(IsWindow(inside));
}

TEST(ContainerContent, TellsControlsFromWindows) {
    RecordingParent parent;
    Recorder record;
    Panel outer(record), inner(record);
    inner.SetId(77);
    outer.Create(parent.Window(), 0, 0, 200, 200, true, true);
    inner.Create(parent.Window(), 0, 0, 20, 20, true, true);
    const HWND plain = AddChild(parent.Window(), L"STATIC", 5, {20, 30, 40, 60});
    outer.InsertWindow(plain);
    outer.InsertWindow(inner);
    EXPECT_EQ(outer.GetWindows(), std::list<HWND>{plain});
    EXPECT_EQ(outer.GetElement(77), &inner);
    EXPECT_EQ(outer.GetWindow(5), plain);
    EXPECT_EQ(GetParent(inner), outer);

    outer.SetEnabled(false);
    EXPECT_FALSE(inner.GetEnabled());
    EXPECT_FALSE(IsWindowEnabled(plain));
    EXPECT_TRUE(IsWindowEnabled(outer)) << "it keeps receiving messages";
    outer.SetEnabled(true);
    EXPECT_TRUE(inner.GetEnabled());

    // An element that has no window with its id is found as itself.
    inner.SetId(78);
    EXPECT_EQ(reinterpret_cast<CKxDevUI_Base*>(outer.GetWindow(78)), static_cast<CKxDevUI_Base*>(&inner));

    RECT area{1, 2, 3, 4};
    EXPECT_EQ(outer.UnionArea(5, &area, true), &area);
    outer.UnionArea(99, &area, false);
    const RECT expected{20, 30, 40, 60};
    EXPECT_TRUE(EqualRect(&area, &expected));
    EXPECT_EQ(outer.UnionArea(5, nullptr, true), nullptr);
}

TEST(ContainerContent, SurvivesWhatHostsDoToIt) {
    RecordingParent parent;
    Recorder record;
    Panel outer(record);
    outer.Create(parent.Window(), 0, 0, 200, 200, true, true);
    {
        Panel gone(record);
        gone.SetId(3);
        gone.Create(outer, 0, 0, 10, 10, true, true);
        outer.InsertElement(&gone);
        outer.InsertElement(&gone);
    }
    EXPECT_EQ(outer.GetElement(3), nullptr);
    outer.SetEnabled(false);

    outer.InsertElement(nullptr);
    outer.InsertElement(&outer);
    outer.InsertWindow(nullptr);
    outer.InsertWindow(outer);
    outer.InsertWindow(parent.Window());
    outer.InsertWindow(GetDesktopWindow());
    EXPECT_TRUE(outer.GetWindows().empty());
    EXPECT_EQ(GetParent(outer), parent.Window());

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
        outer.InsertWindow(window);
        EXPECT_EQ(outer.GetWindows().back(), window);
    }

    DestroyWindow(outer);
    EXPECT_EQ(static_cast<HWND>(outer), nullptr);
    outer.Destroy();
    EXPECT_TRUE(outer.GetWindows().empty());
    EXPECT_EQ(outer.Create(nullptr, 0, 0, 10, 10, true, true), nullptr);
}

TEST(ContainerMessages, ForwardsUnlessToldNotTo) {
    RecordingParent parent;
    parent.Answer(WM_COMMAND, 5);
    Panel panel(parent.Record());
    panel.Create(parent.Window(), 0, 0, 200, 200, true, true);
    panel.Fill();
    const HWND button = panel.GetWindow(kButton);
    parent.Record().Clear();
    Click(button, 10, 10);
    EXPECT_TRUE(
        parent.Record().Matches({Call("OnCommand", kButton, BN_CLICKED), Command(kButton, BN_CLICKED, button)}));
    panel.Init(false);
    Click(button, 10, 10);
    EXPECT_TRUE(parent.Record().Matches({Call("OnCommand", kButton, BN_CLICKED)}));
    EXPECT_EQ(SendMessageW(panel, 0x0500, 1, 0), 0);
    EXPECT_EQ(SendMessageW(panel, 0x83ED, 0, 0), 0);
    EXPECT_EQ(SendMessageW(panel, WM_ERASEBKGND, 0, 0), 1);

    panel.Init(true);
    Click(panel.GetWindow(kEdit), 5, 5);
    ASSERT_EQ(GetFocus(), panel.GetWindow(kEdit));
    parent.Record().Clear();
    panel.Destroy();
    EXPECT_TRUE(parent.Record().Matches({})) << "the focus that is lost is not told of";
}

TEST(ContainerMessages, MayDestroyAndDeleteItself) {
    RecordingParent parent;
    Recorder record;
    auto panel = std::make_unique<Panel>(record);
    panel->Create(parent.Window(), 0, 0, 200, 200, true, true);
    panel->Fill();
    panel->onCommand = [&] { panel.reset(); };
    Click(panel->GetWindow(kButton), 5, 5);
    EXPECT_FALSE(panel);

    Panel thrower(record);
    thrower.Create(parent.Window(), 0, 0, 200, 200, true, true);
    thrower.onCommand = [] { throw 1; };
    int logged = 0;
    CKxLogFile::SetSink([](const wchar_t*, void* to) { ++*static_cast<int*>(to); }, &logged);
    SendMessageW(thrower, WM_COMMAND, 1, 0);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(logged, 1);
}

TEST(ContainerMessages, WaitingEndsWithTheWindow) {
    RecordingParent parent;
    Recorder record;
    Panel panel(record);
    panel.Create(parent.Window(), 0, 0, 50, 50, true, true);
    panel.onCommand = [&] { panel.Quit(0); };
    PostMessageW(panel, WM_COMMAND, 1, 0);
    panel.WaitForDialog();
    EXPECT_EQ(static_cast<HWND>(panel), nullptr);

    panel.Create(parent.Window(), 0, 0, 50, 50, true, true);
    PostMessageW(parent.Window(), WM_CLOSE, 0, 0);
    panel.WaitForDialog();
    EXPECT_TRUE(IsWindow(parent.Window())) << "the message that ends the loop is not delivered";
    PostQuitMessage(9);
    panel.WaitForDialog();
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 9u);
    Panel(record).WaitForDialog();
}

TEST(ContainerPainting, TheSchemeMayChangeUnderIt) {
    RecordingParent parent;
    Recorder record;
    Panel panel(record);
    panel.Create(parent.Window(), 0, 0, 120, 100, true, true);
    const HWND item = AddChild(panel, L"BUTTON", kButton, {20, 20, 60, 60}, BS_OWNERDRAW);
    panel.InsertWindow(item);
    bool changed = false;
    panel.onDrawItem = [&] { changed = true, KX_SetColorScheme(eKxColorScheme_Dark); };
    panel.RefreshWindow();
    ASSERT_TRUE(PumpUntil([&] { return changed && !GetUpdateRect(panel, nullptr, FALSE); }));
    const Picture picture = Picture::OnScreen(panel);
    EXPECT_EQ(picture.Pixel(5, 5), KX_GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(picture.Pixel(40, 40), KX_GetSysColor(COLOR_WINDOW));
    EXPECT_NE(KX_GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOW));
    KX_SetColorScheme(eKxColorScheme_System);
}

// Counts what a window is told to paint; with `onPaint`, it does so too.
class PaintCount {
public:
    explicit PaintCount(HWND window) : m_window(window) {
        Counts()[window] = this;
        m_previous =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    }
    ~PaintCount() {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_previous));
        Counts().erase(m_window);
    }
    PaintCount(const PaintCount&) = delete;
    PaintCount& operator=(const PaintCount&) = delete;
    int paints = 0;
    std::function<void()> onPaint;

private:
    static std::map<HWND, PaintCount*>& Counts() {
        static std::map<HWND, PaintCount*> counts;
        return counts;
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        PaintCount& own = *Counts()[window];
        if (message == WM_PAINT) {
            ++own.paints;
            if (const auto act = std::exchange(own.onPaint, nullptr)) act();
        }
        return CallWindowProcW(own.m_previous, window, message, wParam, lParam);
    }
    HWND m_window;
    WNDPROC m_previous;
};

// A themed child asks for its background by the message that asks for a picture.
TEST(ContainerPainting, TellsAChildsQuestionFromAPicture) {
    RecordingParent parent;
    CKxDevUI_Container panel;
    panel.Create(parent.Window(), 0, 0, 120, 100, true, true);
    const HWND asking = AddChild(panel, L"STATIC", 1, {20, 30, 80, 90}),
               filling = AddChild(panel, L"STATIC", 2, {0, 0, 120, 100});
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
    const struct {
        const char* what;
        HDC dc;
        POINT origin;
        LPARAM flags;
        bool clipped;
        int painted;
    } rows[] = {
        {"a child's own DC", asked, {-20, -30}, PRF_CLIENT, false, 0},
        {"a child's own DC, whatever it says", asked, {0, 0}, PRF_CLIENT | PRF_ERASEBKGND, false, 0},
        {"a child's memory DC", nullptr, {-20, -30}, PRF_CLIENT, false, 0},
        {"nothing to paint", nullptr, {0, 0}, PRF_CLIENT, true, 0},
        {"a picture", nullptr, {0, 0}, PRF_CLIENT, false, 1},
        {"a picture where a child would be", nullptr, {-20, -30}, PRF_CLIENT | PRF_ERASEBKGND, false, 1},
        {"a picture in the host's page", nullptr, {20, 30}, PRF_CLIENT, false, 1},
        {"the window's own DC", own, {0, 0}, PRF_CLIENT, false, 1},
    };
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
        if (printed) {
            print(nullptr, {0, 0}, PRF_CLIENT);
        } else {
            panel.RefreshWindow();
            Pump();
        }
        EXPECT_EQ(count.paints, 1) << "asked within its own painting";
        EXPECT_EQ(color, KX_GetSysColor(COLOR_BTNFACE));
    }
}

TEST(ContainerPainting, IsQuietAroundThePlatformsControls) {
    RecordingParent parent;
    CKxDevUI_Container panel;
    panel.Create(parent.Window(), 0, 0, 400, 300, true, true);
    int id = 0;
    for (const auto& [name, style] :
         std::initializer_list<std::pair<const wchar_t*, DWORD>>{{L"BUTTON", BS_PUSHBUTTON},
                                                                 {L"BUTTON", BS_AUTOCHECKBOX},
                                                                 {L"BUTTON", BS_AUTORADIOBUTTON},
                                                                 {L"BUTTON", BS_GROUPBOX},
                                                                 {L"STATIC", 0},
                                                                 {L"EDIT", WS_BORDER},
                                                                 {L"LISTBOX", WS_BORDER},
                                                                 {L"COMBOBOX", CBS_DROPDOWNLIST},
                                                                 {WC_TABCONTROLW, 0},
                                                                 {WC_LISTVIEWW, LVS_REPORT},
                                                                 {TRACKBAR_CLASSW, 0},
                                                                 {UPDOWN_CLASSW, 0},
                                                                 {PROGRESS_CLASSW, 0},
                                                                 {WC_TREEVIEWW, 0}}) {
        const long x = 10 + id % 4 * 95, y = 10 + id / 4 * 70;
        panel.InsertWindow(AddChild(panel, name, ++id, {x, y, x + 85, y + 60}, style, L"Text"));
    }
    PaintCount count(panel);
    RedrawWindow(panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    EXPECT_TRUE(PumpUntil([&] { return count.paints > 0 && !GetUpdateRect(panel, nullptr, FALSE); }));
    Picture::OnScreen(panel).Save("container_platform_controls");
    count.paints = 0;
    for (HWND child = GetWindow(panel, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        InvalidateRect(child, nullptr, TRUE);
        Pump();
    }
    EXPECT_EQ(count.paints, 0);
}

TEST(ContainerZoom, ComesBackToTheVeryPixels) {
    RecordingParent parent;
    Recorder record;
    Panel panel(record);
    panel.Create(parent.Window(), 0, 0, 201, 101, true, true);
    panel.Fill();
    for (long i = 10; i < 16; ++i)
        panel.InsertWindow(AddChild(panel, L"BUTTON", i, {7 * i + 1, 5 * i, 9 * i + 14, 6 * i + 9}));
    panel.InsertWindow(AddChild(panel, L"COMBOBOX", 20, {3, 60, 80, 160}, CBS_DROPDOWNLIST));
    const auto places = [&] {
        std::vector<std::string> all;
        for (const HWND child : panel.GetWindows())
            all.push_back(PlaceOf(child));
        return all;
    };
    const auto first = places();
    Press(panel.GetWindow(kButton), 5, 5);
    for (const double zoom : {1.25, 1.5, 2.0, 1.1, 0.75, 3.0, 1.33, 8.0, 0.25, 1.0}) {
        EXPECT_TRUE(CKxGUILayoutManager::SetGuiZoom(zoom));
        EXPECT_EQ(RectInParent(panel).right, CKxGUILayoutManager::Zoomed(201)) << zoom;
        EXPECT_NEAR(RectInParent(panel.GetWindow(kButton)).right, 90 * zoom, 1) << zoom;
    }
    EXPECT_EQ(places(), first);
    record.Clear();
    Release();
    EXPECT_TRUE(record.Matches({Call("OnCommand", kButton, BN_CLICKED)})) << "the button has stayed pressed";
    for (const double zoom : {0.0, -1.0, 100.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(CKxGUILayoutManager::SetGuiZoom(zoom));
    EXPECT_EQ(CKxGUILayoutManager::GetGuiZoom(), 1.0);
}

TEST(ContainerTemplates, HostsThePlatformsOwnWholeAndInParts) {
    CKxLocale::SetModuleLangId(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_AUSTRIAN));
    RecordingParent parent;
    int hosted = 0;
    ForEachPlatformDialog([&](const std::wstring& name, HMODULE module) {
        CKxDevUI_Container whole, left, right;
        if (!whole.CreateFromDlg(parent.Window(), 3, 4, name.c_str(), module, false)) return;
        ++hosted;
        EXPECT_EQ(static_cast<int>(whole.GetWindows().size()), ChildCount(whole));
        SIZE size{};
        whole.GetWindowSize(&size);
        const long half = size.cx / 2;
        ASSERT_TRUE(left.CreateFromDlgPart(parent.Window(), 0, 0, half, size.cy, name.c_str(), module));
        ASSERT_TRUE(right.CreateFromDlgPart(parent.Window(), half, 0, half, size.cy, name.c_str(), module));
        EXPECT_EQ(static_cast<int>(left.GetWindows().size()), ChildCount(left));
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

TEST(ContainerTemplates, AnswersAMissingOneWithNull) {
    RecordingParent parent;
    CKxDevUI_Container panel;
    const HWND before = panel.Create(parent.Window(), 0, 0, 9, 9, true, true);
    for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L"NOT_THERE"}) {
        EXPECT_EQ(panel.CreateFromDlg(parent.Window(), 0, 0, name, nullptr, false), nullptr);
        EXPECT_EQ(panel.CreateFromDlg(parent.Window(), 0, 0, name, nullptr, true), nullptr);
        EXPECT_EQ(panel.CreateFromDlgPart(parent.Window(), 0, 0, 9, 9, name, nullptr), nullptr);
    }
    EXPECT_EQ(panel.CreateFromDlgPart(nullptr, 0, 0, 9, 9, L"X", nullptr), nullptr);
    EXPECT_TRUE(before && panel == before && IsWindow(before)) << "the window of before stays";
    EXPECT_EQ(panel.CreateFromDlgPart(parent.Window(), static_cast<RECT*>(nullptr), L"X", nullptr), nullptr);
    EXPECT_EQ(panel.CreateFromParent(nullptr, 0, 0, 9, 9), nullptr);
    panel.InsertDialog(0, 0, L"NOT_THERE", nullptr);
}

}  // namespace
