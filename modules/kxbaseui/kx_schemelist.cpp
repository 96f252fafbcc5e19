// List views in a colour scheme: the list's own colours, and its header, which has none to set.
#include "kx_schemelist.h"

#include <windows.h>

#include <commctrl.h>

#include <iterator>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace {

constexpr UINT_PTR kSubclassId = 0x83FB;

void SetColors(HWND list) {
    const bool enabled = IsWindowEnabled(list) != FALSE;
    const auto back = static_cast<LPARAM>(KX_GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    const auto text = static_cast<LPARAM>(KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    SendMessageW(list, LVM_SETBKCOLOR, 0, back);
    SendMessageW(list, LVM_SETTEXTBKCOLOR, 0, back);
    SendMessageW(list, LVM_SETTEXTCOLOR, 0, text);
    RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PaintHead(const NMCUSTOMDRAW& draw, bool enabled) {
    RECT cell = draw.rc;
    FillRect(draw.hdc, &cell, KX_GetSysColorBrush(COLOR_BTNFACE));
    const RECT edges[] = {{cell.right - 1, cell.top + 2, cell.right, cell.bottom - 2},
                          {cell.left, cell.bottom - 1, cell.right, cell.bottom}};
    for (const RECT& edge : edges)
        FillRect(draw.hdc, &edge, KX_GetSysColorBrush(COLOR_BTNSHADOW));

    wchar_t text[256] = L"";
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    SendMessageW(draw.hdr.hwndFrom, HDM_GETITEMW, draw.dwItemSpec, reinterpret_cast<LPARAM>(&item));
    InflateRect(&cell, -CKxGUILayoutManager::Zoomed(6), 0);
    SetBkMode(draw.hdc, TRANSPARENT);
    SetTextColor(draw.hdc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    const UINT place = (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT    ? DT_RIGHT
                       : (item.fmt & HDF_JUSTIFYMASK) == HDF_CENTER ? DT_CENTER
                                                                    : DT_LEFT;
    DrawTextW(draw.hdc, text, -1, &cell, place | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

LRESULT DrawHeader(HWND list, const NMCUSTOMDRAW& draw) {
    switch (draw.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: PaintHead(draw, IsWindowEnabled(list) != FALSE); return CDRF_SKIPDEFAULT;
    default: return CDRF_DODEFAULT;
    }
}

// What lies right of the last column is the header's background.
LRESULT CALLBACK HeaderProc(HWND header, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(header, HeaderProc, id);
    if (message == WM_ERASEBKGND && KX_GetColorScheme() != eKxColorScheme_System) {
        RECT client{};
        GetClientRect(header, &client);
        return FillRect(reinterpret_cast<HDC>(wParam), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
    }
    return DefSubclassProc(header, message, wParam, lParam);
}

LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(list, ListProc, id);
    if (message == WM_NOTIFY && KX_GetColorScheme() != eKxColorScheme_System) {
        const auto* header = reinterpret_cast<const NMHDR*>(lParam);
        if (header->code == NM_CUSTOMDRAW && header->hwndFrom == ListView_GetHeader(list)) {
            return DrawHeader(list, *reinterpret_cast<const NMCUSTOMDRAW*>(lParam));
        }
    }
    const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
    if ((message == WM_SYSCOLORCHANGE || message == WM_ENABLE) && IsWindow(list)) SetColors(list);
    return result;
}

}  // namespace

void FollowColorSchemeInList(HWND list) {
    SetWindowSubclass(list, ListProc, kSubclassId, 0);
    if (const HWND header = ListView_GetHeader(list)) SetWindowSubclass(header, HeaderProc, kSubclassId, 0);
    SetColors(list);
}
