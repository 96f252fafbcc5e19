// The life of a request is drawn over what a control of a device holds: each state looks different, and at rest all is
// as it was. Other controls know of none. The same holds for what its device reports.
#include <subjects/law.h>

#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_readings.h>

namespace kx::test {
namespace {

struct LifeLaw : LawTest {
    LifeLaw() : LawTest({}) {}
};

std::vector<State> Looks() {
    std::vector<State> looks;
    for (const EKxColorScheme scheme : {eKxColorScheme_Light, eKxColorScheme_Dark})
        for (const double zoom : {1.0, 1.5, 2.0})
            looks.push_back({scheme, zoom, true});
    return looks;
}

TEST_P(LifeLaw, EachStateIsSeen) {
    static constexpr const char* names[] = {"rest", "asked", "moving", "unknown", "failed", "refused", "locked"};
    for (const State& state : Looks()) {
        Begin(state);
        const HWND control = Control().Window();
        if (!KX_TellActivity(control, KxActivity{}))
            return Expect(KX_GetActivity(control) == KxActivity{}, "", "it has one");
        std::vector<Picture> seen{Picture::OnScreen(control)};
        seen.back().Save(GetParam().name + ", " + TextOf(state) + ", rest");
        for (const auto each : {EKxActivity::Asked, EKxActivity::Moving, EKxActivity::Unknown, EKxActivity::Failed,
                                EKxActivity::Locked}) {
            KX_TellActivity(control, {each, 1, L"No answer"});
            seen.push_back(Picture::OnScreen(control));
            const std::string name = names[static_cast<int>(each)];
            seen.back().Save(GetParam().name + ", " + TextOf(state) + ", " + name);
            // Where a target has no place of its own, to move looks as to be asked.
            for (std::size_t i = 0; i + 1 < seen.size(); ++i)
                Expect((each == EKxActivity::Moving && i == 1) || seen[i] != seen.back(), TextOf(state),
                       name + " looks like another state");
        }
        KX_TellActivity(control, KxActivity{});
        Expect(Picture::OnScreen(control) == seen.front(), TextOf(state), "at rest it looks otherwise than before");
    }
}

TEST_P(LifeLaw, EachReadingIsSeen) {
    for (const State& state : Looks()) {
        Begin(state);
        const HWND control = Control().Window();
        const Picture rest = Picture::OnScreen(control);
        // A control may name itself a light.
        const EKxLight own = KX_GetLight(control);
        const KxMeasured measured = KX_GetMeasured(control);
        const auto look = [&](bool told, const char* name) {
            const Picture seen = Picture::OnScreen(control);
            if (told) seen.Save(GetParam().name + ", " + TextOf(state) + ", " + name);
            Expect(told || seen == rest, TextOf(state), "is told of nothing and shows it");
            return seen;
        };
        const Picture off = look(KX_TellLight(control, EKxLight::Off), "off");
        const Picture on = look(KX_TellLight(control, EKxLight::On), "on");
        // A rainbow is no lamp.
        const bool same = (on == off) == (on == rest) && (on == off) == (off == rest);
        Expect(own == EKxLight::None ? same : on != off, TextOf(state), "on looks like off");
        KX_TellLight(control, own);
        const bool told = KX_TellMeasured(control, {.asked = 50, .measured = 80});
        Expect(told == (look(told, "measured") != rest), TextOf(state), "what was measured is not seen");
        KX_TellMeasured(control, measured);
        Expect(Picture::OnScreen(control) == rest, TextOf(state), "untold it looks otherwise than before");
    }
}

INSTANTIATE_TEST_SUITE_P(All, LifeLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
