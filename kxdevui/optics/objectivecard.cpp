#include <kxdevui/optics/objectivecard.h>

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_beside.h>
#include <kxdevui/framework/ui_gdi.h>

namespace kx::ui {

namespace {

// Unzoomed pixels: around all of it, between names and values, between paragraphs, the widest line, the side of a sign
// and the room behind it.
constexpr int kInset = 8, kGap = 12, kBetween = 5, kWidest = 320, kSign = 14, kAfterSign = 4;

// Of the panel's window; no other timer of it has this number.
constexpr UINT_PTR kTimer = 0x4B43;

long Zoomed(int unzoomed) { return CKxGUILayoutManager::Zoomed(unzoomed); }

struct Shown {
    Beside card{L"KxDevUI_ObjectiveCard"};
    const ObjectiveCards* owner = nullptr;
};

Shown& TheCard() {
    static Shown shown;
    return shown;
}

// A drop in the liquid's colour; a crossed one, empty, is dry, and one that is empty nobody knows.
CKxStringA SignOf(Immersion immersion) {
    const char* fill = "none";
    switch (immersion) {
    case Immersion::Water: fill = "#6FB7F2"; break;
    case Immersion::Oil: fill = "#E9B52E"; break;
    case Immersion::Silicone: fill = "#8CCB6B"; break;
    case Immersion::Glycerol: fill = "#F08A3C"; break;
    default: break;
    }
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">"
                      "<path d=\"M12 2C15 7 19 11 19 15.5A7 6.500 0 0 1 5 15.5C5 11 9 7 12 2Z\" fill=\"" +
                      std::string(fill) + "\" stroke=\"currentColor\" stroke-width=\"1.800\"/>";
    if (immersion == Immersion::Dry) svg += "<path d=\"M3 21L21 4\" stroke=\"currentColor\" stroke-width=\"2.200\"/>";
    return CKxStringA((svg + "</svg>").c_str());
}

// Lays a card out from the corner on; draws it as well, or only measures it.
class Layout {
public:
    Layout(HDC dc, POINT corner, bool draws) : m_dc(dc), m_corner(corner), m_y(corner.y), m_draws(draws) {}

    SIZE Lay(const CardText& text) {
        Line(KX_GetDefaultGuiFontBold(), 0, text.title);
        if (!text.rows.empty()) Rows(text);
        for (const CKxStringW& remark : text.remarks)
            Marked(remark, KX_GetSysColor(COLOR_INFOTEXT));
        for (const CKxStringW& warning : text.warnings)
            Marked(warning, KX_GetVorGuiColor(eKxVorGuiColor_Alert));
        return {m_right - m_corner.x, m_y - m_corner.y};
    }

private:
    // A text from `left` on, in as many lines as it needs; the place below it is the next one's.
    void Line(HFONT font, long left, const CKxStringW& text) {
        if (text.IsEmpty()) return;
        m_y = At(font, left, text);
    }
    // The same; where it ends.
    long At(HFONT font, long left, const CKxStringW& text) {
        const Selection selected(m_dc, font);
        RECT place{m_corner.x + left, m_y, m_corner.x + Zoomed(kWidest), m_y};
        constexpr UINT format = DT_LEFT | DT_NOPREFIX | DT_WORDBREAK;
        DrawTextW(m_dc, text, -1, &place, format | DT_CALCRECT);
        if (m_draws) DrawTextW(m_dc, text, -1, &place, format);
        m_right = std::max(m_right, place.right);
        return place.bottom;
    }
    void Rows(const CardText& text) {
        const HFONT font = KX_GetDefaultGuiFont();
        if (m_y > m_corner.y) m_y += Zoomed(kBetween);
        long values = 0;
        {
            const Selection selected(m_dc, font);
            for (const auto& row : text.rows) {
                SIZE extent{};
                GetTextExtentPoint32W(m_dc, row.first, static_cast<int>(row.first.Length()), &extent);
                values = std::max(values, extent.cx + Zoomed(kGap));
            }
        }
        for (int i = 0; i < static_cast<int>(text.rows.size()); ++i) {
            const auto& [name, value] = text.rows[static_cast<std::size_t>(i)];
            long left = values;
            if (i == text.immersed) {
                const long side = Zoomed(kSign), x = m_corner.x + left;
                if (m_draws) CKxBitmapPool::DrawSVGImage(m_dc, SignOf(text.immersion), {x, m_y, x + side, m_y + side});
                left += side + Zoomed(kAfterSign);
            }
            const long below = At(font, 0, name);
            m_y = std::max(below, At(font, left, value));
        }
    }
    void Marked(const CKxStringW& text, COLORREF color) {
        m_y += Zoomed(kBetween);
        SetTextColor(m_dc, KX_GetVorGuiColor(eKxVorGuiColor_Alert));
        At(KX_GetDefaultGuiFontBold(), 0, L"!");
        SetTextColor(m_dc, color);
        Line(KX_GetDefaultGuiFont(), Zoomed(kSign), text);
        SetTextColor(m_dc, KX_GetSysColor(COLOR_INFOTEXT));
    }

