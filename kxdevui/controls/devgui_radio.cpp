#include <kxdevui/controls/devgui_radio.h>

#include <algorithm>
#include <memory>
#include <string>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/controls/valuelist_rules.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_control.h>

using namespace kx::ui;

namespace {

constexpr int kFirstButton = 85;  // id of the first button
constexpr int kSelectionChanged = 0x0401;

RECT Union(const RECT& a, const RECT& b) {
    RECT both{};
    UnionRect(&both, &a, &b);
    return both;
}

bool IsRadioButton(HWND window) { return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0; }

bool CanBeClicked(HWND button) {
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    return (style & WS_VISIBLE) && !(style & WS_DISABLED);
}

// The button that an arrow key leads to from this one.
HWND Neighbour(HWND button, int step) {
    std::vector<HWND> buttons;
    for (HWND each = GetWindow(button, GW_HWNDFIRST); each; each = GetWindow(each, GW_HWNDNEXT)) {
        if (IsRadioButton(each)) buttons.push_back(each);
    }
    const auto usable = std::make_unique<bool[]>(buttons.size());
    std::transform(buttons.begin(), buttons.end(), usable.get(), CanBeClicked);
    const auto from = std::find(buttons.begin(), buttons.end(), button) - buttons.begin();
    return buttons[static_cast<std::size_t>(NextButton(static_cast<int>(from), step, {usable.get(), buttons.size()}))];
}

void ReleaseOthers(HWND button) {
    for (HWND each = GetWindow(button, GW_HWNDFIRST); each; each = GetWindow(each, GW_HWNDNEXT)) {
        if (each != button && IsRadioButton(each)) SendMessageW(each, BM_SETCHECK, BST_UNCHECKED, 0);
    }
}

// Keeps the buttons together instead of the platform, whose search for the members of a group goes by the dialog's own
// children: its arrow keys stop at the end of this group, and under Wine it never ends when a disabled button or a
// title stands among the members.
LRESULT CALLBACK ButtonProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    // Only to the dialog manager, which asks about a message: the buttons know each other by their plain code.
    const LRESULT arrows = id == WM_GETDLGCODE && lParam != 0 ? DLGC_WANTARROWS : 0;
    if (id == BM_SETCHECK && wParam == BST_CHECKED) ReleaseOthers(button);
    if (const int step = id == WM_KEYDOWN ? StepOf(wParam) : 0) {
        KX_ShowFocusFromNowOn(button);
        if (!IsWindow(button)) return 0;
        const HWND next = Neighbour(button, step);
        SetFocus(next);
        if (next != button) SendMessageW(next, BM_CLICK, 0, 0);
        return 0;
    }
    // Disabled or hidden since it was pressed.
    if (id == WM_LBUTTONUP && !CanBeClicked(button)) {
        SendMessageW(button, BM_SETSTATE, FALSE, 0);
        if (GetCapture() == button) ReleaseCapture();
        return 0;
    }
    return CallPrevious({button, id, wParam, lParam}) | arrows;
}

// A property of a button that is disabled only because its group's window is.
constexpr wchar_t kWaits[] = L"KxRadioWaits";

void EnableButton(HWND group, HWND button, bool enable) {
    const bool now = enable && IsWindowEnabled(group);
    if (enable && !now) {
        SetPropW(button, kWaits, group);
    } else {
        RemovePropW(button, kWaits);
    }
    EnableWindow(button, now);
}

}  // namespace

ATOM CKxDevUI_Radio::m_Atom = 0;

CKxDevUI_Radio::CKxDevUI_Radio() {
    m_width = 100;
    m_height = 50;
}

CKxDevUI_Radio::~CKxDevUI_Radio() { Binding::EndOwnWindow(this); }

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Radio::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) {
        m_notify = parent;
        // Not an object for a container, which takes the group for a plain window.
        return creation.Window(this, m_Atom,
                               {.name = L"KxDevUI_Radio",
                                .object = L"CKxDevUI_Radio",
                                .procedure = WndProc,
                                .classStyle = CS_PARENTDC | CS_HREDRAW | CS_VREDRAW,
                                .mark = Mark::Tag},
                               parent, {x, y}, {width, height});
    });
}

