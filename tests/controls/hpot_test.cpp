// The slider as a window: what the user does to it, what its parent and its callbacks are told, what it shows.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_thumb.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_time.h>

#include <limits>
#include <memory>
#include <numeric>
#include <utility>

using namespace kx::test;

namespace {

// 220 pixels wide, a thumb of 20, so 10 wide: a track of 210 pixels from 5 on. With a range of 210, pixels are values.
constexpr int kTrackLeft = 5, kTrack = 210, kMiddle = 8;

class Slider : public CKxDevUI_HPot {
public:
    Slider() { InitValues(0, kTrack, 10, 10, 0); }

    HWND Make(HWND parent) { return Create(parent, 10, 10, 220, 40, true, true); }
    int scales = 0;
    Recorder* record = nullptr;                  // of the callbacks, which then tell the parent nothing
    std::function<void(const char*)> act;        // in every callback; may end this object
    std::function<void(double&, bool&)> answer;  // in OnHPotChange

    using CKxDevUI_HPot::CalculateMove;
    using CKxDevUI_HPot::m_held;
    using CKxDevUI_HPot::m_Instances;
    using CKxDevUI_HPot::m_thumbPos;
    using CKxDevUI_HPot::ThumbRect;

protected:
    void OnHPotChange(double& value, bool& skip) override {
        if (!record && !act) return CKxDevUI_HPot::OnHPotChange(value, skip);
        if (answer) answer(value, skip);
        Tell("Change", value);
    }
    void OnHPotDragDrop() override { record || act ? Tell("Drop") : CKxDevUI_HPot::OnHPotDragDrop(); }
    void OnLeftButtonUp() override { Tell("Up"); }
    void OnHoverForPad() override { Tell("Hover"); }
    void UnHoverForPad() override { Tell("UnHover"); }
    HBITMAP CreateLinearBitmap(bool enabled) override { return ++scales, CKxDevUI_HPot::CreateLinearBitmap(enabled); }

private:
    template <class... Arguments>
    void Tell(const char* name, Arguments... arguments) {
        if (record) record->Call(name, arguments...);
        if (const auto action = act) action(name);
    }
};

class HPot : public testing::Test {
protected:
    HPot() { slider.Make(parent.Window()); }
    ~HPot() override { CKxGUILayoutManager::SetGuiZoom(1), KX_SetTimeSource(nullptr); }
    void LeadAway() { kx::test::MoveTo(parent.Window(), 400, 300); }

