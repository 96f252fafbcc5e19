// The storm's rounds: steps, invariants, what is left behind, and the report of a failure.
#include "storm.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <subjects/redraw.h>
#include <subjects/user.h>

namespace kx::test::storm {

namespace {

constexpr int stepsPerRound = 500;
constexpr int mostGdiObjects = 400;  // more than that over the beginning of a round

int FromEnvironment(const char* name, int otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoi(value) : otherwise;
}

// Where a storm is.
struct Position {
    const char* subject;
    std::uint64_t seed;
    int step;
    std::string what;
};

std::string Text(const Position& at) {
    return std::string(at.subject) + ", seed " + std::to_string(at.seed) + ", step " + std::to_string(at.step) + " (" +
           at.what + ")\n  again: KX_STORM_SEED=" + std::to_string(at.seed) +
           " KX_STORM_STEPS=" + std::to_string(std::max(at.step, 0) + 1);
}

// What all subjects have in common.
std::string CheckAlways(Subject& subject, HWND parent) {
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    if (!(zoom >= CKxGUILayoutManager::MinimumZoom && zoom <= CKxGUILayoutManager::MaximumZoom))
        return "the zoom is out of range";
    if (!IsWindow(parent)) return "the parent's window is gone";
    return subject.Check();
}

// Names every step before it is taken, for one that does not come to its end.
const bool s_traced = FromEnvironment("KX_STORM_TRACE", 0) != 0;

// Images are kept in every size, zoom and colour that came by, two objects each, up to the pool's bound.
int GdiButForImages() { return Counts::Gdi().gdi - 2 * static_cast<int>(CKxBitmapPool::GetFigures().images); }

// One round: create, step by step, destroy.
class Round {
public:
    Round(Position& position, const Kind& kind, int steps)
        : position_(position), subject_(kind.make()), random_(position.seed), steps_(steps),
          gdiAtFirst_(GdiButForImages()) {}

    // What went wrong; empty when nothing did.
    std::string Run() {
        subject_->Create(parent_);
        for (int i = 0; i < steps_; ++i) {
            position_.step = i;
            if (std::string wrong = OneStep(); !wrong.empty()) return wrong;
        }
        position_.step = steps_;
        return End();
    }

