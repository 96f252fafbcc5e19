// The plumbing, through a small control that uses all of it.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

#include <map>
#include <memory>
#include <vector>

namespace {

using namespace kx::test;
using namespace kx::ui;

// As a host would write one: a lamp with a push button that is painted by the control, and a tooltip.
class ExampleLamp : public CKxDevUI_Base {
public:
    static constexpr int ButtonId = 10200;
    static constexpr COLORREF Face = RGB(10, 20, 30), ButtonFace = RGB(200, 100, 50);

    explicit ExampleLamp(Recorder& record) : m_record(record) {}
    ~ExampleLamp() override { Destroy(); }

    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override {
        EnsureClass(m_Atom,
                    {L"ExampleLamp", L"ExampleLamp", CS_HREDRAW | CS_VREDRAW, kWindowExtraBytes, nullptr, WndProc});
        CreateWindowExW(0, L"ExampleLamp", nullptr, WS_CHILD | WS_VISIBLE, x, y, cx, cy, parent, nullptr,
                        ModuleOf(WndProc), static_cast<CKxDevUI_Base*>(this));
        if (!m_hWnd) return nullptr;
        MarkWindow(m_hWnd, Mark::TagAndObject, this);
        m_button = AddChild(m_hWnd, L"BUTTON", ButtonId, {5, 5, 25, 25}, BS_OWNERDRAW);
        Subclass(m_button, ButtonProc, static_cast<CKxDevUI_Base*>(this));
        KX_CreateToolTipWindow(m_button, L"Switches the lamp");
        return m_hWnd;
    }
    void Destroy() {
        if (!m_hWnd) return;
        const Closing closing(m_hWnd);
        DestroyWindow(m_hWnd);
    }
    HWND Button() const { return m_button; }
    std::function<void()> onToggle;

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
        return kx::ui::Entry<ExampleLamp, ByInstances<ExampleLamp, m_Instances>, WM_NCCREATE, Unbound::Default,
                             &ExampleLamp::Handle>({window, id, wParam, lParam});
    }
    static LRESULT CALLBACK ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
        return SubclassEntry<ExampleLamp, &ExampleLamp::HandleButton>({window, id, wParam, lParam});
    }

    Handled Handle(const Message& message) {
        const auto nothing = [](HDC, const RECT&) {};
        switch (message.id) {
        case WM_NCCREATE: m_hWnd = message.window; return std::nullopt;
        case WM_PAINT:
        case WM_PRINTCLIENT: return Paint(message, {.children = true}, m_face.get(), nothing);
        case WM_ERASEBKGND: return 1;
        case WM_DRAWITEM:
            PaintItem(message.window, *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam), m_buttonFace.get(),
                      nothing);
            return TRUE;
        case WM_COMMAND:
            if (message.wParam != MAKEWPARAM(ButtonId, BN_CLICKED)) return std::nullopt;
            kx::ui::Notify(GetParent(message.window), GetId(), 0x0401, reinterpret_cast<LPARAM>(message.window));
            if (const auto act = onToggle) act();  // may delete this object
            return 0;
        case WM_KX_UPDATE_DEVICE_BAND:
            if (const auto band = ReadDeviceBand<3>(message)) {
                m_record.Call("Update", band->device, band->flags[0], band->flags[1], band->flags[2]);
            }
            return 0;
        default: return std::nullopt;
        }
    }
    Handled HandleButton(const Message& message) {
        if (TrackHover(message)) m_record.Call(message.id == WM_MOUSEMOVE ? "Entered" : "Left");
        return std::nullopt;
    }

    static inline ATOM m_Atom = 0;
    static inline std::map<HWND, ExampleLamp*> m_Instances;

    Recorder& m_record;
    Brush m_face{CreateSolidBrush(Face)}, m_buttonFace{CreateSolidBrush(ButtonFace)};
    HWND m_button = nullptr;
};

TEST(Plumbing, CarriesAClickFromThePlatformToTheHost) {
    RecordingParent parent;
    auto lamp = std::make_unique<ExampleLamp>(parent.Record());
    lamp->SetId(44);
    ASSERT_TRUE(lamp->Create(parent.Window(), 10, 10, 60, 40, true, true));
    MoveTo(parent.Window(), 300, 300);
    const Picture picture = Picture::OnScreen(*lamp);
    EXPECT_EQ(picture.Pixel(58, 38), ExampleLamp::Face);
    EXPECT_EQ(picture.Pixel(10, 10), ExampleLamp::ButtonFace);
    parent.Record().Clear();
    Click(lamp->Button(), 5, 5);
    EXPECT_TRUE(parent.Record().Matches({Call("Entered"), Command(44, 0x0401, static_cast<HWND>(*lamp))}));
    MoveTo(parent.Window(), 300, 300);
    EXPECT_TRUE(PumpUntil([&] { return !parent.Record().Entries().empty(); }));
    const bool flags[3] = {true, false, true};
    SendMessageW(*lamp, 0x0500, 12, reinterpret_cast<LPARAM>(flags));
    SendMessageW(*lamp, 0x0500, 12, 0);
    EXPECT_TRUE(parent.Record().Matches({Call("Left"), Call("Update", 12, true, false, true)}));

    lamp->onToggle = [&] { lamp.reset(); };
    Click(lamp->Button(), 5, 5);
    EXPECT_FALSE(lamp);
    EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr);
}

TEST(Plumbing, TakesAPlaceholdersPlace) {
    RecordingParent parent;
    const HWND placeholder = AddChild(parent.Window(), L"STATIC", 1, {33, 44, 88, 110}),
               window = AddChild(parent.Window(), L"STATIC", 2, {0, 0, 5, 5});
    PlaceLike(window, placeholder);
    EXPECT_EQ(PlaceOf(window), PlaceOf(placeholder));
    EXPECT_EQ(GetWindow(window, GW_HWNDNEXT), placeholder);
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
        EnsureClass(atom, {L"", L"CKxDevUI_Refused", 0, 16, nullptr, DefWindowProcW});
    }
    CKxLogFile::SetDetail(false);
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(atom, 0);
    EXPECT_NE(log.find(L"CKxDevUI_Refused::Create - RegisterClass failed - lasterror = "), std::wstring::npos);
}

}  // namespace
