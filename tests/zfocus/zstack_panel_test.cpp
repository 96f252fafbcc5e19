// The panel over the real record: what it shows, under the hands of users; its dialog.
#include "zstack_panel.h"

#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_parts.h>

#include <optional>
#include <set>

namespace {

using namespace kx::test;

constexpr WORD kLanguages[] = {0x409, 0x407, 0x40C, 0xC0A, 0x411};

// Whether it shows more when it is wider.
bool IsCut(HWND label) {
    const RECT at = RectInParent(label);
    const auto inkAt = [&](long more) {
        SetWindowPos(label, nullptr, at.left - more, at.top, at.right - at.left + 2 * more, at.bottom - at.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        const Picture picture = Picture::Printed(label);
        return picture.Width() * picture.Height() - picture.Count(KX_GetSysColor(COLOR_BTNFACE));
    };
    const int wide = inkAt(20);
    return inkAt(0) != wide;
}

// A panel over a record that has a drive and a piezo, and a host that has it refreshed with every change.
struct ZStackPanel : PanelTest {
    // With a stack from 500 to 520, or with nothing set.
    void Make(bool stack) {
        record = CKxZStackData();
        heard.Clear();
        ASSERT_TRUE(panel.Create(parent.Window(), &record, 0, 0, 0, 0, true, true));
        EXPECT_EQ(panel.AddZDevice(L"Focus drive", false, 1, 0, 1000, false, 0, true), 0);
        EXPECT_EQ(panel.AddZDevice(L"Piezo", true, 2, 0, 300, true, 0, false), 1);
        EXPECT_EQ(panel.AddZDevice(L"Backwards", true, 3, 1, 0, true, 0, false), -1);
        record.SetZPosition(0, 500);
        if (stack) Set(0, std::nullopt, 500, 520), record.SetStep(2);
        panel.onChanged = [this] { panel.UpdateGUI(3); };
        panel.UpdateGUI(3);
        EXPECT_EQ(See(), "Shown(0)") << "nothing else is asked of the host";
        BringToFront(panel.GetHandle());
    }
    void Set(int type, std::optional<double> home, double bottom, double top) {
        record.SetType(type);
        home ? record.SetHome(*home) : record.ResetHome();
        record.SetBottom(bottom, true), record.SetTop(top, true);
    }
    CKxZStackData record;
};

TEST_F(ZStackPanel, ShowsItsRecord) {
    Make(false);
    const std::tuple<int, std::optional<double>, double, double, const char*> table[] = {
        {0, std::nullopt, 500, 520, "520.00 N/A 500.00 RESET Bottom: 500.00 Top: 520.00 "},
        {5, 510, 500, 520, "520.00 510.00 500.00 RESET Bottom: 500.00 Top: 520.00 "},
        {2, 510, 500, 520, "520.00 510.00 500.00 Relative Range: 20.00 <-10.00, +10.00> "},
        {6, std::nullopt, -5, 5, "+5.00 N/A -5.00 Relative Range: 10.00 <-5.00, +5.00> "},
        {3, 510, 500, 530, "530.00 510.00 500.00 Relative Below: -10.00 Above: +20.00 "},
        {3, std::nullopt, -5, 15.004, "+15.00 N/A -5.00 Relative Below: -5.00 Above: +15.00 "},
    };
    for (const auto& [type, home, bottom, top, expected] : table) {
        Set(type, home, bottom, top);
        panel.UpdateGUI(1);
        std::string shown;
        for (const int id : {IDC_ZS_EDIT_TOP, IDC_ZS_EDIT_MIDDLE, IDC_ZS_EDIT_BOTTOM, IDC_ZS_RELATIVE,
                             IDC_ZS_BELOW_LABEL, IDC_ZS_EDIT_BELOW, IDC_ZS_READOUT_LABEL, IDC_ZS_EDIT_ABOVE,
                             IDC_ZS_RANGE_LABEL, IDC_ZS_EDIT_RANGE, IDC_ZS_READOUT})
            if (IsWindowVisible(Item(id))) shown += Shown(id) + ' ';
        EXPECT_EQ(shown, expected);
    }
}

TEST_F(ZStackPanel, HasTheHabitsOfFields) {
    Make(true);
    KX_SetFieldHabits(panel.GetHandle(), KxFieldHabits::All());
    const auto see = [this] {
        return See() + " at " + std::to_string(GetDlgCtrlID(GetFocus())) + ": " + Shown(IDC_ZS_EDIT_STEP);
    };
    kx::test::Play(
        {// From field to field, past the button of the suggestion.
         {[&] { SetFocus(Item(IDC_ZS_EDIT_STEP)), Type(L"3,5\n"); },
          "Step(3.5, 1) Shown(0) Changed(2) Shown(0) at 1266: 3.50"},
         {[&] { Type(L"\n"), SetFocus(Item(IDC_ZS_EDIT_STEP)); }, "Shown(0) Shown(0) at 1263: 3.50"},
         // Refused without a box, wherever the focus goes, and once.
         {[] { Type(L"-5x\n"); }, "Changed(2) Shown(0) at 1263: -5"},
         // As it was entered, in the same words as the panel's; what was typed before has gone.
         {[] { Key(VK_ESCAPE), Type(L"2.50\n"), Key(VK_TAB, MOD_SHIFT), Type(L"7"), Key(VK_ESCAPE), Key(VK_ESCAPE); },
          "Step(2.5, 1) Shown(0) Changed(2) Shown(0) Shown(0) at 1263: 2.50"},
         {[&] { SetFocus(parent.Window()); }, "Shown(0) at 0: 2.50"}},
        see);
    SetFocus(Item(IDC_ZS_EDIT_STEP)), Type(L"4"), Click(Item(IDC_ZS_EDIT_STEPS), 3, 5);
    EXPECT_EQ(SendMessageW(Item(IDC_ZS_EDIT_STEPS), EM_GETSEL, 0, 0), 0) << "a click places the caret";
}

// What a field says that it allows is taken, and no more is.
TEST_F(ZStackPanel, SaysWhatItsFieldsAllow) {
    Make(true);
    KX_SetFieldHabits(panel.GetHandle(), KxFieldHabits::All());
    CKxDevUI_ZStack::iKeepRange = -1;
    const std::tuple<int, std::optional<double>, double, double, int, std::wstring> rows[] = {
        // clang-format off
        {0, std::nullopt, 500, 520, 1263, L"0.001 \u00B5m or more"}, {0, std::nullopt, 0, 1000, 1263, L"0.002 \u00B5m or more"},
        {0, std::nullopt, 500, 500.005, 1266, L"1 to 6, whole numbers"}, {0, std::nullopt, 500, 520, 1264, L"0 to 520 \u00B5m"},
        {0, std::nullopt, 500, 520, 1267, L"500 to 1000 \u00B5m"}, {2, 510, 500, 520, 1265, L"0 to 1000 \u00B5m"},
        {3, 510, 500, 520, 1264, L"0 to 510 \u00B5m"}, {3, 510, 500, 520, 1267, L"0 to 490 \u00B5m"},
        {3, std::nullopt, -5, 15, 1264, L"0 to 985 \u00B5m"}, {3, std::nullopt, -5, 15, 1267, L"0 to 995 \u00B5m"}};
    // clang-format on
    for (const auto& [type, home, bottom, top, edit, allowed] : rows) {
        double least = 0, most = kInf;
        std::swscanf(allowed.c_str(), L"%lf to %lf", &least, &most);
        const double beyond = edit == 1266 ? 1 : edit == 1265 ? 0.01 : 0.001;
        // A sign means nothing to a distance.
        for (const auto& [value, taken] :
             {std::pair(least, true), {least - beyond, type == 3}, {most, true}, {most + beyond, false}}) {
            if (value == kInf) break;
            record.SetStep(2), Set(type, home, bottom, top), panel.UpdateGUI(3);
            SetFocus(Item(edit));
            kx::ui::ShowAnswer(Item(edit), L"");
            CKxStringW text;
            text.Format(20, L"%.10g", value);
            Type(text.str() + L"\n");
            const std::wstring refused = L"\"" + text.str() + L"\": " + allowed;
            EXPECT_EQ(TextOf(kx::ui::AnswerWindow()), taken ? L"" : refused) << edit << Narrow(text.str());
            SetFocus(parent.Window());
        }
    }
    CKxDevUI_ZStack::iKeepRange = 0;
    SetFocus(Item(1266)), Type(L"1x");
    EXPECT_NE(TextOf(kx::ui::AnswerWindow()).find(L"whole numbers"), std::wstring::npos);
    Type(L"2.5\n");
    EXPECT_EQ(GetFocus(), Item(1266)) << "12 is a part of it";
    Key(VK_ESCAPE), SetFocus(Item(1263)), Type(L"4.2000000000000001e1\n");
    EXPECT_EQ(Shown(1263) + " at " + std::to_string(GetDlgCtrlID(GetFocus())), "4.2000000000000001e1 at 1263");
}

TEST_F(ZStackPanel, SaysWhyZStaysWhereItIs) {
    Make(true);
    panel.refusal = L"The stage is in the way";
    SendMessageW(Item(IDC_ZS_EDIT_TOP), WM_LBUTTONDBLCLK, 0, 0);
    EXPECT_EQ(KX_GetActivity(panel.GetHandle()), (KxActivity{EKxActivity::Refused, -1, panel.refusal}));
    KX_TellActivity(panel.GetHandle(), {EKxActivity::Failed, -1, L"stuck"});
    wchar_t tip[80]{};
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE, tool.hwnd = parent.Window(), tool.lpszText = tip;
    tool.uId = reinterpret_cast<UINT_PTR>(panel.GetHandle());
    SendMessageW(KX_GetToolTipWindow(panel.GetHandle()), TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&tool));
    EXPECT_STREQ(tip, L"Failed: stuck");
    KX_TellActivity(panel.GetHandle(), KxActivity{});
    EXPECT_EQ(kx::ui::TextOf(panel.GetHandle()), L"Z-Stack") << "called by its own name again";
}

TEST_F(ZStackPanel, ShowsWhereZWasSent) {
    Make(true);
    const HWND window = panel.GetHandle();
    const Picture there = Picture::OnScreen(window);
    KX_TellMeasured(window, {.asked = 500, .measured = 3});
    EXPECT_EQ(Picture::OnScreen(window), there) << "where it stands";
    EXPECT_TRUE(KX_TellMeasured(window, {.asked = 520}) && !KX_TellLight(window, EKxLight::On));
    RECT told{};
    EXPECT_TRUE(GetUpdateRect(window, &told, FALSE));
    EXPECT_GT(told.left, RectInParent(Item(IDC_ZS_EDIT_TOP)).right) << "the scale alone";
    // The mark's number has that colour alone.
    KX_TellActivity(window, {EKxActivity::Unknown, -1, {}});
    EXPECT_EQ(Picture::OnScreen(window).Count(RGB(200, 70, 0)), 0) << "where it is lost it stands nowhere";
}

TEST_F(ZStackPanel, ValidatesWhatTheFocusLeaves) {
    Make(false);
    const HWND step = Item(IDC_ZS_EDIT_STEP), above = Item(IDC_ZS_EDIT_ABOVE);
    // Nothing stands where nothing is set. The list of devices leaves it open. The button acts by rule, then by mouse.
    Play({{[&] { SetFocus(step), Type(L"2.5"), SetFocus(Item(IDC_ZS_DEVICE)); }, ""},
          {[&] { SetFocus(step), Type(L"2.5"), Click(Item(IDC_ZS_TOP), 9, 9); },
           "Changed(3) Shown(0) Step(2.5, 1) Shown(0) Changed(2) Shown(0) Changed(3) Shown(0)"}});
    SetFocus(above);
    Enter(IDC_ZS_EDIT_ABOVE, L"up"), Enter(IDC_ZS_EDIT_STEP, L"down");
    panel.onChanged = [] {};
    SetFocus(step);
    EXPECT_EQ(GetFocus(), above) << "the first refused, of two";
    // No box within the panel, and the step has not been left; a panel on its way out has nothing to tell.
    Play({{[] {}, "Changed(3)"},
          {[&] { SetFocus(parent.Window()); }, "Changed(3) Invalid!"},
          {[&] { panel.Destroy(); }, ""}});
}

// The host is told of the fields that it has made writable, and of no others.
TEST_F(ZStackPanel, LeavesPositionsToTheHost) {
    Make(false);
    parent.Answer(WM_COMMAND, [this](WPARAM id, LPARAM) {
        return id == MAKEWPARAM(IDC_ZS_EDIT_TOP, EN_KILLFOCUS) ? panel.ValidateTop(true) : panel.ValidateBottom(true);
    });
    const std::tuple<int, bool, const wchar_t*, std::string, unsigned> table[] = {
        {IDC_ZS_EDIT_TOP, false, L"600", "", 0},
        {IDC_ZS_EDIT_MIDDLE, true, L"600", "", 0},
        {IDC_ZS_EDIT_TOP, true, L"600", "Changed(3) Shown(0)", 1},
        // The user is sent back, and leaves it once more.
        {IDC_ZS_EDIT_BOTTOM, true, L"5x", "Changed(3) Shown(0) Changed(3) Shown(0) Invalid!", 2}};
    for (const auto& [edit, writable, typed, expected, asked] : table) {
        SendMessageW(Item(edit), EM_SETREADONLY, !writable, 0);
        SetFocus(Item(edit));
        Enter(edit, typed);
        for (const HWND next : {Item(IDC_ZS_EDIT_STEP), panel.GetHandle()})
            SetFocus(next);
        Pump();
        EXPECT_EQ(See().substr(0, expected.size()), expected) << edit;
        EXPECT_EQ(parent.Record().Entries().size(), asked) << edit;
        Told();
    }
    SetFocus(Item(IDC_ZS_EDIT_TOP));
    Type(L"6 ");
    panel.UpdateGUI(3);
    EXPECT_NE(Shown(IDC_ZS_EDIT_TOP), "600.00") << "a text that is being typed is not written over";
}

TEST_F(ZStackPanel, SharesItsWindowAndTakesListsOfAnyKind) {
    Make(true);
    EXPECT_EQ(Panel(panel).GetHandle(), panel.GetHandle());
    EXPECT_FALSE(Panel(heard).Create(parent.Window(), nullptr, 0, 0, 0, 0, true, true));
    for (const bool refresh : {false, true}) {
        SendMessageW(panel.GetHandle(), kx::ui::WM_KX_UPDATE_DEVICE_BAND, 1, reinterpret_cast<LPARAM>(&refresh));
        EXPECT_EQ(See(), refresh ? "Shown(0)" : "");
    }
    const HWND list = Item(IDC_ZS_DEVICE);
    panel.ClearZDevices(true, true);
    EXPECT_FALSE(SendMessageW(list, CB_GETCOUNT, 0, 0) || IsWindowVisible(Item(IDC_ZS_PIEZO)));
    for (int i = 0; i < 3; ++i) {
        record.AddZDevice(0, 100, nullptr);
        EXPECT_EQ(panel.AppendZDevice(L"Twin", false, i, 0, 100, false, 0, false), i);
    }
    record.SetZDevice(2);
    panel.UpdateGUI(1);
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), 2);
    // A record that knows fewer devices than the list refuses the choice.
    record.ClearZDevices();
    SendMessageW(list, CB_SETCURSEL, 1, 0);
    SendMessageW(panel.GetHandle(), WM_COMMAND, MAKEWPARAM(IDC_ZS_DEVICE, CBN_SELCHANGE), 0);
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), -1);
}

