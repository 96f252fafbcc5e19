// Owning types for GDI objects and device contexts: nothing here is released by hand.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace kx::ui {

struct GdiDeleter {
    void operator()(void* object) const noexcept { DeleteObject(object); }
};
template <class Handle>
using GdiPtr = std::unique_ptr<std::remove_pointer_t<Handle>, GdiDeleter>;
using Bitmap = GdiPtr<HBITMAP>;
using Brush = GdiPtr<HBRUSH>;
using Pen = GdiPtr<HPEN>;
using Font = GdiPtr<HFONT>;
using Region = GdiPtr<HRGN>;

struct DcDeleter {
    void operator()(void* dc) const noexcept { DeleteDC(static_cast<HDC>(dc)); }
};
using MemoryDC = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

// The client-area DC of a window (of the screen for null), given back at the end of the scope.
class WindowDC {
public:
    explicit WindowDC(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~WindowDC() { ReleaseDC(m_window, m_dc); }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    operator HDC() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// An object selected into a DC until the end of the scope; a null object selects nothing.
class Selection {
public:
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
    explicit SavedDC(HDC dc) : m_dc(dc), m_state(SaveDC(dc)) {}
    ~SavedDC() { RestoreDC(m_dc, m_state); }
    SavedDC(const SavedDC&) = delete;
    SavedDC& operator=(const SavedDC&) = delete;

private:
    HDC m_dc;
    int m_state;
};

}  // namespace kx::ui
