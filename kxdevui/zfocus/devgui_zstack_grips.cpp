// The grips beside the Z scale of the Z stack panel: a window of their own, so that no press on one is a press on the
// scale.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

#include <algorithm>
#include <utility>

using namespace kx::ui;
using namespace kx::zstack;

namespace {

constexpr int kGripHeight = 13, kRim = 2;  // unzoomed pixels

int GripHeight() { return static_cast<int>(CKxGUILayoutManager::Zoomed(kGripHeight)); }

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); }

CKxStringW ReasonOf(int status) {
    return Translated(status == eKxZStack_Reversed ? L"An end stays on its side of the other end and of the home."
                      : status == eKxZStack_Planes ? L"So many planes are more than a series can have."
                                                   : L"Value is out of range.");
}

CKxStringW NameOf(Grip grip) {
    return Translated(grip == Grip::Top    ? L"Top: %ls \u00B5m"
                      : grip == Grip::Home ? L"Home: %ls \u00B5m"
                                           : L"Bottom: %ls \u00B5m");
}

bool IsDown(int key) { return GetKeyState(key) < 0; }

// Pointing at the scale; the home is hollow, as its line is dashed.
void DrawGrip(HDC dc, RECT place, Grip grip, bool enabled, bool hot, bool focused) {
    const COLORREF ink = KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    const COLORREF color = enabled ? KX_GetSysColor(COLOR_HIGHLIGHT) : ink;
    if (focused) {
        SetDCBrushColor(dc, ink);
        FrameRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    const int rim = static_cast<int>(CKxGUILayoutManager::Zoomed(kRim));
    InflateRect(&place, -rim, -rim);
    const long right = place.right - 1, bottom = place.bottom - 1, half = (bottom - place.top) / 2;
    const POINT corners[] = {{place.left, place.top},
                             {right - half, place.top},
                             {right, place.top + half},
                             {right - half, bottom},
                             {place.left, bottom}};
    const Selection brush(dc, GetStockObject(DC_BRUSH)), pen(dc, GetStockObject(DC_PEN));
    SetDCBrushColor(dc, grip == Grip::Home ? KX_GetSysColor(COLOR_WINDOW) : color);
    SetDCPenColor(dc, hot || grip == Grip::Home ? ink : color);
    Polygon(dc, corners, 5);
}

}  // namespace

// ---- What becomes of the record ------------------------------------------------------------------------------------

// Lives for one message, and asks after each callback whether the panel does.
class CKxDevUI_ZStack::Grips {
public:
    explicit Grips(CKxDevUI_ZStack& panel)
        : m_panel(panel), m_alive(&panel), m_shown(ShownOf(panel.m_hWnd)), m_window(panel.Item(IDC_ZS_GRIPS)) {}

    LRESULT Paint(const Message& message) const;
    void Tell(KxAccess& access) const;
    bool Set(Grip grip, double z);
    void Press(int row);
    void Move(int row, bool held);
    void Drop();
    void LoseCapture();
    bool Key(WPARAM key);
    bool WantsEscape() const { return m_shown->drag || KeysGoOn(); }
    void Leave() const { m_shown->keys.reset(); }
    std::optional<Grip> At(int row) const { return GripAt(Placed(), row, GripHeight()); }
    void Show();

private:
    explicit operator bool() const { return m_alive && m_panel.m_hWnd && m_panel.m_data; }
    Axis ScaleAxis() const {
        return AxisOf(PlacesIn(m_panel.ScaleArea(), true).stack, m_shown->StretchOf(m_shown->scale));
    }
    std::vector<GripPlace> Placed() const { return PlaceGrips(m_shown->scale, ScaleAxis(), GripHeight()); }
    StackNumbers Read() const;
    int Apply(const Wanted& wanted, const StackNumbers& before) const;
    void AskFor(Grip grip, double z);
    bool KeysGoOn() const { return m_shown->keys && m_shown->keys->after == Read(); }
    void BeginAct() const;
    CKxStringW Tell();
    void GiveBack(const StackNumbers& before);
    void SayWhy();
    void EndDrag();
    bool Choose(int step);
    void MoveBy(double length);

    CKxDevUI_ZStack& m_panel;
    Alive m_alive;
    std::shared_ptr<Shown> m_shown;
    HWND m_window;
};

