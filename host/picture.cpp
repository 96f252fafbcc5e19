#include "picture.h"

#include <objidl.h>

#if defined(_MSC_VER)
#include <algorithm>

// Its header of GDI+ counts on macros of these names, which nobody else wants.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#endif
#include <gdiplus.h>

#include <kxdevui/framework/ui_gdi.h>

namespace {

// PNG's encoder has had this class id since the first version of GDI+.
constexpr CLSID kPngEncoder{0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

// Loaded when it is wanted: it brings other modules with it, which would be a part of every start.
template <class Function>
Function* InGdiPlus(const char* name) {
    static const HMODULE module = LoadLibraryW(L"gdiplus.dll");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(module ? GetProcAddress(module, name) : nullptr));
}

bool StartGdiPlus() {
    const auto start = InGdiPlus<decltype(Gdiplus::GdiplusStartup)>("GdiplusStartup");
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    return start && start(&token, &input, nullptr) == Gdiplus::Ok;
}

bool Save(HBITMAP bitmap, const std::wstring& path) {
    namespace Flat = Gdiplus::DllExports;
    const auto create = InGdiPlus<decltype(Flat::GdipCreateBitmapFromHBITMAP)>("GdipCreateBitmapFromHBITMAP");
    const auto save = InGdiPlus<decltype(Flat::GdipSaveImageToFile)>("GdipSaveImageToFile");
    const auto dispose = InGdiPlus<decltype(Flat::GdipDisposeImage)>("GdipDisposeImage");
    Gdiplus::GpBitmap* picture = nullptr;
    if (!create || !save || !dispose || create(bitmap, nullptr, &picture) != Gdiplus::Ok) return false;
    const bool saved = save(picture, path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
    dispose(picture);
    return saved;
}

kx::ui::Bitmap CopyScreen(const RECT& area) {
    const kx::ui::WindowDC screen(nullptr);
    const kx::ui::MemoryDC memory(CreateCompatibleDC(screen));
    const long width = area.right - area.left, height = area.bottom - area.top;
    kx::ui::Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const kx::ui::Selection selection(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    return bitmap;
}

}  // namespace

bool SavePicture(HWND window, const std::wstring& path) {
    static const bool started = StartGdiPlus();
    if (!started) return false;
    RECT area{}, own{}, active{};
    if (!GetWindowRect(window, &own)) return false;
    GetWindowRect(GetActiveWindow(), &active);
    UnionRect(&area, &own, &active);
    // Off the screen there is nothing to copy, and asking for it fails as a whole.
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, wanted = area;
    if (!IntersectRect(&area, &wanted, &screen)) return false;
    const kx::ui::Bitmap bitmap = CopyScreen(area);
    return Save(bitmap.get(), path);
}
