// kx::ui::ButtonControl: the root of controls that are one of the platform's buttons.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>

#include <kxdevui/framework/devgui_control.h>

namespace kx::ui {

class Activity;

// A control whose window is filled by one of the platform's buttons, with a state from 0 on.
//
// In a dialog the window stands for the button: CheckDlgButton and IsDlgButtonChecked work with its id, and so do,
// while there is no sign of an activity (devgui_activity.h), GetDlgItemText and SetDlgItemText. A "&" in the title
// underlines the letter by which a dialog clicks it. Tab stops at it.
class KXDEVUI_API ButtonControl : public Control {
public:
    ~ButtonControl() override;

    using Control::Create;
    // In the place of an existing control of a dialog, which is destroyed: at the same place, in the same font, at the
    // same place in the tab order, as shown, enabled and focused as that, and with its id unless SetId has given one
    // (other than 0). The title is its text. Null, and nothing is touched, for what is no control of another window, or
    // of one other than `parent` if that is given, and for one that belongs to a control of the library already.
    HWND Create(HWND parent, HWND placeholder);

    // The text of the button.
    void SetTitle(const wchar_t* title) override;

    // What rests beside the mouse; null and the empty text show none.
    void SetToolTip(const wchar_t* text);
    CKxStringW GetToolTip() const { return m_toolTip; }

    // The button; null without a window.
    HWND GetButtonHandle() const noexcept { return m_button; }

protected:
    // Who draws the button.
    enum class Drawn { ByPlatform, ByControl };
    // For the control T that is being made.
    template <class T>
    ButtonControl(T* self, const Design& design, Drawn drawn) : Control(self, design), m_drawn(drawn) {
        Begin();
    }

    // Makes the button, with `procedure` before its own, or ours; one drawn by the control has it in its state
    // (kx::ui::ByState). False when the control has gone.
    bool MakeButton(const Parts& parts, DWORD style, WNDPROC procedure = ButtonProc);
    // The messages of the window that a derived control leaves to this.
    std::optional<LRESULT> HandleWindow(const Message& message);

    // Holds a state; true when it is another one, which is shown then.
    bool Hold(int state);
    void ShowState() const;
    // Whether the device's position is known.
    bool IsKnown() const;
    // Asks the host by `ask`; a refusal is told beside the button. True when it agrees, and neither has ended the
    // control nor set a state meanwhile, which has the last word.
    bool IsGranted(int state, const std::function<void(bool& veto)>& ask);
    // Tells the parent: WM_COMMAND with this id, code 0 and the window. The answer refuses nothing.
    void NotifyParent(int id) const;

    // The title is the text of the placeholder.
    void Adopt(HWND placeholder);

    // The state; the button, null without a window; the life of its requests.
    int m_state = 0;
    HWND m_button = nullptr;
    std::unique_ptr<Activity> m_requests;

private:
    static LRESULT CALLBACK ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
    void Begin();
    void Layout() const;
    RECT SignPlace() const;
    void ShowTip();
    void FollowScheme() const;

    Drawn m_drawn;
    unsigned m_sets = 0;  // how often a state was set
    CKxStringW m_toolTip;
};

}  // namespace kx::ui
