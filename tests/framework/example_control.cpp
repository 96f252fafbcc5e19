#include "example_control.h"

#include <kxbaseui/kx_tooltip.h>

using namespace kx::ui;

ATOM ExampleLamp::m_Atom = 0;
std::map<HWND, ExampleLamp*> ExampleLamp::m_Instances;

HWND ExampleLamp::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    Destroy();
    EnsureClass(m_Atom, {L"ExampleLamp", L"ExampleLamp", CS_HREDRAW | CS_VREDRAW, kWindowExtraBytes, nullptr, WndProc});
    CreateWindowExW(0, L"ExampleLamp", nullptr, WS_CHILD | WS_VISIBLE, x, y, cx, cy, parent, nullptr, ModuleOf(WndProc),
                    static_cast<CKxDevUI_Base*>(this));
    if (!m_hWnd) return nullptr;
    MarkWindow(m_hWnd, Mark::TagAndObject, this);
    m_button = CreateWindowExW(0, L"BUTTON", nullptr, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 5, 5, 20, 20, m_hWnd,
                               reinterpret_cast<HMENU>(INT_PTR{ButtonId}), nullptr, nullptr);
    Subclass(m_button, ButtonProc, static_cast<CKxDevUI_Base*>(this));
    KX_CreateToolTipWindow(m_button, L"Switches the lamp");
    RegisterZoom(m_hWnd);
    return m_hWnd;
}

HWND ExampleLamp::Create(HWND parent, HWND placeholder) {
    if (Create(parent, 0, 0, 10, 10, true, true)) PlaceLike(m_hWnd, placeholder);
    return m_hWnd;
}

void ExampleLamp::Destroy() {
    if (!m_hWnd) return;
    const Closing closing(m_hWnd);
    DestroyWindow(m_hWnd);
}

LRESULT CALLBACK ExampleLamp::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<ExampleLamp, ByInstances<ExampleLamp, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &ExampleLamp::Handle>({window, id, wParam, lParam});
}

LRESULT CALLBACK ExampleLamp::ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<ExampleLamp, &ExampleLamp::HandleButton>({window, id, wParam, lParam});
}

Handled ExampleLamp::Handle(const Message& message) {
    switch (message.id) {
    case WM_NCCREATE: m_hWnd = message.window; return std::nullopt;
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const auto nothing = [](HDC, const RECT&) {};
        return Paint(message, {.children = true}, m_face.get(), nothing);
    }
    case WM_ERASEBKGND: return 1;
    case WM_DRAWITEM: {
        const auto nothing = [](HDC, const RECT&) {};
        PaintItem(message.window, *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam), m_buttonFace.get(), nothing);
        return TRUE;
    }
    case WM_COMMAND:
        if (message.wParam != MAKEWPARAM(ButtonId, BN_CLICKED)) return std::nullopt;
        Notify(GetParent(message.window), GetId(), 0x0401, reinterpret_cast<LPARAM>(message.window));
        OnToggle();
        return 0;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<3>(message)) {
            m_record.Call("Update", band->device, band->flags[0], band->flags[1], band->flags[2]);
        }
        return 0;
    case WM_KX_ZOOM_CHANGED: ApplyZoom(message.window); return std::nullopt;
    default: return std::nullopt;
    }
}

Handled ExampleLamp::HandleButton(const Message& message) {
    if (TrackHover(message)) m_record.Call(message.id == WM_MOUSEMOVE ? "Entered" : "Left");
    return std::nullopt;
}
