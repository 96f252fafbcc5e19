// A law: what holds for every control. Each is a suite of its own, with a test for every subject (tests/subjects), in
// states that cover every pair of colour scheme, zoom and enabling.
#pragma once

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <subjects/redraw.h>
#include <subjects/subject.h>
#include <subjects/user.h>

namespace kx::test {

struct State {
    EKxColorScheme scheme;
    double zoom;
    bool enabled;
};
std::string TextOf(const State& state);
const std::vector<State>& States();

// The parameters of every operation come from a few seeds of this law's own.
inline constexpr int seedsPerOperation = 2;

// A test of one law and one subject: starts in the first state, puts everything back, says what was looked at.
class LawTest : public testing::TestWithParam<Kind> {
protected:
    // Of these, the subject's exceptions count.
    explicit LawTest(const std::vector<Law>& laws);
    ~LawTest() override;
    void TearDown() override;

    // A new subject in a new parent, in this state, painted.
    void Begin(const State& state = States().front());
    // Control and parent are gone.
    void Finish();
    // The control is there, made anew if need be; false after a failure.
    bool Ready();
    // Runs every operation of the subject with some parameters: on a control as it was begun, then one after the other.
    void ForEachOperation(const std::function<void(const Operation& operation, Random& random)>& run);

    // The indexes of the control's windows, without most of those of which a class has many.
    std::vector<std::size_t> SomeWindows();

    // Whether the subject excepts this by name, which is counted.
    bool IsExcepted(const std::string& what);
    // Counts one comparison; a failure names the subject, the place and what is wrong.
    void Expect(bool holds, const std::string& where, const std::string& otherwise);
    // The host has heard nothing since the last time but what is excepted, and what asks it to paint.
    void ExpectUnheard(const std::string& after);
    void ExpectNothing(const std::string& wrong, const std::string& where) { Expect(wrong.empty(), where, wrong); }

    RecordingParent& Parent() { return *parent_; }
    Subject& Control() { return *subject_; }

    std::string doing_;  // told by a crash

private:
    State state_{};
    ClientAnimation still_{false};
    std::unique_ptr<RecordingParent> parent_;
    std::unique_ptr<Subject> subject_;
    // What ends a control may come while one of its boxes or menus is open, too.
    NobodyAnswers nobody_{[this](const char* what) {
        if (subject_ && subject_->told) subject_->told(what);
    }};
    std::vector<Exception> exceptions_;
    std::vector<int> used_;
    int checked_ = 0;
    int excepted_ = 0;
    int failed_ = 0;
};

template <Law... laws>
struct LawOf : LawTest {
    LawOf() : LawTest({laws...}) {}
};

}  // namespace kx::test
