#include <kxdevui/optics/devgui_filterwheel.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/framework/ui_control.h>
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

// The image of a filter by its name, made of the templates by number of bands.
CKxStringA FilterImage(const CKxStringW& name, const std::array<CKxStringA, 6>& templates) {
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

}  // namespace

struct CKxDevUI_FilterWheel::Structure {
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

ATOM CKxDevUI_FilterWheel::m_Atom = 0;
std::map<HWND, CKxDevUI_FilterWheel*> CKxDevUI_FilterWheel::m_Instances;

CKxDevUI_FilterWheel::CKxDevUI_FilterWheel() : m_title(KX_GetTranslation(L"Filter", kSource)) {
    Life::Begin(this);
    for (std::size_t bands = 0; bands < m_round.size(); ++bands) {
        CKxStringW name;
        name.Format(32, bands == 0 ? L"FILTER_EMPTY" : L"FILTER_%uBAND", static_cast<unsigned>(bands));
        CKxBitmapPool::LoadSVGBaseUI(name, m_round[bands]);
        CKxBitmapPool::LoadSVGBaseUI(name + L"_SQUARE", m_squareTemplates[bands]);
    }
}

CKxDevUI_FilterWheel::~CKxDevUI_FilterWheel() {
    Destroy();
    Life::End(this);
}

void CKxDevUI_FilterWheel::OnPositionChangeRequest(long, bool&) {}
void CKxDevUI_FilterWheel::OnSetupRequest() {}

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_FilterWheel::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (width >= 0) m_width = width;
        if (height >= 0) m_height = height;
        const HWND window = m_panel.Open(creation, m_Atom, {L"KxDevGUI_FilterWheel", L"CKxDevUI_FilterWheel"}, WndProc,
                                         parent, {x, y}, {m_width, m_height}, this);
        if (!window) return nullptr;
        CreateControls();
        return creation ? m_panel.Window() : nullptr;
    });
}

void CKxDevUI_FilterWheel::Destroy() { m_panel.Close(); }

long CKxDevUI_FilterWheel::Shown() const { return std::clamp(m_count, 0L, long{kMaxPositions}); }

bool CKxDevUI_FilterWheel::SetupEnabled() const {
    return m_enabled && m_setupAllowed && CKxUserManager::GetCurrentUserRights(eKxUserRight_DeviceSetup);
}

void CKxDevUI_FilterWheel::AddButtons() {
    const int columns = std::max(1, m_columns);
    for (int i = 0; i < Shown(); ++i) {
        const long x = (m_gapX + m_buttonWidth) * (i % columns) + m_firstX;
        const long y = (m_gapY + m_buttonHeight) * (i / columns) + m_firstY;
        const HWND button = m_panel.AddButton(kFirstButton + i, L"", {x, y, x + m_buttonWidth, y + m_buttonHeight},
                                              m_enabled ? BS_OWNERDRAW : BS_OWNERDRAW | WS_DISABLED, BtnWndProc, this);
        SetFont(button, KX_GetDefaultGuiFont());
    }
    const long setup = m_setupX == -1 ? m_width - m_buttonWidth - m_firstX : m_setupX;
    m_panel.AddSetup({setup, m_firstY, setup + m_buttonWidth, m_firstY + m_buttonHeight}, SetupEnabled(), BtnWndProc,
                     this);
}

void CKxDevUI_FilterWheel::DestroyControls() { m_panel.RemoveParts(); }

void CKxDevUI_FilterWheel::CreateControls() {
    if (!m_panel.Window()) return;
    // Filters that have no button any more have their room all the same.
    const long rows = std::clamp((m_count - 1) / std::max(1, m_columns), 0L, kMostRows);
    m_height = (rows + 2) * m_buttonHeight;
    long titleHeight = m_titleHeight;
    if (m_heightFromTitle) {
        const long text = TitleTextHeight();
        const long grid = std::lround((static_cast<double>(rows) + 1.4) * m_buttonHeight);
        m_height = std::min(std::max(text + 5, grid), 2L * m_buttonHeight + 5);
        titleHeight = text + 1;
    }
    DestroyControls();
    if (m_hasFrame) m_panel.AddFrame(m_title, {m_width, m_height}, m_oversizeFrame, GroupWndProc, this);
    if (m_hasTitle) {
        m_panel.AddTitle(m_title, {m_titleX, m_titleY, m_titleX + m_titleWidth, m_titleY + titleHeight}, m_titleLeft);
    }
    AddButtons();
    m_panel.SetFocusPosition(m_position);
    m_panel.Finish({m_width, m_height}, 0, m_boldTitle);
    // Last: with a tooltip, each message to a button costs more.
    for (long i = 0; i < Shown(); ++i)
        SetTip(i);
}

