// The shutter: where it puts its parts, what a click asks, what an update shows, and what it bears from its host.
#include <bench/bench.h>
#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/light/shutter_images.h>

#include <commctrl.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <string>

namespace {

using namespace kx::test;

constexpr int kId = 7, kTitle = 10100, kButton = 10200, kRelease = 0x202;

// Writes down what the host is asked, and does what the test wants inside.
class Host : public CKxDevUI_Shutter {
public:
    explicit Host(Recorder* record = nullptr) : m_record(record) { SetId(kId); }

    HWND Make(HWND parent) { return Create(parent, 20, 20, -1, -1, true, true); }
    HWND Title() const { return GetDlgItem(m_hWnd, kTitle); }
    HWND Button() const { return GetDlgItem(m_hWnd, kButton); }

    bool veto = false;
    std::function<void()> act;  // in every callback; may end this object

    using CKxDevUI_Shutter::m_clicked;
    using CKxDevUI_Shutter::m_imageOff;
    using CKxDevUI_Shutter::m_imageOn;

protected:
    bool UpdateShutterIcon(unsigned id, int grabber) override {
        if (m_record) m_record->Call("Icon", id != 0, grabber);
        return CKxDevUI_Shutter::UpdateShutterIcon(id, grabber);
    }
    void OnStateChangeRequest(bool state, bool& refuse) override {
        if (!m_record) return Act(), CKxDevUI_Shutter::OnStateChangeRequest(state, refuse);
        m_record->Call("State", state);
        refuse = veto;
        Act();
    }
    void OnRenameDlgRequest() override {
        if (m_record) m_record->Call("Rename");
        Act();
    }

private:
    void Act() {
        if (const auto action = act) action();
    }
    Recorder* m_record;
};

struct Zoom {
    explicit Zoom(double zoom) { CKxGUILayoutManager::SetGuiZoom(zoom); }
    ~Zoom() { CKxGUILayoutManager::SetGuiZoom(1); }
};

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::string PlaceOf(HWND window) {
    const RECT r = RectInParent(window);
    return std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right - r.left) + " " +
           std::to_string(r.bottom - r.top);
}

std::wstring TipOf(const Host& shutter) {
    wchar_t text[80] = L"";
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V1_SIZE;
    info.hwnd = shutter;
    info.uId = reinterpret_cast<UINT_PTR>(shutter.Button());
    info.lpszText = text;
    SendMessageW(KX_GetToolTipWindow(shutter.Button()), TTM_GETTEXTW, 79, reinterpret_cast<LPARAM>(&info));
    return text;
}

// ---- Rules ---------------------------------------------------------------------------------------------------------

TEST(ShutterRules, PlaceTitleAndButton) {
    using namespace kx::shutter;
    const auto text = [](const Layout& layout) {
        std::ostringstream out;
        for (const Place& p : {layout.title, layout.button})
            out << p.x << ' ' << p.y << ' ' << p.width << ' ' << p.height << ' ';
        return out.str();
    };
    const struct {
        Layout layout;
        const char* expected;
    } cases[] = {
        {TitleLeft(100, 24, -1), "0 4 76 16 76 0 24 24 "},
        {TitleLeft(100, 40, 50), "0 12 50 16 63 8 24 24 "},
        {TitleLeft(10, 10, -1), "0 -3 -14 16 -14 -7 24 24 "},
        {TitleLeft(-5, 0, 0), "0 -8 0 16 -14 -12 24 24 "},
        {TitleAbove(90, -1), "0 0 90 16 8 16 24 24 "},
        {TitleAbove(40, 12), "0 0 40 12 8 16 24 24 "},
        {TitleAbove(LONG_MAX, LONG_MAX), "0 0 32767 32767 8 16 24 24 "},
        {TitleLeft(LONG_MIN, LONG_MIN, -1), "0 -16392 -32792 16 -32792 -16396 24 24 "},
    };
    for (const auto& each : cases)
        EXPECT_EQ(text(each.layout), each.expected);
}

