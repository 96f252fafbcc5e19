// The storm: a long, seeded run of messages, sizes, zooms, colours, input and operations against one control, whose
// invariants are checked after every step, and every so often that the screen shows what a full repaint draws. The
// controls are the subjects of tests/subjects.
//
// The seed decides every step. A storm is made of rounds of 500 steps, each with a seed of its own that starts from a
// new subject: whatever a round finds is found again by that round alone. A failure, also a crash, names both:
//
//     KX_STORM_SEED=17 KX_STORM_STEPS=413 scripts/wine-run build/mingw-release/bin/storm_test.exe
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <subjects/subject.h>

namespace kx::test::storm {

// Something to do, and how it reads in a report. The text is there before the step is done: a crash is told by it.
struct Step {
    std::string kind;  // the same for all steps of this sort: growth is counted by it
    std::function<void()> run;
    std::string details = {};  // the parameters
};

// A message or an operation that every control must bear. `windows` are the subject's and not empty.
Step CommonStep(Random& random, RecordingParent& parent, Subject& subject, const std::vector<Target>& windows);

// What a host does with this control: its operations, an end or a change, at once or in the next callback.
Step OwnStep(Random& random, RecordingParent& parent, Subject& subject);

}  // namespace kx::test::storm
