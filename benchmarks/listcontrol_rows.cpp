// Combo box and list box against the platform's controls in a plain window.
#include <windows.h>

#include <string>
#include <vector>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr int kValues = 8, kMany = 10000;

// What both sides make: the window of a control, and in it the platform's control.
struct Combo {
    using Control = CKxDevUI_ComboBox;
    static constexpr const wchar_t* kClass = L"COMBOBOX";
    static constexpr DWORD kStyle = CBS_DROPDOWNLIST | WS_VSCROLL;
    static constexpr SIZE kSize{120, 21}, kInner{120, 203};
    static constexpr UINT kInsert = CB_INSERTSTRING, kSelect = CB_SETCURSEL;
};
struct List {
    using Control = CKxDevUI_ListBox;
    static constexpr const wchar_t* kClass = L"LISTBOX";
    static constexpr DWORD kStyle = WS_VSCROLL | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
    static constexpr SIZE kSize{120, 160}, kInner{120, 160};
    static constexpr UINT kInsert = LB_INSERTSTRING, kSelect = LB_SETCURSEL;
};

struct Stock {
    HWND window, inner;
};
// Draws the values of a list that it has put there, with nothing but their texts.
WNDPROC s_bare = nullptr;
LRESULT CALLBACK DrawByHand(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    if (id != WM_DRAWITEM) return CallWindowProcW(s_bare, window, id, wParam, lParam);
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const bool isCombo = item.CtlType == ODT_COMBOBOX, selected = (item.itemState & ODS_SELECTED) != 0;
    wchar_t text[64] = L"";
    const LRESULT length =
        SendMessageW(item.hwndItem, isCombo ? CB_GETLBTEXT : LB_GETTEXT, item.itemID, reinterpret_cast<LPARAM>(text));
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    SetBkColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    ExtTextOutW(item.hDC, item.rcItem.left + 3, item.rcItem.top + 1, ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, text,
                static_cast<UINT>(length > 0 ? length : 0), nullptr);
    return TRUE;
}

template <class Kind>
Stock MakeStock(HWND parent, DWORD more = 0) {
    const HWND window = MakeBareWindow(parent, Kind::kSize);
    const HWND inner = CreateWindowExW(0, Kind::kClass, nullptr, WS_CHILD | WS_VISIBLE | Kind::kStyle | more, 0, 0,
                                       Kind::kInner.cx, Kind::kInner.cy, window, nullptr, nullptr, nullptr);
    SendMessageW(inner, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    return {window, inner};
}
template <class Kind>
void MakeControl(typename Kind::Control& control, HWND parent) {
    Require(control.Create(parent, 0, 0, Kind::kSize.cx, Kind::kSize.cy, true, true) != nullptr, "no window");
}

std::vector<std::wstring> Texts(int count) {
    std::vector<std::wstring> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        texts.push_back(std::to_wstring(10 * i) + L" ms");
    return texts;
}
template <class Kind>
void Fill(HWND inner, const std::vector<std::wstring>& texts) {
    SendMessageW(inner, WM_SETREDRAW, FALSE, 0);
    for (const std::wstring& text : texts)
        SendMessageW(inner, Kind::kInsert, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(inner, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(inner, nullptr, TRUE);
}
template <class Kind>
void Fill(typename Kind::Control& control, const std::vector<std::wstring>& texts) {
    std::vector<const wchar_t*> values;
    values.reserve(texts.size());
    for (const std::wstring& text : texts)
        values.push_back(text.c_str());
    control.InsertValues(values.data(), static_cast<int>(values.size()), -1);
}

template <class Kind>
Ratio Create() {
    const Frame frame;
    return Measure(
        [&] {
            typename Kind::Control control;
            MakeControl<Kind>(control, frame);
        },
        [&] { DestroyWindow(MakeStock<Kind>(frame).window); });
}

template <class Kind>
Ratio Select() {
    const Frame frame, other;
    typename Kind::Control control;
    MakeControl<Kind>(control, frame);
    Fill<Kind>(control, Texts(kValues));
    const HWND inner = GetWindow(control, GW_CHILD);
    const bool isCombo = Kind::kSelect == CB_SETCURSEL;
    const Stock stock = MakeStock<Kind>(
        other, DWORD{isCombo ? CBS_OWNERDRAWFIXED | CBS_HASSTRINGS : LBS_OWNERDRAWFIXED | LBS_HASSTRINGS});
    s_bare = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(stock.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DrawByHand)));
    Fill<Kind>(stock.inner, Texts(kValues));
    int i = 0;
    return Measure([&] { control.SetSelection(++i % kValues), UpdateWindow(inner); },
                   [&] {
                       SendMessageW(stock.inner, Kind::kSelect, static_cast<WPARAM>(++i % kValues), 0);
                       UpdateWindow(stock.inner);
                   });
}

template <class Kind>
Ratio FillMany() {
    const Frame frame;
    const auto texts = Texts(kMany);
    typename Kind::Control control;
    MakeControl<Kind>(control, frame);
    const Stock stock = MakeStock<Kind>(frame);
    const UINT clear = Kind::kInsert == CB_INSERTSTRING ? CB_RESETCONTENT : LB_RESETCONTENT;
    return Measure([&] { Fill<Kind>(control, texts), control.RemoveAllValues(); },
                   [&] { Fill<Kind>(stock.inner, texts), SendMessageW(stock.inner, clear, 0, 0); });
}

// clang-format off
const Rows s_rows{{
    {"combo box, create and destroy", "the same windows made directly", 1.08, Create<Combo>},
    {"combo box, selection changed", "the platform's, drawn by hand: CB_SETCURSEL and update", 1.1, Select<Combo>},
    {"combo box, 10,000 values in and out", "the platform's, redraw off", 3.5, FillMany<Combo>},
    {"list box, create and destroy", "the same windows made directly", 1.08, Create<List>},
    {"list box, selection changed", "the platform's, drawn by hand: LB_SETCURSEL and update", 1.1, Select<List>},
    {"list box, 10,000 values in and out", "the platform's, redraw off", 3.5, FillMany<List>},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
