// The validations, call by call: what the record is asked, what the user sees, what the host hears, in which order.
#include "zstack_panel.h"

#include <bench/grave.h>

#include <regex>
#include <stdexcept>

namespace {

using namespace kx::test;

constexpr int Throws = 99;

// Home 50, bottom 40, top 60 on a device from 0, Z at 5; every call succeeds but for those listed.
struct ScriptedRecord : CKxZStackData {
    explicit ScriptedRecord(Recorder& heard) : m_heard(heard) {}
    int type = 0;
    std::map<std::string, int> answers;
    bool tellsReads = true;

    int GetType(int* value) const override { return Get("GetType", value, type); }
    int GetTop(double* value) const override { return Get("GetTop", value, 60.0); }
    int GetBottom(double* value) const override { return Get("GetBottom", value, 40.0); }
    int GetHome(double* value) const override { return Get("GetHome", value, 50.0); }
    int GetZRangeMin(double* value) const override { return Get("GetZRangeMin", value, 0.0); }
    int GetZDevice(unsigned int* value) const override { return Get("GetZDevice", value, 2u); }
    int GetZPosition(double* value) const override { return Get("GetZPosition", value, 5.0); }
    int GetStepSuggested(double* value) const override { return Get("GetStepSuggested", value, 0.25); }
    int GetCount(unsigned int* value) const override { return Get("GetCount", value, 3u); }
    int SetType(int value) override { return Answer(CallText("SetType", value)); }
    int SetTop(double top, bool adjust) override { return Answer(CallText("SetTop", top, int{adjust})); }
    int SetBottom(double bottom, bool adjust) override { return Answer(CallText("SetBottom", bottom, int{adjust})); }
    int SetHome(double home) override { return Answer(CallText("SetHome", home)); }
    int SetStep(double step) override { return Answer(CallText("SetStep", step)); }
    int SetCount(unsigned int count) override { return Answer(CallText("SetCount", count)); }
    int ResetTop() override { return Answer("ResetTop"); }
    int ResetBottom() override { return Answer("ResetBottom"); }

