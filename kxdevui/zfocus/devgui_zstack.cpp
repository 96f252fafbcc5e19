#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_translation.h>

#include <algorithm>
#include <cwchar>
#include <utility>

using namespace kx::ui;
using kx::zstack::Ask;
using kx::zstack::ShownOf;

ATOM CKxDevUI_ZStack::m_Atom = 0;
std::map<HWND, CKxDevUI_ZStack*> CKxDevUI_ZStack::m_Instances;

// ---- Life ----------------------------------------------------------------------------------------------------------

CKxDevUI_ZStack::CKxDevUI_ZStack() {
    Life::Begin(this);
    m_requests = std::make_shared<Activity>(
        ActivityHost{[](HWND) { return -1L; }, [](HWND, long) -> HWND { return nullptr; },
                     [](HWND) { return KX_GetTranslation(L"Z-Stack", L"devgui_zstack"); },
                     [](HWND window) {
                         InvalidateRect(window, nullptr, FALSE);
                         auto* const panel = ByInstances<CKxDevUI_ZStack, m_Instances>::Find(window);
                         if (!panel || !panel->m_data) return;
                         KX_UpdateToolTipWindow(window, panel->m_requests->Remark());
                         Guarded([&]() -> Handled { return panel->ShowScale(panel->ReadScale()), 0; });
                     },
                     // In the corner, above the labels of the scale.
                     [](HWND window) {
                         RECT client{};
                         GetClientRect(window, &client);
                         const long side = Activity::SignSide(), gap = side / 4;
                         return RECT{client.right - side - gap, gap, client.right - gap, gap + side};
                     }});
}

// Whether a validation is under way is no state of the panel: a copy that took it over would refuse all for ever.
CKxDevUI_ZStack::CKxDevUI_ZStack(const CKxDevUI_ZStack& other)
    : CKxGUIControlElement(other), m_data(other.m_data), m_devices(other.m_devices), m_controls(other.m_controls),
      m_dirty(other.m_dirty), m_piezo(other.m_piezo), m_cube(other.m_cube), m_grips(other.m_grips),
      m_requests(other.m_requests) {
    Life::Begin(this);
}

CKxDevUI_ZStack& CKxDevUI_ZStack::operator=(const CKxDevUI_ZStack& other) {
    if (this == &other) return *this;
    const Alive alive(this);
    Destroy();
    if (!alive) return *this;
    CKxGUIControlElement::operator=(other);
    m_data = other.m_data;
    m_devices = other.m_devices;
    m_controls = other.m_controls;
    m_dirty = other.m_dirty;
    m_piezo = other.m_piezo;
    m_cube = other.m_cube;
    m_grips = other.m_grips;
    m_requests = other.m_requests;
    return *this;
}

CKxDevUI_ZStack::~CKxDevUI_ZStack() {
    Destroy();
    Life::End(this);
}

namespace {

// Shown in the plain way, a window has its children erased and framed one after the other before any is painted, which
// takes as long as half of their creation.
void ShowQuietly(HWND window) {
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOREDRAW);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

}  // namespace

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_ZStack::Create(HWND parent, CKxZStackData* data, long x, long y, long cx, long cy, bool visible,
                             bool enabled) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (!data) return nullptr;
        const HINSTANCE module = ModuleOf(WndProc);
        EnsureClass(m_Atom, {.name = L"CKxDevUI_ZStack",
                             .object = L"CKxDevUI_ZStack",
                             .procedure = WndProc,
                             .classStyle = 0,
                             .extraBytes = DLGWINDOWEXTRA});
        const DLGTEMPLATE* dialog = FindDialogTemplate(L"IDD_ZSTACKGUI", module);
        // The template names the class, and the name may be that of another's.
        const HWND window = dialog && m_Atom ? CreateDialogIndirectParamW(module, dialog, parent, nullptr, 0) : nullptr;
        if (!window) return nullptr;
        if (!creation) return DestroyWindow(window), nullptr;
        KX_UnscaleDialog(window);
        m_hWnd = window;
        m_data = data;
        // Only now: while the dialog is made, its controls have nothing to tell.
        ByInstances<CKxDevUI_ZStack, m_Instances>::Bind(window, this);

        RECT rect{};
        GetWindowRect(window, &rect);
        SetWindowPos(window, nullptr, x, y, cx > 0 ? cx : rect.right - rect.left, cy > 0 ? cy : rect.bottom - rect.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        CollectControls();
        SubclassControls();
        RememberLabels();
        BuildPiezoMenu();
        // Nothing draws it; it is what the panel is called to those who cannot see it.
        SetWindowTextW(window, KX_GetTranslation(L"Z-Stack", L"devgui_zstack"));
        ShowTips(false);
        // At 1.0 everything stands where it shall, and the layout manager asks for the rest when the zoom changes.
        if (CKxGUILayoutManager::GetGuiZoom() != 1.0) RegisterZoom(window);
        FitLabels();
        if (m_grips) MakeGrips();
        KX_FollowColorScheme(window);
        if (!enabled) EnableWindow(window, FALSE);
        m_requests->Attach(window);
        m_requests->Show();
        if (visible) ShowQuietly(window);
        return window;
    });
}

