// The storm: a long, seeded run of messages, input, operations, ends, sizes, zooms, colours and languages against one
// control, whose invariants are checked after every step. The controls are the subjects of tests/subjects.
//
// The seed decides every step. A storm is made of rounds of 500 steps, each with a seed of its own that starts from a
// new subject: whatever a round finds is found again by that round alone. A failure, also a crash, names both:
//
//     KX_STORM_SEED=17 KX_STORM_STEPS=413 scripts/wine-run build/mingw-release/bin/storm_test.exe
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_fonts.h>
#include <kxsystem/kx_locale.h>
#include <subjects/law.h>

namespace kx::test {
namespace {

constexpr int stepsPerRound = 500;

int FromEnvironment(const char* name, int otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoi(value) : otherwise;
}

struct Storm : LawOf<Law::Redraw, Law::Later> {
    ~Storm() override { CKxLocale::SetModuleLangId(0); }

    // What is wrong after one round or, when something was left behind, after some more: fonts, brushes and DCs are
    // cached, and a leak comes every time, a cached thing once. Which of them a round comes to is a matter of time,
    // too: a busy machine paints less often.
    std::string RunRound(int seed, int steps) {
        std::string left;
        for (int attempt = 0; attempt < 6; ++attempt) {
            PutBack();
            const Counts before = Counts::Now();
            for (const bool drawn : {true, false}) {
                random_ = Random(static_cast<std::uint64_t>(seed_ = seed));
                Begin();
                if (std::string wrong = drawn ? NotDrawn() : NotBorne(steps); !wrong.empty()) return wrong;
                PutBack();
            }
            const Counts after = Counts::Now();
            if (after.gdi <= before.gdi && after.windows <= before.windows) return {};
            left = Growth(before, after, 1) + " left";
        }
        return left;
    }

private:
    void PutBack() {
        Finish();
        KX_SetColorScheme(eKxColorScheme_System);
        CKxGUILayoutManager::SetGuiZoom(1.0);
        CKxLocale::SetModuleLangId(0);
        Pump();
        CKxBitmapPool::Clear();
    }
    // What comes next, told by a failure and a crash.
    void Say(const std::string& what) {
        doing_ = "seed " + std::to_string(seed_) + ", step " + std::to_string(step_) + " (" + what + ")";
        if (s_traced) std::printf("%s\n", doing_.c_str());
    }
    // The law of redrawing, every so often among operations, zooms and colours: in a round of its own, as messages at
    // random leave windows over each other and undrawn.
    std::string NotDrawn() {
        for (step_ = 0; step_ < 24 && Ready(); ++step_) {
            if (random_.OneIn(8)) CKxGUILayoutManager::SetGuiZoom(random_.Of({1.0, 1.25, 1.5}));
            if (random_.OneIn(8)) KX_SetColorScheme(static_cast<EKxColorScheme>(random_.Below(4)));
            const Operation& operation = random_.Of(Control().Operations());
            if (IsExcepted(operation.name)) continue;
            Say(operation.name + " to see whether it is drawn");
            operation.run(random_);
            if (!random_.OneIn(3) || !Control().Window()) continue;
            if (std::string wrong = NotRedrawn(Parent().Window()); !wrong.empty()) return wrong;
        }
        return {};
    }

    std::string NotBorne(int steps) {
        for (step_ = 0; step_ < steps; ++step_) {
            // Nothing is done in the callbacks of a creation: it would never come to its end.
            if (!Control().Window()) Control().told = nullptr;
            if (!Ready()) return "creation failed";
            const auto windows = Control().Windows();
            const Target target = random_.Of(windows);
            random_.OneIn(4)   ? HostStep()
            : random_.OneIn(4) ? SurroundingsStep(target)
                               : MessageStep(target, random_.Of(windows).window);
            if (random_.OneIn(4)) Pump();
            Parent().Record().Clear();
            if (std::string wrong = Control().Check(); !wrong.empty()) return wrong;
        }
        Say("the end");
        Pump();
        Parent().Record().Clear();
        Control().told = nullptr;
        Control().Destroy();
        const auto& told = Parent().Record().Entries();
        if (!told.empty()) return "the parent was told while the control was being destroyed: " + told.front();
        if (GetWindow(Parent().Window(), GW_CHILD)) return "a window is left in the parent";
        return Control().Check();
    }

