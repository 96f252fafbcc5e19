// A host in small: a panel of its own in a window of its own, with a button that is pressed. With the path of the
// smallest example it uses that from outside instead.
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxsystem/kx_string.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr int kButton = 17;

class Panel : public CKxDevUI_Container {
public:
    int commands = 0;

protected:
    LRESULT OnCommand(UINT, WPARAM wParam, LPARAM) override {
        if (LOWORD(wParam) == kButton && HIWORD(wParam) == BN_CLICKED) ++commands;
        return 1;
    }
};

const char* Check() {
    const HWND frame = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr,
                                       GetModuleHandleW(nullptr), nullptr);
    if (!frame) return "there is no window";
    Panel panel;
    panel.SetId(3);
    if (!panel.Create(frame, 10, 10, 200, 100, true, true)) return "the panel was not made";
    if (GetDlgItem(frame, 3) != panel) return "the panel is not in the window";
    const HWND button = CreateWindowExW(0, L"BUTTON", L"Go", WS_CHILD | WS_VISIBLE, 5, 5, 60, 24, frame,
                                        reinterpret_cast<HMENU>(INT_PTR{kButton}), nullptr, nullptr);
    panel.InsertWindow(button);
    if (panel.GetWindow(kButton) != button) return "the panel has no button";
    SendMessageW(button, BM_CLICK, 0, 0);
    if (panel.commands != 1) return "the click did not reach OnCommand once";

    if (!CKxGUILayoutManager::SetGuiZoom(2.0)) return "the zoom was refused";
    RECT size{};
    GetClientRect(button, &size);
    if (size.right != 120 || size.bottom != 48) return "the button was not zoomed";
    panel.SetTitle(L"title");
    DestroyWindow(frame);
    return IsWindow(button) || panel != HWND{} ? "the window outlived its parent" : nullptr;
}

template <class Holds>
bool Until(Holds holds) {
    for (int i = 0; i < 200; ++i, Sleep(50))
        if (holds()) return true;
    return false;
}

const char* CheckExample(const char* path) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::string command = path;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return "the example does not start";
    HWND panel = nullptr;
    const auto find = [&] {
        panel = FindWindowExW(FindWindowW(L"Minimal", nullptr), nullptr, L"#32770", nullptr);
        return panel && IsWindowVisible(panel);
    };
    if (!Until(find)) return "the example shows no panel";
    const auto shows = [&](const wchar_t* wanted) {
        return Until([&] {
            wchar_t text[40] = L"";
            GetDlgItemTextW(panel, 102, text, 40);
            return std::wcscmp(text, wanted) == 0;
        });
    };
    if (!shows(L"off")) return "the lamp is not off at first";
    SendDlgItemMessageW(panel, 101, BM_CLICK, 0, 0);
    if (!shows(L"40 %")) return "the lamp cannot be switched on";
    SendDlgItemMessageW(panel, 103, BM_CLICK, 0, 0);
    if (!shows(L"100 %")) return "the lamp does not become brighter";
    PostMessageW(GetAncestor(panel, GA_ROOT), WM_CLOSE, 0, 0);
    DWORD code = 1;
    if (WaitForSingleObject(process.hProcess, 10000) != WAIT_OBJECT_0) return "the example does not end";
    return GetExitCodeProcess(process.hProcess, &code) && code == 0 ? nullptr : "the example ends with a fault";
}

}  // namespace

int main(int count, char** arguments) {
    const char* fault = count > 1 ? CheckExample(arguments[1]) : Check();
    std::printf("consumer: %s\n", fault ? fault : "well");
    return fault ? 1 : 0;
}
