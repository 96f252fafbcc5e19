// One laser line: what it asks for on which act, and what of its engine it shows.
#include <controls/panel_test.h>

#include <kxbaseui/kx_menu.h>
#include <kxdevices/kx_simlaserengine.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/devgui_multilaserline.h>

namespace {

using namespace kx::test;
using Engine = Registered<CKxSimLaserEngine>;

const SKxLaserLine kGreen{
    .name = L"Green", .wavelength = 561, .power = 10, .limit = 80, .fullPower = 150, .gain = 90.0};

struct Line : Asking<CKxDevUI_MultiLaserLine> {
    using Asking::Asking;
    HWND Slider() const { return PartAt(10201); }
    HWND Button() const { return PartAt(10202); }
    void Enter(const std::wstring& number) {
        const HWND edit = GetWindow(PartAt(10200), GW_CHILD);
        ::SetFocus(edit), SendMessageW(edit, EM_SETSEL, 0, -1), Type(number + L"\n");
    }
    std::string TextAt(int id) const { return Narrow(kx::test::TextOf(PartAt(id))); }

    void OnPowerChangeRequest(double percent, bool& veto) override { Asked(veto, "power", percent); }
    void OnStateChangeRequest(bool on, bool& veto) override { Asked(veto, "on", on); }
    void OnViewChanged() override { Told("view"); }
};

struct MultiLaserLine : PanelTest<Line> {
    MultiLaserLine() {
        panel.SetLine(kGreen);
        Open();
        Told();
    }
    // What was asked, what is held, and whether it can be operated.
    std::string See() override {
        std::string seen = Told() + CallText(" holds", panel.GetLine().power, panel.GetLine().on);
        return seen + (IsWindowEnabled(panel.Slider()) && IsWindowEnabled(panel.Button()) ? "" : " locked");
    }
};

TEST_F(MultiLaserLine, AsksForEachActAndObeys) {
    const auto refuse = [this](bool refuses) { return [=, this] { panel.answer = refuses; }; };
    // What the engine has told by the time that the host agrees.
    const auto meanwhile = [this](const wchar_t* number, double power, double limit, bool interlock = false) {
        panel.meanwhile = [=, this] {
            SKxLaserLine line = panel.GetLine();
            line.power = power, line.limit = limit, line.interlock = interlock;
            panel.SetLine(line);
        };
        panel.Enter(number);
    };
    Play({
        {[&] { Click(panel.Button(), 8, 8); }, "on(true) holds(10, true)"},
        {[&] { ::SetFocus(panel.Slider()), Key(VK_RIGHT); }, "power(11) holds(11, true)"},
        {[&] { Key(VK_HOME); }, "power(0) holds(0, true)"},
        {[&] { Key(VK_RIGHT); }, "power(0.01) holds(0.01, true)"},  // over the gap
        {[&] { Key(VK_END); }, "power(80) holds(80, true)"},        // not beyond the limit
        {[&] { panel.Enter(L"12.25"); }, "power(12.25) holds(12.25, true)"},
        {[&] { panel.Enter(L"90"); }, " holds(12.25, true)"},
        {refuse(true), " holds(12.25, true)"},
        {[&] { panel.Enter(L"5"); }, "power(5) holds(12.25, true)"},
        {[&] { ::SetFocus(panel.Slider()), Key(VK_LEFT); }, "power(11) holds(12.25, true)"},
        {[&] { Click(panel.Button(), 8, 8); }, "on(false) holds(12.25, true)"},
        {refuse(false), " holds(12.25, true)"},
        {[&] { panel.SetUnit(EKxPowerUnit::Milliwatts), panel.Enter(L"15"); }, "power(10) holds(10, true)"},
        {[&] { panel.SetPower(kNaN), panel.SetPower(500); }, " holds(100, true)"},
        {[&] { panel.SetUnit(EKxPowerUnit::Percent), meanwhile(L"60", 100, 20); }, "power(60) holds(20, true)"},
        {[&] { meanwhile(L"15", 8, 80); }, "power(15) holds(8, true)"},
        {[&] { meanwhile(L"30", 8, 80, true); }, "power(30) holds(8, true) locked"},
    });
}

// A drag ends with the interlock, and what comes of the hand afterwards asks for nothing.
TEST_F(MultiLaserLine, IsAtRestUnderAnOpenInterlock) {
    Engine engine{L"Engine", std::vector<SKxLaserLine>{kGreen}};
    engine.SetSpeed(0);
    const auto update = [&] {
        engine.Tick(), SendMessageW(panel, kx::ui::WM_KX_UPDATE_DEVICE_BAND, engine.GetLogDevId(), 0);
    };
    const auto interlock = [&](bool open) { return [&, open] { engine.SetInterlock(open, L"Door"), update(); }; };
    Play({
        {[&] { engine.SetLineOn(0, true), update(); }, " holds(10, true)"},
        {[&] { Press(panel.Slider(), 12, 10), MoveTo(panel.Slider(), 14, 10), MoveTo(panel.Slider(), 10, 10); },
         "power(0) holds(0, true)"},
        {interlock(true), " holds(10, false) locked"},
        {[&] { MoveTo(panel.Slider(), 90, 10), Release(); }, " holds(10, false) locked"},
        {interlock(false), " holds(10, false)"},
        {[&] { update(), update(); }, " holds(10, false)"},
    });
    EXPECT_TRUE(panel.TextAt(10101) == "Measured 0 %\nGain 90 %" && panel.TextAt(10100) == "Green\n561 nm");
    interlock(true)();
    EXPECT_EQ(panel.TextAt(10101), "Interlock open\nDoor");
    EXPECT_EQ(KX_GetActivity(panel), (KxActivity{EKxActivity::Locked, -1, L"Door"}));
    panel.SetLineNumber(1);
    EXPECT_FALSE(panel.Update(engine.GetLogDevId()) || panel.Update(0)) << "there is none";
}

TEST_F(MultiLaserLine, ChangesScaleAndUnitByItsMenuAndMayEndThere) {
    static MultiLaserLine* test = nullptr;
    static std::unique_ptr<Line> other;
    test = this;
    KX_SetMenuHandler(
        [](HWND, const CKxMenu& menu, int, int, void*) {
            other.reset();
            return menu.GetCommand(test->panel.GetScale() == EKxPowerScale::Linear ? 1 : 0);
        },
        nullptr);
    const auto menu = [&] { SendMessageW(panel, WM_CONTEXTMENU, 0, -1); };
    Play({{menu, "view() holds(10, false)"}, {menu, "view() holds(10, false)"}});
    EXPECT_TRUE(panel.GetScale() == EKxPowerScale::Linear && panel.GetUnit() == EKxPowerUnit::Milliwatts);
    EXPECT_EQ(panel.TextAt(10102), "mW");
    other = std::make_unique<Line>(parent.Record());
    SendMessageW(other->Create(parent.Window(), 0, 100, -1, -1, true, true), WM_CONTEXTMENU, 0, -1);
    EXPECT_EQ(Told(), "");
    KX_SetMenuHandler(nullptr, nullptr);
}

}  // namespace
