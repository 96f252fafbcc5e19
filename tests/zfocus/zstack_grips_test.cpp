// The grips beside the Z scale: their rules as tables, and the panel with them under the hands of users.
#include "zstack_panel.h"

#include <bench/reader.h>

#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/zfocus/zstack_window.h>

#include <map>

namespace {

using namespace kx::test;
using namespace kx::zstack;
using Position = std::optional<double>;

TEST(ZGrips, AskForWhatTheTypeOfTheStackAllows) {
    const auto wanted = [](Position home, Position bottom, Position top) {
        return Wanted{eKxZStack_Ok, home, bottom, top};
    };
    const auto refused = [](EKxZStackStatus why) { return Wanted{why, {}, {}, {}}; };
    constexpr Position none;
    const std::tuple<int, Position, Grip, double, Wanted> rows[] = {
        {0, 50, Grip::Top, 80, wanted(none, none, 80)},
        {4, 50, Grip::Bottom, 55, wanted(none, 55, none)},  // beyond a home that does not hold it
        {1, 50, Grip::Home, 99, wanted(99, none, none)},    // wherever the record lets it
        {2, 50, Grip::Top, 80, wanted(none, 20, 80)},
        {6, none, Grip::Bottom, -15, wanted(none, -15, 15)},  // distances
        {2, 50, Grip::Top, 49, refused(eKxZStack_Reversed)},
        {3, 50, Grip::Top, 80, wanted(none, none, 80)},
        {3, 50, Grip::Bottom, 50.5, refused(eKxZStack_Reversed)},
        {3, 50, Grip::Home, 90, wanted(90, none, none)},
        {3, 50, Grip::Home, 90.001, refused(eKxZStack_OutOfRange)},
        {7, 50, Grip::Home, 9, refused(eKxZStack_OutOfRange)},
    };
    for (const auto& [type, home, grip, z, expected] : rows) {
        const double at = home.value_or(0);
        const StackNumbers numbers{type, at + 10, at - 10, home, 0, 100, 1, 21};
        EXPECT_EQ(WantedFor(numbers, grip, z), expected) << "type " << type << " to " << z;
    }
}

TEST(ZGrips, StandBesideTheirLinesAndApart) {
    ScaleValues values;
    values.top = 80, values.bottom = 20, values.home = 78;
    const Axis axis{{0, 100}, 0, 100};
    using Places = std::vector<GripPlace>;
    EXPECT_EQ(PlaceGrips(values, axis, 10),
              (Places{{Grip::Top, 20, 15}, {Grip::Home, 22, 25}, {Grip::Bottom, 80, 75}}));
    values.home = 120, values.bottom.reset();  // beyond the axis; not set
    const Places places = PlaceGrips(values, axis, 10);
    EXPECT_EQ(places, (Places{{Grip::Home, 0, 0}, {Grip::Top, 20, 15}}));
    ScaleValues tiny;  // on a drive of ten millimetres
    tiny.top = 4000.2, tiny.bottom = 4000;
    EXPECT_EQ(PlaceGrips(tiny, {{0, 10000}, 0, 100}, 10), (Places{{Grip::Top, 60, 55}, {Grip::Bottom, 60, 65}}));
    const std::pair<int, std::optional<Grip>> rows[] = {{0, Grip::Home}, {9, Grip::Home}, {10, std::nullopt},
                                                        {15, Grip::Top}, {24, Grip::Top}, {25, std::nullopt}};
    for (const auto& [row, grip] : rows)
        EXPECT_EQ(GripAt(places, row, 10), grip) << row;
}

TEST(ZGrips, MoveInStepsThatCanBeSeen) {
    const Axis fine{{0, 30}, 0, 100}, coarse{{-500, 10500}, 0, 100}, tiny{{0, 0.01}, 0, 100};
    const std::tuple<double, const Axis*, int, double> rows[] = {{12.345, &fine, 50, 12.345},
                                                                 {12.345, &fine, 49, 12.6},
                                                                 {12.345, &fine, 150, -17.7},
                                                                 {4012, &coarse, 40, 5100},
                                                                 {0.004, &tiny, 30, 0.006}};
    for (const auto& [from, axis, row, to] : rows)
        EXPECT_DOUBLE_EQ(DraggedTo(from, 50, *axis, row), to) << row;
    EXPECT_EQ(LengthOf(GripStep::Fine, 0.004, fine), 0.001) << "not below a nanometre";
    EXPECT_EQ(LengthOf(GripStep::Planes, std::nullopt, fine), 1);
    const Stretch all{0, 100};
    for (const auto& [z, notches, low, high] :
         {std::tuple{50.0, 1, 10.0, 90.0}, {0.0, 1, 0.0, 80.0}, {100.0, 2, 36.0, 100.0}, {30.0, -1, 0.0, 100.0}}) {
        const Stretch magnified = Magnified(all, all, z, notches);
        EXPECT_NEAR(magnified.low + 1000 * magnified.high, low + 1000 * high, 1e-6) << notches;
    }
    EXPECT_NEAR(Magnified(all, all, 50, 1000).high, 50.025, 1e-9) << "an end to it";
}

TEST(ZGrips, ALivePositionChangesStripsAlone) {
    const Axis axis{{0, 100}, 0, 100};
    ScaleValues at;
    at.top = 80, at.bottom = 20, at.z = 50;
    const auto with = [&](auto change) {
        ScaleValues values = at;
        change(values);
        return StripsOf(at, values, axis, 2);
    };
    using Strips = std::vector<Strip>;
    EXPECT_EQ(with([](auto& v) { v.z = 50.2; }), Strips{}) << "the same row";
    EXPECT_EQ(with([](auto& v) { v.z = 60; }), (Strips{{48, 53}, {38, 43}}));
    EXPECT_EQ(with([](auto& v) { v.z.reset(); }), (Strips{{48, 53}}));
    EXPECT_EQ(with([](auto& v) { v.asked = 70; }), (Strips{{48, 53}, {28, 33}}));
    EXPECT_EQ(with([](auto& v) { v.z = 130; }), (Strips{{48, 53}, {-2, 3}})) << "the arrowhead at the end";
    EXPECT_EQ(with([](auto& v) { v.z = 60, v.top = 81; }), std::nullopt) << "more than that";
}

// Around 510, from 500 to 520 in steps of 2, on a drive of 1000.
struct ZGripsPanel : PanelTest {
    void Make(int type) {
        record = CKxZStackData();
        panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true);
        panel.EnableGrips(true);
        panel.AddZDevice(L"drive", false, 1, 0, 1000, false, 0, true);
        record.SetType(type), record.SetHome(510), record.SetBottom(500, true), record.SetTop(520, true);
        record.SetStep(2), record.SetZPosition(0, 505);
        panel.onChanged = [this] { panel.UpdateGUI(3); };
        panel.UpdateGUI(3);
        heard.Clear();
        BringToFront(panel.GetHandle());
        Pump();
    }
    // In the window of the grips.
    Axis ScaleAxis() {
        RECT client{};
        GetClientRect(Item(IDC_ZS_GRIPS), &client);
        const auto shown = ShownOf(panel.GetHandle());
        return {shown->StretchOf(shown->scale), 1, static_cast<int>(client.bottom) - 2};
    }
    int RowOf(Grip grip) {
        for (const auto& each : PlaceGrips(ShownOf(panel.GetHandle())->scale, ScaleAxis(), 13))
            if (each.grip == grip) return each.top + 6;
        return -1;
    }
    // By so many rows, in steps as a hand makes them.
    void Drag(Grip grip, int rows) {
        const int from = RowOf(grip);
        Press(Item(IDC_ZS_GRIPS), 8, from);
        for (const int percent : {40, 100})
            MoveTo(Item(IDC_ZS_GRIPS), 8, from + rows * percent / 100);
    }
    // The ends with the home, in tenths; what the host was told, each once.
    std::string See() override {
        double bottom = 0, home = 0, top = 0;
        record.GetBottom(&bottom), record.GetHome(&home), record.GetTop(&top);
        const std::string told = heard.Take();
        return CallText("", std::lround(bottom * 10), std::lround(home * 10), std::lround(top * 10)) +
               (told.find("Changed(3)") != told.npos ? " Changed" : "") +
               (told.find("Move") != told.npos ? " Move" : "");
    }
    std::string Answer() { return Narrow(TextOf(kx::ui::AnswerWindow())); }
    CKxZStackData record;
};

