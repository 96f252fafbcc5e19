#include <kxdevui/optics/devgui_switcher.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <kxbaseui/kx_fonts.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/framework/ui_position_panel.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_switcher";
constexpr int kFirstButton = 10201;

// Where the frame's upper line is.
constexpr long kFrameTop = 7;

bool HasReversedPorts(CDMApi_LogDevId device) {
    const CKxStringW driver = DMApi::LogDev_GetPhysDevRTTIName(device);
    return driver == L"CKxLU4ADevice" || driver == L"CKxLU4ADeviceSim";
}

// The port behind a position, and the position of a port.
long PortOf(long position, bool reversed) { return reversed && position < 2 ? 1 - position : position; }

// One port of a laser unit, or one position.
struct Port {
    CKxStringW name;
    bool usable = true;
    bool on = false;
    bool locked = false;     // cannot be operated from here
    bool exclusive = false;  // one port at a time
};

}  // namespace

// What an update shows.
struct CKxDevUI_Switcher::Reading {
    struct Structure {
        long count;
        CKxStringW title;
    };
    std::optional<Structure> structure;
    std::vector<Port> ports;                    // with their names
    std::vector<std::pair<long, bool>> single;  // ports that are to be shown as used or not
    std::vector<long> positions;                // to be selected one after the other
    KxActivity activity;

    // How many positions there are going to be.
    long Begin(long count, const CKxStringW& title) {
        return structure.emplace(Structure{std::clamp(count, 0L, long{kMaxPositions}), title}).count;
    }
    void AddPort(CDMApi_LogDevId device, long port) {
        bool enabled = true;
        DMApi::LaserOutput_GetPortEnable(device, port, &enabled);
        ports.push_back({.name = DMApi::LaserOutput_GetPortName(device, port),
                         .usable = enabled,
                         .locked = DMApi::LogDev_GetCapability(device, eKxCapability_NotOperable),
                         .exclusive = DMApi::LogDev_GetCapability(device, eKxCapability_LaserPortsExclusive)});
    }
    void AddUsed(CDMApi_LogDevId device, long count, bool reversed, bool several) {
        if (count == 2) return positions.push_back(DMApi::LaserOutput_GetPortUsed(device, reversed ? 0 : 1) ? 1 : 0);
        for (long i = 0; i < count; ++i) {
            const bool used = DMApi::LaserOutput_GetPortUsed(device, i);
            if (several) single.emplace_back(i, used);
            if (!several && used) positions.push_back(i);
        }
    }
};

struct CKxDevUI_Switcher::Inside : PositionPanel {
    explicit Inside(CKxDevUI_Switcher* panel)
        : PositionPanel({L"KxDevGUI_Switcher", L"CKxDevUI_Switcher", WndProc, BtnWndProc, GroupWndProc}, m_Atom, panel,
                        KX_GetTranslation(L"Switcher", kSource)) {
        SetRequestsChanged([this] { ShowPorts(); });
    }

    void SetName(long position, const CKxStringW& name);
    void EnableButton(long position) const;
    void EnableButtons() const;
    void ShowPorts() const;

    long count = 2;
    std::array<Port, kMaxPositions> ports;
    bool several = false;
    bool invert = false;
    bool enabled = true;
};

ATOM CKxDevUI_Switcher::m_Atom = 0;
std::map<HWND, CKxDevUI_Switcher*> CKxDevUI_Switcher::m_Instances;

CKxDevUI_Switcher::CKxDevUI_Switcher() : m_inside(std::make_unique<Inside>(this)) { Life::Begin(this); }

CKxDevUI_Switcher::~CKxDevUI_Switcher() {
    Destroy();
    Life::End(this);
}

CKxDevUI_Switcher::operator HWND() const noexcept { return m_inside->Window(); }

