// The setup dialogs, used as a person would: by keys, by mouse, through a screen reader.

#include <bench/counters.h>
#include <bench/modal_answer.h>
#include <bench/reader.h>
#include <controls/control_test.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/setup/devgui_setup.h>
#include <kxdevui/setup/setup_ids.h>

namespace {

using namespace kx::test;

HWND Inner(HWND dialog, int id) { return GetWindow(GetDlgItem(dialog, id), GW_CHILD); }

std::wstring Cell(HWND dialog, int row, int column) {
    wchar_t text[300] = L"";
    ListView_GetItemText(Inner(dialog, IDC_SETUP_TABLE), row, column, text, 300);
    return text;
}

void ClickRow(HWND dialog, int row) {
    const HWND list = Inner(dialog, IDC_SETUP_TABLE);
    RECT place{};
    ListView_GetItemRect(list, row, &place, LVIR_LABEL);
    Click(list, place.left + 8, (place.top + place.bottom) / 2);
}

void ClickChoice(HWND dialog, const wchar_t* text) {
    const HWND list = Inner(dialog, IDC_SETUP_LIST);
    const LRESULT index =
        SendMessageW(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
    ASSERT_GE(index, 0) << Narrow(text);
    RECT place{};
    SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    Click(list, place.left + 20, (place.top + place.bottom) / 2);
}

std::string ReadBy(HWND control) {
    const HWND child = GetWindow(control, GW_CHILD), list = GetDlgItem(control, 10000);
    return Narrow(Reader(list ? list : child ? child : control).Name());
}

struct Setup : ControlTest {
    Setup() { KX_SetMessageBoxHandler(Box, this); }
    static int Box(HWND, const wchar_t* text, const wchar_t*, UINT, int, void* self) {
        static_cast<Setup*>(self)->parent.Record().Text(Narrow(text));
        return IDOK;
    }
    // Tells each record; refuses so many.
    auto Accept() {
        return [this](const auto& record, SKxSetupRefusal& refusal) {
            const auto text = []<class Item>(const Item& item) -> std::string {
                if constexpr (std::is_same_v<Item, CKxStringW>)
                    return Narrow(item.str());
                else
                    return Narrow(item.key.str());
            };
            for (const auto& each : record.changes)
                parent.Record().Text(std::to_string(each.position) + ": " + text(each.before) + " > " +
                                     text(each.after));
            if (refusals-- > 0) refusal = {true, L"No.", 1};
        };
    }
    // The platform shows a dialog when nothing else is left to do.
    static ModalAnswer::Action Shown(const ModalAnswer::Action& use) {
        return [use](HWND dialog) { ShowWindow(dialog, SW_SHOW), Pump(), use(dialog); };
    }
    bool OpenObjectives(const ModalAnswer::Action& use) {
        const ModalAnswer answer(Shown(use));
        return ShowSetupDialog(parent.Window(), nosepiece.GetLogDevId(), Accept());
    }
    bool OpenFilters(const ModalAnswer::Action& use) {
        const ModalAnswer answer(Shown(use));
        return ShowSetupDialog_Filter(parent.Window(), wheel.GetLogDevId(), Accept());
    }
    bool OpenCondenser(const std::vector<CKxStringW>& positions, const ModalAnswer::Action& use) {
        const ModalAnswer answer(Shown(use));
        return ShowSetupDialog_Condenser(parent.Window(), positions, Accept());
    }

    int refusals = 0;
    CKxSimMicroscope microscope;
    CKxSimNosepiece& nosepiece = microscope.Add<CKxSimNosepiece>(
        L"Nosepiece", std::vector<SKxSimObjective>{{L"Plan Apo 4x/0.20", L"4x", L"PlanApo4x020"},
                                                   {L"Plan Apo 60x/1.40 Oil", L"60x", L"PlanApo60x140Oil"},
                                                   {L"Plan Apo 20x/0.75", L"20x", L"PlanApo20x075"},
                                                   {L"Old 10x", L"10x", L"Gone"},
                                                   {L"", L"", L""}});
    CKxSimFilterChanger& wheel = microscope.Add<CKxSimFilterChanger>(
        L"Wheel", std::vector<std::wstring>{L"GFP", L"525/50", L"GFP"}, SKxSimFilterChangerKind{});
};

TEST_F(Setup, IsWorkedByKeysAlone) {
    const HWND before = AddChild(parent.Window(), L"BUTTON", 5, {0, 0, 9, 9});
    SetFocus(before);
    EXPECT_TRUE(OpenObjectives([](HWND dialog) {
        const DialogKeys keys(dialog);
        EXPECT_EQ(TextOf(dialog), L"Nosepiece & Objectives");
        EXPECT_EQ(GetFocus(), Inner(dialog, IDC_SETUP_TABLE));
        Key(VK_DOWN), Key(VK_DOWN);
        Key('I', MOD_ALT), Key(VK_DOWN), Key(VK_DOWN);
        EXPECT_EQ(SendMessageW(Inner(dialog, IDC_SETUP_LIST), LB_GETCOUNT, 0, 0), 3) << "nothing, and water";
        Key('F', MOD_ALT);
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_SETUP_FIND));
        Type(L"60 apo");
        Key(VK_DOWN);
        EXPECT_EQ(GetFocus(), Inner(dialog, IDC_SETUP_LIST));
        Key(VK_END);
        EXPECT_EQ(Cell(dialog, 2, 1), L"Plan Apo 60x/1.20 Water");
        EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_SETUP_DETAILS)).substr(24),
                  L"Working distance: 290 µm\nCover glass: "
                  L"0.13-0.21 mm, collar\nParfocal distance: 60 mm");
        // Once around, and to a position that is emptied.
        for (int i = 0; i < 3; ++i)
            Key(VK_TAB);
        EXPECT_EQ(GetFocus(), Inner(dialog, IDC_SETUP_TABLE));
        Key(VK_HOME), Key(VK_DELETE);
        EXPECT_EQ(Cell(dialog, 0, 1) + Cell(dialog, 0, 5), L"Empty");
        Key(VK_RETURN);
    }));
    EXPECT_EQ(Told(), "0: PlanApo4x020 >  2: PlanApo20x075 > PlanApo60x120W");
    EXPECT_EQ(GetFocus(), before);
}