// In every language it is another one, and nothing of it is cut.
TEST_F(ZStackPanel, AsksInTheUsersLanguage) {
    Make(true);
    std::map<int, std::set<std::wstring>> texts;
    int n = 0;
    for (const WORD language : kLanguages) {
        CKxLocale::SetModuleLangId(language);
        CKxGUILayoutManager::SetGuiZoom(n++ % 2 ? 1.25 : 1.5);
        Enter(IDC_ZS_EDIT_ABOVE, L"1501");
        ModalAnswer answer([&](HWND dialog) {
            for (const int id : {IDC_YNK_YES, IDC_YNK_NO, IDC_YNK_CANCEL, IDC_YNK_QUESTION, IDC_YNK_KEEP})
                texts[id].insert(TextOf(GetDlgItem(dialog, id)));
            for (const int id : {IDC_YNK_KEEP, IDC_YNK_QUESTION}) {
                EXPECT_FALSE(IsCut(GetDlgItem(dialog, id))) << id;
                EXPECT_EQ(SendDlgItemMessageW(dialog, id, WM_GETFONT, 0, 0),
                          SendDlgItemMessageW(dialog, IDC_YNK_YES, WM_GETFONT, 0, 0));
            }
            EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_YNK_YES));
            PressButton(dialog, IDC_YNK_CANCEL);
        });
        EXPECT_FALSE(panel.ValidateRangeMax(true));
    }
    EXPECT_EQ(texts.size(), 5u);
    for (const auto& [id, all] : texts)
        EXPECT_EQ(all.size(), std::size(kLanguages) - (id == IDC_YNK_NO)) << id << ": only No is the same in two";
}

