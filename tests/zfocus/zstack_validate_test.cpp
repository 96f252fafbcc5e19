// The validations, call by call: what the record is asked, what the user sees, what the host hears, in which order.
#include "zstack_panel.h"

#include <kxdevui/zfocus/zstack_ids.h>

#include <stdexcept>

namespace {

using namespace kx::test;

constexpr int Throws = 99;

// Home 50, bottom 40, top 60 on a device from 0, Z at 5; every call succeeds but for those listed.
class ScriptedRecord : public CKxZStackData {
public:
    explicit ScriptedRecord(Journal& journal) : m_journal(journal) {}
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
    int SetType(int value) override { return Answer("SetType", value); }
    int SetTop(double top, bool adjust) override { return Answer("SetTop", top, static_cast<int>(adjust)); }
    int SetBottom(double bottom, bool adjust) override { return Answer("SetBottom", bottom, static_cast<int>(adjust)); }
    int SetHome(double home) override { return Answer("SetHome", home); }
    int SetStep(double step) override { return Answer("SetStep", step); }
    int SetCount(unsigned int count) override { return Answer("SetCount", count); }
    int ResetTop() override { return Answer("ResetTop"); }
    int ResetBottom() override { return Answer("ResetBottom"); }

private:
    template <class... Arguments>
    int Answer(const char* name, const Arguments&... arguments) const {
        m_journal.Add(name, arguments...);
        return StatusOf(sizeof...(arguments) ? CallText(name, arguments...) : name);
    }
    int StatusOf(const std::string& call) const {
        const auto found = answers.find(call);
        if (found != answers.end() && found->second == Throws) throw std::runtime_error(call);
        return found == answers.end() ? 0 : found->second;
    }
    template <class T>
    int Get(const char* name, T* output, T value) const {
        const int status = tellsReads ? Answer(name) : StatusOf(name);
        if (status == 0 && output) *output = value;
        return status;
    }
    Journal& m_journal;
};

// What the user answers to the question; with Keep the box is ticked. Unable: the dialog cannot be made.
enum Ask { None, Yes, No, Cancel, Escape, KeepYes, KeepNo, KeepEscape, Unable };

void AnswerDialog(HWND dialog, Ask ask) {
    if (ask == KeepYes || ask == KeepNo || ask == KeepEscape) PressButton(dialog, IDC_YNK_KEEP);
    if (ask == Escape || ask == KeepEscape) {
        const DialogKeys keys(dialog);
        Key(VK_ESCAPE);
    } else {
        PressButton(dialog, ask == Cancel ? IDC_YNK_CANCEL : ask == Yes || ask == KeepYes ? IDC_YNK_YES : IDC_YNK_NO);
    }
}

// While it lives, no dialog can be made on this thread.
class NoDialogs {
public:
    NoDialogs() : m_hook(SetWindowsHookExW(WH_CBT, Refuse, nullptr, GetCurrentThreadId())) {}
    ~NoDialogs() { UnhookWindowsHookEx(m_hook); }
    NoDialogs(const NoDialogs&) = delete;
    NoDialogs& operator=(const NoDialogs&) = delete;

private:
    static LRESULT CALLBACK Refuse(int code, WPARAM, LPARAM) { return code == HCBT_CREATEWND ? 1 : 0; }
    HHOOK m_hook;
};

struct Row {
    const char* what;
    bool (Panel::*validate)(bool);
    int edit;
    int type;
    const wchar_t* text;
    std::map<std::string, int> answers;
    bool result;
    const char* heard;
    int keep = 0;
    Ask ask = None;
    int keepAfter = 0;
};

const auto Top = &Panel::ValidateTop, Bottom = &Panel::ValidateBottom, Home = &Panel::ValidateHome,
           Range = &Panel::ValidateRange, Max = &Panel::ValidateRangeMax, Min = &Panel::ValidateRangeMin,
           Step = &Panel::ValidateStep, Steps = &Panel::ValidateSteps;

const std::map<std::string, int> noPositions{{"GetTop", 1}, {"GetBottom", 1}, {"GetHome", 1}};

// clang-format off
const Row rows[] = {
    {"a top", Top, 1260, 0, L"100", {}, true, "SetTop(100, 1) Changed(3)"},
    {"as the system reads it", Top, 1260, 0, L" 1e2 ", {}, true, "SetTop(100, 1) Changed(3)"},
    {"nothing", Top, 1260, 0, L"", {}, true, "Changed(3)"},
    {"the placeholder", Top, 1260, 0, L"N/A", {}, true, "Changed(3)"},
    {"not the placeholder", Top, 1260, 0, L"N/A ", {}, false, "Invalid! Changed(3)"},
    {"nor this", Top, 1260, 0, L"n/a", {}, false, "Invalid! Changed(3)"},
    {"15 characters", Top, 1260, 0, L"0000000000001.5", {}, true, "SetTop(1.5, 1) Changed(3)"},
    {"16, of which one is not seen", Top, 1260, 0, L"0000000000001.5x", {}, true, "SetTop(1.5, 1) Changed(3)"},
    {"refused", Top, 1260, 0, L"5", {{"SetTop(5, 1)", -17}}, false, "SetTop(5, 1) Value i! Changed(3)"},
    {"any status but 0", Top, 1260, 0, L"5", {{"SetTop(5, 1)", 1}}, false, "SetTop(5, 1) Value i! Changed(3)"},
    {"a setter that throws", Top, 1260, 0, L"5", {{"SetTop(5, 1)", Throws}}, false, "SetTop(5, 1) Value i! Changed(3)"},
    {"a getter that throws", Max, 1267, 3, L"5", {{"GetHome", Throws}}, false, "GetType GetHome Value i! Changed(3)"},
    {"no type by throwing", Range, 1265, 2, L"30", {{"GetType", Throws}}, false, "GetType"},
    {"undone after throwing", Range, 1265, 2, L"30", {{"SetTop(70, 1)", Throws}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(35, 1) GetBottom SetTop(70, 1) SetBottom(40, 1) SetTop(60, 1) Value i! Changed(3)"},
    {"an end beyond the other", Max, 1267, 0, L"5", {{"SetTop(5, 0)", eKxZStack_Reversed}}, false, "GetType GetHome SetTop(5, 0) Value i! Changed(3)"},
    {"a bottom", Bottom, 1262, 0, L"-3,5", {}, true, "SetBottom(-3.5, 1) Changed(3)"},
    {"refused", Bottom, 1262, 0, L"5", {{"SetBottom(5, 1)", -17}}, false, "SetBottom(5, 1) Value i! Changed(3)"},
    {"the home keeps it from the host", Home, 1262, 0, L"12", {}, true, "SetHome(12) GetZDevice Shown(2)"},
    {"even nothing", Home, 1262, 0, L"", {}, true, "GetZDevice Shown(2)"},
    {"and mistakes", Home, 1262, 0, L"?", {}, false, "Invalid! GetZDevice Shown(2)"},
    {"a step", Step, 1263, 0, L".25", {}, true, "SetStep(0.25) Step(0.25, 1) Changed(2)"},
    {"refused", Step, 1263, 0, L"0", {{"SetStep(0)", -17}}, false, "SetStep(0) Value i! Changed(2)"},
    {"steps", Steps, 1266, 0, L" 12abc", {}, true, "SetCount(12) Changed(3)"},
    {"a negative count", Steps, 1266, 0, L"-1", {{"SetCount(4294967295)", -17}}, false, "SetCount(4294967295) Value i! Changed(3)"},
    {"more than an int", Steps, 1266, 0, L"99999999999", {}, true, "SetCount(2147483647) Changed(3)"},
    {"no digit", Steps, 1266, 0, L"a12", {}, false, "Invalid! Changed(3)"},

    {"a range", Range, 1265, 2, L"30", {}, true, "GetType GetHome GetTop GetBottom SetBottom(35, 1) GetBottom SetTop(70, 1) Changed(3)"},
    {"upper variant", Range, 1265, 6, L"", {}, true, "GetType Changed(3)"},
    {"wrong type", Range, 1265, 3, L"30", {}, false, "GetType"},
    {"no type", Range, 1265, 2, L"30", {{"GetType", 1}}, false, "GetType"},
    {"without a home", Range, 1265, 2, L"30", noPositions, true, "GetType GetHome GetTop GetBottom SetBottom(-15, 1) GetBottom SetTop(30, 1) Changed(3)"},
    {"refused without a home", Range, 1265, 2, L"30", {{"GetHome", 1}, {"GetTop", 1}, {"SetBottom(-15, 1)", -17}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-15, 1) GetBottom SetBottom(40, 1) ResetTop Value i! Changed(3)"},
    {"at the lower end of the device", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}}, true,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) SetBottom(0, 1) GetBottom SetTop(160, 1) Changed(3)"},
    {"the home is not put back", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}, {"SetTop(160, 1)", -17}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) SetBottom(0, 1) GetBottom SetTop(160, 1) SetBottom(40, 1) SetTop(60, 1) Value i! Changed(3)"},
    {"no lower end", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}, {"GetZRangeMin", 1}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin GetBottom SetBottom(40, 1) SetTop(60, 1) Value i! Changed(3)"},
    {"no new home", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}, {"SetHome(60)", 1}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) GetBottom SetBottom(40, 1) SetTop(60, 1) Value i! Changed(3)"},
    {"no bottom there", Range, 1265, 2, L"120", {{"SetBottom(-10, 1)", -17}, {"SetBottom(0, 1)", 1}, {"GetBottom", 1}}, false,
        "GetType GetHome GetTop GetBottom SetBottom(-10, 1) GetZRangeMin SetHome(60) SetBottom(0, 1) GetBottom ResetBottom SetTop(60, 1) Value i! Changed(3)"},

