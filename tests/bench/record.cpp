#include <bench/record.h>

#include <utility>

namespace kx::test {
namespace {

// clang-format off
constexpr struct { UINT message; const char* name; } names[] = {
    {WM_SIZE, "WM_SIZE"},                 {WM_SETFOCUS, "WM_SETFOCUS"},         {WM_KILLFOCUS, "WM_KILLFOCUS"},
    {WM_ENABLE, "WM_ENABLE"},             {WM_PAINT, "WM_PAINT"},               {WM_CLOSE, "WM_CLOSE"},
    {WM_ERASEBKGND, "WM_ERASEBKGND"},     {WM_PRINTCLIENT, "WM_PRINTCLIENT"},   {WM_SYSCOLORCHANGE, "WM_SYSCOLORCHANGE"},
    {WM_DRAWITEM, "WM_DRAWITEM"},         {WM_MEASUREITEM, "WM_MEASUREITEM"},   {WM_NOTIFY, "WM_NOTIFY"},
    {WM_CONTEXTMENU, "WM_CONTEXTMENU"},   {WM_KEYDOWN, "WM_KEYDOWN"},           {WM_KEYUP, "WM_KEYUP"},
    {WM_CHAR, "WM_CHAR"},                 {WM_COMMAND, "WM_COMMAND"},           {WM_TIMER, "WM_TIMER"},
    {WM_HSCROLL, "WM_HSCROLL"},           {WM_VSCROLL, "WM_VSCROLL"},           {WM_CTLCOLOREDIT, "WM_CTLCOLOREDIT"},
    {WM_CTLCOLORBTN, "WM_CTLCOLORBTN"},   {WM_CTLCOLORSTATIC, "WM_CTLCOLORSTATIC"}, {WM_MOUSEMOVE, "WM_MOUSEMOVE"},
    {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"},   {WM_LBUTTONUP, "WM_LBUTTONUP"},       {WM_LBUTTONDBLCLK, "WM_LBUTTONDBLCLK"},
    {WM_MOUSEWHEEL, "WM_MOUSEWHEEL"},     {WM_MOUSELEAVE, "WM_MOUSELEAVE"},     {WM_CAPTURECHANGED, "WM_CAPTURECHANGED"},
};
// clang-format on

template <class T>
std::string Shown(const std::optional<T>& value, bool hex = true) {
    std::ostringstream out;
    if (hex) out << "0x" << std::hex << std::uppercase;
    if (value) out << *value;
    return value ? out.str() : "*";
}

std::string PlainText(UINT message, std::optional<WPARAM> wParam, std::optional<LPARAM> lParam) {
    return NameOf(message) + " wParam=" + Shown(wParam) + " lParam=" + Shown(lParam);
}

// Code and id of WM_COMMAND, code and position of WM_HSCROLL: two halves, each perhaps a wildcard, and the window.
std::string HalvesText(UINT message, std::optional<int> low, std::optional<int> high, std::optional<LPARAM> from) {
    return NameOf(message) + " " + Shown(low, false) + ", " + Shown(high, false) + " from=" + Shown(from);
}

Expected Halves(UINT message, std::optional<int> low, std::optional<int> high, std::optional<HWND> window) {
    const auto from = window ? std::optional(reinterpret_cast<LPARAM>(*window)) : Any;
    return {HalvesText(message, low, high, from), [=](const Entry& entry) {
                return entry.message == message && (!low || LOWORD(entry.wParam) == static_cast<WORD>(*low)) &&
                       (!high || HIWORD(entry.wParam) == static_cast<WORD>(*high)) && (!from || entry.lParam == *from);
            }};
}

using ExpectedAt = std::vector<Expected>::const_iterator;
using EntryAt = std::vector<Entry>::const_iterator;

bool Fits(ExpectedAt expected, ExpectedAt lastExpected, EntryAt actual, EntryAt last) {
    if (expected == lastExpected) return actual == last;
    if (actual != last && expected->Fits(*actual) && Fits(expected + 1, lastExpected, actual + 1, last)) return true;
    return expected->IsOptional() && Fits(expected + 1, lastExpected, actual, last);
}

}  // namespace

std::string NameOf(UINT message) {
    for (const auto& known : names)
        if (known.message == message) return known.name;
    return Shown(std::optional(message));
}

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

Entry MakeEntry(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool halves = message == WM_COMMAND || message == WM_HSCROLL || message == WM_VSCROLL;
    return {message, wParam, lParam,
            halves ? HalvesText(message, LOWORD(wParam), HIWORD(wParam), lParam) : PlainText(message, wParam, lParam)};
}

Expected Expected::Optional() const {
    Expected copy = *this;
    copy.optional_ = true;
    copy.text_ += " (optional)";
    return copy;
}

Expected Msg(UINT message, std::optional<WPARAM> wParam, std::optional<LPARAM> lParam) {
    return {PlainText(message, wParam, lParam), [=](const Entry& entry) {
                return entry.message == message && (!wParam || entry.wParam == *wParam) &&
                       (!lParam || entry.lParam == *lParam);
            }};
}

Expected Command(int id, std::optional<int> code, std::optional<HWND> from) {
    return Halves(WM_COMMAND, id, code, from);
}

Expected HScroll(int code, std::optional<int> position, std::optional<HWND> from) {
    return Halves(WM_HSCROLL, code, position, from);
}

Expected Text(std::string text) {
    auto test = [text](const Entry& entry) { return entry.message == 0 && entry.text == text; };
    return {std::move(text), std::move(test)};
}

testing::AssertionResult Compare(const std::vector<Expected>& expected, const std::vector<Entry>& actual) {
    if (Fits(expected.begin(), expected.end(), actual.begin(), actual.end()))
        return testing::AssertionSuccess() << "the sequence came as expected";

    testing::AssertionResult result = testing::AssertionFailure() << "the sequence differs, expected | actual:";
    const auto fits = [&](size_t e, size_t a) {
        return e < expected.size() && a < actual.size() && expected[e].Fits(actual[a]);
    };
    for (size_t e = 0, a = 0; e < expected.size() || a < actual.size();) {
        const bool same = fits(e, a);
        const bool missing = !same && (a == actual.size() || fits(e + 1, a));
        const bool extra = !same && !missing && (e == expected.size() || fits(e, a + 1));
        const bool fine = same || (missing && expected[e].IsOptional());
        result << "\n  " << (fine ? "         " : missing ? "MISSING  " : extra ? "EXTRA    " : "DIFFERENT");
        result << ' ' << (extra ? "" : expected[e++].Text()) << " | " << (missing ? "" : actual[a++].text);
    }
    return result;
}

void Recorder::Text(std::string text) { Add({0, 0, 0, std::move(text)}); }

std::string Recorder::Take() {
    std::string row;
    for (const Entry& entry : std::exchange(entries_, {}))
        row += (row.empty() ? "" : " ") + entry.text;
    return row;
}

testing::AssertionResult Recorder::Matches(const std::vector<Expected>& expected) {
    std::vector<Entry> actual;
    actual.swap(entries_);
    return Compare(expected, actual);
}

}  // namespace kx::test
