// The two thumbs of the colour slider's range type.
#include <kxdevui/light/devgui_colorslider.h>

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/hpot_slider.h>
#include <kxdevui/light/colorslider_paint.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using RangeThumbs = CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot;
using kx::colorslider::GivesWay;
using kx::colorslider::Range;
using kx::colorslider::Thumb;
using kx::hpot::KeyMove;
using kx::hpot::SliderPart;
using kx::hpot::Watch;

namespace {

constexpr wchar_t kSource[] = L"devgui_colorslider";
constexpr wchar_t kClass[] = L"CKxDevUI_ColorSliderRangeHPot";

}  // namespace

// What the thumbs hold, and all that has no name for hosts.
struct RangeThumbs::Inside : kx::hpot::Slider<Inside> {
    Inside(CKxDevUI_ColorSliderRangeHPot& of, CKxDevUI_ColorSlider* by) : slider(of), owner(by) {
        scale.type = eHPotType_ColorSlider;
        scale.maximum = 0;
    }

    CKxDevUI_ColorSliderRangeHPot& slider;
    CKxDevUI_ColorSlider* owner;
    kx::hpot::Scale scale;
    Range range;
    Range told;  // to screen readers
    unsigned long line[2] = {eKxVorGuiColor_ScaleValue, eKxVorGuiColor_ScaleRest};
    bool lineOfScheme = true;
    bool minimumHovered = false;
    bool maximumHovered = false;
    Thumb thumb = Thumb::Minimum;  // held, or moved by keys
    int mouseX = 0;
    long minimumPos = 0;
    long maximumPos = 0;
    kx::hpot::Track track;
    long thumbSize = -1;
    RECT strip{};  // of the scale that was drawn last
    kx::hpot::Granularity granularity;

    SliderPart* Part() const { return kx::hpot::PartOf<SliderPart>(m_Instances, slider.m_hWnd); }
    kx::hpot::Nominal Size() { return {slider.m_width, slider.m_height, thumbSize}; }
    bool OwnerHasRange() const { return owner && owner->IsRange(); }
    long& PositionOf(Thumb which) { return which == Thumb::Minimum ? minimumPos : maximumPos; }
    RECT ThumbRect(long position) const { return kx::hpot::ThumbPlace({0, 0}, position, track.length, track.image); }

    // ---- For kx::hpot::Slider ----

    bool IsUsable() const {
        return slider.m_enabled && (!slider.m_hWnd || IsWindowEnabled(slider.m_hWnd)) && !scale.values.empty();
    }
    void Sized() { Place(); }
    void Place();
    void LookChanged() {
        ScaleChanged();
        slider.Redraw();
    }
    void OnPaint(const kx::ui::Message& message) { slider.OnPaint(message); }
    kx::ui::Handled OnKey(WPARAM key);
    void MoveBy(const KeyMove& move);
    LRESULT KeysWanted(const MSG* key) const;
    void FocusChanged(bool focused);
    void Grab(POINT at) {
        HoverAt(at.x);
        thumb = minimumHovered ? Thumb::Minimum : Thumb::Maximum;
    }
    long& Position() { return PositionOf(thumb); }
    RECT ThumbRect() { return ThumbRect(Position()); }
    long TrackLeft() const { return track.left; }
    void ShowThumbs() { slider.Redraw(); }
    void PutBack() { slider.UpdatePixelsFromValues(); }
    void Hover(const kx::ui::Message& message);
    void OnMouseLeave(const kx::ui::Message& message) {
        kx::ui::TrackHover(message);
        slider.SetHover(false, false);
    }
    bool Drop(const Watch&);
    void Tell(KxAccess& access);
    void TellValues();
    void ButtonUp() {
        if (owner) owner->OnLeftButtonUp();
    }

    // ---- The thumbs' own ----

    void HoverAt(int x);
    void HoldInOwner(const Range& held) {
        if (OwnerHasRange()) owner->m_range = held;
    }
    bool Ask(const Range& wanted);
    void Take(const Range& taken) {
        range = taken;
        slider.Update(true, false, true);
    }
    void MoveThumb(Thumb which, int steps);
    void LineChanged();
};

