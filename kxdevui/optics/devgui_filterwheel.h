// CKxDevUI_FilterWheel: the panel of a filter changer.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {
struct Message;
}

// Shows the filters of a wheel, turret or slider as a grid of buttons, each in the colours of the filter's bands; a
// setup button; a titled frame or a title beside the buttons. A click asks the host; the panel moves no device.
//
//     class Emission : public CKxDevUI_FilterWheel {
//         void OnPositionChangeRequest(long position, bool& refuse) override { refuse = !m_wheel.MoveTo(position); }
//     };
//     emission.Create(parent, 10, 10, 256, 48);
//     emission.Update(&wheel, {.structure = true, .names = true, .position = true});   // and again with what has
//     changed
//
// Positions count from 0; the first 16 are shown. An index that is not there is ignored by setters and answered with an
// empty text by getters; a null text is the empty text. All measures are unzoomed pixels.
//
// With the keyboard, the arrow keys move between the filters and the setup button, Space or Enter clicks.
//
// The panel is no CKxDevUI_Base: a container takes it for a plain window. Its parent is told nothing.
class KXDEVUI_API CKxDevUI_FilterWheel {
public:
    // 256 wide, no filters, titled with the translation of "Filter".
    CKxDevUI_FilterWheel();
    CKxDevUI_FilterWheel(const CKxDevUI_FilterWheel&) = delete;
    CKxDevUI_FilterWheel& operator=(const CKxDevUI_FilterWheel&) = delete;
    // Destroys the window.
    virtual ~CKxDevUI_FilterWheel();

    // Makes the window at (x, y) in the parent's client area, in pixels of the screen (CKxGUILayoutManager::Zoomed of
    // what was laid out), visible, and its parts, all sizes unzoomed; an earlier window is destroyed first. A negative
    // size keeps the one held; the height then follows the rows of filters. The flags are ignored.
    HWND Create(HWND parent, long x, long y, long width, long height, bool, bool);
    // Without them.
    HWND Create(HWND parent, long x, long y, long width, long height) {
        return Create(parent, x, y, width, height, true, true);
    }
    // Destroys the window; what was set stays, for another Create.
    void Destroy();
    operator HWND() const noexcept;

    // Reads the device anew: its structure (which rebuilds the parts and gives the title), the filters' names, the
    // current position. False, and nothing is changed, for null, for a number that no filter changer has, and for a
    // device that throws an exception, which is logged. Sends the host no request. The message 0x0500 with these flags
    // (FilterWheelBand in devgui_messages.h) does the same by the device's number.
    bool Update(IKxDeviceFilterChanger* device, bool structure, bool names, bool position);
    bool Update(unsigned int device, bool structure, bool names, bool position);
    // Either by name.
    template <class Device>
    bool Update(Device device, const kx::ui::FilterWheelBand& what) {
        return Update(device, what.structure, what.names, what.position);
    }

    // Selects a position, silently; -1 is none. The current one and those that are not there are ignored.
    void SetPosition(long position);
    long GetPosition() const noexcept;

    // The filter at a position, which gives the button its colours and its tooltip; and a title of the host's own for
    // it, which the panel only keeps.
    void SetFilterName(long position, const wchar_t* name);
    CKxStringW GetFilterName(long position) const;
    void SetFilterTitle(long position, const wchar_t* title);
    CKxStringW GetFilterTitle(long position) const;

    // The text of frame and title.
    void SetTitle(const wchar_t* title);
    CKxStringW GetTitle() const;

    // Enables or disables the filters and the setup button, if that is allowed at all; with `frameToo` the frame and
    // the title follow.
    void SetEnable(bool enable, bool frameToo);
    // The same by name.
    enum class Enabled { Filters, FiltersAndTitles };
    void SetEnable(bool enable, Enabled what) { SetEnable(enable, what == Enabled::FiltersAndTitles); }
    // Shows or hides the window.
    void SetVisible(bool visible);

    // The image of a filter: the template with as many bands as the filter has colours, five at most, in these colours.
    // The empty template for an empty name, "Empty", and a filter that nobody knows.
    CKxStringA CreateFilterSVGString(CKxStringW& name);
    CKxStringA CreateFilterSVGStringSquare(CKxStringW& name);

    // Whether the Tab key stops at the panel; off at first.
    void SetTabStop(bool stop);

    // The panel of each window.
    static std::map<HWND, CKxDevUI_FilterWheel*> m_Instances;

protected:
    // The user clicks a filter, the current one included. Set to true, `refuse` lets the selection spring back; left
    // false, the panel selects the filter, unless the changer is one that knows its position and has no motor: then
    // only the device moves the selection. The panel may be updated, destroyed or deleted from here.
    virtual void OnPositionChangeRequest(long position, bool& refuse);
    // The user clicks the setup button.
    virtual void OnSetupRequest() {}

    // ---- For panels derived from this one ----

    // Makes all children anew, from what is held, or only takes them away. Nothing is made without a window.
    void CreateControls();
    void DestroyControls();
    // Repaints the buttons of the filters.
    void RedrawButtons() const;

    // What the messages of the panel and its buttons lead to, with their parameters. A WM_COMMAND is answered with 1
    // when it was a click on a filter or the setup button, else with 0.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    void OnDrawItem(const DRAWITEMSTRUCT& item);
    LRESULT Btn_OnLButtonDown(HWND button, WPARAM wParam, LPARAM lParam);
    // The window procedures of panel, buttons and frame.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK BtnWndProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK GroupWndProc(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);

    // ---- Layout, for the next Create or structure ----

    // The size of the window (the height is computed); the place of the title; the grid of buttons: first column,
    // width, gaps, buttons in a row, first row, height; the setup button's distance from the left, -1 to stand at the
    // right.
    long m_width = 256;
    long m_height = 48;
    int m_titleX = 0;
    int m_titleY = 0;
    int m_titleWidth = 30;
    int m_titleHeight = 32;
    int m_firstX = 16;
    int m_buttonWidth = 24;
    int m_gapX = 0;
    int m_gapY = 0;
    int m_columns = 8;
    int m_firstY = 16;
    int m_buttonHeight = 24;
    int m_setupX = -1;
    // A frame; one that is larger than the window; a title beside the buttons, at the left of its place instead of
    // centred; titles in bold type; the height computed from the title; whether the setup button may be enabled.
    bool m_hasFrame = true;
    bool m_oversizeFrame = false;
    bool m_hasTitle = false;
    bool m_titleLeft = false;
    bool m_boldTitle = false;
    bool m_heightFromTitle = false;
    bool m_setupAllowed = true;

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

private:
    // The windows, and what is held.
    struct Inside;

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    std::optional<LRESULT> HandleFrame(const kx::ui::Message& message);
    void Click(long position);
    bool SetupEnabled() const;
    void AddButtons();

    const std::unique_ptr<Inside> m_inside;
};
