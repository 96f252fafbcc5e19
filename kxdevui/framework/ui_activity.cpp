#include <kxdevui/framework/ui_activity.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <string>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"devgui_activity";

// A ring goes on by a dash and a gap in so many steps.
constexpr int kPhases = 6;
constexpr UINT kStepMilliseconds = 100;

// Unzoomed pixels: the width of rings and edges, their corners as those of a current position, a dash with its gap, a
// sign, a
// sign in the corner of a button.
constexpr long kStroke = 2, kCorner = 3, kDash = 12, kSign = 12, kBadge = 11;

std::map<HWND, Activity*>& All() {
    static std::map<HWND, Activity*> all;
    return all;
}

Activity* Of(HWND control) {
    const auto found = All().find(control);
    return found == All().end() ? nullptr : found->second;
}

Activity::Question*& Asked() {
    static Activity::Question* asked = nullptr;
    return asked;
}

bool MayTurn() {
    BOOL animated = TRUE;
    SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &animated, 0);
    return animated != FALSE;
}

bool IsUnderWay(EKxActivity activity) { return activity == EKxActivity::Asked || activity == EKxActivity::Moving; }

// Its position can be relied on.
bool IsSettled(EKxActivity activity) { return activity == EKxActivity::AtRest || activity == EKxActivity::Locked; }

CKxStringW WithReason(const wchar_t* text, const CKxStringW& reason) {
    const CKxStringW plain = KX_GetTranslation(text, kSource);
    return reason.IsEmpty() ? plain : plain + L": " + reason;
}

CKxStringW StateText(const KxActivity& activity) {
    switch (activity.activity) {
    case EKxActivity::Asked: return KX_GetTranslation(L"Asked for", kSource);
    case EKxActivity::Moving: {
        if (activity.target < 0) return KX_GetTranslation(L"Moving", kSource);
        CKxStringW text;
        text.Format(256, KX_GetTranslation(L"Moving to position %ld", kSource), activity.target + 1);
        return text;
    }
    case EKxActivity::Unknown: return WithReason(L"Position unknown", activity.reason);
    case EKxActivity::Failed: return WithReason(L"Failed", activity.reason);
    case EKxActivity::Locked: return WithReason(L"Locked", activity.reason);
    default: return {};
    }
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

// Of lines: what selections are filled with is too dark for them in the dark.
COLORREF LineColor(bool enabled) {
    return enabled ? KX_GetVorGuiColor(eKxVorGuiColor_ScaleValue) : KX_GetSysColor(COLOR_BTNSHADOW);
}

std::string HexOf(COLORREF color) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(color), GetGValue(color), GetBValue(color));
    return text;
}

// A way around a rectangle with round corners, beginning in the middle of its upper edge, in pixels.
class RoundWay {
public:
    RoundWay(double width, double height, double inset, double corner)
        : m_left(inset), m_top(inset), m_right(width - inset), m_bottom(height - inset),
          m_corner(std::min({corner, (m_right - m_left) / 2, (m_bottom - m_top) / 2})) {}
    double Length() const { return 2 * (Across() + Down()) + 2 * std::numbers::pi * m_corner; }
    std::pair<double, double> At(double way) const {
        way = std::fmod(way + Across() / 2, Length());
        const double arc = std::numbers::pi / 2 * m_corner;
        // Four times an edge and the corner after it, each turned by a right angle.
        const std::array<double, 4> edges{Across(), Down(), Across(), Down()};
        const std::array<std::pair<double, double>, 4> centers{{{m_right - m_corner, m_top + m_corner},
                                                                {m_right - m_corner, m_bottom - m_corner},
                                                                {m_left + m_corner, m_bottom - m_corner},
                                                                {m_left + m_corner, m_top + m_corner}}};
        for (std::size_t i = 0; i < edges.size(); ++i) {
            const double begin = std::numbers::pi / 2 * (static_cast<double>(i) - 1);
            const auto& [x, y] = centers[i];
            const double outX = x + m_corner * std::cos(begin), outY = y + m_corner * std::sin(begin);
            // The edge ends where its corner begins, and leads there at a right angle to the way out.
            const double rest = edges[i] - way;
            if (rest >= 0) return {outX + std::sin(begin) * rest, outY - std::cos(begin) * rest};
            way -= edges[i];
            if (way <= arc && m_corner > 0) {
                const double angle = begin + way / m_corner;
                return {x + m_corner * std::cos(angle), y + m_corner * std::sin(angle)};
            }
            way -= arc;
        }
        return {(m_left + m_right) / 2, m_top};
    }

private:
    double Across() const { return m_right - m_left - 2 * m_corner; }
    double Down() const { return m_bottom - m_top - 2 * m_corner; }
    double m_left, m_top, m_right, m_bottom, m_corner;
};

