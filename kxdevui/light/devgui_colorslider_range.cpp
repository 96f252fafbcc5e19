// The two thumbs of the colour slider's range type.
#include <kxdevui/light/devgui_colorslider.h>

#include <windowsx.h>

#include <algorithm>
#include <cmath>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/light/colorslider_paint.h>
#include <kxsystem/kx_log.h>

using RangeThumbs = CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot;
using kx::colorslider::GivesWay;
using kx::colorslider::Range;
using kx::colorslider::Thumb;

namespace {

constexpr wchar_t kSource[] = L"devgui_colorslider";
constexpr wchar_t kClass[] = L"CKxDevUI_ColorSliderRangeHPot";
constexpr SIZE kUsualSize{150, 40};

}  // namespace

// What belongs to the window; see the slider's.
struct RangeThumbs::WindowPart {
    kx::hpot::ScaleImage scale;
    bool focused = false;
    bool dragging = false;
    POINT press{};
    POINT last{};
    long start = 0;
};

// Over a call to the host: whether the object is still there, with the same window.
class RangeThumbs::Watch {
public:
    explicit Watch(const CKxDevUI_ColorSliderRangeHPot* thumbs) noexcept
        : m_thumbs(thumbs), m_alive(static_cast<const CKxDevUI_Base*>(thumbs)), m_window(thumbs->m_hWnd) {}
    explicit operator bool() const noexcept { return m_alive && m_thumbs->m_hWnd == m_window; }

private:
    const CKxDevUI_ColorSliderRangeHPot* m_thumbs;
    kx::ui::Alive m_alive;
    HWND m_window;
};

ATOM RangeThumbs::m_Atom = 0;
std::map<HWND, RangeThumbs*> RangeThumbs::m_Instances;

RangeThumbs::CKxDevUI_ColorSliderRangeHPot() : m_line{eKxVorGuiColor_ScaleValue, eKxVorGuiColor_ScaleRest} {
    m_scale.type = eHPotType_ColorSlider;
    m_scale.maximum = 0;
}

RangeThumbs::~CKxDevUI_ColorSliderRangeHPot() { kx::ui::Binding::EndOwnWindow(this); }

// ---- The window ----------------------------------------------------------------------------------------------------

HWND RangeThumbs::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::ui::Creation::Of(this, [&](const kx::ui::Creation& creation) {
        if (m_width < 0) m_width = kUsualSize.cx;
        if (m_height < 0) m_height = kUsualSize.cy;
        return creation.Window(this, m_Atom,
                               {.name = kClass, .object = kClass, .procedure = WndProc, .style = 0, .font = false},
                               parent, {x, y}, {cx, cy});
    });
}

void RangeThumbs::Destroy() { kx::ui::Binding::EndWindow(this); }

RangeThumbs::WindowPart* RangeThumbs::Part() const {
    if (!m_Instances.contains(m_hWnd)) return nullptr;
    const auto state = kx::ui::StateOf(m_hWnd);
    if (!state->own) state->own = std::make_shared<WindowPart>();
    return static_cast<WindowPart*>(state->own.get());
}

void RangeThumbs::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    if (m_hWnd) EnableWindow(m_hWnd, enable);
}

bool RangeThumbs::IsUsable() const {
    return m_enabled && (!m_hWnd || IsWindowEnabled(m_hWnd)) && !m_scale.values.empty();
}

