// List views in a colour scheme: the list's own colours, and its header, which has none to set.
#include "kx_schemelist.h"

#include "kx_schemetip.h"
#include "kx_subclass.h"
#include "kx_theme.h"

#include <windows.h>

#include <commctrl.h>
#include <vsstyle.h>

#include <algorithm>
#include <iterator>
#include <type_traits>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_visualstyles.h>

namespace {

void SetColors(HWND list) {
    const bool enabled = IsWindowEnabled(list) != FALSE;
    const auto back = static_cast<LPARAM>(KX_GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    const auto text = static_cast<LPARAM>(KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    SendMessageW(list, LVM_SETBKCOLOR, 0, back);
    SendMessageW(list, LVM_SETTEXTBKCOLOR, 0, back);
    SendMessageW(list, LVM_SETTEXTCOLOR, 0, text);
    RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// As in the scheme, or as the style has it.
void DrawListCheckBox(HDC dc, const RECT& box, bool checked, bool enabled) {
    const int state = checked   ? enabled ? CBS_CHECKEDNORMAL : CBS_CHECKEDDISABLED
                      : enabled ? CBS_UNCHECKEDNORMAL
                                : CBS_UNCHECKEDDISABLED;
    const int ground = enabled ? COLOR_WINDOW : COLOR_BTNFACE;
    if (!kx::theme::Draw(dc, {kx::theme::Owner::Button, BP_CHECKBOX, state}, box, KX_GetSysColor(ground)))
        DrawCheckBox(dc, box, checked, enabled);
}

// What makes image lists. Styles 6 bring a comctl32 of their own beside the one that this module was linked to, and
// neither knows the lists of the other: they are asked of that which the list view belongs to.
struct Images {
    decltype(&ImageList_Create) create = ImageList_Create;
    decltype(&ImageList_Add) add = ImageList_Add;
    decltype(&ImageList_Destroy) destroy = ImageList_Destroy;

    explicit Images(HWND list) {
        // The class names the module as Windows registers it, and the program under Wine.
        HMODULE owner = nullptr;
        const auto procedure = reinterpret_cast<const wchar_t*>(GetClassLongPtrW(list, GCLP_WNDPROC));
        if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                procedure, &owner))
            return;
        Images found(owner);
        if (found.create && found.add && found.destroy) *this = found;
    }

private:
    explicit Images(HMODULE owner) {
        const auto get = [owner](auto& function, const char* name) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(
                reinterpret_cast<void*>(GetProcAddress(owner, name)));
        };
        get(create, "ImageList_Create");
        get(add, "ImageList_Add");
        get(destroy, "ImageList_Destroy");
    }
};

// The state images of a list with check boxes: empty and checked. The platform's own have one size and one colour.
void SetCheckBoxes(HWND list) {
    if (!(SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_CHECKBOXES)) return;
    const int size = CKxGUILayoutManager::Zoomed(13), cell = size + CKxGUILayoutManager::Zoomed(3);
    const Images make(list);
    const HIMAGELIST images = make.create(cell, cell, ILC_COLOR24, 2, 0);
    const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
    for (const bool checked : {false, true}) {
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, cell, cell);
        const HGDIOBJ old = SelectObject(dc, bitmap);
        const RECT area{0, 0, cell, cell}, box{0, (cell - size) / 2, size, (cell - size) / 2 + size};
        FillRect(dc, &area, KX_GetSysColorBrush(IsWindowEnabled(list) ? COLOR_WINDOW : COLOR_BTNFACE));
        DrawListCheckBox(dc, box, checked, IsWindowEnabled(list) != FALSE);
        SelectObject(dc, old);
        make.add(images, bitmap, nullptr);
        DeleteObject(bitmap);
    }
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    // The list owns the images it has; those it gives back are ours.
    const LRESULT previous = SendMessageW(list, LVM_SETIMAGELIST, LVSIL_STATE, reinterpret_cast<LPARAM>(images));
    make.destroy(reinterpret_cast<HIMAGELIST>(previous));
}

// Part 0 is the row behind the cells.
bool DrawHeadOfStyle(HDC dc, int part, const RECT& rect) {
    return kx::theme::Draw(dc, {kx::theme::Owner::Header, part, HIS_NORMAL}, rect, KX_GetSysColor(COLOR_WINDOW));
}

