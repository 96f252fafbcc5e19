// The panel over the real record: what it shows, under the hands of users and the worst of hosts; its dialog.
#include "zstack_panel.h"

#include <bench/slot.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxsystem/kx_locale.h>

#include <memory>
#include <numeric>
#include <optional>

namespace {

using namespace kx::test;

struct Slots : CKxDevUI_ZStack {
    static std::vector<long> InOrder() {
        using S = Slots;
        return SlotsOf(&S::SetHandler, &S::GetHandler, &S::CreateUI, &S::DestroyUI, &S::GetHandle, &S::SetUIParent,
                       &S::Show, &S::IsVisible, &S::Enable, &S::IsEnabled, &S::SetRedrawEx, &S::Update, &S::IsResizable,
                       &S::GetCurSize, &S::CalcOptimalSize, &S::Move, &S::GetInterface, &S::GetInfo, &S::CustomCommand,
                       &S::SetOptimalSize, &S::SetLayoutStyle, &S::GetEnableGuiFlag, &S::SetEnableGuiFlag,
                       &S::IsResizableInSteps, &S::OnGuiZoomChanged, &S::AppendZDevice, &S::OnPiezoPickerChanged,
                       &S::OnStepChanged, &S::OnMoveZRequest, &S::OnGoHomeRequest, &S::OnHostRequest,
                       &S::OnZDeviceShown, &S::OnZStackChanged, &S::OnEraseBkGnd);
    }
};

TEST(ZStackSlots, HoldsEachOperationAtItsPlace) {
    std::vector<long> places(34);
    std::iota(places.begin(), places.end(), 1);
    EXPECT_EQ(Slots::InOrder(), places);
}

// A panel over a record that has a drive and a piezo, and a host that has it refreshed with every change.
class ZStackTest : public testing::Test {
protected:
    RecordingParent parent;
    Journal journal;
    std::unique_ptr<Panel> panel;
    Boxes boxes{journal};
    CKxZStackData record;

