// The library's free helpers: places of windows, caption labels, nearest values, numbers from edit windows, settings of
// the host, images of the pool.
#pragma once

#include <windows.h>

#include <functional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

// The window's rectangle, or its left and top, in its parent's client coordinates (screen coordinates for a top-level
// window), in pixels on the screen. Without a window all are 0.
KXDEVUI_API RECT RectInParent(HWND window);
KXDEVUI_API long GetWndX(HWND window);
KXDEVUI_API long GetWndY(HWND window);

// Sets a panel's caption labels in bold type. A template marks a caption by giving a "Static" the extended style
// WS_EX_TRANSPARENT: such a child with a text of fewer than 254 characters gets the bold GUI font and, in place, the
// size of its text plus 5 pixels in width. Any other sunken "Static" less than 4 pixels high is a separator line and
// gets WS_CLIPSIBLINGS. Only direct children count.
KXDEVUI_API void BoldifyCaptions(HWND window);

// The index of the value nearest to `value`; of two equally near the later one. -1 for a null pointer or no values; the
// first for a value that is not a number.
KXDEVUI_API long FindNearestValue(double value, const double* values, long count);

// The number in an edit window, read as KX_StringToDouble reads it, or, for the integer, as a whole number in the range
// of int with blanks around it. False leaves `value` as it is: no window, no number, something else beside the number.
KXDEVUI_API bool GetWndDouble(HWND edit, double& value);
KXDEVUI_API bool GetWndInt(HWND edit, int& value);

// ---- Settings ------------------------------------------------------------------------------------------------------

// Where the host keeps its settings: gives the text of one by section and name, or returns false.
using KxSettingsSource = std::function<bool(const wchar_t* section, const wchar_t* name, CKxStringW& value)>;

// Sets the source, for the whole process; an empty one, as at first, knows no setting.
KXDEVUI_API void SetSettingsSource(KxSettingsSource source);

// A setting as text, as a number (KX_StringToDouble), as a whole number (GetWndInt says of which texts). False leaves
// `value` as it is: the source does not know the setting, has thrown an exception, which is logged, or it is no number.
KXDEVUI_API bool GetSetting(const wchar_t* section, const wchar_t* name, CKxStringW& value);
KXDEVUI_API bool GetSettingDouble(const wchar_t* section, const wchar_t* name, double& value);
KXDEVUI_API bool GetSettingInt(const wchar_t* section, const wchar_t* name, int& value);

// ---- Images of the pool --------------------------------------------------------------------------------------------

// The common images of shutters.
enum EKxCommonImage : int {
    eKxCommonImage_ShutterOpen = 1101,
    eKxCommonImage_ShutterClosed = 1102,
};

// The pool's index of a common image; CKxBitmapPool::NoImage for any other number.
KXDEVUI_API int GetCommonImageFromPool(int id);

// The pool's index of the image for a shutter that is open (`on`) or closed, by the type that the device manager tells
// of it (shutter_rules.h). A closed one looks different while a camera acquires (`grabberActive` is not 0), when it
// keeps the camera in the dark. The common image for a device that is no shutter, and where the resource module has
// none for the type.
KXDEVUI_API int GetShutterImageFromPool(CDMApi_LogDevId id, bool on, int grabberActive = 0);
