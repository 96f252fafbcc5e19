// Context menus.
#pragma once

#include <windows.h>

#include <memory>

#include <kxbaseui/kxbaseui_api.h>

// How a context menu is tracked; the numbers are part of the interface and are added up.
enum EKxMenuTrack : unsigned {
    eKxMenuTrack_ReturnCommand = 0x01,  // the command chosen is the result; the owner gets no WM_COMMAND of it
    eKxMenuTrack_KeepControl = 0x40,    // where there is no room, the menu moves up or down rather than sideways
};

// A menu of commands that opens at a point, for a control or a panel: filled, tracked, and thrown away.
class KXBASEUI_API CKxMenu {
public:
    // An empty menu.
    CKxMenu();
    ~CKxMenu();
    CKxMenu(const CKxMenu&) = delete;
    CKxMenu& operator=(const CKxMenu&) = delete;

    // Adds a command at the end. A null or empty text makes a separator; a command that is not from 1 to 65535 is
    // refused and logged.
    void AppendItem(int command, const wchar_t* text, bool enabled = true);

    // The number of items, separators among them; the command and the text of one, 0 and empty for a separator. An
    // index that is not there gives 0 and the empty text.
    int GetCount() const;
    int GetCommand(int index) const;
    const wchar_t* GetText(int index) const;

    // Opens the menu at (x, y) on the screen, in a loop of its own, and returns when it is closed. The result is the
    // command chosen, with eKxMenuTrack_ReturnCommand; otherwise the owner is sent WM_COMMAND and the result is 0. 0
    // too when nothing was chosen, the menu is empty, or the owner is no window of this thread. The owner, and whoever
    // called, may be gone afterwards.
    int TrackContextMenu(unsigned flags, int x, int y, HWND owner) const;

private:
    struct Items;
    std::unique_ptr<Items> m_items;
};

// Puts the host's own menu in the place of the platform's; what the handler returns is the command chosen, 0 for none.
// A handler that throws chooses none. Null goes back to the platform's menu.
using KX_MenuHandler = int (*)(HWND owner, const CKxMenu& menu, int x, int y, void* context);
KXBASEUI_API void KX_SetMenuHandler(KX_MenuHandler handler, void* context);