void RangeThumbs::Inside::Tell(KxAccess& access) {
    access.role = ROLE_SYSTEM_GROUPING;
    access.parts = 2;
    access.part = [this](long number) {
        const Thumb which = number == 1 ? Thumb::Minimum : Thumb::Maximum;
        const bool lower = which == Thumb::Minimum, focused = thumb == which && GetFocus() == slider.m_hWnd;
        KxAccess part;
        part.role = ROLE_SYSTEM_SLIDER;
        part.name = KX_GetTranslation(lower ? L"Lower end" : L"Upper end", kSource);
        part.value = KX_FormatNumber(L"%g", lower ? range.minimum.value : range.maximum.value);
        part.place = ThumbRect(lower ? minimumPos : maximumPos);
        part.state = STATE_SYSTEM_FOCUSABLE | (focused ? STATE_SYSTEM_FOCUSED : 0);
        part.setValue = [this, which](const CKxStringW& text) {
            double value = 0;
            if (!KX_StringToDouble(text, value) || !IsUsable()) return false;
            const auto [least, most] = std::minmax_element(scale.values.begin(), scale.values.end());
            if (!(value >= *least && value <= *most)) return false;
            const auto& held = which == Thumb::Minimum ? range.minimum : range.maximum;
            const int steps = kx::hpot::NearestEntry(scale, value) - held.index;
            if (steps != 0) MoveThumb(which, steps);
            return true;
        };
        return part;
    };
}

ATOM RangeThumbs::m_Atom = 0;
std::map<HWND, RangeThumbs*> RangeThumbs::m_Instances;

RangeThumbs::CKxDevUI_ColorSliderRangeHPot() : CKxDevUI_ColorSliderRangeHPot(nullptr) {}

RangeThumbs::CKxDevUI_ColorSliderRangeHPot(CKxDevUI_ColorSlider* owner)
    : m_inside(std::make_unique<Inside>(*this, owner)) {}

RangeThumbs::~CKxDevUI_ColorSliderRangeHPot() { kx::ui::Binding::EndOwnWindow(this); }

// ---- The window ----------------------------------------------------------------------------------------------------

HWND RangeThumbs::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::hpot::Create(this, m_Atom, kx::hpot::SpecOf(kClass, kClass, WndProc), m_inside->Size(), parent, {x, y},
                            {cx, cy});
}

void RangeThumbs::Destroy() { kx::ui::Binding::EndWindow(this); }

void RangeThumbs::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    if (m_hWnd) EnableWindow(m_hWnd, enable);
}

void RangeThumbs::SetSize(long cx, long cy, long thumb) {
    kx::hpot::SetSize(m_hWnd, m_inside->Size(), cx, cy, thumb);
    m_inside->Place();
}

void RangeThumbs::ResizeWindow(long cx, long cy) {
    kx::hpot::ResizeWindow(*this, m_inside->Size(), cx, cy);
    m_inside->Place();
}

void RangeThumbs::Inside::Place() {
    const auto now = kx::hpot::TrackIn(slider.m_hWnd, thumbSize, slider.m_height);
    if (!now) return;
    track = *now;
    slider.UpdatePixelsFromValues();
    LookChanged();
}

// ---- Values --------------------------------------------------------------------------------------------------------

void RangeThumbs::InitValues(double* values, int count) {
    kx::hpot::Scale& scale = m_inside->scale;
    scale.values.clear();
    for (int i = 0; values && i < count; ++i) {
        if (std::isfinite(values[i])) scale.values.push_back(values[i]);
    }
    const auto taken = static_cast<int>(scale.values.size());
    if (values && taken < count) KX_LOG(kSource, L"%d values of a range are no finite numbers", count - taken);
    scale.minimum = taken > 0 ? scale.values.front() : 0;
    scale.maximum = taken > 0 ? scale.values.back() : 0;
    // The values held stay; their entries have changed.
    if (taken > 0) SetRange(m_inside->range.minimum.value, m_inside->range.maximum.value);
    RecreateScale();
}

void RangeThumbs::InitLineDraw(CKxDevUI_ColorSlider* owner, unsigned long lowColor, unsigned long highColor,
                               bool scheme) {
    m_inside->owner = owner;
    m_inside->line[0] = lowColor;
    m_inside->line[1] = highColor;
    m_inside->lineOfScheme = scheme;
    m_inside->LookChanged();
}