StackNumbers CKxDevUI_ZStack::Grips::Read() const {
    StackNumbers numbers;
    Guarded([&]() -> Handled {
        const CKxZStackData& data = *m_panel.m_data;
        data.GetType(&numbers.type);
        numbers.top = m_panel.Known(&CKxZStackData::GetTop);
        numbers.bottom = m_panel.Known(&CKxZStackData::GetBottom);
        numbers.home = m_panel.Known(&CKxZStackData::GetHome);
        numbers.rangeMin = m_panel.Known(&CKxZStackData::GetZRangeMin);
        numbers.rangeMax = m_panel.Known(&CKxZStackData::GetZRangeMax);
        numbers.step = m_panel.Known(&CKxZStackData::GetStep);
        unsigned count = 0;
        if (data.GetCount(&count) == eKxZStack_Ok) numbers.count = count;
        return 0;
    });
    return numbers;
}

// An end that was taken before the other was refused goes back.
int CKxDevUI_ZStack::Grips::Apply(const Wanted& wanted, const StackNumbers& before) const {
    CKxZStackData& data = *m_panel.m_data;
    int status = wanted.refusal;
    if (status == eKxZStack_Ok && wanted.home) status = Ask([&] { return data.SetHome(*wanted.home); });
    if (status == eKxZStack_Ok && wanted.bottom) status = Ask([&] { return data.SetBottom(*wanted.bottom, false); });
    if (status == eKxZStack_Ok && wanted.top) {
        status = Ask([&] { return data.SetTop(*wanted.top, false); });
        if (status != eKxZStack_Ok && wanted.bottom && before.bottom)
            Ask([&] { return data.SetBottom(*before.bottom, false); });
    }
    return status;
}

void CKxDevUI_ZStack::Grips::AskFor(Grip grip, double z) {
    const StackNumbers numbers = Read();
    m_shown->refusal.reset();
    if (numbers.Of(grip) == z) return;
    const int status = Apply(WantedFor(numbers, grip, z), numbers);
    if (status != eKxZStack_Ok) {
        m_shown->refusal = ReasonOf(status);
        return;
    }
    const CKxStringW reason = Tell();
    // A host that refuses has put its record back.
    if (*this && (!reason.IsEmpty() || Read().Of(grip) == numbers.Of(grip))) m_shown->refusal = reason;
}

// Of no other panel either: a host may keep the acts of all in one list.
void CKxDevUI_ZStack::Grips::BeginAct() const {
    static unsigned last = 0;
    m_shown->act = ++last;
}

CKxStringW CKxDevUI_ZStack::Grips::Tell() {
    const Activity::Question question(*m_panel.m_requests);
    m_shown->tells = true;
    Guarded([&]() -> Handled { return m_panel.OnZStackChanged(RefreshAll), 0; });
    m_shown->tells = false;
    return question.Reason();
}

// The number of planes goes with the ends, but for one that somebody had asked for.
void CKxDevUI_ZStack::Grips::GiveBack(const StackNumbers& before) {
    CKxZStackData& data = *m_panel.m_data;
    bool changed = false;
    const auto giveBack = [&](Grip grip, auto set) {
        const Position z = before.Of(grip);
        if (!z || Read().Of(grip) == z) return;
        Ask([&] { return set(*z); });
        changed = true;
    };
    giveBack(Grip::Home, [&](double z) { return data.SetHome(z); });
    giveBack(Grip::Bottom, [&](double z) { return data.SetBottom(z, false); });
    giveBack(Grip::Top, [&](double z) { return data.SetTop(z, false); });
    // Below where the top was, a bottom had to wait for it.
    giveBack(Grip::Bottom, [&](double z) { return data.SetBottom(z, false); });
    if (changed && before.count && Read().count != before.count) Ask([&] { return data.SetCount(*before.count); });
    if (changed) Tell();
}

