// CKxDevUI_ZStack: the panel on which the user defines a Z series.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <kxbaseui/kx_guielement.h>
#include <kxbaseui/kx_menu.h>
#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {
class Activity;
struct Allowed;
struct Field;
struct Message;
}  // namespace kx::ui
namespace kx::zstack {
struct Axis;
struct Label;
struct ScaleValues;
enum class Grip;
enum class Meaning;
}  // namespace kx::zstack

// Edits a record of the host's (kxdevices/kx_zstackdata.h): what is typed is turned into calls of its setters, what
// they answer is told to the user, and every change to the host. The record is the judge of every value; the panel
// rounds and limits nothing: a text that nobody has typed stands for the number behind it, so that passing through a
// field changes nothing. It moves nothing either: going somewhere is a request to the host. What a record throws is
// logged: a getter that throws leaves what is shown, a setter has refused.
//
// The host derives from the panel and supplies the callbacks. After OnZStackChanged it stores the record and calls
// UpdateGUI with the flags it was given. A callback may destroy the panel, window and object.
//
// The fields of step, range and number of planes are validated when the focus leaves them; Tab, Shift+Tab and Enter
// move on, Escape puts back what was last set. The fields beside Top, Home and Bottom show
// positions; a double click there, or the space bar, asks for Z to go there, and so does a click on the Z scale. Grips
// beside the scale (EnableGrips) move the ends and the home of the series, and never Z.
//
// A host may make the fields beside Top (EditTop) and Bottom (EditBottom) writable, with EM_SETREADONLY. When one of
// these loses the focus, the panel's parent gets WM_COMMAND with its id and EN_KILLFOCUS, and the host calls
// ValidateTop or, for the other, ValidateBottom, or ValidateHome where that row shows the home; when that refuses the
// text, the panel takes the focus back. The field beside Home (1261) only shows.
//
// WM_KX_UPDATE_DEVICE_BAND (devgui_messages.h) with one flag, refresh, is UpdateGUI(3), whatever the device.
//
// The order of the virtual operations is part of the binary interface.
class KXDEVUI_API CKxDevUI_ZStack : public CKxGUIControlElement {
public:
    // What is to be refreshed: the positions, with the type and the device; the step with the number of planes; all.
    static constexpr unsigned int RefreshPositions = 1;
    static constexpr unsigned int RefreshStep = 2;
    static constexpr unsigned int RefreshAll = 3;
    // Only where Z stands: to be called whenever Z moves, it costs the repaint of the mark.
    static constexpr unsigned int RefreshZ = 4;

    // The fields that a host may make writable.
    static constexpr int EditTop = 1260;
    static constexpr int EditBottom = 1262;

    // The commands of CustomCommand: the command whose name `data` points to (wide text), "GOHOME" or "GOHOMEKEEP".
    static constexpr int CommandByName = 1;

    // The entries of the piezo button's menu.
    static constexpr unsigned int PiezoHome = 0;
    static constexpr unsigned int PiezoHomeKeepZ = 1;
    // The picker's mode in which there is no menu: the button does its entry, and nothing else can be chosen.
    static constexpr int PiezoPickerFixed = CKxMenuPicker::Fixed;

    // The answer to "outside the device's range, move the other end?" that the user wants given for the rest of the
    // session, for all panels: 0 ask, 1 Yes, any other No. Set by the dialog's check box.
    static int iKeepRange;

    // No window, no record.
    CKxDevUI_ZStack();
    // The copy shows the same window and record; the window's messages go on to the panel that made it, and the window
    // goes with that.
    CKxDevUI_ZStack(const CKxDevUI_ZStack& other);
    CKxDevUI_ZStack& operator=(const CKxDevUI_ZStack& other);
    // Destroys the window if this panel made it.
    ~CKxDevUI_ZStack() override;

    // Makes the panel in the language of the user interface at (x, y) in the parent's client area, in pixels of
    // the screen (CKxGUILayoutManager::Zoomed of what was laid out), cx by cy unzoomed pixels, of which one that is not
    // above 0 means the template's; destroys a previous one. The record has to outlive the panel. Null without a
    // record, or when the window cannot be made. No callback is called.
    HWND Create(HWND parent, CKxZStackData* data, long x, long y, long cx, long cy, bool visible, bool enabled);