// The picture of a ring: dashes that have gone on by `phase`, on a whole line in the colour of the face.
std::string RingOf(SIZE size, int phase, COLORREF color) {
    const double stroke = std::max(1.0, CKxGUILayoutManager::GetGuiZoom() * kStroke);
    const RoundWay way(size.cx, size.cy, stroke / 2, CKxGUILayoutManager::GetGuiZoom() * kCorner);
    const double dash = std::max(1.0, CKxGUILayoutManager::GetGuiZoom() * kDash);
    const int dashes = std::max(4, static_cast<int>(std::lround(way.Length() / dash)));
    const double step = way.Length() / dashes;
    std::string path;
    const auto line = [&](double from, double length) {
        constexpr double kPiece = 2;
        const int pieces = std::max(1, static_cast<int>(std::ceil(length / kPiece)));
        for (int i = 0; i <= pieces; ++i) {
            const auto [x, y] = way.At(from + length * i / pieces);
            char text[48];
            std::snprintf(text, sizeof text, "%c%d %d", i == 0 ? 'M' : 'L', static_cast<int>(std::lround(x * 10)),
                          static_cast<int>(std::lround(y * 10)));
            path += text;
        }
    };
    for (int i = 0; i < dashes; ++i)
        line(step * (i + static_cast<double>(phase) / kPhases), step * 0.55);
    const std::string width = std::to_string(std::lround(stroke * 10));
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + std::to_string(size.cx * 10) + " " +
           std::to_string(size.cy * 10) + "\"><path fill=\"none\" stroke=\"" + HexOf(color) + "\" stroke-width=\"" +
           width + "\" d=\"" + path + "\"/></svg>";
}

// A closed line of that width, without a filling.
void DrawHollow(HDC dc, const RECT& area, COLORREF color) {
    const int stroke = static_cast<int>(std::max(1L, CKxGUILayoutManager::Zoomed(1)));
    const Pen pen(CreatePen(PS_INSIDEFRAME, stroke, color));
    const Selection line(dc, pen.get()), nothing(dc, GetStockObject(NULL_BRUSH));
    const int corner = static_cast<int>(CKxGUILayoutManager::Zoomed(2 * kCorner));
    RoundRect(dc, area.left, area.top, area.right, area.bottom, corner, corner);
}

void DrawRing(HDC dc, const RECT& area, int phase, COLORREF color) {
    const SIZE size{area.right - area.left, area.bottom - area.top};
    CKxBitmapPool::DrawSVGImage(dc, RingOf(size, phase, color).c_str(), area);
}

CKxStringA Svg(const std::string& shapes) {
    return ("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\">" + shapes + "</svg>").c_str();
}

// Of what is in a row that is lower than it is.
long SeenBottom(HWND window, const RECT& area) {
    RECT row{};
    const HWND parent = GetAncestor(window, GA_PARENT);
    GetClientRect(parent, &row);
    MapWindowPoints(parent, window, reinterpret_cast<POINT*>(&row), 2);
    return row.bottom > area.top ? std::min(area.bottom, row.bottom) : area.bottom;
}

