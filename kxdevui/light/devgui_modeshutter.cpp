#include <kxdevui/light/devgui_modeshutter.h>

#include <array>
#include <cmath>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/light/shutter_device.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_modeshutter";
constexpr int kSeparatorId = 10100, kRowTitleId = 10101, kModesId = 10201;
constexpr long kMostSteps = 10000;  // no aperture has more, whatever its driver says

}  // namespace

ATOM CKxDevUI_ModeShutter::m_Atom = 0;
std::map<HWND, CKxDevUI_ModeShutter*> CKxDevUI_ModeShutter::m_Instances;

CKxDevUI_ModeShutter::CKxDevUI_ModeShutter()
    : m_requests(std::make_unique<Activity>(
          ActivityHost{[](HWND) { return -1L; }, [](HWND, long) -> HWND { return nullptr; },
                       [this](HWND) { return m_title; }, [this](HWND) { ShowRequests(); },
                       [this](HWND) { return SignPlace(); }, false, [this](HWND) { return HWND{m_slider}; }})) {
    m_width = 256;
    m_height = 32;
}

CKxDevUI_ModeShutter::~CKxDevUI_ModeShutter() { Binding::EndOwnWindow(this); }

// ---- The device ----------------------------------------------------------------------------------------------------

// What an update shows.
struct CKxDevUI_ModeShutter::Reading {
    std::vector<double> apertures;
    double aperture = 0;
    bool open = false;
    EKxShutterMode mode = eKxShutterMode_Fast;
    KxActivity activity;

    // Asks for what is wanted. In the order of Update's parameters: steps, aperture, state, mode.
    template <class Shutter>
    static Reading Of(const Shutter& shutter, std::array<bool, 4> flags) {
        Reading told;
        if (flags[0]) told.apertures = AperturesOf(shutter);
        if (flags[3]) told.mode = shutter.GetMode();
        if (flags[2]) told.open = shutter.GetState();
        if (flags[1]) told.aperture = shutter.GetAperture();
        return told;
    }

    template <class Shutter>
    static std::vector<double> AperturesOf(const Shutter& shutter) {
        const long count = shutter.GetApertureSteps();
        if (count > kMostSteps) KX_LOG(kSource, L"a shutter with %ld steps counts as one without", count);
        std::vector<double> apertures;
        for (long i = 0; i < count && count <= kMostSteps; ++i) {
            apertures.push_back(shutter.GetStepAperture(i));
            if (!std::isfinite(apertures.back())) {
                KX_LOG(kSource, L"step %ld is no finite number: the shutter counts as one without steps", i);
                return {};
            }
        }
        return apertures;
    }
};

void CKxDevUI_ModeShutter::Load(unsigned shutterId, const std::vector<double>& apertures) {
    if (shutterId != m_shutterId) m_modesOffered = {};
    m_shutterId = shutterId;
    m_apertures = apertures;
    m_apertureIndex = FindApertureIndex(m_aperture);
}

bool CKxDevUI_ModeShutter::Init(unsigned shutterId) {
    if (shutterId == 0) return false;
    const auto ask = [&] { return Reading::Of(kx::shutter::Managed{shutterId}, {true, true, true, true}); };
    const auto told = AskAll(this, kSource, shutterId, ask);
    if (!told) return false;
    m_aperture = told->aperture;
    m_state = told->open;
    m_mode = told->mode;
    Load(shutterId, told->apertures);
    return true;
}

template <class Shutter>
bool CKxDevUI_ModeShutter::Show(unsigned id, const Shutter& shutter, std::array<bool, 4> flags) {
    const Alive alive(this);
    Reading told;
    const auto ask = [&] {
        told = Reading::Of(shutter, flags);
        if (const IKxDevice* device = DMApi::LogDev_GetInstance(id)) told.activity = ReadActivity(*device);
    };
    if (!AskDevice(kSource, id, ask)) return false;
    if (flags[0] && alive) {
        Load(id, told.apertures);
        CreateControls();
    }
    if (alive) m_requests->Tell(told.activity, id);
    if (flags[3] && alive) SetMode(told.mode);
    if (flags[2] && alive) SetState(told.open);
    if (flags[1] && alive) SetAperture(told.aperture);
    return true;
}

bool CKxDevUI_ModeShutter::Update(unsigned shutterId, bool steps, bool aperture, bool state, bool mode) {
    return shutterId != 0 && Show(shutterId, kx::shutter::Managed{shutterId}, {steps, aperture, state, mode});
}

