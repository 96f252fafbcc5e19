#include <kxdevui/optics/devgui_nosepiece.h>

#include <algorithm>
#include <cwchar>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/optics/nosepiece_window.h>
#include <kxfilters/kx_objectives.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using namespace kx::nosepiece;
using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_nosepiece";
constexpr std::size_t kMaxTip = 1024;

Font MakeFont(int weight) {
    LOGFONTW font{};
    font.lfHeight = -9;
    font.lfWeight = weight;
    font.lfCharSet = DEFAULT_CHARSET;
    std::wcscpy(font.lfFaceName, L"MS Shell Dlg 2");
    return Font(CreateFontIndirectW(&font));
}

// What an update shows.
struct Reading {
    struct Objective {
        CKxStringW name, magnification;
    };
    std::optional<Structure> structure;
    std::vector<Objective> objectives;
    std::optional<long> position;
    std::vector<CKxStringW> keys;
    KxActivity activity;
};

CKxStringW TipOf(const Held& position) {
    CKxStringW tip;
    if (!position.name.IsEmpty()) {
        const CKxStringW numbers = KX_FormatNumber(L"NA=%0.2f WD=%0.0f", position.NA, position.WD);
        tip.Format(kMaxTip, L"%ls\r\n%ls", position.name.c_str(), numbers.c_str());
    }
    return tip;
}

}  // namespace

ATOM CKxDevUI_Nosepiece::m_Atom = 0;
std::map<HWND, CKxDevUI_Nosepiece*> CKxDevUI_Nosepiece::m_Instances;

CKxDevUI_Nosepiece::Inside::Inside(CKxDevUI_Nosepiece* panel)
    : PositionPanel({L"KxDevGUI_Nosepiece", L"CKxDevUI_Nosepiece", WndProc, BtnWndProc, GroupWndProc}, m_Atom, panel,
                    KX_GetTranslation(L"Nosepiece", kSource)),
      observationTexts{KX_GetTranslation(L"Eyepieces", kSource), KX_GetTranslation(L"Camera", kSource)},
      cards({panel, [this](long position) { return ButtonAt(position); },
             [this] { return enabled && IsEnabled() && !Requests().IsLost() ? Position() : -1; },
             [this](long position) { return CardOf(position); }}) {
    SetRequestsChanged([this] { ShowLabelFonts(); });
}

CKxDevUI_Nosepiece::CKxDevUI_Nosepiece() : m_inside(std::make_unique<Inside>(this)) { Life::Begin(this); }

CKxDevUI_Nosepiece::~CKxDevUI_Nosepiece() {
    Destroy();
    Life::End(this);
}

CKxDevUI_Nosepiece::operator HWND() const noexcept { return m_inside->Window(); }

void CKxDevUI_Nosepiece::OnPositionChangeRequest(long, bool&) {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Nosepiece::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return m_inside->Create(this, parent, {x, y}, {width, height}, m_width, m_height, [this] {
        m_inside->normalFont = MakeFont(FW_NORMAL);
        m_inside->boldFont = MakeFont(FW_BOLD);
        m_inside->framePen.reset(CreatePen(PS_SOLID, 1, RGB(127, 127, 127)));
        m_inside->LoadImages();
        CreateControls();
    });
}

void CKxDevUI_Nosepiece::Destroy() {
    const Alive alive(this);
    m_inside->Close();
    // The focus may have gone to a host's window, which may have ended this object.
    if (!alive) return;
    m_inside->normalFont.reset();
    m_inside->boldFont.reset();
    m_inside->framePen.reset();
}

void CKxDevUI_Nosepiece::DestroyControls() {
    m_inside->labels.clear();
    m_inside->observation.clear();
    m_inside->RemoveParts();
}

