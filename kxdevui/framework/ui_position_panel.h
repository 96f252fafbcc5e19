// For authors of controls: what the panels with positions (nosepiece, filter wheel, switcher) are made of, a window
// with a group frame or a title, buttons for the positions, and a setup button.
//
// A panel has one PositionPanel, behind its source file, and gives it the messages of its window and of its buttons.
// The panel knows what a position looks like and what a click means; everything else is here.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <utility>
#include <vector>

#include <kxdevui/framework/devgui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {

// The ids of the parts that all panels have. Those of the buttons are each panel's own.
inline constexpr int kFrameId = 10000;
inline constexpr int kSetupId = 10500;

// No panel shows more.
inline constexpr int kMaxPositions = 16;

// How a panel's windows are made, and which of its window procedures are whose.
struct PanelSpec {
    const wchar_t* name;    // of the window class
    const wchar_t* object;  // of the C++ class, for the log
    WNDPROC window;         // of the panel
    WNDPROC button;         // of each button
    WNDPROC frame;          // of the group frame
};

// The windows of a panel, and what they have in common. All measures are unzoomed pixels in the panel's client area;
// the GUI zoom is applied when the layout is finished, and again when it changes.
class KXDEVUI_API PositionPanel {
public:
    // No window yet. `object` is the panel, which Life knows; the atom is its class's.
    PositionPanel(const PanelSpec& spec, ATOM& atom, void* object, const CKxStringW& title);
    PositionPanel(const PositionPanel&) = delete;
    PositionPanel& operator=(const PositionPanel&) = delete;
    ~PositionPanel() = default;

    // ---- The window ----

    // Makes the panel's window, visible, with the default GUI font, marks it so that a container takes it for a plain
    // window, and has `make` fill it. An earlier one is ended first. What is not negative of the size becomes the
    // panel's. Null when there is no window, or when somebody who heard of it has ended it, or the panel.
    template <class T, class Make>
    HWND Create(T* panel, HWND parent, POINT at, SIZE size, long& width, long& height, Make&& make) {
        return Creation::Of(panel, [&](const Creation& creation) -> HWND {
            if (size.cx >= 0) width = size.cx;
            if (size.cy >= 0) height = size.cy;
            if (!Open(creation, parent, at, {width, height})) return nullptr;
            make();
            return creation ? m_window : nullptr;
        });
    }
    // Destroys window and children, silently; also from within a click on one of them.
    void Close();

    // Null while there is none; the panel, which Life knows.
    HWND Window() const noexcept { return m_window; }
    const void* Object() const noexcept { return m_object; }
    // Whether the window is enabled, which a container may change without asking the panel (WM_ENABLE).
    bool IsEnabled() const noexcept { return IsWindowEnabled(m_window) != FALSE; }

    // ---- The parts: made in this order. Each may end the panel, which the maker of the children tells ----

    // Destroys all children; one that has the focus gives it to its successor when the layout is finished.
    void RemoveParts();
    // Tells whether window and panel are still there.
    Parts Children() const noexcept { return Parts(m_window, m_object); }
    // Any other child; null as well when it has ended the panel. Unlike those of other controls it can be used in a
    // window that is disabled: a panel draws what it is.
    HWND AddChild(const wchar_t* className, int id, const wchar_t* text, const RECT& place, DWORD style) const;
    // The group frame around a panel of that size, or, oversized, two pixels outside of it to the left and the right.
    void AddFrame(SIZE size, bool oversize);
    // The title beside the buttons.
    void AddTitle(const RECT& place, bool left);
    // The button of a position; null as above. Positions are counted in the order in which they are added, or,
    // reversed, from the last one on.
    HWND AddButton(int id, const wchar_t* text, const RECT& place, DWORD style);
    // The setup button "..." at its end.
    void AddSetup(const RECT& place, bool enabled);
    // Whether the first position stands last, at the right end of the last row; before the frame. Off at first.
    void SetReversed(bool reversed) noexcept { m_reversed = reversed; }
    // Whether the second press of a double click is a click like the first. Off at first: a double click asks once.
    void SetEveryPress(bool every) noexcept { m_everyPress = every; }
    // The font of all buttons, the setup button's as well.
    void SetButtonFonts(HFONT font) const;
    // The parts are complete: sizes the window, marks it, applies the GUI zoom and sets the titles' fonts. The frame
    // gets the height `frameHeight`; 0 leaves it.
    void Finish(SIZE size, long frameHeight, bool boldTitles);

    // Null where there is no such part.
    HWND Setup() const noexcept { return m_setup; }
    HWND ButtonAt(long position) const noexcept;
    std::span<const HWND> Buttons() const noexcept { return m_buttons; }

