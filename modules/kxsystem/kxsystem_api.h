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

// The package says by which of its runtimes Visual C++ has built the library; strings are laid out differently in the
// other.
#if defined(KXSYSTEM_DEBUG_RUNTIME)
#if KXSYSTEM_DEBUG_RUNTIME && !defined(_DEBUG)
#error "The device UI library was built with the runtime /MDd: a host built with /MD needs a library built so."
#elif !KXSYSTEM_DEBUG_RUNTIME && defined(_DEBUG)
#error "The device UI library was built with the runtime /MD: a host built with /MDd needs a library built so."
#endif
#endif
