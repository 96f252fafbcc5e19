#include <kxdevui/optics/devgui_nosepiece.h>

#include <algorithm>
#include <cwchar>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevices/kx_device.h>
#include <kxdevui/framework/ui_window.h>
#include <kxfilters/kx_objectives.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_nosepiece";
constexpr int kFirstLabel = 10100;
constexpr int kFirstButton = 10200;
constexpr int kFirstObservation = 10600;
constexpr int kMaxObservation = 4;
constexpr std::size_t kMaxTip = 1024;

// The ring of an objective by its magnification, both ends included, first match. What is in none of the ranges is
// shown without a ring.
constexpr char kTemplateRing[] = "#FFE600";
struct Ring {
    double from;
    double to;
    const char* color;
};
constexpr Ring kRings[] = {
    {100, 250, "#EEEEEE"},    // white
    {60, 63, "#3F77EB"},      // dark blue
    {40, 50, "#77E0FF"},      // light blue
    {25, 32, "#5EFFB7"},      // turquoise
    {16, 20, "#8CEA6B"},      // green
    {10, 10, kTemplateRing},  // yellow
    {4, 5, "#FF2020"},        // red
    {2, 2.5, "#9A3301"},      // brown
};
constexpr char kGreyRing[] = "#545454";  // between 0 and 2, both left out

const char* RingOf(double magnification) {
    for (const Ring& ring : kRings) {
        if (magnification >= ring.from && magnification <= ring.to) return ring.color;
    }
    return magnification > 0 && magnification < 2 ? kGreyRing : nullptr;
}

Font MakeFont(int weight) {
    LOGFONTW font{};
    font.lfHeight = -9;
    font.lfWeight = weight;
    font.lfCharSet = DEFAULT_CHARSET;
    std::wcscpy(font.lfFaceName, L"MS Shell Dlg 2");
    return Font(CreateFontIndirectW(&font));
}

}  // namespace

ATOM CKxDevUI_Nosepiece::m_Atom = 0;
std::map<HWND, CKxDevUI_Nosepiece*> CKxDevUI_Nosepiece::m_Instances;

CKxDevUI_Nosepiece::CKxDevUI_Nosepiece()
    : m_title(KX_GetTranslation(L"Nosepiece", kSource)), m_observationTexts{KX_GetTranslation(L"Eyepieces", kSource),
                                                                            KX_GetTranslation(L"Camera", kSource)} {
    Life::Begin(this);
}

CKxDevUI_Nosepiece::~CKxDevUI_Nosepiece() {
    Destroy();
    Life::End(this);
}

void CKxDevUI_Nosepiece::OnPositionChangeRequest(long, bool&) {}
void CKxDevUI_Nosepiece::OnSetupRequest() {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Nosepiece::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    Destroy();
    if (width >= 0) m_width = width;
    if (height >= 0) m_height = height;
    const HWND window = m_panel.Open(m_Atom, {L"KxDevGUI_Nosepiece", L"CKxDevUI_Nosepiece"}, WndProc, parent, {x, y},
                                     {m_width, m_height}, this);
    if (!window) return nullptr;
    m_normalFont = MakeFont(FW_NORMAL);
    m_boldFont = MakeFont(FW_BOLD);
    m_framePen.reset(CreatePen(PS_SOLID, 1, RGB(127, 127, 127)));
    LoadImages();
    CreateControls();
    return window;
}

void CKxDevUI_Nosepiece::Destroy() {
    const Alive alive(this);
    m_panel.Close();
    // The focus may have gone to a host's window, which may have ended this object.
    if (!alive) return;
    m_normalFont.reset();
    m_boldFont.reset();
    m_framePen.reset();
}