// What it reads at each stop of Tab, and that it hears of what is told below.
TEST_F(Setup, IsReadByAScreenReader) {
    static bool s_heard;
    const auto hear = [](HWINEVENTHOOK, DWORD, HWND window, LONG, LONG, DWORD, DWORD) {
        s_heard = s_heard || GetDlgCtrlID(window) == IDC_SETUP_DETAILS;
    };
    const HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr, hear,
                                               GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    OpenObjectives([](HWND dialog) {
        const DialogKeys keys(dialog);
        std::string read;
        HWND stop = GetDlgItem(dialog, IDC_SETUP_TABLE);
        for (int i = 0; i < 9; ++i)
            read += ReadBy(stop) + "; ", stop = GetNextDlgTabItem(dialog, stop, FALSE);
        EXPECT_EQ(read, "Positions; Find:; Magnification; NA; Immersion; Objectives; OK; Cancel; Positions; ");
        s_heard = false, Key(VK_DOWN);
        EXPECT_TRUE(PumpUntil([] { return s_heard; }));
        EXPECT_EQ(Reader(GetDlgItem(dialog, IDC_SETUP_DETAILS)).Name().substr(0, 12), L"Plan Apo 60x");
        PressButton(dialog, IDCANCEL);
    });
    UnhookWinEvent(hook);
}

TEST_F(Setup, IsWorkedByTheMouseAlone) {
    EXPECT_TRUE(OpenFilters([](HWND dialog) {
        EXPECT_EQ(Cell(dialog, 2, 3), L"Also in position 1");
        ClickRow(dialog, 2);
        ClickChoice(dialog, L"Cy5");
        EXPECT_EQ(Cell(dialog, 2, 2) + Cell(dialog, 2, 3), L"690/50");
        ClickRow(dialog, 0);
        // A name that is in no list is typed.
        SetFocus(GetDlgItem(dialog, IDC_SETUP_FIND));
        Type(L"470/24");
        ClickChoice(dialog, L"470/24");
        PressButton(dialog, IDOK);
    }));
    EXPECT_EQ(Told(), "0: GFP > 470/24 2: GFP > Cy5");
}

TEST_F(Setup, StaysOpenWhileItIsRefusedAndLeavesAllAsItWasWhenCancelled) {
    refusals = 2;
    EXPECT_FALSE(OpenCondenser({L"Phase1", L"", L"Mine"}, [](HWND dialog) {
        EXPECT_EQ(Cell(dialog, 2, 4), L"Nothing is known of it");
        ClickChoice(dialog, L"DIC prism, high");
        for (int i = 0; i < 2; ++i) {
            ClickRow(dialog, 0);
            PressButton(dialog, IDOK);
            const HWND list = Inner(dialog, IDC_SETUP_TABLE);
            EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), 1);
            EXPECT_EQ(GetFocus(), list);
        }
        const DialogKeys keys(dialog);
        Key(VK_ESCAPE);
    }));
    EXPECT_EQ(Told(), "0: Phase1 > DICHigh No. 0: Phase1 > DICHigh No.");
    // Nothing has changed: nobody is asked.
    EXPECT_FALSE(OpenCondenser({L"Phase1"}, [](HWND dialog) { PressButton(dialog, IDOK); }));
    EXPECT_EQ(Told(), "");
}

