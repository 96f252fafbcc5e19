// Laser lines: one, a set of them, and a set in subsets.
#include "subject.h"

#include <kxdevices/kx_simlaserengine.h>
#include <kxdevui/light/devgui_multilaser.h>
#include <kxdevui/light/devgui_multilaserline.h>
#include <kxdevui/light/devgui_multilasersubset.h>

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

// What the subjects of this folder have in common. The host's texts are the lines' names and reasons; numbers with
// their units are the same in all languages.
template <class T>
struct LaserSubject : SubjectOf<T> {
    using Root = SubjectOf<T>;

    LaserSubject() { CKxDeviceRegistry::Add(engine_); }
    std::vector<std::wstring> OwnTexts() const override {
        return {L"Lamp", L"mW", L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9"};
    }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Keys, "Button #10300 in KxDEVGUI_MultiLaserSubset", "is chosen already"},
                {Law::Disabled, "Button", "is down, where Wine's themed push-like buttons look alike"}};
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

template <class Control>
struct SetOf : Telling<Control> {
    using Telling<Control>::Tell;

    void OnLinePowerChangeRequest(long, double percent, bool& veto) override { veto = percent > 50, Tell("OnPower"); }
    void OnLineStateChangeRequest(long, bool on, bool& veto) override { veto = on, Tell("OnState"); }
    void OnSoloRequest(long line, bool& veto) override { veto = line == 1, Tell("OnSolo"); }
    void OnAllOffRequest(bool&) override { Tell("OnAllOff"); }
    void OnLinkChangeRequest(double factor, const std::vector<SKxLinkedPower>&, bool& veto) override {
        veto = factor > 100, Tell("OnLink");
    }
    void OnViewChanged() override { Tell("OnView"); }
};

struct Subsets : SetOf<CKxDevUI_MultiLaserSubset> {
    void OnSubsetChangeRequest(long subset, bool, bool& veto) override { veto = subset == 2, Tell("OnSubset"); }
};

template <class T>
struct SetSubject : LaserSubject<T> {
    using LaserSubject<T>::control_, LaserSubject<T>::engine_;

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, 540, 190, true, true);
        if (control_) control_->Update(engine_.GetLogDevId());
    }
    void Change(int n) override {
        if (n % 2) control_->SetLines(std::vector<SKxLaserLine>(static_cast<std::size_t>(n % 5), Lamp(500, 10)));
    }
    std::vector<Operation> MakeOperations() override {
        return {
            {"lines",
             [this](Random& r) {
                 std::vector<SKxLaserLine> lines;
                 for (int i = r.OneIn(16) ? 70 : r.Between(0, 5); i > 0; --i)
                     lines.push_back(AnyLine(r));
                 control_->SetLines(lines);
             }},
            {"a scale", this->Do(&T::SetScale, Within(0, 1))},
            {"a unit", this->Do(&T::SetUnit, Within(0, 1))},
            {"a link", this->Do(&T::SetLinked, Flag)},
            {"the wheel", [this](Random& r) { control_->HandleMouseWheel(MAKEWPARAM(0, r.Between(-2, 2) * 120), 0); }},
            {"an update",
             [this](Random& r) {
                 Move(engine_, r);
                 control_->Update(engine_.GetLogDevId() + r.OneIn(8));
             }},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
        };
    }
};

const Registered<LineSubject> line("laser line");
const Registered<SetSubject<SetOf<CKxDevUI_MultiLaser>>> set("laser set");
const Registered<SetSubject<Subsets>> subsets("laser subsets");

}  // namespace
}  // namespace kx::test