    // What a host does with this control: its operations, an end or a change, at once or in the next callback.
    void HostStep() {
        const End end = random_.Of({End::Window, End::Windows, End::Object});
        const int number = random_.Between(0, 31);
        // For the next callback, and for none after it.
        const auto plan = [&](const std::string& name, const std::function<void()>& action) {
            Say(name);
            Control().told = [this, action](const std::string&) {
                const auto once = action;
                Control().told = nullptr;
                once();
            };
            if (Control().Provoke(number)) Control().told = nullptr;
        };
        switch (random_.Below(12)) {
        case 0: return Say("an end"), Control().End(end);
        case 1: return Say("creating again"), Control().Create(Parent());
        case 2: return Say("a copy"), Control().Copy();
        case 3: return plan("an end in a callback", [=, this] { Control().End(end); });
        case 4: return plan("a change in a callback", [=, this] { Control().Change(number); });
        default: break;
        }
        const Operation& operation = random_.Of(Control().Operations());
        Say(operation.name);
        operation.run(random_);
    }

    // What happens to any window: it is moved, used; the zoom, the colours, the language change.
    void SurroundingsStep(const Target& target) {
        const int x = random_.Length(), y = random_.Length(), what = random_.Below(16);
        const HWND window = target.window;
        const Act act = random_.Of(ActsAt(window));
        Say(what > 10 ? act.name : "change " + std::to_string(what) + " of " + NameOfWindow(window));
        CKxDevUI_Base* const control = Control().Control();
        switch (what) {
        case 0: CKxGUILayoutManager::SetGuiZoom(random_.Of({1.0, 1.0, 1.25, 2.0, 0.25, 8.0, 0.0, -1.0, 1e300})); return;
        case 1: return KX_SetColorScheme(static_cast<EKxColorScheme>(random_.Between(-1, 4)));
        case 2: return CKxLocale::SetModuleLangId(random_.Of<LANGID>({LANG_ENGLISH, LANG_GERMAN, LANG_JAPANESE, 99}));
        case 3: SetFocus(random_.OneIn(4) ? Parent().Window() : window); return;
        case 4: SetCapture(random_.OneIn(2) ? nullptr : window); return;
        case 5: RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); return;
        case 6:
        case 7:
            SetWindowPos(window, nullptr, x, y, random_.Length(), random_.Length(),
                         SWP_NOACTIVATE | random_.Of<UINT>({0, SWP_NOMOVE, SWP_NOSIZE, SWP_NOREDRAW}));
            return;
        case 8: return control ? (control->SetVisible(y % 4 != 0), control->SetRedraw(x % 2 == 0)) : void();
        case 9: return control ? (control->MoveWindowRelative(x, y), control->ResizeWindow(x, y)) : void();
        case 10: return control ? (control->MoveWindow(x, y), control->ResizeWindowRelative(x, y)) : void();
        default: act.run();
        }
    }

