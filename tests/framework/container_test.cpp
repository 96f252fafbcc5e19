// Containers, of windows and of dialogs: what they make of them, what they hear, how they end, in which language
// they come.
#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>

#include <atomic>
#include <list>
#include <thread>

namespace {

using namespace kx::test;

constexpr int kButton = 7, kEdit = 8;

// Writes down what it hears, and does what `act` says in a command.
struct Panel : CKxDevUI_Container {
    explicit Panel(Recorder& record) : m_record(record) {}
    ~Panel() override { Destroy(); }

    LRESULT initResult = 1;
    std::function<void()> act;

    LRESULT OnInit(UINT message, WPARAM, LPARAM) override {
        const RECT rect = RectInParent(m_hWnd);
        m_record.Call("OnInit", message, m_width == rect.right - rect.left, GetWindows().size());
        return initResult;
    }
    LRESULT OnDestroy(UINT, WPARAM, LPARAM) override { return m_record.Call("OnDestroy"), 1; }
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool isClick = HIWORD(wParam) == BN_CLICKED;
        if (isClick) m_record.Call("OnCommand", LOWORD(wParam));
        if (const auto action = act; action && isClick) return action(), 0;  // it may delete this object
        return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override {
        m_record.Call("OnScroll", horizontal);
        return CKxDevUI_Container::OnScroll(message, wParam, lParam, horizontal);
    }

    Recorder& m_record;
};

struct Container : testing::Test {
    HWND Make(Panel& made, long cx = 200, long cy = 200) {
        return made.Create(parent.Window(), 5, 6, cx, cy, true, true);
    }
    std::string Told() { return parent.Record().Take(); }

