// A page of the host's window: a container that holds panels. Pages are made anew when the language changes.
#pragma once

#include <vector>

#include "../host_panel.h"

class Page : public HostPanel {
public:
    // Unzoomed pixels.
    static constexpr int Width = 560;
    static constexpr int Height = 400;

    // `name` is what the log calls the page and, translated, what its button says.
    explicit Page(const wchar_t* name) : HostPanel(name) {}

    // Makes the page, hidden, and its panels, at the current zoom and in the current language.
    void Build(HWND parent);
    bool IsBuilt() const { return m_hWnd != nullptr; }

    // The panel under a point of the screen; null when there is none.
    CKxDevUI_Container* PanelAt(POINT screen);
    const std::vector<CKxDevUI_Container*>& Panels() const { return m_panels; }

    // The window has this room for the page, in pixels of the screen. Here the page only moves to its middle and keeps
    // its size.
    virtual void FitTo(const RECT& place);
    // A turn of the wheel that no panel has used; true when the page has.
    virtual bool Wheel(int) { return false; }

protected:
    // Makes the panels, in unzoomed pixels, and tells of each by Add.
    virtual void Fill() = 0;
    // What can only be shown once the panels have their sizes.
    virtual void Show() {}
    void Add(CKxDevUI_Container& panel);
    // Makes an empty panel, in unzoomed pixels (x, y, width, height), and adds it.
    void Place(CKxDevUI_Container& panel, const RECT& place);

    bool OnUser(int, int, HWND) override { return false; }

private:
    std::vector<CKxDevUI_Container*> m_panels;
};
