#include "law.h"

#include <algorithm>
#include <map>
#include <cstdio>
#include <sstream>

#include <kxbaseui/kx_layoutmanager.h>

namespace kx::test {
namespace {

// For the widest subject at the largest zoom that is looked at, and no larger: every comparison reads it all.
constexpr SIZE kRoom{880, 310};

}  // namespace

std::string TextOf(const State& state) {
    static constexpr const char* names[] = {"system", "light", "dark", "high contrast"};
    std::ostringstream out;
    out << names[state.scheme] << ", zoom " << state.zoom << (state.enabled ? ", enabled" : ", disabled");
    return out.str();
}

const std::vector<State>& States() {
    static const std::vector<State> states{
        {eKxColorScheme_System, 1, true},        {eKxColorScheme_System, 1.5, false},
        {eKxColorScheme_Light, 1, false},        {eKxColorScheme_Light, 1.5, true},
        {eKxColorScheme_Dark, 1, true},          {eKxColorScheme_Dark, 1.5, false},
        {eKxColorScheme_HighContrast, 1, false}, {eKxColorScheme_HighContrast, 1.5, true},
    };
    return states;
}

LawTest::LawTest(const std::vector<Law>& laws) : exceptions_(GetParam().make()->Exceptions()) {
    std::erase_if(exceptions_,
                  [&](const Exception& each) { return std::count(laws.begin(), laws.end(), each.law) == 0; });
    crashNote = [this] { return GetParam().name + ": " + doing_; };
}

LawTest::~LawTest() {
    crashNote = nullptr;
    Finish();
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(1.0);
}

void LawTest::TearDown() {
    EXPECT_GT(checked_ + excepted_, 0) << "nothing was looked at";
    std::printf("%s: %d looked at, %d failed, %d excepted\n", GetParam().name.c_str(), checked_, failed_, excepted_);
    for (const Exception& each : exceptions_)
        std::printf("  excepted: %s, %s\n", each.what.c_str(), each.why.c_str());
}

void LawTest::Finish() {
    subject_ = nullptr;
    parent_ = nullptr;
}

void LawTest::Begin(const State& state) {
    Finish();
    state_ = state;
    KX_SetColorScheme(state.scheme);
    CKxGUILayoutManager::SetGuiZoom(state.zoom);
    parent_ = std::make_unique<RecordingParent>(kRoom);
    // What is made under the mouse is hovered, and Wine notices late that it no longer is.
    MoveAway(parent_->Window());
    subject_ = GetParam().make();
    doing_ = "creation, " + TextOf(state);
    if (!Ready()) return;
    CKxGUILayoutManager::ResizeWindowToGuiZoom(subject_->Window(), 1.0);
    if (!state.enabled) subject_->Enable(false);
    MoveAway(parent_->Window());
    parent_->Record().Clear();
}

bool LawTest::Ready() {
    // What waits in the queue may make the host end it once more, some of it later than a first look at the queue.
    for (int tries = 0; tries == 0 || (tries < 3 && !subject_->Window()); ++tries) {
        if (!parent_->Window()) parent_ = std::make_unique<RecordingParent>(kRoom);
        if (!subject_->Window()) subject_->Create(*parent_);
        Pump();
    }
    EXPECT_TRUE(subject_->Window()) << GetParam().name << " cannot be made: " << doing_;
    return subject_->Window() != nullptr;
}

void LawTest::ForEachOperation(const std::function<void(const Operation&, Random&)>& run) {
    for (int seed = 0; seed < seedsPerOperation; ++seed) {
        for (std::size_t i = 0; i < Control().Operations().size(); ++i) {
            if (seed == 0) Begin(state_);
            if (!Ready()) return;
            const Operation& operation = Control().Operations()[i];
            doing_ = operation.name + ", seed " + std::to_string(seed);
            Random random(static_cast<std::uint64_t>(seed) * 1000 + i);
            run(operation, random);
        }
    }
}

std::vector<std::size_t> LawTest::SomeWindows() {
    constexpr int most = 4;
    std::map<std::string, int> seen;
    std::vector<std::size_t> some;
    const auto windows = Control().Windows();
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const std::string name = NameOfWindow(windows[i].window);
        if (++seen[name.substr(0, name.find(' '))] <= most) some.push_back(i);
    }
    return some;
}

bool LawTest::IsExcepted(const std::string& what) {
    const bool excepted = std::any_of(exceptions_.begin(), exceptions_.end(), [&](const Exception& each) {
        return each.what.empty() || what.starts_with(each.what);
    });
    if (excepted) ++excepted_;
    return excepted;
}

void LawTest::Expect(bool holds, const std::string& where, const std::string& otherwise) {
    ++checked_;
    if (holds) return;
    // The first few tell enough.
    if (++failed_ <= 6) ADD_FAILURE() << GetParam().name << ", " << where << ": " << otherwise;
}

void LawTest::ExpectUnheard(const std::string& after) {
    ++checked_;
    for (const std::string& entry : parent_->Record().Entries())
        if (entry != NameOf(WM_DRAWITEM) && !IsExcepted(entry)) Expect(false, after, "the host hears " + entry);
    parent_->Record().Clear();
}

}  // namespace kx::test
