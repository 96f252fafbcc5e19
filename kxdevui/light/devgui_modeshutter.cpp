#include <kxdevui/light/devgui_modeshutter.h>

#include <cmath>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/light/shutter_device.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_modeshutter";
constexpr wchar_t kClass[] = L"KxDEVGUI_ModeShutter";
constexpr int kSeparatorId = 10100, kTitleId = 10101, kModesId = 10201;
constexpr long kMostSteps = 10000;  // no aperture has more, whatever its driver says

// Goes between the list and its own procedure, so that a host may end it out of its notification (ui_window.h).
LRESULT CALLBACK ListProc(HWND list, UINT id, WPARAM wParam, LPARAM lParam) {
    return CallPrevious({list, id, wParam, lParam});
}

}  // namespace

ATOM CKxDevUI_ModeShutter::m_Atom = 0;
std::map<HWND, CKxDevUI_ModeShutter*> CKxDevUI_ModeShutter::m_Instances;

CKxDevUI_ModeShutter::CKxDevUI_ModeShutter() {
    m_width = 256;
    m_height = 32;
}

CKxDevUI_ModeShutter::~CKxDevUI_ModeShutter() {
    if (!m_hWnd) return;
    // Of the windows' messages only those of their end come to an object whose derived part is gone already.
    const Closing closing(m_hWnd);
    DestroyWindow(m_hWnd);
}

// ---- The device ----------------------------------------------------------------------------------------------------

template <class Shutter>
void CKxDevUI_ModeShutter::Load(const Shutter& shutter) {
    Done();
    const long count = shutter.GetApertureSteps();
    if (count > kMostSteps) KX_LOG(kSource, L"a shutter with %ld steps counts as one without", count);
    std::vector<double> apertures;
    for (long i = 0; i < count && count <= kMostSteps; ++i) {
        apertures.push_back(shutter.GetStepAperture(i));
        if (!std::isfinite(apertures.back())) {
            KX_LOG(kSource, L"step %ld is no finite number: the shutter counts as one without steps", i);
            apertures.clear();
            break;
        }
    }
    m_apertures = std::move(apertures);
    m_apertureIndex = FindApertureIndex(m_aperture);
}

bool CKxDevUI_ModeShutter::Init(unsigned shutterId) {
    if (shutterId == 0) return false;
    const kx::shutter::Managed shutter{shutterId};
    m_shutterId = shutterId;
    Load(shutter);
    m_aperture = shutter.GetAperture();
    m_apertureIndex = FindApertureIndex(m_aperture);
    m_state = shutter.GetState();
    m_mode = shutter.GetMode();
    return true;
}

// In the order of Update's parameters: steps, aperture, state, mode.
template <class Shutter>
bool CKxDevUI_ModeShutter::Show(unsigned id, const Shutter& shutter, std::array<bool, 4> flags) {
    const Alive alive(this);
    try {
        if (flags[0]) {
            m_shutterId = id;
            Load(shutter);
            CreateControls();
        }
        if (flags[3] && alive) SetMode(shutter.GetMode());
        if (flags[2] && alive) SetState(shutter.GetState());
        if (flags[1] && alive) SetAperture(shutter.GetAperture());
        return true;
    } catch (...) {
        KX_LOG(kSource, L"device %u has thrown an exception", id);
        return false;
    }
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
    if (alive && HWND{m_slider}) m_slider.SetEnabled(m_mode == eKxShutterMode_Aperture);
}

EKxShutterMode CKxDevUI_ModeShutter::GetMode() const { return m_mode; }

void CKxDevUI_ModeShutter::SetAperture(double aperture) {
    if (!std::isfinite(aperture) || aperture == m_aperture) return;
    m_aperture = aperture;
    m_apertureIndex = FindApertureIndex(aperture);
    if (HWND{m_slider}) m_slider.SetPower(aperture, true);
}

double CKxDevUI_ModeShutter::GetAperture() const { return m_aperture; }
void CKxDevUI_ModeShutter::SetState(bool open) { m_state = open; }
bool CKxDevUI_ModeShutter::GetState() const { return m_state; }

long CKxDevUI_ModeShutter::FindApertureIndex(double aperture) const {
    return FindNearestValue(aperture, m_apertures.data(), static_cast<long>(m_apertures.size()));
}

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_ModeShutter::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    const Alive alive(this);
    Destroy();
    if (!alive) return nullptr;
    if (width >= 0) m_width = width;
    if (height >= 0) m_height = height;
    EnsureClass(m_Atom, {.name = kClass,
                         .object = L"CKxDevUI_ModeShutter",
                         .style = CS_VREDRAW | CS_HREDRAW,
                         .extraBytes = 0,
                         .background = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_3DFACE + 1}),
                         .procedure = WndProc});
    const HWND window =
        CreateWindowExW(0, kClass, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, x, y, m_width, m_height, parent,
                        nullptr, ModuleOf(WndProc), static_cast<CKxDevUI_Base*>(this));
    // The parent was told of its new child, and may have ended the window or this object.
    if (!window || !alive || m_hWnd != window) return nullptr;
    m_visible = true;
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    CreateControls();
    return alive && m_hWnd == window ? window : nullptr;
}

void CKxDevUI_ModeShutter::Destroy() { Binding::EndWindow(this); }

