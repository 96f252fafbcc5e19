#include "bench_windows.h"

#include <kxbaseui/kx_fonts.h>

#include "harness.h"

namespace kx::bench {

namespace {

constexpr wchar_t kFrameClass[] = L"KxBenchFrame", kBareClass[] = L"KxBenchBare";

LRESULT CALLBACK BareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Whoever makes a class of windows finds by it what belongs to the window.
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams));
    if (message == WM_ERASEBKGND) return 1;
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    const auto picture = reinterpret_cast<HDC>(GetWindowLongPtrW(window, 0));
    BitBlt(dc, 0, 0, client.right, client.bottom, picture, 0, 0, SRCCOPY);
    EndPaint(window, &paint);
    return 0;
}

ATOM RegisterClasses() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kFrameClass;
    description.lpfnWndProc = DefWindowProcW;
    description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    if (!RegisterClassExW(&description)) return 0;
    description.lpszClassName = kBareClass;
    description.lpfnWndProc = BareProc;
    description.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    description.cbWndExtra = 16;
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    return RegisterClassExW(&description);
}

}  // namespace

Frame::Frame() {
    static const ATOM classes = RegisterClasses();
    Require(classes != 0, "the window classes could not be registered");
    m_window = CreateWindowExW(0, kFrameClass, L"bench", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 20, 900, 700,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    Require(m_window != nullptr, "there is no frame");
    ShowWindow(m_window, SW_SHOWNORMAL);
    UpdateWindow(m_window);
}

Frame::~Frame() { DestroyWindow(m_window); }

HWND MakeBareWindow(HWND parent, SIZE size) {
    return MakeChild(parent, {kBareClass, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, {0, 0, size.cx, size.cy}, 0});
}

BareWindow::BareWindow(HWND parent, SIZE size) : m_window(MakeBareWindow(parent, size)) {
    Require(m_window != nullptr, "there is no bare window");
    const kx::ui::WindowDC dc(m_window);
    m_picture.reset(CreateCompatibleDC(dc));
    m_bitmap.reset(CreateCompatibleBitmap(dc, size.cx, size.cy));
    Require(m_picture && m_bitmap, "there is no bitmap");
    SelectObject(m_picture.get(), m_bitmap.get());
    const RECT all{0, 0, size.cx, size.cy};
    FillRect(m_picture.get(), &all, GetSysColorBrush(COLOR_BTNFACE));
    SetWindowLongPtrW(m_window, 0, reinterpret_cast<LONG_PTR>(m_picture.get()));
}

BareWindow::~BareWindow() { DestroyWindow(m_window); }

ChildSpec Child(int index) {
    const bool isButton = index % 2 != 0;
    const long x = 8 + index / 10 * 110, y = 8 + index % 10 * 28;
    return {isButton ? L"BUTTON" : L"STATIC",
            (isButton ? L"Press " : L"Label ") + std::to_wstring(index),
            static_cast<DWORD>(WS_CHILD | WS_VISIBLE | (isButton ? WS_TABSTOP : 0)),
            {x, y, x + 100, y + 24},
            100 + index};
}

HWND MakeChild(HWND parent, const ChildSpec& child) {
    const RECT& place = child.place;
    const HWND window = CreateWindowExW(child.extendedStyle, child.className.c_str(), child.text.c_str(), child.style,
                                        place.left, place.top, place.right - place.left, place.bottom - place.top,
                                        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(child.id)),
                                        GetModuleHandleW(nullptr), const_cast<ChildSpec*>(&child));
    Require(window != nullptr, "there is no child");
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    return window;
}

ChildSpec SpecOf(HWND child) {
    wchar_t name[64], text[64];
    GetClassNameW(child, name, 64);
    GetWindowTextW(child, text, 64);
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, GetAncestor(child, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    const bool isBare = !GetClassInfoExW(nullptr, name, &known);
    return {isBare ? kBareClass : name,
            text,
            static_cast<DWORD>(GetWindowLongW(child, GWL_STYLE)),
            place,
            GetDlgCtrlID(child),
            static_cast<DWORD>(GetWindowLongW(child, GWL_EXSTYLE))};
}

Copies::Copies(HWND parent) : m_windows(In(parent)) { Require(!m_windows.empty(), "there is no window to copy"); }

std::vector<Copies::Window> Copies::In(HWND parent) {
    std::vector<Window> windows;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        windows.push_back({SpecOf(child), In(child)});
    return windows;
}

HWND Copies::Make(HWND parent, const Window& window) {
    const HWND made = MakeChild(parent, window.made);
    for (const Window& child : window.children)
        Make(made, child);
    return made;
}

void Copies::MakeAndDestroy(HWND parent) const {
    std::vector<HWND> made;
    for (const Window& window : m_windows)
        made.push_back(Make(parent, window));
    for (const HWND each : made)
        DestroyWindow(each);
}

void Repaint(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

}  // namespace kx::bench
