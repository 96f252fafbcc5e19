#include <kxdevui/light/devgui_shutter.h>

#include <algorithm>
#include <array>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/light/shutter_device.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_shutter";
constexpr int kButtonId = 10200, kParameters = 10000;
constexpr int kClick = WM_LBUTTONUP;  // the code of the button's own command

bool IsButton(HWND window) {
    wchar_t name[16] = L"";
    return GetClassNameW(window, name, 16) != 0 && lstrcmpiW(name, L"Button") == 0;
}

bool IsTaken(HWND child) {
    const auto state = FindState(child);
    return state && state->previous;
}

long WidthOf(const RECT& rect) { return rect.right - rect.left; }
long HeightOf(const RECT& rect) { return rect.bottom - rect.top; }

RECT RectOf(const kx::shutter::Place& place) { return RectAt(place.x, place.y, place.width, place.height); }

kx::shutter::Place PlaceOf(HWND window) {
    const RECT rect = RectInParent(window);
    return {rect.left, rect.top, WidthOf(rect), HeightOf(rect)};
}

}  // namespace

// What an update shows.
struct CKxDevUI_Shutter::Reading {
    CKxStringW toolTip, title;
    bool locked = false;
    EKxShutterType type = eKxShutterType_Epi;
    int grabberActive = 0;
    bool open = false;
    KxActivity activity;

    // Asks for what is wanted, and how it is with the device.
    template <class Shutter>
    static Reading Of(const Shutter& shutter, bool a, bool b, bool c) {
        Reading reading;
        if (a || b) {
            reading.toolTip = shutter.GetGUIText(eKxShutterText_ToolTip);
            reading.locked = shutter.GetCapability(eKxCapability_NotOperable);
        }
        if (b) {
            reading.type = shutter.GetShutterType();
            reading.title = shutter.GetGUIText(eKxShutterText_Title);
        }
        if (c) {
            reading.grabberActive = DMApi::Grabber_GetActive() ? 1 : 0;
            reading.open = shutter.GetState();
        }
        return reading;
    }
};

ATOM CKxDevUI_Shutter::m_Atom = 0;
std::map<HWND, CKxDevUI_Shutter*> CKxDevUI_Shutter::m_Instances;

CKxDevUI_Shutter::CKxDevUI_Shutter() {
    m_width = 40;
    m_height = 40;
    m_title = KX_GetTranslation(L"EPI", kSource);
    // By the window, which belongs to the object that made it: copies come and go.
    constexpr auto of = &ByInstances<CKxDevUI_Shutter, m_Instances>::Find;
    m_requests = std::make_shared<Activity>(ActivityHost{
        [](HWND window) { return of(window) && of(window)->m_state ? 1L : 0L; },
        [](HWND window, long target) { return of(window) && target <= 1 ? of(window)->m_button : nullptr; },
        [](HWND window) { return of(window) ? of(window)->m_title : CKxStringW(); },
        [](HWND window) {
            const CKxDevUI_Shutter* const shutter = of(window);
            if (!shutter || !shutter->m_button) return;
            shutter->ShowTip();
            InvalidateRect(shutter->m_button, nullptr, FALSE);
        }});
}

CKxDevUI_Shutter::~CKxDevUI_Shutter() { Binding::EndOwnWindow(this); }

// ---- Settings ------------------------------------------------------------------------------------------------------

void CKxDevUI_Shutter::Init(bool showTitle, bool second, bool boldTitle, bool fourth, unsigned value) {
    m_showTitle = showTitle;
    m_second = second;
    m_boldTitle = boldTitle;
    m_fourth = fourth;
    m_value = value;
}

void CKxDevUI_Shutter::SetSize(long width, long height) {
    if (width >= 0) m_width = width;
    if (height >= 0) m_height = height;
}

void CKxDevUI_Shutter::SetTitlePosition(bool titleLeft, long size) {
    m_titleLeft = titleLeft;
    const kx::shutter::Layout layout =
        titleLeft ? kx::shutter::TitleLeft(m_width, m_height, size) : kx::shutter::TitleAbove(m_width, size);
    m_titlePlace = layout.title;
    m_buttonPlace = layout.button;
}

