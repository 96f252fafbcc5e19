// The life of a request in the position panels: what devices and hosts tell, how it is drawn, what a refusal says.
#include <controls/panel_test.h>

#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

#include <set>

namespace {

using namespace kx::test;

using A = EKxActivity;

struct Turret : AskingPanel<CKxDevUI_Nosepiece> {
    using AskingPanel::AskingPanel;
    using Shown = CKxDevUI_Nosepiece;
    using Band = kx::ui::NosepieceBand;
    static constexpr int kFirst = 10200;
    Registered<CKxSimNosepiece> device{L"Nosepiece", std::vector<SKxSimObjective>(6, {L"a", L"60x", L""})};
    bool Follow() { return Update(&device, true, true, true, true, true); }
};
struct Wheel : AskingPanel<CKxDevUI_FilterWheel> {
    using AskingPanel::AskingPanel;
    using Shown = CKxDevUI_FilterWheel;
    using Band = kx::ui::FilterWheelBand;
    static constexpr int kFirst = 10201;
    Registered<CKxSimFilterChanger> device{L"Emission", Names(6, L"525/50"), SKxSimFilterChangerKind{}};
    bool Follow() { return Update(&device, true, true, true); }
};
struct Switch : AskingPanel<CKxDevUI_Switcher> {
    using AskingPanel::AskingPanel;
    using Shown = CKxDevUI_Switcher;
    using Band = kx::ui::SwitcherBand;
    static constexpr int kFirst = 10201;
    Registered<CKxSimLightPath> device{L"Light path", Names(6, L"port")};
    bool Follow() { return Update(&device, true, true, true); }
};

template <class Panel>
struct Life : PanelTest<Panel> {
    Life() {
        this->Open(560);
        this->panel.device.SetSpeed(0);
        this->panel.Follow();
    }
    void Tell(A activity, long target = -1, const wchar_t* reason = L"") {
        EXPECT_TRUE(KX_TellActivity(this->panel, {activity, target, reason}));
    }
    A Now() { return KX_GetActivity(this->panel).activity; }
    Picture Seen() { return Picture::OnScreen(this->panel); }
    std::wstring Answer() { return kx::ui::TextOf(kx::ui::AnswerWindow()).str(); }
};

using Panels = testing::Types<Turret, Wheel, Switch>;
TYPED_TEST_SUITE(Life, Panels);

TYPED_TEST(Life, TurnsOneRingWhileItMoves) {
    // What is painted in a while, and whether it comes from a timer.
    std::set<HWND> painted;
    bool ticks = false;
    const auto watch = [&] {
        painted.clear(), ticks = false;
        const auto end = GetTickCount64() + 400;
        for (MSG message; GetTickCount64() < end;) {
            // Told as often as a device may, it paints no more.
            KX_TellActivity(this->panel, KX_GetActivity(this->panel));
            if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
                continue;
            }
            if (message.message == WM_PAINT) painted.insert(message.hwnd);
            ticks |= message.message == WM_TIMER && message.hwnd == HWND{this->panel};
            DispatchMessageW(&message);
        }
    };
    const auto expect = [&](bool turns, const char* what) {
        Pump(), this->Seen(), watch();
        EXPECT_EQ(painted, turns ? std::set<HWND>{this->Part(TypeParam::kFirst + 1)} : std::set<HWND>{}) << what;
        EXPECT_EQ(ticks, turns) << what;
    };
    expect(false, "at rest");
    this->Tell(A::Moving, 1);
    expect(true, "moving");
    this->Tell(A::Moving, 99);
    expect(false, "to a position that is not there");
    this->Tell(A::Asked, 1);
    expect(false, "asked");
    const ClientAnimation still(false);
    this->Tell(A::Moving, 1);
    expect(false, "standing still");
}