    {"above home", Max, 1267, 3, L"-20", {}, true, "GetType GetHome SetTop(70, 0) Changed(3)"},
    {"below home", Min, 1264, 7, L"-20", {}, true, "GetType GetHome SetBottom(30, 0) Changed(3)"},
    {"above no home", Max, 1267, 7, L"-20", {{"GetHome", 1}}, true, "GetType GetHome SetTop(20, 0) Changed(3)"},
    {"below no home", Min, 1264, 3, L"20", {{"GetHome", 1}}, true, "GetType GetHome SetBottom(-20, 0) Changed(3)"},
    {"a position", Max, 1267, 0, L"-20", {}, true, "GetType GetHome SetTop(-20, 0) Changed(3)"},
    {"of a range too", Min, 1264, 2, L"+20", {}, true, "GetType GetHome SetBottom(20, 0) Changed(3)"},
    {"no type", Max, 1267, 3, L"20", {{"GetType", 1}}, false, "GetType"},
    {"refused for good", Max, 1267, 0, L"5", {{"SetTop(5, 0)", 1}}, false, "GetType GetHome SetTop(5, 0) Value i! Changed(3)"},
    {"always Yes", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, true, "GetType GetHome SetTop(5, 0) SetTop(5, 1) Changed(3)", 1, None, 1},
    {"always Yes, in vain", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}, {"SetBottom(5, 1)", -17}}, false, "GetType GetHome SetBottom(5, 0) SetBottom(5, 1) Value i! Changed(3)", 1, None, 1},
    {"always No", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) Changed(3)", -1, None, -1},
    {"any other is No", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) Changed(3)", 2, None, 2},
    {"Yes", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, true, "GetType GetHome SetTop(5, 0) bottom? SetTop(5, 1) Changed(3)", 0, Yes},
    {"Yes, in vain", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}, {"SetTop(5, 1)", 1}}, false, "GetType GetHome SetTop(5, 0) bottom? SetTop(5, 1) Value i! Changed(3)", 0, Yes},
    {"No", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) bottom? Changed(3)", 0, No},
    {"Cancel", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) top? Changed(3)", 0, Cancel},
    {"Escape", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) top? Changed(3)", 0, Escape},
    {"Escape keeps nothing", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, false, "GetType GetHome SetBottom(5, 0) top? Changed(3)", 0, KeepEscape},
    {"Yes for ever", Min, 1264, 0, L"5", {{"SetBottom(5, 0)", -17}}, true, "GetType GetHome SetBottom(5, 0) top? SetBottom(5, 1) Changed(3)", 0, KeepYes, 1},
    {"No for ever", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) bottom? Changed(3)", 0, KeepNo, -1},
    {"no dialog, no for ever", Max, 1267, 0, L"5", {{"SetTop(5, 0)", -17}}, false, "GetType GetHome SetTop(5, 0) Changed(3)", 0, Unable, -1},
};
// clang-format on

