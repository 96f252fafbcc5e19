#include <kxdevui/setup/setup_dialog.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/setup/setup_ids.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::setup {

namespace {

constexpr int kNumberWidth = 56;

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_setup"); }

// Not by the text in the dialog, which marks a letter.
std::wstring WithoutMark(std::wstring text) {
    // Japanese marks stand in brackets behind the text.
    if (const std::size_t bracket = text.find(L"(&"); bracket != std::wstring::npos) text.erase(bracket, 4);
    std::erase(text, L'&');
    while (!text.empty() && (text.back() == L':' || text.back() == L'：' || text.back() == L' '))
        text.pop_back();
    return text;
}

std::wstring Trimmed(const std::wstring& text) {
    const std::size_t from = text.find_first_not_of(L" \t\u00A0\u3000"), to = text.find_last_not_of(L" \t\u00A0\u3000");
    return from == std::wstring::npos ? std::wstring() : text.substr(from, to - from + 1);
}

std::wstring NameIn(const Entry& entry) {
    return entry.IsEmpty() ? L"(" + Translated(L"Empty").str() + L")" : entry.name.empty() ? entry.key : entry.name;
}

std::wstring RemarksText(const std::vector<Entry>& positions, std::size_t position, const wchar_t* between) {
    std::wstring text;
    for (const Remark& each : RemarksOn(positions, position))
        text += (text.empty() ? L"" : between) + TextOf(each);
    return text;
}

}  // namespace

SetupDialog::SetupDialog(Design design, std::vector<Entry> positions, Accept accept)
    : m_design(std::move(design)), m_before(std::move(positions)), m_now(m_before), m_accept(std::move(accept)) {
    m_table.SetTabStop(true);
}

bool SetupDialog::Run(HWND owner) {
    m_ready = false;
    return CreateFromDlg(owner, -1, -1, m_design.templateName, ui::ModuleOf(WndProc), true) ==
           reinterpret_cast<HWND>(INT_PTR{IDOK});
}

namespace {

// It may be moved to a monitor of another scale.
LRESULT CALLBACK ZoomProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(dialog, ZoomProc, id);
    const LRESULT result = DefSubclassProc(dialog, message, wParam, lParam);
    if (message == CKxGUILayoutManager::ZoomChangedMessage) ui::ApplyZoom(dialog);
    return result;
}

}  // namespace

// ---- Making --------------------------------------------------------------------------------------------------------

LRESULT SetupDialog::OnInit(UINT, WPARAM, LPARAM) {
    MakeTable();
    MakeSearch();
    // A window of its own: nobody else zooms and colours it.
    CKxGUILayoutManager::ResizeWindowToGuiZoom(m_hWnd, 1.0);
    SetWindowSubclass(m_hWnd, ZoomProc, 1, 0);
    KX_FollowColorScheme(m_hWnd);
    AlignWindow(true);
    NameForReaders();
    m_ready = true;
    ShowRows();
    Find();
    SelectRow(0, false);
    return 1;
}

void SetupDialog::MakeTable() {
    if (!m_table.Create(GetDlgItem(m_hWnd, IDC_SETUP_TABLE))) return;
    const HWND list = m_table.GetListView();
    RECT client{};
    GetClientRect(list, &client);
    int width =
        static_cast<int>(client.right) - kNumberWidth - GetSystemMetricsForDpi(SM_CXVSCROLL, USER_DEFAULT_SCREEN_DPI);
    m_table.InsertColumn(Translated(L"Position"), kNumberWidth, nullptr, false);
    for (const Design::Column& each : m_design.columns) {
        m_table.InsertColumn(Translated(each.title), each.width, nullptr, false);
        width -= each.width;
    }
    m_table.InsertColumn(Translated(L"Remark"), std::max(width, kNumberWidth), nullptr, false);
    for (std::size_t i = 0; i < m_now.size(); ++i) {
        const std::wstring number = std::to_wstring(i + 1);
        const wchar_t* text = number.c_str();
        m_table.InsertRow(&text, 1, -1);
    }
    SetWindowSubclass(m_table, TableProc, 1, reinterpret_cast<DWORD_PTR>(this));
}

