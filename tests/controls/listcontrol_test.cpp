// Combo box and list box: what is chosen by mouse, keys, letters and wheel, what is refused, what is typed, and a
// foreign dialog whose controls they take the places of.
#include "control_test.h"

#include <bench/reader.h>

#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>
#include <kxdevui/framework/devgui_habits.h>

namespace {

using namespace kx::test;
using kx::ui::ListControl;

template <class List>
struct HostOf : Asking<List> {
    using Asking<List>::Asking;
    void OnSelectionChangeRequest(int index, bool& veto) override { this->Asked(veto, "Choose", index); }
};
struct ComboHost : HostOf<CKxDevUI_ComboBox> {
    using HostOf::HostOf;
    void OnValueChangeRequest(const wchar_t* value, bool& veto) override { Asked(veto, "Value", value); }
};
struct ListHost : HostOf<CKxDevUI_ListBox> {
    using HostOf::HostOf;
    void OnSelectionsChangeRequest(const std::vector<int>& indexes, bool& veto) override {
        std::string all;
        for (const int index : indexes)
            all += std::to_string(index);
        Asked(veto, "Choose", all);
    }
};

// Five values, of which the third cannot be chosen.
void Fill(ListControl& list) {
    const wchar_t* values[] = {L"10", L"20", L"50", L"100", L"gain"};
    list.InsertValues(values, 5, -1);
    list.SetValueEnabled(2, false);
    list.SetSelection(0);
}
HWND InnerOf(ListControl& list) { return GetDlgItem(list, 10000); }
HWND RowsOf(ListControl& combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(InnerOf(combo), &info);
    return info.hwndList;
}
// As the wheel comes where the focus is, or, on Windows, wherever the mouse is.
void Turn(HWND window, int notches) { SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * 120), 0); }

struct Lists : ControlTest {
    Lists() {
        combo.SetId(7), list.SetId(8);
        combo.Create(parent.Window(), 10, 10, 120, 22, true, true);
        list.Create(parent.Window(), 10, 40, 120, 120, true, true);
        Fill(combo), Fill(list);
        SetFocus(parent.Window());
        Pump();
        Told();
    }
    // What is chosen in both, as the platform shows it too, and what was asked.
    std::string See() override {
        const auto shown = [](ListControl& each, UINT ask) {
            const auto index = static_cast<int>(SendMessageW(InnerOf(each), ask, 0, 0));
            return std::to_string(each.GetSelectionIndex()) + (index == each.GetSelectionIndex() ? "" : "!");
        };
        return shown(combo, CB_GETCURSEL) + " " + (list.IsMultiple() ? "" : shown(list, LB_GETCURSEL)) + ": " + Told();
    }

    ComboHost combo{parent.Record()};
    ListHost list{parent.Record()};
};

