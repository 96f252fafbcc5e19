// Fields for numbers: one value, one with arrows, a list, and one in the place of a dialog's control.
#pragma once

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

#include "../host_panel.h"

class EditPanel : public HostPanel {
public:
    EditPanel() : HostPanel(L"Fields") {}
    void Fill();
    void ShowValues() override;
    CKxDevUI_EditBox& Exposure() { return m_exposure; }
    CKxDevUI_EditBoxSpin& Gain() { return m_gain; }
    CKxDevUI_EditBoxMultiValue& Wavelengths() { return m_wavelengths; }

protected:
    bool OnUser(int id, int code, HWND from) override;

private:
    void AddField(CKxDevUI_EditBox& field, int id, const wchar_t* label, int row);
    void Check(int id, bool show);
    void Accept(double& held, CKxDevUI_EditBox& field, const wchar_t* told);
    void AcceptWavelengths();
    void ShowHeld();

    CKxDevUI_EditBox m_exposure;
    CKxDevUI_EditBoxSpin m_gain;
    CKxDevUI_EditBoxMultiValue m_wavelengths;
    CKxDevUI_EditBox m_delay;
};