void CKxDevUI_Shutter::SetTitleInButton(bool inside) { m_titleInButton = inside; }

void CKxDevUI_Shutter::SetAutomaticallyResizable(bool resizable, int minimum, int maximum) {
    m_resizable = resizable;
    m_minimumWidth = minimum;
    m_maximumWidth = maximum;
}

void CKxDevUI_Shutter::RenameEnabled(bool enable) { m_renameDisabled = !enable; }

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Shutter::Create(HWND parent, long x, long y, long width, long height, bool visible, bool enabled) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        SetSize(width, height);
        m_adopted = false;
        const HWND window = MakeWindow(creation, parent, {x, y}, visible, enabled);
        if (!window) return nullptr;
        CreateControls();
        return creation.Done(this, window) ? Finish(window) : nullptr;
    });
}

HWND CKxDevUI_Shutter::Create(HWND button, HWND title) {
    const HWND parent = IsButton(button) ? ParentOf(button) : nullptr;
    if (!parent || IsTaken(button) || (m_hWnd && IsChild(m_hWnd, button))) {
        KX_LOG(kSource, L"window %p cannot be taken for a shutter's button", static_cast<void*>(button));
        return nullptr;
    }
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (!IsWindow(button)) return nullptr;
        if (!IsWindow(title) || title == button || IsChild(title, button) || IsChild(button, title)) title = nullptr;

        RECT places[2]{}, all{};
        for (const HWND each : {button, title}) {
            RECT& place = places[each == title ? 1 : 0];
            GetWindowRect(each, &place);
            MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&place), 2);
        }
        const auto& [buttonPlace, titlePlace] = places;
        UnionRect(&all, &buttonPlace, &titlePlace);
        const LONG style = GetWindowLongW(button, GWL_STYLE);
        m_id = GetDlgCtrlID(button);
        m_width = WidthOf(all);
        m_height = HeightOf(all);
        m_adopted = true;
        m_showTitle = title != nullptr;
        m_titleLeft = title && titlePlace.right <= buttonPlace.left;
        if (title) {
            m_titleInButton = false;
            m_title = TextOf(title);
        }
        const HWND window =
            MakeWindow(creation, parent, {all.left, all.top}, (style & WS_VISIBLE) != 0, (style & WS_DISABLED) == 0);
        if (!window) return nullptr;
        CorrectZOrder(button);
        if (title) TakeOver(m_titleWindow = title, titlePlace, all, kTitleId);
        TakeOver(m_button = button, buttonPlace, all, kButtonId);
        m_buttonPlace = PlaceOf(button);
        if (title) m_titlePlace = PlaceOf(title);
        SetWindowLongW(button, GWL_STYLE,
                       (GetWindowLongW(button, GWL_STYLE) & ~BS_TYPEMASK) | BS_PUSHLIKE | BS_OWNERDRAW);
        DressChildren();
        return creation.Done(this, window) ? Finish(window) : nullptr;
    });
}

// Last of all: a window that clips its children while they come works out anew what is to be seen of it with each,
// which takes as long as making it.
HWND CKxDevUI_Shutter::Finish(HWND window) const {
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    if (!(style & WS_CLIPCHILDREN)) SetWindowLongW(window, GWL_STYLE, style | WS_CLIPCHILDREN);
    m_requests->Show();
    return window;
}

HWND CKxDevUI_Shutter::MakeWindow(const Creation& creation, HWND parent, POINT at, bool visible, bool enabled) {
    m_visible = visible;
    m_enabled = enabled && !m_locked;
    // A single child that is clipped costs nothing.
    const bool isAlone = !m_adopted && (!m_showTitle || m_titleInButton);
    const HWND window = creation.Window(this, m_Atom,
                                        {.name = L"KxDevUI_Shutter",
                                         .object = L"CKxDevUI_Shutter",
                                         .procedure = WndProc,
                                         .classStyle = CS_VREDRAW | CS_HREDRAW | CS_PARENTDC,
                                         .background = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)),
                                         .style = WS_TABSTOP | (isAlone ? DWORD{WS_CLIPCHILDREN} : DWORD{0})},
                                        parent, at, {-1, -1});
    if (window) m_requests->Attach(window), UpdateShutterIcon(0, 0);
    return creation.Done(this, window);
}

