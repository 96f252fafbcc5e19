#include <kxdevui/controls/devgui_listcontrol.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"devgui_listcontrol";

constexpr int kInnerId = 10000;
constexpr int kSelectionChanged = 0x0401;
constexpr wchar_t kFirstLetter = 32;
constexpr std::size_t kMostDrawn = 1000;  // characters of a text

// Unzoomed pixels: beside a text, and what a row has more than the text's height.
constexpr int kBeside = 3, kLeading = 2;
// Where the platform's list box begins a text, at every zoom: a list that is drawn here from now on stays as it was.
constexpr POINT kTextOfPlatform{1, 0};

HFONT FontOf(HWND window) { return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)); }

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t own[16] = L"";
    GetClassNameW(window, own, 16);
    return lstrcmpiW(own, name) == 0;
}

// While it lives, the platform's control does not draw, nor work out its scroll bars anew, with every value.
class Quietly {
public:
    explicit Quietly(HWND inner) : m_inner(inner) {
        if (inner) SendMessageW(inner, WM_SETREDRAW, FALSE, 0);
    }
    ~Quietly() {
        if (!IsWindow(m_inner)) return;
        SendMessageW(m_inner, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(m_inner, nullptr, TRUE);
    }
    Quietly(const Quietly&) = delete;
    Quietly& operator=(const Quietly&) = delete;

private:
    HWND m_inner;
};

}  // namespace

// ---- Creation ------------------------------------------------------------------------------------------------------

// What the platform's two lists have under different numbers.
void ListControl::Adopt(HWND placeholder) {
    const bool isCombo = IsOfClass(placeholder, L"ComboBox");
    if (!isCombo && !IsOfClass(placeholder, L"ListBox")) return;
    const auto ask = [=](UINT ofCombo, UINT ofList, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessageW(placeholder, isCombo ? ofCombo : ofList, wParam, lParam);
    };
    const LONG style = GetWindowLongW(placeholder, GWL_STYLE);
    constexpr LONG drawn[] = {LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE, CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE};
    if ((style & drawn[isCombo]) && !(style & (isCombo ? CBS_HASSTRINGS : LBS_HASSTRINGS))) return;
    RemoveAllValues();
    ListChoice choice;
    const int count = static_cast<int>(ask(CB_GETCOUNT, LB_GETCOUNT));
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<WPARAM>(i);
        std::wstring text(static_cast<std::size_t>(ask(CB_GETLBTEXTLEN, LB_GETTEXTLEN, at)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(ask(CB_GETLBTEXT, LB_GETTEXT, at, reinterpret_cast<LPARAM>(text.data()))));
        m_values.At(m_values.Insert(std::move(text), -1)).userData = ask(CB_GETITEMDATA, LB_GETITEMDATA, at);
        if (isCombo ? ask(CB_GETCURSEL, 0) == i : ask(0, LB_GETSEL, at) > 0) choice.indexes.push_back(i);
    }
    if (isCombo && choice.indexes.empty()) choice.typed = TextOf(placeholder).str();
    m_values.Choose(std::move(choice));
}

void ListControl::Begin() {
    m_inner = m_rows = nullptr;
    m_depth = 0;
    m_acted = false;
    MeasureRows();
}

bool ListControl::MakeInner(const Parts& parts, const wchar_t* windowClass, const RECT& place, DWORD style) {
    HWND inner = nullptr;
    if (!parts.Add(inner, windowClass, kInnerId, nullptr, place, style)) return false;
    if (!inner) return true;
    m_inner = m_rows = inner;
    Watch(inner);
    KX_FollowColorScheme(inner);
    return static_cast<bool>(parts);
}

void ListControl::Fill() {
    if (!m_rows || m_values.Count() == 0) return;
    const Quietly quietly(m_inner);
    for (int i = 0; i < m_values.Count(); ++i)
        InsertRow(i);
    ShowChoice();
}

// Straight to the platform's procedure of the rows, which has the texts of a combo box too: of thousands of values, the
// way through all that stands before it takes longer than they do.
void ListControl::InsertRow(int index) const {
    CallPrevious({m_rows, LB_INSERTSTRING, static_cast<WPARAM>(index),
                  reinterpret_cast<LPARAM>(m_values.At(index).text.c_str())});
}