std::string SignOf(EKxActivity activity) {
    const std::string text = HexOf(KX_GetSysColor(COLOR_BTNTEXT)), face = HexOf(KX_GetSysColor(COLOR_BTNFACE));
    const std::string strong = HexOf(LineColor(true));
    switch (activity) {
    case EKxActivity::Asked:
    case EKxActivity::Moving:
        return "<path d=\"M13.5 8.5A5.5 5.5 0 1 1 8 3\" fill=\"none\" stroke=\"" + strong +
               "\" stroke-width=\"2.2\"/><path d=\"M7.5 0L12.5 3L7.5 6Z\" fill=\"" + strong + "\"/>";
    case EKxActivity::Unknown:
        return "<circle cx=\"8\" cy=\"8\" r=\"7\" fill=\"" + text +
               "\"/><path d=\"M5.6 6.4A2.4 2.4 0 1 1 9.3 8.3Q8 9.1 8 10.2\" fill=\"none\" stroke=\"" + face +
               "\" stroke-width=\"1.7\"/><circle cx=\"8\" cy=\"12.3\" r=\"1.1\" fill=\"" + face + "\"/>";
    case EKxActivity::Failed:
        return "<path d=\"M8 0.8L15.6 14.8H0.4Z\" fill=\"" + HexOf(KX_GetVorGuiColor(eKxVorGuiColor_Alert)) +
               "\"/><path d=\"M7 5.2H9L8.7 10.4H7.3Z\" fill=\"" + face +
               "\"/><circle cx=\"8\" cy=\"12.5\" r=\"1.1\" fill=\"" + face + "\"/>";
    case EKxActivity::Locked:
        return "<path d=\"M4.8 8V5.2A3.2 3.2 0 0 1 11.2 5.2V8\" fill=\"none\" stroke=\"" + text +
               "\" stroke-width=\"1.8\"/><rect x=\"2.8\" y=\"7\" width=\"10.4\" height=\"8\" rx=\"1.2\" fill=\"" +
               text + "\"/><circle cx=\"8\" cy=\"11\" r=\"1.4\" fill=\"" + face + "\"/>";
    default: return {};
    }
}

}  // namespace

KxActivity ReadActivity(const IKxDevice& device) {
    KxActivity told;
    switch (device.GetDeviceState()) {
    case eKxDeviceState_Moving:
        told.activity = EKxActivity::Moving;
        if (!device.GetTargetPosition(told.target)) told.target = -1;
        break;
    case eKxDeviceState_Unknown: told.activity = EKxActivity::Unknown; break;
    case eKxDeviceState_Faulty:
        told.activity = EKxActivity::Failed;
        told.reason = device.GetStateReason();
        break;
    default:
        if (device.GetCapability(eKxCapability_NotOperable)) told = {EKxActivity::Locked, -1, device.GetStateReason()};
    }
    return told;
}

// ---- What it is ----------------------------------------------------------------------------------------------------

Activity::Activity(ActivityHost host) : m_host(std::move(host)) {}

Activity::~Activity() { Detach(m_window); }

void Activity::Attach(HWND window) {
    Detach(m_window);
    m_window = window;
    m_announced = false;
    All()[window] = this;
}

void Activity::Show() {
    // Where nothing was ever told, the window keeps the text that it has.
    if (!HasSign()) return;
    m_host.changed(m_window);
    Turn();
    Announce();
}

void Activity::Detach(HWND window) noexcept {
    if (!window || window != m_window) return;
    if (m_turns) KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
    m_turns = false;
    All().erase(m_window);
    m_window = nullptr;
}

void Activity::WindowGone(HWND window) noexcept {
    if (Activity* const self = Of(window)) self->Detach(window);
}

void Activity::Tell(const KxActivity& now, CDMApi_LogDevId device) {
    ++m_answers;
    if (now.activity == EKxActivity::Refused) return Refuse(now);
    const EKxActivity before = m_now.activity;
    m_device = device;
    if (now == m_now) return;
    if (!IsUnderWay(before)) m_old = IsSettled(before) ? m_host.held(m_window) : -1;
    m_now = now;
    if (!m_window) return;
    m_host.changed(m_window);
    Turn();
    Announce();
}

void Activity::Answer() {
    ++m_answers;
    if (m_now.activity == EKxActivity::Asked) Tell({});
}

KxActivity Activity::Shown() const { return m_answer && AnswerWindow() == m_answer ? m_refused : m_now; }

bool Activity::ShowsHeld() const noexcept { return IsSettled(m_now.activity); }

PlaceLook Activity::LookOf(long position) const {
    if (position < 0) return PlaceLook::Plain;
    if (ShowsHeld()) return position == m_host.held(m_window) ? PlaceLook::Current : PlaceLook::Plain;
    if (!IsUnderWay(m_now.activity)) return PlaceLook::Plain;
    if (m_now.activity == EKxActivity::Moving && position == m_now.target) return PlaceLook::Target;
    return position == m_old ? PlaceLook::Hollow : PlaceLook::Plain;
}

HWND Activity::TargetPlace() const {
    // A slider goes to where its thumb is, and counts no positions.
    const bool known = m_now.activity == EKxActivity::Moving && (m_now.target >= 0 || m_host.thumb);
    return known ? m_host.place(m_window, m_now.target) : nullptr;
}

