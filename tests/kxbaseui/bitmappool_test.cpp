// The bitmap pool: what it keeps, what it refuses, and the images that the resource module carries.
#include <bench/bench.h>
#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/framework/ui_gdi.h>

#include <algorithm>

namespace {

using namespace kx::test;
using Pool = CKxBitmapPool;

CKxStringA Square(const std::string& color) {
    return CKxStringA("<svg viewBox='0 0 10 10'><rect width='10' height='10' fill='" + color + "'/></svg>");
}

// An empty pool and a white board to draw on.
struct BitmapPool : testing::Test {
    static constexpr RECT c_all{0, 0, 30, 20};

    BitmapPool() {
        SelectObject(Dc(), m_bitmap.get());
        Blank();
        Pool::Clear();
    }
    HDC Dc() const { return m_dc.get(); }
    void Blank() { PatBlt(Dc(), 0, 0, c_all.right, c_all.bottom, WHITENESS); }
    bool Draw(const CKxStringA& svg, const RECT& place = c_all, bool enabled = true) {
        return Pool::DrawSVGImage(Dc(), svg, place, enabled);
    }
    COLORREF At(int x, int y) const { return GetPixel(Dc(), x, y); }
    std::vector<COLORREF> Pixels() const {
        std::vector<COLORREF> pixels;
        for (int i = 0; i < c_all.right * c_all.bottom; ++i)
            pixels.push_back(At(i % c_all.right, i / c_all.right));
        return pixels;
    }

    kx::ui::Bitmap m_bitmap{CreateBitmap(c_all.right, c_all.bottom, 1, 32, nullptr)};
    kx::ui::MemoryDC m_dc{CreateCompatibleDC(nullptr)};
};

TEST_F(BitmapPool, RasterizesOncePerImageSizeAndColors) {
    auto known = Pool::GetFigures().rasterized;
    const auto rasterized = [&](bool drawn) {
        EXPECT_TRUE(drawn);
        const auto before = std::exchange(known, Pool::GetFigures().rasterized);
        return known - before;
    };
    const int gear = Pool::AddImageBaseUI(L"WINDOWOPEN");
    const auto drawGear = [&](int x, bool enabled) {
        return Pool::DrawOptimalImage(Dc(), gear, {x, 0, x + 16, 16}, enabled);
    };
    EXPECT_EQ(rasterized(drawGear(0, true)), 1U);
    EXPECT_EQ(rasterized(drawGear(10, true)), 0U);
    EXPECT_EQ(rasterized(drawGear(0, false)), 1U);
    KX_SetColorScheme(eKxColorScheme_Dark);
    EXPECT_EQ(rasterized(drawGear(0, true)), 1U) << "it has the scheme's colour";
    KX_SetColorScheme(eKxColorScheme_System);
    EXPECT_EQ(rasterized(drawGear(0, true)), 0U);
    EXPECT_EQ(rasterized(Draw(Square("red")) && Draw(Square("red"))), 1U);
    EXPECT_EQ(rasterized(Draw(Square("blue"))), 1U);
    EXPECT_EQ(rasterized(!Draw("<svg>") && !Draw("<svg>")), 1U) << "a malformed text is not read twice either";
}

// A letter that the first family lacks is the second's; one that no font has is no box.
TEST_F(BitmapPool, LooksForLettersInOtherFonts) {
    const auto drawn = [this](const char* families, const char* letter) {
        Blank();
        EXPECT_TRUE(Draw(std::string("<svg viewBox='0 0 30 20'><text x='2' y='16' font-size='16' font-family='") +
                         families + "'>" + letter + "</text></svg>"));
        return Pixels();
    };
    const auto blank = drawn("Tahoma", " ");
    EXPECT_NE(drawn("Tahoma", "A"), blank);
    EXPECT_EQ(drawn("Tahoma", "&#xE123;"), blank);
    EXPECT_EQ(drawn("Liberation Sans, IPAGothic", "&#x9855;"), drawn("IPAGothic", "&#x9855;"));
}

TEST_F(BitmapPool, KeepsWithinItsBounds) {
    const CKxStringA red = Square("red"), blue = Square("blue");
    for (int i = 1; i <= 3 * Pool::MaxImages; ++i) {
        ASSERT_TRUE(Draw(red, {0, 0, 1 + i % 600, 1 + i / 600}));
        // What is drawn all the time stays.
        ASSERT_TRUE(Draw(blue, {0, 0, 4, 4}));
        ASSERT_LE(Pool::GetFigures().images, static_cast<std::size_t>(Pool::MaxImages));
    }
    const auto before = Pool::GetFigures().rasterized;
    ASSERT_TRUE(Draw(blue, {0, 0, 4, 4}));
    EXPECT_EQ(Pool::GetFigures().rasterized, before);
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(Draw(red, {0, 0, 1024, 1024 - i}));
        ASSERT_LE(Pool::GetFigures().bytes, Pool::MaxBytes);
    }
    Pool::Clear();
    EXPECT_EQ(Pool::GetFigures().images + Pool::GetFigures().bytes, 0U);
}

