// Containers that are dialogs: what they hear, how they end, in which language they come.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxsystem/kx_locale.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

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

struct Language {
    explicit Language(WORD language) { CKxLocale::SetModuleLangId(language); }
    ~Language() { CKxLocale::SetModuleLangId(0); }
};

HWND MakeModeless(CKxDevUI_Container& dialog, HWND parent, const wchar_t* name = L"TEST_DIALOG") {
    return dialog.CreateFromDlg(parent, 30, 40, name, GetModuleHandleW(nullptr), false);
}

// Presses a button in it.
INT_PTR RunModal(Dialog& dialog, HWND owner) {
    const ModalAnswer answer([](HWND window) { PressButton(window, 7); });
    return reinterpret_cast<INT_PTR>(
        dialog.CreateFromDlg(owner, 0, 0, L"TEST_DIALOG", GetModuleHandleW(nullptr), true));
}

TEST(Dialogs, ModelessTakesItsControlsAndHandlesItsCommands) {
    const Language english(0x0409);
    RecordingParent parent;
    Dialog dialog(parent.Record());
    ASSERT_TRUE(MakeModeless(dialog, parent.Window()));
    EXPECT_TRUE(parent.Record().Matches({Call("OnInit", static_cast<UINT>(WM_INITDIALOG), true, 0)}));
    EXPECT_EQ(dialog.GetWindows().size(), 4u);
    EXPECT_TRUE(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_CONTROLPARENT);
    EXPECT_EQ(dialog.GetPositionX(), 30);
    ShowWindow(dialog, SW_SHOW);
    Click(dialog.GetWindow(7), 5, 5);
    EXPECT_TRUE(parent.Record().Matches({Call("OnCommand", 7)})) << "not forwarded";
    dialog.Init(true);
    Click(dialog.GetWindow(7), 5, 5);
    EXPECT_TRUE(parent.Record().Matches({Call("OnCommand", 7), Command(7, BN_CLICKED)}));

    Click(dialog.GetWindow(8), 5, 5);
    parent.Record().Clear();
    dialog.Destroy();
    EXPECT_TRUE(parent.Record().Matches({Call("OnDestroy")})) << "its end, and nothing else";
}

TEST(Dialogs, APartKeepsThePlaceOfItsControls) {
    const Language english(0x0409);
    RecordingParent parent;
    CKxDevUI_Container whole;
    Dialog part(parent.Record());
    MakeModeless(whole, parent.Window());
    const RECT button = RectInParent(whole.GetWindow(7));
    part.SetId(55);
    part.SetVisible(false);
    ASSERT_TRUE(part.CreateFromDlgPart(parent.Window(), button.left + 5, button.top - 2, 300, 300, L"TEST_DIALOG",
                                       GetModuleHandleW(nullptr)));
    EXPECT_EQ(part.GetWindows().size(), 1u) << "the straddling button alone";
    EXPECT_EQ(PlaceOf(part.GetWindow(7)).substr(0, 5), "-5 2 ");
    EXPECT_EQ(part.GetPositionX(), button.left + 5);
    EXPECT_EQ(GetDlgCtrlID(part), 55);
    EXPECT_TRUE(part.GetVisible() && IsWindowVisible(part));
    EXPECT_EQ(GetParent(part), parent.Window());
    parent.Record().Clear();
    Click(part.GetWindow(7), 10, 5);
    EXPECT_TRUE(parent.Record().Matches({Call("OnCommand", 7), Command(7, BN_CLICKED)}));

    // In the place of another one, which is directly behind it in the tab order.
    CKxDevUI_Container placeholder, successor;
    placeholder.Create(parent.Window(), 0, 0, 40, 40, true, true);
    ASSERT_TRUE(successor.CreateFromDlgPart(parent.Window(), &placeholder, L"TEST_DIALOG", GetModuleHandleW(nullptr)));
    EXPECT_EQ(GetWindow(successor, GW_HWNDNEXT), placeholder);
}

TEST(Dialogs, ModalReturnsWhatEndedIt) {
    const Language english(0x0409);
    RecordingParent parent;
    Dialog dialog(parent.Record());
    for (const int result : {5, 0, -1, 7}) {
        dialog.act = [&] {
            dialog.Quit(result);
            dialog.Quit(result);  // one end
            dialog.SetTitle(L"late");
        };
        EXPECT_EQ(RunModal(dialog, parent.Window()), result);
        EXPECT_TRUE(parent.Record().Matches(
            {Call("OnInit", static_cast<UINT>(WM_INITDIALOG), true, 4), Call("OnCommand", 7), Call("OnDestroy")}));
        EXPECT_EQ(static_cast<HWND>(dialog), nullptr);
        dialog.Quit(3);
    }
}

TEST(Dialogs, MayDeleteThemselves) {
    const Language english(0x0409);
    RecordingParent parent;
    for (const bool modal : {false, true}) {
        auto dialog = std::make_unique<Dialog>(parent.Record());
        dialog->act = [&] { dialog.reset(); };
        if (modal) {
            RunModal(*dialog, parent.Window());
        } else {
            MakeModeless(*dialog, parent.Window());
            SendMessageW(dialog->GetWindow(7), BM_CLICK, 0, 0);
        }
        EXPECT_FALSE(dialog);
    }
}

TEST(Dialogs, ComeInTheUsersLanguage) {
    RecordingParent parent;
    const std::pair<WORD, const wchar_t*> rows[] = {{0x0407, L"Deutsch"}, {0x0C07, L"Deutsch"}, {0x040C, L"English"}};
    for (const auto& [id, expected] : rows) {
        const Language language(id);
        CKxDevUI_Container dialog;
        MakeModeless(dialog, parent.Window());
        wchar_t caption[20] = L"";
        GetWindowTextW(dialog, caption, 20);
        EXPECT_STREQ(caption, expected);
        EXPECT_EQ(MakeModeless(dialog, parent.Window(), L"ONLY_JAPANESE"), nullptr);
    }
}

}  // namespace
