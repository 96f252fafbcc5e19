// CKxDevUI_ZStack: the panel on which the user defines a Z series.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <kxbaseui/kx_guielement.h>
#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/framework/ui_window.h>

// Edits a record of the host's (kxdevices/kx_zstackdata.h): what is typed is turned into calls of its setters, what
// they answer is told to the user, and every change to the host. The record is the judge of every value; the panel
// rounds and limits nothing. It moves nothing either: going somewhere is a request to the host.
//
// The host derives from the panel and supplies the callbacks. After OnZStackChanged it stores the record and calls
// UpdateGUI with the flags it was given. A callback may destroy the panel, window and object.
//
// The order of the virtual operations is part of the binary interface.
class KXDEVUI_API CKxDevUI_ZStack : public CKxGUIControlElement {
public:
    // What is to be refreshed: the positions, with the type and the device; the step with the number of planes; all.
    static constexpr unsigned int RefreshPositions = 1;
    static constexpr unsigned int RefreshStep = 2;
    static constexpr unsigned int RefreshAll = 3;

    // The answer to "outside the device's range, move the other end?" that the user wants given for the rest of the
    // session, for all panels: 0 ask, 1 Yes, any other No. Set by the dialog's check box.
    static int iKeepRange;

    // No window, no record.
    CKxDevUI_ZStack();
    // The copy shows the same window and record; the window's messages go on to the panel that made it.
    CKxDevUI_ZStack(const CKxDevUI_ZStack& other);
    CKxDevUI_ZStack& operator=(const CKxDevUI_ZStack& other);
    // Destroys the window if this panel made it.
    ~CKxDevUI_ZStack() override;

    // Makes the panel in the language of the user interface at (x, y) in the parent's client area, cx by cy unzoomed
    // pixels, of which one that is not above 0 means the template's; destroys a previous one. The record has to
    // outlive the panel. Null without a record, or when the window cannot be made. No callback is called.
    HWND Create(HWND parent, CKxZStackData* data, long x, long y, long cx, long cy, bool visible, bool enabled);

    // Destroys the window and forgets record and devices; without one, or for a copy, only forgets them. No callback is
    // called: what an edit held is lost.
    void Destroy();

    // Adds a Z device to the list, in the order of the record's: its name, whether it is a piezo, its logical id, its
    // range in micrometres, whether a rising Z takes the objective away from the slide, the mode of its piezo picker,
    // and whether it is selected in the list. Returns its index, or -1 for a null or empty name.
    virtual long AppendZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax,
                               bool inverted, int pickerMode, bool select);

protected:
    // The user has chosen an entry of the piezo button's menu: 0 is home, 1 home with Z kept. Here that becomes
    // OnGoHomeRequest; `mode` is the picker's.
    virtual void OnPiezoPickerChanged(unsigned int entry, int mode);

    // The step has been changed by typing it; `typed` is true.
    virtual void OnStepChanged(double step, bool typed) = 0;
    // The user wants Z to go there.
    virtual void OnMoveZRequest(double z) = 0;
    // The user wants the piezo at its home, with Z moving along or, with `keepZ`, with the focus kept.
    virtual void OnGoHomeRequest(bool keepZ) = 0;
    // For the host's own use; the panel never calls it.
    virtual void OnHostRequest() = 0;
    // A refresh begins, for the record's device.
    virtual void OnZDeviceShown(unsigned int device) = 0;
    // The record has, or may have, been changed by the user: the flags say what of the panel is to be refreshed.
    virtual void OnZStackChanged(unsigned int flags) = 0;

    // WM_ERASEBKGND: the panel paints its whole area, so nothing is erased; 1.
    virtual LRESULT OnEraseBkGnd(UINT message, WPARAM wParam, LPARAM lParam);

public:
    // Shows what the record holds, where that differs from what is shown, but for an edit in which the user is typing.
    // OnZDeviceShown comes first, unless the record
    // has no device. Flags as above; without a window nothing happens.
    void UpdateGUI(unsigned int flags);

