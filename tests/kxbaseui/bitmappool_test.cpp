// The bitmap pool: what it keeps, what it refuses, and the images that the resource module carries.
#include <bench/bench.h>
#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_svgstring.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace kx::test;
using Pool = CKxBitmapPool;

// Pixels to draw on.
class Board {
public:
    Board(int width, int height) : m_width(width), m_height(height) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        m_previous = SelectObject(m_dc, m_bitmap);
        PatBlt(m_dc, 0, 0, width, height, WHITENESS);
    }
    ~Board() {
        SelectObject(m_dc, m_previous);
        DeleteDC(m_dc);
        DeleteObject(m_bitmap);
    }
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    HDC Dc() const { return m_dc; }
    RECT All() const { return {0, 0, m_width, m_height}; }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    std::vector<std::uint32_t> Pixels() const {
        GdiFlush();
        const auto* const bits = static_cast<const std::uint32_t*>(m_bits);
        return {bits, bits + m_width * m_height};
    }

private:
    int m_width, m_height;
    void* m_bits = nullptr;
    HDC m_dc = CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap;
    HGDIOBJ m_previous;
};

CKxStringA Square(const char* color) {
    CKxStringA svg("<svg viewBox='0 0 10 10'><rect width='10' height='10' fill='#FFE600'/></svg>");
    EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, "#FFE600", color), 1);
    return svg;
}

class BitmapPool : public testing::Test {
protected:
    void SetUp() override { Pool::Clear(); }
};

TEST_F(BitmapPool, RasterizesOncePerImageSizeAndColors) {
    const Board board(40, 40);
    const auto rasterizedBy = [](auto body) {
        const auto before = Pool::GetFigures().rasterized;
        EXPECT_TRUE(body());
        return Pool::GetFigures().rasterized - before;
    };
    const int gear = Pool::AddImageBaseUI(L"WINDOWOPEN");
    const CKxStringA red = Square("red");
    const auto drawGear = [&](int x, bool enabled = true) {
        return rasterizedBy([&] { return Pool::DrawOptimalImage(board.Dc(), gear, {x, 0, x + 16, 16}, enabled); });
    };
    EXPECT_EQ(drawGear(0), 1U);
    EXPECT_EQ(drawGear(20), 0U);
    EXPECT_EQ(drawGear(0, false), 1U);
    KX_SetColorScheme(eKxColorScheme_Dark);
    EXPECT_EQ(drawGear(0), 1U) << "it has the scheme's colour";
    KX_SetColorScheme(eKxColorScheme_System);
    EXPECT_EQ(drawGear(0), 0U);
    for (const unsigned expected : {1U, 0U})
        EXPECT_EQ(rasterizedBy([&] { return Pool::DrawSVGImage(board.Dc(), red, board.All()); }), expected);
    EXPECT_EQ(rasterizedBy([&] { return Pool::DrawSVGImage(board.Dc(), Square("blue"), board.All()); }), 1U);
    // A malformed text is not read twice either.
    for (const unsigned expected : {1U, 0U}) {
        EXPECT_EQ(rasterizedBy([&] { return !Pool::DrawSVGImage(board.Dc(), "<svg>", board.All()); }), expected);
    }
}

TEST_F(BitmapPool, KeepsWithinItsBounds) {
    const Board board(4, 4);
    const CKxStringA red = Square("red");
    for (int i = 1; i <= 3 * Pool::MaxImages; ++i) {
        ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), red, {0, 0, 1 + i % 600, 1 + i / 600}));
        // What is drawn all the time stays.
        ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), Square("blue"), board.All()));
        ASSERT_LE(Pool::GetFigures().images, static_cast<std::size_t>(Pool::MaxImages));
    }
    const auto before = Pool::GetFigures().rasterized;
    ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), Square("blue"), board.All()));
    EXPECT_EQ(Pool::GetFigures().rasterized, before);
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), red, {0, 0, 1024, 1024 - i}));
        ASSERT_LE(Pool::GetFigures().bytes, Pool::MaxBytes);
    }
    Pool::Clear();
    EXPECT_EQ(Pool::GetFigures().images + Pool::GetFigures().bytes, 0U);
}