TEST_F(Lists, AnswerByIndexAndText) {
    for (ListControl* each : {static_cast<ListControl*>(&combo), static_cast<ListControl*>(&list)}) {
        EXPECT_EQ(each->InsertValue(L"Gain", 6), -1);
        EXPECT_EQ(each->InsertValue(L"Gain", -2), -1);
        EXPECT_EQ(each->InsertValue(kNaN, 0), -1);
        EXPECT_EQ(each->InsertValue(0.1, 0), 0);
        EXPECT_EQ(each->GetSelectionIndex(), 1) << "moved on with its value";
        EXPECT_EQ(each->InsertValue(static_cast<const wchar_t*>(nullptr), 6), 6);
        EXPECT_TRUE(each->GetIndex(L"Gain") == -1 && each->GetIndex(L"gain ") == -1 && each->GetIndex(nullptr) == 6);
        EXPECT_TRUE(each->SetSelection(L"0.1") && !each->SetSelection(L"GAIN"));
        wchar_t text[4] = L"";
        EXPECT_EQ(each->GetSelection(text, 2), -1);
        EXPECT_EQ(CallText("", each->GetSelection(text, 4), text, each->GetSelection()), "(3, \"0.1\", 0.1)");
        each->SetUserData(5, 42);
        EXPECT_TRUE(each->RemoveValue(0) && !each->RemoveValue(6));
        EXPECT_EQ(CallText("", each->GetUserData(4), each->GetUserData(5), each->GetSelectionIndex()), "(42, 0, -1)");
        EXPECT_FALSE(each->IsAllowed(EKxComplaint::Logged));
        each->SetSelection(2);
        EXPECT_TRUE(each->IsAllowed(EKxComplaint::Shown));
        // What goes takes its number with it, and what is not there has none.
        each->SetUserData(5, 42), each->RemoveValue(5), each->InsertValue(L"gain", 5);
        for (const int gone : {-2, -1, 6}) {
            each->SetUserData(gone, 9), each->SetValueName(gone, L"x"), each->SetValueEnabled(gone, false);
            each->SetValueColor(gone, 0), each->SetValueImage(gone, L"SHUTTER_OPEN"), each->RemoveValue(gone);
            if (gone != -1) each->SetSelection(gone);
            EXPECT_EQ(CallText("", each->GetUserData(gone), each->GetValueName(gone).str(), each->IsValueEnabled(gone)),
                      "(0, \"\", false)");
        }
        EXPECT_TRUE(each->SetSelection(L"gain"));
        EXPECT_EQ(CallText("", each->GetUserData(5), each->GetValuesCount(), each->GetSelectionIndex()), "(0, 6, 4)")
            << "the first of two";
        const double numbers[] = {1, kNaN, std::numeric_limits<double>::infinity(), 3};
        each->InsertValues(numbers, 4, -1), each->InsertValues(numbers, -1, 0);
        each->InsertValues(static_cast<const wchar_t**>(nullptr), 3, 0);
        EXPECT_EQ(CallText("", each->GetValuesCount(), each->GetValueName(7).str()), "(8, \"3\")");
    }
    EXPECT_EQ(Told(), "");
}

TEST_F(Lists, TakeNoneAndThousands) {
    std::vector<const wchar_t*> many(10000, L"x");
    for (const auto& [each, other] : {std::pair<ListControl*, ListControl*>(&combo, &list), {&list, &combo}}) {
        other->RemoveAllValues(), each->RemoveAllValues(), each->SetFocus();
        for (const int key : {VK_DOWN, VK_END, VK_HOME, VK_NEXT, VK_F4, VK_F4, int{'X'}})
            Key(static_cast<WORD>(key));
        Turn(InnerOf(*each), -1);
        EXPECT_EQ(See(), "-1 -1: ");
        each->InsertValues(many.data(), 10000, -1), each->InsertValue(L"first", 0), each->InsertValue(L"y", -1);
        Key(VK_END), Key(VK_UP), Type(L"f");
        EXPECT_EQ(Told(), "Choose(10001) Choose(10000) Choose(0)");
    }
}

TEST_F(Lists, ComboFollowsKeysLettersAndWheel) {
    Play({{[&] { Turn(InnerOf(combo), -1); }, "0 0: "},
          {[&] { combo.SetFocus(), Turn(InnerOf(combo), -1); }, "1 0: Choose(1)"},
          // Over the one that cannot be chosen, which its letters do not find either.
          {[] { Key(VK_DOWN); }, "3 0: Choose(3)"},
          {[] { Type(L"5"); }, "3 0: "},
          {[] { Type(L"G"); }, "4 0: Choose(4)"},
          {[&] { combo.answer = true, Key(VK_UP); }, "4 0: Choose(3)"},
          {[&] { combo.answer = false, Key(VK_F4), Key(VK_HOME), Key(VK_DOWN), Key(VK_DOWN); }, "4! 0: "},
          {[] { Key(VK_ESCAPE); }, "4 0: "},
          {[] { Key(VK_F4), Key(VK_UP), Key(VK_UP), Key(VK_RETURN); }, "1 0: Choose(1)"},
          {[&] { Reader(InnerOf(combo)).Set(L"50"), Reader(InnerOf(combo)).Set(L"gain"); }, "4 0: Choose(4)"},
          {[&] { Reader(InnerOf(list)).Act(3), Reader(InnerOf(list)).Act(4); }, "4 3: Choose(3)"}});
}

