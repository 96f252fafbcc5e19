// The edit box: what it shows, what its parent hears, what it refuses.
#include "control_test.h"

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/framework/devgui_container.h>

#include <list>

namespace {

using namespace kx::test;

// A box of 120 with a label of 60; what message boxes say is collected.
template <class Box>
struct Owner : ControlTest {
    Owner() {
        KX_SetMessageBoxHandler([](HWND, const wchar_t* text, const wchar_t*, UINT, int,
                                   void* to) { return *static_cast<std::wstring*>(to) += text, IDOK; },
                                &said);
        box.SetSize(60, 60, 20);
        box.SetId(44);
        box.Create(parent.Window(), 10, 10, 120, 20, true, true);
    }
    HWND Edit() { return box.GetEditWindow(); }
    std::wstring Said() { return std::exchange(said, L""); }
    std::string Shown() { return Narrow(box.GetText().str()); }
    std::string See() override { return Shown() + " | " + Told(); }

    std::wstring said;
    Box box;
};
using EditBox = Owner<CKxDevUI_EditBox>;
using EditBoxMultiValue = Owner<CKxDevUI_EditBoxMultiValue>;
struct EditBoxSpin : Owner<CKxDevUI_EditBoxSpin> {
    HWND Arrows() { return FindWindowExW(box, nullptr, L"msctls_updown32", nullptr); }
};

TEST_F(EditBox, ShowsAndTells) {
    // Told: focus 256, lost 512, changed 768; a character 258, Enter 1025.
    const std::wstring longText(5000, L'9');
    // clang-format off
    Play({{[] {}, " | "},
         {[&] { Click(Edit(), 5, 5); }, " | 44:256#44"},
         {[&] { Type(L"7\n"); }, "7 | 44:258=55 44:768#44 44:258=13 44:1025#44"},
         // Without habits they are keys like others.
         {[] { Key(VK_ESCAPE), Type(L"x\b"); }, "7 | 44:258=27 44:258=120 44:768#44 44:258=8 44:768#44"},
         {[&] { SetFocus(parent.Window()); }, "7 | 44:512#44"},
         {[&] { box.SetText(L"7"); }, "7 | "},
         {[&] { box.SetNumber(8.25); }, "8.25 | 44:768#44"},
         {[&] { box.SetNumber(1.5, L"%.2f", true); }, "1.50 | 44:768#44"},
         {[&] { box.SetNumber(1.5); }, "1.5 | 44:768#44"},
         {[&] { box.SetNumber(3, L"%n", true); }, "3 | 44:768#44"},
         {[&] { box.SetNumber(INFINITY); }, "3 | "},
         {[&] { box.SetNumberInt(-2147483647 - 1); }, "-2147483648 | 44:768#44"},
         // What is typed has a limit; 0 is none.
         {[&] { box.SetMaxChars(12), box.SetMaxChars(0), box.SetFocus(), Key(VK_END), Type(L"12"), parent.Record().Clear(); },
          "-21474836481 | "},
         {[&] { box.SetReadOnly(true), Type(L"\b"); }, "-21474836481 | 44:258=8"},
         {[&] { box.SetText(longText.c_str()); }, Narrow(longText) + " | 44:768#44"},
         {[&] { box.Destroy(); }, " | "}});
    // clang-format on
    box.Create(parent.Window(), 10, 10, 120, 20, true, true);
    box.SetText(longText.c_str());
    EXPECT_DOUBLE_EQ(box.GetNumber(), std::stod(std::string(100, '9')));
}

TEST_F(EditBox, NamesWhatIsWrong) {
    box.SetTitle(L"Exposure");
    // Filled: it must be. An empty message: allowed. Corrected with 7 as the value for an empty text.
    // clang-format off
    const struct { const wchar_t* text; double low, high; bool filled; const wchar_t *message, *corrected; } rows[] = {
        {L"", 0, 100, false, L"", L""}, {L"", 0, 100, true, L"Exposure: Field can not be empty.", L"7"},
        {L"", 5, 100, true, L"Exposure: Value must be in interval <5;100>", L"5"}, {L"100", 0, 100, true, L"", L"100"},
        {L"101", 100, 0, false, L"Exposure: Value must be in interval <0;100>", L"100"},
        {L"-1e999", -2.5, 100, false, L"Exposure: Value must be in interval <-2.5;100>", L"-2.5"},
        // Rounded to 6 digits the bound would lie outside.
        {L"2e9", 0, 99.9999999, false, L"Exposure: Value must be in interval <0;100>", L"99.9999999"},
    };
    // clang-format on
    for (const auto& row : rows) {
        const bool allowed = !*row.message;
        box.SetRestriction(row.low, row.high);
        box.SetRestriction(std::nan(""), 1);
        box.Init(true, row.filled, false);
        box.SetText(row.text);
        SetFocus(parent.Window());
        EXPECT_EQ(box.CheckRestriction(true, false, 7), allowed);
        EXPECT_EQ(Said(), row.message);
        EXPECT_EQ(box.IsFocused(), !allowed) << "the user is sent back";
        EXPECT_EQ(box.CheckRestriction(true, true, 7), allowed);
        EXPECT_EQ(box.GetText(), row.corrected);
    }
    EXPECT_EQ(Said(), L"") << "what is corrected is not talked about";
}

TEST_F(EditBox, SendsTheUserBackWithAWorkingCaret) {
    const HWND other = AddChild(parent.Window(), L"EDIT", 7, {200, 10, 260, 30});
    bool ends = false;
    parent.Answer(WM_COMMAND, [&](WPARAM wParam, LPARAM) {
        if (wParam != MAKEWPARAM(44, EN_KILLFOCUS)) return 0;
        EXPECT_FALSE(box.CheckRestriction(true, false, 0));
        EXPECT_EQ(said, L"") << "while the focus is on its way";
        if (ends) box.Destroy();
        return 0;
    });
    Play({{[&] { Click(Edit(), 5, 5), Type(L"500"), parent.Record().Clear(); }, "500 | "},
          {[&] { SetFocus(other); }, "500 | 44:512#44 7:512#7 44:256#44"},
          {[&] { Type(L"\b\b"); }, "5 | 44:258=8 44:768#44 44:258=8 44:768#44"}});
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    EXPECT_EQ(info.hwndCaret, Edit());
    EXPECT_EQ(Said(), L"Label: Value must be in interval <0;100>");

    // A real box takes the focus from the field, which is no second mistake.
    KX_SetMessageBoxHandler(nullptr, nullptr);
    box.SetText(L"500");
    ModalAnswer answer(IDOK);
    SetFocus(other), Pump();
    EXPECT_EQ(answer.Count(), 1u);
    EXPECT_TRUE(box.IsFocused());
    ends = true;
    SetFocus(other), Pump();
    EXPECT_EQ(answer.Count(), 1u) << "of a field that is gone";
}

TEST_F(EditBox, TakesAControlsPlaceInADialog) {
    box.Destroy();
    CKxDevUI_Container dialog;
    ASSERT_TRUE(dialog.CreateFromDlg(parent.Window(), 10, 10, L"EDIT_DIALOG", GetModuleHandleW(nullptr), false));
    dialog.Init(true);
    ShowWindow(dialog, SW_SHOW);
    const HWND placeholder = dialog.GetWindow(8);
    const std::string place = PlaceOf(placeholder);
    box.SetId(0);
    EXPECT_EQ(box.Create(parent.Window(), placeholder), nullptr) << "not its parent";
    ASSERT_TRUE(box.Create(dialog, placeholder));
    EXPECT_FALSE(IsWindow(placeholder));
    EXPECT_EQ(GetDlgItem(dialog, 8), box);
    EXPECT_EQ(PlaceOf(box), place);

    const DialogKeys keys(dialog);
    Click(dialog.GetWindow(7), 5, 5);
    parent.Record().Clear();
    Play({{[&] { SetDlgItemTextW(dialog, 8, L"12"); }, "12 | 8:768#8"},
          // The default button has not taken Enter.
          {[&] { Type(L"\t\n"); }, "12 | 8:256#8 8:258=13 8:1025#8"},
          {[&] { Type(L"\t"); }, "12 | 8:512#8"}});
}

// The label ends 4 before the field; the text stands 1 and 2 from that, as high as a line, in the middle.
TEST_F(EditBox, LaysOutItsParts) {
    box.SetText(L"1");
    const std::tuple<bool, bool, const char*, long, long> rows[] = {
        {true, true, "0 0 56 20", 63, 117}, {false, true, "", 3, 117}, {true, false, "0 0 56 20", 62, 118}};
    for (const auto& [label, border, labelPlace, left, right] : rows) {
        box.Init(label, false, false);
        box.SetStyle(border);
        EXPECT_EQ(label ? PlaceOf(box.GetLabelWindow()) : "", labelPlace);
        const RECT edit = RectInParent(Edit());
        EXPECT_EQ(std::pair(edit.left, edit.right), std::pair(left, right));
        EXPECT_NEAR(edit.top, 20 - edit.bottom, 1);
        EXPECT_EQ(LOWORD(SendMessageW(Edit(), EM_POSFROMCHAR, 0, 0)), 0) << "no margins of the platform's";
    }
}

TEST_F(EditBox, ShowsWhetherItCanBeUsed) {
    KX_SetColorScheme(eKxColorScheme_Light);
    const std::tuple<std::function<void()>, int, int> rows[] = {
        {[] {}, COLOR_WINDOW, COLOR_BTNSHADOW},
        {[&] { box.SetFocus(); }, COLOR_WINDOW, COLOR_WINDOWTEXT},
        {[&] { box.SetReadOnly(true); }, COLOR_BTNFACE, COLOR_WINDOWTEXT},
        {[&] { box.SetReadOnly(false), box.SetEnabled(false); }, COLOR_BTNFACE, COLOR_3DLIGHT},
    };
    for (const auto& [change, field, frame] : rows) {
        change();
        const Picture picture = Picture::OnScreen(box);
        EXPECT_EQ(picture.Pixel(117, 10), KX_GetSysColor(field)) << field << " " << frame;
        EXPECT_EQ(picture.Pixel(119, 10), KX_GetSysColor(frame)) << field << " " << frame;
    }
}

TEST_F(EditBoxSpin, StepsToItsBoundsAndNoFurther) {
    box.SetRestriction(10.5, 0);
    box.SetNumber(8, L"%.0f");
    parent.Record().Clear();
    EXPECT_EQ(PlaceOf(Arrows()), "103 0 17 20");
    Click(Arrows(), 5, 3);
    EXPECT_EQ(See(), "9 | 44:256#44 44:768#44");
    const auto wheel = [this](int delta) { SendMessageW(Edit(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0); };
    // clang-format off
    kx::test::Play({{[] { Key(VK_UP), Key(VK_UP); }, "10"}, {[] { Key(VK_DOWN); }, "9"},
         {[&] { wheel(-240); }, "7"}, {[&] { wheel(70); }, "7"}, {[&] { wheel(50); }, "8"},
         {[] { Key(VK_NEXT), Key(VK_DOWN); }, "0"}, {[] { Key(VK_PRIOR); }, "10"},
         // Where the format cannot show the bound, the bound itself is shown.
         {[&] { box.SetRestriction(0, 10.6), Key(VK_UP); }, "10.6"},
         {[&] { box.SetReadOnly(true), Key(VK_DOWN); }, "10.6"},
         {[&] { box.SetRestriction(3, 3); EXPECT_FALSE(IsWindowEnabled(Arrows())); }, "10.6"}},
        [this] { return Shown(); });
    // clang-format on
}

TEST_F(EditBoxMultiValue, ChecksCountThenValues) {
    box.Init(false, false, false);
    box.SetRestriction(400, 700);
    // clang-format off
    const std::tuple<const wchar_t*, int, int, const wchar_t*> rows[] = {
        {L"450;525;600;", -1, -1, L""},                 {L" ; ", -1, -1, L"Field can not be empty."},
        {L"450;x", -1, -1, L"Field can not be empty."}, {L"1;2;3;4;5", 2, 3, L"Too few values!"},
        {L"1", 2, -1, L"Too few values!"},              {L"1;2;3;4", -1, 3, L"Too many values!"},
        {L"450;500;600", 3, 2, L""},                    {L"400;700", -9, 2, L""},
        {L"450;399.5;1e999", 2, 3, L"Value out of range: 399.5\nValue must be in interval <400;700>"},
    };
    // clang-format on
    for (const auto& [text, minimum, maximum, message] : rows) {
        box.SetText(text);
        box.SetCountRestriction(minimum, maximum);
        EXPECT_EQ(box.CheckRestriction(true), !*message);
        EXPECT_EQ(Said(), message) << Narrow(text);
    }
    const std::list<double> values{450, INFINITY, 525.5, 600};
    std::list<double> read;
    box.SetSeparator(L'.');
    box.SetSeparator(L'|');
    box.SetValues(&values);
    EXPECT_EQ(box.GetText(), L"450|525.5|600|");
    EXPECT_TRUE(box.GetValues(&read));
    EXPECT_EQ(read, (std::list<double>{450, 525.5, 600}));
}

}  // namespace
