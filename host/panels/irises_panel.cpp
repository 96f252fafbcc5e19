#include "irises_panel.h"

#include "../held_values.h"

namespace {

// Panels come and go with the language.
CKxSimIris& FieldIris() {
    static auto& device = TheLight().Devices().Add<CKxSimIris>(
        L"Field diaphragm", std::vector<double>{5, 10, 20, 30, 40, 60, 80, 100}, SKxSimIrisKind{.shutter = true});
    return device;
}

CKxSimIris& ApertureIris() {
    static auto& device = TheLight().Devices().Add<CKxSimIris>(
        L"Aperture diaphragm", std::vector<double>{1, 2, 3, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30},
        SKxSimIrisKind{.diaphragm = eKxDiaphragm_Aperture, .unit = eKxIrisUnit_Millimetres, .widestNA = 0.9});
    return device;
}

}  // namespace

IrisesPanel::IrisesPanel(CKxSimNosepiece& turret)
    : ControlPanel(L"Diaphragms", ApertureIris()), m_field(FieldIris()), m_turret(turret),
      m_listener([this](CDMApi_LogDevId device) { Hear(device); }) {}

void IrisesPanel::Fill() {
    ControlPanel::Fill();
    Panel().Update(m_field.GetLogDevId());
    Panel().Update(m_turret.GetLogDevId());
    ShowValues();
}

void IrisesPanel::ShowValues() { Panel().SetCoupled(Held().apertureFollows); }

void IrisesPanel::Hear(CDMApi_LogDevId device) {
    if (!m_hWnd || (device != m_field.GetLogDevId() && device != m_turret.GetLogDevId())) return;
    Panel().Update(device);
    long position = 0;
    if (device != m_turret.GetLogDevId() || !m_turret.GetPosition(position)) return;
    const auto matched = Panel().GetMatchedAperture();
    if (matched && Panel().IsCoupled() && !Refuses()) ApertureIris().SetAperture(*matched);
}

void AskingIrises::OnApertureChangeRequest(EKxDiaphragm diaphragm, double aperture, bool& veto) {
    const bool isField = diaphragm == eKxDiaphragm_Field;
    Log().Add(m_panel.Name(), L"OnApertureChangeRequest(%ls, %g)", isField ? L"field" : L"aperture", aperture);
    CKxSimIris& iris = isField ? FieldIris() : m_device;
    veto = !m_panel.Grants(ApertureOf(iris), aperture, L"", iris.GetKey());
}

void AskingIrises::OnShutterChangeRequest(bool open, bool& veto) {
    Log().Add(m_panel.Name(), L"OnShutterChangeRequest(%ls)", open ? L"open" : L"closed");
    veto = !m_panel.Grants(OpeningOf(FieldIris()), open, L"", FieldIris().GetKey());
}

void AskingIrises::OnCoupleRequest(bool couple, bool& veto) {
    Log().Add(m_panel.Name(), L"OnCoupleRequest(%ls)", couple ? L"on" : L"off");
    veto = !m_panel.Grants(SwitchOf(L"aperture follows", L"Diaphragm follows the objective", Held().apertureFollows),
                           couple);
}
