#include <kxdevui/optics/devgui_switcher.h>

#include <algorithm>
#include <string>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/ui_window.h>

using namespace kx::ui;

namespace {

constexpr int kFirstButton = 10201;

// Where the frame's upper line is.
constexpr long kFrameTop = 7;

// A button takes '&' for the mark of a mnemonic.
CKxStringW AsButtonText(const CKxStringW& name) {
    std::wstring text;
    for (const wchar_t letter : name.str())
        text.append(letter == L'&' ? 2 : 1, letter);
    return text;
}

bool HasReversedPorts(CDMApi_LogDevId device) {
    const CKxStringW driver = DMApi::LogDev_GetPhysDevRTTIName(device);
    return driver == L"CKxLU4ADevice" || driver == L"CKxLU4ADeviceSim";
}

// The port behind a position, and the position of a port.
long PortOf(long position, bool reversed) { return reversed && position < 2 ? 1 - position : position; }

}  // namespace

ATOM CKxDevUI_Switcher::m_Atom = 0;
std::map<HWND, CKxDevUI_Switcher*> CKxDevUI_Switcher::m_Instances;

CKxDevUI_Switcher::CKxDevUI_Switcher() : m_title(L"Switcher") { Life::Begin(this); }

CKxDevUI_Switcher::~CKxDevUI_Switcher() {
    Destroy();
    Life::End(this);
}

void CKxDevUI_Switcher::OnPositionChangeRequest(long, bool&) {}
void CKxDevUI_Switcher::OnSetPortSingleRequest(long) {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Switcher::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (width >= 0) m_width = width;
        if (height >= 0) m_height = height;
        const HWND window = m_panel.Open(creation, m_Atom, {L"KxDevGUI_Switcher", L"CKxDevUI_Switcher"}, WndProc,
                                         parent, {x, y}, {m_width, m_height}, this);
        if (!window) return nullptr;
        CreateControls();
        return creation ? m_panel.Window() : nullptr;
    });
}

void CKxDevUI_Switcher::Destroy() { m_panel.Close(); }

// An automatic radio button shows itself pressed before anybody is asked, which is as it should be for a position and
// wrong for a port. Each is a group of its own: the platform's search for the others of a group never ends under Wine
// when one of them is disabled.
DWORD CKxDevUI_Switcher::ButtonStyle() const {
    return DWORD{WS_GROUP} | BS_PUSHLIKE | (m_several ? BS_RADIOBUTTON : BS_AUTORADIOBUTTON);
}

void CKxDevUI_Switcher::CreateControls() {
    if (!m_panel.Window()) return;
    m_panel.RemoveParts();
    m_panel.SetReversed(m_invert);
    if (m_hasFrame) m_panel.AddFrame(m_title, {m_width, m_height}, m_oversizeFrame, GroupWndProc, this);
    if (m_hasTitle) {
        m_panel.AddTitle(m_title, {m_titleX, m_titleY, m_titleX + m_titleWidth, m_titleY + m_titleHeight}, m_titleLeft);
    }
    // Centred, in what the frame leaves.
    const long top = m_hasFrame ? kFrameTop : 0, bottom = m_hasFrame ? 1 : 0;
    long x = m_firstX, y = top + (m_height - top - bottom - m_buttonHeight) / 2, height = m_height;
    std::array<RECT, kMaxPositions> places{};
    for (long i = 0; i < m_count; ++i, x += m_buttonWidth) {
        if (x + m_buttonWidth > m_width && x != m_firstX) {
            x = m_firstX;
            y += m_buttonHeight;
            height += m_buttonHeight;
        }
        const long position = m_invert ? m_count - 1 - i : i;
        places[static_cast<std::size_t>(position)] = {x, y, x + m_buttonWidth, y + m_buttonHeight};
    }
    for (long i = 0; i < m_count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const HWND button = m_panel.AddButton(kFirstButton + static_cast<int>(i), AsButtonText(m_ports[at].name),
                                              places[at], ButtonStyle(), BtnWndProc, this);
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
        // Otherwise Windows reports a click for a button that only gets the focus.
        SendMessageW(button, BM_SETDONTCLICK, TRUE, 0);
        KX_FollowColorScheme(button);
        EnableButton(i);
    }
    ShowPorts();
    m_panel.SetFocusPosition(m_position);
    m_panel.Finish({m_width, height}, height > m_height ? height + 4 : 0, m_boldTitle);
}