bool CKxDevUI_ModeShutter::Update(IKxDeviceShutter* device, bool steps, bool aperture, bool state, bool mode) {
    return device && Show(device->GetLogDevId(), *device, {steps, aperture, state, mode});
}

void CKxDevUI_ModeShutter::Done() {
    m_apertures.clear();
    m_apertureIndex = -1;
}

void CKxDevUI_ModeShutter::SetMode(EKxShutterMode mode) {
    if (mode == m_mode) return;
    m_mode = mode;
    const Alive alive(this);
    SelectMode();
    if (alive) EnableSlider();
}

EKxShutterMode CKxDevUI_ModeShutter::GetMode() const { return m_mode; }

void CKxDevUI_ModeShutter::SetAperture(double aperture) {
    if (!std::isfinite(aperture) || aperture == m_aperture) return;
    m_aperture = aperture;
    m_apertureIndex = FindApertureIndex(aperture);
    if (HWND{m_slider}) m_slider.SetPower(aperture, true);
}

double CKxDevUI_ModeShutter::GetAperture() const { return m_aperture; }
void CKxDevUI_ModeShutter::SetState(bool open) {
    m_state = open;
    if (KX_GetLight(m_hWnd) != EKxLight::None) KX_TellLight(m_hWnd, open ? EKxLight::On : EKxLight::Off);
}

bool CKxDevUI_ModeShutter::GetState() const { return m_state; }

long CKxDevUI_ModeShutter::FindApertureIndex(double aperture) const {
    return FindNearestValue(aperture, m_apertures.data(), static_cast<long>(m_apertures.size()));
}

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_ModeShutter::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (width >= 0) m_width = width;
        if (height >= 0) m_height = height;
        // Without an id, and visible and enabled whatever the control is.
        const HWND window = creation.Window(static_cast<void*>(static_cast<CKxDevUI_Base*>(this)), m_Atom,
                                            {.name = L"KxDEVGUI_ModeShutter",
                                             .object = L"CKxDevUI_ModeShutter",
                                             .procedure = WndProc,
                                             .extraBytes = 0,
                                             .background = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1}),
                                             .style = WS_CLIPCHILDREN,
                                             .mark = Mark::None},
                                            parent, {x, y}, {m_width, m_height});
        if (!creation.Done(this, window)) return nullptr;
        m_visible = true;
        m_requests->Attach(window);
        CreateControls();
        if (!creation.Done(this, window)) return nullptr;
        m_requests->Show();
        return window;
    });
}

void CKxDevUI_ModeShutter::Destroy() { Binding::EndWindow(this); }

void CKxDevUI_ModeShutter::DestroyControls() {
    const Alive alive(this);
    const HWND separator = std::exchange(m_separatorWindow, nullptr), title = std::exchange(m_titleWindow, nullptr);
    if (const HWND list = std::exchange(m_modeList, nullptr)) DestroySubclassed(list);
    for (const HWND each : {separator, title}) {
        if (each) DestroyWindow(each);
    }
    if (!alive) return;
    const HWND window = m_hWnd, focus = GetFocus();
    const bool hadFocus = focus && IsChild(m_slider, focus);
    m_slider.Destroy();
    // The row has the sign from now on.
    if (alive && m_hWnd && m_requests->HasSign()) InvalidateRect(m_hWnd, nullptr, TRUE);
    // Whatever had the focus has taken it along; the user's keys shall not go nowhere.
    if (alive && hadFocus && window && m_hWnd == window && !GetFocus()) ::SetFocus(window);
}