TEST_F(BitmapPool, RefusesWhatCannotBeDrawn) {
    const Board board(20, 20);
    const std::vector<std::uint32_t> blank = board.Pixels();
    const CKxStringA red = Square("red");
    constexpr LONG end = 0x7FFFFFFF;
    const RECT places[] = {{0, 0, 0, 9}, {0, 0, 9, 0}, {9, 0, 0, 9}, {0, 0, 1025, 9}, {-end, 0, end, 9}};
    for (const RECT& place : places)
        EXPECT_FALSE(Pool::DrawSVGImage(board.Dc(), red, place));
    EXPECT_FALSE(Pool::DrawSVGImage(nullptr, red, board.All()));
    for (const char* svg : {"", "<svg", "<svg><path d='M'/></svg>", "\xFF"})
        EXPECT_FALSE(Pool::DrawSVGImage(board.Dc(), svg, board.All()));
    const wchar_t* const names[] = {L"", L"NOSUCHIMAGE", nullptr, MAKEINTRESOURCEW(3)};
    for (const wchar_t* name : names) {
        CKxStringA svg("kept");
        EXPECT_EQ(Pool::AddImageBaseUI(name), Pool::NoImage);
        EXPECT_FALSE(Pool::LoadSVGBaseUI(name, svg));
        EXPECT_TRUE(svg == "kept");
    }
    for (const int image : {-1, 0, 9999, 0x7FFFFFFF})
        EXPECT_FALSE(Pool::DrawOptimalImage(board.Dc(), image, board.All()));
    EXPECT_EQ(board.Pixels(), blank);
}

TEST_F(BitmapPool, DrawsOverWhatIsThere) {
    const Board board(30, 20);
    ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), Square("#2040C0"), board.All()));
    EXPECT_EQ(board.At(15, 10), RGB(0x20, 0x40, 0xC0));
    EXPECT_EQ(board.At(4, 10), RGB(255, 255, 255)) << "beside the square, in the middle of its place";
    ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), Square("#FF000080"), board.All()));
    EXPECT_NEAR(GetRValue(board.At(15, 10)), 0x90, 1);
    const Board pale(10, 10);
    ASSERT_TRUE(Pool::DrawSVGImage(pale.Dc(), Square("red"), pale.All(), false));
    const COLORREF grey = pale.At(5, 5);
    EXPECT_TRUE(GetRValue(grey) == GetBValue(grey) && GetRValue(grey) > 100 && GetRValue(grey) < 220);
}

TEST_F(BitmapPool, ReplacesImagesByName) {
    const Board board(10, 10);
    const int gear = Pool::AddImageBaseUI(L"WindowOpen");
    EXPECT_EQ(gear, Pool::AddImageBaseUI(L"WINDOWOPEN"));
    Pool::ReplaceImage(L"windowopen", Square("#2040C0"));
    ASSERT_TRUE(Pool::DrawOptimalImage(board.Dc(), gear, board.All()));
    EXPECT_EQ(board.At(5, 5), RGB(0x20, 0x40, 0xC0));
    CKxStringA svg;
    EXPECT_TRUE(Pool::LoadSVGBaseUI(L"WINDOWOPEN", svg) && svg == Square("#2040C0"));
    Pool::ReplaceImage(L"windowopen", "");
    EXPECT_TRUE(Pool::LoadSVGBaseUI(L"WINDOWOPEN", svg));
    EXPECT_FALSE(svg == Square("#2040C0"));
    Pool::ReplaceImage(L"of the host", Square("red"));
    const int own = Pool::AddImageBaseUI(L"of the host");
    EXPECT_NE(own, Pool::NoImage);
    Pool::ReplaceImage(L"of the host", "");
    EXPECT_FALSE(Pool::DrawOptimalImage(board.Dc(), own, board.All()));
}

TEST_F(BitmapPool, HoldsNoMoreAndMoreObjects) {
    const Board board(24, 24);
    CKxStringA svg;
    ASSERT_TRUE(Pool::LoadSVGBaseUI(L"IDS_NOSEPIECE_0", svg));
    // A round begins and ends with an empty cache, or how much it holds would depend on when the count was taken.
    EXPECT_TRUE(NoGrowth(100, [&] {
        for (int side = 8; side < 18; ++side) Pool::DrawSVGImage(board.Dc(), svg, {0, 0, side, side});
        Pool::Clear();
    }));
}

