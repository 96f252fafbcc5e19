#include <kxbaseui/kx_layoutmanager.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cwchar>
#include <new>
#include <unordered_map>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_threadwindows.h>
#include <kxsystem/kx_log.h>

namespace {

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

// Position in the parent's client area and size; of a top-level window, the client area's size.
struct Dims {
    long x = 0, y = 0, width = 0, height = 0;
};

// Two records a window: its unzoomed rectangle and where it was last seen placed. They are kept in the window's own
// property list, packed into the property's value, because they have to go when the window goes, and any window of the
// host may have them. 16 bits a coordinate are what the platform's own window messages have room for.
class Record {
public:
    explicit Record(const wchar_t* name) : m_atom(GlobalAddAtomW(name)) {}

    bool Get(HWND window, Dims& dims) const {
        const std::uintptr_t packed = Read(window);
        if (!(packed & kPresent)) return false;
        dims.x = static_cast<std::int16_t>(packed >> 48);
        dims.y = static_cast<std::int16_t>((packed >> 32) & 0xFFFF);
        dims.width = static_cast<long>((packed >> 16) & 0xFFFF);
        dims.height = static_cast<long>((packed >> 1) & 0x7FFF);
        return true;
    }

    void Set(HWND window, const Dims& dims) const {
        const auto part = [](long value, long low, long high, int shift) {
            return static_cast<std::uintptr_t>(std::clamp(value, low, high) & 0xFFFF) << shift;
        };
        const std::uintptr_t packed = part(dims.x, -0x8000, 0x7FFF, 48) | part(dims.y, -0x8000, 0x7FFF, 32) |
                                      part(dims.width, 0, 0xFFFF, 16) | part(dims.height, 0, 0x7FFF, 1) | kPresent;
        SetPropW(window, Name(), reinterpret_cast<HANDLE>(packed));
        const auto read = m_read.find(window);
        if (read != m_read.end()) read->second = packed;
    }

    void Remove(HWND window) const {
        RemovePropW(window, Name());
        m_read.erase(window);
    }

    // Values that have been read are kept until then: asking for a property can cost as much as moving a window, and
    // a change of the zoom asks twice for each.
    void KeepWhatIsRead(bool keep) const {
        m_keep = keep;
        if (!keep) m_read.clear();
    }

private:
    static constexpr std::uintptr_t kPresent = 1;  // the value 0 means "no property"

    std::uintptr_t Read(HWND window) const {
        const auto read = m_read.find(window);
        if (read != m_read.end()) return read->second;
        const auto packed = reinterpret_cast<std::uintptr_t>(GetPropW(window, Name()));
        try {
            if (m_keep) m_read.emplace(window, packed);
        } catch (const std::bad_alloc&) {
            // Then it is asked for again.
        }
        return packed;
    }

    const wchar_t* Name() const { return MAKEINTATOM(m_atom); }
    ATOM m_atom;
    mutable bool m_keep = false;
    mutable std::unordered_map<HWND, std::uintptr_t> m_read;
};

const Record& Unzoomed() {
    static const Record record(L"KxGuiUnzoomed");
    return record;
}
const Record& Placed() {
    static const Record record(L"KxGuiPlaced");
    return record;
}

// While all windows are told of a new zoom.
class Broadcast {
public:
    Broadcast() {
        if (s_depth++ == 0) Keep(true);
    }
    ~Broadcast() {
        if (--s_depth == 0) Keep(false);
    }
    Broadcast(const Broadcast&) = delete;
    Broadcast& operator=(const Broadcast&) = delete;

private:
    static void Keep(bool keep) {
        Unzoomed().KeepWhatIsRead(keep);
        Placed().KeepWhatIsRead(keep);
    }
    static inline int s_depth = 0;
};

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
    Dims unzoomed, placed;
    const bool known = Unzoomed().Get(window, unzoomed) && Placed().Get(window, placed);
    const auto keep = [known](long& kept, long seen, long present, double zoom) {
        if (!known || seen != present) kept = Round(static_cast<double>(present) / zoom);
    };
    const Dims before = unzoomed;
    keep(unzoomed.x, placed.x, now.x, positionZoom);
    keep(unzoomed.y, placed.y, now.y, positionZoom);
    keep(unzoomed.width, placed.width, now.width, sizeZoom);
    keep(unzoomed.height, placed.height, now.height, sizeZoom);
    if (!known || before.x != unzoomed.x || before.y != unzoomed.y || before.width != unzoomed.width ||
        before.height != unzoomed.height) {
        Unzoomed().Set(window, unzoomed);
        Placed().Set(window, now);
    }
    return unzoomed;
}

void SetZoomedFont(HWND window, double previousZoom) {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HFONT zoomed = font ? KX_GetFontAtZoom(font, previousZoom, s_zoom) : nullptr;
    if (zoomed && zoomed != font) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(zoomed), FALSE);
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
    if (IsWindow(window)) Placed().Set(window, Measure(window));
}

void PlaceChildren(HWND parent, double previousZoom) {
    if (LaysOutItsChildren(parent)) return;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const Dims unzoomed = Remember(child, previousZoom, previousZoom);
        SetZoomedFont(child, previousZoom);
        Place(child, unzoomed, Moves::PlaceAndSize);
        PlaceChildren(child, previousZoom);
    }
}

void ForgetTree(HWND window) {
    Unzoomed().Remove(window);
    Placed().Remove(window);
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ForgetTree(child);
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
    const Broadcast broadcast;
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
    PlaceChildren(window, previousZoom);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void CKxGUILayoutManager::DeleteWindowDimsForGuiZoom(HWND window) {
    if (IsWindow(window)) ForgetTree(window);
}
