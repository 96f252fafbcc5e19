// The XY stage: a container made empty and filled with controls of the library and with one of the host's own.
#pragma once

#include <array>

#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/controls/devgui_imagebutton.h>

#include "../host_panel.h"
#include "../rules/stage_place.h"

// Shows the step of the stage and changes it with the mouse wheel: 1, 2, 5, 10, ... 1000 micrometres. A container made
// by the host and inserted into another as an element.
class StageStep : public HostPanel {
public:
    StageStep() : HostPanel(L"Stage step") {}

    // Micrometres.
    int Step() const;
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnUser(int, int, HWND) override { return false; }

private:
    void Show();
};

class StagePanel : public HostPanel {
public:
    StagePanel() : HostPanel(L"Stage") {}
    void Fill();
    void ShowValues() override;
    CKxDevUI_ComboBox& Marks() { return m_marks; }

protected:
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    // Asks for a step as long as it is held.
    class Arrow : public CKxDevUI_ImageButton {
    public:
        void Init(StagePanel& panel, int x, int y) { m_panel = &panel, m_x = x, m_y = y; }

    protected:
        void OnClickRequest(bool& veto) override;

    private:
        StagePanel* m_panel = nullptr;
        int m_x = 0, m_y = 0;  // steps
    };
    // A name that is chosen is gone back to, a new one is given to where the stage is.
    class MarkList : public CKxDevUI_ComboBox {
    public:
        explicit MarkList(StagePanel& panel) : m_panel(panel) {}

    protected:
        void OnSelectionChangeRequest(int index, bool& veto) override;
        void OnValueChangeRequest(const wchar_t* value, bool& veto) override;

    private:
        StagePanel& m_panel;
    };

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR panel, DWORD);
    bool GoTo(const kx::host::StagePlace& place);
    void ShowPosition();
    void ShowMarks();

    StageStep m_step;
    std::array<Arrow, 4> m_arrows;
    CKxDevUI_EditBox m_x, m_y;
    MarkList m_marks{*this};
};
