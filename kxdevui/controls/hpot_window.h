// Internal to the slider's sources.
#pragma once

#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_life.h>

// What belongs to the window rather than to the object, which a host may copy.
struct CKxDevUI_HPot::WindowPart {
    kx::hpot::ScaleImage scale;

    // The thumb as the window shows it, and where its trace ends.
    RECT shownRect{};
    RECT shownTrace{};
    int shownLook = -1;
    // Whether the window has the focus; asking the platform takes longer than painting.
    bool focused = false;

    // The drag: where it began, which position the thumb had there, where the mouse was last, and whether it may still
    // turn out a quick click.
    bool dragging = false;
    POINT press{};
    POINT last{};
    long start = 0;
    unsigned pressTime = 0;
    bool quick = false;
};

// Over a call to the host: whether the object is still there, with the same window.
class CKxDevUI_HPot::Watch {
public:
    explicit Watch(const CKxDevUI_HPot* slider) noexcept
        : m_slider(slider), m_alive(static_cast<const CKxDevUI_Base*>(slider)), m_window(slider->m_hWnd) {}
    explicit operator bool() const noexcept { return m_alive && m_slider->m_hWnd == m_window; }

private:
    const CKxDevUI_HPot* m_slider;
    kx::ui::Alive m_alive;
    HWND m_window;
};
