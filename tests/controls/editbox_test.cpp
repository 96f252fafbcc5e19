// The edit box: what it shows, what its parent hears, what it refuses.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using namespace kx::test;

template <class Base>
class Acting : public Base {
public:
    std::function<void(std::string_view)> act;  // in every callback; may end this object
    using Base::Create;

protected:
    void OnEnter() override { Base::OnEnter(), Act("Enter"); }
    void OnSetFocus() override { Base::OnSetFocus(), Act("SetFocus"); }
    void OnKillFocus() override { Base::OnKillFocus(), Act("KillFocus"); }
    void OnChange() override { Base::OnChange(), Act("Change"); }
    void OnChar(int ch) override { Base::OnChar(ch), Act("Char"); }
    void Act(std::string_view name) {
        if (const auto action = act) action(name);
    }
};
using Box = Acting<CKxDevUI_EditBox>;
struct SpinningBox : Acting<CKxDevUI_EditBoxSpin> {
    void OnSpin(int) override { Act("Spin"); }
};

HWND ArrowsOf(HWND box) { return FindWindowExW(box, nullptr, L"msctls_updown32", nullptr); }

// Collects what message boxes say.
class MessageBoxes {
public:
    MessageBoxes() { KX_SetMessageBoxHandler(Keep, this); }
    ~MessageBoxes() { KX_SetMessageBoxHandler(nullptr, nullptr); }
    std::wstring TakeText() { return std::exchange(m_texts, L""); }

private:
    static int Keep(HWND, const wchar_t* text, const wchar_t*, UINT, int, void* to) {
        return static_cast<MessageBoxes*>(to)->m_texts += text, IDOK;
    }
    std::wstring m_texts;
};

class EditBox : public testing::Test {
protected:
    EditBox() {
        box.SetSize(60, 60, 20);
        box.Create(parent.Window(), 10, 10, 120, 20, true, true);
    }
    MessageBoxes boxes;
    RecordingParent parent;
    Box box;
};

TEST_F(EditBox, TellsOfTypingEnterAndFocus) {
    box.SetId(44);
    EXPECT_TRUE(parent.Record().Matches({})) << "making it is silent";
    const HWND window = box;
    Click(box.GetEditWindow(), 5, 5);
    EXPECT_TRUE(box.IsFocused());
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_SETFOCUS, window)}));
    Type(L"7\n");
    EXPECT_TRUE(parent.Record().Matches({Msg(WM_COMMAND, MAKEWPARAM(44, 0x0102), L'7'), Command(44, EN_CHANGE, window),
                                         Msg(WM_COMMAND, MAKEWPARAM(44, 0x0102), L'\r'), Command(44, 0x0401, window)}));
    SetFocus(parent.Window());
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_KILLFOCUS, window)}));
    box.SetText(L"7");
    EXPECT_TRUE(parent.Record().Matches({})) << "nothing has changed";
    box.SetNumber(8.25);
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_CHANGE, window)}));
    EXPECT_EQ(box.GetNumber(), 8.25);
    box.Destroy();
    EXPECT_TRUE(parent.Record().Matches({})) << "so is its end";
}

TEST_F(EditBox, NamesWhatIsWrong) {
    box.SetTitle(L"Exposure");
    // Filled: it must be. An empty message: allowed. Corrected with 7 as the value for an empty text.
    // clang-format off
    const struct { const wchar_t* text; double low, high; bool filled; const wchar_t *message, *corrected; } rows[] = {
        {L"", 0, 100, false, L"", L""},
        {L"", 0, 100, true, L"Exposure: Field can not be empty.", L"7"},
        {L"", 5, 100, true, L"Exposure: Value must be in interval <5;100>", L"5"},
        {L"100", 0, 100, true, L"", L"100"},
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
        EXPECT_EQ(boxes.TakeText(), row.message);
        EXPECT_EQ(box.IsFocused(), !allowed) << "the user is sent back";
        EXPECT_EQ(box.CheckRestriction(true, true, 7), allowed);
        EXPECT_EQ(box.GetText(), row.corrected);
    }
    EXPECT_EQ(boxes.TakeText(), L"") << "what is corrected is not talked about";
    box.Init(false, false, false);
    box.SetText(L"1e3");
    box.CheckRestriction(true, false, 0);
    EXPECT_EQ(boxes.TakeText(), L"Value must be in interval <0;100>") << "no label, no name";
}

