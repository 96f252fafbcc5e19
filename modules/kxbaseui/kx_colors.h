// The colours of the user interface.
//
// Every colour that a control paints with comes from here, so that a host can choose a scheme. At first the system's
// own colours hold.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// The schemes that a host can choose.
enum EKxColorScheme : int {
    eKxColorScheme_System = 0,  // whatever the system shows, followed when it changes
    eKxColorScheme_Light = 1,
    eKxColorScheme_Dark = 2,
    eKxColorScheme_HighContrast = 3,  // white and yellow on black
};

// Chooses the scheme. When it differs from the one held, every window of the calling thread is sent WM_SYSCOLORCHANGE,
// parents before children, and is repainted. An unknown value is refused and logged.
KXBASEUI_API void KX_SetColorScheme(EKxColorScheme scheme);
KXBASEUI_API EKxColorScheme KX_GetColorScheme();

// The colour and the brush of a system colour index (COLOR_BTNFACE, ...) in the scheme. The brush belongs to the
// module. An index without meaning gives black and the null brush.
KXBASEUI_API COLORREF KX_GetSysColor(int index);
KXBASEUI_API HBRUSH KX_GetSysColorBrush(int index);

// Entries of the GUI colour scheme beyond the system's indexes.
enum EKxVorGuiColor : int {
    eKxVorGuiColor_ScaleValue = 31,  // the part of a scale that is reached or chosen
    eKxVorGuiColor_ScaleRest = 37,   // the rest of it
};

// The colour of an entry of the GUI colour scheme: up to COLOR_MENUBAR the system's indexes, then EKxVorGuiColor. An
// entry without meaning gives black.
KXBASEUI_API COLORREF KX_GetVorGuiColor(int entry);
