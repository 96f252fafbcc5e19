#include <kxdevui/light/devgui_lightslider.h>

#include <commctrl.h>

#include <cmath>
#include <utility>

#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_lightslider";
constexpr int kReadingId = kTitleId + 1, kUnitId = kTitleId + 2, kHoursId = kTitleId + 3;
constexpr int kButtonId = 10200, kFieldId = 10201, kPresets = 10300;
// Unzoomed pixels: the rows, and the widths of what stands in them.
constexpr long kTop = 22, kHeight = 38, kLastRow = 63, kLastHeight = 24;
constexpr long kLeft = 4, kBesideShutter = 38, kRight = 4, kGap = 4, kSign = 18;
constexpr long kReading = 100, kButton = 40, kField = 42, kArrows = 17, kUnit = 14, kPreset = 128;

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, kSource); }

}  // namespace

// What a device has told.
struct CKxDevUI_LightSlider::Told {
    kx::lamp::Scale scale;
    int unit = eKxLampUnit_Percent;
    double fullTemperature = 0;
    bool hasShutter = false;
    bool open = false;
    bool on = false;
    std::optional<double> intensity;
    Times times;
    KxActivity activity;

    static Told Of(const IKxDeviceLamp& device) {
        Told told;
        double from = 0, to = 0, second = 0;
        device.GetRange(from, to);
        told.scale = kx::lamp::ScaleOf(from, to, device.GetStep());
        told.unit = device.GetUnit();
        if (device.GetLampKind() == eKxLampKind_Halogen) told.fullTemperature = device.GetFullTemperature();
        told.hasShutter = device.HasShutter();
        told.open = device.IsShutterOpen();
        told.on = device.IsOn();
        if (double at = 0; device.GetIntensity(at)) told.intensity = at;
        if (double at = 0; device.GetMeasured(at)) told.times.measured = at;
        if (double done = 0; device.GetWarmUp(done, second)) told.times.warmUp = done, told.times.warmUpLeft = second;
        told.times.coolDown = device.GetCoolDown();
        if (double burnt = 0; device.GetHours(burnt, second)) told.times.burnt = burnt, told.times.rated = second;
        told.activity = ReadActivity(device);
        return told;
    }
};

CKxDevUI_LightSlider::CKxDevUI_LightSlider()
    : LightControl(this, {.name = L"KxDEVGUI_LightSlider",
                          .size = {268, 92},
                          .title = KX_GetTranslation(L"Lamp", kSource),
                          .tabsInside = true}),
      m_slider(*this, 0), m_field(kFieldId, 0, 0), m_presets(kPresets) {
    m_slider.SetMouseWheelGranularity(1, 1, 10);
    Take(m_slider);
    [[maybe_unused]] const bool other = HoldScale({0, 100, 0}, eKxLampUnit_Percent);
}

CKxDevUI_LightSlider::~CKxDevUI_LightSlider() { Binding::EndOwnWindow(this); }

bool CKxDevUI_LightSlider::Make(const Parts& parts) {
    const long right = Width() - kRight, left = HasShutter() ? kBesideShutter : kLeft;
    const long hours = m_scale.IsThere() ? kLeft + kPreset + 2 * kGap : kLeft;
    HWND button = nullptr;
    if (!MakeTitle(parts, kReading + kRight) || !MakeShutter(parts, {kLeft, kTop + 4}) ||
        !parts.Label(kReadingId, ReadingText(), {right - kReading - kSign, 2, right - kSign, 18}, SS_RIGHT) ||
        !parts.PushRadio(button, kButtonId, Translated(L"On"), {left, kTop + 6, left + kButton, kTop + 30}, false,
                         nullptr, WS_TABSTOP) ||
        !MakeScale(parts, left + kButton + kGap) ||
        !parts.Label(kHoursId, HoursText(), {hours, kLastRow, right, kLastRow + kLastHeight}, SS_CENTERIMAGE))
        return false;
    ShowLight(button);
    return Finish(parts);
}

bool CKxDevUI_LightSlider::MakeScale(const Parts& parts, long left) {
    if (!m_scale.IsThere()) return static_cast<bool>(parts);
    const long unit = Width() - kRight - kUnit, arrows = unit - 2 - kArrows, field = arrows - kField;
    if (!m_slider.Make(parts, {left, kTop, field - kGap, kTop + kHeight})) return false;
    m_slider.SetTabStop(true);
    m_slider.Show(m_intensity);
    return parts && m_field.Make(parts, {field, kTop + 8, arrows, kTop + 28}) &&
           m_arrows.Make(parts, {arrows, kTop + 8, arrows + kArrows, kTop + 28}) &&
           parts.Label(kUnitId, kx::lamp::UnitText(m_unit), {unit, kTop + 11, unit + kUnit, kTop + 27}) &&
           m_presets.Make(parts, {kLeft, kLastRow, kLeft + kPreset, kLastRow + kLastHeight}, kGap);
}