    RecordingParent parent;
    Panel panel{parent.Record()};
};

TEST_F(Container, TakesSizesUnlessNegative) {
    ASSERT_TRUE(Make(panel, -1, 70));
    EXPECT_EQ(Told(), "OnInit(1, true, 0)");
    EXPECT_EQ(PlaceOf(panel), "5 6 100 70");
    const HWND first = panel;
    ASSERT_TRUE(Make(panel, 0, 20));
    EXPECT_TRUE(!IsWindow(first) && panel.GetWidth() == 0);
    panel.initResult = -1;  // OnInit gives up
    EXPECT_FALSE(Make(panel) || HWND{panel});
}

TEST_F(Container, AdoptsARegionAndItsPlaceInTheTabOrder) {
    const HWND before = AddChild(parent.Window(), L"BUTTON", 1, {0, 0, 40, 20});
    const HWND inside = AddChild(parent.Window(), L"BUTTON", 2, {110, 110, 150, 130});
    const HWND across = AddChild(parent.Window(), L"BUTTON", 3, {199, 110, 230, 130});
    const HWND after = AddChild(parent.Window(), L"BUTTON", 4, {200, 110, 340, 120});
    ASSERT_TRUE(panel.CreateFromParent(parent.Window(), 100, 100, 100, 60));
    EXPECT_EQ(panel.GetWindows(), (std::list<HWND>{inside, across})) << "also the one that straddles the border";
    EXPECT_EQ(PlaceOf(inside), "10 10 40 20");
    EXPECT_TRUE(GetWindow(panel, GW_HWNDPREV) == before && GetWindow(panel, GW_HWNDNEXT) == after);
    // By id; a missing one is skipped. Made anew, it destroys what it had.
    Panel byId(parent.Record());
    ASSERT_TRUE(byId.CreateFromParent(parent.Window(), 300, 0, 50, 50, 2, 4, 99));
    EXPECT_EQ(byId.GetWindows(), std::list<HWND>{after});
    ASSERT_TRUE(Make(panel));
    EXPECT_FALSE(IsWindow(inside));
}

TEST_F(Container, TellsControlsFromWindows) {
    auto made = std::make_unique<Panel>(parent.Record());
    Panel& inner = *made;
    inner.SetId(77);
    Make(panel), Make(inner);
    // A foreign window with 16 extra bytes, whatever stands in them.
    WNDCLASSW foreign{};
    foreign.lpfnWndProc = DefWindowProcW, foreign.cbWndExtra = 16, foreign.lpszClassName = L"ForeignTest";
    RegisterClassW(&foreign);
    const HWND plain = AddChild(parent.Window(), L"ForeignTest", 5, {20, 30, 40, 60});
    SetWindowLongPtrW(plain, 0, 5015);
    SetWindowLongPtrW(plain, 8, 0x1234567890);
    for (const HWND each : {plain, HWND{inner}, HWND{inner}, HWND{nullptr}, HWND{panel}, parent.Window()})
        panel.InsertWindow(each);
    EXPECT_EQ(panel.GetWindows(), std::list<HWND>{plain});
    EXPECT_EQ(panel.GetElement(77), &inner);
    EXPECT_EQ(panel.GetWindow(5), plain);
    EXPECT_EQ(GetWindow(plain, GW_HWNDNEXT), HWND{inner}) << "the last in the tab order";
    for (const bool enable : {false, true}) {
        panel.SetEnabled(enable);
        EXPECT_EQ(inner.GetEnabled(), enable);
        EXPECT_EQ(IsWindowEnabled(plain) != FALSE, enable);
        EXPECT_TRUE(IsWindowEnabled(panel)) << "it keeps receiving messages";
    }
    // An element that has no window with its id is found as itself.
    inner.SetId(78);
    EXPECT_EQ(reinterpret_cast<CKxDevUI_Base*>(panel.GetWindow(78)), static_cast<CKxDevUI_Base*>(&inner));
    RECT area{1, 2, 3, 4};
    panel.UnionArea(5, &area, false);
    EXPECT_EQ(CallText("", area.left, area.top, area.right, area.bottom), "(1, 2, 40, 60)");
    EXPECT_EQ(panel.UnionArea(5, &area, true), &area);
    EXPECT_EQ(CallText("", area.left, area.top, area.right, area.bottom), "(20, 30, 40, 60)");
    EXPECT_EQ(panel.UnionArea(5, nullptr, true), nullptr);
    made.reset();
    EXPECT_EQ(panel.GetElement(78), nullptr);
}

TEST_F(Container, ForwardsUnlessToldNotTo) {
    Make(panel);
    const HWND button = AddChild(panel, L"BUTTON", kButton, {10, 10, 90, 40}),
               edit = AddChild(panel, L"EDIT", kEdit, {10, 50, 90, 70});
    panel.InsertWindow(button), panel.InsertWindow(edit);
    const auto send = [this](UINT message, WPARAM wParam) { SendMessageW(panel, message, wParam, 0); };
    Told();
    Play({{[&] { Click(button, 10, 10); }, "OnCommand(7) 7:0#7"},
          {[&] { send(WM_HSCROLL, 3), send(WM_VSCROLL, 4); }, "OnScroll(true) 3:0=0 OnScroll(false) 4:0=0"},
          {[&] { panel.Init(false), Click(button, 10, 10), send(WM_HSCROLL, 3); }, "OnCommand(7) OnScroll(true)"},
          {[&] { panel.Init(true), Click(edit, 5, 5); }, "8:256#8"},
          // The focus that is lost is not told of.
          {[&] { panel.Destroy(); }, ""}},
         [this] { return Told(); });
    Make(panel);
    EXPECT_EQ(SendMessageW(panel, WM_ERASEBKGND, 0, 0), 1);
    parent.Answer(WM_COMMAND, 5);
    EXPECT_EQ(SendMessageW(panel, WM_COMMAND, 1, 0), 5);
    panel.act = [] { throw 1; };
    EXPECT_NO_THROW(SendMessageW(panel, WM_COMMAND, 1, 0));
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
}

// A themed child asks for its background by the message that asks for a picture.
TEST_F(Container, TellsAChildsQuestionFromAPicture) {
    Make(panel);
    const HWND asking = AddChild(panel, L"STATIC", 1, {20, 30, 80, 90});
    AddChild(panel, L"STATIC", 2, {0, 0, 200, 200});  // a picture leaves its place to it
    const kx::ui::WindowDC asked(asking), own(panel);
    const auto print = [&](HDC dc, POINT origin, LPARAM flags) {
        const kx::ui::Bitmap bitmap(CreateBitmap(120, 100, 1, 32, nullptr));
        const kx::ui::MemoryDC memory(dc ? nullptr : CreateCompatibleDC(nullptr));
        if (!dc) SelectObject(memory.get(), bitmap.get());
        const HDC target = dc ? dc : memory.get();
        const kx::ui::SavedDC saved(target);
        PatBlt(target, 0, 0, 120, 100, WHITENESS);
        OffsetViewportOrgEx(target, origin.x, origin.y, nullptr);
        SendMessageW(panel, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(target), flags);
        return GetPixel(target, 25, 35);
    };
    const std::tuple<const char*, HDC, POINT, LPARAM, bool> rows[] = {
        {"a child's own DC, whatever it says", asked, {0, 0}, PRF_CLIENT | PRF_ERASEBKGND, true},
        {"a child's memory DC", nullptr, {-20, -30}, PRF_CLIENT, true},
        {"a picture", nullptr, {0, 0}, PRF_CLIENT, false},
        {"a picture where a child would be", nullptr, {-20, -30}, PRF_CLIENT | PRF_ERASEBKGND, false},
        {"a picture in the host's page", nullptr, {20, 30}, PRF_CLIENT, false},
        {"the window's own DC", own, {0, 0}, PRF_CLIENT, false},
    };
    for (const auto& [what, dc, origin, flags, question] : rows)
        EXPECT_EQ(print(dc, origin, flags) == KX_GetSysColor(COLOR_BTNFACE), question) << what;
}

// A themed child that fades asks in a memory DC, which at its parent's corner tells nothing; with which flags, and what
// it gets.
LPARAM s_flags = 0;
COLORREF s_behind = 0;
LRESULT CALLBACK Fade(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message != WM_PAINT && message != WM_PRINTCLIENT) return DefSubclassProc(window, message, wParam, lParam);
    ValidateRect(window, nullptr);
    const kx::ui::Bitmap bitmap(CreateBitmap(40, 40, 1, 32, nullptr));
    const kx::ui::MemoryDC memory(CreateCompatibleDC(nullptr));
    SelectObject(memory.get(), bitmap.get());
    for (const UINT ask : std::initializer_list<UINT>{WM_ERASEBKGND, WM_PRINTCLIENT})
        SendMessageW(GetParent(window), ask, reinterpret_cast<WPARAM>(memory.get()), s_flags);
    s_behind = GetPixel(memory.get(), 5, 5);
    return 0;
}

