// The plumbing, through a small control that uses all of it.
#include <bench/bench.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxsystem/kx_log.h>

#include <array>
#include <memory>

#include "example_control.h"

namespace {

using namespace kx::test;

TEST(Plumbing, CarriesAClickFromThePlatformToTheHost) {
    RecordingParent parent;
    ExampleLamp lamp(parent.Record());
    lamp.SetId(44);
    ASSERT_TRUE(lamp.Create(parent.Window(), 10, 10, 60, 40, true, true));
    MoveTo(parent.Window(), 300, 300);
    parent.Record().Clear();
    Click(lamp.Button(), 5, 5);
    EXPECT_TRUE(parent.Record().Matches({Call("Entered"), Command(44, 0x0401, static_cast<HWND>(lamp))}));
    MoveTo(parent.Window(), 300, 300);
    EXPECT_TRUE(PumpUntil([&] { return !parent.Record().Entries().empty(); }));
    EXPECT_TRUE(parent.Record().Matches({Call("Left")}));

    const bool flags[3] = {true, false, true};
    SendMessageW(lamp, 0x0500, 12, reinterpret_cast<LPARAM>(flags));
    SendMessageW(lamp, 0x0500, 12, 0);
    EXPECT_TRUE(parent.Record().Matches({Call("Update", 12, true, false, true)}));
}

TEST(Plumbing, PaintsThroughOnePath) {
    RecordingParent parent;
    ExampleLamp lamp(parent.Record());
    lamp.Create(parent.Window(), 10, 10, 60, 40, true, true);
    Pump();
    for (int round = 0; round < 2; ++round) {
        const Picture picture = Picture::OnScreen(lamp);
        EXPECT_EQ(picture.Pixel(2, 2), ExampleLamp::Face);
        EXPECT_EQ(picture.Pixel(58, 38), ExampleLamp::Face);
        EXPECT_EQ(picture.Pixel(10, 10), ExampleLamp::ButtonFace);
        // Larger, then smaller: the back buffer follows.
        SetWindowPos(lamp, nullptr, 0, 0, 400, 300, SWP_NOMOVE);
        Pump();
        EXPECT_EQ(Picture::OnScreen(lamp).Pixel(390, 290), ExampleLamp::Face);
        SetWindowPos(lamp, nullptr, 0, 0, 60, 40, SWP_NOMOVE);
        Pump();
    }
}

TEST(Plumbing, TakesAPlaceholdersPlaceAndZooms) {
    RecordingParent parent;
    const HWND first = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD, 0, 0, 5, 5, parent.Window(), nullptr, nullptr, nullptr);
    const HWND placeholder =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 33, 44, 55, 66, parent.Window(), nullptr, nullptr, nullptr);
    ExampleLamp lamp(parent.Record());
    ASSERT_TRUE(lamp.Create(parent.Window(), placeholder));
    const RECT taken = RectInParent(lamp), wanted = RectInParent(placeholder);
    EXPECT_TRUE(EqualRect(&taken, &wanted));
    EXPECT_EQ(GetWindow(lamp, GW_HWNDPREV), first);
    EXPECT_EQ(GetWindow(lamp, GW_HWNDNEXT), placeholder);

    CKxGUILayoutManager::SetGuiZoom(2.0);
    const RECT button = RectInParent(lamp.Button());
    EXPECT_EQ(button.left, 10);
    EXPECT_EQ(button.right, 50);
    CKxGUILayoutManager::SetGuiZoom(1.0);
    EXPECT_EQ(GetWndX(lamp.Button()), 5);
}

class DeletedByToggle : public ExampleLamp {
public:
    DeletedByToggle(Recorder& record, std::unique_ptr<DeletedByToggle>& self) : ExampleLamp(record), m_self(self) {}

protected:
    void OnToggle() override { m_self.reset(); }

private:
    std::unique_ptr<DeletedByToggle>& m_self;
};

TEST(Plumbing, SurvivesAControlThatDeletesItself) {
    RecordingParent parent;
    std::unique_ptr<DeletedByToggle> lamp;
    lamp = std::make_unique<DeletedByToggle>(parent.Record(), lamp);
    lamp->Create(parent.Window(), 0, 0, 60, 40, true, true);
    Click(lamp->Button(), 5, 5);
    EXPECT_FALSE(lamp);
    EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr);
}

TEST(Plumbing, LeavesNothingBehind) {
    RecordingParent parent;
    EXPECT_TRUE(NoGrowth(1000, [&] {
        ExampleLamp lamp(parent.Record());
        lamp.Create(parent.Window(), 0, 0, 60, 40, true, true);
        UpdateWindow(lamp);
        parent.Record().Clear();
    }));
}

TEST(Plumbing, ChoosesTheLanguageOfATemplateItself) {
    const std::array<LANGID, 4> all{0x0409, 0x0407, 0x0C0A, 0x0000};
    const std::array<LANGID, 2> few{0x0411, 0x0407};
    const struct {
        std::span<const LANGID> available;
        LANGID current, fallback;
        int expected;
    } rows[] = {
        {all, 0x0407, 0x0409, 1},   // the very language
        {all, 0x0C07, 0x0409, 1},   // German of Austria takes that of Germany
        {all, 0x040A, 0x0409, 2},   // Spanish, another sort
        {all, 0x0411, 0x0409, 0},   // the fallback
        {all, 0x0411, 0x0412, 3},   // neither: that of no language
        {few, 0x0410, 0x0409, -1},  // a Japanese text is no answer to Italian
        {few, 0x0410, 0x0807, 1},
        {{}, 0x0409, 0x0409, -1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kx::ui::ChooseLanguage(row.available, row.current, row.fallback), row.expected)
            << std::hex << row.current << " " << row.fallback;
    }
}

// A failed registration is a line in the log, when that is talkative, and creation fails by itself.
TEST(Plumbing, LogsAFailedRegistration) {
    std::vector<std::wstring> log;
    CKxLogFile::SetSink([](const wchar_t* line, void* to) { static_cast<decltype(log)*>(to)->push_back(line); }, &log);
    ATOM atom = 0;
    const kx::ui::ClassSpec refused{L"", L"CKxDevUI_Refused", 0, 16, nullptr, DefWindowProcW};
    kx::ui::EnsureClass(atom, refused);
    EXPECT_TRUE(log.empty());
    CKxLogFile::SetDetail(true);
    kx::ui::EnsureClass(atom, refused);
    CKxLogFile::SetDetail(false);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(atom, 0);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_NE(log[0].find(L"CKxDevUI_Refused::Create - RegisterClass failed - lasterror = "), std::wstring::npos);
}

} // namespace
