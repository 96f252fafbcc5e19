#include <kxdevui/light/devgui_multilaserline.h>

#include <algorithm>
#include <cmath>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_menu.h>
#include <kxdevui/controls/hpot_light.h>
#include <kxdevui/controls/hpot_slider.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_color.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;
using namespace kx::multilaser;
using Thumb = CKxDevUI_MultiLaserLine::CKxDevUI_MultiLaserLineHPot;

namespace {

constexpr wchar_t kSource[] = L"devgui_multilaserline";

constexpr int kInfoId = kTitleId + 1, kUnitId = kTitleId + 2, kSliderId = 10201, kButtonId = 10202;
constexpr int kScaleCommand = 1, kUnitCommand = 2;
// The point of colour, in unzoomed pixels.
constexpr RECT kPoint{1, 5, 15, 19};

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, kSource); }

RECT Zoomed(const RECT& rect) {
    const auto at = [](LONG length) { return CKxGUILayoutManager::Zoomed(length); };
    return {at(rect.left), at(rect.top), at(rect.right), at(rect.bottom)};
}

}  // namespace

// ---- The slider ----------------------------------------------------------------------------------------------------

Thumb::CKxDevUI_MultiLaserLineHPot() {
    SetbAOTF(true);
    SetScale(m_powers);
}

void Thumb::SetScale(EKxPowerScale scale) {
    m_powers = scale;
    InitValues(0, LastPlace(scale), 1, 1, 0);
    SetPower(m_power);
}

bool Thumb::SetColor(COLORREF color) {
    if (!m_lamp.ofScheme && m_lamp.high == color) return false;
    m_lamp.ofScheme = false;
    m_lamp.low = m_lamp.high = color;
    Redraw();
    return true;
}

// SetValue would take places less than 0.001 apart for the same.
void Thumb::SetPower(double percent) {
    const double place = PlaceOf(m_powers, percent);
    m_power = percent;
    if (place == m_held.value) return;
    m_held.value = place;
    Update(true, false, true);
}

// What is held in the end is what the line holds, be it the old power.
void Thumb::OnHPotChange(double& value, bool& skip) {
    skip = false;
    const kx::hpot::Watch watch(this);
    if (m_owner) m_owner->AskPower(PowerAt(m_powers, kx::hpot::Truncated(value)));
    if (watch) value = PlaceOf(m_powers, m_power);
}

// A drag has asked for all already; wheel and keys have not.
void Thumb::OnHPotDragDrop() {
    const double from = PlaceOf(m_powers, m_power), to = GetValue();
    if (!m_owner || std::abs(to - from) < 0.001) return;
    const kx::hpot::Watch watch(this);
    m_owner->AskPower(PowerAt(m_powers, PlaceAfter(m_powers, from, to)));
    if (watch) SetPower(m_power);
}

bool Thumb::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    return GetFocus() == m_hWnd && CKxDevUI_HPot::HandleMouseWheel(wParam, lParam);
}

