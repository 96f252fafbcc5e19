#include <kxbaseui/kx_layoutmanager.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <unordered_set>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_threadwindows.h>
#include <kxbaseui/kx_windowdims.h>
#include <kxsystem/kx_log.h>

namespace {

using kx::Dims;

double s_zoom = 1.0;
double s_previousZoom = 1.0;
unsigned s_change = 0;  // counts the changes, so that a broadcast notices that it has been overtaken

long Round(double value) {
    constexpr double limit = 1e9;
    return std::isnan(value) ? 0 : std::lround(std::clamp(value, -limit, limit));
}

bool IsUsable(double zoom) {
    return zoom >= CKxGUILayoutManager::MinimumZoom && zoom <= CKxGUILayoutManager::MaximumZoom;
}

kx::WindowDims& Memory() {
    static auto* memory = new kx::WindowDims;
    return *memory;
}

bool IsClass(HWND window, const wchar_t* name) {
    wchar_t own[64] = L"";
    GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return _wcsicmp(own, name) == 0;
}

bool IsChildWindow(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0; }

// The platform's controls (combo box, list view, ...) lay out their inner windows themselves. Their classes are global;
// so is the dialog's, whose children are ours to place.
bool LaysOutItsChildren(HWND window) {
    return (GetClassLongW(window, GCL_STYLE) & CS_GLOBALCLASS) != 0 && !IsClass(window, L"#32770");
}

// A drop-down's own height is that of the closed box; the height to be given to it is that of the open one.
bool HasDropDown(HWND window) {
    return IsClass(window, L"ComboBox") && (GetWindowLongW(window, GWL_STYLE) & 3) != CBS_SIMPLE;
}

Dims Measure(HWND window) {
    RECT rect{};
    if (!IsChildWindow(window)) {
        GetClientRect(window, &rect);
        return {0, 0, rect.right, rect.bottom};
    }
    if (!HasDropDown(window) || !SendMessageW(window, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&rect))) {
        GetWindowRect(window, &rect);
    }
    MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

// What is remembered of the window, brought up to date with what others have done to it since.
Dims Remember(HWND window, double positionZoom, double sizeZoom) {
    const Dims now = Measure(window);
    const bool known = Memory().Find(window) != nullptr;
    kx::WindowDims::Entry spare, *entry = Memory().Add(window);
    if (!entry) entry = &spare;
    auto& [handle, isKnown, unzoomed, placed] = *entry;
    const auto keep = [known](long& kept, long seen, long present, double zoom) {
        if (!known || seen != present) kept = Round(static_cast<double>(present) / zoom);
    };
    const Dims before = unzoomed;
    keep(unzoomed.x, placed.x, now.x, positionZoom);
    keep(unzoomed.y, placed.y, now.y, positionZoom);
    keep(unzoomed.width, placed.width, now.width, sizeZoom);
    keep(unzoomed.height, placed.height, now.height, sizeZoom);
    if (!known || before != unzoomed) placed = now;
    return unzoomed;
}

void SetZoomedFont(HWND window, double previousZoom) {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HFONT zoomed = font ? KX_GetFontAtZoom(font, previousZoom, s_zoom) : nullptr;
    if (!zoomed || zoomed == font) return;
    // An edit takes margins from the font, but as it is sized later or earlier, other ones: they stay as they were made.
    const LRESULT margins = SendMessageW(window, EM_GETMARGINS, 0, 0);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(zoomed), FALSE);
    SendMessageW(window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, static_cast<LPARAM>(margins));
}

void SetSize(HWND window, long width, long height, UINT flags, long x, long y) {
    if (!IsChildWindow(window)) {
        RECT frame{0, 0, width, height};
        AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), GetMenu(window) != nullptr,
                           static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
        width = frame.right - frame.left;
        height = frame.bottom - frame.top;
    }
    SetWindowPos(window, nullptr, x, y, width, height, flags | SWP_NOZORDER | SWP_NOACTIVATE);
}

enum class Moves { SizeOnly, PlaceAndSize };