void RangeThumbs::SetSize(long cx, long cy, long thumb) {
    m_width = cx;
    m_height = cy;
    m_thumbSize = thumb == -1 ? cy / 2 : thumb;
    if (m_hWnd) SetWindowPos(m_hWnd, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Place();
}

void RangeThumbs::ResizeWindow(long cx, long cy) {
    const long thumb = cy == m_height ? m_thumbSize : -1;
    CKxDevUI_Base::ResizeWindow(cx, cy);
    m_thumbSize = thumb == -1 ? m_height / 2 : thumb;
    Place();
}

// The thumbs' size and the track, which is shorter than the window by a thumb.
void RangeThumbs::Place() {
    RECT client{};
    if (!GetClientRect(m_hWnd, &client)) return;
    m_thumbImage = kx::hpot::ThumbImage(m_thumbSize < 0 ? m_height / 2 : m_thumbSize, client);
    m_trackLeft = m_thumbImage.cx / 2;
    m_trackLength = client.right - m_thumbImage.cx;
    UpdatePixelsFromValues();
    ScaleChanged();
    Redraw();
}

// ---- Values --------------------------------------------------------------------------------------------------------

void RangeThumbs::InitValues(double* values, int count) {
    m_scale.values.clear();
    for (int i = 0; values && i < count; ++i) {
        if (std::isfinite(values[i])) m_scale.values.push_back(values[i]);
    }
    const auto taken = static_cast<int>(m_scale.values.size());
    if (values && taken < count) KX_LOG(kSource, L"%d values of a range are no finite numbers", count - taken);
    m_scale.minimum = taken > 0 ? m_scale.values.front() : 0;
    m_scale.maximum = taken > 0 ? m_scale.values.back() : 0;
    // The values held stay; their entries have changed.
    if (taken > 0) SetRange(m_range.minimum.value, m_range.maximum.value);
    RecreateScale();
}

void RangeThumbs::InitLineDraw(CKxDevUI_ColorSlider* owner, unsigned long lowColor, unsigned long highColor,
                               bool scheme) {
    m_owner = owner;
    m_line[0] = lowColor;
    m_line[1] = highColor;
    m_lineOfScheme = scheme;
    ScaleChanged();
    Redraw();
}

void RangeThumbs::SetRange(double minimum, double maximum) {
    if (m_scale.values.empty() || std::isnan(minimum) || std::isnan(maximum)) return;
    Take(kx::colorslider::Snapped(minimum, maximum, m_scale.values));
}

void RangeThumbs::GetRange(double* minimum, double* maximum) const {
    if (minimum) *minimum = m_range.minimum.value;
    if (maximum) *maximum = m_range.maximum.value;
}

void RangeThumbs::Take(const Range& range) {
    m_range = range;
    Update(true, false, true);
}

long& RangeThumbs::PositionOf(Thumb thumb) { return thumb == Thumb::Minimum ? m_minimumPos : m_maximumPos; }

void RangeThumbs::UpdatePixelsFromValues() {
    const auto at = [this](double value) {
        return kx::hpot::ValueToThumbPos(m_scale, value, static_cast<int>(m_trackLength));
    };
    m_minimumPos = at(m_range.minimum.value);
    m_maximumPos = at(m_range.maximum.value);
}

void RangeThumbs::UpdateValuesFromPixels() {
    if (m_scale.values.empty()) return;
    const auto raw = [this](long position) {
        return kx::hpot::ThumbPosToRaw(m_scale, static_cast<int>(std::clamp(position, 0L, std::max(m_trackLength, 0L))),
                                       static_cast<int>(m_trackLength));
    };
    const Range found = kx::colorslider::Snapped(raw(m_minimumPos), raw(m_maximumPos), m_scale.values);
    const auto [minimumPos, maximumPos] = std::pair{m_minimumPos, m_maximumPos};
    UpdatePixelsFromValues();
    // A thumb that has not moved keeps its entry: the one nearest to its pixel may be another.
    if (minimumPos != m_minimumPos) m_range.minimum = found.minimum;
    if (maximumPos != m_maximumPos) m_range.maximum = found.maximum;
    UpdatePixelsFromValues();
}

void RangeThumbs::Update(bool fromValues, bool notify, bool redraw) {
    if (!fromValues) {
        const Range held = m_range;
        UpdateValuesFromPixels();
        const bool isNew = m_range.minimum.value != held.minimum.value || m_range.maximum.value != held.maximum.value;
        if (notify && isNew) {
            const Range wanted = std::exchange(m_range, held);
            if (!Ask(wanted)) return;
        }
    }
    UpdatePixelsFromValues();
    LineChanged();
    if (redraw) Redraw();
}

// Tells of the range that a thumb asks for, then takes what the host has made of it. False when the control is gone.
bool RangeThumbs::Ask(const Range& wanted) {
    const Watch watch(this);
    double minimum = wanted.minimum.value, maximum = wanted.maximum.value;
    const auto holdInOwner = [this](const Range& range) {
        if (m_owner && m_owner->IsRange()) m_owner->m_range = range;
    };
    // A host that asks is told what is wanted.
    holdInOwner(wanted);
    CKxDevUI_ColorSlider* const owner = m_owner;
    const kx::ui::Alive ownerLives(static_cast<CKxDevUI_Base*>(owner));
    OnRangeChanged(minimum, maximum);
    if (!watch) {
        if (ownerLives) owner->m_range = Ordered(owner->m_range, GivesWay::Minimum);
        return false;
    }
    if (m_scale.values.empty() || std::isnan(minimum) || std::isnan(maximum)) {
        holdInOwner(m_range);
        return true;
    }
    m_range = Ordered(kx::colorslider::Snapped(minimum, maximum, m_scale.values), GivesWay::Minimum);
    if (m_owner && m_owner->IsRange()) m_owner->ShowRange(m_range);
    return static_cast<bool>(watch);
}

void RangeThumbs::OnRangeChanged(double& minimum, double& maximum) {
    if (m_owner) m_owner->OnRangeChanged(minimum, maximum);
}

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

void RangeThumbs::SetMouseWheelGranularity(int ctrl, int plain, int shift) {
    m_granularityCtrl = ctrl;
    m_granularityPlain = plain;
    m_granularityShift = shift;
}

void RangeThumbs::GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const {
    if (ctrl) *ctrl = m_granularityCtrl;
    if (plain) *plain = m_granularityPlain;
    if (shift) *shift = m_granularityShift;
}

// One thumb, and the other if it is met; told when it has happened.
void RangeThumbs::MoveThumb(Thumb thumb, int steps) {
    const Watch watch(this);
    Take(kx::colorslider::MovedRange(m_range, thumb, steps, m_scale.values));
    if (m_owner && m_owner->IsRange()) {
        m_owner->ShowRange(m_range);
    }
    if (!watch) return;
    double minimum = m_range.minimum.value, maximum = m_range.maximum.value;
    OnRangeChanged(minimum, maximum);
}

bool RangeThumbs::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    if (GET_WHEEL_DELTA_WPARAM(wParam) == 0 || !IsUsable() || !GetHover()) return false;
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(m_hWnd, &at);
    m_mouseX = at.x;
    MoveThumb(m_minimumHovered ? Thumb::Minimum : Thumb::Maximum,
              kx::hpot::WheelSteps({m_granularityCtrl, m_granularityPlain, m_granularityShift}, wParam));
    return true;
}