std::string WithoutBoxes(std::string heard) {
    for (const std::string box : {"Invalid! ", "Value i! "}) {
        if (const auto at = heard.find(box); at != std::string::npos) heard.erase(at, box.size());
    }
    return heard;
}

class ZStackValidation : public testing::Test {
protected:
    RecordingParent parent;
    Journal journal;
    Panel panel{journal};
    Boxes boxes{journal};
    ScriptedRecord record{journal};

    void SetUp() override { ASSERT_TRUE(panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true)); }
    void TearDown() override { CKxDevUI_ZStack::iKeepRange = 0; }

    // Everything that an accessor of the refresh asks is left out.
    void Run(const Row& row, bool showErrors, const std::string& heard) {
        for (const int edit : {1260, 1261, 1262, 1263, 1264, 1265, 1266, 1267})
            SetWindowTextW(panel.Item(edit), edit == row.edit ? row.text : L"7777");
        record.type = row.type;
        record.answers = row.answers;
        CKxDevUI_ZStack::iKeepRange = row.keep;
        journal.Take();
        ModalAnswer answer([&](HWND dialog) {
            wchar_t question[200] = L"";
            GetDlgItemTextW(dialog, IDC_YNK_QUESTION, question, 200);
            journal.Add(wcsstr(question, L"move the top")      ? "top?"
                        : wcsstr(question, L"move the bottom") ? "bottom?"
                                                               : "?");
            AnswerDialog(dialog, row.ask);
        });
        {
            std::optional<NoDialogs> none;
            if (row.ask == Unable) none.emplace();
            EXPECT_EQ((panel.*row.validate)(showErrors), row.result);
        }
        // What ValidateHome's refresh reads after its callback is the refresh's business.
        std::string actual = journal.Take();
        if (const auto end = actual.find(" GetTop GetBottom GetHome GetType");
            row.validate == Home && end != actual.npos)
            actual.resize(end);
        EXPECT_EQ(actual, heard);
        EXPECT_EQ(CKxDevUI_ZStack::iKeepRange, row.keepAfter);
    }
};