HWND CKxDevUI_Radio::Create(HWND first, int count, HWND title) {
    if (!ParentOf(first) || count < 1) return nullptr;
    if (m_hWnd && (first == m_hWnd || IsChild(m_hWnd, first))) return nullptr;
    // The old group goes before the siblings are counted: it may stand among them.
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        const HWND parent = ParentOf(first);
        if (!parent) return nullptr;

        std::vector<HWND> sources;
        for (HWND each = first; each && static_cast<int>(sources.size()) < count; each = GetWindow(each, GW_HWNDNEXT)) {
            if (each != title) sources.push_back(each);
        }
        if (!IsWindow(title) || title == parent || IsChild(title, parent)) title = nullptr;
        const RECT titlePlace = title ? RectInParent(title) : RECT{};
        RECT group = titlePlace;
        for (const HWND each : sources)
            group = Union(group, RectInParent(each));
        const HWND window =
            Create(parent, group.left, group.top, group.right - group.left, group.bottom - group.top, true, true);
        if (!window) return nullptr;
        CorrectZOrder(first);

        // The end of an edit that has the focus, say, is told to the parent, which may end this group.
        const auto stands = [&] { return creation && m_hWnd == window; };
        m_taken = 0;
        for (const HWND each : sources) {
            if (!IsWindow(each)) continue;
            const HWND button =
                MakeButton(TextOf(each).str().substr(0, kComparedCharacters).c_str(), RectInParent(each), group);
            if (!stands()) return nullptr;
            m_buttons.push_back(button);
            DestroyWindow(each);
            if (!stands()) return nullptr;
            ++m_taken;
        }
        if (IsWindow(title)) TakeTitle(title, titlePlace, group);
        if (!stands()) return nullptr;
        KX_FollowColorScheme(window);
        return window;
    });
}

HWND CKxDevUI_Radio::MakeButton(const wchar_t* text, const RECT& place, const RECT& group) {
    const int id = kFirstButton + static_cast<int>(m_buttons.size());
    // Each a group of its own, for the platform: see ButtonProc.
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_GROUP | BS_AUTORADIOBUTTON;
    const HWND button =
        CreateWindowExW(0, L"BUTTON", text, m_enabled ? style : style | WS_DISABLED, place.left - group.left,
                        place.top - group.top, place.right - place.left, place.bottom - place.top, m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SetFont(button, KX_GetDefaultGuiFont());
    // Without an object: a button's user data is the host's, and starts with 0.
    Subclass(button, ButtonProc, nullptr);
    // Otherwise Windows reports a click for a button that only gets the focus.
    SendMessageW(button, BM_SETDONTCLICK, TRUE, 0);
    return button;
}

// The distance from the left stands for that from the top too.
void CKxDevUI_Radio::TakeTitle(HWND title, const RECT& place, const RECT& group) {
    m_titleWindow = title;
    SetParent(title, m_hWnd);
    const long offset = place.left - group.left;
    ::MoveWindow(title, offset, offset, place.right - place.left, place.bottom - place.top, TRUE);
}

void CKxDevUI_Radio::Destroy() {
    if (!Binding::EndWindow(this)) return;
    m_titleWindow = nullptr;
    m_buttons.clear();
}

// ---- Operations of the base ----------------------------------------------------------------------------------------

void CKxDevUI_Radio::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    // What loses the focus may end this object.
    const HWND group = m_hWnd;
    const std::vector<HWND> buttons(m_buttons);
    if (enable) EnableWindow(group, TRUE);
    for (const HWND button : buttons)
        EnableButton(group, button, enable);
}

void CKxDevUI_Radio::FollowWindow() {
    const HWND group = m_hWnd;
    for (const HWND button : std::vector<HWND>(m_buttons)) {
        if (IsWindowEnabled(button) || GetPropW(button, kWaits)) EnableButton(group, button, true);
    }
}

void CKxDevUI_Radio::SetTitle(const wchar_t* title) {
    CKxDevUI_Base::SetTitle(title);
    if (m_titleWindow) SetWindowTextW(m_titleWindow, m_title);
}

// ---- Values --------------------------------------------------------------------------------------------------------

HWND CKxDevUI_Radio::ButtonAt(int index) const {
    return index >= 0 && index < static_cast<int>(m_buttons.size()) ? m_buttons[static_cast<std::size_t>(index)]
                                                                    : nullptr;
}

HWND CKxDevUI_Radio::SelectedButton() const {
    const auto found = std::find_if(m_buttons.begin(), m_buttons.end(),
                                    [](HWND button) { return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED; });
    return found == m_buttons.end() ? nullptr : *found;
}

HWND CKxDevUI_Radio::FocusButton() const {
    const HWND selected = SelectedButton();
    if (selected && IsWindowEnabled(selected)) return selected;
    const auto found =
        std::find_if(m_buttons.begin(), m_buttons.end(), [](HWND button) { return IsWindowEnabled(button) != FALSE; });
    return found == m_buttons.end() ? nullptr : *found;
}

