// The shutter: where it puts its parts, what a click asks, what an update shows, and what it bears from its host.
#include "lamps.h"

#include <kxbaseui/kx_menu.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_answer.h>

#include <commctrl.h>

#include <climits>

namespace {

using namespace kx::test;

constexpr int kId = 7, kTitle = 10100, kButton = 10200, kRelease = 0x202;

struct Host : Asking<CKxDevUI_Shutter> {
    using Asking::Asking;

    HWND Make(HWND parent) { return Create(parent, 20, 20, -1, -1, true, true); }
    HWND Title() const { return GetDlgItem(m_hWnd, kTitle); }
    HWND Button() const { return GetDlgItem(m_hWnd, kButton); }

    bool derived = true;  // or the parent is asked, as by the base
    using CKxDevUI_Shutter::m_imageOff, CKxDevUI_Shutter::m_imageOn;

    bool UpdateShutterIcon(unsigned id, int grabber) override {
        Told("Icon", id != 0, grabber);
        return CKxDevUI_Shutter::UpdateShutterIcon(id, grabber);
    }
    void OnStateChangeRequest(bool state, bool& refuse) override {
        derived ? Asked(refuse, "State", state) : CKxDevUI_Shutter::OnStateChangeRequest(state, refuse);
    }
    void OnRenameDlgRequest() override { Told("Rename"); }
};

struct Shutter : ControlTest {
    void SetUp() override { Make(); }
    Host& Make() {
        shutter = std::make_unique<Host>(parent.Record());
        shutter->SetId(kId);
        shutter->Make(parent.Window());
        parent.Record().Clear();
        return *shutter;
    }
    // The title, whether it can be used, what was told.
    std::string See() override {
        return Narrow(TextOf(shutter->Title())) + (IsWindowEnabled(shutter->Button()) ? " + " : " - ") + Told();
    }
    std::unique_ptr<Host> shutter;
};

TEST(ShutterRules, FitTheWidthToTheTitle) {
    const std::tuple<long, int, int, double, long, long> cases[] = {
        {5, 64, 128, 1, 64, 34},     {75, 64, 128, 1.25, 90, 52},           {1000, 64, 128, 1.5, 128, 83},
        {50, 200, 100, 1, 200, 170}, {LONG_MAX, 0, INT_MAX, 8, 4096, 3856}, {50, 64, 128, kNaN, 0, 0}};
    for (const auto& [text, minimum, maximum, zoom, control, title] : cases) {
        const auto width = kx::shutter::FitWidth(text, minimum, maximum, zoom);
        EXPECT_EQ(std::pair(width.control, width.title), std::pair(control, title)) << text;
    }
}

TEST_F(Shutter, TellsTheLifeOfARequest) {
    Lamp device(eKxShutterType_Epi);
    const auto now = [this] { return KX_GetActivity(*shutter).activity; };
    device.SetOpen(true), shutter->Update(&device, false, false, true);
    EXPECT_EQ(now(), EKxActivity::Moving);
    device.SetFails(true, L"stuck"), device.Tick(), shutter->Update(device.GetLogDevId(), false, true, false);
    EXPECT_EQ(now(), EKxActivity::Failed);
    device.SetFails(false), device.SetOpen(false), device.Tick(), device.SetLocked(true);
    shutter->Update(&device, true, false, false);
    EXPECT_EQ(now(), EKxActivity::Locked);
    EXPECT_FALSE(shutter->GetState());
}

TEST_F(Shutter, SaysWhyItIsRefused) {
    shutter->answer = true;
    for (const wchar_t* const reason : {L"", L"The door is open"}) {
        shutter->meanwhile = [reason] { KX_SayWhyRefused(reason); };
        Click(shutter->Button(), 12, 12);
        EXPECT_EQ(TextOf(kx::ui::AnswerWindow()), *reason ? reason : L"The request was refused.");
        EXPECT_EQ(KX_GetActivity(*shutter), (KxActivity{EKxActivity::Refused, 1, reason}));
    }
    kx::ui::HideAnswer(*shutter);
    EXPECT_EQ(KX_GetActivity(*shutter), KxActivity{});
    shutter->meanwhile = [this] { KX_SayWhyRefused(L"gone"), shutter.reset(); };
    Click(shutter->Button(), 12, 12);
    EXPECT_FALSE(kx::ui::AnswerWindow());
}

TEST_F(Shutter, AsksForTheOtherStateAndObeysTheAnswer) {
    // How often the host is asked for the other state.
    const std::tuple<const char*, void (*)(Host&), int> gestures[] = {
        {"click", [](Host& s) { Click(s.Button(), 12, 12); }, 1},
        {"double click", [](Host& s) { DoubleClick(s.Button(), 12, 12); }, 2},
        {"release beside it", [](Host& s) { Press(s.Button(), 12, 12), MoveTo(s, 2, 38), Release(); }, 1},
        {"space bar", [](Host& s) { s.SetFocus(), Key(VK_SPACE); }, 1},
        {"the button's own message", [](Host& s) { SendMessageW(s, WM_COMMAND, kButton, 0); }, 0},
        {"another id", [](Host& s) { SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton + 1, kRelease), 0); }, 0},
        {"a capture that is lost", [](Host& s) { Press(s.Button(), 12, 12), SetCapture(GetParent(s)), Release(); }, 0},
        {"the message while disabled",
         [](Host& s) { s.SetEnabled(false), SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton, kRelease), 0); }, 0},
        {"a click by program", [](Host& s) { SendMessageW(s.Button(), BM_CLICK, 0, 0); }, 1},
    };
    for (int way = 0; way < 8; ++way) {
        for (const auto& [name, make, asked] : gestures) {
            const bool agrees = way & 2;
            bool state = way & 4;
            parent.Answer(WM_COMMAND, agrees);
            Make().answer = !agrees;
            shutter->derived = way & 1;
            shutter->SetState(state);
            make(*shutter);
            Pump();
            std::string expected;
            for (int i = 0; i < asked; ++i) {
                expected += (i ? " " : "") + (shutter->derived ? CallText("State", !state) : "7:0#7");
                state ^= agrees;
            }
            EXPECT_EQ(Told() + CallText(" now", shutter->GetState()), expected + CallText(" now", state))
                << name << way;
            Release();
        }
    }
}

