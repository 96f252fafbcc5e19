// What is inside of the colour slider, and where it stands.
#include <kxdevui/light/devgui_colorslider.h>

#include <algorithm>
#include <array>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_translation.h>

namespace {

void PlaceAt(HWND window, const kx::colorslider::Place& at) {
    if (window) SetWindowPos(window, nullptr, at.x, at.y, at.cx, at.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

// Shows the control, or hides it and takes its id away, which may be that of another part now.
void Use(CKxDevUI_Base& control, int id, bool wanted) {
    control.SetId(wanted ? id : 0);
    if (control) SetWindowLongPtrW(control, GWLP_ID, wanted ? id : 0);
    control.SetVisible(wanted);
}

}  // namespace

// The width that the layout counts with, whatever zoom and weight the text is shown in.
int CKxDevUI_ColorSlider::TextWidth(const CKxStringW& text) {
    if (text.IsEmpty()) return 0;
    const kx::ui::WindowDC screen(nullptr);
    const kx::ui::Selection font(screen, KX_GetDefaultGuiFontZoom(1.0));
    RECT box{0, 0, 9999, 9999};
    DrawTextW(screen, text, -1, &box, DT_CALCRECT | DT_NOPREFIX);
    return box.right - box.left;
}

void CKxDevUI_ColorSlider::LayOut() {
    m_layout = kx::colorslider::LayOut({.type = m_type,
                                        .layout = m_layoutType,
                                        .sliderWidth = m_sliderWidth,
                                        .sliderHeight = m_sliderHeight,
                                        .nameTextWidth = m_nameTextWidth,
                                        .unitTextWidth = m_unitTextWidth,
                                        .showEdit = m_showEdit,
                                        .editWidth = m_editWidth,
                                        .editHeight = m_editHeight,
                                        .editAtPosition = m_editAtPosition,
                                        .editX = m_editX,
                                        .editY = m_editY});
}

LRESULT CKxDevUI_ColorSlider::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    m_nameLabel = m_unitLabel = nullptr;
    m_requests->Attach(m_hWnd);
    LayOut();
    const kx::ui::Alive alive(static_cast<CKxDevUI_Base*>(this));
    Arrange();
    if (alive && m_hWnd) m_requests->Show();
    return CKxDevUI_Container::OnInit(message, wParam, lParam);
}

// Makes what is wanted and not there, hides what is there and not wanted, and places everything.
void CKxDevUI_ColorSlider::Arrange() {
    const kx::ui::Alive alive(static_cast<CKxDevUI_Base*>(this));
    ArrangeLabels();
    ArrangeThumbs();
    // The rest tells of itself as it is made and filled, which a host may hear.
    if (alive) ArrangeEdits();
    if (!alive) return;
    if (m_tabStop) ArrangeTabStops();
    // All of it was laid out in unzoomed pixels.
    kx::ui::RegisterZoom(m_hWnd);
    SetFonts();
    RescueFocus();
}

// What is hidden keeps the focus, and keys would go on working it. An edit is left in silence: nothing has been typed.
void CKxDevUI_ColorSlider::RescueFocus() {
    const HWND focus = ::GetFocus();
    if (!focus || !IsChild(m_hWnd, focus) || !IsWindowVisible(m_hWnd) || IsWindowVisible(focus)) return;
    const HWND edit = focus == m_edit.GetEditWindow() || focus == m_minimumEdit.GetEditWindow() ? focus : nullptr;
    const kx::ui::Closing silent(edit ? GetParent(edit) : nullptr);
    ::SetFocus(IsRange() ? HWND{m_rangeHPot} : HWND{m_hpot});
}

void CKxDevUI_ColorSlider::ArrangeThumbs() {
    const auto& at = m_layout.thumb;
    CKxDevUI_Base& thumb = IsRange() ? static_cast<CKxDevUI_Base&>(m_rangeHPot) : m_hpot;
    Use(m_hpot, eColorSliderId_HPot, !IsRange());
    Use(m_rangeHPot, eColorSliderId_HPot, IsRange());
    if (IsRange()) {
        m_rangeHPot.SetSize(at.cx, at.cy, m_layout.thumbSize);
    } else {
        m_hpot.SetSize(at.cx, at.cy, m_layout.thumbSize);
        m_hpot.SetHover(true);
    }
    if (thumb) return PlaceAt(thumb, at);
    thumb.SetEnabled(m_enabled);
    if (!thumb.Create(m_hWnd, at.x, at.y, -1, -1, true, true)) return;
    InsertElement(&thumb);
    if (!IsRange()) kx::ui::Subclass(m_hpot, HPotProc, static_cast<CKxDevUI_Base*>(this));
    BeginThumbs();
}

void CKxDevUI_ColorSlider::SetTabStop(bool stop) {
    m_tabStop = stop;
    ArrangeTabStops();
}

// A dialog looks for stops in windows that say that they are parents of controls.
void CKxDevUI_ColorSlider::ArrangeTabStops() {
    kx::ui::SetStyleBit(m_hWnd, GWL_EXSTYLE, WS_EX_CONTROLPARENT, m_tabStop);
    CKxDevUI_Base::SetTabStop(!m_tabStop);
    m_hpot.SetTabStop(m_tabStop);
    m_rangeHPot.SetTabStop(m_tabStop);
}

// A thumb that is new shows nothing yet, whatever power is held; a range begins as wide as can be.
void CKxDevUI_ColorSlider::BeginThumbs() {
    if (!IsRange()) {
        m_hpot.m_held = {0, kx::hpot::NearestEntry(m_hpot.m_scale, 0)};
        m_hpot.m_thumbPos = m_hpot.ValueToThumbPos(0);
    } else if (!m_values.empty()) {
        const auto last = static_cast<int>(m_values.size()) - 1;
        m_range = {{m_values.front(), 0}, {m_values.back(), last}};
        m_rangeHPot.Take(m_range);
    }
}

void CKxDevUI_ColorSlider::ArrangeEdit(CKxDevUI_EditBox& edit, int id, const kx::colorslider::Place& place) {
    Use(edit, id, place.IsWanted());
    if (!place.IsWanted()) return;
    edit.SetSize(0, place.cx, place.cy);
    edit.SetUnit(m_unit);
    edit.SetOfSlider(true);
    // A table may be in any order.
    const auto [least, most] = std::minmax_element(m_values.begin(), m_values.end());
    if (!m_values.empty()) edit.SetRestriction(*least, *most);
    if (edit) return PlaceAt(edit, place);
    edit.Init(false, false, false);
    edit.SetStyle(true);
    edit.SetEnabled(m_enabled);
    if (edit.Create(m_hWnd, place.x, place.y, -1, -1, true, true)) InsertElement(&edit);
}

void CKxDevUI_ColorSlider::ArrangeEdits() {
    const kx::ui::Alive alive(static_cast<CKxDevUI_Base*>(this));
    const bool isNew = !m_minimumEdit;
    // Beside each other without a label.
    m_minimumEdit.SetTitle(KX_GetTranslation(L"Lower end", L"devgui_colorslider"));
    if (IsRange()) m_edit.SetTitle(KX_GetTranslation(L"Upper end", L"devgui_colorslider"));
    ArrangeEdit(m_minimumEdit, eColorSliderId_MinimumEdit, m_layout.minimumEdit);
    ArrangeEdit(m_edit, eColorSliderId_Edit, m_layout.edit);
    Use(m_spin, eColorSliderId_Spin, m_layout.spin.IsWanted());
    if (m_layout.spin.IsWanted()) {
        if (!m_spin) {
            const auto& at = m_layout.spin;
            m_spin.SetEnabled(m_enabled);
            if (m_spin.Create(m_hWnd, at.x, at.y, at.cx, at.cy, true, true)) InsertElement(&m_spin);
        }
        const auto count = static_cast<int>(m_values.size());
        m_spin.SetRange(count > 0 ? m_values.front() : 0, count > 0 ? m_values.back() : 0, std::max(count, 1));
        m_spin.SetPosition(m_spin.PositionOf(m_hpot.GetValue()));
        PlaceAt(m_spin, m_layout.spin);
    }
    if (IsRange()) {
        // What a new range shows: all of the table, but for a minimum of which nothing is known yet.
        m_minimumEdit.SetNumber(isNew ? 0 : m_range.minimum.value, m_numberFormat, false);
        if (alive && !m_values.empty()) m_edit.SetNumber(m_range.maximum.value, m_numberFormat, false);
    } else {
        m_edit.SetNumber(m_hpot.GetValue(), m_numberFormat, false);
    }
}

// ---- Labels --------------------------------------------------------------------------------------------------------

HWND CKxDevUI_ColorSlider::ArrangeLabel(HWND label, int id, const kx::colorslider::Place& place, const CKxStringW& text,
                                        LONG type) {
    // Names may hold "&", which is no mark here.
    const LONG kind = type | SS_NOPREFIX;
    if (!label && place.IsWanted()) {
        const DWORD style = WS_CHILD | WS_VISIBLE | (m_enabled ? 0u : WS_DISABLED) | static_cast<DWORD>(kind);
        label = CreateWindowExW(0, L"STATIC", text, style, place.x, place.y, place.cx, place.cy, m_hWnd,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), kx::ui::ModuleOf(WndProc), nullptr);
        InsertWindow(label);
    } else if (label) {
        ShowWindow(label, place.IsWanted() ? SW_SHOWNA : SW_HIDE);
        const LONG others = GetWindowLongW(label, GWL_STYLE) & ~LONG{SS_TYPEMASK | SS_ENDELLIPSIS};
        SetWindowLongW(label, GWL_STYLE, others | kind);
        SetWindowTextW(label, text);
        PlaceAt(label, place);
        InvalidateRect(label, nullptr, FALSE);
    }
    return label;
}

