#include "field_panel.h"

#include <algorithm>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/framework/devgui_activity.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../pages/page.h"
#include "../resources/resource.h"

namespace {

const OnPage<FieldPanel> s_field(L"Illumination", {268, 128});

constexpr int kRefuse = 1720, kOpening = 1721;
constexpr double kLeast = 5, kMost = 100;  // percent

// A diaphragm with an opening of this radius, of 10.
CKxStringA Diaphragm(const char* radius) {
    CKxStringA svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">"
                     "<circle cx=\"12\" cy=\"12\" r=\"10\" fill=\"none\" stroke=\"currentColor\" stroke-width=\"2\"/>"
                     "<circle cx=\"12\" cy=\"12\" r=\"RADIUS\" fill=\"#F5A800\"/></svg>";
    CKxSvgStringAPI::ReplaceString(svg, "RADIUS", radius);
    return svg;
}

}  // namespace

void FieldPanel::Fill() {
    AddCaption(Text(L"Field diaphragm"));
    CKxBitmapPool::ReplaceImage(L"FIELD_SMALLER", Diaphragm("3"));
    CKxBitmapPool::ReplaceImage(L"FIELD_LARGER", Diaphragm("7"));
    CKxBitmapPool::ReplaceImage(L"FIELD_CENTRE", "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">"
                                                 "<path d=\"M12 1V23M1 12H23\" stroke=\"currentColor\" "
                                                 "stroke-width=\"2\"/><circle cx=\"12\" cy=\"12\" r=\"6\" "
                                                 "fill=\"none\" stroke=\"#F5A800\" stroke-width=\"2\"/></svg>");
    const struct {
        const wchar_t *image, *title;
        double step;
        RECT place;
    } buttons[] = {{L"FIELD_SMALLER", L"Smaller", -1, {8, 30, 28, 28}},
                   {L"FIELD_LARGER", L"Larger", 1, {40, 30, 28, 28}},
                   {L"FIELD_LARGER", L"Open", kMost, {76, 30, 92, 28}},
                   {L"FIELD_CENTRE", L"Centre", 0, {172, 30, 90, 28}}};
    const auto at = [](long unzoomed) { return CKxGUILayoutManager::Zoomed(static_cast<double>(unzoomed)); };
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        AskingButton& each = m_buttons[i];
        each.Init(*this, buttons[i].step);
        each.SetTitle(Text(buttons[i].title));
        each.SetImages({.normal = buttons[i].image});
        if (i < 2) {
            each.SetToolTip(Text(buttons[i].title));
            each.SetAutoRepeat(400, 40);
        } else {
            each.SetTextPlace(EKxButtonText::Beside);
        }
        const RECT& place = buttons[i].place;
        each.Create(m_hWnd, at(place.left), at(place.top), place.right, place.bottom, true, true);
        InsertElement(&each);
    }
    CKxMenu menu;
    for (const int opening : {25, 50, 75}) {
        CKxStringW text;
        text.Format(20, L"%d %%", opening);
        menu.AppendMenuItem(opening, text);
    }
    m_buttons[2].SetMenu(menu);
    m_buttons[3].SetToggle(true);
    AddChild(L"STATIC", L"", 0, kOpening, 8, 64, m_width - 16, 16);
    m_boxes[0].Init(*this, SwitchOf(L"field follows", L"Follows the objective", Held().diaphragm.follows));
    m_boxes[0].SetTitle(Text(L"Follows the objective"));
    m_boxes[0].Create(m_hWnd, at(6), at(84), m_width - 12, 18, true, true);
    // In the place of the platform's own.
    m_boxes[1].Init(*this, std::nullopt);
    m_boxes[1].Create(m_hWnd, AddCheckBox(Text(L"The host refuses"), kRefuse, 6, m_height - 22));
    OwnRefusal(kRefuse);
    for (AskingBox& each : m_boxes)
        InsertElement(&each);
    ShowValues();
}

void FieldPanel::ShowValues() {
    m_buttons[3].SetState(Held().diaphragm.centres);
    m_boxes[0].SetState(Held().diaphragm.follows);
    m_boxes[1].SetState(Refuses());
    CKxStringW text;
    text.Format(60, Text(L"Opening %d %%"), static_cast<int>(Held().diaphragm.opening));
    SetDlgItemTextW(m_hWnd, kOpening, text);
}

bool FieldPanel::Grants(const Wish& wish, double value) const {
    if (Asks(wish, value)) return true;
    KX_SayWhyRefused(Text(L"The diaphragm stays as it is"));
    return false;
}

bool FieldPanel::Open(double opening) {
    const Wish wish = ValueOf(L"field opening", L"Field diaphragm", Held().diaphragm.opening, L"%.0f %%");
    if (!Grants(wish, std::clamp(opening, kLeast, kMost))) return false;
    ShowValues();
    return true;
}

void FieldPanel::AskingButton::OnClickRequest(bool& veto) {
    Log().Add(m_panel->Name(), L"OnClickRequest %ls", GetTitle().c_str());
    veto = !m_panel->Open(Held().diaphragm.opening + m_step);
}

void FieldPanel::AskingButton::OnStateChangeRequest(bool on, bool& veto) {
    Log().Add(m_panel->Name(), L"OnStateChangeRequest(%ls)", on ? L"on" : L"off");
    veto = !m_panel->Grants(SwitchOf(L"field centres", L"Centre", Held().diaphragm.centres), on);
}

void FieldPanel::AskingButton::OnMenuRequest(int opening) {
    Log().Add(m_panel->Name(), L"OnMenuRequest(%d)", opening);
    if (!m_panel->Refuses()) m_panel->Open(opening);
}

void FieldPanel::AskingBox::OnStateChangeRequest(int state, bool& veto) {
    Log().Add(m_panel->Name(), L"OnStateChangeRequest(%d) %ls", state, GetTitle().c_str());
    const bool on = state == eKxCheckState_On;
    if (m_wish)
        veto = !m_panel->Grants(*m_wish, on);
    else
        m_panel->SetRefuses(on);
}
