// The image button and the check box against the platform's buttons in windows made by hand.
#include <windows.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_imagebutton.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

void Open(CKxDevUI_CheckBox& box, HWND parent) {
    box.SetTitle(L"Live image");
    OpenInItsSize(box, parent);
}

void Open(CKxDevUI_ImageButton& button, HWND parent) {
    button.SetImages({.normal = L"LIGHTPATH"});
    button.SetToggle(true);
    OpenInItsSize(button, parent);
}

template <class Control>
Ratio Create() {
    return MeasureCreation<Control>(Open);
}

// A state set, and painted, on the control and on a button of the platform's of that style and size.
template <class Control, DWORD style>
Ratio ChangeState() {
    const Frame frame;
    Control control;
    Open(control, frame);
    SIZE size{};
    control.GetWindowSize(&size);
    const BareWindow bare(frame, size);
    const HWND stock = CreateWindowExW(0, L"BUTTON", L"Live image", WS_CHILD | WS_VISIBLE | style, 0, 0, size.cx,
                                       size.cy, bare, nullptr, nullptr, nullptr);
    SendMessageW(stock, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    const HWND button = control.GetButtonHandle();
    const auto set = [&] {
        control.SetState(!control.GetState());
        UpdateWindow(button);
    };
    WPARAM state = BST_UNCHECKED;
    return Measure(set, [&] {
        state = state == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
        SendMessageW(stock, BM_SETCHECK, state, 0);
        UpdateWindow(stock);
    });
}

// clang-format off
const Rows s_rows{{
    {"check box, create and destroy", "the same windows made directly", 1.08, Create<CKxDevUI_CheckBox>},
    {"check box, a state", "that of the platform's", 1.1, ChangeState<CKxDevUI_CheckBox, BS_CHECKBOX>},
    {"image button, create and destroy", "the same windows made directly", 1.08, Create<CKxDevUI_ImageButton>},
    {"image button, a state", "that of a check box like a push button", 1.1,
     ChangeState<CKxDevUI_ImageButton, BS_CHECKBOX | BS_PUSHLIKE>},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
