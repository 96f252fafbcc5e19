// A page of the host's window: a container that holds panels. Pages are made anew when the language changes.
#pragma once

#include <functional>
#include <memory>
#include <string>
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
    // The same in the order in which Tab goes through them: from the top left as a page is read.
    std::vector<CKxDevUI_Container*> PanelsAsRead() const;

    // The first panel of a class; null when there is none.
    template <class Panel>
    Panel* First() const {
        for (CKxDevUI_Container* each : m_panels) {
            if (auto* const panel = dynamic_cast<Panel*>(each)) return panel;
        }
        return nullptr;
    }

    // A panel that is on its page because it is there; see OnPage.
    struct Registered {
        std::wstring page;
        SIZE size;
        std::function<std::unique_ptr<HostPanel>(Page& page, const RECT& place)> make;
    };
    static void Register(Registered panel);

    // The window has this room for the page, in pixels of the screen. Here the page only moves to its middle and keeps
    // its size.
    virtual void FitTo(const RECT& place);
    // A turn of the wheel that no panel has used; true when the page has.
    virtual bool Wheel(int) { return false; }
    // The focus has come to this window of the page, which is to be seen.
    virtual void Reveal(HWND) {}

protected:
    // Makes the panels, in unzoomed pixels, and tells of each by Add.
    virtual void Fill() = 0;
    // What can only be shown once the panels have their sizes.
    virtual void Show() {}
    void Add(CKxDevUI_Container& panel);
    // Makes an empty panel, in unzoomed pixels (x, y, width, height), and adds it.
    void Place(CKxDevUI_Container& panel, const RECT& place);
    // The panels have other places.
    void OrderPanels();

    template <class Panel>
    friend class OnPage;

    bool OnUser(int, int, HWND) override { return false; }

private:
    void PlaceRegistered();

    std::vector<CKxDevUI_Container*> m_panels;
    std::vector<std::unique_ptr<HostPanel>> m_registered;
};

// Puts a panel on a page, of so many unzoomed pixels, below those that the page has: a line in the panel's source does
// it,
//
//     const OnPage<ShutterPanel> s_shutters(L"Illumination", {268, 186});
//
// and no page has to know of the panel. `make` gives a panel whose constructor wants arguments.
template <class Panel>
class OnPage {
public:
    OnPage(
        const wchar_t* page, SIZE size, std::unique_ptr<Panel> (*make)() = [] { return std::make_unique<Panel>(); }) {
        Page::Register({page, size, [make](Page& on, const RECT& place) {
                            auto panel = make();
                            on.Place(*panel, place);
                            panel->Fill();
                            return panel;
                        }});
    }
};
