#include "kx_stockwindows.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>
#include <utility>
#include <vector>

#include <commctrl.h>

namespace kx {

namespace {

struct ClassName {
    explicit ClassName(HWND window) noexcept { GetClassNameW(window, text, static_cast<int>(std::size(text))); }
    bool Is(const wchar_t* name) const noexcept { return _wcsicmp(text, name) == 0; }
    wchar_t text[64] = L"";
};

std::vector<std::wstring>& OwnLayouts() {
    static auto* classes = new std::vector<std::wstring>;
    return *classes;
}

bool IsChildWindow(HWND window) noexcept { return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0; }

// A dialog's template has its client area's size, whether it is a child or not, and its frame does not grow.
bool IsSizedByClient(HWND window, WindowKind kind) noexcept {
    return kind == WindowKind::Dialog || !IsChildWindow(window);
}

long TextHeight(HFONT font) noexcept {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return metrics.tmHeight;
}

bool IsComboBox(WindowKind kind) noexcept { return kind == WindowKind::ComboBox || kind == WindowKind::ComboBoxEx; }

bool HasDropDown(HWND window, WindowKind kind) noexcept {
    return IsComboBox(kind) && (GetWindowLongW(window, GWL_STYLE) & 3) != CBS_SIMPLE;
}

long ClosedHeight(HWND dropDown) noexcept {
    RECT rect{};
    GetWindowRect(dropDown, &rect);
    return rect.bottom - rect.top;
}

// The combo box in a combo box with images, which forgets to hand its height on; else the window itself.
HWND InnerBox(HWND window, WindowKind kind) noexcept {
    if (kind != WindowKind::ComboBoxEx) return window;
    return reinterpret_cast<HWND>(SendMessageW(window, CBEM_GETCOMBOCONTROL, 0, 0));
}

// ---- Inner measures: an edit's margins; the height of a combo box's field and of its rows; that of a list's --------

std::size_t CountInner(HWND window, WindowKind kind) noexcept {
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    switch (kind) {
    case WindowKind::Edit: return 2;
    // Rows of different heights are their owner's business.
    case WindowKind::ComboBox:
    case WindowKind::ComboBoxEx: return style & CBS_OWNERDRAWVARIABLE ? 1 : 2;
    case WindowKind::ListBox: return style & LBS_OWNERDRAWVARIABLE ? 0 : 1;
    default: return 0;
    }
}

long GetInner(HWND window, WindowKind kind, std::size_t index) noexcept {
    const auto ask = [window](UINT message, WPARAM wParam) { return SendMessageW(window, message, wParam, 0); };
    if (IsComboBox(kind)) return static_cast<long>(ask(CB_GETITEMHEIGHT, index == 0 ? WPARAM(-1) : 0));
    if (kind == WindowKind::ListBox) return static_cast<long>(ask(LB_GETITEMHEIGHT, 0));
    const LRESULT margins = ask(EM_GETMARGINS, 0);
    return index == 0 ? LOWORD(margins) : HIWORD(margins);
}

void SetInner(HWND window, WindowKind kind, std::size_t index, long value) noexcept {
    const auto tell = [window](UINT message, WPARAM wParam, LPARAM lParam) {
        SendMessageW(window, message, wParam, lParam);
    };
    if (IsComboBox(kind)) return tell(CB_SETITEMHEIGHT, index == 0 ? WPARAM(-1) : 0, value);
    if (kind == WindowKind::ListBox) return tell(LB_SETITEMHEIGHT, 0, value);
    tell(EM_SETMARGINS, index == 0 ? EC_LEFTMARGIN : EC_RIGHTMARGIN, MAKELPARAM(value, value));
}

void ZoomInner(HWND window, WindowKind kind, std::size_t index, double zoom, InnerMeasure& measure) noexcept {
    const long wanted = RoundAway(static_cast<double>(measure.unzoomed) * zoom);
    SetInner(window, kind, index, wanted);
    measure.placed = GetInner(window, kind, index);
    // Under Wine the field of a combo box gets two pixels more than it is given.
    if (measure.placed == wanted) return;
    SetInner(window, kind, index, 2 * wanted - measure.placed);
    measure.placed = GetInner(window, kind, index);
}

}  // namespace

long RoundAway(double value) noexcept {
    constexpr double limit = 1e9;
    return std::isnan(value) ? 0 : std::lround(std::clamp(value, -limit, limit));
}

WindowKind KindOf(HWND window) noexcept {
    static constexpr std::pair<const wchar_t*, WindowKind> kinds[] = {{L"#32770", WindowKind::Dialog},
                                                                      {WC_EDITW, WindowKind::Edit},
                                                                      {WC_LISTBOXW, WindowKind::ListBox},
                                                                      {WC_COMBOBOXW, WindowKind::ComboBox},
                                                                      {WC_COMBOBOXEXW, WindowKind::ComboBoxEx}};
    const ClassName name(window);
    for (const auto& [known, kind] : kinds)
        if (name.Is(known)) return kind;
    return WindowKind::Other;
}

bool LaysOutItsChildren(HWND window) noexcept {
    const ClassName name(window);
    for (const wchar_t* known : {WC_COMBOBOXW, WC_COMBOBOXEXW, WC_LISTVIEWW, WC_TREEVIEWW, REBARCLASSNAMEW,
                                 WC_IPADDRESSW, DATETIMEPICK_CLASSW, MONTHCAL_CLASSW, WC_PAGESCROLLERW})
        if (name.Is(known)) return true;
    return std::any_of(OwnLayouts().begin(), OwnLayouts().end(),
                       [&name](const std::wstring& known) { return name.Is(known.c_str()); });
}

bool IsPlacedByParent(HWND window, HWND parent) noexcept {
    if (LaysOutItsChildren(parent)) return true;
    // Pages of tabs are the host's, the arrows beside them are not.
    return ClassName(window).Is(UPDOWN_CLASSW) && ClassName(parent).Is(WC_TABCONTROLW);
}

void AddOwnLayout(const wchar_t* windowClass) {
    auto& known = OwnLayouts();
    if (std::find(known.begin(), known.end(), windowClass) == known.end()) known.emplace_back(windowClass);
}

Dims MeasureWindow(HWND window, WindowKind kind) noexcept {
    RECT rect{}, client{};
    const bool isChild = IsChildWindow(window), byClient = IsSizedByClient(window, kind);
    if (byClient) GetClientRect(window, &client);
    if (!isChild) return {0, 0, client.right, client.bottom};
    GetWindowRect(window, &rect);
    // Of a window beyond the ends of all coordinates one of its edges comes round.
    const auto length = [](long from, long to) {
        return static_cast<long>(static_cast<unsigned long>(to) - static_cast<unsigned long>(from));
    };
    Dims dims{0, 0, length(rect.left, rect.right), length(rect.top, rect.bottom)};
    if (byClient) {
        dims.width = client.right;
        dims.height = client.bottom;
    } else if (HasDropDown(window, kind)) {
        // Its own height is that of the closed box, and comes with the font. Wine answers 0 and tells the list's height
        // alone.
        RECT open{};
        const LRESULT isWhole =
            SendMessageW(InnerBox(window, kind), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
        dims.height = open.bottom - open.top - (isWhole ? dims.height : 0);
    }
    MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&rect), 2);
    dims.x = rect.left;
    dims.y = rect.top;
    return dims;
}