TEST(ShutterRules, FitTheWidthToTheTitle) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        long text;
        int minimum, maximum;
        double zoom;
        long control, title;
    } cases[] = {{50, 64, 128, 1, 80, 50},    {5, 64, 128, 1, 64, 34},     {500, 64, 128, 1, 128, 98},
                 {75, 64, 128, 1.5, 80, 35},  {75, 64, 128, 1.25, 90, 52}, {1000, 64, 128, 1.5, 128, 83},
                 {50, 200, 100, 1, 200, 170}, {50, -10, -5, 1, -5, -35},   {LONG_MAX, 0, INT_MAX, 8, 4096, 3856},
                 {50, 64, 128, 0, 0, 0},      {50, 64, 128, nan, 0, 0}};
    for (const auto& each : cases) {
        const auto width = kx::shutter::FitWidth(each.text, each.minimum, each.maximum, each.zoom);
        EXPECT_EQ(width.control, each.control) << each.text << ' ' << each.zoom;
        EXPECT_EQ(width.title, each.title) << each.text << ' ' << each.zoom;
    }
}

TEST(ShutterRules, HaveAnImageForEachCase) {
    std::set<std::wstring> names;
    for (int type = -1; type < 5; ++type) {
        for (const bool open : {false, true}) {
            for (const bool grabber : {false, true}) {
                const wchar_t* const name = kx::shutter::ImageName(type, open, grabber);
                EXPECT_NE(CKxBitmapPool::AddImageBaseUI(name), CKxBitmapPool::NoImage) << Narrow(name);
                names.insert(name);
            }
        }
    }
    EXPECT_EQ(names.size(), 9u);
    EXPECT_EQ(GetCommonImageFromPool(1101), CKxBitmapPool::AddImageBaseUI(L"SHUTTER_OPEN"));
    EXPECT_EQ(GetCommonImageFromPool(1102), GetShutterImageFromPool(4711, false));
    EXPECT_EQ(GetCommonImageFromPool(1103), CKxBitmapPool::NoImage);
}

// ---- Clicks --------------------------------------------------------------------------------------------------------

struct Gesture {
    const char* name;
    void (*make)(Host& shutter);
    int asked;  // how often the host is asked for the other state
};

const Gesture kGestures[] = {
    {"click", [](Host& s) { Click(s.Button(), 12, 12); }, 1},
    {"two clicks", [](Host& s) { Click(s.Button(), 12, 12), Click(s.Button(), 3, 20); }, 2},
    {"double click", [](Host& s) { DoubleClick(s.Button(), 12, 12); }, 2},
    {"press alone", [](Host& s) { Press(s.Button(), 12, 12); }, 0},
    {"release beside it", [](Host& s) { Press(s.Button(), 12, 12), MoveTo(s, 2, 38), Release(); }, 1},
    {"space bar", [](Host& s) { s.SetFocus(), Key(VK_SPACE); }, 1},
    {"another key", [](Host& s) { s.SetFocus(), Key('A'); }, 0},
    {"the button's own message", [](Host& s) { SendMessageW(s, WM_COMMAND, kButton, 0); }, 0},
    {"the same message by hand", [](Host& s) { SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton, kRelease), 0); }, 1},
    {"another id", [](Host& s) { SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton + 1, kRelease), 0); }, 0},
    {"a capture that is lost", [](Host& s) { Press(s.Button(), 12, 12), SetCapture(GetParent(s)), Release(); }, 0},
    {"a click by program", [](Host& s) { SendMessageW(s.Button(), BM_CLICK, 0, 0); }, 1},
};

// How the host answers, and whether the state changes then.
struct Answer {
    const char* name;
    bool derived;    // asked by the callback; by WM_COMMAND otherwise
    LRESULT answer;  // of the parent; of the callback 0 is a veto
    bool enabled;
};
const Answer kAnswers[] = {{"parent agrees", false, 1, true}, {"parent refuses", false, 0, true},
                           {"host agrees", true, 1, true},    {"host vetoes", true, 0, true},
                           {"disabled", true, 1, false},      {"disabled, parent", false, 1, false}};

