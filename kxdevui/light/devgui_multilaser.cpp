#include <kxdevui/light/devgui_multilaser.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/light/devgui_multilaserline.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;
using namespace kx::multilaser;

namespace {

constexpr wchar_t kSource[] = L"devgui_multilaser";

constexpr int kFactorId = kTitleId + 1, kAllOffId = 10201, kLinkId = 10202, kAreaId = 10203, kPlateId = 10204,
              kBarId = 10205;
// In the plate: rows of lines, and the button of each that leaves it alone on.
constexpr int kFirstRow = 10300, kFirstSolo = 10400;
// Unzoomed pixels: the height of a row, of what stands above them; the widths of a scroll bar and of such a button.
constexpr long kRow = 42, kHead = 26, kScrollBar = 17, kSolo = 44;

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, kSource); }

// Shows a button down or up.
void ShowDown(HWND button, bool down) {
    const WPARAM wanted = down ? BST_CHECKED : BST_UNCHECKED;
    if (SendMessageW(button, BM_GETCHECK, 0, 0) != static_cast<LRESULT>(wanted))
        SendMessageW(button, BM_SETCHECK, wanted, 0);
}

bool MakeButton(const Parts& parts, int id, const wchar_t* text, const RECT& place, bool enabled = true) {
    HWND button = nullptr;
    return parts.PushRadio(button, id, Translated(text), place, false, nullptr,
                           DWORD{WS_TABSTOP} | BS_NOTIFY | (enabled ? DWORD{0} : DWORD{WS_DISABLED}));
}

}  // namespace

// ---- The lines -----------------------------------------------------------------------------------------------------

struct CKxDevUI_MultiLaser::Inside {
    class Line;
    class Plate;
    class Area;

    explicit Inside(CKxDevUI_MultiLaser& set);

    CKxDevUI_MultiLaser& owner;
    std::vector<std::unique_ptr<Line>> rows;
    std::unique_ptr<PartControl<Area>> area;

    // The line with a number, which is there.
    Line& Of(long number) const {
        const auto at = std::find(owner.m_order.begin(), owner.m_order.end(), number) - owner.m_order.begin();
        return *rows[static_cast<std::size_t>(at)];
    }
    void ShowSolo() const;
};

// A row, which tells the set.
class CKxDevUI_MultiLaser::Inside::Line : public PartControl<CKxDevUI_MultiLaserLine> {
public:
    explicit Line(CKxDevUI_MultiLaser& owner) : m_owner(owner) {}

protected:
    void OnPowerChangeRequest(double percent, bool& veto) override {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        const SKxLaserLine before = GetLine();
        m_owner.OnLinePowerChangeRequest(GetLineNumber(), percent, veto);
        if (!alive || veto) return;
        SetLine(kx::multilaser::Agreed(before, GetLine(), percent));
        if (alive) m_owner.HoldLink();
    }
    void OnStateChangeRequest(bool on, bool& veto) override {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        m_owner.OnLineStateChangeRequest(GetLineNumber(), on, veto);
        if (!alive || veto || (on && !IsOperable(GetLine()))) return;
        SetOn(on);
        if (alive) m_owner.m_inside->ShowSolo();
    }
    void OnViewChanged() override {
        CKxDevUI_MultiLaser& set = m_owner;
        const Alive alive(static_cast<CKxDevUI_Base*>(&set));
        set.SetScale(GetScale());
        set.SetUnit(GetUnit());
        if (alive) set.OnViewChanged();
    }
    void OnFocused() override;

private:
    CKxDevUI_MultiLaser& m_owner;
};

// All rows, as high as they are; what can be seen of them is the area's affair.
class CKxDevUI_MultiLaser::Inside::Plate : public Control {
public:
    explicit Plate(Inside& inside)
        : Control(this, {.name = L"KxDEVGUI_MultiLaserPlate", .size = {0, 0}, .title = {}, .tabsInside = true}),
          m_inside(inside) {}

