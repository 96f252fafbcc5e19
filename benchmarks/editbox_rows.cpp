// The edit boxes against the same windows made by hand.
#include <windows.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr SIZE kSize{170, 22};
constexpr int kLabel = 70;

HWND AddPart(HWND parent, const wchar_t* windowClass, DWORD style, int x, int cx) {
    const HWND part = CreateWindowExW(0, windowClass, L"1", WS_CHILD | WS_VISIBLE | style, x, 2, cx, kSize.cy - 4,
                                      parent, nullptr, nullptr, nullptr);
    SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    return part;
}

void AddParts(HWND window) {
    AddPart(window, L"STATIC", SS_CENTERIMAGE, 0, kLabel);
    AddPart(window, L"EDIT", ES_AUTOHSCROLL, kLabel, kSize.cx - kLabel - 20);
}

template <class Box>
void Make(Box& box, HWND parent) {
    box.SetSize(kLabel, kSize.cx - kLabel, kSize.cy);
    Require(box.Create(parent, 0, 0, -1, -1, true, true) != nullptr, "there is no edit box");
}

Ratio RepaintBox() {
    const Frame frame;
    const BareWindow bare(frame, kSize);
    AddParts(bare);
    CKxDevUI_EditBox box;
    Make(box, frame);
    box.SetNumber(1);
    return Measure([&] { Repaint(box); }, [&] { Repaint(bare); });
}

// clang-format off
const Rows s_rows{{
    {"edit box, full repaint", "label and edit in a bare window", 1.25, RepaintBox},
    CreationRow<CKxDevUI_EditBox, Make>("edit box"),
    CreationRow<CKxDevUI_EditBoxSpin, Make>("edit box with arrows"),
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