void CKxDevUI_ColorSlider::ArrangeLabels() {
    const bool isOneRow = m_layout.nameColumn >= 0;
    // A name stays on its line. In its own column it is as wide as its text at zoom 1, of which another zoom's may lack
    // a pixel: that is cut, where an ellipsis would cost letters.
    const LONG oneLine = isOneRow ? LONG{SS_LEFTNOWORDWRAP} : SS_LEFT | SS_ENDELLIPSIS;
    m_nameLabel =
        ArrangeLabel(m_nameLabel, eColorSliderId_Name, m_layout.name, m_name, HasPoint() ? LONG{SS_SIMPLE} : oneLine);
    if (m_nameLabel && HasPoint()) {
        kx::ui::Subclass(m_nameLabel, NameWndProc, static_cast<CKxDevUI_Base*>(this));
    }
    m_unitLabel = ArrangeLabel(m_unitLabel, eColorSliderId_Unit, m_layout.unit, m_unit,
                               isOneRow ? LONG{SS_LEFTNOWORDWRAP} : LONG{SS_RIGHT});
}

void CKxDevUI_ColorSlider::SetFonts() {
    const HFONT plain = KX_GetDefaultGuiFont(), name = m_nameBold ? KX_GetDefaultGuiFontBold() : plain;
    for (const auto& [label, font] : {std::pair{m_unitLabel, plain}, std::pair{m_nameLabel, name}}) {
        if (label) SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
}

LRESULT CKxDevUI_ColorSlider::OnCtlColorStatic(UINT, WPARAM wParam, LPARAM lParam) {
    const bool enabled = IsWindowEnabled(reinterpret_cast<HWND>(lParam)) != FALSE;
    SetTextColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_BTNFACE));
}

