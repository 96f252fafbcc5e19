// The storm: a long, seeded run of messages, sizes, zooms, colours, input and operations against one control, whose
// invariants are checked after every step.
//
//     class SliderSubject : public storm::Subject { ... Create, Control, Windows, Operate, Check, Destroy ... };
//     TEST(SliderStorm, Survives) { storm::Rage("slider", [] { return std::make_unique<SliderSubject>(); }); }
//
// The seed decides every step. A storm is made of rounds of 500 steps, each with a seed of its own that starts from a
// new subject: whatever a round finds is found again by that round alone. A failure, also a crash, names both:
//
//     KX_STORM_SEED=17 KX_STORM_STEPS=413 scripts/wine-run build/mingw-release/bin/storm_test.exe
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <bench/bench.h>
#include <diagnostics/random.h>
#include <kxdevui/framework/devgui_base.h>

namespace kx::test::storm {

using kx::Random;

// Something to do, and how it reads in a report. The text is there before the step is done: a crash is told by it.
struct Step {
    std::string kind;     // the same for all steps of this sort: growth is counted by it
    std::string details;  // the parameters
    std::function<void()> run;
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
    // An operation of this control alone.
    virtual Step Operate(Random& random) = 0;
    // The invariant that does not hold any more; empty when all do.
    virtual std::string Check() = 0;
    // Ends object and windows.
    virtual void Destroy() = 0;
};

// A message or an operation that every control must bear. `windows` are the subject's and not empty.
Step CommonStep(Random& random, RecordingParent& parent, Subject& subject, const std::vector<Target>& windows);

// Whether every pixel of the upper left corner of the window that no visible child covers comes out in this colour.
bool PaintsItsBackground(HWND window, COLORREF background);

// Runs the storm against subjects made by `make`: some short rounds, or as many steps as KX_STORM_STEPS says from the
// seed KX_STORM_SEED on. Fails the test at the first broken invariant.
void Rage(const char* name, const std::function<std::unique_ptr<Subject>()>& make);

}  // namespace kx::test::storm