    // What a message carries.
    // clang-format off
    enum Parameter { None, One, Few, Words, Turn, Point, Window, Hit, Key, Letter, Type, Intl, Dc, Client, Item, Notice,
                     Bits, Any };
    // clang-format on
    LPARAM Value(Parameter parameter, LPARAM window, HDC dc) {
        // Whatever the code of a notice makes of it, there is room for it.
        alignas(16) static std::array<std::byte, 512> bytes;
        static DRAWITEMSTRUCT item;
        static bool bits[64];
        const int low = random_.Length(), high = random_.Length(), id = random_.Between(-1, 9);
        const auto passed = [](auto& what) { return reinterpret_cast<LPARAM>(&what); };
        switch (parameter) {
        case None: return 0;
        case One: return 1;
        case Few: return random_.Below(3);
        case Words: return MAKELPARAM(id, random_.OneIn(2) ? random_.Below(8) : random_.AnyInt());
        case Turn: return MAKELPARAM(random_.Below(32), random_.Of({120, -120, 1, -1, 0, 32767, -32768}));
        case Point: return MAKELPARAM(low, high);
        case Window: return random_.OneIn(3) ? 0 : window;
        case Hit: return MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN);
        case Key: return random_.Between(VK_PRIOR, VK_DELETE);
        case Letter: return random_.Of<LPARAM>({'9', '-', '.', 'x', 8, 9, 13, 27, 0x3042, 0xD800, 0});
        case Type: return random_.OneIn(2) ? reinterpret_cast<LPARAM>(KX_GetDefaultGuiFontBold()) : 0;
        case Intl: return reinterpret_cast<LPARAM>(random_.Of({L"", L"intl", L"-1e999", s_long.c_str()}));
        case Dc: return reinterpret_cast<LPARAM>(dc);
        case Client: return PRF_CLIENT;
        case Item:
            item = {ODT_BUTTON, 2, 0, ODA_DRAWENTIRE, UINT(low) % 64, reinterpret_cast<HWND>(window), dc, {}, 0};
            item.rcItem = {0, 0, low, high};
            return passed(item);
        case Notice:
            bytes = {};
            reinterpret_cast<NMHDR&>(bytes) = {reinterpret_cast<HWND>(window), UINT_PTR(id), UINT(-random_.Below(900))};
            return passed(bytes);
        case Bits:
            for (bool& bit : bits)
                bit = random_.OneIn(2);
            return random_.OneIn(4) ? 0 : passed(bits);
        case Any: break;
        }
        return random_.AnyInt();
    }
    void MessageStep(const Target& target, HWND other) {
        struct Sort {
            UINT message;
            Parameter wParam, lParam;
        };
        // For all windows; then for those of the library alone, to which a message means what it is called.
        // clang-format off
        static constexpr Sort sorts[] = {
            {WM_SETTEXT, None, Intl}, {WM_SETFONT, Type, One}, {WM_SIZE, Few, Point}, {WM_NCPAINT, One, None},
            {WM_SETCURSOR, None, Hit}, {WM_ENABLE, Few, None}, {WM_SETREDRAW, Few, None}, {WM_SHOWWINDOW, Few, None},
            {WM_CANCELMODE, None, None}, {WM_GETDLGCODE, None, None}, {WM_TIMER, Few, None}, {WM_GETFONT, None, None},
            {WM_SYSCOLORCHANGE, None, None}, {WM_THEMECHANGED, None, None}, {WM_SETTINGCHANGE, Few, Intl},
            {WM_UPDATEUISTATE, Few, None}, {WM_DISPLAYCHANGE, None, None}, {WM_MOUSELEAVE, None, None},
            {WM_COMMAND, Words, Window}, {WM_COMMAND, Words, Window}, {WM_COMMAND, Words, Window}, {WM_NOTIFY, Few, Notice},
            {WM_NOTIFY, Few, Notice}, {WM_DRAWITEM, Few, Item}, {WM_DRAWITEM, Few, Item}, {WM_HSCROLL, Words, Window},
            {WM_VSCROLL, Words, Window}, {WM_MOUSEWHEEL, Turn, Point}, {0x83ED, Turn, Point}, {0x0500, Words, Bits},
            {0x0500, Few, Bits}, {WM_USER + 3, Few, Few}, {0x7FFF, Any, Any}, {0xBFFF, Few, Few}, {WM_MOUSEMOVE, Few, Point},
            {WM_LBUTTONDOWN, One, Point}, {WM_LBUTTONUP, None, Point}, {WM_LBUTTONDBLCLK, One, Point},
            {WM_RBUTTONDOWN, Few, Point}, {WM_MBUTTONDOWN, Few, Point}, {WM_CAPTURECHANGED, None, Window},
            {WM_MOUSEACTIVATE, None, Hit}, {WM_NCHITTEST, None, Point}, {WM_CHAR, Letter, One}, {WM_KEYDOWN, Key, One},
            {WM_KEYUP, Key, One}, {WM_CTLCOLORSTATIC, Dc, Window}, {WM_CTLCOLOREDIT, Dc, Window}, {WM_PAINT, Dc, None},
            {WM_CTLCOLORBTN, Dc, Window}, {WM_ERASEBKGND, Dc, None}, {WM_PRINTCLIENT, Dc, Client},
        };
        // clang-format on
        constexpr int forAll = 18;
        const Sort& sort = sorts[random_.Below(target.ours ? static_cast<int>(std::size(sorts)) : forAll)];
        // A bitmap that is too small for most windows.
        WithDc(90, 60, [&](HDC dc) {
            const LPARAM window = reinterpret_cast<LPARAM>(other);
            const auto wParam = static_cast<WPARAM>(Value(sort.wParam, window, dc));
            const LPARAM lParam = Value(sort.lParam, window, dc);
            Say(CallText(NameOf(sort.message), NameOfWindow(target.window), wParam, lParam));
            SendMessageW(target.window, sort.message, wParam, lParam);
        });
    }

    static inline const std::wstring s_long = std::wstring(5000, L'W');
    static inline const bool s_traced = FromEnvironment("KX_STORM_TRACE", 0) != 0;
    Random random_{0};
    int seed_ = 0, step_ = 0;
};

// Some short rounds, or as many steps as KX_STORM_STEPS says from the seed KX_STORM_SEED on.
TEST_P(Storm, Survives) {
    const int seed = FromEnvironment("KX_STORM_SEED", 1), steps = FromEnvironment("KX_STORM_STEPS", 500);
    ASSERT_GT(steps, 0) << "KX_STORM_STEPS";
    std::string wrong;
    for (int done = 0, round = seed; done < steps && wrong.empty(); done += stepsPerRound, ++round)
        wrong = RunRound(round, std::min(stepsPerRound, steps - done));
    ExpectNothing(wrong, doing_);
    std::printf("%s: %d steps from seed %d on\n", GetParam().name.c_str(), steps, seed);
}

INSTANTIATE_TEST_SUITE_P(All, Storm, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
