// The keyboard alone: Tab and the arrows come to every part that can be used, and no part's own key is dead.
#include <subjects/law.h>

#include <set>

namespace kx::test {
namespace {

struct KeysLaw : LawOf<Law::Keys> {
    // A new subject that Tab is let into, with a host that hands keys to the dialog manager.
    void BeginByKeys() {
        keys_.reset();
        Begin();
        keys_.emplace(Parent().Window());
        Control().LetTabIn();
    }
    // What gets the focus from Tab, until it comes round.
    std::vector<HWND> Stops(bool backwards = false) {
        std::vector<HWND> stops;
        const auto go = [&](HWND from) {
            if (const HWND next = GetNextDlgTabItem(Parent().Window(), from, backwards && from)) SetFocus(next);
            return GetFocus();
        };
        for (HWND at = go(nullptr); IsChild(Parent().Window(), at); at = go(at)) {
            if (std::find(stops.begin(), stops.end(), at) != stops.end()) break;
            stops.push_back(at);
        }
        if (backwards && !stops.empty()) std::reverse(stops.begin() + 1, stops.end());
        return stops;
    }
    // Where a row's arrows lead from here.
    void Walk(HWND from, std::set<HWND>& reached) {
        for (const WORD key : std::initializer_list<WORD>{VK_RIGHT, VK_DOWN, VK_LEFT, VK_UP}) {
            if (IsWindow(from)) SetFocus(from);
            for (HWND at = GetFocus(), before = nullptr; at != before && at; before = at, at = GetFocus()) {
                reached.insert(at);
                if (Key(key); reached.contains(GetFocus())) break;
            }
        }
    }
    // Whether the user can do something with the window by itself.
    bool IsPart(HWND window) {
        const LRESULT code = SendMessageW(window, WM_GETDLGCODE, 0, 0);
        const std::string name = NameOfWindow(window);
        // The head of a list and its scroll bar are the list's.
        return IsWindowVisible(window) && IsWindowEnabled(window) && code != 0 && !(code & DLGC_STATIC) &&
               !name.starts_with("SysHeader32") && !name.starts_with("ScrollBar") && !name.starts_with("ComboLBox");
    }
    std::optional<DialogKeys> keys_;

    // Whether the host hears of it, or something else is to be seen.
    bool Does(const std::function<void()>& act) {
        Parent().Record().Clear();
        const Picture before = SeenPicture(Parent().Window());
        bool heard = false;
        Control().told = [&](const std::string&) { heard = true; };
        act();
        Control().told = nullptr;
        return heard || !Control().Window() || !(SeenPicture(Parent().Window()) == before);
    }
};

TEST_P(KeysLaw, TabAndArrowsComeToEachPart) {
    BeginByKeys();
    for (const bool again : {false, true}) {
        if (again && !Control().Rebuild()) break;
        Pump();
        const std::vector<HWND> stops = Stops();
        Expect(Stops(true) == stops, again ? "made anew" : "Shift+Tab", "does not come back the same way");
        std::set<HWND> reached(stops.begin(), stops.end());
        for (const HWND each : stops)
            if (IsWindow(each)) Walk(each, reached);
        for (const Target& each : Control().Windows()) {
            if (!IsPart(each.window) || IsExcepted(NameOfWindow(each.window))) continue;
            const bool isReached = std::any_of(reached.begin(), reached.end(),
                                               [&](HWND at) { return at == each.window || IsChild(each.window, at); });
            Expect(isReached, NameOfWindow(each.window),
                   again ? "no key comes to it when made anew" : "no key comes to it");
        }
    }
}

TEST_P(KeysLaw, NoKeyIsDead) {
    BeginByKeys();
    const std::size_t count = Stops().size();
    for (std::size_t i = 0; i < count; ++i) {
        BeginByKeys();
        const std::vector<HWND> stops = Stops();
        if (i >= stops.size()) break;
        const HWND stop = stops[i];
        const std::string name = NameOfWindow(stop) + " in " + NameOfWindow(GetParent(stop));
        if (IsExcepted(name) || !IsPart(stop)) continue;
        const LRESULT code = SendMessageW(stop, WM_GETDLGCODE, 0, 0);
        const auto press = [&](WORD key, UINT modifiers = 0) {
            return Does([&] {
                SetFocus(stop);
                Key(key, modifiers);
            });
        };
        SetFocus(stop);
        if (code & DLGC_HASSETSEL) {
            const bool isReadOnly = (GetWindowLongW(stop, GWL_STYLE) & ES_READONLY) != 0;
            Expect(isReadOnly || press('5') || press('1'), name, "typing does nothing");
        } else if (code & (DLGC_BUTTON | DLGC_RADIOBUTTON)) {
            Expect(press(VK_SPACE) || press(VK_RIGHT), name, "Space does nothing");
        } else {
            Expect(press(VK_DOWN) || press(VK_RIGHT) || press(VK_UP) || press(VK_LEFT), name, "no arrow does anything");
        }
    }
}

// Wherever the right button has one.
TEST_P(KeysLaw, AMenuOpensByItsKeys) {
    BeginByKeys();
    bool opened = false;
    const auto opens = [&](const std::function<void()>& act) {
        opened = false;
        Control().told = [&](const std::string& what) { opened |= what == "a menu"; };
        act();
        Control().told = nullptr;
        return opened;
    };
    for (const HWND stop : Stops()) {
        if (!IsWindow(stop) || !IsWindowVisible(stop)) continue;
        const std::string name = NameOfWindow(stop);
        RECT client{};
        GetClientRect(stop, &client);
        if (!opens([&] { Click(stop, client.right / 2, client.bottom / 2, Button::Right); }) || IsExcepted(name)) {
            Expect(true, name, "");
            continue;
        }
        for (const auto& [key, modifiers] : {std::pair<WORD, UINT>(VK_APPS, 0), {VK_F10, MOD_SHIFT}}) {
            SetFocus(stop);
            Expect(opens([&, key = key, modifiers = modifiers] { Key(key, modifiers); }), name,
                   modifiers ? "Shift+F10 opens no menu" : "the menu key opens no menu");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, KeysLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
