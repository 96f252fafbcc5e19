// The field diaphragm: image buttons that repeat while they are held, one with a menu and one that stays down, and a
// check box; another is taken over from the platform's.
#pragma once

#include <array>

#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_imagebutton.h>

#include "../host_panel.h"

class FieldPanel : public HostPanel {
public:
    FieldPanel() : HostPanel(L"Field diaphragm") {}
    void Fill();

    // Of the tour: smaller, larger, the presets, the centring; follows the objective, the host refuses.
    CKxDevUI_ImageButton& Button(int index) { return m_buttons[static_cast<std::size_t>(index)]; }
    CKxDevUI_CheckBox& Box(int index) { return m_boxes[static_cast<std::size_t>(index)]; }

protected:
    bool OnUser(int, int, HWND) override { return false; }

private:
    class AskingButton : public CKxDevUI_ImageButton {
    public:
        void Init(FieldPanel& panel, int step) { m_panel = &panel, m_step = step; }

    protected:
        void OnClickRequest(bool& veto) override;
        void OnStateChangeRequest(bool on, bool& veto) override;
        void OnMenuRequest(int opening) override;

    private:
        FieldPanel* m_panel = nullptr;
        int m_step = 0;  // percent
    };
    class AskingBox : public CKxDevUI_CheckBox {
    public:
        void Init(FieldPanel& panel, bool& held) { m_panel = &panel, m_held = &held; }

    protected:
        void OnStateChangeRequest(int state, bool& veto) override;

    private:
        FieldPanel* m_panel = nullptr;
        bool* m_held = nullptr;
    };

    bool Open(int opening);
    void ShowOpening();

    std::array<AskingButton, 4> m_buttons;
    std::array<AskingBox, 2> m_boxes;
};
