// Laser lines: one, a set of them, and a set in subsets.
#include "subject.h"

#include <kxdevices/kx_simlaserengine.h>
#include <kxdevui/optics/devgui_multilaserline.h>

namespace kx::test {
namespace {

// Of any quality.
SKxLaserLine AnyLine(Random& r) {
    return {.name = r.OneIn(2) ? L"Lamp" : L"",
            .wavelength = AnyNumber(r),
            .on = r.OneIn(2),
            .power = AnyNumber(r),
            .limit = AnyNumber(r),
            .fullPower = AnyNumber(r),
            .measured = AnyNumber(r),
            .gain = AnyNumber(r),
            .state = static_cast<EKxDeviceState>(r.Between(0, 3)),
            .interlock = r.OneIn(4),
            .usable = !r.OneIn(4),
            .reason = r.OneIn(2) ? L"Lamp" : L""};
}

SKxLaserLine Lamp(double wavelength, double power) {
    return {.name = L"Lamp", .wavelength = wavelength, .power = power, .fullPower = 100, .gain = 80.0};
}

void Move(CKxSimLaserEngine& engine, Random& r) {
    engine.TryPlace(r.Between(-1, 9)), engine.SetFails(r.OneIn(4), L"Lamp");
    if (r.OneIn(2)) engine.Tick();
    if (engine.GetLineCount() < 8 && r.OneIn(8)) engine.AddLine(AnyLine(r));
    if (engine.GetLineCount() > 2 && r.OneIn(8)) engine.RemoveLine(r.Between(0, 9));
}

struct Line : Telling<CKxDevUI_MultiLaserLine> {
    void OnPowerChangeRequest(double percent, bool& veto) override { veto = percent > 50, Tell("OnPower"); }
    void OnStateChangeRequest(bool on, bool& veto) override { veto = on, Tell("OnState"); }
    void OnViewChanged() override { Tell("OnView"); }
};

// What the subjects of this folder have in common. The host's texts are the lines' names and reasons, and what they
// begin with.
template <class T>
struct LaserSubject : SubjectOf<T> {
    using Root = SubjectOf<T>;

    LaserSubject() { CKxDeviceRegistry::Add(engine_); }
    std::vector<std::wstring> OwnTexts() const override { return {L"Lamp", L"%", L"mW", L"405 nm", L"561 nm"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Disabled, "Button", "is down, where Wine's themed push-like buttons look alike"}};
    }

    CKxSimLaserEngine engine_{L"Subject",
                              {Lamp(561, 10), Lamp(405, 40), Lamp(640, 0)},
                              {{.name = L"Lamp A", .lines = {0, 1}}, {.name = L"Lamp B", .lines = {2}}}};
};

struct LineSubject : LaserSubject<Line> {
    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, 420, -1, true, true);
        if (control_) control_->Update(engine_.GetLogDevId());
    }
    std::vector<Operation> MakeOperations() override {
        return {
            {"a line", [this](Random& r) { control_->SetLine(AnyLine(r)); }},
            {"a power", Do(&Line::SetPower, AnyNumber)},
            {"on or off", Do(&Line::SetOn, Flag)},
            {"a scale", Do(&Line::SetScale, Within(0, 1))},
            {"a unit", Do(&Line::SetUnit, Within(0, 1))},
            {"an update",
             [this](Random& r) {
                 Move(engine_, r);
                 control_->SetLineNumber(r.Between(0, 2));
                 control_->Update(engine_.GetLogDevId() + r.OneIn(8));
             }},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
        };
    }
};

const Registered<LineSubject> line("laser line");

}  // namespace
}  // namespace kx::test