TEST_F(ZGripsPanel, AreDraggedByTheMouse) {
    for (const int type : {0, 2, 3}) {
        Make(type);
        const auto to = [&](int rows) { return std::lround(10 * DraggedTo(520, 0, ScaleAxis(), rows)); };
        const long up = to(-10), down = to(20), symmetric = type == 2 ? 10200 - up : 5000;
        const std::string start = "(5000, 5100, 5200)", higher = CallText("", symmetric, 5100, up);
        Play({{[&] { Press(Item(IDC_ZS_GRIPS), 8, RowOf(Grip::Top)), Release(); }, start},
              {[&] { Press(Item(IDC_ZS_GRIPS), 8, RowOf(Grip::Top) + 14), Release(); }, start},
              {[&] { Drag(Grip::Top, -10); }, higher + " Changed"},
              {[] { Key(VK_ESCAPE); }, start + " Changed"},
              {[] { Release(); }, start},
              {[&] { Drag(Grip::Top, -10), ReleaseCapture(); }, start + " Changed"},
              {[&] { Release(), Drag(Grip::Home, -10); },
               (type == 0 ? CallText("", 5000, up - 100, 5200) : CallText("", up - 200, up - 100, up)) + " Changed"},
              {[&] { EnableWindow(panel.GetHandle(), FALSE); }, start + " Changed"},
              {[&] { EnableWindow(panel.GetHandle(), TRUE), Release(), Drag(Grip::Top, 20), Release(); },
               CallText("", type == 2 ? 10200 - down : 5000, 5100, down) + " Changed"}});
    }
}

