// The plumbing, through a small control as a host would write one.
#include <beam_switch/beam_switch.h>
#include <bench/bench.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_log.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace {

using namespace kx::test;
using namespace kx::ui;

// The control of the manual, asked by a click.
class Asking : public BeamSwitch {
public:
    std::function<void(bool& veto)> asked;

protected:
    void OnOpenRequest(bool, bool& veto) override {
        if (asked) asked(veto);
    }
};

TEST(Plumbing, CarriesAClickFromThePlatformToTheHost) {
    RecordingParent parent;
    Asking beam;
    ASSERT_TRUE(beam.Create(parent.Window(), 10, 10, -1, -1, true, true));
    const HWND button = GetDlgItem(beam, 10200);
    Click(button, 5, 5);
    EXPECT_TRUE(beam.IsOpen());
    const struct {
        const char* name;
        std::function<void(bool&)> ask;
    } refusals[] = {
        {"a veto", [](bool& veto) { veto = true; }},
        {"an exception", [](bool&) { throw std::runtime_error("no"); }},
    };
    for (const auto& row : refusals) {
        beam.asked = row.ask;
        Click(button, 5, 5);
        EXPECT_TRUE(beam.IsOpen()) << row.name;
        EXPECT_EQ(SendMessageW(button, BM_GETCHECK, 0, 0), BST_CHECKED) << row.name;
    }
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
