// The subjects: one for every control, how it is made, filled and used. The laws (tests/laws) and the storm
// (tests/storm) hold for all of them; a control joins both with one file in this folder.
//
//     struct Wheel : Telling<CKxDevUI_Wheel> {                   // tells of its callbacks
//         void OnTurned(double&, bool& veto) override { veto = true, Tell("OnTurned"); }
//     };
//     struct WheelSubject : SubjectOf<Wheel> {
//         void Make(HWND parent) override { control_->Create(parent, 5, 5, 90, 40, true, true), control_->Set(3); }
//         std::vector<Operation> MakeOperations() override {
//             return {{"a value", Do(&Wheel::SetValue, AnyNumber)}};
//         }
//     };
//     const Registered<WheelSubject> wheel("wheel");
//
// What a law does not hold for, the subject says by name (Exceptions). A law counts what it has looked at and what was
// excepted, and fails when there was nothing to look at.
#pragma once

#include <tuple>
#include <type_traits>

#include <bench/bench.h>
#include <bench/grave.h>
#include <diagnostics/random.h>
#include <kxdevui/framework/devgui_control.h>

namespace kx::test {

using kx::Random;

// Something that a host may do with a control at any time, with parameters at random.
struct Operation {
    std::string name;
    std::function<void(Random&)> run;
};

// A window to aim at. Messages above WM_USER mean something else to each of the platform's own controls, some with
// pointers in them, so only a control of the library is sent unknown ones.
struct Target {
    HWND window;
    bool ours;
};

// Later is none: operations that leave something undrawn, or parts over each other, for what comes later, and so have
// no place where many follow each other.
enum class Law { Redraw, Later, Zoom, Disabled, Language, Ends, Focus, Keys, Silence, Rest, Dark, Access };

// A law does not hold for an operation, a window class or a notice of this name, or, for "", not at all; and why.
struct Exception {
    Law law;
    std::string what;
    std::string why;
};

// What ends: the window, the windows by the control's Destroy, the object, the parent's window.
enum class End { Window, Windows, Object, Parent };

// How the window that has the focus loses it.
enum class FocusLoss { Disabled, Rebuilt };

class Subject {
public:
    virtual ~Subject() = default;

    // Makes the control and fills it, and again after its window has gone.
    virtual void Create(RecordingParent& parent) = 0;
    // The object that the operations of CKxDevUI_Base go to; null while there is none.
    virtual CKxDevUI_Base* Control() = 0;
    virtual HWND Window() const = 0;
    // Living windows to aim at; none makes whoever uses the subject call Create.
    virtual std::vector<Target> Windows() = 0;
    // The subject's own operations; the control has its window when one is run.
    const std::vector<Operation>& Operations();
    virtual void Enable(bool enable) = 0;
    virtual void End(End what) = 0;
    // A copy of the object is made and thrown away, where one can be made.
    virtual void Copy() = 0;
    // The invariant that does not hold any more; empty when all do.
    virtual std::string Check() = 0;
    // The window alone is made anew, and given; the object may end meanwhile.
    virtual HWND Remake() = 0;
    // Ends object and windows.
    virtual void Destroy() = 0;

    // Called with the name of each callback, also of messages to the parent; may end or change the control.
    std::function<void(const std::string&)> told;
    // Causes a callback, where those that come by themselves would be too few, or too deep in the platform's controls.
    // False leaves it to whichever comes next.
    virtual bool Provoke(int) { return false; }
    // What a host may do in a callback besides ending the control.
    virtual void Change(int) {}

