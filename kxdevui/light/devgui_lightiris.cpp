#include <kxdevui/light/devgui_lightiris.h>

#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_lightiris";
constexpr int kRow = 10200;
constexpr long kTop = 22, kHeight = 38, kLeft = 4, kBesideShutter = 38, kRight = 4;  // unzoomed pixels

}  // namespace

CKxDevUI_LightIris::CKxDevUI_LightIris()
    : LightControl(this, {.name = L"KxDEVGUI_LightIris",
                          .size = {268, 64},
                          .title = KX_GetTranslation(L"Iris diaphragm", kSource),
                          .tabsInside = true}),
      m_row(*this, 0, kRow) {
    Take(m_row.Slider());
}

CKxDevUI_LightIris::~CKxDevUI_LightIris() { Binding::EndOwnWindow(this); }

bool CKxDevUI_LightIris::Make(const Parts& parts) {
    return MakeTitle(parts) && MakeShutter(parts, {kLeft, kTop + 4}) &&
           m_row.Make(parts, {HasShutter() ? kBesideShutter : kLeft, kTop, Width() - kRight, kTop + kHeight}) &&
           Finish(parts);
}

bool CKxDevUI_LightIris::Update(CDMApi_LogDevId id, const LightBand& what) {
    const auto ask = [&](const IKxDeviceIris& device) { return IrisTold::Of(device, what.structure); };
    return UpdateFrom<IKxDeviceIris>(this, kSource, id, ask, [&](const IrisTold& told) {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        bool other = false;
        if (what.structure) {
            other = m_row.SetTable(told.table, told.unit, told.widestNA) || told.hasShutter != HasShutter();
            SetHasShutter(told.hasShutter);
            OnLook();
        }
        if (what.state) {
            if (told.asked) SetAperture(*told.asked);
            SetShutter(told.open);
        }
        if (other) Remake();
        if (alive) Follow(told.activity, id);
        if (alive && what.state && HWND{m_row.Slider()}) KX_TellMeasured(m_hWnd, {.measured = told.stands});
    });
}

void CKxDevUI_LightIris::SetApertures(const std::vector<double>& apertures, int unit) {
    const bool other = m_row.SetTable(apertures, unit, 0);
    OnLook();
    if (other) Remake();
}

void CKxDevUI_LightIris::SetAperture(double aperture) {
    m_row.SetAperture(aperture);
    OnLook();
}

void CKxDevUI_LightIris::OnApertureChangeRequest(double, bool&) {}

void CKxDevUI_LightIris::Ask(double aperture) {
    const auto held = [this] { return GetAperture(); };
    if (IsGranted(held, [&](bool& veto) { OnApertureChangeRequest(aperture, veto); })) SetAperture(aperture);
}

double CKxDevUI_LightIris::OnScale(int, double wanted) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    Ask(wanted);
    return alive ? GetAperture() : wanted;
}

void CKxDevUI_LightIris::OnLook() { m_row.Redraw(m_hWnd); }

void CKxDevUI_LightIris::Command(int id, int code) {
    if (const auto aperture = m_row.TypedBy(id, code)) Ask(*aperture);
}

Handled CKxDevUI_LightIris::Handle(const Message& message) {
    const bool lit = !HasShutter() || GetShutter();
    if (message.id == WM_DRAWITEM && m_row.Draw(m_hWnd, message, lit, IsLost())) return TRUE;
    return HandleLight(message);
}