void CKxDevUI_ZStack::Destroy() {
    if (MadeWindow()) {
        const Alive alive(this);
        const Closing closing(m_hWnd);
        DestroyWindow(m_hWnd);
        // The focus may have gone to a host's window, which may have ended this object.
        if (!alive) return;
    }
    m_hWnd = nullptr;
    m_data = nullptr;
    m_devices.clear();
    m_dirty = {};
}

void CKxDevUI_ZStack::DestroyGDIObjects() { DropPaintBuffer(); }

bool CKxDevUI_ZStack::MadeWindow() const {
    const auto found = m_Instances.find(m_hWnd);
    return found != m_Instances.end() && found->second == this;
}

HWND CKxDevUI_ZStack::Item(int id) const {
    const auto index = static_cast<std::size_t>(id - kFirstControl);
    return m_hWnd && id >= kFirstControl && index < m_controls.size() ? m_controls[index] : nullptr;
}

void CKxDevUI_ZStack::CollectControls() {
    m_controls = {};
    const auto collect = [](HWND child, LPARAM panel) -> BOOL {
        auto& controls = reinterpret_cast<CKxDevUI_ZStack*>(panel)->m_controls;
        const auto index = static_cast<std::size_t>(GetDlgCtrlID(child) - kFirstControl);
        if (index < controls.size()) controls[index] = child;
        return TRUE;
    };
    // One request instead of one a child.
    EnumChildWindows(m_hWnd, collect, reinterpret_cast<LPARAM>(this));
}

void CKxDevUI_ZStack::SubclassControls() {
    for (int id = IDC_ZS_EDIT_TOP; id <= IDC_ZS_EDIT_ABOVE; ++id) {
        Subclass(Item(id), EdtWndProc, this);
        UseInputMethod(Item(id), false);
        if (id <= IDC_ZS_EDIT_BOTTOM) MakeRoomForMark(Item(id));
    }
    for (const int id : {IDC_ZS_TYPE_ENDS, IDC_ZS_TYPE_SYMMETRIC, IDC_ZS_TYPE_ASYMMETRIC, IDC_ZS_TOP, IDC_ZS_HOME,
                         IDC_ZS_BOTTOM, IDC_ZS_RELATIVE, IDC_ZS_SUGGESTED, IDC_ZS_PIEZO})
        Subclass(Item(id), BtnWndProc, this);
    Subclass(Item(IDC_ZS_DEVICE), CbxWndProc, this);
}

// The window is a dialog of a class of its own, so what is not handled goes to the dialog manager.
LRESULT CALLBACK CKxDevUI_ZStack::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using Lookup = ByInstances<CKxDevUI_ZStack, m_Instances>;
    if (message == WM_DESTROY) SpareBusyChildren(window);
    Handled result;
    if (message == WM_GETOBJECT) result = AnswerGetObject({window, message, wParam, lParam});
    if (result) return *result;
    if (CKxDevUI_ZStack* panel = Lookup::Find(window)) {
        result = Dispatch<CKxDevUI_ZStack, Lookup, &CKxDevUI_ZStack::Handle>(panel, {window, message, wParam, lParam});
    } else if (message == WM_NCDESTROY) {
        DropState(window);
    }
    return result ? *result : DefDlgProcW(window, message, wParam, lParam);
}