// What is refused stays where it was taken last, and is told once, at the end.
TEST_F(ZGripsPanel, StopWhereTheyAreRefused) {
    Make(3);
    const double last = DraggedTo(520, 0, ScaleAxis(), 60 * 40 / 100);
    const auto grip = [&](int rows) {
        return [=, this] {
            Drag(Grip::Top, rows);
            EXPECT_EQ(Answer(), "");
        };
    };
    const auto stays = CallText("", 5000, 5100, std::lround(last * 10));
    Play({{grip(60), stays + " Changed"}, {[] { Release(); }, stays}});
    EXPECT_EQ(Answer().substr(0, 12), "An end stays");
    kx::ui::HideAnswer(panel.GetHandle());
    // A host that puts its record back.
    Make(0);
    panel.onChanged = [this, before = record] { record = before, panel.UpdateGUI(3), KX_SayWhyRefused(L"Busy"); };
    Play({{grip(-5), "(5000, 5100, 5200) Changed"}, {[] { Release(); }, "(5000, 5100, 5200)"}});
    EXPECT_EQ(Answer(), "Busy");
    // Both ends of one that floats on a drive that moves; an end that goes meanwhile.
    Make(2);
    record.ResetHome(), record.SetBottom(-10, true), record.SetTop(10, true), panel.UpdateGUI(3), heard.Clear();
    const long wider = std::lround(10 * DraggedTo(10, 0, ScaleAxis(), -8));
    const auto away = [&] { record.SetZPosition(0, 700), panel.UpdateGUI(4); };
    Play({{[&] { Drag(Grip::Top, -8), away(); }, CallText("", -wider, 0, wider) + " Changed"},
          {[&] { record.ResetTop(), panel.UpdateGUI(3); }, CallText("", -wider, 0, 0)},
          {[&] { MoveTo(Item(IDC_ZS_GRIPS), 8, 20), Release(); }, CallText("", -wider, 0, 0)}});
}

TEST_F(ZGripsPanel, AreMovedByKeys) {
    Make(0);
    const DialogKeys keys(parent.Window());
    SetFocus(Item(IDC_ZS_EDIT_ABOVE)), Key(VK_TAB);
    Play({{[] { Key(VK_UP); }, "(5000, 5100, 5220) Changed"},
          {[] { Key(VK_DOWN, MOD_CONTROL); }, "(5000, 5100, 5218) Changed"},
          {[] { Key(VK_PRIOR); }, "(5000, 5100, 5418) Changed"},
          {[] { Key(VK_ESCAPE), Key(VK_RIGHT), Key(VK_DOWN); }, "(5000, 5080, 5200) Changed"},
          {[] { Key(VK_ESCAPE), Key(VK_RIGHT), Key(VK_RIGHT), Key(VK_NEXT); }, "(4800, 5100, 5200) Changed"},
          {[] { Key(VK_LEFT), Key(VK_LEFT), Key(VK_NEXT), Key(VK_NEXT), Key(VK_NEXT); }, "(4800, 5100, 4800) Changed"},
          {[&] { Reader(Item(IDC_ZS_GRIPS)).Set(L"500", 1); }, "(4800, 5100, 5000) Changed"},
          {[&] { Reader(Item(IDC_ZS_GRIPS)).Set(L"470", 1); }, "(4800, 5100, 5000)"},
          {[&] { Reader(Item(IDC_ZS_GRIPS)).Set(L"480", 1); }, "(4800, 5100, 4800) Changed"}});
    EXPECT_EQ(TextOf(Item(IDC_ZS_GRIPS)), L"Top: 480.00 \u00B5m");
}

