#include <kxdevui/controls/imagebutton_rules.h>

#include <algorithm>
#include <cmath>

namespace kx::imagebutton {

namespace {

// Unzoomed pixels.
constexpr double kMargin = 4, kGap = 4, kArrow = 16;

RECT Square(const RECT& room) {
    const long width = room.right - room.left, height = room.bottom - room.top;
    const long side = std::max(0L, std::min(width, height));
    const long left = room.left + (width - side) / 2, top = room.top + (height - side) / 2;
    return {left, top, left + side, top + side};
}

}  // namespace

Places Arrange(SIZE client, const Contents& contents, double zoom) {
    const auto zoomed = [zoom](double length) { return std::lround(length * zoom); };
    Places places{};
    const long arrow = contents.hasMenu ? std::min(zoomed(kArrow), client.cx) : 0;
    places.body = {0, 0, client.cx - arrow, client.cy};
    places.arrow = {places.body.right, 0, client.cx, client.cy};
    RECT room = places.body;
    InflateRect(&room, -zoomed(kMargin), -zoomed(kMargin));
    if (room.right <= room.left || room.bottom <= room.top) return places;
    if (contents.text == EKxButtonText::None) {
        if (contents.hasImage) places.image = Square(room);
        return places;
    }
    places.text = room;
    if (!contents.hasImage) return places;
    RECT image = room;
    if (contents.text == EKxButtonText::Below) {
        places.text.top = std::max(room.top, room.bottom - contents.textHeight);
        image.bottom = places.text.top;
    } else {
        image.right = std::min(room.right, room.left + room.bottom - room.top);
        places.text.left = std::min(room.right, image.right + zoomed(kGap));
    }
    places.image = Square(image);
    return places;
}

int ImageOf(const KxButtonImages<int>& images, const Look& look) {
    if (!look.enabled) return images.disabled ? images.disabled : images.normal;
    if (look.pressed && images.pressed) return images.pressed;
    if (look.on && images.checked) return images.checked;
    if (look.hovered && images.hovered) return images.hovered;
    return images.normal;
}

}  // namespace kx::imagebutton
