// CKxDevUI_Base: the abstract root of every control.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {
class Binding;
class Creation;
}  // namespace kx::ui

// Where a control says that what was typed or chosen is not allowed: in a message box, or in the log only.
enum class EKxComplaint { Shown, Logged };

// Holds one control's window handle, nominal size, title, id and state, and gives all controls one set of operations.
// It makes no window itself: Create is left to each control.
//
// Sizes are nominal: unzoomed pixels, -1 while the control has none. Operations on the window pass the handle to the
// platform as it is, so before Create they do nothing.
//
// Everything happens on the thread that made the first control; a second one is told of in the log. Once there is a
// window, the library stays loaded until the process ends (kx_module.h).
//
// The order of the virtual operations is part of the binary interface: hosts derive from the concrete controls.
class KXDEVUI_API CKxDevUI_Base {
public:
    // No window, no nominal size, enabled, visible, no title, id 0.
    CKxDevUI_Base();
    // The same with a nominal size. The order is (height, width), the reverse of ResizeWindow: hosts rely on it.
    CKxDevUI_Base(long height, long width);
    // The copy refers to the same window; the window's messages go on to the object that made it.
    CKxDevUI_Base(const CKxDevUI_Base& other);
    CKxDevUI_Base& operator=(const CKxDevUI_Base& other) = default;

    // Never destroys the window; one that is still bound to this object is cut loose from it.
    virtual ~CKxDevUI_Base();

    // Makes the control's window at (x, y) in the parent's client area, cx by cy pixels; returns it, or null on
    // failure. What a negative size and the two flags mean is told by each control.
    virtual HWND Create(HWND parent, long x, long y, long cx, long cy, bool visible, bool enabled) = 0;

    // The logical enabled state. Here SetEnabled only stores it; controls pass it on to their windows.
    virtual bool GetEnabled();
    virtual void SetEnabled(bool enable);

    // The logical visibility; SetVisible shows or hides the window when the state differs.
    virtual bool GetVisible();
    virtual void SetVisible(bool visible);

    // The title, which is not the window's text here; controls that show a title do more. Null is the empty title.
    virtual CKxStringW GetTitle();
    virtual void SetTitle(const wchar_t* title);

    // Gives the window the keyboard focus.
    virtual void SetFocus();

    // Switches painting off or on (WM_SETREDRAW); switching on repaints nothing by itself.
    virtual void SetRedraw(bool redraw);

    // The nominal size, whatever the window's own size is. Null is ignored.
    virtual void GetWindowSize(SIZE* size);

    // Invalidates the window with its frame and children; painting follows with the next WM_PAINT.
    virtual void RefreshWindow();

    // The window's place in its parent's client area, in pixels on the screen. Null pointers are skipped; without a
    // window the answer is 0.
    virtual void GetWindowPosition(long* x, long* y);
    virtual void GetWindowRectangle(RECT* rect);

    // Moves the window to (x, y) and gives it its nominal size, unzoomed whatever the zoom. -1 keeps a coordinate.
    virtual void MoveWindow(long x, long y);

    // Moves the window from where it is, with the size that it has; the nominal size stays.
    virtual void MoveWindowRelative(long dx, long dy);

    // Sets nominal and window size. -1 takes the window's present width or height.
    virtual void ResizeWindow(long cx, long cy);

    // Adds to the nominal size, a size of -1 included, and gives the window the sum.
    virtual void ResizeWindowRelative(long dcx, long dcy);

    // Offers a turn of the mouse wheel (parameters of WM_MOUSEWHEEL); true when the control has used it. Here false.
    virtual bool HandleMouseWheel(WPARAM wParam, LPARAM lParam);

    // The window, so that a control can stand wherever a handle is wanted; null before Create.
    operator HWND() const noexcept { return m_hWnd; }

    // The nominal width and height times the GUI zoom, rounded half away from zero.
    long GetWidth() const;
    long GetHeight() const;

    // The window's place in its parent, as GetWndX and GetWndY tell it.
    long GetPositionX() const;
    long GetPositionY() const;

    // The id that the host gave the control. Child windows get it when they are made.
    int GetId() const noexcept { return m_id; }
    void SetId(int id) noexcept { m_id = id; }

    // Whether Tab stops at the control's window (WS_TABSTOP). Controls are made as their pages say, most of them
    // without; a host whose users work by keys switches it on after Create. Without a window nothing happens.
    void SetTabStop(bool stop);

protected:
    // Puts the window directly before `next` in the Z order, and so in the tab order of a dialog: used when a control
    // takes the place of a dialog's placeholder.
    void CorrectZOrder(HWND next);

    // Tells the user, or the log, that something was wrong. The text of `labelWindow`, with a colon, opens the message,
    // which is cut to 999 characters. With `showMessageBox` an error box owned by the control shows it, otherwise the
    // log gets it when its detail is on. In the end `focusAfter` gets the keyboard focus. Every window may be null.
    //
    // Where a window is just losing the focus, the box is posted: it comes when that is over, after this has returned,
    // if the control's window and `focusAfter` are still there. While one stands or waits there is no second one for a
    // focus that is lost, and `focusAfter` does not get it: the box itself takes the focus.
    void ReportError(const wchar_t* text, bool showMessageBox, HWND focusAfter, HWND labelWindow);

    // The window, null before Create and after its end; the nominal size in unzoomed pixels; the logical states; the
    // title; the id.
    HWND m_hWnd = nullptr;
    long m_width = -1;
    long m_height = -1;
    bool m_enabled = true;
    bool m_flag = false;  // copied with the rest; free for controls
    bool m_visible = true;
    CKxStringW m_title;
    int m_id = 0;

private:
    friend class kx::ui::Binding;
    friend class kx::ui::Creation;
};
