#include "edit_panel.h"

#include <kxdevui/framework/devgui_messages.h>

#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr int kTop = 30, kRow = 32, kLabel = 104, kField = 90, kHeight = 22;  // unzoomed pixels

}  // namespace

void EditPanel::Fill() {
    AddCaption(Text(L"Fields"));
    m_exposure.SetRestriction(0.1, 10000);
    m_gain.SetRestriction(1, 16);
    m_wavelengths.SetRestriction(350, 750);
    m_wavelengths.SetCountRestriction(1, 4);
    m_delay.SetRestriction(0, 60);
    m_exposure.Init({.mustNotBeEmpty = true});
    m_gain.Init({.mustNotBeEmpty = true});

    AddField(m_exposure, IDC_FIELD_EXPOSURE, L"Exposure (ms):", 0);
    AddField(m_gain, IDC_FIELD_GAIN, L"Gain:", 1);
    AddField(m_wavelengths, IDC_FIELD_WAVELENGTHS, L"Lines (nm):", 2);
    // As a dialog would have it: the field takes the place of a control that is there.
    const HWND placeholder =
        AddChild(L"EDIT", L"", WS_TABSTOP, IDC_FIELD_DELAY, 6, kTop + 3 * kRow, kLabel + kField, kHeight);
    m_delay.SetTitle(Text(L"Delay (s):"));
    m_delay.Create(m_hWnd, placeholder);
    m_delay.SetSize(kLabel, kField, kHeight);
    InsertElement(&m_delay);
    AddRefusal(IDC_FIELD_REFUSE);
    ShowHeld();
}

void EditPanel::AddField(CKxDevUI_EditBox& field, int id, const wchar_t* label, int row) {
    field.SetId(id);
    field.SetTitle(Text(label));
    field.SetSize(kLabel, kField, kHeight);
    field.Create(m_hWnd, 6, kTop + row * kRow, -1, -1, true, true);
    InsertElement(&field);
}

// But for those in which the user is typing.
void EditPanel::ShowValues() {
    if (!m_exposure.IsTyped()) m_exposure.SetNumber(Held().fieldExposure, L"%.2f");
    if (!m_gain.IsTyped()) m_gain.SetNumber(Held().fieldGain, L"%.1f");
    if (!m_delay.IsTyped()) m_delay.SetNumber(Held().fieldDelay, L"%g");
}

void EditPanel::ShowHeld() {
    m_exposure.SetNumber(Held().fieldExposure, L"%.2f");
    m_gain.SetNumber(Held().fieldGain, L"%.1f");
    m_wavelengths.SetValues(&Held().fieldWavelengths);
    m_delay.SetNumber(Held().fieldDelay, L"%g");
}

bool EditPanel::OnUser(int id, int code, HWND) {
    if (id < IDC_FIELD_EXPOSURE || id > IDC_FIELD_DELAY) return false;
    // Enter asks with a message box; leaving the field corrects or restores quietly.
    if (code == kx::ui::kEditEnter) Check(id, true);
    if (code == EN_KILLFOCUS) Check(id, false);
    return true;
}

void EditPanel::Check(int id, bool show) {
    const auto allowed = [show](CKxDevUI_EditBox& field, double held) {
        if (show) return field.IsAllowed(EKxComplaint::Shown);
        field.CorrectToRestriction(held);
        return true;
    };
    switch (id) {
    case IDC_FIELD_EXPOSURE:
        if (allowed(m_exposure, Held().fieldExposure)) Accept(Held().fieldExposure, m_exposure, L"Exposure time %g ms");
        break;
    case IDC_FIELD_GAIN:
        if (allowed(m_gain, Held().fieldGain)) Accept(Held().fieldGain, m_gain, L"Gain %g");
        break;
    case IDC_FIELD_DELAY:
        if (allowed(m_delay, Held().fieldDelay)) Accept(Held().fieldDelay, m_delay, L"Delay %g s");
        break;
    default:
        if (!show || m_wavelengths.IsAllowed(EKxComplaint::Shown)) AcceptWavelengths();
        break;
    }
}

void EditPanel::Accept(double& held, CKxDevUI_EditBox& field, const wchar_t* told) {
    CKxStringW name = field.GetTitle(), text = Text(L"The field keeps its value");
    const std::wstring what = L"field " + std::to_wstring(field.GetId());
    if (Asks(ValueOf(what.c_str(), name.str(), held, L"%g"), field.GetNumber())) text.Format(60, Text(told), held);
    ShowHeld();
    Tell(text.str());
}

void EditPanel::AcceptWavelengths() {
    std::list<double> wanted;
    const bool valid = m_wavelengths.GetValues(&wanted) && m_wavelengths.IsAllowed(EKxComplaint::Logged);
    if (valid && !Refuses()) Held().fieldWavelengths = wanted;
    ShowHeld();
    Tell(Text(valid && !Refuses() ? L"Lines changed" : L"The field keeps its value").str());
}
