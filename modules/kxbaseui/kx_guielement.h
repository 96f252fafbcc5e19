// GUI elements: the panels that a host's layout handles alike, whatever is inside them.
//
// Three classes on top of one another: what every element can be asked (IKxGUIElement), an element that is one window
// (CKxGUIElement), an element that takes part in layout and zoom (CKxGUIControlElement). The order of the virtual
// operations is part of the binary interface: hosts derive from the panels.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>
#include <kxsystem/kx_string.h>

// Whoever looks after an element. It is the host's own: the element keeps the pointer and hands it back.
class IKxGUIHandler;

// What every element can be asked. Sizes are in pixels on the screen.
class KXBASEUI_API IKxGUIElement {
public:
    IKxGUIElement() = default;
    // Elements are copied as their classes say.
    IKxGUIElement(const IKxGUIElement&) = default;
    IKxGUIElement& operator=(const IKxGUIElement&) = default;
    virtual ~IKxGUIElement();

    // Keeps and hands back the handler, which is not owned; null at first.
    virtual void SetHandler(IKxGUIHandler* handler) = 0;
    virtual IKxGUIHandler* GetHandler() const = 0;

    // Puts the element into a parent window; returns its window, or null when there is none. Takes it away.
    virtual HWND CreateUI(HWND parent) = 0;
    virtual void DestroyUI() = 0;

    // The window, null when there is none; gives it another parent, null is ignored.
    virtual HWND GetHandle() const = 0;
    virtual void SetUIParent(HWND parent) = 0;

    // Whether the window is shown (its own state, whatever its parents' is) and takes input.
    virtual void Show(bool show) = 0;
    virtual bool IsVisible() const = 0;
    virtual void Enable(bool enable) = 0;
    virtual bool IsEnabled() const = 0;

    // Switches painting off, or on again with a repaint of everything. Repaints now what is due.
    virtual void SetRedrawEx(bool redraw) = 0;
    virtual void Update() = 0;

    // Whether a layout may give the element another size than its optimal one; its size now; the size it would like.
    // Null is ignored; without a window the size is 0.
    virtual bool IsResizable() const = 0;
    virtual void GetCurSize(SIZE* size) const = 0;
    virtual void CalcOptimalSize(SIZE* size) const = 0;

    // Places the window in its parent's client area; a width or height below 0 keeps that of the window.
    virtual void Move(long x, long y, long cx, long cy) = 0;

    // Another interface of the element by its name; null when it has none of that name.
    virtual void* GetInterface(const wchar_t* name) = 0;

    // A line about the element for logs: class of the window, place, state.
    virtual CKxStringW GetInfo() const = 0;

    // A command that only certain elements know; 0 from those that do not.
    virtual int CustomCommand(int command, INT_PTR parameter, void* data) = 0;
};

// An element that is one window. The window is made by the derived class, which keeps its handle in m_hWnd.
class KXBASEUI_API CKxGUIElement : public IKxGUIElement {
public:
    // See IKxGUIElement. CreateUI gives a window that is there the parent, and makes none.
    void SetHandler(IKxGUIHandler* handler) override;
    IKxGUIHandler* GetHandler() const override;
    HWND CreateUI(HWND parent) override;
    void DestroyUI() override;
    HWND GetHandle() const override;
    void SetUIParent(HWND parent) override;
    void Show(bool show) override;
    bool IsVisible() const override;
    void Enable(bool enable) override;
    bool IsEnabled() const override;
    void SetRedrawEx(bool redraw) override;
    void Update() override;
    bool IsResizable() const override;
    void GetCurSize(SIZE* size) const override;
    void CalcOptimalSize(SIZE* size) const override;
    void Move(long x, long y, long cx, long cy) override;
    void* GetInterface(const wchar_t* name) override;
    CKxStringW GetInfo() const override;
    int CustomCommand(int command, INT_PTR parameter, void* data) override;

protected:
    // The window, null before it is made and after its end.
    HWND m_hWnd = nullptr;

private:
    IKxGUIHandler* m_handler = nullptr;
};

// An element that takes part in layout and zoom.
class KXBASEUI_API CKxGUIControlElement : public CKxGUIElement {
public:
    // The size in unzoomed pixels that CalcOptimalSize answers with, times the zoom. Before it is set, and for a size
    // below 0, that is the window's size.
    void CalcOptimalSize(SIZE* size) const override;
    virtual void SetOptimalSize(long cx, long cy);

    // A number that the host's layout keeps with the element.
    virtual void SetLayoutStyle(int style);

    // Whether the host wants the element enabled, beside what the element itself thinks; true at first. Setting it
    // enables or disables the window.
    virtual bool GetEnableGuiFlag() const;
    virtual void SetEnableGuiFlag(bool enable);

    // Whether a resizable element takes certain sizes only; false here.
    virtual bool IsResizableInSteps() const;

    // The GUI zoom has changed; here the window and what is in it are placed anew.
    virtual void OnGuiZoomChanged();

protected:
    // What SetLayoutStyle keeps.
    int m_layoutStyle = 0;

private:
    SIZE m_optimal{-1, -1};
    bool m_enableFlag = true;
};