HBITMAP Thumb::CreateLinearBitmap(bool enabled) {
    using namespace kx::hpot;
    ScaleCanvas canvas(m_hWnd);
    const HBRUSH background = canvas ? BackgroundBrush(canvas) : nullptr;
    if (!background) return nullptr;
    FillRect(canvas, &canvas.Client(), background);
    const Rows rows =
        RowsOf(ThumbRect(), m_trackLeft, m_trackLength, ZoomedLine(6), canvas.Client().bottom, canvas.Font());
    m_lamp.strip = rows.track;
    const TickSpace space = SpaceIn(canvas, m_trackLeft, m_trackLength, canvas.Client().right);
    DrawScale(canvas, MarkTicks(m_scale, MarksOf(m_powers), space), rows, m_trackLeft,
              enabled ? COLOR_3DDKSHADOW : COLOR_BTNSHADOW, enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    return canvas.Release();
}

// ---- The control ---------------------------------------------------------------------------------------------------

CKxDevUI_MultiLaserLine::CKxDevUI_MultiLaserLine()
    : Control(this, {.name = L"KxDEVGUI_MultiLaserLine", .size = {520, 42}, .title = {}, .tabsInside = true}),
      m_requests(std::make_unique<Activity>(ActivityHost{
          [](HWND) { return -1L; }, [this](HWND, long) { return HWND{m_slider}; },
          [this](HWND) { return SpokenName(); }, [this](HWND) { ShowRequests(); }, [this](HWND) { return SignPlace(); },
          true, [this](HWND) { return HWND{m_slider}; }, [this](HWND) { return m_slider.ThumbPlace(); }})) {
    m_slider.SetId(kSliderId);
    m_slider.SetOwner(this);
}

CKxDevUI_MultiLaserLine::~CKxDevUI_MultiLaserLine() { Destroy(); }

// What can be held without a window is set before there is one.
bool CKxDevUI_MultiLaserLine::Make(const Parts& parts) {
    const long right = m_width - 186;
    m_requests->Attach(parts.Window());
    m_slider.SetColor(Color());
    ShowPower();
    HWND button = nullptr;
    // To disable one that is there already takes as long under Wine as an eighth of making it.
    const auto use = [this] { return DWORD{WS_TABSTOP} | (IsOperable(m_line) ? DWORD{0} : DWORD{WS_DISABLED}); };
    if (!parts.Label(m_label, kTitleId, NameText(), {18, 4, 92, 38}) ||
        !parts.PushRadio(button, kButtonId, Translated(L"On"), {96, 8, 132, 28}, false, nullptr, use() | BS_NOTIFY) ||
        !m_slider.Make(parts, {136, 0, std::max(right, 136L), m_height - 1}, use()) ||
        !m_field.Make(parts, {right + 4, 8, right + 52, 28}) ||
        !parts.Label(kUnitId, UnitText(), {right + 56, 11, right + 76, 27}) ||
        !parts.Label(kInfoId, InfoText(), {right + 80, 4, m_width, 38})) {
        return false;
    }
    ShowLight(button);
    m_requests->Tell(ActivityNow());
    if (parts && !IsOperable(m_line)) ShowUsable();
    if (parts) m_requests->Show();
    return static_cast<bool>(parts);
}

bool CKxDevUI_MultiLaserLine::Update(CDMApi_LogDevId engine) {
    const auto ask = [number = m_number](const IKxDeviceLaserEngine& device) {
        SKxLaserLine line;
        return device.GetLine(number, line) ? std::optional(line) : std::nullopt;
    };
    bool known = false;
    const auto show = [&](const std::optional<SKxLaserLine>& line) {
        known = line.has_value();
        if (line) SetLine(*line);
    };
    return UpdateFrom<IKxDeviceLaserEngine>(this, kSource, engine, ask, show) && known;
}

void CKxDevUI_MultiLaserLine::SetLine(const SKxLaserLine& line) {
    SKxLaserLine cleaned = Cleaned(line);
    if (cleaned == m_line) return;
    m_line = std::move(cleaned);
    Show();
}

void CKxDevUI_MultiLaserLine::SetPower(double percent) {
    if (std::isnan(percent)) return;
    SKxLaserLine line = m_line;
    line.power = std::clamp(percent, 0.0, 100.0);
    SetLine(line);
}

void CKxDevUI_MultiLaserLine::SetOn(bool on) {
    SKxLaserLine line = m_line;
    line.on = on;
    SetLine(line);
}

void CKxDevUI_MultiLaserLine::SetScale(EKxPowerScale scale) {
    if (scale == m_scale) return;
    m_scale = scale;
    m_slider.SetScale(scale);
    ShowLight(PartAt(kButtonId));
}

void CKxDevUI_MultiLaserLine::SetUnit(EKxPowerUnit unit) {
    if (unit == m_unit) return;
    m_unit = unit;
    ShowPower();
    ShowTexts();
}

bool CKxDevUI_MultiLaserLine::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    return m_slider.HandleMouseWheel(wParam, lParam);
}

void CKxDevUI_MultiLaserLine::OnPowerChangeRequest(double, bool&) {}
void CKxDevUI_MultiLaserLine::OnStateChangeRequest(bool, bool&) {}
void CKxDevUI_MultiLaserLine::OnViewChanged() {}
void CKxDevUI_MultiLaserLine::OnFocused() {}

// ---- What is shown -------------------------------------------------------------------------------------------------

CKxStringW CKxDevUI_MultiLaserLine::NameText() const {
    if (m_line.wavelength <= 0) return m_line.name;
    const CKxStringW wavelength = KX_FormatNumber(L"%g nm", m_line.wavelength);
    return m_line.name.IsEmpty() ? wavelength : m_line.name + L"\n" + wavelength;
}

CKxStringW CKxDevUI_MultiLaserLine::SpokenName() const {
    if (m_line.wavelength <= 0) return m_line.name;
    return Listed({m_line.name, KX_FormatNumber(L"%g ", m_line.wavelength) + UnitInWords(L"nm")});
}

// The place of the thumb is no number that anybody knows.
bool CKxDevUI_MultiLaserLine::Tell(HWND part, KxAccess& access) {
    const bool isButton = part == PartAt(kButtonId);
    access.name = Listed({SpokenName(), Translated(isButton ? L"On" : L"Power")});
    if (part != HWND{m_slider}) return true;
    access.unit = UnitText();
    access.value = KX_FormatNumber(L"%.3g", FieldValue());
    access.setValue = [this](const CKxStringW& text) {
        double number = 0;
        if (!KX_StringToDouble(text, number) || !m_field.Takes(number)) return false;
        const double wanted = FromUnit(m_line, m_unit, number);
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        AskPower(wanted);
        return !alive || m_line.power == wanted;
    };
    return true;
}