void DrawHead(HDC dc, const RECT& cell) {
    if (DrawHeadOfStyle(dc, HP_HEADERITEM, cell)) return;
    FillRect(dc, &cell, KX_GetSysColorBrush(COLOR_BTNFACE));
    const RECT edges[] = {{cell.right - 1, cell.top + 2, cell.right, cell.bottom - 2},
                          {cell.left, cell.bottom - 1, cell.right, cell.bottom}};
    for (const RECT& edge : edges)
        FillRect(dc, &edge, KX_GetSysColorBrush(COLOR_BTNSHADOW));
}

void PaintHead(const NMCUSTOMDRAW& draw, bool enabled) {
    RECT cell = draw.rc;
    DrawHead(draw.hdc, cell);
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

// What lies right of the last column.
void PaintRest(const NMCUSTOMDRAW& draw) {
    RECT rest{}, last{};
    GetClientRect(draw.hdr.hwndFrom, &rest);
    const LRESULT count = SendMessageW(draw.hdr.hwndFrom, HDM_GETITEMCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        SendMessageW(draw.hdr.hwndFrom, HDM_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&last));
        rest.left = std::max(rest.left, last.right);
    }
    if (!DrawHeadOfStyle(draw.hdc, 0, rest)) FillRect(draw.hdc, &rest, KX_GetSysColorBrush(COLOR_BTNFACE));
}

LRESULT DrawHeader(HWND list, const NMCUSTOMDRAW& draw) {
    switch (draw.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: PaintHead(draw, IsWindowEnabled(list) != FALSE); return CDRF_SKIPDEFAULT;
    case CDDS_POSTPAINT: PaintRest(draw); return CDRF_DODEFAULT;
    default: return CDRF_DODEFAULT;
    }
}

LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    // Not sooner: under Wine a list that is asked for its tooltip makes one, and leaves it when it goes.
    if (const auto* tip = reinterpret_cast<const NMHDR*>(lParam); message == WM_NOTIFY && tip->code == TTN_SHOW)
        kx::FollowColorSchemeInToolTip(tip->hwndFrom);
    // The platform's own header looks the same in a disabled list.
    if (message == WM_NOTIFY && (KX_GetColorScheme() != eKxColorScheme_System || !IsWindowEnabled(list))) {
        const auto* header = reinterpret_cast<const NMHDR*>(lParam);
        if (header->code == NM_CUSTOMDRAW && header->hwndFrom == ListView_GetHeader(list)) {
            return DrawHeader(list, *reinterpret_cast<const NMCUSTOMDRAW*>(lParam));
        }
    }
    const LRESULT result = kx::CallRest(ListProc, list, message, wParam, lParam);
    if (!IsWindow(list)) return result;
    switch (message) {
    case WM_SYSCOLORCHANGE:
    case WM_ENABLE:
        SetColors(list);
        SetCheckBoxes(list);
        break;
    case WM_THEMECHANGED: KX_VisualStylesChanged(); [[fallthrough]];
    case LVM_SETEXTENDEDLISTVIEWSTYLE:
    case CKxGUILayoutManager::ZoomChangedMessage: SetCheckBoxes(list); break;
    default: break;
    }
    return result;
}

}  // namespace

void FollowColorSchemeInList(HWND list) {
    kx::Subclass(list, ListProc);
    // A new list has the system's colours already.
    if (KX_GetColorScheme() != eKxColorScheme_System || !IsWindowEnabled(list)) SetColors(list);
    SetCheckBoxes(list);
}

void DrawTick(HDC dc, const RECT& box, int color) {
    const HPEN pen =
        CreatePen(PS_SOLID, std::max(2, static_cast<int>(box.right - box.left) / 6), KX_GetSysColor(color));
    const HGDIOBJ old = SelectObject(dc, pen);
    const long size = box.right - box.left;
    MoveToEx(dc, box.left + size * 2 / 10, box.top + size * 5 / 10, nullptr);
    LineTo(dc, box.left + size * 4 / 10, box.top + size * 7 / 10);
    LineTo(dc, box.left + size * 8 / 10, box.top + size * 3 / 10);
    SelectObject(dc, old);
    DeleteObject(pen);
}

void DrawCheckBox(HDC dc, const RECT& box, bool checked, bool enabled) {
    FillRect(dc, &box, KX_GetSysColorBrush(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    FrameRect(dc, &box, KX_GetSysColorBrush(enabled ? COLOR_3DDKSHADOW : COLOR_GRAYTEXT));
    if (checked) DrawTick(dc, box, enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
}
