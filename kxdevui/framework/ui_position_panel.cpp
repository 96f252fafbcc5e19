#include <kxdevui/framework/ui_position_panel.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_groupbox.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"devgui_positions";

// The side of the setup button's image, and the room between the last row of buttons and the line of the frame.
constexpr double kSetupImage = 16;
constexpr double kFrameMargin = 7;

// The room before a sign in the caption.
constexpr long kSignGap = 4;

bool IsOwnerDrawn(HWND button) { return (GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK) == BS_OWNERDRAW; }

// Messages at which a stock button paints without waiting for WM_PAINT.
bool PaintsAtOnce(UINT message) {
    return message == BM_SETSTATE || message == BM_SETCHECK || message == WM_SETFOCUS || message == WM_KILLFOCUS ||
           message == WM_ENABLE || message == WM_SETTEXT;
}

// The sign beside a text that ends at `x`, in the middle of a line of that height.
RECT SignAt(long x, long top, long height) {
    const long side = Activity::SignSide(), left = x + CKxGUILayoutManager::Zoomed(kSignGap);
    const long y = top + (height - side) / 2;
    return {left, y, left + side, y + side};
}

long SignRoom() { return Activity::SignSide() + CKxGUILayoutManager::Zoomed(2 * kSignGap); }

}  // namespace

PositionPanel::PositionPanel(const PanelSpec& spec, ATOM& atom, void* object, const CKxStringW& title)
    : m_spec(spec), m_atom(atom), m_object(object), m_title(title),
      m_activity({[this](HWND) { return m_position; }, [this](HWND, long position) { return ButtonAt(position); },
                  [this](HWND) { return m_title; }, [this](HWND) { ShowRequests(); }}) {}

// ---- The window ----------------------------------------------------------------------------------------------------

HWND PositionPanel::Open(const Creation& creation, HWND parent, POINT at, SIZE size) {
    const HWND window = creation.Window(
        m_object, m_atom,
        {.name = m_spec.name, .object = m_spec.object, .procedure = m_spec.window, .style = 0, .mark = Mark::Tag},
        parent, at, size);
    if (!window || m_window != window) return nullptr;
    SetTabStop(m_tabStop);
    return window;
}

void PositionPanel::Close() {
    const HWND window = m_window;
    if (!window) return;
    const HWND parent = GetAncestor(window, GA_PARENT);
    const RECT place = RectInParent(window);
    const Closing closing(window);
    SetWindowLongPtrW(window, GWL_STYLE, GetWindowLongPtrW(window, GWL_STYLE) & ~LONG_PTR{WS_VISIBLE});
    DestroyWindow(window);
    // A window without the style leaves what it has painted behind.
    if (parent) InvalidateRect(parent, &place, TRUE);
}

// ---- The parts -----------------------------------------------------------------------------------------------------

void PositionPanel::RemoveParts() {
    const HWND focus = GetFocus();
    m_lostFocus = focus && GetAncestor(focus, GA_PARENT) == m_window ? GetDlgCtrlID(focus) : 0;
    std::vector<HWND> children;
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    m_frame = m_titleWindow = m_setup = nullptr;
    m_buttons.clear();
    m_tips.clear();
    m_setupHovered = false;
    const Closing closing(m_window);
    for (const HWND child : children) {
        KX_DeleteToolTip(child);
        DestroySubclassed(child);
    }
}

HWND PositionPanel::AddChild(const wchar_t* className, int id, const wchar_t* text, const RECT& place,
                             DWORD style) const {
    const Parts parts = Children();
    const HWND child = CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                                       place.right - place.left, place.bottom - place.top, m_window,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    return parts ? child : nullptr;
}

void PositionPanel::AddFrame(SIZE size, bool oversize) {
    const RECT place = oversize ? RECT{-2, 0, size.cx + 2, size.cy + 4} : RECT{0, 0, size.cx, size.cy};
    const HWND frame =
        AddChild(L"BUTTON", kFrameId, m_title, place, BS_GROUPBOX | (m_titlesEnabled ? 0u : WS_DISABLED));
    if (!frame) return;
    m_frame = frame;
    KX_MarkWindowToSkipPaint(m_frame);
    Subclass(m_frame, m_spec.frame, m_object);
}