    HDC m_dc;
    POINT m_corner;
    long m_y;
    long m_right = 0;
    bool m_draws;
};

BesidePicture PictureOf(const CardText& text) {
    const long inset = Zoomed(kInset);
    const WindowDC screen(nullptr);
    SIZE size = Layout(screen, {0, 0}, false).Lay(text);
    size.cx += 2 * inset, size.cy += 2 * inset;
    return {text.Whole(), size, [text, inset](HDC dc, const RECT& area) {
                const bool warns = !text.warnings.empty();
                const Brush edge(CreateSolidBrush(warns ? KX_GetVorGuiColor(eKxVorGuiColor_Alert)
                                                        : KX_GetSysColor(COLOR_BTNSHADOW)));
                FrameRect(dc, &area, edge.get());
                Layout(dc, {area.left + inset, area.top + inset}, true).Lay(text);
            }};
}

UINT RestMilliseconds() {
    UINT milliseconds = 400;
    SystemParametersInfoW(SPI_GETMOUSEHOVERTIME, 0, &milliseconds, 0);
    return milliseconds;
}

// Whether the focus is there, or the pointer: it may have gone on without a word.
bool IsAt(HWND button) {
    POINT pointer{};
    RECT place{};
    GetCursorPos(&pointer);
    return GetWindowRect(button, &place) && (GetFocus() == button || PtInRect(&place, pointer));
}

}  // namespace

void ObjectiveCards::Set(std::optional<SKxObjectiveCards> host) {
    m_host = std::move(host);
    if (m_host) return;
    Hide();
    m_position = -1;
    GiveToolTipsBack();
}

// Others have their tooltips in the same window: they are off only while the pointer is on an objective.
void ObjectiveCards::TakeToolTips(HWND button) {
    const HWND tip = KX_GetToolTipWindow(button);
    if (tip == m_toolTip) return;
    GiveToolTipsBack();
    m_toolTip = tip;
    SendMessageW(tip, TTM_ACTIVATE, FALSE, 0);
}

void ObjectiveCards::GiveToolTipsBack() {
    if (const HWND tip = std::exchange(m_toolTip, nullptr)) SendMessageW(tip, TTM_ACTIVATE, TRUE, 0);
}

// ---- When they come and go -----------------------------------------------------------------------------------------

void ObjectiveCards::Hear(HWND panel, const Message& message, long position) {
    if (!m_host) return;
    switch (message.id) {
    case WM_MOUSEMOVE:
        // A button that cannot be used leaves the pointer to the panel.
        if (position < 0) {
            position = DisabledAt(panel, message.lParam);
            if (position < 0) return GiveToolTipsBack(), LeaveDisabled(panel);
        }
        TakeToolTips(m_panel.button(position));
        // Some moves are none.
        if (position != m_position || message.lParam != std::exchange(m_pointer, message.lParam)) Come(panel, position);
        return;
    case WM_SETFOCUS:
        // A press brings it as well.
        if (position >= 0 && GetKeyState(VK_LBUTTON) >= 0) Come(panel, position);
        return;
    case WM_MOUSELEAVE: GiveToolTipsBack(); [[fallthrough]];
    case WM_KILLFOCUS:
        if (position < 0) return LeaveDisabled(panel);
        if (position == m_position) Leave(panel);
        return;
    case WM_LBUTTONDOWN: {
        if (position < 0) return;
        m_position = position;
        m_waiting = false;
        const std::optional<CardText> text = Ask(position);
        if (text && text->warnings.empty()) Hide();
        if (text && !text->warnings.empty()) Show(position);
        return;
    }
    case WM_TIMER:
        if (message.wParam != kTimer) return;
        KillTimer(panel, kTimer);
        if (std::exchange(m_waiting, false) && IsAt(m_panel.button(m_position))) Show(m_position);
        return;
    case WM_NCDESTROY:
        if (position < 0) GiveToolTipsBack(), Leave(panel);
        return;
    default: return;
    }
}

long ObjectiveCards::DisabledAt(HWND panel, LPARAM point) const {
    const POINT at{static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    for (long i = 0; const HWND button = m_panel.button(i); ++i) {
        RECT place{};
        GetWindowRect(button, &place);
        MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&place), 2);
        if (PtInRect(&place, at) && !IsWindowEnabled(button)) return i;
    }
    return -1;
}

