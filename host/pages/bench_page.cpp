#include "bench_page.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

#include <kxbaseui/kx_layoutmanager.h>

#include "../rules/flow.h"

namespace {

using kx::config::Simulated;

constexpr int kWidth = 320, kGap = 8;  // of panels, unzoomed pixels

int WheelHeight(long filters) {
    const int rows = static_cast<int>((std::min(filters, 16L) + 7) / 8);
    return 32 + 24 * std::max(rows, 1);
}

int SwitchHeight(long positions) {
    const int rows = static_cast<int>((std::min(positions, 16L) + 3) / 4);
    return 52 + 24 * (std::max(rows, 1) - 1);
}

}  // namespace

// ---- Building ------------------------------------------------------------------------------------------------------

template <class Panel, class... Arguments>
void BenchPage::Put(int height, std::unique_ptr<Panel> panel, Arguments... arguments) {
    Panel& filled = *panel;
    m_panels.push_back(std::move(panel));
    Place(filled, {0, 0, kWidth, height});
    if constexpr (std::is_base_of_v<DevicePanel, Panel>) filled.SetOwnRefusal(false);
    filled.Fill(arguments...);
}

void BenchPage::Fill() {
    PutTurrets();
    PutWheels();
    PutSwitches();
    // The tallest before the many small ones, which fill the columns up.
    PutFocus();
    PutLight();
}

void BenchPage::PutTurrets() {
    const auto isHigh = [&roles = m_microscope.Roles()] {
        for (const auto& each : roles.zDrives) {
            const auto* drive = each.id == roles.focus ? Simulated<CKxSimZDrive>(each.id) : nullptr;
            double z = 0;
            if (drive && drive->GetPosition(z)) return IsHigh(z, each.minimum, each.maximum, each.direction < 0);
        }
        return false;
    };
    const auto& wheels = m_microscope.Roles().wheels;
    const auto* filters = wheels.empty() ? nullptr : Simulated<CKxSimFilterChanger>(wheels.front());
    for (const CDMApi_LogDevId id : m_microscope.Roles().turrets)
        Put(80, std::make_unique<NosepiecePanel>(*Simulated<CKxSimNosepiece>(id), filters, isHigh));
}

void BenchPage::PutWheels() {
    for (const CDMApi_LogDevId id : m_microscope.Roles().wheels) {
        auto& wheel = *Simulated<CKxSimFilterChanger>(id);
        Put(WheelHeight(wheel.GetFilterCount()), std::make_unique<FilterPanel>(L"Filter wheel", wheel));
    }
}

void BenchPage::PutSwitches() {
    for (const CDMApi_LogDevId id : m_microscope.Roles().lightPaths) {
        auto& path = *Simulated<CKxSimLightPath>(id);
        Put(SwitchHeight(path.GetPositionCount()),
            std::make_unique<SwitcherPanel>(L"Light path", path,
                                            [&path](long i) -> Asked {
                                                return {PlaceOf(path), static_cast<double>(i)};
                                            }),
            false);
    }
    for (const CDMApi_LogDevId id : m_microscope.Roles().tirfMirrors) {
        auto& mirror = *Simulated<CKxSimTIRFMirror>(id);
        Put(SwitchHeight(2),
            std::make_unique<SwitcherPanel>(L"TIRF mirror", mirror,
                                            [&mirror](long i) -> Asked {
                                                return {PlaceOf(mirror), static_cast<double>(i)};
                                            }),
            false);
    }
    for (const auto& each : m_microscope.Roles().lasers) {
        auto& laser = *Simulated<CKxSimLaserOutput>(each.id);
        if (laser.GetPortCount() < 2) continue;
        Put(SwitchHeight(laser.GetPortCount()),
            std::make_unique<SwitcherPanel>(L"Laser ports", laser,
                                            [&laser](long i) -> Asked {
                                                return {PortOf(laser), static_cast<double>(i)};
                                            }),
            false);
    }
}

void BenchPage::PutLight() {
    for (const CDMApi_LogDevId id : m_microscope.Roles().shutters) {
        auto& shutter = *Simulated<CKxSimShutter>(id);
        Put(36, std::make_unique<SingleShutterPanel>(shutter));
        if (shutter.GetApertureSteps() > 0) Put(60, std::make_unique<ModeShutterPanel>(shutter));
    }
    for (const auto& each : m_microscope.Roles().lasers) {
        auto& laser = *Simulated<CKxSimLaserOutput>(each.id);
        if (laser.GetPortCount() > 1) continue;
        Put(60, std::make_unique<LaserPanel>(laser, each.wavelength, each.unit.c_str()));
    }
}

