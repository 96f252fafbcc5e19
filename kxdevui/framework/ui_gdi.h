// For authors of controls: owning types for GDI objects and device contexts, nothing here is released by hand.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace kx::ui {

// Deletes what DeleteObject deletes.
struct GdiDeleter {
    // Called by the owner.
    void operator()(void* object) const noexcept { DeleteObject(object); }
};
// Owns one GDI object; empty when it could not be made.
template <class Handle>
using GdiPtr = std::unique_ptr<std::remove_pointer_t<Handle>, GdiDeleter>;
using Bitmap = GdiPtr<HBITMAP>;
using Brush = GdiPtr<HBRUSH>;
using Pen = GdiPtr<HPEN>;
using Font = GdiPtr<HFONT>;
using Region = GdiPtr<HRGN>;

// Deletes a memory DC.
struct DcDeleter {
    // Called by the owner.
    void operator()(void* dc) const noexcept { DeleteDC(static_cast<HDC>(dc)); }
};
// Owns a memory DC. It goes before the bitmap selected into it does.
using MemoryDC = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

// The client-area DC of a window (of the screen for null), given back at the end of the scope.
class WindowDC {
public:
    // Null when the window is gone.
    explicit WindowDC(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~WindowDC() { ReleaseDC(m_window, m_dc); }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    // The DC, for the platform's functions.
    operator HDC() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// An object selected into a DC until the end of the scope; a null object selects nothing.
class Selection {
public:
    // Both have to outlive the selection.
    Selection(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(object ? SelectObject(dc, object) : nullptr) {}
    ~Selection() {
        if (m_previous) SelectObject(m_dc, m_previous);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// A DC's whole state (clip region, selected objects, colours, modes), put back at the end of the scope.
class SavedDC {
public:
    // The DC has to outlive this.
    explicit SavedDC(HDC dc) : m_dc(dc), m_state(SaveDC(dc)) {}
    ~SavedDC() { RestoreDC(m_dc, m_state); }
    SavedDC(const SavedDC&) = delete;
    SavedDC& operator=(const SavedDC&) = delete;

private:
    HDC m_dc;
    int m_state;
};

}  // namespace kx::ui
