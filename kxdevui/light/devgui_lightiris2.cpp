#include <kxdevui/light/devgui_lightiris2.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxfilters/kx_objectives.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_lightiris2";
constexpr const wchar_t* kNames[] = {L"Field", L"Aperture"};
constexpr int kRows[] = {10200, 10210}, kCouple = 10220, kNA = kTitleId + 3;
// Unzoomed pixels; a row has its name above it.
constexpr long kTop = 20, kName = 16, kRow = 38, kNext = 58, kLeft = 4, kBesideShutter = 38, kRight = 4, kReading = 86;

// Of two devices the one with which it is worse is shown.
int WorseOf(const KxActivity& activity) {
    switch (activity.activity) {
    case EKxActivity::Failed: return 4;
    case EKxActivity::Unknown: return 3;
    case EKxActivity::Moving:
    case EKxActivity::Asked: return 2;
    case EKxActivity::Locked: return 1;
    default: return 0;
    }
}

// 0 while it is not known.
double ObjectiveNA(const IKxDeviceNosepiece& turret) {
    long position = 0;
    if (!turret.GetPosition(position)) return 0;
    CKxStringW key;
    turret.GetObjectiveKey(position, key);
    SKxDDBObjectiveItem objective;
    return CKxDeviceDatabase::DBGetObjectiveParam(key, &objective, false) ? objective.NA : 0;
}

}  // namespace

CKxDevUI_LightIris2::CKxDevUI_LightIris2()
    : LightControl(this, {.name = L"KxDEVGUI_LightIris2",
                          .size = {268, 160},
                          .title = KX_GetTranslation(L"Diaphragms", kSource),
                          .tabsInside = true}),
      m_rows{Row{*this, eKxDiaphragm_Field, kRows[0]}, Row{*this, eKxDiaphragm_Aperture, kRows[1]}} {
    for (Row& each : m_rows)
        Take(each.row.Slider());
    m_couple.SetId(kCouple);
    m_couple.SetTitle(KX_GetTranslation(L"Follows the objective", kSource));
}

CKxDevUI_LightIris2::~CKxDevUI_LightIris2() { Binding::EndOwnWindow(this); }

bool CKxDevUI_LightIris2::Make(const Parts& parts) {
    const long left = HasShutter() ? kBesideShutter : kLeft, right = Width() - kRight;
    if (!MakeTitle(parts) || !MakeShutter(parts, {kLeft, kTop + kName + 4})) return false;
    long top = kTop;
    for (std::size_t i = 0; i < m_rows.size(); ++i, top += kNext) {
        const CKxStringW name = KX_GetTranslation(kNames[i], kSource);
        if (!parts.Label(kTitleId + 1 + static_cast<int>(i), name, {left, top, right - kReading, top + kName}) ||
            !m_rows[i].row.Make(parts, {left, top + kName, right, top + kName + kRow}))
            return false;
    }
    if (!parts.Label(kNA, NAText(), {right - kReading, kTop + kNext, right, kTop + kNext + kName}) ||
        !m_couple.Make(parts, {left, top, right, top + kName}))
        return false;
    Enable(IsWindowEnabled(m_hWnd) != FALSE);
    return Finish(parts);
}

// ---- The devices ---------------------------------------------------------------------------------------------------

bool CKxDevUI_LightIris2::Update(CDMApi_LogDevId id, const LightBand& what) {
    if (DMApi::LogDev_GetType(id) == eKxDeviceType_Nosepiece)
        return UpdateFrom<IKxDeviceNosepiece>(this, kSource, id, ObjectiveNA,
                                              [this](double na) { SetObjectiveNA(na); });
    const auto ask = [&](const IKxDeviceIris& device) { return IrisTold::Of(device, what.structure); };
    return UpdateFrom<IKxDeviceIris>(this, kSource, id, ask, [&](const IrisTold& told) { ShowIris(id, told, what); });
}

