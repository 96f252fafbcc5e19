#include <kxdevui/controls/hpot_slider.h>

#include <kxdevui/controls/devgui_editbox.h>
#include <kxsystem/kx_time.h>

namespace kx::hpot {

namespace {

constexpr unsigned kQuickClick = 100;  // milliseconds

// Half of the slider's, unless it is given.
long ThumbHeight(long given, long cy) { return given == -1 ? cy / 2 : given; }

}  // namespace

void Drag::Begin(POINT at, long position) {
    *this = {.active = true, .press = at, .last = at, .start = position, .pressTime = KX_GetTimeCounter()};
}

bool Drag::Follow(POINT at) {
    if (at.x == last.x && at.y == last.y) return false;
    last = at;
    return moved = true;
}

long Drag::PositionAt(POINT at) const { return ui::Sum(start, ui::Difference(at.x, press.x)); }

bool Drag::IsQuickClick(POINT at) const {
    return !moved && at.x == press.x && at.y == press.y && KX_GetTimeCounter() - pressTime < kQuickClick;
}

ui::ControlSpec SpecOf(const wchar_t* name, const wchar_t* object, WNDPROC procedure) {
    return {.name = name, .object = object, .procedure = procedure, .style = 0, .font = false};
}

void SetSize(HWND window, const Nominal& nominal, long cx, long cy, long thumb) {
    nominal.cx = cx;
    nominal.cy = cy;
    nominal.thumb = ThumbHeight(thumb, cy);
    if (window) SetWindowPos(window, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ResizeWindow(CKxDevUI_Base& slider, const Nominal& nominal, long cx, long cy) {
    const long thumb = cy == nominal.cy ? nominal.thumb : -1;
    slider.CKxDevUI_Base::ResizeWindow(cx, cy);
    nominal.thumb = ThumbHeight(thumb, nominal.cy);
}

bool TakeMouse(const CKxDevUI_Base& slider) {
    const Watch watch(&slider);
    const HWND window = slider;
    // Both tell other windows, whose handlers may do anything.
    ::SetFocus(window);
    if (watch) SetCapture(window);
    return watch && GetCapture() == window;
}

bool BeginsNumber(WPARAM character) { return (character >= L'0' && character <= L'9') || character == L'-'; }

bool TypeBeside(HWND slider, WPARAM character) {
    if (!BeginsNumber(character)) return false;
    HWND next = GetWindow(slider, GW_HWNDNEXT);
    while (next && (!IsWindowVisible(next) || (SendMessageW(next, WM_GETDLGCODE, 0, 0) & DLGC_STATIC)))
        next = GetWindow(next, GW_HWNDNEXT);
    if (!IsWindowEnabled(next) || !dynamic_cast<CKxDevUI_EditBox*>(ui::ControlOf(next))) return false;
    // Its host hears of the focus, and may end it.
    SetFocus(next);
    const HWND edit = GetFocus();
    if (!IsChild(next, edit)) return true;
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, WM_CHAR, character, 1);
    return true;
}

}  // namespace kx::hpot