Handled CKxDevUI_ZStack::Handle(const Message& message) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    const auto control = reinterpret_cast<HWND>(message.lParam);
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: return OnPaint(message);
    case WM_COMMAND: return OnCommand(LOWORD(message.wParam), HIWORD(message.wParam));
    case WM_DRAWITEM:
        return message.lParam ? OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam)) : std::nullopt;
    case WM_MEASUREITEM:
        return message.lParam ? OnMeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(message.lParam)) : std::nullopt;
    case WM_CTLCOLOREDIT: return OnCtlColorEdit(dc, control);
    case WM_CTLCOLORSTATIC: return OnCtlColorStatic(dc, control);
    case WM_SIZE:
        InvalidateRect(message.window, nullptr, FALSE);
        PlaceGripsWindow();
        return std::nullopt;
    case WM_ERASEBKGND: return OnEraseBkGnd(message.id, message.wParam, message.lParam);
    case WM_LBUTTONDOWN:
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE: return HandleMouse(message);
    case WM_MOUSEWHEEL:
    case WM_KX_MOUSE_WHEEL: return OnWheel(message);
    case WM_KEYDOWN:
        if (message.wParam == VK_TAB) Focus(nullptr, GetKeyState(VK_SHIFT) < 0);
        return std::nullopt;
    // The dialog manager would hand the focus on to a control.
    case WM_SETFOCUS: return 0;
    case WM_ENABLE: OnEnabled(message.wParam != FALSE); return std::nullopt;
    case WM_SYSCOLORCHANGE: InvalidateRect(m_hWnd, nullptr, FALSE); return std::nullopt;
    case WM_KX_ZOOM_CHANGED: OnGuiZoomChanged(); return 0;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<ZStackBand>(message); band && band->flags.refresh) UpdateGUI(RefreshAll);
        return 0;
    case WM_KX_DESCRIBE: return Tell(message);
    case WM_KX_READINGS:
        if (message.wParam == 0) return std::nullopt;
        ShowScale(ShownOf(m_hWnd)->scale);
        return kShowsReadings;
    case WM_DESTROY:
        // The edits are still there, and one may have the focus: it is nobody's wish any more.
        ByInstances<CKxDevUI_ZStack, m_Instances>::Unbind(message.window);
        Activity::WindowGone(message.window);
        KX_DeleteToolTip(message.window);
        m_hWnd = nullptr;
        return std::nullopt;
    default: return std::nullopt;
    }
}

LRESULT CKxDevUI_ZStack::OnEraseBkGnd(UINT, WPARAM, LPARAM) { return 1; }

// What is in a disabled panel looks disabled.
void CKxDevUI_ZStack::OnEnabled(bool enabled) {
    const Alive alive(this);
    const HWND window = m_hWnd;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        EnableWindow(child, enabled);
        // The focus that leaves a disabled edit validates it.
        if (!alive || m_hWnd != window) return;
    }
    if (enabled && m_data) {
        ShownOf(window)->steps.reset();
        ShowSteps();
        ShowDevice();
        ShowGrips();
    }
    InvalidateRect(window, nullptr, FALSE);
}

void CKxDevUI_ZStack::OnGuiZoomChanged() {
    CKxGUIControlElement::OnGuiZoomChanged();
    if (!m_hWnd) return;
    FitLabels();
    ShownOf(m_hWnd)->labelHeight = 0;
    PlaceGripsWindow();
    InvalidateRect(m_hWnd, nullptr, FALSE);
}

void CKxDevUI_ZStack::Redraw() {
    if (m_hWnd) RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

// ---- Z devices -----------------------------------------------------------------------------------------------------

long CKxDevUI_ZStack::AppendZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax,
                                    bool inverted, int pickerMode, bool select) {
    const HWND list = Item(IDC_ZS_DEVICE);
    if (!name || !*name || !list) return -1;
    // These carry the objective whatever stand they are mounted on.
    const bool overSlide = std::wcscmp(name, L"AZ100 ZDrive") == 0 || std::wcscmp(name, L"Ardon LV ZDrive LV-FMA") == 0;
    m_devices.push_back({name, piezo, id, rangeMin, rangeMax, inverted && !overSlide, pickerMode});
    const LRESULT index = SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    if (select) SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    return static_cast<long>(m_devices.size() - 1);
}