void CKxDevUI_Switcher::Rebuild(long count, const CKxStringW& title) {
    m_count = std::clamp(count, 0L, long{kMaxPositions});
    m_title = title;
    m_position = -1;
    for (Port& port : m_ports)
        port = {};
    CreateControls();
}

// ---- Content -------------------------------------------------------------------------------------------------------

bool CKxDevUI_Switcher::Update(unsigned int device, bool structure, bool names, bool state) {
    if (device == 0) return false;
    IKxDevice* instance = DMApi::LogDev_GetInstance(device);
    switch (DMApi::LogDev_GetType(device)) {
    case eKxDeviceType_LightPath: return Update(static_cast<IKxDeviceLightPath*>(instance), structure, names, state);
    case eKxDeviceType_TIRFMirror: return Update(static_cast<IKxDeviceTIRFMirror*>(instance), structure, names, state);
    default: break;
    }
    if (!instance) return false;
    if (structure) Rebuild(DMApi::LaserOutput_GetPortCount(device), DMApi::LogDev_GetKey(device));
    const bool reversed = HasReversedPorts(device);
    if (names) ReadPortNames(device, reversed);
    if (structure || state) ReadPorts(device, reversed);
    return true;
}

bool CKxDevUI_Switcher::Update(IKxDeviceLaserOutput* device, bool structure, bool names, bool state) {
    return device && Update(device->GetLogDevId(), structure, names, state);
}

bool CKxDevUI_Switcher::Update(IKxDeviceLightPath* device, bool structure, bool names, bool state) {
    if (!device) return false;
    if (structure) Rebuild(device->GetPositionCount(), DMApi::LogDev_GetKey(device->GetLogDevId()));
    for (long i = 0; names && i < m_count; ++i) {
        CKxStringW name;
        device->GetPositionName(i, name);
        SetName(i, name);
    }
    if (structure || state) {
        long position = -1;
        device->GetPosition(position);
        SetPosition(position);
    }
    return true;
}

bool CKxDevUI_Switcher::Update(IKxDeviceTIRFMirror* device, bool structure, bool names, bool state) {
    if (!device) return false;
    if (structure) Rebuild(2, DMApi::LogDev_GetKey(device->GetLogDevId()));
    if (names) {
        // A laser unit shown before may have had locked ports.
        for (Port& port : m_ports)
            port.usable = true, port.locked = false;
        SetName(0, L"EPI");
        SetName(1, L"TIRF");
    }
    bool tirf = false;
    if (state && device->GetState(tirf)) SetPosition(tirf ? 1 : 0);
    return true;
}

void CKxDevUI_Switcher::ReadPortNames(CDMApi_LogDevId device, bool reversed) {
    for (long i = 0; i < m_count; ++i) {
        const long port = PortOf(i, reversed);
        bool enabled = true;
        DMApi::LaserOutput_GetPortEnable(device, port, &enabled);
        Port& held = m_ports[static_cast<std::size_t>(i)];
        held.usable = enabled;
        held.locked = DMApi::LogDev_GetCapability(device, eKxCapability_NotOperable);
        held.exclusive = DMApi::LogDev_GetCapability(device, eKxCapability_LaserPortsExclusive);
        SetName(i, DMApi::LaserOutput_GetPortName(device, port));
    }
}

void CKxDevUI_Switcher::ReadPorts(CDMApi_LogDevId device, bool reversed) {
    if (m_count == 2) {
        SetPosition(DMApi::LaserOutput_GetPortUsed(device, reversed ? 0 : 1) ? 1 : 0);
        return;
    }
    for (long i = 0; i < m_count; ++i) {
        const bool used = DMApi::LaserOutput_GetPortUsed(device, i);
        if (m_several) {
            SetPortSingle(i, used);
        } else if (used) {
            SetPosition(i);
        }
    }
}