void CKxDevUI_Switcher::OnPositionChangeRequest(long, bool&) {}
void CKxDevUI_Switcher::OnSetPortSingleRequest(long) {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Switcher::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return m_inside->Create(this, parent, {x, y}, {width, height}, m_width, m_height, [this] { CreateControls(); });
}

void CKxDevUI_Switcher::Destroy() { m_inside->Close(); }
void CKxDevUI_Switcher::DestroyControls() { m_inside->RemoveParts(); }

// Every window that comes or goes is told to the host, which may end this panel.
void CKxDevUI_Switcher::CreateControls() {
    if (!m_inside->Window()) return;
    const Parts parts = m_inside->Children();
    DestroyControls();
    if (!parts) return;
    m_inside->SetReversed(m_inside->invert);
    if (m_hasFrame) m_inside->AddFrame({m_width, m_height}, m_oversizeFrame);
    if (parts && m_hasTitle)
        m_inside->AddTitle({m_titleX, m_titleY, m_titleX + m_titleWidth, m_titleY + m_titleHeight}, m_titleLeft);
    if (!parts) return;
    // Centred, in what the frame leaves, and below its title where there is the height for it.
    const long lowest = m_height - (m_hasFrame ? 1 : 0) - m_buttonHeight;
    long y = m_hasFrame ? kFrameTop + (lowest - kFrameTop) / 2 : lowest / 2, x = m_firstX, height = m_height;
    if (m_hasFrame) y = std::max(y, std::min(PositionPanel::TitleHeight(m_boldTitle) + 1, lowest));
    for (long i = 0; parts && i < m_inside->count; ++i, x += m_buttonWidth) {
        if (x + m_buttonWidth > m_width && x != m_firstX) {
            x = m_firstX;
            y += m_buttonHeight;
            height += m_buttonHeight;
        }
        const long position = m_inside->invert ? m_inside->count - 1 - i : i;
        // To show itself pressed before anybody is asked is as it should be for a position and wrong for a port.
        const HWND button =
            m_inside->AddButton(kFirstButton + static_cast<int>(position),
                                AsButtonText(m_inside->ports[static_cast<std::size_t>(position)].name),
                                {x, y, x + m_buttonWidth, y + m_buttonHeight}, PushRadioStyle(!m_inside->several));
        if (!parts) return;
        SetFont(button, KX_GetDefaultGuiFont());
        // Otherwise Windows reports a click for a button that only gets the focus.
        SendMessageW(button, BM_SETDONTCLICK, TRUE, 0);
    }
    m_inside->EnableButtons();
    m_inside->ShowPorts();
    m_inside->Finish({m_width, height}, height > m_height ? height + 4 : 0, m_boldTitle);
}

// ---- Content -------------------------------------------------------------------------------------------------------

// Shows what `ask` puts into a reading.
template <class Ask>
bool CKxDevUI_Switcher::AskAndShow(CDMApi_LogDevId device, const Ask& ask) {
    const Alive alive(this);
    Reading told;
    const auto askAll = [&] {
        ask(told);
        if (const IKxDevice* instance = DMApi::LogDev_GetInstance(device)) told.activity = ReadActivity(*instance);
    };
    if (!AskDevice(kSource, device, askAll) || !alive) return false;
    Show(told, device);
    return true;
}

void CKxDevUI_Switcher::Show(const Reading& told, unsigned int device) {
    if (told.structure) {
        const Alive alive(this);
        m_inside->count = told.structure->count;
        m_inside->KeepTitle(told.structure->title);
        m_inside->SetPosition(-1);
        m_inside->ports.fill({});
        CreateControls();
        if (!alive) return;
    }
    const HWND focus = GetFocus();
    for (std::size_t i = 0; i < told.ports.size(); ++i) {
        Port& held = m_inside->ports[i];
        const Port& port = told.ports[i];
        held.usable = port.usable, held.locked = port.locked, held.exclusive = port.exclusive;
        m_inside->SetName(static_cast<long>(i), port.name);
    }
    m_inside->Requests().Tell(told.activity, device);
    for (const auto& [port, used] : told.single)
        SetPortSingle(port, used);
    for (const long position : told.positions)
        SetPosition(position);
    // Last: whoever hears of it may end this panel.
    m_inside->KeepFocusUsable(focus);
}

