// The owner-drawn buttons of the Z stack panel, and the colours of its controls.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_window.h>

#include <algorithm>
#include <iterator>

using namespace kx::ui;

namespace {

struct Look {
    bool focused, selected;
    int flags;  // EKxButtonLook
    bool Is(int flag) const { return (flags & flag) != 0; }
    bool Enabled() const { return !Is(eKxButtonLook_Disabled); }
};

long Zoomed(int pixels) { return CKxGUILayoutManager::Zoomed(pixels); }

// The same face as the platform's buttons beside it have in this scheme.
void DrawFace(HDC dc, RECT area, const Look& look) {
    if (KX_GetColorScheme() == eKxColorScheme_System) {
        return KX_DrawButtonBackground(dc, area, look.flags, COLOR_BTNFACE);
    }
    const bool onBlack = KX_GetColorScheme() == eKxColorScheme_HighContrast;
    const int face = onBlack ? COLOR_BTNFACE : look.Is(eKxButtonLook_Pressed) ? COLOR_3DLIGHT : COLOR_BTNHIGHLIGHT;
    FillRect(dc, &area, KX_GetSysColorBrush(face));
    FrameRect(dc, &area, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    const long frame = look.selected ? Zoomed(2) : look.Is(eKxButtonLook_Hot) && look.Enabled() ? 1 : 0;
    for (long i = 0; i < frame; ++i) {
        FrameRect(dc, &area, KX_GetSysColorBrush(look.Enabled() ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
        InflateRect(&area, -1, -1);
    }
}

void DrawFocusOf(HDC dc, const RECT& area, const Look& look) {
    if (look.focused) KX_DrawButtonFocus(dc, area, look.flags, Zoomed(3));
}

void DrawLabel(HDC dc, HWND button, RECT area, const Look& look) {
    wchar_t text[64] = L"";
    GetWindowTextW(button, text, static_cast<int>(std::size(text)));
    const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(button, WM_GETFONT, 0, 0)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, KX_GetButtonTextColor(look.flags));
    constexpr UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
    DrawTextW(dc, text, -1, &area, KX_ShowsMnemonics(button) ? format : format | DT_HIDEPREFIX);
}

void DrawArrow(HDC dc, const RECT& area, const Look& look) {
    const Selection brush(dc, GetStockObject(DC_BRUSH)), pen(dc, GetStockObject(NULL_PEN));
    SetDCBrushColor(dc, KX_GetButtonTextColor(look.flags));
    const long half = Zoomed(3), x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2 - half / 2;
    const POINT corners[] = {{x - half, y}, {x + half, y}, {x, y + half}};
    Polygon(dc, corners, 3);
}

// A square in the middle of the area's height, with its centre at `x`.
RECT Square(const RECT& area, long x, long side) {
    side = std::min(side, area.bottom - area.top);
    const long top = (area.top + area.bottom - side) / 2;
    return {x - side / 2, top, x - side / 2 + side, top + side};
}

const wchar_t* ImageOf(UINT id) {
    return id == IDC_ZS_TYPE_ENDS        ? L"ZSTACK_TYPE_ENDS"
           : id == IDC_ZS_TYPE_SYMMETRIC ? L"ZSTACK_TYPE_SYMMETRIC"
                                         : L"ZSTACK_TYPE_ASYMMETRIC";
}

bool IsTypeSelected(UINT id, const kx::zstack::Shown& shown) {
    if (!shown.positions || !shown.positions->type) return false;
    const int layout = *shown.positions->type & 3;
    return id == IDC_ZS_TYPE_ENDS ? layout < 2 : id == IDC_ZS_TYPE_SYMMETRIC ? layout == 2 : layout == 3;
}

}  // namespace

long kx::zstack::ArrowWidth() { return Zoomed(12); }

Handled CKxDevUI_ZStack::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlType == ODT_MENU) return m_piezo.Menu().DrawItem(item) ? Handled(TRUE) : std::nullopt;
    const bool isType = item.CtlID >= IDC_ZS_TYPE_ENDS && item.CtlID <= IDC_ZS_TYPE_ASYMMETRIC;
    const bool isPiezo = item.CtlID == IDC_ZS_PIEZO;
    if (!isType && !isPiezo && item.CtlID != IDC_ZS_RELATIVE) return std::nullopt;
    const bool selected = isType && IsTypeSelected(item.CtlID, *kx::zstack::ShownOf(m_hWnd));
    const Look look{ShowsFocus(item), selected, ButtonLook(item) | (selected ? eKxButtonLook_On : 0)};
    PaintItem(item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        DrawFace(dc, area, look);
        RECT inside = area;
        if (look.Is(eKxButtonLook_Pressed)) OffsetRect(&inside, 1, 1);
        if (isType) {
            const int image = CKxBitmapPool::AddImageBaseUI(ImageOf(item.CtlID));
            const RECT place = Square(inside, (inside.left + inside.right) / 2, Zoomed(18));
            CKxBitmapPool::DrawOptimalImage(dc, image, place, look.Enabled());
        } else if (isPiezo) {
            const RECT image = Square(inside, inside.left + Zoomed(13), Zoomed(16));
            CKxBitmapPool::DrawOptimalImage(dc, m_piezo.GetImage(), image, look.Enabled());
            RECT text = inside;
            text.left = image.right;
            if (m_piezo.HasMenu()) {
                RECT arrow = inside;
                arrow.left = text.right = inside.right - kx::zstack::ArrowWidth();
                DrawArrow(dc, arrow, look);
            }
            DrawLabel(dc, item.hwndItem, text, look);
        } else {
            DrawLabel(dc, item.hwndItem, inside, look);
        }
        DrawFocusOf(dc, area, look);
    });
    return TRUE;
}

Handled CKxDevUI_ZStack::OnMeasureItem(MEASUREITEMSTRUCT& item) {
    return m_piezo.Menu().MeasureItem(item) ? Handled(TRUE) : std::nullopt;
}

Handled CKxDevUI_ZStack::OnCtlColorEdit(HDC dc, HWND edit) {
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(edit) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_WINDOW));
}

// Labels, and the edits that only show.
Handled CKxDevUI_ZStack::OnCtlColorStatic(HDC dc, HWND control) {
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(control) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_BTNFACE));
}