TEST(ShutterClick, AsksForTheOtherStateAndObeysTheAnswer) {
    for (const bool open : {false, true}) {
        for (const Answer& answer : kAnswers) {
            for (const Gesture& gesture : kGestures) {
                SCOPED_TRACE(std::string(gesture.name) + ", " + answer.name + (open ? ", open" : ", closed"));
                RecordingParent parent;
                Host shutter(answer.derived ? &parent.Record() : nullptr);
                parent.Answer(WM_COMMAND, answer.answer);
                shutter.veto = answer.answer == 0;
                ASSERT_TRUE(shutter.Make(parent.Window()));
                shutter.SetState(open);
                if (!answer.enabled) {
                    shutter.SetEnabled(false);
                    // What a user cannot do to a disabled window, the harness refuses to do.
                    if (gesture.asked != 1 || std::string(gesture.name).find("by") == std::string::npos) continue;
                }
                parent.Record().Clear();
                gesture.make(shutter);
                Pump();
                bool state = open;
                std::vector<Expected> expected;
                for (int i = 0; answer.enabled && i < gesture.asked; ++i) {
                    expected.push_back(answer.derived ? Call("State", !state) : Command(kId, 0, shutter));
                    if (answer.answer != 0) state = !state;
                }
                EXPECT_TRUE(parent.Record().Matches(expected));
                EXPECT_EQ(shutter.GetState(), state);
                Release();
            }
        }
    }
}

TEST(ShutterClick, OpensTheMenuWithTheRightButton) {
    RecordingParent parent;
    Host shutter(&parent.Record());
    shutter.Make(parent.Window());
    parent.Record().Clear();
    struct Menu {
        Recorder& record;
        int chosen;
    } menu{parent.Record(), 0};
    KX_SetMenuHandler(
        [](HWND, const CKxMenu& items, int x, int y, void* context) {
            auto& m = *static_cast<Menu*>(context);
            m.record.Call("Menu", items.GetCount(), items.GetCommand(0), items.GetText(0), x, y);
            return m.chosen;
        },
        &menu);
    RECT place{};
    GetWindowRect(shutter.Button(), &place);
    const Expected opened = Call("Menu", 1, 10000, L"Shutter Parameters...", place.left, place.bottom);
    Click(shutter.Button(), 5, 5, Button::Right);
    EXPECT_TRUE(parent.Record().Matches({opened}));
    menu.chosen = 10000;
    Click(shutter.Button(), 5, 5, Button::Right);
    EXPECT_TRUE(parent.Record().Matches({opened, Call("Rename")}));
    shutter.RenameEnabled(false);
    Click(shutter.Button(), 5, 5, Button::Right);
    EXPECT_TRUE(parent.Record().Matches({}));
    KX_SetMenuHandler(nullptr, nullptr);

    // The platform's own menu, by keys.
    for (const WORD key : {WORD{VK_ESCAPE}, WORD{VK_RETURN}}) {
        PostMessageW(shutter, WM_KEYDOWN, VK_DOWN, 1);
        PostMessageW(shutter, WM_KEYDOWN, key, 1);
        EXPECT_EQ(shutter.PopupMenu(shutter, place.left, place.bottom), key == VK_RETURN ? 10000 : 0);
    }
    EXPECT_TRUE(parent.Record().Matches({Call("Rename")}));
    EXPECT_EQ(shutter.PopupMenu(nullptr, 0, 0), 0);
}

// ---- Updates -------------------------------------------------------------------------------------------------------

// Opens and closes at once.
struct Device : CKxSimShutter {
    explicit Device(EKxShutterType type) : CKxSimShutter(L"Lamp & shutter", type) {
        SetSpeed(0);
        CKxDeviceRegistry::Add(*this);
    }
    void Open(bool open) { SetOpen(open), Tick(); }
    CKxStringW GetGUIText(int context) const override {
        if (fails) throw std::runtime_error("gone");
        return context == 6 ? title : CKxSimShutter::GetGUIText(context);
    }
    CKxStringW title;
    bool fails = false;
};

