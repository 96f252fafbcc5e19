// Which image of the pool shows a shutter.
#pragma once

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/kxdevui_api.h>

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