    void SetCount(std::size_t count) { m_height = kRow * static_cast<long>(count); }
    long Height() const { return kRow * static_cast<long>(m_inside.rows.size()); }
    void MakeAnew() { Remake(); }

    bool Make(const Parts& parts) {
        SetCount(m_inside.rows.size());
        long top = 0;
        for (std::size_t i = 0; i < m_inside.rows.size(); ++i, top += kRow) {
            const int at = static_cast<int>(i);
            const long right = std::max(m_width - kSolo, 0L);
            m_inside.rows[i]->SetId(kFirstRow + at);
            if (!m_inside.rows[i]->Make(parts, {0, top, right - 4, top + kRow}) ||
                !MakeButton(parts, kFirstSolo + at, L"Solo", {right, top + 8, right + kSolo, top + 28},
                            IsOperable(m_inside.rows[i]->GetLine()))) {
                return false;
            }
        }
        const auto isPlain = [](const auto& row) { return !row->GetLine().on && IsOperable(row->GetLine()); };
        if (!std::all_of(m_inside.rows.begin(), m_inside.rows.end(), isPlain)) m_inside.ShowSolo();
        return static_cast<bool>(parts);
    }
    void Command(int id, int code) {
        const auto index = static_cast<std::size_t>(id - kFirstSolo);
        if (id < kFirstSolo || index >= m_inside.rows.size()) return;
        if (code == BN_CLICKED) m_inside.owner.AskSolo(m_inside.rows[index]->GetLineNumber());
        if (code == BN_SETFOCUS) Reveal(index);
    }
    void Reveal(std::size_t index) const;
    Handled Handle(const Message& message);

private:
    Inside& m_inside;
};

// The part of the plate that can be seen.
class CKxDevUI_MultiLaser::Inside::Area : public Control {
public:
    explicit Area(Inside& inside)
        : Control(this, {.name = L"KxDEVGUI_MultiLaserArea", .size = {0, 0}, .title = {}, .tabsInside = true}),
          plate(inside) {}

    PartControl<Plate> plate;

    bool Make(const Parts& parts) {
        const long right = std::max(m_width - kScrollBar, 0L);
        m_bar = nullptr;
        if (!plate.Make(parts, {0, 0, right, plate.Height()}) ||
            !parts.Add(m_bar, L"SCROLLBAR", kBarId, L"", {right, 0, m_width, m_height}, SBS_VERT)) {
            return false;
        }
        KX_FollowColorScheme(m_bar);
        Fit(false);
        return static_cast<bool>(parts);
    }
    // The bar is as long as the area, and hidden while all can be seen. `redraw`: it has been painted before.
    void Fit(bool redraw = true) {
        if (!m_bar) return;
        const RECT all = RectInParent(plate);
        // On the way to another zoom the area is larger already, and the plate not yet.
        SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 0, 0, 0, 0};
        info.nPos = static_cast<int>(CKxGUILayoutManager::Zoomed(m_top));
        info.nMax = std::max(0, static_cast<int>(all.bottom - all.top) - 1);
        info.nPage = static_cast<UINT>(Page());
        SetScrollInfo(Bar(), SB_CTL, &info, redraw);
        const bool isWanted = info.nMax >= Page();
        if (((GetWindowLongW(Bar(), GWL_STYLE) & WS_VISIBLE) != 0) != isWanted)
            ShowWindow(Bar(), isWanted ? SW_SHOWNA : SW_HIDE);
        MovePlate();
    }
    bool ScrollTo(int position) {
        const int before = GetScrollPos(Bar(), SB_CTL);
        SetScrollPos(Bar(), SB_CTL, position, TRUE);
        m_top = CKxGUILayoutManager::Unzoomed(GetScrollPos(Bar(), SB_CTL));
        MovePlate();
        return GetScrollPos(Bar(), SB_CTL) != before;
    }
    bool ScrollBy(long unzoomed) {
        return ScrollTo(GetScrollPos(Bar(), SB_CTL) + static_cast<int>(CKxGUILayoutManager::Zoomed(unzoomed)));
    }
    // A row, in the plate.
    void Reveal(const RECT& row) {
        const int top = GetScrollPos(Bar(), SB_CTL);
        if (row.top < top) ScrollTo(row.top);
        if (row.bottom > top + Page()) ScrollTo(row.bottom - Page());
    }
    Handled Handle(const Message& message) {
        switch (message.id) {
        case WM_DESTROY: m_bar = nullptr; return std::nullopt;
        case WM_SIZE: Fit(); return std::nullopt;
        case WM_KX_ZOOM_CHANGED:
            // It places the plate where it has stood at the last zoom.
            ApplyZoom(message.window);
            Fit();
            return 0;
        case WM_MOUSEWHEEL: ScrollBy(-kRow * KX_TakeWheelNotches(message.window, message.wParam)); return 0;
        case WM_VSCROLL: Scroll(LOWORD(message.wParam), HIWORD(message.wParam)); return 0;
        default: return std::nullopt;
        }
    }

