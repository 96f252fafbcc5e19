#include <kxdevui/optics/devgui_filterwheel.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/framework/ui_position_panel.h>
#include <kxdevui/optics/filter_image.h>
#include <kxfilters/kx_opticalfilter.h>
#include <kxsystem/kx_translation.h>
#include <kxsystem/kx_usermanager.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_filterwheel";
constexpr int kFirstButton = 10201;

// More would not be windows any more.
constexpr long kMostRows = 1000;

// By the number of bands.
using Templates = std::array<CKxStringA, 6>;

// The image of a filter by its name.
CKxStringA FilterImage(const CKxStringW& name, const Templates& templates) {
    if (name.IsEmpty() || name == L"Empty") return templates[0];
    CKxOpticalFilter filter;
    CKxFilterDialog::GetFilterInfo(name, &filter);
    constexpr int capacity = CKxFilterDialog::MaximumColors;
    unsigned long colors[capacity] = {};
    int count = capacity;
    CKxFilterDialog::GetColorsFromFilter(&filter, colors, count);
    const auto bands = static_cast<std::size_t>(std::clamp(count, 0, capacity));
    return ColorBands(templates[bands], {colors, bands});
}

// Unzoomed, as the whole layout.
long TextHeight(const CKxStringW& text, long width, bool bold) {
    const MemoryDC dc(CreateCompatibleDC(nullptr));
    const Selection font(dc.get(), bold ? KX_GetDefaultGuiFontBoldZoom(1) : KX_GetDefaultGuiFontZoom(1));
    RECT place{0, 0, width, 9999};
    DrawTextW(dc.get(), text, static_cast<int>(text.Length()), &place, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return place.bottom - place.top;
}

struct Filter {
    CKxStringW name;
    CKxStringW title;
    CKxStringA image;
};

// What a device tells.
struct Structure {
    CKxStringW title;
    long count;
    bool intelligent;
    bool motorized;
    EKxFilterType type;

    static Structure Of(const IKxDeviceFilterChanger& device) {
        const CDMApi_LogDevId id = device.GetLogDevId();
        return {device.IsKeyTitle() ? DMApi::LogDev_GetKey(id) : DMApi::LogDev_GetShortName(id),
                std::max(0L, DMApi::FilterChanger_GetFilterCount(id)), DMApi::FilterChanger_GetInteligent(id),
                DMApi::FilterChanger_GetMotorized(id), DMApi::FilterChanger_GetFilterType(id)};
    }
};

}  // namespace

struct CKxDevUI_FilterWheel::Inside : PositionPanel {
    explicit Inside(CKxDevUI_FilterWheel* panel)
        : PositionPanel({L"KxDevGUI_FilterWheel", L"CKxDevUI_FilterWheel", WndProc, BtnWndProc, GroupWndProc}, m_Atom,
                        panel, KX_GetTranslation(L"Filter", kSource)) {
        for (std::size_t bands = 0; bands < round.size(); ++bands) {
            CKxStringW name;
            name.Format(32, bands == 0 ? L"FILTER_EMPTY" : L"FILTER_%uBAND", static_cast<unsigned>(bands));
            CKxBitmapPool::LoadSVGBaseUI(name, round[bands]);
            CKxBitmapPool::LoadSVGBaseUI(name + L"_SQUARE", squareTemplates[bands]);
        }
    }

    // How many filters have buttons.
    long Shown() const { return std::clamp(count, 0L, long{kMaxPositions}); }
    // Null for one that has none.
    Filter* At(long position) {
        return position >= 0 && position < Shown() ? &filters[static_cast<std::size_t>(position)] : nullptr;
    }
    void ShowStructure(const Structure& structure);
    CKxStringW NameShown(long position) const;
    void ShowName(long position);

    long count = 0;
    bool intelligent = false;
    bool motorized = false;
    bool enabled = true;
    bool square = false;
    std::array<Filter, kMaxPositions> filters;
    Templates round;
    Templates squareTemplates;
    EKxFilterType type = eKxFilterType_Emission;
};