void RangeThumbs::SetRange(double minimum, double maximum) {
    if (m_inside->scale.values.empty() || std::isnan(minimum) || std::isnan(maximum)) return;
    Take(kx::colorslider::Snapped(minimum, maximum, m_inside->scale.values));
}

void RangeThumbs::GetRange(double* minimum, double* maximum) const {
    if (minimum) *minimum = m_inside->range.minimum.value;
    if (maximum) *maximum = m_inside->range.maximum.value;
}

void RangeThumbs::Take(const Range& range) { m_inside->Take(range); }

void RangeThumbs::UpdatePixelsFromValues() {
    const auto at = [in = m_inside.get()](double value) {
        return kx::hpot::ValueToThumbPos(in->scale, value, static_cast<int>(in->track.length));
    };
    m_inside->minimumPos = at(m_inside->range.minimum.value);
    m_inside->maximumPos = at(m_inside->range.maximum.value);
}

void RangeThumbs::UpdateValuesFromPixels() {
    Inside& in = *m_inside;
    if (in.scale.values.empty()) return;
    const auto raw = [&in](long position) {
        const long length = in.track.length, onTrack = std::clamp(position, 0L, std::max(length, 0L));
        return kx::hpot::ThumbPosToRaw(in.scale, static_cast<int>(onTrack), static_cast<int>(length));
    };
    const Range found = kx::colorslider::Snapped(raw(in.minimumPos), raw(in.maximumPos), in.scale.values);
    const auto [minimumPos, maximumPos] = std::pair{in.minimumPos, in.maximumPos};
    UpdatePixelsFromValues();
    // A thumb that has not moved keeps its entry: the one nearest to its pixel may be another.
    if (minimumPos != in.minimumPos) in.range.minimum = found.minimum;
    if (maximumPos != in.maximumPos) in.range.maximum = found.maximum;
    UpdatePixelsFromValues();
}

void RangeThumbs::Update(bool fromValues, bool notify, bool redraw) {
    if (!fromValues) {
        Range& range = m_inside->range;
        const Range held = range;
        UpdateValuesFromPixels();
        const bool isNew = range.minimum.value != held.minimum.value || range.maximum.value != held.maximum.value;
        if (notify && isNew) {
            const Range wanted = std::exchange(range, held);
            if (!m_inside->Ask(wanted)) return;
        }
    }
    UpdatePixelsFromValues();
    m_inside->TellValues();
    m_inside->LineChanged();
    if (redraw) Redraw();
}

void RangeThumbs::Inside::TellValues() {
    const Range before = std::exchange(told, range);
    if (before.minimum.value != range.minimum.value) KX_TellAccess(slider, EVENT_OBJECT_VALUECHANGE, 1);
    if (before.maximum.value != range.maximum.value) KX_TellAccess(slider, EVENT_OBJECT_VALUECHANGE, 2);
}

// Tells of the range that a thumb asks for, then takes what the host has made of it. False when the control is gone.
bool RangeThumbs::Inside::Ask(const Range& wanted) {
    const Watch watch(&slider);
    double minimum = wanted.minimum.value, maximum = wanted.maximum.value;
    // A host that asks is told what is wanted.
    HoldInOwner(wanted);
    CKxDevUI_ColorSlider* const asked = owner;
    const kx::ui::Alive ownerLives(static_cast<CKxDevUI_Base*>(asked));
    slider.OnRangeChanged(minimum, maximum);
    if (!watch) {
        if (ownerLives) asked->m_range = Ordered(asked->m_range, GivesWay::Minimum);
        return false;
    }
    if (scale.values.empty() || std::isnan(minimum) || std::isnan(maximum)) {
        HoldInOwner(range);
        return true;
    }
    range = Ordered(kx::colorslider::Snapped(minimum, maximum, scale.values), GivesWay::Minimum);
    if (OwnerHasRange()) owner->ShowRange(range);
    return static_cast<bool>(watch);
}

void RangeThumbs::OnRangeChanged(double& minimum, double& maximum) {
    if (m_inside->owner) m_inside->owner->OnRangeChanged(minimum, maximum);
}

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

void RangeThumbs::SetMouseWheelGranularity(int ctrl, int plain, int shift) {
    m_inside->granularity = {ctrl, plain, shift};
}

