// Tooltips.
//
// All tools in one top-level window share one tooltip window, made when the first of them gets a text: a window for
// each button would cost more than the buttons.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Gives `tool`, a child window, a tooltip; called again, changes its text. An empty or null text shows none. Lines are
// separated by "\r\n". Returns the tooltip window, which belongs to the module and lives as long as the top-level
// window; null when there is no such window or no parent.
KXBASEUI_API HWND KX_CreateToolTipWindow(HWND tool, const wchar_t* text);

// The tooltip window that a tool shares with the others in its top-level window; null while there is none.
KXBASEUI_API HWND KX_GetToolTipWindow(HWND tool);

// Changes the text of a tool; the same as KX_CreateToolTipWindow.
KXBASEUI_API void KX_UpdateToolTipWindow(HWND tool, const wchar_t* text);

// Takes the tooltip away from a tool, which loses it by itself when it is destroyed.
KXBASEUI_API void KX_DeleteToolTip(HWND tool);