    // The kind of step after which most GDI objects were there that had not been before.
    std::string MostGrowth() const {
        const auto most = std::max_element(growth_.begin(), growth_.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        if (most == growth_.end() || most->second <= 0) return "no step alone grew";
        return "most (" + std::to_string(most->second) + ") came with " + most->first;
    }

private:
    std::string OneStep() {
        position_.what = "creation";
        auto windows = subject_->Windows();
        if (windows.empty()) {
            subject_->told = nullptr;
            subject_->Create(parent_);
            windows = subject_->Windows();
        }
        if (windows.empty()) return "creation failed";
        const Step step =
            random_.OneIn(5) ? OwnStep(random_, parent_, *subject_) : CommonStep(random_, parent_, *subject_, windows);
        position_.what = step.kind + ": " + step.details;
        if (s_traced) std::printf("%d %s\n", position_.step, position_.what.c_str());
        step.run();
        if (random_.OneIn(4)) Pump();
        const int gdi = GdiButForImages();
        growth_[step.kind] += gdi - std::exchange(gdi_, gdi);
        parent_.Record().Clear();
        if (gdi - gdiAtFirst_ > mostGdiObjects) {
            return std::to_string(gdi - gdiAtFirst_) + " more GDI objects than at first; " + MostGrowth();
        }
        return CheckAlways(*subject_, parent_.Window());
    }

    std::string End() {
        position_.what = "the end";
        Pump();
        parent_.Record().Clear();
        subject_->told = nullptr;
        subject_->Destroy();
        const auto& told = parent_.Record().Entries();
        if (!told.empty()) return "the parent was told while the control was being destroyed: " + told.front().text;
        if (GetWindow(parent_.Window(), GW_CHILD)) return "a window is left in the parent";
        return subject_->Check();
    }

    Position& position_;
    RecordingParent parent_;
    std::unique_ptr<Subject> subject_;
    Random random_;
    int steps_;
    int gdiAtFirst_;
    int gdi_ = gdiAtFirst_;
    std::map<std::string, int> growth_;
};

// The law of redrawing, every so often among operations, zooms and colours: of a subject of its own, as messages at
// random leave windows over each other and undrawn. What is wrong; empty when nothing is.
std::string NotDrawn(Position& position, const Kind& kind) {
    constexpr int operations = 24;
    Random random(position.seed);
    RecordingParent parent({880, 310});
    const auto subject = kind.make();
    const auto exceptions = subject->Exceptions();
    position.step = 0;
    for (int i = 0; i < operations; ++i) {
        if (!subject->Window()) subject->Create(parent);
        if (random.OneIn(8)) CKxGUILayoutManager::SetGuiZoom(random.Of({1.0, 1.25, 1.5}));
        if (random.OneIn(8)) KX_SetColorScheme(static_cast<EKxColorScheme>(random.Below(4)));
        const Operation& operation = random.Of(subject->Operations());
        position.what = operation.name + ", operation " + std::to_string(i) + ", to see whether it is drawn";
        const bool excepted = std::any_of(exceptions.begin(), exceptions.end(), [&](const Exception& each) {
            return (each.law == Law::Redraw || each.law == Law::Later) && operation.name.starts_with(each.what);
        });
        if (excepted) continue;
        operation.run(random);
        if (!random.OneIn(3) || !subject->Window()) continue;
        if (std::string wrong = NotRedrawn(parent.Window()); !wrong.empty()) return wrong;
    }
    return {};
}

void PutBack() {
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(1.0);
    Pump();
}

// What is wrong after one round or, when something was left behind, after three: fonts, brushes and DCs are cached, and
// a cache grows once, a leak every time.
std::string RunRound(Position& position, const Kind& kind, int steps) {
    std::string left, most;
    for (int attempt = 0; attempt < 3; ++attempt) {
        PutBack();
        const Counts before = Counts::Now();
        if (std::string wrong = NotDrawn(position, kind); !wrong.empty()) return wrong;
        PutBack();
        {
            Round round(position, kind, steps);
            if (std::string wrong = round.Run(); !wrong.empty()) return wrong;
            most = round.MostGrowth();
        }
        Pump();
        CKxBitmapPool::Clear();
        const Counts after = Counts::Now();
        if (after.gdi <= before.gdi && after.windows <= before.windows) return {};
        left = std::to_string(after.gdi - before.gdi) + " GDI objects and " +
               std::to_string(after.windows - before.windows) + " windows are left; " + most;
    }
    return left;
}

}  // namespace

class Storm : public testing::TestWithParam<Kind> {};

// Some short rounds, or as many steps as KX_STORM_STEPS says from the seed KX_STORM_SEED on.
TEST_P(Storm, Survives) {
    const int seed = FromEnvironment("KX_STORM_SEED", 1);
    const int steps = FromEnvironment("KX_STORM_STEPS", 500);
    ASSERT_GT(steps, 0) << "KX_STORM_STEPS";
    const NobodyAnswers nobody;
    Position position{GetParam().name.c_str(), 0, 0, ""};
    crashNote = [&position] { return Text(position); };
    std::string wrong;
    for (int done = 0, round = 0; done < steps && wrong.empty(); done += stepsPerRound, ++round) {
        position.seed = static_cast<std::uint64_t>(seed + round);
        wrong = RunRound(position, GetParam(), std::min(stepsPerRound, steps - done));
    }
    crashNote = nullptr;
    if (!wrong.empty()) FAIL() << wrong << "\n  " << Text(position);
    std::printf("%s: %d steps from seed %d on\n", position.subject, steps, seed);
}

INSTANTIATE_TEST_SUITE_P(All, Storm, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace kx::test::storm
