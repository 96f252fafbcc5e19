// Tooltips.
//
// All tools of one parent share one tooltip window, made when the first tool of that parent gets a text: a window for
// each button would cost more than the buttons.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Gives `tool`, a child window, a tooltip; called again, changes its text. An empty or null text shows none. Lines are
// separated by "\r\n". Returns the tooltip window, which belongs to the module and lives as long as the tool's parent;
// null when there is no such window or no parent.
KXBASEUI_API HWND KX_CreateToolTipWindow(HWND tool, const wchar_t* text);

// The tooltip window that a tool shares with its siblings; null while there is none.
KXBASEUI_API HWND KX_GetToolTipWindow(HWND tool);

// Changes the text of a tool; the same as KX_CreateToolTipWindow.
KXBASEUI_API void KX_UpdateToolTipWindow(HWND tool, const wchar_t* text);

// Takes the tooltip away from a tool. To be called before the tool is destroyed, if its parent lives on.
KXBASEUI_API void KX_DeleteToolTip(HWND tool);
