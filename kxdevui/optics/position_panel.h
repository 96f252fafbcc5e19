// What the panels with positions (nosepiece, filter wheel, switcher) are made of: a window with a group frame or a
// title, buttons for the positions, and a setup button.
//
// A panel has one PositionPanel and gives it the messages of its window and of its buttons. The panel knows what a
// position looks like and what a click means; everything else is here.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

class Creation;
struct Message;

// The ids of the parts that all panels have. Those of the buttons are each panel's own.
inline constexpr int kFrameId = 10000;
inline constexpr int kTitleId = 10100;
inline constexpr int kSetupId = 10500;

// No panel shows more.
inline constexpr int kMaxPositions = 16;

// The windows of a panel, and what they have in common. All measures are unzoomed pixels in the panel's client area;
// the GUI zoom is applied when the layout is finished, and again when it changes.
class KXDEVUI_API PositionPanel {
public:
    // Nothing yet.
    PositionPanel() = default;
    PositionPanel(const PositionPanel&) = delete;
    PositionPanel& operator=(const PositionPanel&) = delete;
    ~PositionPanel() = default;

    // ---- The window ----

    // The names of the window class and, for the log, of the C++ class.
    struct Names {
        // As the platform knows it.
        const wchar_t* window;
        // As the log tells it.
        const wchar_t* object;
    };
    // Makes the panel's window, visible, with the default GUI font, and marks it so that a container takes it for a
    // plain window. Null when it could not be made, or when somebody who heard of it destroyed it, or the panel.
    HWND Open(const Creation& creation, ATOM& atom, const Names& names, WNDPROC procedure, HWND parent, POINT at,
              SIZE size, void* object);
    // Destroys window and children, silently; also from within a click on one of them.
    void Close();

    // Null while there is none.
    HWND Window() const noexcept { return m_window; }
    // Whether the window is enabled, which a container may change without asking the panel (WM_ENABLE).
    bool IsEnabled() const noexcept { return IsWindowEnabled(m_window) != FALSE; }

    // ---- The parts: made in this order ----

    // Destroys all children; one that has the focus gives it to its successor when the layout is finished.
    void RemoveParts();
    // The group frame around a panel of that size, or, oversized, two pixels outside of it to the left and the right.
    void AddFrame(const wchar_t* title, SIZE size, bool oversize, WNDPROC procedure, void* object);
    // A title beside the buttons.
    void AddTitle(const wchar_t* title, const RECT& place, bool left);
    // A button; positions are counted in the order in which they are added, or, reversed, from the last one on. Its
    // procedure gives the messages to HandleButton.
    HWND AddButton(int id, const wchar_t* text, const RECT& place, DWORD style, WNDPROC procedure, void* object);
    // The setup button "..." at its end.
    void AddSetup(const RECT& place, bool enabled, WNDPROC procedure, void* object);
    // Whether the first position stands last, at the right end of the last row; before the frame. Off at first.
    void SetReversed(bool reversed) noexcept { m_reversed = reversed; }
    // Whether the second press of a double click is a click like the first. Off at first: a double click asks once.
    void SetEveryPress(bool every) noexcept { m_everyPress = every; }
    // The font of all buttons, the setup button's as well.
    void SetButtonFonts(HFONT font) const;
    // Any other child.
    HWND AddChild(const wchar_t* className, int id, const wchar_t* text, const RECT& place, DWORD style);
    // The parts are complete: sizes the window, marks it, applies the GUI zoom and sets the titles' fonts. The frame
    // gets the height `frameHeight`; 0 leaves it.
    void Finish(SIZE size, long frameHeight, bool boldTitles);

    // Null where there is no such part.
    HWND Frame() const noexcept { return m_frame; }
    HWND Title() const noexcept { return m_title; }
    HWND Setup() const noexcept { return m_setup; }
    HWND ButtonAt(long position) const noexcept;
    std::span<const HWND> Buttons() const noexcept { return m_buttons; }

    // ---- Working it ----

    // The text of frame and title.
    void SetTitle(const wchar_t* title);
    // Whether the Tab key stops at the panel; the focus goes to the button of the position given, or the first that can
    // be used. Off at first.
    void SetTabStop(bool stop);
    void SetFocusPosition(long position) noexcept { m_focusPosition = position; }
    // Repaints the buttons of the positions.
    void RedrawButtons() const;
    // Enables or disables the frame, if there is one.
    void EnableFrame(bool enable) const;

    // ---- Messages ----

    // Of the panel's window: creation, end, background, focus, zoom, colours of texts, and the repaint when it is
    // enabled or disabled.
    std::optional<LRESULT> HandleWindow(const Message& message);
    // Of a button: the pointer over the setup button, arrow keys (`columns` buttons stand in a row), Enter, and the
    // second press of a double click.
    std::optional<LRESULT> HandleButton(const Message& message, int columns);
    // Of the frame: paints it around the buttons, and leaves out what stands on it.
    std::optional<LRESULT> HandleFrame(const Message& message);

    // The height of a title of the frame, unzoomed.
    static long TitleHeight(bool bold);

    // Paints the setup button as WM_DRAWITEM asks.
    void DrawSetup(const DRAWITEMSTRUCT& item) const;
    // The mark of the current position, to be drawn first; of the button with the focus, to be drawn last.
    static void DrawCurrent(HDC dc, const RECT& area);
    static void DrawFocus(HDC dc, const RECT& area, const DRAWITEMSTRUCT& item);

private:
    LRESULT PaintFrame(const Message& message) const;
    void MoveFocus(HWND from, int step) const;
    HWND FocusButton() const;

    HWND m_window = nullptr;
    HWND m_frame = nullptr;
    HWND m_title = nullptr;
    HWND m_setup = nullptr;
    std::vector<HWND> m_buttons;
    long m_focusPosition = -1;
    bool m_setupHovered = false;
    bool m_tabStop = false;
    bool m_reversed = false;
    bool m_everyPress = false;
    int m_lostFocus = 0;  // the id of the child that had it
};

}  // namespace kx::ui
