#include <kxdevui/controls/hpot_thumb.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <list>
#include <memory>
#include <string>

#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

namespace kx::hpot {

namespace {

constexpr wchar_t kSource[] = L"hpot_thumb";
constexpr wchar_t kImageName[] = L"BMP_HPOT_HANDLE";
constexpr int kLargest = 2048;           // pixels a side
constexpr int kLargestMade = 128;        // a larger one is stretched: the ring takes the fourth power of the size
constexpr std::size_t kMostThumbs = 24;  // kept

// ---- The image -----------------------------------------------------------------------------------------------------

struct ModuleDeleter {
    void operator()(void* module) const noexcept { FreeLibrary(static_cast<HMODULE>(module)); }
};

// The resource is a bitmap file without its file header: rows from the bottom, 4 bytes a pixel.
bool Unpack(const std::byte* data, std::size_t size, HandleImage& image) {
    BITMAPINFOHEADER header{};
    if (!data || size < sizeof header) return false;
    std::copy_n(data, sizeof header, reinterpret_cast<std::byte*>(&header));
    if (header.biSize < sizeof header || header.biBitCount != 32 || header.biCompression != BI_RGB ||
        header.biWidth <= 0 || header.biHeight <= 0 || header.biWidth > kLargest || header.biHeight > kLargest) {
        return false;
    }
    const auto width = static_cast<std::size_t>(header.biWidth), height = static_cast<std::size_t>(header.biHeight);
    if (size < header.biSize || (size - header.biSize) / 4 < width * height) return false;
    image = {header.biWidth, header.biHeight, {}, {}};
    for (std::size_t y = height; y-- > 0;) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::byte* pixel = data + header.biSize + 4 * (y * width + x);
            image.light.push_back(std::to_integer<std::uint8_t>(pixel[1]));
            image.alpha.push_back(std::to_integer<std::uint8_t>(pixel[3]));
        }
    }
    return true;
}

bool Read(const wchar_t* path, HandleImage& image) {
    const std::unique_ptr<void, ModuleDeleter> module(
        LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    if (!module) return false;
    const auto handle = static_cast<HMODULE>(module.get());
    const HRSRC resource = FindResourceW(handle, kImageName, RT_BITMAP);
    const HGLOBAL loaded = resource ? LoadResource(handle, resource) : nullptr;
    return loaded &&
           Unpack(static_cast<const std::byte*>(LockResource(loaded)), SizeofResource(handle, resource), image);
}

// A body with an edge, as wide and high as ours, for a host that has no images.
HandleImage PlainHandle() {
    HandleImage image{24, 48, {}, {}};
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const bool inside = x >= 3 && x < 21 && y >= 3 && y < 45, body = x >= 6 && x < 18 && y >= 6 && y < 42;
            image.light.push_back(body ? 255 : 0);
            image.alpha.push_back(inside ? 255 : 0);
        }
    }
    return image;
}

// The module beside this library.
std::wstring SiblingModule() {
    std::wstring path(32768, L'\0');
    const HINSTANCE self = ui::ModuleOf(reinterpret_cast<WNDPROC>(reinterpret_cast<void*>(&DrawThumb)));
    path.resize(GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size())));
    path.resize(path.find_last_of(L'\\') + 1);
    return path + L"r7_w32_baseresources.dll";
}

const HandleImage& Image() {
    static const HandleImage image = ReadHandleImage(SiblingModule().c_str());
    return image;
}

// ---- Sizes and colours ---------------------------------------------------------------------------------------------

using Plane = std::vector<float>;

std::size_t CellAt(long row, long width, long column) {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column);
}

// Each of `to` new cells becomes the mean of what it covers of the `from` old ones, along rows; the result is turned,
// so that a second call does the columns and turns back.
Plane ReduceAndTurn(const Plane& plane, int from, int rows, int to) {
    Plane turned(static_cast<std::size_t>(to) * static_cast<std::size_t>(rows));
    const float scale = static_cast<float>(from) / static_cast<float>(to);
    for (int x = 0; x < to; ++x) {
        const float left = static_cast<float>(x) * scale, right = left + scale;
        const int last = std::min(from - 1, static_cast<int>(right));
        for (int cell = static_cast<int>(left); cell <= last; ++cell) {
            const float covered =
                std::min(right, static_cast<float>(cell + 1)) - std::max(left, static_cast<float>(cell));
            for (int y = 0; y < rows; ++y) {
                turned[CellAt(x, rows, y)] += plane[CellAt(y, from, cell)] * covered / scale;
            }
        }
    }
    return turned;
}

Plane Reduced(const std::vector<std::uint8_t>& source, const HandleImage& image, SIZE size) {
    Plane plane(source.size());
    std::transform(source.begin(), source.end(), plane.begin(), [](std::uint8_t each) { return each / 255.0F; });
    return ReduceAndTurn(ReduceAndTurn(plane, image.width, image.height, size.cx), image.height, size.cx, size.cy);
}

