#include <bench/picture.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include <kxdevui/framework/ui_gdi.h>

namespace kx::test {
namespace {

BITMAPINFOHEADER Header(LONG width, LONG height) {
    return {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
}

// 0x00RRGGBB as a COLORREF, and the other way round.
COLORREF Swapped(std::uint32_t color) { return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF); }

RECT ClientOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

bool IsLight(std::uint32_t color) {
    constexpr std::uint32_t least = 190;
    return (color & 0xFF) >= least && (color >> 8 & 0xFF) >= least && (color >> 16 & 0xFF) >= least;
}

}  // namespace

Picture::Picture(const RECT& area, const std::function<void(HDC)>& draw) {
    const BITMAPINFO info{Header(area.right - area.left, area.bottom - area.top), {}};
    void* bits = nullptr;
    const kx::ui::MemoryDC dc(CreateCompatibleDC(nullptr));
    const kx::ui::Bitmap bitmap(CreateDIBSection(dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) return;
    const kx::ui::Selection selection(dc.get(), bitmap.get());
    draw(dc.get());
    GdiFlush();
    width_ = area.right - area.left, height_ = area.bottom - area.top;
    const auto* first = static_cast<const std::uint32_t*>(bits);
    pixels_.assign(first, first + static_cast<std::ptrdiff_t>(width_) * height_);
    // GDI leaves the fourth byte undefined.
    for (std::uint32_t& pixel : pixels_)
        pixel &= 0xFFFFFF;
}

Picture Picture::Printed(HWND window) {
    return {ClientOf(window), [window](HDC dc) {
                const auto wParam = reinterpret_cast<WPARAM>(dc);
                SendMessageW(window, WM_ERASEBKGND, wParam, 0);
                SendMessageW(window, WM_PRINTCLIENT, wParam, PRF_CLIENT | PRF_ERASEBKGND);
            }};
}

Picture Picture::OnScreen(HWND window, bool withFrame) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT area = ClientOf(window);
    if (withFrame) GetWindowRect(window, &area);
    return {area, [&](HDC dc) {
                // The children's pixels are part of what is seen, whatever the window's own clipping.
                const HDC screen = GetDCEx(window, nullptr, DCX_CACHE | (withFrame ? DCX_WINDOW : 0));
                BitBlt(dc, 0, 0, 32767, 32767, screen, 0, 0, SRCCOPY);
                ReleaseDC(window, screen);
            }};
}

COLORREF Picture::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return CLR_INVALID;
    return Swapped(pixels_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)]);
}

int Picture::Differences(const Picture& other) const {
    if (width_ != other.width_ || height_ != other.height_)
        return static_cast<int>(std::max(pixels_.size(), other.pixels_.size()));
    int count = 0;
    for (size_t i = 0; i < pixels_.size(); ++i)
        count += pixels_[i] != other.pixels_[i];
    return count;
}

int Picture::Count(COLORREF color) const {
    return static_cast<int>(std::count(pixels_.begin(), pixels_.end(), Swapped(color)));
}

RECT Picture::Difference(const Picture& other) const {
    RECT box{};
    for (size_t i = 0; i < pixels_.size(); ++i) {
        const LONG x = static_cast<LONG>(i) % width_, y = static_cast<LONG>(i) / width_;
        const RECT pixel{x, y, x + 1, y + 1};
        if (pixels_[i] != other.pixels_[i]) UnionRect(&box, &box, &pixel);
    }
    return box;
}

std::string Picture::WhereLight(bool linesAreLight) const {
    for (const SIZE least : linesAreLight ? std::vector{SIZE{12, 12}} : std::vector{SIZE{6, 6}, {24, 1}, {1, 24}}) {
        std::vector<int> above(static_cast<size_t>(width_));  // how many light pixels end here, downwards
        for (int y = 0; y < height_; ++y) {
            const auto row = pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_;
            for (int x = 0, wide = 0; x < width_; ++x) {
                int& high = above[static_cast<size_t>(x)];
                high = IsLight(row[x]) ? high + 1 : 0;
                wide = high >= least.cy ? wide + 1 : 0;
                if (wide >= least.cx)
                    return "light at " + std::to_string(x - wide + 1) + "," + std::to_string(y - least.cy + 1);
            }
        }
    }
    return {};
}

Picture Picture::Part(const RECT& part) const {
    RECT inside{};
    const RECT all{0, 0, width_, height_};
    IntersectRect(&inside, &part, &all);
    Picture result;
    result.width_ = inside.right - inside.left, result.height_ = inside.bottom - inside.top;
    for (int y = inside.top; y < inside.bottom; ++y) {
        const auto row = pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_;
        result.pixels_.insert(result.pixels_.end(), row + inside.left, row + inside.right);
    }
    return result;
}

void Picture::Save(const std::string& name) const {
    const char* folder = std::getenv("KX_PICTURES");
    if (!folder || !*folder) return;

    const BITMAPINFOHEADER info = Header(width_, height_);
    const auto bytes = static_cast<DWORD>(pixels_.size() * sizeof(pixels_[0]));
    constexpr DWORD headers = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    const BITMAPFILEHEADER file{0x4D42, headers + bytes, 0, 0, headers};
    std::ofstream out(std::string(folder) + "/" + name + ".bmp", std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&info), sizeof(info));
    out.write(reinterpret_cast<const char*>(pixels_.data()), static_cast<std::streamsize>(bytes));
    if (!out) ADD_FAILURE() << "the picture " << name << " could not be written to " << folder;
}

}  // namespace kx::test
