#include "host_panel.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include <kxbaseui/kx_fonts.h>

#include "event_log.h"
#include "held_values.h"

namespace {

std::function<void(const std::wstring&)> s_statusSink;

// What a control with a visual style says with every paint and every move of the mouse; the log would show little else.
bool IsChatter(UINT code) { return code == NM_CUSTOMDRAW || code == NM_CUSTOMTEXT || code == BCN_HOTITEMCHANGE; }

}  // namespace

void SetStatusSink(std::function<void(const std::wstring&)> sink) { s_statusSink = std::move(sink); }

void HostPanel::Tell(const std::wstring& text) {
    if (s_statusSink) s_statusSink(text);
}

LRESULT HostPanel::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    Log().Add(m_name, L"OnInit(%u)", message);
    return CKxDevUI_Container::OnInit(message, wParam, lParam);
}

LRESULT HostPanel::OnDestroy(UINT message, WPARAM wParam, LPARAM lParam) {
    Log().Add(m_name, L"OnDestroy");
    return CKxDevUI_Container::OnDestroy(message, wParam, lParam);
}

LRESULT HostPanel::OnCommand(UINT message, WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam), code = HIWORD(wParam);
    Log().Add(m_name, L"OnCommand id %d code 0x%04X", id, static_cast<unsigned>(code));
    if (id == m_refusal && id != 0 && code == BN_CLICKED) {
        SetRefuses(IsDlgButtonChecked(m_hWnd, id) == BST_CHECKED);
        return 1;
    }
    if (OnUser(id, code, reinterpret_cast<HWND>(lParam))) return 1;
    return CKxDevUI_Container::OnCommand(message, wParam, lParam);
}

LRESULT HostPanel::OnNotify(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!IsChatter(header->code))
        Log().Add(m_name, L"OnNotify id %d code %d", static_cast<int>(header->idFrom), static_cast<int>(header->code));
    return CKxDevUI_Container::OnNotify(message, wParam, lParam);
}

LRESULT HostPanel::OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) {
    Log().Add(m_name, L"OnScroll %ls id %d code %d", horizontal ? L"horizontal" : L"vertical",
              GetDlgCtrlID(reinterpret_cast<HWND>(lParam)), static_cast<int>(LOWORD(wParam)));
    return CKxDevUI_Container::OnScroll(message, wParam, lParam, horizontal);
}

void HostPanel::OnUpdateDeviceBand(WPARAM wParam, LPARAM) {
    Log().Add(m_name, L"OnUpdateDeviceBand device %u", static_cast<unsigned>(wParam));
}

LRESULT HostPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    Log().Add(m_name, L"OnMouseWheel %d", static_cast<int>(GET_WHEEL_DELTA_WPARAM(wParam)));
    return CKxDevUI_Container::OnMouseWheel(wParam, lParam);
}

HWND HostPanel::AddChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, int x, int y, int cx,
                         int cy) {
    const HWND child = CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, x, y, cx, cy, m_hWnd,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFontZoom(1.0)), FALSE);
    InsertWindow(child);
    return child;
}

void HostPanel::AddCaption(const wchar_t* text) {
    const HWND title = AddChild(L"STATIC", text, 0, -1, 6, 3, m_width - 12, 16);
    SetWindowLongW(title, GWL_EXSTYLE, static_cast<LONG>(WS_EX_TRANSPARENT));
    AddChild(L"STATIC", nullptr, SS_GRAYRECT, -1, 3, 22, m_width - 6, 1);
    BoldifyCaptions();
}

HWND HostPanel::AddCheckBox(const wchar_t* text, int id, int x, int y) {
    return AddChild(L"BUTTON", text, WS_TABSTOP | BS_AUTOCHECKBOX, id, x, y, m_width - x - 6, 18);
}

void HostPanel::AddRefusal(int id) {
    m_refusal = id;
    AddChild(L"BUTTON", Text(L"The host refuses"), WS_TABSTOP | BS_AUTOCHECKBOX, id, 6, m_height - 22, 140, 18);
    CheckDlgButton(m_hWnd, id, Refuses() ? BST_CHECKED : BST_UNCHECKED);
}

bool HostPanel::Refuses() const { return m_refusal != 0 && Held().refusing.contains(m_name); }

void HostPanel::SetRefuses(bool refuses) const {
    if (refuses)
        Held().refusing.insert(m_name);
    else
        Held().refusing.erase(m_name);
}

bool HostPanel::Asks(Wish wish, double value) const {
    if (m_refusal != 0) wish.panel = m_name;
    return TheRequests().Ask(wish, value);
}

int HostPanel::FollowScrollBar(WPARAM wParam, HWND bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(bar, SB_CTL, &info);
    int position = info.nPos;
    switch (LOWORD(wParam)) {
    case SB_LINELEFT: position -= 1; break;
    case SB_LINERIGHT: position += 1; break;
    case SB_PAGELEFT: position -= 10; break;
    case SB_PAGERIGHT: position += 10; break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: position = info.nTrackPos; break;
    case SB_LEFT: position = 0; break;
    case SB_RIGHT: position = 100; break;
    default: break;
    }
    position = std::clamp(position, 0, 100);
    SetScrollPos(bar, SB_CTL, position, TRUE);
    return position;
}
