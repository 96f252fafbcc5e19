// What a window looks like, as a picture of 32 bits per pixel.
//
//     const Picture picture = Picture::Printed(control);
//     EXPECT_EQ(picture.Pixel(3, 3), RGB(255, 0, 0));
//     picture.Save("slider-red");                     // only when KX_PICTURES names a folder, for a person to look at
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kx::test {

class Picture {
public:
    // The client area as WM_PRINTCLIENT draws it.
    static Picture Printed(HWND window);

    // The client area, or all of the window, as it is on the screen, after painting what is due. Nothing may cover it.
    static Picture OnScreen(HWND window, bool withFrame = false);

    int Width() const { return width_; }
    int Height() const { return height_; }

    COLORREF Pixel(int x, int y) const;  // CLR_INVALID outside

    // Number of pixels that differ; of pictures of unequal size, all of the larger.
    int Differences(const Picture& other) const;
    int Count(COLORREF color) const;
    // The least rectangle that has all pixels that differ, of pictures of equal size.
    RECT Difference(const Picture& other) const;
    // Where it is near to white in an area larger than the strokes of text or, unless lines are meant to be light, in a
    // line; empty for nowhere.
    std::string WhereLight(bool linesAreLight) const;
    // A part of it.
    Picture Part(const RECT& part) const;
    bool operator==(const Picture& other) const { return Differences(other) == 0; }

    // Writes NAME.bmp into the folder that the environment variable KX_PICTURES names; does nothing when it is not set.
    void Save(const std::string& name) const;

private:
    Picture() = default;
    // An area of this size as it is drawn into the DC of an empty bitmap; nothing where it is empty.
    Picture(const RECT& area, const std::function<void(HDC)>& draw);

    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;  // 0x00RRGGBB, from the top
};

// While it lives, the system wants windows to stand still, or to move.
class ClientAnimation {
public:
    explicit ClientAnimation(bool moves) { Set(moves); }
    ~ClientAnimation() { Set(true); }
    ClientAnimation(const ClientAnimation&) = delete;
    ClientAnimation& operator=(const ClientAnimation&) = delete;
    static void Set(bool moves) {
        SystemParametersInfoW(SPI_SETCLIENTAREAANIMATION, 0, reinterpret_cast<void*>(ULONG_PTR{moves}), 0);
    }
};

}  // namespace kx::test
