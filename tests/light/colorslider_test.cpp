// The colour slider as a control: what the user does to it, what the host is told and can refuse, what it bears.
#include "lamps.h"

#include <commctrl.h>
#include <kxdevui/light/devgui_colorslider.h>

#include <cmath>

using namespace kx::test;

namespace {

// 210 wide: the thumb control is 220, its thumb 10, the track 210 pixels from 5 on, and a value 2.1 of them.
constexpr int kSlider = 210, kTrackLeft = 5, kMiddle = 8;
constexpr auto kPower = eColorSliderType_LineDraw, kRange = eColorSliderType_Range;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<SColorSliderValue> Tens() {
    std::vector<SColorSliderValue> table;
    for (int i = 0; i <= 100; i += 10)
        table.push_back({double(i), true, i % 50 == 0});
    return table;
}

class Slider : public CKxDevUI_ColorSlider {
public:
    void Fill(EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_OneRowSpin,
              std::vector<SColorSliderValue> table = Tens()) {
        Init(kSlider, 15, table.data(), static_cast<int>(table.size()), L"R&D", false, L"%", L"%g", true, type, layout,
             40);
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
    // The edit inside of an edit box.
    HWND Edit(int id = 10001) const { return ::GetWindow(Part(id), GW_CHILD); }
    long Left(int id) const { return RectInParent(Part(id)).left; }
    LRESULT Arrows() const { return SendMessageW(Part(10004), UDM_GETPOS32, 0, 0); }
    std::pair<double, double> Both() const {
        double minimum = 0, maximum = 0;
        GetRange(&minimum, &maximum);
        return {minimum, maximum};
    }

    Recorder record;
    std::function<void(double&, bool&)> answer;  // in every callback; may end this object
    using CKxDevUI_ColorSlider::m_editAtPosition;
    using CKxDevUI_ColorSlider::m_editX;

protected:
    void OnPowerChanged(double& value, bool& veto) override {
        record.Call(m_editInProgress ? "Typed" : "Power", value, GetPower());
        Ask(value, veto);
    }
    void OnRangeChanged(double& minimum, double& maximum) override {
        record.Call("Range", minimum, maximum, Both().first, Both().second);
        bool none = false;
        Ask(minimum, none);
    }
    void OnLeftButtonUp() override {
        record.Call("Up");
        double nothing = 0;
        bool none = false;
        Ask(nothing, none);
    }

private:
    void Ask(double& value, bool& veto) {
        if (const auto action = answer) action(value, veto);
    }
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
Expected Power(double value, double held) { return Call("Power", value, held); }
Expected Typed(double value) { return Call("Typed", value, value); }
Expected Range(double a, double b, double heldA, double heldB) { return Call("Range", a, b, heldA, heldB); }

class ColorSlider : public testing::Test {
protected:
    void SetUp() override { Make(kPower); }
    // Away from the pointer, which hovers what it moves over.
    void Make(EColorSliderType type) {
        MoveTo(parent.Window(), 600, 400);
        slider = std::make_unique<Slider>();
        slider->Make(parent.Window(), type);
        slider->answer = answer;
    }

    RecordingParent parent;
    std::unique_ptr<Slider> slider;
    std::function<void(double&, bool&)> answer;
};

TEST_F(ColorSlider, AsksForAPowerInEachWay) {
    // clang-format off
    const struct {
        const char* name;
        std::function<void(Slider&)> make;
        std::vector<Expected> taken, refused;
        double held, heldWhenRefused;
    } rows[] = {
        {"wheel", [](Slider&) { Wheel(120); }, {Power(60, 50)}, {Power(60, 50)}, 60, 50},
        {"wheel, two notches in one message", [](Slider&) { Wheel(-240); }, {Power(40, 50)}, {Power(40, 50)}, 40, 50},
        {"wheel and Shift, and Ctrl", [](Slider&) { Wheel(120, MOD_SHIFT), Wheel(120, MOD_CONTROL); },
         {Power(60, 50), Power(70, 60)}, {Power(60, 50), Power(60, 50)}, 70, 50},
        {"wheel, forwarded", [](Slider& s) { EXPECT_TRUE(s.HandleMouseWheel(MAKEWPARAM(0, 120), 0)); }, {Power(60, 50)},
         {Power(60, 50)}, 60, 50},
        {"drag", [](Slider& s) { DragValue(s.Thumb(), {50, 66, 67, 80}); },
         {Power(70, 50), Power(80, 70), Power(80, 80), Call("Up")},
         {Power(70, 50), Power(70, 50), Power(80, 50), Power(80, 50), Power(50, 50), Call("Up")}, 80, 50},
        {"click", [](Slider& s) { PressAt(s.Thumb(), 82), Release(); }, {Power(80, 50), Power(80, 80), Call("Up")},
         {Power(80, 50), Power(50, 50), Call("Up")}, 80, 50},
        {"keys", [](Slider& s) { ::SetFocus(s.Thumb()), Key(VK_RIGHT), Key(VK_PRIOR), Key(VK_HOME), Key(VK_HOME); },
         {Power(60, 50), Power(70, 60), Power(0, 70)}, {Power(60, 50), Power(60, 50), Power(0, 50), Power(0, 50)},
         0, 50},
        {"typed, the veto too late", [](Slider& s) { TypeInto(s, 10001, L"78\n"); }, {Typed(80)}, {Typed(80)}, 80, 80},
        {"left with the focus", [](Slider& s) { TypeInto(s, 10001, L"12"), ::SetFocus(s.Thumb()); }, {Typed(10)},
         {Typed(10)}, 10, 10},
        {"left unchanged", [](Slider& s) { ::SetFocus(s.Edit()), ::SetFocus(s.Thumb()); }, {Typed(50)}, {Typed(50)}, 50,
         50},
        {"arrows", [](Slider& s) { ClickArrow(s, true), ClickArrow(s, true), ClickArrow(s, false); },
         {Power(60, 50), Power(70, 60), Power(60, 70)}, {Power(60, 50), Power(60, 50), Power(40, 50)}, 60, 50},
    };
    // clang-format on
    for (const bool vetoes : {false, true}) {
        answer = [vetoes](double&, bool& veto) { veto = vetoes; };
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (vetoes ? ", refused" : ", taken"));
            Make(kPower);
            MoveToValue(slider->Thumb(), 50);
            EXPECT_TRUE(slider->GetHover());
            EXPECT_TRUE(slider->record.Matches({})) << "the setters are silent";
            row.make(*slider);
            EXPECT_TRUE(slider->record.Matches(vetoes ? row.refused : row.taken));
            const double held = vetoes ? row.heldWhenRefused : row.held;
            EXPECT_EQ(slider->GetPower(), held);
            EXPECT_EQ(TextOf(slider->Edit()), std::to_wstring(static_cast<int>(held)));
            EXPECT_EQ(slider->Arrows(), static_cast<int>(held) / 10);
        }
    }
}

TEST_F(ColorSlider, TellsOfARangeInEachWay) {
    // clang-format off
    const struct {
        const char* name;
        std::function<void(Slider&)> make;
        std::vector<Expected> told;
        double minimum, maximum;
    } rows[] = {
        {"wheel on the minimum", [](Slider&) { Wheel(-120), Wheel(120, MOD_SHIFT), Wheel(-120, MOD_CONTROL); },
         {Range(20, 70, 20, 70), Range(70, 70, 70, 70), Range(60, 70, 60, 70)}, 60, 70},
        {"wheel takes the maximum along", [](Slider&) { Wheel(120, MOD_SHIFT), Wheel(120, MOD_SHIFT); },
         {Range(80, 80, 80, 80), Range(100, 100, 100, 100)}, 100, 100},
        {"wheel takes the minimum along", [](Slider& s) { MoveToValue(s.Thumb(), 70), Wheel(-120, MOD_SHIFT); },
         {Range(20, 20, 20, 20)}, 20, 20},
        {"drag of the minimum", [](Slider& s) { DragValue(s.Thumb(), {30, 10}); },
         {Range(10, 70, 10, 70), Range(10, 70, 10, 70), Call("Up")}, 10, 70},
        {"the minimum stops at the maximum", [](Slider& s) { DragValue(s.Thumb(), {30, 90}); },
         {Range(90, 70, 90, 70), Range(90, 70, 90, 70), Range(70, 70, 70, 70), Call("Up")}, 70, 70},
        {"the maximum takes the minimum along", [](Slider& s) { DragValue(s.Thumb(), {70, 20}); },
         {Range(30, 20, 30, 20), Range(20, 20, 20, 20), Call("Up")}, 20, 20},
        {"a click goes to the nearer thumb", [](Slider& s) { PressAt(s.Thumb(), 61), Release(); },
         {Range(30, 60, 30, 60), Range(30, 60, 30, 60), Call("Up")}, 30, 60},
        {"keys on both thumbs",
         [](Slider& s) {
             const DialogKeys keys(s);
             ::SetFocus(s.Thumb()), Key(VK_LEFT), Key(VK_TAB), Key(VK_END), Key(VK_END), Key(VK_NEXT);
             Key(VK_TAB, MOD_SHIFT), Key(VK_HOME);
         },
         {Range(20, 70, 20, 70), Range(20, 100, 20, 100), Range(20, 90, 20, 90), Range(0, 90, 0, 90)}, 0, 90},
        {"typed minimum", [](Slider& s) { TypeInto(s, 10005, L"93\n"); }, {Range(90, 90, 90, 90)}, 90, 90},
        {"typed maximum", [](Slider& s) { TypeInto(s, 10001, L"8\n"); }, {Range(10, 10, 10, 10)}, 10, 10},
        {"left with the focus", [](Slider& s) { TypeInto(s, 10005, L"47"), ::SetFocus(s.Thumb()); },
         {Range(50, 70, 50, 70)}, 50, 70},
    };
    // clang-format on
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Make(kRange);
        MoveToValue(slider->Thumb(), 32);
        EXPECT_TRUE(slider->GetHover());
        EXPECT_TRUE(slider->record.Matches({})) << "the setters are silent";
        row.make(*slider);
        EXPECT_TRUE(slider->record.Matches(row.told));
        EXPECT_EQ(slider->Both(), std::pair(row.minimum, row.maximum));
    }
}