// Every window that comes or goes is told to the host, which may end this panel.
void CKxDevUI_Nosepiece::CreateControls() {
    if (!m_inside->Window()) return;
    const Parts parts = m_inside->Children();
    DestroyControls();
    if (parts && m_hasFrame) m_inside->AddFrame({m_width, m_height}, m_oversizeFrame);
    for (long i = 0; parts && i < m_inside->count; ++i) {
        const Held& position = *m_inside->At(i);
        const long x = position.x.value_or(m_firstX + static_cast<int>(i) * (m_buttonWidth + m_buttonGap));
        const RECT place{x - 2, m_labelY, x + m_buttonWidth + 2, m_labelY + m_labelHeight};
        const HWND label = m_inside->AddChild(L"STATIC", kFirstLabel + static_cast<int>(i), position.magnification,
                                              place, SS_CENTER | SS_NOPREFIX);
        if (!parts) return;
        m_inside->labels.push_back(label);
        m_inside->AddButton(kFirstButton + static_cast<int>(i), PositionPanel::NameFor(i, TipOf(position)),
                            {x, m_buttonY, x + m_buttonWidth, m_buttonY + m_buttonHeight}, BS_OWNERDRAW);
    }
    if (!parts) return;
    const long setup = m_setupX == -1 ? m_width - m_buttonWidth - m_firstX : m_setupX;
    m_inside->AddSetup({setup, m_buttonY, setup + m_buttonWidth, m_buttonY + m_buttonHeight}, true);
    if (!parts) return;
    m_inside->EnableLabels(m_inside->enabled);
    const long width = std::max(0L, m_width - m_observationX - 5);
    for (int i = 0; i < static_cast<int>(m_inside->observationTexts.size()); ++i) {
        const long top = 20 + 20 * i;
        const HWND button = m_inside->AddChild(L"BUTTON", kFirstObservation + i,
                                               m_inside->observationTexts[static_cast<std::size_t>(i)],
                                               {m_observationX, top, m_observationX + width, top + 15}, BS_OWNERDRAW);
        if (!parts) return;
        Subclass(button, BtnWndProc, this);
        if (!m_inside->observationShown) ShowWindow(button, SW_HIDE);
        m_inside->observation.push_back(button);
    }
    m_inside->SetButtonFonts(m_inside->normalFont.get());
    m_inside->ShowLabelFonts();
    m_inside->Finish({m_width, m_height}, 0, m_boldTitle);
    // Last: with a tooltip, each message to a button costs more.
    for (long i = 0; parts && i < m_inside->count; ++i) {
        m_inside->At(i)->tip.Empty();
        m_inside->UpdateTip(i);
    }
}

// ---- Content -------------------------------------------------------------------------------------------------------

