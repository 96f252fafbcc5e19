#include <kxdevui/zfocus/yesnokeep_layout.h>

#include <algorithm>

namespace kx::zstack {

namespace {

constexpr long kMargin = 10;

RECT Box(long x, long y, long cx, long cy) { return {x, y, x + cx, y + cy}; }

}  // namespace

YesNoKeepLayout PlaceYesNoKeep(const YesNoKeepSizes& sizes) {
    long row = kMargin * static_cast<long>(sizes.buttons.size() - 1), rowHeight = 0;
    for (const SIZE& button : sizes.buttons) {
        row += button.cx;
        rowHeight = std::max(rowHeight, button.cy);
    }

    YesNoKeepLayout layout{};
    layout.icon = Box(kMargin, kMargin, sizes.icon.cx, sizes.icon.cy);
    layout.question = Box(layout.icon.right + kMargin, kMargin, std::max(sizes.question.cx, row), sizes.question.cy);
    const long width = layout.question.right - layout.question.left;
    const long under = std::max(layout.question.bottom, layout.icon.bottom);
    layout.check = Box(layout.question.left, under + kMargin, width, sizes.check.cy);

    long x = layout.question.left + (width - row) / 2;
    const long y = layout.check.bottom + kMargin;
    for (std::size_t i = 0; i < sizes.buttons.size(); ++i) {
        layout.buttons[i] = Box(x, y, sizes.buttons[i].cx, sizes.buttons[i].cy);
        x = layout.buttons[i].right + kMargin;
    }
    layout.dialog = {layout.question.right + 2 * (sizes.edgeX + kMargin / 2),
                     y + rowHeight + kMargin + 2 * sizes.edgeY + sizes.captionHeight};
    return layout;
}

}  // namespace kx::zstack
