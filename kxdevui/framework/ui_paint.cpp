#include <kxdevui/framework/ui_paint.h>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

std::unordered_map<HWND, std::shared_ptr<WindowState>>& States() {
    static auto* states = new std::unordered_map<HWND, std::shared_ptr<WindowState>>;
    return *states;
}

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
// What another thread shows, a camera's live view, is the system's to paint: a message would wait for that thread.
void PaintChildren(HWND window, HDC target, const RECT& client, HBRUSH groupBackground) {
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
        if (ours && !KX_IsWindowMarkedToSkipPaint(child)) SendMessageW(child, WM_PAINT, 0, 0);
    }
    // Last: what stands in a group box is left out by then.
    for (const auto& [group, rect] : groups) {
        FillRect(target, &rect, groupBackground);
        ExcludeClipRect(target, rect.left, rect.top, rect.right, rect.bottom);
        SendMessageW(group, WM_PAINT, 0, 0);
    }
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

HDC BackBuffer::Acquire(HDC reference, SIZE size) noexcept {
    if (m_bitmap && size.cx <= m_size.cx && size.cy <= m_size.cy) return m_dc.get();
    if (!m_dc) m_dc.reset(CreateCompatibleDC(reference));
    Bitmap bitmap(m_dc ? CreateCompatibleBitmap(reference, std::max(size.cx, 1L), std::max(size.cy, 1L)) : nullptr);
    if (!bitmap || !SelectObject(m_dc.get(), bitmap.get())) return nullptr;
    m_bitmap = std::move(bitmap);
    m_size = size;
    return m_dc.get();
}

std::shared_ptr<WindowState> StateOf(HWND window) {
    auto& state = States()[window];
    if (!state) state = std::make_shared<WindowState>();
    return state;
}

std::shared_ptr<WindowState> FindState(HWND window) noexcept {
    const auto found = States().find(window);
    return found == States().end() ? nullptr : found->second;
}

void DropState(HWND window) noexcept { States().erase(window); }

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
    const auto state = mode.buffered ? StateOf(message.window) : nullptr;
    const SavedDC saved(target);
    // A class with its parent's DC could paint over its neighbours.
    IntersectClipRect(target, client.left, client.top, client.right, client.bottom);

    const HDC buffer = state ? state->client.Acquire(target, {client.right, client.bottom}) : nullptr;
    // On WM_PAINT the default procedure begins and ends painting and draws nothing. Where that has been done already,
    // all that it could add is the cost, which is a bare window's whole repaint. Later, it would take back what the
    // children have asked to have painted anew.
    if (mode.defaultFirst && !target.IsBegunHere()) {
        const SavedDC untouched(target);
        DefWindowProcW(message.window, message.id, reinterpret_cast<WPARAM>(HDC{target}), message.lParam);
    }
    const auto paint = [&](HDC dc) {
        const SavedDC untouched(dc);
        FillRect(dc, &client, background);
        draw(dc, client);
    };
    if (buffer) paint(buffer);
    if (mode.children) PaintChildren(message.window, target, client, target.IsBegunHere() ? background : nullptr);
    if (mode.siblings) SpareSiblings(message.window, target, client);
    if (!buffer) {
        paint(target);
    } else {
        BitBlt(target, 0, 0, client.right, client.bottom, buffer, 0, 0, SRCCOPY);
    }
    return 0;
}

LRESULT Erase(const Message& message) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    if (GetObjectType(dc) == OBJ_MEMDC) StateOf(message.window)->erased = dc;
    return 1;
}

void PaintItem(HWND owner, const DRAWITEMSTRUCT& item, HBRUSH background, DrawRef draw) {
    const RECT& place = item.rcItem;
    const RECT area{0, 0, place.right - place.left, place.bottom - place.top};
    if (!item.hDC || area.right <= 0 || area.bottom <= 0) return;
    const auto state = StateOf(owner);
    const HDC buffer = state->item.Acquire(item.hDC, {area.right, area.bottom});
    const SavedDC saved(buffer ? buffer : item.hDC);
    if (!buffer) OffsetViewportOrgEx(item.hDC, place.left, place.top, nullptr);
    const HDC dc = buffer ? buffer : item.hDC;
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