LRESULT CALLBACK CKxDevUI_ColorSlider::NameWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return kx::ui::SubclassEntry<CKxDevUI_ColorSlider, &CKxDevUI_ColorSlider::HandleName>(
        {window, message, wParam, lParam});
}

kx::ui::Handled CKxDevUI_ColorSlider::HandleName(const kx::ui::Message& message) {
    if (!HasPoint()) return std::nullopt;
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
        kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_3DFACE),
                      [this](HDC dc, const RECT& area) { PaintName(dc, area); });
        // Nothing is left to paint for the procedure that gets it then, unless it has a DC to do so, or the look has
        // changed meanwhile.
        return message.wParam == 0 && !GetUpdateRect(message.window, nullptr, FALSE) ? std::nullopt
                                                                                     : kx::ui::Handled(0);
    case WM_ERASEBKGND: return 1;
    case WM_ENABLE:
    case WM_SETFONT:
    case WM_SETTEXT: {
        // At these the platform's label paints without waiting for WM_PAINT.
        const LRESULT result = kx::ui::CallPrevious(message);
        InvalidateRect(message.window, nullptr, FALSE);
        return result;
    }
    default: return std::nullopt;
    }
}

void CKxDevUI_ColorSlider::PaintName(HDC dc, const RECT& area) const {
    const bool enabled = IsWindowEnabled(m_nameLabel) != FALSE;
    const kx::ui::Selection font(dc, m_nameBold ? KX_GetDefaultGuiFontBold() : KX_GetDefaultGuiFont());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    RECT text{area.bottom, area.top, area.right, area.bottom};
    DrawTextW(dc, CKxStringW(L"  ") + m_name, -1, &text, DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);

    const long size = area.bottom - 4, left = size / 2, top = (area.bottom - size) / 2;
    CKxStringA color, point;
    color.Format(6, "%02X%02X%02X", GetRValue(m_pointColor), GetGValue(m_pointColor), GetBValue(m_pointColor));
    point.Format(200,
                 "<svg version=\"1.2\" viewBox=\"0 0 10 10\" > <circle cx=\"5\" cy=\"5\" r=\"4\" stroke=\"#000000\" "
                 "fill=\"#%s\" /> </svg>",
                 color.c_str());
    CKxBitmapPool::DrawSVGImage(dc, point, {left, top, left + size, top + size}, enabled);
}

