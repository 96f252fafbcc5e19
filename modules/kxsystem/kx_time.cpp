#include <kxsystem/kx_time.h>

#include <windows.h>

namespace {
KX_TimeSource s_source = nullptr;
}

unsigned int KX_GetTimeCounter() { return s_source ? s_source() : GetTickCount(); }

void KX_SetTimeSource(KX_TimeSource source) { s_source = source; }