// The pairs count only when both of them are there, the motor only beside a whole pair.
void CKxDevUI_Nosepiece::LoadImages() {
    const auto load = [](const wchar_t* name, CKxStringA& svg) {
        svg.Empty();
        return CKxBitmapPool::LoadSVGBaseUI(name, svg);
    };
    const bool empty =
        load(L"IDS_NOSEPIECE_0_EMPTY", m_emptyImages[0]) && load(L"IDS_NOSEPIECE_1_EMPTY", m_emptyImages[1]);
    if (!empty) m_emptyImages = {};
    const bool rings = load(L"IDS_NOSEPIECE_0", m_ringImages[0]) && load(L"IDS_NOSEPIECE_1", m_ringImages[1]);
    if (!rings) m_ringImages = {};
    if (!rings || !load(L"IDS_NOSEPIECE_MOTOR", m_motorImage)) m_motorImage.Empty();
}

void CKxDevUI_Nosepiece::CreateControls() {
    m_panel.RemoveParts();
    m_labels.clear();
    m_observation.clear();
    if (m_hasFrame) m_panel.AddFrame(m_title, {m_width, m_height}, m_oversizeFrame, GroupWndProc, this);
    for (long i = 0; i < m_count; ++i) {
        const Position& position = *At(i);
        const long x = position.x.value_or(m_firstX + static_cast<int>(i) * (m_buttonWidth + m_buttonGap));
        const RECT label{x - 2, m_labelY, x + m_buttonWidth + 2, m_labelY + m_labelHeight};
        const RECT button{x, m_buttonY, x + m_buttonWidth, m_buttonY + m_buttonHeight};
        m_labels.push_back(m_panel.AddChild(L"STATIC", kFirstLabel + static_cast<int>(i), position.magnification, label,
                                            SS_CENTER | SS_NOPREFIX));
        m_panel.AddButton(kFirstButton + static_cast<int>(i), L"", button, BS_OWNERDRAW, BtnWndProc, this);
    }
    const long setup = m_setupX == -1 ? m_width - m_buttonWidth - m_firstX : m_setupX;
    m_panel.AddSetup({setup, m_buttonY, setup + m_buttonWidth, m_buttonY + m_buttonHeight}, true, BtnWndProc, this);
    EnableLabels();
    AddObservation();
    m_panel.SetFocusPosition(m_position);
    m_panel.SetButtonFonts(m_normalFont.get());
    for (long i = 0; i < m_count; ++i)
        SetLabelFont(i, i == m_position);
    m_panel.Finish({m_width, m_height}, 0, m_boldTitle);
    // Last: with a tooltip, each message to a button costs more.
    for (long i = 0; i < m_count; ++i) {
        At(i)->tip.Empty();
        UpdateTip(i);
    }
}

void CKxDevUI_Nosepiece::AddObservation() {
    const long width = std::max(0L, m_width - m_observationX - 5);
    for (int i = 0; i < static_cast<int>(m_observationTexts.size()); ++i) {
        const long top = 20 + 20 * i;
        const HWND button =
            m_panel.AddChild(L"BUTTON", kFirstObservation + i, m_observationTexts[static_cast<std::size_t>(i)],
                             {m_observationX, top, m_observationX + width, top + 15}, BS_OWNERDRAW);
        Subclass(button, BtnWndProc, this);
        if (!m_observationShown) ShowWindow(button, SW_HIDE);
        m_observation.push_back(button);
    }
}

// ---- Content -------------------------------------------------------------------------------------------------------

CKxDevUI_Nosepiece::Position* CKxDevUI_Nosepiece::At(long position) {
    return position >= 0 && position < m_count ? &m_positions[static_cast<std::size_t>(position)] : nullptr;
}

const CKxDevUI_Nosepiece::Position* CKxDevUI_Nosepiece::At(long position) const {
    return const_cast<CKxDevUI_Nosepiece*>(this)->At(position);
}