TEST(ShutterUpdate, ShowsWhatIsAskedForAndNothingElse) {
    for (const bool byMessage : {false, true}) {
        for (int flags = 0; flags < 8; ++flags) {
            SCOPED_TRACE(std::to_string(flags) + (byMessage ? " by message" : ""));
            const bool a = flags & 1, b = flags & 2, c = flags & 4;
            RecordingParent parent;
            Device device(eKxShutterType_Dia);
            device.SetLocked(true);
            device.Open(true);
            Host shutter(&parent.Record());
            shutter.Make(parent.Window());
            parent.Record().Clear();
            const HWND before = shutter.Button();
            const bool asked[3] = {a, b, c};
            if (byMessage) {
                SendMessageW(shutter, 0x0500, device.GetLogDevId(), reinterpret_cast<LPARAM>(asked));
            } else {
                EXPECT_TRUE(shutter.Update(device.GetLogDevId(), a, b, c));
            }
            EXPECT_EQ(shutter.GetEnabled(), !(a || b));
            for (const HWND each : {HWND{shutter}, shutter.Title(), shutter.Button()})
                EXPECT_EQ(IsWindowEnabled(each) != FALSE, !(a || b));
            EXPECT_EQ(TipOf(shutter), a || b ? L"Lamp & shutter" : L"");
            EXPECT_EQ(shutter.GetType(), b ? eKxShutterType_Dia : eKxShutterType_Epi);
            EXPECT_EQ(TextOf(shutter.Title()), b ? L"DIA" : L"EPI");
            EXPECT_EQ(shutter.GetState(), c);
            EXPECT_EQ(shutter.m_imageOn == CKxBitmapPool::AddImageBaseUI(L"SHUTTER_DIA_OPEN"), c);
            EXPECT_EQ(shutter.Button() != before, a && byMessage) << "made anew by the device's update alone";
            EXPECT_TRUE(parent.Record().Matches(c ? std::vector{Call("Icon", true, 0)} : std::vector<Expected>{}));
        }
    }
}

TEST(ShutterUpdate, LocksUnlocksAndTitles) {
    RecordingParent parent;
    Device device(static_cast<EKxShutterType>(9));
    const unsigned id = device.GetLogDevId();
    Host shutter;
    shutter.Make(parent.Window());
    shutter.Update(id, false, true, false);
    EXPECT_EQ(shutter.GetTitle(), L"EPI") << "a type without a title keeps the old one";
    device.title = L"Left <b>&amp;</b> lamp";
    shutter.Update(&device, false, true, false);
    EXPECT_EQ(TextOf(shutter.Title()), device.title.str());
    device.title = std::wstring(10000, L'&').c_str();
    shutter.Update(&device, true, true, true);
    EXPECT_EQ(TextOf(shutter.Title()), device.title.str());

    device.SetLocked(true);
    shutter.Update(id, true, false, false);
    shutter.SetEnabled(true);
    EXPECT_FALSE(shutter.GetEnabled());
    device.SetLocked(false);
    shutter.Update(id, false, false, true);
    EXPECT_FALSE(shutter.GetEnabled());
    shutter.Update(id, true, false, false);
    EXPECT_TRUE(IsWindowEnabled(shutter.Button()));
    shutter.SetEnabled(false);
    shutter.Update(id, true, false, false);
    EXPECT_TRUE(shutter.GetEnabled()) << "also after the host has disabled it";

    CKxDeviceRegistry::SetGrabberActive(true);
    shutter.Update(&device, false, false, true);
    EXPECT_EQ(shutter.m_imageOff, CKxBitmapPool::AddImageBaseUI(L"SHUTTER_CLOSED_LIVE"));
    CKxDeviceRegistry::SetGrabberActive(false);
}

TEST(ShutterUpdate, RefusesWhatIsNoShutter) {
    RecordingParent parent;
    Host shutter(&parent.Record());
    auto device = std::make_unique<Device>(eKxShutterType_Aux2);
    const unsigned id = device->GetLogDevId();
    EXPECT_TRUE(shutter.Update(id, true, true, true)) << "before there is a window";
    EXPECT_EQ(shutter.GetTitle(), L"Aux2");
    shutter.Make(parent.Window());
    device->Open(true);
    parent.Record().Clear();
    EXPECT_FALSE(shutter.Update(0u, true, true, true));
    EXPECT_FALSE(shutter.Update(static_cast<IKxDeviceShutter*>(nullptr), true, true, true));
    device->fails = true;
    EXPECT_FALSE(shutter.Update(device.get(), true, true, true));
    CKxSimLightPath other(L"Path", {L"Eye", L"Camera"});
    const bool flags[3] = {true, true, true};
    for (const unsigned each : {0u, CKxDeviceRegistry::Add(other), 99999u})
        SendMessageW(shutter, 0x0500, each, reinterpret_cast<LPARAM>(flags));
    SendMessageW(shutter, 0x0500, id, 0);
    EXPECT_TRUE(parent.Record().Matches({}));
    device->fails = false;
    shutter.Update(id, false, false, true);
    EXPECT_TRUE(shutter.GetState());
    device.reset();
    EXPECT_TRUE(shutter.Update(id, true, true, true));
    EXPECT_FALSE(shutter.GetState());
    EXPECT_EQ(shutter.GetTitle(), L"EPI");
    EXPECT_EQ(shutter.m_imageOff, GetCommonImageFromPool(1102));
}

