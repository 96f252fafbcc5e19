// The colour slider as a control: what the user does to it, what the host is told and can refuse, what it bears.
#include "lamps.h"

#include <bench/reader.h>
#include <commctrl.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/ui_answer.h>

using namespace kx::test;

namespace {

// 210 wide: the thumb control is 220, its thumb 10, the track 210 pixels from 5 on, and a value 2.1 of them.
constexpr int kSlider = 210, kTrackLeft = 5, kMiddle = 8;
constexpr auto kPower = eColorSliderType_LineDraw, kRange = eColorSliderType_Range;

struct Slider : Asking<CKxDevUI_ColorSlider> {
    using Asking::Asking;
    void Fill(EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_OneRowSpin,
              const std::vector<double>& values = Entries(11, 10)) {
        kx::test::Fill(*this, values, L"R&D", 10, type, layout, kSlider);
    }
    // At 50, or from 30 to 70.
    HWND Make(HWND parent, EColorSliderType type) {
        Fill(type);
        const HWND window = Create(parent, 10, 10, -1, -1, true, true);
        SetPower(50, true);
        SetRange(30, 70);
        return window;
    }
    HWND Part(int id) const { return GetDlgItem(m_hWnd, id); }
    HWND Thumb() const { return Part(10000); }
    HWND Edit(int id = 10001) const { return ::GetWindow(Part(id), GW_CHILD); }
    long Left(int id) const { return RectInParent(Part(id)).left; }
    LRESULT Arrows() const { return SendMessageW(Part(10004), UDM_GETPOS32, 0, 0); }
    std::pair<double, double> Both() const {
        double minimum = 0, maximum = 0;
        GetRange(&minimum, &maximum);
        return {minimum, maximum};
    }

    std::function<void(double&, bool&)> change = [](double&, bool&) {};  // what the host makes of a value

    void OnPowerChanged(double& value, bool& veto) override {
        Asked(veto, m_editInProgress ? "Typed" : "Power", value, GetPower());
        change(value, veto);
    }
    void OnRangeChanged(double& minimum, double& maximum) override {
        Told("Range", minimum, maximum, Both().first, Both().second);
        change(minimum, answer);
    }
    void OnLeftButtonUp() override { Told("Up"); }
};

int Pixel(double value) { return kTrackLeft + static_cast<int>(2.1 * value); }
void PressAt(HWND thumb, double value) { Press(thumb, Pixel(value), kMiddle); }
void MoveToValue(HWND thumb, double value) { MoveTo(thumb, Pixel(value), kMiddle); }
void DragValue(HWND thumb, std::initializer_list<double> values) {
    PressAt(thumb, *values.begin());
    for (const double value : values)
        MoveToValue(thumb, value);
    Release();
}
// Types over what the edit shows.
void TypeInto(Slider& slider, int id, const wchar_t* text) {
    ::SetFocus(slider.Edit(id));
    SendMessageW(slider.Edit(id), EM_SETSEL, 0, -1);
    Type(text);
}
void ClickArrow(Slider& slider, bool up) { Click(slider.Part(10004), 6, up ? 5 : 16); }

struct ColorSlider : ControlTest {
    // Away from the pointer, which hovers what it moves over.
    Slider& Make(EColorSliderType type, double pointer = 50) {
        MoveTo(parent.Window(), 600, 400);
        heard.Clear();
        slider = std::make_unique<Slider>(heard);
        slider->Make(parent.Window(), type);
        // A busy display may bring the pointer's earlier place once more.
        EXPECT_TRUE(PumpUntil([&] { return MoveToValue(slider->Thumb(), pointer), slider->GetHover(); }));
        EXPECT_EQ(heard.Take(), "") << "the setters are silent";
        return *slider;
    }