// In every language, at every zoom.
TEST_F(ZStackPanel, WidensLabelsThatDoNotFit) {
    const int labels[] = {1268, 1269, 1204, 1199, 1196, 1203, 1198, 1201, 1202, 1205, 1271};
    for (const WORD language : kLanguages) {
        CKxLocale::SetModuleLangId(language);
        Make(true);
        for (const auto& [type, zoom] : {std::pair{2, 1.25}, {3, 2.0}, {0, 1.25}, {2, 2.0}, {0, 1.0}, {3, 1.0}}) {
            CKxGUILayoutManager::SetGuiZoom(zoom);
            record.SetType(type);
            panel.UpdateGUI(3);
            for (const int id : labels)
                EXPECT_FALSE(IsWindowVisible(Item(id)) && IsCut(Item(id)))
                    << CallText("label", id, language, zoom, type, Shown(id));
        }
    }
}

// The text is longer than the field.
TEST_F(ZStackPanel, KeepsMarksClearOfTextAndEdges) {
    KX_SetColorScheme(eKxColorScheme_Light);
    for (const int zoom : {1, 2}) {
        Make(true);
        CKxGUILayoutManager::SetGuiZoom(zoom);
        const HWND edit = Item(IDC_ZS_EDIT_BOTTOM), button = Item(IDC_ZS_TYPE_SYMMETRIC);
        const RECT mark{0, 0, 6 * zoom, 14 * zoom};
        const Picture marked = Picture::OnScreen(edit).Part(mark), plain = Picture::OnScreen(button);
        EXPECT_NE(marked.Count(KX_GetSysColor(COLOR_BTNFACE)), 6 * zoom * 14 * zoom);
        SendMessageW(edit, EM_SETREADONLY, FALSE, 0);
        const Picture writable = Picture::OnScreen(edit).Part(mark);
        SetFocus(edit);
        Type(L"123456789012345678");
        HideCaret(nullptr);
        EXPECT_EQ(Picture::OnScreen(edit).Part(mark).Differences(writable), 0) << zoom;
        SetFocus(button);
        const RECT focus = Picture::OnScreen(button).Difference(plain);
        EXPECT_EQ(std::tuple(focus.left, focus.right), std::tuple(3 * zoom, plain.Width() - 3 * zoom));
    }
}