void PositionPanel::AddTitle(const RECT& place, bool left) {
    const HWND title = AddChild(L"STATIC", kTitleId, m_title, place,
                                SS_NOPREFIX | (m_titlesEnabled ? 0u : WS_DISABLED) | (left ? SS_LEFT : SS_CENTER));
    if (!title) return;
    m_titleWindow = title;
    Subclass(m_titleWindow, m_spec.frame, m_object);
}

HWND PositionPanel::AddButton(int id, const wchar_t* text, const RECT& place, DWORD style) {
    const Parts parts = Children();
    const HWND button = AddChild(L"BUTTON", id, text, place, style);
    // One that could not be made keeps its place all the same.
    if (!parts) return nullptr;
    // First, so that a ring is drawn over what the scheme draws.
    if (!IsOwnerDrawn(button)) KX_FollowColorScheme(button);
    Subclass(button, m_spec.button, m_object);
    m_buttons.insert(m_reversed ? m_buttons.begin() : m_buttons.end(), button);
    return button;
}

void PositionPanel::AddSetup(const RECT& place, bool enabled) {
    const HWND setup =
        AddChild(L"BUTTON", kSetupId, L"...", place, enabled ? BS_OWNERDRAW : BS_OWNERDRAW | WS_DISABLED);
    if (!setup) return;
    m_setup = setup;
    Subclass(m_setup, m_spec.button, m_object);
}

void PositionPanel::SetButtonFonts(HFONT font) const {
    for (const HWND button : m_buttons)
        SetFont(button, font);
    SetFont(m_setup, font);
}