TEST_F(Shutter, OpensTheMenuWithTheRightButton) {
    std::pair<Recorder&, int> menu{parent.Record(), 0};
    KX_SetMenuHandler(
        [](HWND, const CKxMenu& items, int, int, void* context) {
            auto& [record, chosen] = *static_cast<decltype(menu)*>(context);
            record.Call("Menu", items.GetCount(), items.GetCommand(0), items.GetText(0));
            return chosen;
        },
        &menu);
    const auto click = [&] { Click(shutter->Button(), 5, 5, Button::Right); };
    Play({{click, "EPI + Menu(1, 10000, \"Shutter Parameters...\")"},
          {[&] { menu.second = 10000, click(); }, "EPI + Menu(1, 10000, \"Shutter Parameters...\") Rename()"},
          {[&] { shutter->RenameEnabled(false), click(); }, "EPI + "}});
    KX_SetMenuHandler(nullptr, nullptr);
}

TEST_F(Shutter, ShowsWhatIsAskedForAndNothingElse) {
    Lamp device(eKxShutterType_Dia);
    device.SetLocked(true);
    device.Open(true);
    for (int flags = 0; flags < 16; ++flags) {
        const bool a = flags & 1, b = flags & 2, c = flags & 4, byMessage = flags & 8, asked[3] = {a, b, c};
        Make();
        const HWND before = shutter->Button();
        if (byMessage) SendMessageW(*shutter, 0x0500, device.GetLogDevId(), reinterpret_cast<LPARAM>(asked));
        EXPECT_TRUE(byMessage || shutter->Update(device.GetLogDevId(), a, b, c));
        const bool open = shutter->m_imageOn == CKxBitmapPool::AddImageBaseUI(L"SHUTTER_DIA_OPEN");
        const char* const icon = c ? "Icon(true, 0)" : "";
        // Made anew by the device's update alone.
        EXPECT_EQ(CallText("", shutter->GetEnabled(), IsWindowEnabled(shutter->Button()), shutter->GetType(), open,
                           TextOf(shutter->Title()), shutter->GetState(), shutter->Button() != before, Told()),
                  CallText("", !(a || b), int{!(a || b)}, int{b}, c, b ? L"DIA" : L"EPI", c, a && byMessage, icon));
    }
}