TEST_F(ZStackPanel, MovesOnByKeys) {
    // With the dialog keys of the host's message loop, and without.
    for (const bool dialog : {false, true}) {
        SCOPED_TRACE(dialog);
        Make(true);
        std::optional<DialogKeys> keys;
        if (dialog) keys.emplace(parent.Window());
        const auto at = [this] { return " at " + std::to_string(GetDlgCtrlID(GetFocus())) + ": " + Shown(1263); };
        // There is no step to be suggested; a refused entry does not let go, and going back leaves no other field.
        kx::test::Play(
            {{[&] { SetFocus(Item(1263)), Key(VK_END), Type(L"\b\b\b\b\b5"), Key(VK_ESCAPE); }, " at 1263: 2.00"},
             {[] { Type(L"4\t"); }, "Step(4, 1) Shown(0) Changed(2) Shown(0) at 1266: 4.00"},
             {[] { Type(L"11\n"); }, "Changed(3) Shown(0) at 1264: 2.00"},
             {[] { Key(VK_TAB, MOD_SHIFT); }, "Changed(3) Shown(0) at 1266: 2.00"},
             {[] { Type(L"x\n"); }, "Changed(3) Shown(0) at 1266: 2.00"}},
            [&] { return See() + at(); });
    }
}

// "0.33" stands for 0.333 until it is typed.
TEST_F(ZStackPanel, PassesThroughFieldsWithoutAChange) {
    Make(true);
    const std::tuple<int, int, int (CKxZStackData::*)(double*) const, double> table[] = {
        {0, 1263, &CKxZStackData::GetStep, 0.33},
        {0, 1264, &CKxZStackData::GetBottom, 90.12},
        {3, 1267, &CKxZStackData::GetTop, 110.68},
        {2, 1265, &CKxZStackData::GetTop, 110.68}};
    for (const auto& [type, edit, getter, typed] : table) {
        SetFocus(parent.Window());
        Set(type, type == 2 ? 100.1 : 100, type == 2 ? 89.522 : 90.123, 110.678);
        record.SetStep(0.333);
        panel.UpdateGUI(3);
        double before = 0, passed = 0, now = 0;
        (record.*getter)(&before);
        SetFocus(Item(edit));
        Type(L"\t");
        (record.*getter)(&passed);
        SetFocus(Item(edit));
        SendMessageW(Item(edit), EM_SETSEL, 0, -1);
        Type(TextOf(Item(edit)) + L"\t");
        (record.*getter)(&now);
        EXPECT_EQ(passed, before) << edit;
        EXPECT_TRUE(std::abs(now - typed) < 0.0015 && now != before) << edit << ": typing the same is typing";
    }
}