void CKxDevUI_ModeShutter::DestroyControls() {
    const Alive alive(this);
    const HWND separator = std::exchange(m_separatorWindow, nullptr), title = std::exchange(m_titleWindow, nullptr);
    if (const HWND list = std::exchange(m_modeList, nullptr)) DestroySubclassed(list);
    for (const HWND each : {separator, title}) {
        if (each) DestroyWindow(each);
    }
    if (alive) m_slider.Destroy();
}

HWND CKxDevUI_ModeShutter::MakeChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& place,
                                     int id) {
    const HWND child = CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                                       place.right - place.left, place.bottom - place.top, m_hWnd,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFontZoom(1.0)), FALSE);
    return child;
}

// Every window that comes or goes is told to the parent, which may end this one.
void CKxDevUI_ModeShutter::CreateControls() {
    const HWND window = m_hWnd;
    const Alive alive(this);
    const auto stands = [&] { return alive && m_hWnd == window; };
    DestroyControls();
    if (!window || !stands()) return;
    if (m_separator) {
        const HWND line = MakeChild(L"STATIC", nullptr, SS_GRAYRECT, {0, 0, 256, 1}, kSeparatorId);
        if (!stands()) return;
        m_separatorWindow = line;
    }
    long x = 0;
    if (m_showTitle) {
        // A name may have an ampersand in it.
        const HWND title = MakeChild(L"STATIC", m_title, SS_NOPREFIX | WS_CLIPSIBLINGS, {0, 8, 56, 24}, kTitleId);
        if (!stands()) return;
        m_titleWindow = title;
        x = 40;
    }
    if (m_showModes) {
        const HWND list = MakeChild(L"COMBOBOX", nullptr, CBS_DROPDOWNLIST, {x, 4, x + 72, 88}, kModesId);
        if (!stands()) return;
        m_modeList = list;
        // The title's place reaches under the list.
        SetWindowPos(list, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
        Subclass(list, ListProc, nullptr);
        FillModes();
        x += 80;
    }
    RECT client{};
    GetClientRect(window, &client);
    if (client.right != m_width || client.bottom != m_height) {
        // The children stand unzoomed, and so has the window to, which may have been zoomed before.
        SetWindowPos(window, nullptr, 0, 0, m_width, m_height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    RegisterZoom(window);
    if (!m_apertures.empty()) MakeSlider(x);
    if (stands()) KX_FollowColorScheme(window);
}

void CKxDevUI_ModeShutter::FillModes() {
    for (int mode = 0; m_shutterId != 0 && mode < kx::modeshutter::kModes; ++mode) {
        if (!DMApi::Shutter_GetModeAvailable(m_shutterId, static_cast<EKxShutterMode>(mode))) continue;
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
    m_slider.SetLineDrawSliderVorColors(31, 37, false);
    const Alive alive(this);
    const HWND slider = m_slider.Create(m_hWnd, CKxGUILayoutManager::Zoomed(static_cast<double>(x)),
                                        CKxGUILayoutManager::Zoomed(2), -1, -1, true, true);
    if (!slider || !alive) return;
    m_slider.SetPower(m_aperture, true);
    m_slider.SetEnabled(m_mode == eKxShutterMode_Aperture);
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
    bool veto = false;
    const Alive alive(this);
    // A host that throws has not agreed.
    if (!Guarded([&]() -> Handled { return OnModeChangeRequest(mode, veto), 1; })) veto = true;
    if (!alive) return 1;
    // The list has shown the user's choice since before the host was asked.
    veto ? SelectMode() : SetMode(mode);
    return 1;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ModeShutter::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    using Lookup = ByInstances<CKxDevUI_ModeShutter, m_Instances>;
    return Entry<CKxDevUI_ModeShutter, Lookup, WM_NCCREATE, Unbound::Default, &CKxDevUI_ModeShutter::Handle>(
        {window, id, wParam, lParam});
}

Handled CKxDevUI_ModeShutter::Handle(const Message& message) {
    switch (message.id) {
    case WM_NCCREATE: m_hWnd = message.window; return std::nullopt;
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_ERASEBKGND: return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        // The children are kept out by the window's style.
        const auto nothing = [](HDC, const RECT&) {};
        return Paint(message, {.buffered = false}, KX_GetSysColorBrush(COLOR_3DFACE), nothing);
    }
    case WM_CTLCOLORSTATIC: {
        const auto dc = reinterpret_cast<HDC>(message.wParam);
        SetTextColor(dc, KX_GetSysColor(COLOR_BTNTEXT));
        SetBkColor(dc, KX_GetSysColor(COLOR_3DFACE));
        return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_3DFACE));
    }
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<4>(message)) {
            const auto& [steps, aperture, state, mode] = band->flags;
            Update(kx::shutter::Find(band->device), steps, aperture, state, mode);
        }
        return 0;
    case WM_KX_MOUSE_WHEEL: return HandleMouseWheel(message.wParam, message.lParam);
    case WM_KX_ZOOM_CHANGED: ApplyZoom(message.window); return 0;
    case WM_DESTROY:
        m_separatorWindow = nullptr;
        m_titleWindow = nullptr;
        m_modeList = nullptr;
        return std::nullopt;
    default: return std::nullopt;
    }
}