bool CKxDevUI_LightIris2::SetRow(Row& row, const IrisTold& told) {
    const bool other = row.row.SetTable(told.table, told.unit, told.widestNA);
    row.hasShutter = told.hasShutter;
    const bool hasShutter = m_rows[0].hasShutter || m_rows[1].hasShutter, hadShutter = HasShutter();
    SetHasShutter(hasShutter);
    ShowNA();
    OnLook();
    return other || hasShutter != hadShutter;
}

void CKxDevUI_LightIris2::ShowIris(CDMApi_LogDevId id, const IrisTold& told, const LightBand& what) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    Row& row = RowOf(told.diaphragm);
    row.device = id;
    row.activity = told.activity;
    const bool other = what.structure && SetRow(row, told);
    if (what.state) {
        if (told.asked) SetAperture(told.diaphragm, *told.asked);
        // Of two that have one, the field's: the other's light is the same.
        if (row.hasShutter && (told.diaphragm == eKxDiaphragm_Field || !m_rows[0].hasShutter)) SetShutter(told.open);
    }
    if (other) Remake();
    if (alive && what.state && HWND{row.row.Slider()}) KX_TellMeasured(row.row.Slider(), {.measured = told.stands});
    if (!alive) return;
    const int worse = WorseOf(m_rows[1].activity) > WorseOf(m_rows[0].activity) ? 1 : 0;
    const Row& shown = m_rows[static_cast<std::size_t>(worse)];
    // One that is locked keeps its own parts disabled.
    const bool both = m_rows[0].activity.activity == m_rows[1].activity.activity;
    if (shown.activity.activity != EKxActivity::Locked || both) Follow(shown.activity, shown.device, worse);
    if (shown.activity.activity == EKxActivity::Locked && !both) Follow({}, shown.device, worse);
    if (alive && m_hWnd) Enable(IsWindowEnabled(m_hWnd) != FALSE);
}

void CKxDevUI_LightIris2::Enable(bool enable) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    for (Row& each : m_rows) {
        if (alive) each.row.Enable(enable && each.activity.activity != EKxActivity::Locked);
    }
}

// ---- What is shown -------------------------------------------------------------------------------------------------

void CKxDevUI_LightIris2::SetApertures(EKxDiaphragm diaphragm, const std::vector<double>& apertures, int unit,
                                       double widestNA) {
    Row& row = RowOf(diaphragm);
    IrisTold told;
    told.table = apertures;
    told.unit = unit;
    told.widestNA = widestNA;
    told.hasShutter = row.hasShutter;
    if (SetRow(row, told)) Remake();
}

void CKxDevUI_LightIris2::SetAperture(EKxDiaphragm diaphragm, double aperture) {
    RowOf(diaphragm).row.SetAperture(aperture);
    if (diaphragm == eKxDiaphragm_Aperture) ShowNA();
    OnLook();
}

void CKxDevUI_LightIris2::SetObjectiveNA(double na) {
    const double known = std::isfinite(na) && na > 0 ? na : 0;
    if (std::exchange(m_objectiveNA, known) != known) ShowNA();
}

void CKxDevUI_LightIris2::SetCoupled(bool coupled) {
    m_couple.SetState(coupled ? eKxCheckState_On : eKxCheckState_Off);
}

std::optional<double> CKxDevUI_LightIris2::GetMatchedAperture() const {
    const IrisRow& row = m_rows[1].row;
    const double matched =
        kx::iris::ApertureFor(row.Table(), row.Unit(), row.WidestNA(), m_objectiveNA, kx::iris::kUsualPart);
    return matched < 0 ? std::nullopt : std::optional(kx::iris::Nearest(row.Table(), matched));
}

CKxStringW CKxDevUI_LightIris2::NAText() const {
    const IrisRow& row = m_rows[1].row;
    const double na = kx::iris::NAOf(row.Table(), row.Unit(), row.WidestNA(), row.GetAperture());
    CKxStringW text;
    if (na > 0 && m_objectiveNA > 0)
        text.Format(60, L"NA %.2f / %.2f", na, m_objectiveNA);
    else if (na > 0)
        text.Format(60, L"NA %.2f", na);
    return text;
}

