// The Z drive: its windows, and a step of its live position.
#include <windows.h>

#include <kxdevui/zfocus/devgui_zdrive.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

struct Drive : CKxDevUI_ZDrive {
    Drive() { SetDrive({.minimum = 0, .maximum = 10000, .position = 4000, .target = 4000, .home = 4000}); }
};

// On its way, where every step is another number and sometimes another row of the gauge.
Ratio Step() {
    const Frame frame;
    Drive drive;
    OpenInItsSize(drive, frame);
    const HWND label = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_RIGHT, 300, 20, 260, 76, frame,
                                       nullptr, nullptr, nullptr);
    int steps = 0;
    const auto at = [&] { return 4000 + (steps = (steps + 7) % 1000) * 0.25; };
    const auto step = [&] {
        drive.SetPosition(at());
        UpdateWindow(drive);
    };
    const auto byHand = [&] {
        wchar_t text[40] = L"";
        swprintf(text, 40, L"%.2f", at());
        SetWindowTextW(label, text);
        UpdateWindow(label);
    };
    return Measure(step, byHand);
}

Row Creation() {
    Row row = CreationRow<Drive>("Z drive");
    row.limit = 1.08;
    return row;
}

const Rows s_rows{{Creation(), {"Z drive, a step of the live position", "a label with the number set anew", 2, Step}}};

}  // namespace
}  // namespace kx::bench
