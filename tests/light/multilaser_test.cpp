// A set of laser lines in subsets: a day with it, and what comes and goes meanwhile.
#include <controls/panel_test.h>

#include <bench/reader.h>

#include <kxbaseui/kx_menu.h>
#include <kxdevices/kx_simlaserengine.h>
#include <kxdevui/light/devgui_multilasersubset.h>

namespace {

using namespace kx::test;
using Engine = Registered<CKxSimLaserEngine>;

SKxLaserLine Line(double wavelength, double power, double limit = 100) {
    return {.name = L"Line", .wavelength = wavelength, .power = power, .limit = limit, .fullPower = 100};
}

struct Lasers : Asking<CKxDevUI_MultiLaserSubset> {
    using Asking::Asking;
    HWND Plate() const { return GetDlgItem(PartAt(10203), 10204); }
    HWND Row(int row) const { return GetDlgItem(Plate(), 10300 + row); }
    HWND Of(int row, int id) const { return GetDlgItem(Row(row), id); }
    void Enter(HWND field, const std::wstring& number) {
        const HWND edit = GetWindow(field, GW_CHILD);
        ::SetFocus(edit), SendMessageW(edit, EM_SETSEL, 0, -1), Type(number + L"\n");
    }

    void OnLinePowerChangeRequest(long line, double percent, bool& veto) override {
        Asked(veto, "power", line, percent);
    }
    void OnLineStateChangeRequest(long line, bool on, bool& veto) override { Asked(veto, "on", line, on); }
    void OnSoloRequest(long line, bool& veto) override { Asked(veto, "solo", line); }
    void OnAllOffRequest(bool& veto) override { Asked(veto, "all off"); }
    void OnLinkChangeRequest(double factor, const std::vector<SKxLinkedPower>& powers, bool& veto) override {
        std::string names;
        for (const SKxLinkedPower& each : powers)
            names += (names.empty() ? "" : " ") + CallText(each.raised ? "up" : "down", each.line, each.power);
        Asked(veto, "link", factor, names);
    }
    void OnSubsetChangeRequest(long subset, bool active, bool& veto) override { Asked(veto, "subset", subset, active); }
    void OnViewChanged() override { Told("view"); }
};

struct MultiLaser : PanelTest<Lasers> {
    MultiLaser() {
        Update();
        Open(540);
        Told();
    }
    void Update() { panel.Update(engine.GetLogDevId()); }
    // What was asked, and each line from the top: its number, its power, "*" while it is on, "x" if it is locked.
    std::string See() override {
        std::string seen = Told() + " |";
        const auto lines = panel.GetLines();
        for (const long number : panel.GetOrder()) {
            const SKxLaserLine& line = lines[static_cast<std::size_t>(number)];
            std::ostringstream power;
            power << ' ' << number << '=' << line.power << (line.on ? "*" : "") << (IsOperable(line) ? "" : "x");
            seen += power.str();
        }
        return seen;
    }
    static bool IsOperable(const SKxLaserLine& line) { return kx::multilaser::IsOperable(line); }
    static std::vector<HWND> All(HWND top) {
        std::vector<HWND> all;
        const auto add = [](HWND window, LPARAM to) -> BOOL {
            return reinterpret_cast<std::vector<HWND>*>(to)->push_back(window), TRUE;
        };
        EnumChildWindows(top, add, reinterpret_cast<LPARAM>(&all));
        return all;
    }
    void Act(int id) { Click(Part(id), 8, 8); }