void CKxDevUI_Nosepiece::Init(long count, long position, bool deviceDriven, bool localSelect) {
    m_count = std::clamp(count, 0L, long{kMaxPositions});
    m_position = At(position) ? position : -1;
    m_deviceDriven = deviceDriven;
    m_localSelect = localSelect;
    for (Position& each : m_positions)
        each.available = false;
    if (HWND{*this}) RedrawWindow(*this, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

bool CKxDevUI_Nosepiece::Init(IKxDeviceNosepiece* device) {
    if (!device) return false;
    long position = -1;
    device->GetPosition(position);
    Init(device->GetPositionCount(), position, device->IsDeviceDriven(), device->IsLocalSelect());
    ReadStructure(*device);
    return true;
}

// Whether anything has changed about it.
bool CKxDevUI_Nosepiece::ReadStructure(const IKxDeviceNosepiece& device) {
    const auto replace = [](auto& held, auto value) { return std::exchange(held, value) != value; };
    bool changed = replace(m_count, std::clamp(device.GetPositionCount(), 0L, long{kMaxPositions}));
    changed |= replace(m_deviceDriven, device.IsDeviceDriven());
    changed |= replace(m_localSelect, device.IsLocalSelect());
    for (long i = 0; i < m_count; ++i) {
        CKxStringW reason;
        changed |= replace(At(i)->available, device.GetPositionAvailable(i, reason));
    }
    if (!At(m_position)) m_position = -1;
    return changed;
}

void CKxDevUI_Nosepiece::ReadParameters(const IKxDeviceNosepiece& device) {
    for (long i = 0; i < m_count; ++i) {
        Position& position = *At(i);
        CKxStringW key;
        device.GetObjectiveKey(i, key);
        SKxDDBObjectiveItem item;
        CKxDeviceDatabase::DBGetObjectiveParam(key, &item, false);
        position.aperture = item.NA;
        position.distance = item.WD;
        UpdateTip(i);
        PositionPanel::Enable(m_panel.ButtonAt(i), position.available);
    }
}

bool CKxDevUI_Nosepiece::Update(IKxDeviceNosepiece* device, bool structure, bool names, bool position, bool parameters,
                                bool) {
    if (!device) return false;
    if (structure) {
        const bool changed = ReadStructure(*device);
        m_firstX = m_count > 6 ? 8 : 16;
        if (changed && m_panel.Window()) CreateControls();
    }
    for (long i = 0; names && i < m_count; ++i) {
        CKxStringW name, magnification;
        device->GetObjectiveName(i, name);
        device->GetMagnification(name, magnification);
        SetMagnification(i, magnification);
        SetName(i, name);
    }
    if (position) {
        long current = -1;
        device->GetPosition(current);
        SetPosition(current);
    }
    if (parameters) ReadParameters(*device);
    SetLabelFont(m_position, true);
    return true;
}

void CKxDevUI_Nosepiece::SetPosition(long position) {
    if (position == m_position || !At(position)) return;
    SetLabelFont(m_position, false);
    m_position = position;
    SetLabelFont(m_position, true);
    m_panel.SetFocusPosition(position);
    m_panel.RedrawButtons();
}

void CKxDevUI_Nosepiece::SetName(long position, const wchar_t* name) {
    Position* held = At(position);
    if (!held || held->name == name) return;
    held->name = name;
    UpdateTip(position);
}

void CKxDevUI_Nosepiece::SetMagnification(long position, const wchar_t* magnification) {
    Position* held = At(position);
    if (!held || held->magnification == magnification) return;
    held->magnification = magnification;
    if (const HWND button = m_panel.ButtonAt(position)) {
        SetWindowTextW(m_labels[static_cast<std::size_t>(position)], held->magnification);
        InvalidateRect(button, nullptr, FALSE);
    }
}

void CKxDevUI_Nosepiece::SetNA(long position, double aperture) {
    if (Position* held = At(position)) held->aperture = aperture;
    UpdateTip(position);
}

void CKxDevUI_Nosepiece::SetWD(long position, double distance) {
    if (Position* held = At(position)) held->distance = distance;
    UpdateTip(position);
}

CKxStringW CKxDevUI_Nosepiece::GetName(long position) const {
    const Position* held = At(position);
    return held ? held->name : CKxStringW();
}

CKxStringW CKxDevUI_Nosepiece::GetMagnification(long position) const {
    const Position* held = At(position);
    return held ? held->magnification : CKxStringW();
}

double CKxDevUI_Nosepiece::GetNA(long position) const { return At(position) ? At(position)->aperture : 0; }
double CKxDevUI_Nosepiece::GetWD(long position) const { return At(position) ? At(position)->distance : 0; }

void CKxDevUI_Nosepiece::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    m_panel.SetTitle(m_title);
}

void CKxDevUI_Nosepiece::SetEnable(bool enable, bool frameToo) {
    if (m_count > 0) m_enabled = enable;
    EnableLabels();
    if (frameToo) m_panel.EnableFrame(enable);
    m_panel.RedrawButtons();
}

void CKxDevUI_Nosepiece::EnableLabels() const {
    for (const HWND label : m_labels)
        PositionPanel::Enable(label, m_enabled && m_panel.IsEnabled());
}

void CKxDevUI_Nosepiece::SetSpecificXOffsetAndNumber(int position, bool useX, int x, bool useNumber, int number) {
    Position* held = At(position);
    if (!held) return;
    held->x = useX ? std::optional(x) : std::nullopt;
    held->number = useNumber ? std::optional(number) : std::nullopt;
    if (const HWND button = m_panel.ButtonAt(position)) InvalidateRect(button, nullptr, FALSE);
}

void CKxDevUI_Nosepiece::UpdateTip(long position) {
    const HWND button = m_panel.ButtonAt(position);
    Position* const held = At(position);
    // After Init the buttons may still be those of another count.
    if (!button || !held) return;
    CKxStringW tip = TipOf(*held);
    if (tip == held->tip) return;
    held->tip = std::move(tip);
    KX_UpdateToolTipWindow(button, held->tip);
}

CKxStringW CKxDevUI_Nosepiece::TipOf(const Position& position) const {
    CKxStringW tip;
    if (!position.name.IsEmpty()) {
        tip.Format(kMaxTip, L"%ls\r\nNA=%0.2f WD=%0.0f", position.name.c_str(), position.aperture, position.distance);
    }
    return tip;
}

// The fonts are the panel's own, so the zoom has to be applied here.
HFONT CKxDevUI_Nosepiece::LabelFont(bool bold) const {
    const HFONT font = bold ? m_boldFont.get() : m_normalFont.get();
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    return zoom == 1.0 ? font : KX_GetFontAtZoom(font, 1.0, zoom);
}

void CKxDevUI_Nosepiece::SetLabelFont(long position, bool bold) const {
    if (!m_panel.ButtonAt(position)) return;
    const HWND label = m_labels[static_cast<std::size_t>(position)];
    const auto font = reinterpret_cast<WPARAM>(LabelFont(bold));
    if (static_cast<WPARAM>(SendMessageW(label, WM_GETFONT, 0, 0)) == font) return;
    SendMessageW(label, WM_SETFONT, font, FALSE);
    InvalidateRect(label, nullptr, TRUE);
}

// ---- Observation modes ---------------------------------------------------------------------------------------------

void CKxDevUI_Nosepiece::SetObservationModes(const std::vector<CKxStringW>& texts) {
    m_observationTexts.assign(texts.begin(),
                              texts.begin() + std::min<std::ptrdiff_t>(std::ssize(texts), kMaxObservation));
}

void CKxDevUI_Nosepiece::SetObservationMode(int mode) {
    if (mode == m_observationMode || mode < 0 || mode >= static_cast<int>(m_observationTexts.size())) return;
    m_observationMode = mode;
    RedrawObservation();
}

void CKxDevUI_Nosepiece::ShowObservationMode(bool show) {
    m_observationShown = show;
    for (const HWND button : m_observation)
        ShowWindow(button, show ? SW_SHOWNA : SW_HIDE);
}

void CKxDevUI_Nosepiece::RedrawObservation() const {
    for (const HWND button : m_observation)
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

Handled CKxDevUI_Nosepiece::HandleButton(const Message& message) { return m_panel.HandleButton(message, 1); }
Handled CKxDevUI_Nosepiece::HandleFrame(const Message& message) { return m_panel.HandleFrame(message); }

Handled CKxDevUI_Nosepiece::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam);
    case WM_DRAWITEM: {
        const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
        if (!item) return std::nullopt;
        if (static_cast<int>(item->CtlID) >= kFirstObservation) {
            OnDrawItem_Observation(*item);
        } else {
            OnDrawItem(*item);
        }
        return TRUE;
    }
    case WM_NCDESTROY:
        m_labels.clear();
        m_observation.clear();
        break;
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE: TrackHover(message); break;
    case WM_ENABLE: EnableLabels(); break;
    default: break;
    }
    return m_panel.HandleWindow(message);
}

