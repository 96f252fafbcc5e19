#include <kxbaseui/kx_layoutmanager.h>

#include <algorithm>
#include <unordered_set>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_stockwindows.h>
#include <kxbaseui/kx_threadwindows.h>
#include <kxbaseui/kx_windowdims.h>
#include <kxsystem/kx_log.h>

namespace {

using kx::Dims;
using kx::RoundAway;

double s_userZoom = 1.0;
double s_scale = 1.0;
double s_zoom = 1.0;  // of both
double s_previousZoom = 1.0;
unsigned s_change = 0;  // counts the changes, so that a broadcast notices that it has been overtaken

bool IsUsable(double zoom) {
    return zoom >= CKxGUILayoutManager::MinimumZoom && zoom <= CKxGUILayoutManager::MaximumZoom;
}

bool IsUsableScale(double scale) {
    return scale >= CKxGUILayoutManager::MinimumScale && scale <= CKxGUILayoutManager::MaximumScale;
}

kx::WindowDims& Memory() {
    static auto* memory = new kx::WindowDims;
    return *memory;
}

bool IsChildWindow(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0; }

kx::WindowKind KnownKind(HWND window) {
    const kx::WindowDims::Entry* entry = Memory().Find(window);
    return entry ? entry->kind : kx::KindOf(window);
}

// What is remembered of the window, brought up to date with what others have done to it since.
//
// No entry is held while a message is sent: whoever gets it may make windows, and the table may move.
kx::WindowDims::Entry Remember(HWND window, double positionZoom, double sizeZoom) {
    const kx::WindowKind kind = KnownKind(window);
    const Dims now = kx::MeasureWindow(window, kind);
    const kx::WindowDims::Entry* old = Memory().Find(window);
    const bool known = old != nullptr;
    const bool isSized = !known || old->placed.height != now.height;
    const bool isRagged = isSized && kind == kx::WindowKind::ListBox && kx::IsRagged(window);

    kx::WindowDims::Entry spare, *entry = Memory().Add(window);
    if (!entry) entry = &spare;
    entry->kind = kind;
    if (isSized) entry->isRagged = isRagged;
    Dims &unzoomed = entry->unzoomed, &placed = entry->placed;
    const bool isPlaced = known && entry->isPlaced;
    const auto keep = [](bool isKnown, long& kept, long seen, long present, double zoom) {
        if (!isKnown || seen != present) kept = RoundAway(static_cast<double>(present) / zoom);
    };
    const Dims before = unzoomed;
    keep(isPlaced, unzoomed.x, placed.x, now.x, positionZoom);
    keep(isPlaced, unzoomed.y, placed.y, now.y, positionZoom);
    keep(known, unzoomed.width, placed.width, now.width, sizeZoom);
    keep(known, unzoomed.height, placed.height, now.height, sizeZoom);
    if (!known || before.width != unzoomed.width || before.height != unzoomed.height) entry->sizedAt = sizeZoom;
    if (!known || before != unzoomed) placed = now;
    entry->isPlaced = true;
    return *entry;
}

void SetZoomedFont(HWND window, const kx::WindowDims::Entry& known, double previousZoom) {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HFONT zoomed = font ? KX_GetFontAtZoom(font, previousZoom, s_zoom) : nullptr;
    if (!zoomed || zoomed == font) return;
    auto inner = known.inner;
    kx::SetFontKeeping(window, known.kind, font, zoomed, previousZoom, s_zoom, inner);
    if (kx::WindowDims::Entry* entry = Memory().Find(window)) entry->inner = inner;
}

enum class Moves { SizeOnly, PlaceAndSize };

void Place(HWND window, const kx::WindowDims::Entry& known, Moves moves) {
    const Dims now = kx::MeasureWindow(window, known.kind);
    Dims target = kx::ZoomedDims(window, known, s_zoom);
    // Its size is one of this zoom, and need not be what rounding makes of the unzoomed one.
    if (known.sizedAt == s_zoom) {
        target.width = now.width;
        target.height = now.height;
    }
    if (moves == Moves::SizeOnly) {
        target.x = now.x;
        target.y = now.y;
    }
    Dims placed = now;
    if (target != now) {
        // Children are painted once, with the window that is laid out, when all are in their places.
        kx::SetDims(window, known, target, moves == Moves::SizeOnly ? SWP_NOMOVE : SWP_NOREDRAW | SWP_NOCOPYBITS);
        // What a window makes of the wish (a combo box rounds its height) is what later tells whether it was touched.
        placed = kx::MeasureWindow(window, known.kind);
    }
    if (kx::WindowDims::Entry* entry = Memory().Find(window)) {
        entry->placed = placed;
        entry->sizedAt = s_zoom;
    }
}

// All windows below, parents before their children, but what is inside of windows that lay it out themselves.
void PlaceAllBelow(HWND window, double previousZoom) {
    if (kx::LaysOutItsChildren(window)) return;
    std::unordered_set<HWND> left;
    for (const HWND below : kx::WindowsBelow(window)) {
        const HWND parent = GetAncestor(below, GA_PARENT);
        if (left.contains(parent) || kx::IsPlacedByParent(below, parent)) {
            left.insert(below);
        } else if (IsWindow(below)) {
            const auto known = Remember(below, previousZoom, previousZoom);
            SetZoomedFont(below, known, previousZoom);
            Place(below, known, Moves::PlaceAndSize);
        }
    }
}

void Change(double userZoom, double scale) {
    if (userZoom == s_userZoom && scale == s_scale) return;
    const auto windows = kx::ThreadWindows();
    for (const HWND window : windows) {
        const bool isOurs = !IsChildWindow(window) || !kx::IsPlacedByParent(window, GetAncestor(window, GA_PARENT));
        if (isOurs) Remember(window, s_zoom, s_zoom);
    }
    s_previousZoom = s_zoom;
    s_userZoom = userZoom;
    s_scale = scale;
    s_zoom = std::clamp(userZoom * scale, CKxGUILayoutManager::MinimumZoom, CKxGUILayoutManager::MaximumZoom);
    const unsigned change = ++s_change;
    for (const HWND window : windows) {
        if (IsWindow(window)) SendMessageW(window, CKxGUILayoutManager::ZoomChangedMessage, 0, 0);
        if (change != s_change) return;
    }
}

}  // namespace