    int Answer(const std::string& call, bool tells = true) const {
        if (tells) m_heard.Text(call);
        const auto found = answers.find(call);
        if (found != answers.end() && found->second == Throws) throw std::runtime_error(call);
        return found == answers.end() ? 0 : found->second;
    }
    template <class T>
    int Get(const char* name, T* output, T value) const {
        const int status = Answer(name, tellsReads);
        if (status == 0 && output) *output = value;
        return status;
    }
    Recorder& m_heard;
};

// What the user answers to the question; with Keep the box is ticked. Unable: the dialog cannot be made.
enum Ask { None, No, KeepYes, KeepNo, KeepEscape, Unable };

void AnswerDialog(HWND dialog, Ask ask) {
    if (ask >= KeepYes) PressButton(dialog, IDC_YNK_KEEP);
    if (ask != KeepEscape) return PressButton(dialog, ask == KeepYes ? IDC_YNK_YES : IDC_YNK_NO);
    const DialogKeys keys(dialog);
    Key(VK_ESCAPE);
}

const auto Top = &Panel::ValidateTop, Bottom = &Panel::ValidateBottom, Home = &Panel::ValidateHome,
           Range = &Panel::ValidateRange, Max = &Panel::ValidateRangeMax, Min = &Panel::ValidateRangeMin,
           Step = &Panel::ValidateStep, Steps = &Panel::ValidateSteps;

// clang-format off
const struct Row {
    const char* what; bool (Panel::*validate)(bool); int edit, type; const wchar_t* text;
    std::map<std::string, int> answers; bool result; const char* heard; int keep = 0; Ask ask = None; int keepAfter = 0;
} rows[] = {
    {"a top", Top, 1260, 0, L"100", {}, true, "SetTop(100, 1) Changed(3)"},
    {"the placeholder", Top, 1260, 0, L"N/A", {}, true, "Changed(3)"},
    {"16, of which one is not seen", Top, 1260, 0, L"0000000000001.5x", {}, true, "SetTop(1.5, 1) Changed(3)"},
    {"refused", Top, 1260, 0, L"5", {{"SetTop(5, 1)", -17}}, false, "SetTop(5, 1) Value i! Changed(3)"},
    {"a getter that throws", Max, 1267, 3, L"5", {{"GetHome", Throws}}, false, "GetType GetHome Value i! Changed(3)"},
    {"an end beyond the other", Max, 1267, 0, L"5", {{"SetTop(5, 0)", eKxZStack_Reversed}}, false, "GetType GetHome SetTop(5, 0) Value i! Changed(3)"},
    {"the home keeps it from the host", Home, 1262, 0, L"12", {}, true, "SetHome(12) GetZDevice Shown(2)"},
    {"a bottom", Bottom, 1262, 0, L"\uFF0D3,5", {}, true, "SetBottom(-3.5, 1) Changed(3)"},
    {"steps", Steps, 1266, 0, L" 1\uFF12abc", {}, true, "SetCount(12) Changed(3)"},
    {"a step", Step, 1263, 0, L".25", {}, true, "SetStep(0.25) Step(0.25, 1) Changed(2)"},

    {"a range", Range, 1265, 2, L"30", {}, true, "GetType GetHome GetTop GetBottom SetBottom(35, 1) GetBottom SetTop(70, 1) Changed(3)"},
    {"no type", Range, 1265, 2, L"30", {{"GetType", 1}}, false, "GetType"},
    {"without a home", Range, 1265, 2, L"30", {{"GetTop", 1}, {"GetBottom", 1}, {"GetHome", 1}}, true,
        "GetType GetHome GetTop GetBottom SetBottom(-15, 1) GetBottom SetTop(30, 1) Changed(3)"},
    {"refused without a home", Range, 1265, 2, L"30", {{"GetHome", 1}, {"GetTop", 1}, {"SetBottom(-15, 1)", -17}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-15, 1) GetBottom SetBottom(40, 1) ResetTop Value i! Changed(3)"},
    {"at the lower end of the device", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}}, true,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) SetBottom(0, 1) GetBottom SetTop(160, 1) Changed(3)"},
    {"the home is not put back", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}, {"SetTop(160, 1)", -17}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) SetBottom(0, 1) GetBottom SetTop(160, 1) SetBottom(40, 1) SetTop(60, 1) Value i! Changed(3)"},

    {"above home", Max, 1267, 3, L"-20", {}, true, "GetType GetHome SetTop(70, 0) Changed(3)"},
    {"below home", Min, 1264, 7, L"-20", {}, true, "GetType GetHome SetBottom(30, 0) Changed(3)"},
    {"above no home", Max, 1267, 7, L"-20", {{"GetHome", 1}}, true, "GetType GetHome SetTop(20, 0) Changed(3)"},
    {"always Yes", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, true, "GetType GetHome SetTop(5, 0) SetTop(5, 1) Changed(3)", 1, None, 1},
    {"always No", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) Changed(3)", -1, None, -1},
    {"No", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) bottom? Changed(3)", 0, No},
    {"Escape keeps nothing", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) top? Changed(3)", 0, KeepEscape},
    {"Yes for ever", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, true, "GetType GetHome SetBottom(5, 0) top? SetBottom(5, 1) Changed(3)", 0, KeepYes, 1},
    {"No for ever", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) bottom? Changed(3)", 0, KeepNo, -1},
    {"no dialog, no for ever", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) Changed(3)", 0, Unable, -1},
};
// clang-format on

struct ZStackValidation : PanelTest {
    ScriptedRecord record{heard};

    void SetUp() override { ASSERT_TRUE(panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true)); }
    void TearDown() override { CKxDevUI_ZStack::iKeepRange = 0; }

    void Run(const Row& row, bool showErrors, const std::string& expected) {
        for (int edit = IDC_ZS_EDIT_TOP; edit <= IDC_ZS_EDIT_ABOVE; ++edit)
            Enter(edit, edit == row.edit ? row.text : L"7777");
        record.type = row.type;
        record.answers = row.answers;
        CKxDevUI_ZStack::iKeepRange = row.keep;
        heard.Clear();
        ModalAnswer answer([&](HWND dialog) {
            const std::string question = Narrow(TextOf(GetDlgItem(dialog, IDC_YNK_QUESTION)));
            heard.Text(std::regex_replace(question, std::regex(".* move the (\\w+) .*"), "$1?"));
            AnswerDialog(dialog, row.ask);
        });
        const auto refuse = [](int code, WPARAM, LPARAM) -> LRESULT { return code == HCBT_CREATEWND; };
        const HHOOK hook =
            row.ask == Unable ? SetWindowsHookExW(WH_CBT, refuse, nullptr, GetCurrentThreadId()) : nullptr;
        EXPECT_EQ((panel.*row.validate)(showErrors), row.result);
        if (hook) UnhookWindowsHookEx(hook);
        // What ValidateHome's refresh reads after its callback is the refresh's business.
        std::string actual = heard.Take();
        if (row.validate == Home) actual = actual.substr(0, actual.find(" GetTop GetBottom GetHome GetType"));
        EXPECT_EQ(actual, expected);
        EXPECT_EQ(CKxDevUI_ZStack::iKeepRange, row.keepAfter);
    }
};