TEST_F(Container, AnswersAChildThatFadesWithTheFace) {
    Make(panel);
    CKxDevUI_Radio radio;
    radio.Create(parent.Window(), 0, 300, 90, 60, true, true);
    CKxDevUI_Shutter shutter;
    shutter.Create(parent.Window(), 300, 0, 60, 60, true, true);
    for (const HWND asked : {HWND{panel}, HWND{radio}, HWND{shutter}}) {
        const HWND child = AddChild(asked, L"STATIC", 99, {0, 0, 40, 40});
        SetWindowSubclass(child, Fade, 1, 0);
        // By itself; and as one that is told to paint while its parent does, whatever it says.
        for (const auto& [printed, flags] : {std::pair{child, PRF_CLIENT}, {asked, PRF_CLIENT | PRF_ERASEBKGND}}) {
            const kx::ui::MemoryDC memory(CreateCompatibleDC(nullptr));
            s_flags = flags, s_behind = 0;
            SendMessageW(printed, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.get()), PRF_CLIENT | PRF_CHILDREN);
            EXPECT_EQ(s_behind, KX_GetSysColor(COLOR_BTNFACE));
        }
        DestroyWindow(child);
    }
}

// A camera's live view, whose thread sleeps.
TEST_F(Container, WaitsForNoChildOfAnotherThread) {
    Make(panel);
    const HANDLE wake = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<HWND> view = nullptr;
    std::atomic<bool> ended = false;
    bool awoken = false;
    std::thread camera([&] {
        view = CreateWindowExW(WS_EX_NOPARENTNOTIFY, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_WHITERECT, 5, 5, 60, 60,
                               panel, nullptr, nullptr, nullptr);
        awoken = WaitForSingleObject(wake, 5000) == WAIT_OBJECT_0;
        DestroyWindow(view);
        ended = true;
    });
    EXPECT_TRUE(PumpUntil([&] { return view != nullptr; }));
    const auto procedure = GetWindowLongPtrW(view, GWLP_WNDPROC);
    KX_FollowColorScheme(panel);
    for (const auto scheme : {eKxColorScheme_Dark, eKxColorScheme_System}) {
        KX_SetColorScheme(scheme);
        SendMessageW(panel, WM_PAINT, 0, 0);
    }
    EXPECT_EQ(GetWindowLongPtrW(view, GWLP_WNDPROC), procedure) << "our own would run over there";
    SetEvent(wake);
    EXPECT_TRUE(PumpUntil([&] { return ended.load(); }, std::chrono::seconds(10)));
    camera.join();
    CloseHandle(wake);
    EXPECT_TRUE(awoken);
}

