// The labels of the Z stack panel, whose rectangles are too short for some texts at some zooms.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_translation.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

using namespace kx::ui;
using kx::zstack::ShownOf;

namespace {

// A label with what stands on its line to the left and to the right; 0 where there is nothing.
constexpr struct {
    int label, left, right;
} kLabels[] = {{IDC_ZS_STEP_LABEL, 0, IDC_ZS_EDIT_STEP},
               {IDC_ZS_STEP_UNIT, IDC_ZS_EDIT_STEP, IDC_ZS_SUGGESTED},
               {IDC_ZS_STEPS_LABEL, IDC_ZS_EDIT_STEPS, 0},
               {IDC_ZS_BELOW_LABEL, 0, IDC_ZS_EDIT_BELOW},
               {IDC_ZS_BELOW_UNIT, IDC_ZS_EDIT_BELOW, IDC_ZS_READOUT_LABEL},
               {IDC_ZS_READOUT_LABEL, IDC_ZS_BELOW_UNIT, IDC_ZS_EDIT_ABOVE},
               {IDC_ZS_ABOVE_UNIT, IDC_ZS_EDIT_ABOVE, 0},
               {IDC_ZS_RANGE_LABEL, 0, IDC_ZS_EDIT_RANGE},
               {IDC_ZS_RANGE_UNIT, IDC_ZS_EDIT_RANGE, IDC_ZS_READOUT},
               {IDC_ZS_READOUT, IDC_ZS_RANGE_UNIT, 0},
               {IDC_ZS_DEVICE_LABEL, 0, IDC_ZS_DEVICE}};
static_assert(std::size(kLabels) == std::tuple_size_v<decltype(kx::zstack::Shown::labels)>);

long WidthOf(HDC dc, HWND label) {
    wchar_t text[64] = L"";
    GetWindowTextW(label, text, static_cast<int>(std::size(text)));
    const std::wstring_view seen(text);
    SIZE size{};
    // The blank at the end of "µm " may be cut.
    GetTextExtentPoint32W(dc, text, static_cast<int>(seen.find_last_not_of(L' ') + 1), &size);
    // The strokes of a font in a size that it was not made for stand out of what it says that it takes.
    return size.cx + (CKxGUILayoutManager::GetGuiZoom() == 1.0 ? 0 : CKxGUILayoutManager::Zoomed(2));
}

// Grows by `extra` towards where the text would go on, then the other way, between the limits.
void Widen(RECT& rect, long extra, bool rightAligned, long left, long right) {
    const auto growLeft = [&] {
        const long by = std::clamp(rect.left - left, 0L, extra);
        rect.left -= by;
        extra -= by;
    };
    if (rightAligned) growLeft();
    const long by = std::clamp(right - rect.right, 0L, extra);
    rect.right += by;
    extra -= by;
    growLeft();
}

// To a rectangle that the layout manager would give it too: it counts in whole unzoomed pixels.
void Align(RECT& rect) {
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    const auto zoomed = [](double unzoomed) { return CKxGUILayoutManager::Zoomed(unzoomed); };
    rect.left = zoomed(std::floor(static_cast<double>(rect.left) / zoom));
    rect.right = rect.left + zoomed(std::ceil(static_cast<double>(rect.right - rect.left) / zoom));
}

}  // namespace

// ---- For the ear ---------------------------------------------------------------------------------------------------

// What has a label before it is called by that.
Handled CKxDevUI_ZStack::Tell(const Message& message) {
    const auto translated = [](const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); };
    const auto told = DescribePart(message, [&](HWND part, KxAccess& access) {
        const int id = GetDlgCtrlID(part);
        const auto type = [&](const wchar_t* text, auto isType) {
            int now = 0;
            const bool is = kx::zstack::Ask([&] { return m_data->GetType(&now); }) == eKxZStack_Ok && isType(now);
            access.role = ROLE_SYSTEM_RADIOBUTTON;
            access.name = translated(text);
            access.state = is ? STATE_SYSTEM_CHECKED : 0;
        };
        const auto field = [&](int namedBy) {
            access.name = AsRead(TextOf(Item(namedBy)));
            access.unit = L"\u00B5m";
        };
        switch (id) {
        case IDC_ZS_TYPE_ENDS: type(L"From the bottom to the top position", kx::zstack::IsHeldByEnds); break;
        case IDC_ZS_TYPE_SYMMETRIC:
            type(L"A range with the home in its middle", [](int now) { return now == 2; });
            break;
        case IDC_ZS_TYPE_ASYMMETRIC:
            type(L"Distances above and below the home", [](int now) { return now == 3; });
            break;
        case IDC_ZS_EDIT_TOP: field(IDC_ZS_TOP); break;
        case IDC_ZS_EDIT_MIDDLE: field(IDC_ZS_HOME); break;
        case IDC_ZS_EDIT_BOTTOM: field(IDC_ZS_BOTTOM); break;
        case IDC_ZS_EDIT_RANGE: field(IDC_ZS_RANGE_LABEL); break;
        case IDC_ZS_EDIT_STEPS: access.name = AsRead(TextOf(Item(IDC_ZS_STEPS_LABEL))); break;
        case IDC_ZS_EDIT_BELOW: access.name = translated(L"Range below the home"); break;
        case IDC_ZS_EDIT_ABOVE: access.name = translated(L"Range above the home"); break;
        case IDC_ZS_SUGGESTED: access.name = Listed({translated(L"Suggested step"), access.name}); break;
        default: return false;
        }
        return true;
    });
    return told ? told : Describe(message, [](KxAccess& access) { access.role = ROLE_SYSTEM_GROUPING; });
}

// Before any zoom.
void CKxDevUI_ZStack::RememberLabels() {
    auto& places = ShownOf(m_hWnd)->labels;
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = {RectInParent(Item(kLabels[i].label)), false};
}

// A label that is wide enough is left to the layout manager; one that has been widened is widened anew, from what it
// was.
void CKxDevUI_ZStack::FitLabels() {
    const kx::ui::WindowDC dc(m_hWnd);
    const kx::ui::Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(Item(IDC_ZS_STEP_LABEL), WM_GETFONT, 0, 0)));
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const auto shown = ShownOf(m_hWnd);
    bool moved = false;
    for (std::size_t i = 0; i < shown->labels.size(); ++i) {
        const auto& [id, left, right] = kLabels[i];
        auto& [unzoomed, widened] = shown->labels[i];
        const HWND label = Item(id);
        const RECT now = RectInParent(label);
        RECT rect = now;
        if (widened) {
            rect.left = CKxGUILayoutManager::Zoomed(unzoomed.left);
            rect.right = rect.left + CKxGUILayoutManager::Zoomed(unzoomed.right - unzoomed.left);
        }
        const long extra = WidthOf(dc, label) - (rect.right - rect.left);
        widened = extra > 0;
        if (widened) {
            const bool rightAligned = (GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK) == SS_RIGHT;
            Widen(rect, extra, rightAligned, left ? RectInParent(Item(left)).right + 1 : 0,
                  right ? RectInParent(Item(right)).left - 1 : client.right);
            Align(rect);
        }
        if (rect.left == now.left && rect.right == now.right) continue;
        SetWindowPos(label, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        moved = true;
    }
    // Otherwise a host that places the panel by the zoom would have the labels placed twice.
    if (moved && CKxGUILayoutManager::GetGuiZoom() != 1.0) {
        CKxGUILayoutManager::RememberWindowDimsForGuiZoom(m_hWnd);
    }
}
