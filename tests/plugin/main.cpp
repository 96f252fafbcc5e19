// What stands behind a window's procedure, or a window's class, stays when the plug-in that brought it is unloaded.
#include <windows.h>

#include <cstdio>
#include <utility>

int main() {
    const HWND frame = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                       nullptr, nullptr, nullptr);
    const char* fault = nullptr;
    for (const auto& [function, module] : {std::pair{"Follow", L"kxbaseui.dll"}, {"Make", L"kxdevui.dll"}}) {
        const HMODULE plugin = LoadLibraryW(L"plugin_probe.dll");
        const FARPROC found = plugin ? GetProcAddress(plugin, function) : nullptr;
        if (!found) return std::puts("plugin: there is none"), 1;
        reinterpret_cast<void (*)(HWND)>(reinterpret_cast<void*>(found))(frame);
        FreeLibrary(plugin);
        if (GetModuleHandleW(L"plugin_probe.dll")) fault = "the plug-in is still there, and shows nothing";
        if (!GetModuleHandleW(module)) fault = function;
        if (fault) break;
        RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
        SendMessageW(frame, WM_SYSCOLORCHANGE, 0, 0);
    }
    std::printf("plugin: %s\n", fault ? fault : "well");
    return fault ? 1 : 0;
}
