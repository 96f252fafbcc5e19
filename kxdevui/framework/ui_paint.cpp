#include <kxdevui/framework/ui_paint.h>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

std::unordered_map<HWND, std::shared_ptr<WindowState>>& States() {
    static auto* states = new std::unordered_map<HWND, std::shared_ptr<WindowState>>;
    return *states;
}

// A memory DC that goes with `reference` and holds a bitmap of at least that size, until the end of the scope; null
// when there is no room for one. All windows of a thread draw to the same, one after the other: a bitmap for each would
// be six round trips under Wine.
class BackBuffer {
public:
    BackBuffer(HDC reference, SIZE size) noexcept : m_shared(Shared()) {
        if (std::exchange(m_shared.taken, true)) return;
        m_isOwner = true;
        if (m_shared.bitmap && size.cx <= m_shared.size.cx && size.cy <= m_shared.size.cy) {
            m_dc = m_shared.dc.get();
            return;
        }
        size = {std::max({size.cx, m_shared.size.cx, 1L}), std::max({size.cy, m_shared.size.cy, 1L})};
        if (!m_shared.dc) m_shared.dc.reset(CreateCompatibleDC(reference));
        Bitmap bitmap(m_shared.dc ? CreateCompatibleBitmap(reference, size.cx, size.cy) : nullptr);
        if (!bitmap || !SelectObject(m_shared.dc.get(), bitmap.get())) return;
        m_shared.bitmap = std::move(bitmap);
        m_shared.size = size;
        m_dc = m_shared.dc.get();
    }
    ~BackBuffer() {
        if (m_isOwner) m_shared.taken = false;
    }
    BackBuffer(const BackBuffer&) = delete;
    BackBuffer& operator=(const BackBuffer&) = delete;
    operator HDC() const noexcept { return m_dc; }
    static void Drop() noexcept {
        Kept& kept = Shared();
        if (kept.taken) return;
        kept.dc.reset();
        kept.bitmap.reset();
        kept.size = {};
    }

private:
    struct Kept {
        Bitmap bitmap;  // outlives the DC that it is selected into
        MemoryDC dc;
        SIZE size{};
        bool taken = false;
    };
    // Lives as long as the thread, which may end when GDI has gone.
    static Kept& Shared() {
        thread_local auto* kept = new Kept;
        return *kept;
    }

    Kept& m_shared;
    bool m_isOwner = false;
    HDC m_dc = nullptr;
};

// The DC that a message paints to, and the end of painting if it was begun here.
class PaintTarget {
public:
    explicit PaintTarget(const Message& message)
        : m_window(message.window), m_dc(reinterpret_cast<HDC>(message.wParam)) {
        if (!m_dc) m_dc = BeginPaint(m_window, &m_paint);
    }
    ~PaintTarget() {
        if (m_paint.hdc) EndPaint(m_window, &m_paint);
    }
    PaintTarget(const PaintTarget&) = delete;
    PaintTarget& operator=(const PaintTarget&) = delete;
    operator HDC() const noexcept { return m_dc; }
    bool IsBegunHere() const noexcept { return m_paint.hdc != nullptr; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

// A group box draws its frame and leaves to its parent what it frames.
bool IsGroupBox(HWND window) {
    if ((GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) != BS_GROUPBOX) return false;
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return lstrcmpiW(name, L"Button") == 0;
}

bool IsOfThisThread(HWND window) { return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId(); }

// Leaves out every visible child whose top-left corner lies inside, whether it needs painting or not: one that is not
// left out would be painted over. With a background, the room in the group boxes that are to be painted gets it.
// Returns those that are to be told to paint, the group boxes last. What another thread shows, a camera's live view, is
// the system's to paint: a message would wait for that thread.
std::vector<HWND> LeaveOutChildren(HWND window, HDC target, const RECT& client, HBRUSH groupBackground) {
    std::vector<HWND> told;
    std::vector<std::pair<HWND, RECT>> groups;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) continue;
        RECT rect{};
        GetWindowRect(child, &rect);
        MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&rect), 2);
        if (!PtInRect(&client, {rect.left, rect.top})) continue;
        const bool ours = IsOfThisThread(child);
        if (ours && groupBackground && IsGroupBox(child) && GetUpdateRect(child, nullptr, FALSE)) {
            groups.emplace_back(child, rect);
            continue;
        }
        ExcludeClipRect(target, rect.left, rect.top, rect.right, rect.bottom);
        if (ours && !KX_IsWindowMarkedToSkipPaint(child)) told.push_back(child);
    }
    // What stands in a group box is left out by now.
    for (const auto& [group, rect] : groups) {
        FillRect(target, &rect, groupBackground);
        ExcludeClipRect(target, rect.left, rect.top, rect.right, rect.bottom);
        told.push_back(group);
    }
    return told;
}