    Recorder record;
    RecordingParent parent{record};
    Slider slider;
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
    constexpr int track = SB_THUMBTRACK, drop = SB_THUMBPOSITION;
    using Told = std::vector<std::pair<int, int>>;  // codes and positions
    // clang-format off
    const struct { const char* name; void (*make)(HWND slider); Told taken, refused; } gestures[] = {
        {"drag", [](HWND w) { DragTo(w, 50, 150); }, {{track, 100}, {track, 150}, {drop, 150}},
         {{track, 100}, {track, 150}, {track, 150}, {drop, 50}}},
        {"drag over the end", [](HWND w) { DragTo(w, 50, 250); }, {{track, 150}, {track, 210}, {drop, 210}},
         {{track, 150}, {track, 210}, {track, 210}, {drop, 50}}},
        {"click beside it", [](HWND w) { ClickAt(w, 123); }, {{track, 120}, {drop, 120}}, {{track, 120}, {drop, 50}}},
        // These are never refused.
        {"drag on the spot", [](HWND w) { PressAt(w, 52), MoveTo(w, 55), Release(); }, {{drop, 50}}, {}},
        {"click on the thumb", [](HWND w) { ClickAt(w, 53); }, {{drop, 50}}, {}},
        {"only a press", [](HWND w) { PressAt(w, 123); }, {}, {}},
        {"wheel", [](HWND) { Wheel(120); }, {{drop, 60}}, {}},
        {"wheel, two notches in one", [](HWND) { Wheel(-240); }, {{drop, 40}}, {}},
        {"wheel and Shift", [](HWND) { Wheel(120, MOD_SHIFT); }, {{drop, 100}}, {}},
        {"wheel and Ctrl", [](HWND) { Wheel(120, MOD_CONTROL); }, {{drop, 80}}, {}},
        {"wheel, Ctrl before Shift", [](HWND) { Wheel(120, MOD_CONTROL | MOD_SHIFT); }, {{drop, 80}}, {}},
        {"left and right", [](HWND) { Key(VK_RIGHT), Key(VK_LEFT); }, {{drop, 60}, {drop, 50}}, {}},
        {"up and down", [](HWND) { Key(VK_UP), Key(VK_DOWN); }, {{drop, 60}, {drop, 50}}, {}},
        {"pages", [](HWND) { Key(VK_PRIOR), Key(VK_NEXT); }, {{drop, 100}, {drop, 50}}, {}},
        {"ends", [](HWND) { Key(VK_END), Key(VK_END), Key(VK_HOME); }, {{drop, 210}, {drop, 0}}, {}},
    };
    // clang-format on
    for (const bool taken : {true, false}) {
        for (const auto& gesture : gestures) {
            SCOPED_TRACE(gesture.name);
            parent.Answer(WM_HSCROLL, taken ? 1 : 0);
            slider.SetMouseWheelGranularity(3, 1, 5);
            slider.SetValue(50, true);
            slider.SetFocus();
            MoveTo(slider, 0);
            EXPECT_TRUE(record.Matches({})) << "the setters are silent";
            gesture.make(slider);
            std::vector<Expected> expected;
            for (const auto& [code, position] : taken || gesture.refused.empty() ? gesture.taken : gesture.refused)
                expected.push_back(HScroll(code, position, slider));
            EXPECT_TRUE(record.Matches(expected)) << (taken ? "taken" : "refused");
            Release();
            record.Clear();
        }
    }
}

TEST_F(HPot, CutsValuesTo16BitsForItsParent) {
    const std::pair<double, int> rows[] = {{-1.9, 0xFFFF}, {70000.5, 70000 & 0xFFFF}, {1e12, 0xFFFF}, {-1e12, 0}};
    for (const auto& [bound, told] : rows) {
        slider.InitValues(bound, 3, 0, 1, 0);
        slider.SetFocus();
        slider.SetValue(3, false);
        Key(VK_HOME);
        EXPECT_TRUE(record.Matches({Msg(WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, told))})) << bound;
    }
}

// ---- Callbacks -----------------------------------------------------------------------------------------------------

TEST_F(HPot, CallsBackInOrder) {
    slider.record = &record;
    LeadAway();
    MoveTo(slider, 3);
    MoveTo(slider, 4);
    EXPECT_TRUE(slider.GetHovered());
    ClickAt(slider, 100);
    EXPECT_TRUE(record.Matches({Call("Hover"), Call("Change", 100.0), Call("Drop"), Call("Up")}));
    SendMessageW(slider, WM_LBUTTONUP, 0, 0);
    LeadAway();
    EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    EXPECT_TRUE(record.Matches({Call("Up"), Call("UnHover")}));
    slider.SetHover(false);
    MoveTo(slider, 3);
    EXPECT_FALSE(slider.GetHovered());
    EXPECT_TRUE(record.Matches({}));
}

TEST_F(HPot, HoldsWhatTheHostMakesOfAValue) {
    slider.record = &record;
    double list[] = {0, 60, 120, 210};
    constexpr double infinite = std::numeric_limits<double>::infinity();
    // clang-format off
    const struct { std::function<void(double&, bool&)> answer; double held; int index; bool list; } rows[] = {
        {[](double&, bool&) {}, 120, 2, true},
        {[](double&, bool& skip) { skip = true; }, 0, 0, true},
        {[](double& value, bool&) { value = 61; }, 61, 1, true},
        {[](double& value, bool&) { value = infinite; }, 0, 0, true},
        {[](double& value, bool& skip) { value = 60, skip = true; }, 0, 0, true},
        {[](double& value, bool&) { value = 37; }, 37, 0, false},
        {[&](double&, bool& skip) { slider.SetValue(90, false), skip = true; }, 90, 0, false},
        {[&](double&, bool&) { slider.SetValue(60, false); }, 120, 2, true},
        {[&](double&, bool&) { ReleaseCapture(); }, 120, 2, true},
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
        if (row.list) {
            EXPECT_EQ(slider.m_held.index, row.index) << "row " << &row - rows;
        }
    }
}

