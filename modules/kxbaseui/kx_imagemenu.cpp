#include <kxbaseui/kx_imagemenu.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace {

constexpr UINT kFirstId = 1;
constexpr int kImage = 16, kMargin = 4;  // unzoomed pixels

struct MenuDeleter {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

long Zoomed(int pixels) { return CKxGUILayoutManager::Zoomed(pixels); }

}  // namespace

void CKxImageMenu::AppendMenuItem(const wchar_t* command, const wchar_t* text, const wchar_t* image) {
    m_items.push_back({command ? command : L"", text ? text : L"", CKxBitmapPool::AddImageBaseUI(image)});
}

// Items are numbered from 1, so that a menu of somebody else's with no data is not taken for this one's.
const CKxImageMenu::Item* CKxImageMenu::At(ULONG_PTR number) const {
    return number >= 1 && number <= m_items.size() ? &m_items[number - 1] : nullptr;
}

CKxStringW CKxImageMenu::GetCommand(int item) const {
    const Item* found = item < 0 ? nullptr : At(static_cast<ULONG_PTR>(item) + 1);
    return found ? found->command : CKxStringW();
}

CKxStringW CKxImageMenu::GetText(int item) const {
    const Item* found = item < 0 ? nullptr : At(static_cast<ULONG_PTR>(item) + 1);
    return found ? found->text : CKxStringW();
}

int CKxImageMenu::GetImage(int item) const {
    const Item* found = item < 0 ? nullptr : At(static_cast<ULONG_PTR>(item) + 1);
    return found ? found->image : CKxBitmapPool::NoImage;
}

int CKxImageMenu::Track(HWND owner, const RECT& anchor, int checked) const {
    const Menu menu(CreatePopupMenu());
    for (UINT i = 0; menu && i < m_items.size(); ++i) {
        const UINT flags = MF_OWNERDRAW | (static_cast<int>(i) == checked ? MF_CHECKED : 0u);
        AppendMenuW(menu.get(), flags, kFirstId + i, reinterpret_cast<const wchar_t*>(ULONG_PTR{i} + 1));
    }
    if (!menu || m_items.empty()) return -1;
    TPMPARAMS keepClear{sizeof keepClear, anchor};
    const BOOL chosen = TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_VERTICAL, anchor.left,
                                         anchor.bottom, owner, &keepClear);
    return chosen ? static_cast<int>(chosen - static_cast<BOOL>(kFirstId)) : -1;
}

bool CKxImageMenu::MeasureItem(MEASUREITEMSTRUCT& item) const {
    const Item* found = item.CtlType == ODT_MENU ? At(item.itemData) : nullptr;
    if (!found) return false;
    RECT text{};
    if (const HDC dc = GetDC(nullptr)) {
        const HGDIOBJ previous = SelectObject(dc, KX_GetDefaultGuiFont());
        DrawTextW(dc, found->text, -1, &text, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
        SelectObject(dc, previous);
        ReleaseDC(nullptr, dc);
    }
    item.itemWidth = static_cast<UINT>(text.right + Zoomed(kImage + 4 * kMargin));
    item.itemHeight = static_cast<UINT>(std::max(text.bottom, Zoomed(kImage)) + 2 * Zoomed(kMargin));
    return true;
}

bool CKxImageMenu::DrawItem(const DRAWITEMSTRUCT& item) const {
    const Item* found = item.CtlType == ODT_MENU ? At(item.itemData) : nullptr;
    if (!found) return false;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, KX_GetSysColorBrush(COLOR_MENU));
    // The image keeps its own colours, so the selection is a frame around a face that is not the selection's.
    if (selected) FrameRect(item.hDC, &area, KX_GetSysColorBrush(COLOR_HIGHLIGHT));
    const long side = Zoomed(kImage), margin = Zoomed(kMargin), top = (area.top + area.bottom - side) / 2;
    const RECT image{area.left + margin, top, area.left + margin + side, top + side};
    CKxBitmapPool::DrawOptimalImage(item.hDC, found->image, image);
    if (item.itemState & ODS_CHECKED) {
        RECT frame = image;
        InflateRect(&frame, 2, 2);
        FrameRect(item.hDC, &frame, KX_GetSysColorBrush(COLOR_HIGHLIGHT));
    }
    area.left = image.right + 2 * margin;
    const int mode = SetBkMode(item.hDC, TRANSPARENT);
    const COLORREF color = SetTextColor(item.hDC, KX_GetSysColor(COLOR_MENUTEXT));
    const HGDIOBJ previous = SelectObject(item.hDC, KX_GetDefaultGuiFont());
    DrawTextW(item.hDC, found->text, -1, &area, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(item.hDC, previous);
    SetTextColor(item.hDC, color);
    SetBkMode(item.hDC, mode);
    return true;
}