    // Destroys the window and forgets record and devices; without one, or for a copy, only forgets them. No callback is
    // called: what an edit held is lost.
    void Destroy();

    // Lets go of what painting keeps, the off-screen bitmaps; the next painting makes them anew.
    void DestroyGDIObjects();

    // Adds a Z device to the list, in the order of the record's: its name, whether it is a piezo, its logical id, its
    // range in micrometres, whether the stand is inverted (IKxDeviceZDrive::IsInverted), the mode of its piezo picker,
    // and whether it is selected in the list. Returns its index, or -1 for a null or empty name, or without a window.
    // Names may occur twice.
    //
    // "AZ100 ZDrive" and "Ardon LV ZDrive LV-FMA" move the objective over the slide: `inverted` does not count for
    // them.
    virtual long AppendZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax,
                               bool inverted, int pickerMode, bool select);

    // The same for list and record at once: the record gets a device with that range and, with `select`, uses it from
    // now on. -1 also when the record refuses it, or has other devices than the list, and then nothing is added.
    long AddZDevice(const wchar_t* name, bool piezo, long id, double rangeMin, double rangeMax, bool inverted,
                    int pickerMode, bool select);

    // The same by name.
    struct NewZDevice {
        // As above, in the same order.
        const wchar_t* name = nullptr;
        bool piezo = false;
        long id = 0;
        double rangeMin = 0;
        double rangeMax = 0;
        bool inverted = false;
        int pickerMode = 0;
        bool select = false;
    };
    // See NewZDevice.
    long AddZDevice(const NewZDevice& device) {
        return AddZDevice(device.name, device.piezo, device.id, device.rangeMin, device.rangeMax, device.inverted,
                          device.pickerMode, device.select);
    }

    // Empties the list, and the record's with `record`; with `refresh` follows UpdateGUI(3).
    void ClearZDevices(bool record, bool refresh);
    // The same by name.
    struct ClearedToo {
        // As above, in the same order.
        bool record = false;
        bool refresh = false;
    };
    void ClearZDevices(const ClearedToo& too) { ClearZDevices(too.record, too.refresh); }

    // Shows what the record holds, where that differs from what is shown, but for an edit in which the user is typing.
    // OnZDeviceShown comes first, unless the record has no device. Flags as above; without a window nothing happens.
    void UpdateGUI(unsigned int flags);

    // Paints the whole panel anew, at once.
    void Redraw();

    // Which entry the piezo button does on a click, PiezoHome or PiezoHomeKeepZ, others being ignored: it is written
    // into the record (SetKeepZOnPiezoHome). And the mode of its menu: PiezoPickerFixed, or any other for one with both
    // entries, which is handed to OnPiezoPickerChanged. Another device brings the mode that it was appended with.
    void SetPiezoPickerMode(unsigned int entry, int mode);

    // Shows, beside the type buttons, the sample with the objective above or, on an inverted stand, below; not at
    // first.
    void EnableCube(bool enable);

    // Puts grips beside the magnified scale, with which the user drags the ends and the home, or moves them by keys,
    // and lets the wheel magnify the scale; not at first.
    //
    // A grip is asked of the record with every step, as if its position were typed without moving the other end; the
    // ends of a symmetric stack go together (SetBottom, SetTop). OnZStackChanged(3) follows when the record has taken
    // it. What it refuses leaves the grip where it was taken last, which the user is told when the drag ends; a host
    // refuses by putting its record back, and may say why (KX_SayWhyRefused). Escape, and the mouse being taken away,
    // put all back as it was before, by the same calls. OnMoveZRequest is never called.
    void EnableGrips(bool enable);

    // In OnZStackChanged, the number of the act on the grips that it is told of: for a host whose undo is to take back
    // as much as Escape does. A drag, and keys until another grip is chosen, the focus goes or the host changes the
    // record, are one act, with what gives all back. No other act, of any panel, has the number; 0 for what is
    // none, and outside of the callback.
    unsigned GetGripAct() const;

    // CommandByName: 1 if there is such a command, which is done. All else: 0.
    int CustomCommand(int command, INT_PTR parameter, void* data) override;

    // Places and paints everything for the new zoom.
    void OnGuiZoomChanged() override;