kx::ui::Handled RangeThumbs::OnKey(WPARAM key) {
    if (key == VK_TAB) {
        m_thumb = m_thumb == Thumb::Minimum ? Thumb::Maximum : Thumb::Minimum;
        Redraw();
        return 0;
    }
    if (!IsUsable()) return std::nullopt;
    const int usual = kx::hpot::Chosen({m_granularityCtrl, m_granularityPlain, m_granularityShift}, 0);
    const auto count = static_cast<int>(m_scale.values.size()), page = std::max(1, count / 10);
    int steps = 0;
    switch (key) {
    case VK_RIGHT:
    case VK_UP: steps = usual; break;
    case VK_LEFT:
    case VK_DOWN: steps = -usual; break;
    case VK_PRIOR: steps = page; break;
    case VK_NEXT: steps = -page; break;
    case VK_HOME: steps = -count; break;
    case VK_END: steps = count; break;
    default: return std::nullopt;
    }
    const Range moved = kx::colorslider::MovedRange(m_range, m_thumb, steps, m_scale.values);
    const bool isNew = moved.minimum.index != m_range.minimum.index || moved.maximum.index != m_range.maximum.index;
    if (isNew) MoveThumb(m_thumb, steps);
    return 0;
}

// Tab stays inside on its way from the first thumb to the second, and back.
bool RangeThumbs::LeadsToOtherThumb(const MSG* key) const {
    if (!key || key->message != WM_KEYDOWN || key->wParam != VK_TAB) return false;
    return m_thumb == (GetKeyState(VK_SHIFT) < 0 ? Thumb::Maximum : Thumb::Minimum);
}