    // With a stack from 500 to 520, or with nothing set.
    void Make(bool stack) {
        record = CKxZStackData();
        if (!panel) panel = std::make_unique<Panel>(journal);
        ASSERT_TRUE(panel->Create(parent.Window(), &record, 0, 0, 0, 0, true, true));
        EXPECT_EQ(panel->AddZDevice(L"Focus drive", false, 1, 0, 1000, false, 0, true), 0);
        EXPECT_EQ(panel->AddZDevice(L"Piezo", true, 2, 0, 300, true, 0, false), 1);
        EXPECT_EQ(panel->AddZDevice(L"Backwards", true, 3, 1, 0, true, 0, false), -1);
        record.SetZPosition(0, 500);
        if (stack) {
            record.SetTop(520, true);
            record.SetBottom(500, true);
            record.SetStep(2);
        }
        panel->onChanged = [this] { panel->UpdateGUI(3); };
        panel->UpdateGUI(3);
        EXPECT_EQ(journal.Take(), "Shown(0)") << "nothing else is asked of the host";
        BringToFront(panel->GetHandle());
    }
    HWND Item(int id) const { return panel->Item(id); }
    std::wstring Shown(int id) const {
        wchar_t text[40] = L"";
        GetWindowTextW(Item(id), text, 40);
        return text;
    }
};

class ZStackPanelAtWork : public ZStackTest {
protected:
    void SetUp() override { Make(false); }
    void Enter(int id, const wchar_t* text) { SetWindowTextW(Item(id), text); }
};

TEST_F(ZStackPanelAtWork, MovesARangeToTheEndOfTheDevice) {
    record.SetType(2);
    record.SetHome(10);
    record.SetBottom(0, false);
    record.SetTop(20, false);
    const struct {
        const wchar_t* range;
        bool taken;
        const wchar_t* shown;
    } table[] = {{L"100", true, L"0.00 50.00 100.00"},    {L"40", true, L"30.00 50.00 70.00"},
                 {L"-40", false, L"30.00 50.00 70.00"},   {L"1200", false, L"30.00 600.00 70.00"},
                 {L"2002", false, L"30.00 600.00 70.00"}, {L"900", true, L"100.00 550.00 1000.00"}};
    for (const auto& [range, taken, shown] : table) {
        Enter(1265, range);
        EXPECT_EQ(panel->ValidateRange(false), taken) << Narrow(range);
        EXPECT_EQ(Shown(1262) + L' ' + Shown(1261) + L' ' + Shown(1260), shown) << Narrow(range);
    }
    EXPECT_EQ(Shown(1265), L"900.00");
    EXPECT_EQ(Shown(1205), L"<-450.00, +450.00>");
}

TEST_F(ZStackPanelAtWork, ValidatesWhatTheFocusLeaves) {
    const HWND step = Item(1263), above = Item(1267);
    SetFocus(step);
    EXPECT_EQ(Shown(1263), L"") << "nothing stands where nothing is set";
    Type(L"2.5");
    SetFocus(Item(IDC_ZS_DEVICE));
    EXPECT_EQ(journal.Take(), "") << "the list of devices leaves it open";
    SetFocus(step);
    Type(L"2.5");
    Click(Item(IDC_ZS_TOP), 9, 9);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Step(2.5, 1) Changed(2) Shown(0) Changed(3) Shown(0)")
        << "the button acts by the rule, then by the mouse";
    EXPECT_EQ(Shown(1267), L"500.00");

    SetFocus(above);
    Enter(1267, L"up");
    Enter(1263, L"down");
    panel->onChanged = [] {};
    SetFocus(step);
    EXPECT_EQ(GetFocus(), above) << "the first refused, of two";
    EXPECT_EQ(journal.Take(), "Changed(3)");
    panel->onChanged = [this] { panel->UpdateGUI(3); };
    SetFocus(step);
    EXPECT_EQ(GetFocus(), above);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(0)") << "no box within the panel, and the step has not been left";
    Enter(1267, L"up");
    SetFocus(parent.Window());
    EXPECT_EQ(journal.Take(), "Invalid! Changed(3) Shown(0)");
    EXPECT_EQ(GetFocus(), above);
    Enter(1267, L"up");
    panel->Destroy();
    EXPECT_EQ(journal.Take(), "") << "a panel on its way out has nothing to tell";
}

// The host is told of the fields that it has made writable, and of no others.
TEST_F(ZStackPanelAtWork, LeavesPositionsToTheHost) {
    parent.Answer(WM_COMMAND, [this](WPARAM id, LPARAM) {
        return id == MAKEWPARAM(1260, EN_KILLFOCUS) ? panel->ValidateTop(true) : panel->ValidateBottom(true);
    });
    const struct {
        int edit;
        bool writable;
        const wchar_t* typed;
        std::string heard;
        bool left;
    } table[] = {{1260, false, L"600", "", true},
                 {1261, true, L"600", "", true},
                 {1260, true, L"600", "Changed(3) Shown(0)", true},
                 {1262, true, L"5x", "Invalid! Changed(3) Shown(0)", false},
                 {1262, true, L"590.5", "Changed(3) Shown(0)", true}};
    for (const auto& [edit, writable, typed, heard, left] : table) {
        SCOPED_TRACE(CallText("leave", edit, typed));
        SendMessageW(Item(edit), EM_SETREADONLY, !writable, 0);
        SetFocus(Item(edit));
        Enter(edit, typed);
        SetFocus(Item(1263));
        EXPECT_EQ(GetFocus() == Item(1263), left);
        SetFocus(panel->GetHandle());
        EXPECT_EQ(journal.Take().substr(0, heard.size()), heard);
        EXPECT_EQ(parent.Record().Entries().size(), heard.empty() ? 0u : left ? 1u : 2u);
        parent.Record().Clear();
    }
    EXPECT_EQ(Shown(1260) + Shown(1262), L"600.00590.50");
    // A text that is being typed is not written over, and a blank in it moves nothing.
    SetFocus(Item(1260));
    Type(L"6 ");
    record.SetHome(3);
    panel->UpdateGUI(3);
    EXPECT_EQ(journal.Take(), "Shown(0)");
    EXPECT_NE(Shown(1260), L"600.00");
}

TEST_F(ZStackPanelAtWork, RefreshesOnTheDeviceBand) {
    for (const bool refresh : {false, true}) {
        SendMessageW(panel->GetHandle(), kx::ui::WM_KX_UPDATE_DEVICE_BAND, 1, reinterpret_cast<LPARAM>(&refresh));
        EXPECT_EQ(journal.Take(), refresh ? "Shown(0)" : "");
    }
}

TEST_F(ZStackPanelAtWork, ChoosesTypes) {
    record.SetHome(300);
    for (const auto& [before, button, after, read] : {std::tuple{0, IDC_ZS_TYPE_SYMMETRIC, 2, 1265},
                                                      {2, IDC_ZS_TYPE_ASYMMETRIC, 3, 1264},
                                                      {7, IDC_ZS_TYPE_ENDS, 4, 1267},
                                                      {4, IDC_ZS_TYPE_SYMMETRIC, 6, 1265}}) {
        record.SetType(before);
        SendMessageW(Item(button), BM_CLICK, 0, 0);
        int type = -1;
        record.GetType(&type);
        EXPECT_EQ(type, after);
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0) Shown(0)");
        for (const int edit : {1264, 1265, 1267})
            EXPECT_EQ(IsWindowVisible(Item(edit)) != FALSE, (edit == 1265) == (read == 1265)) << edit;
    }
    SendMessageW(Item(IDC_ZS_RELATIVE), BM_CLICK, 0, 0);
    EXPECT_NE(record.GetHome(nullptr), 0);
}

