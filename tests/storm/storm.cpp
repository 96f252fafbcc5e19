#include "storm.h"

#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace kx::test {

namespace {

LPARAM Point(Dice& dice) { return MAKELPARAM(dice.Coordinate(), dice.Coordinate()); }

// A memory DC with a bitmap, for messages that carry a DC.
class Canvas {
public:
    Canvas() : m_dc(CreateCompatibleDC(nullptr)), m_bitmap(CreateBitmap(64, 64, 1, 32, nullptr)) {
        SelectObject(m_dc, m_bitmap);
    }
    ~Canvas() {
        DeleteDC(m_dc);
        DeleteObject(m_bitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    HDC Dc() const { return m_dc; }

private:
    HDC m_dc;
    HBITMAP m_bitmap;
};

struct Step {
    HWND window;
    Dice& dice;
    std::string& what;

    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const {
        char text[80];
        std::snprintf(text, sizeof text, "message 0x%04X, 0x%llX, 0x%llX", message,
                      static_cast<unsigned long long>(wParam), static_cast<unsigned long long>(lParam));
        what = text;
        if (std::getenv("KX_STORM_TRACE"))
            std::fprintf(stderr, "  to %p %s\n", static_cast<void*>(window), text), std::fflush(stderr);
        return SendMessageW(window, message, wParam, lParam);
    }
};

void Mouse(const Step& step) {
    constexpr std::array messages{WM_MOUSEMOVE,   WM_LBUTTONDOWN, WM_LBUTTONUP,     WM_LBUTTONDBLCLK,
                                  WM_RBUTTONDOWN, WM_MOUSELEAVE,  WM_CAPTURECHANGED};
    const UINT message = static_cast<UINT>(messages[static_cast<std::size_t>(step.dice.Below(messages.size()))]);
    // A right release opens menus, and a press on a scroll bar waits in a loop of its own for the release.
    wchar_t name[16] = L"";
    GetClassNameW(step.window, name, 16);
    if (_wcsicmp(name, L"SCROLLBAR") == 0 && message != WM_MOUSEMOVE) return;
    step.Send(message, static_cast<WPARAM>(step.dice.Below(32)), message == WM_CAPTURECHANGED ? 0 : Point(step.dice));
}

void Wheel(const Step& step) {
    const auto delta = static_cast<short>(step.dice.Below(1200) - 600);
    step.Send(step.dice.OneIn(2) ? WM_MOUSEWHEEL : 0x83EDu, MAKEWPARAM(step.dice.Below(16), delta), Point(step.dice));
}

void Keys(const Step& step) {
    const int key = 1 + step.dice.Below(254);
    // Alt and its like open menus.
    if (key == VK_MENU || key == VK_F10 || key == VK_F4 || key == VK_APPS || key == VK_RETURN) return;
    step.Send(step.dice.OneIn(3) ? WM_CHAR : step.dice.OneIn(2) ? WM_KEYDOWN : WM_KEYUP, static_cast<WPARAM>(key), 1);
}

void Notices(const Step& step) {
    Dice& dice = step.dice;
    const HWND child = GetWindow(step.window, GW_CHILD);
    switch (dice.Below(6)) {
    case 0:
        step.Send(WM_COMMAND, MAKEWPARAM(dice.Below(20), dice.Below(0x500)), reinterpret_cast<LPARAM>(child));
        break;
    case 1: {
        NMHDR header{child, static_cast<UINT_PTR>(dice.Below(20)), static_cast<UINT>(-dice.Below(200))};
        step.Send(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
        break;
    }
    case 2: {
        const Canvas canvas;
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_BUTTON;
        item.CtlID = static_cast<UINT>(dice.Below(20));
        item.itemState = static_cast<UINT>(dice.Below(32));
        item.hwndItem = child;
        item.hDC = canvas.Dc();
        item.rcItem = {0, 0, dice.Coordinate() % 300, dice.Coordinate() % 300};
        step.Send(WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
        break;
    }
    case 3:
        step.Send(dice.OneIn(2) ? WM_HSCROLL : WM_VSCROLL, MAKEWPARAM(dice.Below(10), dice.Below(200)),
                  dice.OneIn(2) ? 0 : reinterpret_cast<LPARAM>(child));
        break;
    case 4: {
        const Canvas canvas;
        step.Send(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()), reinterpret_cast<LPARAM>(child));
        break;
    }
    default: {
        const bool flags[16] = {dice.OneIn(2), dice.OneIn(2), dice.OneIn(2), dice.OneIn(2)};
        step.Send(0x0500, static_cast<WPARAM>(dice.Below(5)), dice.OneIn(4) ? 0 : reinterpret_cast<LPARAM>(flags));
    }
    }
}

void Looks(const Step& step) {
    Dice& dice = step.dice;
    switch (dice.Below(7)) {
    case 0: {
        const Canvas canvas;
        step.Send(dice.OneIn(2) ? WM_PRINTCLIENT : WM_PAINT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
        break;
    }
    case 1:
        step.what = "repaint";
        RedrawWindow(step.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        break;
    case 2: {
        const double zooms[] = {1.0, 1.25, 1.5, 2.0, 0.5, 0.0, -1.0, 100.0, std::numeric_limits<double>::quiet_NaN()};
        const double zoom = zooms[dice.Below(std::size(zooms))];
        step.what = "zoom " + std::to_string(zoom);
        CKxGUILayoutManager::SetGuiZoom(zoom);
        break;
    }
    case 3:
        step.what = "colour scheme";
        KX_SetColorScheme(static_cast<EKxColorScheme>(dice.Below(5)));
        break;
    case 4: {
        const Canvas canvas;
        step.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
        break;
    }
    case 5:
        step.Send(WM_SETFONT, dice.OneIn(2) ? 0 : reinterpret_cast<WPARAM>(GetStockObject(ANSI_VAR_FONT)), 1);
        break;
    default: step.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(dice.OneIn(3) ? L"" : L"some text"));
    }
}

void States(const Step& step) {
    Dice& dice = step.dice;
    switch (dice.Below(5)) {
    case 0:
        step.what = "focus";
        SetFocus(step.window);
        break;
    case 1:
        step.what = "enable";
        EnableWindow(step.window, dice.OneIn(2));
        break;
    case 2:
        step.what = "show";
        ShowWindow(step.window, dice.OneIn(2) ? SW_SHOW : SW_HIDE);
        break;
    case 3:
        step.what = "size";
        SetWindowPos(step.window, nullptr, dice.Coordinate(), dice.Coordinate(), dice.Coordinate(), dice.Coordinate(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
        break;
    default: step.Send(dice.OneIn(2) ? WM_SETTINGCHANGE : WM_TIMER, static_cast<WPARAM>(dice.Below(9)), 0);
    }
}

// Messages that nobody knows. The ranges of the platform's controls carry pointers there, so only windows of other
// classes get them.
void Unknown(const Step& step) {
    if (GetClassLongW(step.window, GCL_STYLE) & CS_GLOBALCLASS) return;
    const UINT message = step.dice.OneIn(2) ? 0x0501u + static_cast<UINT>(step.dice.Below(0x7000))
                                            : 0x8000u + static_cast<UINT>(step.dice.Below(0x3E00));
    step.Send(message, step.dice.Next(), static_cast<LPARAM>(step.dice.Next()));
}

bool HeapsAreWhole() {
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    return std::all_of(heaps, heaps + count, [](HANDLE heap) { return HeapValidate(heap, 0, nullptr) != FALSE; });
}

void Take(Subject& subject, HWND parent, Dice& dice, std::string& what) {
    if (dice.OneIn(200)) {
        what = "create";
        return subject.create(parent);
    }
    if (!subject.operations.empty() && dice.OneIn(4)) {
        const int index = dice.Below(static_cast<int>(subject.operations.size()));
        what = "operation " + std::to_string(index);
        return subject.operations[static_cast<std::size_t>(index)](dice);
    }
    const HWND window = subject.aim(dice);
    if (!IsWindow(window)) {
        what = "create, because there is none";
        return subject.create(parent);
    }
    constexpr std::array kinds{Mouse, Wheel, Keys, Notices, Looks, States, Unknown};
    kinds[static_cast<std::size_t>(dice.Below(kinds.size()))]({window, dice, what});
}

}  // namespace

std::uint64_t Dice::Next() {
    std::uint64_t z = m_state += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

long Dice::Coordinate() {
    switch (Below(12)) {
    case 0: return 0;
    case 1: return -1;
    case 2: return -Below(500);
    case 3: return 20000 + Below(40000);
    case 4: return std::numeric_limits<long>::max();
    case 5: return std::numeric_limits<long>::min();
    default: return Below(300);
    }
}

testing::AssertionResult Storm(Subject& subject, std::uint64_t seed, int steps) {
    RecordingParent parent;
    Dice dice(seed);
    subject.create(parent.Window());
    // For a step that ends the process before it can be named.
    const bool trace = std::getenv("KX_STORM_TRACE") != nullptr;
    for (int step = 0; step < steps; ++step) {
        std::string what = "nothing";
        if (trace) std::fprintf(stderr, "%d\n", step), std::fflush(stderr);
        Take(subject, parent.Window(), dice, what);
        if (trace) std::fprintf(stderr, "  %s\n", what.c_str()), std::fflush(stderr);
        if (step % 16 == 0) Pump();
        parent.Record().Clear();
        std::string broken = subject.broken();
        if (broken.empty() && (trace || step % 64 == 0) && !HeapsAreWhole()) broken = "a heap is damaged";
        if (!broken.empty()) {
            return testing::AssertionFailure()
                   << "seed " << seed << ", step " << step << " (" << what << "): " << broken;
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(1.0);
    return testing::AssertionSuccess();
}

std::uint64_t StormSeed(std::uint64_t seed) {
    const char* given = std::getenv("KX_STORM_SEED");
    return given ? std::strtoull(given, nullptr, 10) : seed;
}

int StormSteps(int steps) {
    const char* given = std::getenv("KX_STORM_STEPS");
    return given ? std::atoi(given) : steps;
}

}  // namespace kx::test
