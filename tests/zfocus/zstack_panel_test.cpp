// The panel over the real record, its place among the GUI elements, its dialog.
#include "zstack_panel.h"

#include <kxdevui/zfocus/zstack_ids.h>
#include <kxsystem/kx_locale.h>

#include <cstring>

namespace {

using namespace kx::test;

struct Slots : CKxDevUI_ZStack {
    // A pointer to a virtual member function holds 1 plus the byte offset of its entry in the table; the destructor's
    // two entries are slot 0.
    template <class Function>
    static long Of(Function function) {
        long long words[sizeof(Function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    }
    static std::vector<long> InOrder() {
        using S = Slots;
        return {Of(&S::SetHandler),
                Of(&S::GetHandler),
                Of(&S::CreateUI),
                Of(&S::DestroyUI),
                Of(&S::GetHandle),
                Of(&S::SetUIParent),
                Of(&S::Show),
                Of(&S::IsVisible),
                Of(&S::Enable),
                Of(&S::IsEnabled),
                Of(&S::SetRedrawEx),
                Of(&S::Update),
                Of(&S::IsResizable),
                Of(&S::GetCurSize),
                Of(&S::CalcOptimalSize),
                Of(&S::Move),
                Of(&S::GetInterface),
                Of(&S::GetInfo),
                Of(&S::CustomCommand),
                Of(&S::SetOptimalSize),
                Of(&S::SetLayoutStyle),
                Of(&S::GetEnableGuiFlag),
                Of(&S::SetEnableGuiFlag),
                Of(&S::IsResizableInSteps),
                Of(&S::OnGuiZoomChanged),
                Of(&S::AppendZDevice),
                Of(&S::OnPiezoPickerChanged),
                Of(&S::OnStepChanged),
                Of(&S::OnMoveZRequest),
                Of(&S::OnGoHomeRequest),
                Of(&S::OnHostRequest),
                Of(&S::OnZDeviceShown),
                Of(&S::OnZStackChanged),
                Of(&S::OnEraseBkGnd)};
    }
};

TEST(ZStackSlots, HoldsEachOperationAtItsPlace) {
    long slot = 0;
    for (const long found : Slots::InOrder())
        EXPECT_EQ(found, ++slot);
    EXPECT_EQ(slot, 34);
}

class ZStackPanelAtWork : public testing::Test {
protected:
    RecordingParent parent;
    Journal journal;
    Panel panel{journal};
    Boxes boxes{journal};
    CKxZStackData record;

    void SetUp() override {
        record.AddZDevice(0, 1000, nullptr);
        record.SetZDevice(0);
        record.SetZPosition(0, 500);
        ASSERT_TRUE(panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true));
        panel.AppendZDevice(L"Focus drive", false, 1, 0, 1000, false, 0, true);
        panel.onChanged = [this] { panel.UpdateGUI(3); };
        panel.UpdateGUI(3);
        EXPECT_EQ(journal.Take(), "Shown(0)") << "nothing else is asked of the host";
    }
    std::wstring Shown(int id) {
        wchar_t text[40] = L"";
        GetWindowTextW(panel.Item(id), text, 40);
        return text;
    }
    void Enter(int id, const wchar_t* text) { SetWindowTextW(panel.Item(id), text); }
};

TEST_F(ZStackPanelAtWork, MovesARangeToTheEndOfTheDevice) {
    record.SetType(2);
    record.SetHome(10);
    record.SetBottom(0, false);
    record.SetTop(20, false);
    for (const auto& [range, taken, bottom, home, top] : {std::tuple{L"100", true, L"0.00", L"50.00", L"100.00"},
                                                          {L"40", true, L"30.00", L"50.00", L"70.00"},
                                                          {L"-40", false, L"30.00", L"50.00", L"70.00"},
                                                          {L"1200", false, L"30.00", L"600.00", L"70.00"},
                                                          {L"2002", false, L"30.00", L"600.00", L"70.00"},
                                                          {L"900", true, L"100.00", L"550.00", L"1000.00"}}) {
        SCOPED_TRACE(Narrow(range));
        Enter(1265, range);
        EXPECT_EQ(panel.ValidateRange(false), taken);
        EXPECT_EQ(Shown(1262), bottom);
        EXPECT_EQ(Shown(1261), home);
        EXPECT_EQ(Shown(1260), top);
    }
    EXPECT_EQ(Shown(1265), L"900.00");
    EXPECT_EQ(Shown(1205), L"<-450.00, +450.00>");
}

TEST_F(ZStackPanelAtWork, ValidatesWhatTheFocusLeaves) {
    const HWND step = panel.Item(1263), above = panel.Item(1267);
    BringToFront(panel.GetHandle());
    SetFocus(step);
    EXPECT_EQ(Shown(1263), L"") << "nothing stands where nothing is set";
    Type(L"2.5");
    SetFocus(panel.Item(IDC_ZS_DEVICE));
    EXPECT_EQ(journal.Take(), "") << "the list of devices leaves it open";
    SetFocus(step);
    Type(L"2.5");
    Click(panel.Item(IDC_ZS_TOP), 9, 9);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Step(2.5, 1) Changed(2) Shown(0) Changed(3) Shown(0)")
        << "the button acts by the rule, then by the mouse";
    EXPECT_EQ(Shown(1267), L"500.00");

    SetFocus(above);
    Enter(1267, L"up");
    SetFocus(step);
    EXPECT_EQ(GetFocus(), above);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Step(2.5, 1) Changed(2) Shown(0)") << "no box within the panel";
    Enter(1267, L"up");
    SetFocus(parent.Window());
    EXPECT_EQ(journal.Take(), "Invalid! Changed(3) Shown(0)");
    EXPECT_EQ(GetFocus(), above);
    Enter(1267, L"up");
    panel.Destroy();
    EXPECT_EQ(journal.Take(), "") << "a panel on its way out has nothing to tell";
}

TEST_F(ZStackPanelAtWork, ChoosesTypes) {
    record.SetHome(300);
    for (const auto& [before, button, after, read] : {std::tuple{0, IDC_ZS_TYPE_SYMMETRIC, 2, 1265},
                                                      {2, IDC_ZS_TYPE_ASYMMETRIC, 3, 1264},
                                                      {7, IDC_ZS_TYPE_ENDS, 4, 1267},
                                                      {4, IDC_ZS_TYPE_SYMMETRIC, 6, 1265}}) {
        record.SetType(before);
        SendMessageW(panel.Item(button), BM_CLICK, 0, 0);
        int type = -1;
        record.GetType(&type);
        EXPECT_EQ(type, after);
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Shown(0)");
        for (const int edit : {1264, 1265, 1267})
            EXPECT_EQ(IsWindowVisible(panel.Item(edit)) != FALSE, (edit == 1265) == (read == 1265)) << edit;
    }
    SendMessageW(panel.Item(IDC_ZS_RELATIVE), BM_CLICK, 0, 0);
    EXPECT_EQ(record.GetHome(nullptr), -17);
}

TEST_F(ZStackPanelAtWork, AsksNobodyWhenARefreshHidesTheFieldWithTheFocus) {
    BringToFront(panel.GetHandle());
    record.SetType(3);
    record.SetHome(50);
    record.SetBottom(45, false);
    record.SetTop(60, false);
    panel.UpdateGUI(3);
    EXPECT_EQ(Shown(1264), L"-5.00");
    SetFocus(panel.Item(1264));
    journal.Take();
    record.SetType(2);
    panel.UpdateGUI(3);
    EXPECT_EQ(journal.Take(), "Shown(0)");
    double bottom = 0;
    EXPECT_TRUE(record.GetBottom(&bottom) == 0 && bottom == 45);
    SetFocus(panel.Item(1265));
    record.SetType(0);
    panel.UpdateGUI(3);
    EXPECT_EQ(GetFocus(), panel.GetHandle()) << "and not a field that is not there";
    // From menus and accelerators, without a window.
    journal.Take();
    SendMessageW(panel.GetHandle(), WM_COMMAND, MAKEWPARAM(1253, 0), 0);
    EXPECT_TRUE(record.GetBottom(&bottom) == 0 && bottom == 500);
}

TEST_F(ZStackPanelAtWork, CopiesShareTheWindow) {
    {
        Panel copy(panel);
        EXPECT_EQ(copy.GetHandle(), panel.GetHandle());
    }
    EXPECT_TRUE(IsWindow(panel.GetHandle()));
    EXPECT_FALSE(Panel(journal).Create(parent.Window(), nullptr, 0, 0, 0, 0, true, true));
    EXPECT_FALSE(Panel(journal).Create(nullptr, &record, 0, 0, 0, 0, true, true));
    EXPECT_EQ(panel.AppendZDevice(L"", true, 1, 0, 1, false, 0, false), -1);
}

TEST_F(ZStackPanelAtWork, LeavesNothing) {
    EXPECT_TRUE(NoGrowth(
        1000,
        [&] {
            Panel other(journal);
            other.Create(parent.Window(), &record, 0, 0, 0, 0, true, true);
            other.AppendZDevice(L"Focus drive", true, 1, 0, 1000, false, 0, true);
            other.EnableCube(true);
            other.UpdateGUI(3);
            other.Redraw();
            journal.Take();
        },
        20));
}

// Everything lies inside the dialog and in its place, in every language.
TEST_F(ZStackPanelAtWork, LaysItsQuestionOut) {
    record.SetTop(900, false);
    record.SetBottom(800, false);
    for (const WORD language : {WORD{0x409}, WORD{0x407}, WORD{0x40C}, WORD{0xC0A}, WORD{0x411}}) {
        CKxLocale::SetModuleLangId(language);
        Enter(1267, L"1001");
        ModalAnswer answer([&](HWND dialog) {
            RECT client{}, last{};
            GetClientRect(dialog, &client);
            const auto rectOf = [dialog](int id) {
                RECT rect{};
                GetWindowRect(GetDlgItem(dialog, id), &rect);
                MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
                return rect;
            };
            const RECT icon = rectOf(IDC_YNK_ICON), question = rectOf(IDC_YNK_QUESTION), keep = rectOf(IDC_YNK_KEEP);
            EXPECT_EQ(icon.left, 10);
            EXPECT_EQ(question.left, icon.right + 10);
            EXPECT_EQ(keep.left, question.left);
            EXPECT_GE(keep.top, question.bottom + 10);
            for (const int id : {IDC_YNK_YES, IDC_YNK_NO, IDC_YNK_CANCEL}) {
                const RECT button = rectOf(id);
                EXPECT_EQ(button.top, keep.bottom + 10);
                EXPECT_GT(button.left, last.right);
                EXPECT_LE(button.bottom, client.bottom);
                EXPECT_LE(button.right, client.right);
                last = button;
            }
            EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_YNK_YES));
            EXPECT_EQ(GetWindowLongW(dialog, GWL_STYLE) & WS_VISIBLE, WS_VISIBLE);
            UpdateWindow(dialog);
            Picture::OnScreen(dialog).Save("yesnokeep-" + std::to_string(language));
            PressButton(dialog, IDC_YNK_CANCEL);
        });
        EXPECT_FALSE(panel.ValidateRangeMax(true));
        ASSERT_EQ(answer.Count(), 1u);
        const bool english = language == 0x409;
        for (const int id : {IDC_YNK_YES, IDC_YNK_CANCEL, IDC_YNK_QUESTION, IDC_YNK_KEEP}) {
            const std::wstring text = answer.Dialogs()[0].TextOf(id);
            EXPECT_EQ(text == L"&Yes" || text == L"Cancel" || text.starts_with(L"Value") || text.starts_with(L"Do not"),
                      english)
                << Narrow(text);
        }
        panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true);
        panel.UpdateGUI(3);
        Picture::OnScreen(panel.GetHandle()).Save("zstack-" + std::to_string(language));
    }
    CKxLocale::SetModuleLangId(0);
}

}  // namespace
