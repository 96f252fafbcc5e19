// Each callback in turn destroys the window, then the windows by Destroy, then the object, then the parent: nothing is
// touched afterwards. Objects that have been deleted lie in memory that nobody may read or write (bench/grave.h).
#include <subjects/law.h>

#include <algorithm>
#include <set>

namespace kx::test {
namespace {

struct EndsLaw : LawOf<Law::Ends> {
    using Cause = std::function<void()>;

    // Everything that the user can do to one window; that the host can do. The callback that comes of it may end it.
    void ActAt(std::size_t window) {
        for (std::size_t act = 0; window < Control().Windows().size(); ++act) {
            const auto acts = ActsAt(Control().Windows()[window].window);
            if (act >= acts.size()) break;
            act_ = acts[act].name;
            acts[act].run();
        }
        act_.clear();
    }
    // Drag, wheel, Enter: a callback of each is another way through the control.
    std::string Act() const { return act_.substr(0, act_.find(' ')); }
    void Operate() {
        for (std::size_t i = 0; i < Control().Operations().size() && Control().Window(); ++i) {
            Random random(i);
            Control().Operations()[i].run(random);
        }
    }

    // Every callback, by its name, the class of the window that is used and what is done to it, and what brings it.
    std::map<std::tuple<std::string, std::string, std::string>, Cause> Causes() {
        std::map<std::tuple<std::string, std::string, std::string>, Cause> causes;
        const auto listen = [&](const std::string& by, const Cause& cause) {
            Begin();
            Control().told = [&](const std::string& name) { causes.try_emplace({name, by, Act()}, cause); };
            cause();
            Control().told = nullptr;
        };
        Begin();
        std::vector<std::string> names;
        for (const Target& each : Control().Windows())
            names.push_back(NameOfWindow(each.window));
        for (std::size_t i = 0; i < names.size(); ++i)
            listen(names[i].substr(0, names[i].find(' ')), [=, this] { ActAt(i); });
        for (const int n : {0, 1})
            listen("what provokes it", [=, this] { Control().Provoke(n); });
        listen("an operation", [this] { Operate(); });
        return causes;
    }

