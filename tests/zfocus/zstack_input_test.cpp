// The Z stack panel under the user's hands: mouse, keys, the menu; and with records and hosts that do their worst.
#include "zstack_panel.h"

#include <kxdevui/zfocus/zstack_ids.h>

#include <memory>

namespace {

using namespace kx::test;

// Chooses the second item of the menu that comes up.
class MenuKeys {
public:
    explicit MenuKeys(HWND owner) : timer_(SetTimer(nullptr, 0, 20, Press)) { s_owner = owner; }
    ~MenuKeys() { KillTimer(nullptr, timer_); }
    MenuKeys(const MenuKeys&) = delete;
    MenuKeys& operator=(const MenuKeys&) = delete;

private:
    static void CALLBACK Press(HWND, UINT, UINT_PTR, DWORD) {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        if (!GetGUIThreadInfo(GetCurrentThreadId(), &info) || !(info.flags & GUI_INMENUMODE)) return;
        for (const int key : {VK_DOWN, VK_DOWN, VK_RETURN})
            PostMessageW(s_owner, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    static inline HWND s_owner = nullptr;
    UINT_PTR timer_;
};

class ZStackInput : public testing::Test {
protected:
    RecordingParent parent;
    Journal journal;
    std::unique_ptr<Panel> panel = std::make_unique<Panel>(journal);
    Boxes boxes{journal};
    CKxZStackData record;

    void SetUp() override { Make(); }
    void Make() {
        record = CKxZStackData();
        record.AddZDevice(0, 1000, nullptr);
        record.AddZDevice(0, 300, nullptr);
        record.SetZDevice(0);
        record.SetZPosition(0, 500);
        record.SetTop(520, true);
        record.SetBottom(500, true);
        record.SetStep(2);
        if (!panel) panel = std::make_unique<Panel>(journal);
        ASSERT_TRUE(panel->Create(parent.Window(), &record, 0, 0, 0, 0, true, true));
        panel->AppendZDevice(L"Focus drive", false, 1, 0, 1000, false, 0, true);
        panel->AppendZDevice(L"Piezo", true, 2, 0, 300, true, 0, false);
        panel->onChanged = [this] { panel->UpdateGUI(3); };
        panel->UpdateGUI(3);
        BringToFront(panel->GetHandle());
        journal.Take();
    }
    HWND Item(int id) const { return panel->Item(id); }
    std::wstring Shown(int id) const {
        wchar_t text[40] = L"";
        GetWindowTextW(Item(id), text, 40);
        return text;
    }
    // Of the bar with the magnified stack, so many hundredths from its top.
    void ClickScale(int percent) {
        RECT client{}, edit{};
        GetClientRect(panel->GetHandle(), &client);
        GetWindowRect(Item(IDC_ZS_EDIT_BOTTOM), &edit);
        MapWindowPoints(nullptr, panel->GetHandle(), reinterpret_cast<POINT*>(&edit), 2);
        Click(panel->GetHandle(), static_cast<int>(edit.right) + 40, static_cast<int>(edit.bottom) * percent / 100);
    }
};

TEST_F(ZStackInput, MovesOnByKeys) {
    // With the dialog keys of the host's message loop, and without.
    for (const bool dialog : {false, true}) {
        SCOPED_TRACE(dialog);
        std::optional<DialogKeys> keys;
        if (dialog) keys.emplace(parent.Window());
        SetFocus(Item(IDC_ZS_EDIT_STEP));
        Key(VK_END);
        Type(L"\b\b\b\b\b5");
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEP), L"5");
        Key(VK_ESCAPE);
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEP), L"2.00");
        Type(L"4\t");
        EXPECT_EQ(journal.Take(), "Step(4, 1) Changed(2) Shown(0)");
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS)) << "there is no step to be suggested";
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEPS), L"6");
        Type(L"11\n");
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0)");
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_BELOW));
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEP), L"2.00");
        Key(VK_TAB, MOD_SHIFT);
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS));
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0)") << "leaving validates";
        Type(L"x\n");
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS)) << "a refused entry does not let go";
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Changed(3) Shown(0)")
            << "on the way back the next field is left";
        SetFocus(Item(IDC_ZS_TYPE_SYMMETRIC));
        journal.Take();
        Type(L"\n");
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Shown(0)");
        record.SetType(0);
        record.ResetHome();
        record.SetStep(2);
        panel->UpdateGUI(3);
        journal.Take();
    }
}