TEST_F(ColorSlider, HoldsWhatTheHostMakesOfAValue) {
    const struct {
        std::function<void(double&, bool&)> answer;
        double power;
        std::pair<double, double> range;
    } rows[] = {
        {[](double& value, bool&) { value = 33; }, 30, {30, 90}},
        {[](double& value, bool&) { value = 48; }, 50, {50, 90}},
        {[](double& value, bool&) { value = 1e9; }, 100, {90, 90}},
        {[](double& value, bool&) { value = kNaN; }, 50, {30, 70}},
        {[](double& value, bool& veto) { value = 90, veto = true; }, 50, {90, 90}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        answer = row.answer;
        for (int way = 0; way < 4; ++way) {
            Make(way < 3 ? kPower : kRange);
            MoveToValue(slider->Thumb(), 50);
            if (way == 0) Wheel(120);
            if (way == 1) PressAt(slider->Thumb(), 80), Release();
            if (way == 2) ClickArrow(*slider, true);
            if (way == 3) DragValue(slider->Thumb(), {70, 90});
            EXPECT_EQ(slider->GetPower(), way < 3 ? row.power : 0) << way;
            EXPECT_TRUE(way < 3 || slider->Both() == row.range);
        }
    }
}

TEST_F(ColorSlider, LetsArrowsPassAnUnevenTable) {
    std::vector<SColorSliderValue> uneven;
    for (const double value : {0, 1, 2, 5, 10, 20, 50, 100})
        uneven.push_back({value, true, false});
    slider->Fill(kPower, eColorSliderLayout_OneRowSpin, uneven);
    slider->SetPower(20, false);
    ClickArrow(*slider, true), ClickArrow(*slider, true);
    EXPECT_EQ(slider->GetPower(), 50) << "two of the arrows' steps lie between";
}

TEST_F(ColorSlider, LeavesTheWheelToTheThumbUnderThePointer) {
    constexpr WPARAM up = MAKEWPARAM(0, 120);
    for (const auto type : {kPower, kRange}) {
        Make(type);
        ::SetFocus(slider->Thumb());
        EXPECT_FALSE(slider->GetHover());
        EXPECT_FALSE(slider->HandleMouseWheel(up, 0));
        MoveToValue(slider->Thumb(), 30);
        EXPECT_FALSE(slider->HandleMouseWheel(0, 0)) << "no turn";
        slider->SetEnabled(false);
        EXPECT_FALSE(slider->HandleMouseWheel(up, 0));
        EXPECT_TRUE(slider->record.Matches({}));
        slider->SetEnabled(true);
        EXPECT_TRUE(slider->HandleMouseWheel(up, 0));
        MoveTo(parent.Window(), 500, 300);
        EXPECT_TRUE(PumpUntil([&] { return !slider->GetHover(); }));
    }
}

TEST_F(ColorSlider, AbandonsADragThatIsTakenAway) {
    for (const auto type : {kPower, kRange}) {
        for (int way = 0; way < 3; ++way) {
            Make(type);
            PressAt(slider->Thumb(), 70);
            MoveToValue(slider->Thumb(), 80);
            if (way == 1) slider->SetEnabled(false);
            if (way == 2) SendMessageW(slider->Thumb(), WM_CANCELMODE, 0, 0);
            if (way != 1) ReleaseCapture();
            slider->record.Clear();
            MoveToValue(slider->Thumb(), 20);
            EXPECT_TRUE(slider->record.Matches({})) << way;
            EXPECT_EQ(type == kPower ? slider->GetPower() : slider->Both().second, 80)
                << "what the host has taken stays";
            Release();
        }
    }
}

// Every way to end or to change everything, in the midst of every way to commit.
TEST_F(ColorSlider, BearsItsEndInEachCallback) {
    const std::function<void(Slider&)> ways[] = {
        [](Slider&) { Wheel(120); },
        [](Slider& s) { PressAt(s.Thumb(), 80), MoveToValue(s.Thumb(), 90); },
        [](Slider& s) { PressAt(s.Thumb(), 30), Release(); },
        [](Slider& s) { TypeInto(s, 10001, L"78\n"); },
        [](Slider& s) { ::SetFocus(s.Edit()), SetFocus(GetAncestor(s, GA_ROOT)); },
        [](Slider& s) { s.Part(10004) ? ClickArrow(s, true) : Wheel(120); },
        [](Slider& s) { SendMessageW(s.Thumb(), WM_KEYDOWN, VK_RIGHT, 0); },
    };
    for (int round = 0; round < 2 * 6 * static_cast<int>(std::size(ways)); ++round) {
        SCOPED_TRACE(round);
        const auto type = round % 2 ? kRange : kPower, other = round % 2 ? kPower : kRange;
        const int end = round / 2 % 6;
        RecordingParent around;
        const HWND inner = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 0, 0, 600, 300,
                                           around.Window(), nullptr, nullptr, nullptr);
        auto doomed = std::make_unique<Slider>();
        const HWND window = doomed->Make(inner, type);
        bool ended = false;
        doomed->answer = [&](double&, bool&) {
            if (std::exchange(ended, true)) return;
            switch (end) {
            case 0: doomed->Destroy(); break;
            case 1: doomed.reset(); break;
            case 2: DestroyWindow(inner); break;
            case 3: doomed->Fill(type, eColorSliderLayout_TwoRows, {{1, true, true}, {2, false, false}}); break;
            case 4: doomed->Fill(other, eColorSliderLayout_ColorPoint); break;
            default: doomed->Fill(type, eColorSliderLayout_OneRow, {}); break;
            }
        };
        MoveToValue(doomed->Thumb(), 50);
        ways[round / 12](*doomed);
        Release();
        Pump();
        EXPECT_TRUE(ended);
        EXPECT_EQ(IsWindow(window) != FALSE, end > 2);
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

TEST_F(ColorSlider, TouchesNothingForAPowerThatIsShown) {
    SetWindowTextW(slider->Edit(), L"mine");
    SendMessageW(slider->Part(10004), UDM_SETPOS32, 0, 9);
    EXPECT_EQ(slider->SetPower(52, true), 50);
    EXPECT_EQ(TextOf(slider->Edit()), L"mine");
    EXPECT_EQ(slider->Arrows(), 9);
    // Made anew the thumb shows 0 until it is set, be it to the power that is held.
    slider->Create(parent.Window(), 10, 10, -1, -1, true, true);
    EXPECT_EQ(slider->GetPower(), 50);
    EXPECT_EQ(TextOf(slider->Edit()), L"0");
    slider->SetPower(50, true);
    EXPECT_EQ(TextOf(slider->Edit()), L"50");
}

TEST_F(ColorSlider, KeepsToItsTypeAndTable) {
    Slider blank;
    EXPECT_EQ(blank.SetPower(5, true), 0);
    EXPECT_FALSE(blank.SetRange(1, 2));
    EXPECT_EQ(blank.CalculateMove(3), 0);
    blank.GetRange(nullptr, nullptr);
    slider->Fill(kPower, eColorSliderLayout_OneRow,
                 {{kNaN, true, true}, {4, true, false}, {kInfinity, false, false}, {8, false, false}});
    EXPECT_EQ(slider->SetPower(6, true), 8) << "a tie goes up";
    EXPECT_EQ(slider->SetPower(kNaN, true), 8);
    EXPECT_EQ(slider->SetPower(-kInfinity, true), 4);
    EXPECT_EQ(slider->CalculateMove(1), 8);
    EXPECT_EQ(slider->GetPower(), 4) << "a move is no power";
    EXPECT_EQ(slider->CalculateMove(std::numeric_limits<int>::max()), 8);
    EXPECT_FALSE(slider->SetRange(4, 8));
    slider->Fill(kRange);
    EXPECT_EQ(slider->SetPower(8, true), 0);
    EXPECT_FALSE(slider->SetRange(kNaN, 8));
    EXPECT_TRUE(slider->SetRange(50, 90));
    EXPECT_TRUE(slider->SetRange(50, 31));
    EXPECT_EQ(slider->Both(), std::pair(30.0, 30.0));
    EXPECT_TRUE(slider->SetRange(70, 30));
    EXPECT_EQ(slider->Both(), std::pair(70.0, 70.0));
    slider->Init(-5, -5, nullptr, 3, L"", false, L"", L"%s%n", true, static_cast<EColorSliderType>(9),
                 static_cast<EColorSliderLayoutType>(-2), -7);
    EXPECT_TRUE(slider->Create(parent.Window(), 0, 0, -1, -1, true, true));
    Pump();
    std::vector<SColorSliderValue> many(10000);
    for (std::size_t i = 0; i < many.size(); ++i)
        many[i] = {double(i) / 16, true, true};
    slider->Init(0, 300, many.data(), 10000, std::wstring(5000, L'W').c_str(), true, L"unit", L"%g", true, kPower,
                 eColorSliderLayout_ColorPoint, 4000);
    EXPECT_EQ(slider->SetPower(624.97, true), many.back().value);
    Pump();
}

TEST_F(ColorSlider, PlacesItsParts) {
    EXPECT_EQ(GetWindowLongPtrW(slider->Thumb(), GWLP_USERDATA),
              reinterpret_cast<LONG_PTR>(static_cast<CKxDevUI_Base*>(slider.get())));
    EXPECT_EQ(TextOf(slider->Part(10003)), L"R&D");
    EXPECT_EQ(TextOf(slider->Part(10002)), L"%");
    const int thumb = slider->Left(10000), edit = slider->Left(10001), unit = slider->Left(10002);
    EXPECT_EQ(edit, thumb + 11 + kSlider);
    EXPECT_EQ(RectInParent(slider->Part(10002)).right, slider->GetWidth());
    RECT rect{};
    slider->GetHPotRect(&rect);
    EXPECT_EQ(rect.left, thumb);
    slider->GetHPotRectRange(&rect);
    EXPECT_TRUE(IsRectEmpty(&rect));
    EXPECT_EQ(slider->SetHPotLeft(thumb), 0);
    EXPECT_EQ(slider->SetHPotLeft(thumb + 17), 17);
    for (const auto& [id, left] : {std::pair{10000, thumb + 17}, {10001, edit + 17}, {10002, unit + 17}, {10003, 4}})
        EXPECT_EQ(slider->Left(id), left) << id;
    // Another type and layout in the same windows, and back.
    slider->Fill(kRange, eColorSliderLayout_ColorPoint);
    EXPECT_TRUE(IsWindowVisible(slider->Part(10005)));
    EXPECT_FALSE(slider->Part(10004)) << "no arrows";
    EXPECT_EQ(slider->Both(), std::pair(0.0, 100.0));
    EXPECT_EQ(RectInParent(slider->Thumb()).top, 18);
    EXPECT_EQ(slider->SetHPotLeftRange(3), 3);
    slider->Fill(kPower);
    EXPECT_EQ(slider->Left(10001), edit);
    EXPECT_EQ(slider->GetPower(), 50);
    // Made and laid out at another zoom.
    {
        const Zoom zoom(1.5);
        const long zoomed = std::lround(edit * 1.5);
        EXPECT_EQ(slider->Left(10001), zoomed);
        slider->Fill(kPower);
        EXPECT_EQ(slider->Left(10001), zoomed);
        EXPECT_EQ(RectInParent(*slider).right - RectInParent(*slider).left, slider->GetWidth());
        // A move on the screen is none in unzoomed pixels.
        const int left = slider->Left(10000), farther = left + 31 - left % 2;
        EXPECT_EQ(slider->SetHPotLeft(farther), farther - left);
        EXPECT_EQ(slider->Left(10000), farther) << "to the pixel";
        slider->SetHPotLeft(left + 30);
        CKxGUILayoutManager::ResizeWindowToGuiZoom(*slider, 1.0);
        EXPECT_EQ(slider->Left(10001), zoomed + 30);
    }
    EXPECT_EQ(slider->Left(10001), edit + 20);
    slider->m_editAtPosition = true;
    slider->m_editX = 300;
    slider->Fill(kPower, eColorSliderLayout_TwoRows);
    EXPECT_FALSE(IsWindowVisible(slider->Part(10003)));
    EXPECT_EQ(slider->Left(10001), 300);
}

// Both put theirs after what they inherit.
struct Slots : CKxDevUI_ColorSlider {
    static std::vector<long> Own() {
        using S = Slots;
        return SlotsOf(&S::SetEnabled, &S::HandleMouseWheel, &S::OnInit, &S::OnCommand, &S::OnScroll, &S::OnMouseWheel,
                       &S::OnPowerChanged, &S::OnRangeChanged, &S::OnLeftButtonUp);
    }
};
struct RangeSlots : CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot {
    static long Own() { return SlotOf(&RangeSlots::OnRangeChanged); }
};

TEST_F(ColorSlider, AppendsItsVirtualsToTheContainers) {
    EXPECT_EQ(Slots::Own(), (std::vector<long>{3, 18, 19, 21, 23, 28, 29, 30, 31}));
    EXPECT_EQ(RangeSlots::Own(), 19);
}

}  // namespace