CKxStringW Activity::StateOf(HWND control) {
    const Activity* const asked = Of(control);
    return asked ? StateText(asked->m_now) : CKxStringW();
}

CKxStringW Activity::TitleOf(HWND control) {
    const Activity* const asked = Of(control);
    return asked ? asked->m_host.title(control) : CKxStringW();
}

CKxStringW Activity::Remark() const { return IsUnderWay(m_now.activity) ? CKxStringW() : StateText(m_now); }

// ---- Asking --------------------------------------------------------------------------------------------------------

Activity::Question::Question(const Activity& activity) noexcept
    : m_outer(std::exchange(Asked(), this)), m_answers(activity.m_answers) {}

Activity::Question::~Question() { Asked() = m_outer; }

void Activity::Refused(const Question& question, long position) {
    Refuse({EKxActivity::Refused, position, question.m_reason});
}

void Activity::TakenOver(const Question& question, long position) {
    if (m_answers == question.m_answers) Tell({EKxActivity::Asked, position, {}});
}

void Activity::Refuse(const KxActivity& refused) {
    if (m_now.activity == EKxActivity::Asked) Tell({});
    // A thumb that is dragged is refused with every move: what is shown already stays.
    if (m_answer && m_answer == AnswerWindow() && refused == m_refused) return;
    m_refused = refused;
    const CKxStringW plain = KX_GetTranslation(L"The request was refused.", kSource);
    ShowAnswer(m_window, (refused.reason.IsEmpty() ? plain : refused.reason).str());
    m_answer = AnswerWindow();
}

// ---- Telling -------------------------------------------------------------------------------------------------------

// Last of all: whoever hears of it may end the control.
void Activity::Announce() {
    const HWND window = m_window;
    if (!std::exchange(m_announced, true)) m_ownText = TextOf(window);
    const CKxStringW state = StateText(m_now);
    const CKxStringW text = state.IsEmpty() ? m_ownText : m_host.title(window) + L": " + state;
    // Parts made anew have nothing new to tell.
    if (text == TextOf(window)) return;
    bool alert = m_now.activity == EKxActivity::Failed;
    // A device in two panels fails once, and so does a control within another.
    for (const auto& [other, activity] : All()) {
        const bool same =
            (m_device != 0 && activity->m_device == m_device) || IsChild(other, window) || IsChild(window, other);
        if (activity != this && same && activity->m_alerted && activity->m_now == m_now) alert = false;
    }
    m_alerted = alert;
    SetWindowTextW(window, text);
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
    if (alert) NotifyWinEvent(EVENT_SYSTEM_ALERT, window, OBJID_CLIENT, CHILDID_SELF);
}

void Activity::Turn() {
    const bool turns = TargetPlace() && MayTurn();
    if (turns == m_turns) return;
    m_turns = turns;
    const auto id = reinterpret_cast<UINT_PTR>(this);
    if (turns) SetTimer(m_window, id, kStepMilliseconds, OnTimer);
    if (!turns) KillTimer(m_window, id);
}

void CALLBACK Activity::OnTimer(HWND window, UINT, UINT_PTR id, DWORD) {
    Activity* const self = Of(window);
    if (!self || reinterpret_cast<UINT_PTR>(self) != id) return;
    self->Turn();
    if (!self->m_turns) return;
    self->m_phase = (self->m_phase + 1) % kPhases;
    const RECT ring = self->m_host.thumb ? self->m_host.thumb(window) : RECT{};
    InvalidateRect(self->TargetPlace(), self->m_host.thumb ? &ring : nullptr, FALSE);
}

bool Activity::IsTarget(HWND place) {
    const Activity* const self = Of(GetAncestor(place, GA_PARENT));
    return self && self->TargetPlace() == place;
}

HWND Activity::SliderIn(HWND control) {
    const Activity* const self = Of(control);
    return self && self->m_host.slider ? self->m_host.slider(control) : nullptr;
}

void Activity::DrawTarget(HWND place, HDC dc, const RECT& area, bool enabled) {
    if (IsTarget(place)) DrawRing(dc, area, Of(GetAncestor(place, GA_PARENT))->m_phase, LineColor(enabled));
}

void Activity::DrawPlace(HDC dc, const RECT& area, long position, bool enabled) const {
    const PlaceLook look = LookOf(position);
    if (look == PlaceLook::Hollow) DrawHollow(dc, area, LineColor(enabled));
    if (look == PlaceLook::Target) DrawRing(dc, area, m_phase, LineColor(enabled));
}