TEST_F(Setup, AnswersWhatIsOdd) {
    const auto use = [](std::size_t positions) {
        return [positions](HWND dialog) {
            EXPECT_EQ(ListView_GetItemCount(Inner(dialog, IDC_SETUP_TABLE)), static_cast<int>(positions));
            EXPECT_EQ(IsWindowEnabled(Inner(dialog, IDC_SETUP_LIST)) != FALSE, positions > 0);
            PressButton(dialog, IDOK);
        };
    };
    for (const std::size_t positions : {0u, 100u, 1001u}) {
        const auto shown = use(std::min<std::size_t>(positions, 1000));
        OpenCondenser(std::vector<CKxStringW>(positions), shown);
        const auto& turret = microscope.Add<CKxSimNosepiece>(L"Turret", std::vector<SKxSimObjective>(positions));
        const ModalAnswer answer(Shown(shown));
        EXPECT_FALSE(ShowSetupDialog(parent.Window(), turret.GetLogDevId(), Accept()));
        EXPECT_EQ(answer.Count(), 1u);
    }
    OpenObjectives([](HWND dialog) {
        EXPECT_EQ(Cell(dialog, 3, 1) + Cell(dialog, 3, 5), L"Old 10xNothing is known of it");
        ClickRow(dialog, 4);
        ClickChoice(dialog, L"Old 10x");
        EXPECT_EQ(Cell(dialog, 4, 5), L"Nothing is known of it; Also in position 4");
        PressButton(dialog, IDCANCEL);
    });
    {
        const ModalAnswer answer(IDCANCEL);
        EXPECT_FALSE(ShowSetupDialog(nullptr, wheel.GetLogDevId(), [](const auto&, auto&) {}));
        EXPECT_FALSE(ShowSetupDialog(nullptr, nosepiece.GetLogDevId(), nullptr));
        EXPECT_EQ(answer.Count(), 0u);
    }
    EXPECT_TRUE(NoGrowth(
        20, [this] { OpenCondenser({L"Phase1"}, [](HWND dialog) { PressButton(dialog, IDCANCEL); }); }, 5));
    // The host throws, or ends the owner while it is asked.
    const ModalAnswer answer(Shown([](HWND dialog) {
        ClickChoice(dialog, L"Dark field, oil");
        PressButton(dialog, IDOK);
        if (IsWindow(dialog)) PressButton(dialog, IDCANCEL);
    }));
    EXPECT_FALSE(ShowSetupDialog_Condenser(parent.Window(), {L"Phase1"}, [](const auto&, auto&) { throw 1; }));
    EXPECT_EQ(Told(), "This setup has been refused.");
    ShowSetupDialog_Condenser(parent.Window(), {L"Phase1"}, [this](const auto&, auto& refusal) {
        refusal.refused = true, DestroyWindow(parent.Window());
    });
    EXPECT_EQ(answer.Count(), 2u);
    EXPECT_FALSE(IsWindow(parent.Window()));
}

// In every language, at every zoom, in the dark: labels have room, a letter leads to one control, readers find names.
TEST_F(Setup, SpeaksEveryLanguageInEverySize) {
    const auto look = [](const std::string& picture) {
        return [picture](HWND dialog) {
            Picture::OnScreen(dialog, true).Save("setup-" + picture);
            std::wstring letters;
            for (HWND each = GetWindow(dialog, GW_CHILD); each; each = GetWindow(each, GW_HWNDNEXT)) {
                const std::wstring text = TextOf(each);
                const HWND inner = GetWindow(each, GW_CHILD) ? GetWindow(each, GW_CHILD) : each;
                const bool used = inner != each || (GetWindowLongW(inner, GWL_STYLE) & WS_TABSTOP) != 0;
                EXPECT_FALSE(used && ReadBy(each).empty()) << picture << ' ' << GetDlgCtrlID(each);
                if (const auto mark = text.find(L'&'); mark != std::wstring::npos)
                    letters += static_cast<wchar_t>(std::towlower(text.at(mark + 1)));
                const HDC dc = GetDC(each);
                const HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(each, WM_GETFONT, 0, 0)));
                RECT room{}, needed{};
                GetClientRect(each, &room);
                needed.right = room.right;
                const bool details = GetDlgCtrlID(each) == IDC_SETUP_DETAILS;
                if (inner == each && GetDlgCtrlID(each) != IDC_SETUP_FIND)
                    DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | (details ? DT_WORDBREAK : 0u));
                EXPECT_TRUE(needed.right <= room.right && needed.bottom <= room.bottom)
                    << picture << ' ' << Narrow(text);
                SelectObject(dc, old);
                ReleaseDC(each, dc);
            }
            std::sort(letters.begin(), letters.end());
            EXPECT_EQ(std::adjacent_find(letters.begin(), letters.end()), letters.end()) << picture << Narrow(letters);
            PressButton(dialog, IDCANCEL);
        };
    };
    const std::tuple<int, double, bool> looks[] = {{LANG_ENGLISH, 1, false},
                                                   {LANG_GERMAN, 1.5, false},
                                                   {LANG_FRENCH, 2, false},
                                                   {LANG_SPANISH, 1, true},
                                                   {LANG_JAPANESE, 1.5, true}};
    for (const auto& [language, zoom, dark] : looks) {
        CKxLocale::SetModuleLangId(MAKELANGID(static_cast<WORD>(language), SUBLANG_DEFAULT));
        CKxGUILayoutManager::SetGuiZoom(zoom);
        KX_SetColorScheme(dark ? eKxColorScheme_Dark : eKxColorScheme_System);
        const std::string name = std::to_string(language);
        OpenObjectives(look("objectives-" + name));
        OpenFilters(look("filters-" + name));
        OpenCondenser({L"Phase1", L"Phase1", L"", L"Mine"}, look("condenser-" + name));
    }
}

}  // namespace
