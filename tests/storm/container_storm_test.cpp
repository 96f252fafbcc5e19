// The container in the storm: made empty and filled, and as parts of a dialog.
#include <bench/bench.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_gdi.h>

#include <memory>
#include <string>
#include <vector>

#include "storm.h"

namespace {

using namespace kx::test;

constexpr int kPlainChildren = 4, kInner = 50;

// Counts what it hears, and now and then reacts as hosts do: by changing or destroying what is being told about.
class StormPanel : public CKxDevUI_Container {
public:
    ~StormPanel() override { Destroy(); }
    Dice* dice = nullptr;
    bool IsNamed(HWND window) const { return m_hWnd == window; }

protected:
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override {
#ifdef KX_PLANTED_FAULT
        // A brush is lost with each command. It proves that the storm sees what it looks for.
        if (dice) CreateSolidBrush(RGB(1, 2, 3));
#endif
        // At a click, not at a change of the focus: Wine's dialog procedure writes to the dialog's own record after it
        // has set the focus, whether the dialog is still there or not.
        if (dice && HIWORD(wParam) == BN_CLICKED && dice->OneIn(10)) Destroy();
        return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (dice && dice->OneIn(20)) throw 1;
        return CKxDevUI_Container::OnNotify(message, wParam, lParam);
    }
};

struct ContainerSubject {
    enum class Form { Filled, WholeDialog, PartOfDialog };

    explicit ContainerSubject(Form wanted) : form(wanted) {
        subject.create = [this](HWND window) { Create(window); };
        subject.aim = [this](Dice& random) { return Aim(random); };
        subject.broken = [this] { return Broken(); };
        const auto add = [this](auto operation) { subject.operations.push_back(operation); };
        add([this](Dice& random) { outer->SetEnabled(random.OneIn(2)); });
        add([this](Dice& random) { outer->SetVisible(random.OneIn(2)); });
        add([this](Dice& random) { outer->SetTitle(random.OneIn(2) ? L"title" : nullptr); });
        add([this](Dice& random) { outer->MoveWindow(random.Coordinate(), random.Coordinate()); });
        add([this](Dice& random) { outer->MoveWindowRelative(random.Coordinate(), random.Coordinate()); });
        add([this](Dice& random) { outer->ResizeWindow(random.Coordinate(), random.Coordinate()); });
        add([this](Dice& random) { outer->ResizeWindowRelative(random.Coordinate(), random.Coordinate()); });
        add([this](Dice& random) { RemakeInner(random); });
        add([this](Dice& random) { outer->InsertWindow(AddChild(random.Below(90))); });
        add([this](Dice&) { outer->InsertElement(outer.get()); });
        add([this](Dice&) { outer->BoldifyCaptions(), outer->RefreshWindow(), outer->SetFocus(); });
        add([this](Dice& random) {
            if (random.OneIn(8)) outer->Destroy();
        });
        add([this](Dice& random) {
            if (random.OneIn(8)) outer->Quit(1);
        });
        add([this](Dice& random) {
            if (random.OneIn(8)) DestroyWindow(*outer);
        });
    }

    void Create(HWND window) {
        parent = window;
        outer = std::make_unique<StormPanel>();
        outer->dice = &dice;
        if (form == Form::Filled) {
            outer->Create(parent, 5, 5, 220, 160, true, true);
        } else if (form == Form::WholeDialog) {
            outer->CreateFromDlg(parent, 5, 5, L"STORM_DIALOG", GetModuleHandleW(nullptr), false);
        } else {
            outer->CreateFromDlgPart(parent, 10, 10, 120, 90, L"STORM_DIALOG", GetModuleHandleW(nullptr));
        }
        for (int i = 0; i < kPlainChildren; ++i)
            outer->InsertWindow(AddChild(i));
        RemakeInner(dice);
    }

    void RemakeInner(Dice& random) {
        // Sometimes the object goes while the outer container still lists it.
        inner = std::make_unique<StormPanel>();
        inner->SetId(kInner);
        if (!*outer || random.OneIn(5)) return;
        inner->Create(*outer, 100, 20, 60, 40, true, true);
        outer->InsertElement(inner.get());
    }

    HWND AddChild(int id) {
        static constexpr const wchar_t* classes[] = {L"BUTTON", L"EDIT", L"STATIC", L"COMBOBOX", L"SCROLLBAR"};
        if (!*outer || outer->GetWindows().size() > 40) return nullptr;
        return CreateWindowExW(0, classes[id % 5], L"child", WS_CHILD | WS_VISIBLE, 7 * (id % 13), 9 * (id % 11), 50,
                               20, *outer, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }

    HWND Aim(Dice& random) const {
        const HWND window = *outer;
        if (random.OneIn(2)) return window;
        HWND child = GetWindow(window, GW_CHILD);
        for (int i = random.Below(6); child && i > 0; --i)
            child = GetWindow(child, GW_HWNDNEXT);
        return child ? child : window;
    }

    std::string Broken() {
        const HWND window = *outer;
        if (window && !IsWindow(window)) return "the handle of a window that is gone";
        if (window && GetAncestor(window, GA_PARENT) != parent && form != Form::WholeDialog) return "not in its parent";
        CKxDevUI_Base* found = outer->GetElement(kInner);
        if (found && found != inner.get()) return "an element that is gone is still listed";
        if (*inner && !IsWindow(*inner)) return "the handle of an inner window that is gone";
        const double zoom = CKxGUILayoutManager::GetGuiZoom();
        if (!(zoom >= 0.25 && zoom <= 8.0)) return "a zoom of " + std::to_string(zoom);
        // A few dozen windows with their fonts and brushes; the schemes' brushes and the zooms' fonts are kept.
        if (++checked % 64 == 0) {
            const int gdi = Counts::Now().gdi;
            if (firstGdi == 0) firstGdi = gdi;
            if (gdi > firstGdi + 150) return std::to_string(gdi - firstGdi) + " more GDI objects than at first";
        }
        return {};
    }

    Form form;
    HWND parent = nullptr;
    Dice dice{99};  // what the panels do by themselves
    std::unique_ptr<StormPanel> outer, inner;
    Subject subject;
    int checked = 0, firstGdi = 0;
};

class ContainerStorm : public testing::TestWithParam<ContainerSubject::Form> {};

TEST_P(ContainerStorm, BreaksNothing) {
    for (const std::uint64_t seed : {1u, 2u, 3u}) {
        const Counts before = Counts::Now();
        {
            ContainerSubject container(GetParam());
            ASSERT_TRUE(Storm(container.subject, StormSeed(seed), StormSteps(700)));
        }
        Pump();
        EXPECT_EQ(Counts::Now().windows, before.windows) << "windows left behind, seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, ContainerStorm,
                         testing::Values(ContainerSubject::Form::Filled, ContainerSubject::Form::WholeDialog,
                                         ContainerSubject::Form::PartOfDialog));

}  // namespace