    virtual std::vector<Exception> Exceptions() const { return {}; }
    // Texts of the host's, which no law expects to be translated, by how they begin.
    virtual std::vector<std::wstring> OwnTexts() const { return {}; }
    // Where the focus goes: "the control", "the parent", or "nowhere", which is where the platform leaves it when a
    // window is disabled that nobody has taken it from.
    virtual std::string FocusGoes(FocusLoss loss) { return loss == FocusLoss::Disabled ? "nowhere" : "the control"; }
    // By how much of 255 the mean of 8 x 8 pixels may differ from what stands there at 200 %.
    virtual int Coarseness() const { return 36; }
    // The parts of the client area that have a look of their own, beside the windows inside.
    virtual std::vector<RECT> Parts() { return {}; }
    // Ends the windows inside and makes them anew, where the control can.
    virtual bool Rebuild() { return false; }
    // What a host does to have Tab come to the control's parts.
    virtual void LetTabIn() {}

protected:
    virtual std::vector<Operation> MakeOperations() = 0;

private:
    std::vector<Operation> operations_;
};

// Mostly usual; now and then zero, tiny, huge, infinite or no number.
double AnyNumber(Random& random);

// Parameters of operations, at random.
inline constexpr auto Flag = [](Random& random) { return random.OneIn(2); };
inline constexpr auto Length = [](Random& random) { return random.Length(); };
inline constexpr auto AnyInt = [](Random& random) { return random.AnyInt(); };
inline auto Within(int first, int last) {
    return [=](Random& random) { return random.Between(first, last); };
}
template <class T = const wchar_t*>
auto OneOf(std::initializer_list<T> values) {
    return [all = std::vector<T>(values)](Random& random) { return random.Of(all); };
}

// Tells a control of a device how it is with its requests; any what was reported of its light and its values.
void TellAnyActivity(HWND control, Random& random);
void TellAnyReadings(HWND control, Random& random);

// Runs with a DC that draws into a bitmap of this size.
void WithDc(int width, int height, const std::function<void(HDC)>& run);

// The window and what is in it; nothing for null.
std::vector<Target> TreeOf(HWND window);

// A control whose callbacks Tell the subject, which may end the control then, or have a kx::ui::Control make its parts
// anew.
template <class T>
class Telling : public T {
public:
    std::function<void(const char*)> tell;
    // Ends the parts and makes them anew, as for a device that has others.
    void MakeAnew() requires std::is_base_of_v<kx::ui::Control, T> { this->Remake(); }

protected:
    void Tell(const char* callback) const {
        if (const auto told = tell) told(callback);
    }
};

// A subject of one control that its host ends, changes and makes anew, also in the middle of things.
template <class T>
class SubjectOf : public Subject {
public:
    void Create(RecordingParent& parent) final {
        parent_ = &parent;
        if (!control_) control_ = MakeBuried<T>();
        if constexpr (requires { control_->tell; }) control_->tell = [this](const char* name) { Told(name, true); };
        Make(parent.Window());
    }
    CKxDevUI_Base* Control() final {
        if constexpr (std::is_base_of_v<CKxDevUI_Base, T>) return control_.get();
        return nullptr;
    }
    HWND Window() const final {
        if (!control_) return nullptr;
        if constexpr (std::is_convertible_v<T&, HWND>)
            return *control_;
        else
            return control_->GetHandle();
    }
    std::vector<Target> Windows() override { return TreeOf(Window()); }
    void Enable(bool enable) override {
        if constexpr (requires { control_->SetEnabled(enable); })
            control_->SetEnabled(enable);
        else if constexpr (requires { control_->SetEnable(enable, true); })
            control_->SetEnable(enable, true);
        else if constexpr (requires { control_->SetEnable(enable); })
            control_->SetEnable(enable);
        else
            control_->Enable(enable);
    }
    std::string Check() final {
        if (std::string touch = TakeTouch(); !touch.empty()) return touch;
        if (!wrong_.empty() || !control_) return wrong_;
        const HWND window = Window();
        if (window && (!IsWindow(window) || GetParent(window) != parent_->Window()))
            return "the control's window is gone or elsewhere";
        return CheckOwn();
    }
    // Of the object and its Destroy, the parent is told nothing.
    void End(kx::test::End what) final {
        using kx::test::End;
        if (what == End::Window || what == End::Parent) {
            DestroyWindow(what == End::Window ? Window() : parent_->Window());
            return;
        }
        parent_->Record().Clear();
        if (what == End::Windows) control_->Destroy();
        if (what == End::Windows && Window()) wrong_ = "the control keeps its window";
        if (what == End::Object) control_.reset();
        Ended();
        const auto& heard = parent_->Record().Entries();
        if (!heard.empty()) wrong_ = "the parent was told of a destruction: " + heard.front();
    }
    void Copy() final {
        if constexpr (std::is_copy_constructible_v<T>) const T copy(*control_);
    }
    HWND Remake() override {
        if constexpr (std::is_base_of_v<CKxDevUI_Base, T>)
            return Control()->Create(parent_->Window(), 5, 5, 120, 40, true, true);
        else if constexpr (requires { control_->Create(parent_->Window(), 5, 5, 120, 40, true, true); })
            return control_->Create(parent_->Window(), 5, 5, 120, 40, true, true);
        return nullptr;
    }
    void Destroy() final { control_.reset(); }
    bool Rebuild() override {
        if constexpr (requires { control_->MakeAnew(); }) return control_->MakeAnew(), true;
        if constexpr (requires { control_->CreateControls(); })
            return control_->DestroyControls(), control_->CreateControls(), true;
        return false;
    }
    // One that says already that it hands Tab on needs no word.
    void LetTabIn() override {
        const bool handsOn = (GetWindowLongW(Window(), GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0;
        if constexpr (requires { control_->SetTabStop(true); })
            if (!handsOn) control_->SetTabStop(true);
        if constexpr (requires { control_->SetTabInside(true); }) control_->SetTabInside(true);
    }
    void Change(int n) override {
        if constexpr (requires { control_->MakeAnew(); }) {
            if (n % 2) control_->MakeAnew();
        }
    }

protected:
    // Makes the window of `control_` and fills it.
    virtual void Make(HWND parent) = 0;
    // The invariant of this control, which may have no window, that does not hold any more.
    virtual std::string CheckOwn() { return {}; }
    // After the object or its Destroy, but not after the window alone.
    virtual void Ended() {}

    // Calls a function of the control with parameters from these, one after the other.
    template <class Class, class Result, class... Arguments, class... From>
    std::function<void(Random&)> Do(Result (Class::*function)(Arguments...), From... from) {
        return [=, this](Random& random) {
            const std::tuple<std::decay_t<Arguments>...> given{static_cast<std::decay_t<Arguments>>(from(random))...};
            std::apply([&](const auto&... each) { ((*control_).*function)(each...); }, given);
        };
    }

    // By painting and by the mouse's absence, sooner or later: not by what is done.
    static bool ComesOfItself(const NMHDR& header) {
        return header.code == NM_CUSTOMDRAW || header.code == BCN_HOTITEMCHANGE;
    }

    // Also what the parent is told counts as a callback.
    void Hear(std::initializer_list<UINT> messages) {
        for (const UINT message : messages) {
            parent_->Answer(message, [this, message](WPARAM wParam, LPARAM lParam) {
                if (message != WM_NOTIFY || !ComesOfItself(*reinterpret_cast<const NMHDR*>(lParam)))
                    Told(NameOf(message) + (message == WM_COMMAND ? " " + std::to_string(HIWORD(wParam)) : ""), false);
                return static_cast<LRESULT>(wParam % 3);
            });
        }
    }

    RecordingParent* parent_ = nullptr;
    Buried<T> control_;
    std::string wrong_;

private:
    // What the parent is sent it writes down by itself.
    void Told(const std::string& name, bool record) {
        if (record) parent_->Record().Text(name);
        if (const auto call = told; call && control_) call(name);
    }
};

// A subject's name and how to make it.
struct Kind {
    std::string name;
    std::function<std::unique_ptr<Subject>()> make;
};

// All that are registered, by name.
std::vector<Kind>& Kinds();
// For a test of all kinds: INSTANTIATE_TEST_SUITE_P(All, Suite, testing::ValuesIn(Kinds()), NameOfKind).
std::string NameOfKind(const testing::TestParamInfo<Kind>& info);
void PrintTo(const Kind& kind, std::ostream* out);

void Register(Kind kind);

template <class S>
struct Registered {
    template <class... Arguments>
    explicit Registered(const char* name, Arguments... arguments) {
        Register({name, [=] { return std::make_unique<S>(arguments...); }});
    }
};

}  // namespace kx::test
