#include "kx_schemeframe.h"

#include <cwchar>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_threadwindows.h>

#include "kx_platformlook.h"
#include "kx_schemecolors.h"
#include "kx_schememenu.h"
#include "kx_subclass.h"

namespace kx {

namespace {

void Restyle(HWND window) {
    SetDarkTitle(window, IsOnDarkGround());
    FollowColorSchemeInMenu(GetMenu(window), true);
    if (GetMenu(window)) DrawMenuBar(window);
}

void OnZoom(HWND window) {
    if (!GetMenu(window)) return;
    MeasureMenuAnew(GetMenu(window), true);
    DrawMenuBar(window);
}

// The system tells top-level windows alone that its colours are others.
void TellBelow(HWND window) {
    if (IsTellingOfScheme()) return;
    for (const HWND each : WindowsBelow(window))
        if (IsWindow(each)) SendNotifyMessageW(each, WM_SYSCOLORCHANGE, 0, 0);
}

bool IsAboutColors(WPARAM what, LPARAM area) {
    return what == SPI_SETHIGHCONTRAST ||
           (area && std::wcscmp(reinterpret_cast<const wchar_t*>(area), L"ImmersiveColorSet") == 0);
}

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = AnswerForMenu(message, wParam, lParam)) return *answer;
    // Its height is the items'.
    if (message == WM_NCCALCSIZE) FollowColorSchemeInMenu(GetMenu(window), true);
    const LRESULT result = CallRest(FrameProc, window, message, wParam, lParam);
    if (!IsWindow(window)) return result;
    switch (message) {
    case WM_NCPAINT:
    case WM_NCACTIVATE: PaintRestOfMenuBar(window); break;
    // After the host, which may have filled it only now.
    case WM_INITMENUPOPUP: FollowColorSchemeInMenu(reinterpret_cast<HMENU>(wParam), false); break;
    case WM_SETTINGCHANGE:
        if (IsAboutColors(wParam, lParam)) FollowSystemAgain();
        break;
    case WM_SYSCOLORCHANGE:
        FollowSystemAgain();
        if (!IsWindow(window)) break;
        Restyle(window);
        TellBelow(window);
        break;
    case CKxGUILayoutManager::ZoomChangedMessage: OnZoom(window); break;
    default: break;
    }
    return result;
}

}  // namespace

void FollowColorSchemeInFrame(HWND window) {
    if (Subclass(window, FrameProc)) Restyle(window);
}

}  // namespace kx
