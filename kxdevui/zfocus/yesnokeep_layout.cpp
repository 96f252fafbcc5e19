#include <kxdevui/zfocus/yesnokeep_layout.h>

#include <algorithm>

namespace kx::zstack {

namespace {

constexpr long kMargin = 10;

RECT Box(long x, long y, long cx, long cy) { return {x, y, x + cx, y + cy}; }

SIZE RowOf(const YesNoKeepSizes& sizes) {
    SIZE row{kMargin * static_cast<long>(sizes.buttons.size() - 1), 0};
    for (const SIZE& button : sizes.buttons) {
        row.cx += button.cx;
        row.cy = std::max(row.cy, button.cy);
    }
    return row;
}

}  // namespace

long YesNoKeepWidth(const YesNoKeepSizes& sizes) { return std::max(sizes.question.cx, RowOf(sizes).cx); }

YesNoKeepLayout PlaceYesNoKeep(const YesNoKeepSizes& sizes) {
    const SIZE row = RowOf(sizes);
    const long width = YesNoKeepWidth(sizes);

    YesNoKeepLayout layout{};
    layout.icon = Box(kMargin, kMargin, sizes.icon.cx, sizes.icon.cy);
    layout.question = Box(layout.icon.right + kMargin, kMargin, sizes.question.cx, sizes.question.cy);
    layout.check = Box(layout.question.left, layout.question.bottom + kMargin, width, sizes.check.cy);

    // In the middle under the question, where that is wider.
    long x = layout.question.left + (width - row.cx) / 2;
    const long y = std::max(layout.check.bottom, layout.icon.bottom) + kMargin;
    for (std::size_t i = 0; i < sizes.buttons.size(); ++i) {
        layout.buttons[i] = Box(x, y, sizes.buttons[i].cx, sizes.buttons[i].cy);
        x = layout.buttons[i].right + kMargin;
    }
    layout.dialog = {layout.question.left + width + 2 * (sizes.edgeX + kMargin / 2),
                     y + row.cy + kMargin + 2 * sizes.edgeY + sizes.captionHeight};
    return layout;
}

}  // namespace kx::zstack