void PositionPanel::Finish(SIZE size, long frameHeight, bool boldTitles) {
    if (frameHeight > 0 && m_frame) {
        const RECT frame = RectInParent(m_frame);
        SetWindowPos(m_frame, nullptr, 0, 0, frame.right - frame.left, frameHeight,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    SetWindowPos(m_window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    KX_MarkWindowToSkipPaint(m_window);
    RegisterZoom(m_window);
    // Last of all: a window that clips its children while they come works out anew with each what is to be seen of it.
    SetWindowLongW(m_window, GWL_STYLE, GetWindowLongW(m_window, GWL_STYLE) | static_cast<LONG>(WS_CLIPCHILDREN));
    const HFONT font = boldTitles ? KX_GetDefaultGuiFontBold() : KX_GetDefaultGuiFont();
    SetFont(m_frame, font);
    SetFont(m_titleWindow, font);
    m_remark.Empty();
    m_activity.Show();
    if (const int id = std::exchange(m_lostFocus, 0)) {
        const HWND successor = GetDlgItem(m_window, id);
        SetFocus(successor && IsWindowEnabled(successor) ? successor : m_window);
    }
}

HWND PositionPanel::ButtonAt(long position) const noexcept {
    return position >= 0 && position < static_cast<long>(m_buttons.size())
               ? m_buttons[static_cast<std::size_t>(position)]
               : nullptr;
}

// ---- Working it ----------------------------------------------------------------------------------------------------

void PositionPanel::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (m_titleWindow) SetWindowTextW(m_titleWindow, m_title);
    if (!m_frame) return;
    SetWindowTextW(m_frame, m_title);
    InvalidateRect(m_frame, nullptr, FALSE);
}

void PositionPanel::SetTabStop(bool stop) {
    m_tabStop = stop;
    SetStyleBit(m_window, GWL_STYLE, WS_TABSTOP, stop);
}

void PositionPanel::RedrawButtons() const {
    // While it is filled, mostly.
    if (!IsWindowVisible(m_window)) return;
    // Null would mean all windows there are.
    for (const HWND button : m_buttons) {
        if (button) InvalidateRect(button, nullptr, FALSE);
    }
}

void PositionPanel::EnableTitles(bool enable) {
    m_titlesEnabled = enable;
    if (m_frame) {
        Enable(m_frame, enable);
        InvalidateRect(m_frame, nullptr, FALSE);
    }
    Enable(m_titleWindow, enable);
}

void PositionPanel::SetPosition(long position) noexcept {
    const long before = std::exchange(m_position, position);
    if (before == position) return;
    for (const long each : {before, position})
        KX_TellAccess(ButtonAt(each), EVENT_OBJECT_STATECHANGE);
}

HWND PositionPanel::FocusButton() const {
    const HWND current = ButtonAt(m_position);
    if (current && IsWindowEnabled(current)) return current;
    for (const HWND button : m_buttons) {
        if (IsWindowEnabled(button)) return button;
    }
    return m_setup && IsWindowEnabled(m_setup) ? m_setup : nullptr;
}

void PositionPanel::KeepFocusUsable(HWND before) const {
    if (std::find(m_buttons.begin(), m_buttons.end(), before) != m_buttons.end() && !IsWindowEnabled(before))
        SetFocus(m_window);
}

void PositionPanel::MoveFocus(HWND from, int step) const {
    // The setup button comes after the last position.
    std::vector<HWND> ring = m_buttons;
    if (m_setup) ring.push_back(m_setup);
    bool usable[kMaxPositions + 1] = {};
    const std::size_t count = std::min(ring.size(), std::size(usable));
    for (std::size_t i = 0; i < count; ++i)
        usable[i] = IsWindowEnabled(ring[i]) != FALSE;
    const auto found = std::find(ring.begin(), ring.end(), from);
    if (found == ring.end()) return;
    const int next = NextButton(static_cast<int>(found - ring.begin()), m_reversed ? -step : step, {usable, count});
    SetFocus(ring[static_cast<std::size_t>(next)]);
}

// ---- The life of a request -----------------------------------------------------------------------------------------

CKxStringW PositionPanel::NameFor(long position, const CKxStringW& tip) {
    const std::wstring& text = tip.str();
    return text.empty() ? CKxStringW(std::to_wstring(position + 1))
                        : AsButtonText(CKxStringW(text.substr(0, text.find(L'\r'))));
}

void PositionPanel::SetTip(long position, const CKxStringW& tip) {
    const auto at = static_cast<std::size_t>(position);
    const HWND button = ButtonAt(position);
    if (!button) return;
    const CKxStringW name = NameFor(position, tip);
    // Wine's buttons draw at once what they are called.
    if (IsOwnerDrawn(button) && !(TextOf(button) == name)) SetWindowTextW(button, name);
    m_tips.resize(std::max(m_tips.size(), m_buttons.size()));
    m_tips[at] = tip;
    ShowTip(at);
}

void PositionPanel::ShowTip(std::size_t position) const {
    if (!m_buttons[position]) return;
    CKxStringW tip = position < m_tips.size() ? m_tips[position] : CKxStringW();
    if (!tip.IsEmpty() && !m_remark.IsEmpty()) tip += L"\r\n";
    KX_UpdateToolTipWindow(m_buttons[position], tip + m_remark);
}

void PositionPanel::ShowRequests() {
    if (m_requestsChanged) m_requestsChanged();
    RedrawButtons();
    // The sign in the caption, and the edge.
    for (const HWND caption : {m_frame, m_titleWindow}) {
        if (caption) InvalidateRect(caption, nullptr, FALSE);
    }
    if (!m_frame) InvalidateRect(m_window, nullptr, TRUE);
    CKxStringW remark = m_activity.Remark();
    if (remark == m_remark) return;
    m_remark = std::move(remark);
    for (std::size_t i = 0; i < m_buttons.size(); ++i)
        ShowTip(i);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

Handled PositionPanel::HandleWindow(const Message& message) {
    switch (message.id) {
    case WM_NCCREATE:
        m_window = message.window;
        m_activity.Attach(m_window);
        return std::nullopt;
    case WM_NCDESTROY:
        m_activity.Detach(message.window);
        m_window = m_frame = m_titleWindow = m_setup = nullptr;
        m_buttons.clear();
        m_setupHovered = false;
        return std::nullopt;
    case WM_ERASEBKGND:
    case WM_PRINTCLIENT: FillFace(reinterpret_cast<HDC>(message.wParam)); return 1;
    case WM_SETFOCUS:
        if (const HWND button = FocusButton()) SetFocus(button);
        return 0;
    case WM_CTLCOLORSTATIC:
        return AnswerTextColor(message,
                               IsEnabled() && IsWindowEnabled(reinterpret_cast<HWND>(message.lParam)) != FALSE);
    case WM_ENABLE:
        Enable(m_titleWindow, message.wParam != 0);
        RedrawWindow(message.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        return std::nullopt;
    case WM_KX_ZOOM_CHANGED: ApplyZoom(message.window); return std::nullopt;
    case WM_KX_DESCRIBE:
        return Describe(message, [this](KxAccess& access) {
            access.role = ROLE_SYSTEM_GROUPING;
            access.name = m_title;
            access.description = m_activity.Remark();
        });
    default: return std::nullopt;
    }
}

Handled PositionPanel::HandleButton(const Message& message, int columns) {
    const HWND button = message.window;
    if (!IsOwnerDrawn(button)) {
        if (const Handled painted = HandleStockButton(message)) return painted;
    }
    switch (message.id) {
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
        // The platform's own buttons follow the mouse by themselves, and must not find it followed.
        if (!IsOwnerDrawn(button) || !TrackHover(message)) return std::nullopt;
        if (button == m_setup) m_setupHovered = message.id == WM_MOUSEMOVE;
        RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return std::nullopt;
    case WM_LBUTTONDBLCLK:
        // By itself an automatic radio button takes it for a click, and no other button does.
        return m_everyPress ? CallPrevious({button, WM_LBUTTONDOWN, message.wParam, message.lParam}) : LRESULT{0};
    case WM_KX_DESCRIBE: return Describe(message, [&](KxAccess& access) { TellButton(button, access); });
    default: return HandleRowKeys(message, columns, [&](int step) { MoveFocus(button, step); });
    }
}

void PositionPanel::TellButton(HWND button, KxAccess& access) const {
    const auto at = static_cast<std::size_t>(std::find(m_buttons.begin(), m_buttons.end(), button) - m_buttons.begin());
    access.action = KX_GetTranslation(L"Press", kSource);
    access.act = [button] {
        kx::ui::Notify(ParentOf(button), GetDlgCtrlID(button), BN_CLICKED, reinterpret_cast<LPARAM>(button));
    };
    if (at == m_buttons.size()) {
        access.role = ROLE_SYSTEM_PUSHBUTTON;
        access.name = KX_GetTranslation(L"Setup", kSource);
        return;
    }
    const PlaceLook look = m_activity.LookOf(static_cast<long>(at));
    access.role = ROLE_SYSTEM_RADIOBUTTON;
    access.state = look == PlaceLook::Current ? STATE_SYSTEM_CHECKED : 0;
    // The picture's words, and the place, as several may have the same.
    const CKxStringW text = AsRead(TextOf(button));
    CKxStringW position;
    position.Format(64, KX_GetTranslation(L"Position %ld", kSource), static_cast<long>(at) + 1);
    access.name = text == std::to_wstring(at + 1) ? position : Listed({text, position});
    // Of those that it leads past nobody wants to hear it.
    access.description = look == PlaceLook::Target ? Activity::StateOf(m_window) : m_activity.Remark();
}

// Over the platform's picture, which it draws at once here and there.
Handled PositionPanel::HandleStockButton(const Message& message) const {
    const HWND button = message.window;
    if (message.id != WM_PAINT && message.id != WM_PRINTCLIENT && !PaintsAtOnce(message.id)) return std::nullopt;
    const long position = static_cast<long>(std::find(m_buttons.begin(), m_buttons.end(), button) - m_buttons.begin());
    const PlaceLook look = m_activity.LookOf(position);
    if (look != PlaceLook::Hollow && look != PlaceLook::Target) return std::nullopt;
    RECT client{};
    GetClientRect(button, &client);
    if (PaintsAtOnce(message.id)) {
        // Whoever hears of it may end the panel.
        const LRESULT result = CallPrevious(message);
        InvalidateRect(button, nullptr, FALSE);
        return result;
    }
    const auto given = reinterpret_cast<HDC>(message.wParam);
    // All of it, or what stays would be drawn over twice.
    if (!given) InvalidateRect(button, nullptr, FALSE);
    const LRESULT result = CallPrevious(message);
    const WindowDC own(given ? nullptr : button);
    m_activity.DrawPlace(given ? given : HDC{own}, client, position, IsEnabled() && IsWindowEnabled(button));
    return result;
}

Handled PositionPanel::HandleFrame(const Message& message) {
    if (message.window == m_titleWindow) {
        const bool paints = message.id == WM_PAINT || message.id == WM_PRINTCLIENT;
        return paints && m_activity.HasSign() ? Handled(PaintTitle(message)) : std::nullopt;
    }
    switch (message.id) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT: return PaintFrame(message);
    default: return std::nullopt;
    }
}

// ---- Painting ------------------------------------------------------------------------------------------------------

long PositionPanel::TitleHeight(bool bold) {
    const MemoryDC dc(CreateCompatibleDC(nullptr));
    const Selection font(dc.get(), bold ? KX_GetDefaultGuiFontBoldZoom(1) : KX_GetDefaultGuiFontZoom(1));
    return KX_GroupBoxTitleHeight(dc.get());
}

LRESULT PositionPanel::PaintFrame(const Message& message) const {
    const HWND frame = message.window;
    const RECT own = RectInParent(frame);
    const auto draw = [&](HDC dc, const RECT& area) {
        const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(frame, WM_GETFONT, 0, 0)));
        const bool enabled = IsWindowEnabled(frame) && IsEnabled();
        SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
        SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
        SetBkMode(dc, OPAQUE);
        SKxGroupBox box{area, L"", CKxGUILayoutManager::Zoomed(8)};
        box.frame.top = KX_GroupBoxTitleHeight(dc) / 2;
        if (!m_buttons.empty()) {
            // The title stands over the first button, the line closes under the last.
            RECT first = RectInParent(m_buttons.front()), last = RectInParent(m_buttons.back());
            if (m_reversed) std::swap(first, last);
            const long margin = CKxGUILayoutManager::Zoomed(kFrameMargin);
            const long farthest = std::max(box.titleOffset, (area.right + 1) / 2), height = KX_GroupBoxTitleHeight(dc);
            const long room = first.left - own.left - box.titleOffset;
            if (first.top - own.top < height && room > 3 * height) {
                // Buttons that stand too high for it leave it the place beside them.
                box.titleEnd = first.left - own.left - CKxGUILayoutManager::Zoomed(4);
            } else {
                box.titleOffset = std::clamp(first.left - own.left, box.titleOffset, farthest);
            }
            box.frame.bottom = std::min(area.bottom, std::max(last.bottom - own.top + margin, box.frame.top + 1));
        }
        wchar_t title[257] = L"";
        const int length = GetWindowTextW(frame, title, 257);
        box.title = title;
        if (!m_activity.HasSign()) return KX_GroupBoxDraw(dc, box, enabled ? 0 : unsigned{eKxGroupBox_Disabled});
        const long height = KX_GroupBoxTitleHeight(dc), end = box.titleEnd > 0 ? box.titleEnd : area.right;
        box.titleEnd = std::max(box.titleOffset + 1, end - SignRoom());
        SIZE text{};
        GetTextExtentPoint32W(dc, title, length, &text);
        const long textEnd = std::min(box.titleOffset + text.cx, box.titleEnd);
        const RECT sign = SignAt(textEnd, 0, height);
        KX_GroupBoxDraw(dc, box, enabled ? 0 : unsigned{eKxGroupBox_Disabled});
        {
            const SavedDC saved(dc);
            ExcludeClipRect(dc, box.titleOffset - 2, 0, sign.right + 2, height);
            m_activity.DrawEdge(dc, box.frame);
        }
        const RECT line{textEnd, 0, sign.right + 2, height};
        FillRect(dc, &line, KX_GetSysColorBrush(COLOR_BTNFACE));
        m_activity.DrawSign(dc, sign);
    };
    return Paint(message, {.siblings = true}, KX_GetSysColorBrush(COLOR_BTNFACE), draw);
}

// The title with the sign behind it; without one, the platform draws it.
LRESULT PositionPanel::PaintTitle(const Message& message) const {
    const HWND title = message.window;
    return Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(title, WM_GETFONT, 0, 0)));
        SetTextColor(dc, KX_GetSysColor(IsEnabled() && IsWindowEnabled(title) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
        SetBkMode(dc, TRANSPARENT);
        RECT text{0, 0, std::max(1L, area.right - SignRoom()), area.bottom};
        const UINT format = DT_WORDBREAK | DT_NOPREFIX;
        const auto length = static_cast<int>(m_title.Length());
        RECT needed = text;
        DrawTextW(dc, m_title, length, &needed, format | DT_CALCRECT);
        text.right = std::min(text.right, needed.right);
        const bool centred = (GetWindowLongW(title, GWL_STYLE) & SS_TYPEMASK) == SS_CENTER;
        if (centred) OffsetRect(&text, (area.right - text.right - SignRoom()) / 2, 0);
        DrawTextW(dc, m_title, length, &text, format | (centred ? DT_CENTER : DT_LEFT));
        m_activity.DrawSign(dc, SignAt(text.right, 0, KX_GroupBoxTitleHeight(dc)));
    });
}