// The platform moves on what is selected with its row, and draws again what moves; nobody promises it, so it is looked
// at until it has been seen, which takes a fifth of what a value does. To compare several marks would take longer with
// each value.
void ListControl::FollowInsertion(int at) {
    static bool s_movesOn = false;
    if (s_movesOn || m_values.Chosen().indexes.size() != 1 || m_values.First() <= at) return;
    s_movesOn = CallPrevious({m_rows, LB_GETCURSEL, 0, 0}) == m_values.First();
    if (!s_movesOn) ShowChoice();
}

void ListControl::Watch(HWND window) {
    if (Subclass(window, InnerProc, nullptr)) ByState<ListControl>::Bind(window, this);
}

// ---- Values --------------------------------------------------------------------------------------------------------

bool ListControl::SetSelection(const wchar_t* text) {
    const int index = GetIndex(text);
    if (index == -1) return false;
    SetSelection(index);
    return true;
}

void ListControl::SetSelection(int index) {
    if (index != -1 && !m_values.Has(index)) return;
    m_asking = m_asking == Asking::No ? Asking::No : Asking::Settled;
    ListChoice choice;
    if (index >= 0) choice.indexes = {index};
    if (choice == m_values.Chosen()) return;
    m_values.Choose(std::move(choice));
    ShowChoice();
}

int ListControl::GetSelectionIndex() { return m_values.First(); }

int ListControl::GetSelection(wchar_t* buffer, int size) {
    if (m_values.Chosen() == ListChoice()) return -1;
    return CopyText(m_values.ChosenText(), buffer, size);
}

double ListControl::GetSelection() { return NumberIn(m_values.ChosenText()); }

int ListControl::GetIndex(const wchar_t* text) { return m_values.Find(text); }

int ListControl::GetValuesCount() { return m_values.Count(); }

std::int64_t ListControl::GetUserData(int index) { return m_values.Has(index) ? m_values.At(index).userData : 0; }

void ListControl::SetUserData(int index, std::int64_t value) {
    if (m_values.Has(index)) m_values.At(index).userData = value;
}

void ListControl::SetValueName(int index, const wchar_t* name) {
    if (!name) name = L"";
    if (!m_values.Has(index) || m_values.At(index).text == name) return;
    m_values.At(index).text = name;
    if (!m_inner) return;
    // The platform cannot change a text.
    const Quietly quietly(m_inner);
    SendMessageW(m_inner, m_kind.remove, static_cast<WPARAM>(index), 0);
    InsertRow(index);
    ShowChoice();
}

void ListControl::SetValueEnabled(int index, bool enable) {
    if (!m_values.Has(index) || m_values.At(index).enabled == enable) return;
    m_values.At(index).enabled = enable;
    Restyle();
}

int ListControl::InsertValue(double value, int index) {
    const std::wstring text = TextOfNumber(value);
    if (!text.empty()) return InsertValue(text.c_str(), index);
    KX_LOG(L"devgui_listcontrol", L"%g is no value of a list", value);
    return -1;
}

int ListControl::InsertValue(const wchar_t* value, int index) {
    if (!value) value = L"";
    const int at = m_values.Insert(value, index);
    if (at < 0 || !m_rows) return at;
    InsertRow(at);
    FollowInsertion(at);
    return at;
}

void ListControl::InsertValues(const double* values, int count, int start) {
    const Quietly quietly(count > 1 ? m_inner : nullptr);
    InsertEach(values, count, start, [this](double value, int index) { InsertValue(value, index); });
}

void ListControl::InsertValues(const wchar_t** values, int count, int start) {
    const Quietly quietly(count > 1 ? m_inner : nullptr);
    InsertEach(values, count, start, [this](const wchar_t* value, int index) { InsertValue(value, index); });
}

bool ListControl::RemoveValue(int index) {
    const bool wasBefore = m_values.First() >= index;
    if (!m_values.Remove(index)) return false;
    if (m_inner) SendMessageW(m_inner, m_kind.remove, static_cast<WPARAM>(index), 0);
    if (wasBefore) ShowChoice(), Redraw();
    return true;
}

void ListControl::RemoveAllValues() {
    m_values.Clear();
    if (!m_inner) return;
    SendMessageW(m_inner, m_kind.clear, 0, 0);
    ShowChoice();
}

CKxStringW ListControl::GetValueName(int index) const {
    return m_values.Has(index) ? CKxStringW(m_values.At(index).text.c_str()) : CKxStringW();
}