bool CKxDevUI_Radio::SetSelection(const wchar_t* text) {
    const int index = GetIndex(text);
    if (index == -1) return false;
    SetSelection(index);
    return true;
}

void CKxDevUI_Radio::SetSelection(int index) {
    const HWND button = ButtonAt(index);
    if (!button) return;
    // A click takes the focus, also from wherever else the user is typing.
    if (CanBeClicked(button) && GetActiveWindow() == GetAncestor(m_hWnd, GA_ROOT)) {
        SendMessageW(button, BM_CLICK, 0, 0);
    } else {
        // What a click does, which on a hidden or disabled button is left undone by Windows and never ends under Wine.
        SendMessageW(button, BM_SETCHECK, BST_CHECKED, 0);
        SendMessageW(m_hWnd, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
    }
}

int CKxDevUI_Radio::GetSelectionIndex() {
    const auto found = std::find(m_buttons.begin(), m_buttons.end(), SelectedButton());
    return found == m_buttons.end() ? -1 : static_cast<int>(found - m_buttons.begin());
}

int CKxDevUI_Radio::GetSelection(wchar_t* buffer, int size) {
    const HWND button = SelectedButton();
    return button ? CopyText(TextOf(button).str(), buffer, size) : -1;
}

double CKxDevUI_Radio::GetSelection() { return NumberIn(TextOf(SelectedButton()).str()); }

int CKxDevUI_Radio::GetIndex(const wchar_t* text) {
    return FindText(static_cast<int>(m_buttons.size()), text, [this](int i) { return TextOf(ButtonAt(i)).str(); });
}

int CKxDevUI_Radio::GetValuesCount() { return static_cast<int>(m_buttons.size()); }

std::int64_t CKxDevUI_Radio::GetUserData(int index) { return GetWindowLongPtrW(ButtonAt(index), GWLP_USERDATA); }

void CKxDevUI_Radio::SetUserData(int index, std::int64_t value) {
    SetWindowLongPtrW(ButtonAt(index), GWLP_USERDATA, static_cast<LONG_PTR>(value));
}

void CKxDevUI_Radio::SetValueName(int index, const wchar_t* name) {
    if (const HWND button = ButtonAt(index)) SetWindowTextW(button, name ? name : L"");
}

void CKxDevUI_Radio::SetValueEnabled(int index, bool enable) {
    const HWND button = ButtonAt(index), group = m_hWnd;
    if (!button) return;
    const bool hadFocus = GetFocus() == button;
    EnableButton(group, button, enable);
    // The platform leaves it to nobody; the group passes it on.
    if (hadFocus && !IsWindowEnabled(button) && IsWindowEnabled(group)) ::SetFocus(group);
}

int CKxDevUI_Radio::InsertValue(double, int) { return -1; }
int CKxDevUI_Radio::InsertValue(const wchar_t*, int) { return -1; }

void CKxDevUI_Radio::InsertValues(const double* values, int count, int start) {
    InsertEach(values, count, start, [this](double value, int index) { InsertValue(value, index); });
}

void CKxDevUI_Radio::InsertValues(const wchar_t** values, int count, int start) {
    InsertEach(values, count, start, [this](const wchar_t* value, int index) { InsertValue(value, index); });
}

bool CKxDevUI_Radio::CheckRestriction(bool show) {
    if (SelectedButton()) return true;
    ReportError(NothingChosen().c_str(), show, ButtonAt(0), m_titleWindow);
    return false;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Radio::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<CKxDevUI_Radio, ByUserData<CKxDevUI_Radio>, WM_NCCREATE, Unbound::One, &CKxDevUI_Radio::Handle>(
        {window, id, wParam, lParam});
}

Handled CKxDevUI_Radio::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_SETFOCUS: {
        if (const HWND button = FocusButton()) ::SetFocus(button);
        return 0;
    }
    case WM_ENABLE: FollowWindow(); return std::nullopt;
    case WM_DESTROY:
        m_titleWindow = nullptr;
        m_buttons.clear();
        return std::nullopt;
    default: return HandleFace(message, {.children = true, .buffered = false});
    }
}

LRESULT CKxDevUI_Radio::OnCommand(WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam), last = kFirstButton + static_cast<int>(m_buttons.size());
    // One id more than there are buttons: it has always been let through.
    if (HIWORD(wParam) == BN_CLICKED && id >= kFirstButton && id <= last) onSelChange(id - kFirstButton);
    return 0;
}

void CKxDevUI_Radio::onSelChange(int index) {
    Notify(m_notify, m_id, kSelectionChanged, reinterpret_cast<LPARAM>(ButtonAt(index)));
}