// Without a frame the panel's own edge is that of what has failed, and without a title its corner has the sign.
void PositionPanel::FillFace(HDC dc) const {
    RECT client{};
    GetClientRect(m_window, &client);
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNFACE));
    if (m_frame || !m_activity.HasSign()) return;
    m_activity.DrawEdge(dc, client);
    if (!m_titleWindow) m_activity.DrawSign(dc, SignAt(client.right - SignRoom(), 0, SignRoom()));
}

void PositionPanel::DrawSetup(const DRAWITEMSTRUCT& item) const {
    PaintItem(item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        const long side = std::lround(CKxGUILayoutManager::GetGuiZoom() * kSetupImage);
        const long shift = item.itemState & ODS_SELECTED ? 1 : 0;
        KX_DrawFlatButtonBackground(dc, area, IsEnabled() ? ButtonLook(item) : 0, COLOR_BTNFACE);
        const long left = (area.right - side) / 2 + shift, top = (area.bottom - side) / 2 + shift;
        const int image = CKxBitmapPool::AddImageBaseUI(m_setupHovered ? L"WINDOWOPEN_HOVER" : L"WINDOWOPEN");
        CKxBitmapPool::DrawOptimalImage(dc, image, {left, top, left + side, top + side},
                                        IsEnabled() && !(item.itemState & ODS_DISABLED));
        DrawFocus(dc, area, item);
    });
}

