#include <kxdevui/controls/devgui_editbox.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/editbox_rules.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using kx::ui::Alive;

namespace {

constexpr wchar_t kSource[] = L"devgui_editbox";

// Unzoomed pixels between the label and the field, and between the field's border and its text.
constexpr long kLabelGap = 4;
constexpr long kTextInset = 2;

// The title of one that nobody has given one.
constexpr wchar_t kNoTitle[] = L"Label:";

long Scaled(long length, double scale) {
    constexpr double limit = 1e6;
    return std::lround(std::clamp(static_cast<double>(length) * scale, 0.0, limit));
}

long TextHeight(HFONT font) {
    // Made once: that takes as long as a tenth of a field.
    static const kx::ui::MemoryDC dc(CreateCompatibleDC(nullptr));
    const kx::ui::Selection selection(dc.get(), font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.get(), &metrics);
    return metrics.tmHeight;
}

HFONT FontOf(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }

void Place(HWND child, const RECT& rect) {
    SetWindowPos(child, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// A child made where it is to stand: moving it there afterwards would cost as much as a third of making it.
HWND MakeChild(HWND parent, const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& rect, HFONT font,
               HINSTANCE module) {
    const HWND child =
        CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, rect.left, rect.top,
                        rect.right - rect.left, rect.bottom - rect.top, parent, nullptr, module, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

// Each font brings the platform's edit margins of its own; ours are beside it.
void LoseMargins(HWND edit) { SendMessageW(edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0); }

}  // namespace

ATOM CKxDevUI_EditBox::m_Atom = 0;

CKxDevUI_EditBox::CKxDevUI_EditBox() {
    m_width = 20;
    m_height = 16;
    m_title = kNoTitle;
}

CKxDevUI_EditBox::~CKxDevUI_EditBox() { DestroyOwn(); }

void CKxDevUI_EditBox::DestroyOwn() { kx::ui::Binding::EndOwnWindow(this); }

// ---- Creation ------------------------------------------------------------------------------------------------------

HWND CKxDevUI_EditBox::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::ui::Creation::Of(this, [&](const kx::ui::Creation& creation) -> HWND {
        if (cx >= 0) m_width = cx;
        if (cy >= 0) m_height = cy;
        m_labelSize.cy = m_editSize.cy = m_height;
        m_editSize.cx = std::max(0L, kx::ui::Difference(m_width, m_labelSize.cx));

        // A single child that is clipped costs nothing, each further one much: see ClipChildren.
        const bool isAlone = !m_showLabel && m_attachedWidth == 0;
        const HWND window = creation.Window(this, m_Atom,
                                            {.name = L"KxDevUI_EditBox",
                                             .object = L"CKxDevUI_EditBox",
                                             .procedure = WndProc,
                                             .background = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)),
                                             .ownLayout = true,
                                             .style = isAlone ? DWORD{WS_CLIPCHILDREN} : DWORD{0},
                                             .extendedStyle = WS_EX_CONTROLPARENT,
                                             .font = false},
                                            parent, {x, y}, {cx, cy});
        if (!window) return nullptr;
        const HFONT font = KX_GetDefaultGuiFont();
        const Places places = Arrange(font);
        if (m_showLabel) MakeLabel(places.label, font);
        // Their coming is told to all windows they are in.
        if (creation && m_hWnd == window) MakeEdit(places.edit, font);
        if (!creation.Done(this, window)) return nullptr;
        if (!isAlone && m_attachedWidth == 0) ClipChildren();
        return window;
    });
}

// Last of all: a window that clips its children while they come works out anew with each what is to be seen of it.
void CKxDevUI_EditBox::ClipChildren() {
    SetWindowLongW(m_hWnd, GWL_STYLE, GetWindowLongW(m_hWnd, GWL_STYLE) | static_cast<LONG>(WS_CLIPCHILDREN));
}

HWND CKxDevUI_EditBox::Create(HWND parent, HWND placeholder) {
    const HWND own = IsWindow(placeholder) ? GetAncestor(placeholder, GA_PARENT) : nullptr;
    if (!own || own == GetDesktopWindow() || (parent && parent != own) || placeholder == m_hWnd) {
        KX_LOG(kSource, L"window %p is no control of window %p", static_cast<void*>(placeholder),
               static_cast<void*>(parent));
        return nullptr;
    }
    if (m_id == 0) m_id = GetDlgCtrlID(placeholder);
    const RECT rect = RectInParent(placeholder);
    const Alive alive(this);
    const HWND window = Create(own, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, true, true);
    if (!window || !alive) return nullptr;
    CorrectZOrder(placeholder);
    DestroyWindow(placeholder);
    return alive ? m_hWnd : nullptr;
}