TEST_F(Container, OfASecondThreadIsToldOfOnce) {
    Make(panel);
    static int s_records = 0;
    CKxLogFile::SetSink([](const wchar_t* record, void*) { s_records += wcsstr(record, L"second thread") != nullptr; },
                        nullptr);
    for (int expected : {1, 1}) {
        std::thread([] {
            const HWND top = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
            CKxDevUI_Container().Create(top, 0, 0, 9, 9, true, true);
            DestroyWindow(top);
        }).join();
        EXPECT_EQ(s_records, expected);
    }
    CKxLogFile::SetSink(nullptr, nullptr);
}

// The old form of a template has its style elsewhere, and with it the bits that no child can have.
TEST_F(Container, HostsTemplatesOfBothForms) {
    for (const wchar_t* name : {L"TEST_DIALOG", L"OLD_DIALOG"}) {
        CKxDevUI_Container whole, left, right;
        whole.CreateFromDlg(parent.Window(), 3, 4, name, nullptr, false);
        left.CreateFromDlgPart(parent.Window(), 0, 0, 110, 400, name, nullptr);
        right.CreateFromDlgPart(parent.Window(), 110, 0, 400, 400, name, nullptr);
        EXPECT_EQ(CallText("", whole.GetWindows().size(), left.GetWindows().size(), right.GetWindows().size()),
                  "(4, 3, 1)");
        whole.InsertDialog(0, 0, name, nullptr);
        EXPECT_EQ(whole.GetWindows().size(), 8u);
        const auto font = SendMessageW(whole.GetWindows().back(), WM_GETFONT, 0, 0);
        EXPECT_EQ(GetObjectType(reinterpret_cast<HGDIOBJ>(font)), DWORD{OBJ_FONT}) << "the dialog's goes with it";
    }
    const HMODULE other = GetModuleHandleW(L"kxdevui.dll");
    EXPECT_TRUE(panel.CreateFromDlg(parent.Window(), 0, 0, L"YESNOKEEPDLG", other, false));
    EXPECT_TRUE(panel.CreateFromDlgPart(parent.Window(), 0, 0, 9, 9, L"YESNOKEEPDLG", other));
}

TEST_F(Container, AnswersAMissingTemplateWithNull) {
    const HWND before = Make(panel);
    for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L"NOT_THERE"}) {
        for (const bool modal : {false, true})
            EXPECT_EQ(panel.CreateFromDlg(parent.Window(), 0, 0, name, nullptr, modal), nullptr);
        EXPECT_EQ(panel.CreateFromDlgPart(parent.Window(), 0, 0, 9, 9, name, nullptr), nullptr);
        panel.InsertDialog(0, 0, name, nullptr);
    }
    EXPECT_TRUE(before && panel == before && IsWindow(before)) << "the window of before stays";
}

// ---- Dialogs -------------------------------------------------------------------------------------------------------

struct Dialogs : Container {
    Dialogs() { CKxLocale::SetModuleLangId(0x0409); }
    ~Dialogs() override { CKxLocale::SetModuleLangId(0); }
    HWND MakeModeless(CKxDevUI_Container& made) {
        return made.CreateFromDlg(parent.Window(), 30, 40, L"TEST_DIALOG", module, false);
    }
    // Presses a button in it.
    INT_PTR RunModal(Panel& made) {
        const ModalAnswer answer(7);
        return reinterpret_cast<INT_PTR>(made.CreateFromDlg(parent.Window(), 0, 0, L"TEST_DIALOG", module, true));
    }