// The series is planned on the drive that focuses; other drives, such as a piezo, have no panel.
void BenchPage::PutFocus() {
    for (const auto& each : m_microscope.Roles().zDrives) {
        if (each.id != m_microscope.Roles().focus) continue;
        auto planned = std::make_unique<PlanPanel>(m_microscope.Plan());
        auto focus = std::make_unique<FocusPanel>(m_microscope, *Simulated<CKxSimZDrive>(each.id),
                                                  [&panel = *planned] { panel.Show(); });
        Put(200, std::move(planned));
        Put(224, std::move(focus));
    }
}

// ---- Layout --------------------------------------------------------------------------------------------------------

void BenchPage::FitTo(const RECT& place) {
    SetWindowPos(m_hWnd, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Arrange();
}

// The panels have their zoomed sizes already; only their places are chosen here.
void BenchPage::Arrange() {
    const auto& panels = Panels();
    std::vector<kx::host::Size> sizes;
    sizes.reserve(panels.size());
    for (CKxDevUI_Container* panel : panels)
        sizes.push_back({panel->GetWidth(), panel->GetHeight()});
    RECT window{};
    GetWindowRect(m_hWnd, &window);
    // As if the scroll bar were always there: it must not come and go by what it does to the width.
    // At every scale as wide as at 96 dpi with that zoom, whose scroll bar does not grow.
    const long bar = std::max<long>(GetSystemMetricsForDpi(SM_CXVSCROLL, GetDpiForWindow(m_hWnd)),
                                    CKxGUILayoutManager::Zoomed(GetSystemMetricsForDpi(SM_CXVSCROLL, 96)));
    const long width = window.right - window.left - bar;
    const long height = window.bottom - window.top;
    const kx::host::Flow flow = kx::host::FlowIntoColumns(sizes, width, CKxGUILayoutManager::Zoomed(kGap));
    m_content = flow.height;
    // The same panels stay in sight.
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    m_scrolled = std::lround(static_cast<double>(m_scrolled) * zoom / std::exchange(m_zoom, zoom));
    m_scrolled = kx::host::ScrollPosition(m_scrolled, m_content, height);
    SCROLLINFO info{sizeof info,
                    SIF_ALL,
                    0,
                    static_cast<int>(m_content - 1),
                    static_cast<UINT>(height),
                    static_cast<int>(m_scrolled),
                    0};
    SetScrollInfo(m_hWnd, SB_VERT, &info, TRUE);
    for (std::size_t i = 0; i < panels.size(); ++i)
        SetWindowPos(*panels[i], nullptr, flow.places[i].x, flow.places[i].y - m_scrolled, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    OrderPanels();
}

// ---- Scrolling -----------------------------------------------------------------------------------------------------

void BenchPage::ScrollTo(long position) {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long scrolled = kx::host::ScrollPosition(position, m_content, client.bottom);
    if (scrolled == m_scrolled) return;
    m_scrolled = scrolled;
    Arrange();
}

LRESULT BenchPage::OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) {
    if (horizontal || lParam != 0) return Page::OnScroll(message, wParam, lParam, horizontal);
    const long line = CKxGUILayoutManager::Zoomed(32);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(m_hWnd, SB_VERT, &info);
    switch (LOWORD(wParam)) {
    case SB_LINEUP: ScrollTo(m_scrolled - line); break;
    case SB_LINEDOWN: ScrollTo(m_scrolled + line); break;
    case SB_PAGEUP: ScrollTo(m_scrolled - static_cast<long>(info.nPage)); break;
    case SB_PAGEDOWN: ScrollTo(m_scrolled + static_cast<long>(info.nPage)); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: ScrollTo(info.nTrackPos); break;
    case SB_TOP: ScrollTo(0); break;
    case SB_BOTTOM: ScrollTo(m_content); break;
    default: break;
    }
    return 1;
}

bool BenchPage::Wheel(int delta) {
    ScrollTo(m_scrolled - MulDiv(CKxGUILayoutManager::Zoomed(96), delta, WHEEL_DELTA));
    return true;
}

// With all of its panel, where that is no higher than the window.
void BenchPage::Reveal(HWND control) {
    RECT client{}, rect{};
    GetClientRect(m_hWnd, &client);
    for (CKxDevUI_Container* const panel : Panels()) {
        if (!IsChild(*panel, control)) continue;
        panel->GetWindowRectangle(&rect);
        if (rect.bottom - rect.top > client.bottom) {
            GetWindowRect(control, &rect);
            MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
        }
    }
    const long gap = CKxGUILayoutManager::Zoomed(kGap);
    if (rect.top < 0)
        ScrollTo(m_scrolled + rect.top - gap);
    else if (rect.bottom > client.bottom)
        ScrollTo(m_scrolled + rect.bottom + gap - client.bottom);
}