void CKxDevUI_EditBox::MakeLabel(const RECT& place, HFONT font) {
    DWORD style = SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX | SS_ENDELLIPSIS;
    if (!m_enabled) style |= WS_DISABLED;
    const Alive alive(this);
    const HWND label = MakeChild(m_hWnd, L"STATIC", m_title, style, place, font, kx::ui::ModuleOf(WndProc));
    if (alive && m_hWnd) m_label = label;
}

void CKxDevUI_EditBox::MakeEdit(const RECT& place, HFONT font) {
    DWORD style = WS_TABSTOP | ES_AUTOHSCROLL;
    if (m_readOnly) style |= ES_READONLY;
    if (!m_enabled) style |= WS_DISABLED;
    const Alive alive(this);
    const HWND edit =
        MakeChild(m_hWnd, L"EDIT", std::exchange(m_textAtFirst, {}), style, place, font, kx::ui::ModuleOf(WndProc));
    if (!alive || !m_hWnd) return;
    m_edit = edit;
    LoseMargins(m_edit);
    kx::ui::UseInputMethod(m_edit, false);
    // Wine takes what it begins with for typed.
    SendMessageW(m_edit, EM_SETMODIFY, FALSE, 0);
    SendMessageW(m_edit, EM_EMPTYUNDOBUFFER, 0, 0);
    SendMessageW(m_edit, EM_LIMITTEXT, static_cast<WPARAM>(m_maxChars), 0);
    kx::ui::Subclass(m_edit, WndProc_EditBox, static_cast<CKxDevUI_Base*>(this));
}

void CKxDevUI_EditBox::Destroy() {
    if (kx::ui::Binding::EndWindow(this)) LoseChildren();
}

void CKxDevUI_EditBox::LoseChildren() { m_label = m_edit = m_attached = nullptr; }

// ---- Looks ---------------------------------------------------------------------------------------------------------

