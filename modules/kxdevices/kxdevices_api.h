// kxdevices: the devices of the microscope as the panels see them.
//
// The module promises: no function throws past its border except where memory runs out; no function keeps a pointer
// that it was given; a null output is accepted wherever a value is handed back. Everything belongs to the GUI thread.
#pragma once

#if defined(KXDEVICES_STATIC)
#define KXDEVICES_API
#elif defined(KXDEVICES_BUILDING)
#define KXDEVICES_API __declspec(dllexport)
#else
#define KXDEVICES_API __declspec(dllimport)
#endif
