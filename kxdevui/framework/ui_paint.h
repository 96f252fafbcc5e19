// For authors of controls: double-buffered painting, and what else belongs to a window rather than to its object.
#pragma once

#include <windows.h>

#include <memory>

#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/framework/ui_gdi.h>

namespace kx::ui {

struct Message;

// What a window owns. It is made when first asked for and freed with the window; whoever paints holds on to it, because
// a child's painting may run code that destroys the window.
struct WindowState {
    bool painting = false;       // it and its children are being painted
    HDC erased = nullptr;        // the memory DC that it was last asked to erase
    bool hovered = false;        // a leave notice has been asked for
    WNDPROC previous = nullptr;  // of a subclassed child
    void* object = nullptr;      // what ByState finds
    int running = 0;             // calls of that procedure that have not returned
    bool orphaned = false;       // its parent has gone meanwhile
    EKxLight light{};            // what a host has named it
    KxMeasured measured;         // what a host has told of its values
    std::shared_ptr<void> own;   // what else the control of this window keeps with it
};
// The state of a window, made when there is none.
KXDEVUI_API std::shared_ptr<WindowState> StateOf(HWND window);
// The same for a window that may have none yet; null then.
KXDEVUI_API std::shared_ptr<WindowState> FindState(HWND window) noexcept;
KXDEVUI_API void DropState(HWND window) noexcept;

// A reference to a drawing function, for the length of a call.
class DrawRef {
public:
    // The function has to outlive the reference.
    template <class Draw>
    DrawRef(const Draw& draw) noexcept : m_draw(&draw), m_call(&Call<Draw>) {}
    // Draws.
    void operator()(HDC dc, const RECT& area) const { m_call(m_draw, dc, area); }

private:
    template <class Draw>
    static void Call(const void* draw, HDC dc, const RECT& area) {
        (*static_cast<const Draw*>(draw))(dc, area);
    }
    const void* m_draw;
    void (*m_call)(const void*, HDC, const RECT&);
};

// What Paint does beside filling and drawing.
struct PaintMode {
    bool defaultFirst = false;  // the default procedure hears of it before the children and the control paint
    // Visible children are kept out of the picture and told to paint themselves at once, but for those of other
    // threads, which would be waited for and are painted by the system; where a group box stands, the background is
    // filled before. A WM_PRINTCLIENT by which a child asks what is behind it gets the background alone.
    bool children = false;
    // Visible windows beside this one that stand on it, a frame around them, are kept out of the picture and are to
    // repaint.
    bool siblings = false;
    bool buffered = true;  // not needed where nothing is drawn on the background: one fill cannot flicker
};

// Answers WM_PAINT and WM_PRINTCLIENT: fills a buffer with the brush, draws into it, and copies it to the DC of the
// message, or to the window. A DC that was handed in gets the whole client area. Without the buffer, not wanted, not to
// be had or in use by a window whose drawing has led to this one's, everything is drawn straight to the target.
KXDEVUI_API LRESULT Paint(const Message& message, PaintMode mode, HBRUSH background, DrawRef draw);

// Lets go of the buffer, which is kept as large as it was ever wanted and is the thread's: the next to paint makes it.
KXDEVUI_API void DropPaintBuffer() noexcept;

// Answers WM_ERASEBKGND: nothing is erased, painting fills everything. With PaintMode::children it has to be this.
KXDEVUI_API LRESULT Erase(const Message& message);

// The same for an owner-drawn item; `draw` gets the item's rectangle moved to (0, 0). Nothing is drawn for one that is
// empty or larger than a window can be.
KXDEVUI_API void PaintItem(const DRAWITEMSTRUCT& item, HBRUSH background, DrawRef draw);

// What an owner-drawn button is asked to look like, as EKxButtonLook; hot where TrackHover follows the mouse over it.
KXDEVUI_API int ButtonLook(const DRAWITEMSTRUCT& item);

// Whether an owner-drawn item has the focus and is to show it (kx_cues.h).
KXDEVUI_API bool ShowsFocus(const DRAWITEMSTRUCT& item);

}  // namespace kx::ui