    const HMODULE module = GetModuleHandleW(nullptr);
    Panel& dialog = panel;
};

TEST_F(Dialogs, ModelessTakesItsControlsAndHandlesItsCommands) {
    ASSERT_TRUE(MakeModeless(dialog));
    EXPECT_EQ(Told(), "OnInit(272, true, 0)");
    EXPECT_EQ(dialog.GetWindows().size(), 4u);
    EXPECT_TRUE(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_CONTROLPARENT);
    EXPECT_EQ(PlaceOf(dialog).substr(0, 6), "30 40 ");
    ShowWindow(dialog, SW_SHOW);
    Play({{[&] { Click(dialog.GetWindow(7), 5, 5); }, "OnCommand(7)"},
          {[&] { dialog.Init(true), Click(dialog.GetWindow(7), 5, 5); }, "OnCommand(7) 7:0#7"},
          {[&] { Click(dialog.GetWindow(8), 5, 5), dialog.Destroy(); }, "8:256#8 OnDestroy()"}},
         [this] { return Told(); });
}

TEST_F(Dialogs, APartKeepsThePlaceOfItsControls) {
    CKxDevUI_Container whole, placeholder, successor;
    MakeModeless(whole);
    const RECT button = RectInParent(whole.GetWindow(7));
    dialog.SetId(55);
    dialog.SetVisible(false);
    dialog.CreateFromDlgPart(parent.Window(), button.left + 5, button.top - 2, 300, 299, L"TEST_DIALOG", module);
    EXPECT_EQ(dialog.GetWindows().size(), 1u) << "the straddling button alone";
    EXPECT_EQ(PlaceOf(dialog.GetWindow(7)).substr(0, 5), "-5 2 ");
    EXPECT_EQ(GetDlgCtrlID(dialog), 55);
    EXPECT_TRUE(PlaceOf(dialog).ends_with(" 300 299"));
    EXPECT_TRUE(dialog.GetVisible() && IsWindowVisible(dialog));

    // In the place of another one, which is directly behind it in the tab order.
    placeholder.Create(parent.Window(), 0, 0, 40, 40, true, true);
    ASSERT_TRUE(successor.CreateFromDlgPart(parent.Window(), &placeholder, L"TEST_DIALOG", module));
    EXPECT_EQ(GetWindow(successor, GW_HWNDNEXT), placeholder);
    EXPECT_EQ(PlaceOf(successor), "0 0 40 40");
}

TEST_F(Dialogs, ModalReturnsWhatEndedIt) {
    for (const int result : {5, 0, -1, 7}) {
        dialog.act = [&] {
            dialog.Quit(result);
            dialog.Quit(result);  // one end
            dialog.SetTitle(L"late");
        };
        EXPECT_EQ(RunModal(dialog), result);
        EXPECT_EQ(Told(), "OnInit(272, true, 4) OnCommand(7) OnDestroy()");
        EXPECT_EQ(HWND{dialog}, nullptr);
        dialog.Quit(3);
    }
    auto mortal = std::make_unique<Panel>(parent.Record());
    mortal->act = [&] { mortal.reset(); };
    RunModal(*mortal);
    EXPECT_FALSE(mortal);
}

TEST_F(Dialogs, ComeInTheUsersLanguage) {
    const std::pair<WORD, const wchar_t*> rows[] = {{0x0407, L"Deutsch"}, {0x0C07, L"Deutsch"}, {0x040C, L"English"}};
    for (const auto& [id, expected] : rows) {
        CKxLocale::SetModuleLangId(id);
        MakeModeless(dialog);
        EXPECT_EQ(TextOf(dialog), expected);
    }
}

TEST(TemplateLanguage, MayBeAnotherSortOfTheFallbacksOrNone) {
    const std::vector<LANGID> all{0x0409, 0x0407, 0x0000};
    EXPECT_EQ(kx::ui::ChooseLanguage(all, 0x0410, 0x0807), 1);
    EXPECT_EQ(kx::ui::ChooseLanguage(all, 0x0411, 0x0412), 2);
    EXPECT_EQ(kx::ui::ChooseLanguage(std::vector<LANGID>{0x0411}, 0x0407, 0x0409), -1);
}

}  // namespace
