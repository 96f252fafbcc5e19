// Made at a zoom or brought there, the same pixels; there and back, the first pixels.
#include <subjects/law.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

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

struct ZoomLaw : LawOf<Law::Zoom> {
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

// All that is drawn grows with the zoom: at 200 % the picture, made half as large, is the one at 100 %, but for what
// letters and lines lose on the way.
constexpr int block = 8;  // pixels at 100 %

using Mean = std::array<int, 3>;

Mean MeanOf(const Picture& picture, int left, int top, int size) {
    Mean sum{};
    for (int y = top; y < top + size; ++y) {
        for (int x = left; x < left + size; ++x) {
            const COLORREF color = picture.Pixel(x, y);
            sum[0] += GetRValue(color), sum[1] += GetGValue(color), sum[2] += GetBValue(color);
        }
    }
    for (int& each : sum)
        each /= size * size;
    return sum;
}

// Letters are left out: no font is twice as wide at twice its size.
int WINAPI Draw(HDC dc, LPCWSTR text, int length, LPRECT rect, UINT format) {
    return DrawTextW(dc, text, length, rect, format | DT_CALCRECT);
}
BOOL WINAPI Out(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR, UINT, const INT*) {
    return ExtTextOutW(dc, x, y, options, rect, L"", 0, nullptr);
}

struct GrowLaw : LawOf<Law::Zoom> {
    Picture At(double zoom) {
        Begin({eKxColorScheme_Light, zoom, true});
        // The room for twice the widest subject.
        SetWindowPos(Parent().Window(), nullptr, 0, 0, 1280, 1024, SWP_NOZORDER | SWP_NOACTIVATE);
        MoveAway(Parent().Window());
        std::vector<std::unique_ptr<Import>> wordless;
        for (const wchar_t* module : {L"kxdevui.dll", L"kxbaseui.dll", L"comctl32.dll"}) {
            wordless.push_back(std::make_unique<Import>(module, &DrawTextW, &Draw));
            wordless.push_back(std::make_unique<Import>(module, &ExtTextOutW, &Out));
        }
        // Their height comes with their letters.
        for (const Target& each : Control().Windows())
            for (const char* name : {"ComboBox ", "Edit "})
                if (NameOfWindow(each.window).starts_with(name)) ShowWindow(each.window, SW_HIDE);
        RedrawWindow(Control().Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        Pump();
        return Picture::OnScreen(Control().Window());
    }
};

TEST_P(GrowLaw, LeavesNoPartBehind) {
    const Picture small = At(1), large = At(2);
    int worst = 0;
    POINT where{};
    for (int y = 0; y + block <= std::min(small.Height(), large.Height() / 2); y += block / 2) {
        for (int x = 0; x + block <= std::min(small.Width(), large.Width() / 2); x += block / 2) {
            const Mean one = MeanOf(small, x, y, block), two = MeanOf(large, 2 * x, 2 * y, 2 * block);
            for (std::size_t i = 0; i < one.size(); ++i)
                if (std::abs(one[i] - two[i]) > worst) worst = std::abs(one[i] - two[i]), where = {x, y};
        }
    }
    small.Save("grow-1"), large.Save("grow-2");
    Expect(worst <= Control().Coarseness(), "at " + std::to_string(where.x) + ", " + std::to_string(where.y),
           "a block differs by " + std::to_string(worst));
}

INSTANTIATE_TEST_SUITE_P(All, ZoomLaw, testing::ValuesIn(Kinds()), NameOfKind);
INSTANTIATE_TEST_SUITE_P(All, GrowLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