bool IsChildsCorner(HWND window, POINT corner) {
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        POINT own{};
        MapWindowPoints(child, window, &own, 1);
        if (own.x == corner.x && own.y == corner.y) return true;
    }
    return false;
}

// A child with a visual style that is transparent somewhere asks for its background, while it paints itself, by the
// message that asks for a picture of the window. Painting the children in answer would have them ask again, and so on.
// The child hands its own DC on, moved to where the window's would be, or does so with the memory DC it paints to. At
// the window's own corner that DC is not moved; but a child asks to erase it first, and who takes a picture so says
// more.
bool IsBackgroundQuestion(const Message& message) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    if (message.id != WM_PRINTCLIENT || !dc) return false;
    const auto state = FindState(message.window);
    const bool wasErased = state && std::exchange(state->erased, nullptr) == dc;
    if (state && state->painting) return true;
    RECT clip{};
    if (GetClipBox(dc, &clip) == NULLREGION) return true;
    if (const HWND owner = WindowFromDC(dc)) return IsChild(message.window, owner) != FALSE;
    if (message.lParam != PRF_CLIENT) return false;
    POINT origin{};
    GetViewportOrgEx(dc, &origin);
    return wasErased || ((origin.x != 0 || origin.y != 0) && IsChildsCorner(message.window, {-origin.x, -origin.y}));
}

// Says of a window that it is painting, until the end of the scope.
class PaintingMark {
public:
    explicit PaintingMark(HWND window) : m_state(StateOf(window)), m_before(std::exchange(m_state->painting, true)) {}
    ~PaintingMark() { m_state->painting = m_before; }
    PaintingMark(const PaintingMark&) = delete;
    PaintingMark& operator=(const PaintingMark&) = delete;

private:
    std::shared_ptr<WindowState> m_state;
    bool m_before;
};

void SpareSiblings(HWND window, HDC target, const RECT& client) {
    const HWND parent = GetAncestor(window, GA_PARENT);
    for (HWND sibling = GetWindow(parent, GW_CHILD); sibling; sibling = GetWindow(sibling, GW_HWNDNEXT)) {
        if (sibling == window || !IsWindowVisible(sibling)) continue;
        RECT rect{}, common{};
        GetWindowRect(sibling, &rect);
        MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&rect), 2);
        if (!IntersectRect(&common, &rect, &client)) continue;
        ExcludeClipRect(target, rect.left, rect.top, rect.right, rect.bottom);
        InvalidateRect(sibling, nullptr, FALSE);
    }
}

}  // namespace

std::shared_ptr<WindowState> StateOf(HWND window) {
    auto& state = States()[window];
    if (!state) state = std::make_shared<WindowState>();
    return state;
}

std::shared_ptr<WindowState> FindState(HWND window) noexcept {
    const auto found = States().find(window);
    return found == States().end() ? nullptr : found->second;
}

void DropState(HWND window) noexcept {
    AccessLost(window);
    States().erase(window);
}

