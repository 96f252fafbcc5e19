// kxsystem: strings, translations, numbers, time and the diagnostic log.
//
// The module promises: no function throws past its border except CKxString operations that run out of memory; no
// function keeps a pointer that it was given; a null text counts as an empty one. Everything belongs to the GUI thread
// unless its header says otherwise.
#pragma once

#if defined(KXSYSTEM_STATIC)
#define KXSYSTEM_API
#elif defined(KXSYSTEM_BUILDING)
#define KXSYSTEM_API __declspec(dllexport)
#else
#define KXSYSTEM_API __declspec(dllimport)
#endif