TEST_F(BitmapPool, RefusesWhatCannotBeDrawn) {
    const auto blank = Pixels();
    constexpr LONG end = 0x7FFFFFFF;
    for (const RECT& place : {RECT{0, 0, 0, 9}, {0, 0, 9, 0}, {9, 0, 0, 9}, {0, 0, 1025, 9}, {-end, 0, end, 9}})
        EXPECT_FALSE(Draw(Square("red"), place));
    EXPECT_FALSE(Pool::DrawSVGImage(nullptr, Square("red"), c_all));
    for (const char* svg : {"", "<svg", "<svg><path d='M'/></svg>", "\xFF"})
        EXPECT_FALSE(Draw(svg));
    for (const wchar_t* name : std::vector<const wchar_t*>{L"", L"NOSUCHIMAGE", nullptr, MAKEINTRESOURCEW(3)}) {
        CKxStringA svg("kept");
        EXPECT_EQ(Pool::AddImageBaseUI(name), Pool::NoImage);
        EXPECT_FALSE(Pool::LoadSVGBaseUI(name, svg));
        EXPECT_TRUE(svg == "kept");
    }
    for (const int image : {-1, 0, 9999, 0x7FFFFFFF})
        EXPECT_FALSE(Pool::DrawOptimalImage(Dc(), image, c_all));
    EXPECT_EQ(Pixels(), blank);
}

TEST_F(BitmapPool, DrawsOverWhatIsThere) {
    ASSERT_TRUE(Draw(Square("#2040C0")));
    EXPECT_EQ(At(15, 10), RGB(0x20, 0x40, 0xC0));
    EXPECT_EQ(At(4, 10), RGB(255, 255, 255)) << "beside the square, in the middle of its place";
    ASSERT_TRUE(Draw(Square("#FF000080")));
    EXPECT_NEAR(GetRValue(At(15, 10)), 0x90, 1);
    Blank();
    ASSERT_TRUE(Draw(Square("red"), c_all, false));
    const COLORREF grey = At(15, 10);
    EXPECT_TRUE(GetRValue(grey) == GetBValue(grey) && GetRValue(grey) > 100 && GetRValue(grey) < 220);
}

