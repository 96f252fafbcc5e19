// The panels that come from dialog templates: a whole one, two parts of one, the adopted region of a dialog, and a
// modal one.
#pragma once

#include "../held_values.h"
#include "../host_panel.h"

// A whole template.
class CameraPanel : public HostPanel {
public:
    CameraPanel() : HostPanel(L"Camera") {}

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnUser(int id, int code, HWND from) override;
};

// One of the two parts of the lamps' template.
class LampPanel : public HostPanel {
public:
    LampPanel(const wchar_t* name, HeldValues::Lamp& lamp, int switchId, int levelId)
        : HostPanel(name), m_lamp(lamp), m_switchId(switchId), m_levelId(levelId) {}
    void ShowState();
    void ShowValues() override { ShowState(); }

protected:
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override;

private:
    void Ask(const Asked& asked, const CKxStringW& told);

    HeldValues::Lamp& m_lamp;
    int m_switchId;
    int m_levelId;
};

// Adopts the condenser controls of the stand's dialog.
class CondenserPanel : public HostPanel {
public:
    CondenserPanel() : HostPanel(L"Condenser") {}

protected:
    bool OnUser(int id, int code, HWND from) override;
};

// The rest of the stand's dialog: its own container, made from the whole template.
class StandPanel : public HostPanel {
public:
    StandPanel() : HostPanel(L"Stand") {}
    void AdoptCondenser();

protected:
    bool OnUser(int id, int code, HWND from) override;

private:
    CondenserPanel m_condenser;
};

// The modal dialog.
class SeriesDialog : public HostPanel {
public:
    SeriesDialog() : HostPanel(L"Time series") {}

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnUser(int id, int code, HWND from) override;

private:
    bool Accept();
};
