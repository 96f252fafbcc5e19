// Laser lines: a set of 16 against its windows made directly, and what one line's change costs.
#include <kxdevui/light/devgui_multilaserline.h>
#include <kxdevui/light/devgui_multilasersubset.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

std::vector<SKxLaserLine> Lines(double power) {
    std::vector<SKxLaserLine> lines(16);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        lines[i].name = L"Line", lines[i].wavelength = 400 + 20 * static_cast<double>(i);
        lines[i].measured = lines[i].power = 10;
    }
    lines[7].power = power;
    return lines;
}

void Open(CKxDevUI_MultiLaser& set, HWND parent) {
    set.SetLines(Lines(10));
    OpenInItsSize(set, parent);
}

void OpenSubsets(CKxDevUI_MultiLaserSubset& set, HWND parent) {
    set.Set(Lines(10), {{.name = L"A", .lines = {0, 1}, .active = true}, {.name = L"B", .lines = {2, 3}}}, true);
    OpenInItsSize(set, parent);
}

// One line changes and all that is stale is painted, against a line by itself.
Ratio OneChange() {
    const Frame frame;
    CKxDevUI_MultiLaser set;
    Open(set, frame);
    CKxDevUI_MultiLaserLine line;
    line.Create(frame, 0, 300, -1, -1, true, true);
    const auto lines = std::vector{Lines(10), Lines(20)};
    std::size_t turn = 0;
    const auto show = [&] { RedrawWindow(frame, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); };
    return Measure([&] { set.SetLines(lines[++turn % 2]), show(); },
                   [&] { line.SetLine(lines[++turn % 2][7]), show(); });
}

Row Created(Row row) {
    row.limit = 1.08;
    return row;
}

const Rows s_rows{{CreationRow<CKxDevUI_MultiLaserLine>("laser line"),
                   Created(CreationRow<CKxDevUI_MultiLaser, Open>("laser set of 16 lines")),
                   CreationRow<CKxDevUI_MultiLaserSubset, OpenSubsets>("laser subsets of 16 lines"),
                   {"laser set, one line of 16 changes", "the same of a line by itself", 1.3, OneChange}}};

}  // namespace
}  // namespace kx::bench
