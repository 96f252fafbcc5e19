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
template <class Kind>
Stock MakeStock(HWND parent) {
    const HWND window = MakeBareWindow(parent, Kind::kSize);
    const HWND inner = CreateWindowExW(0, Kind::kClass, nullptr, WS_CHILD | WS_VISIBLE | Kind::kStyle, 0, 0,
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
    const Stock stock = MakeStock<Kind>(other);
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
    {"combo box, selection changed", "CB_SETCURSEL of the platform's and update", 1.1, Select<Combo>},
    {"combo box, 10,000 values in and out", "the platform's, redraw off", 3.5, FillMany<Combo>},
    {"list box, create and destroy", "the same windows made directly", 1.08, Create<List>},
    {"list box, selection changed", "LB_SETCURSEL of the platform's and update", 1.1, Select<List>},
    {"list box, 10,000 values in and out", "the platform's, redraw off", 3.5, FillMany<List>},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
