// The field diaphragm: image buttons that repeat while they are held, one with a menu and one that stays down, and a
// check box; another is taken over from the platform's.
#pragma once

#include <array>
#include <optional>
#include <utility>

#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_imagebutton.h>

#include "../host_panel.h"

class FieldPanel : public HostPanel {
public:
    FieldPanel() : HostPanel(L"Field diaphragm") {}
    void Fill();
    void ShowValues() override;

    // Of the tour: smaller, larger, the presets, the centring; follows the objective, the host refuses.
    CKxDevUI_ImageButton& Button(int index) { return m_buttons[static_cast<std::size_t>(index)]; }
    CKxDevUI_CheckBox& Box(int index) { return m_boxes[static_cast<std::size_t>(index)]; }

protected:
    bool OnUser(int, int, HWND) override { return false; }

private:
    class AskingButton : public CKxDevUI_ImageButton {
    public:
        void Init(FieldPanel& panel, double step) { m_panel = &panel, m_step = step; }

    protected:
        void OnClickRequest(bool& veto) override;
        void OnStateChangeRequest(bool on, bool& veto) override;
        void OnMenuRequest(int opening) override;

    private:
        FieldPanel* m_panel = nullptr;
        double m_step = 0;  // percent
    };
    class AskingBox : public CKxDevUI_CheckBox {
    public:
        // Without a wish it is the switch that makes the host refuse.
        void Init(FieldPanel& panel, std::optional<Wish> wish) { m_panel = &panel, m_wish = std::move(wish); }

    protected:
        void OnStateChangeRequest(int state, bool& veto) override;

    private:
        FieldPanel* m_panel = nullptr;
        std::optional<Wish> m_wish;
    };

    bool Open(double opening);
    // Why it is refused, which is told beside the button.
    bool Grants(const Wish& wish, double value) const;

    std::array<AskingButton, 4> m_buttons;
    std::array<AskingBox, 2> m_boxes;
};
