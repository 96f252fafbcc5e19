// Menus in a colour scheme. The platform draws them in the system's colours, so in another scheme their items are drawn
// here. In the system's they are the platform's again.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

namespace kx {

// Brings the items of a menu and of the menus below it to the scheme; to be called again before a menu that has changed
// shows. Items that somebody else draws are left to him. Null is ignored.
void FollowColorSchemeInMenu(HMENU menu, bool isBar);

// Has the platform ask anew how large the items are, which it does once.
void MeasureMenuAnew(HMENU menu, bool isBar);

// The answer to WM_MEASUREITEM, WM_DRAWITEM and WM_MENUCHAR where it is about items drawn here.
std::optional<LRESULT> AnswerForMenu(UINT message, WPARAM wParam, LPARAM lParam);

// The answer to WM_MENUCHAR: which item a letter chooses, by its mnemonic or by how its text begins. The platform looks
// for none in items that it does not draw. The texts are asked for by the items' data.
using MenuTexts = std::function<std::wstring(ULONG_PTR data)>;
std::optional<LRESULT> ChooseInMenu(unsigned letter, HMENU menu, const MenuTexts& textOf);

// What the items leave of a window's menu bar, and the line below it.
void PaintRestOfMenuBar(HWND window);

}  // namespace kx
