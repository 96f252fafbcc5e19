// The slider as a window: what the user does to it, what its parent and its callbacks are told, what it shows.
#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_thumb.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_time.h>

#include <cstring>
#include <limits>
#include <memory>

using namespace kx::test;

namespace {

// 220 pixels wide, a thumb of 20, so 10 wide: a track of 210 pixels from 5 on. With a range of 210, pixels are values.
constexpr int kTrackLeft = 5, kTrack = 210, kMiddle = 8;

class Slider : public CKxDevUI_HPot {
public:
    explicit Slider(Recorder* record = nullptr) : m_record(record) { InitValues(0, kTrack, 10, 10, 0); }

    HWND Make(HWND parent) { return Create(parent, 10, 10, 220, 40, true, true); }
    int scales = 0;
    std::function<void(const char*)> act;       // in every callback
    std::function<void(double&, bool&)> answer;  // in OnHPotChange

    using CKxDevUI_HPot::CalculateMove;
    using CKxDevUI_HPot::m_held;
    using CKxDevUI_HPot::m_Instances;
    using CKxDevUI_HPot::m_thumbPos;
    using CKxDevUI_HPot::ThumbRect;

protected:
    void OnHPotChange(double& value, bool& skip) override {
        Tell("Change", value);
        if (!m_record && !act) return CKxDevUI_HPot::OnHPotChange(value, skip);
        if (answer) answer(value, skip);
        Act("Change");
    }
    void OnHPotDragDrop() override {
        Tell("Drop");
        if (!m_record && !act) return CKxDevUI_HPot::OnHPotDragDrop();
        Act("Drop");
    }
    void OnLeftButtonUp() override { Tell("Up"), Act("Up"); }
    void OnHoverForPad() override { Tell("Hover"), Act("Hover"); }
    void UnHoverForPad() override { Tell("UnHover"), Act("UnHover"); }
    HBITMAP CreateLinearBitmap(bool enabled) override {
        ++scales;
        return CKxDevUI_HPot::CreateLinearBitmap(enabled);
    }

private:
    template <class... Arguments>
    void Tell(const char* name, Arguments... arguments) {
        if (m_record) m_record->Call(name, arguments...);
    }
    // May end this object.
    void Act(const char* name) {
        if (const auto action = act) action(name);
    }
    Recorder* m_record;
};

void At(HWND window, int value, void (*act)(HWND, int, int)) { act(window, kTrackLeft + value, kMiddle); }
void PressAt(HWND window, int value) { At(window, value, [](HWND w, int x, int y) { Press(w, x, y); }); }
void MoveTo(HWND window, int value) { At(window, value, [](HWND w, int x, int y) { kx::test::MoveTo(w, x, y); }); }
void ClickAt(HWND window, int value) { PressAt(window, value), Release(); }
void DragTo(HWND window, int from, int to) { PressAt(window, from), MoveTo(window, (from + to) / 2), MoveTo(window, to), Release(); }

unsigned s_now = 0;
struct Clock {
    Clock() { KX_SetTimeSource([] { return s_now; }); }
    ~Clock() { KX_SetTimeSource(nullptr); }
};

// ---- What the parent is told ---------------------------------------------------------------------------------------

struct Gesture {
    const char* name;
    void (*make)(HWND slider);
    std::vector<std::pair<int, int>> taken, refused;  // codes and positions
};

const std::vector<Gesture>& Gestures() {
    constexpr int track = SB_THUMBTRACK, drop = SB_THUMBPOSITION;
    static const std::vector<Gesture> gestures{
        {"drag", [](HWND w) { DragTo(w, 50, 150); }, {{track, 100}, {track, 150}, {drop, 150}},
         {{track, 100}, {track, 150}, {track, 150}, {drop, 50}}},
        {"drag over the end", [](HWND w) { DragTo(w, 50, 250); }, {{track, 150}, {track, 210}, {drop, 210}},
         {{track, 150}, {track, 210}, {track, 210}, {drop, 50}}},
        {"drag on the spot", [](HWND w) { PressAt(w, 52), MoveTo(w, 55), Release(); }, {{drop, 50}}, {{drop, 50}}},
        {"click on the thumb", [](HWND w) { ClickAt(w, 53); }, {{drop, 50}}, {{drop, 50}}},
        {"click beside it", [](HWND w) { ClickAt(w, 123); }, {{track, 120}, {drop, 120}}, {{track, 120}, {drop, 50}}},
        {"only a press", [](HWND w) { PressAt(w, 123); }, {}, {}},
        {"wheel", [](HWND) { Wheel(120); }, {{drop, 60}}, {{drop, 60}}},
        {"wheel, two notches in one", [](HWND) { Wheel(-240); }, {{drop, 40}}, {{drop, 40}}},
        {"wheel and Shift", [](HWND) { Wheel(120, MOD_SHIFT); }, {{drop, 100}}, {{drop, 100}}},
        {"wheel and Ctrl", [](HWND) { Wheel(120, MOD_CONTROL); }, {{drop, 80}}, {{drop, 80}}},
        {"wheel, Ctrl before Shift", [](HWND) { Wheel(120, MOD_CONTROL | MOD_SHIFT); }, {{drop, 80}}, {{drop, 80}}},
        {"right and left", [](HWND) { Key(VK_RIGHT), Key(VK_RIGHT), Key(VK_LEFT); },
         {{drop, 60}, {drop, 70}, {drop, 60}}, {{drop, 60}, {drop, 70}, {drop, 60}}},
        {"up and down", [](HWND) { Key(VK_UP), Key(VK_DOWN); }, {{drop, 60}, {drop, 50}}, {{drop, 60}, {drop, 50}}},
        {"pages", [](HWND) { Key(VK_PRIOR), Key(VK_NEXT); }, {{drop, 100}, {drop, 50}}, {{drop, 100}, {drop, 50}}},
        {"ends, the second time nothing", [](HWND) { Key(VK_END), Key(VK_END), Key(VK_HOME); },
         {{drop, 210}, {drop, 0}}, {{drop, 210}, {drop, 0}}},
    };
    return gestures;
}

TEST(HPot, TellsItsParentOfEachGesture) {
    for (const bool taken : {true, false}) {
        for (const Gesture& gesture : Gestures()) {
            SCOPED_TRACE(gesture.name);
            RecordingParent parent;
            parent.Answer(WM_HSCROLL, taken ? 1 : 0);
            Slider slider;
            slider.Make(parent.Window());
            slider.SetMouseWheelGranularity(3, 1, 5);
            slider.SetValue(50, true);
            slider.SetFocus();
            MoveTo(slider, 0);
            EXPECT_TRUE(parent.Record().Matches({})) << "the setters are silent";
            gesture.make(slider);
            std::vector<Expected> expected;
            for (const auto& [code, position] : taken ? gesture.taken : gesture.refused)
                expected.push_back(HScroll(code, position, slider));
            EXPECT_TRUE(parent.Record().Matches(expected)) << (taken ? "taken" : "refused");
            Release();
        }
    }
}

TEST(HPot, CutsValuesTo16BitsForItsParent) {
    RecordingParent parent;
    Slider slider;
    slider.Make(parent.Window());
    const struct {
        double bound;
        int told;
    } rows[] = {{-1.9, 0xFFFF}, {70000.5, 70000 & 0xFFFF}, {1e12, 0xFFFF}, {-1e12, 0}};
    for (const auto& row : rows) {
        slider.InitValues(row.bound, 3, 0, 1, 0);
        slider.SetFocus();
        slider.SetValue(3, false);
        Key(VK_HOME);
        EXPECT_TRUE(parent.Record().Matches({Msg(WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, row.told))})) << row.bound;
    }
}

