#include "tour.h"

#include <algorithm>

#include "event_log.h"
#include "main_window.h"
#include "picture.h"
#include "resources/resource.h"

namespace {

// One tour a process; the timer procedure has no parameter for it.
Tour* s_tour = nullptr;
constexpr UINT kStepMilliseconds = 40;
constexpr int kMostTicks = 100;

void SendMouse(POINT screen, DWORD flags, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    // Absolute positions count from 0 to 65535 over the screen; the half brings the pixel's middle.
    input.mi.dx = MulDiv(screen.x * 2 + 1, 32768, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = MulDiv(screen.y * 2 + 1, 32768, GetSystemMetrics(SM_CYSCREEN));
    input.mi.mouseData = static_cast<DWORD>(data);
    // Every event brings its place along: the display may report an earlier one between a move and a press.
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
    SendInput(1, &input, sizeof input);
}

void SendKey(WORD key, WORD character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

POINT PointIn(HWND window, int percentAcross) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.left + (rect.right - rect.left) * percentAcross / 100, (rect.top + rect.bottom) / 2};
}

HWND ActiveDialog() { return GetActiveWindow(); }

}  // namespace

// ---- Running -------------------------------------------------------------------------------------------------------

void Tour::Start() {
    s_tour = this;
    Plan();
    SetTimer(nullptr, 0, kStepMilliseconds, OnTimer);
}

void CALLBACK Tour::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    if (s_tour->m_next >= s_tour->m_steps.size()) {
        KillTimer(nullptr, timer);
        return;
    }
    s_tour->TakeStep();
}

void Tour::TakeStep() {
    // Counted first: a step may open a modal loop and stay inside while the next ones are taken.
    const auto step = m_steps[m_next++];
    if (step()) {
        m_waited = 0;
    } else if (++m_waited < kMostTicks) {
        --m_next;
    } else {
        m_waited = 0;
        Fail(L"what it waits for does not come");
    }
}

void Tour::Do(std::function<void()> step) {
    m_steps.push_back([step = std::move(step)] {
        step();
        return true;
    });
}

void Tour::Await(const Find& target) {
    m_steps.push_back([target] { return IsWindowVisible(target()) != FALSE; });
}

void Tour::Fail(const wchar_t* what) {
    m_failed = true;
    Log().Add(L"Tour", L"FAILED at step %u: %ls", static_cast<unsigned>(m_next), what);
}

// ---- Steps ---------------------------------------------------------------------------------------------------------

void Tour::MoveTo(const Find& target) {
    Await(target);
    Do([target] { SendMouse(PointIn(target(), 50), 0); });
}

void Tour::Click(const Find& target) {
    MoveTo(target);
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_LEFTDOWN); });
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_LEFTUP); });
}

void Tour::Drag(const Find& target, int fromPercent, int toPercent) {
    Await(target);
    Do([target, fromPercent] { SendMouse(PointIn(target(), fromPercent), 0); });
    Do([target, fromPercent] { SendMouse(PointIn(target(), fromPercent), MOUSEEVENTF_LEFTDOWN); });
    for (int i = 1; i <= 4; ++i) {
        const int percent = fromPercent + (toPercent - fromPercent) * i / 4;
        Do([target, percent] { SendMouse(PointIn(target(), percent), 0); });
    }
    Do([target, toPercent] { SendMouse(PointIn(target(), toPercent), MOUSEEVENTF_LEFTUP); });
}

void Tour::Wheel(const Find& target, int notches) {
    MoveTo(target);
    for (int i = 0; i < std::abs(notches); ++i) {
        const int delta = notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
        Do([target, delta] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_WHEEL, delta); });
    }
}

void Tour::Key(WORD key) {
    Do([key] {
        SendKey(key, 0, 0);
        SendKey(key, 0, KEYEVENTF_KEYUP);
    });
}