void RangeThumbs::GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const {
    m_inside->granularity.Get(ctrl, plain, shift);
}

// One thumb, and the other if it is met; told when it has happened.
void RangeThumbs::Inside::MoveThumb(Thumb which, int steps) {
    const Watch watch(&slider);
    Take(kx::colorslider::MovedRange(range, which, steps, scale.values));
    if (OwnerHasRange()) owner->ShowRange(range);
    if (!watch) return;
    double minimum = range.minimum.value, maximum = range.maximum.value;
    slider.OnRangeChanged(minimum, maximum);
}

bool RangeThumbs::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    if (GET_WHEEL_DELTA_WPARAM(wParam) == 0 || !m_inside->IsUsable() || !GetHover()) return false;
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(m_hWnd, &at);
    m_inside->mouseX = at.x;
    m_inside->MoveThumb(m_inside->minimumHovered ? Thumb::Minimum : Thumb::Maximum,
                        kx::hpot::WheelSteps(m_inside->granularity, wParam));
    return true;
}

kx::ui::Handled RangeThumbs::Inside::OnKey(WPARAM key) {
    if (key != VK_TAB) return MoveByKey(key);
    thumb = thumb == Thumb::Minimum ? Thumb::Maximum : Thumb::Minimum;
    slider.Redraw();
    KX_ShowFocusFromNowOn(slider);
    return 0;
}

void RangeThumbs::Inside::MoveBy(const KeyMove& move) {
    const auto count = static_cast<int>(scale.values.size());
    const int size = move.size == KeyMove::End    ? count
                     : move.size == KeyMove::Page ? std::max(1, count / 10)
                                                  : kx::hpot::Chosen(granularity, 0);
    const int steps = move.direction * size;
    const Range moved = kx::colorslider::MovedRange(range, thumb, steps, scale.values);
    const bool isNew = moved.minimum.index != range.minimum.index || moved.maximum.index != range.maximum.index;
    if (isNew) MoveThumb(thumb, steps);
}

// Tab stays inside on its way from the first thumb to the second, and back.
LRESULT RangeThumbs::Inside::KeysWanted(const MSG* key) const {
    if (!key || key->message != WM_KEYDOWN || key->wParam != VK_TAB) return 0;
    return thumb == (GetKeyState(VK_SHIFT) < 0 ? Thumb::Maximum : Thumb::Minimum) ? DLGC_WANTTAB : 0;
}

// Who comes by Tab comes to the first thumb of the way.
void RangeThumbs::Inside::FocusChanged(bool focused) {
    if (focused && GetKeyState(VK_TAB) < 0) thumb = GetKeyState(VK_SHIFT) < 0 ? Thumb::Maximum : Thumb::Minimum;
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

void RangeThumbs::SetHover(bool minimum, bool maximum) {
    if (minimum == m_inside->minimumHovered && maximum == m_inside->maximumHovered) return;
    m_inside->minimumHovered = minimum;
    m_inside->maximumHovered = maximum && !minimum;
    Redraw();
}

bool RangeThumbs::GetHover() const { return m_inside->minimumHovered || m_inside->maximumHovered; }

void RangeThumbs::Inside::HoverAt(int x) {
    mouseX = x;
    const Thumb nearer = kx::colorslider::ThumbFor(x - track.left, minimumPos, maximumPos, track.length);
    slider.SetHover(nearer == Thumb::Minimum, nearer == Thumb::Maximum);
}

void RangeThumbs::Inside::Hover(const kx::ui::Message& message) {
    kx::ui::TrackHover(message);
    const auto state = kx::ui::FindState(slider.m_hWnd);
    if (state && state->hovered) HoverAt(GET_X_LPARAM(message.lParam));
}

bool RangeThumbs::Inside::Drop(const Watch&) {
    if (!Ask(range)) return false;
    slider.Update(true, false, true);
    return true;
}

void RangeThumbs::OnLButtonDown(POINT at) { m_inside->OnLButtonDown(at); }
void RangeThumbs::OnLButtonUp(POINT at) { m_inside->OnLButtonUp(at); }
void RangeThumbs::OnMouseMove(const kx::ui::Message& message) { m_inside->OnMouseMove(message); }
void RangeThumbs::OnMouseLeave(const kx::ui::Message& message) { m_inside->OnMouseLeave(message); }

// ---- Painting ------------------------------------------------------------------------------------------------------

// All else on the scale stands still while the range moves, and takes much longer to draw.
void RangeThumbs::Inside::LineChanged() {
    const SliderPart* part = Part();
    if (!part || part->scale.stale || !part->scale.dc || !IsWindowEnabled(slider.m_hWnd)) return ScaleChanged();
    slider.RenderLineDrawRangeRect(part->scale.dc.get(), static_cast<int>(strip.left), static_cast<int>(strip.top),
                                   static_cast<int>(strip.right - strip.left),
                                   static_cast<int>(strip.bottom - strip.top));
}

void RangeThumbs::Redraw() {
    if (const SliderPart* part = m_inside->Part())
        RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | part->RedrawFlags());
}

