// The tour: drives the host with injected mouse and keyboard input, as a user would, and takes pictures on the way.
//
// A step is taken whenever a timer finds the message queue empty; timers run inside menus and modal dialogs too, so the
// tour goes through them like everything else.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

class MainWindow;

class Tour {
public:
    // Of all pages, or of one by its name in the plan.
    Tour(MainWindow& window, std::wstring folder, std::wstring page)
        : m_window(window), m_folder(std::move(folder)), m_page(std::move(page)) {}
    void Start();
    // Whether a step could not be taken or a picture not be written.
    bool Failed() const { return m_failed; }

private:
    using Find = std::function<HWND()>;

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void TakeStep();

    // What is done, page by page; each page has a file in tours/.
    void Plan();
    void PlanStand();
    void PlanPanels();
    void PlanDialog();
    void PlanLooks();
    void PlanControls();
    void PlanSliders();
    void PlanFields();
    void PlanRadio();
    void PlanTable();
    void PlanOptics();
    void PlanZSeries();
    void PlanFocus();
    void PlanLight();
    void PlanColors();
    void PlanShutters();
    void PlanModeShutter();
    void PlanField();
    void PlanLamps();
    void PlanHalogen();
    void PlanArc();
    void PlanLasers();
    void PlanBench();

    void Do(std::function<void()> step);
    // Waits until the target can be seen.
    void Await(const Find& target);
    void MoveTo(const Find& target);
    void Click(const Find& target);
    // Holds the left button down on it until then.
    void Hold(const Find& target, std::function<bool()> until);
    // The menu is left open; the next steps are taken inside it.
    void RightClick(const Find& target);
    void Drag(const Find& target, int fromPercent, int toPercent);
    void Wheel(const Find& target, int notches);
    void Key(WORD key);
    void Type(const wchar_t* text);
    void Menu(int command);
    void TurnTo(const std::function<int()>& page);
    // A control of the dialog that is open.
    HWND DialogItem(int id) const;
    // The page shown: disabled, dark and in high contrast, at 150 and 200 %, in another language; ends as it began.
    void Looks(const std::wstring& name, int language);
    void Picture(const std::wstring& name);
    void Fail(const wchar_t* what);

    MainWindow& m_window;
    std::wstring m_folder;
    std::wstring m_page;  // empty: all
    // A step that answers false is taken again at the next tick.
    std::vector<std::function<bool()>> m_steps;
    std::size_t m_next = 0;
    int m_waited = 0;  // ticks for the same step
    bool m_failed = false;
};
