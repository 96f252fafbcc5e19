// Context menus.
#pragma once

#include <windows.h>

#include <vector>

#include <kxbaseui/kxbaseui_api.h>
#include <kxsystem/kx_string.h>

// How a context menu is tracked; the numbers are part of the interface and are added up.
enum EKxMenuTrack : unsigned {
    eKxMenuTrack_ReturnCommand = 0x01,  // the command chosen is the result; the owner gets no WM_COMMAND of it
    eKxMenuTrack_KeepControl = 0x40,    // where there is no room, the menu moves up or down rather than sideways
};

class CKxMenuPicker;

// A menu of commands that opens at a point, for a control or a panel. Copies are menus of their own; the platform's
// menu is made when one is shown and lives no longer.
class KXBASEUI_API CKxMenu {
public:
    // An empty menu.
    CKxMenu();
    // Item by item.
    CKxMenu(const CKxMenu& other);
    CKxMenu& operator=(const CKxMenu& other);
    ~CKxMenu();

    // Adds a command at the end. A null or empty text makes a separator; a command that is not from 1 to 65535 is
    // refused and logged.
    void AppendMenuItem(int command, const wchar_t* text, bool enabled = true);

    // Adds a command that has a name, and an image in the pool (kx_bitmappool.h); an unknown one leaves the room empty.
    // Its number is its place, from 1. It is drawn in the colours of the scheme by the window that shows the menu,
    // which hands on WM_MEASUREITEM and WM_DRAWITEM. Null texts count as empty.
    void AppendMenuItem(const wchar_t* name, const wchar_t* text, const wchar_t* image);

    // The number of items, separators among them; the command of one, its name, its text and its image: 0, empty and
    // NoImage where it has none, and for an index that is not there.
    int GetCount() const;
    int GetCommand(int index) const;
    const wchar_t* GetName(int index) const;
    const wchar_t* GetText(int index) const;
    int GetImage(int index) const;

    // Opens the menu at (x, y) on the screen, in a loop of its own, and returns when it is closed. The result is the
    // command chosen, with eKxMenuTrack_ReturnCommand; otherwise the owner is sent WM_COMMAND and the result is 0. 0
    // too when nothing was chosen, the menu is empty, or the owner is no window of this thread. The owner, and whoever
    // called, may be gone afterwards.
    int TrackContextMenu(unsigned flags, int x, int y, HWND owner) const;

    // A picker of one of this menu's items, as they are now; see below.
    CKxMenuPicker CreateMenuPickerEx(unsigned int entry, int mode) const;

    // The answers to WM_MEASUREITEM and WM_DRAWITEM of a menu (ODT_MENU). False for what is none of this menu's.
    bool MeasureItem(MEASUREITEMSTRUCT& item) const;
    bool DrawItem(const DRAWITEMSTRUCT& item) const;

private:
    friend class CKxMenuPicker;
    struct Item {
        int command;
        bool enabled;
        CKxStringW name, text;
        int image;
    };
    const Item* At(int index) const;
    const Item* Drawn(UINT type, ULONG_PTR data) const;
    int Ask(HWND owner, int x, int y, UINT flags, const RECT* keepClear, int checked) const;

    std::vector<Item> m_items;
};

// What a button with an arrow keeps: it does one item of a menu, its entry, and its arrow opens the menu to pick
// another.
class KXBASEUI_API CKxMenuPicker {
public:
    // The mode in which there is nothing to pick: the button does its entry. Any other has the menu.
    static constexpr int Fixed = 1;

    // Of an empty menu.
    CKxMenuPicker() = default;

    // The menu, which draws its items.
    const CKxMenu& Menu() const { return m_menu; }

    // Which item the button does; one that is not there has no name, text or image.
    unsigned int GetEntry() const { return m_entry; }
    void SetEntry(unsigned int entry) { m_entry = entry; }
    // Its name, its text and its image.
    const wchar_t* GetName() const { return m_menu.GetName(static_cast<int>(m_entry)); }
    const wchar_t* GetText() const { return m_menu.GetText(static_cast<int>(m_entry)); }
    int GetImage() const { return m_menu.GetImage(static_cast<int>(m_entry)); }

    // See Fixed.
    int GetMode() const { return m_mode; }
    void SetMode(int mode) { m_mode = mode; }
    bool HasMenu() const { return m_mode != Fixed; }

    // Shows the menu under the rectangle `anchor` (screen coordinates), above it where there is no room, with the entry
    // marked, and waits. Returns the item that the user picked, or -1; the entry stays. The owner, and whoever called,
    // may be gone afterwards.
    int Track(HWND owner, const RECT& anchor) const;

private:
    friend class CKxMenu;
    CKxMenu m_menu;
    unsigned int m_entry = 0;
    int m_mode = 0;
};

// Puts the host's own menu in the place of the platform's; what the handler returns is the command chosen, 0 for none.
// A handler that throws chooses none. Null goes back to the platform's menu.
using KX_MenuHandler = int (*)(HWND owner, const CKxMenu& menu, int x, int y, void* context);
KXBASEUI_API void KX_SetMenuHandler(KX_MenuHandler handler, void* context);
