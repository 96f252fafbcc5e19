// kxbaseui: fonts, colours, message boxes, tooltips, window alignment and the GUI zoom.
//
// The module promises: handles that a function returns (fonts, brushes) belong to the module and live as long as it
// does, so they are never deleted by the caller; null windows and null texts are taken and do nothing; no function
// throws. Everything here belongs to the GUI thread.
#pragma once

#if defined(KXBASEUI_STATIC)
#define KXBASEUI_API
#elif defined(KXBASEUI_BUILDING)
#define KXBASEUI_API __declspec(dllexport)
#else
#define KXBASEUI_API __declspec(dllimport)
#endif