TEST_F(ZStackInput, AsksForZ) {
    for (const auto& [edit, heard] : {std::pair{IDC_ZS_EDIT_TOP, "Move(520)"},
                                      {IDC_ZS_EDIT_MIDDLE, ""},
                                      {IDC_ZS_EDIT_BOTTOM, "Move(500)"},
                                      {IDC_ZS_EDIT_ABOVE, ""}}) {
        DoubleClick(Item(edit), 20, 8);
        EXPECT_EQ(journal.Take(), heard);
    }
    SetFocus(Item(IDC_ZS_EDIT_TOP));
    journal.Take();
    Type(L" 7");
    EXPECT_EQ(journal.Take(), "Move(520)");
    EXPECT_EQ(Shown(IDC_ZS_EDIT_TOP), L"520.00") << "a field that nobody validates takes nothing";
    ClickScale(97);
    EXPECT_TRUE(journal.Take().starts_with("Move(49"));
    record.ClearZDevices();
    panel->UpdateGUI(3);
    ClickScale(50);
    EXPECT_EQ(journal.Take(), "") << "nobody knows how far the device goes";
}

TEST_F(ZStackInput, SendsThePiezoHome) {
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_ZS_PIEZO)));
    SetFocus(Item(IDC_ZS_DEVICE));
    Key(VK_DOWN);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(1) Shown(1)");
    const int width = 60;
    Click(Item(IDC_ZS_PIEZO), 10, 8);
    EXPECT_EQ(journal.Take(), "GoHome(0)");
    const MenuKeys keys(panel->GetHandle());
    Click(Item(IDC_ZS_PIEZO), width - 2, 8);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(1) GoHome(1)");
    bool keep = false;
    EXPECT_EQ(record.GetKeepZOnPiezoHome(&keep) + keep, 1);
    Click(Item(IDC_ZS_PIEZO), 10, 8);
    EXPECT_EQ(journal.Take(), "GoHome(1)");
    panel->SetPiezoPickerMode(CKxDevUI_ZStack::PiezoHome, CKxDevUI_ZStack::PiezoPickerFixed);
    Click(Item(IDC_ZS_PIEZO), width - 2, 8);
    EXPECT_EQ(journal.Take(), "GoHome(0)");
    wchar_t command[] = L"GOHOMEKEEP", unknown[] = L"gohome";
    EXPECT_EQ(panel->CustomCommand(CKxDevUI_ZStack::CommandByName, 0, command), 1);
    EXPECT_EQ(panel->CustomCommand(CKxDevUI_ZStack::CommandByName, 0, unknown), 0);
    EXPECT_EQ(panel->CustomCommand(CKxDevUI_ZStack::CommandByName, 0, nullptr), 0);
    EXPECT_EQ(panel->CustomCommand(7, 0, command), 0);
    EXPECT_EQ(journal.Take(), "GoHome(1)");
}

TEST_F(ZStackInput, TouchesOnlyWhatHasChanged) {
    const auto due = [this](int id) { return GetUpdateRect(id ? Item(id) : panel->GetHandle(), nullptr, FALSE) != 0; };
    const auto refresh = [&](unsigned int flags) {
        panel->Redraw();
        panel->UpdateGUI(flags);
    };
    refresh(3);
    for (HWND child = GetWindow(panel->GetHandle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        EXPECT_FALSE(GetUpdateRect(child, nullptr, FALSE)) << GetDlgCtrlID(child);
    EXPECT_FALSE(due(0));
    record.SetZPosition(0, 520);
    refresh(CKxDevUI_ZStack::RefreshZ);
    EXPECT_TRUE(due(0));
    EXPECT_TRUE(due(IDC_ZS_EDIT_TOP)) << "Z stands there now";
    EXPECT_TRUE(due(IDC_ZS_EDIT_BOTTOM)) << "and here no more";
    EXPECT_FALSE(due(IDC_ZS_EDIT_ABOVE));
    RECT rect{};
    GetUpdateRect(panel->GetHandle(), &rect, FALSE);
    EXPECT_GT(rect.left, 190) << "the scale alone";
}

TEST_F(ZStackInput, TakesListsOfAnyKind) {
    const HWND list = Item(IDC_ZS_DEVICE);
    panel->ClearZDevices(true, true);
    EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 0);
    EXPECT_FALSE(GetWindowLongW(Item(IDC_ZS_PIEZO), GWL_STYLE) & WS_VISIBLE);
    for (int i = 0; i < 3000; ++i) {
        record.AddZDevice(0, 100, nullptr);
        ASSERT_EQ(panel->AppendZDevice(L"Twin", false, i, 0, 100, false, 0, false), i);
    }
    record.SetZDevice(2999);
    panel->UpdateGUI(1);
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), 2999);
    // A record that knows fewer devices than the list refuses the choice.
    record.ClearZDevices();
    SendMessageW(list, CB_SETCURSEL, 7, 0);
    SendMessageW(panel->GetHandle(), WM_COMMAND, MAKEWPARAM(IDC_ZS_DEVICE, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), -1);
    EXPECT_EQ(Panel(journal).AppendZDevice(L"Twin", false, 1, 0, 100, false, 0, false), -1) << "no window";
}

// Each accessor fails once, all at last: buttons leave the record alone and tell the host all the same.
class FailingRecord : public CKxZStackData {
public:
    int failing = -1;
    mutable std::string set;
    static constexpr int kGetters = 9;