    // ---- Working it ----

    // The text of frame and title, shown at once, or for those that are made next.
    void SetTitle(const wchar_t* title);
    void KeepTitle(const CKxStringW& title) { m_title = title; }
    const CKxStringW& Title() const noexcept { return m_title; }
    // The current position, -1 for none, which is only held: whose button gets the focus, or the first that can be
    // used.
    void SetPosition(long position) noexcept;
    long Position() const noexcept { return m_position; }
    // Whether the Tab key stops at the panel; off at first.
    void SetTabStop(bool stop);
    // Where a button had the focus and has been disabled, one that can be used gets it, or else the panel: its owner
    // may end it then. The platform gives it to nobody.
    void KeepFocusUsable(HWND before) const;
    // The text of a position's tooltip, to which what is wrong with the device is added. Where it is empty and nothing
    // is wrong there is none. Its first line is the name of an owner-drawn button for screen readers.
    void SetTip(long position, const CKxStringW& tip);
    // That name, to make the button with; the number of the position where there is no tip.
    static CKxStringW NameFor(long position, const CKxStringW& tip);
    // Repaints the buttons of the positions.
    void RedrawButtons() const;
    // Enables or disables frame and title, also those that are made later.
    void EnableTitles(bool enable);

    // ---- The life of a request ----

    // Over the picture of a position's button: ring or hollow place, and the focus, which stays inside of them.
    void DrawOver(HDC dc, const RECT& area, const DRAWITEMSTRUCT& item, long position, bool enabled,
                  int ground = COLOR_BTNFACE) const;
    // What the device, or the host, tells. `changed` is called when it shows, beside what is repainted here.
    Activity& Requests() noexcept { return m_activity; }
    const Activity& Requests() const noexcept { return m_activity; }
    void SetRequestsChanged(std::function<void()> changed) { m_requestsChanged = std::move(changed); }
    // Whether a position is drawn as the current one.
    bool IsMarked(long position) const { return m_activity.LookOf(position) == PlaceLook::Current; }
    // After a callback without a flag that refuses: a reason refuses all the same.
    void Answered(const Activity::Question& question, long position) {
        if (question.HasReason()) m_activity.Refused(question, position);
    }

    // ---- Messages ----

    // Of the panel's window: creation, end, background, focus, zoom, colours of texts, and the repaint when it is
    // enabled or disabled.
    Handled HandleWindow(const Message& message);
    // Of a button: the pointer over the setup button, arrow keys (`columns` buttons stand in a row), Enter, and the
    // second press of a double click.
    Handled HandleButton(const Message& message, int columns);
    // Of the frame: paints it around the buttons, and leaves out what stands on it.
    Handled HandleFrame(const Message& message);

    // The height of a title of the frame, unzoomed.
    static long TitleHeight(bool bold);

    // Paints the setup button as WM_DRAWITEM asks.
    void DrawSetup(const DRAWITEMSTRUCT& item) const;
    // The mark of the current position, to be drawn first; of the button that shows the focus, to be drawn last.
    static void DrawCurrent(HDC dc, const RECT& area, bool enabled);
    static void DrawFocus(HDC dc, const RECT& area, const DRAWITEMSTRUCT& item, int ground = COLOR_BTNFACE);

private:
    HWND Open(const Creation& creation, HWND parent, POINT at, SIZE size);
    LRESULT PaintFrame(const Message& message) const;
    LRESULT PaintTitle(const Message& message) const;
    Handled HandleStockButton(const Message& message) const;
    void TellButton(HWND button, KxAccess& access) const;
    void FillFace(HDC dc) const;
    void ShowRequests();
    void ShowTip(std::size_t position) const;
    void MoveFocus(HWND from, int step) const;
    HWND FocusButton() const;

    PanelSpec m_spec;
    ATOM& m_atom;
    void* m_object;
    CKxStringW m_title;
    HWND m_window = nullptr;
    HWND m_frame = nullptr;
    HWND m_titleWindow = nullptr;
    HWND m_setup = nullptr;
    std::vector<HWND> m_buttons;
    std::vector<CKxStringW> m_tips;
    CKxStringW m_remark;  // that is added to them
    std::function<void()> m_requestsChanged;
    Activity m_activity;
    long m_position = -1;
    bool m_setupHovered = false;
    bool m_tabStop = false;
    bool m_reversed = false;
    bool m_everyPress = false;
    bool m_titlesEnabled = true;
    int m_lostFocus = 0;  // the id of the child that had it
};

}  // namespace kx::ui
