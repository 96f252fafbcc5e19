#include <bench/record.h>

namespace kx::test {

std::string NameOf(UINT message) {
    if (message == WM_COMMAND) return "WM_COMMAND";
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
    entries_.push_back(std::move(text));
}

std::string Recorder::Take() {
    std::string row;
    for (const std::string& entry : std::exchange(entries_, {}))
        row += (row.empty() ? "" : " ") + entry;
    return row;
}

}  // namespace kx::test