// A pixel painted over the button tells whether it was drawn again.
TEST(ShutterUpdate, DrawsOnlyWhatHasChanged) {
    RecordingParent parent;
    Host shutter;
    shutter.Make(parent.Window());
    Pump();
    const auto isDrawn = [&](const std::function<void()>& act) {
        SetPixel(kx::ui::WindowDC(shutter.Button()), 10, 10, RGB(1, 2, 3));
        act();
        return GetPixel(kx::ui::WindowDC(shutter.Button()), 10, 10) != RGB(1, 2, 3);
    };
    EXPECT_FALSE(isDrawn([&] { shutter.SetState(false); }));
    EXPECT_TRUE(isDrawn([&] { shutter.SetState(true); }));
    EXPECT_FALSE(isDrawn([&] { shutter.SetTitle(L"EPI"), shutter.SetEnabled(true), Pump(); }));
    EXPECT_TRUE(isDrawn([&] { EXPECT_FALSE(static_cast<CKxDevUI_Shutter&>(shutter).UpdateShutterIcon(0, 0)); }));
}

// ---- Windows -------------------------------------------------------------------------------------------------------

TEST(ShutterWindow, IsMadeOfTitleAndButton) {
    const struct {
        double zoom;
        bool left, inside;
        const char *window, *title, *button;
    } cases[] = {{1, false, false, "20 20 90 40", "0 0 90 16", "8 16 24 24"},
                 {1.5, false, false, "20 20 135 60", "0 0 135 24", "12 24 36 36"},
                 {1, true, false, "20 20 90 40", "0 12 66 16", "66 8 24 24"},
                 {1, false, true, "20 20 90 40", "", "0 0 90 40"}};
    for (const auto& each : cases) {
        const Zoom zoom(each.zoom);
        RecordingParent parent;
        Device device(eKxShutterType_Epi);
        Host shutter;
        shutter.SetSize(90, 40);
        shutter.SetTitlePosition(each.left, -1);
        shutter.SetTitleInButton(each.inside);
        ASSERT_TRUE(shutter.Make(parent.Window()));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(PlaceOf(shutter), each.window);
            EXPECT_EQ(shutter.Title() ? PlaceOf(shutter.Title()) : "", each.title);
            EXPECT_EQ(PlaceOf(shutter.Button()), each.button);
            EXPECT_EQ(GetWindowLongW(shutter.Title(), GWL_STYLE) & SS_TYPEMASK, each.left ? SS_RIGHT : SS_LEFT);
            shutter.Update(&device, true, true, true);
        }
        EXPECT_EQ(GetWindowLongW(shutter.Button(), GWL_STYLE), 0x5000100B);
        EXPECT_EQ(GetWindowLongPtrW(shutter, 0), 5015);
        EXPECT_EQ(GetDlgCtrlID(shutter), kId);
    }
    RecordingParent parent;
    CKxDevUI_MechanicalShutter small;
    small.Create(parent.Window(), 5, 5, -1, -1);
    EXPECT_EQ(PlaceOf(small), "5 5 30 30");
    EXPECT_EQ(PlaceOf(small.GetButtonHandle()), "7 14 15 15");
    EXPECT_EQ(PlaceOf(GetDlgItem(small, kTitle)), "0 0 30 14");
    EXPECT_FALSE(small.Create(nullptr, LONG_MAX, LONG_MIN, LONG_MAX, 0));
}

