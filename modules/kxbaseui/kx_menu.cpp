#include <kxbaseui/kx_menu.h>

#include <string>
#include <vector>

#include <kxsystem/kx_log.h>

namespace {

KX_MenuHandler s_handler = nullptr;
void* s_context = nullptr;

struct MenuDeleter {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

struct Item {
    int command;
    std::wstring text;
    bool enabled;
};

int Ask(HWND owner, const CKxMenu& menu, int x, int y) {
    try {
        return s_handler(owner, menu, x, y, s_context);
    } catch (...) {
        KX_LOG(L"kx_menu", L"the menu handler threw an exception");
        return 0;
    }
}

}  // namespace

struct CKxMenu::Items : std::vector<Item> {
    const Item* At(int index) const {
        return index >= 0 && index < static_cast<int>(size()) ? &(*this)[static_cast<std::size_t>(index)] : nullptr;
    }
};

CKxMenu::CKxMenu() : m_items(std::make_unique<Items>()) {}
CKxMenu::~CKxMenu() = default;

void CKxMenu::AppendItem(int command, const wchar_t* text, bool enabled) {
    if (!text || !*text) {
        m_items->push_back({0, {}, false});
    } else if (command < 1 || command > 0xFFFF) {
        KX_LOG(L"kx_menu", L"the command %d is refused", command);
    } else {
        m_items->push_back({command, text, enabled});
    }
}

int CKxMenu::GetCount() const { return static_cast<int>(m_items->size()); }

int CKxMenu::GetCommand(int index) const {
    const Item* const item = m_items->At(index);
    return item ? item->command : 0;
}

const wchar_t* CKxMenu::GetText(int index) const {
    const Item* const item = m_items->At(index);
    return item ? item->text.c_str() : L"";
}

int CKxMenu::TrackContextMenu(unsigned flags, int x, int y, HWND owner) const {
    if (m_items->empty() || GetWindowThreadProcessId(owner, nullptr) != GetCurrentThreadId()) return 0;
    int chosen = 0;
    if (s_handler) {
        chosen = Ask(owner, *this, x, y);
    } else {
        const OwnedMenu menu(CreatePopupMenu());
        for (const Item& each : *m_items) {
            const UINT kind = each.command == 0 ? MF_SEPARATOR : each.enabled ? MF_STRING : MF_STRING | MF_GRAYED;
            AppendMenuW(menu.get(), kind, static_cast<UINT_PTR>(each.command), each.text.c_str());
        }
        const UINT place = flags & eKxMenuTrack_KeepControl ? TPM_VERTICAL : TPM_HORIZONTAL;
        // The right button opens it, so it may also choose.
        chosen = TrackPopupMenu(menu.get(), place | TPM_RETURNCMD | TPM_RIGHTBUTTON, x, y, 0, owner, nullptr);
    }
    if (flags & eKxMenuTrack_ReturnCommand) return chosen;
    if (chosen != 0 && IsWindow(owner)) SendMessageW(owner, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    return 0;
}

void KX_SetMenuHandler(KX_MenuHandler handler, void* context) {
    s_handler = handler;
    s_context = context;
}
