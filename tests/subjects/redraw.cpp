#include "redraw.h"

#include <bench/bench.h>

namespace kx::test {
namespace {

// What no repaint repeats by chance. Without clipping: also frames and what only a child paints.
void Spoil(HWND parent) {
    const HDC dc = GetDCEx(parent, nullptr, DCX_CACHE);
    RECT all{};
    GetClientRect(parent, &all);
    SetBkColor(dc, RGB(255, 0, 254));
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
    ReleaseDC(parent, dc);
}

std::string WindowAt(HWND parent, POINT point) {
    HWND window = parent;
    while (true) {
        POINT inside = point;
        MapWindowPoints(parent, window, &inside, 1);
        const HWND child = ChildWindowFromPointEx(window, inside, CWP_SKIPINVISIBLE);
        if (!child || child == window) break;
        window = child;
    }
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return Narrow(name) + " #" + std::to_string(GetDlgCtrlID(window));
}

}  // namespace

std::string NotRedrawn(HWND parent) {
    Pump();
    HideCaret(nullptr);
    const Picture seen = Picture::OnScreen(parent);
    Spoil(parent);
    RedrawWindow(parent, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_ERASENOW);
    const Picture drawn = Picture::OnScreen(parent);
    ShowCaret(nullptr);
    const int differences = seen.Differences(drawn);
    if (differences == 0) return {};
    static int number = 0;
    const std::string name = "redraw-" + std::to_string(++number);
    seen.Save(name + "-seen"), drawn.Save(name + "-drawn");
    const RECT box = seen.Difference(drawn);
    return "the screen differs in " + std::to_string(differences) + " pixels from a full repaint, from " +
           std::to_string(box.left) + ", " + std::to_string(box.top) + " to " + std::to_string(box.right) + ", " +
           std::to_string(box.bottom) + ", first in " + WindowAt(parent, {box.left, box.top}) + " (" + name + ")";
}

}  // namespace kx::test
