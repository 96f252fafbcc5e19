// Uses the smallest example, whose path it is given, from outside.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <utility>

namespace {

template <class Holds>
bool Until(Holds holds) {
    for (int i = 0; i < 200; ++i, Sleep(50))
        if (holds()) return true;
    return false;
}

const char* Check(char* path) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, path, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return "the example does not start";
    const auto panel = [] { return FindWindowExW(FindWindowW(L"Minimal", nullptr), nullptr, L"#32770", nullptr); };
    if (!Until([&] { return IsWindowVisible(panel()) != FALSE; })) return "the example shows no panel";
    // Nothing is pressed, then the lamp's switch and the button that makes it brightest.
    for (const auto& [button, shown] : {std::pair{0, L"off"}, {101, L"40 %"}, {103, L"100 %"}}) {
        SendDlgItemMessageW(panel(), button, BM_CLICK, 0, 0);
        const auto shows = [&, wanted = shown] {
            wchar_t text[40] = L"";
            GetDlgItemTextW(panel(), 102, text, 40);
            return std::wcscmp(text, wanted) == 0;
        };
        if (!Until(shows)) return "the lamp does not show what it does";
    }
    PostMessageW(FindWindowW(L"Minimal", nullptr), WM_CLOSE, 0, 0);
    DWORD code = 1;
    if (WaitForSingleObject(process.hProcess, 10000) != WAIT_OBJECT_0) return "the example does not end";
    return GetExitCodeProcess(process.hProcess, &code) && code == 0 ? nullptr : "the example ends with a fault";
}

}  // namespace

int main(int count, char** arguments) {
    const char* fault = count > 1 ? Check(arguments[1]) : "it is given no example";
    std::printf("consumer: %s\n", fault ? fault : "well");
    return fault ? 1 : 0;
}