TEST_F(EditBox, SendsTheUserBackWithAWorkingCaret) {
    const HWND other = AddChild(parent.Window(), L"EDIT", 0, {200, 10, 260, 30});
    box.act = [&](std::string_view name) {
        if (name == "KillFocus") box.CheckRestriction(true, false, 0);
    };
    Click(box.GetEditWindow(), 5, 5);
    Type(L"500");
    parent.Record().Clear();
    Click(other, 5, 5);
    EXPECT_EQ(boxes.TakeText(), L"Label: Value must be in interval <0;100>");
    EXPECT_TRUE(box.IsFocused());
    EXPECT_TRUE(parent.Record().Matches(
        {Command(0, EN_KILLFOCUS, box), Command(0, EN_KILLFOCUS, other).Optional(), Command(0, EN_SETFOCUS, box)}));
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    EXPECT_EQ(info.hwndCaret, box.GetEditWindow());
    Type(L"\b\b");
    EXPECT_EQ(box.GetText(), L"5");
}

TEST_F(EditBox, DisplaysByItsFormat) {
    const std::wstring longText(5000, L'9');
    const std::tuple<double, const wchar_t*, bool, const wchar_t*> rows[] = {
        {1.5, L"%.2f", true, L"1.50"},  {1.5, nullptr, false, L"1.5"}, {1.5, L"%.1f ms", false, L"1.5 ms"},
        {2, L"%d", false, L"2.0 ms"},   {3, L"%n", true, L"3.0 ms"},   {INFINITY, nullptr, false, L"3.0 ms"},
        {4, nullptr, false, L"4.0 ms"},
    };
    for (const auto& [value, format, once, text] : rows) {
        box.SetNumber(value, format, once);
        EXPECT_EQ(box.GetText(), text);
    }
    box.SetNumberInt(-2147483647 - 1);
    EXPECT_EQ(box.GetNumber(), -2147483648.0);
    box.SetNumber(-1e308, L"%.3f");
    EXPECT_EQ(box.GetText().Length(), 255u);
    box.SetText(longText.c_str());
    EXPECT_EQ(box.GetText().str(), longText);
    EXPECT_DOUBLE_EQ(box.GetNumber(), std::stod(std::string(100, '9')));
    box.SetTitle(longText.c_str());
    box.CheckRestriction(false, false, 0);
    // What is typed has a limit; 0 is none.
    box.SetText(nullptr);
    box.SetMaxChars(3);
    box.SetMaxChars(0);
    Click(box.GetEditWindow(), 5, 5);
    Type(L"12345");
    EXPECT_EQ(box.GetText(), L"123");
    box.SetReadOnly(true);
    Type(L"\b");
    EXPECT_EQ(box.GetText(), L"123");
}

TEST_F(EditBox, TakesAControlsPlaceInADialog) {
    box.Destroy();
    CKxDevUI_Container dialog;
    ASSERT_TRUE(dialog.CreateFromDlg(parent.Window(), 10, 10, L"EDIT_DIALOG", GetModuleHandleW(nullptr), false));
    ShowWindow(dialog, SW_SHOW);
    const HWND placeholder = dialog.GetWindow(8);
    const std::string place = PlaceOf(placeholder);
    EXPECT_EQ(box.Create(parent.Window(), placeholder), nullptr) << "not its parent";
    EXPECT_EQ(box.Create(dialog, HWND{nullptr}), nullptr);
    ASSERT_TRUE(box.Create(dialog, placeholder));
    EXPECT_FALSE(IsWindow(placeholder));
    EXPECT_EQ(GetDlgItem(dialog, 8), box);
    EXPECT_EQ(PlaceOf(box), place);
    SetDlgItemTextW(dialog, 8, L"12");
    EXPECT_EQ(box.GetNumber(), 12);

    std::vector<std::string> heard;
    box.act = [&](std::string_view name) { heard.emplace_back(name); };
    const DialogKeys keys(dialog);
    Click(dialog.GetWindow(7), 5, 5);
    Type(L"\t");
    EXPECT_TRUE(box.IsFocused());
    Type(L"\n");
    EXPECT_EQ(heard, (std::vector<std::string>{"SetFocus", "Char", "Enter"})) << "the default button has not taken it";
    Type(L"\t");
    EXPECT_EQ(GetFocus(), dialog.GetWindow(1));
    Key(VK_TAB, MOD_SHIFT);
    EXPECT_TRUE(box.IsFocused());
}