// The reading, and where the custom is on the scale.
void CKxDevUI_LightIris2::ShowNA() {
    IrisRow& row = m_rows[1].row;
    const auto at = [&](double part) {
        return kx::iris::ApertureFor(row.Table(), row.Unit(), row.WidestNA(), m_objectiveNA, part);
    };
    row.Slider().SetBand(at(kx::iris::kLeastPart), at(kx::iris::kMostPart));
    SetTextOf(PartAt(kNA), NAText());
}

void CKxDevUI_LightIris2::OnLook() {
    for (const Row& each : m_rows)
        each.row.Redraw(m_hWnd);
}

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_LightIris2::OnApertureChangeRequest(EKxDiaphragm, double, bool&) {}
void CKxDevUI_LightIris2::OnCoupleRequest(bool, bool&) {}

void CKxDevUI_LightIris2::CoupleBox::OnStateChangeRequest(int state, bool& veto) {
    CKxDevUI_LightIris2& owner = m_owner;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const bool couple = state == eKxCheckState_On;
    owner.OnCoupleRequest(couple, veto);
    if (!alive || veto || !couple) return;
    const auto matched = owner.GetMatchedAperture();
    if (!matched || *matched == owner.GetAperture(eKxDiaphragm_Aperture)) return;
    const auto request = [&](bool& refused) {
        owner.OnApertureChangeRequest(eKxDiaphragm_Aperture, *matched, refused);
    };
    const auto held = [&] { return owner.GetAperture(eKxDiaphragm_Aperture); };
    if (owner.IsGranted(held, request)) owner.SetAperture(eKxDiaphragm_Aperture, *matched);
}

void CKxDevUI_LightIris2::Ask(EKxDiaphragm diaphragm, double aperture) {
    if (diaphragm == eKxDiaphragm_Aperture && IsCoupled()) {
        if (!IsGranted([&](bool& veto) { OnCoupleRequest(false, veto); })) return;
        SetCoupled(false);
    }
    const auto held = [&] { return GetAperture(diaphragm); };
    if (IsGranted(held, [&](bool& veto) { OnApertureChangeRequest(diaphragm, aperture, veto); }))
        SetAperture(diaphragm, aperture);
}

double CKxDevUI_LightIris2::OnScale(int number, double wanted) {
    const auto diaphragm = static_cast<EKxDiaphragm>(number);
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    Ask(diaphragm, wanted);
    return alive ? GetAperture(diaphragm) : wanted;
}

void CKxDevUI_LightIris2::Command(int id, int code) {
    for (const EKxDiaphragm each : {eKxDiaphragm_Field, eKxDiaphragm_Aperture}) {
        if (const auto aperture = RowOf(each).row.TypedBy(id, code)) return Ask(each, *aperture);
    }
}

Handled CKxDevUI_LightIris2::Handle(const Message& message) {
    if (message.id == WM_DRAWITEM) {
        const bool lit = !HasShutter() || GetShutter();
        for (const Row& each : m_rows) {
            const bool lost =
                each.activity.activity == EKxActivity::Unknown || each.activity.activity == EKxActivity::Failed;
            if (each.row.Draw(m_hWnd, message, lit, lost)) return TRUE;
        }
    }
    const Handled told = DescribePart(message, [this](HWND part, KxAccess& access) {
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            if (m_rows[i].row.Has(part)) access.name = KX_GetTranslation(kNames[i], kSource);
        return false;
    });
    if (told) return told;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const Handled answer = HandleLight(message);
    if (message.id != WM_ENABLE || !alive) return answer;
    EnableAll(message.window, message.wParam != FALSE);
    if (alive) Enable(message.wParam != FALSE);
    return 0;
}