void SetupDialog::MakeSearch() {
    const auto make = [this](Narrowing& combo, int id, const auto& values, auto&& textOf) {
        const HWND placeholder = GetDlgItem(m_hWnd, id);
        if (!placeholder || !combo.Create(m_hWnd, placeholder)) return;
        combo.InsertValue(Translated(L"any"), -1);
        for (const auto& each : values)
            combo.InsertValue(std::wstring(textOf(each)).c_str(), -1);
        combo.SetSelection(0);
    };
    make(m_magnification, IDC_SETUP_MAGNIFICATION, MagnificationsOf(m_design.choices),
         [](double value) { return KX_FormatNumber(L"%gx", value).str(); });
    make(m_NA, IDC_SETUP_NA, AperturesOf(m_design.choices),
         [](double value) { return L"\u2265 " + KX_FormatNumber(L"%.2f", value).str(); });
    make(m_group, IDC_SETUP_GROUP, GroupsOf(m_design.choices),
         [](const std::wstring& value) { return Translated(value.c_str()).str(); });
    m_list.Create(m_hWnd, GetDlgItem(m_hWnd, IDC_SETUP_LIST));
    if (m_now.empty()) m_list.SetEnabled(false);
    SetWindowSubclass(GetDlgItem(m_hWnd, IDC_SETUP_FIND), FindProc, 1, reinterpret_cast<DWORD_PTR>(this));
}

// Screen readers look for a label beside the platform's own control, which stands in a window of the library's.
void SetupDialog::NameForReaders() const {
    const auto name = [this](HWND control, int label) {
        const std::wstring text = WithoutMark(ui::TextOf(GetDlgItem(m_hWnd, label)).str());
        if (control) SetWindowTextW(control, text.c_str());
    };
    name(m_table.GetListView(), IDC_SETUP_TABLE_LABEL);
    name(::GetWindow(m_list, GW_CHILD), IDC_SETUP_LIST_LABEL);
}

namespace {

// The row that is filled has to be seen while the list or the search has the focus, in every scheme: the platform's
// shade for that is faint, and both of its shades are the system's.
LRESULT DrawRow(NMLVCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
        const bool isPlatforms = GetFocus() == draw.nmcd.hdr.hwndFrom && KX_GetColorScheme() == eKxColorScheme_System;
        return isPlatforms ? CDRF_DODEFAULT : CDRF_NOTIFYITEMDRAW;
    }
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const int row = static_cast<int>(draw.nmcd.dwItemSpec);
    if (ListView_GetItemState(draw.nmcd.hdr.hwndFrom, row, LVIS_SELECTED) == 0) return CDRF_DODEFAULT;
    draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
    draw.clrTextBk = KX_GetSysColor(COLOR_HIGHLIGHT);
    draw.clrText = KX_GetSysColor(COLOR_HIGHLIGHTTEXT);
    return CDRF_DODEFAULT;
}

}  // namespace

LRESULT CALLBACK SetupDialog::TableProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR dialog) {
    // Wine does not free what is not taken away.
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, TableProc, 1);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message != WM_NOTIFY) return result;
    const auto& changed = *reinterpret_cast<const NMLISTVIEW*>(lParam);
    // Not of its header.
    if (changed.hdr.hwndFrom != reinterpret_cast<SetupDialog*>(dialog)->m_table.GetListView()) return result;
    if (changed.hdr.code == NM_CUSTOMDRAW) return DrawRow(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
    if (changed.hdr.code == LVN_ITEMCHANGED && (changed.uNewState & ~changed.uOldState & LVIS_SELECTED) != 0) {
        ui::Guarded([&]() -> ui::Handled { return reinterpret_cast<SetupDialog*>(dialog)->OnRow(), 0; });
    }
    // The Delete key empties a position.
    if (changed.hdr.code == LVN_KEYDOWN && reinterpret_cast<const NMLVKEYDOWN*>(lParam)->wVKey == VK_DELETE) {
        ui::Guarded([&]() -> ui::Handled { return reinterpret_cast<SetupDialog*>(dialog)->Choose(0), 0; });
    }
    return result;
}

// The arrow keys go on to what has been found.
LRESULT CALLBACK SetupDialog::FindProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR dialog) {
    if (message == WM_KEYDOWN && (wParam == VK_DOWN || wParam == VK_UP)) {
        ::SetFocus(::GetWindow(reinterpret_cast<SetupDialog*>(dialog)->m_list, GW_CHILD));
        return 0;
    }
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, FindProc, 1);
    return DefSubclassProc(window, message, wParam, lParam);
}

// ---- Showing -------------------------------------------------------------------------------------------------------

void SetupDialog::ShowRows() {
    for (std::size_t i = 0; i < m_now.size(); ++i) {
        const int row = static_cast<int>(i);
        int column = 0;
        for (const Design::Column& each : m_design.columns)
            m_table.SetCell(row, ++column, each.text(m_now[i]).c_str());
        m_table.SetCell(row, ++column, RemarksText(m_now, i, L"; ").c_str());
    }
}

