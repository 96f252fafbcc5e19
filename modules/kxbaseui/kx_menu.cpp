#include <kxbaseui/kx_menu.h>

// After windows.h.
#include <oleacc.h>

#include <algorithm>
#include <list>
#include <memory>
#include <string>
#include <type_traits>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxsystem/kx_log.h>

#include "kx_schememenu.h"
#include "kx_subclass.h"

namespace {

constexpr int kImage = 16, kMargin = 4;  // unzoomed pixels

KX_MenuHandler s_handler = nullptr;
void* s_context = nullptr;

struct MenuDeleter {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

int AskHandler(HWND owner, const CKxMenu& menu, int x, int y) {
    try {
        return s_handler(owner, menu, x, y, s_context);
    } catch (...) {
        KX_LOG(L"kx_menu", L"the menu handler threw an exception");
        return 0;
    }
}

// What the data of an item with an image points to while its menu is open. Screen readers look for the name at its
// head.
struct Named {
    MSAAMENUINFO name;
    std::wstring text;
    std::size_t index;
};
std::list<Named> s_named;

const Named* FindNamed(ULONG_PTR data) {
    const auto is = [&](const Named& each) { return reinterpret_cast<ULONG_PTR>(&each) == data; };
    const auto found = std::find_if(s_named.begin(), s_named.end(), is);
    return found == s_named.end() ? nullptr : &*found;
}

// The items with images of one menu, until it is closed.
class NamedItems {
public:
    NamedItems() = default;
    ~NamedItems() {
        for (const Named* each : m_items)
            s_named.remove_if([&](const Named& named) { return &named == each; });
    }
    NamedItems(const NamedItems&) = delete;
    NamedItems& operator=(const NamedItems&) = delete;

    const Named& Add(const std::wstring& text, std::size_t index) {
        Named& added = s_named.emplace_back(Named{{}, text, index});
        added.name = {MSAA_MENU_SIG, static_cast<DWORD>(added.text.size()), added.text.data()};
        m_items.push_back(&added);
        return added;
    }

private:
    std::vector<const Named*> m_items;
};

LRESULT CALLBACK OwnerProc(HWND owner, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = kx::AnswerForMenu(message, wParam, lParam)) return *answer;
    if (message == WM_MENUCHAR && !s_named.empty()) {
        const auto textOf = [](ULONG_PTR data) {
            const Named* const named = FindNamed(data);
            return named ? named->text : std::wstring();
        };
        if (const auto answer = kx::ChooseInMenu(LOWORD(wParam), reinterpret_cast<HMENU>(lParam), textOf))
            return *answer;
    }
    return kx::CallRest(OwnerProc, owner, message, wParam, lParam);
}

long Zoomed(int pixels) { return CKxGUILayoutManager::Zoomed(pixels); }

}  // namespace

CKxMenu::CKxMenu() = default;
CKxMenu::CKxMenu(const CKxMenu&) = default;
CKxMenu& CKxMenu::operator=(const CKxMenu&) = default;
CKxMenu::~CKxMenu() = default;

// ---- Items ---------------------------------------------------------------------------------------------------------

void CKxMenu::AppendMenuItem(int command, const wchar_t* text, bool enabled) {
    if (!text || !*text) {
        m_items.push_back({0, false, {}, {}, CKxBitmapPool::NoImage});
    } else if (command < 1 || command > 0xFFFF) {
        KX_LOG(L"kx_menu", L"the command %d is refused", command);
    } else {
        m_items.push_back({command, enabled, {}, text, CKxBitmapPool::NoImage});
    }
}

void CKxMenu::AppendMenuItem(const wchar_t* name, const wchar_t* text, const wchar_t* image) {
    m_items.push_back(
        {GetCount() + 1, true, name ? name : L"", text ? text : L"", CKxBitmapPool::AddImageBaseUI(image)});
}