TEST_F(HPot, TakesAQuickClickForAStep) {
    KX_SetTimeSource(Now);
    slider.record = &record;
    double list[] = {0, 60, 120, 210};
    slider.InitValues(list, 4, 0);
    const auto stay = [](HWND w) { SendMessageW(w, WM_MOUSEMOVE, 0, MAKELPARAM(kTrackLeft + 72, kMiddle)); };
    // clang-format off
    const struct { const char* name; int at; unsigned ms; std::function<void(HWND)> between; double value; } rows[] = {
        {"quick, to the right", 72, 99, nullptr, 120},
        {"quick, to the left", 48, 0, nullptr, 0},
        {"a move that leads nowhere", 72, 10, stay, 120},
        {"slow: the nearest", 72, 100, nullptr, 60},
        {"away and back is no click", 72, 10, [](HWND w) { MoveTo(w, 75), MoveTo(w, 72); }, 60},
        {"another entry is nearest", 160, 10, nullptr, 120},
        {"on the thumb", 60, 10, nullptr, 60},
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
            EXPECT_EQ(slider.GetValue(), row.value) << row.name;
        }
    }
}

// Every way to end, in every callback, out of every way to get there.
TEST_F(HPot, BearsItsEndInEachCallback) {
    slider.Destroy();
    for (const char* callback : {"Hover", "Change", "Drop", "Up", "UnHover"}) {
        for (int way = 0; way < 4; ++way) {
            SCOPED_TRACE(std::string(callback) + " way " + std::to_string(way));
            const HWND inner = AddChild(parent.Window(), L"STATIC", 1, {0, 0, 400, 300}, SS_NOTIFY);
            auto mortal = std::make_unique<Slider>();
            mortal->act = [&](const char* name) {
                if (std::string(name) != callback) return;
                if (way == 0) mortal->Destroy();
                if (way == 1) mortal.reset();
                if (way == 2) DestroyWindow(inner);
                if (way == 3) mortal->Make(inner);
            };
            const HWND window = mortal->Make(inner);
            kx::test::MoveTo(parent.Window(), 600, 400);
            MoveTo(window, 55);
            if (IsWindow(window)) PressAt(window, 60);
            if (IsWindow(window)) MoveTo(window, 90);
            Release();
            kx::test::MoveTo(parent.Window(), 600, 400);
            EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); })) << "the callback did not come";
            EXPECT_FALSE(Slider::m_Instances.contains(window));
            EXPECT_EQ(GetCapture(), nullptr);
            EXPECT_TRUE(!mortal || way == 3 || !HWND{*mortal});
            DestroyWindow(inner);
        }
    }
}

TEST_F(HPot, AbandonsADragThatIsTakenAway) {
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"capture", [] { ReleaseCapture(); }},
        {"another's capture", [&] { SetCapture(parent.Window()), ReleaseCapture(); }},
        {"disabled", [&] { slider.SetEnabled(false); }},
        {"cancelled", [&] { SendMessageW(slider, WM_CANCELMODE, 0, 0); }},
        {"destroyed", [&] { slider.Destroy(); }},
        {"parent destroyed", [&] { DestroyWindow(parent.Window()); }},
    };
    parent.Answer(WM_HSCROLL, 1);
    for (const auto& [name, take] : rows) {
        SCOPED_TRACE(name);
        slider.SetEnabled(true);
        slider.SetValue(50, false);
        slider.Make(parent.Window());
        PressAt(slider, 50);
        MoveTo(slider, 83);
        EXPECT_TRUE(record.Matches({HScroll(SB_THUMBTRACK, 80, slider)}));
        const HWND window = slider;
        take();
        EXPECT_EQ(slider.GetValue(), 80) << "what the host has taken stays";
        EXPECT_EQ(slider.m_thumbPos, 80);
        if (IsWindow(window)) MoveTo(slider, 150);
        Release();
        EXPECT_TRUE(record.Matches({}));
    }
}

