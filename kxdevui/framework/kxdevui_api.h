// kxdevui: Win32 controls for device panels.
//
// A host creates a control object, which it owns, calls Create on it with a parent window and a rectangle, fills it
// with device state, and overrides the protected virtual callbacks through which the control asks for changes. The
// library never deletes a control object and never moves a device.
//
// Everything happens on the thread that made the windows; the library starts no thread and takes no lock. No exception
// leaves it: one thrown by a host's callback out of a window message is logged, and the platform's default handling
// answers the message. A callback may destroy its own control, window and object.
//
// A host that loads the libraries by itself cannot unload them again once a control or a colour scheme has been used:
// window classes and the platform's own windows hold on to procedures in them.
#pragma once

#if defined(KXDEVUI_STATIC)
#define KXDEVUI_API
#elif defined(KXDEVUI_BUILDING)
#define KXDEVUI_API __declspec(dllexport)
#else
#define KXDEVUI_API __declspec(dllimport)
#endif

// Declares two virtual functions of one name, so that they take their places in the table in this order. Visual C++
// places the overloads of a name in the reverse order of their declarations, where the first of them stands.
#if defined(_MSC_VER)
#define KXDEVUI_OVERLOADS(first, second)                                                                               \
    second;                                                                                                            \
    first
#else
#define KXDEVUI_OVERLOADS(first, second)                                                                               \
    first;                                                                                                             \
    second
#endif