    int GetType(int* type) const override { return Fails(0) ? 1 : CKxZStackData::GetType(type); }
    int GetTop(double* z) const override { return Fails(1) ? 1 : CKxZStackData::GetTop(z); }
    int GetBottom(double* z) const override { return Fails(2) ? 1 : CKxZStackData::GetBottom(z); }
    int GetHome(double* z) const override { return Fails(3) ? 1 : CKxZStackData::GetHome(z); }
    int GetStepSuggested(double* step) const override { return Fails(4) ? 1 : CKxZStackData::GetStepSuggested(step); }
    int GetZPosition(double* z) const override { return Fails(5) ? 1 : CKxZStackData::GetZPosition(z); }
    int GetCount(unsigned int* count) const override { return Fails(6) ? 1 : CKxZStackData::GetCount(count); }
    int GetZDevice(unsigned int* device) const override { return Fails(7) ? 1 : CKxZStackData::GetZDevice(device); }
    int GetZRangeMin(double* z) const override { return Fails(8) ? 1 : CKxZStackData::GetZRangeMin(z); }
    int SetTop(double, bool) override { return set += 'T', 1; }
    int SetHome(double) override { return set += 'H', 1; }
    int SetBottom(double, bool) override { return set += 'B', 1; }
    int SetStep(double) override { return set += 'S', 1; }
    int SetType(int) override { return set += 'Y', 1; }
    int ResetTop() override { return set += 't', 0; }

private:
    bool Fails(int getter) const { return failing == getter || failing == kGetters; }
};

TEST_F(ZStackInput, BearsARecordThatFails) {
    FailingRecord bad;
    bad.AddZDevice(0, 1000, nullptr);
    bad.SetZDevice(0);
    bad.SetZPosition(0, 5);
    bad.SetObjective(1.2, 1.33);
    bad.SetWavelength(525);
    panel->onChanged = [] {};
    panel->Create(parent.Window(), &bad, 0, 0, 0, 0, true, true);
    for (bad.failing = 0; bad.failing <= FailingRecord::kGetters; ++bad.failing) {
        SCOPED_TRACE(bad.failing);
        const bool all = bad.failing == FailingRecord::kGetters, noType = all || bad.failing == 0;
        const bool noZ = all || bad.failing == 5, noStep = all || bad.failing == 4;
        panel->UpdateGUI(3);
        journal.Take(), bad.set.clear();
        for (const int id :
             {IDC_ZS_TOP, IDC_ZS_HOME, IDC_ZS_BOTTOM, IDC_ZS_RELATIVE, IDC_ZS_SUGGESTED, IDC_ZS_TYPE_SYMMETRIC})
            SendMessageW(panel->GetHandle(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                         reinterpret_cast<LPARAM>(Item(id)));
        EXPECT_EQ(bad.set,
                  std::string(noZ ? "" : "THB") + (noType ? "" : "t") + (noStep ? "" : "S") + (noType ? "" : "Y"));
        const std::string type = noType ? "" : bad.failing == 7 ? " Changed(3)" : " Changed(3) Shown(0)";
        EXPECT_EQ(journal.Take(), std::string("Changed(3) Changed(3) Changed(3) Changed(3)") +
                                      (noStep ? " Changed(3)" : " Value i! Changed(2)") + type);
    }
}

// Whatever the host hears of, it may end the panel on it, or all of its windows.
TEST_F(ZStackInput, SurvivesItsHost) {
    for (const int id : {IDC_ZS_TOP, IDC_ZS_HOME, IDC_ZS_BOTTOM, IDC_ZS_RELATIVE, IDC_ZS_TYPE_ENDS, IDC_ZS_DEVICE,
                         IDC_ZS_EDIT_STEP, IDC_ZS_EDIT_ABOVE}) {
        for (int how = 0; how < 3; ++how) {
            SCOPED_TRACE(CallText("end", id, how));
            Make();
            panel->onChanged = [&] {
                if (how == 0) panel.reset();
                if (how == 1) panel->Destroy();
                if (how == 2) DestroyWindow(panel->GetHandle());
            };
            SetFocus(Item(id));
            if (id == IDC_ZS_DEVICE) {
                Key(VK_DOWN);
            } else if (id >= IDC_ZS_EDIT_TOP && id <= IDC_ZS_EDIT_ABOVE) {
                SendMessageW(Item(id), EM_SETSEL, 0, -1);
                Type(L"510\n");
            } else {
                Key(VK_SPACE);
            }
            const std::string heard = journal.Take();
            EXPECT_TRUE(heard.starts_with(id == IDC_ZS_EDIT_STEP ? "Step(" : "Changed(")) << heard;
            EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr);
        }
    }
    Make();
    SetFocus(Item(IDC_ZS_EDIT_STEP));
    Type(L"3");
    DestroyWindow(panel->GetHandle());
    EXPECT_EQ(journal.Take(), "") << "what a dying edit held is lost";
    EXPECT_EQ(panel->GetHandle(), nullptr);
}

}  // namespace