void Tour::Type(const wchar_t* text) {
    for (; *text; ++text) {
        Do([character = static_cast<WORD>(*text)] {
            SendKey(0, character, KEYEVENTF_UNICODE);
            SendKey(0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
        });
    }
}

void Tour::Menu(int command) {
    Do([this, command] { PostMessageW(m_window.Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0); });
}

void Tour::Picture(const wchar_t* name) {
    Do([this] { RedrawWindow(m_window.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
    Do([this, name] {
        if (!SavePicture(m_window.Handle(), m_folder + L"\\" + name + L".png")) Fail(L"a picture cannot be written");
    });
}

// ---- The plan ------------------------------------------------------------------------------------------------------

void Tour::Plan() {
    Do([this] { SetForegroundWindow(m_window.Handle()); });
    Picture(L"01-start");
    PlanPanels();
    PlanDialog();
    PlanLooks();
    PlanControls();
    PlanLight();
    Do([this] {
        Log().Add(L"Tour", m_failed ? L"ended with failures" : L"ended well");
        DestroyWindow(m_window.Handle());
    });
}

void Tour::PlanPanels() {
    const auto in = [this](auto panel, int id) -> Find {
        return [this, panel, id] { return GetDlgItem((m_window.Stand().*panel)(), id); };
    };
    const auto stage = [in](int id) { return in(&StandPage::Stage, id); };
    const auto camera = [in](int id) { return in(&StandPage::Camera, id); };

    Click(stage(IDC_STAGE_RIGHT));
    Click(stage(IDC_STAGE_UP));
    Wheel(stage(IDC_STAGE_POSITION), 2);
    Click(stage(IDC_STAGE_RIGHT));
    Picture(L"02-stage");

    Click(camera(IDC_EXPOSURE));
    Key(VK_END);
    Type(L"5.5");
    Key(VK_TAB);
    Key(VK_DOWN);
    Click(camera(IDC_LIVE));
    Click(camera(IDC_SNAP));
    Picture(L"03-camera");

    Click(in(&StandPage::Transmitted, IDC_TRANSMITTED));
    Drag(in(&StandPage::Transmitted, IDC_TRANSMITTED_LEVEL), 42, 75);
    Click(in(&StandPage::Reflected, IDC_REFLECTED));
    Click(in(&StandPage::Stand, IDC_TUBE));
    Click([this] {
        // The condenser's own container lies in the stand's.
        const HWND stand = m_window.Stand().Stand();
        for (HWND child = GetWindow(stand, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (const HWND button = GetDlgItem(child, IDC_CONDENSER_TOP)) return button;
        }
        return HWND{};
    });
    Picture(L"04-lamps-and-stand");
}

void Tour::PlanDialog() {
    const auto inDialog = [](int id) -> Find { return [id] { return GetDlgItem(ActiveDialog(), id); }; };
    Menu(MainWindow::cmdSeries);
    Click(inDialog(IDC_SERIES_COUNT));
    Key(VK_END);
    Type(L"0");
    Picture(L"05-series");
    Click(inDialog(IDOK));
    Menu(MainWindow::cmdSeries);
    Click(inDialog(IDC_SERIES_INTERVAL));
    Type(L"x");
    Key(VK_RETURN);
    Await([] { return GetDlgItem(ActiveDialog(), IDC_SERIES_COUNT) ? HWND{} : ActiveDialog(); });
    Picture(L"06-series-refused");
    Key(VK_RETURN);
    Await(inDialog(IDC_SERIES_COUNT));
    Key(VK_ESCAPE);
}

void Tour::PlanLooks() {
    Menu(MainWindow::cmdEnabled);
    Picture(L"07-disabled");
    Menu(MainWindow::cmdEnabled);
    for (const int percent : {125, 150, 200}) {
        Menu(MainWindow::cmdZoom + percent / 25);
        Picture(percent == 125 ? L"08-zoom-125" : percent == 150 ? L"09-zoom-150" : L"10-zoom-200");
    }
    Menu(MainWindow::cmdZoom + 4);
    const struct {
        int language;
        const wchar_t* name;
    } languages[] = {{LANG_GERMAN, L"11-german"},
                     {LANG_FRENCH, L"12-french"},
                     {LANG_SPANISH, L"13-spanish"},
                     {LANG_JAPANESE, L"14-japanese"}};
    for (const auto& each : languages) {
        Menu(MainWindow::cmdLanguage + each.language);
        Picture(each.name);
    }
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
    Menu(MainWindow::cmdScheme + eKxColorScheme_Light);
    Picture(L"15-light");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Picture(L"15-dark");
    Menu(MainWindow::cmdZoom + 6);
    Menu(MainWindow::cmdSeries);
    Await([] { return GetDlgItem(ActiveDialog(), IDC_SERIES_COUNT); });
    Picture(L"15-dark-150");
    Key(VK_ESCAPE);
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdScheme + eKxColorScheme_HighContrast);
    Picture(L"16-high-contrast");
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Picture(L"17-end");
}

void Tour::PlanControls() {
    Menu(MainWindow::cmdPage + 1);
    Await([this] { return HWND{m_window.Controls()}; });
    PlanSliders();
    PlanFields();
    PlanRadio();
    PlanTable();
    Picture(L"20-controls");
    Menu(MainWindow::cmdEnabled);
    Picture(L"21-controls-disabled");
    Menu(MainWindow::cmdEnabled);
    for (const int scheme : {eKxColorScheme_Dark, eKxColorScheme_HighContrast, eKxColorScheme_Light}) {
        Menu(MainWindow::cmdScheme + scheme);
        Picture(scheme == eKxColorScheme_Dark    ? L"22-controls-dark"
                : scheme == eKxColorScheme_Light ? L"24-controls-light"
                                                 : L"23-controls-high-contrast");
    }
    Menu(MainWindow::cmdZoom + 6);
    Picture(L"25-controls-150");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Menu(MainWindow::cmdZoom + 8);
    Picture(L"26-controls-dark-200");
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdLanguage + LANG_GERMAN);
    Picture(L"27-controls-german");
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
}

void Tour::PlanSliders() {
    const auto slider = [this](int index) -> Find {
        return [this, index] { return HWND{m_window.Controls().Sliders().Slider(index)}; };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.Controls().Sliders(), IDC_SLIDER_REFUSE); };
    Drag(slider(0), 17, 60);
    Wheel(slider(0), -2);
    Click(slider(1));
    Key(VK_RIGHT);
    Drag(slider(2), 42, 80);
    Click(slider(3));
    Key(VK_PRIOR);
    Picture(L"18-sliders");
    Click(refuses);
    Drag(slider(0), 50, 20);
    Picture(L"18-sliders-refused");
    Click(refuses);
}

void Tour::PlanFields() {
    const Find exposure = [this] { return m_window.Controls().Fields().Exposure().GetEditWindow(); };
    const Find gain = [this] { return m_window.Controls().Fields().Gain().GetEditWindow(); };
    const Find lines = [this] { return m_window.Controls().Fields().Wavelengths().GetEditWindow(); };
    Click(exposure);
    Key(VK_END);
    Type(L"5");
    Key(VK_RETURN);
    Click(gain);
    Key(VK_UP);
    Key(VK_UP);
    Click(lines);
    Key(VK_END);
    Type(L"900");
    Key(VK_RETURN);
    Await([] { return ActiveDialog(); });
    Picture(L"18-fields-refused");
    Key(VK_RETURN);
    Await(lines);
    Picture(L"18-fields");
}

void Tour::PlanRadio() {
    const auto button = [this](int index) -> Find {
        return [this, index] { return GetDlgItem(m_window.Controls().Binning().Group(), 85 + index); };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.Controls().Binning(), IDC_BINNING_REFUSE); };
    Click(button(1));
    Key(VK_DOWN);
    Click(refuses);
    Click(button(0));
    Click(refuses);
}

void Tour::PlanTable() {
    const Find table = [this] { return m_window.Controls().Planes().Table().GetListView(); };
    const Find refuses = [this] { return GetDlgItem(m_window.Controls().Planes(), IDC_PLANES_REFUSE); };
    // The cell under the mouse, then the one next to it.
    Click(table);
    Key(VK_HOME);
    Key(VK_DOWN);
    Key(VK_F2);
    Type(L"65");
    Key(VK_TAB);
    Type(L"deeper");
    Picture(L"19-table-editing");
    Key(VK_RETURN);
    Click(refuses);
    Click(table);
    Key(VK_F2);
    Type(L"9");
    Key(VK_RETURN);
    Picture(L"19-table-refused");
    Click(refuses);
}

void Tour::PlanLight() {
    const auto part = [this](int slider, int id) -> Find {
        return [this, slider, id] { return GetDlgItem(m_window.Light().Colors().Slider(slider), id); };
    };
    const auto edit = [part](int slider, int id) -> Find {
        return [box = part(slider, id)] { return GetWindow(box(), GW_CHILD); };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.Light().Colors(), IDC_LIGHT_REFUSE); };
    constexpr int thumb = 10000, box = 10001, minimum = 10005;
    Menu(MainWindow::cmdPage + 2);
    Await([this] { return HWND{m_window.Light()}; });
    Drag(part(1, thumb), 30, 70);
    Wheel(part(3, thumb), 2);
    Click(edit(4, box));
    Key(VK_END);
    Key(VK_BACK);
    Type(L"5");
    Key(VK_RETURN);
    Click(part(5, thumb));
    Key(VK_RIGHT);
    Drag(part(7, thumb), 33, 20);
    Click(part(7, thumb));
    Key(VK_LEFT);
    Click(edit(7, minimum));
    Picture(L"28-light");
    Click(refuses);
    Drag(part(1, thumb), 68, 20);
    Wheel(part(6, thumb), 1);
    Picture(L"28-light-refused");
    Click(refuses);
    Menu(MainWindow::cmdEnabled);
    Picture(L"29-light-disabled");
    Menu(MainWindow::cmdEnabled);
    for (const int scheme : {eKxColorScheme_Dark, eKxColorScheme_HighContrast, eKxColorScheme_Light}) {
        Menu(MainWindow::cmdScheme + scheme);
        Picture(scheme == eKxColorScheme_Dark    ? L"30-light-dark"
                : scheme == eKxColorScheme_Light ? L"32-light-light"
                                                 : L"31-light-high-contrast");
    }
    Menu(MainWindow::cmdZoom + 6);
    Picture(L"33-light-150");
    Menu(MainWindow::cmdLanguage + LANG_GERMAN);
    Picture(L"34-light-german-150");
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Menu(MainWindow::cmdZoom + 8);
    Picture(L"35-light-dark-200");
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Menu(MainWindow::cmdZoom + 4);
}
