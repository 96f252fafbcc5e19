#include <kxdevui/framework/devgui_keep.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_window.h>

namespace {

struct Place {
    HWND window;
    std::wstring windowClass;
    std::wstring way;
};

// Each window before those in it.
std::vector<Place> PlacesBelow(HWND top) {
    std::vector<HWND> windows;
    const auto collect = [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    EnumChildWindows(top, collect, reinterpret_cast<LPARAM>(&windows));
    std::vector<Place> places;
    std::map<HWND, std::wstring> ways{{top, L""}};
    std::map<std::wstring, int> alike;
    for (const HWND window : windows) {
        wchar_t name[80] = L"";
        GetClassNameW(window, name, 80);
        std::wstring way =
            ways[GetAncestor(window, GA_PARENT)] + L'/' + name + L' ' + std::to_wstring(GetDlgCtrlID(window));
        way += L' ' + std::to_wstring(alike[way]++);
        ways[window] = way;
        places.push_back({window, name, std::move(way)});
    }
    return places;
}

bool Is(const wchar_t* windowClass, const wchar_t* other) { return _wcsicmp(windowClass, other) == 0; }

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(window, message, wParam, lParam);
}

constexpr wchar_t kTable[] = L"KxDevUI_Table";

bool AskCell(HWND table, bool again, kx::ui::OpenCell& cell) {
    return Ask(table, kx::ui::WM_KX_OPEN_CELL, again, reinterpret_cast<LPARAM>(&cell)) != 0;
}

bool HasSeveral(HWND listBox) {
    return (GetWindowLongW(listBox, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

// A scroll bar that is a window of its own: in a control of the library it scrolls, in a host's it may be a value.
bool Scrolls(HWND window, const wchar_t* windowClass) {
    return Is(windowClass, L"SCROLLBAR") &&
           dynamic_cast<kx::ui::Control*>(kx::ui::ControlOf(GetAncestor(window, GA_PARENT)));
}

int RowHeight(HWND list) {
    RECT row{};
    ListView_GetItemRect(list, 0, &row, LVIR_BOUNDS);
    return static_cast<int>(row.bottom - row.top);
}

int Columns(HWND list) { return Header_GetItemCount(ListView_GetHeader(list)); }

}  // namespace

bool KxKeptInput::Kept::IsEmpty() const noexcept {
    return !typed && !selection && !rows && !cell && !scrolled[0] && !scrolled[1] && !focus;
}

// ---- Taking --------------------------------------------------------------------------------------------------------

KxKeptInput::Kept KxKeptInput::KeptOf(HWND window, const wchar_t* windowClass, HWND focus) {
    Kept kept;
    kept.focus = window == focus;
    if (Is(windowClass, L"EDIT")) {
        const bool typed = Ask(window, EM_GETMODIFY) && !(GetWindowLongW(window, GWL_STYLE) & ES_READONLY);
        if (typed) kept.typed = kx::ui::TextOf(window).str();
        if (!typed && !kept.focus) return kept;
        DWORD first = 0, last = 0;
        Ask(window, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
        kept.selection = {first, last};
    } else if (Is(windowClass, L"LISTBOX")) {
        Rows rows;
        rows.count = static_cast<int>(Ask(window, LB_GETCOUNT));
        rows.top = static_cast<int>(Ask(window, LB_GETTOPINDEX));
        for (int i = 0; i < rows.count; ++i) {
            if (Ask(window, LB_GETSEL, static_cast<WPARAM>(i)) > 0) rows.selected.push_back(i);
        }
        if (rows.top > 0 || !rows.selected.empty()) kept.rows = rows;
    } else if (Is(windowClass, WC_LISTVIEWW)) {
        Rows rows;
        rows.count = ListView_GetItemCount(window);
        rows.top = ListView_GetTopIndex(window);
        rows.left = GetScrollPos(window, SB_HORZ);
        rows.focused = ListView_GetNextItem(window, -1, LVNI_FOCUSED);
        for (int i = -1; (i = ListView_GetNextItem(window, i, LVNI_SELECTED)) >= 0;)
            rows.selected.push_back(i);
        for (int i = 0; i < Columns(window); ++i)
            rows.widths.push_back(static_cast<int>(CKxGUILayoutManager::Unzoomed(ListView_GetColumnWidth(window, i))));
        kept.rows = rows;
    } else if (kx::ui::OpenCell open; Is(windowClass, kTable) && AskCell(window, false, open)) {
        kept.cell = {open.row, open.column};
        kept.typed = std::move(open.typed.text);
        kept.selection = {static_cast<DWORD>(open.typed.first), static_cast<DWORD>(open.typed.last)};
    } else if (Scrolls(window, windowClass)) {
        const int bar = GetWindowLongW(window, GWL_STYLE) & SBS_VERT ? SB_VERT : SB_HORZ;
        if (const int at = GetScrollPos(window, SB_CTL); at != 0)
            kept.scrolled[bar] = static_cast<int>(CKxGUILayoutManager::Unzoomed(at));
    } else {
        const LONG style = GetWindowLongW(window, GWL_STYLE);
        for (const int bar : {SB_HORZ, SB_VERT}) {
            if (!(style & (bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL))) continue;
            const int at = GetScrollPos(window, bar);
            if (at != 0) kept.scrolled[bar] = static_cast<int>(CKxGUILayoutManager::Unzoomed(at));
        }
    }
    return kept;
}

void KxKeptInput::Take(HWND top) {
    if (!IsWindow(top)) return;
    for (auto& [way, kept] : m_kept)
        kept.focus = false;
    const HWND focus = GetFocus();
    for (const Place& each : PlacesBelow(top)) {
        Kept kept = KeptOf(each.window, each.windowClass.c_str(), focus);
        if (kept.IsEmpty())
            m_kept.erase(each.way);
        else
            m_kept[each.way] = std::move(kept);
    }
}

// ---- Giving back ---------------------------------------------------------------------------------------------------

void KxKeptInput::Give(HWND window, const wchar_t* windowClass, const Kept& kept) {
    const kx::ui::Closing unheard(GetAncestor(window, GA_PARENT));
    // What is painted meanwhile nobody has been asked the colours of.
    InvalidateRect(window, nullptr, TRUE);
    if (kept.typed) {
        Ask(window, EM_SETSEL, 0, -1);
        Ask(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(kept.typed->c_str()));
    }
    if (kept.rows && Is(windowClass, L"LISTBOX") && Ask(window, LB_GETCOUNT) == kept.rows->count) {
        for (const int row : kept.rows->selected) {
            if (HasSeveral(window))
                Ask(window, LB_SETSEL, TRUE, row);
            else
                Ask(window, LB_SETCURSEL, static_cast<WPARAM>(row));
        }
        Ask(window, LB_SETTOPINDEX, static_cast<WPARAM>(kept.rows->top));
    } else if (kept.rows && Is(windowClass, WC_LISTVIEWW)) {
        const Rows& rows = *kept.rows;
        if (Columns(window) == std::ssize(rows.widths)) {
            for (int i = 0; i < Columns(window); ++i) {
                const auto width =
                    static_cast<int>(CKxGUILayoutManager::Zoomed(rows.widths[static_cast<std::size_t>(i)]));
                if (ListView_GetColumnWidth(window, i) != width) ListView_SetColumnWidth(window, i, width);
            }
        }
        if (ListView_GetItemCount(window) != rows.count) return;
        constexpr UINT state = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(window, -1, 0, LVIS_SELECTED);
        for (const int row : rows.selected)
            ListView_SetItemState(window, row, LVIS_SELECTED, LVIS_SELECTED);
        if (rows.focused >= 0)
            ListView_SetItemState(window, rows.focused,
                                  LVIS_FOCUSED | ListView_GetItemState(window, rows.focused, state), state);
        ListView_Scroll(window, rows.left - GetScrollPos(window, SB_HORZ),
                        (rows.top - ListView_GetTopIndex(window)) * RowHeight(window));
    }
}

void KxKeptInput::GiveBack(HWND top) {
    if (m_kept.empty() || !IsWindow(top)) return;
    // In the end, as scrolling closes it.
    std::pair<HWND, kx::ui::OpenCell> open{};
    for (const auto& [window, windowClass, way] : PlacesBelow(top)) {
        const auto found = m_kept.find(way);
        if (found == m_kept.end()) continue;
        const Kept kept = std::move(found->second);
        m_kept.erase(found);
        if (kept.cell) {
            open = {
                window,
                {kept.cell->first, kept.cell->second, {*kept.typed, kept.selection->first, kept.selection->second}}};
            continue;
        }
        Give(window, windowClass.c_str(), kept);
        for (const int bar : {SB_HORZ, SB_VERT}) {
            if (!kept.scrolled[bar]) continue;
            // As if the user had let go of the thumb there; some ask the bar for its place, others read the message.
            const auto at = static_cast<int>(CKxGUILayoutManager::Zoomed(*kept.scrolled[bar]));
            const bool isBar = Scrolls(window, windowClass.c_str());
            SetScrollPos(window, isBar ? SB_CTL : bar, at, FALSE);
            Ask(isBar ? GetAncestor(window, GA_PARENT) : window, bar == SB_HORZ ? WM_HSCROLL : WM_VSCROLL,
                MAKEWPARAM(SB_THUMBPOSITION, at), isBar ? reinterpret_cast<LPARAM>(window) : 0);
        }
        // A field that gets the focus may select all.
        if (kept.focus && IsWindowVisible(window) && IsWindowEnabled(window)) SetFocus(window);
        if (!kept.selection || !IsWindow(window)) continue;
        Ask(window, EM_SETSEL, kept.selection->first, static_cast<LPARAM>(kept.selection->second));
        Ask(window, EM_SCROLLCARET);
    }
    if (IsWindow(open.first)) AskCell(open.first, true, open.second);
}