private:
    HWND Bar() const { return m_bar; }
    int Page() const {
        RECT client{};
        GetClientRect(m_hWnd, &client);
        return static_cast<int>(client.bottom);
    }
    void MovePlate() const {
        if (!HWND{plate}) return;
        const int top = -GetScrollPos(Bar(), SB_CTL);
        if (RectInParent(plate).top != top)
            SetWindowPos(plate, nullptr, 0, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    void Scroll(int code, int to) {
        SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 0, 0, 0, 0};
        GetScrollInfo(Bar(), SB_CTL, &info);
        const int page = static_cast<int>(info.nPage);
        switch (code) {
        case SB_LINEUP: ScrollBy(-kRow); break;
        case SB_LINEDOWN: ScrollBy(kRow); break;
        case SB_PAGEUP: ScrollTo(info.nPos - page); break;
        case SB_PAGEDOWN: ScrollTo(info.nPos + page); break;
        case SB_TOP: ScrollTo(0); break;
        case SB_BOTTOM: ScrollTo(info.nMax); break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION: ScrollTo(to); break;
        default: break;
        }
    }

    HWND m_bar = nullptr;
    long m_top = 0;  // how far it was scrolled, in unzoomed pixels
};

CKxDevUI_MultiLaser::Inside::Inside(CKxDevUI_MultiLaser& set)
    : owner(set), area(std::make_unique<PartControl<Area>>(*this)) {
    area->SetId(kAreaId);
    area->plate.SetId(kPlateId);
}

void CKxDevUI_MultiLaser::Inside::Line::OnFocused() {
    const auto index = static_cast<std::size_t>(GetId() - kFirstRow);
    m_owner.m_inside->area->plate.Reveal(index);
}

void CKxDevUI_MultiLaser::Inside::Plate::Reveal(std::size_t index) const {
    m_inside.area->Reveal(RectInParent(*m_inside.rows[index]));
}

Handled CKxDevUI_MultiLaser::Inside::Plate::Handle(const Message& message) {
    const Handled told = DescribePart(message, [&](HWND part, KxAccess& access) {
        const auto index = static_cast<std::size_t>(GetDlgCtrlID(part) - kFirstSolo);
        if (ParentOf(part) != message.window || index >= m_inside.rows.size()) return false;
        access.name = Listed({Activity::TitleOf(*m_inside.rows[index]), access.name});
        return true;
    });
    if (told) return told;
    if (message.id == WM_SIZE && *m_inside.area) m_inside.area->Fit();
    if (message.id != WM_ENABLE) return std::nullopt;
    const Parts parts(message.window, this);
    for (std::size_t i = 0; parts && i < m_inside.rows.size(); ++i)
        Enable(*m_inside.rows[i], message.wParam != FALSE);
    if (parts) m_inside.ShowSolo();
    return message.Default();
}