TEST_F(EditBox, FollowsZoomAndState) {
    ASSERT_TRUE(box.Create(parent.Window(), 10, 10, -1, -1, true, true));
    const auto places = [this] { return PlaceOf(box.GetLabelWindow()) + PlaceOf(box.GetEditWindow()); };
    const std::string first = places();
    box.SetText(L"1");
    for (const double zoom : {2.0, 1.25, 1.5, 3.0, 0.5, 1.0}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        EXPECT_EQ(RectInParent(box).right, 10 + std::lround(120 * zoom));
        EXPECT_NEAR(RectInParent(box.GetEditWindow()).left, 63 * zoom, 2) << zoom;
        EXPECT_NEAR(RectInParent(box.GetEditWindow()).right, 117 * zoom, 2) << zoom;
        EXPECT_EQ(LOWORD(SendMessageW(box.GetEditWindow(), EM_POSFROMCHAR, 0, 0)), 0) << "the text, at " << zoom;
    }
    EXPECT_EQ(places(), first);
    EXPECT_EQ(Picture::OnScreen(box).Pixel(100, 2), GetSysColor(COLOR_WINDOW));
    box.SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(box.GetEditWindow()));
    EXPECT_EQ(Picture::OnScreen(box).Pixel(100, 2), GetSysColor(COLOR_BTNFACE));

    // Without its object, the edit answers nothing.
    box.SetEnabled(true);
    SetWindowLongPtrW(box.GetEditWindow(), GWLP_USERDATA, 0);
    EXPECT_EQ(SendMessageW(box.GetEditWindow(), WM_GETDLGCODE, 0, 0), 0);
}

TEST(EditBoxSpin, StepsToItsBoundsAndNoFurther) {
    RecordingParent parent;
    CKxDevUI_EditBoxSpin spin;
    spin.SetRestriction(10.5, 0);
    spin.SetNumber(0, L"%.0f");
    spin.SetId(5);
    ASSERT_TRUE(spin.Create(parent.Window(), 10, 10, 100, 24, true, true));
    const HWND arrows = ArrowsOf(spin);
    ASSERT_TRUE(arrows);
    spin.SetNumber(8);
    parent.Record().Clear();
    Click(arrows, 5, 3);
    EXPECT_TRUE(parent.Record().Matches({Command(5, EN_SETFOCUS, spin), Command(5, EN_CHANGE, spin)}));
    EXPECT_EQ(spin.GetText(), L"9");
    // A key, or 0 and a turn of the wheel.
    const std::tuple<WORD, int, const wchar_t*> rows[] = {{VK_UP, 0, L"10"},  {VK_UP, 0, L"10"},   {VK_DOWN, 0, L"9"},
                                                          {0, 120, L"10"},    {0, -240, L"8"},     {VK_NEXT, 0, L"0"},
                                                          {VK_DOWN, 0, L"0"}, {VK_PRIOR, 0, L"10"}};
    for (const auto& [key, wheel, text] : rows) {
        if (key) Key(key);
        if (wheel) SendMessageW(spin.GetEditWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, wheel), 0);
        EXPECT_EQ(spin.GetText(), text) << key << " " << wheel;
    }
    // Where the format cannot show the bound, the bound itself is shown.
    spin.SetNumber(10, L"%.0f");
    spin.SetRestriction(0, 10.6);
    Key(VK_UP);
    EXPECT_EQ(spin.GetText(), L"10.6");
    spin.SetReadOnly(true);
    Key(VK_DOWN);
    EXPECT_EQ(spin.GetText(), L"10.6");
    spin.SetRestriction(3, 3);
    EXPECT_FALSE(IsWindowEnabled(arrows));
}