TEST_F(ZStackValidation, AsksAndTellsInOrder) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.what) + " / " + row.heard);
        panel.Show(true);
        Run(row, true, row.heard);
        Run(row, false, WithoutBoxes(row.heard));
        panel.Show(false);
        Run(row, true, WithoutBoxes(row.heard));
    }
    EXPECT_EQ(boxes.last, CallText("Box", panel.GetHandle(), L"Z Series", 0x30u, -1));
}

TEST_F(ZStackValidation, IsNotEnteredTwice) {
    const auto all = [&] {
        for (const auto validate : {Top, Bottom, Home, Step, Steps})
            EXPECT_FALSE((panel.*validate)(true));
    };
    boxes.whileOpen = panel.onChanged = panel.onStep = all;
    SetWindowTextW(panel.Item(1260), L"x");
    EXPECT_FALSE(panel.ValidateTop(true));
    EXPECT_EQ(journal.Take(), "Invalid! Changed(3)");
    SetWindowTextW(panel.Item(1263), L"1");
    EXPECT_TRUE(panel.ValidateStep(true));
    EXPECT_EQ(journal.Take(), "SetStep(1) Step(1, 1) Changed(2)");
    panel.onChanged = [] { throw 1; };
    for (const char* when : {"at first", "idle again"})
        EXPECT_NO_THROW(panel.ValidateTop(false)) << when;
    EXPECT_EQ(journal.Take(), "Changed(3) Changed(3)");
    // The suggested step, whose button is pressed again over the message.
    panel.onChanged = [] {};
    record.answers = {{"SetStep(0.25)", 1}};
    boxes.whileOpen = [&] {
        boxes.whileOpen = [] {};
        SendMessageW(panel.Item(IDC_ZS_SUGGESTED), BM_CLICK, 0, 0);
        EXPECT_FALSE(panel.ValidateTop(true));
    };
    SendMessageW(panel.Item(IDC_ZS_SUGGESTED), BM_CLICK, 0, 0);
    EXPECT_EQ(journal.Take(), "GetStepSuggested SetStep(0.25) Value i! Changed(2)");
}

