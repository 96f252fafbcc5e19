// The exports of the devices module.
#pragma once

#ifdef KXDEVICES_BUILDING
#define KXDEVICES_API __declspec(dllexport)
#else
#define KXDEVICES_API __declspec(dllimport)
#endif
