// CKxDevUI_Nosepiece: the panel of a revolving objective nosepiece.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/optics/devgui_objectivecard.h>
#include <kxsystem/kx_string.h>

class IKxDeviceNosepiece;
namespace kx::ui {
struct Message;
}

// Shows an objective for each position, its magnification above it, a setup button, and, if wanted, a titled frame and
// a strip of buttons for the modes of observation. A click on a position asks the host; the panel moves no device.
//
//     class Turret : public CKxDevUI_Nosepiece {
//         void OnPositionChangeRequest(long position, bool& handled) override {
//             handled = true;                    // the selection follows the device, not the click
//             m_device.MoveTo(position);
//         }
//     };
//     turret.Init(&device);
//     turret.Create(parent, 10, 10, 240, 80);
//     turret.Update(&device, {.names = true, .position = true, .parameters = true});   // and again with what has
//     changed
//
// Positions count from 0; there are at most 16. An index that is not there is ignored by setters and answered with 0 or
// an empty text by getters; a null text is the empty text. All measures are unzoomed pixels.
//
// With the keyboard, the arrow keys move between the positions that are available and the setup button, Space or Enter
// clicks.
//
// The panel is no CKxDevUI_Base: a container takes it for a plain window. Its parent is told nothing.
class KXDEVUI_API CKxDevUI_Nosepiece {
public:
    // 256 by 72, no positions, titled with the translation of "Nosepiece".
    CKxDevUI_Nosepiece();
    CKxDevUI_Nosepiece(const CKxDevUI_Nosepiece&) = delete;
    CKxDevUI_Nosepiece& operator=(const CKxDevUI_Nosepiece&) = delete;
    // Destroys the window.
    virtual ~CKxDevUI_Nosepiece();

    // Makes the window at (x, y) in the parent's client area, in pixels of the screen (CKxGUILayoutManager::Zoomed of
    // what was laid out), visible, and its parts, all sizes unzoomed; an earlier window is destroyed first. A negative
    // size keeps the one held. The flags are ignored.
    HWND Create(HWND parent, long x, long y, long width, long height, bool, bool);
    // Without them.
    HWND Create(HWND parent, long x, long y, long width, long height) {
        return Create(parent, x, y, width, height, true, true);
    }
    // Destroys the window; what was set stays, for another Create.
    void Destroy();
    operator HWND() const noexcept;

    // How many positions there are (0 to 16, others are moved there), which is the current one (-1: none; one that is
    // not there is kept, and nothing is shown as selected), who decides on the selection: with `deviceDriven` a click
    // leaves it to the device, unless `localSelect` is set too. No position is available then; Update asks the device.
    // A window that stands is not rebuilt.
    void Init(long count, long position, bool deviceDriven, bool localSelect);
    // Who decides, by name.
    struct Deciding {
        // As above.
        bool deviceDriven = false;
        bool localSelect = false;
    };
    // See Deciding.
    void Init(long count, long position, const Deciding& who) {
        Init(count, position, who.deviceDriven, who.localSelect);
    }
    // The same from a device, with what is available; false, and nothing is changed, for null and for a device that
    // throws an exception, which is logged.
    bool Init(IKxDeviceNosepiece* device);

    // Reads the device anew: its structure (a change rebuilds the parts), the objectives' names and magnifications, the
    // current position, and the parameters of the objectives with what is available. The last flag is not used. False,
    // and nothing is changed, for null and for a device that throws. Sends the host no request. The message 0x0500 with
    // these flags (NosepieceBand in devgui_messages.h) does the same by the device's number.
    bool Update(IKxDeviceNosepiece* device, bool structure, bool names, bool position, bool parameters, bool);
    // The same by name.
    bool Update(IKxDeviceNosepiece* device, const kx::ui::NosepieceBand& what) {
        return Update(device, what.structure, what.names, what.position, what.parameters, what.unused);
    }

    // Selects a position, silently. The current one and those that are not there, -1 among them, are ignored.
    void SetPosition(long position);
    long GetPosition() const noexcept;

    // Name and numbers of an objective: its name is the first line of the tooltip, the number that the magnification
    // begins with decides on the colour, NA is the numerical aperture, WD the working distance in micrometres.
    void SetName(long position, const wchar_t* name);
    CKxStringW GetName(long position) const;
    void SetMagnification(long position, const wchar_t* magnification);
    CKxStringW GetMagnification(long position) const;
    void SetNA(long position, double aperture);
    double GetNA(long position) const;
    void SetWD(long position, double distance);
    double GetWD(long position) const;

    // Has cards show in the place of the tooltips (devgui_objectivecard.h); nothing, as at first, gives the tooltips
    // back. Shows the card of a position at once: false where none is on screen, or there is nothing to be said; hides
    // the one that is shown.
    void SetCards(std::optional<SKxObjectiveCards> cards);
    bool ShowCard(long position);
    void HideCard();

