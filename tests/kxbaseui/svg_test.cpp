// The renderer of images: areas known in closed form, what of XML and SVG is taken and what refused.
#include <bench/bench.h>
#include <kxbaseui/kx_path.h>
#include <kxbaseui/kx_svg.h>
#include <kxbaseui/kx_xml.h>

#include <cmath>
#include <numbers>

namespace {

using namespace kx::svg;
using namespace std::string_literals;

constexpr double c_pi = std::numbers::pi;

// The covered area in pixels.
double Area(const Image& image) {
    double area = 0;
    for (const std::uint32_t pixel : image.pixels)
        area += (pixel >> 24) / 255.0;
    return area;
}

std::string Repeat(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string Svg(const std::string& content, const std::string& attributes = "viewBox='0 0 100 100'") {
    return "<svg xmlns='http://www.w3.org/2000/svg' " + attributes + ">" + content + "</svg>";
}

Image Draw(const std::string& svg, int width = 100, int height = 100, GlyphSource* glyphs = nullptr) {
    Image image;
    EXPECT_TRUE(Render(svg, width, height, {1, 2, 3, 1}, glyphs, image)) << svg;
    return image;
}

std::uint32_t At(const Image& image, int x, int y) {
    return image.pixels.at(static_cast<std::size_t>(y * image.width + x));
}

// ---- XML -----------------------------------------------------------------------------------------------------------

TEST(Xml, TakesWhatIsWellFormedAndNothingElse) {
    // clang-format off
    const std::string taken[] = {
        "<a/>", "<a>&lt;&amp;&#65;&#x1F600;<![CDATA[<&]]></a>", "<\xC3\xA4-1.x:y/>",
        "\xEF\xBB\xBF<?xml version='1.0'?><!-- - --><!DOCTYPE a SYSTEM \"x\"> <a b=\"1\" c = '2' >x<!----></a > "
        "<!--e-->", "<!DOCTYPE a [<!ENTITY b 'c'><!ELEMENT a ANY> <!-- > --><!ENTITY % d \"'\"><!ENTITY e SYSTEM 'f'>]><a b='&b;'/>",
        Repeat("<a>", 64) + Repeat("</a>", 64), "<a>" + Repeat("<b/>", 19'999) + "</a>",
    };
    const std::string refused[] = {
        "", "a", "<a>", "<a></b>", "<a/><b/>", "<a/>x", "<1/>", "<a b=1/>", "<a b='1'c='2'/>", "<a b='1' b='2'/>",
        "<a b='<'/>", "<a b='1/>", "<a>&nbsp;</a>", "<a>& </a>", "<a>&#0;</a>", "<a>&#xD800;</a>",
        "<a>&#99999999999;</a>", "<a>]]></a>", "<a>\x01</a>", "<a>\xC0\x80</a>",
        "<a>\xED\xA0\x80</a>", "<a><!-- -- --></a>", "<a><![CDATA[</a>",
        "<!DOCTYPE a [<!ENTITY b '<c/>'>]><a>&b;</a>", "<!DOCTYPE a [<!ENTITY e SYSTEM 'f'>]><a>&e;</a>", "<!DOCTYPE a [<!ENTITY b 'c'>",
        "<!DOCTYPE a [<!ENTITY b '" + std::string(60'000, 'c') + "'>]><a>" + Repeat("&b;", 18) + "</a>", "<a b='" + std::string(XmlLimits::Bytes, 'x') + "'/>",
        Repeat("<a>", 65) + Repeat("</a>", 65), "<a>" + Repeat("<b/>", 20'000) + "</a>",
    };
    // clang-format on
    for (const std::string& text : taken)
        EXPECT_TRUE(ReadXml(text)) << text.substr(0, 80);
    for (const std::string& text : refused)
        EXPECT_FALSE(ReadXml(text)) << text.substr(0, 80);
    EXPECT_EQ(ReadXml("<!DOCTYPE a [<!ENTITY b 'x'><!ENTITY b 'y'><!ENTITY c '&b;&#65;&b;'>]><a>&c;</a>")
                  ->children.at(0)
                  .text,
              "xAx");
    EXPECT_EQ(ReadXml("<a>&lt;<!--x-->&#xE4;<![CDATA[&lt;]]></a>")->children.at(0).text, "<\xC3\xA4&lt;");
}

// ---- SVG -----------------------------------------------------------------------------------------------------------

TEST(Svg, ShapesCoverTheirAreas) {
    const std::string line = "<line x1='20' y1='20' x2='50' y2='60' stroke='red' stroke-width='6' ";
    const std::string corner = "<polyline points='20 80,20 20 80,20' fill='none' style='stroke:red;stroke-width:10' ";
    const struct {
        std::string content;
        double area;
    } table[] = {
        {"<rect x='10.5' y='10.25' width='20' height='30'/>", 600},
        {"<rect x='10' y='10' width='40' height='30' rx='10'/>", 1200 - (4 - c_pi) * 100},
        {"<ellipse cx='50%' cy='50' rx='40' ry='5mm' transform='rotate(30 50 50)'/>", c_pi * 40 * 5 * 96 / 25.4},
        {"<circle cx='50' cy='50' r='30' fill='none' stroke='red' stroke-width='8'/>", c_pi * (34 * 34 - 26 * 26)},
        // A stroke wider than its circle has no hole.
        {"<circle cx='50' cy='50' r='5' fill='none' stroke='red' stroke-width='30'/>", c_pi * 400},
        {line + "stroke-linecap='square'/>", 336},
        {line + "style='stroke-linecap:round'/>", 300 + 9 * c_pi},
        {corner + "stroke-linejoin='round'/>", 1175 + 25 * c_pi / 4},
        // A curve that turns back is round there.
        {"<path d='M10 50C77 50 77 50 10 50' fill='none' stroke='red' stroke-width='10'/>", 502.5 + 12.5 * c_pi},
        // The end of a curve is as steep as the curve.
        {"<clipPath id='c'><rect y='51' width='99' height='50'/></clipPath><path d='M20 50A30 30 0 0 1 80 50' "
         "fill='none' "
         "stroke='red' stroke-width='40' clip-path='url(#c)'/>",
         0},
        {line + "stroke-dasharray='10 5'/>", 210},
        {line + "stroke-dasharray='10,5 10' stroke-dashoffset='5'/>", 150},
        {line + "stroke-dasharray='0'/>", 300},
        {line + "stroke-dasharray='5 -1'/>", 300},
        // A dash goes on around a closed line's first corner.
        {"<rect x='20' y='20' width='40' height='40' fill='none' stroke='red' stroke-width='10' stroke-dasharray='20' "
         "stroke-dashoffset='10'/>",
         4 * 200},
        {"<clipPath id='c'><circle cx='50' cy='50' r='20' fill='none'/></clipPath><rect width='99' height='99' "
         "clip-path='url(#c)'/>",
         400 * c_pi},
        {"<clipPath id='c' clipPathUnits='objectBoundingBox'><rect width='.5' height='1'/></clipPath>"
         "<rect x='10' width='40' height='30' style='clip-path:url(#c)'/>",
         600},
        {"<mask id='m'><rect width='40' height='40' fill='white'/><rect width='20' height='40' fill='black'/></mask>"
         "<g mask='url(#m)'><rect width='99' height='30'/></g>",
         600},
        {"<switch><foreignObject/><rect width='9' height='9' requiredExtensions='x'/><rect width='8' height='8'/><rect "
         "width='50' "
         "height='50'/></switch>",
         64},
        {"<filter id='f'><feGaussianBlur stdDeviation='2'/></filter><rect width='9' height='9' filter='url(#f)'/>", 0},
        {"<filter id='f'><feGaussianBlur stdDeviation='2'/><feBlend in='SourceGraphic'/></filter><rect width='9' "
         "height='9' "
         "filter='url(#f)'/>",
         81},
        {"<path style='font-size:medium;stroke-width:thick;stroke-miterlimit:x' d='M0 0h9v9h-9z'/>", 81},
        {"<path d='M50 50z' stroke='red' stroke-width='20' stroke-linecap='round'/>", 100 * c_pi},
        {"<path d='M10 10h80v80h-80zm20 20v40h40v-40z'/>", 4800},
        {"<path d='m10 10 80 0 0 80-80 0zm20 20 40 0 0 40-40 0z' fill-rule='evenodd'/>", 4800},
        {"<path d='M10 50a40,40,0,1180,0z'/>", c_pi * 800},
        // Radii too short for the chord are lengthened.
        {"<path d='M10 50A1 1 0 0 1 90 50z'/>", c_pi * 800},
        {"<path d='M50 10A40 40 0 1 0 90 50L50 50z'/>", c_pi * 1200},
        // Under a parabola, two thirds; T goes on below the line by as much.
        {"<path d='M10 50Q30 10 50 50T90 50z'/>", 2 * 2 / 3.0 * 40 * 20},
        {"<path d='M10 50C10 20 50 20 50 50S90 80 90 50z'/>", 2 * 720},
        {"<g transform='translate(10,10) scale(2)'><rect width='10' height='10' transform='skewX(45)'/></g>", 400},
        {"<defs><rect id='r' width='9' height='9'/></defs><use href='#r' x='5'/><use xlink:href='#r' y='50'/>", 162},
        {"<symbol id='s' viewBox='0 0 1 1'><rect width='1' height='1'/></symbol><use href='#s' width='9' height='8'/>",
         64},
        {"<g opacity='.5'><rect width='20' height='20'/><rect x='10' width='20' height='20'/></g>", 600 * 128 / 255.0},
        {"<rect width='20' height='20' fill='none'/><rect width='9' height='9' display='none'/>"
         "<rect width='9' height='9' visibility='hidden'/><rect width='0' height='9'/><unknown><rect width='9' "
         "height='9'/></unknown><x:rect width='9' height='9'/>",
         0},
    };
    for (const auto& row : table) {
        const double area = Area(Draw(Svg(row.content), 200, 200)) / 4;
        EXPECT_NEAR(area, row.area, 0.0015 * row.area + 1e-3) << row.content;
    }
}

TEST(Svg, ColorsAreTrue) {
    const struct {
        const char* fill;
        std::uint32_t pixel;
    } table[] = {
        // clang-format off
        {"#123456", 0xFF123456}, {"#1af", 0xFF11AAFF}, {"#FFE600", 0xFFFFE600}, {"#ff000080", 0x80800000},
        {"#f008", 0x88880000}, {"rgb(1, 20,255)", 0xFF0114FF}, {"rgb(100% 0% 20% / 50%)", 0x8080001A},
        {"rgba(255,0,0,.5)", 0x80800000}, {"RebeccaPurple", 0xFF663399}, {"currentColor", 0xFF010203},
        {"transparent", 0}, {"none", 0}, {"url(#missing) lime", 0xFF00FF00},
        // What is not understood counts as not given, and black is inherited.
        {"#12345", 0xFF000000}, {"rgb(1,2)", 0xFF000000}, {"nocolor", 0xFF000000},
        // Half of red over blue.
        {"blue'/><rect width='99' height='99' fill-opacity='50%' fill='red", 0xFF80007F},
        // clang-format on
    };
    for (const auto& row : table) {
        const Image image = Draw(Svg("<rect width='99' height='99' fill='" + std::string(row.fill) + "'/>"), 9, 9);
        EXPECT_EQ(At(image, 4, 4), row.pixel) << row.fill;
    }
}

TEST(Svg, SheetsGoByWhatIsSpecificAndThenByOrder) {
    const struct {
        const char *sheet, *attributes;
        std::uint32_t pixel;
    } table[] = {
        // clang-format off
        {"rect{fill:red}", "fill='lime'", 0xFFFF0000}, {"rect{fill:red}", "style='fill:lime'", 0xFF00FF00},
        {"rect{fill:red!important}", "style='fill:lime'", 0xFFFF0000}, {"#a{fill:red} .b{fill:lime} rect{fill:blue}", "", 0xFFFF0000},
        {".b{fill:lime} rect{fill:blue} *{fill:red}", "", 0xFF00FF00}, {".b{fill:lime} .c{fill:blue}", "", 0xFF0000FF},
        {".c{fill:lime} .b{fill:blue}", "", 0xFF0000FF}, {".b.c{fill:lime} .b{fill:blue}", "", 0xFF00FF00},
        {"g, .x ,rect.b#a{fill:lime}", "", 0xFF00FF00}, {"circle{fill:red} .bc{fill:red} rect.x{fill:red} #A{fill:red}", "", 0xFF000000},
        {"g rect{fill:red} rect:hover{fill:red} rect[x]{fill:red} a>rect{fill:red}", "", 0xFF000000},
        {"/*{*/@import 'x'; @media print{rect{fill:red}} rect{stroke:none;fill:lime", "", 0xFF00FF00},
        {"<![CDATA[<!-- rect{fill:red;fill:lime} -->]]>", "", 0xFF00FF00}, {".b{color:#123456} #a{fill:currentColor}", "", 0xFF123456},
        {"</style><style type='text/css'>rect{fill:lime}</style><style type='text/x'>rect{fill:red}", "", 0xFF00FF00},
        // clang-format on
    };
    for (const auto& row : table) {
        const std::string rect = "<rect id='a' class=' b c' width='99' height='99' "s + row.attributes + "/>";
        EXPECT_EQ(At(Draw(Svg(rect + "<style>" + row.sheet + "</style>"), 9, 9), 4, 4), row.pixel) << row.sheet;
    }
}

TEST(Svg, TellsWhatIsLeftOut) {
    Image image;
    std::vector<std::string> leftOut{"before"};
    const std::string shadow = "<rect width='9' height='9' filter='url(#f)' fill='url(#p)'/>";
    ASSERT_TRUE(
        Render(Svg("<filter id='f'/><pattern id='p'/><image/>" + shadow + shadow), 9, 9, {}, nullptr, image, &leftOut));
    EXPECT_EQ(leftOut, (std::vector<std::string>{"image", "filter", "pattern"}));
}

TEST(Svg, GradientsRunFromStopToStop) {
    const auto gradient = [](const std::string& kind, const std::string& attributes) {
        return "<" + kind + "Gradient id='g'" + attributes +
               "><stop stop-color='black'/><stop offset='1' style='stop-color:white'/></" + kind + "Gradient>";
    };
    const auto linear = [&](const std::string& attributes) { return gradient("linear", attributes); };
    const auto radial = [&](const std::string& attributes) { return gradient("radial", attributes); };
    const struct {
        std::string gradient;
        int x, y, level;
    } table[] = {
        // clang-format off
        {linear(""), 0, 50, 1}, {linear(""), 75, 3, 193}, {linear(" x2='0' y2='1'"), 3, 75, 193},
        {linear(" gradientUnits='userSpaceOnUse' x1='20' x2='40' spreadMethod='reflect'"), 45, 0, 185},
        {linear(" x2='.5' spreadMethod='repeat'"), 75, 0, 130},
        {linear(" gradientTransform='rotate(90)' href='#h'/><linearGradient id='h'"), 3, 75, 193},
        {radial(""), 50, 50, 4}, {radial(""), 75, 50, 130}, {radial(""), 1, 1, 255}, {radial(" fx='0.25'"), 25, 50, 5},
        {"<linearGradient id='g' href='#g'/>", 50, 50, 0},  // no stops, nothing is painted
        // clang-format on
    };
    for (const auto& row : table) {
        const Image image = Draw(Svg(row.gradient + "<rect width='100' height='100' fill='url(#g)'/>"));
        EXPECT_NEAR(static_cast<int>(At(image, row.x, row.y) >> 16 & 0xFF), row.level, 3) << row.gradient << row.x;
    }
}

TEST(Svg, FitsItsBoxIntoTheImage) {
    const std::string square = "<rect width='10' height='10'/>";
    const struct {
        const char* attributes;
        int left, top, right, bottom;  // of the image of 40 x 20
    } table[] = {
        {"viewBox='0 0 10 10' preserveAspectRatio='xMinYMid meet'", 0, 0, 20, 20},
        {"viewBox='0 0 10 10' preserveAspectRatio='xMaxYMin'", 20, 0, 40, 20},
        {"viewBox='0 0 10 10' preserveAspectRatio='none'", 0, 0, 40, 20},
        {"viewBox='0 0 20 20' preserveAspectRatio='xMidYMax slice'", 0, 0, 20, 0},
        {"viewBox='-10 0 20 10'", 20, 0, 40, 20},
        {"", 0, 0, 10, 10},
    };
    for (const auto& row : table) {
        const Image image = Draw(Svg(square, row.attributes), 40, 20);
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(At(image, x, y) != 0, x >= row.left && x < row.right && y >= row.top && y < row.bottom)
                    << row.attributes << " at " << x << ", " << y;
    }
}

// Every letter is a square of 0.5, standing on the line, 0.6 wide.
struct Squares : GlyphSource {
    bool Outline(const Font&, char32_t character, Path& outline, double& advance) override {
        if (character != U' ') outline.Rectangle(0, -0.5, 0.5, 0.5, 0, 0);
        advance = 0.6;
        return true;
    }
};

TEST(Svg, PlacesText) {
    const struct {
        const char* text;
        int x, y;  // the upper left pixel of a letter of 10 x 10
    } table[] = {
        {"<text x='30' y='60' font-size='20' text-anchor='middle'> X\n </text>", 24, 50},
        {"<text x='42' y='60' style='font-size:20px;text-anchor:end'>X</text>", 30, 50},
        {"<text y='60' font-size='20' dx='3'>&#32;A B</text>", 3, 50},
        {"<text y='60' font-size='20' dx='3'>&#32;A B</text>", 27, 50},
        {"<text x='5' y='30' font-size='20'>A<tspan x='50' dy='40'>B</tspan></text>", 50, 60},
        {"<text x='5' y='30' font-size='20'>A<tspan>B</tspan>C</text>", 29, 20},
    };
    Squares squares;
    for (const auto& row : table) {
        const Image image = Draw(Svg(row.text), 100, 100, &squares);
        EXPECT_TRUE(At(image, row.x, row.y) && At(image, row.x + 9, row.y + 9)) << row.text;
        EXPECT_FALSE(At(image, row.x - 1, row.y) || At(image, row.x, row.y + 10)) << row.text;
    }
    EXPECT_EQ(Area(Draw(Svg(table[0].text))), 0) << "without a source of glyphs";
}

TEST(Svg, MalformedDrawsNothing) {
    const auto refuses = [](const std::string& text) {
        Image image{3, 3, std::vector<std::uint32_t>(9)};
        EXPECT_FALSE(Render(text, 1024, 1024, {}, nullptr, image)) << text.substr(0, 200);
        EXPECT_TRUE(image.pixels.empty());
    };
    std::string doubling = "<rect id='a0' width='9' height='9'/>";
    for (int i = 1; i < 30; ++i) {
        const std::string use = "<use href='#a" + std::to_string(i - 1) + "'/>";
        doubling += "<g id='a" + std::to_string(i) + "'>" + use + use + "</g>";
    }
    refuses(Svg(doubling));
    refuses(
        Svg("<clipPath id='c'><rect clip-path='url(#c)'/></clipPath><rect width='9' height='9' clip-path='url(#c)'/>"));
    refuses(Svg("<path d='M0 0H9999999' stroke='red' stroke-dasharray='.01'/>"));
    refuses(Svg("<style>" + Repeat("*{fill:red}", 2001) + "</style>"));
    refuses(Svg("<style>*{fill:" + std::string(9000, 'x') + "}</style>" + Repeat("<g/>", 500)));
    const std::string whole = "<rect width='100' height='100'/>";
    refuses(Svg(Repeat("<g opacity='.9'>" + whole, 62) + Repeat("</g>", 62) + Repeat(whole, 500)));
    for (const std::string& text :
         {"<svg"s, "<html/>"s, Svg(whole, "viewBox='0 0 0 9'"), Svg(whole, "viewBox='0 0 9'")})
        refuses(text);
    for (const char* d : {"M1 1 L", "L1 1", "M1 1z2", "M1 1A1 1 0 2 0 3 3", "M1 1X", "M1 1e99"})
        refuses(Svg(whole + "<path d='" + d + "'/>"));
    refuses(Svg(whole + "<path d='M0 0" + Repeat("1 1 ", 20'001) + "'/>"));
    for (const char* faulty : {"<polygon points='1 2 3'/>", "<rect width='9furlong' height='1'/>",
                               "<rect width='nan' height='inf'/>", "<g transform='scale(2'/>",
                               "<g transform='turn(2)'/>", "<use id='u' href='#u'/>", "<g id='u'><use href='#u'/></g>"})
        refuses(Svg(whole + faulty));
    Image image;
    for (const auto& [width, height] : {std::pair{0, 9}, {9, 0}, {-1, 9}, {1025, 9}, {9, 1'000'000}})
        EXPECT_FALSE(Render(Svg(whole), width, height, {}, nullptr, image));
}

}  // namespace