TEST(ShutterWindow, FitsItsTitle) {
    for (const double scale : {1.0, 1.5}) {
        const Zoom zoom(scale);
        RecordingParent parent;
        Host shutter;
        shutter.SetAutomaticallyResizable(true, 64, 128);
        shutter.SetTitleInButton(true);
        shutter.SetSize(64, 24);
        shutter.Make(parent.Window());
        for (const auto& [title, width] : {std::pair{std::wstring(10000, L'W'), 128}, std::pair{std::wstring(), 64}}) {
            shutter.SetTitle(title.c_str());
            const std::string zoomed =
                std::to_string(std::lround(width * scale)) + " " + std::to_string(std::lround(24 * scale));
            EXPECT_EQ(PlaceOf(shutter), "20 20 " + zoomed);
            EXPECT_EQ(PlaceOf(shutter.Button()), "0 0 " + zoomed);
            EXPECT_EQ(shutter.GetButtonWidth(), width);
        }
    }
}

TEST(ShutterWindow, TakesOverADialogsControls) {
    const auto add = [](HWND parent, const wchar_t* windowClass, int id, int x, int y, DWORD style) {
        return CreateWindowExW(0, windowClass, L"Dia lamp", WS_CHILD | WS_VISIBLE | style, x, y, 60, 20, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    };
    for (const bool titled : {true, false}) {
        RecordingParent parent;
        Device device(eKxShutterType_Dia);
        const HWND before = add(parent.Window(), L"EDIT", 1, 0, 0, 0);
        const HWND title = titled ? add(parent.Window(), L"STATIC", 2, 30, 42, 0) : nullptr;
        const HWND button = add(parent.Window(), L"BUTTON", 3, 100, 40, BS_PUSHBUTTON);
        const HWND after = add(parent.Window(), L"EDIT", 4, 0, 80, 0);
        Host shutter(&parent.Record());
        const HWND missing = GetDlgItem(parent.Window(), 99);
        EXPECT_FALSE(shutter.Create(missing, title));
        EXPECT_FALSE(shutter.Create(before, title)) << "no button";
        ASSERT_TRUE(shutter.Create(button, titled ? title : missing));
        EXPECT_FALSE(Host().Create(button, nullptr)) << "taken already";
        EXPECT_EQ(shutter.GetId(), 3);
        EXPECT_EQ(GetDlgItem(parent.Window(), 3), HWND{shutter});
        EXPECT_EQ(PlaceOf(shutter), titled ? "30 40 130 22" : "100 40 60 20");
        EXPECT_EQ(GetWindow(shutter, GW_HWNDPREV), before);
        EXPECT_EQ(GetWindow(shutter, GW_HWNDNEXT), after);
        parent.Record().Clear();
        Click(shutter.Button(), 5, 5);
        EXPECT_TRUE(parent.Record().Matches({Call("State", true)}));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(PlaceOf(shutter.Button()), titled ? "70 0 60 20" : "0 0 60 20");
            EXPECT_EQ(titled ? PlaceOf(shutter.Title()) : "0 2 60 20", "0 2 60 20");
            EXPECT_EQ(TextOf(shutter.Title()), !titled ? L"" : i == 0 ? L"Dia lamp" : L"DIA");
            shutter.Update(&device, true, true, true);
        }
    }
}