TEST_F(HPot, GoesOnDraggingAtAnotherZoom) {
    parent.Answer(WM_HSCROLL, 1);
    slider.SetFocus();
    slider.SetValue(120, false);
    const Picture before = Picture::OnScreen(slider);
    slider.SetValue(50, false);
    PressAt(slider, 50);
    MoveTo(slider, 83);
    CKxGUILayoutManager::SetGuiZoom(2);
    EXPECT_EQ(slider.GetValue(), 80);
    EXPECT_EQ(GetCapture(), HWND{slider});
    EXPECT_TRUE(record.Matches({HScroll(SB_THUMBTRACK, 80, slider)})) << "the zoom asks nobody";
    // Twice as far on the screen is the same place on the scale.
    kx::test::MoveTo(slider, 2 * (kTrackLeft + 121), 2 * kMiddle);
    Release();
    EXPECT_EQ(slider.GetValue(), 120);
    EXPECT_TRUE(record.Matches({HScroll(SB_THUMBTRACK, 120), HScroll(SB_THUMBPOSITION, 120)}));
    CKxGUILayoutManager::SetGuiZoom(1);
    LeadAway();
    EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    EXPECT_EQ(Picture::OnScreen(slider), before);
}

// ---- Values --------------------------------------------------------------------------------------------------------

TEST_F(HPot, AnswersBadInput) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN(), huge = 1e308;
    slider.Destroy();
    slider.SetValue(none, true);
    EXPECT_EQ(slider.GetValue(), 0);
    slider.SetValue(huge * 10, true);
    EXPECT_EQ(slider.GetValue(), 210);
    slider.InitValues(none, 5, 1, 1, 0);
    double bad[] = {1, none};
    slider.InitValues(bad, 2, 7);
    slider.InitValues(bad, nullptr, 2, 7);
    EXPECT_EQ(slider.CalculateMove(-1), 200) << "what was refused has changed nothing";
    slider.InitValues(static_cast<double*>(nullptr), 5, 7);
    slider.SetValue(3.25, true);
    EXPECT_EQ(slider.GetValue(), 0) << "an empty list has the bounds 0";
    EXPECT_FALSE(slider.HandleMouseWheel(MAKEWPARAM(0, 120), 0));
    double one[] = {4};
    slider.InitValues(one, nullptr, 1, none);
    slider.SetValue(9, true);
    EXPECT_EQ(slider.GetValue(), 4);
    slider.Update(false, true, true);
    slider.GetMouseWheelGranularity(nullptr, nullptr, nullptr);
    slider.SetSize(-5, -7, -9);
    slider.Redraw(), slider.CreateScale(), slider.RecreateScale(), slider.SetHover(false), slider.SetEnabled(false);
    EXPECT_FALSE(slider.Create(nullptr));
}