bool CKxDevUI_LightSlider::Update(CDMApi_LogDevId id, const LightBand& what) {
    const auto ask = [](const IKxDeviceLamp& device) { return Told::Of(device); };
    return UpdateFrom<IKxDeviceLamp>(this, kSource, id, ask, [&](const Told& told) {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        bool other = false;
        if (what.structure) {
            other = HoldScale(told.scale, told.unit) || told.hasShutter != HasShutter();
            SetHasShutter(told.hasShutter);
            m_fullTemperature = told.fullTemperature;
        }
        if (what.state) {
            if (told.intensity) SetIntensity(*told.intensity);
            SetOn(told.on);
            m_times = told.times;
            SetShutter(told.open);
        }
        if (other) Remake();
        if (alive) Follow(told.activity, id);
        if (!alive) return;
        ShowTexts();
        // Of a lamp that is off there is nothing but what still glows.
        const bool shines = told.on || told.activity.activity == EKxActivity::Moving;
        const auto measured = shines ? told.times.measured : std::nullopt;
        if (what.state && HWND{m_slider}) KX_TellMeasured(m_hWnd, {.measured = measured});
    });
}

// ---- What is shown -------------------------------------------------------------------------------------------------

// True when the parts of it come or go: then they are to be made anew.
bool CKxDevUI_LightSlider::HoldScale(const kx::lamp::Scale& scale, int unit) {
    const kx::lamp::Scale before = std::exchange(m_scale, scale);
    const bool sameUnit = std::exchange(m_unit, unit) == unit;
    if (before == scale && sameUnit) return false;
    if (scale.IsThere()) {
        // Of a scale without steps a thumb that is dragged finds round numbers, too.
        const double stride = kx::lamp::StrideOf(scale);
        m_slider.InitValues(scale.minimum, scale.maximum, stride, stride, 0);
        m_field.SetRestriction(scale.minimum, scale.maximum);
        m_field.SetUnit(kx::lamp::UnitText(unit));
        SetTextOf(PartAt(kUnitId), kx::lamp::UnitText(unit));
    }
    m_intensity = kx::lamp::Clamped(scale, m_intensity);
    ShowIntensity();
    return before.IsThere() != scale.IsThere();
}

void CKxDevUI_LightSlider::SetScale(double minimum, double maximum, double step, int unit) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    if (HoldScale(kx::lamp::ScaleOf(minimum, maximum, step), unit)) Remake();
    if (alive) ShowTexts();
}

void CKxDevUI_LightSlider::SetIntensity(double intensity) {
    if (!std::isfinite(intensity)) return;
    const double clamped = kx::lamp::Clamped(m_scale, intensity);
    if (clamped == m_intensity) return;
    m_intensity = clamped;
    // It was that of another one.
    m_times.measured.reset();
    ShowIntensity();
    ShowTexts();
}

void CKxDevUI_LightSlider::ShowIntensity() {
    m_presets.Show(m_hWnd, m_scale, m_unit, m_intensity);
    if (!m_scale.IsThere()) return;
    m_slider.Show(m_intensity);
    m_field.Show(m_intensity);
    m_field.PaintNow();
}

void CKxDevUI_LightSlider::SetOn(bool on) {
    if (std::exchange(m_on, on) == on) return;
    m_times.measured.reset();
    ShowLight(PartAt(kButtonId));
    ShowTexts();
}

void CKxDevUI_LightSlider::ShowLight(HWND button) {
    const EKxLight light = m_on ? EKxLight::On : EKxLight::Off;
    if (HWND{m_slider} && KX_GetLight(m_slider) != light) KX_TellLight(m_slider, light);
    const LRESULT wanted = m_on ? BST_CHECKED : BST_UNCHECKED;
    if (SendMessageW(button, BM_GETCHECK, 0, 0) != wanted)
        SendMessageW(button, BM_SETCHECK, static_cast<WPARAM>(wanted), 0);
}

void CKxDevUI_LightSlider::SetFullTemperature(double kelvin) {
    m_fullTemperature = kelvin;
    ShowTexts();
}