void RangeThumbs::OnFocus(bool focused) {
    WindowPart* part = Part();
    if (!part) return;
    part->focused = focused;
    // Who comes by Tab comes to the first thumb of the way.
    if (focused && GetKeyState(VK_TAB) < 0) m_thumb = GetKeyState(VK_SHIFT) < 0 ? Thumb::Maximum : Thumb::Minimum;
    Redraw();
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

void RangeThumbs::SetHover(bool minimum, bool maximum) {
    if (minimum == m_minimumHovered && maximum == m_maximumHovered) return;
    m_minimumHovered = minimum;
    m_maximumHovered = maximum && !minimum;
    Redraw();
}

bool RangeThumbs::GetHover() const { return m_minimumHovered || m_maximumHovered; }

void RangeThumbs::HoverAt(int x) {
    m_mouseX = x;
    const Thumb thumb = kx::colorslider::ThumbFor(x - m_trackLeft, m_minimumPos, m_maximumPos, m_trackLength);
    SetHover(thumb == Thumb::Minimum, thumb == Thumb::Maximum);
}

void RangeThumbs::OnLButtonDown(POINT at) {
    if (!IsUsable()) return;
    const Watch watch(this);
    // Both tell other windows, whose handlers may do anything.
    ::SetFocus(m_hWnd);
    if (watch) SetCapture(m_hWnd);
    WindowPart* part = watch ? Part() : nullptr;
    if (!part || GetCapture() != m_hWnd) return;
    HoverAt(at.x);
    m_thumb = m_minimumHovered ? Thumb::Minimum : Thumb::Maximum;
    long& position = PositionOf(m_thumb);
    const RECT thumb = ThumbRect(position);
    if (!PtInRect(&thumb, at)) position = kx::ui::Difference(at.x, m_trackLeft);
    part->dragging = true;
    part->press = part->last = at;
    part->start = position;
    Redraw();
}

void RangeThumbs::OnMouseMove(const kx::ui::Message& message) {
    WindowPart* part = Part();
    const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    if (!part) return;
    if (!part->dragging) {
        kx::ui::TrackHover(message);
        const auto state = kx::ui::FindState(m_hWnd);
        if (state && state->hovered) HoverAt(at.x);
        return;
    }
    // The platform repeats moves that lead nowhere, after a press always.
    if (at.x == part->last.x && at.y == part->last.y) return;
    part->last = at;
    PositionOf(m_thumb) = kx::ui::Sum(part->start, kx::ui::Difference(at.x, part->press.x));
    Update(false, true, true);
}

void RangeThumbs::OnLButtonUp(POINT at) {
    const Watch watch(this);
    WindowPart* part = Part();
    if (part && part->dragging) {
        // First of all: the capture that is given back here is no loss.
        part->dragging = false;
        const long position = kx::ui::Sum(part->start, kx::ui::Difference(at.x, part->press.x));
        ReleaseCapture();
        if (!watch) return;
        PositionOf(m_thumb) = position;
        Update(false, true, true);
        if (!watch || !Ask(m_range)) return;
        Update(true, false, true);
    }
    if (m_owner) m_owner->OnLeftButtonUp();
}

void RangeThumbs::OnCaptureLost() {
    WindowPart* part = Part();
    if (!part || !part->dragging) return;
    part->dragging = false;
    UpdatePixelsFromValues();
    Redraw();
}

void RangeThumbs::OnMouseLeave(const kx::ui::Message& message) {
    kx::ui::TrackHover(message);
    SetHover(false, false);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void RangeThumbs::ScaleChanged() {
    if (WindowPart* part = Part()) part->scale.stale = true;
}

// All else on the scale stands still while the range moves, and takes much longer to draw.
void RangeThumbs::LineChanged() {
    const WindowPart* part = Part();
    if (!part || part->scale.stale || !part->scale.dc || !IsWindowEnabled(m_hWnd)) return ScaleChanged();
    RenderLineDrawRangeRect(part->scale.dc.get(), static_cast<int>(m_strip.left), static_cast<int>(m_strip.top),
                            static_cast<int>(m_strip.right - m_strip.left),
                            static_cast<int>(m_strip.bottom - m_strip.top));
}

void RangeThumbs::Redraw() {
    const WindowPart* part = Part();
    if (!part) return;
    // While the mouse moves there is no end of messages that come before a WM_PAINT.
    RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | (part->dragging ? UINT{RDW_UPDATENOW} : 0));
}

void RangeThumbs::RecreateScale() {
    CreateBitmaps(true);
    Redraw();
}

void RangeThumbs::CreateBitmaps(bool anew) {
    WindowPart* part = Part();
    if (!part || !(anew || part->scale.stale)) return;
    part->scale.stale = false;
    part->scale.Take(kx::ui::Bitmap(CreateColorSliderRangeBitmap()));
}

HBITMAP RangeThumbs::CreateColorSliderRangeBitmap() {
    using namespace kx::hpot;
    ScaleCanvas canvas(m_hWnd);
    if (!canvas) return nullptr;
    FillRect(canvas, &canvas.Client(), KX_GetSysColorBrush(COLOR_3DFACE));
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    const long nominal = m_owner ? m_owner->m_sliderHeight : m_height / 3;
    const long height =
        std::clamp(CKxGUILayoutManager::Zoomed(static_cast<double>(nominal)), 0L, canvas.Client().bottom);
    const Rows rows = RowsOf(ThumbRect(0), m_trackLeft, m_trackLength, height, canvas.Client().bottom, canvas.Font());
    const RECT& strip = m_strip = rows.track;
    RenderLineDrawRangeRect(canvas, static_cast<int>(strip.left), static_cast<int>(strip.top),
                            static_cast<int>(strip.right - strip.left), static_cast<int>(strip.bottom - strip.top));
    if (!enabled) kx::colorslider::Fade(canvas, {strip.left - 2, strip.top - 2, strip.right + 2, strip.bottom + 2});
    static const std::vector<SColorSliderValue> none;
    kx::colorslider::DrawMarks(canvas, m_scale, m_owner ? m_owner->m_marks : none, rows, enabled);
    return canvas.Release();
}

void RangeThumbs::RenderLineDrawRangeRect(HDC dc, int x, int y, int w, int h) {
    const COLORREF inside = kx::colorslider::LineColor(m_line[0], m_lineOfScheme);
    const COLORREF outside = kx::colorslider::LineColor(m_line[1], m_lineOfScheme);
    const auto [left, right] = std::minmax(m_minimumPos, m_maximumPos);
    kx::colorslider::DrawLine(dc, {x, y, x + w, y + h}, {{x, outside}, {x + left, inside}, {x + right, outside}},
                              false);
}

RECT RangeThumbs::ThumbRect(long position) const {
    const long left = std::clamp(position, 0L, std::max(m_trackLength, 0L));
    return {left, 0, left + m_thumbImage.cx, m_thumbImage.cy};
}

void RangeThumbs::OnPaint(const kx::ui::Message& message) {
    using namespace kx::hpot;
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    CreateBitmaps(false);
    const WindowPart* part = Part();
    if (!part) return;
    const auto draw = [&](HDC dc, Thumb thumb) {
        const bool hovered = thumb == Thumb::Minimum ? m_minimumHovered : m_maximumHovered;
        const auto look = !enabled                             ? kLookDisabled
                          : part->dragging && thumb == m_thumb ? kLookDragged
                          : hovered                            ? kLookHovered
                                                               : kLookNormal;
        const RECT at = ThumbRect(PositionOf(thumb));
        DrawThumb(
            dc, {at.left, at.top},
            StyleOf(m_thumbImage, look, part->focused && thumb == m_thumb, CKxDevUI_ColorSliderHPot::m_pDefaultColors));
    };
    kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT&) {
        part->scale.CopyTo(dc);
        // The one in use is above the other.
        draw(dc, m_thumb == Thumb::Minimum ? Thumb::Maximum : Thumb::Minimum);
        draw(dc, m_thumb);
    });
}