// Each accessor fails once, all at last: buttons leave the record alone and tell the host all the same.
TEST_F(ZStackValidation, BearsARecordThatFails) {
    const std::vector<std::string> reads{"GetType",      "GetTop",   "GetBottom",  "GetHome",     "GetStepSuggested",
                                         "GetZPosition", "GetCount", "GetZDevice", "GetZRangeMin"};
    record.AddZDevice(0, 1000, nullptr);
    record.SetZDevice(0);
    record.tellsReads = false;
    for (std::size_t i = 0; i <= reads.size(); ++i) {
        record.answers = {{"SetStep(0.25)", 1}};
        for (const std::string& read : reads)
            record.answers[read] = i == reads.size() || read == reads[i];
        SCOPED_TRACE(i);
        const auto ifRead = [this](const char* read, const char* text) { return record.answers[read] ? "" : text; };
        panel.UpdateGUI(3);
        journal.Take();
        for (const int id :
             {IDC_ZS_TOP, IDC_ZS_HOME, IDC_ZS_BOTTOM, IDC_ZS_RELATIVE, IDC_ZS_SUGGESTED, IDC_ZS_TYPE_SYMMETRIC})
            SendMessageW(panel.GetHandle(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                         reinterpret_cast<LPARAM>(panel.Item(id)));
        EXPECT_EQ(
            journal.Take(),
            ifRead("GetZPosition", "SetTop(5, 1) ") + std::string("Changed(3) ") +
                ifRead("GetZPosition", "SetHome(5) ") + "Changed(3) " + ifRead("GetZPosition", "SetBottom(5, 1) ") +
                "Changed(3) " + ifRead("GetType", "ResetTop ResetBottom ") + "Changed(3) " +
                (record.answers["GetStepSuggested"] ? "Changed(3)" : "SetStep(0.25) Value i! Changed(2)") +
                ifRead("GetType", " SetType(2) Changed(3)") + ifRead("GetType", ifRead("GetZDevice", " Shown(2)")));
    }
}

// Asked by the host itself, with no procedure of a window in between.
TEST_F(ZStackValidation, KeepsWhatItShowsWhenTheRecordThrows) {
    panel.UpdateGUI(3);
    const auto shown = [this](int id) {
        wchar_t text[40] = L"";
        GetWindowTextW(panel.Item(id), text, 40);
        return std::wstring(text);
    };
    for (const char* read : {"GetZDevice", "GetTop", "GetCount", "GetZPosition", "SetKeepZOnPiezoHome"}) {
        record.answers = {{read, Throws}};
        EXPECT_NO_THROW(panel.UpdateGUI(3)) << read;
        EXPECT_EQ(shown(1260) + L' ' + shown(1266), L"60.00 3") << read;
    }
}

// Wherever the panel goes, nothing of it is touched after that.
TEST_F(ZStackValidation, SurvivesTheEndOfItsPanel) {
    const struct {
        const char* heard;
        const char* told;  // of what has become of the record, by a panel without its window
        bool (Panel::*validate)(bool);
        const wchar_t* text;
    } table[] = {{"Invalid!", " Changed(2)", Step, L"x"},
                 {"SetStep(5) Step(5, 1)", " Changed(2)", Step, L"5"},
                 {"GetType GetHome SetTop(5, 0)", " Changed(3)", Max, L"5"}};
    record.answers = {{"SetTop(5, 0)", -17}};
    for (const auto& row : table) {
        for (const bool deleted : {false, true}) {
            auto doomed = std::make_unique<Panel>(journal);
            doomed->Create(parent.Window(), &record, 0, 0, 0, 0, true, true);
            const auto end = [&] { deleted ? doomed.reset() : doomed->Destroy(); };
            boxes.whileOpen = doomed->onStep = end;
            for (const int edit : {1263, 1267})
                SetWindowTextW(doomed->Item(edit), row.text);
            ModalAnswer answer([&](HWND dialog) {
                end();
                PressButton(dialog, IDC_YNK_YES);
            });
            journal.Take();
            (doomed.get()->*row.validate)(true);
            EXPECT_EQ(journal.Take(), std::string(row.heard) + (deleted ? "" : row.told));
        }
    }
}

}  // namespace
