// CKxDevUI_Container: a window that hosts controls, plain windows and dialog templates.
#pragma once

#include <windows.h>

#include <cstdarg>
#include <list>
#include <optional>

#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/ui_life.h>

namespace kx::ui {
struct Message;
}

// A device panel is a container. It is made empty and filled (Create, then InsertWindow and InsertElement), from a
// whole dialog template (CreateFromDlg), from a part of one (CreateFromDlgPart), or around controls that a dialog has
// already (CreateFromParent). It turns window messages into calls of its protected virtual handlers, which hosts and
// derived controls override; by default it passes the messages of its children on to its parent as if they were the
// parent's own.
//
// A container made from a template is a dialog: its messages come through the dialog procedure, which also reports
// OnDestroy and OnMouseActivate, but neither paints nor knows of device bands, relayed wheel turns and the zoom.
//
// The container refers to the control objects inserted into it and never deletes them; one that the host deletes drops
// out of the list. Windows inserted into it are destroyed with it. Creating it again destroys what it had.
class KXDEVUI_API CKxDevUI_Container : public CKxDevUI_Base {
public:
    // Nominal size 100 by 50, visible, forwarding.
    CKxDevUI_Container();
    CKxDevUI_Container(const CKxDevUI_Container& other) = default;
    CKxDevUI_Container& operator=(const CKxDevUI_Container& other) = default;
    ~CKxDevUI_Container() override;

    // ---- Creation: each returns the container's window, or null on failure ----

    // An empty container at (x, y) in the parent's client area. A negative cx or cy keeps the nominal size. The two
    // flags are ignored: SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;

    // The dialog template `templateName` of `module`, in the language of the user interface or, where that is missing,
    // the fallback language. Modeless: the container takes all its controls, keeps the size of the template and moves
    // to (x, y), -1 keeping a coordinate. Modal: runs the dialog and returns the number that ended it (Quit), or null
    // when it could not be shown. Clears the forward flag: a dialog handles its own commands, unless Init(true)
    // follows.
    HWND CreateFromDlg(HWND parent, long x, long y, const wchar_t* templateName, HINSTANCE module, bool modal);

    // The controls of the template that meet the area (x, y, cx, cy) of its client area, in pixels. The container
    // stands at the same place in the parent, so that one template can hold the layouts of several panels. Controls
    // wholly outside the area are destroyed.
    HWND CreateFromDlgPart(HWND parent, long x, long y, long cx, long cy, const wchar_t* templateName,
                           HINSTANCE module);
    HWND CreateFromDlgPart(HWND parent, RECT* area, const wchar_t* templateName, HINSTANCE module);
    // The area and the place in the tab order are those of another container in the same parent.
    HWND CreateFromDlgPart(HWND parent, CKxDevUI_Container* placeholder, const wchar_t* templateName, HINSTANCE module);

