// What sliders do alike with their window, the mouse and the keys, whatever their values and however many their thumbs.
// Internal.
#pragma once

#include <windows.h>

#include <windowsx.h>

#include <map>
#include <memory>

#include <kxbaseui/kx_cues.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::hpot {

// ---- The window ----------------------------------------------------------------------------------------------------

// Over a call to the host: whether the object is still there, with the same window.
class Watch {
public:
    // From now on.
    explicit Watch(const CKxDevUI_Base* slider) noexcept : m_slider(slider), m_alive(slider), m_window(*slider) {}
    // Still.
    explicit operator bool() const noexcept { return m_alive && static_cast<HWND>(*m_slider) == m_window; }

private:
    const CKxDevUI_Base* m_slider;
    ui::Alive m_alive;
    HWND m_window;
};

// A thumb that is dragged: where that began, which position the thumb had there, where the mouse was last.
struct Drag {
    bool active = false;
    POINT press{};
    POINT last{};
    long start = 0;
    long before = 0;  // the press, which may have moved the thumb
    unsigned pressTime = 0;
    bool moved = false;

    // The button is down.
    void Begin(POINT at, long position);
    // False when the mouse is where it was: the platform repeats moves that lead nowhere, after a press always.
    bool Follow(POINT at);
    // Where the mouse leads the thumb.
    long PositionAt(POINT at) const;
    // Whether a release there, now, makes a click of it.
    bool IsQuickClick(POINT at) const;
};

// What belongs to the window rather than to the object, which a host may copy.
struct SliderPart {
    ScaleImage scale;
    // Whether the window has the focus; asking the platform takes longer than painting.
    bool focused = false;
    Drag drag;

    // For RedrawWindow: while the mouse moves there is no end of messages that come before a WM_PAINT.
    UINT RedrawFlags() const { return drag.active ? UINT{RDW_UPDATENOW} : 0; }
};

// The part of a window, made when there is none; null for what is no window of these sliders.
template <class Part, class Control>
Part* PartOf(const std::map<HWND, Control*>& sliders, HWND window) {
    // A copy may hold the handle of a window that is long gone.
    if (!sliders.contains(window)) return nullptr;
    const auto state = ui::StateOf(window);
    if (!state->own) state->own = std::make_shared<Part>();
    return static_cast<Part*>(state->own.get());
}

// The nominal size of a slider and the height of its thumb, in the slider.
struct Nominal {
    long& cx;
    long& cy;
    long& thumb;
};

// The window class of a slider. Without CS_DBLCLKS, so that every second quick click is a press too.
ui::ControlSpec SpecOf(const wchar_t* name, const wchar_t* object, WNDPROC procedure);

// Create, SetSize and ResizeWindow of sliders, but for what then is to be drawn.
template <class Control>
HWND Create(Control* slider, ATOM& atom, const ui::ControlSpec& spec, const Nominal& nominal, HWND parent, POINT at,
            SIZE size) {
    return ui::Creation::Of(slider, [&](const ui::Creation& creation) {
        if (nominal.cx < 0) nominal.cx = 150;
        if (nominal.cy < 0) nominal.cy = 40;
        return creation.Window(slider, atom, spec, parent, at, size);
    });
}
void SetSize(HWND window, const Nominal& nominal, long cx, long cy, long thumb);
void ResizeWindow(CKxDevUI_Base& slider, const Nominal& nominal, long cx, long cy);

// Gives a slider that was pressed the focus and the capture; false when one who was told of that has ended it, or has
// taken the capture.
bool TakeMouse(const CKxDevUI_Base& slider);

// Whether a character can be a number's first.
bool BeginsNumber(WPARAM character);
// Begins a number with this character in the edit box that comes next to the slider, labels left aside; false where
// there is none that could be used.
bool TypeBeside(HWND slider, WPARAM character);

// ---- The messages --------------------------------------------------------------------------------------------------

// The way of a message to what one kind of slider, `Self`, has of its own. Self derives from this and has
//
//     slider                 the control; its HandleMouseWheel and Update are called
//     Part, IsUsable         its SliderPart, null without window; whether the user can move something
//     Sized, Place           the window has another size; so, and another look
//     LookChanged            all is to be drawn anew
//     OnPaint, OnKey         WM_PAINT and WM_PRINTCLIENT; WM_KEYDOWN, for which MoveByKey serves
//     MoveBy                 a key moves the thumb
//     Grab                   a press: chooses the thumb of which the following speak
//     Position, ThumbRect    of that thumb
//     TrackLeft              where the position 0 is
//     ShowThumbs             draws them where they are now
//     PutBack                places the thumbs as their values say
//     Hover, OnMouseLeave    the pointer moves or leaves without a drag
//     Tell                   what screen readers are told
//     Drop, ButtonUp         tell the host; Drop is false when that has ended the slider
//
// and may have the ones below that do nothing.
template <class Self>
class Slider {
public:
    ui::Handled Handle(const ui::Message& message) {
        const auto [window, id, wParam, lParam] = message;
        const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        switch (id) {
        case WM_SIZE: Own().Sized(); return std::nullopt;
        case ui::WM_KX_ZOOM_CHANGED:
            ui::ApplyZoom(window);
            Own().Place();
            return std::nullopt;
        case WM_ENABLE:
        case WM_SYSCOLORCHANGE: Own().LookChanged(); return std::nullopt;
        case WM_SETFOCUS:
        case WM_KILLFOCUS: OnFocus(id == WM_SETFOCUS); return std::nullopt;
        case WM_UPDATEUISTATE: {
            // What the window knows of it is with the default procedure.
            const LRESULT result = message.Default();
            Own().ShowThumbs();
            return result;
        }
        case WM_PAINT:
        case WM_PRINTCLIENT: Own().OnPaint(message); return 0;
        case WM_ERASEBKGND: return 1;
        case WM_GETDLGCODE: return DLGC_WANTARROWS | CodeFor(reinterpret_cast<const MSG*>(lParam));
        case WM_KEYDOWN: return wParam == VK_ESCAPE && IsDragged() ? CancelDrag() : Own().OnKey(wParam);
        case WM_CHAR: return !IsDragged() && TypeBeside(window, wParam) ? ui::Handled(0) : std::nullopt;
        case WM_MOUSEWHEEL: return OnWheel(message);
        case WM_LBUTTONDOWN: OnLButtonDown(at); return 0;
        case WM_MOUSEMOVE: OnMouseMove(message); return 0;
        case WM_LBUTTONUP: OnLButtonUp(at); return 0;
        case WM_MOUSELEAVE: Own().OnMouseLeave(message); return 0;
        case WM_CAPTURECHANGED:
            if (reinterpret_cast<HWND>(lParam) != window) OnCaptureLost();
            return std::nullopt;
        case WM_KX_DESCRIBE: return ui::Describe(message, [this](KxAccess& access) { Own().Tell(access); });
        default: return std::nullopt;
        }
    }

