#include <kxdevui/optics/devgui_nosepiece.h>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/optics/nosepiece_window.h>
#include <kxsystem/kx_number.h>

using namespace kx::nosepiece;
using namespace kx::ui;

namespace {

// The ring of an objective by its magnification, both ends included, first match. What is in none of the ranges is
// shown without a ring.
constexpr char kTemplateRing[] = "#FFE600";
struct Ring {
    double from;
    double to;
    const char* color;
};
constexpr Ring kRings[] = {
    {100, 250, "#EEEEEE"},    // white
    {60, 63, "#3F77EB"},      // dark blue
    {40, 50, "#77E0FF"},      // light blue
    {25, 32, "#5EFFB7"},      // turquoise
    {16, 20, "#8CEA6B"},      // green
    {10, 10, kTemplateRing},  // yellow
    {4, 5, "#FF2020"},        // red
    {2, 2.5, "#9A3301"},      // brown
};
constexpr char kGreyRing[] = "#545454";  // between 0 and 2, both left out

const char* RingOf(double magnification) {
    for (const Ring& ring : kRings) {
        if (magnification >= ring.from && magnification <= ring.to) return ring.color;
    }
    return magnification > 0 && magnification < 2 ? kGreyRing : nullptr;
}

}  // namespace

// The pairs count only when both of them are there, the motor only beside a whole pair.
void CKxDevUI_Nosepiece::Inside::LoadImages() {
    const auto load = [](const wchar_t* name, CKxStringA& svg) {
        svg.Empty();
        return CKxBitmapPool::LoadSVGBaseUI(name, svg);
    };
    const bool empty = load(L"IDS_NOSEPIECE_0_EMPTY", emptyImages[0]) && load(L"IDS_NOSEPIECE_1_EMPTY", emptyImages[1]);
    if (!empty) emptyImages = {};
    const bool rings = load(L"IDS_NOSEPIECE_0", ringImages[0]) && load(L"IDS_NOSEPIECE_1", ringImages[1]);
    if (!rings) ringImages = {};
    if (!rings || !load(L"IDS_NOSEPIECE_MOTOR", motorImage)) motorImage.Empty();
}

CKxStringA CKxDevUI_Nosepiece::GetObjectiveBitmap(double magnification, bool selected) const {
    return m_inside->ObjectiveOf(magnification, selected);
}

CKxStringA CKxDevUI_Nosepiece::Inside::ObjectiveOf(double magnification, bool selected) const {
    const std::size_t look = selected ? 1 : 0;
    const char* ring = RingOf(magnification);
    if (!ring) return emptyImages[look];
    CKxStringA svg = ringImages[look];
    CKxSvgStringAPI::ReplaceString(svg, kTemplateRing, ring);
    return svg;
}

CKxStringA CKxDevUI_Nosepiece::Inside::ImageOf(long position) {
    const Held& held = *At(position);
    const double magnification = KX_LeadingNumber(held.magnification);
    CKxStringA svg = held.reachable ? ObjectiveOf(magnification, IsMarked(position)) : motorImage;
    CKxStringA number;
    number.Format(32, "%d</text>", held.number.value_or(static_cast<int>(position) + 1));
    CKxSvgStringAPI::ReplaceString(svg, "X</text>", number);
    return svg;
}

void CKxDevUI_Nosepiece::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID >= UINT{kFirstObservation}) return OnDrawItem_Observation(item);
    if (item.CtlID == UINT{kSetupId}) return m_inside->DrawSetup(item);
    const long position = static_cast<long>(item.CtlID) - kFirstButton;
    if (!m_inside->At(position)) return;
    PaintItem(item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        RECT place = area;
        // Where the device decides, a press promises nothing.
        const bool answers = m_inside->localSelect || !m_inside->deviceDriven;
        if (answers && m_inside->enabled && m_inside->IsEnabled())
            KX_DrawFlatButtonBackground(dc, area, ButtonLook(item), COLOR_BTNFACE);
        if (item.itemState & ODS_SELECTED && answers) OffsetRect(&place, 1, 1);
        CKxBitmapPool::DrawSVGImage(dc, m_inside->ImageOf(position), place, m_inside->enabled && m_inside->IsEnabled());
        m_inside->DrawOver(dc, area, item, position, m_inside->enabled && m_inside->IsEnabled());
    });
}

void CKxDevUI_Nosepiece::OnDrawItem_Observation(const DRAWITEMSTRUCT& item) {
    const bool current = static_cast<int>(item.CtlID) - kFirstObservation == m_inside->observationMode;
    const HBRUSH face = KX_GetSysColorBrush(current ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    PaintItem(item, face, [&](HDC dc, const RECT& area) {
        const Selection font(dc, m_inside->LabelFont(current));
        const Selection pen(dc, m_inside->framePen.get());
        const Selection brush(dc, GetStockObject(NULL_BRUSH));
        Rectangle(dc, area.left, area.top, area.right, area.bottom);
        wchar_t text[256] = L"";
        const int length = GetWindowTextW(item.hwndItem, text, 256);
        RECT inner = area;
        InflateRect(&inner, -2, 0);
        if (item.itemState & ODS_SELECTED) OffsetRect(&inner, 1, 1);
        SetBkMode(dc, TRANSPARENT);
        const int color = current ? COLOR_HIGHLIGHTTEXT : m_inside->IsEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT;
        SetTextColor(dc, KX_GetSysColor(color));
        DrawTextW(dc, text, length, &inner, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        PositionPanel::DrawFocus(dc, area, item, current ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    });
}
