// The colours of the user interface.
//
// Every colour that a control paints with comes from here, so that a host can choose a scheme. At first the system's
// own colours hold.
#pragma once

#include <windows.h>

#include <optional>

#include <kxbaseui/kxbaseui_api.h>

// The schemes that a host can choose.
enum EKxColorScheme : int {
    eKxColorScheme_System = 0,  // whatever the system shows, followed when it changes
    eKxColorScheme_Light = 1,
    eKxColorScheme_Dark = 2,
    eKxColorScheme_HighContrast = 3,  // white and yellow on black
};

// Chooses the scheme, and follows the system's settings no longer. When it differs from the one held, every window of
// the calling thread is sent WM_SYSCOLORCHANGE, parents before children, and is repainted. An unknown value is refused
// and logged.
KXBASEUI_API void KX_SetColorScheme(EKxColorScheme scheme);
KXBASEUI_API EKxColorScheme KX_GetColorScheme();

// What the user has set for all programs: whether they are to be in high contrast, and whether they are to be light,
// where that is set at all.
struct SKxSystemColorSettings {
    // As above, in the same order.
    bool highContrast = false;
    std::optional<bool> light;
};
// Read now.
KXBASEUI_API SKxSystemColorSettings KX_GetSystemColorSettings();

// The scheme of our own that settings ask for: high contrast before all else, dark where programs are not to be light,
// light otherwise.
KXBASEUI_API EKxColorScheme KX_SchemeForSettings(const SKxSystemColorSettings& settings);

// Chooses the scheme that the system's settings ask for, and again whenever they have changed, until KX_SetColorScheme
// is called. The change is heard by top-level windows that KX_FollowColorScheme was called for (kx_schemecontrols.h).
KXBASEUI_API void KX_FollowSystemColorScheme();
KXBASEUI_API bool KX_IsFollowingSystemColorScheme();

// The colour and the brush of a system colour index (COLOR_BTNFACE, ...) in the scheme. The brush belongs to the
// module. An index without meaning gives black and the null brush.
KXBASEUI_API COLORREF KX_GetSysColor(int index);
KXBASEUI_API HBRUSH KX_GetSysColorBrush(int index);

// Entries of the GUI colour scheme beyond the system's indexes.
enum EKxVorGuiColor : int {
    eKxVorGuiColor_ScaleValue = 31,  // the part of a scale that is reached or chosen
    eKxVorGuiColor_ScaleRest = 37,   // the rest of it
    eKxVorGuiColor_Alert = 64,       // what has failed or was refused
};

// The colour of an entry of the GUI colour scheme: up to COLOR_MENUBAR the system's indexes, then EKxVorGuiColor. An
// entry without meaning gives black.
KXBASEUI_API COLORREF KX_GetVorGuiColor(int entry);