CKxStringW CKxDevUI_MultiLaserLine::UnitText() const {
    return m_unit == EKxPowerUnit::Milliwatts && m_line.fullPower > 0 ? L"mW" : L"%";
}

CKxStringW CKxDevUI_MultiLaserLine::PowerText(double percent) const {
    return KX_FormatNumber(L"%.3g ", InUnit(m_line, m_unit, percent)) + UnitText();
}

CKxStringW CKxDevUI_MultiLaserLine::InfoText() const {
    const auto because = [&](const wchar_t* what) {
        return m_line.reason.IsEmpty() ? Translated(what) : Translated(what) + L"\n" + m_line.reason;
    };
    if (!m_line.interlock && !m_line.usable && !m_line.reason.IsEmpty()) return m_line.reason;
    if (m_line.interlock) return because(L"Interlock open");
    if (!m_line.usable) return because(L"Not in use");
    if (m_line.state == eKxDeviceState_Faulty) return because(L"Failed");
    CKxStringW text;
    if (m_line.measured) text = Translated(L"Measured") + L" " + PowerText(*m_line.measured);
    if (m_line.gain) text = text + L"\n" + Translated(L"Gain") + KX_FormatNumber(L" %.3g %%", *m_line.gain);
    return text;
}

// Milliwatts are shown to the microwatt.
double CKxDevUI_MultiLaserLine::FieldValue() const {
    const double number = InUnit(m_line, m_unit, m_line.power);
    return m_unit == EKxPowerUnit::Percent ? number : std::round(number * 1000) / 1000;
}

COLORREF CKxDevUI_MultiLaserLine::Color() const {
    return m_line.wavelength > 0 ? KX_RGBFromWavelength(m_line.wavelength) : RGB(255, 255, 255);
}

void CKxDevUI_MultiLaserLine::Show() {
    const Alive alive(this);
    ShowTexts();
    ShowPower();
    ShowLight(PartAt(kButtonId));
    m_requests->Tell(ActivityNow());
    if (alive) ShowUsable();
}

void CKxDevUI_MultiLaserLine::ShowTexts() {
    if (!m_hWnd) return;
    SetTextOf(PartAt(kTitleId), NameText());
    SetTextOf(PartAt(kUnitId), UnitText());
    SetTextOf(PartAt(kInfoId), InfoText());
}

void CKxDevUI_MultiLaserLine::ShowPower() {
    m_slider.SetPower(m_line.power);
    // A power over the limit, which has been lowered since, is shown all the same.
    const double most = InUnit(m_line, m_unit, std::max(m_line.limit, m_line.power));
    m_field.SetRestriction(0, std::max(most, FieldValue()));
    m_field.SetUnit(UnitText());
    m_field.Show(FieldValue());
}

void CKxDevUI_MultiLaserLine::ShowLight(HWND button) {
    if (!m_slider) return;
    const RECT point = Zoomed(kPoint);
    if (m_slider.SetColor(Color())) InvalidateRect(m_hWnd, &point, TRUE);
    const EKxLight light = m_line.on ? EKxLight::On : EKxLight::Off;
    if (KX_GetLight(m_slider) != light) KX_TellLight(m_slider, light);
    KxMeasured measured;
    if (m_line.on && m_line.measured) measured.measured = PlaceOf(m_scale, *m_line.measured);
    if (KX_GetMeasured(m_slider) != measured) KX_TellMeasured(m_slider, measured);
    const WPARAM wanted = m_line.on ? BST_CHECKED : BST_UNCHECKED;
    if (SendMessageW(button, BM_GETCHECK, 0, 0) != static_cast<LRESULT>(wanted))
        SendMessageW(button, BM_SETCHECK, wanted, 0);
}

// What is disabled may take the focus to a host's window.
void CKxDevUI_MultiLaserLine::ShowUsable() {
    const HWND window = m_hWnd;
    const bool enabled = IsWindowEnabled(window) != FALSE, operable = enabled && IsOperable(m_line);
    const Parts parts(window, this);
    const KeepsFocus keeps(window);
    for (const int id : {kTitleId, kUnitId, kInfoId})
        if (parts) Enable(GetDlgItem(window, id), enabled);
    for (const int id : {kButtonId, kSliderId, m_field.GetId()})
        if (parts) Enable(GetDlgItem(window, id), operable);
}