bool CKxDevUI_Switcher::Update(unsigned int device, bool structure, bool names, bool state) {
    if (device == 0) return false;
    IKxDevice* instance = DMApi::LogDev_GetInstance(device);
    switch (DMApi::LogDev_GetType(device)) {
    case eKxDeviceType_LightPath: return Update(static_cast<IKxDeviceLightPath*>(instance), structure, names, state);
    case eKxDeviceType_TIRFMirror: return Update(static_cast<IKxDeviceTIRFMirror*>(instance), structure, names, state);
    default: break;
    }
    return instance && AskAndShow(device, [&, held = m_inside->count, several = m_inside->several](Reading& told) {
               const long count =
                   structure ? told.Begin(DMApi::LaserOutput_GetPortCount(device), DMApi::LogDev_GetKey(device)) : held;
               const bool reversed = HasReversedPorts(device);
               for (long i = 0; names && i < count; ++i)
                   told.AddPort(device, PortOf(i, reversed));
               if (structure || state) told.AddUsed(device, count, reversed, several);
           });
}

bool CKxDevUI_Switcher::Update(IKxDeviceLaserOutput* device, bool structure, bool names, bool state) {
    return device && Update(device->GetLogDevId(), structure, names, state);
}

bool CKxDevUI_Switcher::Update(IKxDeviceLightPath* device, bool structure, bool names, bool state) {
    return device && AskAndShow(device->GetLogDevId(), [&, held = m_inside->count](Reading& told) {
               const long count =
                   structure ? told.Begin(device->GetPositionCount(), DMApi::LogDev_GetKey(device->GetLogDevId()))
                             : held;
               for (long i = 0; names && i < count; ++i)
                   device->GetPositionName(i, told.ports.emplace_back().name);
               if (structure || state) device->GetPosition(told.positions.emplace_back(-1));
           });
}

bool CKxDevUI_Switcher::Update(IKxDeviceTIRFMirror* device, bool structure, bool names, bool state) {
    return device && AskAndShow(device->GetLogDevId(), [&](Reading& told) {
               if (structure) told.Begin(2, DMApi::LogDev_GetKey(device->GetLogDevId()));
               if (names) {
                   // Usable and not locked, as the ports of a laser unit shown before may not have been.
                   told.ports.resize(2);
                   told.ports[0].name = KX_GetTranslation(L"EPI", kSource);
                   told.ports[1].name = KX_GetTranslation(L"TIRF", kSource);
               }
               bool tirf = false;
               if (state && device->GetState(tirf)) told.positions.push_back(tirf ? 1 : 0);
           });
}

void CKxDevUI_Switcher::Inside::SetName(long position, const CKxStringW& name) {
    if (position >= count) return;
    Port& port = ports[static_cast<std::size_t>(position)];
    const HWND button = ButtonAt(position);
    if (button && !(port.name == name)) SetWindowTextW(button, AsButtonText(name));
    port.name = name;
    EnableButton(position);
}

void CKxDevUI_Switcher::Inside::EnableButton(long position) const {
    const Port& port = ports[static_cast<std::size_t>(position)];
    Enable(ButtonAt(position), enabled && IsEnabled() && port.usable && !port.locked);
}

void CKxDevUI_Switcher::Inside::EnableButtons() const {
    for (long i = 0; i < count; ++i)
        EnableButton(i);
}

void CKxDevUI_Switcher::SetPosition(long position) {
    if (position == m_inside->Position() || position < 0 || position >= m_inside->count) return;
    m_inside->SetPosition(position);
    for (long i = 0; i < m_inside->count; ++i)
        m_inside->ports[static_cast<std::size_t>(i)].on = i == position;
    m_inside->ShowPorts();
}