TEST_F(ZStackValidation, AsksAndTellsInOrder) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.what) + " / " + row.heard);
        const std::string quiet = std::regex_replace(row.heard, std::regex("(Invalid|Value i)! "), "");
        panel.Show(true);
        Run(row, true, row.heard);
        Run(row, false, quiet);
        panel.Show(false);
        Run(row, true, quiet);
    }
    EXPECT_EQ(lastBox, CallText("Box", panel.GetHandle(), L"Z Series", 0x30u, -1));
}

TEST_F(ZStackValidation, IsNotEnteredTwice) {
    whileOpen = panel.onChanged = [&] {
        for (const auto validate : {Top, Bottom, Home, Step, Steps})
            EXPECT_FALSE((panel.*validate)(true));
        SendMessageW(Item(IDC_ZS_SUGGESTED), BM_CLICK, 0, 0);
    };
    Enter(IDC_ZS_EDIT_TOP, L"x");
    EXPECT_FALSE(panel.ValidateTop(true));
    Enter(IDC_ZS_EDIT_STEP, L"1");
    EXPECT_TRUE(panel.ValidateStep(true));
    EXPECT_EQ(heard.Take(), "Invalid! Changed(3) SetStep(1) Step(1, 1) Changed(2)");
    panel.onChanged = [] { throw 1; };
    for (const char* when : {"at first", "idle again"})
        EXPECT_NO_THROW(panel.ValidateTop(false)) << when;
}

// Buttons leave a record that fails alone, and tell the host all the same.
TEST_F(ZStackValidation, TakesWhatButtonsSay) {
    // clang-format off
    const std::tuple<int, int, const char*, const char*> table[] = {
        {IDC_ZS_TOP, 0, "", "SetTop(5, 1) Changed(3)"}, {IDC_ZS_TOP, 0, "GetZPosition", "Changed(3)"},
        {IDC_ZS_HOME, 0, "", "SetHome(5) Changed(3)"}, {IDC_ZS_BOTTOM, 0, "", "SetBottom(5, 1) Changed(3)"},
        {IDC_ZS_RELATIVE, 0, "", "ResetTop ResetBottom Changed(3)"},
        {IDC_ZS_SUGGESTED, 0, "", "SetStep(0.25) Step(0.25, 0) Changed(2)"},
        {IDC_ZS_SUGGESTED, 0, "SetStep(0.25)", "SetStep(0.25) Value i! Changed(2)"},
        {IDC_ZS_TYPE_SYMMETRIC, 4, "GetZDevice", "SetType(6) Changed(3)"}, {IDC_ZS_TYPE_ASYMMETRIC, 2, "GetType", ""},
        {IDC_ZS_TYPE_ASYMMETRIC, 2, "", "SetType(3) Changed(3) Shown(2)"}};
    // clang-format on
    record.tellsReads = false;
    for (const auto& [button, type, fails, expected] : table) {
        SCOPED_TRACE(CallText("button", button, type, fails));
        record.type = type;
        record.answers = {{fails, 1}};
        heard.Clear();
        SendMessageW(panel.GetHandle(), WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
        EXPECT_EQ(heard.Take(), expected);
    }
}

// Asked by the host itself, with no procedure of a window in between.
TEST_F(ZStackValidation, KeepsWhatItShowsWhenTheRecordThrows) {
    panel.UpdateGUI(3);
    for (const char* read : {"GetZDevice", "GetTop", "GetCount", "GetZPosition", "SetKeepZOnPiezoHome"}) {
        record.answers = {{read, Throws}};
        EXPECT_NO_THROW(panel.UpdateGUI(3)) << read;
        EXPECT_EQ(Shown(IDC_ZS_EDIT_TOP) + Shown(IDC_ZS_EDIT_STEPS), "60.003") << read;
    }
}

// While the question is open: nothing that has ended is touched; without its window, the panel tells of the record.
TEST_F(ZStackValidation, SurvivesTheEndOfItsPanel) {
    record.answers = {{"SetTop(5, 0)", -17}};
    for (const bool deleted : {false, true}) {
        auto doomed = MakeBuried<Panel>(heard);
        doomed->Create(parent.Window(), &record, 0, 0, 0, 0, true, true);
        SetWindowTextW(doomed->Item(IDC_ZS_EDIT_ABOVE), L"5");
        ModalAnswer answer([&](HWND dialog) {
            deleted ? doomed.reset() : doomed->Destroy();
            PressButton(dialog, IDC_YNK_YES);
        });
        heard.Clear();
        doomed->ValidateRangeMax(true);
        EXPECT_EQ(heard.Take(), std::string("GetType GetHome SetTop(5, 0)") + (deleted ? "" : " Changed(3)"));
        EXPECT_EQ(TakeTouch(), "");
    }
}

}  // namespace