TEST(ShutterWindow, BearsWhatItsCallbacksDo) {
    Device device(eKxShutterType_Epi);
    const std::function<void(std::unique_ptr<Host>&, HWND)> acts[] = {
        [](auto& shutter, HWND) { shutter.reset(); },
        [](auto& shutter, HWND) { shutter->Destroy(); },
        [](auto&, HWND parent) { DestroyWindow(parent); },
        [](auto& shutter, HWND) { shutter->DestroyControls(); },
        [](auto& shutter, HWND) { shutter->CreateControls(); },
        [](auto& shutter, HWND parent) { shutter->Make(parent); },
        [&](auto& shutter, HWND) { shutter->Update(&device, true, true, true); },
        [](auto& shutter, HWND) { shutter->SetEnabled(false); },
        [](auto&, HWND) { throw std::runtime_error("host"); },
    };
    KX_SetMenuHandler([](HWND, const CKxMenu& menu, int, int, void*) { return menu.GetCommand(0); }, nullptr);
    for (const auto& act : acts) {
        for (int way = 0; way < 3; ++way) {
            RecordingParent parent;
            auto shutter = std::make_unique<Host>(&parent.Record());
            shutter->Make(parent.Window());
            shutter->act = [&] { act(shutter, parent.Window()); };
            const HWND button = shutter->Button();
            if (way == 0) Click(button, 5, 5);
            if (way == 1) Click(button, 5, 5, Button::Right);
            if (way == 2) SendMessageW(button, BM_CLICK, 0, 0);
            Pump();
            if (!shutter) continue;
            EXPECT_EQ(shutter->Button() != nullptr, shutter->GetButtonHandle() != nullptr);
            EXPECT_EQ(HWND{*shutter} != nullptr, IsWindow(*shutter) != FALSE);
        }
    }
    KX_SetMenuHandler(nullptr, nullptr);
}

TEST(ShutterWindow, HoldsNothingBack) {
    RecordingParent parent;
    Device device(eKxShutterType_Epi);
    EXPECT_TRUE(NoGrowth(1000, [&] {
        Host shutter;
        shutter.Make(parent.Window());
        shutter.Update(&device, true, true, true);
        UpdateWindow(shutter);
        SendMessageW(shutter.Button(), BM_CLICK, 0, 0);
        parent.Record().Clear();
    }));
}

// Pictures for a person to look at (KX_PICTURES); here only that open and closed differ in more than a few pixels.
TEST(ShutterWindow, ShowsItsStateInEveryLook) {
    for (const int scheme : {eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        KX_SetColorScheme(static_cast<EKxColorScheme>(scheme));
        for (const double scale : {1.0, 1.5, 2.0}) {
            const Zoom zoom(scale);
            RecordingParent parent({long(420 * scale), long(150 * scale)});
            CKxDevUI_Container panel;
            panel.Create(parent.Window(), 0, 0, long(420 * scale), long(150 * scale), true, true);
            std::vector<std::unique_ptr<Device>> devices;
            std::vector<std::unique_ptr<CKxDevUI_Shutter>> shutters;
            for (int i = 0; i < 24; ++i) {
                const int row = i / 8, type = i % 4, x = int(i % 8 * 50 * scale), y = int((4 + row * 48) * scale);
                devices.push_back(std::make_unique<Device>(static_cast<EKxShutterType>(type)));
                devices.back()->Open(i % 8 >= 4);
                auto shutter =
                    row == 2 ? std::make_unique<CKxDevUI_MechanicalShutter>() : std::make_unique<CKxDevUI_Shutter>();
                if (row == 1) shutter->SetTitleInButton(true), shutter->SetSize(46, 24);
                shutter->Create(panel, x, y, -1, -1, true, true);
                CKxDeviceRegistry::SetGrabberActive(type == 1);
                shutter->Update(devices.back().get(), false, true, true);
                shutter->SetEnabled(i % 3 != 2);
                shutters.push_back(std::move(shutter));
            }
            CKxDeviceRegistry::SetGrabberActive(false);
            const Picture picture = Picture::OnScreen(panel);
            picture.Save("shutter-" + std::to_string(scheme) + "-" + std::to_string(int(scale * 100)));
            const Picture closed = Picture::OnScreen(shutters[0]->GetButtonHandle());
            shutters[0]->SetState(true);
            EXPECT_GT(Picture::OnScreen(shutters[0]->GetButtonHandle()).Differences(closed), int(60 * scale * scale));
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
}

struct Slots : CKxDevUI_Shutter {
    template <class Function>
    static long Of(Function function) {
        long long words[sizeof(Function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    }
    static std::vector<long> InOrder() {
        return {Of(&Slots::UpdateShutterIcon), Of(&Slots::OnStateChangeRequest), Of(&Slots::OnRenameDlgRequest)};
    }
};

TEST(ShutterWindow, KeepsTheOrderOfItsOperations) { EXPECT_EQ(Slots::InOrder(), (std::vector<long>{19, 20, 21})); }

}  // namespace