void Activity::DrawButton(HDC dc, const RECT& area, const RECT& picture, bool enabled) const {
    DrawEdge(dc, area);
    if (TargetPlace()) {
        DrawRing(dc, area, m_phase, LineColor(enabled));
    } else if (IsUnderWay(m_now.activity)) {
        DrawHollow(dc, area, LineColor(enabled));
    }
    if (!HasSign()) return;
    // On the face, to be told from the picture.
    const long side = std::min(CKxGUILayoutManager::Zoomed(kBadge), (picture.bottom - picture.top) * 3 / 5);
    const long around = std::max(1L, side / 10), inset = CKxGUILayoutManager::Zoomed(kStroke) + around;
    const RECT badge{picture.right - inset - side, picture.bottom - inset - side, picture.right - inset,
                     picture.bottom - inset};
    const RECT ground{badge.left - around, badge.top - around, badge.right + around, badge.bottom + around};
    const std::string disc =
        "<circle cx=\"8\" cy=\"8\" r=\"8\" fill=\"" + HexOf(KX_GetSysColor(COLOR_BTNFACE)) + "\"/>";
    CKxBitmapPool::DrawSVGImage(dc, Svg(disc), ground);
    DrawSign(dc, badge);
}

void Activity::DrawSign(HDC dc, const RECT& place) const {
    const std::string sign = SignOf(m_now.activity);
    if (sign.empty()) return;
    CKxBitmapPool::DrawSVGImage(dc, Svg(sign), place);
}

void Activity::DrawFace(HWND window, HDC dc, const RECT& area) {
    const Activity* const self = Of(window);
    if (!self || !self->HasSign()) return;
    const RECT sign = self->m_host.sign ? self->m_host.sign(window) : RECT{};
    if (IsRectEmpty(&sign)) return;
    if (self->m_host.underlined) {
        const SavedDC saved(dc);
        const long line = std::max(1L, CKxGUILayoutManager::Zoomed(kStroke)), bottom = SeenBottom(window, area);
        IntersectClipRect(dc, area.left, area.top, area.right, bottom);
        // In a low row its parts cover the most of its lower edge, and not the right one.
        const long right = bottom < area.bottom ? area.right : area.right + line;
        self->DrawEdge(dc, {area.left - line, area.top - line, right, bottom});
    } else {
        self->DrawEdge(dc, area);
    }
    self->DrawSign(dc, sign);
}

long Activity::SignSide() { return CKxGUILayoutManager::Zoomed(kSign); }

void Activity::DrawEdge(HDC dc, const RECT& area) const {
    if (m_now.activity != EKxActivity::Failed) return;
    const Brush alert(CreateSolidBrush(KX_GetVorGuiColor(eKxVorGuiColor_Alert)));
    RECT line = area;
    for (long i = std::max(1L, CKxGUILayoutManager::Zoomed(kStroke)); i > 0; --i, InflateRect(&line, -1, -1))
        FrameRect(dc, &line, alert.get());
}

}  // namespace kx::ui

bool KX_TellActivity(HWND control, const KxActivity& activity) {
    if (kx::ui::Activity* const told = kx::ui::Of(control)) return told->Tell(activity), true;
    KX_LOG(kx::ui::kSource, L"window %p is no control of a device", static_cast<void*>(control));
    return false;
}

bool KX_TellActivity(HWND control, const IKxDevice& device) {
    KxActivity told;
    const auto ask = [&] { told = kx::ui::ReadActivity(device); };
    if (!kx::ui::AskDevice(kx::ui::kSource, device.GetLogDevId(), ask)) return false;
    kx::ui::Activity* const activity = kx::ui::Of(control);
    if (!activity) return KX_TellActivity(control, told);
    activity->Tell(told, device.GetLogDevId());
    return true;
}

KxActivity KX_GetActivity(HWND control) {
    const kx::ui::Activity* const asked = kx::ui::Of(control);
    return asked ? asked->Shown() : KxActivity{};
}

bool KX_SayWhyRefused(const wchar_t* reason) {
    if (kx::ui::Activity::Question* const asked = kx::ui::Asked()) return asked->m_reason = reason, true;
    KX_LOG(kx::ui::kSource, L"nobody is asked for \"%ls\"", reason ? reason : L"");
    return false;
}
