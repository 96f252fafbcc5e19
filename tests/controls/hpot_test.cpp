// The slider as a window: what the user does to it, what its parent and its callbacks are told, what it shows.
#include "control_test.h"

#include <bench/reader.h>

#include <kxdevui/controls/devgui_hpot.h>
#include <kxsystem/kx_time.h>

using namespace kx::test;

namespace {

// 220 pixels wide, a thumb of 20, so 10 wide: a track of 210 pixels from 5 on. With a range of 210, pixels are values.
constexpr int kTrackLeft = 5, kTrack = 210, kMiddle = 8;

struct Slider : CKxDevUI_HPot {
    Slider() { InitValues(0, kTrack, 10, 10, 0), SetId(7); }

    HWND Make(HWND parent) { return Create(parent, 10, 10, 220, 40, true, true); }
    Recorder* record = nullptr;                  // of the callbacks, which then tell the parent nothing
    std::function<void(double&, bool&)> answer;  // in OnHPotChange

    using CKxDevUI_HPot::m_thumbPos;

    void OnHPotChange(double& value, bool& skip) override {
        if (!record) return CKxDevUI_HPot::OnHPotChange(value, skip);
        if (answer) answer(value, skip);
        Tell("Change " + std::to_string(static_cast<int>(value)));
    }
    void OnHPotDragDrop() override { record ? Tell("Drop") : CKxDevUI_HPot::OnHPotDragDrop(); }
    void OnLeftButtonUp() override { Tell("Up"); }
    void OnHoverForPad() override { Tell("Hover"); }
    void UnHoverForPad() override { Tell("UnHover"); }

    void Tell(const std::string& name) {
        if (record) record->Text(name);
    }
};

struct HPot : ControlTest {
    HPot() { slider.Make(parent.Window()); }
    ~HPot() override { KX_SetTimeSource(nullptr); }
    void LeadAway() {
        kx::test::MoveTo(parent.Window(), 400, 300);
        EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    }
    // The value, and what was told.
    std::string See() override { return CallText("", slider.GetValue()) + " " + Told(); }