// Every window that comes or goes is told to the parent, which may end this one.
void CKxDevUI_ModeShutter::CreateControls() {
    const HWND window = m_hWnd;
    const Parts parts(window, this);
    const EKxLight light = KX_GetLight(window);
    const KxMeasured measured = KX_GetMeasured(window);
    DestroyControls();
    if (!parts || m_hWnd != window) return;
    if (m_separator && !parts.Add(m_separatorWindow, L"STATIC", kSeparatorId, nullptr, {0, 0, 256, 1}, SS_GRAYRECT)) {
        return;
    }
    long x = 0;
    if (m_showTitle) {
        if (!parts.Label(m_titleWindow, kRowTitleId, m_title, {0, 8, 56, 24})) return;
        x = 40;
    }
    if (m_showModes) {
        if (!parts.DropDown(m_modeList, kModesId, {x, 4, x + 72, 88})) return;
        PutAbove(m_modeList, m_titleWindow);
        FillModes();
        if (!parts) return;
        x += 80;
    }
    RECT client{};
    GetClientRect(window, &client);
    if (client.right != m_width || client.bottom != m_height) {
        // The children stand unzoomed, and so has the window to, which may have been zoomed before.
        SetWindowPos(window, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    RegisterZoom(window);
    if (!m_apertures.empty()) MakeSlider(x);
    if (parts && HWND{m_slider}) KX_TellLight(window, light), KX_TellMeasured(window, measured);
    if (parts && m_tabStop) ArrangeTabStops();
    if (parts && !IsWindowEnabled(window)) FollowWindow(false);
    if (parts) KX_FollowColorScheme(window);
}

void CKxDevUI_ModeShutter::FillModes() {
    const Alive alive(this);
    std::array<bool, kx::modeshutter::kModes> offered{};
    const auto ask = [&] {
        for (int mode = 0; mode < kx::modeshutter::kModes; ++mode)
            offered[static_cast<std::size_t>(mode)] =
                kx::shutter::Managed{m_shutterId}.GetModeAvailable(static_cast<EKxShutterMode>(mode));
    };
    const bool known = m_shutterId != 0 && AskDevice(kSource, m_shutterId, ask);
    if (!alive) return;
    if (known) m_modesOffered = offered;
    for (int mode = 0; m_modeList && mode < kx::modeshutter::kModes; ++mode) {
        if (!m_modesOffered[static_cast<std::size_t>(mode)]) continue;
        const CKxStringW text = KX_GetTranslation(kx::modeshutter::ModeText(mode), L"Smart shutter mode: %s", kSource);
        const LRESULT item = SendMessageW(m_modeList, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        SendMessageW(m_modeList, CB_SETITEMDATA, static_cast<WPARAM>(item), mode);
    }
    SelectMode();
}

void CKxDevUI_ModeShutter::SelectMode() {
    if (!m_modeList) return;
    const LRESULT count = SendMessageW(m_modeList, CB_GETCOUNT, 0, 0);
    LRESULT item = 0;
    while (item < count && SendMessageW(m_modeList, CB_GETITEMDATA, static_cast<WPARAM>(item), 0) != m_mode)
        ++item;
    SendMessageW(m_modeList, CB_SETCURSEL, static_cast<WPARAM>(item < count ? item : -1), 0);
}

void CKxDevUI_ModeShutter::MakeSlider(long x) {
    const int count = static_cast<int>(m_apertures.size());
    std::vector<SColorSliderValue> values;
    for (int i = 0; i < count; ++i) {
        const auto mark = kx::modeshutter::MarkOf(i, count);
        values.push_back({m_apertures[static_cast<std::size_t>(i)], mark != kx::modeshutter::Mark::None,
                          mark == kx::modeshutter::Mark::Label});
    }
    m_slider.m_owner = this;
    m_slider.Init(96, 5, values.data(), count, L"", false, L"", L"%0.0f", true, eColorSliderType_LineDraw,
                  eColorSliderLayout_OneRow, 30);
    m_slider.SetLineDrawSliderVorColors({.low = 31, .high = 37});
    const Alive alive(this);
    const HWND slider = m_slider.Create(m_hWnd, CKxGUILayoutManager::Zoomed(static_cast<double>(x)),
                                        CKxGUILayoutManager::Zoomed(2), -1, -1, true, true);
    if (!slider || !alive) return;
    m_slider.SetPower(m_aperture, true);
    ShowRequests();
    EnableSlider();
}

void CKxDevUI_ModeShutter::SetTabStop(bool stop) {
    m_tabStop = stop;
    ArrangeTabStops();
}

void CKxDevUI_ModeShutter::ArrangeTabStops() {
    SetStyleBit(m_hWnd, GWL_EXSTYLE, WS_EX_CONTROLPARENT, m_tabStop);
    SetStyleBit(m_modeList, GWL_STYLE, WS_TABSTOP, m_tabStop);
    m_slider.SetTabStop(m_tabStop);
}

// By the mode; in a disabled window it looks disabled whatever the mode.
void CKxDevUI_ModeShutter::EnableSlider() {
    if (HWND{m_slider}) m_slider.SetEnabled(m_mode == eKxShutterMode_Aperture && IsWindowEnabled(m_hWnd));
}

// What is in a disabled window looks so. The focus leaves it, and the host may end this object then.
void CKxDevUI_ModeShutter::FollowWindow(bool enabled) {
    const Alive alive(this);
    for (const HWND each : std::array{m_titleWindow, m_modeList})
        EnableWindow(each, enabled);
    if (alive) EnableSlider();
}

void CKxDevUI_ModeShutter::RedrawButtons() {
    for (const HWND each : {m_modeList, HWND{m_slider}}) {
        if (each) RedrawWindow(each, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
}

void CKxDevUI_ModeShutter::SetSeparator(bool show) { m_separator = show; }
bool CKxDevUI_ModeShutter::GetSeparator() const { return m_separator; }
void CKxDevUI_ModeShutter::SetShowTitle(bool show) { m_showTitle = show; }
bool CKxDevUI_ModeShutter::GetShowTitle() const { return m_showTitle; }
void CKxDevUI_ModeShutter::SetShowModes(bool show) { m_showModes = show; }
bool CKxDevUI_ModeShutter::GetShowModes() const { return m_showModes; }

void CKxDevUI_ModeShutter::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (m_titleWindow) SetWindowTextW(m_titleWindow, m_title);
}

bool CKxDevUI_ModeShutter::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    return HWND{m_slider} && m_slider.HandleMouseWheel(wParam, lParam);
}

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_ModeShutter::OnApertureChangeRequest(double, bool&) {}
void CKxDevUI_ModeShutter::OnStateChangeRequest(bool, bool&) {}
void CKxDevUI_ModeShutter::OnModeChangeRequest(EKxShutterMode, bool&) {}

void CKxDevUI_ModeShutter::CKxDevGUI_ColorSlider::OnPowerChanged(double& value, bool& veto) {
    if (m_owner) m_owner->OnAperture(value, veto);
}

void CKxDevUI_ModeShutter::OnAperture(double aperture, bool& veto) {
    const Alive alive(this);
    OnApertureChangeRequest(aperture, veto);
    if (!alive || veto) return;
    m_aperture = aperture;
    m_apertureIndex = FindApertureIndex(aperture);
}

LRESULT CKxDevUI_ModeShutter::OnCommand(WPARAM wParam, LPARAM) {
    if (LOWORD(wParam) != kModesId || HIWORD(wParam) != CBN_SELCHANGE) return 0;
    const LRESULT item = m_modeList ? SendMessageW(m_modeList, CB_GETCURSEL, 0, 0) : -1;
    if (item < 0) return 1;
    const auto mode =
        static_cast<EKxShutterMode>(SendMessageW(m_modeList, CB_GETITEMDATA, static_cast<WPARAM>(item), 0));
    const Activity::Question question(*m_requests);
    const Answer answer = AskHost(this, [&](bool& veto) { OnModeChangeRequest(mode, veto); });
    if (answer == Answer::Agreed) SetMode(mode);
    if (answer != Answer::Refused) return 1;
    // The list has shown the user's choice since before the host was asked.
    SelectMode();
    m_requests->Refused(question, mode);
    return 1;
}

// ---- The life of requests ------------------------------------------------------------------------------------------

void CKxDevUI_ModeShutter::ShowRequests() {
    if (HWND{m_slider}) m_slider.m_requests->Tell(m_requests->Now(), m_shutterId);
    InvalidateRect(m_hWnd, nullptr, TRUE);
}

// Without a slider its place is free.
RECT CKxDevUI_ModeShutter::SignPlace() const {
    if (HWND{m_slider}) return {};
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long side = Activity::SignSide(), right = client.right - side / 2, top = (client.bottom - side) / 2;
    return {right - side, top, right, top + side};
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ModeShutter::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    using Lookup = ByInstances<CKxDevUI_ModeShutter, m_Instances>;
    return Entry<CKxDevUI_ModeShutter, Lookup, WM_NCCREATE, Unbound::Default, &CKxDevUI_ModeShutter::Handle>(
        {window, id, wParam, lParam});
}

Handled CKxDevUI_ModeShutter::Handle(const Message& message) {
    const Handled told = DescribePart(message, [this](HWND part, KxAccess& access) {
        if (part == m_modeList) access.name = KX_GetTranslation(L"Mode", kSource);
        if (IsChild(m_slider, part)) access.name = KX_GetTranslation(L"Aperture", kSource);
        return true;
    });
    if (told) return told;
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_CTLCOLORSTATIC: return AnswerTextColor(message, IsWindowEnabled(message.window) != FALSE);
    case WM_ENABLE: FollowWindow(message.wParam != FALSE); return std::nullopt;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<ModeShutterBand>(message)) {
            Update(FindDevice<IKxDeviceShutter>(band->device), band->flags);
        }
        return 0;
    case WM_KX_MOUSE_WHEEL: return HandleMouseWheel(message.wParam, message.lParam);
    case WM_DESTROY:
        m_separatorWindow = nullptr;
        m_titleWindow = nullptr;
        m_modeList = nullptr;
        return std::nullopt;
    // The children are kept out by the window's style.
    default: return HandleFace(message, {.buffered = false});
    }
}