bool ListControl::IsValueEnabled(int index) const { return m_values.IsUsable(index); }

void ListControl::SetValueColor(int index, COLORREF color) {
    if (!m_values.Has(index)) return;
    auto& own = m_values.At(index).color;
    own.reset();
    if (color != CLR_INVALID) own = color, m_values.ShowPictures();
    Restyle();
}

void ListControl::SetValueImage(int index, const wchar_t* name) {
    if (!m_values.Has(index)) return;
    m_values.At(index).image = name ? CKxBitmapPool::AddImageBaseUI(name) : CKxBitmapPool::NoImage;
    if (m_values.At(index).image != CKxBitmapPool::NoImage) m_values.ShowPictures();
    Restyle();
}

// The label that stands before a control in a dialog is its name.
HWND ListControl::LabelBefore() const {
    const HWND before = m_hWnd ? GetWindow(m_hWnd, GW_HWNDPREV) : nullptr;
    return before && IsOfClass(before, L"Static") ? before : nullptr;
}

// A client's choice is a click; of several, another click takes it back.
bool ListControl::ChooseOne(int index) {
    if (!m_values.Has(index) || !m_values.IsUsable(index)) return false;
    ListChoice wanted;
    wanted.indexes = {index};
    if (m_rows == m_inner && (GetWindowLongW(m_inner, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL))) {
        wanted.indexes = m_values.Chosen().indexes;
        const auto at = std::lower_bound(wanted.indexes.begin(), wanted.indexes.end(), index);
        const bool isChosen = at != wanted.indexes.end() && *at == index;
        isChosen ? wanted.indexes.erase(at) : wanted.indexes.insert(at, index);
    }
    const Alive alive(this);
    Choose(wanted);
    return !alive || m_values.Chosen() == wanted;
}

// Rows that are not on screen have no window of their own, nor have those that are.
void ListControl::Tell(KxAccess& access) {
    if (m_rows != m_inner) {
        access.setValue = [this](const CKxStringW& text) { return ChooseOne(m_values.Find(text)); };
        return;
    }
    access.role = ROLE_SYSTEM_LIST;
    access.parts = m_values.Count();
    access.part = [this](long number) {
        const int index = static_cast<int>(number) - 1;
        const auto at = static_cast<WPARAM>(index);
        KxAccess part;
        part.role = ROLE_SYSTEM_LISTITEM;
        part.name = m_values.At(index).text.c_str();
        part.state = STATE_SYSTEM_SELECTABLE | (m_values.IsUsable(index) ? 0 : STATE_SYSTEM_UNAVAILABLE);
        if (SendMessageW(m_inner, LB_GETSEL, at, 0) > 0) part.state |= STATE_SYSTEM_SELECTED;
        SendMessageW(m_inner, LB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&part.place));
        part.action = KX_GetTranslation(L"Select", kSource);
        part.act = [this, index] { ChooseOne(index); };
        return part;
    };
}

bool ListControl::CheckRestriction(bool show) {
    if (m_values.Chosen() != ListChoice()) return true;
    ReportError(NothingChosen().c_str(), show, m_inner, LabelBefore());
    return false;
}

// ---- Asking --------------------------------------------------------------------------------------------------------

void ListControl::TellParent() {
    Notify(ParentOf(m_hWnd), m_id, kSelectionChanged, reinterpret_cast<LPARAM>(static_cast<HWND>(m_hWnd)));
}

void ListControl::OnSelectionChangeRequest(int, bool&) { TellParent(); }

void ListControl::Choose(ListChoice wanted) {
    // While the host is asked, nobody can ask it for something else.
    if (wanted == m_values.Chosen() || m_asking != Asking::No) return ShowChoice();
    m_values.Try(std::move(wanted));
    ShowChoice();
    m_asking = Asking::Yes;
    const auto answer = AskHost(this, [this](bool& veto) { m_kind.request(*this, veto); });
    if (answer == ui::Answer::Gone) return;
    const bool isSettled = std::exchange(m_asking, Asking::No) == Asking::Settled;
    if (answer == ui::Answer::Agreed || isSettled) return;
    m_values.TakeBack();
    ShowChoice();
}

void ListControl::ShowChoice() {
    if (m_inner) m_kind.show(*this);
}

void ListControl::HasActed() {
    m_acted = true;
    if (m_depth == 0 && m_inner) m_acted = false, m_kind.settle(*this);
}