void CKxDevUI_EditBox::Init(bool showLabel, bool mustNotBeEmpty, bool readOnly) {
    m_mustNotBeEmpty = mustNotBeEmpty;
    m_showLabel = showLabel;
    SetReadOnly(readOnly);
    if (!m_hWnd || showLabel == (m_label != nullptr)) return;
    if (showLabel) {
        const HFONT font = FontOf(m_edit);
        MakeLabel(Arrange(font).label, font);
        SetWindowPos(m_label, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    } else {
        DestroyWindow(std::exchange(m_label, nullptr));
    }
    CorrectPosition();
}

void CKxDevUI_EditBox::SetStyle(bool border) {
    if (border == m_border) return;
    m_border = border;
    CorrectPosition();
}

void CKxDevUI_EditBox::SetSize(long labelWidth, long editWidth, long height) {
    const double scale = Scale();
    if (labelWidth >= 0) m_labelSize.cx = labelWidth;
    if (editWidth >= 0) m_editSize.cx = editWidth;
    if (height >= 0) m_labelSize.cy = m_editSize.cy = height;
    m_width = kx::ui::Sum(m_labelSize.cx, m_editSize.cx);
    m_height = m_editSize.cy;
    if (!m_hWnd) return;
    SetWindowPos(m_hWnd, nullptr, 0, 0, Scaled(m_width, scale), Scaled(m_height, scale),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CorrectPosition();
}

void CKxDevUI_EditBox::CorrectPosition() {
    Layout();
    if (m_hWnd) InvalidateRect(m_hWnd, nullptr, FALSE);
}

void CKxDevUI_EditBox::SetReadOnly(bool readOnly) {
    if (readOnly == m_readOnly) return;
    m_readOnly = readOnly;
    if (!m_edit) return;
    SendMessageW(m_edit, EM_SETREADONLY, readOnly ? TRUE : FALSE, 0);
    InvalidateRect(m_hWnd, nullptr, FALSE);
}

// The window is zoomed by the layout manager, or sized by its host in unzoomed pixels, and is not told which: its
// height is nearer to one of the two.
double CKxDevUI_EditBox::Scale() const {
    RECT client{};
    if (!m_hWnd || m_height <= 0 || !GetClientRect(m_hWnd, &client)) return 1.0;
    const double zoom = CKxGUILayoutManager::GetGuiZoom(), ratio = static_cast<double>(client.bottom) / m_height;
    return std::abs(ratio - zoom) <= std::abs(ratio - 1.0) ? zoom : 1.0;
}

RECT CKxDevUI_EditBox::FieldRect() const {
    RECT field{};
    GetClientRect(m_hWnd, &field);
    const double scale = Scale();
    if (m_showLabel) field.left = std::min(Scaled(m_labelSize.cx, scale), field.right);
    if (m_attachedWidth > 0) field.right = std::max(field.left, field.right - Scaled(m_attachedWidth, scale));
    return field;
}

CKxDevUI_EditBox::Places CKxDevUI_EditBox::Arrange(HFONT font) const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const double scale = Scale();
    const RECT field = FieldRect();
    // The platform's edit writes at the top; centred in the field, it is as high as its text.
    const long border = m_border ? 1 : 0, inset = border + Scaled(kTextInset, scale);
    const long room = std::max(0L, field.bottom - 2 * border), height = std::min(room, TextHeight(font));
    const long left = field.left + inset;
    const long top = m_textRows ? m_textRows->top + m_textRows->height / 2 - height / 2 : border + (room - height) / 2;
    return {.label = {0, 0, std::max(0L, field.left - Scaled(kLabelGap, scale)), client.bottom},
            .edit = {left, top, std::max(left, field.right - inset), top + height},
            .attached = {field.right, 0, std::max(field.right, client.right), client.bottom}};
}

void CKxDevUI_EditBox::Layout() {
    if (!m_edit) return;
    const Places places = Arrange(FontOf(m_edit));
    if (m_label) Place(m_label, places.label);
    if (m_attached) Place(m_attached, places.attached);
    Place(m_edit, places.edit);
}

// ---- Content -------------------------------------------------------------------------------------------------------

void CKxDevUI_EditBox::SetText(const wchar_t* text) {
    if (!text) text = L"";
    if (!m_edit) return;
    if (GetText() == text) {
        // From now on it is the host's.
        if (IsTyped()) kx::ui::FieldEntered(m_edit);
        return;
    }
    m_textChanged = true;
    SetWindowTextW(m_edit, text);
}

CKxStringW CKxDevUI_EditBox::GetText() const { return m_edit ? kx::ui::TextOf(m_edit) : CKxStringW(); }

double CKxDevUI_EditBox::GetNumber() const {
    std::array<wchar_t, kx::ui::kNumberCharacters + 1> text{};
    if (m_edit) GetWindowTextW(m_edit, text.data(), static_cast<int>(text.size()));
    return kx::ui::ReadNumber(text.data());
}

void CKxDevUI_EditBox::SetNumber(double value, const wchar_t* format, bool once) {
    const bool usable = kx::ui::IsNumberFormat(format);
    if (format && !usable) KX_LOG(kSource, L"the format \"%ls\" does not display one number", format);
    if (usable && !once) m_format = format;
    if (!std::isfinite(value)) {
        KX_LOG(kSource, L"%g is not displayed", value);
        return;
    }
    SetText(kx::ui::FormatNumber(value, usable ? format : m_format.c_str()).data());
}

void CKxDevUI_EditBox::SetNumberAtFirst(double value) {
    m_textAtFirst = kx::ui::FormatNumber(value, m_format.c_str()).data();
}

void CKxDevUI_EditBox::SetNumberInt(int value) { SetText(std::to_wstring(value).c_str()); }

bool CKxDevUI_EditBox::IsTyped() const { return m_edit && SendMessageW(m_edit, EM_GETMODIFY, 0, 0) != FALSE; }

void CKxDevUI_EditBox::SetUnit(const wchar_t* unit) { m_unit = unit ? unit : L""; }

void CKxDevUI_EditBox::SetOfSlider(bool ofSlider) { m_ofSlider = ofSlider; }

bool CKxDevUI_EditBox::IsFocused() const { return m_edit && GetFocus() == m_edit; }

void CKxDevUI_EditBox::SetRestriction(double minimum, double maximum) {
    if (std::isnan(minimum) || std::isnan(maximum)) {
        KX_LOG(kSource, L"<%g;%g> is no interval", minimum, maximum);
        return;
    }
    m_minimum = std::min(minimum, maximum);
    m_maximum = std::max(minimum, maximum);
}

void CKxDevUI_EditBox::SetMaxChars(int count) {
    if (count < 1) {
        KX_LOG(kSource, L"%d characters leave nothing to type", count);
        return;
    }
    m_maxChars = count;
    if (m_edit) SendMessageW(m_edit, EM_LIMITTEXT, static_cast<WPARAM>(count), 0);
}

void CKxDevUI_EditBox::ShowWithin(double value) {
    const Alive alive(this);
    SetNumber(value);
    for (const wchar_t* exact : {L"%.15g", L"%.17g"}) {
        if (!alive || kx::ui::ViolatedBound(GetNumber(), m_minimum, m_maximum) == kx::ui::Bound::None) return;
        SetNumber(value, exact, true);
    }
}

bool CKxDevUI_EditBox::CheckRestriction(bool showMessage, bool correct, double value) {
    const auto violated = kx::ui::ViolatedBound(GetNumber(), m_minimum, m_maximum);
    if (violated != kx::ui::Bound::None) {
        if (correct) {
            ShowWithin(violated == kx::ui::Bound::Minimum ? m_minimum : m_maximum);
            return false;
        }
        CKxStringW message;
        const CKxStringW format = TranslatedFormat(L"Value must be in interval <%g;%g>", 2);
        message.Format(100, L"%ls", KX_FormatNumber(format, m_minimum, m_maximum).c_str());
        ReportError(message, showMessage, m_edit, m_label);
        return false;
    }
    if (m_mustNotBeEmpty && (!m_edit || GetWindowTextLengthW(m_edit) == 0)) {
        if (correct) {
            SetNumber(value);
        } else {
            ReportError(KX_GetTranslation(L"Field can not be empty.", kSource), showMessage, m_edit, m_label);
        }
        return false;
    }
    return true;
}

CKxStringW CKxDevUI_EditBox::TranslatedFormat(const wchar_t* text, int doubles) {
    const CKxStringW translated = KX_GetTranslation(text, kSource);
    return kx::ui::CountDoubles(translated) == doubles ? translated : CKxStringW(text);
}

// ---- Operations of the base ----------------------------------------------------------------------------------------

void CKxDevUI_EditBox::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    if (m_hWnd) EnableWindow(m_hWnd, enable ? TRUE : FALSE);
}

