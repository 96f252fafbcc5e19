// The focus, when what has it is hidden, disabled or made anew, goes where the control says; it is never left with a
// window that cannot be used.
#include <subjects/law.h>

#include <climits>
#include <cmath>

namespace kx::test {
namespace {

struct FocusLaw : LawOf<Law::Focus> {
    std::string Focused() {
        const HWND focus = GetFocus();
        if (!focus) return "nowhere";
        if (focus == Parent().Window()) return "the parent";
        if (!IsWindowVisible(focus) || !IsWindowEnabled(focus)) return "a window that cannot be used";
        if (focus == Control().Window() || IsChild(Control().Window(), focus)) return "the control";
        return "elsewhere";
    }
    // To what of the control a user can give the focus; null for what takes none.
    HWND Focus(HWND window) {
        SetFocus(Parent().Window());
        if (!IsWindowVisible(window) || !IsWindowEnabled(window) || NameOfWindow(window).starts_with("Static"))
            return nullptr;
        SetFocus(window);
        const HWND focused = GetFocus();
        return focused == Parent().Window() ? nullptr : focused;
    }
};

// Whatever the host does to what has the focus.
TEST_P(FocusLaw, IsNeverLeftWithWhatCannotBeUsed) {
    Begin();
    ForEachOperation([&](const Operation& operation, Random& random) {
        constexpr std::size_t tries = 3;
        const auto some = SomeWindows();
        for (std::size_t i = 0; Ready() && i < tries * some.size(); ++i) {
            // A round may have made fewer of them.
            const auto windows = Control().Windows();
            if (some[i / tries] >= windows.size()) break;
            const HWND focused = Focus(windows[some[i / tries]].window);
            if (!focused) continue;
            const std::string name = NameOfWindow(focused) + " before " + operation.name;
            operation.run(random);
            Pump();
            if (!Control().Window() || !IsWindowVisible(Control().Window()) || IsExcepted(operation.name)) continue;
            // Only who disables the whole control may leave it to nobody.
            const std::string got = Focused();
            const bool isLost = got == "nowhere" && IsWindowEnabled(Control().Window());
            Expect(!isLost && got != "a window that cannot be used", name, "the focus is with " + got);
        }
    });
}

TEST_P(FocusLaw, GoesWhereTheControlSays) {
    for (const FocusLoss loss : {FocusLoss::Disabled, FocusLoss::Rebuilt}) {
        const bool disables = loss == FocusLoss::Disabled;
        Begin();
        for (const std::size_t i : SomeWindows()) {
            Begin();
            // Another round may have made fewer of them.
            const auto windows = Control().Windows();
            if (i >= windows.size()) break;
            const HWND focused = Focus(windows[i].window);
            if (!focused) continue;
            doing_ = NameOfWindow(focused) + (disables ? " disabled" : " made anew");
            if (disables) Control().Enable(false);
            if (!disables && !Control().Rebuild()) break;
            Pump();
            // What is never disabled keeps it.
            if (GetFocus() == focused && disables && IsWindowEnabled(focused)) continue;
            const std::string wanted = Control().FocusGoes(loss), got = Focused();
            Expect(wanted == got, doing_, "the focus goes to " + got + ", not to " + wanted);
        }
    }
}

// Wine hides nothing by itself.
LRESULT s_hidden = 0;
bool s_isToldOfKeys = false;
LRESULT CALLBACK AnswerHidden(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    s_isToldOfKeys |= message == WM_CHANGEUISTATE;
    return message == WM_QUERYUISTATE ? s_hidden : DefSubclassProc(window, message, wParam, lParam);
}

bool IsMarked(HWND window, const std::string& name) {
    const bool isFrame = (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    return (name.starts_with("Button ") && !isFrame) || name.starts_with("ListBox ") ||
           name.find("HPot ") != std::string::npos || name.find("Grips ") != std::string::npos;
}
bool IsField(const std::string& name) {
    return name.starts_with("Edit ") || name.starts_with("Combo") || name.starts_with("SysList");
}

// Fields and lists show it in all that they are; what cannot be used by keys does not.
TEST_P(FocusLaw, IsShownFromTheFirstKeyOn) {
    Begin(States()[3]);
    KX_FollowColorScheme(Parent().Window());
    for (const Target& each : Control().Windows()) {
        const HWND focused = Focus(each.window);
        if (!focused) continue;
        const std::string name = NameOfWindow(focused);
        const bool isMarked = IsMarked(focused, name), isField = IsField(name);
        SetWindowSubclass(focused, AnswerHidden, 1, 0);
        s_hidden = UISF_HIDEFOCUS;
        SetFocus(Parent().Window());
        const Picture without = SeenPicture(Parent().Window());
        SetFocus(focused);
        const Picture hidden = SeenPicture(Parent().Window());
        s_hidden = 0;
        SendMessageW(focused, WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
        const Picture shown = SeenPicture(Parent().Window());
        Expect(isField || hidden == without, name, "the focus is shown before");
        if (!IsExcepted(name))
            Expect((shown == hidden) != isMarked, name,
                   isMarked ? "the focus is not shown then" : "something else is shown");
        shown.Save("focus " + GetParam().name + " " + name);
        // Where the dialog manager does not get the key, it cannot say that one was used.
        MSG key{focused, WM_KEYDOWN, VK_RIGHT, 0, 0, {}};
        const LRESULT code = SendMessageW(focused, WM_GETDLGCODE, VK_RIGHT, reinterpret_cast<LPARAM>(&key));
        s_hidden = UISF_HIDEFOCUS, s_isToldOfKeys = false;
        SendMessageW(focused, WM_KEYDOWN, VK_RIGHT, 0);
        const bool takes = isMarked && (code & DLGC_WANTARROWS);
        if (!IsExcepted("a key in " + name))
            Expect(s_isToldOfKeys == takes, name, "not told, or told in vain, of a key");
    }
}

double Luminance(COLORREF color) {
    const auto part = [](int value) {
        const double linear = value / 255.0;
        return linear <= 0.03928 ? linear / 12.92 : std::pow((linear + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(GetRValue(color)) + 0.7152 * part(GetGValue(color)) + 0.0722 * part(GetBValue(color));
}

// Whether what differs stands out by 3:1 from what is there without it, in a line all around.
bool HasOutline(const Picture& without, const Picture& with) {
    const RECT box = without.Difference(with);
    RECT around{INT_MAX, INT_MAX, 0, 0};
    int pixels = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x) {
            const auto [least, most] = std::minmax(Luminance(without.Pixel(x, y)), Luminance(with.Pixel(x, y)));
            if ((most + 0.05) / (least + 0.05) < 3) continue;
            ++pixels;
            around = {std::min<LONG>(around.left, x), std::min<LONG>(around.top, y), std::max<LONG>(around.right, x),
                      std::max<LONG>(around.bottom, y)};
        }
    }
    return pixels > 0 && pixels >= (around.right - around.left + around.bottom - around.top) * 3 / 2;
}

TEST_P(FocusLaw, StandsOutByThreeToOneInAllSchemes) {
    for (const EKxColorScheme scheme :
         {eKxColorScheme_System, eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        Begin({scheme, 1.0, true});
        KX_FollowColorScheme(Parent().Window());
        for (const Target& each : Control().Windows()) {
            const HWND focused = Focus(each.window);
            if (!focused) continue;
            const std::string name = NameOfWindow(focused);
            // A thumb has a ring that is soft at its edge; fields show their caret as well.
            const bool isLine = IsMarked(focused, name) && name.find("HPot ") == std::string::npos;
            if (IsExcepted(name) || IsExcepted("the outline of " + name)) continue;
            SetFocus(Parent().Window());
            const Picture without = SeenPicture(Parent().Window());
            SetFocus(focused);
            const Picture with = SeenPicture(Parent().Window());
            const bool has = !isLine || HasOutline(without, with);
            if (!has) with.Save("outline " + GetParam().name + " " + name + " " + std::to_string(scheme));
            Expect(has, name + ", scheme " + std::to_string(scheme), "the focus is hardly to be seen");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, FocusLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
