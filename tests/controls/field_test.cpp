// Fields that take a number, and what hands expect of them: the same keys in every kind of field.
#include "control_test.h"

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/field_rules.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/light/devgui_colorslider.h>

namespace {

using namespace kx::test;

TEST(FieldRules, ReadWhatIsPasted) {
    // "-": nothing is taken.
    // clang-format off
    const std::tuple<const wchar_t*, wchar_t, const wchar_t*> rows[] = {
        {L"12,5\r\n", 0, L"12.5"}, {L"\u200E \u0661\u0662\u066B\u0965 ", 0, L"-"}, {L"  ", 0, L""},
        {L"\u0661\u0662\u066B\u0665", 0, L"12.5"}, {L"\u2212\uFF11\uFF0E\uFF15", 0, L"-1.5"}, {L"1,234.5", 0, L"-"},
        {L"1.5; 2,5", L';', L"1.5; 2.5"}, {L"1.5, 2.5", L',', L"1.5, 2.5"}, {L"1 2", 0, L"-"}, {L"5 mW", 0, L"-"},
        {L"1\u202E2", 0, L"-"}, {L"1\a2", 0, L"-"}};
    // clang-format on
    for (const auto& [pasted, separator, written] : rows)
        EXPECT_EQ(kx::ui::NumberPasted(pasted, separator).value_or(L"-"), written) << Narrow(pasted);
    EXPECT_EQ(kx::ui::NumberPasted(std::wstring(5'000'000, L'1'), 0), std::nullopt);
    EXPECT_EQ(kx::ui::Written({L"123", 2, 1}, L"45", 4), (kx::ui::FieldText{L"1453", 3, 3}));
    EXPECT_EQ(kx::ui::Written({L"123", 1, 2}, L"456", 4), (kx::ui::FieldText{L"123", 1, 2}));
    EXPECT_EQ(kx::ui::AllowedText({0, kInf, true, L"mW"}), L"0 mW or more");
    for (const wchar_t* wrong : {L"1e400", L"--5", L"1.2.3", L"abc", L"101"})
        EXPECT_FALSE(kx::ui::MayBeEntered(wrong, {0, 100})) << Narrow(wrong);
}

struct Laser : CKxDevUI_ColorSlider {
    std::string Take() { return std::exchange(asked, ""); }

    void OnPowerChanged(double& power, bool&) override { asked += " " + std::to_string(power).substr(0, 4); }
    std::string asked;
};

// A field of each kind with 10 in it, what its host is told, and the number that has come out of it.
struct Fields : ControlTest {
    Fields() {
        KX_SetFieldHabits(parent.Window(), KxFieldHabits::AllOfLight());
        box.Create(Frame(10), 0, 0, 60, 20, true, true);
        spin.Create(Frame(50), 0, 0, 60, 20, true, true);
        list.Create(Frame(90), 0, 0, 60, 20, true, true);
        std::vector<SColorSliderValue> powers;
        for (int power = 0; power <= 100; ++power)
            powers.push_back({static_cast<double>(power), false, false});
        slider.Init(96, 9, powers.data(), 101, L"", false, L"mW", L"%g", true, eColorSliderType_Gradient,
                    eColorSliderLayout_OneRow, 40);
        slider.Create(parent.Window(), 10, 130, -1, -1, true, true);
        other = AddChild(parent.Window(), L"BUTTON", 7, {300, 10, 340, 30});
        slider.SetPower(10, true);
        box.SetNumber(10), spin.SetNumber(10), list.SetText(L"10");
        Pump();
    }
    HWND SliderEdit() {
        return FindWindowExW(FindWindowExW(slider, nullptr, L"KxDevUI_EditBox", nullptr), nullptr, L"EDIT", nullptr);
    }
    std::string TextAndSelection(HWND edit) {
        DWORD first = 0, last = 0;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
        return Narrow(TextOf(edit)).insert(last, "]").insert(first, "[");
    }
    std::string Answer() { return Narrow(TextOf(kx::ui::AnswerWindow())); }
    // ^ stands for Escape, @ for Ctrl+A, ~ for Ctrl+Z.
    void TypeKeys(HWND edit, const std::wstring& keys) {
        for (const wchar_t key : keys) {
            switch (key) {
            case L'^': Key(VK_ESCAPE); break;
            case L'@': Key('A', MOD_CONTROL); break;
            case L'~': Key('Z', MOD_CONTROL); break;
            default: key < 0x80 ? Type({&key, 1}) : void(SendMessageW(edit, WM_CHAR, key, 1));
            }
        }
    }
    // Alone, so that Enter finds no field beside it.
    HWND Frame(int y) { return AddChild(parent.Window(), L"STATIC", 100 + y, {10, y, 250, y + 40}); }