// How much of each pixel the ring around a shape covers.
Plane RingAround(const Plane& alpha, SIZE size) {
    // The margin of the image has room for this.
    const float radius = static_cast<float>(size.cx) / 8;
    const int reach = static_cast<int>(radius + 1);
    Plane ring(alpha.size());
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x) {
            float& most = ring[CellAt(y, size.cx, x)];
            for (int dy = std::max(-reach, -y); dy <= std::min<int>(reach, size.cy - 1 - y); ++dy) {
                for (int dx = std::max(-reach, -x); dx <= std::min<int>(reach, size.cx - 1 - x); ++dx) {
                    const float distance = std::hypot(static_cast<float>(dx), static_cast<float>(dy));
                    const float share = std::clamp(radius + 0.5F - distance, 0.0F, 1.0F);
                    most = std::max(most, share * alpha[CellAt(y + dy, size.cx, x + dx)]);
                }
            }
        }
    }
    return ring;
}

// One channel: the body's colour where the image is white, the edge's where it is black, the ring's under both.
std::uint8_t Channel(float light, float alpha, float ring, int body, int edge, int ringColor) {
    const float shown = light * static_cast<float>(body) + (alpha - light) * static_cast<float>(edge) +
                        ring * (1 - alpha) * static_cast<float>(ringColor);
    return static_cast<std::uint8_t>(std::clamp(shown + 0.5F, 0.0F, 255.0F));
}

void Fill(std::uint8_t* pixels, const ThumbStyle& style) {
    const HandleImage& image = Image();
    const Plane light = Reduced(image.light, image, style.size), alpha = Reduced(image.alpha, image, style.size);
    const Plane ring = style.hasRing ? RingAround(alpha, style.size) : Plane(alpha.size());
    for (std::size_t i = 0; i < alpha.size(); ++i, pixels += 4) {
        const auto channel = [&](auto of) {
            return Channel(light[i], alpha[i], ring[i], of(style.body), of(style.edge), of(style.ring));
        };
        pixels[0] = channel([](COLORREF color) { return GetBValue(color); });
        pixels[1] = channel([](COLORREF color) { return GetGValue(color); });
        pixels[2] = channel([](COLORREF color) { return GetRValue(color); });
        pixels[3] =
            static_cast<std::uint8_t>(std::clamp((alpha[i] + ring[i] * (1 - alpha[i])) * 255 + 0.5F, 0.0F, 255.0F));
    }
}

// ---- The thumbs that have been made --------------------------------------------------------------------------------

struct Thumb {
    ThumbStyle style;
    ui::Bitmap bitmap;  // outlives the DC that it is selected into
    ui::MemoryDC dc;
};

bool IsSame(const ThumbStyle& a, const ThumbStyle& b) {
    return a.size.cx == b.size.cx && a.size.cy == b.size.cy && a.body == b.body && a.edge == b.edge &&
           a.ring == b.ring && a.hasRing == b.hasRing;
}

Thumb Make(const ThumbStyle& style) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, style.size.cx, -style.size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    Thumb thumb{style, ui::Bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0)),
                ui::MemoryDC(CreateCompatibleDC(nullptr))};
    if (!thumb.bitmap || !thumb.dc) return thumb;
    Fill(static_cast<std::uint8_t*>(pixels), style);
    SelectObject(thumb.dc.get(), thumb.bitmap.get());
    return thumb;
}

// The most recently used first. Never freed: a host may destroy its sliders after this library's statics.
std::list<Thumb>& Thumbs() {
    static auto* thumbs = new std::list<Thumb>;
    return *thumbs;
}

// Null when there is no room for one more.
const Thumb* ThumbOf(const ThumbStyle& style) {
    auto& thumbs = Thumbs();
    const auto found =
        std::find_if(thumbs.begin(), thumbs.end(), [&](const Thumb& each) { return IsSame(each.style, style); });
    if (found != thumbs.end()) {
        thumbs.splice(thumbs.begin(), thumbs, found);
    } else {
        Thumb thumb = Make(style);
        if (!thumb.bitmap || !thumb.dc) return nullptr;
        thumbs.push_front(std::move(thumb));
        if (thumbs.size() > kMostThumbs) thumbs.pop_back();
    }
    return &thumbs.front();
}

}  // namespace

HandleImage ReadHandleImage(const wchar_t* module) {
    HandleImage image;
    if (module && Read(module, image)) return image;
    KX_LOG(kSource, L"no bitmap %ls in %ls, thumbs will be plain", kImageName, module ? module : L"(null)");
    return PlainHandle();
}

void DrawThumb(HDC dc, POINT at, const ThumbStyle& style) {
    const auto [cx, cy] = style.size;
    if (cx <= 0 || cy <= 0 || cx > kLargest || cy > kLargest) return;
    constexpr BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    ThumbStyle made = style;
    if (const int side = std::max(cx, cy); side > kLargestMade) {
        made.size = {std::max(1, MulDiv(cx, kLargestMade, side)), std::max(1, MulDiv(cy, kLargestMade, side))};
    }
    if (const Thumb* thumb = ThumbOf(made)) {
        AlphaBlend(dc, at.x, at.y, cx, cy, thumb->dc.get(), 0, 0, made.size.cx, made.size.cy, blend);
    }
}

}  // namespace kx::hpot
