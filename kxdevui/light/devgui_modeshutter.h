// CKxDevUI_ModeShutter: the row of a smart shutter, with its mode and its aperture.
#pragma once

#include <windows.h>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxdevui/light/modeshutter_rules.h>

namespace kx::ui {
class Activity;
struct Message;
}  // namespace kx::ui

// From left to right: a title, if wanted, a drop-down list of the modes that the device offers, and a slider with an
// edit box for the aperture, which can be moved in the mode "Aperture" alone. A line above may part the row from
// others.
//
// The user's choices go to the host by the protected callbacks, which may refuse them; then the row shows what it held
// before, but for an aperture that was typed: it is shown already when the host is asked, and stays. The control never
// sets the device. What the device does arrives through Update, from the host or by the message 0x0500, whose four
// flags are those of Update in their order.
//
// Set-up, in this order: construct; SetSeparator, SetShowTitle, SetShowModes, SetTitle; Init; Create. The flags hold
// from the next CreateControls on.
class KXDEVUI_API CKxDevUI_ModeShutter : public CKxDevUI_Base {
public:
    // 256 by 32, with the list alone, without a device.
    CKxDevUI_ModeShutter();
    // The slider's windows belong to the slider inside.
    CKxDevUI_ModeShutter(const CKxDevUI_ModeShutter&) = delete;
    CKxDevUI_ModeShutter& operator=(const CKxDevUI_ModeShutter&) = delete;
    // Destroys the window.
    ~CKxDevUI_ModeShutter() override;

    // ---- The device ----

    // Reads the shutter's apertures, mode and state from the device manager; shows nothing yet. False, and nothing
    // changed, for the id 0, and when the device throws an exception, which is logged. A number that no shutter has
    // counts as one that is closed, without steps and modes.
    bool Init(unsigned shutterId);

    // Shows what the device manager tells: `steps` reads the apertures anew and makes the child windows anew, with
    // the modes that the device manager knows the shutter to offer; then `mode`, `state` and `aperture`, in this order.
    // False, and nothing changed, for the id 0, and when the device throws an exception, which is logged.
    bool Update(unsigned shutterId, bool steps, bool aperture, bool state, bool mode);
    // The same from the device itself. False for null, and when the device throws. The message 0x0500 with these flags
    // (ModeShutterBand in devgui_messages.h) does this by its number.
    bool Update(IKxDeviceShutter* device, bool steps, bool aperture, bool state, bool mode);
    // Either by name.
    template <class Device>
    bool Update(Device device, const kx::ui::ModeShutterBand& what) {
        return Update(device, what.steps, what.aperture, what.state, what.mode);
    }

    // Forgets the apertures; the slider stays until the next CreateControls.
    void Done();

    // The mode held. When it differs, the list shows it, or nothing if it does not offer it, and the slider can be
    // moved exactly if it is 2. The host is not asked.
    void SetMode(EKxShutterMode mode);
    EKxShutterMode GetMode() const;

    // The aperture held, in percent. When it differs, the slider shows the nearest step, the later of two equally near.
    // The host is not asked. What is not a finite number is ignored.
    void SetAperture(double aperture);
    double GetAperture() const;

    // The state held, true for open.
    void SetState(bool open);
    bool GetState() const;

    // The index of the step nearest to an aperture, the later of two equally near; -1 when there are no steps.
    long FindApertureIndex(double aperture) const;

    // ---- The window ----

    // A row at (x, y) in the parent's client area, sized by the zoom. A negative width or height keeps the one held.
    // The row is visible whatever `visible` says, and `enabled` is not used: SetVisible decides, and the mode. Null
    // when there is no window, or a host has ended it meanwhile.
    HWND Create(HWND parent, long x, long y, long width, long height, bool visible, bool enabled) override;
    // Destroys the windows; nobody is told.
    void Destroy();
    // Destroys the child windows; makes them anew. Without a window nothing is made.
    void DestroyControls();
    void CreateControls();
    // Draws the list and the slider at once.
    void RedrawButtons();

    // Whether a line stands above the row, a title at its left, a list of modes after it. At first only the list.
    void SetSeparator(bool show);
    bool GetSeparator() const;
    void SetShowTitle(bool show);
    bool GetShowTitle() const;
    void SetShowModes(bool show);
    bool GetShowModes() const;

    // The title; it is shown at once where there is one.
    void SetTitle(const wchar_t* title) override;

    // Whether Tab stops at the list and at the slider with its field, also at those that are made later. At first it
    // does not.
    void SetTabStop(bool stop);

    // Offered to the slider.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // ---- Callbacks: each may destroy the window and the object; here they do nothing ----

    // The user wants another aperture, one of the steps. Setting `veto` keeps the one held.
    virtual void OnApertureChangeRequest(double aperture, bool& veto);
    // For rows derived from this one, which have a button for it.
    virtual void OnStateChangeRequest(bool state, bool& veto);
    // The user has chosen a mode from the list, maybe the one held. Setting `veto` keeps the one held.
    virtual void OnModeChangeRequest(EKxShutterMode mode, bool& veto);

    // WM_COMMAND of the window: 1 for a choice in the list, 0 for everything else.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    // The window procedure.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create; the rows by window.
    static ATOM m_Atom;
    static std::map<HWND, CKxDevUI_ModeShutter*> m_Instances;

    // The slider of apertures: hands what the user wants to its row.
    class KXDEVUI_API CKxDevGUI_ColorSlider : public CKxDevUI_ColorSlider {
    public:
        // Whom it belongs to; set before it is created.
        CKxDevUI_ModeShutter* m_owner = nullptr;
        using CKxDevUI_ColorSlider::m_requests;

    protected:
        // See OnApertureChangeRequest of the row.
        void OnPowerChanged(double& value, bool& veto) override;
    };

    // The number of the device, 0 for none; its steps in percent; the modes that it offers.
    unsigned m_shutterId = 0;
    std::vector<double> m_apertures;
    // What is held.
    double m_aperture = 0;
    long m_apertureIndex = -1;
    bool m_state = false;
    EKxShutterMode m_mode = eKxShutterMode_Fast;
    // What is shown, and the windows for it.
    bool m_separator = false;
    bool m_showTitle = false;
    bool m_showModes = true;
    HWND m_separatorWindow = nullptr;
    HWND m_titleWindow = nullptr;
    HWND m_modeList = nullptr;
    std::array<bool, kx::modeshutter::kModes> m_modesOffered{};  // by the device, when it last told
    CKxDevGUI_ColorSlider m_slider;

private:
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    struct Reading;
    void Load(unsigned shutterId, const std::vector<double>& apertures);
    template <class Shutter>
    bool Show(unsigned id, const Shutter& shutter, std::array<bool, 4> flags);
    void FillModes();
    void SelectMode();
    void MakeSlider(long x);
    void ArrangeTabStops();
    void EnableSlider();
    void FollowWindow(bool enabled);
    void OnAperture(double aperture, bool& veto);
    void ShowRequests();
    RECT SignPlace() const;

    // The life of its requests, which the slider draws where there is one.
    const std::unique_ptr<kx::ui::Activity> m_requests;
    bool m_tabStop = false;
};