TEST_F(HPot, KeepsToTheRulesOfItsState) {
    slider.SetValue(53, true);
    EXPECT_EQ(slider.GetValue(), 50);
    slider.SetValue(50.0009, true);
    EXPECT_EQ(slider.GetValue(), 50);
    slider.SetbAOTF(true);
    slider.SetValue(53.3, true);
    EXPECT_EQ(slider.GetValue(), 53.3);
    double list[] = {0, 60, 120, 210};
    slider.InitValues(list, 4, 0);
    EXPECT_EQ(slider.GetValue(), 53.3) << "the value stays until SetValue";
    slider.SetValue(100, true);
    EXPECT_EQ(slider.m_held.index, 2) << "the entry follows what is not snapped";
    EXPECT_TRUE(slider.HandleMouseWheel(MAKEWPARAM(0, 120), 0));
    EXPECT_EQ(slider.GetValue(), 210);
    slider.SetEnabled(false);
    EXPECT_FALSE(slider.HandleMouseWheel(MAKEWPARAM(0, -120), 0));
    slider.m_thumbPos = 70;
    record.Clear();
    slider.Update(false, false, true);
    EXPECT_EQ(slider.GetValue(), 60) << "without notify nobody is asked";
    EXPECT_TRUE(record.Matches({}));
    EXPECT_EQ(SendMessageW(slider, WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
}

TEST_F(HPot, BelongsToItsWindow) {
    CKxDevUI_Container panel;
    panel.Create(parent.Window(), 0, 0, 300, 100, true, true);
    slider.SetId(7);
    const HWND window = slider;
    panel.InsertWindow(window);
    EXPECT_EQ(panel.GetElement(7), &slider);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA),
              reinterpret_cast<LONG_PTR>(static_cast<CKxDevUI_Base*>(&slider)));
    { const Slider copy(slider); }
    EXPECT_TRUE(IsWindow(window)) << "a copy's end is not the window's";
    panel.Destroy();
    EXPECT_EQ(HWND{slider}, nullptr);
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

TEST_F(HPot, ShowsItsState) {
    LeadAway();
    const std::pair<const char*, std::function<void()>> states[] = {
        {"normal", [] {}},
        {"hovered", [&] { MoveTo(slider, 0); }},
        {"dragged", [&] { PressAt(slider, 0); }},
        {"focused", [&] { Release(); }},
        {"disabled", [&] { slider.SetEnabled(false); }},
        {"marked", [&] { slider.SetEnabled(true), slider.SetMarker(105, COLOR_HOTLIGHT, true); }},
        {"moved", [&] { slider.SetValue(210, false); }},
        {"dark", [] { KX_SetColorScheme(eKxColorScheme_Dark); }},
        {"high-contrast", [] { KX_SetColorScheme(eKxColorScheme_HighContrast); }},
        {"zoomed", [] { KX_SetColorScheme(eKxColorScheme_System), CKxGUILayoutManager::SetGuiZoom(2); }},
    };
    std::vector<Picture> looks;
    for (const auto& [name, enter] : states) {
        enter();
        Pump();
        const Picture now = Picture::OnScreen(slider);
        now.Save(std::string("hpot-") + name);
        EXPECT_EQ(now, Picture::Printed(slider)) << name;
        for (const Picture& before : looks)
            EXPECT_GT(now.Differences(before), 0) << name << " looks like number " << &before - looks.data();
        looks.push_back(now);
    }
    EXPECT_EQ(looks.back().Width(), 440);
}

// Painting costs no bitmap; a step of the thumb costs what it covers.
TEST_F(HPot, PaintsWhatHasChanged) {
    Pump();
    EXPECT_EQ(slider.scales, 1);
    slider.SetValue(kTrack, false);
    Pump();
    slider.SetValue(50, false);
    RECT dirty{}, now = slider.ThumbRect();
    GetUpdateRect(slider, &dirty, FALSE);
    EXPECT_EQ(dirty.left, now.left) << "the place to come";
    EXPECT_EQ(dirty.right, 220) << "and the one before";
    EXPECT_EQ(dirty.bottom, now.bottom);
    Pump();
    slider.SetValue(50.0005, false);
    slider.SetEnabled(true), slider.SetTransparent(true), slider.SetMarkerUsed(false);
    EXPECT_FALSE(GetUpdateRect(slider, nullptr, FALSE)) << "nothing has changed";
    EXPECT_EQ(slider.scales, 1);
    slider.InitValues(0, 100, 1, 1, 0), slider.SetType(eHPotType_Linear);
    Pump();
    EXPECT_EQ(slider.scales, 2);
    slider.SetSize(300, 40, -1);
    Pump();
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
        const auto plain = kx::hpot::ReadHandleImage(missing);
        EXPECT_NEAR(mean(plain), mean(image), 0.2);
        EXPECT_NE(std::exchange(logged, "").find("BMP_HPOT_HANDLE"), std::string::npos);
    }
    CKxLogFile::SetSink(nullptr, nullptr);
}

}  // namespace
