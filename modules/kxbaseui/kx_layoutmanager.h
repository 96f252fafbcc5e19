// The GUI zoom, and the sizes of windows under it.
//
// The manager remembers for each window its unzoomed rectangle. Zooming places the window at that rectangle times the
// zoom, never at its present place times a ratio: zooming away and back ends at the very same pixels, and a zoom that
// is applied twice is applied once. A window that somebody else has moved or sized since it was last placed is taken at
// its new place.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// The zoom of the process and the places of windows under it; static functions only.
class KXBASEUI_API CKxGUILayoutManager {
public:
    // The zooms that are taken, and those that come of zoom and scale: a product outside is the nearer end.
    static constexpr double MinimumZoom = 0.25;
    static constexpr double MaximumZoom = 8.0;

    // The scales that are taken: monitors of 48 to 1152 dpi.
    static constexpr double MinimumScale = 0.5;
    static constexpr double MaximumScale = 12.0;

    // Sent by SetGuiZoom and SetGuiScale, with both parameters 0.
    static constexpr UINT ZoomChangedMessage = 0x83FA;

    // The zoom at which windows are drawn, and the one before it: what the user has chosen times the scale of the
    // host's window. 1.0 is 100 % at 96 dpi, both are 1.0 at first.
    static double GetGuiZoom();
    static double GetPreviousGuiZoom();
    // Its two factors.
    static double GetUserZoom();
    static double GetGuiScale();

    // Changes the user's zoom: remembers the present rectangles of all windows of the calling thread, keeps the old
    // zoom as the previous one, and sends ZoomChangedMessage to every window of the thread, parents before children.
    // The same zoom again sends nothing. A zoom that is not a number or outside the range is refused, logged, and
    // changes nothing. A window may change the zoom again while it is being told; the later zoom then goes to all
    // windows, and the earlier one to no more. Returns whether the zoom given is now in force.
    static bool SetGuiZoom(double zoom);
    // The same for the scale, which KX_FollowScaleOf (kx_guiscale.h) keeps at that of the host's window.
    static bool SetGuiScale(double scale);

    // `unzoomed` pixels times the current zoom, rounded half away from zero.
    static long Zoomed(double unzoomed);
    // The reverse: pixels on the screen divided by the current zoom, rounded in the same way.
    static long Unzoomed(double zoomed);

    // Places the windows below `window` for the current zoom, gives them and it their fonts in the size that belongs to
    // it, sizes `window` itself (a framed window by its client area) and repaints it. Its position is its parent's
    // business and stays. A window of which nothing is remembered counts as made for `previousZoom`: 1.0 for one just
    // laid out in unzoomed pixels. The inner windows of the platform's own controls are left to those. Child dialogs
    // are sized by their client area too; a drop-down's list, an edit's margins and heights of rows that somebody has
    // set go with the zoom.
    static void ResizeWindowToGuiZoom(HWND window, double previousZoom);

    // Forgets the remembered rectangles of `window` and of all windows below it. Called when children have been laid
    // out anew, before ResizeWindowToGuiZoom(window, 1.0).
    static void DeleteWindowDimsForGuiZoom(HWND window);
    // Takes the places of all windows below as those of the present zoom, and moves nothing: after somebody has moved
    // windows on the screen, so that nobody takes them for unzoomed places.
    static void RememberWindowDimsForGuiZoom(HWND window);
    // Takes the window's own size as one of the present zoom, wherever it stands: of a window that is laid out in
    // unzoomed pixels, but sized by what it shows.
    static void RememberWindowSizeForGuiZoom(HWND window);

    // Windows of this class place their children themselves, whenever they are sized: those are left alone, as in the
    // platform's combo boxes, list views, rebars and their like, which need not be named. Null or empty adds nothing.
    static void AddClassWithOwnLayout(const wchar_t* windowClass);
};
