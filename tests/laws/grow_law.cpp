// All that is drawn grows with the zoom: at 200 % the picture, made half as large, is the one at 100 %, but for what
// letters and lines lose on the way.
#include <subjects/law.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include <bench/imports.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <subjects/redraw.h>

namespace kx::test {
namespace {

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

class GrowLaw : public LawTest {
protected:
    GrowLaw() : LawTest({Law::Zoom}) {}
    ~GrowLaw() override { CKxGUILayoutManager::SetGuiZoom(1.0); }
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
            for (std::size_t i = 0; i < one.size(); ++i) {
                if (std::abs(one[i] - two[i]) > worst) worst = std::abs(one[i] - two[i]), where = {x, y};
            }
        }
    }
    small.Save("grow-1"), large.Save("grow-2");
    Expect(worst <= Control().Coarseness(), "at " + std::to_string(where.x) + ", " + std::to_string(where.y),
           "a block differs by " + std::to_string(worst));
}

INSTANTIATE_TEST_SUITE_P(All, GrowLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