TEST_F(ZStackPanel, AsksForZ) {
    Make(true);
    for (const int edit : {IDC_ZS_EDIT_TOP, IDC_ZS_EDIT_MIDDLE, IDC_ZS_EDIT_BOTTOM, IDC_ZS_EDIT_ABOVE})
        DoubleClick(Item(edit), 20, 8);
    // The last field is left; one that nobody validates takes nothing. Near its bottom is the magnified stack's bar.
    const RECT edit = RectInParent(Item(IDC_ZS_EDIT_BOTTOM));
    Play({{[&] { SetFocus(Item(IDC_ZS_EDIT_TOP)); }, "Move(520) Move(500) Changed(3) Shown(0)"},
          {[&] { Type(L" 7"), heard.Text(Shown(IDC_ZS_EDIT_TOP)); }, "Move(520) 520.00"}});
    Click(panel.GetHandle(), static_cast<int>(edit.right) + 40, static_cast<int>(edit.bottom) * 97 / 100);
    EXPECT_TRUE(See().starts_with("Move(49"));
}

TEST_F(ZStackPanel, SendsThePiezoHome) {
    Make(true);
    const HWND piezo = Item(IDC_ZS_PIEZO);
    const int arrow = 58;
    // The keys are for the menu's loop.
    const auto pick = [&] {
        for (const WPARAM key : {WPARAM{VK_DOWN}, WPARAM{VK_DOWN}, WPARAM{VK_RETURN}})
            PostMessageW(panel.GetHandle(), WM_KEYDOWN, key, 0);
        SendMessageW(piezo, WM_LBUTTONDOWN, 0, MAKELPARAM(arrow, 8));
    };
    const auto fix = [&] { panel.SetPiezoPickerMode(CKxDevUI_ZStack::PiezoHome, CKxDevUI_ZStack::PiezoPickerFixed); };
    const auto command = [&](std::wstring name) {
        return panel.CustomCommand(CKxDevUI_ZStack::CommandByName, 0, name.empty() ? nullptr : name.data());
    };
    Play({{[&] { SetFocus(Item(IDC_ZS_DEVICE)), Key(VK_DOWN), Click(piezo, 10, 8); },
           "Changed(3) Shown(1) Shown(1) GoHome(0)"},
          {[&] { pick(), Click(piezo, 10, 8); }, "Changed(3) Shown(1) Picked(1, 0) GoHome(1) GoHome(1)"},
          {[&] { fix(), Click(piezo, arrow, 8); }, "GoHome(0)"},
          {[&] { EXPECT_TRUE(command(L"GOHOMEKEEP") && !command(L"gohome") && !command(L"")); }, "GoHome(1)"}});
}

}  // namespace
