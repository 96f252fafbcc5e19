// Made at a zoom or brought there, the same pixels; there and back, the first pixels.
#include <subjects/law.h>

#include <sstream>

#include <kxbaseui/kx_layoutmanager.h>
#include <subjects/redraw.h>

namespace kx::test {
namespace {

// Where everything stands, and in which size of type; then what it looks like.
struct Look {
    std::string places;
    Picture picture;

    explicit Look(Subject& subject) : picture(SeenPicture(subject.Window())) {
        std::ostringstream out;
        for (const Target& each : TreeOf(subject.Window())) {
            if (!IsWindowVisible(each.window)) continue;
            LOGFONTW font{};
            const auto handle = reinterpret_cast<HFONT>(SendMessageW(each.window, WM_GETFONT, 0, 0));
            if (handle) GetObjectW(handle, sizeof(font), &font);
            const std::string place = PlaceOf(each.window);
            // Of the control itself the size alone: where it stands is the parent's.
            const bool inside = each.window != subject.Window();
            out << "\n  " << NameOfWindow(each.window) << ": "
                << (inside ? place : place.substr(place.find(' ', place.find(' ') + 1))) << ", type " << font.lfHeight;
        }
        places = out.str();
    }

    std::string Against(const Look& other) const {
        if (places != other.places)
            return "windows stand there, and elsewhere otherwise:" + places + "\n" + other.places;
        const int differences = picture.Differences(other.picture);
        if (differences == 0) return {};
        static int number = 0;
        const std::string name = "zoom-" + std::to_string(++number);
        picture.Save(name + "-a"), other.picture.Save(name + "-b");
        return std::to_string(differences) + " pixels differ (" + name + ")";
    }
};

class ZoomLaw : public LawTest {
protected:
    ZoomLaw() : LawTest({Law::Zoom}) {}

    // To another zoom. What the platform's own window cannot do by itself, who holds it does for it.
    void Zoom(double zoom) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        if (IsExcepted("by itself"))
            CKxGUILayoutManager::ResizeWindowToGuiZoom(Control().Window(), CKxGUILayoutManager::GetPreviousGuiZoom());
    }

    // What the control looks like after each operation, one after the other, at 1.5: brought there each time, or
    // staying there. Operations that place unzoomed by rule are left out.
    std::vector<Look> AfterOperations(bool brought) {
        std::vector<Look> looks;
        Begin({eKxColorScheme_System, brought ? 1.0 : 1.5, true});
        ForEachOperation([&](const Operation& operation, Random& random) {
            if (!IsExcepted(operation.name)) operation.run(random);
            SetFocus(Parent().Window());
            if (!Ready()) return;
            if (brought) Zoom(1.5);
            looks.emplace_back(Control());
            if (brought) Zoom(1.0);
        });
        return looks;
    }
};

TEST_P(ZoomLaw, HoldsForWhatIsMade) {
    for (const bool enabled : {true, false}) {
        for (const double zoom : {1.5, 2.0}) {
            Begin({eKxColorScheme_System, zoom, enabled});
            const Look made(Control());
            Zoom(1.0);
            const Look back(Control());
            Begin({eKxColorScheme_System, 1, enabled});
            const Look first(Control());
            Zoom(zoom);
            const std::string at = "at zoom " + std::to_string(zoom) + (enabled ? "" : ", disabled");
            ExpectNothing(Look(Control()).Against(made), "brought there instead of made " + at);
            Zoom(1.0);
            ExpectNothing(Look(Control()).Against(first), "there and back " + at);
            ExpectNothing(back.Against(first), "made and brought back from " + at);
            // The pictures were not of one and the same thing.
            Expect(made.places != first.places, at, "everything is as large as without zoom");
        }
    }
}

TEST_P(ZoomLaw, HoldsForOperations) {
    const std::vector<Look> brought = AfterOperations(true), stayed = AfterOperations(false);
    ASSERT_EQ(brought.size(), stayed.size());
    for (std::size_t i = 0; i < brought.size(); ++i) {
        const Operation& operation = Control().Operations()[i % Control().Operations().size()];
        const std::string wrong = brought[i].Against(stayed[i]);
        ExpectNothing(wrong, operation.name + ", time " + std::to_string(i) + ", before the zoom and not after it");
        if (!wrong.empty()) break;  // and everything after it
    }
}

INSTANTIATE_TEST_SUITE_P(All, ZoomLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