    std::string act_;
};

TEST_P(EndsLaw, NothingDeadIsTouched) {
    static constexpr std::pair<End, const char*> ends[] = {
        // clang-format off
        {End::Window, "its window"}, {End::Windows, "its windows"}, {End::Object, "the object"}, {End::Parent, "the parent"}
        // clang-format on
    };
    const auto causes = Causes();
    std::set<std::pair<std::string, std::string>> ended;
    for (const auto& [key, cause] : causes) {
        const auto& [callback, by, act] = key;
        if (IsExcepted(callback)) continue;
        const bool isFirst = ended.emplace(callback, by).second;
        for (const auto& [end, name] : ends) {
            if (!isFirst && end != End::Object) continue;
            Begin();
            // What is bound to a name of its own only newer compilers let a lambda use.
            const std::string &expected = callback, &way = act;
            const End how = end;
            bool told = false;
            Control().told = [&](const std::string& heard) {
                if (told || heard != expected || Act() != way) return;
                told = true;
                Control().End(how);
            };
            doing_ = callback + " by " + by + ", " + act + ", ends " + name;
            cause();
            Pump();
            Control().told = nullptr;
            // Who gives the focus or the mouse away would not be told of it any more.
            Expect(told, doing_, "the callback does not come again");
            const HWND window = Control().Window();
            Expect(!window || IsWindow(window), doing_, "it keeps the handle of a window that is gone");
            if (Parent().Window()) ExpectNothing(Control().Check(), doing_);
            ExpectNothing(TakeTouch(), doing_);
        }
    }
}

// Of itself, without a callback.
TEST_P(EndsLaw, EndsWheneverItsHostWants) {
    for (const End end : {End::Window, End::Windows, End::Object, End::Parent}) {
        Begin();
        const auto windows = Control().Windows();
        if (!windows.empty()) SetFocus(windows.back().window);
        doing_ = "end " + std::to_string(static_cast<int>(end));
        Control().End(end);
        Pump();
        CKxGUILayoutManager::SetGuiZoom(1.25);
        KX_SetColorScheme(eKxColorScheme_Dark);
        ExpectNothing(TakeTouch(), doing_);
        if (Parent().Window()) ExpectNothing(Control().Check(), doing_);
    }
}

// What all creations have in common: the class of the window, its mark, the object in its user data; and that a host,
// who is told of each window that goes and comes, may end the object there.
struct CreationLaw : LawOf<Law::Ends> {
    // Made anew; the nth of these messages to the host ends the object. False when there are not so many.
    bool EndsIn(UINT message, WORD what, int nth) {
        Begin();
        SetFocus(Control().Window());
        int told = 0;
        bool ended = false;
        Parent().Answer(message, [&](WPARAM wParam, LPARAM) {
            if ((what == 0 || LOWORD(wParam) == what) && told++ == nth) ended = true, Control().End(End::Object);
            return 0;
        });
        doing_ = "end in message " + NameOf(message) + " number " + std::to_string(nth);
        const HWND window = Control().Remake();
        Expect(!ended || !window, doing_, "there is a window all the same");
        ExpectNothing(TakeTouch(), doing_);
        if (ended) ExpectNothing(Control().Check(), doing_);
        return ended;
    }
};

TEST_P(CreationLaw, LeavesAnObjectThatHasEnded) {
    // Of the old window's end, and by the focus that this gives the host's, where it does.
    EXPECT_TRUE(EndsIn(WM_PARENTNOTIFY, WM_DESTROY, 0));
    EndsIn(WM_SETFOCUS, 0, 0);
    for (int window = 0; window < 4 && EndsIn(WM_PARENTNOTIFY, WM_CREATE, window); ++window) {
    }
}

// By the mark a container finds the control and not only its window.
TEST(CreationLawItself, ClassesAndMarksAreTheGivenOnes) {
    enum Mark { None, Tag, TagAndObject };
    const struct {
        const char *kind, *name;
        Mark mark;
    } rows[] = {
        // clang-format off
        {"arrows", "msctls_updown32", None}, {"colour slider", "KxDevUI_Container", TagAndObject},
        {"container from a part", "#32770", None}, {"container made empty", "KxDevUI_Container", TagAndObject},
        {"edit box", "KxDevUI_EditBox", TagAndObject}, {"filter wheel", "KxDevGUI_FilterWheel", Tag},
        {"mode shutter", "KxDEVGUI_ModeShutter", None}, {"nosepiece", "KxDevGUI_Nosepiece", Tag},
        {"radio group", "KxDevUI_Radio", Tag}, {"shutter", "KxDevUI_Shutter", TagAndObject},
        {"slider", "KxDevUI_HPot", TagAndObject}, {"switcher", "KxDevGUI_Switcher", Tag},
        {"table", "KxDevUI_Table", TagAndObject}, {"Z stack panel", "CKxDevUI_ZStack", None},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto kind = std::ranges::find(Kinds(), row.kind, &Kind::name);
        ASSERT_NE(kind, Kinds().end()) << row.kind;
        RecordingParent parent;
        const auto subject = kind->make();
        subject->Create(parent);
        const HWND window = subject->Window();
        char name[64] = "";
        GetClassNameA(window, name, 64);
        EXPECT_STREQ(name, row.name) << row.kind;
        const bool hasWords = GetClassLongPtrW(window, GCL_CBWNDEXTRA) == 16;
        EXPECT_EQ(hasWords && GetWindowLongPtrW(window, 0) == 5015, row.mark != None) << row.kind;
        const LONG_PTR object = hasWords ? GetWindowLongPtrW(window, 8) : 0;
        EXPECT_EQ(object, row.mark == TagAndObject ? reinterpret_cast<LONG_PTR>(subject->Control()) : 0) << row.kind;
        if (!subject->Control() || row.mark == None) continue;
        EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(subject->Control())) << row.kind;
    }
}

INSTANTIATE_TEST_SUITE_P(All, EndsLaw, testing::ValuesIn(Kinds()), NameOfKind);
INSTANTIATE_TEST_SUITE_P(All, CreationLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
