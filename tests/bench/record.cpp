#include <bench/record.h>

#include <algorithm>
#include <array>
#include <climits>

namespace kx::test {
namespace {

struct MessageName {
    UINT message;
    const char* name;
};

constexpr MessageName messageNames[] = {
    {WM_MOVE, "WM_MOVE"},
    {WM_SIZE, "WM_SIZE"},
    {WM_SETFOCUS, "WM_SETFOCUS"},
    {WM_KILLFOCUS, "WM_KILLFOCUS"},
    {WM_ENABLE, "WM_ENABLE"},
    {WM_PAINT, "WM_PAINT"},
    {WM_CLOSE, "WM_CLOSE"},
    {WM_ERASEBKGND, "WM_ERASEBKGND"},
    {WM_SYSCOLORCHANGE, "WM_SYSCOLORCHANGE"},
    {WM_DRAWITEM, "WM_DRAWITEM"},
    {WM_MEASUREITEM, "WM_MEASUREITEM"},
    {WM_NOTIFY, "WM_NOTIFY"},
    {WM_CONTEXTMENU, "WM_CONTEXTMENU"},
    {WM_KEYDOWN, "WM_KEYDOWN"},
    {WM_KEYUP, "WM_KEYUP"},
    {WM_CHAR, "WM_CHAR"},
    {WM_COMMAND, "WM_COMMAND"},
    {WM_TIMER, "WM_TIMER"},
    {WM_HSCROLL, "WM_HSCROLL"},
    {WM_VSCROLL, "WM_VSCROLL"},
    {WM_CTLCOLOREDIT, "WM_CTLCOLOREDIT"},
    {WM_CTLCOLORBTN, "WM_CTLCOLORBTN"},
    {WM_CTLCOLORSTATIC, "WM_CTLCOLORSTATIC"},
    {WM_MOUSEMOVE, "WM_MOUSEMOVE"},
    {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"},
    {WM_LBUTTONUP, "WM_LBUTTONUP"},
    {WM_LBUTTONDBLCLK, "WM_LBUTTONDBLCLK"},
    {WM_RBUTTONDOWN, "WM_RBUTTONDOWN"},
    {WM_RBUTTONUP, "WM_RBUTTONUP"},
    {WM_MOUSEWHEEL, "WM_MOUSEWHEEL"},
    {WM_CAPTURECHANGED, "WM_CAPTURECHANGED"},
    {WM_PARENTNOTIFY, "WM_PARENTNOTIFY"},
    {WM_MOUSELEAVE, "WM_MOUSELEAVE"},
};

std::string Hex(unsigned long long value) {
    std::ostringstream out;
    out << "0x" << std::hex << std::uppercase << value;
    return out.str();
}

std::string NameOf(UINT message) {
    for (const MessageName& known : messageNames)
        if (known.message == message) return known.name;
    return Hex(message);
}

template <class T>
std::string Shown(const std::optional<T>& value) {
    return value ? std::to_string(*value) : "*";
}

template <class T>
std::string ShownHex(const std::optional<T>& value) {
    return value ? Hex(static_cast<unsigned long long>(*value)) : "*";
}

std::optional<LPARAM> AsParam(const std::optional<HWND>& window) {
    if (!window) return Any;
    return reinterpret_cast<LPARAM>(*window);
}

// Code and id of WM_COMMAND, code and position of WM_HSCROLL: two halves, each perhaps a wildcard, and the window.
std::string HalvesText(UINT message, const char* first, std::optional<int> firstValue, const char* second,
                       std::optional<int> secondValue, std::optional<LPARAM> from) {
    return NameOf(message) + " " + first + "=" + Shown(firstValue) + " " + second + "=" + Shown(secondValue) +
           " from=" + ShownHex(from);
}

Expected Halves(UINT message, std::string text, std::optional<int> low, std::optional<int> high,
                std::optional<LPARAM> from) {
    return {std::move(text), [=](const Entry& entry) {
                return entry.message == message && (!low || LOWORD(entry.wParam) == static_cast<WORD>(*low)) &&
                       (!high || HIWORD(entry.wParam) == static_cast<WORD>(*high)) && (!from || entry.lParam == *from);
            }};
}

std::string NotifyText(std::optional<int> id, UINT code) {
    return "WM_NOTIFY id=" + Shown(id) + " code=" + std::to_string(static_cast<int>(code));
}

std::string PlainText(UINT message, std::optional<WPARAM> wParam, std::optional<LPARAM> lParam) {
    return NameOf(message) + " wParam=" + ShownHex(wParam) + " lParam=" + ShownHex(lParam);
}

Expected Scroll(UINT message, int code, std::optional<int> position, std::optional<HWND> from) {
    const auto param = AsParam(from);
    return Halves(message, HalvesText(message, "code", code, "pos", position, param), code, position, param);
}

// How expected and actual entries are laid beside each other.
enum class Step { Same, Different, Missing, Extra, Skipped };

struct Row {
    Step step;
    std::string expected;
    std::string actual;
};

// The cheapest alignment. Two entries that differ cost less beside each other than as one missing and one extra.
class Alignment {
public:
    Alignment(const std::vector<Expected>& expected, const std::vector<Entry>& actual)
        : expected_(expected), actual_(actual), width_(actual.size() + 1), cells_((expected.size() + 1) * width_) {
        for (size_t e = expected_.size() + 1; e-- > 0;)
            for (size_t a = width_; a-- > 0;)
                if (e < expected_.size() || a < actual_.size()) cells_[e * width_ + a] = Best(e, a);
    }

    bool Matches() const { return cells_.front().cost == 0; }

    std::vector<Row> Rows() const {
        std::vector<Row> rows;
        size_t e = 0, a = 0;
        while (e < expected_.size() || a < actual_.size()) {
            const Step step = cells_[e * width_ + a].step;
            Row& row = rows.emplace_back(Row{step, {}, {}});
            if (step != Step::Extra) row.expected = expected_[e++].Text();
            if (step != Step::Missing && step != Step::Skipped) row.actual = actual_[a++].text;
        }
        return rows;
    }

private:
    // The cost of what is left from here on, and the first step of it.
    struct Cell {
        int cost = 0;
        Step step = Step::Same;
    };

    Cell Best(size_t e, size_t a) const {
        Cell best{INT_MAX, Step::Same};
        const auto offer = [&](size_t nextE, size_t nextA, int cost, Step step) {
            const int total = cells_[nextE * width_ + nextA].cost + cost;
            if (total < best.cost) best = {total, step};
        };
        const bool anyExpected = e < expected_.size(), anyActual = a < actual_.size();
        if (anyExpected && anyActual) {
            const bool same = expected_[e].Fits(actual_[a]);
            offer(e + 1, a + 1, same ? 0 : 3, same ? Step::Same : Step::Different);
        }
        if (anyExpected) {
            const bool skip = expected_[e].IsOptional();
            offer(e + 1, a, skip ? 0 : 2, skip ? Step::Skipped : Step::Missing);
        }
        if (anyActual) offer(e, a + 1, 2, Step::Extra);
        return best;
    }

    const std::vector<Expected>& expected_;
    const std::vector<Entry>& actual_;
    size_t width_;
    std::vector<Cell> cells_;
};

}  // namespace

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

Entry MakeEntry(UINT message, WPARAM wParam, LPARAM lParam) {
    Entry entry{message, wParam, lParam, {}, {}};
    switch (message) {
    case WM_COMMAND: entry.text = HalvesText(message, "id", LOWORD(wParam), "code", HIWORD(wParam), lParam); break;
    case WM_HSCROLL:
    case WM_VSCROLL: entry.text = HalvesText(message, "code", LOWORD(wParam), "pos", HIWORD(wParam), lParam); break;
    case WM_NOTIFY:
        if (lParam) entry.header = *reinterpret_cast<const NMHDR*>(lParam);
        entry.text = NotifyText(static_cast<int>(entry.header.idFrom), entry.header.code);
        break;
    case WM_DRAWITEM: entry.text = DrawItem(static_cast<int>(wParam)).Text(); break;
    default: entry.text = PlainText(message, wParam, lParam);
    }
    return entry;
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
    const auto param = AsParam(from);
    return Halves(WM_COMMAND, HalvesText(WM_COMMAND, "id", id, "code", code, param), id, code, param);
}

Expected Notify(std::optional<int> id, UINT code) {
    return {NotifyText(id, code), [=](const Entry& entry) {
                return entry.message == WM_NOTIFY && entry.header.code == code &&
                       (!id || static_cast<int>(entry.header.idFrom) == *id);
            }};
}

Expected HScroll(int code, std::optional<int> position, std::optional<HWND> from) {
    return Scroll(WM_HSCROLL, code, position, from);
}

Expected VScroll(int code, std::optional<int> position, std::optional<HWND> from) {
    return Scroll(WM_VSCROLL, code, position, from);
}

Expected DrawItem(int id) {
    return {"WM_DRAWITEM id=" + std::to_string(id), [=](const Entry& entry) {
                return entry.message == WM_DRAWITEM && entry.wParam == static_cast<WPARAM>(id);
            }};
}

Expected Text(std::string text) {
    auto test = [text](const Entry& entry) { return entry.message == 0 && entry.text == text; };
    return {std::move(text), std::move(test)};
}

testing::AssertionResult Compare(const std::vector<Expected>& expected, const std::vector<Entry>& actual) {
    const Alignment alignment(expected, actual);
    if (alignment.Matches()) return testing::AssertionSuccess() << "the sequence came as expected";

    const std::vector<Row> rows = alignment.Rows();
    size_t width = 8;
    for (const Row& row : rows)
        width = std::max(width, row.expected.size());
    std::ostringstream out;
    const auto line = [&](std::string_view mark, const std::string& left, const std::string& right) {
        out << "\n  " << mark << ' ' << left << std::string(width - left.size(), ' ') << " | " << right;
    };
    line("         ", "expected", "actual");
    constexpr std::array<std::string_view, 5> marks{"         ", "DIFFERENT", "MISSING  ", "EXTRA    ", "         "};
    for (const Row& row : rows)
        line(marks[static_cast<size_t>(row.step)], row.expected, row.actual);
    return testing::AssertionFailure() << "the sequence differs:" << out.str();
}

void Recorder::Text(std::string text) {
    Entry entry;
    entry.text = std::move(text);
    Add(std::move(entry));
}

testing::AssertionResult Recorder::Matches(const std::vector<Expected>& expected) {
    std::vector<Entry> actual;
    actual.swap(entries_);
    return Compare(expected, actual);
}

}  // namespace kx::test