LRESULT CKxDevUI_Nosepiece::OnCommand(WPARAM wParam) {
    const int id = LOWORD(wParam), observation = id - kFirstObservation;
    if (HIWORD(wParam) != BN_CLICKED) return 0;
    if (id >= kFirstButton && id < kFirstButton + m_count) {
        if (m_enabled) OnClick(id - kFirstButton);
        return 1;
    }
    if (id == kSetupId) {
        const Alive alive(this);
        OnSetupRequest();
        if (alive) SetLabelFont(m_position, true);
        return 1;
    }
    if (observation >= 0 && observation < static_cast<int>(m_observationTexts.size()) && m_observationRequest) {
        // The host may end this object, and the function with it, from within.
        const auto request = m_observationRequest;
        request(observation);
    }
    return 0;
}

void CKxDevUI_Nosepiece::OnClick(long position) {
    const Alive alive(this);
    bool handled = false;
    OnPositionChangeRequest(position, handled);
    if (!alive || handled) return;
    if (m_localSelect || !m_deviceDriven) SetPosition(position);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

CKxStringA CKxDevUI_Nosepiece::GetObjectiveBitmap(double magnification, bool selected) const {
    const std::size_t look = selected ? 1 : 0;
    const char* ring = RingOf(magnification);
    if (!ring) return m_emptyImages[look];
    CKxStringA svg = m_ringImages[look];
    CKxSvgStringAPI::ReplaceString(svg, kTemplateRing, ring);
    return svg;
}

CKxStringA CKxDevUI_Nosepiece::ImageOf(long position) const {
    const Position& held = *At(position);
    const double magnification = std::wcstod(held.magnification, nullptr);
    CKxStringA svg = held.available ? GetObjectiveBitmap(magnification, position == m_position) : m_motorImage;
    CKxStringA number;
    number.Format(32, "%d</text>", held.number.value_or(static_cast<int>(position) + 1));
    CKxSvgStringAPI::ReplaceString(svg, "X</text>", number);
    return svg;
}

void CKxDevUI_Nosepiece::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID == UINT{kSetupId}) return m_panel.DrawSetup(item);
    const long position = static_cast<long>(item.CtlID) - kFirstButton;
    if (!At(position)) return;
    PaintItem(m_panel.Window(), item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        RECT place = area;
        // Where the device decides, a press promises nothing.
        const bool answers = m_localSelect || !m_deviceDriven;
        if (item.itemState & ODS_SELECTED && answers) OffsetRect(&place, 1, 1);
        CKxBitmapPool::DrawSVGImage(dc, ImageOf(position), place, m_enabled && m_panel.IsEnabled());
        PositionPanel::DrawFocus(dc, area, item);
    });
}

void CKxDevUI_Nosepiece::OnDrawItem_Observation(const DRAWITEMSTRUCT& item) {
    const bool current = static_cast<int>(item.CtlID) - kFirstObservation == m_observationMode;
    const HBRUSH face = KX_GetSysColorBrush(current ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    PaintItem(m_panel.Window(), item, face, [&](HDC dc, const RECT& area) {
        const Selection font(dc, LabelFont(current));
        const Selection pen(dc, m_framePen.get());
        const Selection brush(dc, GetStockObject(NULL_BRUSH));
        Rectangle(dc, area.left, area.top, area.right, area.bottom);
        wchar_t text[256] = L"";
        const int length = GetWindowTextW(item.hwndItem, text, 256);
        RECT inner = area;
        InflateRect(&inner, -2, 0);
        if (item.itemState & ODS_SELECTED) OffsetRect(&inner, 1, 1);
        SetBkMode(dc, TRANSPARENT);
        const int color = current ? COLOR_HIGHLIGHTTEXT : m_panel.IsEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT;
        SetTextColor(dc, KX_GetSysColor(color));
        DrawTextW(dc, text, length, &inner, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        PositionPanel::DrawFocus(dc, area, item);
    });
}