TEST_F(ZStackPanelAtWork, AsksNobodyWhenARefreshHidesTheFieldWithTheFocus) {
    record.SetType(3);
    record.SetHome(50);
    record.SetBottom(45, false);
    record.SetTop(60, false);
    panel->UpdateGUI(3);
    EXPECT_EQ(Shown(1264), L"-5.00");
    SetFocus(Item(1264));
    journal.Take();
    record.SetType(2);
    panel->UpdateGUI(3);
    EXPECT_EQ(journal.Take(), "Shown(0)");
    double bottom = 0;
    EXPECT_TRUE(record.GetBottom(&bottom) == 0 && bottom == 45);
    SetFocus(Item(1265));
    record.SetType(0);
    panel->UpdateGUI(3);
    EXPECT_EQ(GetFocus(), panel->GetHandle()) << "and not a field that is not there";
    // From menus and accelerators, without a window.
    journal.Take();
    SendMessageW(panel->GetHandle(), WM_COMMAND, MAKEWPARAM(1253, 0), 0);
    EXPECT_TRUE(record.GetBottom(&bottom) == 0 && bottom == 500);
}

TEST_F(ZStackPanelAtWork, CopiesShareTheWindow) {
    {
        Panel copy(*panel);
        EXPECT_EQ(copy.GetHandle(), panel->GetHandle());
    }
    EXPECT_TRUE(IsWindow(panel->GetHandle()));
    EXPECT_FALSE(Panel(journal).Create(parent.Window(), nullptr, 0, 0, 0, 0, true, true));
    EXPECT_FALSE(Panel(journal).Create(nullptr, &record, 0, 0, 0, 0, true, true));
    EXPECT_EQ(panel->AppendZDevice(L"", true, 1, 0, 1, false, 0, false), -1);
}

