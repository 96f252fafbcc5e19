#include "kx_schememenu.h"

// After windows.h.
#include <oleacc.h>

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

#include "kx_schemelist.h"
#include "kx_schemepaint.h"

namespace kx {

namespace {

constexpr int kGutter = 22, kMargin = 6, kSpace = 3;  // unzoomed pixels

// What an item's data points to while it is drawn here. Screen readers look for the name at its head.
struct Item {
    MSAAMENUINFO name;
    std::wstring text;
    UINT type;       // as its menu had it
    ULONG_PTR data;  // likewise
    HMENU below;
    bool inBar;

    // The text before the tab, and after it.
    std::wstring Left() const { return text.substr(0, text.find(L'\t')); }
    std::wstring Right() const {
        const std::size_t tab = text.find(L'\t');
        return tab == std::wstring::npos ? std::wstring() : text.substr(tab + 1);
    }
    bool IsSeparator() const { return (type & MFT_SEPARATOR) != 0; }
};

using Items = std::vector<std::unique_ptr<Item>>;

// By menu. Nobody is told when a menu goes: those that are gone are looked for when another one comes.
std::map<HMENU, Items>& AllItems() {
    static auto& items = *new std::map<HMENU, Items>;
    return items;
}

Item* FindIn(const Items& items, ULONG_PTR data) {
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const auto& each) { return reinterpret_cast<ULONG_PTR>(each.get()) == data; });
    return found == items.end() ? nullptr : found->get();
}

Item* Find(ULONG_PTR data) {
    for (const auto& [menu, items] : AllItems())
        if (Item* const found = FindIn(items, data)) return found;
    return nullptr;
}

long Zoomed(int pixels) { return CKxGUILayoutManager::Zoomed(pixels); }

// ---- Items of a menu -----------------------------------------------------------------------------------------------

struct Shown {
    MENUITEMINFOW info{};
    wchar_t text[256] = L"";

    Shown(HMENU menu, int index) {
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = static_cast<UINT>(std::size(text));
        GetMenuItemInfoW(menu, static_cast<UINT>(index), TRUE, &info);
    }
};

void SetText(Item& item, const wchar_t* text) {
    item.text = text;
    item.name = {MSAA_MENU_SIG, static_cast<DWORD>(item.text.size()), item.text.data()};
}

void SetItem(HMENU menu, int index, UINT type, ULONG_PTR data) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_DATA;
    info.fType = type;
    info.dwItemData = data;
    SetMenuItemInfoW(menu, static_cast<UINT>(index), TRUE, &info);
}

void Take(HMENU menu, bool bar) {
    Items& known = AllItems()[menu];
    Items kept;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const Shown shown(menu, i);
        Item* item = FindIn(known, shown.info.dwItemData);
        if (!item && (shown.info.fType & (MFT_OWNERDRAW | MFT_BITMAP))) continue;
        if (item) {
            const auto same = [&](const auto& each) { return each.get() == item; };
            const auto place = std::find_if(known.begin(), known.end(), same);
            kept.push_back(std::move(*place));
            known.erase(place);
        } else {
            item = kept.emplace_back(std::make_unique<Item>()).get();
            item->data = shown.info.dwItemData;
        }
        // A host that has changed an item may have left its data.
        if (!(shown.info.fType & MFT_OWNERDRAW)) {
            item->type = shown.info.fType;
            SetItem(menu, i, item->type | MFT_OWNERDRAW, reinterpret_cast<ULONG_PTR>(item));
        }
        item->below = shown.info.hSubMenu;
        item->inBar = bar;
        // The text is kept beside, where a menu forgets that of items which it does not draw.
        if (item->text != shown.text && (*shown.text || item->text.empty())) SetText(*item, shown.text);
    }
    known = std::move(kept);
}

void GiveBack(HMENU menu) {
    const auto found = AllItems().find(menu);
    if (found == AllItems().end()) return;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const Shown shown(menu, i);
        if (const Item* const item = FindIn(found->second, shown.info.dwItemData)) {
            SetItem(menu, i, item->type, item->data);
        }
    }
    AllItems().erase(found);
}

void ForEachBelow(HMENU menu, void (*call)(HMENU menu)) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (const HMENU below = GetSubMenu(menu, i)) {
            call(below);
            ForEachBelow(below, call);
        }
    }
}

