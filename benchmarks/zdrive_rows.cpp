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

// Every step is another number, and sometimes another row of the gauge.
Ratio Step() {
    const Frame frame;
    Drive drive;
    OpenInItsSize(drive, frame);
    int steps = 0;
    const auto step = [&] {
        drive.SetPosition(4000 + (steps = (steps + 7) % 1000) * 0.25);
        RedrawWindow(drive, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    };
    return Measure(step, [&] { Repaint(drive); });
}

Row Creation() {
    Row row = CreationRow<Drive>("Z drive");
    row.limit = 1.08;
    return row;
}

const Rows s_rows{{Creation(), {"Z drive, a step of the live position", "a full repaint of it", 0.15, Step}}};

}  // namespace
}  // namespace kx::bench