// Everything lies inside the dialog and in its place; the width is the question's.
void CheckQuestion(HWND dialog) {
    RECT client{}, last{}, outer{}, need{};
    GetClientRect(dialog, &client);
    GetWindowRect(dialog, &outer);
    const auto rectOf = [dialog](int id) { return RectInParent(GetDlgItem(dialog, id)); };
    const RECT icon = rectOf(IDC_YNK_ICON), question = rectOf(IDC_YNK_QUESTION), keep = rectOf(IDC_YNK_KEEP);
    EXPECT_EQ(icon.left, 10);
    EXPECT_EQ(question.left, icon.right + 10);
    EXPECT_EQ(keep.left, question.left);
    EXPECT_EQ(keep.top, question.bottom + 10);
    for (const int id : {IDC_YNK_YES, IDC_YNK_NO, IDC_YNK_CANCEL}) {
        const RECT button = rectOf(id);
        EXPECT_EQ(button.top, keep.bottom + 10);
        EXPECT_GT(button.left, last.right);
        EXPECT_LE(button.bottom, client.bottom);
        EXPECT_LE(button.right, client.right);
        last = button;
    }
    const long row = last.right - rectOf(IDC_YNK_YES).left, width = std::max(question.right - question.left, row);
    EXPECT_EQ(outer.right - outer.left, question.left + width + 2 * (GetSystemMetrics(SM_CXEDGE) + 5));
    EXPECT_EQ(keep.right - keep.left, width);
    // As the platform wraps it beside its box.
    wchar_t text[200] = L"";
    GetDlgItemTextW(dialog, IDC_YNK_KEEP, text, 200);
    const HDC dc = GetDC(dialog);
    SelectObject(dc, reinterpret_cast<HFONT>(SendDlgItemMessageW(dialog, IDC_YNK_KEEP, WM_GETFONT, 0, 0)));
    need.right = width - 20;
    DrawTextW(dc, text, -1, &need, DT_CALCRECT | DT_WORDBREAK);
    ReleaseDC(dialog, dc);
    EXPECT_GE(keep.bottom - keep.top, need.bottom);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_YNK_YES));
    EXPECT_EQ(GetWindowLongW(dialog, GWL_STYLE) & WS_VISIBLE, WS_VISIBLE);
    UpdateWindow(dialog);
}

TEST_F(ZStackPanelAtWork, LaysItsQuestionOut) {
    record.SetTop(900, false);
    record.SetBottom(800, false);
    for (const WORD language : {WORD{0x409}, WORD{0x407}, WORD{0x40C}, WORD{0xC0A}, WORD{0x411}}) {
        CKxLocale::SetModuleLangId(language);
        Enter(1267, L"1001");
        std::string name = "yesnokeep-" + std::to_string(language);
        ModalAnswer answer([&](HWND dialog) {
            CheckQuestion(dialog);
            Picture::OnScreen(dialog).Save(std::exchange(name, name + "+"));
            PressButton(dialog, IDC_YNK_CANCEL);
        });
        EXPECT_FALSE(panel->ValidateRangeMax(true));
        ASSERT_EQ(answer.Count(), 1u);
        const bool english = language == 0x409;
        for (const int id : {IDC_YNK_YES, IDC_YNK_CANCEL, IDC_YNK_QUESTION, IDC_YNK_KEEP}) {
            const std::wstring text = answer.Dialogs()[0].TextOf(id);
            EXPECT_EQ(text == L"&Yes" || text == L"Cancel" || text.starts_with(L"Value") || text.starts_with(L"Do not"),
                      english)
                << Narrow(text);
        }
        std::wstring question = L"Now?";
        for (int i = 0; i < 2; ++i, question.append(120, L'a').append(400, L' ').append(60, L'b').append(L" c d"))
            DialogBoxParamW(GetModuleHandleW(L"kxdevui.dll"), L"YESNOKEEPDLG", panel->GetHandle(), Panel::YesNoKeepDlg,
                            reinterpret_cast<LPARAM>(question.c_str()));
        EXPECT_EQ(answer.Count(), 3u);
    }
    CKxLocale::SetModuleLangId(0);
}

// Whether a stroke of the text lies beyond a width: it may take more than what the platform says.
bool IsCut(HDC like, const std::wstring& text, int width) {
    const HDC dc = CreateCompatibleDC(like);
    const HBITMAP bitmap = CreateCompatibleBitmap(like, 300, 40);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    SelectObject(dc, GetCurrentObject(like, OBJ_FONT));
    RECT area{0, 0, 300, 40};
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawTextW(dc, text.c_str(), -1, &area, DT_SINGLELINE);
    bool cut = false;
    for (int i = 0; i < 10 * 40 && !cut; ++i)
        cut = GetPixel(dc, width + i / 40, i % 40) != 0xFFFFFF;
    SelectObject(dc, previous);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return cut;
}

