#include "template_panels.h"

#include <cwchar>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_parts.h>

#include "../resources/resource.h"

// ---- Camera --------------------------------------------------------------------------------------------------------

LRESULT CameraPanel::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    SetDlgItemTextW(m_hWnd, IDC_EXPOSURE, Held().exposure.c_str());
    CheckDlgButton(m_hWnd, IDC_LIVE, Held().live ? BST_CHECKED : BST_UNCHECKED);
    for (const wchar_t* binning : {L"1 x 1", L"2 x 2", L"4 x 4"}) {
        SendDlgItemMessageW(m_hWnd, IDC_BINNING, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(binning));
    }
    SendDlgItemMessageW(m_hWnd, IDC_BINNING, CB_SETCURSEL, static_cast<WPARAM>(Held().cameraBinning), 0);
    return HostPanel::OnInit(message, wParam, lParam);
}

bool CameraPanel::OnUser(int id, int code, HWND from) {
    CKxStringW text;
    if (id == IDC_EXPOSURE && code == EN_KILLFOCUS) {
        double exposure = 0;
        if (GetWndDouble(from, exposure) && exposure > 0) {
            Held().exposure = kx::ui::TextOf(from).str();
            text.Format(100, Text(L"Exposure time %g ms"), exposure);
            Tell(text.str());
        } else {
            ReportError(Text(L"This is no exposure time."), false, nullptr, nullptr);
            Tell(Text(L"This is no exposure time.").str());
        }
        return true;
    }
    if (id == IDC_LIVE && code == BN_CLICKED) {
        Held().live = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
        Tell(Text(Held().live ? L"Live image on" : L"Live image off").str());
        return true;
    }
    if (id == IDC_BINNING && code == CBN_SELCHANGE) {
        Held().cameraBinning = static_cast<int>(SendMessageW(from, CB_GETCURSEL, 0, 0));
        text.Format(100, Text(L"Binning %d"), 1 << Held().cameraBinning);
        Tell(text.str());
        return true;
    }
    if (id == IDC_SNAP && code == BN_CLICKED) {
        Tell(Text(L"Image taken").str());
        return true;
    }
    return false;
}

// ---- Lamps ---------------------------------------------------------------------------------------------------------

void LampPanel::ShowState() {
    CheckDlgButton(m_hWnd, m_switchId, m_lamp.on ? BST_CHECKED : BST_UNCHECKED);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = 100;
    info.nPos = static_cast<int>(m_lamp.level);
    const HWND bar = GetDlgItem(m_hWnd, m_levelId);
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
}

bool LampPanel::OnUser(int id, int code, HWND from) {
    if (id != m_switchId || code != BN_CLICKED) return false;
    const bool on = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    CKxStringW text;
    text.Format(100, Text(on ? L"%ls lamp on" : L"%ls lamp off"), Text(Name()).c_str());
    const std::wstring what = Name() + std::wstring(L" switch");
    Ask({SwitchOf(what.c_str(), Name(), m_lamp.on, kx::host::Light::More), on ? 1.0 : 0.0}, text);
    return true;
}

LRESULT LampPanel::OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) {
    const int level = FollowScrollBar(wParam, reinterpret_cast<HWND>(lParam));
    CKxStringW text;
    text.Format(100, L"%ls: %d %%", Text(Name()).c_str(), level);
    Ask({ValueOf(Name(), Name(), m_lamp.level, L"%g %%", kx::host::Light::More), static_cast<double>(level)}, text);
    return HostPanel::OnScroll(message, wParam, lParam, horizontal);
}

void LampPanel::Ask(const Asked& asked, const CKxStringW& told) {
    const bool granted = Asks(asked.wish, asked.value);
    if (!granted) ShowState();
    Tell(granted ? told.str() : Text(L"The lamp stays as it is").str());
}

// ---- Stand and condenser -------------------------------------------------------------------------------------------

void StandPanel::AdoptCondenser() {
    // The region that the group box covers.
    RECT group{};
    for (const HWND child : GetWindows()) {
        const LONG type = GetWindowLongW(child, GWL_STYLE) & BS_TYPEMASK;
        wchar_t name[16] = L"";
        GetClassNameW(child, name, 16);
        if (type == BS_GROUPBOX && _wcsicmp(name, L"Button") == 0) group = RectInParent(child);
    }
    m_condenser.CreateFromParent(m_hWnd, &group);
    InsertElement(&m_condenser);
    CheckRadioButton(m_condenser, IDC_CONDENSER_IN, IDC_CONDENSER_TOP,
                     Held().condenserOut ? IDC_CONDENSER_TOP : IDC_CONDENSER_IN);
    CheckDlgButton(m_hWnd, IDC_TUBE, Held().tube ? BST_CHECKED : BST_UNCHECKED);
    InsertElement(&m_condenser);
}

bool StandPanel::OnUser(int id, int code, HWND) {
    if (id != IDC_TUBE || code != BN_CLICKED) return false;
    Held().tube = IsDlgButtonChecked(m_hWnd, IDC_TUBE) == BST_CHECKED;
    Tell(Text(L"Light path changed").str());
    return true;
}

bool CondenserPanel::OnUser(int id, int code, HWND) {
    if (code != BN_CLICKED || (id != IDC_CONDENSER_IN && id != IDC_CONDENSER_TOP)) return false;
    Held().condenserOut = id == IDC_CONDENSER_TOP;
    Tell(Text(id == IDC_CONDENSER_IN ? L"Condenser front lens in" : L"Condenser front lens out").str());
    return true;
}

// ---- Time series ---------------------------------------------------------------------------------------------------

LRESULT SeriesDialog::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    SetDlgItemInt(m_hWnd, IDC_SERIES_COUNT, static_cast<UINT>(Held().seriesCount), FALSE);
    CKxStringW text;
    text.Format(20, L"%g", Held().seriesInterval);
    SetDlgItemTextW(m_hWnd, IDC_SERIES_INTERVAL, text);
    // A window of its own: nobody else zooms and colours it.
    CKxGUILayoutManager::ResizeWindowToGuiZoom(m_hWnd, 1.0);
    KX_FollowColorScheme(m_hWnd);
    AlignWindow(true);
    return HostPanel::OnInit(message, wParam, lParam);
}

bool SeriesDialog::Accept() {
    const HWND count = GetDlgItem(m_hWnd, IDC_SERIES_COUNT), interval = GetDlgItem(m_hWnd, IDC_SERIES_INTERVAL);
    if (!GetWndInt(count, Held().seriesCount) || Held().seriesCount < 1) {
        ReportError(Text(L"The number of images must be at least 1."), true, count, nullptr);
        return false;
    }
    if (!GetWndDouble(interval, Held().seriesInterval) || Held().seriesInterval < 0) {
        ReportError(Text(L"This is no interval."), true, interval, nullptr);
        return false;
    }
    return true;
}

bool SeriesDialog::OnUser(int id, int code, HWND) {
    if (code != BN_CLICKED) return false;
    if (id == IDOK && Accept()) Quit(IDOK);
    if (id == IDCANCEL) Quit(IDCANCEL);
    return id == IDOK || id == IDCANCEL;
}
