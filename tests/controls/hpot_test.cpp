// The slider as a window: what the user does to it, what its parent and its callbacks are told, what it shows.
#include <bench/bench.h>
#include <bench/script.h>
#include <bench/window.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_thumb.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_time.h>

#include <limits>
#include <numeric>
#include <utility>

using namespace kx::test;

namespace {

// 220 pixels wide, a thumb of 20, so 10 wide: a track of 210 pixels from 5 on. With a range of 210, pixels are values.
constexpr int kTrackLeft = 5, kTrack = 210, kMiddle = 8;
constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();

class Slider : public CKxDevUI_HPot {
public:
    Slider() { InitValues(0, kTrack, 10, 10, 0), SetId(7); }

    HWND Make(HWND parent) { return Create(parent, 10, 10, 220, 40, true, true); }
    int scales = 0;
    Recorder* record = nullptr;                  // of the callbacks, which then tell the parent nothing
    std::function<void(double&, bool&)> answer;  // in OnHPotChange

    using CKxDevUI_HPot::CalculateMove;
    using CKxDevUI_HPot::m_held;
    using CKxDevUI_HPot::m_thumbPos;
    using CKxDevUI_HPot::ThumbRect;

protected:
    void OnHPotChange(double& value, bool& skip) override {
        if (!record) return CKxDevUI_HPot::OnHPotChange(value, skip);
        if (answer) answer(value, skip);
        Tell("Change " + std::to_string(static_cast<int>(value)));
    }
    void OnHPotDragDrop() override { record ? Tell("Drop") : CKxDevUI_HPot::OnHPotDragDrop(); }
    void OnLeftButtonUp() override { Tell("Up"); }
    void OnHoverForPad() override { Tell("Hover"); }
    void UnHoverForPad() override { Tell("UnHover"); }
    HBITMAP CreateLinearBitmap(bool enabled) override { return ++scales, CKxDevUI_HPot::CreateLinearBitmap(enabled); }

private:
    void Tell(const std::string& name) {
        if (record) record->Text(name);
    }
};

class HPot : public testing::Test {
protected:
    HPot() { slider.Make(parent.Window()); }
    ~HPot() override { CKxGUILayoutManager::SetGuiZoom(1), KX_SetTimeSource(nullptr); }
    void LeadAway() {
        kx::test::MoveTo(parent.Window(), 400, 300);
        EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    }
    std::string Told() { return Brief(record); }
    // The value, and what was told.
    std::string See() { return CallText("", slider.GetValue()) + " " + Told(); }