void CKxDevUI_Switcher::SetPortSingle(long port, bool on) {
    if (port < 0 || port >= m_inside->count) return;
    m_inside->ports[static_cast<std::size_t>(port)].on = on;
    m_inside->ShowPorts();
}

// Each button as the panel holds it, whatever the platform has made of a click.
void CKxDevUI_Switcher::Inside::ShowPorts() const {
    for (long i = 0; i < count; ++i) {
        const HWND button = ButtonAt(i);
        const bool down = ports[static_cast<std::size_t>(i)].on && Requests().ShowsHeld();
        const WPARAM wanted = down ? BST_CHECKED : BST_UNCHECKED;
        if (button && static_cast<WPARAM>(SendMessageW(button, BM_GETCHECK, 0, 0)) != wanted)
            SendMessageW(button, BM_SETCHECK, wanted, 0);
    }
}

void CKxDevUI_Switcher::RedrawButtons() const { m_inside->RedrawButtons(); }

void CKxDevUI_Switcher::SetEnable(bool enable) {
    m_inside->enabled = enable;
    m_inside->EnableButtons();
}

void CKxDevUI_Switcher::SetTitle(const wchar_t* title) { m_inside->SetTitle(title); }
CKxStringW CKxDevUI_Switcher::GetTitle() const { return m_inside->Title(); }
long CKxDevUI_Switcher::GetPosition() const noexcept { return m_inside->Position(); }
void CKxDevUI_Switcher::SetTabStop(bool stop) { m_inside->SetTabStop(stop); }

void CKxDevUI_Switcher::SetInvertOrder(bool invert) noexcept { m_inside->invert = invert; }

void CKxDevUI_Switcher::SetBoolMoreThanOnePortCanBeActive(bool several) {
    m_inside->several = several;
    m_inside->SetEveryPress(several);
    for (const HWND button : m_inside->Buttons())
        SendMessageW(button, BM_SETSTYLE, PushRadioStyle(!several), FALSE);
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

Handled CKxDevUI_Switcher::HandleButton(const Message& message) { return m_inside->HandleButton(message, 1); }
Handled CKxDevUI_Switcher::HandleFrame(const Message& message) { return m_inside->HandleFrame(message); }

Handled CKxDevUI_Switcher::Handle(const Message& message) {
    if (message.id == WM_COMMAND) return OnCommand(message.wParam, message.lParam);
    if (message.id == WM_KX_UPDATE_DEVICE_BAND) {
        if (const auto band = ReadDeviceBand<SwitcherBand>(message)) Update(band->device, band->flags);
        return 0;
    }
    if (message.id == WM_ENABLE) m_inside->EnableButtons();
    return m_inside->HandleWindow(message);
}

LRESULT CKxDevUI_Switcher::OnCommand(WPARAM wParam, LPARAM) {
    const long position = long{LOWORD(wParam)} - kFirstButton;
    if (HIWORD(wParam) != BN_CLICKED || position < 0 || position >= m_inside->count) return 0;
    const Alive alive(this);
    const Activity::Question question(m_inside->Requests());
    if (m_inside->several) {
        OnSetPortSingleRequest(position);
        if (alive) m_inside->Answered(question, position);
        return 1;
    }
    // Every button is a group of its own, so the platform has not let go of the one that was down.
    for (long i = 0; i < m_inside->count; ++i) {
        if (i != position) SendMessageW(m_inside->ButtonAt(i), BM_SETCHECK, BST_UNCHECKED, 0);
    }
    bool flag = false;
    OnPositionChangeRequest(position, flag);
    if (!alive) return 1;
    SetPosition(position);
    // The host may have had another one selected meanwhile, and the click has pressed this one.
    m_inside->ShowPorts();
    m_inside->Answered(question, position);
    return 1;
}