ATOM CKxDevUI_FilterWheel::m_Atom = 0;
std::map<HWND, CKxDevUI_FilterWheel*> CKxDevUI_FilterWheel::m_Instances;

CKxDevUI_FilterWheel::CKxDevUI_FilterWheel() : m_inside(std::make_unique<Inside>(this)) { Life::Begin(this); }

CKxDevUI_FilterWheel::~CKxDevUI_FilterWheel() {
    Destroy();
    Life::End(this);
}

CKxDevUI_FilterWheel::operator HWND() const noexcept { return m_inside->Window(); }

void CKxDevUI_FilterWheel::OnPositionChangeRequest(long, bool&) {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_FilterWheel::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return m_inside->Create(this, parent, {x, y}, {width, height}, m_width, m_height, [this] { CreateControls(); });
}

bool CKxDevUI_FilterWheel::SetupEnabled() const {
    return m_inside->enabled && m_setupAllowed && CKxUserManager::GetCurrentUserRights(eKxUserRight_DeviceSetup);
}

// Every window that comes or goes is told to the host, which may end this panel.
void CKxDevUI_FilterWheel::AddButtons() {
    const Parts parts = m_inside->Children();
    const int columns = std::max(1, m_columns);
    for (int i = 0; parts && i < m_inside->Shown(); ++i) {
        const long x = (m_gapX + m_buttonWidth) * (i % columns) + m_firstX;
        const long y = (m_gapY + m_buttonHeight) * (i / columns) + m_firstY;
        const HWND button = m_inside->AddButton(kFirstButton + i, PositionPanel::NameFor(i, m_inside->NameShown(i)),
                                                {x, y, x + m_buttonWidth, y + m_buttonHeight},
                                                m_inside->enabled ? BS_OWNERDRAW : BS_OWNERDRAW | WS_DISABLED);
        SetFont(button, KX_GetDefaultGuiFont());
    }
    if (!parts) return;
    const long setup = m_setupX == -1 ? m_width - m_buttonWidth - m_firstX : m_setupX;
    m_inside->AddSetup({setup, m_firstY, setup + m_buttonWidth, m_firstY + m_buttonHeight}, SetupEnabled());
}

void CKxDevUI_FilterWheel::Destroy() { m_inside->Close(); }
void CKxDevUI_FilterWheel::DestroyControls() { m_inside->RemoveParts(); }

void CKxDevUI_FilterWheel::CreateControls() {
    if (!m_inside->Window()) return;
    // Filters that have no button any more have their room all the same.
    const long rows = std::clamp((m_inside->count - 1) / std::max(1, m_columns), 0L, kMostRows);
    m_height = (rows + 2) * m_buttonHeight;
    long titleHeight = m_titleHeight;
    if (m_heightFromTitle) {
        const long text = TextHeight(m_inside->Title(), m_titleWidth, m_boldTitle);
        const long grid = std::lround((static_cast<double>(rows) + 1.4) * m_buttonHeight);
        m_height = std::min(std::max(text + 5, grid), 2L * m_buttonHeight + 5);
        titleHeight = text + 1;
    }
    const Parts parts = m_inside->Children();
    DestroyControls();
    if (parts && m_hasFrame) m_inside->AddFrame({m_width, m_height}, m_oversizeFrame);
    if (parts && m_hasTitle)
        m_inside->AddTitle({m_titleX, m_titleY, m_titleX + m_titleWidth, m_titleY + titleHeight}, m_titleLeft);
    if (parts) AddButtons();
    if (parts) m_inside->Finish({m_width, m_height}, 0, m_boldTitle);
    // Last: with a tooltip, each message to a button costs more.
    for (long i = 0; parts && i < m_inside->Shown(); ++i)
        m_inside->ShowName(i);
}

// ---- Content -------------------------------------------------------------------------------------------------------

bool CKxDevUI_FilterWheel::Update(unsigned int device, bool structure, bool names, bool position) {
    return Update(FindDevice<IKxDeviceFilterChanger>(device), structure, names, position);
}