long CKxDevUI_ZStack::AddZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax,
                                 bool inverted, int pickerMode, bool select) {
    if (!name || !*name || !Item(IDC_ZS_DEVICE)) return -1;
    const auto index = static_cast<unsigned int>(m_devices.size());
    unsigned int count = 0;
    if (Ask([&] { return m_data->GetZDeviceCount(&count); }) != eKxZStack_Ok || count != index) return -1;
    if (Ask([&] { return m_data->AddZDevice(rangeMin, rangeMax, nullptr); }) != eKxZStack_Ok) return -1;
    if (select) Ask([&] { return m_data->SetZDevice(index); });
    return AppendZDevice(name, piezo, id, rangeMin, rangeMax, inverted, pickerMode, select);
}

void CKxDevUI_ZStack::ClearZDevices(bool record, bool refresh) {
    m_devices.clear();
    SendMessageW(Item(IDC_ZS_DEVICE), CB_RESETCONTENT, 0, 0);
    if (m_hWnd) ShownOf(m_hWnd)->device.reset();
    if (record && m_data) Ask([this] { return m_data->ClearZDevices(); });
    if (refresh) UpdateGUI(RefreshAll);
}

// ---- The piezo's home ----------------------------------------------------------------------------------------------

void CKxDevUI_ZStack::BuildPiezoMenu() {
    const auto translated = [](const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); };
    CKxMenu menu;
    menu.AppendMenuItem(L"GOHOME", translated(L"Move Piezo Z to Home Position"), L"PNG_ZSTACK_GOHOME");
    menu.AppendMenuItem(L"GOHOMEKEEP", translated(L"Keeps Z position and centers Piezo Z"), L"PNG_ZSTACK_GOHOMEKEEPZ");
    m_piezo = menu.CreateMenuPickerEx(m_piezo.GetEntry(), m_piezo.GetMode());
}

void CKxDevUI_ZStack::SetPiezoPickerMode(unsigned int entry, int mode) {
    if (entry <= PiezoHomeKeepZ) {
        m_piezo.SetEntry(entry);
        if (m_data) Ask([&] { return m_data->SetKeepZOnPiezoHome(entry == PiezoHomeKeepZ); });
    }
    m_piezo.SetMode(mode);
    ShowPiezoEntry();
}

void CKxDevUI_ZStack::PickPiezo(unsigned int entry) {
    const bool same = entry == m_piezo.GetEntry();
    SetPiezoPickerMode(entry, m_piezo.GetMode());
    const Alive alive(this);
    if (!same) OnZStackChanged(RefreshAll);
    if (alive) OnPiezoPickerChanged(entry, m_piezo.GetMode());
    if (alive) DoCommand(m_piezo.Menu().GetName(static_cast<int>(entry)));
}

void CKxDevUI_ZStack::OnPiezoPickerChanged(unsigned int, int) {}

void CKxDevUI_ZStack::RequestZ(double z) {
    const Alive alive(this);
    const Activity::Question question(*m_requests);
    OnMoveZRequest(z);
    if (alive && question.HasReason()) m_requests->Refused(question, -1);
}

bool CKxDevUI_ZStack::DoCommand(const wchar_t* name) {
    const bool keep = std::wcscmp(name, L"GOHOMEKEEP") == 0;
    if (!keep && std::wcscmp(name, L"GOHOME") != 0) return false;
    const Alive alive(this);
    const Activity::Question question(*m_requests);
    OnGoHomeRequest(keep);
    if (alive && question.HasReason()) m_requests->Refused(question, -1);
    return true;
}

int CKxDevUI_ZStack::CustomCommand(int command, INT_PTR parameter, void* data) {
    if (command != CommandByName) return CKxGUIControlElement::CustomCommand(command, parameter, data);
    return data && DoCommand(static_cast<const wchar_t*>(data)) ? 1 : 0;
}