LRESULT CALLBACK ListControl::InnerProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    // Of thousands of values each is a message or two; of what is drawn here, the end of each is one as well, which the
    // box would hand on.
    if (id == WM_DELETEITEM) return TRUE;
    const bool isOfLists = (id >= CB_GETEDITSEL && id < CB_MSGMAX) || (id >= LB_ADDSTRING && id < LB_MSGMAX);
    if (isOfLists && id != CB_SHOWDROPDOWN) return CallPrevious({window, id, wParam, lParam});
    return SubclassEntry<ListControl, &ListControl::HandleInner, Unbound::Default, ByState<ListControl>>(
        {window, id, wParam, lParam});
}

// The host is asked when the platform's procedures have returned: they go on using what is theirs after they have told
// of a choice, whatever has become of it.
Handled ListControl::HandleInner(const Message& message) {
    if (!m_inner) return std::nullopt;  // on the way in or out
    const Alive alive(this);
    const HWND inner = m_inner;
    const auto stands = [&] { return alive && m_inner == inner; };
    if (message.id == WM_KX_DESCRIBE && message.window == m_inner)
        return Describe(message, [this](KxAccess& access) { Tell(access); });
    const Handled answer = m_kind.before(*this, message);
    if (answer || !stands()) return answer.value_or(0);
    ++m_depth;
    const LRESULT result = CallPrevious(message);
    if (!stands()) return result;
    // Under Wine the arrows of a scroll bar stay as they were.
    if (message.id == WM_ENABLE) RedrawWindow(message.window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    // What is drawn over the rows of a list box goes on.
    if (--m_depth == 0 && m_acted && (m_rows != m_inner || GetCapture() != m_inner))
        m_acted = false, m_kind.settle(*this);
    return result;
}

// ---- Input ---------------------------------------------------------------------------------------------------------

bool ListControl::HasFocus() const {
    const HWND focus = GetFocus();
    return focus && m_hWnd && (focus == m_hWnd || IsChild(m_hWnd, focus));
}

std::optional<int> ListControl::Notches(WPARAM wParam) {
    if (!HasFocus()) return std::nullopt;
    const int turned = GET_WHEEL_DELTA_WPARAM(wParam);
    if ((turned > 0) != (m_notches > 0)) m_notches = 0;
    m_notches += turned;
    const int whole = m_notches / WHEEL_DELTA;
    m_notches -= whole * WHEEL_DELTA;
    return whole;
}

bool ListControl::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    if (!m_inner || !HasFocus() || !IsWindowEnabled(m_hWnd)) return false;
    SendMessageW(m_inner, WM_MOUSEWHEEL, wParam, lParam);
    return true;
}