    Recorder& record = parent.Record();
    Slider slider;
    double list[4] = {0, 60, 120, 210};
};

void PressAt(HWND window, int value) { Press(window, kTrackLeft + value, kMiddle); }
void MoveTo(HWND window, int value) { kx::test::MoveTo(window, kTrackLeft + value, kMiddle); }
void ClickAt(HWND window, int value) { PressAt(window, value), Release(); }
void DragTo(HWND window, int from, int to) {
    PressAt(window, from), MoveTo(window, (from + to) / 2), MoveTo(window, to), Release();
}

unsigned s_now = 0;

TEST_F(HPot, TellsItsParentOfEachGesture) {
    // SB_THUMBTRACK is 5, SB_THUMBPOSITION 4, each with the position.
    // clang-format off
    const struct { void (*make)(HWND slider); const char *taken, *refused; } gestures[] = {
        {[](HWND w) { DragTo(w, 50, 150); }, "5:100#7 5:150#7 4:150#7", "5:100#7 5:150#7 5:150#7 4:50#7"},
        {[](HWND w) { DragTo(w, 50, 250); }, "5:150#7 5:210#7 4:210#7", "5:150#7 5:210#7 5:210#7 4:50#7"},
        {[](HWND w) { ClickAt(w, 123); }, "5:120#7 4:120#7", "5:120#7 4:50#7"},  // beside the thumb
        // These are never refused.
        {[](HWND w) { PressAt(w, 52), MoveTo(w, 55), Release(); }, "4:50#7", nullptr},  // a drag on the spot
        {[](HWND) { Wheel(120), Wheel(-240); }, "4:60#7 4:50#7", nullptr},  // two notches in one
        {[](HWND) { Wheel(120, MOD_SHIFT), Wheel(120, MOD_CONTROL); }, "4:100#7 4:130#7", nullptr},
        {[](HWND) { Key(VK_RIGHT), Key(VK_LEFT), Key(VK_UP), Key(VK_DOWN); }, "4:60#7 4:50#7 4:60#7 4:50#7", nullptr},
        {[](HWND) { Key(VK_PRIOR), Key(VK_NEXT); }, "4:100#7 4:50#7", nullptr},
        {[](HWND) { Key(VK_END), Key(VK_END), Key(VK_HOME); }, "4:210#7 4:0#7", nullptr},
    };
    // clang-format on
    for (const bool taken : {true, false}) {
        for (const auto& gesture : gestures) {
            parent.Answer(WM_HSCROLL, taken ? 1 : 0);
            slider.SetMouseWheelGranularity(3, 1, 5);
            slider.SetValue(50, true);
            slider.SetFocus();
            MoveTo(slider, 0);
            EXPECT_EQ(Told(), "") << "the setters are silent";
            gesture.make(slider);
            EXPECT_EQ(Told(), taken || !gesture.refused ? gesture.taken : gesture.refused) << &gesture - gestures;
            Release();
            record.Clear();
        }
    }
    // On a reversed scale the arrows to the sides go by sides.
    parent.Answer(WM_HSCROLL, 1);
    slider.InitValues(kTrack, 0, 0, 10, 0);
    slider.SetValue(50, false);
    slider.SetMouseWheelGranularity(3, 1, 5);
    Key(VK_RIGHT), Key(VK_LEFT), Key(VK_UP), Key(VK_HOME);
    EXPECT_EQ(Told(), "4:40#7 4:50#7 4:60#7 4:210#7");
}

TEST_F(HPot, CutsValuesTo16BitsForItsParent) {
    slider.SetFocus();
    for (const auto& [bound, told] : {std::pair{-1.9, 0xFFFF}, {70000.5, 70000 & 0xFFFF}, {1e12, 0xFFFF}, {-1e12, 0}}) {
        slider.InitValues(bound, 3, 0, 1, 0);
        slider.SetValue(3, false);
        Key(VK_HOME);
        EXPECT_EQ(Told(), "4:" + std::to_string(told) + "#7") << bound;
    }
}

TEST_F(HPot, CallsBackInOrder) {
    slider.record = &record;
    LeadAway();
    Play({{[&] { MoveTo(slider, 3), MoveTo(slider, 4); }, "(0) Hover"},
          {[&] { ClickAt(slider, 100); }, "(100) Change 100 Drop Up"},
          {[&] { SendMessageW(slider, WM_LBUTTONUP, 0, 0); }, "(100) Up"},
          {[&] { LeadAway(); }, "(100) UnHover"},
          {[&] { slider.SetHover(false), MoveTo(slider, 3); }, "(100) "}});
}

TEST_F(HPot, HoldsWhatTheHostMakesOfAValue) {
    slider.record = &record;
    // clang-format off
    const std::tuple<std::function<void(double&, bool&)>, double, bool> rows[] = {
        {[](double&, bool&) {}, 120, true}, {[](double&, bool& skip) { skip = true; }, 0, true},
        {[](double& value, bool&) { value = 61; }, 61, true}, {[](double& value, bool&) { value = kInf; }, 0, true},
        {[](double& value, bool& skip) { value = 60, skip = true; }, 0, true},
        {[](double& value, bool&) { value = 37; }, 37, false},
        {[&](double&, bool& skip) { slider.SetValue(90, false), skip = true; }, 90, false},
        {[&](double&, bool&) { slider.SetValue(60, false); }, 120, true},
        {[&](double&, bool&) { ReleaseCapture(); }, 120, true},
        // Made anew meanwhile: what was asked of the old window is forgotten.
        {[&](double&, bool&) { slider.Make(parent.Window()); }, 0, true}};
    // clang-format on
    for (const auto& [answer, held, fromList] : rows) {
        slider.SetType(eHPotType_Linear);
        slider.InitValues(0, kTrack, 10, 10, 0);
        if (fromList) slider.InitValues(list, 4, 0);
        slider.SetValue(0, false);
        slider.answer = answer;
        ClickAt(slider, 130);
        EXPECT_EQ(slider.GetValue(), held) << held;
        EXPECT_EQ(slider.m_thumbPos, static_cast<long>(held)) << "the thumb stands where the value belongs";
    }
}

TEST_F(HPot, TakesAQuickClickForAStep) {
    KX_SetTimeSource([] { return s_now; });
    slider.record = &record;
    slider.InitValues(list, 4, 0);
    // The last goes away and comes back, which is no click.
    const std::tuple<int, unsigned, bool, double> rows[] = {
        {72, 99, false, 120}, {48, 0, false, 0}, {72, 100, false, 60}, {60, 10, false, 60}, {72, 10, true, 60}};
    for (const auto& [at, ms, strays, value] : rows) {
        slider.SetValue(60, false);
        s_now = 0U - 50U;  // the counter wraps
        PressAt(slider, at);
        if (strays) MoveTo(slider, 75), MoveTo(slider, 72);
        s_now += ms;
        Release();
        EXPECT_EQ(slider.GetValue(), value) << at << " " << ms;
    }
}

TEST_F(HPot, AbandonsADragThatIsTakenAway) {
    const std::function<void()> rows[] = {
        [] { ReleaseCapture(); },
        [&] { slider.SetEnabled(false); },
        [&] { SendMessageW(slider, WM_CANCELMODE, 0, 0); },
        [&] { slider.Destroy(); },
    };
    parent.Answer(WM_HSCROLL, 1);
    for (const auto& take : rows) {
        slider.SetEnabled(true);
        slider.SetValue(50, false);
        slider.Make(parent.Window());
        PressAt(slider, 50);
        MoveTo(slider, 83);
        EXPECT_EQ(See(), "(80) 5:80#7");
        take();
        if (HWND{slider}) MoveTo(slider, 150);
        Release();
        EXPECT_EQ(See(), "(80) ") << "what the host has taken stays, row " << &take - rows;
    }
}

TEST_F(HPot, GoesOnDraggingAtAnotherZoom) {
    parent.Answer(WM_HSCROLL, 1);
    // Twice as far on the screen is the same place on the scale.
    Play(
        {{[&] { slider.SetValue(50, false), PressAt(slider, 50), MoveTo(slider, 83); }, "(80) 5:80#7"},
         {[&] { CKxGUILayoutManager::SetGuiZoom(2); }, "(80) "},
         {[&] { kx::test::MoveTo(slider, 2 * (kTrackLeft + 121), 2 * kMiddle), Release(); }, "(120) 5:120#7 4:120#7"}});
}

TEST_F(HPot, KeepsToTheRulesOfItsState) {
    const auto wheel = [this](int delta, bool moves) {
        EXPECT_EQ(slider.HandleMouseWheel(MAKEWPARAM(0, delta), 0), moves);
    };
    // With the filter's mode nothing is snapped, but the entry follows; without notify nobody is asked.
    Play({{[&] { slider.SetValue(53, true), slider.SetValue(kNaN, true); }, "(50) "},
          {[&] { slider.SetbAOTF(true), slider.SetValue(53.3, true); }, "(53.3) "},
          {[&] { slider.InitValues(list, 4, 0); }, "(53.3) "},
          {[&] { slider.SetValue(100, true); }, "(100) "},
          {[&] { wheel(120, true); }, "(210) 4:210#7"},
          {[&] { wheel(120, false), wheel(0, false), slider.SetEnabled(false), wheel(-120, false); }, "(210) "},
          // As a parent may hand it on.
          {[&] {
               SendMessageW(slider, WM_LBUTTONDOWN, 0, MAKELPARAM(20, 10));
               EXPECT_NE(GetCapture(), HWND{slider});
           },
           "(210) "},
          {[&] { slider.m_thumbPos = 70, slider.Update(false, false, true); }, "(60) "}});
}

int s_events = 0;
HWND s_slider = nullptr;

TEST_F(HPot, TellsReadersOfEachChangeOnce) {
    const Reader reader(slider);
    const HWINEVENTHOOK hook = SetWinEventHook(
        EVENT_OBJECT_VALUECHANGE, EVENT_OBJECT_VALUECHANGE, nullptr,
        [](HWINEVENTHOOK, DWORD, HWND window, LONG, LONG, DWORD, DWORD) { s_events += window == s_slider; },
        GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    s_slider = slider;
    parent.Answer(WM_HSCROLL, 1);
    const auto heard = [] { return Pump(), std::exchange(s_events, 0); };
    heard();
    EXPECT_EQ((slider.SetValue(40, false), heard()), 1);
    EXPECT_EQ((slider.SetValue(40, false), slider.RefreshWindow(), heard()), 0);
    EXPECT_EQ((reader.Set(L"80"), heard()), 1);
    EXPECT_EQ((DragTo(slider, 80, 120), heard()), 2) << "half way, and there";
    EXPECT_EQ(CallText("", reader.Name(), reader.Value()), "(\"\", \"120\")");
    UnhookWinEvent(hook);
}

TEST_F(HPot, ShowsItsState) {
    const std::function<void()> states[] = {
        [&] { LeadAway(); },
        [&] { MoveTo(slider, 0); },
        [&] { PressAt(slider, 0); },
        [&] { Release(); },  // with the focus
        [&] { slider.SetMarker(105, COLOR_HOTLIGHT, true); },
        [&] { slider.SetMarker(105, COLOR_WINDOW, true); },
        [&] { slider.SetMarker(211, COLOR_HOTLIGHT, true); },  // beyond the scale it is not shown
    };
    std::vector<Picture> looks;
    for (const auto& enter : states) {
        enter();
        looks.push_back(Picture::OnScreen(slider));
        for (std::size_t i = 0; i + 1 < looks.size(); ++i)
            EXPECT_EQ(looks.back() == looks[i], i == 3 && looks.size() == 7) << &enter - states << " and " << i;
    }
}

TEST_F(HPot, FollowsItsParentsBackground) {
    parent.Answer(WM_CTLCOLORSTATIC, reinterpret_cast<LRESULT>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(Picture::Printed(slider).Pixel(219, 39), RGB(0, 0, 0));
    slider.SetTransparent(false);
    EXPECT_EQ(Picture::Printed(slider).Pixel(219, 39), KX_GetSysColor(COLOR_BTNFACE));
}

}  // namespace