// What is in the midst of its own code has to live on for so long.
TEST(EditBoxSpin, MayBeEndedInEveryCallback) {
    for (const std::string_view where : {"Enter", "SetFocus", "KillFocus", "Change", "Char", "Spin"}) {
        for (int how = 0; how < 3; ++how) {
            auto parent = std::make_unique<RecordingParent>();
            auto box = std::make_unique<SpinningBox>();
            ASSERT_TRUE(box->Create(parent->Window(), 10, 10, 120, 24, true, true));
            const HWND other = AddChild(parent->Window(), L"BUTTON", 1, {200, 10, 220, 30});
            const HWND edit = box->GetEditWindow(), arrows = ArrowsOf(*box);
            bool ended = false;
            box->act = [&](std::string_view name) {
                if (name != where || std::exchange(ended, true)) return;
                if (how == 0) box->Destroy();
                if (how == 1) box.reset();
                if (how == 2) parent.reset();
                EXPECT_EQ(IsWindow(edit) != FALSE, where == "Change" || where == "SetFocus") << where;
                EXPECT_EQ(IsWindow(arrows) != FALSE, where == "Spin") << where;
            };
            BringToFront(parent->Window());
            // The mouse reaches the edit through the platform's own code.
            Click(edit, 5, 5);
            if (!ended) Type(L"1");
            if (!ended) SetWindowTextW(edit, L"2");
            if (!ended) Type(L"\n");
            if (!ended) Click(arrows, 5, 3);
            if (!ended) SetFocus(other);
            EXPECT_TRUE(ended) << where;
            EXPECT_FALSE(IsWindow(edit) || IsWindow(arrows)) << where << how;
            Pump();
        }
    }
}

TEST(EditBoxSpin, GivesPositionsAMeaning) {
    CKxDevUI_SpinBox spin;
    RecordingParent parent;
    spin.Create(parent.Window(), 0, 0, 20, 30, true, true);
    spin.SetRange(100, -100, 5);
    spin.SetRange(0, std::nan(""), 5);
    spin.SetRange(0, 1, 0);
    const double values[] = {100, 50, 0, -50, -100};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(spin.ValueOf(i), values[i]);
        EXPECT_EQ(spin.PositionOf(values[i] + 20), i == 0 ? 0 : i);
    }
    EXPECT_EQ(spin.ValueOf(99), -100);
    EXPECT_EQ(spin.PositionOf(std::nan("")), 0);
    spin.SetPosition(77);
    EXPECT_EQ(spin.GetPosition(), 4);
}

TEST(EditBoxMultiValue, ChecksCountThenValues) {
    MessageBoxes boxes;
    RecordingParent parent;
    CKxDevUI_EditBoxMultiValue box;
    box.Init(false, false, false);
    box.SetRestriction(400, 700);
    box.Create(parent.Window(), 0, 0, 200, 20, true, true);
    const std::tuple<const wchar_t*, int, int, const wchar_t*> rows[] = {
        {L"450;525;600;", -1, -1, L""},
        {L" ; ", -1, -1, L"Field can not be empty."},
        {L"450;x", -1, -1, L"Field can not be empty."},
        {L"1;2;3;4;5", 2, 3, L"Too few values!"},
        {L"1", 2, 3, L"Too few values!"},
        {L"1", 2, -1, L"Too few values!"},
        {L"1;2;3;4", -1, 3, L"Too many values!"},
        {L"450;500;600", 3, 2, L""},
        {L"450;399.5;1e999", 2, 3, L"Value out of range: 399.5\nValue must be in interval <400;700>"},
    };
    for (const auto& [text, minimum, maximum, message] : rows) {
        box.SetText(text);
        box.SetCountRestriction(minimum, maximum);
        EXPECT_EQ(box.CheckRestriction(true), !*message);
        EXPECT_EQ(boxes.TakeText(), message) << Narrow(text);
    }
    const std::list<double> values{450, INFINITY, 525.5, 600};
    std::list<double> read;
    box.SetSeparator(L'.');
    box.SetSeparator(L'|');
    box.SetValues(&values);
    EXPECT_EQ(box.GetText(), L"450|525.5|600|");
    EXPECT_TRUE(box.GetValues(&read));
    EXPECT_EQ(read, (std::list<double>{450, 525.5, 600}));
    box.SetValues(nullptr);
    EXPECT_TRUE(box.GetValues(nullptr));
}

}  // namespace