protected:
    // The user has chosen an entry of the piezo button's menu: PiezoHome or PiezoHomeKeepZ, which is now what the
    // button does; `mode` is the picker's. It comes after the choice has been written into the record and, if it is
    // another one than before, told by OnZStackChanged(3); OnGoHomeRequest follows. Does nothing here.
    virtual void OnPiezoPickerChanged(unsigned int entry, int mode);

    // The step has been changed: by typing it, or, `typed` being false, by taking the suggested one.
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

    // WM_ERASEBKGND, with its parameters: the panel paints its whole area, so nothing is erased; 1.
    virtual LRESULT OnEraseBkGnd(UINT message, WPARAM wParam, LPARAM lParam);

    // Each takes the text of an edit, at most 15 characters of it, to the record, and ends with OnZStackChanged(3), but
    // for two: ValidateHome ends with UpdateGUI(3), so that the host is not told, and ValidateStep with OnStepChanged,
    // when the step was taken, and OnZStackChanged(2). Nothing entered, or "N/A", is fine and changes nothing.
    //
    // True when the text was taken or asks for nothing. False for a text that is no number ("Invalid value entered.")
    // or a value that the record refuses ("Value is out of range."); the message boxes come up only with `showErrors`
    // and over a panel that is visible by itself, and where a field is just losing the focus they are posted: they come
    // when that is over, after the refresh. False also, with nothing done and nobody told, when another
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

    // The window procedures: of the panel, and those put before the ones of its edits, buttons and its list.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK EdtWndProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK BtnWndProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK CbxWndProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam);

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
        bool inverted;      // the stand, as far as the name lets it
        int pickerMode;     // of the piezo picker
    };

    // The record, not owned; the devices.
    CKxZStackData* m_data = nullptr;
    std::vector<ZDevice> m_devices;

    // A control of the panel by its id in the template; null without a window, and for other ids.
    HWND Item(int id) const;

    // Whether the window is the panel's or in it; null is neither.
    bool IsMyWindow(HWND window) const;

    // The next and the previous control that Tab stops at, from one of the panel's or, for null, from none: gives it
    // the focus, round the panel's ends.
    void FocusNext(HWND from);
    void FocusPrev(HWND from);

    // What the panel does on its messages. Empty answers go on to the dialog manager, or to the control's own
    // procedure.
    std::optional<LRESULT> OnCommand(int id, int code);
    std::optional<LRESULT> OnDrawItem(const DRAWITEMSTRUCT& item);
    std::optional<LRESULT> OnMeasureItem(MEASUREITEMSTRUCT& item);
    std::optional<LRESULT> OnPaint(const kx::ui::Message& message);
    std::optional<LRESULT> OnCtlColorEdit(HDC dc, HWND edit);
    std::optional<LRESULT> OnCtlColorStatic(HDC dc, HWND control);
    std::optional<LRESULT> OnLButtonDown(POINT point);
    void OnMouseMove(POINT point);
    void OnMouseLeave();

    // The same for its edits, buttons and its list; `character` is that of WM_CHAR.
    std::optional<LRESULT> EditOnChar(const kx::ui::Message& message);
    std::optional<LRESULT> EditOnLButtonDblClk(HWND edit);
    std::optional<LRESULT> EditOnPaint(const kx::ui::Message& message);
    std::optional<LRESULT> EditOnSetCursor(HWND edit);
    std::optional<LRESULT> ButtonOnChar(HWND button, wchar_t character);
    std::optional<LRESULT> ButtonMenu(HWND button);
    std::optional<LRESULT> ComboOnChar(HWND list, wchar_t character);