void Place(HWND window, const Dims& unzoomed, Moves moves) {
    const Dims now = Measure(window);
    Dims target{Round(unzoomed.x * s_zoom), Round(unzoomed.y * s_zoom), Round(unzoomed.width * s_zoom),
                Round(unzoomed.height * s_zoom)};
    if (moves == Moves::SizeOnly) {
        target.x = now.x;
        target.y = now.y;
    }
    if (target.x != now.x || target.y != now.y || target.width != now.width || target.height != now.height) {
        // Children are painted once, with the window that is laid out, when all are in their places.
        const UINT flags = moves == Moves::SizeOnly ? SWP_NOMOVE : SWP_NOREDRAW | SWP_NOCOPYBITS;
        SetSize(window, target.width, target.height, flags, target.x, target.y);
    }
    // What a window makes of the wish (a combo box rounds its height) is what later tells whether it was touched.
    const Dims placed = Measure(window);
    if (kx::WindowDims::Entry* entry = Memory().Find(window)) entry->placed = placed;
}

// All windows below, parents before their children, but what is inside of windows that lay it out themselves.
void PlaceAllBelow(HWND window, double previousZoom) {
    std::unordered_set<HWND> left;
    if (LaysOutItsChildren(window)) return;
    for (const HWND below : kx::WindowsBelow(window)) {
        const bool isLeft = left.contains(GetAncestor(below, GA_PARENT));
        if (isLeft || LaysOutItsChildren(below)) left.insert(below);
        if (isLeft || !IsWindow(below)) continue;
        const Dims unzoomed = Remember(below, previousZoom, previousZoom);
        SetZoomedFont(below, previousZoom);
        Place(below, unzoomed, Moves::PlaceAndSize);
    }
}

}  // namespace

double CKxGUILayoutManager::GetGuiZoom() { return s_zoom; }
double CKxGUILayoutManager::GetPreviousGuiZoom() { return s_previousZoom; }
long CKxGUILayoutManager::Zoomed(double unzoomed) { return Round(unzoomed * s_zoom); }
long CKxGUILayoutManager::Unzoomed(double zoomed) { return Round(zoomed / s_zoom); }

bool CKxGUILayoutManager::SetGuiZoom(double zoom) {
    if (!IsUsable(zoom)) {
        KX_LOG(L"kx_layoutmanager", L"a zoom of %g is refused", zoom);
        return false;
    }
    if (zoom == s_zoom) return true;
    const auto windows = kx::ThreadWindows();
    for (const HWND window : windows) {
        const HWND parent = GetAncestor(window, GA_PARENT);
        if (!IsChildWindow(window) || !LaysOutItsChildren(parent)) Remember(window, s_zoom, s_zoom);
    }
    s_previousZoom = s_zoom;
    s_zoom = zoom;
    const unsigned change = ++s_change;
    for (const HWND window : windows) {
        if (IsWindow(window)) SendMessageW(window, ZoomChangedMessage, 0, 0);
        if (change != s_change) return s_zoom == zoom;
    }
    return true;
}

void CKxGUILayoutManager::ResizeWindowToGuiZoom(HWND window, double previousZoom) {
    if (!IsWindow(window)) return;
    if (!IsUsable(previousZoom)) {
        KX_LOG(L"kx_layoutmanager", L"a previous zoom of %g counts as 1", previousZoom);
        previousZoom = 1.0;
    }
    // A window is laid out unzoomed, but stands where its parent has put it: there the present zoom already counts.
    const Dims unzoomed = Remember(window, s_zoom, previousZoom);
    SetZoomedFont(window, previousZoom);
    Place(window, unzoomed, Moves::SizeOnly);
    PlaceAllBelow(window, previousZoom);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void CKxGUILayoutManager::RememberWindowDimsForGuiZoom(HWND window) {
    if (!IsWindow(window) || LaysOutItsChildren(window)) return;
    for (const HWND below : kx::WindowsBelow(window))
        if (!LaysOutItsChildren(GetAncestor(below, GA_PARENT))) Remember(below, s_zoom, s_zoom);
}

void CKxGUILayoutManager::DeleteWindowDimsForGuiZoom(HWND window) {
    if (!IsWindow(window)) return;
    Memory().Forget(window);
    for (const HWND below : kx::WindowsBelow(window))
        Memory().Forget(below);
}
