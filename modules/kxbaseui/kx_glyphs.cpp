#include <kxbaseui/kx_glyphs.h>

#include <kxbaseui/kx_svgvalues.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace kx::svg {

namespace {

// Pixels in which outlines are asked for: large enough that their whole-pixel hints do not matter.
constexpr int c_size = 1024;
// No letter of a common font comes near it.
constexpr DWORD c_largestOutline = 1 << 20;

// Asked for a letter that the families of a drawing have not: together they have those of most scripts, and symbols.
constexpr std::string_view c_last = "sans-serif,Segoe UI,Segoe UI Symbol,MS UI Gothic,Arial Unicode MS";

// A family by its name for the platform.
void FaceName(std::string_view family, wchar_t (&face)[LF_FACESIZE]) {
    family = Trim(family);
    if (family.size() > 1 && (family.front() == '"' || family.front() == '\''))
        family = family.substr(1, family.size() - 2);
    static constexpr std::pair<std::string_view, std::string_view> c_generic[] = {{"", "MS Shell Dlg 2"},
                                                                                  {"sans-serif", "MS Shell Dlg 2"},
                                                                                  {"serif", "Times New Roman"},
                                                                                  {"monospace", "Courier New"}};
    for (const auto& [name, meaning] : c_generic)
        if (EqualsIgnoringCase(family, name)) family = meaning;
    const int length = MultiByteToWideChar(
        CP_UTF8, 0, family.data(), static_cast<int>(std::min<std::size_t>(family.size(), 31)), face, LF_FACESIZE - 1);
    face[length] = L'\0';
}

// Calls `choose` for one family of a list after the other, until it is content.
template <class Choose>
bool ForEachFamily(std::string_view families, const Choose& choose) {
    for (;;) {
        const auto end = std::min(families.find(','), families.size());
        if (choose(families.substr(0, end))) return true;
        if (end == families.size()) return false;
        families.remove_prefix(end + 1);
    }
}

Point ToPoint(const POINTFX& point) {
    const auto value = [](const FIXED& fixed) { return (fixed.value + fixed.fract / 65536.0) / c_size; };
    return {value(point.x), -value(point.y)};
}

// The contours as GetGlyphOutline writes them: headers, each followed by its curves.
void ReadContour(const unsigned char* data, std::size_t size, Path& outline) {
    TTPOLYGONHEADER header;
    std::memcpy(&header, data, sizeof header);
    outline.Move(ToPoint(header.pfxStart));
    constexpr std::size_t head = offsetof(TTPOLYCURVE, apfx);
    for (std::size_t at = sizeof header; at + head <= size;) {
        TTPOLYCURVE curve;
        std::memcpy(&curve, data + at, head);
        std::vector<POINTFX> fixed(curve.cpfx);
        if (curve.cpfx == 0 || at + head + curve.cpfx * sizeof(POINTFX) > size) break;
        std::memcpy(fixed.data(), data + at + head, curve.cpfx * sizeof(POINTFX));
        at += head + curve.cpfx * sizeof(POINTFX);
        std::vector<Point> points(fixed.size());
        std::transform(fixed.begin(), fixed.end(), points.begin(), ToPoint);
        if (curve.wType == TT_PRIM_LINE) {
            for (const Point point : points)
                outline.Line(point);
        } else if (curve.wType == TT_PRIM_QSPLINE) {
            // All but the last are control points; between two of them, the curve passes through their middle.
            for (std::size_t i = 0; i + 1 < points.size(); ++i)
                outline.Quadratic(points[i],
                                  i + 2 == points.size() ? points[i + 1] : (points[i] + points[i + 1]) * 0.5);
        } else {
            for (std::size_t i = 0; i + 2 < points.size(); i += 3)
                outline.Cubic(points[i], points[i + 1], points[i + 2]);
        }
    }
    outline.Close();
}

}  // namespace

bool GdiGlyphs::Choose(const Font& font) {
    if (m_handle && m_font.family == font.family && m_font.bold == font.bold && m_font.italic == font.italic)
        return true;
    if (!m_dc) m_dc.reset(CreateCompatibleDC(nullptr));
    LOGFONTW description{};
    description.lfHeight = -c_size;
    description.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = font.italic;
    description.lfCharSet = DEFAULT_CHARSET;
    // Bitmap fonts have no outlines.
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    FaceName(font.family, description.lfFaceName);
    std::unique_ptr<std::remove_pointer_t<HFONT>, ObjectDeleter> handle(CreateFontIndirectW(&description));
    if (!m_dc || !handle || !SelectObject(m_dc.get(), handle.get())) return false;
    m_handle = std::move(handle);
    m_font = font;
    return true;
}

// The platform draws a box for a letter that a font lacks, and takes none from another font for outlines.
bool GdiGlyphs::ChooseFor(const Font& font, char32_t character) {
    const auto hasLetter = [&](std::string_view family) {
        const auto letter = static_cast<wchar_t>(character);
        WORD glyph = 0xFFFF;
        return Choose({std::string(family), font.bold, font.italic}) &&
               GetGlyphIndicesW(m_dc.get(), &letter, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS) == 1 && glyph != 0xFFFF;
    };
    return ForEachFamily(font.family, hasLetter) || ForEachFamily(c_last, hasLetter);
}

bool GdiGlyphs::Outline(const Font& font, char32_t character, Path& outline, double& advance) {
    // The platform's function takes one UTF-16 unit.
    if (character > 0xFFFF || !ChooseFor(font, character)) return false;
    static constexpr MAT2 c_identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS metrics{};
    const auto ask = [&](DWORD size, void* buffer) {
        return GetGlyphOutlineW(m_dc.get(), character, GGO_NATIVE | GGO_UNHINTED, &metrics, size, buffer, &c_identity);
    };
    const DWORD size = ask(0, nullptr);
    if (size == GDI_ERROR || size > c_largestOutline) return false;
    advance = static_cast<double>(metrics.gmCellIncX) / c_size;
    m_buffer.resize(size);
    if (size == 0 || ask(size, m_buffer.data()) != size) return size == 0;
    for (std::size_t at = 0; at + sizeof(TTPOLYGONHEADER) <= size;) {
        DWORD contour = 0;
        std::memcpy(&contour, m_buffer.data() + at + offsetof(TTPOLYGONHEADER, cb), sizeof contour);
        if (contour < sizeof(TTPOLYGONHEADER) || contour > size - at) break;
        ReadContour(m_buffer.data() + at, contour, outline);
        at += contour;
    }
    return true;
}

}  // namespace kx::svg
