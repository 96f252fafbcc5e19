// What a fine wheel sends, collected to notches.
#include <bench/bench.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/devgui_messages.h>

namespace {

using namespace kx::test;

TEST(Wheel, CollectsNotches) {
    KxWheelNotches notches;
    const HWND here = GetDesktopWindow(), there = nullptr;
    const std::tuple<HWND, int, DWORD, int> rows[] = {
        {here, 120, 0, 1},    {here, 60, 10, 0},    {here, 60, 510, 1},     {here, 119, 520, 0},   {here, 1, 1021, 0},
        {here, 119, 1030, 1}, {here, 100, 1040, 0}, {here, -119, 1050, 0},  {here, -1, 1060, -1},  {here, 119, 1070, 0},
        {there, 1, 1080, 0},  {here, 119, 1090, 0}, {here, -300, 1100, -2}, {here, -60, 1110, -1}, {here, 0, 1120, 0}};
    for (const auto& [over, delta, time, complete] : rows)
        EXPECT_EQ(notches.Take(over, delta, time), complete) << delta << " at " << time;
}

// Used or left, the notches are those of all parts.
TEST(Wheel, IsHandedOnInNotches) {
    struct Panel : CKxDevUI_Container {
        LRESULT OnMouseWheel(WPARAM wParam, LPARAM) override {
            turned = GET_WHEEL_DELTA_WPARAM(wParam);
            return turned > 0;
        }
        int turned = 0;
    } panel;
    const RecordingParent parent;
    panel.Create(parent.Window(), 0, 0, 50, 50, true, true);
    const auto relay = [&](int delta) {
        WPARAM turn = MAKEWPARAM(MK_CONTROL, delta);
        const bool used = KX_RelayWheel(panel, turn, 0);
        return std::to_string(used) + " " + std::to_string(GET_WHEEL_DELTA_WPARAM(turn)) + " " +
               std::to_string(LOWORD(turn)) + ", " + std::to_string(std::exchange(panel.turned, 0));
    };
    EXPECT_EQ(relay(200), "1 120 8, 120");
    EXPECT_EQ(relay(39), "1 39 8, 0");
    EXPECT_EQ(relay(1), "1 120 8, 120");
    EXPECT_EQ(relay(-240), "0 -240 8, -240") << "for the page that scrolls";
    WPARAM turn = MAKEWPARAM(0, 240);
    EXPECT_FALSE(KX_RelayWheel(nullptr, turn, 0));
    EXPECT_EQ(GET_WHEEL_DELTA_WPARAM(turn), 240);
}

}  // namespace
