// The position panels: nosepiece, filter wheel, switcher.
#include "subject.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

namespace kx::test {
namespace {

struct Nosepiece {
    using Panel = CKxDevUI_Nosepiece;
    using Device = CKxSimNosepiece;
    static auto Make(std::size_t count) {
        std::vector<SKxSimObjective> objectives(count, {L"a", L"60x", L"PlanApo20x075"});
        if (count) objectives.front().key = L"PlanApo60x140Oil";  // from which it is risky to change
        auto device = std::make_unique<Device>(L"N", objectives);
        // Of six the second cannot be reached, of seven the third.
        device->SetAvailable(static_cast<long>(count % 2 + 1), false);
        return device;
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
};

struct Switcher {
    using Panel = CKxDevUI_Switcher;
    using Device = CKxSimLaserOutput;
    static auto Make(std::size_t count) {
        return std::make_unique<Device>(L"L", std::vector<std::wstring>(count, L"port"), true);
    }
};

template <class Sort>
struct Panel : Telling<typename Sort::Panel> {
    void OnPositionChangeRequest(long position, bool& flag) override {
        flag = position % 2 != 0;
        this->Tell("OnPositionChangeRequest");
    }
};

// Cards come by time as well, which no law can repeat.
bool showsCard = false;

// The setup button of those that have one; ports that can be used at once.
template <class Sort>
struct Complete : Panel<Sort> {
    Complete() {
        if constexpr (std::is_same_v<Sort, Nosepiece>) {
            this->SetObservationRequest([this](int) { this->Tell("the observation's request"); });
            this->SetCards(
                {{.complete = [this](long, SKxObjectiveCard& card) { card.wavelength = 525, TellCard("a card"); },
                  .warns = [this](long at, EKxObjectiveRisk) { return TellCard("a warning"), at % 2 == 0; }}});
        }
    }

    void OnSetupRequest() override { this->Tell("OnSetupRequest"); }
    void TellCard(const char* callback) {
        if (showsCard) this->Tell(callback);
    }
    void Show(long position) {
        showsCard = true;
        this->ShowCard(position);
        showsCard = false;
    }
};
template <>
struct Complete<Switcher> : Panel<Switcher> {
    void OnSetPortSingleRequest(long) override { this->Tell("OnSetPortSingleRequest"); }
};

template <class Sort>
struct PanelSubject : SubjectOf<Complete<Sort>> {
    PanelSubject() { Exchange(6); }

    // NA and WD are so called in all languages.
    std::vector<std::wstring> OwnTexts() const override {
        return {L"Title", L"R&D", L"port", L"Plan 60x", L"<&x", L"LP 500", L"NA", L"WD"};
    }
    std::vector<Exception> Exceptions() const override {
        if constexpr (std::is_same_v<Sort, Switcher>) {
            return {{Law::Disabled, "Button #10000", "the rules disable the buttons, not the frame"},
                    {Law::Disabled, "Button #10201", "is down, where Wine's themed push-like buttons look alike"}};
        }
        if constexpr (!std::is_same_v<Sort, Nosepiece>) return {};
        const std::string reached = "buttons are enabled as they can be reached, and ask nobody while it is disabled";
        return {{Law::Later, "a number", "puts a position over others"},
                {Law::Later, "observing", "puts the strip over positions"},
                {Law::Disabled, "another device", reached},
                {Law::Disabled, "an update", reached},
                {Law::Disabled, "Init", reached},
                {Law::Disabled, "Button #10500", "the setup button works all the time"},
                {Law::Disabled, "OnSetupRequest", "it asks the host all the time"}};
    }
    int Coarseness() const override { return 28; }
    void Change(int n) override { Exchange(n % 10); }
    bool Rebuild() override { return Exchange(7), true; }
    // What only some hosts want: ports that can be used at once, modes of observation.
    bool Provoke(int n) override {
        if constexpr (std::is_same_v<Sort, Nosepiece>) {
            if (n % 2) return control_->Show(2), true;
        }
        if constexpr (std::is_same_v<Sort, Switcher>) control_->SetBoolMoreThanOnePortCanBeActive(true);
        SendMessageW(*control_, WM_COMMAND, std::is_same_v<Sort, Nosepiece> ? 10600 : 10201, 0);
        return true;
    }

    using SubjectOf<Complete<Sort>>::control_;
    using SubjectOf<Complete<Sort>>::Do;

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
            {"a position", Do(&Sort::Panel::SetPosition, OneOf({-1, 0, 1, 2, 5, 6, 15, 29}))},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"a title", Do(&Sort::Panel::SetTitle, OneOf({L"R&D", L"Title"}))},
        };
        for (Operation& each : OwnOperations())
            all.push_back(std::move(each));
        return all;
    }

    std::vector<Operation> OwnOperations() {
        using Panel = typename Sort::Panel;
        const auto at = Within(-1, 17);
        if constexpr (std::is_same_v<Sort, Wheel>) {
            return {{"a filter", Do(&Panel::SetFilterName, at, OneOf({L"", L"525/50 617/73", L"<&x", L"LP 500"}))},
                    {"showing", Do(&Panel::SetVisible, Flag)}};
        } else if constexpr (std::is_same_v<Sort, Switcher>) {
            return {{"a port", Do(&Panel::SetPortSingle, at, Flag)},
                    {"the order", Do(&Panel::SetInvertOrder, Flag)},
                    {"several", Do(&Panel::SetBoolMoreThanOnePortCanBeActive, Flag)}};
        } else {
            return {
                {"a number",
                 [this](Random& r) {
                     control_->SetSpecificXOffsetAndNumber(r.Between(-1, 17), r.OneIn(2), r.Length(), true, r.AnyInt());
                 }},
                {"a magnification", Do(&Panel::SetMagnification, at, OneOf({L"10x", L"", L"1e999", L"<&x"}))},
                {"a name", Do(&Panel::SetName, at, OneOf({L"Plan 60x", L"", L"<&x"}))},
                {"an aperture", Do(&Panel::SetNA, at, AnyNumber)},
                {"a distance", Do(&Panel::SetWD, at, AnyNumber)},
                {"a card", Do(&Complete<Sort>::Show, at)},
                {"observing", Do(&Panel::ShowObservationMode, Flag)},
                {"a mode", Do(&Panel::SetObservationMode, Within(-1, 2))},
                {"Init",
                 [this](Random& r) {
                     const int count = r.Between(-3, 40);
                     control_->Init(count, r.Between(-3, 40), r.OneIn(2), r.OneIn(2));
                 }},
            };
        }
    }

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