void SetupDialog::Find() {
    if (!m_ready) return;
    Search search;
    search.typed = ui::TextOf(GetDlgItem(m_hWnd, IDC_SETUP_FIND)).str();
    const auto valueOf = [](Narrowing& combo, const auto& values) {
        const int index = combo.GetSelectionIndex() - 1;
        using Value = typename std::decay_t<decltype(values)>::value_type;
        return index >= 0 && index < std::ssize(values) ? values[static_cast<std::size_t>(index)] : Value();
    };
    search.magnification = valueOf(m_magnification, MagnificationsOf(m_design.choices));
    search.NA = valueOf(m_NA, AperturesOf(m_design.choices));
    search.group = valueOf(m_group, GroupsOf(m_design.choices));
    m_found = {Entry()};
    if (const std::wstring typed = Trimmed(search.typed); m_design.typed && !typed.empty()) {
        const Entry own = FilterNamed(typed);
        const bool listed = std::any_of(m_design.choices.begin(), m_design.choices.end(),
                                        [&own](const Entry& each) { return each.Is(own); });
        if (!listed) m_found.push_back(own);
    }
    std::copy_if(m_design.choices.begin(), m_design.choices.end(), std::back_inserter(m_found),
                 [&search](const Entry& each) { return IsFound(each, search); });
    m_list.RemoveAllValues();
    for (const Entry& each : m_found)
        m_list.InsertValue(NameIn(each).c_str(), -1);
    ShowRow();
}

void SetupDialog::ShowRow() {
    int chosen = -1;
    std::wstring told;
    const auto add = [&told](const std::wstring& text) {
        if (!text.empty()) told += (told.empty() ? L"" : L"\n") + text;
    };
    if (m_row < m_now.size()) {
        const Entry& here = m_now[m_row];
        const auto at =
            std::find_if(m_found.begin(), m_found.end(), [&here](const Entry& each) { return each.Is(here); });
        if (at != m_found.end()) chosen = static_cast<int>(at - m_found.begin());
        if (!here.IsEmpty()) add(NameIn(here)), add(DetailsOf(here));
        add(RemarksText(m_now, m_row, L"\n"));
    } else {
        add(Translated(L"The device has no positions.").str());
    }
    m_list.SetSelection(chosen);
    if (chosen >= 0) m_list.ShowValue(chosen);
    const HWND details = GetDlgItem(m_hWnd, IDC_SETUP_DETAILS);
    if (ui::TextOf(details).str() == told) return;
    SetWindowTextW(details, told.c_str());
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, details, OBJID_CLIENT, CHILDID_SELF);
}

// ---- What the user does --------------------------------------------------------------------------------------------

void SetupDialog::OnRow() {
    const int row = ListView_GetNextItem(m_table.GetListView(), -1, LVNI_SELECTED);
    if (!m_ready || row < 0) return;
    m_row = static_cast<std::size_t>(row);
    ShowRow();
}

void SetupDialog::Choose(int index) {
    if (m_row >= m_now.size() || index < 0 || index >= std::ssize(m_found)) return;
    m_now[m_row] = m_found[static_cast<std::size_t>(index)];
    ShowRows();
    ShowRow();
}

void SetupDialog::SelectRow(std::size_t row, bool focus) {
    const HWND list = m_table.GetListView();
    if (row < m_now.size()) {
        constexpr UINT state = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(list, static_cast<int>(row), state, state);
        ListView_EnsureVisible(list, static_cast<int>(row), FALSE);
    }
    if (focus) ::SetFocus(list);
}

void SetupDialog::OnOk() {
    const std::vector<std::size_t> changed = Changed(m_before, m_now);
    if (changed.empty()) return Quit(IDCANCEL);
    SKxSetupRefusal refusal;
    const bool asked = ui::Guarded([&]() -> ui::Handled { return m_accept(changed, m_now, refusal), 0; }).has_value();
    if (asked && !refusal.refused) return Quit(IDOK);
    // The host may have ended the dialog's owner.
    if (!m_hWnd) return;
    const std::wstring& reason = refusal.reason.str();
    ReportError(reason.empty() ? Translated(L"This setup has been refused.") : CKxStringW(reason), true, nullptr,
                nullptr);
    if (!m_hWnd) return;
    const bool there = refusal.position >= 0 && refusal.position < std::ssize(m_now);
    SelectRow(there ? static_cast<std::size_t>(refusal.position) : m_row, true);
}

LRESULT SetupDialog::OnCommand(UINT, WPARAM wParam, LPARAM) {
    switch (LOWORD(wParam)) {
    case IDOK: OnOk(); return 1;
    case IDCANCEL: Quit(IDCANCEL); return 1;
    case IDC_SETUP_FIND:
        if (HIWORD(wParam) == EN_CHANGE) Find();
        return 1;
    default: return 0;
    }
}

}  // namespace kx::setup