bool CKxDevUI_FilterWheel::Update(IKxDeviceFilterChanger* device, bool structure, bool names, bool position) {
    if (!device) return false;
    const Alive alive(this);
    std::optional<Structure> told;
    std::vector<CKxStringW> filters;
    long current = -1, count = m_inside->count;
    KxActivity activity;
    const auto ask = [&] {
        if (structure) count = told.emplace(Structure::Of(*device)).count;
        for (long i = 0; names && i < std::min(count, long{kMaxPositions}); ++i)
            device->GetFilterName(i, filters.emplace_back());
        if (position) device->GetPosition(current);
        activity = ReadActivity(*device);
    };
    if (!AskDevice(kSource, device->GetLogDevId(), ask) || !alive) return false;
    if (told) {
        m_inside->ShowStructure(*told);
        CreateControls();
        if (!alive) return true;
    }
    for (std::size_t i = 0; i < filters.size(); ++i)
        SetFilterName(static_cast<long>(i), filters[i]);
    m_inside->Requests().Tell(activity, device->GetLogDevId());
    if (position) SetPosition(current);
    return true;
}

void CKxDevUI_FilterWheel::Inside::ShowStructure(const Structure& structure) {
    KeepTitle(structure.title);
    count = structure.count;
    intelligent = structure.intelligent;
    motorized = structure.motorized;
    type = structure.type;
    square = type == eKxFilterType_Cube || type == eKxFilterType_DichroicMirror;
    if (Position() >= count) SetPosition(-1);
}

void CKxDevUI_FilterWheel::SetPosition(long position) {
    if (position == m_inside->Position() || position < -1 || position >= m_inside->count) return;
    m_inside->SetPosition(position);
    m_inside->RedrawButtons();
}

void CKxDevUI_FilterWheel::RedrawButtons() const { m_inside->RedrawButtons(); }

void CKxDevUI_FilterWheel::SetFilterName(long position, const wchar_t* name) {
    Filter* filter = m_inside->At(position);
    if (!filter) return;
    filter->name = name;
    filter->image = m_inside->square ? CreateFilterSVGStringSquare(filter->name) : CreateFilterSVGString(filter->name);
    m_inside->ShowName(position);
    m_inside->RedrawButtons();
}

CKxStringW CKxDevUI_FilterWheel::Inside::NameShown(long position) const {
    const CKxStringW& name = filters[static_cast<std::size_t>(position)].name;
    return name.IsEmpty() ? KX_GetTranslation(L"Empty", kSource) : name;
}

void CKxDevUI_FilterWheel::Inside::ShowName(long position) { PositionPanel::SetTip(position, NameShown(position)); }

CKxStringW CKxDevUI_FilterWheel::GetFilterName(long position) const {
    const Filter* filter = m_inside->At(position);
    return filter ? filter->name : CKxStringW();
}

void CKxDevUI_FilterWheel::SetFilterTitle(long position, const wchar_t* title) {
    if (Filter* filter = m_inside->At(position)) filter->title = title;
}

CKxStringW CKxDevUI_FilterWheel::GetFilterTitle(long position) const {
    const Filter* filter = m_inside->At(position);
    return filter ? filter->title : CKxStringW();
}

void CKxDevUI_FilterWheel::SetTitle(const wchar_t* title) { m_inside->SetTitle(title); }
CKxStringW CKxDevUI_FilterWheel::GetTitle() const { return m_inside->Title(); }
long CKxDevUI_FilterWheel::GetPosition() const noexcept { return m_inside->Position(); }
void CKxDevUI_FilterWheel::SetTabStop(bool stop) { m_inside->SetTabStop(stop); }

void CKxDevUI_FilterWheel::SetEnable(bool enable, bool frameToo) {
    m_inside->enabled = enable;
    for (const HWND button : m_inside->Buttons())
        Enable(button, enable);
    Enable(m_inside->Setup(), SetupEnabled());
    if (frameToo) m_inside->EnableTitles(enable);
}

void CKxDevUI_FilterWheel::SetVisible(bool visible) {
    if (m_inside->Window()) ShowWindow(m_inside->Window(), visible ? SW_SHOWNA : SW_HIDE);
}

