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
    layout.question = Box(layout.icon.right + kMargin, kMargin, sizes.question.cx, sizes.question.cy);
    layout.check = Box(layout.question.left, layout.question.bottom + kMargin, sizes.check.cx, sizes.check.cy);

    // In the middle under the question, where that is wider.
    long x = layout.question.left + std::max(0L, (sizes.question.cx - row) / 2);
    const long y = std::max(layout.check.bottom, layout.icon.bottom) + kMargin;
    for (std::size_t i = 0; i < sizes.buttons.size(); ++i) {
        layout.buttons[i] = Box(x, y, sizes.buttons[i].cx, sizes.buttons[i].cy);
        x = layout.buttons[i].right + kMargin;
    }
    const long right = std::max({layout.question.right, layout.check.right, x - kMargin});
    layout.dialog = {right + 2 * (sizes.edgeX + kMargin / 2),
                     y + rowHeight + kMargin + 2 * sizes.edgeY + sizes.captionHeight};
    return layout;
}

}  // namespace kx::zstack
