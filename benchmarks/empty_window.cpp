// A program that shows an empty window of the platform's, paints it and ends: what every program costs.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = instance;
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = L"KxEmptyWindow";
    RegisterClassExW(&description);
    const HWND window = CreateWindowExW(0, description.lpszClassName, L"Empty", WS_OVERLAPPEDWINDOW, 20, 10, 1016, 760,
                                        nullptr, nullptr, instance, nullptr);
    ShowWindow(window, SW_SHOW);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    ExitProcess(window ? 0 : 1);
}
