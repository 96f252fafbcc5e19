// Internal to kxbaseui: what the layout manager remembers of windows.
//
// A table of this module's and not the windows' own properties, which under Wine are kept by another process: asking
// for one costs as much as moving a window. Windows that are gone leave it when it is full. Until then their handles
// are not given out again: the system counts the lives of a handle's place in the handle itself.
#pragma once

#include <windows.h>

#include <array>
#include <vector>

namespace kx {

// Position in the parent's client area and size; of a dialog or a top-level window, the client area's size; of a
// drop-down, the height of its list.
struct Dims {
    long x = 0, y = 0, width = 0, height = 0;
    friend bool operator==(const Dims&, const Dims&) = default;
};

// What the platform's controls want different ways for.
enum class WindowKind { Other, Dialog, Edit, ListBox, ComboBox, ComboBoxEx };

// A measure inside of a window: the unzoomed one, what it was last set to, and whether it is followed. One that the
// platform has from the font alone is not.
struct InnerMeasure {
    long unzoomed = 0, placed = -1;
    bool isFollowed = false;
};

// Belongs to the GUI thread.
class WindowDims {
public:
    // The unzoomed rectangle, and where the window was last seen placed.
    struct Entry {
        HWND window = nullptr;
        bool known = false;  // an unknown one is as good as not there
        WindowKind kind = WindowKind::Other;
        bool isRagged = false;  // a list box of whole rows whose height is none
        bool isPlaced = false;  // whether its place is known, and not its size alone
        double sizedAt = 0;     // the zoom that it has its size from
        Dims unzoomed;
        Dims placed;
        std::array<InnerMeasure, 2> inner;
    };

    // Null when nothing is remembered. The entry stays where it is until the next Add.
    Entry* Find(HWND window) noexcept;
    // The entry of a window, made when there is none; null when memory runs out.
    Entry* Add(HWND window) noexcept;
    void Forget(HWND window) noexcept;

private:
    Entry* Slot(HWND window) noexcept;
    void MakeRoom();

    std::vector<Entry> m_entries;  // a power of two of them, at most half of them in use
    std::size_t m_used = 0;
};

}  // namespace kx