CKxStringA CKxDevUI_FilterWheel::CreateFilterSVGString(CKxStringW& name) { return FilterImage(name, m_inside->round); }

CKxStringA CKxDevUI_FilterWheel::CreateFilterSVGStringSquare(CKxStringW& name) {
    return FilterImage(name, m_inside->squareTemplates);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_FilterWheel::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<CKxDevUI_FilterWheel, ByInstances<CKxDevUI_FilterWheel, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &CKxDevUI_FilterWheel::Handle>({window, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_FilterWheel::BtnWndProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_FilterWheel, &CKxDevUI_FilterWheel::HandleButton>({button, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_FilterWheel::GroupWndProc(HWND frame, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_FilterWheel, &CKxDevUI_FilterWheel::HandleFrame>({frame, id, wParam, lParam});
}

LRESULT CKxDevUI_FilterWheel::Btn_OnLButtonDown(HWND button, WPARAM wParam, LPARAM lParam) {
    return CallPrevious({button, WM_LBUTTONDOWN, wParam, lParam});
}

Handled CKxDevUI_FilterWheel::HandleButton(const Message& message) {
    if (message.id == WM_LBUTTONDOWN) return Btn_OnLButtonDown(message.window, message.wParam, message.lParam);
    return m_inside->HandleButton(message, m_inside->Shown() > m_columns ? std::max(1, m_columns) : 1);
}

Handled CKxDevUI_FilterWheel::HandleFrame(const Message& message) { return m_inside->HandleFrame(message); }

Handled CKxDevUI_FilterWheel::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_DRAWITEM:
        if (!message.lParam) return std::nullopt;
        OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
        return TRUE;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<FilterWheelBand>(message)) {
            Update(band->device, band->flags);
        }
        return 0;
    default: return m_inside->HandleWindow(message);
    }
}

LRESULT CKxDevUI_FilterWheel::OnCommand(WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam);
    if (HIWORD(wParam) != BN_CLICKED) return 0;
    if (id >= kFirstButton && id < std::min(kFirstButton + m_inside->count, long{kSetupId})) {
        Click(id - kFirstButton);
        return 1;
    }
    if (id != kSetupId) return 0;
    OnSetupRequest();
    return 1;
}

void CKxDevUI_FilterWheel::Click(long position) {
    const Alive alive(this);
    const Activity::Question question(m_inside->Requests());
    const long old = m_inside->Position();
    bool refuse = false;
    OnPositionChangeRequest(position, refuse);
    if (!alive) return;
    // A changer without motor that knows its position: only turning it by hand moves the selection.
    const bool byHand = m_inside->intelligent && !m_inside->motorized;
    if (!byHand) {
        SetPosition(position);
        // The user sees what was refused before it springs back.
        if (refuse && m_inside->Window())
            RedrawWindow(m_inside->Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    if (!refuse || !alive) return;
    SetPosition(old);
    m_inside->Requests().Refused(question, position);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CKxDevUI_FilterWheel::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID == UINT{kSetupId}) return m_inside->DrawSetup(item);
    const long position = static_cast<long>(item.CtlID) - kFirstButton;
    const Filter* filter = m_inside->At(position);
    if (!filter) return;
    const bool current = m_inside->IsMarked(position);
    PaintItem(item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        RECT place = area;
        const long line = std::max(1L, CKxGUILayoutManager::Zoomed(1));
        const bool enabled = m_inside->IsEnabled() && !(item.itemState & ODS_DISABLED);
        if (current)
            PositionPanel::DrawCurrent(dc, area, enabled);
        else if (enabled)
            KX_DrawFlatButtonBackground(dc, area, ButtonLook(item), COLOR_BTNFACE);
        InflateRect(&place, -2 * line, -2 * line);
        if (item.itemState & ODS_SELECTED) OffsetRect(&place, 1, 1);
        CKxBitmapPool::DrawSVGImage(dc, filter->image, place, enabled);
        m_inside->DrawOver(dc, area, item, position, enabled, current ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    });
}
