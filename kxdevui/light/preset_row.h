// kx::ui::PresetRow: the buttons in a control of a lamp that keep intensities.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <utility>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/light/lamp_rules.h>

struct KxAccess;
namespace kx::ui {

struct Message;
class Parts;

// Three buttons side by side in a control's window, each with the intensity that it keeps; the one that is held is
// down. A click, Space or Enter recalls. Held down for a second, by the mouse or Space, a button stores, and so does
// Shift+Enter; a line in it grows meanwhile, and Escape, a pointer that leaves it and all that takes the mouse away are
// the end of it. What one does is told to the control, and done by that; the row holds what it shows.
class KXDEVUI_API PresetRow {
public:
    // How many there are.
    static constexpr int kCount = 3;
    // How long a button is held until it stores, in milliseconds.
    static constexpr unsigned kHold = 1000;

    // The buttons have the ids from `first` on; none keeps anything.
    explicit PresetRow(int first) : m_first(first) {}

    // Makes the buttons, `gap` pixels apart, all in unzoomed pixels. False when the control has gone.
    bool Make(const Parts& parts, const RECT& place, long gap);
    // What a button of the control's window keeps; empty, as all that is no finite number, is nothing. A number that no
    // button has is ignored, and keeps nothing.
    void Keep(HWND control, int preset, std::optional<double> intensity);
    std::optional<double> Kept(int preset) const noexcept;
    // The scale of the lamp, its unit and what is held. What a button keeps that lies off the scale is grey.
    void Show(HWND control, const lamp::Scale& scale, int unit, double held);

    // What the user wants of a button.
    struct Wish {
        // Its number; whether it is to store.
        int preset;
        bool stores;
    };
    // What WM_COMMAND tells of it; empty for everything else, and for what keeps nothing that could be recalled.
    std::optional<Wish> WishOf(int id, int code) const noexcept;
    // What screen readers are told of a button of the row; false for every other window.
    bool Tell(HWND button, KxAccess& access) const;
    // WM_DRAWITEM of a button: true when it was that.
    bool Draw(const Message& message) const;

private:
    CKxStringW TextOf(int preset) const;
    bool CanRecall(int preset) const noexcept;
    bool IsDown(int preset) const noexcept;
    // Which can be recalled, and which of them is down.
    using Looks = std::array<std::pair<bool, bool>, kCount>;
    Looks LooksNow() const noexcept;
    void ShowChanges(HWND control, const Looks& before) const;

    int m_first;
    std::array<std::optional<double>, kCount> m_kept;
    lamp::Scale m_scale;
    int m_unit = eKxLampUnit_Percent;
    double m_held = 0;
};

}  // namespace kx::ui
