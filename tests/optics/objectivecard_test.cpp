// The cards over objectives: what they say, when they come and go.
#include <controls/panel_test.h>

#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/objectivecard_rules.h>

namespace {

using namespace kx::test;
using enum EKxObjectiveRisk;

const SKxObjectiveCard kOil{L"Oil", L"60x", 1.4, 130, L"Oil"}, kDry{L"Dry", L"10x", 0.45, 4000, L"Air"},
    kNear{L"Near", L"40x", 0.95, 129, L"Air"}, kWater{L"Water", L"", 0, kNaN, L"Water"}, kBare{L"Bare"};

TEST(ObjectiveCardRules, SayWhatIsKnownInUnits) {
    SKxObjectiveCard seen = kOil, away = kBare;
    seen.wavelength = 525;
    away.reachable = false, away.reason = L"locked";
    const std::tuple<SKxObjectiveCard, EKxObjectiveRisk, std::wstring> table[] = {
        {seen, None,
         L"Oil|Magnification: 60x|Numerical aperture: 1.40|Immersion: Oil|Working distance: 130 \u00B5m|"
         L"Resolution: 0.229 \u00B5m (0.61 \u03BB / NA, \u03BB = 525 nm)"},
        {kDry, Closer,
         L"Dry|Magnification: 10x|Numerical aperture: 0.45|Immersion: Air|Working distance: 4 mm|"
         L"The stage is high: this objective comes closer to the specimen."},
        {kWater, None, L"Water|Immersion: Water"},
        {away, None, L"Bare|Cannot be reached: locked"}};
    for (const auto& [card, warned, lines] : table) {
        std::wstring text = kx::ui::TextOf(card, warned).Whole();
        for (std::size_t at; (at = text.find(L"\r\n")) != text.npos;)
            text.replace(at, 2, L"|");
        EXPECT_EQ(Narrow(text), Narrow(lines));
    }
}

TEST(ObjectiveCardRules, KnowTheRiskOfAChange) {
    const std::tuple<SKxObjectiveCard, SKxObjectiveCard, EKxObjectiveRisk> table[] = {
        {kOil, kDry, Dry},    {kOil, kNear, DryAndCloser}, {kDry, kOil, Closer}, {kDry, kDry, None},
        {kWater, kNear, Dry}, {kOil, kBare, None},         {kOil, kWater, None}};
    for (const auto& [from, to, risk] : table)
        EXPECT_EQ(kx::ui::RiskOf(from, to), risk) << Narrow(from.name.str() + L" to " + to.name.str());
}

struct Cards : PanelTest<AskingPanel<CKxDevUI_Nosepiece>> {
    Cards() {
        SystemParametersInfoW(SPI_GETMOUSEHOVERTIME, 0, &rest, 0);
        SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, 20, nullptr, 0);
        device.SetAvailable(3, false);
        panel.Init(&device);
        Open();
        panel.Update(&device, {.names = true, .position = true, .parameters = true});
        panel.SetCards({{.warns = [this](long, EKxObjectiveRisk) { return high; }}});
    }
    ~Cards() override { SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, rest, nullptr, 0); }
    static std::wstring Card() {
        const HWND card = FindWindowW(L"KxDevUI_ObjectiveCard", nullptr);
        return card ? TextOf(card) : L"";
    }
    // Whether a card comes, or goes for "", that begins with these words and warns or not.
    bool Comes(const wchar_t* begin, bool warns = false) {
        return PumpUntil([&] {
            const bool warned = Card().find(L"The stage is high") != std::wstring::npos;
            return Card().starts_with(begin) && Card().empty() == !*begin && warned == warns;
        });
    }
    // Where the mouse is the display tells every new window, so it has to be there for the display as well.
    void Point(int position) {
        POINT place{8, 8};
        ClientToScreen(Part(10200 + position), &place);
        SetCursorPos(place.x, place.y);
        MoveTo(Part(10200 + position), 8, 8);
    }

    Registered<CKxSimNosepiece> device{L"Turret", std::vector<SKxSimObjective>{{L"Wet", L"60x", L"PlanApo60x140Oil"},
                                                                               {L"Near", L"100x", L"ApoTIRF100x149Oil"},
                                                                               {L"Dry", L"10x", L"PlanApo10x045"},
                                                                               {L"Away", L"", L""}}};
    bool high = false;
    UINT rest = 400;
};

TEST_F(Cards, ComeByPointerAndKeyAndGo) {
    const DialogKeys keys(parent.Window());
    panel.SetTabStop(true);
    SetFocus(parent.Window());
    const std::tuple<std::function<void()>, const wchar_t*, bool> steps[] = {
        {[&] { Point(2); }, L"Dry", false},
        // What it says follows the host, who is asked again and again.
        {[&] { high = true; }, L"Dry", true},
        {[&] { Key(VK_ESCAPE); }, L"", false},
        // One that cannot be used leaves the pointer to the panel.
        {[&] { Point(3); }, L"Away\r\nCannot be reached: The position is locked.", false},
        {[&] { MoveTo(parent.Window(), 2, 2); }, L"", false},
        {[] { Key(VK_TAB); }, L"Wet", false},
        {[] { Key(VK_RIGHT); }, L"Near", true},
        {[&] { SetFocus(parent.Window()); }, L"", false},
        // A press does not wait for the pointer to rest.
        {[&] { SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, 60000, nullptr, 0), ClickPart(10202); }, L"Dry", true},
        {[&] { panel.SetCards(std::nullopt); }, L"", false}};
    for (const auto& [act, begin, warns] : steps) {
        act();
        EXPECT_TRUE(Comes(begin, warns)) << Narrow(begin) << " but there is " << Narrow(Card());
    }
    EXPECT_EQ(Told(), "position(2)") << "nobody hears of the Escape";
}

}  // namespace
