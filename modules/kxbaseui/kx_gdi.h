// Owning types for what this module keeps for long.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace kx {

struct DcDeleter {
    void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};
struct BitmapDeleter {
    void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};
// Goes before the bitmap selected into it does.
using MemoryDC = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

}  // namespace kx