    Recorder record;
    RecordingParent parent{record};
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
unsigned Now() { return s_now; }

// ---- What the parent is told ---------------------------------------------------------------------------------------

TEST_F(HPot, TellsItsParentOfEachGesture) {
    // SB_THUMBTRACK is 5, SB_THUMBPOSITION 4, each with the position.
    // clang-format off
    const struct { void (*make)(HWND slider); const char *taken, *refused; } gestures[] = {
        {[](HWND w) { DragTo(w, 50, 150); }, "5:100#7 5:150#7 4:150#7", "5:100#7 5:150#7 5:150#7 4:50#7"},
        {[](HWND w) { DragTo(w, 50, 250); }, "5:150#7 5:210#7 4:210#7", "5:150#7 5:210#7 5:210#7 4:50#7"},
        {[](HWND w) { ClickAt(w, 123); }, "5:120#7 4:120#7", "5:120#7 4:50#7"},  // beside the thumb
        // These are never refused.
        {[](HWND w) { PressAt(w, 52), MoveTo(w, 55), Release(); }, "4:50#7", nullptr},  // a drag on the spot
        {[](HWND w) { ClickAt(w, 53); }, "4:50#7", nullptr},
        {[](HWND w) { PressAt(w, 123); }, "", nullptr},
        {[](HWND) { Wheel(120); }, "4:60#7", nullptr},
        {[](HWND) { Wheel(-240); }, "4:40#7", nullptr},  // two notches in one
        {[](HWND) { Wheel(120, MOD_SHIFT); }, "4:100#7", nullptr},
        {[](HWND) { Wheel(120, MOD_CONTROL); }, "4:80#7", nullptr},
        {[](HWND) { Wheel(120, MOD_CONTROL | MOD_SHIFT); }, "4:80#7", nullptr},
        {[](HWND) { Key(VK_RIGHT), Key(VK_LEFT); }, "4:60#7 4:50#7", nullptr},
        {[](HWND) { Key(VK_UP), Key(VK_DOWN); }, "4:60#7 4:50#7", nullptr},
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
            EXPECT_EQ(Told(), taken || !gesture.refused ? gesture.taken : gesture.refused)
                << "gesture " << &gesture - gestures;
            Release();
            record.Clear();
        }
    }
    // On a reversed scale the arrows to the sides go by sides.
    parent.Answer(WM_HSCROLL, 1);
    slider.InitValues(kTrack, 0, 0, 10, 0);
    slider.SetValue(50, false);
    slider.SetMouseWheelGranularity(3, 1, 5);
    Play({{[] { Key(VK_RIGHT); }, "4:40#7"},
          {[] { Key(VK_LEFT); }, "4:50#7"},
          {[] { Key(VK_UP); }, "4:60#7"},
          {[] { Key(VK_HOME); }, "4:210#7"}},
         [this] { return Told(); });
}

TEST_F(HPot, CutsValuesTo16BitsForItsParent) {
    const std::pair<double, int> rows[] = {{-1.9, 0xFFFF}, {70000.5, 70000 & 0xFFFF}, {1e12, 0xFFFF}, {-1e12, 0}};
    for (const auto& [bound, told] : rows) {
        slider.InitValues(bound, 3, 0, 1, 0);
        slider.SetFocus();
        slider.SetValue(3, false);
        Key(VK_HOME);
        EXPECT_EQ(Told(), "4:" + std::to_string(told) + "#7") << bound;
    }
}

// ---- Callbacks -----------------------------------------------------------------------------------------------------

TEST_F(HPot, CallsBackInOrder) {
    slider.record = &record;
    LeadAway();
    Play({{[&] { MoveTo(slider, 3), MoveTo(slider, 4); }, "Hover"},
          {[&] {
               EXPECT_TRUE(slider.GetHovered());
               ClickAt(slider, 100);
           },
           "Change 100 Drop Up"},
          {[&] { SendMessageW(slider, WM_LBUTTONUP, 0, 0); }, "Up"},
          {[&] { LeadAway(); }, "UnHover"},
          {[&] { slider.SetHover(false), MoveTo(slider, 3); }, ""}},
         [this] { return Told(); });
}

TEST_F(HPot, HoldsWhatTheHostMakesOfAValue) {
    slider.record = &record;
    // clang-format off
    const struct { std::function<void(double&, bool&)> answer; double held; int index; bool list; } rows[] = {
        {[](double&, bool&) {}, 120, 2, true},
        {[](double&, bool& skip) { skip = true; }, 0, 0, true},
        {[](double& value, bool&) { value = 61; }, 61, 1, true},
        {[](double& value, bool&) { value = kInf; }, 0, 0, true},
        {[](double& value, bool& skip) { value = 60, skip = true; }, 0, 0, true},
        {[](double& value, bool&) { value = 37; }, 37, 0, false},
        {[&](double&, bool& skip) { slider.SetValue(90, false), skip = true; }, 90, 0, false},
        {[&](double&, bool&) { slider.SetValue(60, false); }, 120, 2, true},
        {[&](double&, bool&) { ReleaseCapture(); }, 120, 2, true},
        // Made anew meanwhile: what was asked of the old window is forgotten.
        {[&](double&, bool&) { slider.Make(parent.Window()); }, 0, 2, true},
    };
    // clang-format on
    for (const auto& row : rows) {
        slider.SetType(eHPotType_Linear);
        slider.InitValues(0, kTrack, 10, 10, 0);
        if (row.list) slider.InitValues(list, 4, 0);
        slider.SetValue(0, false);
        slider.answer = row.answer;
        ClickAt(slider, 130);
        EXPECT_EQ(slider.GetValue(), row.held) << "row " << &row - rows;
        EXPECT_EQ(slider.m_thumbPos, static_cast<long>(row.held)) << "the thumb stands where the value belongs";
        EXPECT_TRUE(!row.list || slider.m_held.index == row.index) << "row " << &row - rows;
    }
}

TEST_F(HPot, TakesAQuickClickForAStep) {
    KX_SetTimeSource(Now);
    slider.record = &record;
    slider.InitValues(list, 4, 0);
    // clang-format off
    const struct { int at; unsigned ms; std::function<void(HWND)> between; double value; } rows[] = {
        {72, 99, nullptr, 120}, {48, 0, nullptr, 0}, {72, 100, nullptr, 60},
        {160, 10, nullptr, 120} /* another entry is nearest */, {60, 10, nullptr, 60} /* on the thumb */,
        // A move that leads nowhere; away and back is no click.
        {72, 10, [](HWND w) { SendMessageW(w, WM_MOUSEMOVE, 0, MAKELPARAM(kTrackLeft + 72, kMiddle)); }, 120},
        {72, 10, [](HWND w) { MoveTo(w, 75), MoveTo(w, 72); }, 60},
    };
    // clang-format on
    for (const auto& row : rows) {
        for (const unsigned start : {5000U, 0U - 50U}) {  // the counter wraps
            slider.SetValue(60, false);
            s_now = start;
            PressAt(slider, row.at);
            if (row.between) row.between(slider);
            s_now += row.ms;
            Release();
            EXPECT_EQ(slider.GetValue(), row.value) << "row " << &row - rows;
        }
    }
}

TEST_F(HPot, AbandonsADragThatIsTakenAway) {
    const std::function<void()> rows[] = {
        [] { ReleaseCapture(); },          [&] { SetCapture(parent.Window()), ReleaseCapture(); },
        [&] { slider.SetEnabled(false); }, [&] { SendMessageW(slider, WM_CANCELMODE, 0, 0); },
        [&] { slider.Destroy(); },         [&] { DestroyWindow(parent.Window()); },
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
        EXPECT_EQ(slider.m_thumbPos, 80) << "what the host has taken stays, row " << &take - rows;
        if (HWND{slider}) MoveTo(slider, 150);
        Release();
        EXPECT_EQ(See(), "(80) ") << "row " << &take - rows;
    }
}

TEST_F(HPot, GoesOnDraggingAtAnotherZoom) {
    parent.Answer(WM_HSCROLL, 1);
    // Twice as far on the screen is the same place on the scale.
    Play({{[&] { slider.SetValue(50, false), PressAt(slider, 50), MoveTo(slider, 83); }, "(80) 5:80#7"},
          {[&] { CKxGUILayoutManager::SetGuiZoom(2); }, "(80) "},
          {[&] { kx::test::MoveTo(slider, 2 * (kTrackLeft + 121), 2 * kMiddle), Release(); }, "(120) 5:120#7 4:120#7"}},
         [this] { return See(); });
}

// ---- Values --------------------------------------------------------------------------------------------------------

TEST_F(HPot, AnswersBadInput) {
    double bad[] = {1, kNaN}, one[] = {4};
    // Of values without window; what is refused changes nothing, an empty list has the bounds 0.
    Play({{[&] { slider.Destroy(), slider.SetValue(kNaN, true); }, "(0) "},
          {[&] { slider.SetValue(kInf, true); }, "(210) "},
          {[&] { slider.InitValues(kNaN, 5, 1, 1, 0), slider.InitValues(bad, 2, 7); }, "(210) "},
          {[&] { slider.InitValues(bad, nullptr, 2, 7), slider.SetValue(slider.CalculateMove(-1), true); }, "(200) "},
          {[&] { slider.InitValues(static_cast<double*>(nullptr), 5, 7), slider.SetValue(3.25, true); }, "(0) "},
          {[&] { slider.InitValues(one, nullptr, 1, kNaN), slider.SetValue(9, true); }, "(4) "},
          {[&] { slider.Update(false, true, true), slider.SetSize(-5, -7, -9); }, "(4) "},
          {[&] { slider.Redraw(), slider.CreateScale(), slider.RecreateScale(), slider.SetHover(false); }, "(4) "}},
         [this] { return See(); });
    slider.GetMouseWheelGranularity(nullptr, nullptr, nullptr);
    EXPECT_FALSE(slider.Create(nullptr));
}

TEST_F(HPot, KeepsToTheRulesOfItsState) {
    const auto wheel = [this](int delta, bool moves) {
        EXPECT_EQ(slider.HandleMouseWheel(MAKEWPARAM(0, delta), 0), moves);
    };
    // With the filter's mode nothing is snapped, but the entry follows; without notify nobody is asked.
    Play({{[&] { slider.SetValue(53, true); }, "(50) "},
          {[&] { slider.SetValue(50.0009, true); }, "(50) "},
          {[&] { slider.SetbAOTF(true), slider.SetValue(53.3, true); }, "(53.3) "},
          {[&] { slider.InitValues(list, 4, 0); }, "(53.3) "},
          {[&] { slider.SetValue(100, true); }, "(100) "},
          {[&] { wheel(120, true); }, "(210) 4:210#7"},
          {[&] { wheel(120, false), wheel(0, false), slider.SetEnabled(false), wheel(-120, false); }, "(210) "},
          {[&] { slider.m_thumbPos = 70, slider.Update(false, false, true); }, "(60) "}},
         [this] { return See(); });
    EXPECT_EQ(SendMessageW(slider, WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

TEST_F(HPot, ShowsItsState) {
    LeadAway();
    const std::function<void()> states[] = {
        [] {},
        [&] { MoveTo(slider, 0); },
        [&] { PressAt(slider, 0); },
        [&] { Release(); },  // with the focus
        [&] { slider.SetMarker(105, COLOR_HOTLIGHT, true); },
        [&] { slider.SetMarker(105, COLOR_WINDOW, true); },
        [&] { slider.SetMarker(210, COLOR_WINDOW, true); },
        [&] { slider.SetValue(210, false); },
    };
    std::vector<Picture> looks;
    for (const auto& enter : states) {
        enter();
        looks.push_back(Picture::OnScreen(slider));
        EXPECT_EQ(looks.back(), Picture::Printed(slider)) << &enter - states;
        for (const Picture& before : looks)
            EXPECT_EQ(looks.back() == before, &before == &looks.back()) << &enter - states << &before - looks.data();
    }
    // A marker beyond the scale is not shown.
    slider.SetMarker(211, COLOR_HOTLIGHT, true);
    const Picture beyond = Picture::OnScreen(slider);
    slider.SetMarkerUsed(false);
    EXPECT_EQ(Picture::OnScreen(slider), beyond);
}

// Painting costs no bitmap; a step of the thumb costs what it covers.
TEST_F(HPot, PaintsWhatHasChanged) {
    const auto dirty = [this] {
        RECT place{};
        GetUpdateRect(slider, &place, FALSE);
        Pump();
        return CallText("", place.left, place.right, place.bottom, slider.scales);
    };
    Pump();
    Play({{[&] { slider.SetValue(kTrack, false), Pump(); }, "(0, 0, 0, 1)"}}, dirty);
    slider.SetValue(50, false);
    EXPECT_EQ(dirty(), "(50, 220, 20, 1)") << "the place to come, and the one before";
    slider.SetValue(50.0005, false);
    slider.SetEnabled(true), slider.SetTransparent(true), slider.SetMarkerUsed(false);
    EXPECT_EQ(dirty(), "(0, 0, 0, 1)") << "nothing has changed";
    slider.InitValues(0, 100, 1, 1, 0), slider.SetType(eHPotType_Linear), dirty();
    EXPECT_EQ(slider.scales, 2);
    slider.SetSize(300, 40, -1), dirty();
    EXPECT_EQ(slider.scales, 3);
}

TEST_F(HPot, FollowsItsParentsBackground) {
    const HBRUSH brush = CreateSolidBrush(RGB(1, 200, 3));
    parent.Answer(WM_CTLCOLORSTATIC, reinterpret_cast<LRESULT>(brush));
    EXPECT_EQ(Picture::Printed(slider).Pixel(219, 39), RGB(1, 200, 3));
    slider.SetTransparent(false);
    EXPECT_EQ(Picture::Printed(slider).Pixel(219, 39), KX_GetSysColor(COLOR_BTNFACE));
    // Asked for its brush, the parent may end the slider.
    parent.Answer(WM_CTLCOLORSTATIC, [&](WPARAM, LPARAM) { return slider.Destroy(), 0; });
    slider.SetTransparent(true);
    Pump();
    EXPECT_EQ(HWND{slider}, nullptr);
    DeleteObject(brush);
}

TEST_F(HPot, DrawsAPlainThumbWithoutTheImages) {
    std::string logged;
    CKxLogFile::SetSink([](const wchar_t* line, void* to) { *static_cast<std::string*>(to) += Narrow(line); }, &logged);
    const auto mean = [](const kx::hpot::HandleImage& image) {
        return std::accumulate(image.alpha.begin(), image.alpha.end(), 0.0) / (255.0 * image.width * image.height);
    };
    const auto image = kx::hpot::ReadHandleImage(L"r7_w32_baseresources.dll");
    EXPECT_TRUE(image.width == 96 && logged.empty());
    for (const wchar_t* missing : std::initializer_list<const wchar_t*>{L"no-such.dll", L"kxdevui.dll", nullptr}) {
        EXPECT_NEAR(mean(kx::hpot::ReadHandleImage(missing)), mean(image), 0.2);
        EXPECT_NE(std::exchange(logged, "").find("BMP_HPOT_HANDLE"), std::string::npos);
    }
    CKxLogFile::SetSink(nullptr, nullptr);
}

}  // namespace
