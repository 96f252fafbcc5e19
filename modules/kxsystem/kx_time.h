// The time counter that measures clicks and motions.
#pragma once

#include <kxsystem/kxsystem_api.h>

// Milliseconds since some moment in the past; wraps around after 49 days, so only differences mean something.
KXSYSTEM_API unsigned int KX_GetTimeCounter();

// Puts another clock in its place, for tests and simulations; null goes back to the system's.
using KX_TimeSource = unsigned int (*)();
KXSYSTEM_API void KX_SetTimeSource(KX_TimeSource source);
