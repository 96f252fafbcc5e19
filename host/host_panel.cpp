#include "host_panel.h"

#include <algorithm>

#include "event_log.h"

namespace {

std::function<void(const std::wstring&)> s_statusSink;

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
    if (OnUser(id, code, reinterpret_cast<HWND>(lParam))) return 1;
    return CKxDevUI_Container::OnCommand(message, wParam, lParam);
}

LRESULT HostPanel::OnNotify(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
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