void CKxDevUI_Shutter::TakeOver(HWND child, const RECT& place, const RECT& control, int id) {
    SetWindowLongPtrW(child, GWLP_ID, id);
    SetParent(child, m_hWnd);
    // Hidden ones are shown: whether the control is seen is its window's affair now.
    SetWindowPos(child, nullptr, place.left - control.left, place.top - control.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CKxDevUI_Shutter::CreateControls() {
    const HWND window = m_hWnd;
    const Alive alive(this);
    DestroyControls();
    // Every window that goes is told to the parent, which may end this one.
    if (!window || !alive || m_hWnd != window) return;
    const Parts parts(window, this);
    if (m_showTitle && !m_titleInButton) {
        const DWORD style = m_titleLeft ? SS_RIGHT : SS_LEFT;
        if (!parts.Label(m_titleWindow, kTitleId, m_title, RectOf(m_titlePlace), style)) return;
    }
    if (m_titleInButton && !m_adopted) m_buttonPlace = {0, 0, m_width, m_height};
    const DWORD style = BS_PUSHLIKE | BS_OWNERDRAW;
    if (!parts.Add(m_button, L"BUTTON", kButtonId, nullptr, RectOf(m_buttonPlace), style)) return;
    if (!m_adopted) {
        // The children stand unzoomed, and so has the window to, which may have been zoomed before.
        RECT client{};
        GetClientRect(window, &client);
        if (client.right != m_width || client.bottom != m_height) {
            SetWindowPos(window, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        RegisterZoom(window);
    }
    DressChildren();
    // It has come to the window with the end of the old button; the key that is next is the new one's.
    if (alive && m_button && GetFocus() == window) ::SetFocus(m_button);
}

// What title and button get, whether made here or taken over.
void CKxDevUI_Shutter::DressChildren() {
    Subclass(m_button, WndProc_Button, static_cast<CKxDevUI_Base*>(this));
    for (const HWND each : {m_hWnd, m_titleWindow, m_button})
        Enable(each, m_enabled);
    SetFonts(false);
    // A title may be wider than the room above or beside the button.
    PutAbove(m_button, m_titleWindow);
    ShowTip();
}

// With what is wrong; where there is nothing to be told there is none.
void CKxDevUI_Shutter::ShowTip() const {
    const CKxStringW remark = m_requests->Remark();
    const bool both = !m_toolTip.IsEmpty() && !remark.IsEmpty();
    KX_UpdateToolTipWindow(m_button, both ? m_toolTip + L"\r\n" + remark : m_toolTip + remark);
}

void CKxDevUI_Shutter::SetFonts(bool redraw) {
    const HFONT font = KX_GetDefaultGuiFont(), titleFont = m_boldTitle ? KX_GetDefaultGuiFontBold() : font;
    SetFont(m_titleWindow, titleFont, redraw);
    SetFont(m_button, font, redraw);
}

void CKxDevUI_Shutter::DestroyControls() {
    const HWND title = std::exchange(m_titleWindow, nullptr), button = std::exchange(m_button, nullptr);
    if (button) {
        KX_DeleteToolTip(button);
        DestroySubclassed(button);
    }
    if (title) DestroyWindow(title);
}

void CKxDevUI_Shutter::Destroy() { Binding::EndWindow(this); }

// ---- State ---------------------------------------------------------------------------------------------------------

bool CKxDevUI_Shutter::GetEnabled() { return m_enabled; }

void CKxDevUI_Shutter::SetEnabled(bool enable) {
    enable = enable && !m_locked;
    if (enable == m_enabled) return;
    m_enabled = enable;
    // What loses the focus may end this object.
    for (const HWND each : std::array{m_hWnd, m_titleWindow, m_button}) {
        if (each) EnableWindow(each, enable);
    }
}

void CKxDevUI_Shutter::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (m_resizable) FitToTitle();
    if (m_titleWindow) {
        SetWindowTextW(m_titleWindow, m_title);
    } else if (m_titleInButton) {
        RedrawButton();
    }
}

void CKxDevUI_Shutter::FitToTitle() {
    RECT text{0, 0, 9999, 9999};
    {
        const WindowDC dc(nullptr);
        const Selection font(dc, KX_GetDefaultGuiFont());
        DrawTextW(dc, m_title, -1, &text, DT_CALCRECT | DT_WORDBREAK | DT_RIGHT | DT_NOPREFIX);
    }
    const kx::shutter::Width fit =
        kx::shutter::FitWidth(WidthOf(text), m_minimumWidth, m_maximumWidth, CKxGUILayoutManager::GetGuiZoom());
    m_width = m_buttonPlace.width = fit.control;
    m_titlePlace.width = std::max(0L, fit.title);
    const auto resize = [](HWND window, long width, long height) {
        SetWindowPos(window, nullptr, 0, 0, CKxGUILayoutManager::Zoomed(static_cast<double>(width)), height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        // Whoever lays out unzoomed pixels later must not take it for such.
        CKxGUILayoutManager::RememberWindowSizeForGuiZoom(window);
    };
    if (!m_hWnd) return;
    resize(m_hWnd, m_width, CKxGUILayoutManager::Zoomed(static_cast<double>(m_height)));
    if (m_button) resize(m_button, m_buttonPlace.width, HeightOf(RectInParent(m_button)));
    if (m_titleWindow) resize(m_titleWindow, m_titlePlace.width, HeightOf(RectInParent(m_titleWindow)));
}

void CKxDevUI_Shutter::SetState(bool open) {
    if (open == m_state) return;
    m_state = open;
    KX_TellAccess(m_button, EVENT_OBJECT_STATECHANGE);
    RedrawButton();
}

bool CKxDevUI_Shutter::GetState() const { return m_state; }

void CKxDevUI_Shutter::SetType(EKxShutterType type, bool setDefaultTitle) {
    m_type = type;
    const wchar_t* const title = setDefaultTitle ? kx::shutter::DefaultTitle(type) : nullptr;
    if (title) SetTitle(KX_GetTranslation(title, kSource));
}

EKxShutterType CKxDevUI_Shutter::GetType() const { return m_type; }
long CKxDevUI_Shutter::GetButtonWidth() const { return m_buttonPlace.width; }
HWND CKxDevUI_Shutter::GetButtonHandle() const { return m_button; }

void CKxDevUI_Shutter::RedrawButton() {
    if (m_button) RedrawWindow(m_button, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASENOW);
}

// ---- The device ----------------------------------------------------------------------------------------------------

bool CKxDevUI_Shutter::Update(unsigned shutterId, bool a, bool b, bool c) {
    const Alive alive(this);
    Reading reading;
    const auto ask = [&] {
        reading = Reading::Of(kx::shutter::Managed{shutterId}, a, b, c);
        if (const IKxDevice* device = DMApi::LogDev_GetInstance(shutterId)) reading.activity = ReadActivity(*device);
    };
    if (shutterId == 0 || !AskDevice(kSource, shutterId, ask)) return false;
    if (alive) Show(shutterId, reading, a, b, c);
    return true;
}

bool CKxDevUI_Shutter::Update(IKxDeviceShutter* device, bool a, bool b, bool c) {
    if (!device) return false;
    const Alive alive(this);
    const unsigned id = device->GetLogDevId();
    Reading reading;
    const auto ask = [&] {
        reading = Reading::Of(*device, a, b, c);
        reading.activity = ReadActivity(*device);
    };
    if (!AskDevice(kSource, id, ask)) return false;
    if (a && alive) CreateControls();
    if (alive) Show(id, reading, a, b, c);
    return true;
}

void CKxDevUI_Shutter::Show(unsigned shutterId, const Reading& reading, bool a, bool b, bool c) {
    const Alive alive(this);
    if (a || b) {
        m_toolTip = reading.toolTip;
        m_locked = reading.locked;
        SetEnabled(!m_locked);
    }
    if (b && alive) SetType(reading.type, reading.title.IsEmpty());
    if (b && alive && !reading.title.IsEmpty()) SetTitle(reading.title);
    if (b && alive) ShowTip();
    if (alive) m_requests->Tell(reading.activity, shutterId);
    if (c && alive) UpdateShutterIcon(shutterId, reading.grabberActive);
    if (c && alive) SetState(reading.open);
}

bool CKxDevUI_Shutter::UpdateShutterIcon(unsigned shutterId, int grabberActive) {
    const Alive alive(this);
    int on = GetCommonImageFromPool(eKxCommonImage_ShutterOpen);
    int off = GetCommonImageFromPool(eKxCommonImage_ShutterClosed);
    // The type of the device decides.
    const auto choose = [&] {
        on = GetShutterImageFromPool(shutterId, true);
        off = GetShutterImageFromPool(shutterId, false, grabberActive);
    };
    const bool known = shutterId == 0 || AskDevice(kSource, shutterId, choose);
    if (!alive) return false;
    const bool changed = known && (on != m_imageOn || off != m_imageOff);
    if (changed) {
        m_imageOn = on;
        m_imageOff = off;
    }
    RedrawButton();
    return changed;
}

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_Shutter::OnStateChangeRequest(bool, bool& veto) {
    if (kx::ui::Notify(GetAncestor(m_hWnd, GA_PARENT), m_id, 0, reinterpret_cast<LPARAM>(m_hWnd)) == 0) veto = true;
}

void CKxDevUI_Shutter::OnRenameDlgRequest() {}

LRESULT CKxDevUI_Shutter::OnCommand(WPARAM wParam, LPARAM) {
    if (LOWORD(wParam) != kButtonId || HIWORD(wParam) != kClick) return 0;
    const bool wanted = !m_state;
    const Activity::Question question(*m_requests);
    const Answer answer = AskHost(this, [&](bool& veto) { OnStateChangeRequest(wanted, veto); });
    if (answer == Answer::Agreed) SetState(wanted);
    if (answer == Answer::Refused) m_requests->Refused(question, wanted ? 1 : 0);
    return 1;
}

int CKxDevUI_Shutter::PopupMenu(HWND owner, int x, int y) {
    CKxMenu menu;
    menu.AppendMenuItem(kParameters, KX_GetTranslation(L"Shutter Parameters...", kSource));
    const Alive alive(this);
    const int chosen = menu.TrackContextMenu(eKxMenuTrack_ReturnCommand | eKxMenuTrack_KeepControl, x, y, owner);
    if (chosen != 0 && alive) OnRenameDlgRequest();
    return chosen;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Shutter::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    using Lookup = ByInstances<CKxDevUI_Shutter, m_Instances>;
    return Entry<CKxDevUI_Shutter, Lookup, WM_NCCREATE, Unbound::Default, &CKxDevUI_Shutter::Handle>(
        {window, id, wParam, lParam});
}

Handled CKxDevUI_Shutter::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND:
        if (!m_enabled) return std::nullopt;
        return OnCommand(message.wParam, message.lParam);
    case WM_CTLCOLORSTATIC: return AnswerTextColor(message, m_enabled);
    case WM_DRAWITEM:
        if (message.lParam != 0) DrawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
        return 1;
    case WM_SETFOCUS:
        if (m_button) ::SetFocus(m_button);
        return 0;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (const auto band = ReadDeviceBand<ShutterBand>(message)) {
            Update(FindDevice<IKxDeviceShutter>(band->device), band->flags);
        }
        return 0;
    case WM_KX_ZOOM_CHANGED:
        ApplyZoom(message.window);
        if (m_button) SetFonts(true);
        return 0;
    case WM_DESTROY:
        m_requests->Detach(message.window);
        m_titleWindow = nullptr;
        m_button = nullptr;
        return std::nullopt;
    default: return HandleFace(message, {.defaultFirst = true, .children = true, .buffered = false});
    }
}

LRESULT CALLBACK CKxDevUI_Shutter::WndProc_Button(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Shutter, &CKxDevUI_Shutter::HandleButton>({window, id, wParam, lParam});
}

// All but the erasing goes on to the button itself, whose BN_CLICKED after a release nobody takes for a second click.
Handled CKxDevUI_Shutter::HandleButton(const Message& message) {
    if (TrackHover(message)) InvalidateRect(message.window, nullptr, FALSE);
    switch (message.id) {
    case WM_ERASEBKGND: return 1;
    case WM_LBUTTONUP: Click(); break;
    case WM_KEYUP:
        // The key's way is that of the mouse.
        if (message.wParam == VK_SPACE && (SendMessageW(message.window, BM_GETSTATE, 0, 0) & BST_PUSHED)) Click();
        break;
    case WM_RBUTTONUP: OpenMenu(message.window); break;
    case WM_CONTEXTMENU:
        // The keys for it; the mouse has its own way, and no second menu may follow.
        if (message.lParam == -1) OpenMenu(message.window);
        return 0;
    case WM_KX_DESCRIBE:
        return Describe(message, [this](KxAccess& access) {
            access.role = ROLE_SYSTEM_CHECKBUTTON;
            access.name = m_title;
            access.state = m_state && !m_requests->IsLost() ? STATE_SYSTEM_CHECKED : 0;
            access.value = KX_GetTranslation(m_state ? L"open" : L"closed", kSource);
            access.description = m_requests->Remark();
            access.action = KX_GetTranslation(m_state ? L"Close" : L"Open", kSource);
            access.act = [this] { Click(); };
        });
    default: break;
    }
    return std::nullopt;
}

void CKxDevUI_Shutter::OpenMenu(HWND button) {
    if (m_renameDisabled) return;
    RECT rect{};
    GetWindowRect(button, &rect);
    PopupMenu(m_hWnd, rect.left, rect.bottom);
}

void CKxDevUI_Shutter::Click() {
    m_clicked = true;
    kx::ui::Notify(m_hWnd, kButtonId, kClick, reinterpret_cast<LPARAM>(m_button));
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

void CKxDevUI_Shutter::DrawButton(const DRAWITEMSTRUCT& item) const {
    const bool selected = (item.itemState & ODS_SELECTED) != 0, enabled = (item.itemState & ODS_DISABLED) == 0;
    // On its way it stands out no more; a state that nobody knows is shown as none.
    const bool known = !m_requests->IsLost();
    const bool open = m_state && known, on = open && m_requests->ShowsHeld();
    const int look = ButtonLook(item) | (on ? eKxButtonLook_On : 0);
    PaintItem(item, KX_GetSysColorBrush(COLOR_3DFACE), [&](HDC dc, const RECT& area) {
        KX_DrawButtonBackground(dc, area, look, COLOR_BTNFACE);
        const int pressed = selected || on ? 1 : 0;
        RECT image{4, 4, (m_titleInButton ? area.bottom : area.right) - 4, area.bottom - 4};
        OffsetRect(&image, pressed, pressed);
        CKxBitmapPool::DrawOptimalImage(dc, open ? m_imageOn : m_imageOff, image, enabled && known);
        if (m_titleInButton) DrawTitle(dc, {pressed + area.bottom, area.top, area.right, area.bottom}, enabled);
        const RECT picture{0, 0, m_titleInButton ? area.bottom : area.right, area.bottom};
        m_requests->DrawButton(dc, area, picture, enabled);
        if (ShowsFocus(item)) KX_DrawButtonFocus(dc, area, look, 3);
    });
}

void CKxDevUI_Shutter::DrawTitle(HDC dc, RECT area, bool enabled) const {
    const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(m_button, WM_GETFONT, 0, 0)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(dc, m_title, -1, &area, DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}

// ---- The mechanical shutter ----------------------------------------------------------------------------------------

CKxDevUI_MechanicalShutter::CKxDevUI_MechanicalShutter() {
    m_width = 30;
    m_height = 30;
    m_titlePlace = {0, 0, 30, 14};
    m_buttonPlace = {7, 14, 15, 15};
}

HWND CKxDevUI_MechanicalShutter::Create(HWND parent, long x, long y, long width, long height) {
    return Create(parent, x, y, width, height, true, true);
}