    Recorder heard;
    std::unique_ptr<Slider> slider;
};

TEST_F(ColorSlider, AsksAndTellsInEachWay) {
    // clang-format off
    const struct {
        void (*make)(Slider&);
        const char *taken, *refused;  // a range is not refused
    } rows[] = {
        {[](Slider&) { Wheel(120); }, "Power(60, 50) = 60", "Power(60, 50) = 50"},
        {[](Slider& s) { DragValue(s.Thumb(), {50, 66, 67, 80}); },
         "Power(70, 50) Power(80, 70) Power(80, 80) Up() = 80",
         "Power(70, 50) Power(70, 50) Power(80, 50) Power(80, 50) Power(50, 50) Up() = 50"},
        {[](Slider& s) { Reader(s.Thumb()).Set(L"101"), Reader(s.Thumb()).Set(L"80"); },
         "Power(80, 50) = 80", "Power(80, 50) = 50"},
        // Typed: the veto comes too late.
        {[](Slider& s) { TypeInto(s, 10001, L"78\n"), TypeInto(s, 10001, L"81\n"); },
         "Typed(80, 80) Typed(80, 80) = 80", "Typed(80, 80) Typed(80, 80) = 80"},
        {[](Slider& s) { ClickArrow(s, true), ClickArrow(s, true), ClickArrow(s, false); },
         "Power(60, 50) Power(70, 60) Power(60, 70) = 60", "Power(60, 50) Power(60, 50) Power(40, 50) = 50"},
        {[](Slider&) { Wheel(-120), Wheel(120, MOD_SHIFT), Wheel(-120, MOD_CONTROL); },
         "Range(20, 70, 20, 70) Range(70, 70, 70, 70) Range(60, 70, 60, 70) = 60 70", nullptr},
        // The minimum stops at the maximum; a click goes to the nearer thumb.
        {[](Slider& s) { DragValue(s.Thumb(), {30, 90}); },
         "Range(90, 70, 90, 70) Range(90, 70, 90, 70) Range(70, 70, 70, 70) Up() = 70 70", nullptr},
        {[](Slider& s) { PressAt(s.Thumb(), 61), Release(); },
         "Range(30, 60, 30, 60) Range(30, 60, 30, 60) Up() = 30 60", nullptr},
        {[](Slider& s) {
             const DialogKeys keys(s);
             s.SetTabStop(true);
             ::SetFocus(s.Thumb()), Key(VK_LEFT), Key(VK_TAB), Key(VK_END), Key(VK_END), Key(VK_NEXT);
             Key(VK_TAB, MOD_SHIFT), Key(VK_HOME);
             // Out, and in again by the same way.
             Key(VK_TAB), Key(VK_TAB), Key(VK_TAB, MOD_SHIFT), Key(VK_LEFT);
         },
         "Range(20, 70, 20, 70) Range(20, 100, 20, 100) Range(20, 90, 20, 90) Range(0, 90, 0, 90) "
         "Range(0, 90, 0, 90) Range(0, 80, 0, 80) = 0 80", nullptr},
        {[](Slider& s) { Reader(s.Thumb()).Set(L"50", 1), Reader(s.Thumb()).Set(L"101", 2); },
         "Range(50, 70, 50, 70) = 50 70", nullptr},
        {[](Slider& s) { TypeInto(s, 10005, L"93\n"); }, "Range(90, 90, 90, 90) = 90 90", nullptr},
    };
    // clang-format on
    for (const bool vetoes : {false, true}) {
        for (const auto& row : rows) {
            if (vetoes && !row.refused) continue;
            const bool range = !row.refused;
            Make(range ? kRange : kPower, range ? 32 : 50).answer = vetoes;
            row.make(*slider);
            const std::string maximum = Narrow(TextOf(slider->Edit())), minimum = Narrow(TextOf(slider->Edit(10005)));
            EXPECT_EQ(heard.Take() + " = " + (range ? minimum + " " : "") + maximum, vetoes ? row.refused : row.taken);
            EXPECT_EQ(std::stod(maximum), range ? slider->Both().second : slider->GetPower());
            EXPECT_EQ(slider->Arrows(), range ? 0 : slider->GetPower() / 10);
        }
    }
}

TEST_F(ColorSlider, HoldsWhatTheHostMakesOfAValue) {
    const std::tuple<double, bool, double, std::pair<double, double>> rows[] = {
        {33, false, 30, {30, 90}}, {1e9, false, 100, {90, 90}}, {kNaN, false, 50, {30, 70}}, {90, true, 50, {90, 90}}};
    for (const auto& [made, vetoes, power, range] : rows) {
        for (const auto type : {kPower, kRange}) {
            Make(type).change = [to = made, by = vetoes](double& value, bool& veto) { value = to, veto = by; };
            type == kPower ? Wheel(120) : DragValue(slider->Thumb(), {70, 90});
            EXPECT_EQ(slider->GetPower(), type == kPower ? power : 0) << made;
            EXPECT_TRUE(type == kPower || slider->Both() == range) << made;
        }
    }
}

TEST_F(ColorSlider, SaysThatAMoveIsRefused) {
    Slider& power = Make(kPower);
    power.answer = true;
    const auto answer = [&] { return KX_GetActivity(power).activity == EKxActivity::Refused; };
    // What is typed holds already.
    ::SetFocus(power.Edit()), Type(L"20\n");
    EXPECT_FALSE(answer());
    const double held = power.GetPower();
    PressAt(power.Thumb(), 20), MoveToValue(power.Thumb(), 80);
    const HWND shown = kx::ui::AnswerWindow();
    EXPECT_TRUE(answer());
    MoveToValue(power.Thumb(), 90), Release();
    EXPECT_EQ(kx::ui::AnswerWindow(), shown) << "one answer to the whole drag";
    EXPECT_EQ(power.GetPower(), held);
}

TEST_F(ColorSlider, GoesByItsTable) {
    Make(kPower).Fill(kPower, eColorSliderLayout_OneRowSpin, {0, 1, 2, 5, 10, 20, 50, 100});
    slider->SetPower(20, false);
    ClickArrow(*slider, true), ClickArrow(*slider, true);
    EXPECT_EQ(slider->GetPower(), 50) << "two of the arrows' steps lie between";
    Make(kRange).Fill(kRange, eColorSliderLayout_OneRowSpin, Entries(1001, 0.125));
    slider->SetRange(30.125, 70);
    DragValue(slider->Thumb(), {70, 80});
    EXPECT_EQ(slider->Both().first, 30.125) << "several entries share the pixel of a thumb that stands";
}

TEST_F(ColorSlider, LeavesTheWheelToTheThumbUnderThePointer) {
    for (const auto type : {kPower, kRange}) {
        Make(type, 30);
        const auto wheel = [&](bool enabled) {
            slider->SetEnabled(enabled);
            return slider->HandleMouseWheel(MAKEWPARAM(0, 120), 0);
        };
        EXPECT_TRUE(!wheel(false) && wheel(true));
        MoveTo(parent.Window(), 500, 300);
        EXPECT_TRUE(PumpUntil([&] { return !slider->GetHover(); }));
        ::SetFocus(slider->Thumb());
        EXPECT_FALSE(wheel(true));
    }
}

TEST_F(ColorSlider, ShowsNoPowerUntilItIsSet) {
    Make(kPower);
    const auto set = [&](double value) { EXPECT_EQ(slider->SetPower(value, true), 50); };
    // What is shown is not touched. Made anew the thumb shows 0 until it is set, be it to the power that is held.
    kx::test::Play({{[&] { SetWindowTextW(slider->Edit(), L"mine"), set(52); }, "mine (50)"},
                    {[&] { slider->Create(parent.Window(), 10, 10, -1, -1, true, true); }, "0 (50)"},
                    {[&] { set(50); }, "50 (50)"}},
                   [&] { return Narrow(TextOf(slider->Edit())) + CallText(" ", slider->GetPower()); });
}

TEST_F(ColorSlider, KeepsToItsTypeAndTable) {
    Make(kPower).Fill(kPower, eColorSliderLayout_OneRow, {kNaN, 4, kInf, 8});
    for (const auto& [set, held] : {std::pair{6.0, 8.0}, {kNaN, 8}, {-kInf, 4}})
        EXPECT_EQ(slider->SetPower(set, true), held);
    EXPECT_EQ(slider->CalculateMove(std::numeric_limits<int>::max()), 8);
    EXPECT_EQ(slider->GetPower(), 4) << "a move is no power";
    EXPECT_FALSE(slider->SetRange(4, 8));
    slider->Fill(kRange);
    EXPECT_EQ(slider->SetPower(8, true), 0);
    EXPECT_FALSE(slider->SetRange(kNaN, 8));
    EXPECT_EQ(slider->Both(), std::pair(0.0, 100.0));
}

TEST_F(ColorSlider, PlacesItsParts) {
    Make(kPower);
    const int thumb = slider->Left(10000), edit = slider->Left(10001);
    EXPECT_EQ(edit, thumb + 11 + kSlider);
    EXPECT_EQ(slider->SetHPotLeft(thumb) + slider->SetHPotLeft(thumb + 17), 17);
    EXPECT_EQ(CallText("", slider->Left(10000), slider->Left(10001), slider->Left(10003)),
              CallText("", thumb + 17, edit + 17, 4));
    // Another type and layout in the same windows, and back.
    slider->Fill(kRange, eColorSliderLayout_ColorPoint);
    EXPECT_TRUE(IsWindowVisible(slider->Part(10005)) && !slider->Part(10004)) << "no arrows";
    slider->Fill(kPower);
    EXPECT_EQ(slider->Left(10001), edit);
    // A move on the screen is none in unzoomed pixels.
    CKxGUILayoutManager::SetGuiZoom(1.5);
    slider->SetHPotLeft(slider->Left(10000) + 30);
    CKxGUILayoutManager::ResizeWindowToGuiZoom(*slider, 1.0);
    EXPECT_EQ(slider->Left(10001), std::lround(edit * 1.5) + 30);
    CKxGUILayoutManager::SetGuiZoom(1);
    EXPECT_EQ(slider->Left(10001), edit + 20);
}

}  // namespace