// The button of a line is down while that is alone on.
void CKxDevUI_MultiLaser::Inside::ShowSolo() const {
    const HWND plate = area->plate;
    const auto on = std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row->GetLine().on; });
    const Parts parts(plate, static_cast<CKxDevUI_Base*>(&owner));
    const KeepsFocus keeps(plate);
    for (std::size_t i = 0; parts && i < rows.size(); ++i) {
        const SKxLaserLine& line = rows[i]->GetLine();
        const HWND button = GetDlgItem(plate, kFirstSolo + static_cast<int>(i));
        ShowDown(button, line.on && on == 1);
        Enable(button, IsWindowEnabled(plate) && IsOperable(line));
    }
}

// ---- The control ---------------------------------------------------------------------------------------------------

CKxDevUI_MultiLaser::CKxDevUI_MultiLaser()
    : CKxDevUI_MultiLaser(this, {.name = L"KxDEVGUI_MultiLaser",
                                 .size = {560, kHead + 5 * kRow},
                                 .title = Translated(L"Lasers"),
                                 .tabsInside = true}) {}

void CKxDevUI_MultiLaser::Begin() {
    m_inside = std::make_shared<Inside>(*this);
    const auto none = [](HWND) { return -1L; };
    const auto nowhere = [](HWND, long) -> HWND { return nullptr; };
    const auto changed = [](HWND window) { InvalidateRect(window, nullptr, TRUE); };
    m_requests = std::make_shared<Activity>(ActivityHost{none, nowhere, [this](HWND) { return m_title; }, changed,
                                                         [this](HWND) { return SignPlace(); }, true});
}

CKxDevUI_MultiLaser::~CKxDevUI_MultiLaser() { Destroy(); }

bool CKxDevUI_MultiLaser::MakeBelow(const Parts& parts, long top) {
    const long right = m_width;
    m_requests->Attach(parts.Window());
    if (!parts.Label(m_label, kTitleId, m_title, {0, top + 3, right - 352, top + 19}) ||
        !MakeButton(parts, kAllOffId, L"All off", {right - 330, top, right - 250, top + 20}) ||
        !MakeButton(parts, kLinkId, L"Link", {right - 244, top, right - 164, top + 20}) ||
        !parts.Label(kFactorId, Translated(L"Factor (%)"), {right - 158, top + 3, right - 64, top + 19}, SS_RIGHT) ||
        !m_field.Make(parts, {right - 60, top, right, top + 20}) ||
        !m_inside->area->Make(parts, {0, top + kHead, right, std::max(m_height, top + kHead)})) {
        return false;
    }
    ShowLink();
    ShowUsable();
    if (parts) m_requests->Show();
    return static_cast<bool>(parts);
}

std::vector<SKxLaserLine> CKxDevUI_MultiLaser::AskLines(const IKxDeviceLaserEngine& engine) {
    std::vector<SKxLaserLine> lines;
    const long count = std::min(engine.GetLineCount(), kMost);
    for (long i = 0; i < count; ++i)
        if (!engine.GetLine(i, lines.emplace_back())) lines.back() = {.usable = false};
    return lines;
}

bool CKxDevUI_MultiLaser::Update(CDMApi_LogDevId engine) {
    return UpdateFrom<IKxDeviceLaserEngine>(this, kSource, engine, AskLines,
                                            [this](const auto& told) { SetLines(told); });
}

void CKxDevUI_MultiLaser::SetLines(const std::vector<SKxLaserLine>& lines) {
    const auto count = std::min(lines.size(), static_cast<std::size_t>(kMost));
    if (count < lines.size()) KX_LOG(kSource, L"%u lines are left out", static_cast<unsigned>(lines.size() - count));
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    m_order = ByWavelength({lines.data(), count});
    // The old ones are theirs until their windows have gone.
    std::vector<std::unique_ptr<Inside::Line>> old;
    auto& rows = m_inside->rows;
    const bool asMany = rows.size() == count;
    if (!asMany) {
        old = std::exchange(rows, {});
        for (std::size_t i = 0; i < count; ++i) {
            rows.push_back(std::make_unique<Inside::Line>(*this));
            rows[i]->SetScale(m_scale), rows[i]->SetUnit(m_unit);
        }
    }
    for (std::size_t i = 0; alive && i < rows.size() && i < count; ++i) {
        rows[i]->SetLineNumber(m_order[i]);
        rows[i]->SetLine(lines[static_cast<std::size_t>(m_order[i])]);
    }
    if (!alive) return;
    if (!asMany) {
        m_inside->area->plate.SetCount(count);
        m_inside->area->plate.MakeAnew();
        if (!alive) return;
        if (*m_inside->area) m_inside->area->Fit();
    }
    m_inside->ShowSolo();
    if (alive) HoldLink();
}