void CKxDevUI_EditBox::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    CKxDevUI_Base::SetTitle(title);
    if (m_label) SetWindowTextW(m_label, m_title);
}

void CKxDevUI_EditBox::SetFocus() { ::SetFocus(m_edit); }

// ---- Default callbacks ---------------------------------------------------------------------------------------------

void CKxDevUI_EditBox::OnEnter() { NotifyParent(kx::ui::kEditEnter, reinterpret_cast<LPARAM>(m_hWnd)); }
void CKxDevUI_EditBox::OnSetFocus() { NotifyParent(EN_SETFOCUS, reinterpret_cast<LPARAM>(m_hWnd)); }
void CKxDevUI_EditBox::OnKillFocus() { NotifyParent(EN_KILLFOCUS, reinterpret_cast<LPARAM>(m_hWnd)); }
void CKxDevUI_EditBox::OnChange() { NotifyParent(EN_CHANGE, reinterpret_cast<LPARAM>(m_hWnd)); }
void CKxDevUI_EditBox::OnChar(int ch) { NotifyParent(kx::ui::kEditChar, ch); }

void CKxDevUI_EditBox::NotifyParent(int code, LPARAM lParam) {
    const HWND parent = GetAncestor(m_hWnd, GA_PARENT);
    if (parent != GetDesktopWindow()) kx::ui::Notify(parent, m_id, code, lParam);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

LRESULT CKxDevUI_EditBox::PaintField(const kx::ui::Message& message) {
    return kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [this](HDC dc, const RECT&) {
        const RECT field = FieldRect();
        const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
        FillRect(dc, &field, KX_GetSysColorBrush(enabled && !m_readOnly ? COLOR_WINDOW : COLOR_BTNFACE));
        if (m_border) DrawFrame(dc, field);
    });
}

void CKxDevUI_EditBox::DrawFrame(HDC dc, const RECT& field) const {
    KX_DrawFieldFrame(dc, field, IsWindowEnabled(m_hWnd) != FALSE, IsFocused());
}

// Where the text stands higher than the field begins, the edit lies on the frame.
LRESULT CKxDevUI_EditBox::PaintEdit(const kx::ui::Message& message) {
    const Alive alive(this);
    const LRESULT result = kx::ui::CallPrevious(message);
    if (!alive || m_edit != message.window || !m_border) return result;
    const RECT place = RectInParent(m_edit);
    RECT field = FieldRect();
    OffsetRect(&field, -place.left, -place.top);
    DrawFrame(kx::ui::WindowDC(m_edit), field);
    return result;
}