private:
    // Asks the host to move there; a reason given meanwhile refuses.
    void RequestZ(double z);
    enum class Verdict { Taken, NotANumber, OutOfRange, Declined };
    using Apply = std::function<Verdict(double)>;
    using Refresh = std::function<void()>;
    using Position = std::optional<double>;

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleMouse(const kx::ui::Message& message);
    std::optional<LRESULT> Tell(const kx::ui::Message& message);
    std::optional<LRESULT> HandleEdit(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    std::optional<LRESULT> HandleList(const kx::ui::Message& message);
    bool MadeWindow() const;
    void CollectControls();
    void SubclassControls();
    void RememberLabels();
    void FitLabels();
    void BuildPiezoMenu();
    void OnEnabled(bool enabled);
    void Focus(HWND from, bool backwards);
    void SelectFocused();
    void EnterEdit(HWND edit);
    static void MakeRoomForMark(HWND edit);

    static Verdict VerdictOf(int status);
    bool Validate(int edit, kx::zstack::Meaning meaning, bool showErrors, const Refresh& refresh, const Apply& apply);
    Position NumberBehind(int edit, kx::zstack::Meaning meaning) const;
    bool ValidateEnd(bool above, bool showErrors);
    Refresh Telling(unsigned int flags);
    void TellStep(double step, bool typed);
    bool CanBeRead(HWND edit) const;
    kx::ui::Allowed AllowedIn(int edit) const;
    kx::ui::Field FieldOf(HWND edit) const;
    void Complain(int edit, Verdict verdict, bool showErrors, const std::wstring& refused);
    bool IsComplaining() const;
    Verdict SetRange(double range);
    Verdict SetEnd(bool above, double position);
    bool MayMoveOtherEnd(bool above);

    std::optional<LRESULT> OnClicked(int id);
    std::optional<LRESULT> OnEditFocus(int id);
    std::optional<LRESULT> OnEditLeft(int id);
    std::optional<LRESULT> OnPositionLeft(int id);
    void GiveBackFocus(HWND edit);
    std::optional<LRESULT> OnDeviceChosen();
    bool& Dirty(int id);
    void MakeRelative();
    void ChooseType(int type);
    void TakeSuggestedStep();
    bool ValidateEdit(int id, bool showErrors);
    bool DoCommand(const wchar_t* name);
    void PickPiezo(unsigned int entry);

    RECT ScaleArea() const;
    RECT CubeArea() const;
    void ShowScale(kx::zstack::ScaleValues values);
    bool ShowZAlone(const kx::zstack::ScaleValues& values);
    void RepaintScale();
    std::vector<kx::zstack::Label> LabelsOf(const kx::zstack::ScaleValues& values, const kx::zstack::Axis& axis) const;
    void ShowHover(const Position& z);
    std::optional<LRESULT> OnWheel(const kx::ui::Message& message);
    void Magnify(int notches, int row);

    // What happens in the window of the grips.
    class Grips;
    static LRESULT CALLBACK GripsWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> HandleGrips(const kx::ui::Message& message);
    void MakeGrips();
    void PlaceGripsWindow();
    void ShowGrips();

    Position Known(int (CKxZStackData::*getter)(double*) const) const;
    kx::zstack::ScaleValues ReadScale() const;
    bool IsWritable(int id) const;
    bool IsBeingTyped(int id);
    void ShowEntry(int id, kx::zstack::Meaning meaning, const wchar_t* text, const Position& value);
    bool ShowText(int id, const wchar_t* text);
    void ShowItem(int id, bool show);
    void EnableItem(int id, bool enable);
    void ShowPositions();
    void ShowRange(int type, const Position& top, const Position& bottom, const Position& home);
    void ShowSteps();
    void ShowDevice();
    void ShowTips(bool inverted);
    void ShowPiezoEntry();

    // The controls by their ids, counted from the first: asking the platform for one costs as much as drawing it.
    static constexpr int kFirstControl = 1196;
    std::array<HWND, 76> m_controls{};

    // An edit that has the focus is the user's: a refresh leaves it alone.
    struct {
        bool step, below, range, count, above;
    } m_dirty{};
    int m_hidden = 0;  // the field that a refresh takes the focus from
    CKxMenuPicker m_piezo;
    bool m_cube = false;
    bool m_grips = false;
    // The life of its requests, shared with copies as the window is.
    std::shared_ptr<kx::ui::Activity> m_requests;
    bool m_validating = false;
    bool m_refused = false;  // by the last validation
};
