// For authors of controls, the one header to include: all that a control is built from, and what controls answer alike.
#pragma once

#include <functional>

#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_members.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

// The looks of a control's own window, whose children do the rest: the face behind them, painted so, and the zoom.
// Empty for every other message.
KXDEVUI_API Handled HandleFace(const Message& message, PaintMode mode);

// WM_CTLCOLORSTATIC: texts stand on the face, grey where they cannot be used.
KXDEVUI_API LRESULT AnswerTextColor(const Message& message, bool enabled);

// WM_ENABLE: enables or disables all windows in this one. The focus leaves those that are disabled, so a host may have
// ended anything afterwards.
KXDEVUI_API void EnableAll(HWND window, bool enable);

// While it lives, parts of a window may be disabled or hidden; a focus that is lost to nobody by that goes to the
// window, if that can be used.
class KXDEVUI_API KeepsFocus {
public:
    // From here to the end of the scope.
    explicit KeepsFocus(HWND window) noexcept;
    ~KeepsFocus();
    KeepsFocus(const KeepsFocus&) = delete;
    KeepsFocus& operator=(const KeepsFocus&) = delete;

private:
    HWND m_window;
    bool m_had;
};

// What a host has made of a request. Gone: it has ended the control, nothing of which may be touched.
enum class Answer { Agreed, Refused, Gone };

// Asks the control's host by `ask`, which calls a callback with the flag that it is given; a host that sets it refuses,
// and so does one that throws.
template <class T, class Ask>
Answer AskHost(T* control, Ask&& ask) noexcept {
    const Alive alive(static_cast<RootOf<T>*>(control));
    bool refused = false;
    const Handled asked = Guarded([&]() -> Handled { return ask(refused), 0; });
    if (!alive) return Answer::Gone;
    return refused || !asked ? Answer::Refused : Answer::Agreed;
}

// Asks by a callback whether there may be this value, and shows that when it is agreed:
// `AskHost(this, &Lamp::OnPowerRequest, power, &Lamp::SetPower)`.
template <class T, class Request, class Value, class Set>
Answer AskHost(T* control, Request request, const Value& value, Set set) {
    const Answer answer = AskHost(control, [&](bool& veto) { std::invoke(request, control, value, veto); });
    if (answer == Answer::Agreed) std::invoke(set, control, value);
    return answer;
}

}  // namespace kx::ui
