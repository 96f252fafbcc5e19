// Disabled, every part looks so and nothing that the user does reaches the host; enabled again it is as before.
#include <subjects/law.h>

#include <set>

namespace kx::test {
namespace {

struct DisabledLaw : LawOf<Law::Disabled> {
    Picture Look() {
        SetFocus(Parent().Window());
        MoveAway(Parent().Window());
        Pump();
        return Picture::OnScreen(Parent().Window());
    }
    RECT InParent(HWND window, RECT part) {
        MapWindowPoints(window, Parent().Window(), reinterpret_cast<POINT*>(&part), 2);
        return part;
    }
    // What the windows around it leave of it.
    RECT Seen(HWND window) {
        RECT seen{}, around{};
        if (!IsWindowVisible(window)) return seen;
        GetClientRect(window, &seen);
        seen = InParent(window, seen);
        while ((window = GetAncestor(window, GA_PARENT)) != nullptr && window != Parent().Window()) {
            GetClientRect(window, &around);
            around = InParent(window, around);
            IntersectRect(&seen, &seen, &around);
        }
        return seen;
    }
    // What can be seen and used: windows without others in them, and the parts that the subject names.
    std::vector<std::pair<std::string, RECT>> Parts() {
        std::vector<std::pair<std::string, RECT>> parts;
        const std::vector<RECT> own = Control().Parts();
        for (std::size_t i = 0; i < own.size(); ++i)
            parts.emplace_back("part " + std::to_string(i), InParent(Control().Window(), own[i]));
        for (const Target& each : Control().Windows()) {
            const RECT seen = Seen(each.window);
            if (IsRectEmpty(&seen) || !IsWindowEnabled(each.window) || GetWindow(each.window, GW_CHILD)) continue;
            if (each.window != Control().Window() || own.empty()) parts.emplace_back(NameOfWindow(each.window), seen);
        }
        return parts;
    }
};

TEST_P(DisabledLaw, EveryPartLooksSo) {
    for (const State& state : States()) {
        Begin({state.scheme, state.zoom, true});
        const Picture before = Look();
        const auto parts = Parts();
        // As the host asks for it, or as a container does it.
        const bool byWindow = !state.enabled && !IsExcepted("by its window");
        const auto enable = [&](bool on) {
            byWindow ? void(EnableWindow(Control().Window(), on)) : Control().Enable(on);
        };
        enable(false);
        const Picture disabled = Look();
        for (const auto& [name, place] : parts) {
            if (IsExcepted(name)) continue;
            const Picture part = before.Part(place);
            // A part of it alone that is grey is not enough. Elsewhere images and frames have the colours of texts.
            const bool isOwn = state.scheme == eKxColorScheme_Light || state.scheme == eKxColorScheme_Dark;
            if (isOwn && !name.starts_with("part")) {
                const int left = disabled.Part(place).Count(KX_GetSysColor(COLOR_BTNTEXT));
                Expect(left == 0, name + ", " + TextOf(state), std::to_string(left) + " pixels are of text to be used");
            }
            Expect(part.Width() > 0 && part.Differences(disabled.Part(place)) > 0, name + ", " + TextOf(state),
                   "disabled, it looks as if it were enabled");
        }
        enable(true);
        const Picture after = Look();
        const int left = before.Differences(after);
        if (left) before.Save("enabled-before"), after.Save("enabled-after");
        Expect(left == 0, TextOf(state), "enabled again, " + std::to_string(left) + " pixels differ from before");
    }
}

TEST_P(DisabledLaw, NoActReachesTheHost) {
    Begin();
    Control().Enable(false);
    const Picture before = Look();
    const auto windows = Control().Windows();
    for (const Target& each : windows) {
        if (IsExcepted(NameOfWindow(each.window))) continue;
        for (const Act& act : ActsAt(each.window)) {
            if (IsExcepted(act.name)) continue;
            doing_ = act.name;
            act.run();
            ExpectUnheard(act.name);
        }
    }
    const int changed = before.Differences(Look());
    Expect(changed == 0, "after everything", std::to_string(changed) + " pixels differ from before");
}

// Whatever the host does meanwhile, but for what the rules leave enabled.
TEST_P(DisabledLaw, StaysSo) {
    Begin();
    const auto usable = [this] {
        std::set<std::string> names;
        for (const Target& each : Control().Windows())
            if (IsWindowEnabled(each.window)) names.insert(NameOfWindow(each.window));
        return names;
    };
    ForEachOperation([&](const Operation& operation, Random& random) {
        Control().Enable(false);
        const auto left = usable();
        if (!IsExcepted(operation.name)) operation.run(random);
        if (!Control().Window()) return;
        for (const std::string& name : usable())
            Expect(left.contains(name), operation.name, name + " can be used in a control that is disabled");
        Expect(true, "", "");
    });
}

INSTANTIATE_TEST_SUITE_P(All, DisabledLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