    CKxDevUI_EditBox box;
    CKxDevUI_EditBoxSpin spin;
    CKxDevUI_EditBoxMultiValue list;
    Laser slider;
    HWND other;
};

TEST_F(Fields, AnswerTheSameKeysAlike) {
    // As TypeKeys takes them; whether there is an answer.
    // clang-format off
    const std::tuple<const wchar_t*, const char*, bool> rows[] = {
        {L"", "[10]", false}, {L"42", "42[]", false}, {L"42^", "[10]", false}, {L"^^", "[10]", false},
        {L"4,5", "4.5[]", false}, {L"4x2", "42[]", false}, {L"\u0663", "3[]", false}, {L"4x", "4[]", true},
        {L"42@", "[42]", false}, {L"42~", "[10]", false}, {L"~~~", "[10]", false}, {L"13\n5\n", "[5]", false},
        {L"42\n^", "[42]", false}, {L"1.2.3\n", "1.2.3[]", true}, {L"101\n", "101[]", true}, {L"101\n^", "[10]", false}};
    // clang-format on
    const std::pair<HWND, std::string> fields[] = {{box.GetEditWindow(), "0 to 100"},
                                                   {spin.GetEditWindow(), "0 to 100"},
                                                   {list.GetEditWindow(), ""},
                                                   {SliderEdit(), "0 to 100 mW"}};
    for (const auto& [edit, allowed] : fields) {
        for (const auto& [keys, shown, answered] : rows) {
            SetFocus(other), Pump();
            SetWindowTextW(edit, L"10");
            kx::ui::HideAnswer(edit);
            SetFocus(edit), Pump();
            TypeKeys(edit, keys);
            EXPECT_EQ(TextAndSelection(edit), shown) << Narrow(keys);
            const std::string answer = Answer();
            EXPECT_TRUE(answered ? !answer.empty() && (allowed.empty() || answer == allowed) : answer.empty())
                << Narrow(keys) << answer;
        }
    }
}

TEST_F(Fields, EnterNothingThatWasNotTyped) {
    // What a laser at 10 mW is asked for, by the keys and by leaving the field then; what the field shows and says.
    // clang-format off
    const std::tuple<const wchar_t*, std::string> rows[] = {
        {L"", ", , 10, "}, {L"42^", ", , 10, "}, {L"13\n5\n", " 13.0 5.00, , 5, "}, {L"42", ",  42.0, 42, "},
        {L"abc", ", , 10, "}, {L"1.2.3", ", , 10, \"1.2.3\": 0 to 100 mW"}, {L"1e1\n", " 10.0, , 10, "},
        {L"1000\n", ", , 10, \"1000\": 0 to 100 mW"}, {L"\b", ", , 10, \"\": 0 to 100 mW"}};
    // clang-format on
    for (const auto& [keys, expected] : rows) {
        slider.SetPower(10, true);
        SetFocus(SliderEdit()), Pump();
        TypeKeys(SliderEdit(), keys);
        const std::string entered = slider.Take();
        kx::ui::HideAnswer(SliderEdit());
        SetFocus(other), Pump();
        const std::string left = slider.Take(), shown = Narrow(TextOf(SliderEdit()));
        EXPECT_EQ(entered + ", " + left + ", " + shown + ", " + Answer(), expected) << Narrow(keys);
        kx::ui::HideAnswer(SliderEdit());
    }
    // A slider alone takes the strongest for what is beyond it, without the further habit.
    KX_SetFieldHabits(slider, KxFieldHabits::All());
    SetFocus(SliderEdit()), Pump();
    TypeKeys(SliderEdit(), L"1000\n");
    EXPECT_EQ(slider.Take(), " 100.");
}

TEST_F(Fields, TellAsBeforeAndGoOnToFields) {
    box.SetId(44);
    spin.SetId(45);
    box.Create(parent.Window(), 10, 10, 60, 20, true, true);
    AddChild(parent.Window(), L"BUTTON", 8, {80, 10, 100, 30}, WS_TABSTOP);
    spin.Create(parent.Window(), 110, 10, 60, 20, true, true);
    box.SetNumber(10);
    SetFocus(box.GetEditWindow());
    // Told: focus 256, lost 512, changed 768; a character 258, Enter 1025.
    Play({{[&] { Type(L"4"); }, "44:768#44 44:256#44 44:258=52 44:768#44"},
          {[&] { Key(VK_ESCAPE); }, "44:258=27 44:768#44"},
          {[&] { Key(VK_ESCAPE); }, "44:258=27"},
          {[&] { Type(L"7"), parent.Record().Clear(), Type(L"\n"); }, "44:258=13 44:1025#44 44:512#44 45:256#45"}});
    EXPECT_EQ(GetFocus(), spin.GetEditWindow());
    Type(L"\n");
    EXPECT_EQ(GetFocus(), spin.GetEditWindow()) << "the last stays";
    EXPECT_EQ(KX_GetFieldHabits(box.GetEditWindow()).tableOnly, true);
    EXPECT_TRUE(KX_SetFieldHabits(box, {.select = true}));
    EXPECT_EQ(KX_GetFieldHabits(box.GetEditWindow()).tableOnly, false) << "the nearest decides";
    EXPECT_FALSE(KX_SetFieldHabits(nullptr, {}));
}

TEST_F(Fields, AnswerBesideTheField) {
    const HWND edit = box.GetEditWindow(), frame = GetAncestor(box, GA_PARENT);
    SetFocus(edit);
    Type(L"x");
    const HWND answer = kx::ui::AnswerWindow();
    RECT said{}, field{}, both{};
    GetWindowRect(answer, &said);
    GetWindowRect(box, &field);
    EXPECT_FALSE(IntersectRect(&both, &said, &field)) << "what was typed can be seen";
    EXPECT_EQ(GetFocus(), edit);
    // The call of a message box goes there as well.
    box.SetText(L"200");
    KX_SetMessageBoxHandler(
        [](HWND, const wchar_t*, const wchar_t*, UINT, int, void*) -> int { return ADD_FAILURE(), IDOK; }, nullptr);
    EXPECT_FALSE(box.CheckRestriction(true, false, 0));
    EXPECT_NE(Answer().find("interval <0;100>"), std::string::npos);
    ShowWindow(frame, SW_HIDE);
    EXPECT_TRUE(PumpUntil([] { return !kx::ui::AnswerWindow(); }));
}

TEST_F(Fields, TakeAPastedTextWholeOrNotAtAll) {
    const HWND edit = box.GetEditWindow();
    box.SetMaxChars(5);
    for (const auto& [text, shown] :
         {std::pair(L"7,5", "7.5[]"), std::pair(L"7 apples", "[10]"), std::pair(L"123456", "[10]")}) {
        box.SetText(L"10");
        SetFocus(other), SetFocus(edit);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 100);
        lstrcpyW(static_cast<wchar_t*>(GlobalLock(memory)), text);
        GlobalUnlock(memory);
        OpenClipboard(edit), EmptyClipboard(), SetClipboardData(CF_UNICODETEXT, memory), CloseClipboard();
        Key('V', MOD_CONTROL);
        EXPECT_EQ(TextAndSelection(edit), shown);
    }
}

}  // namespace
