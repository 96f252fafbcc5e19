// The radio group against the same buttons made by hand.
#include <windows.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_radio.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr int kCount = 3;
constexpr SIZE kSize{120, 80};

HWND AddButton(HWND parent, const wchar_t* windowClass, int index, DWORD style) {
    const HWND button = CreateWindowExW(0, windowClass, L"1 x 1", WS_CHILD | WS_VISIBLE | style, 5, 25 * index, 100, 20,
                                        parent, nullptr, nullptr, nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    return button;
}

// The controls of a dialog that become the group.
HWND AddSources(HWND parent) {
    HWND first = nullptr;
    for (int i = kCount - 1; i >= 0; --i) {
        first = AddButton(parent, L"STATIC", i, 0);
        SetWindowPos(first, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    }
    return first;
}

// Both sides make the dialog's controls and destroy them; the group does so while it is made.
Ratio CreateGroup() {
    const Frame frame;
    const auto byHand = [&] {
        const HWND first = AddSources(frame), window = MakeBareWindow(frame, kSize);
        HWND next = nullptr;
        for (HWND source = first; source && source != window; source = next) {
            next = GetWindow(source, GW_HWNDNEXT);
            AddButton(window, L"BUTTON", 0, BS_AUTORADIOBUTTON);
            DestroyWindow(source);
        }
        DestroyWindow(window);
    };
    const auto group = [&] {
        CKxDevUI_Radio made;
        Require(made.Create(AddSources(frame), kCount, nullptr) != nullptr, "there is no group");
        made.Destroy();
        Require(GetWindow(frame, GW_CHILD) == nullptr, "a window is left");
    };
    return Measure(group, byHand);
}

Ratio RepaintGroup() {
    const Frame frame;
    const BareWindow bare(frame, kSize);
    for (int i = 0; i < kCount; ++i)
        AddButton(bare, L"BUTTON", i, BS_AUTORADIOBUTTON);
    CKxDevUI_Radio group;
    Require(group.Create(AddSources(frame), kCount, nullptr) != nullptr, "there is no group");
    return Measure([&] { Repaint(group); }, [&] { Repaint(bare); });
}

// clang-format off
const Rows s_rows{{
    {"radio group of 3, full repaint", "the same buttons in a bare window", 1.25, RepaintGroup},
    {"radio group of 3, create and destroy", "the same windows made directly", 1.3, CreateGroup},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