std::vector<SKxLaserLine> CKxDevUI_MultiLaser::GetLines() const {
    std::vector<SKxLaserLine> lines(m_order.size());
    for (const long number : m_order)
        lines[static_cast<std::size_t>(number)] = m_inside->Of(number).GetLine();
    return lines;
}

void CKxDevUI_MultiLaser::SetScale(EKxPowerScale scale) {
    m_scale = scale;
    for (const auto& row : m_inside->rows)
        row->SetScale(scale);
}

void CKxDevUI_MultiLaser::SetUnit(EKxPowerUnit unit) {
    m_unit = unit;
    for (const auto& row : m_inside->rows)
        row->SetUnit(unit);
}

bool CKxDevUI_MultiLaser::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    if (!m_hWnd || !IsWindowEnabled(m_hWnd)) return false;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    for (std::size_t i = 0; alive && i < m_inside->rows.size(); ++i)
        if (m_inside->rows[i]->HandleMouseWheel(wParam, lParam)) return true;
    return alive && m_inside->area->ScrollBy(-kRow * GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA);
}

void CKxDevUI_MultiLaser::OnLinePowerChangeRequest(long, double, bool&) {}
void CKxDevUI_MultiLaser::OnLineStateChangeRequest(long, bool, bool&) {}
void CKxDevUI_MultiLaser::OnSoloRequest(long, bool&) {}
void CKxDevUI_MultiLaser::OnAllOffRequest(bool&) {}
void CKxDevUI_MultiLaser::OnLinkChangeRequest(double, const std::vector<SKxLinkedPower>&, bool&) {}
void CKxDevUI_MultiLaser::OnViewChanged() {}

// ---- The link ------------------------------------------------------------------------------------------------------

// By the number of the line; what cannot be operated takes no part, as if it were dark.
std::vector<kx::multilaser::Linked> CKxDevUI_MultiLaser::Linked() const {
    std::vector<kx::multilaser::Linked> linked;
    const std::vector<SKxLaserLine> lines = GetLines();
    for (std::size_t i = 0; i < lines.size(); ++i)
        linked.push_back({IsOperable(lines[i]) ? m_bases[i] : 0, lines[i].limit});
    return linked;
}

// What has changed by anything but the factor is the new 100 %.
void CKxDevUI_MultiLaser::HoldLink() {
    if (!m_linked || m_asks) return;
    const std::vector<SKxLaserLine> lines = GetLines();
    bool holds = m_bases.size() == lines.size();
    const std::vector<double> powers = holds ? PowersAt(Linked(), m_factor) : std::vector<double>();
    for (std::size_t i = 0; holds && i < lines.size(); ++i)
        holds = !IsOperable(lines[i]) || powers[i] == lines[i].power;
    if (holds) return;
    m_bases.clear();
    for (const SKxLaserLine& line : lines)
        m_bases.push_back(line.power);
    m_factor = 100;
    ShowLink();
}

void CKxDevUI_MultiLaser::SetLinked(bool linked) {
    if (linked == m_linked) return;
    m_linked = linked;
    m_bases.clear();
    m_factor = 100;
    HoldLink();
    ShowLink();
    ShowUsable();
}

void CKxDevUI_MultiLaser::ShowLink() {
    ShowDown(PartAt(kLinkId), m_linked);
    m_field.Show(m_linked ? std::optional(m_factor) : std::nullopt);
}

// Between the title and the buttons.
RECT CKxDevUI_MultiLaser::SignPlace() const {
    const RECT button = RectInParent(PartAt(kAllOffId));
    const long side = Activity::SignSide(), right = button.left - CKxGUILayoutManager::Zoomed(6);
    const long top = (button.top + button.bottom - side) / 2;
    return {right - side, top, right, top + side};
}

