#include "tour.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "event_log.h"
#include "input.h"
#include "main_window.h"
#include "pages/stand_page.h"
#include "picture.h"

namespace {

// One tour a process; the timer procedure has no parameter for it.
Tour* s_tour = nullptr;
constexpr UINT kStepMilliseconds = 40;
constexpr int kMostTicks = 100;

// Along the longer side.
POINT PointIn(HWND window, int percent) {
    RECT rect{};
    GetWindowRect(window, &rect);
    const LONG width = rect.right - rect.left, height = rect.bottom - rect.top;
    if (height > width) return {rect.left + width / 2, rect.top + height * percent / 100};
    return {rect.left + width * percent / 100, rect.top + height / 2};
}

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

void Tour::Hold(const Find& target, std::function<bool()> until) {
    MoveTo(target);
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_LEFTDOWN); });
    m_steps.push_back(std::move(until));
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_LEFTUP); });
}

void Tour::RightClick(const Find& target) {
    MoveTo(target);
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_RIGHTDOWN); });
    Do([target] { SendMouse(PointIn(target(), 50), MOUSEEVENTF_RIGHTUP); });
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

HWND Tour::DialogItem(int id) const { return GetDlgItem(GetLastActivePopup(m_window.Handle()), id); }

void Tour::TurnTo(const std::function<int()>& page) {
    Do([this, page] { PostMessageW(m_window.Handle(), WM_COMMAND, static_cast<WPARAM>(page()), 0); });
}

void Tour::Looks(const std::wstring& name, int language) {
    // Away from the controls, whose tooltips come in their own time.
    Do([] { SendMouse({2, 2}, 0); });
    Menu(MainWindow::cmdEnabled);
    Picture(name + L"-disabled");
    // Where visual styles are to be seen, and the lack of them.
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Picture(name + L"-system-disabled");
    Menu(MainWindow::cmdEnabled);
    Picture(name + L"-system");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Picture(name + L"-dark");
    Menu(MainWindow::cmdZoom + 6);
    Picture(name + L"-dark-150");
    Menu(MainWindow::cmdScheme + eKxColorScheme_HighContrast);
    Menu(MainWindow::cmdZoom + 8);
    Picture(name + L"-high-contrast-200");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Light);
    Picture(name + L"-light-200");
    Menu(MainWindow::cmdAutoScheme);
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdLanguage + language);
    Picture(name + L"-translated");
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
}

void Tour::Picture(const std::wstring& name) {
    Do([this] { RedrawWindow(m_window.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
    Do([this, name] {
        if (!SavePicture(m_window.Handle(), m_folder + L"\\" + name + L".png")) Fail(L"a picture cannot be written");
    });
}

// ---- The plan ------------------------------------------------------------------------------------------------------

void Tour::PlanStand() {
    TurnTo([this] { return m_window.CommandOf<StandPage>(); });
    PlanPanels();
    PlanDialog();
    PlanLooks();
}

void Tour::Plan() {
    Do([this] { SetForegroundWindow(m_window.Handle()); });
    Picture(L"01-start");
    static constexpr std::pair<const wchar_t*, void (Tour::*)()> pages[] = {
        {L"stand", &Tour::PlanStand}, {L"controls", &Tour::PlanControls}, {L"optics", &Tour::PlanOptics},
        {L"z", &Tour::PlanZSeries},   {L"light", &Tour::PlanLight},       {L"colors", &Tour::PlanColors},
        {L"lamps", &Tour::PlanLamps}, {L"lasers", &Tour::PlanLasers},     {L"bench", &Tour::PlanBench},
        {L"focus", &Tour::PlanFocus}};
    bool planned = false;
    for (const auto& [name, plan] : pages) {
        if (m_page.empty() || m_page == name) planned = true, (this->*plan)();
    }
    if (!planned) Fail(L"there is no such page");
    Do([this] {
        Log().Add(L"Tour", m_failed ? L"ended with failures" : L"ended well");
        DestroyWindow(m_window.Handle());
    });
}
