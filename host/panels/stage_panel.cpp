#include "stage_panel.h"

#include <algorithm>
#include <tuple>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_time.h>
#include <kxsystem/kx_translation.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr UINT kTick = 40;  // milliseconds
constexpr std::array kSteps{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

kx::host::StagePlace Target() { return {Held().stage.x.to, Held().stage.y.to}; }

// A step goes on from where the last one leads.
Wish PlaceOfStage() {
    Wish wish;
    wish.what = wish.name = L"Stage";
    wish.read = [] { return std::optional(kx::host::NumberOf(Target())); };
    wish.ask = [](double to) {
        const auto [x, y] = kx::host::StagePlaceOf(to);
        Held().stage.Start(x, y, KX_GetTimeCounter());
        return true;
    };
    wish.text = [](double at) {
        CKxStringW text;
        const auto [x, y] = kx::host::StagePlaceOf(at);
        text.Format(60, L"X %g, Y %g µm", x, y);
        return text.str();
    };
    return wish;
}

CKxStringA ArrowImage(const char* path) {
    CKxStringA svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">"
                     "<path d=\"PATH\" fill=\"currentColor\"/></svg>";
    CKxSvgStringAPI::ReplaceString(svg, "PATH", path);
    return svg;
}

}  // namespace

// ---- The step ------------------------------------------------------------------------------------------------------

int StageStep::Step() const { return kSteps[static_cast<std::size_t>(Held().stageStep)]; }

LRESULT StageStep::OnInit(UINT message, WPARAM wParam, LPARAM lParam) {
    AddChild(L"STATIC", L"", SS_CENTER | SS_CENTERIMAGE | SS_SUNKEN, IDC_STEP_TEXT, 0, 0, 110, 22);
    Show();
    return HostPanel::OnInit(message, wParam, lParam);
}

void StageStep::Show() {
    CKxStringW text;
    text.Format(60, KX_GetTranslation(L"Step %d µm", L"host"), Step());
    SetDlgItemTextW(m_hWnd, IDC_STEP_TEXT, text);
}

bool StageStep::HandleMouseWheel(WPARAM wParam, LPARAM) {
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    if (delta == 0) return false;
    Held().stageStep = std::clamp(Held().stageStep + (delta > 0 ? 1 : -1), 0, static_cast<int>(kSteps.size()) - 1);
    Show();
    return true;
}

// ---- The panel -----------------------------------------------------------------------------------------------------

void StagePanel::Fill() {
    AddCaption(Text(L"Stage"));
    const struct {
        const wchar_t *image, *title;
        const char* path;
        int id, x, y;
        RECT place;
    } arrows[] = {{L"STAGE_LEFT", L"Stage to the left", "M5 12L17 5V19Z", IDC_STAGE_LEFT, -1, 0, {8, 55, 34, 28}},
                  {L"STAGE_BACK", L"Stage to the back", "M12 5L19 17H5Z", IDC_STAGE_UP, 0, 1, {43, 26, 34, 28}},
                  {L"STAGE_FRONT", L"Stage to the front", "M12 19L5 7H19Z", IDC_STAGE_DOWN, 0, -1, {43, 84, 34, 28}},
                  {L"STAGE_RIGHT", L"Stage to the right", "M19 12L7 19V5Z", IDC_STAGE_RIGHT, 1, 0, {78, 55, 34, 28}}};
    const auto at = [](long unzoomed) { return CKxGUILayoutManager::Zoomed(static_cast<double>(unzoomed)); };
    for (std::size_t i = 0; i < m_arrows.size(); ++i) {
        const auto& [image, title, path, id, x, y, place] = arrows[i];
        CKxBitmapPool::ReplaceImage(image, ArrowImage(path));
        Arrow& each = m_arrows[i];
        each.Init(*this, x, y);
        each.SetId(id);
        each.SetImages({.normal = image});
        each.SetTitle(Text(title));
        each.SetToolTip(Text(title));
        each.SetAutoRepeat(400, 100);
        each.Create(m_hWnd, at(place.left), at(place.top), place.right, place.bottom, true, true);
        InsertElement(&each);
    }
    AddChild(L"STATIC", L"", 0, IDC_STAGE_POSITION, 122, 26, 138, 16);
    int top = 44;
    for (const auto& [field, id, label, axis] : {std::tuple{&m_x, IDC_STAGE_X, L"X (\u00B5m):", &Held().stage.x},
                                                 {&m_y, IDC_STAGE_Y, L"Y (\u00B5m):", &Held().stage.y}}) {
        field->SetRestriction(axis->rangeMin, axis->rangeMax);
        field->SetId(id);
        field->SetTitle(label);
        field->SetSize(60, 72, 21);
        field->Create(m_hWnd, 122, top, -1, -1, true, true);
        InsertElement(field);
        top += 23;
    }
    m_step.Create(m_hWnd, 122, 90, 110, 22, true, true);
    InsertElement(&m_step);
    m_marks.SetId(IDC_STAGE_MARKS);
    m_marks.SetEditable({.anyText = true});
    m_marks.SetTitle(Text(L"Marks"));
    m_marks.Create(m_hWnd, at(8), at(115), 246, 21, true, true);
    InsertElement(&m_marks);
    ShowValues();
}