    // Takes over the controls of an existing dialog that meet the area, and their place in the tab order. OnInit comes
    // when they are inside: message 1, wParam 0, lParam this object.
    HWND CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy);
    HWND CreateFromParent(HWND parentDialog, RECT* area);
    // The same for the controls with the `count` ids that follow as int. Ids that are missing are skipped.
    HWND CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy, int count, ...);
    HWND CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy, int count, va_list ids);

    // ---- Content ----

    // Takes a window in; from another parent it comes to the end of the tab order. A window of the library's controls
    // becomes an element, every other is kept in the list of windows. Null is ignored; what cannot become a child (the
    // container itself, a window that it lies in, anything before Create) is refused and logged.
    void InsertWindow(HWND child);

    // Takes a control in; its window, if it has one, becomes a child. Null is ignored; the container itself and one
    // that it lies in are refused and logged.
    void InsertElement(CKxDevUI_Base* element);

    // Takes in all controls of a dialog template, where the template has them, in the GUI font: the template's own goes
    // with its dialog. x and y are not used.
    void InsertDialog(long x, long y, const wchar_t* templateName, HINSTANCE module);

    // The element first inserted that has this id; null when there is none.
    CKxDevUI_Base* GetElement(int id);

    // The child window with this id. Where there is only an element with this id, its object pointer in the place of a
    // handle: the result then only tells that there is one.
    HWND GetWindow(int id);

    // The plain windows inserted, in order.
    std::list<HWND> GetWindows();

    // Unites `area` with the rectangle of the child with this id, in the container's client coordinates; with `reset`,
    // `area` starts out empty. Returns `area`; null stays null.
    RECT* UnionArea(int id, RECT* area, bool reset);

    // ---- Life ----

    // Whether the default handlers pass messages on to the parent.
    void Init(bool forward);

    // Ends a modal dialog with this result; destroys the window of any other container.
    void Quit(int result);

    // Runs a message loop until any window of the thread is posted WM_CLOSE or WM_DESTROY, which is then not delivered,
    // WM_QUIT arrives, which is posted again for the loop outside, or the container's window is gone. Returns at once
    // when there is no window.
    void WaitForDialog();

    // Destroys the inserted windows and the container's own, and forgets the elements, whose windows went with it.
    // While that goes on, neither the container nor its elements hear of anything but their end.
    void Destroy();

    // Sets the caption labels in bold type, see BoldifyCaptions in devgui.h.
    void BoldifyCaptions();

    // Whether Tab goes into the container, in the order of its windows: it, the windows between it and its top-level
    // window and the containers in it, also those that come later, are no stop themselves and hand Tab on to what they
    // hold (WS_EX_CONTROLPARENT); an empty one is passed by. One call on the outermost does for all. Off at first, and
    // its windows are then as their creation makes them. Holds for windows made later too; taken back, the windows
    // around stay as they are, because other containers may need them so.
    void SetTabInside(bool inside);

    // ---- Operations of the base ----

    // Passes the state to the inserted windows and elements when it differs from the one held. The container's own
    // window is enabled but never disabled, so that it keeps receiving messages.
    void SetEnabled(bool enable) override;
    // The caption of a modal dialog. The title is stored only when m_storeTitle is set.
    void SetTitle(const wchar_t* title) override;
    void RefreshWindow() override;

protected:
    // ---- Handlers ----

    // The window is there: m_hWnd and the nominal size (the actual one) are set. For an empty container `message` is
    // WM_CREATE (-1 gives creation up), for a dialog WM_INITDIALOG (non-zero sets the default focus). Result 1.
    virtual LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam);
    // Dialogs only. Results 1 and 0.
    virtual LRESULT OnDestroy(UINT message, WPARAM wParam, LPARAM lParam);
    // These four are sent on to the parent while the forward flag is set and give its answer, 0 otherwise. A result of
    // 0 lets the default procedure have the message.
    virtual LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal);
    virtual LRESULT OnDrawItem(UINT message, WPARAM wParam, LPARAM lParam);
    // The brush behind a static text; 0 leaves it to the platform.
    virtual LRESULT OnCtlColorStatic(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnMouseActivate(UINT message, WPARAM wParam, LPARAM lParam);
    // A device band has changed (message 0x0500).
    virtual void OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam);
    // The host relays a turn of the wheel (message 0x83ED); the result is the message's. To offer it to the elements,
    // override this and call HandleMouseWheel of each until one has used it.
    virtual LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam);

    // The template in the language of the user interface, else in the fallback language; null when there is none.
    static const DLGTEMPLATE* GetDlgTemplate(const wchar_t* templateName, HINSTANCE module);

    // Centres the window over its parent given at creation, or over the platform's owner.
    void AlignWindow(bool toParent);

    // The window procedure, also of containers derived from this one.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static INT_PTR CALLBACK DlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

    // The parent given to the last creation; whether SetTitle stores the title; whether this is a modal dialog; whether
    // the default handlers forward; whether the controls were taken over from a dialog.
    HWND m_parent = nullptr;
    bool m_storeTitle = false;
    bool m_modal = false;
    bool m_forward = true;
    bool m_adopted = false;

private:
    struct Element {
        CKxDevUI_Base* object;
        kx::ui::Alive alive;
    };

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleDialog(const kx::ui::Message& message);
    LRESULT Forward(UINT message, WPARAM wParam, LPARAM lParam);
    void TakeWindow(HWND window);
    void LetTabIn();
    void InsertChildren();
    bool CanTake(HWND window) const;
    HWND BeginAdoption(HWND parentDialog, long x, long y, long cx, long cy);
    void Adopt(HWND child, long x, long y);
    HWND EndAdoption(long x, long y);

    std::list<HWND> m_windows;
    std::list<Element> m_elements;
    bool m_adopting = false;  // Create runs on behalf of CreateFromParent
    bool m_shown = false;     // a dialog came as far as WM_INITDIALOG
    bool m_tabInside = false;
    LONG m_givenStop = 0;  // the bits of the window's styles before
    LONG m_givenControlParent = 0;
};