// A host's undo takes back as much as Escape does.
TEST_F(ZGripsPanel, TellWhichChangesAreOneAct) {
    Make(0);
    std::map<unsigned, char> names{{0u, '-'}};
    std::string acts;
    panel.onChanged = [&] {
        acts += names.try_emplace(panel.GetGripAct(), static_cast<char>('a' - 1 + names.size())).first->second;
        panel.UpdateGUI(3);
    };
    const CKxZStackData before = record;
    const auto isBack = [&] {
        bool equal = false;
        return record.IsEqual(before, &equal) == eKxZStack_Ok && equal;
    };
    Drag(Grip::Top, -10), Key(VK_ESCAPE), Release();
    EXPECT_TRUE(isBack());
    Key(VK_UP), Key(VK_PRIOR), Key(VK_ESCAPE);
    EXPECT_TRUE(isBack());
    // The host's own change ends the act: nothing of it is given back.
    Key(VK_UP), record = before, panel.UpdateGUI(3), Key(VK_ESCAPE), Key(VK_UP), Key(VK_RIGHT), Key(VK_UP);
    Click(Item(IDC_ZS_TOP), 8, 8);
    EXPECT_EQ(acts, "aaabbbcde-");
    EXPECT_EQ(panel.GetGripAct(), 0u);
}

// The wheel magnifies, and as many notches back show the stack again; a press on the scale still moves Z at once.
TEST_F(ZGripsPanel, LeaveTheScaleAsItWas) {
    Make(0);
    const HWND window = panel.GetHandle();
    const RECT grips = RectInParent(Item(IDC_ZS_GRIPS));
    const int x = static_cast<int>(grips.right) + 10, y = static_cast<int>(grips.top + grips.bottom) / 2;
    const Stretch stack = ScaleAxis().stretch;
    MoveTo(window, x, y), Wheel(240);
    const Stretch magnified = ScaleAxis().stretch;
    EXPECT_NEAR(magnified.high - magnified.low, 0.64 * (stack.high - stack.low), 1e-9);
    Press(window, x, y), Release();
    EXPECT_EQ(See(), "(5000, 5100, 5200) Move");
    MoveTo(window, x, y), Wheel(-240);
    EXPECT_TRUE(ScaleAxis().stretch.high == stack.high && ScaleAxis().stretch.low == stack.low);
}

// Ten thousand planes cost as little, and a step of the drive is drawn in strips alone.
TEST_F(ZGripsPanel, ALivePositionIsDrawnAlone) {
    Make(0);
    record.SetStep(0.002), panel.UpdateGUI(3);
    UpdateWindow(panel.GetHandle()), Pump();
    record.SetZPosition(0, 512), panel.UpdateGUI(4);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    GetUpdateRgn(panel.GetHandle(), region, FALSE);
    const auto size = GetRegionData(region, 0, nullptr);
    std::vector<BYTE> data(size);
    GetRegionData(region, size, reinterpret_cast<RGNDATA*>(data.data()));
    const auto& told = *reinterpret_cast<const RGNDATA*>(data.data());
    long drawn = 0;
    for (DWORD i = 0; i < told.rdh.nCount; ++i) {
        const RECT& each = reinterpret_cast<const RECT*>(told.Buffer)[i];
        drawn += (each.right - each.left) * (each.bottom - each.top);
    }
    DeleteObject(region);
    const RECT grips = RectInParent(Item(IDC_ZS_GRIPS));
    EXPECT_GT(drawn, 0);
    EXPECT_LT(drawn, (grips.bottom - grips.top) * 100 / 3) << "of a scale a hundred pixels wide";
    EXPECT_FALSE(GetUpdateRect(Item(IDC_ZS_GRIPS), nullptr, FALSE));
}

}  // namespace
