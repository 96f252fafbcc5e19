// The slider against a bare window and the platform's own slider.
#include <windows.h>

#include <commctrl.h>
#include <oleacc.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/framework/devgui_container.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr SIZE kSize{200, 40};

// A host that takes every value, and is asked through its window.
class Panel : public CKxDevUI_Container {
public:
    explicit Panel(HWND parent) {
        Require(Create(parent, 0, 0, 300, 200, true, true) != nullptr, "there is no container");
    }
    int told = 0;

protected:
    LRESULT OnScroll(UINT, WPARAM, LPARAM, bool) override { return ++told; }
};

class Slider : public CKxDevUI_HPot {
public:
    explicit Slider(HWND parent) {
        Require(Create(parent, 0, 0, kSize.cx, kSize.cy, true, true) != nullptr, "there is no slider");
    }
};

// The thumb changes what is at its place.
void RequirePicture(Slider& slider) {
    const auto pixel = [&] {
        Repaint(slider);
        return GetPixel(kx::ui::WindowDC(slider), kSize.cx / 2, 8);
    };
    const COLORREF before = pixel();
    slider.SetValue(50, false);
    Require(pixel() != before, "the slider does not paint its thumb");
}

Ratio SliderRepaint() {
    const Frame frame;
    const BareWindow bare(frame, kSize);
    Slider slider(frame);
    RequirePicture(slider);
    return Measure([&] { Repaint(slider); }, [&] { Repaint(bare); });
}

Ratio DragStep() {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const Frame frame;
    Panel panel(frame);
    Slider slider(panel);
    RequirePicture(slider);
    const HWND trackbar = CreateWindowExW(0, TRACKBAR_CLASSW, nullptr, WS_CHILD | WS_VISIBLE | TBS_AUTOTICKS, 0, 220,
                                          kSize.cx, kSize.cy, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    Require(trackbar != nullptr, "there is no trackbar");
    const auto move = [&](int x) { SendMessageW(slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, 8)); };
    const auto place = [&](int position) {
        SendMessageW(trackbar, TBM_SETPOS, TRUE, position);
        UpdateWindow(trackbar);
    };

    SendMessageW(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 8));
    move(40), move(160);
    Require(panel.told == 2 && slider.GetValue() > 80, "the slider does not follow the mouse");
    Require(GetUpdateRect(slider, nullptr, FALSE) == FALSE, "a step is not painted");
    const Ratio ratio = Measure([&] { move(40), move(160); }, [&] { place(20), place(80); });
    SendMessageW(slider, WM_LBUTTONUP, 0, MAKELPARAM(100, 8));
    return ratio;
}

// Ten steps while somebody listens for this event, who hears of them at once.
class Listened {
public:
    explicit Listened(DWORD event)
        : m_hook(SetWinEventHook(event, event, nullptr, Hear, GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT)) {}
    ~Listened() {
        // The mouse of the screen is not to move the thumb.
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        UnhookWinEvent(m_hook);
    }
    Listened(const Listened&) = delete;
    Listened& operator=(const Listened&) = delete;
    static inline int heard = 0;

private:
    static void CALLBACK Hear(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) { ++heard; }
    HWINEVENTHOOK m_hook;
};

Ratio DragStepListened() {
    const Frame frame;
    Panel panel(frame);
    Slider slider(panel);
    IAccessible* client = nullptr;
    AccessibleObjectFromWindow(slider, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                               reinterpret_cast<void**>(&client));
    Require(client != nullptr, "the slider answers no client");
    const auto move = [&](int x) { SendMessageW(slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, 8)); };
    const auto steps = [&](DWORD event) {
        const Listened listened(event);
        for (int i = 0; i < 5; ++i)
            move(40), move(160);
    };
    SendMessageW(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 8));
    steps(EVENT_OBJECT_VALUECHANGE);
    Require(Listened::heard == 10, "a step is not heard once");
    const Ratio ratio = Measure([&] { steps(EVENT_OBJECT_VALUECHANGE); }, [&] { steps(EVENT_OBJECT_HELPCHANGE); });
    SendMessageW(slider, WM_LBUTTONUP, 0, MAKELPARAM(100, 8));
    client->Release();
    return ratio;
}

Ratio CreateSlider() {
    const Frame frame;
    return Measure([&] { const Slider slider(frame); }, [&] { DestroyWindow(MakeBareWindow(frame, kSize)); });
}

// clang-format off
const Rows s_rows{{
    {"slider, full repaint", "a bare window that copies a ready bitmap", 1.25, SliderRepaint},
    {"slider, one drag step with callback and repaint", "a stock trackbar: TBM_SETPOS and update", 0.5, DragStep},
    {"slider, drag step while a screen reader listens", "the same while nobody does", 1.3, DragStepListened},
    {"slider, create and destroy", "a bare window with 16 extra bytes and a font", 1.3, CreateSlider},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