protected:
    // Each takes the text of an edit, at most 15 characters of it, to the record, and ends with OnZStackChanged(3), but
    // for two: ValidateHome ends with UpdateGUI(3), so that the host is not told, and ValidateStep with OnStepChanged,
    // when the step was taken, and OnZStackChanged(2). Nothing entered, or "N/A", is fine and changes nothing.
    //
    // True when the text was taken or asks for nothing. False for a text that is no number ("Invalid value entered.")
    // or a value that the record refuses ("Value is out of range."); the message boxes come up only with `showErrors`
    // and over a panel that is visible by itself. False also, with nothing done and nobody told, when another
    // validation of this panel is under way, or the type is not right: ValidateRange works for types 2 and 6, and it,
    // ValidateRangeMax and ValidateRangeMin need a record that tells its type.
    //
    // ValidateBottom and ValidateHome read the same edit.
    bool ValidateTop(bool showErrors);
    bool ValidateBottom(bool showErrors);
    bool ValidateHome(bool showErrors);
    // The whole range, around home or, without one, around 0. At the device's lower end the home moves; it stays moved
    // when the top is refused after that and both ends go back to what they were.
    bool ValidateRange(bool showErrors);
    // The edits above and below: distances from home for types 3 and 7, whatever their sign, positions for the others.
    // Outside the device's range the user is asked whether the other end shall move (iKeepRange); a No is not told
    // again by a message box.
    bool ValidateRangeMax(bool showErrors);
    bool ValidateRangeMin(bool showErrors);
    bool ValidateStep(bool showErrors);
    // A whole number and anything after it; a negative one goes to the record as the unsigned number it converts to.
    bool ValidateSteps(bool showErrors);

    // The window procedure of the panel.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The dialog procedure of "YESNOKEEPDLG", a question with Yes, No, Cancel and a check box for the rest of the
    // session. The creation parameter is the question, a wide text. The dialog ends with 2001 for Yes and 2002 for No,
    // negative with the box checked, and 2003 for Cancel, Escape and the close box.
    static INT_PTR CALLBACK YesNoKeepDlg(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    // The registered window class, and the panels by their windows.
    static ATOM m_Atom;
    static std::map<HWND, CKxDevUI_ZStack*> m_Instances;

    // One Z device of the list, as AppendZDevice got it.
    struct ZDevice {
        std::wstring name;  // as the list shows it
        bool piezo;         // moves the sample or the objective by a piezo
        long id;            // logical device id
        double rangeMin;    // in micrometres
        double rangeMax;    // likewise
        bool inverted;      // a rising Z takes the objective away from the slide
        int pickerMode;     // of the piezo picker
    };

    // The record, not owned; the devices.
    CKxZStackData* m_data = nullptr;
    std::vector<ZDevice> m_devices;

    // A control of the panel by its id; null without a window.
    HWND Item(int id) const;

    // Whether the window is the panel's or in it; null is neither.
    bool IsMyWindow(HWND window) const;

private:
    enum class Verdict { Taken, NotANumber, OutOfRange, Declined };
    using Apply = std::function<Verdict(const wchar_t* text)>;
    using Refresh = std::function<void()>;
    using Position = std::optional<double>;

    kx::ui::Handled Handle(const kx::ui::Message& message);
    bool MadeWindow() const;

    static Verdict VerdictOf(int status);
    bool Validate(int edit, bool showErrors, const Refresh& refresh, const Apply& apply);
    bool ValidateNumber(int edit, bool showErrors, const Refresh& refresh, const std::function<Verdict(double)>& apply);
    bool ValidateEnd(bool above, bool showErrors);
    Refresh Telling(unsigned int flags);
    void Complain(Verdict verdict, bool showErrors);
    Verdict SetRange(double range);
    Verdict SetEnd(bool above, double position);
    bool MayMoveOtherEnd(bool above);

    kx::ui::Handled OnCommand(int id, int code);
    kx::ui::Handled OnClicked(int id);
    kx::ui::Handled OnEditFocus(int id);
    kx::ui::Handled OnEditLeft(int id);
    bool& Dirty(int id);
    void MakeRelative();
    void ChooseType(int type);
    void TakeSuggestedStep();
    bool ValidateEdit(int id, bool showErrors);

    Position Known(int (CKxZStackData::*getter)(double*) const) const;
    void ShowEntry(int id, const wchar_t* text);
    void ShowText(int id, const wchar_t* text);
    void ShowItem(int id, bool show);
    void ShowPositions();
    void ShowSteps();

    // An edit that has the focus is the user's: a refresh leaves it alone.
    struct {
        bool step, below, range, count, above;
    } m_dirty{};
    bool m_validating = false;
};
