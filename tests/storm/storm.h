// The storm: a long, seeded run of messages, sizes, zooms, colours, input and operations against one control, whose
// invariants are checked after every step.
//
//     class RadioSubject : public storm::SubjectOf<CKxDevUI_Radio> { ... Make, Own, CheckOwn, Provoke ... };
//     TEST(RadioStorm, Survives) { storm::Rage<RadioSubject>("radio group"); }
//
// The seed decides every step. A storm is made of rounds of 500 steps, each with a seed of its own that starts from a
// new subject: whatever a round finds is found again by that round alone. A failure, also a crash, names both:
//
//     KX_STORM_SEED=17 KX_STORM_STEPS=413 scripts/wine-run build/mingw-release/bin/storm_test.exe
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <bench/bench.h>
#include <diagnostics/random.h>
#include <kxdevui/framework/devgui_base.h>

namespace kx::test::storm {

using kx::Random;

// Something to do, and how it reads in a report. The text is there before the step is done: a crash is told by it.
struct Step {
    std::string kind;  // the same for all steps of this sort: growth is counted by it
    std::function<void()> run;
    std::string details = {};  // the parameters
};

// A window to aim at. Messages above WM_USER mean something else to each of the platform's own controls, some with
// pointers in them, so only a control of the library is sent unknown ones.
struct Target {
    HWND window;
    bool ours;
};

class Subject {
public:
    virtual ~Subject() = default;

    // Makes the control, and again after its window has gone.
    virtual void Create(RecordingParent& parent) = 0;
    // The object that the operations of CKxDevUI_Base go to; null while there is none.
    virtual CKxDevUI_Base* Control() = 0;
    // Living windows to aim at; none makes the storm call Create.
    virtual std::vector<Target> Windows() = 0;
    virtual Step Operate(Random& random) = 0;
    // The invariant that does not hold any more; empty when all do.
    virtual std::string Check() = 0;
    // Ends object and windows.
    virtual void Destroy() = 0;
};

// A message or an operation that every control must bear. `windows` are the subject's and not empty.
Step CommonStep(Random& random, RecordingParent& parent, Subject& subject, const std::vector<Target>& windows);

// Mostly usual; now and then zero, tiny, huge, infinite or no number.
double AnyNumber(Random& random);

// Runs with a DC that draws into a bitmap of this size.
void WithDc(int width, int height, const std::function<void(HDC)>& run);

// The window and what is in it; nothing for null.
std::vector<Target> TreeOf(HWND window);

// Whether every pixel of the upper left corner of the window that no visible child covers comes out in this colour.
bool PaintsItsBackground(HWND window, COLORREF background);

// A control whose callbacks Tell the subject, which may end the control then.
template <class T>
class Telling : public T {
public:
    std::function<void()> tell;

protected:
    void Tell() const {
        if (const auto told = tell) told();
    }
};

// A subject of one control that its host ends, changes and makes anew, also in the middle of things.
template <class T>
class SubjectOf : public Subject {
public:
    void Create(RecordingParent& parent) final {
        parent_ = &parent;
        next_ = nullptr;
        if (!control_) control_ = std::make_unique<T>();
        if constexpr (requires { control_->tell; }) control_->tell = [this] { Told(); };
        Make(parent.Window());
    }
    CKxDevUI_Base* Control() final {
        if constexpr (std::is_base_of_v<CKxDevUI_Base, T>) return control_.get();
        return nullptr;
    }
    std::vector<Target> Windows() override { return TreeOf(Window()); }
    Step Operate(Random& random) final {
        const int end = random.Below(3), number = random.Between(0, 31);
        switch (random.Below(12)) {
        case 0: return {"an end", [=, this] { End(end); }};
        case 1: return {"creating again", [this] { Create(*parent_); }};
        case 2: return {"a copy", [this] { Copy(); }};
        case 3: return {"an end in a callback", [=, this] { Plan(number, [=, this] { End(end); }); }};
        case 4: return {"a change in a callback", [=, this] { Plan(number, [=, this] { Change(number); }); }};
        default: return Own(random);
        }
    }
    std::string Check() final {
        if (!wrong_.empty() || !control_) return wrong_;
        const HWND window = Window();
        if (window && (!IsWindow(window) || GetParent(window) != parent_->Window()))
            return "the control's window is gone or elsewhere";
        const COLORREF background = Background();
        if (window && background != CLR_INVALID && ++checks_ % 16 == 0 && !PaintsItsBackground(window, background))
            return "the background is not painted";
        return CheckOwn();
    }
    void Destroy() final {
        next_ = nullptr;
        control_.reset();
    }

protected:
    // Makes the window of `control_`.
    virtual void Make(HWND parent) = 0;
    // An operation of this control, which has its window.
    virtual Step Own(Random& random) = 0;
    // The invariant of this control, which may have no window, that does not hold any more.
    virtual std::string CheckOwn() { return {}; }
    virtual COLORREF Background() const { return CLR_INVALID; }
    // What a host may do in a callback besides ending the control.
    virtual void Change(int) {}
    // Causes a callback, where those that come by themselves would be too few, or too deep in the platform's controls.
    // False leaves what is planned to whichever callback is the next.
    virtual bool Provoke(int) { return false; }
    // After the object or its Destroy, but not after the window alone.
    virtual void Ended() {}

    HWND Window() const {
        if (!control_) return nullptr;
        if constexpr (std::is_convertible_v<T&, HWND>)
            return *control_;
        else
            return control_->GetHandle();
    }
    // Also what the parent is told counts as a callback.
    void Hear(std::initializer_list<UINT> messages) {
        for (const UINT message : messages)
            parent_->Answer(message,
                            [this](WPARAM wParam, LPARAM) { return Told(), static_cast<LRESULT>(wParam % 3); });
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<T> control_;
    std::string wrong_;

private:
    void Plan(int number, std::function<void()> action) {
        next_ = std::move(action);
        if (Provoke(number)) next_ = nullptr;
    }
    void Told() {
        if (const auto next = std::exchange(next_, nullptr); next && control_) next();
    }
    // Of the window, or of the object, or by Destroy: of these, the parent is told nothing.
    void End(int how) {
        if (how == 0) {
            DestroyWindow(Window());
            return;
        }
        parent_->Record().Clear();
        if (how == 1) control_->Destroy();
        if (how == 1 && Window()) wrong_ = "the control keeps its window";
        if (how == 2) control_.reset();
        Ended();
        const auto& told = parent_->Record().Entries();
        if (!told.empty()) wrong_ = "the parent was told of a destruction: " + told.front().text;
    }
    void Copy() {
        if constexpr (std::is_copy_constructible_v<T>) const T copy(*control_);
    }

    std::function<void()> next_;
    unsigned checks_ = 0;
};

using MakeSubject = std::function<std::unique_ptr<Subject>()>;

// Runs the storm against subjects made by `make`: some short rounds, or as many steps as KX_STORM_STEPS says from the
// seed KX_STORM_SEED on. Fails the test at the first broken invariant.
void RageAgainst(const char* name, const MakeSubject& make);

template <class S, class... Arguments>
void Rage(const char* name, Arguments... arguments) {
    RageAgainst(name, [=] { return std::make_unique<S>(arguments...); });
}

}  // namespace kx::test::storm
