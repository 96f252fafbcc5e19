// Storms against the position panels.
#include "storm.h"

#include <memory>
#include <utility>

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

namespace kx::test::storm {
namespace {

// Every callback may end the panel, once it is asked to.
template <class Panel>
class Ending : public Panel {
public:
    explicit Ending(std::function<void()>& end) : end_(end) {}

protected:
    void OnPositionChangeRequest(long position, bool& flag) override {
        flag = position % 2 != 0;
        End();
    }

private:
    void End() {
        if (const auto end = std::exchange(end_, nullptr)) end();
    }
    std::function<void()>& end_;
};

template <class Device, class... Arguments>
std::unique_ptr<Device> Make(Arguments&&... arguments) {
    auto device = std::make_unique<Device>(std::forward<Arguments>(arguments)...);
    CKxDeviceRegistry::Add(*device);
    return device;
}

// What differs from panel to panel.
struct NosepieceTraits {
    using Panel = CKxDevUI_Nosepiece;
    using Device = CKxSimNosepiece;
    static std::unique_ptr<Device> MakeDevice(int count) {
        return Make<Device>(L"N", std::vector<SKxSimObjective>(static_cast<std::size_t>(count), {L"a", L"60x", L""}));
    }
    static void Update(Panel& panel, Device* device, bool a, bool b, bool c) { panel.Update(device, a, b, c, a, b); }
    static void Change(Panel& panel, Random& random) {
        panel.SetSpecificXOffsetAndNumber(random.Between(-1, 17), random.OneIn(2), random.Length(), true, random.AnyInt());
        panel.SetMagnification(random.Between(-1, 17), random.Of({L"10x", L"", L"1e999", L"<&x"}));
        panel.SetEnable(random.OneIn(2), random.OneIn(2));
        panel.ShowObservationMode(random.OneIn(2));
        panel.Init(random.Between(-3, 40), random.Between(-3, 40), random.OneIn(2), random.OneIn(2));
    }
};

struct WheelTraits {
    using Panel = CKxDevUI_FilterWheel;
    using Device = CKxSimFilterChanger;
    static std::unique_ptr<Device> MakeDevice(int count) {
        return Make<Device>(L"F", std::vector<std::wstring>(static_cast<std::size_t>(count), L"525/50"),
                            SKxSimFilterChangerKind{});
    }
    static void Update(Panel& panel, Device* device, bool a, bool b, bool c) { panel.Update(device, a, b, c); }
    static void Change(Panel& panel, Random& random) {
        panel.SetFilterName(random.Between(-1, 17), random.Of({L"", L"525/50 617/73", L"<&x", L"LP 500"}));
        panel.SetEnable(random.OneIn(2), random.OneIn(2));
        panel.SetVisible(random.OneIn(2));
    }
};

struct SwitcherTraits {
    using Panel = CKxDevUI_Switcher;
    using Device = CKxSimLaserOutput;
    static std::unique_ptr<Device> MakeDevice(int count) {
        return Make<Device>(L"L", std::vector<std::wstring>(static_cast<std::size_t>(count), L"port"), true);
    }
    static void Update(Panel& panel, Device* device, bool a, bool b, bool c) { panel.Update(device, a, b, c); }
    static void Change(Panel& panel, Random& random) {
        panel.SetPortSingle(random.Between(-1, 17), random.OneIn(2));
        panel.SetEnable(random.OneIn(2));
        panel.SetInvertOrder(random.OneIn(2));
        panel.SetBoolMoreThanOnePortCanBeActive(random.OneIn(3));
    }
};

template <class Traits>
class PanelSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        if (!panel_) panel_ = std::make_unique<Ending<typename Traits::Panel>>(end_);
        panel_->Create(parent.Window(), 10, 10, 300, -1, true, true);
        Traits::Update(*panel_, device_.get(), true, true, true);
    }

    CKxDevUI_Base* Control() override { return nullptr; }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!panel_ || !HWND{*panel_}) return windows;
        windows.push_back({*panel_, true});
        for (HWND child = GetWindow(*panel_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const bool a = random.OneIn(2), b = random.OneIn(2), c = random.OneIn(2);
        const int count = random.Of({0, 1, 2, 6, 7, 9, 16, 30});
        const auto seed = random.Next();
        switch (random.Below(8)) {
        case 0: return {"another device", std::to_string(count), [=, this] { Exchange(count); }};
        case 1: return {"an update", "", [=, this] { Traits::Update(*panel_, c ? device_.get() : nullptr, a, b, c); }};
        case 2: return {"changes", "", [=, this] {
                            Random own(seed);
                            Traits::Change(*panel_, own);
                        }};
        case 3: return {"a position", "", [=, this] { panel_->SetPosition(count - 1); }};
        case 4: return {"an end to come", "", [=, this] { end_ = [=, this] { a ? panel_.reset() : panel_->Destroy(); }; }};
        case 5: return {"another structure to come", "", [=, this] { end_ = [=, this] { Exchange(count); }; }};
        case 6: return {"destroying the window", "", [this] { DestroyWindow(*panel_); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        if (!panel_) return {};
        const HWND window = *panel_;
        if (window && !IsWindow(window)) return "the panel holds a window that is gone";
        if (panel_->GetPosition() < -1 || panel_->GetPosition() >= 40) return "a position that is not there";
        return {};
    }

    void Destroy() override {
        end_ = nullptr;
        panel_.reset();
    }

private:
    void Exchange(int count) {
        device_ = Traits::MakeDevice(count);
        if (panel_) Traits::Update(*panel_, device_.get(), true, true, true);
    }

    RecordingParent* parent_ = nullptr;
    std::function<void()> end_;
    std::unique_ptr<typename Traits::Device> device_ = Traits::MakeDevice(6);
    std::unique_ptr<Ending<typename Traits::Panel>> panel_;
};

TEST(OpticsStorm, NosepieceSurvives) {
    Rage("nosepiece", [] { return std::make_unique<PanelSubject<NosepieceTraits>>(); });
}
TEST(OpticsStorm, FilterWheelSurvives) {
    Rage("filter wheel", [] { return std::make_unique<PanelSubject<WheelTraits>>(); });
}
TEST(OpticsStorm, SwitcherSurvives) {
    Rage("switcher", [] { return std::make_unique<PanelSubject<SwitcherTraits>>(); });
}

}  // namespace
}  // namespace kx::test::storm
