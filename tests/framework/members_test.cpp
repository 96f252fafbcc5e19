// What controls have as members: a row of buttons and a field for a number, in a control that has both.
#include <bench/bench.h>
#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_control.h>

#include <optional>

namespace {

using namespace kx::test;
using namespace kx::ui;

constexpr int kButton = 10300, kField = 10200;

struct Dial : Control {
    Dial() : Control(this, {.name = L"Dial", .size = {200, 20}, .title = L"", .tabsInside = true}) {}
    void Show(std::optional<double> number) {
        m_row.Show(m_hWnd, number ? static_cast<long>(*number) : -1);
        m_field.Show(number);
    }
    void Name(const std::vector<CKxStringW>& texts) {
        if (!m_row.SetTexts(m_hWnd, texts)) Remake();
    }
    struct Flags {
        bool number;
    };
    bool Update(CDMApi_LogDevId device, const Flags& what) { return what.number && (Show(device), true); }
    HWND Button(int i) const { return PartAt(kButton + i); }
    HWND Edit() const { return m_field.GetEditWindow(); }

    int clicked = -1;
    std::optional<double> typed;
    std::function<void()> asked;
    static inline int s_late = 0;  // messages that come to an object that is half gone

    friend class kx::ui::Control;
    bool Make(const Parts& parts) {
        return m_row.Make(parts, {0, 0, 148, 20}, 2) && m_field.Make(parts, {150, 0, 200, 20});
    }
    void Command(int id, int code) {
        if (const int index = m_row.ClickedBy(id, code); index >= 0) clicked = index;
        if (const auto number = m_field.TypedBy(id, code)) typed = number;
        if (const auto ask = asked; ask && (clicked >= 0 || typed)) ask();
    }

    Handled Handle(const Message&) {
        if (s_ending) ++s_late;
        return std::nullopt;
    }

    RadioRow m_row{kButton, {L"C", L"A & B", L"C"}};
    NumberField m_field{kField, 0, 100};
    static inline bool s_ending = false;
    // The first member to go.
    struct Ending {
        Ending() { s_ending = false; }
        ~Ending() { s_ending = true; }
    } m_ending;
};

struct Members : testing::Test {
    void SetUp() override {
        dial->Create(parent.Window(), 10, 10, -1, -1, true, true);
        dial->Show(1);
    }
    void Enter(const wchar_t* text) {
        dial->typed.reset();
        Click(dial->Edit(), 5, 5), SendMessageW(dial->Edit(), EM_SETSEL, 0, -1), Type(text);
    }

    RecordingParent parent;
    std::unique_ptr<Dial> dial = std::make_unique<Dial>();
};

TEST_F(Members, ARowIsOneStopOfTheTabKeyAndIsWorkedByArrowsAndEnter) {
    const DialogKeys keys(parent.Window());
    ::SetFocus(parent.Window());
    EnableWindow(dial->Button(2), FALSE);
    const std::pair<WORD, HWND> steps[] = {
        {VK_TAB, dial->Button(1)},  {VK_RIGHT, dial->Button(0)}, {VK_TAB, dial->Edit()},      {VK_TAB, dial->Button(0)},
        {VK_LEFT, dial->Button(1)}, {VK_UP, dial->Button(0)},    {VK_RETURN, dial->Button(0)}};
    for (const auto& [key, focus] : steps) {
        EXPECT_EQ(dial->clicked, -1) << "the focus is no click";
        Key(key);
        EXPECT_EQ(GetFocus(), focus) << "after " << key;
    }
    EXPECT_EQ(dial->clicked, 0);
    Click(dial->Button(1), 5, 5);
    EXPECT_EQ(dial->clicked, 1);
    EXPECT_EQ(kx::test::TextOf(dial->Button(1)), L"A && B");
    for (const int shown : {2, -1}) {
        dial->Show(shown);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(SendMessageW(dial->Button(i), BM_GETCHECK, 0, 0) == BST_CHECKED, i == shown);
    }
}

TEST_F(Members, AFieldHandsOnWhatIsTypedAndGivesBackWhatWas) {
    const std::pair<const wchar_t*, std::optional<double>> rows[] = {{L"12,5\n", 12.5}, {L"0\n", 0},    {L"1.0\n", {}},
                                                                     {L"100.1\n", {}},  {L"5 %\n", {}}, {L"\b\n", {}}};
    for (const auto& [text, number] : rows) {
        Enter(text);
        EXPECT_EQ(dial->typed, number) << text;
        EXPECT_EQ(kx::test::TextOf(dial->Edit()), L"1") << text;
    }
    Enter(L"7");
    EXPECT_EQ(dial->typed, std::nullopt) << "not entered yet";
    ::SetFocus(parent.Window());
    EXPECT_EQ(dial->typed, 7);
    Enter(L"8"), dial->SetEnabled(false);
    EXPECT_EQ(dial->typed, std::nullopt) << "disabled";
    dial->SetEnabled(true), dial->Show(1.0 / 3), Enter(L"\n");
    EXPECT_EQ(dial->typed, std::nullopt) << "rounded as it is shown";
}

TEST_F(Members, AreMadeAnewWhereThereAreOthers) {
    ::SetFocus(dial->Edit());
    dial->Name({L"In", L"Out"});
    EXPECT_EQ(GetFocus(), dial->Button(0)) << "none is down";
    EXPECT_EQ(kx::test::TextOf(dial->Edit()), L"1");
    const HWND kept = dial->Button(0);
    dial->Name({L"A & B", L"Off"});
    EXPECT_EQ(kx::test::TextOf(kept), L"A && B") << "as many as before";
    dial->asked = [this] { dial->Name(std::vector<CKxStringW>(20, L"x")); };
    Enter(L"7\n");
    EXPECT_EQ(dial->typed, 7);
    EXPECT_TRUE(dial->Button(15) && !dial->Button(16));
}

TEST_F(Members, FollowTheFlagsOfADeviceBand) {
    SendDeviceBand(*dial, 2, Dial::Flags{false});
    SendMessageW(*dial, WM_KX_UPDATE_DEVICE_BAND, 2, 0);
    EXPECT_EQ(kx::test::TextOf(dial->Edit()), L"1");
    SendDeviceBand(*dial, 2, Dial::Flags{true});
    EXPECT_EQ(kx::test::TextOf(dial->Edit()), L"2");
    Enter(L"3"), dial->Show(2);
    EXPECT_EQ(kx::test::TextOf(dial->Edit()), L"3") << "what is typed stays while nothing else is shown";
}

TEST_F(Members, EndWithTheirControlUnheard) {
    Enter(L"5");
    dial.reset();
    EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr);
    EXPECT_EQ(Dial::s_late, 0);
}

}  // namespace
