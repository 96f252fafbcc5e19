// Context menus whose items are commands by name, each with an image.
#pragma once

#include <windows.h>

#include <vector>

#include <kxbaseui/kxbaseui_api.h>
#include <kxsystem/kx_string.h>

// A short menu in the colours of the scheme. The window that shows it hands on WM_MEASUREITEM and WM_DRAWITEM. Copies
// are menus of their own; the platform's menu is made when one is shown and lives no longer.
class KXBASEUI_API CKxImageMenu {
public:
    // Adds an item: the command that it stands for, its text, already translated, and its image in the pool
    // (kx_bitmappool.h), an unknown one leaving the room empty. Null texts count as empty.
    void AppendMenuItem(const wchar_t* command, const wchar_t* text, const wchar_t* image);

    // How many items there are; the command, the text and the image of one, empty and NoImage for an index without one.
    int GetItemCount() const { return static_cast<int>(m_items.size()); }
    CKxStringW GetCommand(int item) const;
    CKxStringW GetText(int item) const;
    int GetImage(int item) const;

    // Takes all items away.
    void Clear() { m_items.clear(); }

    // Shows the menu under the rectangle `anchor` (screen coordinates), above it where there is no room, with item
    // `checked` marked, and waits. Returns the item that the user chose, or -1; also when `owner` is destroyed
    // meanwhile.
    int Track(HWND owner, const RECT& anchor, int checked) const;

    // The answers to WM_MEASUREITEM and WM_DRAWITEM of a menu (ODT_MENU). False for what is none of this menu's.
    bool MeasureItem(MEASUREITEMSTRUCT& item) const;
    bool DrawItem(const DRAWITEMSTRUCT& item) const;

private:
    struct Item {
        CKxStringW command, text;
        int image;
    };
    const Item* At(ULONG_PTR number) const;
    std::vector<Item> m_items;
};
