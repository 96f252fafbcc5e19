#include <kxdevui/framework/ui_parts.h>

#include <string>

#include <imm.h>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

// Goes between one of the platform's controls and its procedure, so that a host may end it out of its notification
// (ui_window.h).
LRESULT CALLBACK ChainProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return CallPrevious({window, id, wParam, lParam});
}

}  // namespace

bool Parts::Add(HWND& held, const wchar_t* windowClass, int id, const wchar_t* text, const RECT& place,
                DWORD style) const {
    if (!*this) return false;
    if (!IsWindowEnabled(m_window)) style |= WS_DISABLED;
    const HWND child = CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                                       place.right - place.left, place.bottom - place.top, m_window,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    if (!*this) return false;
    held = child;
    SetFont(child, KX_GetDefaultGuiFontZoom(1.0));
    return true;
}

bool Parts::Label(HWND& held, int id, const wchar_t* text, const RECT& place, DWORD style) const {
    return Add(held, L"STATIC", id, text, place, SS_NOPREFIX | style);
}

bool Parts::PushRadio(HWND& held, int id, const wchar_t* text, const RECT& place, bool automatic, WNDPROC procedure,
                      DWORD style) const {
    if (!Add(held, L"BUTTON", id, AsButtonText(text), place, PushRadioStyle(automatic) | style)) return false;
    Subclass(held, procedure ? procedure : ChainProc, nullptr);
    // Otherwise Windows reports a click for a button that only gets the focus.
    SendMessageW(held, BM_SETDONTCLICK, TRUE, 0);
    KX_FollowColorScheme(held);
    return true;
}

bool Parts::DropDown(HWND& held, int id, const RECT& place) const {
    if (!Add(held, L"COMBOBOX", id, nullptr, place, CBS_DROPDOWNLIST)) return false;
    Subclass(held, ChainProc, nullptr);
    return true;
}

bool Parts::Label(int id, const wchar_t* text, const RECT& place, DWORD style) const {
    HWND label = nullptr;
    return Label(label, id, text, place, style);
}

bool Parts::PushRadio(int id, const wchar_t* text, const RECT& place, bool automatic) const {
    HWND button = nullptr;
    return PushRadio(button, id, text, place, automatic);
}

// Each is a group of its own: the platform's search for the others of a group never ends under Wine when one of them is
// disabled.
DWORD PushRadioStyle(bool automatic) noexcept {
    return DWORD{WS_GROUP} | BS_PUSHLIKE | (automatic ? BS_AUTORADIOBUTTON : BS_RADIOBUTTON);
}

CKxStringW AsButtonText(const CKxStringW& text) {
    std::wstring doubled;
    for (const wchar_t letter : text.str())
        doubled.append(letter == L'&' ? 2 : 1, letter);
    return doubled;
}

CKxStringW TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void SetTextOf(HWND window, const CKxStringW& text) {
    if (window && TextOf(window) != text) SetWindowTextW(window, text);
}

HWND ParentOf(HWND window) noexcept {
    const HWND parent = IsWindow(window) ? GetAncestor(window, GA_PARENT) : nullptr;
    return parent == GetDesktopWindow() ? nullptr : parent;
}

void SetFont(HWND window, HFONT font, bool redraw) noexcept {
    if (window) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw);
}

void Enable(HWND window, bool enable) noexcept {
    if (window && (IsWindowEnabled(window) != FALSE) != enable) EnableWindow(window, enable);
}

void UseInputMethod(HWND edit, bool use) noexcept {
    if (edit) ImmAssociateContextEx(edit, nullptr, use ? IACE_DEFAULT : 0);
}

void PutAbove(HWND window, HWND below) noexcept {
    if (!window || !below) return;
    SetWindowLongPtrW(below, GWL_STYLE, GetWindowLongPtrW(below, GWL_STYLE) | WS_CLIPSIBLINGS);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
}

int StepOf(WPARAM key, int columns) noexcept {
    switch (key) {
    case VK_LEFT: return -1;
    case VK_RIGHT: return 1;
    case VK_UP: return -columns;
    case VK_DOWN: return columns;
    default: return 0;
    }
}

int NextButton(int from, int step, std::span<const bool> usable) noexcept {
    const int count = static_cast<int>(usable.size());
    const bool around = step == 1 || step == -1;
    int next = from;
    for (int tried = 0; tried < count; ++tried) {
        next += step;
        if (around && count > 0) next = (next + count) % count;
        if (next < 0 || next >= count) return from;
        if (usable[static_cast<std::size_t>(next)]) return next;
    }
    return from;
}

}  // namespace kx::ui