    void OnLButtonDown(POINT at) {
        SliderPart* part = Own().IsUsable() && TakeMouse(Own().slider) ? Own().Part() : nullptr;
        if (!part) return;
        Own().Grab(at);
        long& position = Own().Position();
        const RECT thumb = Own().ThumbRect();
        const long before = position;
        if (!PtInRect(&thumb, at)) position = ui::Difference(at.x, Own().TrackLeft());
        part->drag.Begin(at, position);
        part->drag.before = before;
        Own().ShowThumbs();
    }

    void OnMouseMove(const ui::Message& message) {
        SliderPart* part = Own().Part();
        if (!part) return;
        const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
        if (!part->drag.active) return Own().Hover(message);
        if (!part->drag.Follow(at)) return;
        Own().Position() = part->drag.PositionAt(at);
        Own().slider.Update(false, true, true);
    }

    void OnLButtonUp(POINT at) {
        const Watch watch(&Own().slider);
        SliderPart* part = Own().Part();
        if (part && part->drag.active) {
            // First of all: the capture that is given back here is no loss.
            part->drag.active = false;
            const bool quick = part->drag.IsQuickClick(at);
            const long position = part->drag.PositionAt(at);
            ReleaseCapture();
            if (!watch) return;
            Own().Position() = position;
            Own().Release(quick);
            Own().slider.Update(false, true, true);
            if (!watch || !Own().Drop(watch)) return;
        }
        Own().ButtonUp();
    }

    // A key's part in moving the thumb: nothing when it has none, or the slider cannot be used.
    ui::Handled MoveByKey(WPARAM key) {
        const auto move = Own().IsUsable() ? MoveOf(key) : std::nullopt;
        if (!move) return std::nullopt;
        const Watch watch(&Own().slider);
        KX_ShowFocusFromNowOn(Own().slider);
        if (watch) Own().MoveBy(*move);
        return 0;
    }

    bool ShowsFocus() const {
        const SliderPart* part = Own().Part();
        return part && part->focused && KX_ShowsFocus(Own().slider);
    }

    void ScaleChanged() {
        if (SliderPart* part = Own().Part()) part->scale.stale = true;
    }

    // The window gets or loses the focus; keys wanted beside the arrows, given WM_GETDLGCODE's; the end of a drag.
    void FocusChanged(bool) {}
    LRESULT KeysWanted(const MSG*) const { return 0; }
    void Release(bool) {}

private:
    Self& Own() noexcept { return static_cast<Self&>(*this); }
    const Self& Own() const noexcept { return static_cast<const Self&>(*this); }

    bool IsDragged() const {
        const SliderPart* part = Own().Part();
        return part && part->drag.active;
    }

    // The dialog manager would close the host's dialog with the key that ends a drag, and take a digit for a letter of
    // some label.
    LRESULT CodeFor(const MSG* asked) const {
        const bool escapes = asked && asked->message == WM_KEYDOWN && asked->wParam == VK_ESCAPE && IsDragged();
        const bool types = asked && asked->message == WM_CHAR && BeginsNumber(asked->wParam);
        return Own().KeysWanted(asked) | (escapes || types ? DLGC_WANTMESSAGE : 0);
    }

    // The host hears of the way back as of every step.
    ui::Handled CancelDrag() {
        const Watch watch(&Own().slider);
        Own().Position() = Own().Part()->drag.before;
        Own().slider.Update(false, true, true);
        if (watch && IsDragged()) ReleaseCapture();
        return 0;
    }

    // A step is a request to a device, however fine the wheel.
    ui::Handled OnWheel(const ui::Message& message) {
        const int notches = KX_TakeWheelNotches(message.window, message.wParam);
        if (notches == 0) return 0;
        const WPARAM whole = MAKEWPARAM(LOWORD(message.wParam), notches * WHEEL_DELTA);
        if (Own().slider.HandleMouseWheel(whole, message.lParam)) return 0;
        // To the windows around goes what has been collected, not its last part.
        return DefWindowProcW(message.window, message.id, whole, message.lParam);
    }

    void OnFocus(bool focused) {
        SliderPart* part = Own().Part();
        if (!part) return;
        part->focused = focused;
        Own().FocusChanged(focused);
        Own().ShowThumbs();
    }

    void OnCaptureLost() {
        SliderPart* part = Own().Part();
        if (!part || !part->drag.active) return;
        part->drag.active = false;
        Own().PutBack();
        Own().ShowThumbs();
    }
};

}  // namespace kx::hpot