TEST_F(Lists, ComboFollowsTheMouseInItsList) {
    const auto open = [&] { Click(InnerOf(combo), 110, 10); };
    const auto row = [&](int index) {
        RECT place{};
        SendMessageW(RowsOf(combo), LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
        Click(RowsOf(combo), place.left + 5, (place.top + place.bottom) / 2);
    };
    Play({{[&] { open(), row(2); }, "0 0: "},
          {[&] { row(3); }, "3 0: Choose(3)"},
          {[&] { combo.answer = true, open(), row(1); }, "3 0: Choose(1)"},
          // The host takes the list away in the midst of it, or the control.
          {[&] { combo.meanwhile = [&] { combo.RemoveValue(0); }, open(), row(1); }, "2 0: Choose(1)"},
          {[&] { combo.meanwhile = [&] { combo.RemoveAllValues(), combo.SetText(L"x"); }, open(), row(0); },
           "-1 0: Choose(0)"}});
    Fill(combo);
    combo.meanwhile = [&] { combo.Destroy(); };
    open(), row(3);
    EXPECT_TRUE(!combo && combo.GetValuesCount() == 5);
}

TEST_F(Lists, ListBoxFollowsMouseAndKeys) {
    const auto click = [&](int index, WORD held = 0) {
        RECT place{};
        SendMessageW(InnerOf(list), LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
        if (held) keybd_event(static_cast<BYTE>(held), 0, 0, 0), Pump();
        Click(InnerOf(list), 20, (place.top + place.bottom) / 2);
        if (held) keybd_event(static_cast<BYTE>(held), 0, KEYEVENTF_KEYUP, 0), Pump();
    };
    Play({{[&] { click(1); }, "0 1: Choose(1)"},
          {[&] { click(2), Key(VK_DOWN), Type(L"1"); }, "0 0: Choose(3) Choose(0)"},
          {[&] { list.answer = true, click(3); }, "0 0: Choose(3)"},
          {[&] { list.answer = false, list.SetMultiple(true); }, "0 : "},
          {[&] { click(3, VK_CONTROL); }, "0 : Choose(\"03\")"},
          {[&] { click(0), click(4, VK_SHIFT); }, "0 : Choose(\"0\") Choose(\"0134\")"},
          {[&] { list.answer = true, Key(VK_HOME); }, "0 : Choose(\"0\")"},
          {[&] {
               list.SetSelections({9, 3, 1, 3}), list.InsertValue(L"first", 0);
               for (const int row : {2, 4})
                   EXPECT_EQ(SendMessageW(InnerOf(list), LB_GETSEL, static_cast<WPARAM>(row), 0), 1) << "moved on";
               list.RemoveValue(0), list.RemoveValue(0), list.SetMultiple(false);
           },
           "0 0: "},
          // The host changes it while it is asked, and refuses.
          {[&] {
               list.meanwhile = [&] { list.RemoveValue(0), list.InsertValue(L"a", 0), list.InsertValue(L"b", 3); };
               click(2);
           },
           "0 -1: Choose(2)"},
          {[&] {
               list.meanwhile = [&] { list.SetMultiple(true), list.SetSelections({1, 2}); }, click(2);
           },
           "0 : Choose(2)"},
          {[&] { list.meanwhile = [&] { list.RemoveValue(1); }, Key(VK_END), list.SetMultiple(false); },
           "0 1: Choose(\"4\")"}});
}

TEST_F(Lists, ListBoxStaysAsItIsWhenItIsDrawnHere) {
    for (const double zoom : {1.0, 1.25, 1.5, 2.0}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        CKxDevUI_ListBox plain;
        plain.Create(parent.Window(), 150, 40, 90, 120, true, true);
        for (int i = 0; i < 20; ++i)
            plain.InsertValue(i, -1);
        plain.SetSelection(12), plain.SetFocus();
        MoveWindow(plain, 150, 30, 100, 60, TRUE);
        SendMessageW(InnerOf(plain), LB_SETTOPINDEX, 11, 0);
        std::string seen[2];
        std::vector<Picture> looks;
        for (std::string& see : seen) {
            see = PlaceOf(plain) + PlaceOf(InnerOf(plain)) + (GetFocus() == InnerOf(plain) ? " focus" : "");
            for (const auto ask : {UINT{LB_GETCURSEL}, UINT{LB_GETTOPINDEX}, UINT{LB_GETITEMHEIGHT}})
                see += ' ' + std::to_string(SendMessageW(InnerOf(plain), ask, 0, 0));
            const bool isDrawn = (GetWindowLongW(InnerOf(plain), GWL_STYLE) & LBS_OWNERDRAWFIXED) != 0;
            EXPECT_EQ(isDrawn, &see == &seen[1]);
            // The platform's dots around what has the focus are not the library's outline.
            SetFocus(parent.Window());
            Pump();
            looks.push_back(Picture::OnScreen(InnerOf(plain)));
            plain.SetFocus();
            // Of what is not seen.
            plain.SetValueEnabled(3, false);
        }
        EXPECT_EQ(seen[1], seen[0]);
        EXPECT_EQ(looks[1], looks[0]) << zoom;
    }
}

TEST_F(Lists, DefaultTellsTheParentAlone) {
    CKxDevUI_ComboBox plain;
    plain.SetId(30);
    plain.Create(parent.Window(), 10, 200, 120, 22, true, true);
    Fill(plain);
    parent.Answer(WM_COMMAND, [&](WPARAM, LPARAM) { return plain.GetSelectionIndex(); });
    plain.SetFocus(), Told(), Key(VK_END);
    EXPECT_EQ(Told() + std::to_string(plain.GetSelectionIndex()), "30:1025#304");
}

TEST_F(Lists, TypedValuesHaveTheHabitsOfFields) {
    combo.SetEditable({.minimum = 0, .maximum = 1000, .unit = L"ms"});
    combo.SetValueName(1, L"20 ms");
    HWND edit = GetWindow(InnerOf(combo), GW_CHILD);
    const auto type = [&](const wchar_t* text) {
        SetFocus(edit), SendMessageW(edit, EM_SETSEL, 0, -1), Type(text), Pump();
        parent.Record().Text(Narrow(TextOf(edit)) + "," + Narrow(combo.GetText().str()));
    };
    Play({{[&] { type(L"15\n"); }, "-1 0: Value(\"15\") 15,15"},
          {[&] { type(L"20\n"); }, "1 0: Choose(1) 20 ms,20 ms"},
          // Not allowed, or not to be chosen.
          {[&] { type(L"5000\n"), type(L"x\n"), type(L"50\n"); }, "1 0: 20 ms,20 ms 20 ms,20 ms 20 ms,20 ms"},
          {[&] { combo.answer = true, type(L"30"), SetFocus(parent.Window()); }, "1 0: 30,20 ms Value(\"30\")"},
          {[&] { KX_SetFieldHabits(combo, KxFieldHabits::All()), combo.answer = false, type(L"7,5x\n"); },
           "-1 0: Value(\"7.5\") 7.5,7.5"},
          {[&] { type(L"9\x1b"), type(L"5000\n"); }, "-1 0: 7.5,7.5 5000,7.5"},
          // Values that come leave it alone.
          {[&] { combo.SetSelection(1), type(L"8"), combo.InsertValue(L"5", 0), type(L"\n"); },
           "-1 0: 8,20 ms Value(\"8\") 8,8"},
          {[&] { SetFocus(parent.Window()), combo.SetText(L"gain"); }, "5 0: "},
          // What is no number bounds nothing.
          {[&] {
               combo.SetEditable({.minimum = kNaN, .maximum = 9}), edit = GetWindow(InnerOf(combo), GW_CHILD);
               type(L"-3\n"), type(L"11\n");
           },
           "-1 0: Value(\"-3\") -3,-3 11,-3"}});
}

TEST(ListsOfADialog, AreTakenOverWhole) {
    RecordingParent parent;
    const HWND dialog = CreateDialogParamW(GetModuleHandleW(nullptr), L"LIST_DIALOG", parent.Window(), nullptr, 0);
    const auto at = [&](int id) { return GetDlgItem(dialog, id); };
    for (const int id : {10, 11, 12, 13}) {
        const bool isCombo = id < 12;
        for (const wchar_t* text : {L"c", L"b", L"b"})
            SendMessageW(at(id), isCombo ? CB_ADDSTRING : LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(at(id), isCombo ? CB_SETITEMDATA : LB_SETITEMDATA, 2, 70 + id);
        SendMessageW(at(id), isCombo ? CB_SETCURSEL : id == 13 ? LB_SETSEL : LB_SETCURSEL, 1, 1);
    }
    const auto order = [&] {
        std::string text;
        for (HWND each = GetWindow(dialog, GW_CHILD); each; each = GetWindow(each, GW_HWNDNEXT))
            text += PlaceOf(each) + (IsWindowEnabled(each) ? ", " : " disabled, ");
        HWND stop = at(10);
        for (int i = 0; i < 6; ++i)
            text += std::to_string(GetDlgCtrlID(stop)) + " ", stop = GetNextDlgTabItem(dialog, stop, FALSE);
        return text;
    };
    const std::string before = order();
    CKxDevUI_ComboBox plain, typed, other;
    CKxDevUI_ListBox one, several;
    EXPECT_FALSE(plain.Create(parent.Window(), at(10)) || plain.Create(dialog, nullptr));
    EXPECT_TRUE(plain.Create(dialog, at(10)) && typed.Create(nullptr, at(11)) && one.Create(dialog, at(12)));
    EXPECT_TRUE(several.Create(dialog, at(13)) && other.Create(dialog, at(14)));
    CKxDevUI_CheckBox check;
    CheckDlgButton(dialog, 15, BST_INDETERMINATE);
    EXPECT_TRUE(check.Create(dialog, at(15)) && check.GetState() == BST_INDETERMINATE);
    EXPECT_FALSE(other.Create(dialog, at(10)) || other.Create(plain, InnerOf(plain))) << "taken already";
    EXPECT_EQ(order(), before);
    const auto read = [](ListControl& list) {
        return CallText("", list.GetId(), list.GetValuesCount(), list.GetValueName(0).str(), list.GetUserData(2),
                        list.GetSelectionIndex());
    };
    EXPECT_EQ(
        read(plain) + read(typed) + read(one) + read(several) + read(other),
        "(10, 3, \"c\", 80, 1)(11, 3, \"b\", 81, 1)(12, 3, \"c\", 82, 1)(13, 3, \"c\", 83, 1)(14, 0, \"\", 0, -1)");
    EXPECT_TRUE(typed.IsEditable() && !plain.IsEditable() && several.IsMultiple() && !one.IsMultiple());
    const auto name = [](ListControl& list) { return Narrow(Reader(InnerOf(list)).Name()); };
    one.SetTitle(L"Lamps");
    EXPECT_EQ(name(plain) + name(typed) + name(one), "BinningLamps") << "the label's, none, the title";
}

// The picture of the page, and what stands in the system's scheme and in a dark one.
TEST_F(Lists, LookAsTheirStateIs) {
    CKxDevUI_ComboBox typed, off;
    CKxDevUI_ListBox several;
    typed.SetEditable({.minimum = 0, .maximum = 1000, .unit = L"ms"});
    several.SetMultiple(true);
    typed.Create(parent.Window(), 150, 10, 90, 22, true, true);
    off.Create(parent.Window(), 260, 10, 90, 22, true, true);
    several.Create(parent.Window(), 150, 40, 200, 120, true, true);
    Fill(typed), Fill(off), Fill(several);
    off.SetEnabled(false);
    several.SetSelections({1, 3});
    several.SetValueImage(0, L"SHUTTER_OPEN");
    combo.SetSelection(1);
    for (const int i : {0, 1, 2, 3}) {
        combo.SetValueColor(i, RGB(60 * i, 160 - 40 * i, 200 - 60 * i));
        list.SetValueColor(i, RGB(60 * i, 160 - 40 * i, 200 - 60 * i));
    }
    KX_FollowColorScheme(parent.Window());
    for (const auto& [scheme, name] :
         {std::pair(eKxColorScheme_Light, L"lists"), std::pair(eKxColorScheme_Dark, L"lists dark")}) {
        KX_SetColorScheme(scheme);
        Pump();
        const Picture picture = Picture::OnScreen(parent.Window());
        picture.Part({0, 0, 362, 172}).Save(Narrow(name));
        const Picture field = Picture::OnScreen(InnerOf(combo));
        EXPECT_GT(field.Count(RGB(60, 120, 140)), 100) << "the patch of the value in the field";
        // The last line of a row has nothing of its text.
        EXPECT_EQ(Picture::OnScreen(InnerOf(list)).Part({20, 29, 100, 30}).Count(KX_GetSysColor(COLOR_WINDOWTEXT)), 0);
        EXPECT_EQ(Picture::OnScreen(InnerOf(off)).Count(KX_GetSysColor(COLOR_WINDOWTEXT)), 0);
        // Grey, although the list is not.
        RECT row{};
        SendMessageW(InnerOf(list), LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
        EXPECT_EQ(Picture::OnScreen(InnerOf(list)).Part(row).Count(KX_GetSysColor(COLOR_WINDOWTEXT)), 0);
    }
}

}  // namespace