void CKxDevUI_ZStack::Grips::SayWhy() {
    if (const auto why = std::exchange(m_shown->refusal, std::nullopt))
        m_panel.m_requests->Tell({EKxActivity::Refused, -1, *why});
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

// The focus comes first: a field that it leaves may change the series, or take it back.
void CKxDevUI_ZStack::Grips::Press(int row) {
    const auto grip = At(row);
    if (!grip || m_shown->drag) return;
    SetFocus(m_window);
    if (!*this || GetFocus() != m_window) return;
    m_shown->keys.reset();
    const StackNumbers numbers = Read();
    const Position from = numbers.Of(*grip);
    if (!from) return;
    BeginAct();
    m_shown->grip = *grip;
    m_shown->refusal.reset();
    // The scale stands still under the pointer.
    m_shown->view = m_shown->StretchOf(m_shown->scale);
    m_shown->drag = Drag{*grip, *from, row, row, numbers};
    SetCapture(m_window);
    InvalidateRect(m_window, nullptr, FALSE);
}

void CKxDevUI_ZStack::Grips::Move(int row, bool held) {
    if (!m_shown->drag) {
        const auto grip = At(row);
        m_panel.ShowHover(grip ? PositionOf(m_shown->scale, *grip) : std::nullopt);
        return;
    }
    // The release went to another window.
    if (!held) return Drop();
    Drag& drag = *m_shown->drag;
    if (drag.row == row) return;
    drag.row = row;
    const Grip grip = drag.grip;
    AskFor(grip, DraggedTo(drag.from, drag.pressed, ScaleAxis(), row));
    if (*this && m_shown->drag) m_panel.ShowHover(PositionOf(m_shown->scale, grip));
}

void CKxDevUI_ZStack::Grips::Drop() {
    if (!m_shown->drag) return;
    EndDrag();
    if (*this) SayWhy();
}

// What is shown follows the stack again, unless the user has magnified it.
void CKxDevUI_ZStack::Grips::EndDrag() {
    m_shown->drag.reset();
    if (m_shown->notches == 0) m_shown->view.reset();
    if (GetCapture() == m_window) ReleaseCapture();
    if (!*this) return;
    m_panel.RepaintScale();
    Show();
}

void CKxDevUI_ZStack::Grips::LoseCapture() {
    if (!m_shown->drag) return;
    const StackNumbers before = m_shown->drag->before;
    EndDrag();
    if (!*this) return;
    GiveBack(before);
    // What was refused is not wanted any more.
    m_shown->refusal.reset();
}

// ---- Keys ----------------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::Grips::Key(WPARAM key) {
    if (key == VK_ESCAPE) {
        if (m_shown->drag) return LoseCapture(), true;
        if (!KeysGoOn()) return false;
        GiveBack(std::exchange(m_shown->keys, std::nullopt)->before);
        return true;
    }
    if (m_shown->drag) return false;
    const GripStep step = IsDown(VK_CONTROL) ? GripStep::Fine : GripStep::Plane;
    const auto length = [this](GripStep which) { return LengthOf(which, Read().step, ScaleAxis()); };
    switch (key) {
    case VK_LEFT: return Choose(-1);
    case VK_RIGHT: return Choose(+1);
    case VK_UP: return MoveBy(length(step)), true;
    case VK_DOWN: return MoveBy(-length(step)), true;
    case VK_PRIOR: return MoveBy(length(GripStep::Planes)), true;
    case VK_NEXT: return MoveBy(-length(GripStep::Planes)), true;
    default: return false;
    }
}

bool CKxDevUI_ZStack::Grips::Choose(int step) {
    const auto places = Placed();
    const auto current = std::find_if(places.begin(), places.end(),
                                      [this](const GripPlace& each) { return each.grip == m_shown->grip; });
    const auto to = (current - places.begin()) + step;
    KX_ShowFocusFromNowOn(m_window);
    if (!*this || to < 0 || to >= static_cast<std::ptrdiff_t>(places.size())) return true;
    m_shown->grip = places[static_cast<std::size_t>(to)].grip;
    m_shown->keys.reset();
    Show();
    return true;
}

void CKxDevUI_ZStack::Grips::MoveBy(double length) {
    const StackNumbers numbers = Read();
    const Position z = numbers.Of(m_shown->grip);
    KX_ShowFocusFromNowOn(m_window);
    if (!*this || !z) return;
    // A series that the host has made another meanwhile, as an undo does, is where the next act begins.
    if (!KeysGoOn()) {
        BeginAct();
        m_shown->keys = Keys{numbers, numbers};
    }
    AskFor(m_shown->grip, *z + length);
    if (!*this) return;
    if (m_shown->keys) m_shown->keys->after = Read();
    SayWhy();
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

LRESULT CKxDevUI_ZStack::Grips::Paint(const Message& message) const {
    return kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [this](HDC dc, const RECT&) {
        const Places places = PlacesIn(m_panel.ScaleArea(), true);
        const bool enabled = IsWindowEnabled(m_window) != FALSE;
        const bool focused = GetFocus() == m_window && KX_ShowsFocus(m_window);
        POINT origin{};
        OffsetViewportOrgEx(dc, static_cast<int>(-places.grips.left), static_cast<int>(-places.grips.top), &origin);
        if (m_shown->IsMagnified(m_shown->scale))
            DrawFunnel(dc, places, m_shown->scale, m_shown->StretchOf(m_shown->scale));
        const int height = GripHeight();
        const long right = places.grips.right;
        for (const auto& [grip, row, top] : Placed()) {
            const bool hot = m_shown->hover && m_shown->hover == PositionOf(m_shown->scale, grip);
            // To the line that it belongs to.
            if (const int middle = top + height / 2; middle != row) {
                const Selection pen(dc, GetStockObject(DC_PEN));
                SetDCPenColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
                MoveToEx(dc, right - 3, middle, nullptr);
                LineTo(dc, right, row);
            }
            DrawGrip(dc, {places.grips.left, top, right - 1, top + height}, grip, enabled, hot,
                     focused && grip == m_shown->grip);
        }
        SetViewportOrgEx(dc, origin.x, origin.y, nullptr);
    });
}