// ---- The life of requests ------------------------------------------------------------------------------------------

void CKxDevUI_ColorSlider::ShowRequests() {
    KX_UpdateToolTipWindow(IsRange() ? HWND{m_rangeHPot} : HWND{m_hpot}, m_requests->Remark());
    InvalidateRect(m_hWnd, nullptr, TRUE);
    m_hpot.Redraw();
}

// Under the edit box, beside which the thumb control ends, or else in the corner that it leaves free.
RECT CKxDevUI_ColorSlider::SignPlace() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long side = kx::ui::Activity::SignSide(), gap = CKxGUILayoutManager::Zoomed(1);
    if (m_layout.nameColumn >= 0 && HWND{m_edit} && m_layout.edit.IsWanted()) {
        const RECT edit = RectInParent(m_edit);
        return {edit.right - side, edit.bottom + gap, edit.right, edit.bottom + gap + side};
    }
    return {client.right - 2 * gap - side, client.bottom - 2 * gap - side, client.right - 2 * gap,
            client.bottom - 2 * gap};
}

// ---- The thumb control in the row ----------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ColorSlider::HPotProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return kx::ui::SubclassEntry<CKxDevUI_ColorSlider, &CKxDevUI_ColorSlider::HandleHPot>(
        {window, message, wParam, lParam});
}

// One entry is little for a page.
kx::ui::Handled CKxDevUI_ColorSlider::HandleHPot(const kx::ui::Message& message) {
    if (message.id != WM_KEYDOWN || (message.wParam != VK_PRIOR && message.wParam != VK_NEXT)) return std::nullopt;
    const int page = std::max(1, static_cast<int>(m_values.size()) / 10);
    m_hpot.MoveBy(message.wParam == VK_PRIOR ? page : -page);
    return 0;
}

void CKxDevUI_ColorSlider::GetHPotRect(RECT* rect) const {
    if (rect) *rect = RectInParent(m_hpot);
}

void CKxDevUI_ColorSlider::GetHPotRectRange(RECT* rect) const {
    if (rect) *rect = RectInParent(m_rangeHPot);
}

int CKxDevUI_ColorSlider::MoveParts(const CKxDevUI_Base& thumb, int x, std::initializer_list<HWND> others) {
    if (!thumb) return 0;
    const long offset = kx::ui::Difference(x, RectInParent(thumb).left);
    if (offset == 0) return 0;
    const auto move = [offset](HWND window) {
        const RECT at = RectInParent(window);
        ::MoveWindow(window, kx::ui::Sum(at.left, offset), at.top, at.right - at.left, at.bottom - at.top, TRUE);
    };
    move(thumb);
    for (const HWND each : others) {
        if (each) move(each);
    }
    // On their way they have been copied over each other.
    RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    // Moved on the screen: whoever lays out unzoomed pixels later must not take these for such.
    CKxGUILayoutManager::RememberWindowDimsForGuiZoom(m_hWnd);
    return static_cast<int>(offset);
}

int CKxDevUI_ColorSlider::SetHPotLeft(int x) { return MoveParts(m_hpot, x, {m_edit, m_spin, m_unitLabel}); }

int CKxDevUI_ColorSlider::SetHPotLeftRange(int x) {
    return MoveParts(m_rangeHPot, x, {m_minimumEdit, m_edit, m_unitLabel});
}