// Unzoomed, as the whole layout.
long CKxDevUI_FilterWheel::TitleTextHeight() const {
    const MemoryDC dc(CreateCompatibleDC(nullptr));
    const Selection font(dc.get(), m_boldTitle ? KX_GetDefaultGuiFontBoldZoom(1) : KX_GetDefaultGuiFontZoom(1));
    RECT place{0, 0, m_titleWidth, 9999};
    DrawTextW(dc.get(), m_title, static_cast<int>(m_title.Length()), &place, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return place.bottom - place.top;
}

// ---- Content -------------------------------------------------------------------------------------------------------

CKxDevUI_FilterWheel::Filter* CKxDevUI_FilterWheel::At(long position) {
    return position >= 0 && position < Shown() ? &m_filters[static_cast<std::size_t>(position)] : nullptr;
}

bool CKxDevUI_FilterWheel::Update(unsigned int device, bool structure, bool names, bool position) {
    return Update(FindDevice<IKxDeviceFilterChanger>(device, eKxDeviceType_FilterChanger), structure, names, position);
}

bool CKxDevUI_FilterWheel::Update(IKxDeviceFilterChanger* device, bool structure, bool names, bool position) {
    if (!device) return false;
    const Alive alive(this);
    std::optional<Structure> told;
    std::vector<CKxStringW> filters;
    long current = -1, count = m_count;
    const auto ask = [&] {
        if (structure) count = told.emplace(Structure::Of(*device)).count;
        for (long i = 0; names && i < std::min(count, long{kMaxPositions}); ++i)
            device->GetFilterName(i, filters.emplace_back());
        if (position) device->GetPosition(current);
    };
    if (!AskDevice(kSource, device->GetLogDevId(), ask) || !alive) return false;
    if (told) ShowStructure(*told);
    for (std::size_t i = 0; i < filters.size(); ++i)
        SetFilterName(static_cast<long>(i), filters[i]);
    if (position) SetPosition(current);
    return true;
}

void CKxDevUI_FilterWheel::ShowStructure(const Structure& structure) {
    m_title = structure.title;
    m_count = structure.count;
    m_intelligent = structure.intelligent;
    m_motorized = structure.motorized;
    m_type = structure.type;
    m_square = m_type == eKxFilterType_Cube || m_type == eKxFilterType_DichroicMirror;
    if (m_position >= m_count) m_position = -1;
    CreateControls();
}

void CKxDevUI_FilterWheel::SetPosition(long position) {
    if (position == m_position || position < -1 || position >= m_count) return;
    m_position = position;
    m_panel.SetFocusPosition(position);
    m_panel.RedrawButtons();
}

void CKxDevUI_FilterWheel::RedrawButtons() const { m_panel.RedrawButtons(); }

void CKxDevUI_FilterWheel::SetFilterName(long position, const wchar_t* name) {
    Filter* filter = At(position);
    if (!filter) return;
    filter->name = name;
    filter->image = m_square ? CreateFilterSVGStringSquare(filter->name) : CreateFilterSVGString(filter->name);
    SetTip(position);
    m_panel.RedrawButtons();
}

void CKxDevUI_FilterWheel::SetTip(long position) const {
    const HWND button = m_panel.ButtonAt(position);
    if (!button) return;
    const CKxStringW& name = m_filters[static_cast<std::size_t>(position)].name;
    KX_UpdateToolTipWindow(button, name.IsEmpty() ? KX_GetTranslation(L"Empty", kSource) : name);
}

CKxStringW CKxDevUI_FilterWheel::GetFilterName(long position) const {
    const Filter* filter = const_cast<CKxDevUI_FilterWheel*>(this)->At(position);
    return filter ? filter->name : CKxStringW();
}

void CKxDevUI_FilterWheel::SetFilterTitle(long position, const wchar_t* title) {
    if (Filter* filter = At(position)) filter->title = title;
}

CKxStringW CKxDevUI_FilterWheel::GetFilterTitle(long position) const {
    const Filter* filter = const_cast<CKxDevUI_FilterWheel*>(this)->At(position);
    return filter ? filter->title : CKxStringW();
}

void CKxDevUI_FilterWheel::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    m_panel.SetTitle(m_title);
}

