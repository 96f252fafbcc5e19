// For authors of controls: a control of somebody's dialog that one of the library's takes the place of.
#pragma once

#include <windows.h>

#include <optional>

#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {

// The control of a dialog as it stands: what is taken from it before it ends.
struct KXDEVUI_API Placeholder {
    HWND window;
    HWND parent;
    RECT place;  // in the parent's client area
    int id;
    bool tabStop;
    bool visible;
    bool enabled;

    // Empty, and logged, for no window, for one of the library's own controls or a part of one, and for one of another
    // parent than the one given (null: any).
    static std::optional<Placeholder> Of(HWND parent, HWND window);

    // Puts `control` into its place, its size and its place in the tab order, gives it the focus if the old control has
    // that, and ends the old control. That may end anything else: what has got the focus, or lost it, is told of.
    void GiveTo(HWND control) const;
};

}  // namespace kx::ui
