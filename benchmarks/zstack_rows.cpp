// The Z stack panel against the same windows and texts made by hand.
#include <windows.h>

#include <kxbaseui/kx_tooltip.h>
#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/zfocus/devgui_zstack.h>

#include <string>
#include <vector>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

class Panel : public CKxDevUI_ZStack {
public:
    explicit Panel(HWND parent) {
        Require(Create(parent, &record, 0, 0, 0, 0, true, true) != nullptr, "there is no panel");
    }
    void Fill() {
        record.AddZDevice(0, 1000, nullptr);
        record.SetZDevice(0);
        record.SetZPosition(0, 510);
        record.SetTop(520, true);
        record.SetBottom(500, true);
        record.SetStep(1);
        AppendZDevice(L"drive", false, 0, 0, 1000, false, 0, true);
        UpdateGUI(3);
    }
    using CKxDevUI_ZStack::Item;
    CKxZStackData record;

protected:
    void OnStepChanged(double, bool) override {}
    void OnMoveZRequest(double) override {}
    void OnGoHomeRequest(bool) override {}
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override {}
    void OnZStackChanged(unsigned int) override {}
};

// The texts that a refresh of the panel shows.
constexpr int kTexts[] = {1260, 1261, 1262, 1254, 1199, 1203, 1264, 1267, 1263, 1266, 1270};

void Rewrite(const Panel& panel) {
    for (const int id : kTexts) {
        wchar_t text[40] = L"";
        GetWindowTextW(panel.Item(id), text, 40);
        SetWindowTextW(panel.Item(id), text);
    }
}

// The panel's children, to be made by hand.
struct Specs {
    SIZE size{};
    std::vector<ChildSpec> children;

    explicit Specs(const Panel& model) {
        model.GetCurSize(&size);
        for (HWND child = GetWindow(model.GetHandle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            RECT place{};
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, model.GetHandle(), reinterpret_cast<POINT*>(&place), 2);
            wchar_t name[40] = L"", text[40] = L"";
            GetClassNameW(child, name, 40);
            GetWindowTextW(child, text, 40);
            auto style = static_cast<DWORD>(GetWindowLongW(child, GWL_STYLE));
            if (name[0] == L'B') style &= ~DWORD{BS_TYPEMASK};
            children.push_back({name, text, style, place, GetDlgCtrlID(child)});
        }
    }
};

// In a bare window, with as many tools of a tooltip.
HWND MakeByHand(HWND parent, const Specs& specs) {
    const HWND window = MakeBareWindow(parent, specs.size);
    int tools = 0;
    for (const ChildSpec& child : specs.children) {
        const HWND made = MakeChild(window, child);
        if (++tools <= 12) KX_CreateToolTipWindow(made, L"a tip");
    }
    return window;
}

Ratio RepaintPanel() {
    const Frame frame;
    Panel panel(frame);
    panel.Fill();
    const HWND byHand = MakeByHand(frame, Specs(panel));
    return Measure([&] { Repaint(panel.GetHandle()); }, [&] { Repaint(byHand); });
}

Ratio CreatePanel() {
    const Frame frame;
    const Specs specs{Panel(frame)};
    return Measure([&] { const Panel panel(frame); }, [&] { DestroyWindow(MakeByHand(frame, specs)); });
}

Ratio RefreshNothing() {
    const Frame frame;
    Panel panel(frame);
    panel.Fill();
    return Measure([&] { panel.UpdateGUI(3); }, [&] { Rewrite(panel); });
}

// A step that moves the number of planes; the panel writes two fields.
Ratio RefreshStep() {
    const Frame frame;
    Panel panel(frame);
    panel.Fill();
    double step = 1;
    const auto change = [&] {
        step = 3 - step;
        panel.record.SetStep(step);
        panel.UpdateGUI(2);
    };
    return Measure(change, [&] { Rewrite(panel); });
}

Ratio RefreshAll() {
    const Frame frame;
    Panel panel(frame);
    panel.Fill();
    double by = 1;
    const auto change = [&] {
        by = -by;
        panel.record.SetTop(520 + by, true);
        panel.record.SetBottom(500 + 2 * by, true);
        panel.record.SetHome(510 + by);
        panel.record.SetStep(1 + by / 2);
        panel.UpdateGUI(3);
    };
    return Measure(change, [&] { Rewrite(panel); });
}

// A step of the drive, with as many planes as a series may well have.
Ratio FollowZ() {
    const Frame frame;
    Panel panel(frame);
    panel.Fill();
    panel.EnableGrips(true);
    panel.record.SetStep(0.002);
    panel.UpdateGUI(3);
    UpdateWindow(panel.GetHandle());
    double z = 505;
    const auto step = [&] {
        z = 1015 - z;
        panel.record.SetZPosition(0, z);
        panel.UpdateGUI(4);
        UpdateWindow(panel.GetHandle());
    };
    return Measure(step, [&] { Repaint(panel.GetHandle()); });
}

// clang-format off
const Rows s_rows{{
    {"Z stack panel, full repaint", "the same windows made directly", 1.25, RepaintPanel},
    {"Z stack panel, refresh of nothing", "rewriting the same fields' texts", 0.05, RefreshNothing},
    {"Z stack panel, refresh of the step", "rewriting all fields' texts", 0.5, RefreshStep},
    {"Z stack panel, refresh of everything", "rewriting the same fields' texts", 1.25, RefreshAll},
    {"Z stack panel, a step of Z among 10,001 planes", "repainting the panel", 0.25, FollowZ},
    {"Z stack panel, create and destroy", "the same windows made directly", 1.3, CreatePanel},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
