// For authors of controls: a small window beside a control, in front of everything: the answer to what was typed, the
// card of an objective. It takes neither focus nor mouse.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// What such a window shows.
struct BesidePicture {
    std::wstring text;  // all of it in words, for screen readers
    SIZE size{};        // pixels of the screen
    // Draws it over the colour of tooltips.
    std::function<void(HDC, RECT)> draw;
};

// One such window at a time, below its anchor, above it where the screen ends. It belongs to the process, never to an
// object that may go before its window: whatever it calls has to ask whether what it touches still lives.
class KXDEVUI_API Beside {
public:
    // `name` is that of the window class.
    explicit Beside(const wchar_t* name) noexcept : m_name(name) {}
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    // What ends it beside the end of its anchor: Escape, wherever the focus is, which nobody else hears then.
    enum class Ends { ByItself, ByEscape };
    // Shows it in the place of the one before, as long as the anchor is on screen and `stays`, which is asked ten times
    // a second, says so; that may show and end as it likes. Null for an anchor that is not on screen.
    HWND Show(HWND anchor, BesidePicture picture, std::function<bool()> stays, Ends ends = Ends::ByItself);
    // From now on it shows this, where the anchor stands now; nothing is drawn when it does so already.
    void Change(BesidePicture picture);
    void End();

    // Null while nothing is shown.
    HWND Window() const noexcept { return m_window; }
    HWND Anchor() const noexcept { return m_anchor; }

private:
    struct Unhook {
        void operator()(void* hook) const noexcept { UnhookWindowsHookEx(static_cast<HHOOK>(hook)); }
    };

    static LRESULT CALLBACK HearKey(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
    void LookAgain();
    void Gone();

    const wchar_t* m_name;
    ATOM m_atom = 0;
    HWND m_window = nullptr;
    HWND m_anchor = nullptr;
    BesidePicture m_picture;
    std::function<bool()> m_stays;
    std::unique_ptr<std::remove_pointer_t<HHOOK>, Unhook> m_hook;
};

}  // namespace kx::ui