// To a position, or about on it before its card is there.
void ObjectiveCards::Come(HWND panel, long position) {
    if (position == m_position && !m_waiting) return;
    if (position != m_position) Hide();
    m_position = position;
    m_waiting = true;
    SetTimer(panel, kTimer, RestMilliseconds(), nullptr);
}

void ObjectiveCards::Leave(HWND panel) {
    if (m_position < 0) return;
    m_position = -1;
    m_waiting = false;
    KillTimer(panel, kTimer);
    Hide();
}

// The panel hears of the pointer only for those that cannot be used.
void ObjectiveCards::LeaveDisabled(HWND panel) {
    if (!IsWindowEnabled(m_panel.button(m_position))) Leave(panel);
}

// ---- What they say -------------------------------------------------------------------------------------------------

std::optional<CardText> ObjectiveCards::Ask(long position) const {
    if (!m_host) return std::nullopt;
    // It may set other cards while it is asked, or none.
    const SKxObjectiveCards host = *m_host;
    const Alive alive(m_panel.object);
    const auto cardOf = [&](long at) {
        SKxObjectiveCard card = m_panel.held(at);
        if (host.complete) Guarded([&]() -> Handled { return host.complete(at, card), 0; });
        return card;
    };
    const SKxObjectiveCard card = cardOf(position);
    if (!alive) return std::nullopt;
    EKxObjectiveRisk risk = EKxObjectiveRisk::None;
    if (const long current = m_panel.current(); m_panel.button(current) && current != position && card.reachable)
        risk = RiskOf(cardOf(current), card);
    if (!alive) return std::nullopt;
    const bool asks = risk != EKxObjectiveRisk::None && host.warns;
    const Handled warns = asks ? Guarded([&]() -> Handled { return host.warns(position, risk); }) : std::nullopt;
    if (!alive || !m_host) return std::nullopt;
    return TextOf(card, warns.value_or(FALSE) ? risk : EKxObjectiveRisk::None);
}

bool ObjectiveCards::Show(long position) {
    const HWND button = m_panel.button(position);
    if (!button) return false;
    const std::optional<CardText> text = Ask(position);
    if (!text || text->IsEmpty()) return false;
    // What it says changes with the light, the stage and the language.
    const auto stays = [this, position, alive = Alive(m_panel.object)] {
        const std::optional<CardText> now = alive ? Ask(position) : std::nullopt;
        if (!now || now->IsEmpty()) return false;
        if (alive) TheCard().card.Change(PictureOf(*now));
        return true;
    };
    const HWND card = TheCard().card.Show(button, PictureOf(*text), stays, Beside::Ends::ByEscape);
    TheCard().owner = this;
    if (card)
        NotifyWinEvent(text->warnings.empty() ? EVENT_OBJECT_SHOW : EVENT_SYSTEM_ALERT, card, OBJID_CLIENT,
                       CHILDID_SELF);
    return card != nullptr;
}

void ObjectiveCards::Hide() const {
    if (TheCard().owner == this) TheCard().card.End();
}

}  // namespace kx::ui