void CKxDevUI_Switcher::SetName(long position, const CKxStringW& name) {
    if (position >= m_count) return;
    Port& port = m_ports[static_cast<std::size_t>(position)];
    const HWND button = m_panel.ButtonAt(position);
    if (button && !(port.name == name)) SetWindowTextW(button, AsButtonText(name));
    port.name = name;
    EnableButton(position);
}

void CKxDevUI_Switcher::EnableButton(long position) const {
    const Port& port = m_ports[static_cast<std::size_t>(position)];
    PositionPanel::Enable(m_panel.ButtonAt(position), m_enabled && m_panel.IsEnabled() && port.usable && !port.locked);
}

void CKxDevUI_Switcher::SetPosition(long position) {
    if (position == m_position || position < 0 || position >= m_count) return;
    m_position = position;
    m_panel.SetFocusPosition(position);
    for (long i = 0; i < m_count; ++i)
        m_ports[static_cast<std::size_t>(i)].on = i == position;
    ShowPorts();
}

void CKxDevUI_Switcher::SetPortSingle(long port, bool on) {
    if (port < 0 || port >= m_count) return;
    m_ports[static_cast<std::size_t>(port)].on = on;
    ShowPorts();
}

// Each button as the panel holds it, whatever the platform has made of a click.
void CKxDevUI_Switcher::ShowPorts() const {
    for (long i = 0; i < m_count; ++i) {
        const HWND button = m_panel.ButtonAt(i);
        const WPARAM wanted = m_ports[static_cast<std::size_t>(i)].on ? BST_CHECKED : BST_UNCHECKED;
        if (button && static_cast<WPARAM>(SendMessageW(button, BM_GETCHECK, 0, 0)) != wanted)
            SendMessageW(button, BM_SETCHECK, wanted, 0);
    }
}

void CKxDevUI_Switcher::SetEnable(bool enable) {
    m_enabled = enable;
    for (long i = 0; i < m_count; ++i)
        EnableButton(i);
}

void CKxDevUI_Switcher::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    m_panel.SetTitle(m_title);
}

void CKxDevUI_Switcher::SetBoolMoreThanOnePortCanBeActive(bool several) {
    m_several = several;
    for (const HWND button : m_panel.Buttons())
        SendMessageW(button, BM_SETSTYLE, ButtonStyle(), FALSE);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Switcher::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<CKxDevUI_Switcher, ByInstances<CKxDevUI_Switcher, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &CKxDevUI_Switcher::Handle>({window, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_Switcher::BtnWndProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Switcher, &CKxDevUI_Switcher::HandleButton>({button, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_Switcher::GroupWndProc(HWND frame, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Switcher, &CKxDevUI_Switcher::HandleFrame>({frame, id, wParam, lParam});
}

Handled CKxDevUI_Switcher::HandleButton(const Message& message) { return m_panel.HandleButton(message, 1); }
Handled CKxDevUI_Switcher::HandleFrame(const Message& message) { return m_panel.HandleFrame(message); }

Handled CKxDevUI_Switcher::Handle(const Message& message) {
    if (message.id == WM_COMMAND) return OnCommand(message.wParam);
    for (long i = 0; message.id == WM_ENABLE && i < m_count; ++i)
        EnableButton(i);
    return m_panel.HandleWindow(message);
}

LRESULT CKxDevUI_Switcher::OnCommand(WPARAM wParam) {
    const long position = long{LOWORD(wParam)} - kFirstButton;
    if (HIWORD(wParam) != BN_CLICKED || position < 0 || position >= m_count) return 0;
    const Alive alive(this);
    if (m_several) {
        OnSetPortSingleRequest(position);
        return 1;
    }
    // Every button is a group of its own, so the platform has not let go of the one that was down.
    for (long i = 0; i < m_count; ++i) {
        if (i != position) SendMessageW(m_panel.ButtonAt(i), BM_SETCHECK, BST_UNCHECKED, 0);
    }
    bool flag = false;
    OnPositionChangeRequest(position, flag);
    if (!alive) return 1;
    SetPosition(position);
    // The host may have had another one selected meanwhile, and the click has pressed this one.
    ShowPorts();
    return 1;
}
