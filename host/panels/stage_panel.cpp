#include "stage_panel.h"

#include <algorithm>
#include <array>

#include <kxsystem/kx_translation.h>

#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr std::array kSteps{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

}  // namespace

// ---- The step ------------------------------------------------------------------------------------------------------

int StageStep::Step() const { return kSteps[static_cast<std::size_t>(Held().stageStep)]; }

LRESULT StageStep::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    AddChild(L"STATIC", L"", SS_CENTER | SS_CENTERIMAGE | SS_SUNKEN, IDC_STEP_TEXT, 0, 0, 110, 22);
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
    Held().stageStep = std::clamp(Held().stageStep + (delta > 0 ? 1 : -1), 0, static_cast<int>(kSteps.size()) - 1);
    Show();
    return true;
}

// ---- The panel -----------------------------------------------------------------------------------------------------

void StagePanel::Fill() {
    AddCaption(KX_GetTranslation(L"Stage", L"host"));
    AddChild(L"BUTTON", L"-X", WS_TABSTOP, IDC_STAGE_LEFT, 12, 58, 34, 26);
    AddChild(L"BUTTON", L"+Y", WS_TABSTOP, IDC_STAGE_UP, 48, 32, 34, 26);
    AddChild(L"BUTTON", L"-Y", WS_TABSTOP, IDC_STAGE_DOWN, 48, 84, 34, 26);
    AddChild(L"BUTTON", L"+X", WS_TABSTOP, IDC_STAGE_RIGHT, 84, 58, 34, 26);
    AddChild(L"STATIC", L"", 0, IDC_STAGE_POSITION, 136, 40, 124, 36);
    m_step.Create(m_hWnd, 134, 86, 110, 22, true, true);
    InsertElement(&m_step);
    ShowValues();
}

void StagePanel::ShowValues() {
    CKxStringW text;
    text.Format(60, L"X %.0f µm\nY %.0f µm", Held().stageX, Held().stageY);
    SetDlgItemTextW(m_hWnd, IDC_STAGE_POSITION, text);
}

bool StagePanel::OnUser(int id, int code, HWND) {
    if (code != BN_CLICKED) return false;
    const double step = m_step.Step();
    const bool isX = id == IDC_STAGE_LEFT || id == IDC_STAGE_RIGHT, up = id == IDC_STAGE_UP || id == IDC_STAGE_RIGHT;
    if (!isX && !up && id != IDC_STAGE_DOWN) return false;
    double& at = isX ? Held().stageX : Held().stageY;
    if (!Asks(ValueOf(isX ? L"stage X" : L"stage Y", isX ? L"X" : L"Y", at, L"%.0f µm"), at + (up ? step : -step))) {
        Tell(Text(L"The stage stays where it is").str());
        return true;
    }
    ShowValues();
    CKxStringW text;
    text.Format(100, Text(L"Stage moves to X %d µm, Y %d µm"), static_cast<int>(Held().stageX),
                static_cast<int>(Held().stageY));
    Tell(text.str());
    return true;
}

LRESULT StagePanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    // The wheel belongs to the element that makes use of it.
    return m_step.HandleMouseWheel(wParam, lParam) ? 1 : 0;
}
