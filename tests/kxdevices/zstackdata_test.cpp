// The record of a Z series: what each setter moves and what it leaves.
#include <bench/bench.h>
#include <kxdevices/kx_zstackdata.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <tuple>

namespace {

constexpr double None = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// The numbers of a record; None where one is not set, a count of 0 likewise.
struct State {
    int type = 0;
    double bottom = None, home = None, top = None, step = None;
    unsigned count = 0;

    static State Of(const CKxZStackData& record) {
        State state;
        record.GetType(&state.type), record.GetStep(&state.step), record.GetCount(&state.count);
        record.GetBottom(&state.bottom), record.GetHome(&state.home), record.GetTop(&state.top);
        return state;
    }
    void Enter(CKxZStackData& record) const {
        int status = record.SetType(type);
        if (home != None) status += record.SetHome(home);
        if (bottom != None) status += record.SetBottom(bottom, false);
        if (top != None) status += record.SetTop(top, false);
        if (step != None) status += record.SetStep(step);
        if (count != 0) status += record.SetCount(count);
        EXPECT_EQ(status, 0);
    }
    bool operator==(const State&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const State& state) {
        return out << "type " << state.type << ", " << state.bottom << " | " << state.home << " | " << state.top
                   << ", step " << state.step << ", count " << state.count;
    }
};

constexpr std::nullopt_t Refused = std::nullopt;

using R = CKxZStackData;
const auto Top = [](double value, bool adjust) { return [=](R& r) { return r.SetTop(value, adjust); }; };
const auto Bottom = [](double value, bool adjust) { return [=](R& r) { return r.SetBottom(value, adjust); }; };
const auto Home = [](double value) { return [=](R& r) { return r.SetHome(value); }; };
const auto Step = [](double value) { return [=](R& r) { return r.SetStep(value); }; };
const auto Count = [](unsigned value) { return [=](R& r) { return r.SetCount(value); }; };
const auto Type = [](int value) { return [=](R& r) { return r.SetType(value); }; };
// To the piezo from 0 to 200; where drive and piezo stand.
const auto Piezo = [](double from, double to) {
    return [=](R& r) {
        EXPECT_EQ(r.SetZPosition(0, from), from == None ? eKxZStack_Invalid : 0);
        return r.SetZPosition(1, to) + r.SetZDevice(1);
    };
};

// On a drive from 0 to 1000. What is refused leaves everything as it was; the status is -17 only beyond the device.
TEST(ZStackData, SettersMoveWhatTheyShould) {
    // clang-format off
    const State plain{0, 100, None, 110, 3, 4}, around{2, 90, 100, 110, 5, 5};
    const State above{3, 90, 100, 130, 10, 5}, free{3, -10, None, 30, 10, 5};
    struct Row {
        const char* what; State before; std::function<int(R&)> change; std::optional<State> after = {};
        int status = after ? 0 : eKxZStack_OutOfRange;  // nothing after it: refused
    };
    const Row rows[] = {
        {"a value is rounded, halves away from zero", {}, Top(1.0005, false), State{0, None, None, 1.001}},
        {"also what a sum has left of one", {}, Top(4.4995 - 1e-12, false), State{0, None, None, 4.5}},
        {"negative halves too", {3}, Bottom(-1.0005, false), State{3, -1.001}},
        {"ends on one spot are one plane", plain, Top(100, false), State{0, 100, None, 100, 3, 1}},
        {"the far end of the device", plain, Top(1000, false), State{0, 100, None, 1000, 3, 301}},
        {"beyond it", plain, Top(1000.001, false)}, {"reversed", plain, Top(99, false), Refused, eKxZStack_Reversed},
        {"reversed and beyond", plain, Top(-1, false)}, {"the other end", plain, Bottom(111, false), Refused, eKxZStack_Reversed},
        {"too many planes", {0, 0, None, None, 0.001}, Top(1000, false), Refused, eKxZStack_Planes},
        {"what is no number", plain, Top(NaN, true), Refused, eKxZStack_Invalid}, {"beyond any device", plain, Bottom(1e300, true)},
        {"stopped by the device, as long as asked for", plain, Top(1005, true), State{0, 95, None, 1000, 3, 302}},
        {"longer than the device", plain, Top(1101, true)}, {"no other end to move", {0, None, 5}, Top(1001, true)},
        {"a new place below", plain, Top(50, true), State{0, 40, None, 50, 3, 4}},
        {"a new place above", plain, Bottom(995, true), State{0, 995, None, 1000, 3, 2}},
        {"around home, home goes along", above, Top(1020, true), State{3, 70, 80, 1000, 10, 94}},
        {"unless home cannot", {3, 10, 5, 900}, Top(1009, true)},
        {"the panel's undo passes home", above, Top(95, true), State{3, 90, 100, 95, 10, 1}},
        {"a negative range is none", around, Bottom(120, true), Refused, eKxZStack_Reversed},
        {"nor past a home that lies outside", {2, 10, 5, 20}, Bottom(30, true), Refused, eKxZStack_Reversed},
        {"from the right side of home", {2, 10, 500, 20, 5}, Bottom(450, true), State{2, 450, 500, 460, 5, 3}},

        {"home moves nothing that its ends hold", plain, Home(500), State{0, 100, 500, 110, 3, 4}},
        {"home out of range", plain, Home(1001)},
        {"home takes its stack along", above, Home(200), State{3, 190, 200, 230, 10, 5}},
        {"as far as the device goes", above, Home(990), State{3, 960, 990, 1000, 10, 5}},
        {"home anchors distances", free, Home(100), above},
        {"and lets go", above, [](R& r) { return r.ResetHome(); }, free},
        {"distances do not know the device", {2, -400, None, 400}, Top(600, false), State{2, -400, None, 600}},
        {"but its length", {2, -400, None, 400}, Top(601, false)},
        {"the other end gives way", {2, -400, None, 400}, Top(601, true), State{2, -399, None, 601}},
        {"distances reversed", free, Top(-11, true), Refused, eKxZStack_Reversed},

        {"the step fits the count", plain, Count(3), State{0, 100, None, 110, 5, 3}},
        {"the count that it has", plain, Count(4), plain},
        {"cut to whole nanometres", plain, Count(7), State{0, 100, None, 110, 1.666, 7}},
        {"one plane keeps the step", plain, Count(1), State{0, 100, None, 110, 3, 1}},
        {"no plane", plain, Count(0), Refused, eKxZStack_Planes}, {"minus one", plain, Count(4294967295u), Refused, eKxZStack_Planes},
        {"more planes than nanometres", {0, 0, None, 0.005, 0.001}, Count(7), Refused, eKxZStack_Planes},
        {"no such step: 5 nm in 5 planes", {0, 0, None, 0.005, 0.002}, Count(5), Refused, eKxZStack_Planes},
        {"a count in waiting", {0, 100}, Count(5), State{0, 100, None, None, None, 5}},
        {"meets its ends", {0, 100, None, None, None, 5}, Top(104, false), State{0, 100, None, 104, 1, 5}},
        {"0.3 in steps of 0.1", {0, 0, None, 0.3}, Step(0.1), State{0, 0, None, 0.3, 0.1, 4}},
        {"the count fits the step", plain, Step(4), State{0, 100, None, 110, 4, 3}},
        {"a step longer than the stack", plain, Step(11), State{0, 100, None, 110, 11, 1}},
        {"no step", plain, Step(0), Refused, eKxZStack_Invalid}, {"less than a nanometre", plain, Step(0.0004), Refused, eKxZStack_Invalid},
        {"backwards", plain, Step(-1), Refused, eKxZStack_Invalid}, {"no number", plain, Step(NaN), Refused, eKxZStack_Invalid},
        {"more than a million planes", {0, 0, None, 1000, 1}, Step(0.0005), Refused, eKxZStack_Planes},

        {"unknown type", plain, Type(8), Refused, eKxZStack_Invalid}, {"nor negative", plain, Type(-1), Refused, eKxZStack_Invalid},
        {"the upper variant is the same", above, Type(7), State{7, 90, 100, 130, 10, 5}},
        {"a home in the middle", plain, Type(2), State{2, 100, 105, 110, 3, 4}},
        {"even if it was elsewhere", above, Type(2), State{2, 90, 110, 130, 10, 5}},
        {"a home between the ends stays", {0, 100, 102, 110, 3}, Type(3), State{3, 100, 102, 110, 3, 4}},
        {"one outside does not", {0, 100, 900, 110, 3}, Type(3), State{3, 100, 105, 110, 3, 4}},
        {"one end is no distance", {0, 100}, Type(3), State{3}},
        {"distances are no positions", free, Type(0), State{0, None, None, None, 10, 5}},
        {"distances are made equal", free, Type(2), State{2, -20, None, 20, 10, 5}},
        {"reset", plain, [](R& r) { return r.ResetTop() + r.ResetBottom(); }, State{0, None, None, None, 3, 4}},

        // The same place in the sample has other numbers on another device.
        {"positions follow", {0, 140, 300, 160}, Piezo(150, 100), State{0, 90, None, 110}},
        {"as far as the device goes", {3, 140, 150, 160}, Piezo(150, 195), State{3, 180, 190, 200}},
        {"unknown: the numbers stay", {3, 140, 150, 160}, Piezo(None, 100), State{3, 140, 150, 160}},
        {"and are moved into the range", {0, 940, None, 960}, Piezo(None, 100), State{0, 180, None, 200}},
        {"too long", {3, 100, 150, 400, 10}, Piezo(150, 100), State{3, None, None, None, 10, 31}},
        {"distances stay", {2, -50, None, 50}, Piezo(150, 100), State{2, -50, None, 50}},
        {"unless they are too long", {2, -101, None, 101}, Piezo(150, 100), State{2}},
        {"no such device", plain, [](R& r) { return r.SetZDevice(2); }, Refused, eKxZStack_NoDevice},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        CKxZStackData record;
        unsigned device = 9;
        EXPECT_EQ(record.AddZDevice(0, 1000, nullptr) + record.AddZDevice(0, 200, &device) + record.SetZDevice(0), 0);
        EXPECT_EQ(device, 1u);
        row.before.Enter(record);
        const State before = State::Of(record);
        EXPECT_EQ(row.change(record), row.status);
        EXPECT_EQ(State::Of(record), row.after.value_or(before));
    }
}

TEST(ZStackData, CountsPlanesFromTheEndThatIsKept) {
    CKxZStackData record;
    (State{0, 0, None, 10, 3}).Enter(record);
    double plane = 0, remainder = 0;
    EXPECT_TRUE(record.GetRemainder(&remainder) == 0 && remainder == 1);
    for (const auto& [preserved, type, first] : {std::tuple{false, 0, 0.0}, {true, 4, 1.0}, {true, 2, 0.0}}) {
        record.SetAbsoluteZStackTopPreserved(preserved);
        record.SetType(type);
        EXPECT_EQ(record.GetPlane(0, &plane), 0);
        EXPECT_EQ(plane, first) << type;
    }
    EXPECT_EQ(record.GetPlane(4, &plane), eKxZStack_NotSet);
}

TEST(ZStackData, SuggestsTheNyquistStep) {
    // By hand: sin a = 1.4 / 1.515, cos a = 0.38212, 520 / (2 * 1.515 * 0.61788) = 277.7. A step of None: refused.
    const std::array<double, 4> table[] = {{1.4, 1.515, 520, 0.278}, {0.5, 1, 500, 1.866}, {1, 1, 500, 0.25},
                                           {1.1, 1, 500, None},      {0, 1, 500, None},    {NaN, 1, 500, None},
                                           {0.5, None, 500, None},   {0.5, 1, 0, None},    {0.5, 1, NaN, None}};
    for (const auto& [aperture, index, wavelength, step] : table) {
        CKxZStackData record;
        const int status = record.SetObjective(aperture, index) + record.SetWavelength(wavelength);
        double suggested = None;
        EXPECT_EQ(status, step == None ? eKxZStack_Invalid : 0) << aperture << ' ' << index << ' ' << wavelength;
        EXPECT_EQ(record.GetStepSuggested(&suggested), step == None ? eKxZStack_NotSet : 0);
        EXPECT_EQ(suggested, step);
    }
}

TEST(ZStackData, LeavesOutputsAloneAndGivesItsStatusWithoutOne) {
    CKxZStackData empty, full;
    full.AddZDevice(0, 1000, nullptr);
    full.SetZDevice(0), full.SetZPosition(0, 5), full.SetObjective(0.5, 1), full.SetWavelength(500);
    (State{3, 90, 100, 130, 10}).Enter(full);
    for (const auto getter : {&R::GetTop, &R::GetBottom, &R::GetHome, &R::GetStep, &R::GetStepSuggested,
                              &R::GetRemainder, &R::GetZRangeMin, &R::GetZRangeMax, &R::GetZPosition})
        EXPECT_TRUE((empty.*getter)(nullptr) != 0 && (full.*getter)(nullptr) == 0);
    EXPECT_EQ(empty.GetCount(nullptr) + empty.GetZDevice(nullptr), 2 * eKxZStack_NotSet);
    EXPECT_EQ(full.GetCount(nullptr) + full.GetZDevice(nullptr) + full.GetType(nullptr) + full.GetPlane(0, nullptr), 0);
    unsigned device = 7;
    double limit = 7;
    EXPECT_EQ(empty.GetZDevice(&device) + empty.GetZRangeMin(&limit) + empty.GetZPosition(&limit),
              eKxZStack_NotSet + 2 * eKxZStack_NoDevice);
    EXPECT_EQ(device + limit, 14) << "outputs are left alone";
    for (const auto& [low, high] : {std::pair{5.0, 4.0}, {NaN, 4.0}, {0.0, None}})
        EXPECT_EQ(empty.AddZDevice(low, high, &device), eKxZStack_Invalid);
}

TEST(ZStackData, ComparesWhatMakesTheSeries) {
    CKxZStackData record;
    (State{3, 90, 100, 130, 10}).Enter(record);
    const auto same = [&](const std::function<int(R&)>& change) {
        CKxZStackData other(record);
        EXPECT_EQ(change(other), 0);
        bool equal = false;
        EXPECT_EQ(record.IsEqual(other, &equal) + record.IsEqual(other, nullptr), 0);
        return equal;
    };
    EXPECT_TRUE(same([](R& r) { return r.SetWavelength(500); }));
    for (const auto& change : std::initializer_list<std::function<int(R&)>>{
             Type(7), Top(131, false), Bottom(89, false), Home(101), Step(11), Count(1),
             [](R& r) { return r.ResetTop(); }, [](R& r) { return r.AddZDevice(0, 1000, nullptr) + r.SetZDevice(0); },
             [](R& r) { return r.SetKeepZOnPiezoHome(true); },
             [](R& r) { return r.SetAbsoluteZStackTopPreserved(true); }}) {
        EXPECT_FALSE(same(change));
    }
}

}  // namespace
