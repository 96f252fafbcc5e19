// The panels of the optical path against the same stock controls, owner-drawn, that copy ready bitmaps.
#include <windows.h>

#include <memory>
#include <vector>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr int kPositions = 16;
constexpr SIZE kSize{600, 72};
constexpr SIZE kButton{24, 30};

// Owner-drawn buttons, with labels above them or not, in a window that draws them by copying one bitmap.
class StockPanel {
public:
    StockPanel(HWND parent, bool labels) {
        static const ATOM atom = [] {
            WNDCLASSW description{};
            description.lpfnWndProc = Procedure;
            description.cbWndExtra = 16;
            description.hInstance = GetModuleHandleW(nullptr);
            description.lpszClassName = L"KxBenchStockPanel";
            return RegisterClassW(&description);
        }();
        Require(atom != 0, "there is no class");
        m_window = CreateWindowExW(0, L"KxBenchStockPanel", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                   kSize.cx, kSize.cy, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        const kx::ui::WindowDC dc(m_window);
        m_picture.reset(CreateCompatibleDC(dc));
        m_bitmap.reset(CreateCompatibleBitmap(dc, kButton.cx, kButton.cy));
        SelectObject(m_picture.get(), m_bitmap.get());
        Add(L"BUTTON", L"Title", BS_GROUPBOX, {0, 0, kSize.cx, kSize.cy}, false);
        for (int i = 0; i < kPositions; ++i) {
            const int x = 8 + 32 * i;
            if (labels) Add(L"STATIC", L"60x", SS_CENTER, {x - 2, 20, x + 26, 36}, false);
            Add(L"BUTTON", L"", BS_OWNERDRAW, {x, 40, x + kButton.cx, 40 + kButton.cy}, true);
        }
        Add(L"BUTTON", L"...", BS_OWNERDRAW, {kSize.cx - 32, 40, kSize.cx - 8, 70}, false);
    }
    ~StockPanel() { DestroyWindow(m_window); }
    StockPanel(const StockPanel&) = delete;
    StockPanel& operator=(const StockPanel&) = delete;
    operator HWND() const noexcept { return m_window; }

private:
    void Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, const RECT& place, bool tip) {
        const HWND child =
            CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                            place.right - place.left, place.bottom - place.top, m_window, nullptr, nullptr, nullptr);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
        if (tip) KX_CreateToolTipWindow(child, L"a name");
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_DRAWITEM) return DefWindowProcW(window, message, wParam, lParam);
        const auto* self = reinterpret_cast<const StockPanel*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        BitBlt(item.hDC, 0, 0, kButton.cx, kButton.cy, self->m_picture.get(), 0, 0, SRCCOPY);
        return TRUE;
    }

    HWND m_window = nullptr;
    kx::ui::Bitmap m_bitmap;
    kx::ui::MemoryDC m_picture;
};

CKxSimNosepiece& Turret() {
    static CKxSimNosepiece turret(L"Nosepiece", std::vector<SKxSimObjective>(kPositions, {L"a name", L"60x", L""}));
    return turret;
}

CKxSimFilterChanger& Changer() {
    static CKxSimFilterChanger changer(L"Filters", std::vector<std::wstring>(kPositions, L"525/50 617/73"), {});
    if (changer.GetLogDevId() == 0) CKxDeviceRegistry::Add(changer);
    return changer;
}

void Open(CKxDevUI_Nosepiece& panel, HWND parent) {
    panel.Init(&Turret());
    panel.Update(&Turret(), true, true, true, false, false);
    Require(panel.Create(parent, 0, 0, kSize.cx, kSize.cy, true, true) != nullptr, "there is no nosepiece");
}

void Open(CKxDevUI_FilterWheel& panel, HWND parent) {
    panel.Update(&Changer(), true, true, true);
    Require(panel.Create(parent, 0, 0, kSize.cx, -1, true, true) != nullptr, "there is no wheel");
}

template <class Panel>
Ratio RepaintWarm() {
    const Frame frame;
    Panel panel;
    Open(panel, frame);
    const StockPanel stock(frame, std::is_same_v<Panel, CKxDevUI_Nosepiece>);
    return Measure([&] { Repaint(panel); }, [&] { Repaint(stock); });
}

// With every image rasterised anew.
Ratio RepaintCold() {
    const Frame frame;
    CKxDevUI_Nosepiece panel;
    Open(panel, frame);
    const auto cold = [&] {
        CKxBitmapPool::Clear();
        Repaint(panel);
    };
    return Measure(cold, [&] { Repaint(panel); });
}

Ratio ChangePosition() {
    const Frame frame;
    CKxDevUI_Nosepiece panel;
    Open(panel, frame);
    const StockPanel stock(frame, true);
    long position = 0;
    const auto change = [&] {
        panel.SetPosition(position = (position + 1) % kPositions);
        RedrawWindow(panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    };
    return Measure(change, [&] { Repaint(stock); });
}

// An update that finds nothing new.
Ratio UpdateNothing() {
    const Frame frame;
    CKxDevUI_Nosepiece panel;
    Open(panel, frame);
    const auto update = [&] {
        panel.Update(&Turret(), true, true, true, true, false);
        RedrawWindow(panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    };
    return Measure(update, [&] { Repaint(panel); });
}

// A tick of the timer, and the repaint that it asks for.
Ratio StepOfRing() {
    const Frame frame;
    CKxDevUI_Nosepiece panel;
    Open(panel, frame);
    KX_TellActivity(panel, {EKxActivity::Moving, kPositions - 1, {}});
    MSG tick{};
    const auto end = GetTickCount64() + 2000;
    while (tick.message != WM_TIMER && GetTickCount64() < end)
        PeekMessageW(&tick, panel, WM_TIMER, WM_TIMER, PM_REMOVE);
    Require(tick.message == WM_TIMER, "no ring turns");
    const auto update = [&] { RedrawWindow(panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); };
    update();
    const HWND button = GetDlgItem(panel, 10200);
    const auto repaint = [&] { InvalidateRect(button, nullptr, FALSE), update(); };
    return Measure([&] { DispatchMessageW(&tick), update(); }, repaint);
}

template <class Panel>
Ratio CreatePanel() {
    const Frame frame;
    const auto make = [&] {
        Panel panel;
        Open(panel, frame);
    };
    return Measure(make, [&] { const StockPanel stock(frame, std::is_same_v<Panel, CKxDevUI_Nosepiece>); });
}

// clang-format off
const Rows s_rows{{
    {"nosepiece of 16, full repaint", "owner-drawn buttons and labels", 1.3, RepaintWarm<CKxDevUI_Nosepiece>},
    {"nosepiece of 16, full repaint, images cold", "the same, images warm", 10, RepaintCold},
    {"nosepiece of 16, another position", "repaint of owner-drawn buttons and labels", 1.0, ChangePosition},
    {"nosepiece of 16, update that finds nothing new", "its repaint", 0.05, UpdateNothing},
    {"nosepiece of 16 moving, a step of its ring", "repaint of one of its buttons", 1.5, StepOfRing},
    {"nosepiece of 16, create and destroy", "the same windows made directly", 1.3, CreatePanel<CKxDevUI_Nosepiece>},
    {"filter wheel of 16, full repaint", "owner-drawn buttons", 1.3, RepaintWarm<CKxDevUI_FilterWheel>},
    {"filter wheel of 16, create and destroy", "the same windows made directly", 1.3, CreatePanel<CKxDevUI_FilterWheel>},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
