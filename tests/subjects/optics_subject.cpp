// The position panels: nosepiece, filter wheel, switcher.
#include "subject.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

namespace kx::test {
namespace {

// What differs from panel to panel.
struct Nosepiece {
    using Panel = CKxDevUI_Nosepiece;
    using Device = CKxSimNosepiece;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"N", std::vector<SKxSimObjective>(count, {L"a", L"60x", L""}));
    }
    static std::vector<Operation> Operations(const std::function<Panel&()>& panel) {
        return {
            {"a number",
             [=](Random& r) {
                 panel().SetSpecificXOffsetAndNumber(r.Between(-1, 17), r.OneIn(2), r.Length(), true, r.AnyInt());
             }},
            {"a magnification",
             [=](Random& r) {
                 panel().SetMagnification(r.Between(-1, 17), r.Of({L"10x", L"", L"1e999", L"<&x"}));
             }},
            {"a name",
             [=](Random& r) {
                 panel().SetName(r.Between(-1, 17), r.Of({L"Plan 60x", L"", L"<&x"}));
             }},
            {"an aperture", [=](Random& r) { panel().SetNA(r.Between(-1, 17), AnyNumber(r)); }},
            {"a distance", [=](Random& r) { panel().SetWD(r.Between(-1, 17), AnyNumber(r)); }},
            {"observing", [=](Random& r) { panel().ShowObservationMode(r.OneIn(2)); }},
            {"a mode", [=](Random& r) { panel().SetObservationMode(r.Between(-1, 2)); }},
            {"Init",
             [=](Random& r) {
                 const int count = r.Between(-3, 40);
                 panel().Init(count, r.Between(-3, 40), r.OneIn(2), r.OneIn(2));
             }},
        };
    }
};

struct Wheel {
    using Panel = CKxDevUI_FilterWheel;
    using Device = CKxSimFilterChanger;
    static auto Make(std::size_t count) {
        std::vector<std::wstring> names(count, L"525/50");
        if (count > 1) names.back().clear();  // which has a text of its own
        return std::make_unique<Device>(L"F", names, SKxSimFilterChangerKind{});
    }
    static std::vector<Operation> Operations(const std::function<Panel&()>& panel) {
        return {
            {"a filter",
             [=](Random& r) {
                 panel().SetFilterName(r.Between(-1, 17), r.Of({L"", L"525/50 617/73", L"<&x", L"LP 500"}));
             }},
            {"showing", [=](Random& r) { panel().SetVisible(r.OneIn(2)); }},
        };
    }
};

struct Switcher {
    using Panel = CKxDevUI_Switcher;
    using Device = CKxSimLaserOutput;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"L", std::vector<std::wstring>(count, L"port"), true);
    }
    static std::vector<Operation> Operations(const std::function<Panel&()>& panel) {
        return {
            {"a port", [=](Random& r) { panel().SetPortSingle(r.Between(-1, 17), r.OneIn(2)); }},
            {"the order", [=](Random& r) { panel().SetInvertOrder(r.OneIn(2)); }},
            {"several", [=](Random& r) { panel().SetBoolMoreThanOnePortCanBeActive(r.OneIn(3)); }},
        };
    }
};

template <class Sort>
class Panel : public Telling<typename Sort::Panel> {
protected:
    void OnPositionChangeRequest(long position, bool& flag) override {
        flag = position % 2 != 0;
        this->Tell("OnPositionChangeRequest");
    }
};

// The setup button of those that have one; ports that can be used at once.
template <class Sort>
class Complete : public Panel<Sort> {
public:
    Complete() {
        if constexpr (std::is_same_v<Sort, Nosepiece>)
            this->SetObservationRequest([this](int) { this->Tell("the observation's request"); });
    }

protected:
    void OnSetupRequest() override { this->Tell("OnSetupRequest"); }
};
template <>
class Complete<Switcher> : public Panel<Switcher> {
protected:
    void OnSetPortSingleRequest(long) override { this->Tell("OnSetPortSingleRequest"); }
};

template <class Sort>
class PanelSubject : public SubjectOf<Complete<Sort>> {
public:
    PanelSubject() { Exchange(6); }

    // NA and WD are so called in all languages.
    std::vector<std::wstring> OwnTexts() const override {
        return {L"Title", L"R&D", L"port", L"Plan 60x", L"<&x", L"LP 500", L"NA", L"WD"};
    }
    std::vector<Exception> Exceptions() const override {
        if constexpr (std::is_same_v<Sort, Switcher>) {
            return {{Law::Disabled, "Button #10201", "is down, where Wine's themed push-like buttons look alike"}};
        }
        if constexpr (!std::is_same_v<Sort, Nosepiece>) return {};
        return {{Law::Later, "a number", "puts a position over others"},
                {Law::Later, "observing", "puts the strip over positions"},
                {Law::Disabled, "Button #10500", "the setup button works all the time"},
                {Law::Disabled, "OnSetupRequest", "it asks the host all the time"}};
    }
    void Change(int n) override { Exchange(n % 10); }
    bool Rebuild() override { return Exchange(7), true; }
    // What only some hosts want: ports that can be used at once, modes of observation.
    bool Provoke(int) override {
        if constexpr (std::is_same_v<Sort, Switcher>) control_->SetBoolMoreThanOnePortCanBeActive(true);
        SendMessageW(*control_, WM_COMMAND, std::is_same_v<Sort, Nosepiece> ? 10600 : 10201, 0);
        return true;
    }

protected:
    using SubjectOf<Complete<Sort>>::control_;

    void Make(HWND parent) override {
        // As wide as the most positions need: in less, they stand over the setup button.
        control_->Create(parent, 10, 10, 560, -1, true, true);
        Update(device_.get(), true, true, true);
    }

    std::vector<Operation> MakeOperations() override {
        std::vector<Operation> all{
            {"another device",
             [this](Random& r) {
                 Exchange(r.Of({0, 1, 2, 6, 7, 9, 16, 30}));
             }},
            {"an update",
             [this](Random& r) {
                 const bool a = r.OneIn(2), b = r.OneIn(2), c = r.OneIn(2);
                 Update(c ? device_.get() : nullptr, a, b, c);
             }},
            {"a position",
             [this](Random& r) {
                 control_->SetPosition(r.Of({-1, 0, 1, 2, 5, 6, 15, 29}));
             }},
            {"a title", [this](Random& r) { control_->SetTitle(r.OneIn(2) ? L"R&D" : L"Title"); }},
        };
        for (Operation& each : Sort::Operations([this]() -> typename Sort::Panel& { return *control_; }))
            all.push_back(std::move(each));
        return all;
    }

    std::string CheckOwn() override {
        const auto position = control_->GetPosition();
        return position < -3 || position > 40 ? "a position that is not there" : "";
    }

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

const Registered<PanelSubject<Nosepiece>> nosepiece("nosepiece");
const Registered<PanelSubject<Wheel>> filterWheel("filter wheel");
const Registered<PanelSubject<Switcher>> switcher("switcher");

}  // namespace
}  // namespace kx::test
