// Containers that are dialogs: what they hear, how they end, in which language they come.
#include <bench/bench.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxsystem/kx_locale.h>

namespace {

using namespace kx::test;

class Dialog : public CKxDevUI_Container {
public:
    explicit Dialog(Recorder& record) : m_record(record) {}
    ~Dialog() override { Destroy(); }
    std::function<void()> act;  // on a button

protected:
    LRESULT OnInit(UINT message, WPARAM, LPARAM) override {
        m_record.Call("OnInit", message, m_hWnd != nullptr, GetWindows().size());
        return 1;
    }
    LRESULT OnDestroy(UINT, WPARAM, LPARAM) override { return m_record.Call("OnDestroy"), 1; }
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (HIWORD(wParam) != BN_CLICKED) return 0;
        m_record.Call("OnCommand", LOWORD(wParam));
        if (const auto action = act) return action(), 1;
        return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }

private:
    Recorder& m_record;
};

struct Dialogs : testing::Test {
    Dialogs() { CKxLocale::SetModuleLangId(0x0409); }
    ~Dialogs() override { CKxLocale::SetModuleLangId(0); }
    HWND MakeModeless(CKxDevUI_Container& made, const wchar_t* name = L"TEST_DIALOG") {
        return made.CreateFromDlg(parent.Window(), 30, 40, name, module, false);
    }
    // Presses a button in it.
    INT_PTR RunModal(Dialog& made) {
        const ModalAnswer answer([](HWND window) { PressButton(window, 7); });
        return reinterpret_cast<INT_PTR>(made.CreateFromDlg(parent.Window(), 0, 0, L"TEST_DIALOG", module, true));
    }
    std::string Told() { return parent.Record().Take(); }

    const HMODULE module = GetModuleHandleW(nullptr);
    RecordingParent parent;
    Dialog dialog{parent.Record()};
};

TEST_F(Dialogs, ModelessTakesItsControlsAndHandlesItsCommands) {
    ASSERT_TRUE(MakeModeless(dialog));
    EXPECT_EQ(Told(), "OnInit(272, true, 0)");
    EXPECT_EQ(dialog.GetWindows().size(), 4u);
    EXPECT_TRUE(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_CONTROLPARENT);
    EXPECT_EQ(PlaceOf(dialog).substr(0, 6), "30 40 ");
    ShowWindow(dialog, SW_SHOW);
    Play({{[&] { Click(dialog.GetWindow(7), 5, 5); }, "OnCommand(7)"},
          {[&] { dialog.Init(true), Click(dialog.GetWindow(7), 5, 5); }, "OnCommand(7) 7:0#7"},
          {[&] { Click(dialog.GetWindow(8), 5, 5), dialog.Destroy(); }, "OnDestroy()"}},
         [this] { return Told(); });
}

TEST_F(Dialogs, APartKeepsThePlaceOfItsControls) {
    CKxDevUI_Container whole, placeholder, successor;
    MakeModeless(whole);
    const RECT button = RectInParent(whole.GetWindow(7));
    dialog.SetId(55);
    dialog.SetVisible(false);
    ASSERT_TRUE(
        dialog.CreateFromDlgPart(parent.Window(), button.left + 5, button.top - 2, 300, 299, L"TEST_DIALOG", module));
    EXPECT_EQ(dialog.GetWindows().size(), 1u) << "the straddling button alone";
    EXPECT_EQ(PlaceOf(dialog.GetWindow(7)).substr(0, 5), "-5 2 ");
    EXPECT_EQ(GetDlgCtrlID(dialog), 55);
    EXPECT_TRUE(PlaceOf(dialog).ends_with(" 300 299"));
    EXPECT_TRUE(dialog.GetVisible() && IsWindowVisible(dialog));

    // In the place of another one, which is directly behind it in the tab order.
    placeholder.Create(parent.Window(), 0, 0, 40, 40, true, true);
    ASSERT_TRUE(successor.CreateFromDlgPart(parent.Window(), &placeholder, L"TEST_DIALOG", module));
    EXPECT_EQ(GetWindow(successor, GW_HWNDNEXT), placeholder);
    EXPECT_EQ(PlaceOf(successor), "0 0 40 40");
}

TEST_F(Dialogs, ModalReturnsWhatEndedIt) {
    for (const int result : {5, 0, -1, 7}) {
        dialog.act = [&] {
            dialog.Quit(result);
            dialog.Quit(result);  // one end
            dialog.SetTitle(L"late");
        };
        EXPECT_EQ(RunModal(dialog), result);
        EXPECT_EQ(Told(), "OnInit(272, true, 4) OnCommand(7) OnDestroy()");
        EXPECT_EQ(HWND{dialog}, nullptr);
        dialog.Quit(3);
    }
}

TEST_F(Dialogs, MayDeleteThemselves) {
    for (const bool modal : {false, true}) {
        auto mortal = std::make_unique<Dialog>(parent.Record());
        mortal->act = [&] { mortal.reset(); };
        modal ? void(RunModal(*mortal)) : void(MakeModeless(*mortal));
        if (mortal) SendMessageW(mortal->GetWindow(7), BM_CLICK, 0, 0);
        EXPECT_FALSE(mortal);
    }
}

TEST_F(Dialogs, ComeInTheUsersLanguage) {
    const std::pair<WORD, const wchar_t*> rows[] = {{0x0407, L"Deutsch"}, {0x0C07, L"Deutsch"}, {0x040C, L"English"}};
    for (const auto& [id, expected] : rows) {
        CKxLocale::SetModuleLangId(id);
        MakeModeless(dialog);
        EXPECT_EQ(TextOf(dialog), expected);
        EXPECT_EQ(MakeModeless(dialog, L"ONLY_JAPANESE"), nullptr);
    }
}

TEST(TemplateLanguage, IsChosenByTheLibrary) {
    const std::vector<LANGID> all{0x0409, 0x0407, 0x0C0A, 0x0000}, few{0x0411, 0x0407}, none;
    const struct {
        const std::vector<LANGID>& available;
        LANGID current, fallback;
        int expected;
    } rows[] = {
        {all, 0x040A, 0x0409, 2},   // another sort of Spanish
        {all, 0x0411, 0x0409, 0},   // the fallback
        {all, 0x0411, 0x0412, 3},   // neither: that of no language
        {few, 0x0410, 0x0409, -1},  // a Japanese text is no answer to Italian
        {few, 0x0410, 0x0807, 1},  {none, 0x0409, 0x0409, -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(kx::ui::ChooseLanguage(row.available, row.current, row.fallback), row.expected)
            << "row " << &row - rows;
}

}  // namespace