KxActivity CKxDevUI_MultiLaserLine::ActivityNow() const {
    if (!IsOperable(m_line)) return {EKxActivity::Locked, -1, m_line.reason};
    switch (m_line.state) {
    case eKxDeviceState_Moving: return {EKxActivity::Moving, -1, {}};
    case eKxDeviceState_Unknown: return {EKxActivity::Unknown, -1, {}};
    case eKxDeviceState_Faulty: return {EKxActivity::Failed, -1, m_line.reason};
    default: return {};
    }
}

void CKxDevUI_MultiLaserLine::ShowRequests() const {
    InvalidateRect(m_hWnd, nullptr, TRUE);
    if (m_slider) InvalidateRect(m_slider, nullptr, FALSE);
}

// Below the point of colour.
RECT CKxDevUI_MultiLaserLine::SignPlace() const {
    const RECT point = Zoomed(kPoint);
    const long side = Activity::SignSide(), top = point.bottom + CKxGUILayoutManager::Zoomed(4);
    return {point.left, top, point.left + side, top + side};
}

// ---- The user ------------------------------------------------------------------------------------------------------

void CKxDevUI_MultiLaserLine::AskPower(double percent) {
    const double wanted = std::clamp(percent, 0.0, m_line.limit);
    if (wanted == m_line.power) return;
    const Activity::Question question(*m_requests);
    const SKxLaserLine before = m_line;
    const kx::ui::Answer answer = AskHost(this, [&](bool& veto) { OnPowerChangeRequest(wanted, veto); });
    if (answer == kx::ui::Answer::Agreed) SetLine(Agreed(before, m_line, wanted));
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, -1);
}

void CKxDevUI_MultiLaserLine::AskState(bool on) {
    const Activity::Question question(*m_requests);
    const kx::ui::Answer answer = AskHost(this, [&](bool& veto) { OnStateChangeRequest(on, veto); });
    // An interlock may have opened meanwhile.
    if (answer == kx::ui::Answer::Agreed && (!on || IsOperable(m_line))) SetOn(on);
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, -1);
}

void CKxDevUI_MultiLaserLine::Command(int id, int code) {
    if (id == kButtonId && code == BN_CLICKED)
        AskState(!m_line.on);
    else if (const auto number = m_field.TypedBy(id, code))
        AskPower(FromUnit(m_line, m_unit, *number));
    else if (code == (id == kButtonId ? BN_SETFOCUS : EN_SETFOCUS))
        OnFocused();
}

void CKxDevUI_MultiLaserLine::ShowMenu(POINT at) {
    const bool isLinear = m_scale == EKxPowerScale::Linear, isPercent = m_unit == EKxPowerUnit::Percent;
    CKxMenu menu;
    menu.AppendMenuItem(kScaleCommand, Translated(isLinear ? L"Logarithmic scale" : L"Linear scale"));
    menu.AppendMenuItem(kUnitCommand, Translated(isPercent ? L"Power in mW" : L"Power in %"), m_line.fullPower > 0);
    const Parts parts(m_hWnd, this);
    const int chosen = menu.TrackContextMenu(eKxMenuTrack_ReturnCommand | eKxMenuTrack_KeepControl, at.x, at.y, m_hWnd);
    if (!parts || chosen == 0) return;
    if (chosen == kScaleCommand) SetScale(isLinear ? EKxPowerScale::Logarithmic : EKxPowerScale::Linear);
    if (chosen == kUnitCommand) SetUnit(isPercent ? EKxPowerUnit::Milliwatts : EKxPowerUnit::Percent);
    OnViewChanged();
}

Handled CKxDevUI_MultiLaserLine::Handle(const Message& message) {
    const auto tell = [this](HWND part, KxAccess& access) { return Tell(part, access); };
    if (const Handled told = DescribePart(message, tell)) return told;
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
        return Paint(message, {.children = true}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
            const COLORREF face = KX_GetSysColor(COLOR_BTNFACE), color = Color();
            const bool enabled = IsWindowEnabled(message.window) != FALSE;
            Activity::DrawFace(message.window, dc, area);
            kx::hpot::LightColors colors{};
            colors.badge = enabled ? color : kx::hpot::Mixed(face, color, 40);
            colors.sign = KX_GetSysColor(enabled ? COLOR_3DDKSHADOW : COLOR_BTNSHADOW);
            kx::hpot::DrawBadge(dc, Zoomed(kPoint), false, colors);
        });
    case WM_ENABLE:
        ShowUsable();
        if (IsWindow(message.window)) InvalidateRect(message.window, nullptr, TRUE);
        return message.Default();
    case WM_CONTEXTMENU: {
        POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
        if (at.x == -1 && at.y == -1) {
            at = {0, 0};
            ClientToScreen(message.window, &at);
        }
        ShowMenu(at);
        return 0;
    }
    default: return std::nullopt;
    }
}
