#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui_container.h>

extern "C" __declspec(dllexport) void Follow(HWND window) { KX_FollowColorScheme(window); }

// The host's object lives on, as plug-ins' objects do.
extern "C" __declspec(dllexport) void Make(HWND window) {
    static auto* container = new CKxDevUI_Container;
    container->Create(window, 0, 0, 90, 40, true, true);
}