// ---- Callbacks -----------------------------------------------------------------------------------------------------

TEST(HPot, CallsBackInOrder) {
    Recorder record;
    RecordingParent parent(record);
    Slider slider(&record);
    slider.Make(parent.Window());
    kx::test::MoveTo(parent.Window(), 400, 300);
    MoveTo(slider, 3);
    MoveTo(slider, 4);
    EXPECT_TRUE(slider.GetHovered());
    ClickAt(slider, 100);
    EXPECT_TRUE(record.Matches({Call("Hover"), Call("Change", 100.0), Call("Drop"), Call("Up")}));
    SendMessageW(slider, WM_LBUTTONUP, 0, 0);
    kx::test::MoveTo(parent.Window(), 400, 300);
    EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    EXPECT_TRUE(record.Matches({Call("Up"), Call("UnHover")}));
    slider.SetHover(false);
    MoveTo(slider, 3);
    EXPECT_FALSE(slider.GetHovered());
    EXPECT_TRUE(record.Matches({}));
}

TEST(HPot, HoldsWhatTheHostMakesOfAValue) {
    Recorder record;
    RecordingParent parent(record);
    Slider slider(&record);
    slider.Make(parent.Window());
    double list[] = {0, 60, 120, 210};
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const struct {
        std::function<void(double&, bool&)> answer;
        double held;
        int index;
        bool list;
    } rows[] = {
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

TEST(HPot, TakesAQuickClickForAStep) {
    const Clock clock;
    Recorder record;
    RecordingParent parent(record);
    Slider slider(&record);
    slider.Make(parent.Window());
    double list[] = {0, 60, 120, 210};
    slider.InitValues(list, 4, 0);
    const auto stay = [](HWND w) { SendMessageW(w, WM_MOUSEMOVE, 0, MAKELPARAM(kTrackLeft + 72, kMiddle)); };
    const struct {
        const char* name;
        int at;
        unsigned milliseconds;
        std::function<void(HWND)> between;
        double value;
    } rows[] = {
        {"quick, to the right", 72, 99, nullptr, 120},
        {"quick, to the left", 48, 0, nullptr, 0},
        {"a move that leads nowhere", 72, 10, stay, 120},
        {"slow: the nearest", 72, 100, nullptr, 60},
        {"away and back is no click", 72, 10, [](HWND w) { MoveTo(w, 75), MoveTo(w, 72); }, 60},
        {"another entry is nearest", 160, 10, nullptr, 120},
        {"on the thumb", 60, 10, nullptr, 60},
    };
    for (const auto& row : rows) {
        for (const unsigned start : {5000U, 0U - 50U}) {  // the counter wraps
            slider.SetValue(60, false);
            s_now = start;
            PressAt(slider, row.at);
            if (row.between) row.between(slider);
            s_now += row.milliseconds;
            Release();
            EXPECT_EQ(slider.GetValue(), row.value) << row.name;
        }
    }
}

// Every way to end, in every callback, out of every way to get there.
TEST(HPot, BearsItsEndInEachCallback) {
    for (const char* callback : {"Hover", "Change", "Drop", "Up", "UnHover"}) {
        for (int way = 0; way < 4; ++way) {
            SCOPED_TRACE(std::string(callback) + " way " + std::to_string(way));
            RecordingParent parent;
            HWND inner = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 0, 0, 400, 300,
                                         parent.Window(), nullptr, nullptr, nullptr);
            auto slider = std::make_unique<Slider>();
            slider->act = [&](const char* name) {
                if (std::string(name) != callback) return;
                switch (way) {
                case 0: slider->Destroy(); break;
                case 1: slider.reset(); break;
                case 2: DestroyWindow(inner); break;
                default: slider->Make(inner); break;
                }
            };
            const HWND window = slider->Make(inner);
            kx::test::MoveTo(parent.Window(), 600, 400);
            MoveTo(window, 55);
            if (IsWindow(window)) PressAt(window, 60);
            if (IsWindow(window)) MoveTo(window, 90);
            Release();
            kx::test::MoveTo(parent.Window(), 600, 400);
            EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); })) << "the callback did not come";
            EXPECT_FALSE(Slider::m_Instances.contains(window));
            EXPECT_EQ(GetCapture(), nullptr);
            if (slider && way != 3) {
                EXPECT_EQ(HWND{*slider}, nullptr);
            }
        }
    }
}

