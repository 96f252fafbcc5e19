// What all creations have in common: the class of the window, its mark, the object in its user data; and that a host,
// who is told of each window that goes and comes, may end the object there.
#include <subjects/law.h>

#include <algorithm>

namespace kx::test {
namespace {

class CreationLaw : public LawTest {
protected:
    CreationLaw() : LawTest({Law::Ends}) {}

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
        const char* kind;
        const char* name;
        Mark mark;
    } rows[] = {
        {"arrows", "msctls_updown32", None},
        {"colour slider", "KxDevUI_Container", TagAndObject},
        {"container from a part", "#32770", None},
        {"container made empty", "KxDevUI_Container", TagAndObject},
        {"edit box", "KxDevUI_EditBox", TagAndObject},
        {"filter wheel", "KxDevGUI_FilterWheel", Tag},
        {"mode shutter", "KxDEVGUI_ModeShutter", None},
        {"nosepiece", "KxDevGUI_Nosepiece", Tag},
        {"radio group", "KxDevUI_Radio", Tag},
        {"shutter", "KxDevUI_Shutter", TagAndObject},
        {"slider", "KxDevUI_HPot", TagAndObject},
        {"switcher", "KxDevGUI_Switcher", Tag},
        {"table", "KxDevUI_Table", TagAndObject},
        {"Z stack panel", "CKxDevUI_ZStack", None},
    };
    for (const auto& row : rows) {
        const auto kind =
            std::find_if(Kinds().begin(), Kinds().end(), [&](const Kind& k) { return k.name == row.kind; });
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
        if (subject->Control() && row.mark != None) {
            EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(subject->Control()))
                << row.kind;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, CreationLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