TEST(SvgString, ReplacesEveryOccurrence) {
    const std::string large(CKxSvgStringAPI::MaxLength / 2, 'a');
    const struct {
        std::string text;
        const char *what, *with;
        int count;
        std::string result;
    } table[] = {
        {"#FFE600 #FFE600 #ffe600", "#FFE600", "#545454", 2, "#545454 #545454 #ffe600"},
        {"<text>X</text>", "X</text>", "16</text>", 1, "<text>16</text>"},
        {"aaa", "a", "aa", 3, "aaaaaa"},
        {"aaaaa", "aa", "", 2, "a"},
        {"aaa", "a", nullptr, 3, ""},
        {"aaa", "", "b", 0, "aaa"},
        {large, "a", "bbb", 0, large},
    };
    for (const auto& row : table) {
        CKxStringA svg(row.text);
        EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, row.what, row.with), row.count) << row.text.substr(0, 40);
        EXPECT_TRUE(svg.str() == row.result) << row.text.substr(0, 40);
    }
    CKxStringA own("ab");
    EXPECT_EQ(CKxSvgStringAPI::ReplaceString(own, own.c_str() + 1, own.c_str()), 1);
    EXPECT_TRUE(own == "aab");
}

// ---- The images ----------------------------------------------------------------------------------------------------

constexpr const wchar_t* c_nosepiece[] = {L"IDS_NOSEPIECE_0", L"IDS_NOSEPIECE_1", L"IDS_NOSEPIECE_0_EMPTY",
                                          L"IDS_NOSEPIECE_1_EMPTY", L"IDS_NOSEPIECE_MOTOR"};
constexpr const wchar_t* c_others[] = {
    L"SHUTTER_OPEN",      L"SHUTTER_CLOSED",        L"LIGHTPATH", L"WINDOWOPEN", L"WINDOWOPEN_HOVER",
    L"PNG_ZSTACK_GOHOME", L"PNG_ZSTACK_GOHOMEKEEPZ"};
constexpr const char* c_bands[] = {"#3A6BFF", "#2BC84A", "#F2D21B", "#F2711B", "#C81E2B"};
constexpr const char* c_rings[] = {"#545454", "#9A3301", "#FF2020"};

// What a panel would draw: the colours and the number put in. Empty if something to be replaced is missing.
std::vector<CKxStringA> FinishedImages() {
    std::vector<CKxStringA> images;
    const auto load = [](const wchar_t* name) {
        CKxStringA svg;
        EXPECT_TRUE(Pool::LoadSVGBaseUI(name, svg)) << CKxStringA(std::string(name, name + std::wcslen(name))).c_str();
        return svg;
    };
    int position = 0;
    for (const wchar_t* name : c_nosepiece) {
        const bool colored = name == c_nosepiece[0] || name == c_nosepiece[1];
        for (const char* ring : c_rings) {
            CKxStringA svg = load(name);
            EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, "#FFE600", ring), colored ? 1 : 0);
            CKxStringA number;
            number.Format(20, "%d</text>", ++position % 16 + 1);
            EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, "X</text>", number), 1);
            images.push_back(svg);
            if (!colored) break;
        }
    }
    for (int i = 0; i < 12; ++i) {
        const int bands = i / 2;
        const std::wstring stem = L"FILTER_" + (bands ? std::to_wstring(bands) + L"BAND" : L"EMPTY");
        CKxStringA svg = load((stem + (i % 2 ? L"_SQUARE" : L"")).c_str());
        for (int k = bands; k >= 1; --k) {
            const std::string placeholder = "#00FF0" + std::to_string(k);
            EXPECT_EQ(CKxSvgStringAPI::ReplaceString(svg, placeholder.c_str(), c_bands[k - 1]), 1);
        }
        images.push_back(svg);
    }
    for (const wchar_t* name : c_others)
        images.push_back(load(name));
    return images;
}

TEST_F(BitmapPool, CarriesEveryImageInEverySize) {
    const std::vector<CKxStringA> images = FinishedImages();
    // Neither template shows less than the others, and no two are alike.
    std::vector<std::vector<std::uint32_t>> seen;
    for (const CKxStringA& svg : images) {
        const Board board(16, 16);
        ASSERT_TRUE(Pool::DrawSVGImage(board.Dc(), svg, board.All()));
        const auto pixels = board.Pixels();
        const auto inked =
            std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t p) { return (p >> 8 & 0xFF) < 0xE0; });
        EXPECT_GT(inked, 40) << svg.c_str();
        EXPECT_EQ(std::count(seen.begin(), seen.end(), pixels), 0) << svg.c_str();
        seen.push_back(pixels);
    }
}

}  // namespace
