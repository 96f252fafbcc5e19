#include <bench/record.h>

namespace kx::test {

std::string NameOf(UINT message) {
    // clang-format off
    static constexpr struct { UINT message; const char* name; } names[] = {
        {WM_COMMAND, "WM_COMMAND"}, {WM_NOTIFY, "WM_NOTIFY"}, {WM_HSCROLL, "WM_HSCROLL"}, {WM_VSCROLL, "WM_VSCROLL"},
        {WM_DRAWITEM, "WM_DRAWITEM"}, {WM_SETTEXT, "WM_SETTEXT"}, {WM_SIZE, "WM_SIZE"}, {WM_SETFOCUS, "WM_SETFOCUS"},
        {WM_MOUSEMOVE, "WM_MOUSEMOVE"}, {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"}, {WM_LBUTTONUP, "WM_LBUTTONUP"},
        {WM_MOUSEWHEEL, "WM_MOUSEWHEEL"}, {WM_PAINT, "WM_PAINT"}, {WM_SYSCOLORCHANGE, "WM_SYSCOLORCHANGE"},
    };
    // clang-format on
    for (const auto& known : names)
        if (known.message == message) return known.name;
    std::ostringstream out;
    out << "0x" << std::hex << std::uppercase << message;
    return out.str();
}

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

void Recorder::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto from = reinterpret_cast<HWND>(lParam);
    std::string text = NameOf(message);
    if (message == WM_COMMAND || message == WM_HSCROLL || message == WM_VSCROLL)
        text = std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)) +
               (lParam > 0xFFFF && IsWindow(from) ? "#" + std::to_string(GetDlgCtrlID(from))
                                                  : "=" + std::to_string(lParam));
    entries_.push_back({message, wParam, lParam, std::move(text)});
}

std::string Recorder::Take() {
    std::string row;
    for (const Entry& entry : std::exchange(entries_, {}))
        row += (row.empty() ? "" : " ") + entry.text;
    return row;
}

}  // namespace kx::test