void CKxDevUI_MultiLaser::ShowUsable() {
    const HWND window = m_hWnd;
    const bool enabled = IsWindowEnabled(window) != FALSE;
    const Parts parts(window, static_cast<CKxDevUI_Base*>(this));
    const KeepsFocus keeps(window);
    for (HWND part = GetWindow(window, GW_CHILD), next = nullptr; parts && part; part = next) {
        next = GetWindow(part, GW_HWNDNEXT);
        const int id = GetDlgCtrlID(part);
        Enable(part, enabled && (m_linked || (id != m_field.GetId() && id != kFactorId)));
    }
}

// ---- The user ------------------------------------------------------------------------------------------------------

void CKxDevUI_MultiLaser::Switch(const std::vector<SKxLaserSwitch>& steps) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    for (const SKxLaserSwitch& step : steps) {
        const bool known = alive && std::find(m_order.begin(), m_order.end(), step.line) != m_order.end();
        if (known && (!step.on || IsOperable(m_inside->Of(step.line).GetLine())))
            m_inside->Of(step.line).SetOn(step.on);
    }
    if (alive) m_inside->ShowSolo();
}

void CKxDevUI_MultiLaser::Ask(const std::function<void(bool& veto)>& ask, const std::function<void()>& show) {
    const Activity::Question question(*m_requests);
    const kx::ui::Answer answer = AskHost(this, ask);
    if (answer == kx::ui::Answer::Agreed) show();
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, -1);
}

void CKxDevUI_MultiLaser::AskAllOff() {
    std::vector<SKxLaserSwitch> steps;
    for (const long number : m_order)
        steps.push_back({number, false});
    Ask([&](bool& veto) { OnAllOffRequest(veto); }, [&] { Switch(steps); });
}

void CKxDevUI_MultiLaser::AskSolo(long line) {
    const std::vector<SKxLaserSwitch> steps = SoloSteps(GetLines(), line);
    if (!steps.empty()) Ask([&](bool& veto) { OnSoloRequest(line, veto); }, [&] { Switch(steps); });
}

void CKxDevUI_MultiLaser::AskFactor(double factor) {
    HoldLink();
    const auto linked = Linked();
    factor = std::min(factor, MostFactor(linked));
    const std::vector<double> powers = PowersAt(linked, factor);
    const std::vector<SKxLaserLine> lines = GetLines();
    std::vector<SKxLinkedPower> asked;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (IsOperable(lines[i]) && powers[i] != lines[i].power)
            asked.push_back({static_cast<long>(i), powers[i], powers[i] > lines[i].power});
    }
    if (asked.empty()) return;
    const Activity::Question question(*m_requests);
    m_asks = true;
    const kx::ui::Answer answer = AskHost(this, [&](bool& veto) { OnLinkChangeRequest(factor, asked, veto); });
    if (answer == kx::ui::Answer::Gone) return;
    if (answer == kx::ui::Answer::Agreed && m_order.size() == lines.size()) {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        m_factor = factor;
        for (const SKxLinkedPower& each : asked) {
            if (!alive) return;
            auto& row = m_inside->Of(each.line);
            row.SetLine(Agreed(lines[static_cast<std::size_t>(each.line)], row.GetLine(), each.power));
        }
        if (!alive) return;
    }
    m_asks = false;
    HoldLink();
    ShowLink();
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, -1);
}

void CKxDevUI_MultiLaser::Command(int id, int code) {
    if (const auto factor = m_field.TypedBy(id, code)) return AskFactor(*factor);
    if (code != BN_CLICKED) return;
    if (id == kAllOffId) AskAllOff();
    if (id != kLinkId) return;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    SetLinked(!m_linked);
    if (alive) OnViewChanged();
}

Handled CKxDevUI_MultiLaser::Handle(const Message& message) {
    if (message.id != WM_ENABLE) return std::nullopt;
    ShowUsable();
    return message.Default();
}