void CKxDevUI_EditBox::PaintNow() {
    if (!m_edit || !std::exchange(m_textChanged, false)) return;
    // The edit paints into any DC that it is given, without the platform's way round by an update region, which takes
    // longer than all the rest. A caret would be painted over.
    if (IsFocused()) {
        UpdateWindow(m_edit);
        return;
    }
    const HWND edit = m_edit;
    const kx::ui::WindowDC dc(edit);
    const auto background = reinterpret_cast<HBRUSH>(AnswerColor(dc, true));
    kx::ui::Paint({edit, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(static_cast<HDC>(dc)), PRF_CLIENT}, {}, background,
                  [edit](HDC buffer, const RECT&) {
                      SendMessageW(edit, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer), PRF_CLIENT);
                  });
    ValidateRect(edit, nullptr);
}

LRESULT CKxDevUI_EditBox::AnswerColor(HDC dc, bool field) const {
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    const int back = field && enabled && !m_readOnly ? COLOR_WINDOW : COLOR_BTNFACE;
    SetTextColor(dc, KX_GetSysColor(!enabled ? COLOR_GRAYTEXT : field ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
    SetBkColor(dc, KX_GetSysColor(back));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(back));
}

// ---- Routing -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_EditBox::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return Entry<CKxDevUI_EditBox, ByUserData<CKxDevUI_EditBox>, WM_NCCREATE, Unbound::Default,
                 &CKxDevUI_EditBox::Handle>({window, message, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_EditBox::WndProc_EditBox(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return SubclassEntry<CKxDevUI_EditBox, &CKxDevUI_EditBox::HandleEdit, Unbound::Zero>(
        {edit, message, wParam, lParam});
}

kx::ui::Handled CKxDevUI_EditBox::Handle(const kx::ui::Message& message) {
    const auto [window, id, wParam, lParam] = message;
    if (id == WM_NCCREATE) m_hWnd = window;
    if (id == WM_DESTROY) LoseChildren();
    if (!m_edit) return std::nullopt;  // on the way in or out
    if (m_hook) {
        if (const auto answer = m_hook(*this, message)) return answer;
    }
    const auto told = kx::ui::DescribePart(message, [this](HWND part, KxAccess& access) {
        if (access.name.IsEmpty() && (m_showLabel || m_title != kNoTitle)) access.name = kx::ui::AsRead(m_title);
        if (part == m_edit && access.unit.IsEmpty()) access.unit = m_unit;
        return true;
    });
    if (told) return told;
    switch (id) {
    case WM_SIZE: Layout(); return 0;
    case WM_PAINT:
    case WM_PRINTCLIENT: return PaintField(message);
    case WM_ERASEBKGND: return 1;
    case WM_KX_DESCRIBE: return kx::ui::Describe(message, [](KxAccess& access) { access.role = ROLE_SYSTEM_GROUPING; });
    case WM_SETFOCUS:
    case WM_LBUTTONDOWN: ::SetFocus(m_edit); return 0;
    case WM_GETFONT:
    case WM_GETTEXTLENGTH:
    case WM_GETTEXT: return SendMessageW(m_edit, id, wParam, lParam);
    case WM_SETTEXT: SetText(reinterpret_cast<const wchar_t*>(lParam)); return TRUE;
    case WM_SETFONT:
        SendMessageW(m_edit, id, wParam, FALSE);
        LoseMargins(m_edit);
        if (m_label) SendMessageW(m_label, id, wParam, FALSE);
        CorrectPosition();
        return 0;
    case WM_ENABLE:
        // The focus leaves a disabled edit, and the host may end this object: nothing of it is touched after that.
        for (const HWND child : std::array{m_label, m_edit})
            EnableWindow(child, wParam ? TRUE : FALSE);
        InvalidateRect(window, nullptr, FALSE);
        return std::nullopt;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC: return AnswerColor(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam) == m_edit);
    case WM_COMMAND:
        if (reinterpret_cast<HWND>(lParam) != m_edit) return std::nullopt;
        // The edit tells of its focus here too; the host has heard of that.
        if (HIWORD(wParam) == EN_CHANGE) OnChange();
        return 0;
    case kx::ui::WM_KX_ZOOM_CHANGED: kx::ui::ApplyZoom(window); return std::nullopt;
    default: return std::nullopt;
    }
}

// ---- Habits --------------------------------------------------------------------------------------------------------

std::wstring CKxDevUI_EditBox::AllowedInWords() const {
    return kx::ui::AllowedText({m_minimum, m_maximum, false, m_unit});
}

std::wstring CKxDevUI_EditBox::Fault() const {
    if (m_content == Content::Text) return {};
    if (m_findFault) return m_findFault(*this);
    const double none = std::numeric_limits<double>::infinity();
    const bool clamped = m_ofSlider && !KX_GetFieldHabits(m_edit).tableOnly;
    const double read = GetNumber();
    // Empty, it reads as 0.
    const bool mayBeEmpty = !m_mustNotBeEmpty && !m_ofSlider && m_minimum <= 0 && m_maximum >= 0;
    const kx::ui::Allowed allowed{clamped ? -none : m_minimum, clamped ? none : m_maximum, mayBeEmpty, m_unit};
    const std::wstring text = GetText().str();
    return kx::ui::MayBeEntered(text, allowed) && kx::ui::IsReadAs(text, read) ? std::wstring() : AllowedInWords();
}

bool CKxDevUI_EditBox::AnswerFault() {
    if (!KX_GetFieldHabits(m_edit).answer || !IsTyped()) return true;
    const std::wstring fault = Fault();
    if (fault.empty()) {
        kx::ui::HideAnswer(m_edit);
        return true;
    }
    kx::ui::ShowAnswer(m_edit, fault);
    return false;
}

kx::ui::Handled CKxDevUI_EditBox::HandleEdit(const kx::ui::Message& message) {
    // On the way out.
    if (message.window != m_edit) return std::nullopt;
    if (m_hook) {
        if (const auto answer = m_hook(*this, message)) return answer;
    }
    kx::ui::NoteField(message);
    switch (message.id) {
    case WM_PAINT: return m_textRows ? kx::ui::Handled(PaintEdit(message)) : std::nullopt;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: return HandleFocus(message);
    case WM_GETDLGCODE:
        if (message.wParam == VK_RETURN) return DLGC_WANTALLKEYS;
        return kx::ui::WantsEscape(message) ? kx::ui::Handled(kx::ui::CallPrevious(message) | DLGC_WANTMESSAGE)
                                            : std::nullopt;
    case WM_CHAR:
    case WM_PASTE: return HandleChar(message);
    default: return std::nullopt;
    }
}

kx::ui::Handled CKxDevUI_EditBox::HandleFocus(const kx::ui::Message& message) {
    const Alive alive(this);
    const RECT field = FieldRect();
    InvalidateRect(m_hWnd, &field, FALSE);
    if (message.id == WM_SETFOCUS) {
        kx::ui::SelectOnFocus(message);
        OnSetFocus();
        return std::nullopt;
    }
    // The host finds what may be entered. What was typed is told of in the answer, which stays beside the field.
    if (!AnswerFault()) {
        const std::wstring answer = kx::ui::RefusedText(GetText().str(), Fault());
        kx::ui::RevertField(m_edit);
        if (alive && m_edit == message.window) kx::ui::ShowAnswer(m_edit, answer);
    }
    if (!alive || m_edit != message.window) return std::nullopt;
    OnKillFocus();
    if (alive && m_edit == message.window) kx::ui::FieldEntered(m_edit);
    return kx::ui::LoseFocus(message);
}

kx::ui::Handled CKxDevUI_EditBox::HandleChar(const kx::ui::Message& message) {
    const Alive alive(this);
    const auto stands = [&] { return alive && m_edit == message.window; };
    if (message.id == WM_CHAR) {
        m_charUsed = false;
        OnChar(static_cast<int>(message.wParam));
        if (alive && std::exchange(m_charUsed, false)) return 0;
        if (message.wParam == VK_RETURN) {
            if (stands() && AnswerFault()) {
                OnEnter();
                if (stands()) kx::ui::FieldEntered(m_edit);
                if (stands()) kx::ui::GoOnFrom(m_edit, kx::ui::ParentOf(m_hWnd), false);
            }
            return 1;
        }
    }
    if (!stands()) return std::nullopt;
    return kx::ui::TypeInField(message, {.separator = m_content == Content::List ? m_separator : wchar_t{0},
                                         .anyText = m_content == Content::Text,
                                         .allowed = [this] { return AllowedInWords(); }});
}
