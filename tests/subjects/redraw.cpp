#include "redraw.h"

#include "user.h"

#include <bench/bench.h>

namespace kx::test {
namespace {

bool IsA(HWND window, const wchar_t* className, LONG type, LONG mask) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return _wcsicmp(name, className) == 0 && (GetWindowLongW(window, GWL_STYLE) & mask) == type;
}

// Static, SS_ETCHEDHORZ: the platform's etched line leaves rows of its place unpainted when that is higher than two
// pixels, and nothing else paints there.
// SysHeader32: the list view does not have it painted where a scroll bar has come or gone.
// Button, BS_AUTORADIOBUTTON: Wine's inverts the focus rectangle once more when the focus comes with a click.
BOOL CALLBACK CoverQuirk(HWND window, LPARAM focus) {
    const bool focusedRadioButton =
        window == reinterpret_cast<HWND>(focus) && IsA(window, L"Button", BS_AUTORADIOBUTTON, BS_TYPEMASK);
    if (focusedRadioButton || IsA(window, L"SysHeader32", 0, 0)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    } else if (IsA(window, L"Static", SS_ETCHEDHORZ, SS_TYPEMASK) && IsWindowVisible(window)) {
        const HDC dc = GetDC(window);
        RECT client{};
        GetClientRect(window, &client);
        FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
        ReleaseDC(window, dc);
    }
    return TRUE;
}

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
    return NameOfWindow(window);
}

}  // namespace

Picture SeenPicture(HWND window) {
    Pump();
    HideCaret(nullptr);
    EnumChildWindows(window, CoverQuirk, reinterpret_cast<LPARAM>(GetFocus()));
    Picture seen = Picture::OnScreen(window);
    ShowCaret(nullptr);
    return seen;
}

std::string NotRedrawn(HWND parent, bool* isAnother) {
    const Picture seen = SeenPicture(parent);
    static Picture before = seen;
    if (isAnother) *isAnother = !(seen == before);
    before = seen;
    Spoil(parent);
    constexpr UINT all = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN;
    // The parent's own frame is not looked at, and takes long.
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        RedrawWindow(child, nullptr, nullptr, all | RDW_FRAME);
    RedrawWindow(parent, nullptr, nullptr, all | RDW_UPDATENOW | RDW_ERASENOW);
    const Picture drawn = SeenPicture(parent);
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
