// What a camera takes and how: a combo box, one to type in, and list boxes of one value and of several.
#pragma once

#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>

#include "../host_panel.h"

class ListPanel : public HostPanel {
public:
    ListPanel() : HostPanel(L"Lists") {}
    void Fill();
    void ShowValues() override;

protected:
    bool OnUser(int, int, HWND) override { return false; }

private:
    // Tells the log what the user wants of a list, which shows it already; true when the host refuses it.
    bool Declines(kx::ui::ListControl& list, const wchar_t* request, const wchar_t* value);
    Asked WantedOf(kx::ui::ListControl& list);

    template <class List>
    struct Of : List {
        explicit Of(ListPanel& panel) : m_panel(panel) {}

    protected:
        void OnSelectionChangeRequest(int index, bool& veto) override {
            veto = m_panel.Declines(*this, L"OnSelectionChangeRequest", this->GetValueName(index));
        }
        ListPanel& m_panel;
    };
    struct Combo : Of<CKxDevUI_ComboBox> {
        using Of::Of;

    protected:
        void OnValueChangeRequest(const wchar_t* value, bool& veto) override;
    };
    struct List : Of<CKxDevUI_ListBox> {
        using Of::Of;

    protected:
        void OnSelectionsChangeRequest(const std::vector<int>& indexes, bool& veto) override;
    };

    Combo m_dye{*this}, m_exposure{*this};
    List m_mode{*this}, m_channels{*this};
};