// A slider each, by the name of the button of its line, and always all of them: a client that walks through them finds
// each under its number while they pass each other, come and go.
void CKxDevUI_ZStack::Grips::Tell(KxAccess& access) const {
    static constexpr Grip order[] = {Grip::Top, Grip::Home, Grip::Bottom};
    access.role = ROLE_SYSTEM_GROUPING;
    access.parts = 3;
    access.part = [panel = &m_panel](long number) {
        const Grips grips(*panel);
        const Grip grip = order[number - 1];
        KxAccess part;
        part.role = ROLE_SYSTEM_SLIDER;
        part.name = Listed({AsRead(TextOf(panel->Item(ButtonOf(grip)))), UnitInWords(L"\u00B5m")});
        part.state = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE;
        const Places places = PlacesIn(panel->ScaleArea(), true);
        for (const GripPlace& each : grips.Placed()) {
            if (each.grip != grip) continue;
            const int top = each.top - static_cast<int>(places.grips.top);
            part.place = {0, top, places.grips.right - places.grips.left, top + GripHeight()};
            part.state &= ~STATE_SYSTEM_INVISIBLE;
        }
        const Position z = PositionOf(grips.m_shown->scale, grip);
        if (!z) return part;
        part.value = KX_FormatNumber(L"%0.2f", *z);
        if (grips.m_shown->grip == grip && GetFocus() == grips.m_window) part.state |= STATE_SYSTEM_FOCUSED;
        part.setValue = [panel, grip](const CKxStringW& text) {
            double wanted = 0;
            return KX_StringToDouble(text, wanted) && Grips(*panel).Set(grip, wanted);
        };
        return part;
    };
}

// As by keys, but that there is nothing to go back to.
bool CKxDevUI_ZStack::Grips::Set(Grip grip, double z) {
    if (m_shown->drag) return false;
    m_shown->keys.reset();
    BeginAct();
    AskFor(grip, z);
    const bool taken = !m_shown->refusal;
    if (*this) SayWhy();
    return taken;
}

// Another stack: what is not set has no grip, and a grip that has gone cannot be dragged on.
void CKxDevUI_ZStack::Grips::Show() {
    const auto places = Placed();
    const auto isShown = [&](Grip grip) {
        return std::any_of(places.begin(), places.end(), [grip](const GripPlace& each) { return each.grip == grip; });
    };
    if (m_shown->drag && !isShown(m_shown->drag->grip)) return EndDrag();
    if (!places.empty() && !isShown(m_shown->grip)) m_shown->grip = places.front().grip;
    m_panel.EnableItem(IDC_ZS_GRIPS, !places.empty());
    if (!*this) return;
    // It is what the grip is called to those who cannot see it.
    const Position z = PositionOf(m_shown->scale, m_shown->grip);
    CKxStringW name;
    if (z) name.Format(100, NameOf(m_shown->grip), KX_FormatNumber(L"%0.2f", *z).c_str());
    m_panel.ShowText(IDC_ZS_GRIPS, name);
    InvalidateRect(m_window, nullptr, FALSE);
}

// ---- The window ----------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ZStack::GripsWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return kx::ui::Entry<CKxDevUI_ZStack, ByUserData<CKxDevUI_ZStack>, WM_NCCREATE, Unbound::Default,
                         &CKxDevUI_ZStack::HandleGrips>({window, message, wParam, lParam});
}

