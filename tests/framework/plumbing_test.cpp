// The plumbing, through a small control as a host would write one.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_log.h>

#include <map>
#include <memory>
#include <vector>

namespace {

using namespace kx::test;
using namespace kx::ui;

// A lamp that a button switches, with a tooltip.
class ExampleLamp : public CKxDevUI_Base {
public:
    static constexpr int ButtonId = 10200;
    ~ExampleLamp() override { Binding::EndOwnWindow(this); }

    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override {
        return Creation::Of(this, [&](const Creation& creation) {
            const HWND window =
                creation.Window(this, m_Atom, {.name = L"ExampleLamp", .object = L"ExampleLamp", .procedure = WndProc},
                                parent, {x, y}, {cx, cy});
            const Parts parts(window, static_cast<CKxDevUI_Base*>(this));
            KX_CreateToolTipWindow(parts.Add(L"BUTTON", ButtonId, nullptr, {5, 5, 25, 25}), L"Switches the lamp");
            return creation.Done(this, window);
        });
    }
    void Destroy() { Binding::EndWindow(this); }
    std::function<void()> onToggle;

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
        return kx::ui::Entry<ExampleLamp, ByInstances<ExampleLamp, m_Instances>, WM_NCCREATE, Unbound::Default,
                             &ExampleLamp::Handle>({window, id, wParam, lParam});
    }
    Handled Handle(const Message& message) {
        switch (message.id) {
        case WM_PAINT:
        case WM_PRINTCLIENT: return Paint(message, {.children = true}, m_face.get(), [](HDC, const RECT&) {});
        case WM_ERASEBKGND: return 1;
        case WM_COMMAND:
            kx::ui::Notify(GetParent(message.window), GetId(), 0x0401, reinterpret_cast<LPARAM>(message.window));
            if (const auto act = onToggle) act();  // may delete this object
            return 0;
        default: return std::nullopt;
        }
    }

    static inline ATOM m_Atom = 0;
    static inline std::map<HWND, ExampleLamp*> m_Instances;
    Brush m_face{CreateSolidBrush(RGB(10, 20, 30))};
};

TEST(Plumbing, CarriesAClickFromThePlatformToTheHost) {
    RecordingParent parent;
    auto lamp = std::make_unique<ExampleLamp>();
    lamp->SetId(44);
    ASSERT_TRUE(lamp->Create(parent.Window(), 10, 10, 60, 40, true, true));
    EXPECT_EQ(Picture::OnScreen(*lamp).Pixel(58, 38), RGB(10, 20, 30));
    Click(GetDlgItem(*lamp, ExampleLamp::ButtonId), 5, 5);
    EXPECT_TRUE(parent.Record().Matches({Command(44, 0x0401, static_cast<HWND>(*lamp))}));
    lamp->onToggle = [&] { lamp.reset(); };
    Click(GetDlgItem(*lamp, ExampleLamp::ButtonId), 5, 5);
    EXPECT_FALSE(lamp);
    EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr);
}

TEST(Plumbing, LeavesNothingBehind) {
    RecordingParent parent;
    EXPECT_TRUE(NoGrowth(1000, [&] {
        ExampleLamp lamp;
        lamp.Create(parent.Window(), 0, 0, 60, 40, true, true);
        UpdateWindow(lamp);
        parent.Record().Clear();
    }));
}

TEST(Plumbing, ChoosesTheLanguageOfATemplateItself) {
    const std::vector<LANGID> all{0x0409, 0x0407, 0x0C0A, 0x0000}, few{0x0411, 0x0407}, none;
    const struct {
        const std::vector<LANGID>& available;
        LANGID current, fallback;
        int expected;
    } rows[] = {
        {all, 0x040A, 0x0409, 2},   // another sort of Spanish
        {all, 0x0411, 0x0409, 0},   // the fallback
        {all, 0x0411, 0x0412, 3},   // neither: that of no language
        {few, 0x0410, 0x0409, -1},  // a Japanese text is no answer to Italian
        {few, 0x0410, 0x0807, 1},  {none, 0x0409, 0x0409, -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ChooseLanguage(row.available, row.current, row.fallback), row.expected) << "row " << &row - rows;
}

// When the log is talkative.
TEST(Plumbing, LogsAFailedRegistration) {
    std::wstring log;
    CKxLogFile::SetSink([](const wchar_t* line, void* to) { *static_cast<std::wstring*>(to) += line; }, &log);
    ATOM atom = 0;
    for (const bool detail : {false, true}) {
        EXPECT_EQ(log, L"");
        CKxLogFile::SetDetail(detail);
        EnsureClass(atom, {.name = L"", .object = L"CKxDevUI_Refused", .procedure = DefWindowProcW});
    }
    CKxLogFile::SetDetail(false);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(atom, 0);
    EXPECT_NE(log.find(L"CKxDevUI_Refused::Create - RegisterClass failed - lasterror = "), std::wstring::npos);
}

}  // namespace
