#include "page.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>

#include "../rules/reading_order.h"

namespace {

// Of panels that are placed by themselves, unzoomed: around them, and where the columns begin.
constexpr long kGap = 8, kColumns[] = {8, 284};

std::vector<Page::Registered>& RegisteredPanels() {
    static std::vector<Page::Registered> panels;
    return panels;
}

}  // namespace

void Page::Register(Registered panel) { RegisteredPanels().push_back(std::move(panel)); }

// Each into the column that is filled least.
void Page::PlaceRegistered() {
    m_registered.clear();
    long filled[std::size(kColumns)]{};
    for (CKxDevUI_Container* panel : m_panels) {
        RECT rect{};
        panel->GetWindowRectangle(&rect);
        for (std::size_t i = 0; i < std::size(kColumns); ++i) {
            const bool meets =
                rect.right > kColumns[i] && (i + 1 == std::size(kColumns) || rect.left < kColumns[i + 1]);
            if (meets) filled[i] = std::max(filled[i], rect.bottom);
        }
    }
    for (const Registered& each : RegisteredPanels()) {
        if (each.page != Name()) continue;
        const auto column = std::min_element(std::begin(filled), std::end(filled)) - std::begin(filled);
        const RECT place{kColumns[column], filled[column] + kGap, each.size.cx, each.size.cy};
        m_registered.push_back(each.make(*this, place));
        filled[column] = place.top + each.size.cy;
    }
}

void Page::Build(HWND parent) {
    m_visible = false;
    Create(parent, 0, 0, Width, Height, true, true);
    SetTabInside(true);
    Fill();
    PlaceRegistered();
    // All of it was laid out in unzoomed pixels, and stands right at 100 %.
    if (CKxGUILayoutManager::GetGuiZoom() != 1.0) CKxGUILayoutManager::ResizeWindowToGuiZoom(m_hWnd, 1.0);
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
    OrderPanels();
}

std::vector<CKxDevUI_Container*> Page::PanelsAsRead() const {
    std::vector<kx::host::Box> boxes;
    for (CKxDevUI_Container* panel : m_panels) {
        RECT rect{};
        panel->GetWindowRectangle(&rect);
        boxes.push_back({rect.left, rect.top, rect.right, rect.bottom});
    }
    std::vector<CKxDevUI_Container*> panels;
    for (const std::size_t each : kx::host::ReadingOrder(boxes))
        panels.push_back(m_panels[each]);
    return panels;
}

// Tab goes by the order of the windows.
void Page::OrderPanels() {
    HWND last = HWND_TOP;
    for (CKxDevUI_Container* const each : PanelsAsRead()) {
        const HWND before = ::GetWindow(*each, GW_HWNDPREV);
        if (before != (last == HWND_TOP ? nullptr : last))
            SetWindowPos(*each, last, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
        last = *each;
    }
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
