// The windows that rows are made of: a frame on the screen, and plain counterparts of the library's windows.
#pragma once

#include <windows.h>

#include <string>

#include <kxdevui/framework/ui_gdi.h>

namespace kx::bench {

// A shown top-level window, which a row fills. Everything in it goes with it.
class Frame {
public:
    Frame();
    ~Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    operator HWND() const noexcept { return m_window; }

private:
    HWND m_window;
};

// A window as a control's is made by hand: a class of its own with 16 extra bytes, and a font set. On WM_PAINT it
// copies a bitmap that was made before.
class BareWindow {
public:
    BareWindow(HWND parent, SIZE size);
    ~BareWindow();
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;
    operator HWND() const noexcept { return m_window; }

private:
    HWND m_window;
    kx::ui::Bitmap m_bitmap;  // outlives the DC that it is selected into
    kx::ui::MemoryDC m_picture;
};

// The window alone, with nothing to copy; the caller destroys it.
HWND MakeBareWindow(HWND parent, SIZE size);

// The i-th child of a panel: statics and buttons in turn, in columns of ten.
struct ChildSpec {
    const wchar_t* className;
    std::wstring text;
    DWORD style;
    RECT place;
    int id;
};
ChildSpec Child(int index);
HWND MakeChild(HWND parent, const ChildSpec& child);

// Paints the whole window, and its children, at once.
void Repaint(HWND window);

}  // namespace kx::bench
