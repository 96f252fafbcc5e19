// A host in small: a panel of its own in a window of its own, with a button that is pressed.
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxsystem/kx_string.h>

#include <cstdio>

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

}  // namespace

int main() {
    const char* fault = Check();
    std::printf("consumer: %s\n", fault ? fault : "well");
    return fault ? 1 : 0;
}