void CKxDevUI_Nosepiece::Init(long count, long position, bool deviceDriven, bool localSelect) {
    m_inside->count = std::clamp(count, 0L, long{kMaxPositions});
    m_inside->SetPosition(position);
    m_inside->deviceDriven = deviceDriven;
    m_inside->localSelect = localSelect;
    for (Held& each : m_inside->positions)
        each.reachable = false;
    if (HWND{*this}) RedrawWindow(*this, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

bool CKxDevUI_Nosepiece::Init(IKxDeviceNosepiece* device) {
    if (!device) return false;
    const Alive alive(this);
    Structure structure;
    long position = -1;
    const auto ask = [&] {
        structure = Structure::Of(*device);
        device->GetPosition(position);
    };
    if (!AskDevice(kSource, device->GetLogDevId(), ask) || !alive) return false;
    Init(structure.count, position, structure.deviceDriven, structure.localSelect);
    m_inside->ShowStructure(structure);
    return true;
}

// Whether anything has changed about it.
bool CKxDevUI_Nosepiece::Inside::ShowStructure(const Structure& structure) {
    const auto replace = [](auto& held, auto value) { return std::exchange(held, value) != value; };
    bool changed = replace(count, structure.count);
    changed |= replace(deviceDriven, structure.deviceDriven);
    changed |= replace(localSelect, structure.localSelect);
    for (long i = 0; i < count; ++i) {
        const Structure::Place& place = structure.places[static_cast<std::size_t>(i)];
        changed |= replace(At(i)->reachable, place.reachable);
        At(i)->reason = place.reason;
    }
    return changed;
}

void CKxDevUI_Nosepiece::Inside::ShowParameters(const std::vector<CKxStringW>& keys) {
    for (long i = 0; i < static_cast<long>(keys.size()); ++i) {
        Held& position = *At(i);
        SKxDDBObjectiveItem item;
        CKxDeviceDatabase::DBGetObjectiveParam(keys[static_cast<std::size_t>(i)], &item, false);
        position.NA = item.NA;
        position.WD = item.WD;
        position.immersion = item.immersion;
        UpdateTip(i);
        Enable(ButtonAt(i), position.reachable);
    }
}

bool CKxDevUI_Nosepiece::Update(IKxDeviceNosepiece* device, bool structure, bool names, bool position, bool parameters,
                                bool) {
    if (!device) return false;
    const Alive alive(this);
    Reading told;
    long count = m_inside->count;
    const auto ask = [&] {
        if (structure) count = told.structure.emplace(Structure::Of(*device)).count;
        for (long i = 0; names && i < count; ++i) {
            auto& [name, magnification] = told.objectives.emplace_back();
            device->GetObjectiveName(i, name);
            device->GetMagnification(name, magnification);
        }
        if (position) device->GetPosition(told.position.emplace(-1));
        for (long i = 0; parameters && i < count; ++i)
            device->GetObjectiveKey(i, told.keys.emplace_back());
        told.activity = ReadActivity(*device);
    };
    if (!AskDevice(kSource, device->GetLogDevId(), ask) || !alive) return false;
    if (told.structure) {
        const bool changed = m_inside->ShowStructure(*told.structure);
        m_firstX = m_inside->count > 6 ? 8 : 16;
        if (changed) CreateControls();
        if (!alive) return true;
    }
    for (long i = 0; i < static_cast<long>(told.objectives.size()); ++i) {
        const auto& [name, magnification] = told.objectives[static_cast<std::size_t>(i)];
        SetMagnification(i, magnification);
        SetName(i, name);
    }
    m_inside->Requests().Tell(told.activity, device->GetLogDevId());
    if (told.position) SetPosition(*told.position);
    const HWND focus = GetFocus();
    m_inside->ShowParameters(told.keys);
    m_inside->ShowLabelFont(m_inside->Position());
    // Last: whoever hears of it may end this panel.
    m_inside->KeepFocusUsable(focus);
    return true;
}

void CKxDevUI_Nosepiece::SetPosition(long position) {
    m_inside->Requests().Answer();
    if (position == m_inside->Position() || !m_inside->At(position)) return;
    const long old = m_inside->Position();
    m_inside->SetPosition(position);
    m_inside->ShowLabelFont(old);
    m_inside->ShowLabelFont(position);
    m_inside->RedrawButtons();
}

void CKxDevUI_Nosepiece::SetName(long position, const wchar_t* name) {
    Held* held = m_inside->At(position);
    if (!held || held->name == name) return;
    held->name = name;
    m_inside->UpdateTip(position);
}

void CKxDevUI_Nosepiece::SetMagnification(long position, const wchar_t* magnification) {
    Held* held = m_inside->At(position);
    if (!held || held->magnification == magnification) return;
    held->magnification = magnification;
    if (const HWND button = m_inside->ButtonAt(position)) {
        SetWindowTextW(m_inside->labels[static_cast<std::size_t>(position)], held->magnification);
        InvalidateRect(button, nullptr, FALSE);
    }
}

void CKxDevUI_Nosepiece::SetNA(long position, double aperture) {
    if (Held* held = m_inside->At(position)) held->NA = aperture;
    m_inside->UpdateTip(position);
}

void CKxDevUI_Nosepiece::SetWD(long position, double distance) {
    if (Held* held = m_inside->At(position)) held->WD = distance;
    m_inside->UpdateTip(position);
}

CKxStringW CKxDevUI_Nosepiece::GetName(long position) const {
    const Held* held = m_inside->At(position);
    return held ? held->name : CKxStringW();
}

CKxStringW CKxDevUI_Nosepiece::GetMagnification(long position) const {
    const Held* held = m_inside->At(position);
    return held ? held->magnification : CKxStringW();
}

double CKxDevUI_Nosepiece::GetNA(long position) const {
    return m_inside->At(position) ? m_inside->At(position)->NA : 0;
}
double CKxDevUI_Nosepiece::GetWD(long position) const {
    return m_inside->At(position) ? m_inside->At(position)->WD : 0;
}

void CKxDevUI_Nosepiece::SetTitle(const wchar_t* title) { m_inside->SetTitle(title); }

void CKxDevUI_Nosepiece::SetEnable(bool enable, bool frameToo) {
    if (m_inside->count > 0) m_inside->enabled = enable;
    m_inside->EnableLabels(enable);
    if (frameToo) m_inside->EnableTitles(enable);
    m_inside->RedrawButtons();
}

void CKxDevUI_Nosepiece::Inside::EnableLabels(bool enable) const {
    for (const HWND label : labels)
        Enable(label, enable);
}

CKxStringW CKxDevUI_Nosepiece::GetTitle() const { return m_inside->Title(); }
long CKxDevUI_Nosepiece::GetPosition() const noexcept { return m_inside->Position(); }
void CKxDevUI_Nosepiece::SetTabStop(bool stop) { m_inside->SetTabStop(stop); }
int CKxDevUI_Nosepiece::GetObservationMode() const noexcept { return m_inside->observationMode; }

void CKxDevUI_Nosepiece::SetObservationRequest(std::function<void(int)> request) {
    m_inside->observationRequest = std::move(request);
}

void CKxDevUI_Nosepiece::RedrawButtons() const { m_inside->RedrawButtons(); }

void CKxDevUI_Nosepiece::SetSpecificXOffsetAndNumber(int position, bool useX, int x, bool useNumber, int number) {
    Held* held = m_inside->At(position);
    if (!held) return;
    held->x = useX ? std::optional(x) : std::nullopt;
    held->number = useNumber ? std::optional(number) : std::nullopt;
    if (const HWND button = m_inside->ButtonAt(position)) InvalidateRect(button, nullptr, FALSE);
}

void CKxDevUI_Nosepiece::Inside::UpdateTip(long position) {
    const HWND button = ButtonAt(position);
    Held* const held = At(position);
    // After Init the buttons may still be those of another count.
    if (!button || !held) return;
    CKxStringW tip = TipOf(*held);
    if (tip == held->tip) return;
    held->tip = std::move(tip);
    SetTip(position, held->tip);
}

SKxObjectiveCard CKxDevUI_Nosepiece::Inside::CardOf(long position) {
    const Held* const held = At(position);
    SKxObjectiveCard card;
    if (held) card = *held;
    card.remark = Requests().Remark();
    return card;
}

void CKxDevUI_Nosepiece::SetCards(std::optional<SKxObjectiveCards> cards) { m_inside->cards.Set(std::move(cards)); }
bool CKxDevUI_Nosepiece::ShowCard(long position) { return m_inside->cards.Show(position); }
void CKxDevUI_Nosepiece::HideCard() { m_inside->cards.Hide(); }

// The fonts are the panel's own, so the zoom has to be applied here.
HFONT CKxDevUI_Nosepiece::Inside::LabelFont(bool bold) const {
    const HFONT font = bold ? boldFont.get() : normalFont.get();
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    return zoom == 1.0 ? font : KX_GetFontAtZoom(font, 1.0, zoom);
}

void CKxDevUI_Nosepiece::Inside::ShowLabelFonts() const {
    for (long i = 0; i < count; ++i)
        ShowLabelFont(i);
}

void CKxDevUI_Nosepiece::Inside::ShowLabelFont(long position) const {
    if (!ButtonAt(position)) return;
    const HWND label = labels[static_cast<std::size_t>(position)];
    // A place that is being left stays the one that was known last.
    const bool known = Requests().LookOf(position) != PlaceLook::Plain;
    const auto font = reinterpret_cast<WPARAM>(LabelFont(position == Position() && known));
    if (static_cast<WPARAM>(SendMessageW(label, WM_GETFONT, 0, 0)) == font) return;
    SendMessageW(label, WM_SETFONT, font, FALSE);
    InvalidateRect(label, nullptr, TRUE);
}

// ---- Observation modes ---------------------------------------------------------------------------------------------

void CKxDevUI_Nosepiece::SetObservationModes(const std::vector<CKxStringW>& texts) {
    m_inside->observationTexts.assign(texts.begin(),
                                      texts.begin() + std::min<std::ptrdiff_t>(std::ssize(texts), kMaxObservation));
}

void CKxDevUI_Nosepiece::SetObservationMode(int mode) {
    if (mode == m_inside->observationMode || mode < 0 || mode >= static_cast<int>(m_inside->observationTexts.size()))
        return;
    m_inside->observationMode = mode;
    RedrawObservation();
}

void CKxDevUI_Nosepiece::ShowObservationMode(bool show) {
    m_inside->observationShown = show;
    for (const HWND button : m_inside->observation)
        ShowWindow(button, show ? SW_SHOWNA : SW_HIDE);
}

void CKxDevUI_Nosepiece::RedrawObservation() const {
    for (const HWND button : m_inside->observation)
        InvalidateRect(button, nullptr, FALSE);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Nosepiece::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<CKxDevUI_Nosepiece, ByInstances<CKxDevUI_Nosepiece, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &CKxDevUI_Nosepiece::Handle>({window, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_Nosepiece::BtnWndProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Nosepiece, &CKxDevUI_Nosepiece::HandleButton>({button, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_Nosepiece::GroupWndProc(HWND frame, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Nosepiece, &CKxDevUI_Nosepiece::HandleFrame>({frame, id, wParam, lParam});
}

bool CKxDevUI_Nosepiece::Inside::HearForCards(const Message& message, long position) {
    if (!cards.AreOn()) return true;
    const Alive alive(Object());
    cards.Hear(Window(), message, position);
    return static_cast<bool>(alive);
}

Handled CKxDevUI_Nosepiece::HandleButton(const Message& message) {
    const int position = GetDlgCtrlID(message.window) - kFirstButton;
    if (position >= 0 && position < kMaxPositions && !m_inside->HearForCards(message, position)) return std::nullopt;
    switch (message.id) {
    case WM_MOUSEMOVE: Btn_OnMouseMove(message.window, message.wParam, message.lParam); return std::nullopt;
    case WM_MOUSELEAVE: Btn_OnMouseLeave(message.window); return std::nullopt;
    default: return m_inside->HandleButton(message, 1);
    }
}

Handled CKxDevUI_Nosepiece::HandleFrame(const Message& message) {
    return message.id == WM_ERASEBKGND ? Group_OnEraseBkGnd() : m_inside->HandleFrame(message);
}

void CKxDevUI_Nosepiece::Btn_OnMouseMove(HWND button, WPARAM wParam, LPARAM lParam) {
    m_inside->HandleButton({button, WM_MOUSEMOVE, wParam, lParam}, 1);
}

void CKxDevUI_Nosepiece::Btn_OnMouseLeave(HWND button) { m_inside->HandleButton({button, WM_MOUSELEAVE, 0, 0}, 1); }

LRESULT CKxDevUI_Nosepiece::Group_OnPaint(HWND frame) {
    return m_inside->HandleFrame({frame, WM_PAINT, 0, 0}).value_or(0);
}

LRESULT CKxDevUI_Nosepiece::Group_OnEraseBkGnd() { return 1; }

LRESULT CKxDevUI_Nosepiece::OnEraseBkGnd(HDC dc) {
    return m_inside->HandleWindow({m_inside->Window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0}).value_or(0);
}

void CKxDevUI_Nosepiece::OnMouseMove(WPARAM wParam, LPARAM lParam) {
    TrackHover({m_inside->Window(), WM_MOUSEMOVE, wParam, lParam});
}

void CKxDevUI_Nosepiece::OnMouseLeave() { TrackHover({m_inside->Window(), WM_MOUSELEAVE, 0, 0}); }

Handled CKxDevUI_Nosepiece::Handle(const Message& message) {
    if (!m_inside->HearForCards(message, -1)) return std::nullopt;
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_DRAWITEM:
        if (!message.lParam) return std::nullopt;
        OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
        return TRUE;
    case WM_ERASEBKGND: return OnEraseBkGnd(reinterpret_cast<HDC>(message.wParam));
    case WM_NCDESTROY:
        m_inside->labels.clear();
        m_inside->observation.clear();
        break;
    case WM_MOUSEMOVE: OnMouseMove(message.wParam, message.lParam); break;
    case WM_MOUSELEAVE: OnMouseLeave(); break;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<NosepieceBand>(message)) {
            Update(FindDevice<IKxDeviceNosepiece>(band->device), band->flags);
        }
        return 0;
    default: break;
    }
    return m_inside->HandleWindow(message);
}

LRESULT CKxDevUI_Nosepiece::OnCommand(WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam), observation = id - kFirstObservation;
    if (HIWORD(wParam) != BN_CLICKED) return 0;
    if (id >= kFirstButton && id < kFirstButton + m_inside->count) {
        if (m_inside->enabled) Click(id - kFirstButton);
        return 1;
    }
    if (id == kSetupId) {
        const Alive alive(this);
        OnSetupRequest();
        if (alive) m_inside->ShowLabelFont(m_inside->Position());
        return 1;
    }
    if (observation >= 0 && observation < static_cast<int>(m_inside->observationTexts.size()) &&
        m_inside->observationRequest) {
        // The host may end this object, and the function with it, from within.
        const auto request = m_inside->observationRequest;
        request(observation);
    }
    return 0;
}

void CKxDevUI_Nosepiece::Click(long position) {
    const Alive alive(this);
    const Activity::Question question(m_inside->Requests());
    bool handled = false;
    OnPositionChangeRequest(position, handled);
    if (!alive) return;
    if (question.HasReason())
        m_inside->Requests().Refused(question, position);
    else if (handled)
        m_inside->Requests().TakenOver(question, position);
    if (handled) return;
    if (m_inside->localSelect || !m_inside->deviceDriven) SetPosition(position);
}