void RangeThumbs::RecreateScale() {
    CreateBitmaps(true);
    Redraw();
}

void RangeThumbs::CreateBitmaps(bool anew) {
    SliderPart* part = m_inside->Part();
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
    const Inside& in = *m_inside;
    const long nominal = in.owner ? in.owner->m_sliderHeight : m_height / 3;
    const long height =
        std::clamp(CKxGUILayoutManager::Zoomed(static_cast<double>(nominal)), 0L, canvas.Client().bottom);
    const Rows rows =
        RowsOf(in.ThumbRect(0), in.track.left, in.track.length, height, canvas.Client().bottom, canvas.Font());
    const RECT& strip = m_inside->strip = rows.track;
    RenderLineDrawRangeRect(canvas, static_cast<int>(strip.left), static_cast<int>(strip.top),
                            static_cast<int>(strip.right - strip.left), static_cast<int>(strip.bottom - strip.top));
    if (!enabled) kx::colorslider::Fade(canvas, {strip.left - 2, strip.top - 2, strip.right + 2, strip.bottom + 2});
    static const std::vector<SColorSliderValue> none;
    kx::colorslider::DrawMarks(canvas, in.scale, in.owner ? in.owner->m_marks : none, rows, enabled);
    return canvas.Release();
}

void RangeThumbs::RenderLineDrawRangeRect(HDC dc, int x, int y, int w, int h) {
    const COLORREF inside = kx::hpot::NamedColor(m_inside->line[0], m_inside->lineOfScheme);
    const COLORREF outside = kx::hpot::NamedColor(m_inside->line[1], m_inside->lineOfScheme);
    const auto [left, right] = std::minmax(m_inside->minimumPos, m_inside->maximumPos);
    // A thumb may stand beyond all pixels.
    using kx::ui::Sum;
    kx::colorslider::DrawLine(dc, {x, y, x + w, y + h},
                              {{x, outside}, {Sum(x, left), inside}, {Sum(x, right), outside}}, false);
}

void RangeThumbs::OnPaint(const kx::ui::Message& message) {
    using namespace kx::hpot;
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    CreateBitmaps(false);
    Inside& in = *m_inside;
    const SliderPart* part = in.Part();
    if (!part) return;
    const auto draw = [&](HDC dc, Thumb thumb) {
        const bool hovered = thumb == Thumb::Minimum ? in.minimumHovered : in.maximumHovered;
        const auto look = !enabled                                 ? kLookDisabled
                          : part->drag.active && thumb == in.thumb ? kLookDragged
                          : hovered                                ? kLookHovered
                                                                   : kLookNormal;
        const RECT at = in.ThumbRect(in.PositionOf(thumb));
        DrawThumb(dc, {at.left, at.top},
                  StyleOf(in.track.image, look, thumb == in.thumb && in.ShowsFocus(),
                          CKxDevUI_ColorSliderHPot::m_pDefaultColors));
    };
    kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT&) {
        part->scale.CopyTo(dc);
        // The one in use is above the other.
        draw(dc, in.thumb == Thumb::Minimum ? Thumb::Maximum : Thumb::Minimum);
        draw(dc, in.thumb);
    });
}

// ---- Routing -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK RangeThumbs::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return Entry<RangeThumbs, ByInstances<RangeThumbs, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &RangeThumbs::Handle>({window, message, wParam, lParam});
}

kx::ui::Handled RangeThumbs::Handle(const kx::ui::Message& message) { return m_inside->Handle(message); }
