#include <bench/picture.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace kx::test {

// A memory DC with a bitmap of 32 bits per pixel in it, while a picture is taken.
class Canvas {
public:
    explicit Canvas(HWND window) {
        RECT client{};
        GetClientRect(window, &client);
        info_.bmiHeader.biSize = sizeof(info_.bmiHeader);
        info_.bmiHeader.biWidth = client.right;
        info_.bmiHeader.biHeight = -client.bottom;
        info_.bmiHeader.biPlanes = 1;
        info_.bmiHeader.biBitCount = 32;
        dc_ = CreateCompatibleDC(nullptr);
        if (client.right > 0 && client.bottom > 0)
            bitmap_ = CreateDIBSection(dc_, &info_, DIB_RGB_COLORS, &bits_, nullptr, 0);
        if (bitmap_) old_ = SelectObject(dc_, bitmap_);
    }
    ~Canvas() {
        if (bitmap_) {
            SelectObject(dc_, old_);
            DeleteObject(bitmap_);
        }
        DeleteDC(dc_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return dc_; }

    Picture Take() const {
        GdiFlush();
        const int width = bitmap_ ? info_.bmiHeader.biWidth : 0;
        const int height = bitmap_ ? -info_.bmiHeader.biHeight : 0;
        const auto* first = static_cast<const std::uint32_t*>(bits_);
        std::vector<std::uint32_t> pixels(first, first + static_cast<std::ptrdiff_t>(width) * height);
        // GDI leaves the fourth byte undefined.
        for (std::uint32_t& pixel : pixels)
            pixel &= 0xFFFFFF;
        return Picture(width, height, std::move(pixels));
    }

private:
    BITMAPINFO info_{};
    HDC dc_ = nullptr;
    void* bits_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

namespace {

// WM_PRINT cannot be relied on to draw the children, so each window is asked by itself, the lowest first.
void PrintTree(HWND window, HDC dc, POINT at) {
    RECT client{};
    GetClientRect(window, &client);
    const int saved = SaveDC(dc);
    SetViewportOrgEx(dc, at.x, at.y, nullptr);
    IntersectClipRect(dc, 0, 0, client.right, client.bottom);
    SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT | PRF_ERASEBKGND);
    HWND child = GetWindow(window, GW_CHILD);
    if (child) child = GetWindow(child, GW_HWNDLAST);
    for (; child; child = GetWindow(child, GW_HWNDPREV)) {
        if (!(GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE)) continue;
        POINT corner{};
        MapWindowPoints(child, window, &corner, 1);
        PrintTree(child, dc, {at.x + corner.x, at.y + corner.y});
    }
    RestoreDC(dc, saved);
}

}  // namespace

Picture::Picture(int width, int height, std::vector<std::uint32_t> pixels)
    : width_(width), height_(height), pixels_(std::move(pixels)) {}

Picture Picture::Printed(HWND window) {
    const Canvas canvas(window);
    PrintTree(window, canvas.Dc(), {0, 0});
    return canvas.Take();
}

Picture Picture::OnScreen(HWND window) {
    const Canvas canvas(window);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT client{};
    GetClientRect(window, &client);
    // The children's pixels are part of what is seen, whatever the window's own clipping.
    const HDC dc = GetDCEx(window, nullptr, DCX_CACHE);
    BitBlt(canvas.Dc(), 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    return canvas.Take();
}

COLORREF Picture::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return CLR_INVALID;
    const std::uint32_t pixel = pixels_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
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
    const std::uint32_t wanted =
        std::uint32_t{GetRValue(color)} << 16 | std::uint32_t{GetGValue(color)} << 8 | std::uint32_t{GetBValue(color)};
    return static_cast<int>(std::count(pixels_.begin(), pixels_.end(), wanted));
}

std::uint64_t Picture::Hash() const {
    std::uint64_t hash = 14695981039346656037u;  // FNV-1a
    const auto mix = [&hash](std::uint32_t value) { hash = (hash ^ value) * 1099511628211u; };
    mix(static_cast<std::uint32_t>(width_));
    mix(static_cast<std::uint32_t>(height_));
    for (const std::uint32_t pixel : pixels_)
        mix(pixel);
    return hash;
}

void Picture::Save(const std::string& name) const {
    const char* folder = std::getenv("KX_PICTURES");
    if (!folder || !*folder) return;

    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    const auto bytes = static_cast<DWORD>(pixels_.size() * sizeof(pixels_[0]));
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof(file) + sizeof(info);
    file.bfSize = file.bfOffBits + bytes;
    info.biSize = sizeof(info);
    info.biWidth = width_;
    info.biHeight = -height_;
    info.biPlanes = 1;
    info.biBitCount = 32;

    std::ofstream out(std::string(folder) + "/" + name + ".bmp", std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&info), sizeof(info));
    out.write(reinterpret_cast<const char*>(pixels_.data()), static_cast<std::streamsize>(bytes));
    if (!out) ADD_FAILURE() << "the picture " << name << " could not be written to " << folder;
}

}  // namespace kx::test
