// What the Z stack panel shows of its record.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxsystem/kx_translation.h>

#include <cwchar>
#include <iterator>

using kx::ui::Alive;

namespace {

using Position = std::optional<double>;

constexpr wchar_t kNotSet[] = L"N/A";

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); }

CKxStringW Formatted(const wchar_t* format, Position value) {
    CKxStringW text(kNotSet);
    if (value) text.Format(40, format, *value);
    return text;
}

// A distance from home, or from 0 where there is none.
Position From(const Position& home, const Position& position) {
    return position ? Position(*position - home.value_or(0.0)) : std::nullopt;
}

}  // namespace

void CKxDevUI_ZStack::UpdateGUI(unsigned int flags) {
    if (!m_hWnd || !m_data) return;
    unsigned int device = 0;
    if (m_data->GetZDevice(&device) == eKxZStack_Ok) {
        const Alive alive(this);
        OnZDeviceShown(device);
        if (!alive || !m_hWnd || !m_data) return;
        if (flags & RefreshPositions) SendMessageW(Item(IDC_ZS_DEVICE), CB_SETCURSEL, device, 0);
    }
    if (flags & RefreshPositions) ShowPositions();
    if (flags & RefreshStep) ShowSteps();
}

void CKxDevUI_ZStack::ShowEntry(int id, const wchar_t* text) {
    if (!Dirty(id)) ShowText(id, text);
}

// Setting the text of an edit costs a hundred times as much as asking for it.
void CKxDevUI_ZStack::ShowText(int id, const wchar_t* text) {
    const HWND item = Item(id);
    wchar_t shown[64] = L"";
    GetWindowTextW(item, shown, static_cast<int>(std::size(shown)));
    if (std::wcscmp(shown, text) != 0) SetWindowTextW(item, text);
}

void CKxDevUI_ZStack::ShowItem(int id, bool show) {
    const HWND item = Item(id);
    const bool shown = (GetWindowLongW(item, GWL_STYLE) & WS_VISIBLE) != 0;
    if (item && shown != show) ShowWindow(item, show ? SW_SHOWNA : SW_HIDE);
}

CKxDevUI_ZStack::Position CKxDevUI_ZStack::Known(int (CKxZStackData::*getter)(double*) const) const {
    double value = 0;
    return (m_data->*getter)(&value) == eKxZStack_Ok ? Position(value) : std::nullopt;
}

void CKxDevUI_ZStack::ShowPositions() {
    const Position top = Known(&CKxZStackData::GetTop), bottom = Known(&CKxZStackData::GetBottom);
    const Position home = Known(&CKxZStackData::GetHome);
    ShowText(IDC_ZS_EDIT_TOP, Formatted(L"%0.2f", top));
    ShowText(IDC_ZS_EDIT_MIDDLE, Formatted(L"%0.2f", home));
    ShowText(IDC_ZS_EDIT_BOTTOM, Formatted(L"%0.2f", bottom));

    int type = 0;
    if (m_data->GetType(&type) != eKxZStack_Ok) return;
    const bool range = kx::zstack::HasRange(type), distances = kx::zstack::HasDistances(type);
    for (const int id : {IDC_ZS_EDIT_RANGE, IDC_ZS_RANGE_LABEL, IDC_ZS_RANGE_UNIT, IDC_ZS_READOUT})
        ShowItem(id, range);
    for (const int id : {IDC_ZS_EDIT_BELOW, IDC_ZS_BELOW_LABEL, IDC_ZS_BELOW_UNIT, IDC_ZS_EDIT_ABOVE,
                         IDC_ZS_READOUT_LABEL, IDC_ZS_ABOVE_UNIT})
        ShowItem(id, !range);

    const CKxStringW low = Formatted(L"%+0.2f", From(home, bottom)), high = Formatted(L"%+0.2f", From(home, top));
    if (range) {
        const Position extent = bottom ? From(bottom, top) : std::nullopt;
        CKxStringW readout;
        readout.Format(100, L"<%ls, %ls>", low.c_str(), high.c_str());
        ShowEntry(IDC_ZS_EDIT_RANGE, Formatted(L"%0.2f", extent));
        ShowText(IDC_ZS_READOUT, readout);
        return;
    }
    ShowText(IDC_ZS_BELOW_LABEL, Translated(distances ? L"Below:" : L"Bottom:"));
    ShowText(IDC_ZS_READOUT_LABEL, Translated(distances ? L"Above:" : L"Top:"));
    ShowEntry(IDC_ZS_EDIT_BELOW, distances ? low : Formatted(L"%0.2f", bottom));
    ShowEntry(IDC_ZS_EDIT_ABOVE, distances ? high : Formatted(L"%0.2f", top));
}

void CKxDevUI_ZStack::ShowSteps() {
    ShowEntry(IDC_ZS_EDIT_STEP, Formatted(L"%0.2f", Known(&CKxZStackData::GetStep)));
    unsigned int count = 0;
    CKxStringW text(kNotSet);
    if (m_data->GetCount(&count) == eKxZStack_Ok) text.Format(20, L"%u", count);
    ShowEntry(IDC_ZS_EDIT_STEPS, text);

    const Position suggested = Known(&CKxZStackData::GetStepSuggested);
    const HWND button = Item(IDC_ZS_SUGGESTED);
    ShowText(IDC_ZS_SUGGESTED, Formatted(L"%0.2f \u00B5m", suggested));
    if (button && (IsWindowEnabled(button) != FALSE) != suggested.has_value()) {
        EnableWindow(button, suggested.has_value());
    }
}