long WholeHeight(HWND window, WindowKind kind) noexcept {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top + (HasDropDown(window, kind) ? MeasureWindow(window, kind).height : 0);
}

Dims ZoomedDims(HWND window, const WindowDims::Entry& known, double zoom) noexcept {
    const auto zoomed = [zoom](long length) { return RoundAway(static_cast<double>(length) * zoom); };
    const Dims& unzoomed = known.unzoomed;
    Dims dims{zoomed(unzoomed.x), zoomed(unzoomed.y), zoomed(unzoomed.width), zoomed(unzoomed.height)};
    // The platform makes a list of what a box in the system's font leaves of the height, and rows are rounded up: in
    // proportion a list would show fewer rows than before, and than one made for the zoom.
    if (zoom > 1 && HasDropDown(window, known.kind)) {
        dims.height += RoundAway(3 * (1 - 1 / zoom) * static_cast<double>(ClosedHeight(window)));
    }
    return dims;
}

bool IsRagged(HWND window) noexcept {
    if (GetWindowLongW(window, GWL_STYLE) & (LBS_NOINTEGRALHEIGHT | LBS_OWNERDRAWVARIABLE)) return false;
    RECT client{};
    GetClientRect(window, &client);
    const long row = GetInner(window, WindowKind::ListBox, 0);
    return row > 0 && client.bottom % row != 0;
}

void SetDims(HWND window, const WindowDims::Entry& known, const Dims& target, UINT flags) noexcept {
    long width = target.width, height = target.height;
    if (IsSizedByClient(window, known.kind)) {
        RECT whole{}, client{};
        GetWindowRect(window, &whole);
        GetClientRect(window, &client);
        width += whole.right - whole.left - client.right;
        height += whole.bottom - whole.top - client.bottom;
    }
    const auto place = [&] {
        SetWindowPos(window, nullptr, target.x, target.y, width, height, flags | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    if (HasDropDown(window, known.kind)) {
        height += ClosedHeight(window);
        place();
        const HWND box = InnerBox(window, known.kind);
        if (box != window) {
            SetWindowPos(box, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        return;
    }
    if (!known.isRagged) return place();
    // The list box would cut its height to whole rows. Any height is one of rows that are a pixel high.
    const long row = GetInner(window, WindowKind::ListBox, 0);
    const LRESULT top = SendMessageW(window, LB_GETTOPINDEX, 0, 0);
    SetInner(window, WindowKind::ListBox, 0, 1);
    place();
    SetInner(window, WindowKind::ListBox, 0, row);
    SendMessageW(window, LB_SETTOPINDEX, static_cast<WPARAM>(top), 0);
}

void SetFontKeeping(HWND window, WindowKind kind, HFONT from, HFONT to, double fromZoom, double toZoom,
                    InnerMeasures& inner) noexcept {
    const std::size_t count = CountInner(window, kind);
    std::array<long, 2> before{};
    for (std::size_t i = 0; i < count; ++i)
        before[i] = GetInner(window, kind, i);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(to), FALSE);
    if (count == 0) return;
    // A height that is the font's and something constant is the platform's own choice, and so is the next one.
    const long growth = kind == WindowKind::Edit ? 0 : TextHeight(to) - TextHeight(from);
    for (std::size_t i = 0; i < count; ++i) {
        InnerMeasure& measure = inner[i];
        if (before[i] != measure.placed) {
            measure.unzoomed = RoundAway(static_cast<double>(before[i]) / fromZoom);
            measure.isFollowed = kind == WindowKind::Edit || GetInner(window, kind, i) - before[i] != growth;
        }
        if (measure.isFollowed)
            ZoomInner(window, kind, i, toZoom, measure);
        else
            measure.placed = GetInner(window, kind, i);
    }
}

}  // namespace kx