TYPED_TEST(Life, TellsWhatTheDeviceTells) {
    auto& device = this->panel.device;
    const auto follow = [&](A activity, const std::wstring& name) {
        this->panel.Follow();
        EXPECT_EQ(this->Now(), activity);
        const std::wstring text = kx::ui::TextOf(this->panel).str();
        EXPECT_EQ(name.empty() ? text : text.substr(text.find(L": ")), name.empty() ? L"" : L": " + name);
    };
    follow(A::AtRest, L"");
    device.MoveTo(3), follow(A::Moving, L"Moving to position 4");
    // A second request while the first one moves.
    device.MoveTo(1), follow(A::Moving, L"Moving to position 2");
    EXPECT_EQ(KX_GetActivity(this->panel).target, 1);
    device.Stop(), follow(A::Unknown, L"Position unknown");
    device.SetFails(true, L"No answer"), device.MoveTo(2), device.Tick(), follow(A::Failed, L"Failed: No answer");
    // Ready without a word.
    device.SetFails(false), device.MoveTo(2), device.Tick(), follow(A::AtRest, L"");
    EXPECT_EQ(this->panel.GetPosition(), 2);
    this->Tell(A::Failed, -1, L"overheated");
    CKxLocale::SetModuleLangId(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN));
    this->Open(560);
    EXPECT_EQ(this->Now(), A::Failed);
    EXPECT_NE(kx::ui::TextOf(this->panel).str().find(L"Fehler: overheated"), std::wstring::npos);
    EXPECT_FALSE(KX_TellActivity(this->parent.Window(), KxActivity{}));
    EXPECT_TRUE(NoGrowth(100, [&] { this->Tell(A::Moving, 2), this->Open(560), this->Tell(A::Failed), this->Seen(); }));
}

TYPED_TEST(Life, AlertsOnceToADeviceInTwoPanels) {
    static int alerts, names;
    alerts = names = 0;
    const auto count = [](HWINEVENTHOOK, DWORD event, HWND, LONG, LONG, DWORD, DWORD) {
        alerts += event == EVENT_SYSTEM_ALERT, names += event == EVENT_OBJECT_NAMECHANGE;
    };
    const HWINEVENTHOOK hook = SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_OBJECT_NAMECHANGE, nullptr, count,
                                               GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    typename TypeParam::Shown other;
    other.Create(this->parent.Window(), 10, 120, 560, -1, true, true);
    auto& device = this->panel.device;
    device.SetFails(true, L"stuck"), device.MoveTo(1), device.Tick();
    for (int i = 0; i < 3; ++i)
        this->panel.Follow(), kx::ui::SendDeviceBand(other, device.GetLogDevId(), typename TypeParam::Band{});
    Pump();
    EXPECT_EQ(std::pair(alerts, names), std::pair(1, 2));
    UnhookWinEvent(hook);
}

TYPED_TEST(Life, SaysWhyItWasRefused) {
    constexpr bool wheel = std::is_same_v<TypeParam, Wheel>, turret = std::is_same_v<TypeParam, Turret>;
    const std::tuple<const wchar_t*, std::wstring, A> table[] = {
        {L"The stage is in the way", L"The stage is in the way", A::Refused},
        {nullptr, wheel ? L"The request was refused." : L"",
         wheel    ? A::Refused
         : turret ? A::Asked
                  : A::AtRest}};
    EXPECT_FALSE(KX_SayWhyRefused(L"nobody is asked"));
    this->panel.answer = true;
    for (const auto& [reason, answer, activity] : table) {
        this->panel.SetPosition(0);
        kx::ui::HideAnswer(this->panel);
        this->panel.meanwhile = [why = reason] { EXPECT_EQ(why && KX_SayWhyRefused(why), why != nullptr); };
        this->ClickPart(TypeParam::kFirst + 2);
        EXPECT_EQ(this->Answer(), answer);
        EXPECT_EQ(this->Now(), activity);
        EXPECT_EQ(this->panel.GetPosition(), wheel || turret ? 0 : 2);
    }
    this->panel.SetPosition(0);
    kx::ui::HideAnswer(this->panel);
    EXPECT_EQ(this->Now(), A::AtRest) << "the host has answered";
    this->Tell(A::Asked, 1), this->Tell(A::Refused, 1);
    kx::ui::HideAnswer(this->panel);
    EXPECT_EQ(this->Now(), A::AtRest) << "refused afterwards";
    this->Tell(A::Moving, 1), this->Tell(A::Refused, 2, L"busy");
    EXPECT_EQ(this->Answer(), L"busy");
    kx::ui::HideAnswer(this->panel);
    EXPECT_EQ(KX_GetActivity(this->panel), (KxActivity{A::Moving, 1, {}}))
        << "what is refused meanwhile changes nothing";
    this->panel.meanwhile = [&] { KX_SayWhyRefused(L"gone"), this->panel.Destroy(); };
    this->ClickPart(TypeParam::kFirst + 2);
    EXPECT_EQ(this->Answer(), L"");
}

}  // namespace