void PositionPanel::DrawOver(HDC dc, const RECT& area, const DRAWITEMSTRUCT& item, long position, bool enabled,
                             int ground) const {
    m_activity.DrawPlace(dc, area, position, enabled);
    RECT inner = area;
    const PlaceLook look = m_activity.LookOf(position);
    if (look == PlaceLook::Hollow || look == PlaceLook::Target) {
        const auto inset = static_cast<int>(CKxGUILayoutManager::Zoomed(3));
        InflateRect(&inner, -inset, -inset);
    }
    DrawFocus(dc, inner, item, ground);
}

void PositionPanel::DrawCurrent(HDC dc, const RECT& area, bool enabled) {
    const Selection pen(dc, GetStockObject(DC_PEN)), brush(dc, GetStockObject(DC_BRUSH));
    const COLORREF color = KX_GetSysColor(enabled ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW);
    SetDCPenColor(dc, color);
    SetDCBrushColor(dc, color);
    const int corner = static_cast<int>(CKxGUILayoutManager::Zoomed(6));
    RoundRect(dc, area.left, area.top, area.right, area.bottom, corner, corner);
}

void PositionPanel::DrawFocus(HDC dc, const RECT& area, const DRAWITEMSTRUCT& item, int ground) {
    if (!ShowsFocus(item)) return;
    KX_DrawFocusOutline(dc, area, ground);
}

}  // namespace kx::ui
