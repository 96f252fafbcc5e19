// What the host's panels have in common: each is a container that logs what it hears before it acts on it.
#pragma once

#include <functional>
#include <string>

#include <kxdevui/framework/devgui_container.h>

#include "text.h"
#include "wishes.h"

class HostPanel : public CKxDevUI_Container {
public:
    // `name` is what the log calls the panel.
    explicit HostPanel(const wchar_t* name) : m_name(name) {}
    ~HostPanel() override { Destroy(); }

    const wchar_t* Name() const { return m_name; }

    // Turns off the light that the panel alone has in hand. Devices are turned off by themselves.
    virtual void TurnLightOff() {}
    // What no device of the registry holds may have changed.
    virtual void ShowValues() {}

protected:
    // The panel's own reaction to a command of the user. True when the command was meant for it.
    virtual bool OnUser(int id, int code, HWND from) = 0;

    // A switch with this id, at the panel's lower edge, that makes the host refuse what is asked for here; what it says
    // outlives the panel. Without one it says no.
    void AddRefusal(int id);
    bool Refuses() const;
    // For a panel with a switch of its own kind there: it says so, and keeps what it is set to.
    void OwnRefusal(int id) { m_refusal = id; }
    void SetRefuses(bool refuses) const;
    // The user asks for something here: whether the host and the device agree.
    bool Asks(Wish wish, double value) const;

    // Tells the user, in the status line, what was asked of the microscope.
    void Tell(const std::wstring& text);

    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnDestroy(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override;
    void OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

    // Children in unzoomed pixels, taken into the container: any control of the platform's; a bold title with a line
    // below, over the whole width; a check box.
    HWND AddChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, int x, int y, int cx, int cy);
    void AddCaption(const wchar_t* text);
    HWND AddCheckBox(const wchar_t* text, int id, int x, int y);

    // Moves a scroll bar as the user asks and returns its new position, 0 to 100.
    static int FollowScrollBar(WPARAM wParam, HWND bar);

private:
    const wchar_t* m_name;
    int m_refusal = 0;  // the id of its switch
};

// Where Tell's texts go.
void SetStatusSink(std::function<void(const std::wstring&)> sink);