// In every language, at every zoom: no label is cut, and one that fits stands where the template puts it.
TEST_F(ZStackPanelAtWork, WidensLabelsThatDoNotFit) {
    const int labels[] = {1268, 1269, 1204, 1199, 1196, 1203, 1198, 1201, 1202, 1205, 1271};
    for (const WORD language : {WORD{0x409}, WORD{0x407}, WORD{0x40C}, WORD{0xC0A}, WORD{0x411}}) {
        CKxLocale::SetModuleLangId(language);
        journal.Take();
        Make(true);
        std::map<int, RECT> before;
        for (const int id : labels)
            before[id] = RectInParent(Item(id));
        for (const double zoom : {1.25, 1.5, 2.0, 1.0}) {
            CKxGUILayoutManager::SetGuiZoom(zoom);
            for (const int type : {0, 2, 3}) {
                record.SetType(type);
                panel->UpdateGUI(3);
                SCOPED_TRACE(CallText("at", static_cast<int>(language), zoom, type));
                const HDC dc = GetDC(panel->GetHandle());
                SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(Item(1268), WM_GETFONT, 0, 0)));
                for (const int id : labels) {
                    RECT given{}, next{};
                    const std::wstring text = Shown(id).substr(0, Shown(id).find_last_not_of(L' ') + 1);
                    GetClientRect(Item(id), &given);
                    EXPECT_FALSE(IsCut(dc, text, static_cast<int>(given.right))) << id << ' ' << Narrow(text);
                    const RECT rect = RectInParent(Item(id));
                    for (const int edit : {1200, 1263, 1264, 1266, 1267, 1270}) {
                        const RECT other = RectInParent(Item(edit));
                        const bool meets = IntersectRect(&next, &rect, &other) && IsWindowVisible(Item(edit)) &&
                                           IsWindowVisible(Item(id));
                        EXPECT_FALSE(meets) << id << ' ' << edit;
                    }
                    EXPECT_TRUE(zoom != 1.0 || type != 0 || EqualRect(&rect, &before[id])) << id;
                }
                ReleaseDC(panel->GetHandle(), dc);
                panel->Redraw();
                Picture::OnScreen(panel->GetHandle())
                    .Save("zlabels-" + std::to_string(language) + "-" + std::to_string(static_cast<int>(zoom * 100)) +
                          "-" + std::to_string(type));
            }
        }
    }
    CKxLocale::SetModuleLangId(0);
}

class ZStackInput : public ZStackTest {
protected:
    void SetUp() override { Make(true); }
    // Of the bar with the magnified stack, so many hundredths from its top.
    void ClickScale(int percent) {
        const RECT edit = RectInParent(Item(IDC_ZS_EDIT_BOTTOM));
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
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS)) << "there is no step to be suggested";
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEPS), L"6");
        Type(L"11\n");
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_BELOW));
        EXPECT_EQ(Shown(IDC_ZS_EDIT_STEP), L"2.00");
        Key(VK_TAB, MOD_SHIFT);
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS));
        EXPECT_EQ(journal.Take(), "Step(4, 1) Changed(2) Shown(0) Changed(3) Shown(0) Changed(3) Shown(0)");
        Type(L"x\n");
        EXPECT_EQ(GetFocus(), Item(IDC_ZS_EDIT_STEPS)) << "a refused entry does not let go";
        EXPECT_EQ(journal.Take(), "Changed(3) Shown(0)") << "the next field is not left on the way back";
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