TEST_F(BitmapPool, ReplacesImagesByName) {
    const int gear = Pool::AddImageBaseUI(L"WindowOpen");
    EXPECT_EQ(gear, Pool::AddImageBaseUI(L"WINDOWOPEN"));
    const CKxStringA blue = Square("#2040C0");
    Pool::ReplaceImage(L"windowopen", blue);
    EXPECT_TRUE(Pool::DrawOptimalImage(Dc(), gear, c_all));
    EXPECT_EQ(At(15, 10), RGB(0x20, 0x40, 0xC0));
    CKxStringA svg;
    EXPECT_TRUE(Pool::LoadSVGBaseUI(L"WINDOWOPEN", svg) && svg == blue);
    Pool::ReplaceImage(L"windowopen", "");
    EXPECT_TRUE(Pool::LoadSVGBaseUI(L"WINDOWOPEN", svg) && !(svg == blue));
    Pool::ReplaceImage(L"of the host", blue);
    const int own = Pool::AddImageBaseUI(L"of the host");
    EXPECT_NE(own, Pool::NoImage);
    Pool::ReplaceImage(L"of the host", "");
    EXPECT_FALSE(Pool::DrawOptimalImage(Dc(), own, c_all));
}

TEST(SvgString, ReplacesEveryOccurrence) {
    const auto replaced = [](const std::string& text, const char* what, const char* with) {
        CKxStringA svg(text);
        const int count = CKxSvgStringAPI::ReplaceString(svg, what, with);
        return std::to_string(count) + " " + svg.str();
    };
    EXPECT_EQ(replaced("#FFE600 #FFE600 #ffe600", "#FFE600", "#545454"), "2 #545454 #545454 #ffe600");
    EXPECT_EQ(replaced("aaaaa", "aa", "a"), "2 aaa");
    EXPECT_EQ(replaced("aaa", "a", nullptr), "3 ");
    EXPECT_EQ(replaced("aaa", "", "b"), "0 aaa");
    const std::string large(CKxSvgStringAPI::MaxLength / 2, 'a');
    EXPECT_TRUE(replaced(large, "a", "bbb") == "0 " + large);
    CKxStringA own("ab");
    EXPECT_EQ(CKxSvgStringAPI::ReplaceString(own, own.c_str() + 1, own.c_str()), 1);
    EXPECT_TRUE(own == "aab");
}

// What panels put colours and numbers into takes them all; each image shows enough.
TEST_F(BitmapPool, CarriesEveryImage) {
    const auto carries = [&](const std::wstring& name, const std::vector<const char*>& placeholders) {
        CKxStringA svg;
        EXPECT_TRUE(Pool::LoadSVGBaseUI(name.c_str(), svg)) << Narrow(name);
        for (const char* each : placeholders)
            EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, each, *each == '#' ? "#9A3301" : "16</text>"), 1)
                << Narrow(name) << each;
        for (const char* each : {"#FFE600", "X</text>", "#00FF0"})
            EXPECT_EQ(svg.str().find(each), std::string::npos) << Narrow(name) << each;
        Blank();
        Draw(svg, {0, 0, 16, 16});
        const auto pixels = Pixels();
        const auto isInk = [](COLORREF pixel) { return GetGValue(pixel) < 0xE0; };
        EXPECT_GT(std::count_if(pixels.begin(), pixels.end(), isInk), 40) << Narrow(name);
    };
    for (const wchar_t* name : {L"IDS_NOSEPIECE_0", L"IDS_NOSEPIECE_1"})
        carries(name, {"#FFE600", "X</text>"});
    for (const wchar_t* name :
         {L"SHUTTER_OPEN", L"SHUTTER_CLOSED", L"LIGHTPATH", L"WINDOWOPEN", L"WINDOWOPEN_HOVER", L"PNG_ZSTACK_GOHOME",
          L"PNG_ZSTACK_GOHOMEKEEPZ", L"FILTER_EMPTY", L"FILTER_EMPTY_SQUARE"})
        carries(name, {});
    std::vector<const char*> bands;
    for (const char* band : {"#00FF01", "#00FF02", "#00FF03", "#00FF04", "#00FF05"}) {
        bands.push_back(band);
        for (const std::wstring shape : {L"BAND", L"BAND_SQUARE"})
            carries(L"FILTER_" + std::to_wstring(bands.size()) + shape, bands);
    }
}

}  // namespace