    // The text of the frame.
    void SetTitle(const wchar_t* title);
    CKxStringW GetTitle() const;

    // While not enabled, clicks on positions are ignored, labels and objectives are pale; the setup button works. With
    // `frameToo` the frame follows. Without positions only the frame does: the panel stays as enabled as it was.
    void SetEnable(bool enable, bool frameToo);
    // The same by name.
    enum class Enabled { Positions, PositionsAndFrame };
    void SetEnable(bool enable, Enabled what) { SetEnable(enable, what == Enabled::PositionsAndFrame); }

    // The strip of observation modes: how many buttons there are (0 to 4; at first 2, "Eyepieces" and "Camera") and
    // their texts, for the next Create; the mode that is marked, others are ignored; whether the strip is shown, off at
    // first. A click on a mode calls `request` with it and marks nothing by itself.
    void SetObservationModes(const std::vector<CKxStringW>& texts);
    void SetObservationMode(int mode);
    int GetObservationMode() const noexcept;
    void ShowObservationMode(bool show);
    void SetObservationRequest(std::function<void(int mode)> request);

    // The setup button's distance from the left, -1 (as at first) to stand at the right, for the next Create.
    void SetSetupXOffset(int x) noexcept { m_setupX = x; }
    // Puts a position at x instead of in the row, and another number than position + 1 into its image; for the next
    // Create, the number at once.
    void SetSpecificXOffsetAndNumber(int position, bool useX, int x, bool useNumber, int number);
    // The same, with nothing for what is not to be used.
    void SetSpecificXOffsetAndNumber(int position, std::optional<int> x, std::optional<int> number) {
        SetSpecificXOffsetAndNumber(position, x.has_value(), x.value_or(0), number.has_value(), number.value_or(0));
    }

    // Whether the Tab key stops at the panel; off at first.
    void SetTabStop(bool stop);

    // The panel of each window.
    static std::map<HWND, CKxDevUI_Nosepiece*> m_Instances;

protected:
    // The user clicks a position, the current one included. Left false, `handled` lets the panel select the position by
    // itself, if it may (see Init); set to true, the host selects, now or later. The panel may be updated, destroyed or
    // deleted from here.
    virtual void OnPositionChangeRequest(long position, bool& handled);
    // The user clicks the setup button.
    virtual void OnSetupRequest() {}

    // ---- For panels derived from this one ----

    // Makes all children anew, from what is held, or only takes them away. Nothing is made without a window.
    void CreateControls();
    void DestroyControls();
    // Repaints the buttons of the positions, or of the observation modes.
    void RedrawButtons() const;
    void RedrawObservation() const;

    // What the messages of the panel, its buttons and its frame lead to, with their parameters. A WM_COMMAND is
    // answered with 1 when it was a click on a position or the setup button, else with 0.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    void OnDrawItem(const DRAWITEMSTRUCT& item);
    void OnDrawItem_Observation(const DRAWITEMSTRUCT& item);
    LRESULT OnEraseBkGnd(HDC dc);
    void OnMouseMove(WPARAM wParam, LPARAM lParam);
    void OnMouseLeave();
    void Btn_OnMouseMove(HWND button, WPARAM wParam, LPARAM lParam);
    void Btn_OnMouseLeave(HWND button);
    LRESULT Group_OnPaint(HWND frame);
    LRESULT Group_OnEraseBkGnd();
    // The window procedures of panel, buttons and frame.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK BtnWndProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK GroupWndProc(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);

    // The image for a magnification: the template in the colour of the objective's ring.
    CKxStringA GetObjectiveBitmap(double magnification, bool selected) const;

    // ---- Layout, for the next Create or change of structure ----

    // The size of the window; the row of positions: left end, set by Update to 8 when there are more than 6 positions
    // and to 16 otherwise, width, gap, and the rows of labels and of buttons with their heights; the strip's left edge.
    long m_width = 256;
    long m_height = 72;
    int m_firstX = 16;
    int m_buttonWidth = 24;
    int m_buttonGap = 8;
    int m_labelY = 20;
    int m_labelHeight = 16;
    int m_buttonY = 40;
    int m_buttonHeight = 30;
    int m_setupX = -1;
    int m_observationX = 175;
    // A frame; one that is larger than the window; its title in bold type.
    bool m_hasFrame = true;
    bool m_oversizeFrame = false;
    bool m_boldTitle = false;

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

private:
    // The windows, and what is held.
    struct Inside;

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    std::optional<LRESULT> HandleFrame(const kx::ui::Message& message);
    void Click(long position);

    const std::unique_ptr<Inside> m_inside;
};