// ---- Routing -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK RangeThumbs::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return Entry<RangeThumbs, ByInstances<RangeThumbs, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &RangeThumbs::Handle>({window, message, wParam, lParam});
}

kx::ui::Handled RangeThumbs::Handle(const kx::ui::Message& message) {
    const auto [window, id, wParam, lParam] = message;
    const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (id) {
    case WM_SIZE: Place(); return std::nullopt;
    case kx::ui::WM_KX_ZOOM_CHANGED:
        kx::ui::ApplyZoom(window);
        Place();
        return std::nullopt;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE:
        ScaleChanged();
        Redraw();
        return std::nullopt;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: OnFocus(id == WM_SETFOCUS); return std::nullopt;
    case WM_PAINT:
    case WM_PRINTCLIENT: OnPaint(message); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | (LeadsToOtherThumb(reinterpret_cast<const MSG*>(lParam)) ? DLGC_WANTTAB : 0);
    case WM_KEYDOWN: return OnKey(wParam);
    case WM_MOUSEWHEEL: return HandleMouseWheel(wParam, lParam) ? kx::ui::Handled(0) : std::nullopt;
    case WM_LBUTTONDOWN: OnLButtonDown(at); return 0;
    case WM_MOUSEMOVE: OnMouseMove(message); return 0;
    case WM_LBUTTONUP: OnLButtonUp(at); return 0;
    case WM_MOUSELEAVE: OnMouseLeave(message); return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window) OnCaptureLost();
        return std::nullopt;
    default: return std::nullopt;
    }
}
