#include <kxdevui/light/shutter_rules.h>

#include <algorithm>
#include <cmath>

namespace kx::shutter {

namespace {

constexpr long kButton = 24;  // width and height of a button beside or below its title
constexpr long kTitleHeight = 16;
constexpr double kButtonRoom = 30;  // what a shutter that fits its title leaves for the button

long Cut(double pixels) { return std::isnan(pixels) ? 0 : std::lround(std::clamp(pixels, -32768.0, 32767.0)); }
long Cut(long pixels) { return std::clamp(pixels, -32768L, 32767L); }

}  // namespace

Layout TitleLeft(long width, long height, long titleWidth) noexcept {
    width = Cut(width);
    height = Cut(height);
    const long title = titleWidth < 0 ? width - kButton : Cut(titleWidth);
    return {{0, height / 2 - 8, title, kTitleHeight},
            {(width - title - kButton) / 2 + title, (height - kButton) / 2, kButton, kButton}};
}

Layout TitleAbove(long width, long titleHeight) noexcept {
    return {{0, 0, Cut(width), titleHeight < 0 ? kTitleHeight : Cut(titleHeight)}, {8, 16, kButton, kButton}};
}

Width FitWidth(long text, int minimum, int maximum, double zoom) noexcept {
    const long room = Cut(zoom * kButtonRoom);
    const long wanted = std::max(
        Cut(zoom * minimum), std::min(Cut(static_cast<double>(text) + static_cast<double>(room)), Cut(zoom * maximum)));
    const long control = zoom > 0 ? Cut(static_cast<double>(wanted) / zoom) : 0;
    return {control, control - room};
}

const wchar_t* DefaultTitle(int type) noexcept {
    static constexpr const wchar_t* titles[] = {L"EPI", L"DIA", L"Aux1", L"Aux2"};
    return type >= 0 && type < 4 ? titles[type] : nullptr;
}

const wchar_t* ImageName(int type, bool open, bool grabberActive) noexcept {
    static constexpr const wchar_t* names[][3] = {
        {L"SHUTTER_EPI_CLOSED", L"SHUTTER_EPI_CLOSED_LIVE", L"SHUTTER_EPI_OPEN"},
        {L"SHUTTER_DIA_CLOSED", L"SHUTTER_DIA_CLOSED_LIVE", L"SHUTTER_DIA_OPEN"},
        {L"SHUTTER_CLOSED", L"SHUTTER_CLOSED_LIVE", L"SHUTTER_OPEN"},
    };
    return names[type == 0 || type == 1 ? type : 2][open ? 2 : grabberActive ? 1 : 0];
}

}  // namespace kx::shutter
