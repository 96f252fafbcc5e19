// The windows that rows are made of: a frame on the screen, and plain counterparts of the library's windows.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include <kxdevui/framework/ui_gdi.h>

#include "harness.h"

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
    std::wstring className;
    std::wstring text;
    DWORD style;
    RECT place;
    int id;
    DWORD extendedStyle = 0;
};
ChildSpec Child(int index);
HWND MakeChild(HWND parent, const ChildSpec& child);
// A window as it stands in its parent; of one of the library's, as a bare window.
ChildSpec SpecOf(HWND child);

// The windows in a window, to be made again directly: of the same classes, bare ones for those of the library, with the
// same styles, texts and places.
class Copies {
public:
    explicit Copies(HWND parent);
    // Each with what is in it.
    void MakeAndDestroy(HWND parent) const;

private:
    struct Window {
        ChildSpec made;
        std::vector<Window> children;
    };
    static std::vector<Window> In(HWND parent);
    static HWND Make(HWND parent, const Window& window);

    std::vector<Window> m_windows;
};

// Making a control, by `open` in a window, and ending it, against the same windows made directly.
template <class Control>
Ratio MeasureCreation(void (*open)(Control& control, HWND parent)) {
    const Frame frame;
    const auto read = [&] {
        Control control;
        open(control, frame);
        return Copies(frame);
    };
    const Copies copies = read();
    const auto make = [&] {
        Control control;
        open(control, frame);
    };
    return Measure(make, [&] { copies.MakeAndDestroy(frame); });
}

// The row that every control has. `open` makes a control that has something to be given before.
template <class Control>
void OpenInItsSize(Control& control, HWND parent) {
    Require(control.Create(parent, 0, 0, -1, -1, true, true) != nullptr, "the control has no window");
}
template <class Control, void (*open)(Control&, HWND) = OpenInItsSize<Control>>
Row CreationRow(const std::string& name) {
    return {name + ", create and destroy", "the same windows made directly", 1.3,
            [] { return MeasureCreation<Control>(open); }};
}

// Paints the whole window, and its children, at once.
void Repaint(HWND window);

}  // namespace kx::bench