TEST_F(Shutter, LocksTitlesAndKeepsWhatADeadDeviceTold) {
    auto device = std::make_unique<Lamp>(static_cast<EKxShutterType>(9));
    const unsigned id = device->GetLogDevId();
    const auto live = [&](bool active) {
        CKxDeviceRegistry::SetGrabberActive(active);
        shutter->Update(id, false, false, true);
        EXPECT_EQ(shutter->m_imageOff == CKxBitmapPool::AddImageBaseUI(L"SHUTTER_CLOSED_LIVE"), active);
    };
    const auto update = [&](bool done) { EXPECT_EQ(shutter->Update(id, true, true, true), done); };
    Play({{[&] { shutter->Update(id, false, true, false); }, "EPI + "},  // a type without a title keeps the old one
          {[&] { device->title = L"<b>&amp;</b>", device->SetLocked(true), update(true); },
           "<b>&amp;</b> - Icon(true, 0)"},
          {[&] { shutter->SetEnabled(true); }, "<b>&amp;</b> - "},
          {[&] { device->SetLocked(false), shutter->Update(id, true, false, false); }, "<b>&amp;</b> + "},
          // Also after the host has disabled it.
          {[&] { shutter->SetEnabled(false), shutter->Update(id, true, false, false); }, "<b>&amp;</b> + "},
          {[&] { live(true), live(false); }, "<b>&amp;</b> + Icon(true, 1) Icon(true, 0)"},
          {[&] { device->Open(true), device->fails = true, update(false); }, "<b>&amp;</b> + "}});
    for (const unsigned each : {id, 0u, 99999u})
        kx::ui::SendDeviceBand(*shutter, each, kx::ui::ShutterBand{true, true, true});
    EXPECT_EQ(See(), "<b>&amp;</b> + ");
    device.reset();
    update(true);
    EXPECT_EQ(shutter->m_imageOff, GetCommonImageFromPool(1102));
    EXPECT_EQ(See(), "EPI + Icon(true, 0)");
}

TEST_F(Shutter, IsMadeOfTitleAndButton) {
    // Its own, the title's, how that is aligned, the button's.
    const std::tuple<bool, bool, const char*> cases[] = {{false, false, "20 20 90 40, 0 0 90 16 0, 8 16 24 24"},
                                                         {true, false, "20 20 90 40, 0 12 66 16 2, 66 8 24 24"},
                                                         {false, true, "20 20 90 40, 0 0 0 0 0, 0 0 90 40"}};
    const auto places = [](HWND window) {
        const HWND title = GetDlgItem(window, kTitle);
        return PlaceOf(window) + ", " + PlaceOf(title) + " " +
               std::to_string(GetWindowLongW(title, GWL_STYLE) & SS_TYPEMASK) + ", " +
               PlaceOf(GetDlgItem(window, kButton));
    };
    Lamp device(eKxShutterType_Epi);
    for (const auto& [left, inside, expected] : cases) {
        shutter->SetSize(90, 40);
        shutter->SetTitlePosition(left, -1);
        shutter->SetTitleInButton(inside);
        ASSERT_TRUE(shutter->Make(parent.Window()));
        EXPECT_EQ(places(*shutter), expected);
        const Picture before = Picture::OnScreen(*shutter);
        shutter->SetTitle(L"Lamp");
        EXPECT_NE(Picture::OnScreen(*shutter).Differences(before), 0) << expected;
        shutter->Update(&device, true, true, true);
        EXPECT_EQ(places(*shutter), expected);
    }
    CKxDevUI_MechanicalShutter small;
    small.Create(parent.Window(), 5, 5, -1, -1);
    EXPECT_EQ(places(small), "5 5 30 30, 0 0 30 14 0, 7 14 15 15");
    CKxGUILayoutManager::SetGuiZoom(1.5);
    shutter->SetAutomaticallyResizable(true, 64, 128);
    shutter->SetTitle(std::wstring(10000, L'W').c_str());
    EXPECT_EQ(PlaceOf(shutter->Button()), "0 0 192 60") << "as wide as the widest is, zoomed";
}

TEST_F(Shutter, TakesOverADialogsControls) {
    for (const bool titled : {true, false}) {
        RecordingParent dialog;
        const auto add = [&](const wchar_t* windowClass, int id, long x, long y) {
            return AddChild(dialog.Window(), windowClass, id, {x, y, x + 60, y + 20}, 0, L"Dia lamp");
        };
        const HWND before = add(L"EDIT", 1, 0, 0), title = titled ? add(L"STATIC", 2, 30, 42) : nullptr;
        const HWND button = add(L"BUTTON", 3, 100, 40);
        add(L"EDIT", 4, 0, 80);
        Host taken(dialog.Record());
        EXPECT_FALSE(taken.Create(before, title)) << "no button";
        ASSERT_TRUE(taken.Create(button, title));
        EXPECT_FALSE(Host(dialog.Record()).Create(button, nullptr)) << "taken already";
        EXPECT_TRUE(GetDlgItem(dialog.Window(), 3) == taken && GetWindow(taken, GW_HWNDPREV) == before);
        EXPECT_EQ(PlaceOf(taken) + ", " + PlaceOf(taken.Title()) + ", " + PlaceOf(taken.Button()) + ", " +
                      Narrow(taken.GetTitle().str()),
                  titled ? "30 40 130 22, 0 2 60 20, 70 0 60 20, Dia lamp" : "100 40 60 20, 0 0 0 0, 0 0 60 20, EPI");
    }
}

}  // namespace