const CKxMenu::Item* CKxMenu::At(int index) const {
    return index >= 0 && index < GetCount() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

int CKxMenu::GetCount() const { return static_cast<int>(m_items.size()); }

int CKxMenu::GetCommand(int index) const {
    const Item* const item = At(index);
    return item ? item->command : 0;
}

const wchar_t* CKxMenu::GetName(int index) const {
    const Item* const item = At(index);
    return item ? item->name.c_str() : L"";
}

const wchar_t* CKxMenu::GetText(int index) const {
    const Item* const item = At(index);
    return item ? item->text.c_str() : L"";
}

int CKxMenu::GetImage(int index) const {
    const Item* const item = At(index);
    return item ? item->image : CKxBitmapPool::NoImage;
}

// ---- On the screen -------------------------------------------------------------------------------------------------

int CKxMenu::TrackContextMenu(unsigned flags, int x, int y, HWND owner) const {
    const UINT place = flags & eKxMenuTrack_KeepControl ? TPM_VERTICAL : TPM_HORIZONTAL;
    // The right button opens it, so it may also choose.
    const int chosen = Ask(owner, x, y, place | TPM_RIGHTBUTTON, nullptr, -1);
    if (flags & eKxMenuTrack_ReturnCommand) return chosen;
    if (chosen != 0 && IsWindow(owner)) SendMessageW(owner, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    return 0;
}

// Nothing of the menu is touched after it was open: it may be gone with the owner.
int CKxMenu::Ask(HWND owner, int x, int y, UINT flags, const RECT* keepClear, int checked) const {
    if (m_items.empty() || GetWindowThreadProcessId(owner, nullptr) != GetCurrentThreadId()) return 0;
    if (s_handler) return AskHandler(owner, *this, x, y);
    const OwnedMenu menu(CreatePopupMenu());
    NamedItems named;
    for (int i = 0; i < GetCount(); ++i) {
        const Item& item = *At(i);
        const auto command = static_cast<UINT_PTR>(item.command);
        if (!item.name.IsEmpty()) {
            const UINT mark = i == checked ? MF_CHECKED : 0u;
            const Named& data = named.Add(item.text.str(), static_cast<std::size_t>(i));
            AppendMenuW(menu.get(), MF_OWNERDRAW | mark, command, reinterpret_cast<const wchar_t*>(&data));
        } else {
            const UINT kind = command == 0 ? MF_SEPARATOR : item.enabled ? MF_STRING : MF_STRING | MF_GRAYED;
            AppendMenuW(menu.get(), kind, command, item.text.c_str());
        }
    }
    // Items without an image are the scheme's to draw.
    if (!kx::Subclass(owner, OwnerProc)) return 0;
    kx::FollowColorSchemeInMenu(menu.get(), false);
    TPMPARAMS clear{sizeof clear, keepClear ? *keepClear : RECT{}};
    return TrackPopupMenuEx(menu.get(), flags | TPM_RETURNCMD, x, y, owner, keepClear ? &clear : nullptr);
}

const CKxMenu::Item* CKxMenu::Drawn(UINT type, ULONG_PTR data) const {
    const Named* const named = type == ODT_MENU ? FindNamed(data) : nullptr;
    return named && named->index < m_items.size() ? &m_items[named->index] : nullptr;
}

bool CKxMenu::MeasureItem(MEASUREITEMSTRUCT& item) const {
    const Item* found = Drawn(item.CtlType, item.itemData);
    if (!found) return false;
    RECT text{};
    if (const HDC dc = GetDC(nullptr)) {
        const HGDIOBJ previous = SelectObject(dc, KX_GetDefaultGuiFont());
        DrawTextW(dc, found->text.c_str(), -1, &text, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
        SelectObject(dc, previous);
        ReleaseDC(nullptr, dc);
    }
    item.itemWidth = static_cast<UINT>(text.right + Zoomed(kImage + 4 * kMargin));
    item.itemHeight = static_cast<UINT>(std::max(text.bottom, Zoomed(kImage)) + 2 * Zoomed(kMargin));
    return true;
}

bool CKxMenu::DrawItem(const DRAWITEMSTRUCT& item) const {
    const Item* found = Drawn(item.CtlType, item.itemData);
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
    DrawTextW(item.hDC, found->text.c_str(), -1, &area, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(item.hDC, previous);
    SetTextColor(item.hDC, color);
    SetBkMode(item.hDC, mode);
    return true;
}

void KX_SetMenuHandler(KX_MenuHandler handler, void* context) {
    s_handler = handler;
    s_context = context;
}

// ---- The picker ----------------------------------------------------------------------------------------------------

CKxMenuPicker CKxMenu::CreateMenuPickerEx(unsigned int entry, int mode) const {
    CKxMenuPicker picker;
    picker.m_menu = *this;
    picker.SetEntry(entry);
    picker.m_mode = mode;
    return picker;
}

int CKxMenuPicker::Track(HWND owner, const RECT& anchor) const {
    // The answer is an item's number; what it says is found out before the picker may be gone.
    std::vector<int> commands;
    commands.reserve(m_menu.m_items.size());
    for (int i = 0; i < m_menu.GetCount(); ++i)
        commands.push_back(m_menu.GetCommand(i));
    const int chosen =
        m_menu.Ask(owner, anchor.left, anchor.bottom, TPM_NONOTIFY | TPM_VERTICAL, &anchor, static_cast<int>(m_entry));
    const auto found = std::find(commands.begin(), commands.end(), chosen);
    return chosen != 0 && found != commands.end() ? static_cast<int>(found - commands.begin()) : -1;
}
