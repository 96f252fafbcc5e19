// The confirmation dialog of the Z stack panel.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/zfocus/yesnokeep_layout.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxsystem/kx_translation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <iterator>
#include <vector>

using namespace kx::zstack;

namespace {

constexpr std::array<int, 3> kButtons{IDC_YNK_YES, IDC_YNK_NO, IDC_YNK_CANCEL};

HFONT FontOf(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }

CKxStringW TextOf(HWND window) {
    wchar_t text[200] = L"";
    GetWindowTextW(window, text, static_cast<int>(std::size(text)));
    return text;
}

SIZE SizeOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE Measure(HWND label, const wchar_t* text, HFONT font, long width) {
    RECT rect{0, 0, width, 0};
    const kx::ui::WindowDC dc(label);
    const kx::ui::Selection selected(dc, font);
    DrawTextW(dc, text, -1, &rect, DT_CALCRECT | DT_WORDBREAK);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// What a text needs in its window's own font, in unzoomed pixels: also at the zoom that follows, where lines may break
// elsewhere, and a line comes out longer than the font says, by up to a fiftieth under Wine.
SIZE MeasureForZoom(HWND label, const wchar_t* text, long width) {
    const HFONT font = FontOf(label);
    const SIZE unzoomed = Measure(label, text, font, width);
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    if (zoom == 1.0) return unzoomed;
    const SIZE zoomed =
        Measure(label, text, KX_GetFontAtZoom(font, 1, zoom), CKxGUILayoutManager::Zoomed(static_cast<double>(width)));
    const auto back = [zoom](long length) { return std::lround(std::ceil(static_cast<double>(length) / zoom)); };
    return {std::max(unzoomed.cx, back(zoomed.cx) * 33 / 32), std::max(unzoomed.cy, back(zoomed.cy))};
}

long ClientWidthOf(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    return rect.right;
}

// As high as its text needs in that width, and not lower than it is.
SIZE SizeOfCheckBox(HWND box, long width) {
    const CKxStringW text = TextOf(box);
    // The platform's own box, with the gap between it and the text.
    const UINT dpi = GetDpiForWindow(box);
    const long mark = GetSystemMetricsForDpi(SM_CXMENUCHECK, dpi) + 2 * GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    const SIZE needed = MeasureForZoom(box, text, width - mark);
    return {width, std::max(SizeOf(box).cy, needed.cy + 2 * GetSystemMetricsForDpi(SM_CYEDGE, dpi))};
}

void Place(HWND window, const RECT& rect) {
    SetWindowPos(window, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetTexts(HWND dialog, const wchar_t* question) {
    const auto translated = [](const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); };
    SetWindowTextW(dialog, translated(L"Z Series"));
    SetDlgItemTextW(dialog, IDC_YNK_KEEP, translated(L"Do not ask again in this session (Always apply)."));
    SetDlgItemTextW(dialog, IDC_YNK_YES, translated(L"&Yes"));
    SetDlgItemTextW(dialog, IDC_YNK_NO, translated(L"&No"));
    SetDlgItemTextW(dialog, IDC_YNK_CANCEL, translated(L"Cancel"));
    SetDlgItemTextW(dialog, IDC_YNK_QUESTION, question);
}

bool HasGlyphs(HWND label, const wchar_t* text, HFONT font) {
    const kx::ui::WindowDC dc(label);
    const kx::ui::Selection selected(dc, font);
    std::vector<WORD> glyphs(std::wcslen(text));
    GetGlyphIndicesW(dc, text, static_cast<int>(glyphs.size()), glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
    return std::find(glyphs.begin(), glyphs.end(), WORD{0xFFFF}) == glyphs.end();
}

// The stock font comes in the one size that a screen without scale has.
bool IsScaled(HWND dialog) {
    return CKxGUILayoutManager::GetGuiZoom() != 1.0 || GetDpiForWindow(dialog) != USER_DEFAULT_SCREEN_DPI;
}

void LayOut(HWND dialog, const wchar_t* question) {
    const HWND label = GetDlgItem(dialog, IDC_YNK_QUESTION);
    YesNoKeepSizes sizes{};
    sizes.icon = SizeOf(GetDlgItem(dialog, IDC_YNK_ICON));
    // The stock font sets the size, and shows the question where it has all its letters, and the size; it has no
    // Japanese. Else that is the dialog's own.
    const auto stock = static_cast<HFONT>(GetStockObject(ANSI_VAR_FONT));
    sizes.question = Measure(label, question, stock, ClientWidthOf(label));
    if (!IsScaled(dialog) && HasGlyphs(label, question, stock)) {
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(stock), FALSE);
    } else {
        const SIZE own = MeasureForZoom(label, question, ClientWidthOf(label));
        sizes.question = {std::max(sizes.question.cx, own.cx), std::max(sizes.question.cy, own.cy)};
    }
    for (std::size_t i = 0; i < kButtons.size(); ++i)
        sizes.buttons[i] = SizeOf(GetDlgItem(dialog, kButtons[i]));
    sizes.check = SizeOfCheckBox(GetDlgItem(dialog, IDC_YNK_KEEP), YesNoKeepWidth(sizes));
    const UINT dpi = GetDpiForWindow(dialog);
    sizes.edgeX = GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    sizes.edgeY = GetSystemMetricsForDpi(SM_CYEDGE, dpi);
    sizes.captionHeight = GetSystemMetricsForDpi(SM_CYCAPTION, dpi);

    const YesNoKeepLayout layout = PlaceYesNoKeep(sizes);
    Place(GetDlgItem(dialog, IDC_YNK_ICON), layout.icon);
    Place(label, layout.question);
    Place(GetDlgItem(dialog, IDC_YNK_KEEP), layout.check);
    for (std::size_t i = 0; i < kButtons.size(); ++i)
        Place(GetDlgItem(dialog, kButtons[i]), layout.buttons[i]);
    SetWindowPos(dialog, nullptr, 0, 0, layout.dialog.cx, layout.dialog.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR Open(HWND dialog, const wchar_t* question) {
    if (!question) question = L"";
    const HICON icon = LoadIconW(nullptr, IDI_WARNING);
    SendDlgItemMessageW(dialog, IDC_YNK_ICON, STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    KX_UnscaleDialog(dialog);
    SetTexts(dialog, question);
    LayOut(dialog, question);
    CKxGUILayoutManager::ResizeWindowToGuiZoom(dialog, 1.0);
    CKxUIHelper::AlignWnd(dialog, nullptr, eKxAlign_CenterOwner, true, nullptr);
    KX_FollowColorScheme(dialog);
    return TRUE;
}

INT_PTR Choose(HWND dialog, int id) {
    switch (id) {
    case IDCANCEL:
    case IDC_YNK_CANCEL:
        // A cancel is never remembered, whatever the box says.
        EndDialog(dialog, IDC_YNK_CANCEL);
        return TRUE;
    case IDC_YNK_YES:
    case IDC_YNK_NO: {
        const LONG yesStyle = GetWindowLongW(GetDlgItem(dialog, IDC_YNK_YES), GWL_STYLE);
        const int answer = (yesStyle & WS_VISIBLE) != 0 ? id : IDC_YNK_YES;
        const bool keep = SendDlgItemMessageW(dialog, IDC_YNK_KEEP, BM_GETCHECK, 0, 0) == BST_CHECKED;
        EndDialog(dialog, keep ? -answer : answer);
        return TRUE;
    }
    default: return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK CKxDevUI_ZStack::YesNoKeepDlg(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto answer = [&]() -> kx::ui::Handled {
        switch (message) {
        case WM_GETDLGCODE: return DLGC_WANTALLKEYS;
        case WM_KEYDOWN: return wParam == VK_ESCAPE;
        case WM_INITDIALOG: return Open(dialog, reinterpret_cast<const wchar_t*>(lParam));
        case WM_COMMAND: return Choose(dialog, LOWORD(wParam));
        default: return FALSE;
        }
    };
    return kx::ui::Guarded(answer).value_or(FALSE);
}