// Of a light that follows, as it is.
std::optional<double> CKxDevUI_LightSlider::GetColorTemperature() const {
    if (!m_on || IsLost() || !m_scale.IsThere()) return {};
    const double light = m_times.measured.value_or(m_intensity);
    const double kelvin = kx::lamp::ColorTemperature(m_unit, m_fullTemperature, m_scale.maximum, light);
    return kelvin > 0 ? std::optional(kelvin) : std::nullopt;
}

// What is to be waited for, or the colour.
CKxStringW CKxDevUI_LightSlider::ReadingText() const {
    if (m_on && m_times.warmUp)
        return Translated(L"Warming up") + L", " + kx::lamp::LeftText(*m_times.warmUp, m_times.warmUpLeft);
    if (!m_on && m_times.coolDown > 0)
        return Translated(L"Cooling down") + L", " + kx::lamp::LeftText(-1, m_times.coolDown);
    return kx::lamp::KelvinText(GetColorTemperature().value_or(0));
}

CKxStringW CKxDevUI_LightSlider::HoursText() const {
    if (!m_times.burnt) return {};
    const CKxStringW hours = kx::lamp::HoursText(*m_times.burnt, m_times.rated);
    const bool isWorn = kx::lamp::IsWornOut(*m_times.burnt, m_times.rated);
    return isWorn ? Translated(L"Worn:") + L" " + hours : hours;
}

void CKxDevUI_LightSlider::ShowTexts() const {
    SetTextOf(PartAt(kReadingId), ReadingText());
    SetTextOf(PartAt(kHoursId), HoursText());
}

void CKxDevUI_LightSlider::OnLook() { ShowTexts(); }

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_LightSlider::OnIntensityChangeRequest(double, bool&) {}
void CKxDevUI_LightSlider::OnStateChangeRequest(bool, bool&) {}
void CKxDevUI_LightSlider::OnPresetStoreRequest(int, double, bool&) {}

void CKxDevUI_LightSlider::Ask(double intensity) {
    const double wanted = kx::lamp::Nearest(m_scale, intensity);
    if (wanted == m_intensity) return;
    const auto held = [this] { return m_intensity; };
    if (IsGranted(held, [&](bool& veto) { OnIntensityChangeRequest(wanted, veto); }))
        SetIntensity(kx::lamp::Nearest(m_scale, wanted));
}

double CKxDevUI_LightSlider::OnScale(int, double wanted) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    Ask(wanted);
    return alive ? m_intensity : wanted;
}

void CKxDevUI_LightSlider::AskState() {
    const bool on = !m_on, isHot = on && m_times.coolDown > 0;
    const bool granted = IsGranted([&](bool& veto) {
        if (isHot)
            veto = true, KX_SayWhyRefused(Translated(L"The lamp has to cool down first."));
        else
            OnStateChangeRequest(on, veto);
    });
    if (granted) SetOn(on);
}

void CKxDevUI_LightSlider::AskStore(int preset) {
    if (IsLost()) return;
    const double held = m_intensity;
    if (IsGranted([&](bool& veto) { OnPresetStoreRequest(preset, held, veto); })) SetPreset(preset, held);
}

void CKxDevUI_LightSlider::Command(int id, int code) {
    if (id == kButtonId && code == BN_CLICKED) return AskState();
    if (const auto typed = m_field.TypedBy(id, code)) return Ask(*typed);
    const auto wish = m_presets.WishOf(id, code);
    if (wish && wish->stores) return AskStore(wish->preset);
    if (wish) Ask(*GetPreset(wish->preset));
}

Handled CKxDevUI_LightSlider::Handle(const Message& message) {
    if (message.id == WM_DRAWITEM && m_presets.Draw(message)) return TRUE;
    if (message.id == WM_NOTIFY && message.lParam != 0) {
        const auto& step = *reinterpret_cast<const NMUPDOWN*>(message.lParam);
        if (step.hdr.code == UDN_DELTAPOS && step.hdr.hwndFrom && step.hdr.hwndFrom == HWND{m_arrows}) {
            Ask(kx::lamp::After(m_scale, m_intensity, step.iDelta));
            // The arrows have no position of their own.
            return TRUE;
        }
    }
    const Handled told = DescribePart(message, [this](HWND part, KxAccess& access) {
        if (part == HWND{m_slider}) access.unit = kx::lamp::UnitText(m_unit);
        return m_presets.Tell(part, access);
    });
    return told ? told : HandleLight(message);
}