std::optional<int> ListControl::TypedTo(wchar_t character, int from) {
    const DWORD time = GetTickCount();
    if (character < kFirstLetter || (character == L' ' && !m_typed.IsTyping(time))) return std::nullopt;
    return m_typed.Type(character, time, m_values, from);
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

namespace {

// The last one asked for is kept: to choose a font into a DC takes long, and mostly there is one.
long TextHeight(HFONT font) {
    static LOGFONTW s_font{};
    static long s_height = 0;
    LOGFONTW own{};
    GetObjectW(font, sizeof own, &own);
    if (s_height > 0 && std::memcmp(&own, &s_font, sizeof own) == 0) return s_height;
    const MemoryDC dc(CreateCompatibleDC(nullptr));
    const Selection selection(dc.get(), font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.get(), &metrics);
    s_font = own;
    return s_height = metrics.tmHeight;
}

}  // namespace

// In proportion to the zoom, where the font allows it. The platform asks before there is a control with a font.
void ListControl::MeasureRows() {
    const long unzoomed = TextHeight(KX_GetDefaultGuiFontZoom(1.0)) + kLeading;
    m_textHeight = m_inner ? TextHeight(FontOf(m_inner)) : unzoomed - kLeading;
    m_rowHeight = m_inner ? std::max(CKxGUILayoutManager::Zoomed(unzoomed), m_textHeight) : unzoomed;
}

void ListControl::Redraw() const {
    if (m_inner) InvalidateRect(m_inner, nullptr, FALSE);
    if (m_rows && m_rows != m_inner) InvalidateRect(m_rows, nullptr, FALSE);
}

void ListControl::Restyle() {
    Redraw();
    if (m_inner) m_kind.restyle(*this);
}

bool ListControl::NeedsDrawing() const {
    if (m_values.HasPictures() || KX_GetColorScheme() != eKxColorScheme_System) return true;
    for (int i = 0; i < m_values.Count(); ++i)
        if (!m_values.IsUsable(i)) return true;
    return false;
}

void ListControl::DrawPicture(HDC dc, const RECT& place, const ListValue& value, bool usable, int color) const {
    if (value.color) {
        const Brush fill(CreateSolidBrush(*value.color));
        FillRect(dc, &place, fill.get());
        FrameRect(dc, &place, KX_GetSysColorBrush(color));
    } else if (value.image != CKxBitmapPool::NoImage) {
        CKxBitmapPool::DrawOptimalImage(dc, value.image, place, usable);
    }
}

void ListControl::Draw(const DRAWITEMSTRUCT& item) const {
    const int index = static_cast<int>(item.itemID);
    const bool isThere = m_values.Has(index);
    const bool usable = IsWindowEnabled(m_hWnd) && (!isThere || m_values.IsUsable(index));
    const bool selected = isThere && (item.itemState & ODS_SELECTED);
    const int back = !selected ? COLOR_WINDOW : usable ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
    const int color = !usable ? COLOR_GRAYTEXT : selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    // Straight to the screen, in the font that is chosen already, as the platform draws its own.
    const HDC dc = item.hDC;
    const RECT& area = item.rcItem;
    const COLORREF textBefore = SetTextColor(dc, KX_GetSysColor(color));
    const COLORREF backBefore = SetBkColor(dc, KX_GetSysColor(back));
    const long beside = CKxGUILayoutManager::Zoomed(kBeside), height = Difference(area.bottom, area.top);
    const bool hasPicture = isThere && m_values.HasPictures();
    const long inset = CKxGUILayoutManager::Zoomed(1), side = hasPicture ? Difference(height, 2 * inset) : 0;
    const long left = Sum(area.left, beside), top = Sum(area.top, inset);
    const std::wstring_view text = isThere ? std::wstring_view(m_values.At(index).text) : L"";
    POINT at{hasPicture ? Sum(Sum(left, side), beside) : left, Sum(area.top, Difference(height, m_textHeight) / 2)};
    if (!hasPicture && m_rows == m_inner) at = {Sum(area.left, kTextOfPlatform.x), Sum(area.top, kTextOfPlatform.y)};
    ExtTextOutW(dc, at.x, at.y, ETO_CLIPPED | ETO_OPAQUE, &area, text.data(),
                static_cast<UINT>(std::min(text.size(), kMostDrawn)), nullptr);
    if (hasPicture) DrawPicture(dc, RectAt(left, top, side, side), m_values.At(index), usable, color);
    if (ShowsFocus(item)) KX_DrawFocusOutline(dc, area, back);
    SetTextColor(dc, textBefore);
    SetBkColor(dc, backBefore);
}

void ListControl::DrawAtOnce(DRAWITEMSTRUCT item) const {
    const WindowDC dc(m_inner);
    const Selection selection(dc, FontOf(m_inner));
    item.hDC = dc;
    Draw(item);
}

Handled ListControl::HandleList(const Message& message) {
    switch (message.id) {
    case WM_DESTROY: m_inner = m_rows = nullptr; return std::nullopt;
    case WM_DRAWITEM: Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam)); return TRUE;
    case WM_MEASUREITEM:
        reinterpret_cast<MEASUREITEMSTRUCT*>(message.lParam)->itemHeight = static_cast<UINT>(RowHeight());
        return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC: {
        const auto dc = reinterpret_cast<HDC>(message.wParam);
        SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(m_hWnd) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        SetBkColor(dc, KX_GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_WINDOW));
    }
    case WM_GETFONT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
        return m_inner ? Handled(SendMessageW(m_inner, message.id, message.wParam, message.lParam)) : std::nullopt;
    case WM_SETFONT:
        if (!m_inner) return std::nullopt;
        SendMessageW(m_inner, WM_SETFONT, message.wParam, message.lParam);
        MeasureRows();
        SendMessageW(m_inner, m_kind.rowHeight, 0, RowHeight());
        return 0;
    case WM_SYSCOLORCHANGE:
        if (m_inner) m_kind.restyle(*this);
        return std::nullopt;
    default: return std::nullopt;
    }
}

}  // namespace kx::ui