double CKxGUILayoutManager::GetGuiZoom() { return s_zoom; }
double CKxGUILayoutManager::GetUserZoom() { return s_userZoom; }
double CKxGUILayoutManager::GetGuiScale() { return s_scale; }
double CKxGUILayoutManager::GetPreviousGuiZoom() { return s_previousZoom; }
long CKxGUILayoutManager::Zoomed(double unzoomed) { return RoundAway(unzoomed * s_zoom); }
long CKxGUILayoutManager::Unzoomed(double zoomed) { return RoundAway(zoomed / s_zoom); }

bool CKxGUILayoutManager::SetGuiZoom(double zoom) {
    if (IsUsable(zoom)) return Change(zoom, s_scale), s_userZoom == zoom;
    KX_LOG(L"kx_layoutmanager", L"a zoom of %g is refused", zoom);
    return false;
}

bool CKxGUILayoutManager::SetGuiScale(double scale) {
    if (IsUsableScale(scale)) return Change(s_userZoom, scale), s_scale == scale;
    KX_LOG(L"kx_layoutmanager", L"a scale of %g is refused", scale);
    return false;
}

void CKxGUILayoutManager::ResizeWindowToGuiZoom(HWND window, double previousZoom) {
    if (!IsWindow(window)) return;
    if (!IsUsable(previousZoom)) {
        KX_LOG(L"kx_layoutmanager", L"a previous zoom of %g counts as 1", previousZoom);
        previousZoom = 1.0;
    }
    // A window is laid out unzoomed, but stands where its parent has put it: there the present zoom already counts.
    const auto known = Remember(window, s_zoom, previousZoom);
    SetZoomedFont(window, known, previousZoom);
    Place(window, known, Moves::SizeOnly);
    PlaceAllBelow(window, previousZoom);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void CKxGUILayoutManager::RememberWindowDimsForGuiZoom(HWND window) {
    if (!IsWindow(window)) return;
    for (const HWND below : kx::WindowsBelow(window))
        if (!kx::IsPlacedByParent(below, GetAncestor(below, GA_PARENT))) Remember(below, s_zoom, s_zoom);
}

void CKxGUILayoutManager::RememberWindowSizeForGuiZoom(HWND window) {
    if (!IsWindow(window)) return;
    const bool wasPlaced = Memory().Find(window) && Memory().Find(window)->isPlaced;
    Remember(window, s_zoom, s_zoom);
    kx::WindowDims::Entry* entry = Memory().Find(window);
    if (!entry) return;
    entry->isPlaced = wasPlaced;
    entry->sizedAt = s_zoom;
}

void CKxGUILayoutManager::DeleteWindowDimsForGuiZoom(HWND window) {
    if (!IsWindow(window)) return;
    Memory().Forget(window);
    for (const HWND below : kx::WindowsBelow(window))
        Memory().Forget(below);
}

void CKxGUILayoutManager::AddClassWithOwnLayout(const wchar_t* windowClass) {
    if (windowClass && *windowClass) kx::AddOwnLayout(windowClass);
}
