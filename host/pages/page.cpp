#include "page.h"

#include <algorithm>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>

void Page::Build(HWND parent) {
    m_visible = false;
    Create(parent, 0, 0, Width, Height, true, true);
    Fill();
    // All of it was laid out in unzoomed pixels.
    CKxGUILayoutManager::ResizeWindowToGuiZoom(m_hWnd, 1.0);
    Show();
    KX_FollowColorScheme(m_hWnd);
#ifdef KX_PLANT_FAULT
    CreateSolidBrush(RGB(1, 2, 3));  // nobody has it, nobody deletes it
#endif
}

void Page::FitTo(const RECT& place) {
    // In the middle of a wide window.
    const long x = std::max(place.left, (place.left + place.right - GetWidth()) / 2);
    SetWindowPos(m_hWnd, nullptr, x, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Page::Add(CKxDevUI_Container& panel) {
    m_panels.push_back(&panel);
    InsertElement(&panel);
}

void Page::Place(CKxDevUI_Container& panel, const RECT& place) {
    panel.Create(*this, place.left, place.top, place.right, place.bottom, true, true);
    Add(panel);
}

CKxDevUI_Container* Page::PanelAt(POINT screen) {
    for (CKxDevUI_Container* panel : m_panels) {
        RECT rect{};
        if (GetWindowRect(*panel, &rect) && PtInRect(&rect, screen)) return panel;
    }
    return nullptr;
}