void SetGround(HMENU menu, HBRUSH brush) {
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND | MIM_APPLYTOSUBMENUS;
    info.hbrBack = brush;
    SetMenuInfo(menu, &info);
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

// A DC with the font of menus in it, until the end of the scope.
class TextDC {
public:
    TextDC(HDC dc, HFONT font) : m_dc(dc), m_saved(SaveDC(dc)) {
        SelectObject(dc, font);
        SetBkMode(dc, TRANSPARENT);
    }
    ~TextDC() { RestoreDC(m_dc, m_saved); }
    TextDC(const TextDC&) = delete;
    TextDC& operator=(const TextDC&) = delete;

    SIZE Measure(const std::wstring& text) const {
        RECT area{};
        DrawTextW(m_dc, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
        return {area.right, area.bottom};
    }

private:
    HDC m_dc;
    int m_saved;
};

void Measure(const Item& item, MEASUREITEMSTRUCT& size) {
    const HDC screen = GetDC(nullptr);
    if (!screen) return;
    {
        const TextDC dc(screen, KX_GetDefaultGuiFont());
        const SIZE left = dc.Measure(item.Left()), right = dc.Measure(item.Right());
        const long height = dc.Measure(L"X").cy;
        size.itemHeight = static_cast<UINT>(item.IsSeparator() ? Zoomed(7) : height + 2 * Zoomed(kSpace));
        size.itemWidth = static_cast<UINT>(
            item.inBar ? left.cx + 2 * Zoomed(kMargin)
                       : Zoomed(kGutter) + left.cx + (right.cx ? Zoomed(2 * kGutter) + right.cx : 0) + Zoomed(kGutter));
    }
    ReleaseDC(nullptr, screen);
}

// The bar's height is the system's under Wine: there the letters of a large zoom would be cut.
HFONT FontFor(HDC dc, const Item& item, const RECT& area) {
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    if (!item.inBar) return KX_GetDefaultGuiFont();
    const long high = TextDC(dc, KX_GetDefaultGuiFont()).Measure(L"X").cy, room = area.bottom - area.top;
    return high <= room ? KX_GetDefaultGuiFont()
                        : KX_GetDefaultGuiFontZoom(zoom * static_cast<double>(room) / static_cast<double>(high));
}

void DrawMark(HDC dc, const RECT& item, bool radio, int color) {
    const long size = Zoomed(13), left = item.left + (Zoomed(kGutter) - size) / 2,
               top = (item.top + item.bottom - size) / 2;
    const RECT box{left, top, left + size, top + size};
    if (!radio) return DrawTick(dc, box, color);
    const TextDC saved(dc, KX_GetDefaultGuiFont());
    SelectObject(dc, KX_GetSysColorBrush(color));
    SelectObject(dc, GetStockObject(NULL_PEN));
    const long inset = size / 3;
    Ellipse(dc, box.left + inset, box.top + inset, box.right - inset + 1, box.bottom - inset + 1);
}

// The edge of the popup's window, which the platform draws in its own colours before the items.
void DrawEdgeOfPopup(HDC itemDC) {
    const HWND popup = WindowFromDC(itemDC);
    if (!popup || GetClassLongPtrW(popup, GCW_ATOM) != 32768) return;
    FrameWindowInScheme(popup, COLOR_BTNSHADOW);
}

void Draw(const Item& item, const DRAWITEMSTRUCT& draw) {
    RECT area = draw.rcItem;
    const bool disabled = (draw.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const bool lit = (draw.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0 && !item.IsSeparator() && !disabled;
    const bool pale = disabled || (item.inBar && (draw.itemState & ODS_INACTIVE) != 0);
    const int ink = lit ? COLOR_HIGHLIGHTTEXT : pale ? COLOR_GRAYTEXT : COLOR_MENUTEXT;
    FillRect(draw.hDC, &area, KX_GetSysColorBrush(lit ? COLOR_HIGHLIGHT : COLOR_MENU));
    if (!item.inBar) DrawEdgeOfPopup(draw.hDC);
    if (item.IsSeparator()) {
        RECT line{area.left + Zoomed(kGutter), (area.top + area.bottom) / 2, area.right - Zoomed(2), 0};
        line.bottom = line.top + 1;
        FillRect(draw.hDC, &line, KX_GetSysColorBrush(COLOR_BTNSHADOW));
        return;
    }
    if (draw.itemState & ODS_CHECKED) DrawMark(draw.hDC, area, (item.type & MFT_RADIOCHECK) != 0, ink);
    if (item.below && !item.inBar) {
        const RECT box{area.right - Zoomed(kGutter - kSpace), area.top, area.right, area.bottom};
        DrawSchemeArrow(draw.hDC, box, Toward::Right, ink);
    }
    {
        const TextDC dc(draw.hDC, FontFor(draw.hDC, item, area));
        SetTextColor(draw.hDC, KX_GetSysColor(ink));
        const UINT format = DT_VCENTER | DT_SINGLELINE | (draw.itemState & ODS_NOACCEL ? DT_HIDEPREFIX : 0u);
        RECT text = area;
        if (!item.inBar) text.left += Zoomed(kGutter), text.right -= Zoomed(kGutter);
        DrawTextW(draw.hDC, item.Left().c_str(), -1, &text, format | (item.inBar ? DT_CENTER : DT_LEFT));
        DrawTextW(draw.hDC, item.Right().c_str(), -1, &text, format | DT_RIGHT);
    }
    // The platform draws its own arrow afterwards, in its own colour.
    if (item.below && !item.inBar) ExcludeClipRect(draw.hDC, area.left, area.top, area.right, area.bottom);
}

// ---- Letters -------------------------------------------------------------------------------------------------------

wchar_t Upper(wchar_t letter) { return static_cast<wchar_t>(std::towupper(letter)); }

// The letter after the '&' of a text; 0 for none.
wchar_t Mnemonic(const std::wstring& text) {
    for (std::size_t i = text.find(L'&'); i != std::wstring::npos && i + 1 < text.size(); i = text.find(L'&', i + 2))
        if (text[i + 1] != L'&') return Upper(text[i + 1]);
    return 0;
}

// The items that a letter chooses: by their mnemonic, or else, where an item has none, by how they begin.
std::vector<int> ChosenBy(wchar_t letter, HMENU menu, const MenuTexts& textOf) {
    std::vector<int> marked, beginning;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const std::wstring text = textOf(Shown(menu, i).info.dwItemData);
        if (text.empty()) continue;
        const wchar_t mnemonic = Mnemonic(text);
        if (mnemonic == letter) marked.push_back(i);
        if (!mnemonic && Upper(text.front()) == letter) beginning.push_back(i);
    }
    return marked.empty() ? beginning : marked;
}

}  // namespace

void FollowColorSchemeInMenu(HMENU menu, bool isBar) {
    if (!IsMenu(menu)) return;
    std::erase_if(AllItems(), [](const auto& each) { return !IsMenu(each.first); });
    if (IsOwnScheme()) {
        Take(menu, isBar);
        ForEachBelow(menu, [](HMENU below) { Take(below, false); });
        SetGround(menu, KX_GetSysColorBrush(COLOR_MENU));
    } else if (AllItems().contains(menu)) {
        GiveBack(menu);
        ForEachBelow(menu, GiveBack);
        SetGround(menu, nullptr);
    }
}

void MeasureMenuAnew(HMENU menu, bool isBar) {
    if (!IsMenu(menu) || !IsOwnScheme()) return;
    GiveBack(menu);
    ForEachBelow(menu, GiveBack);
    FollowColorSchemeInMenu(menu, isBar);
}

std::optional<LRESULT> AnswerForMenu(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MENUCHAR) {
        const auto textOf = [](ULONG_PTR data) {
            const Item* const item = Find(data);
            return item ? item->text : std::wstring();
        };
        return ChooseInMenu(LOWORD(wParam), reinterpret_cast<HMENU>(lParam), textOf);
    }
    if (message == WM_MEASUREITEM && lParam) {
        auto& size = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        const Item* const item = size.CtlType == ODT_MENU ? Find(size.itemData) : nullptr;
        if (!item) return std::nullopt;
        Measure(*item, size);
        return TRUE;
    }
    if (message == WM_DRAWITEM && lParam) {
        const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        const Item* const item = draw.CtlType == ODT_MENU ? Find(draw.itemData) : nullptr;
        if (!item) return std::nullopt;
        Draw(*item, draw);
        return TRUE;
    }
    return std::nullopt;
}

std::optional<LRESULT> ChooseInMenu(unsigned letter, HMENU menu, const MenuTexts& textOf) {
    const std::vector<int> chosen = ChosenBy(Upper(static_cast<wchar_t>(letter)), menu, textOf);
    if (chosen.empty()) return std::nullopt;
    if (chosen.size() == 1) return MAKELRESULT(chosen.front(), MNC_EXECUTE);
    const auto isLit = [&](int i) { return GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_HILITE; };
    const auto lit = std::find_if(chosen.begin(), chosen.end(), isLit);
    const bool last = lit == chosen.end() || std::next(lit) == chosen.end();
    return MAKELRESULT(last ? chosen.front() : *std::next(lit), MNC_SELECT);
}

void PaintRestOfMenuBar(HWND window) {
    MENUBARINFO bar{};
    bar.cbSize = sizeof bar;
    if (!IsOwnScheme() || !GetMenu(window) || !GetMenuBarInfo(window, OBJID_MENU, 0, &bar) || IsRectEmpty(&bar.rcBar))
        return;
    RECT own{};
    GetWindowRect(window, &own);
    const HDC dc = GetWindowDC(window);
    for (LONG i = 1; i <= GetMenuItemCount(bar.hMenu); ++i) {
        MENUBARINFO item{};
        item.cbSize = sizeof item;
        if (!GetMenuBarInfo(window, OBJID_MENU, i, &item)) continue;
        OffsetRect(&item.rcBar, -own.left, -own.top);
        ExcludeClipRect(dc, item.rcBar.left, item.rcBar.top, item.rcBar.right, item.rcBar.bottom);
    }
    OffsetRect(&bar.rcBar, -own.left, -own.top);
    // With the line that parts it from what is below.
    bar.rcBar.bottom += 1;
    FillRect(dc, &bar.rcBar, KX_GetSysColorBrush(COLOR_MENUBAR));
    ReleaseDC(window, dc);
}

}  // namespace kx