LRESULT Paint(const Message& message, PaintMode mode, HBRUSH background, DrawRef draw) {
    const PaintTarget target(message);
    if (!target) return 0;
    RECT client{};
    GetClientRect(message.window, &client);
    if (mode.children && IsBackgroundQuestion(message)) {
        FillRect(target, &client, background);
        return 0;
    }
    std::optional<PaintingMark> painting;
    if (mode.children) painting.emplace(message.window);
    const SavedDC saved(target);
    // A class with its parent's DC could paint over its neighbours.
    IntersectClipRect(target, client.left, client.top, client.right, client.bottom);
    // On WM_PAINT the default procedure begins and ends painting and draws nothing. Where that has been done already,
    // all that it could add is the cost, which is a bare window's whole repaint. Later, it would take back what the
    // children have asked to have painted anew.
    if (mode.defaultFirst && !target.IsBegunHere()) {
        const SavedDC untouched(target);
        DefWindowProcW(message.window, message.id, reinterpret_cast<WPARAM>(HDC{target}), message.lParam);
    }
    std::vector<HWND> children;
    if (mode.children)
        children = LeaveOutChildren(message.window, target, client, target.IsBegunHere() ? background : nullptr);
    if (mode.siblings) SpareSiblings(message.window, target, client);
    const auto paint = [&](HDC dc) {
        const SavedDC untouched(dc);
        FillRect(dc, &client, background);
        draw(dc, client);
    };
    if (mode.buffered) {
        const BackBuffer buffer(target, {client.right, client.bottom});
        paint(buffer ? HDC{buffer} : HDC{target});
        if (buffer) BitBlt(target, 0, 0, client.right, client.bottom, buffer, 0, 0, SRCCOPY);
    } else {
        paint(target);
    }
    // Last: they may run code that ends this window, and draw to the buffer themselves.
    for (const HWND child : children)
        SendMessageW(child, WM_PAINT, 0, 0);
    return 0;
}

void DropPaintBuffer() noexcept { BackBuffer::Drop(); }

LRESULT Erase(const Message& message) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    if (GetObjectType(dc) == OBJ_MEMDC) StateOf(message.window)->erased = dc;
    return 1;
}

void PaintItem(const DRAWITEMSTRUCT& item, HBRUSH background, DrawRef draw) {
    const RECT& place = item.rcItem;
    const RECT area{0, 0, Difference(place.right, place.left), Difference(place.bottom, place.top)};
    // No window is larger: whoever says so did not mean to have something drawn.
    constexpr long most = 0x7FFF;
    if (!item.hDC || std::clamp(area.right, 1L, most) != area.right || std::clamp(area.bottom, 1L, most) != area.bottom)
        return;
    const BackBuffer buffer(item.hDC, {area.right, area.bottom});
    const HDC dc = buffer ? HDC{buffer} : item.hDC;
    const SavedDC saved(dc);
    if (!buffer) OffsetViewportOrgEx(dc, place.left, place.top, nullptr);
    FillRect(dc, &area, background);
    draw(dc, area);
    if (buffer) BitBlt(item.hDC, place.left, place.top, area.right, area.bottom, buffer, 0, 0, SRCCOPY);
}

int ButtonLook(const DRAWITEMSTRUCT& item) {
    const auto state = FindState(item.hwndItem);
    return (item.itemState & ODS_SELECTED ? eKxButtonLook_Pressed : 0) |
           (item.itemState & ODS_DISABLED ? eKxButtonLook_Disabled : 0) |
           (item.itemState & ODS_DEFAULT ? eKxButtonLook_Default : 0) |
           (item.itemState & ODS_FOCUS ? eKxButtonLook_Focused : 0) | (state && state->hovered ? eKxButtonLook_Hot : 0);
}

// Wine's buttons do not pass on what they are asked to hide.
bool ShowsFocus(const DRAWITEMSTRUCT& item) {
    return (item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT) && KX_ShowsFocus(item.hwndItem);
}

}  // namespace kx::ui