void CKxDevUI_FilterWheel::SetEnable(bool enable, bool frameToo) {
    m_enabled = enable;
    for (const HWND button : m_panel.Buttons())
        Enable(button, enable);
    Enable(m_panel.Setup(), SetupEnabled());
    if (!frameToo) return;
    m_panel.EnableFrame(enable);
    Enable(m_panel.Title(), enable);
}

void CKxDevUI_FilterWheel::SetVisible(bool visible) {
    if (m_panel.Window()) ShowWindow(m_panel.Window(), visible ? SW_SHOWNA : SW_HIDE);
}

CKxStringA CKxDevUI_FilterWheel::CreateFilterSVGString(CKxStringW& name) { return FilterImage(name, m_round); }

CKxStringA CKxDevUI_FilterWheel::CreateFilterSVGStringSquare(CKxStringW& name) {
    return FilterImage(name, m_squareTemplates);
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
    return m_panel.HandleButton(message, Shown() > m_columns ? std::max(1, m_columns) : 1);
}

Handled CKxDevUI_FilterWheel::HandleFrame(const Message& message) { return m_panel.HandleFrame(message); }

Handled CKxDevUI_FilterWheel::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_DRAWITEM:
        if (!message.lParam) return std::nullopt;
        OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
        return TRUE;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<sizeof(FilterWheelBand)>(message)) {
            Update(band->device, band->flags[0], band->flags[1], band->flags[2]);
        }
        return 0;
    default: return m_panel.HandleWindow(message);
    }
}

LRESULT CKxDevUI_FilterWheel::OnCommand(WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam);
    if (HIWORD(wParam) != BN_CLICKED) return 0;
    if (id >= kFirstButton && id < std::min(kFirstButton + m_count, long{kSetupId})) {
        OnClick(id - kFirstButton);
        return 1;
    }
    if (id != kSetupId) return 0;
    OnSetupRequest();
    return 1;
}

void CKxDevUI_FilterWheel::OnClick(long position) {
    const Alive alive(this);
    const long old = m_position;
    bool refuse = false;
    OnPositionChangeRequest(position, refuse);
    if (!alive) return;
    // A changer without motor that knows its position: only turning it by hand moves the selection.
    const bool byHand = m_intelligent && !m_motorized;
    if (!byHand) {
        SetPosition(position);
        // The user sees what was refused before it springs back.
        if (refuse && m_panel.Window())
            RedrawWindow(m_panel.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    if (refuse && alive) SetPosition(old);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CKxDevUI_FilterWheel::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID == UINT{kSetupId}) return m_panel.DrawSetup(item);
    const long position = static_cast<long>(item.CtlID) - kFirstButton;
    const Filter* filter = At(position);
    if (!filter) return;
    const bool current = position == m_position;
    PaintItem(m_panel.Window(), item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        RECT place = area;
        const long line = std::max(1L, CKxGUILayoutManager::Zoomed(1));
        if (current) PositionPanel::DrawCurrent(dc, area);
        InflateRect(&place, -2 * line, -2 * line);
        if (item.itemState & ODS_SELECTED) OffsetRect(&place, 1, 1);
        CKxBitmapPool::DrawSVGImage(dc, filter->image, place, m_panel.IsEnabled() && !(item.itemState & ODS_DISABLED));
        PositionPanel::DrawFocus(dc, area, item);
    });
}
