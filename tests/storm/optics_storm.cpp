// Storms against the position panels.
#include "storm.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

namespace kx::test::storm {
namespace {

// What differs from panel to panel.
struct Nosepiece {
    using Panel = CKxDevUI_Nosepiece;
    using Device = CKxSimNosepiece;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"N", std::vector<SKxSimObjective>(count, {L"a", L"60x", L""}));
    }
    static void Change(Panel& panel, Random& random) {
        panel.SetSpecificXOffsetAndNumber(random.Between(-1, 17), random.OneIn(2), random.Length(), true,
                                          random.AnyInt());
        panel.SetMagnification(random.Between(-1, 17), random.Of({L"10x", L"", L"1e999", L"<&x"}));
        panel.SetEnable(random.OneIn(2), random.OneIn(2));
        panel.ShowObservationMode(random.OneIn(2));
        panel.Init(random.Between(-3, 40), random.Between(-3, 40), random.OneIn(2), random.OneIn(2));
    }
};

struct Wheel {
    using Panel = CKxDevUI_FilterWheel;
    using Device = CKxSimFilterChanger;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"F", std::vector<std::wstring>(count, L"525/50"), SKxSimFilterChangerKind{});
    }
    static void Change(Panel& panel, Random& random) {
        panel.SetFilterName(random.Between(-1, 17), random.Of({L"", L"525/50 617/73", L"<&x", L"LP 500"}));
        panel.SetEnable(random.OneIn(2), random.OneIn(2));
        panel.SetVisible(random.OneIn(2));
    }
};

struct Switcher {
    using Panel = CKxDevUI_Switcher;
    using Device = CKxSimLaserOutput;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"L", std::vector<std::wstring>(count, L"port"), true);
    }
    static void Change(Panel& panel, Random& random) {
        panel.SetPortSingle(random.Between(-1, 17), random.OneIn(2));
        panel.SetEnable(random.OneIn(2));
        panel.SetInvertOrder(random.OneIn(2));
        panel.SetBoolMoreThanOnePortCanBeActive(random.OneIn(3));
    }
};

template <class Sort>
class Panel : public Telling<typename Sort::Panel> {
protected:
    void OnPositionChangeRequest(long position, bool& flag) override {
        flag = position % 2 != 0;
        this->Tell();
    }
};

template <class Sort>
class PanelSubject : public SubjectOf<Panel<Sort>> {
public:
    PanelSubject() { Exchange(6); }

protected:
    using SubjectOf<Panel<Sort>>::control_;

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, 300, -1, true, true);
        Update(device_.get(), true, true, true);
    }

    Step Own(Random& random) override {
        const bool a = random.OneIn(2), b = random.OneIn(2), c = random.OneIn(2);
        const int count = random.Of({0, 1, 2, 6, 7, 9, 16, 30});
        switch (random.Below(4)) {
        case 0: return {"another device", [=, this] { Exchange(count); }, std::to_string(count)};
        case 1: return {"an update", [=, this] { Update(c ? device_.get() : nullptr, a, b, c); }};
        case 2: return {"changes", [&random, this] { Sort::Change(*control_, random); }};
        default: return {"a position", [=, this] { control_->SetPosition(count - 1); }};
        }
    }

    std::string CheckOwn() override {
        const auto position = control_->GetPosition();
        return position < -3 || position > 40 ? "a position that is not there" : "";
    }

    void Change(int n) override { Exchange(n % 10); }

private:
    void Update(typename Sort::Device* device, bool a, bool b, bool c) {
        if constexpr (std::is_same_v<Sort, Nosepiece>) {
            control_->Update(device, a, b, c, a, b);
        } else {
            control_->Update(device, a, b, c);
        }
    }

    void Exchange(int count) {
        device_ = Sort::Make(static_cast<std::size_t>(count));
        CKxDeviceRegistry::Add(*device_);
        if (control_) Update(device_.get(), true, true, true);
    }

    std::unique_ptr<typename Sort::Device> device_;
};

TEST(OpticsStorm, NosepieceSurvives) { Rage<PanelSubject<Nosepiece>>("nosepiece"); }
TEST(OpticsStorm, FilterWheelSurvives) { Rage<PanelSubject<Wheel>>("filter wheel"); }
TEST(OpticsStorm, SwitcherSurvives) { Rage<PanelSubject<Switcher>>("switcher"); }

}  // namespace
}  // namespace kx::test::storm