// "0.33" stands for 0.333 until it is typed.
TEST_F(ZStackInput, PassesThroughFieldsWithoutAChange) {
    const struct {
        int type, edit;
        int (CKxZStackData::*getter)(double*) const;
        double value, typed;
    } table[] = {
        {0, 1263, &CKxZStackData::GetStep, 0.333, 0.33},    {0, 1264, &CKxZStackData::GetBottom, 90.123, 90.12},
        {0, 1267, &CKxZStackData::GetTop, 110.678, 110.68}, {3, 1264, &CKxZStackData::GetBottom, 90.123, 90.12},
        {3, 1267, &CKxZStackData::GetTop, 110.678, 110.68}, {2, 1265, &CKxZStackData::GetTop, 110.678, 110.68}};
    for (const auto& [type, edit, getter, value, typed] : table) {
        SCOPED_TRACE(CallText("leave", edit, type));
        record.SetType(type);
        record.SetHome(type == 2 ? 100.1 : 100);
        record.SetBottom(type == 2 ? 89.522 : 90.123, true);
        record.SetTop(110.678, true);
        record.SetStep(0.333);
        panel->UpdateGUI(3);
        const CKxZStackData before = record;
        SetFocus(Item(edit));
        Type(L"\t");
        bool same = false;
        EXPECT_TRUE(record.IsEqual(before, &same) == 0 && same);
        SetFocus(Item(edit));
        const std::wstring text = Shown(edit);
        SendMessageW(Item(edit), EM_SETSEL, 0, -1);
        Type(text + L"\t");
        double now = 0;
        (record.*getter)(&now);
        EXPECT_NEAR(now, typed, 0.0015) << "typing the same is typing";
        EXPECT_NE(now, value);
    }
}

TEST_F(ZStackInput, AsksForZ) {
    for (const int edit : {IDC_ZS_EDIT_TOP, IDC_ZS_EDIT_MIDDLE, IDC_ZS_EDIT_BOTTOM, IDC_ZS_EDIT_ABOVE})
        DoubleClick(Item(edit), 20, 8);
    SetFocus(Item(IDC_ZS_EDIT_TOP));
    EXPECT_EQ(journal.Take(), "Move(520) Move(500) Changed(3) Shown(0)") << "the last field is left";
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
    const HWND piezo = Item(IDC_ZS_PIEZO);
    const int arrow = 58;
    EXPECT_FALSE(IsWindowEnabled(piezo));
    SetFocus(Item(IDC_ZS_DEVICE));
    Key(VK_DOWN);
    Click(piezo, 10, 8);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(1) Shown(1) GoHome(0)");
    for (const WPARAM key : {WPARAM{VK_DOWN}, WPARAM{VK_DOWN}, WPARAM{VK_RETURN}})
        PostMessageW(panel->GetHandle(), WM_KEYDOWN, key, 0);  // for the menu's loop
    SendMessageW(piezo, WM_LBUTTONDOWN, 0, MAKELPARAM(arrow, 8));
    bool keep = false;
    EXPECT_EQ(record.GetKeepZOnPiezoHome(&keep) + keep, 1);
    Click(piezo, 10, 8);
    panel->SetPiezoPickerMode(CKxDevUI_ZStack::PiezoHome, CKxDevUI_ZStack::PiezoPickerFixed);
    Click(piezo, arrow, 8);
    EXPECT_EQ(journal.Take(), "Changed(3) Shown(1) GoHome(1) GoHome(1) GoHome(0)");
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

// Whatever the host hears of, it may end the panel on it, or all of its windows.
TEST_F(ZStackInput, SurvivesItsHost) {
    for (const int id : {IDC_ZS_TOP, IDC_ZS_HOME, IDC_ZS_BOTTOM, IDC_ZS_RELATIVE, IDC_ZS_TYPE_ENDS, IDC_ZS_DEVICE,
                         IDC_ZS_EDIT_STEP, IDC_ZS_EDIT_ABOVE}) {
        for (int how = 0; how < 3; ++how) {
            SCOPED_TRACE(CallText("end", id, how));
            Make(true);
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
    Make(true);
    SetFocus(Item(IDC_ZS_EDIT_STEP));
    Type(L"3");
    DestroyWindow(panel->GetHandle());
    EXPECT_EQ(journal.Take(), "") << "what a dying edit held is lost";
    EXPECT_EQ(panel->GetHandle(), nullptr);
}

}  // namespace
