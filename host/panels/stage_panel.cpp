#include "stage_panel.h"

#include <algorithm>
#include <array>

#include <kxbaseui/kx_fonts.h>
#include <kxsystem/kx_translation.h>

#include "../resources/resource.h"

namespace {

constexpr std::array kSteps{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

HWND AddChild(HWND parent, const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, const RECT& place) {
    const HWND child =
        CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.right,
                        place.bottom, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFontZoom(1.0)), FALSE);
    return child;
}

}  // namespace

// ---- The step ------------------------------------------------------------------------------------------------------

int StageStep::Step() const { return kSteps[static_cast<std::size_t>(m_index)]; }

LRESULT StageStep::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    InsertWindow(
        AddChild(m_hWnd, L"STATIC", L"", SS_CENTER | SS_CENTERIMAGE | SS_SUNKEN, IDC_STEP_TEXT, {0, 0, 110, 22}));
    Show();
    return HostPanel::OnInit(message, wParam, lParam);
}

void StageStep::Show() {
    CKxStringW text;
    text.Format(60, KX_GetTranslation(L"Step %d µm", L"host"), Step());
    SetDlgItemTextW(m_hWnd, IDC_STEP_TEXT, text);
}

bool StageStep::HandleMouseWheel(WPARAM wParam, LPARAM) {
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    if (delta == 0) return false;
    m_index = std::clamp(m_index + (delta > 0 ? 1 : -1), 0, static_cast<int>(kSteps.size()) - 1);
    Show();
    return true;
}

// ---- The panel -----------------------------------------------------------------------------------------------------

HWND StagePanel::Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, int x, int y, int cx,
                     int cy) {
    const HWND child = AddChild(m_hWnd, windowClass, text, style, id, {x, y, cx, cy});
    InsertWindow(child);
    return child;
}

void StagePanel::Fill() {
    const HWND title = Add(L"STATIC", KX_GetTranslation(L"Stage", L"host"), 0, IDC_STAGE_TITLE, 6, 3, 200, 16);
    SetWindowLongW(title, GWL_EXSTYLE, static_cast<LONG>(WS_EX_TRANSPARENT));
    Add(L"STATIC", nullptr, SS_GRAYRECT, -1, 3, 22, 258, 1);
    Add(L"BUTTON", L"-X", WS_TABSTOP, IDC_STAGE_LEFT, 12, 58, 34, 26);
    Add(L"BUTTON", L"+Y", WS_TABSTOP, IDC_STAGE_UP, 48, 32, 34, 26);
    Add(L"BUTTON", L"-Y", WS_TABSTOP, IDC_STAGE_DOWN, 48, 84, 34, 26);
    Add(L"BUTTON", L"+X", WS_TABSTOP, IDC_STAGE_RIGHT, 84, 58, 34, 26);
    Add(L"STATIC", L"", 0, IDC_STAGE_POSITION, 136, 40, 124, 36);
    m_step.Create(m_hWnd, 134, 86, 110, 22, true, true);
    InsertElement(&m_step);
    BoldifyCaptions();
    ShowPosition();
}

void StagePanel::ShowPosition() {
    CKxStringW text;
    text.Format(60, L"X %d µm\nY %d µm", m_x, m_y);
    SetDlgItemTextW(m_hWnd, IDC_STAGE_POSITION, text);
}

bool StagePanel::OnUser(int id, int code, HWND) {
    if (code != BN_CLICKED) return false;
    const int step = m_step.Step();
    switch (id) {
    case IDC_STAGE_LEFT: m_x -= step; break;
    case IDC_STAGE_RIGHT: m_x += step; break;
    case IDC_STAGE_UP: m_y += step; break;
    case IDC_STAGE_DOWN: m_y -= step; break;
    default: return false;
    }
    ShowPosition();
    CKxStringW text;
    text.Format(100, KX_GetTranslation(L"Stage moves to X %d µm, Y %d µm", L"host"), m_x, m_y);
    Tell(text.str());
    return true;
}

LRESULT StagePanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    // The wheel belongs to the element that makes use of it.
    return m_step.HandleMouseWheel(wParam, lParam) ? 1 : 0;
}