TEST(HPot, AbandonsADragThatIsTakenAway) {
    const struct {
        const char* name;
        std::function<void(Slider&, HWND)> take;
    } rows[] = {
        {"capture", [](Slider&, HWND) { ReleaseCapture(); }},
        {"another's capture", [](Slider&, HWND parent) { SetCapture(parent), ReleaseCapture(); }},
        {"disabled", [](Slider& slider, HWND) { slider.SetEnabled(false); }},
        {"cancelled", [](Slider& slider, HWND) { SendMessageW(slider, WM_CANCELMODE, 0, 0); }},
        {"destroyed", [](Slider& slider, HWND) { slider.Destroy(); }},
        {"parent destroyed", [](Slider&, HWND parent) { DestroyWindow(parent); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RecordingParent parent;
        parent.Answer(WM_HSCROLL, 1);
        Slider slider;
        slider.Make(parent.Window());
        PressAt(slider, 50);
        MoveTo(slider, 83);
        EXPECT_TRUE(parent.Record().Matches({HScroll(SB_THUMBTRACK, 80, slider)}));
        const HWND window = slider;
        row.take(slider, parent.Window());
        EXPECT_EQ(slider.GetValue(), 80) << "what the host has taken stays";
        EXPECT_EQ(slider.m_thumbPos, 80);
        if (IsWindow(window)) {
            MoveTo(slider, 150);
            Release();
        }
        EXPECT_TRUE(parent.Record().Matches({}));
        Release();
    }
}

TEST(HPot, GoesOnDraggingAtAnotherZoom) {
    RecordingParent parent;
    parent.Answer(WM_HSCROLL, 1);
    Slider slider;
    slider.Make(parent.Window());
    slider.SetFocus();
    slider.SetValue(120, false);
    const Picture before = Picture::OnScreen(slider);
    slider.SetValue(50, false);
    PressAt(slider, 50);
    MoveTo(slider, 83);
    CKxGUILayoutManager::SetGuiZoom(2);
    EXPECT_EQ(slider.GetValue(), 80);
    EXPECT_EQ(GetCapture(), HWND{slider});
    EXPECT_TRUE(parent.Record().Matches({HScroll(SB_THUMBTRACK, 80, slider)})) << "the zoom asks nobody";
    // Twice as far on the screen is the same place on the scale.
    kx::test::MoveTo(slider, 2 * (kTrackLeft + 121), 2 * kMiddle);
    Release();
    EXPECT_EQ(slider.GetValue(), 120);
    EXPECT_TRUE(parent.Record().Matches({HScroll(SB_THUMBTRACK, 120), HScroll(SB_THUMBPOSITION, 120)}));
    CKxGUILayoutManager::SetGuiZoom(1);
    kx::test::MoveTo(parent.Window(), 400, 300);
    EXPECT_TRUE(PumpUntil([&] { return !slider.GetHovered(); }));
    EXPECT_EQ(Picture::OnScreen(slider), before);
}

// ---- Values --------------------------------------------------------------------------------------------------------

TEST(HPot, AnswersBadInput) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN(), huge = 1e308;
    Slider slider;
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

TEST(HPot, KeepsToTheRulesOfItsState) {
    RecordingParent parent;
    Slider slider;
    slider.Make(parent.Window());
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
    parent.Record().Clear();
    slider.Update(false, false, true);
    EXPECT_EQ(slider.GetValue(), 60) << "without notify nobody is asked";
    EXPECT_TRUE(parent.Record().Matches({}));
    EXPECT_EQ(SendMessageW(slider, WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
}

TEST(HPot, BelongsToItsWindow) {
    RecordingParent parent;
    CKxDevUI_Container panel;
    panel.Create(parent.Window(), 0, 0, 300, 100, true, true);
    Slider slider;
    slider.SetId(7);
    const HWND window = slider.Make(parent.Window());
    panel.InsertWindow(window);
    EXPECT_EQ(panel.GetElement(7), &slider);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA),
              reinterpret_cast<LONG_PTR>(static_cast<CKxDevUI_Base*>(&slider)));
    { const Slider copy(slider); }
    EXPECT_TRUE(IsWindow(window)) << "a copy's end is not the window's";
    panel.SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(window));
    panel.Destroy();
    EXPECT_EQ(HWND{slider}, nullptr);
    { Slider other; other.Make(parent.Window()); }
    EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr) << "an object takes its window along";
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

TEST(HPot, ShowsItsState) {
    RecordingParent parent;
    Slider slider;
    slider.Make(parent.Window());
    kx::test::MoveTo(parent.Window(), 400, 300);
    std::vector<Picture> looks;
    const auto look = [&](const char* name) {
        Pump();
        looks.push_back(Picture::OnScreen(slider));
        looks.back().Save(std::string("hpot-") + name);
        for (std::size_t i = 0; i + 1 < looks.size(); ++i)
            EXPECT_GT(looks.back().Differences(looks[i]), 0) << name << " looks like number " << i;
        EXPECT_EQ(looks.back(), Picture::Printed(slider)) << name;
    };
    look("normal");
    MoveTo(slider, 0);
    look("hovered");
    PressAt(slider, 0);
    look("dragged");
    Release();
    look("focused");
    slider.SetEnabled(false);
    look("disabled");
    slider.SetEnabled(true);
    slider.SetMarker(105, COLOR_HOTLIGHT, true);
    look("marked");
    slider.SetValue(210, false);
    look("moved");
    KX_SetColorScheme(eKxColorScheme_Dark);
    look("dark");
    KX_SetColorScheme(eKxColorScheme_HighContrast);
    look("high-contrast");
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(2);
    look("zoomed");
    EXPECT_EQ(looks.back().Width(), 440);
    CKxGUILayoutManager::SetGuiZoom(1);
}

// Painting costs no bitmap; a step of the thumb costs what it covers.
TEST(HPot, PaintsWhatHasChanged) {
    RecordingParent parent;
    Slider slider;
    slider.Make(parent.Window());
    Pump();
    EXPECT_EQ(slider.scales, 1);
    for (int value = 0; value <= kTrack; value += 10) slider.SetValue(value, false), Pump();
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

TEST(HPot, FollowsItsParentsBackground) {
    RecordingParent parent;
    const HBRUSH brush = CreateSolidBrush(RGB(1, 200, 3));
    parent.Answer(WM_CTLCOLORSTATIC, [brush](WPARAM, LPARAM) { return reinterpret_cast<LRESULT>(brush); });
    Slider slider;
    slider.Make(parent.Window());
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

TEST(HPot, DrawsAPlainThumbWithoutTheImages) {
    std::string logged;
    CKxLogFile::SetSink([](const wchar_t* record, void* to) { *static_cast<std::string*>(to) += Narrow(record); }, &logged);
    const auto mean = [](const kx::hpot::HandleImage& image) {
        double sum = 0;
        for (const int alpha : image.alpha) sum += alpha;
        return sum / (255.0 * image.width * image.height);
    };
    const auto image = kx::hpot::ReadHandleImage(L"r7_w32_baseresources.dll");
    EXPECT_EQ(logged, "");
    EXPECT_EQ(image.width, 96);
    for (const wchar_t* missing : std::initializer_list<const wchar_t*>{L"no-such.dll", L"kxdevui.dll", nullptr}) {
        const auto plain = kx::hpot::ReadHandleImage(missing);
        EXPECT_NEAR(mean(plain), mean(image), 0.2);
        EXPECT_NE(plain.width, image.width);
        EXPECT_NE(logged.find("BMP_HPOT_HANDLE"), std::string::npos);
        logged.clear();
    }
    CKxLogFile::SetSink(nullptr, nullptr);
}

TEST(HPot, LeavesNothingBehind) {
    RecordingParent parent;
    double list[] = {1, 2, 4, 8}, steps[] = {1, 1, 2};
    EXPECT_TRUE(NoGrowth(1000, [&] {
        Slider slider;
        slider.Make(parent.Window());
        slider.InitValues(list, steps, 4, 1);
        slider.SetValue(4, true);
        UpdateWindow(slider);
        slider.RecreateScale();
        slider.SetEnabled(false);
        UpdateWindow(slider);
    }));
}

// ---- The virtual table ---------------------------------------------------------------------------------------------

struct Slots : CKxDevUI_HPot {
    template <class Function>
    static long Of(Function function) {
        long long words[sizeof(Function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    }
    static std::vector<long> Own() {
        using S = Slots;
        return {Of(&S::OnHPotChange),       Of(&S::OnHPotDragDrop),        Of(&S::OnLeftButtonUp),
                Of(&S::OnHoverForPad),      Of(&S::UnHoverForPad),         Of(&S::CreateLinearBitmap),
                Of(&S::CreateNonlinearBitmap), Of(&S::CreateLinearRegionsBitmap), Of(&S::CreateColorSliderBitmap)};
    }
};

TEST(HPot, AppendsItsVirtualsToTheBases) {
    EXPECT_EQ(Slots::Own(), (std::vector<long>{19, 20, 21, 22, 23, 24, 25, 26, 27}));
}

}  // namespace
