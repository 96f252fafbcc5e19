#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/zfocus/zstack_ids.h>

using namespace kx::ui;

ATOM CKxDevUI_ZStack::m_Atom = 0;
std::map<HWND, CKxDevUI_ZStack*> CKxDevUI_ZStack::m_Instances;

// ---- Life ----------------------------------------------------------------------------------------------------------

CKxDevUI_ZStack::CKxDevUI_ZStack() { Life::Begin(this); }

// Whether a validation is under way is no state of the panel: a copy that took it over would refuse all for ever.
CKxDevUI_ZStack::CKxDevUI_ZStack(const CKxDevUI_ZStack& other)
    : CKxGUIControlElement(other), m_data(other.m_data), m_devices(other.m_devices), m_dirty(other.m_dirty) {
    Life::Begin(this);
}

CKxDevUI_ZStack& CKxDevUI_ZStack::operator=(const CKxDevUI_ZStack& other) {
    if (this == &other) return *this;
    Destroy();
    CKxGUIControlElement::operator=(other);
    m_data = other.m_data;
    m_devices = other.m_devices;
    m_dirty = other.m_dirty;
    return *this;
}

CKxDevUI_ZStack::~CKxDevUI_ZStack() {
    Destroy();
    Life::End(this);
}

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_ZStack::Create(HWND parent, CKxZStackData* data, long x, long y, long cx, long cy, bool visible,
                             bool enabled) {
    Destroy();
    if (!data) return nullptr;
    const HINSTANCE module = ModuleOf(WndProc);
    EnsureClass(m_Atom, {L"CKxDevUI_ZStack", L"CKxDevUI_ZStack", 0, DLGWINDOWEXTRA, nullptr, WndProc});
    const DLGTEMPLATE* dialog = FindDialogTemplate(L"IDD_ZSTACKGUI", module);
    const HWND window = dialog ? CreateDialogIndirectParamW(module, dialog, parent, nullptr, 0) : nullptr;
    if (!window) return nullptr;
    m_hWnd = window;
    m_data = data;
    // Only now: while the dialog is made, its controls have nothing to tell.
    m_Instances[window] = this;

    RECT rect{};
    GetWindowRect(window, &rect);
    SetWindowPos(window, nullptr, x, y, cx > 0 ? cx : rect.right - rect.left, cy > 0 ? cy : rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    RegisterZoom(window);
    KX_FollowColorScheme(window);
    if (!enabled) EnableWindow(window, FALSE);
    if (visible) ShowWindow(window, SW_SHOW);
    return window;
}

void CKxDevUI_ZStack::Destroy() {
    if (MadeWindow()) {
        const Closing closing(m_hWnd);
        DestroyWindow(m_hWnd);
    }
    m_hWnd = nullptr;
    m_data = nullptr;
    m_devices.clear();
}

bool CKxDevUI_ZStack::MadeWindow() const {
    const auto found = m_Instances.find(m_hWnd);
    return found != m_Instances.end() && found->second == this;
}

HWND CKxDevUI_ZStack::Item(int id) const { return GetDlgItem(m_hWnd, id); }

// The window is a dialog of a class of its own, so what is not handled goes to the dialog manager.
LRESULT CALLBACK CKxDevUI_ZStack::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using Lookup = ByInstances<CKxDevUI_ZStack, m_Instances>;
    Handled result;
    if (CKxDevUI_ZStack* panel = Lookup::Find(window)) {
        result = Dispatch<CKxDevUI_ZStack, Lookup, &CKxDevUI_ZStack::Handle>(panel, {window, message, wParam, lParam});
    }
    return result ? *result : DefDlgProcW(window, message, wParam, lParam);
}

Handled CKxDevUI_ZStack::Handle(const Message& message) {
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const auto nothing = [](HDC, const RECT&) {};
        return Paint(message, {.buffered = false}, KX_GetSysColorBrush(COLOR_BTNFACE), nothing);
    }
    case WM_COMMAND:
        // Controls alone: a menu or an accelerator has no window.
        return message.lParam ? OnCommand(LOWORD(message.wParam), HIWORD(message.wParam)) : std::nullopt;
    case WM_ERASEBKGND: return OnEraseBkGnd(message.id, message.wParam, message.lParam);
    case WM_KX_ZOOM_CHANGED: OnGuiZoomChanged(); return 0;
    case WM_NCDESTROY: m_hWnd = nullptr; return std::nullopt;
    default: return std::nullopt;
    }
}

LRESULT CKxDevUI_ZStack::OnEraseBkGnd(UINT, WPARAM, LPARAM) { return 1; }

// ---- Z devices -----------------------------------------------------------------------------------------------------

long CKxDevUI_ZStack::AppendZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax,
                                    bool inverted, int pickerMode, bool select) {
    if (!name || !*name) return -1;
    m_devices.push_back({name, piezo, id, rangeMin, rangeMax, inverted, pickerMode});
    const HWND list = Item(IDC_ZS_DEVICE);
    const LRESULT index = SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    if (select) SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    return static_cast<long>(m_devices.size() - 1);
}

void CKxDevUI_ZStack::OnPiezoPickerChanged(unsigned int entry, int) { OnGoHomeRequest(entry != 0); }