// But for what the user is typing.
void StagePanel::ShowValues() {
    if (!m_x.IsTyped()) m_x.SetNumber(Held().stage.x.to, L"%g");
    if (!m_y.IsTyped()) m_y.SetNumber(Held().stage.y.to, L"%g");
    ShowMarks();
    ShowPosition();
    // The timer goes with the window, and the window with this object.
    if (Held().stage.IsMoving(KX_GetTimeCounter())) SetTimer(m_hWnd, reinterpret_cast<UINT_PTR>(this), kTick, OnTimer);
}

void StagePanel::ShowPosition() {
    const unsigned now = KX_GetTimeCounter();
    CKxStringW text;
    text.Format(60, L"X %.0f, Y %.0f µm", Held().stage.x.Position(now), Held().stage.y.Position(now));
    SetDlgItemTextW(m_hWnd, IDC_STAGE_POSITION, text);
}

void CALLBACK StagePanel::OnTimer(HWND window, UINT, UINT_PTR panel, DWORD) {
    reinterpret_cast<StagePanel*>(panel)->ShowPosition();
    if (!Held().stage.IsMoving(KX_GetTimeCounter())) KillTimer(window, panel);
}

// The mark that the stage is at, or goes to, is the one that is shown.
void StagePanel::ShowMarks() {
    const auto& marks = Held().marks;
    while (m_marks.GetValuesCount() > static_cast<int>(marks.size()))
        m_marks.RemoveValue(m_marks.GetValuesCount() - 1);
    for (auto i = static_cast<std::size_t>(m_marks.GetValuesCount()); i < marks.size(); ++i)
        m_marks.InsertValue(marks[i].name.c_str(), -1);
    const auto here = std::find_if(marks.begin(), marks.end(), [](const auto& each) { return each.place == Target(); });
    m_marks.SetSelection(here == marks.end() ? -1 : static_cast<int>(here - marks.begin()));
}

bool StagePanel::GoTo(const kx::host::StagePlace& place) {
    using kx::host::NumberOf;
    const bool goes = Asks(PlaceOfStage(), NumberOf(place));
    const auto [x, y] = Target();
    CKxStringW text = Text(L"The stage stays where it is");
    if (goes) text.Format(100, Text(L"Stage moves to X %d µm, Y %d µm"), static_cast<int>(x), static_cast<int>(y));
    if (!goes) KX_SayWhyRefused(text);
    ShowValues();
    Tell(text.str());
    return goes;
}

// Enter goes there; a field that is left only shows again where the stage is going.
bool StagePanel::OnUser(int id, int code, HWND) {
    if (id != IDC_STAGE_X && id != IDC_STAGE_Y) return false;
    CKxDevUI_EditBox& field = id == IDC_STAGE_X ? m_x : m_y;
    auto place = Target();
    double& wanted = id == IDC_STAGE_X ? place.x : place.y;
    if (code == kx::ui::kEditEnter && field.IsAllowed(EKxComplaint::Shown)) {
        wanted = field.GetNumber();
        GoTo(place);
        field.SetNumber(id == IDC_STAGE_X ? Target().x : Target().y, L"%g");
    }
    if (code == EN_KILLFOCUS) field.SetNumber(wanted, L"%g");
    return true;
}

LRESULT StagePanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    // The wheel belongs to the element that makes use of it.
    return m_step.HandleMouseWheel(wParam, lParam) ? 1 : 0;
}

void StagePanel::Arrow::OnClickRequest(bool& veto) {
    Log().Add(m_panel->Name(), L"OnClickRequest %ls", GetTitle().c_str());
    const auto [x, y] = Target();
    const int step = m_panel->m_step.Step();
    veto = !m_panel->GoTo({x + m_x * step, y + m_y * step});
}

void StagePanel::MarkList::OnSelectionChangeRequest(int index, bool& veto) {
    Log().Add(m_panel.Name(), L"OnSelectionChangeRequest(%ls)", GetValueName(index).c_str());
    veto = !m_panel.GoTo(Held().marks[static_cast<std::size_t>(index)].place);
}

void StagePanel::MarkList::OnValueChangeRequest(const wchar_t* value, bool& veto) {
    Log().Add(m_panel.Name(), L"OnValueChangeRequest(%ls)", value);
    veto = m_panel.Refuses() || !*value;
    if (!veto) Held().marks.push_back({value, Target()});
    m_panel.ShowMarks();
}