    Engine engine{L"Engine", std::vector{Line(640, 20), Line(405, 10, 30), Line(561, 40)},
                  std::vector<SKxLaserSubset>{{.name = L"A", .lines = {2}}, {.name = L"B", .lines = {0, 1}}}};
};

// The host only agrees or refuses: what the engine makes of it comes by updates.
TEST_F(MultiLaser, AsksForALineASetAndASubset) {
    const auto refuse = [this](bool refuses) { return [=, this] { panel.answer = refuses; }; };
    const auto factor = [this](const wchar_t* number) { return [=, this] { panel.Enter(Part(10200), number); }; };
    Play({
        {[&] { Act(10301); }, "subset(1, true) | 1=10 2=40x 0=20"},
        {[&] { Act(10301); }, " | 1=10 2=40x 0=20"},  // one at a time
        {[&] { Click(panel.Of(0, 10202), 8, 8), Click(panel.Of(2, 10202), 8, 8); },
         "on(1, true) on(0, true) | 1=10* 2=40x 0=20*"},
        {[&] { panel.Enter(panel.Of(2, 10200), L"24"); }, "power(0, 24) | 1=10* 2=40x 0=24*"},
        {[&] { Reader(panel.Of(0, 10201)).Set(L"31"), Reader(panel.Of(1, 10201)).Set(L"7"); }, " | 1=10* 2=40x 0=24*"},
        {[&] { Reader(panel.Of(0, 10201)).Set(L"30"), Reader(panel.Of(0, 10201)).Set(L"10"); },
         "power(1, 30) power(1, 10) | 1=10* 2=40x 0=24*"},
        {[&] { Act(10202); }, "view() | 1=10* 2=40x 0=24*"},
        {factor(L"50"), "link(50, \"down(0, 12) down(1, 5)\") | 1=5* 2=40x 0=12*"},
        {factor(L"900"), "link(300, \"up(0, 72) up(1, 30)\") | 1=30* 2=40x 0=72*"},  // the second is at its limit
        {[&] { panel.Enter(panel.Of(2, 10200), L"36"); }, "power(0, 36) | 1=30* 2=40x 0=36*"},
        {factor(L"0"), "link(0, \"down(0, 0) down(1, 0)\") | 1=0* 2=40x 0=0*"},
        {factor(L"50"), "link(50, \"up(0, 18) up(1, 15)\") | 1=15* 2=40x 0=18*"},  // of what they had then
        {refuse(true), " | 1=15* 2=40x 0=18*"},
        {factor(L"10"), "link(10, \"down(0, 3.6) down(1, 3)\") | 1=15* 2=40x 0=18*"},
        {[&] { Click(GetDlgItem(panel.Plate(), 10402), 8, 8); }, "solo(0) | 1=15* 2=40x 0=18*"},
        {[&] { Act(10201); }, "all off() | 1=15* 2=40x 0=18*"},
        {refuse(false), " | 1=15* 2=40x 0=18*"},
        {[&] { Click(GetDlgItem(panel.Plate(), 10402), 8, 8); }, "solo(0) | 1=15 2=40x 0=18*"},
        {[&] { Act(10201); }, "all off() | 1=15 2=40x 0=18"},
        {[&] { Act(10300); }, "subset(0, true) | 1=15x 2=40 0=18x"},
    });
    EXPECT_EQ(panel.GetLines()[0].reason, CKxStringW(L"B is not in use"));
    // The limit falls, or the interlock opens, before the host has agreed.
    const auto meanwhile = [this](double limit, bool interlock) {
        panel.meanwhile = [=, this] {
            auto lines = panel.GetLines();
            lines[2].limit = limit, lines[2].interlock = interlock;
            panel.SetLines(lines);
        };
    };
    Play({{[&] { meanwhile(30, false), factor(L"90")(); }, "link(90, \"down(2, 36)\") | 1=15x 2=30 0=18x"},
          {[&] { meanwhile(20, false), panel.Enter(panel.Of(1, 10200), L"25"); }, "power(2, 25) | 1=15x 2=20 0=18x"},
          {[&] { meanwhile(20, true), factor(L"50")(); }, "link(50, \"down(2, 15)\") | 1=15x 2=20x 0=18x"}});
}

TEST_F(MultiLaser, HasLinesThatComeAndGo) {
    static MultiLaser* test = nullptr;
    test = this;
    KX_SetMenuHandler(
        [](HWND, const CKxMenu&, int, int, void*) { return test->engine.RemoveLine(1), test->Update(), 1; }, nullptr);
    Play({{[&] { SendMessageW(panel.Row(0), WM_CONTEXTMENU, 0, -1); }, " | 1=40 0=20x"}});
    KX_SetMenuHandler(nullptr, nullptr);
    EXPECT_EQ(panel.GetScale(), EKxPowerScale::Logarithmic) << "who was asked has gone";

    // In the midst of a drag as well.
    panel.meanwhile = [&] { engine.RemoveLine(1), Update(); };
    Press(panel.Of(0, 10201), 100, 10), MoveTo(panel.Of(0, 10201), 90, 10), Release();
    EXPECT_EQ(panel.GetOrder().size(), 1u);
    panel.meanwhile = nullptr;

    panel.SetLines(std::vector(70, Line(500, 5)));
    EXPECT_EQ(panel.GetOrder().size(), 64u);
    EXPECT_TRUE(IsWindowVisible(GetDlgItem(Part(10203), 10205)));
    RECT seen{}, row{};
    GetWindowRect(Part(10203), &seen);
    ::SetFocus(GetWindow(panel.Of(63, 10200), GW_CHILD));
    GetWindowRect(panel.Row(63), &row);
    EXPECT_EQ(row.bottom, seen.bottom) << "what has the focus is scrolled to";
}

TEST_F(MultiLaser, PaintsNoLineButTheOneThatChanges) {
    panel.SetLinked(true);
    UpdateWindow(parent.Window()), Pump();
    engine.SetLinePower(2, 80), Update();
    std::string stale;
    for (const HWND each : All(panel)) {
        if (GetUpdateRect(each, nullptr, FALSE))
            stale +=
                std::to_string(GetDlgCtrlID(GetParent(each)) % 100) + ":" + std::to_string(GetDlgCtrlID(each)) + " ";
    }
    EXPECT_EQ(stale, "1:10201 0:0 ");
    EXPECT_TRUE(panel.Update(engine.GetLogDevId()) && !panel.Update(0));
}

}  // namespace
