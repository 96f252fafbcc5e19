// CKxDevUI_CheckBox: a check box of two or three states that asks before it changes.
#pragma once

#include <windows.h>

#include <optional>

#include <kxdevui/controls/devgui_buttoncontrol.h>

// What a check box shows; the numbers are the platform's (BST_...).
enum EKxCheckState : int {
    eKxCheckState_Off = 0,
    eKxCheckState_On = 1,
    eKxCheckState_Mixed = 2,  // of those with three states
};

// A check box with its text, made by itself or in the place of one of a dialog. A click, or the space bar, asks the
// host by OnStateChangeRequest, and unless that refuses, the new state is shown: on after off, mixed after on where
// there are three states, off after the last. A state that is set tells nobody.
//
//     m_live.Create(dialog, GetDlgItem(dialog, IDC_LIVE));
//
// A dialog that knew the check box before goes on with it: it gets WM_COMMAND with the id and code 0 (BN_CLICKED) for
// each click, and the state that is asked for from IsDlgButtonChecked meanwhile.
class KXDEVUI_API CKxDevUI_CheckBox : public kx::ui::ButtonControl {
public:
    // 120 by 16 unzoomed pixels, off, of two states, without a title.
    CKxDevUI_CheckBox();
    ~CKxDevUI_CheckBox() override;

    using ButtonControl::Create;
    // See ButtonControl. Of another check box, number of states, state and alignment are taken as well; of anything
    // else, the text alone.
    HWND Create(HWND parent, HWND placeholder) { return ButtonControl::Create(parent, placeholder); }

    // Two states or three, any time. Mixed becomes on where there are two.
    void SetThreeState(bool threeState);
    bool IsThreeState() const noexcept { return m_threeState; }

    // The state, an EKxCheckState. One that the check box has not is logged, and changes nothing.
    void SetState(int state);
    int GetState() const noexcept { return m_state; }

protected:
    // The user wants this state. Setting `veto` keeps the one that is. The control may be deleted from here. Here:
    // WM_COMMAND with the control's id, code 0 and its window goes to the parent, whose answer refuses nothing.
    virtual void OnStateChangeRequest(int state, bool& veto);

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Adopt(HWND placeholder);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    DWORD Style() const noexcept;

    bool m_threeState = false;
    DWORD m_alignment = 0;        // as the placeholder had it: BS_LEFTTEXT, BS_PUSHLIKE and their like
    std::optional<int> m_wanted;  // what the host is being asked for
};