Handled CKxDevUI_ZStack::HandleGrips(const Message& message) {
    // On its way out the panel has lost its window before its children go.
    if (!m_hWnd || !m_data || Item(IDC_ZS_GRIPS) != message.window) return std::nullopt;
    Grips grips(*this);
    const int row = static_cast<short>(HIWORD(message.lParam)) + static_cast<int>(ScaleArea().top);
    if (message.id == WM_MOUSEMOVE || message.id == WM_MOUSELEAVE) TrackHover(message);
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: return grips.Paint(message);
    case WM_ERASEBKGND: return Erase(message);
    case WM_KX_DESCRIBE: return Describe(message, [&](KxAccess& access) { grips.Tell(access); });
    case WM_LBUTTONDOWN: return grips.Press(row), 0;
    case WM_MOUSEMOVE: return grips.Move(row, (message.wParam & MK_LBUTTON) != 0), 0;
    case WM_LBUTTONUP: return grips.Drop(), 0;
    case WM_CAPTURECHANGED: return grips.LoseCapture(), 0;
    case WM_MOUSELEAVE: return ShowHover({}), 0;
    case WM_SETCURSOR: {
        POINT point{};
        GetCursorPos(&point);
        ScreenToClient(m_hWnd, &point);
        if (LOWORD(message.lParam) != HTCLIENT || !grips.At(static_cast<int>(point.y))) return std::nullopt;
        SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
        return TRUE;
    }
    case WM_GETDLGCODE: {
        const auto* asked = reinterpret_cast<const MSG*>(message.lParam);
        const bool escape = asked && asked->wParam == VK_ESCAPE && grips.WantsEscape();
        return DLGC_WANTARROWS | (escape ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        // Without the focus nothing shows which grip they would move.
        if (GetFocus() != message.window) return std::nullopt;
        if (message.wParam == VK_TAB) return Focus(message.window, IsDown(VK_SHIFT)), 0;
        return grips.Key(message.wParam) ? Handled(0) : std::nullopt;
    case WM_KILLFOCUS: grips.Leave(); [[fallthrough]];
    case WM_SETFOCUS:
    case WM_ENABLE:
    case WM_UPDATEUISTATE: InvalidateRect(message.window, nullptr, FALSE); return std::nullopt;
    default: return std::nullopt;
    }
}

void CKxDevUI_ZStack::EnableGrips(bool enable) {
    if (m_grips == enable) return;
    m_grips = enable;
    if (!m_hWnd) return;
    if (enable) return MakeGrips();
    const auto shown = ShownOf(m_hWnd);
    shown->drag.reset();
    shown->view.reset();
    shown->notches = 0;
    shown->keys.reset();
    const HWND window = std::exchange(m_controls[std::size_t{IDC_ZS_GRIPS - kFirstControl}], nullptr);
    const Alive alive(this);
    if (GetFocus() == window) SetFocus(m_hWnd);
    if (alive && m_hWnd) ShowHover({});
    if (alive && m_hWnd) InvalidateRect(m_hWnd, nullptr, FALSE);
    DestroyWindow(window);
}

unsigned CKxDevUI_ZStack::GetGripAct() const {
    if (!m_hWnd) return 0;
    const auto shown = ShownOf(m_hWnd);
    return shown->tells ? shown->act : 0;
}

void CKxDevUI_ZStack::MakeGrips() {
    static ATOM atom = 0;
    EnsureClass(atom, {.name = L"CKxDevUI_ZStackGrips", .object = L"CKxDevUI_ZStack", .procedure = GripsWndProc});
    const Alive alive(this);
    const HWND panel = m_hWnd;
    const RECT place = PlacesIn(ScaleArea(), true).grips;
    const HWND window =
        atom ? CreateWindowExW(0, MAKEINTATOM(atom), L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_DISABLED, place.left,
                               place.top, place.right - place.left, place.bottom - place.top, panel,
                               reinterpret_cast<HMENU>(IDC_ZS_GRIPS), ModuleOf(GripsWndProc), this)
             : nullptr;
    // The parents are told of every child.
    if (!alive || m_hWnd != panel || !window) return;
    m_controls[std::size_t{IDC_ZS_GRIPS - kFirstControl}] = window;
    KX_CreateToolTipWindow(window, Translated(L"Drag an end or the home of the series, or move it by the arrow keys. "
                                              L"The wheel magnifies the scale."));
    // While it is made, the panel is hidden, and all of it is drawn when it is shown.
    if (IsWindowVisible(panel)) InvalidateRect(panel, nullptr, FALSE);
    ShowGrips();
    // Otherwise a host that places the panel by the zoom would have it placed twice.
    if (CKxGUILayoutManager::GetGuiZoom() != 1.0) CKxGUILayoutManager::RememberWindowDimsForGuiZoom(panel);
}

void CKxDevUI_ZStack::PlaceGripsWindow() {
    const HWND window = Item(IDC_ZS_GRIPS);
    if (!window) return;
    const RECT place = PlacesIn(ScaleArea(), true).grips;
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    InvalidateRect(window, nullptr, FALSE);
}

void CKxDevUI_ZStack::ShowGrips() {
    if (Item(IDC_ZS_GRIPS)) Grips(*this).Show();
}
