#include "list_panel.h"

#include <iterator>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_habits.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../pages/page.h"

namespace {

constexpr int kRefuse = 1950, kFirstList = 1951;

const struct {
    const wchar_t* name;
    COLORREF color;
} kDyes[] = {{L"DAPI", RGB(90, 90, 255)},
             {L"GFP", RGB(0, 190, 60)},
             {L"Rhodamine", RGB(240, 140, 0)},
             {L"Cy5", RGB(210, 0, 30)}};

const OnPage<ListPanel> s_lists(L"Illumination", {268, 176});

}  // namespace

void ListPanel::Fill() {
    AddCaption(Text(L"Acquisition"));
    const wchar_t* times[] = {L"10 ms", L"20 ms", L"50 ms", L"100 ms", L"200 ms"};
    m_exposure.SetEditable({.minimum = 1, .maximum = 10000, .unit = L"ms", .anyText = false});
    m_exposure.InsertValues(times, static_cast<int>(std::size(times)), -1);
    const wchar_t* modes[] = {L"Snap", L"Live", L"Time series", L"Z series"};
    for (const wchar_t* mode : modes)
        m_mode.InsertValue(Text(mode), -1);
    // There is no time series yet.
    m_mode.SetValueEnabled(2, false);
    m_channels.SetMultiple(true);
    for (int i = 0; i < static_cast<int>(std::size(kDyes)); ++i) {
        for (kx::ui::ListControl* list :
             {static_cast<kx::ui::ListControl*>(&m_dye), static_cast<kx::ui::ListControl*>(&m_channels)}) {
            list->InsertValue(kDyes[i].name, -1);
            list->SetValueColor(i, kDyes[i].color);
        }
    }
    const struct {
        kx::ui::ListControl& list;
        const wchar_t* label;
        RECT place;
    } rows[] = {{m_dye, L"Dye", {8, 40, 120, 22}},
                {m_exposure, L"Exposure", {140, 40, 120, 22}},
                {m_mode, L"Mode", {8, 82, 120, 66}},
                {m_channels, L"Channels", {140, 82, 120, 66}}};
    int id = kFirstList;
    for (const auto& [list, label, place] : rows) {
        AddChild(L"STATIC", Text(label), SS_NOPREFIX, -1, place.left, place.top - 16, place.right, 16);
        list.SetId(id++);
        list.Create(m_hWnd, CKxGUILayoutManager::Zoomed(place.left), CKxGUILayoutManager::Zoomed(place.top),
                    place.right, place.bottom, true, true);
        InsertElement(&list);
    }
    m_dye.SetSelection(Held().dye);
    m_exposure.SetText(Held().listExposure);
    m_mode.SetSelection(Held().mode);
    m_channels.SetSelections(Held().channels);
    KX_SetFieldHabits(m_exposure, KxFieldHabits::All());
    AddRefusal(kRefuse);
}

bool ListPanel::Declines(const wchar_t* request, const wchar_t* value) {
    Log().Add(Name(), L"%ls(%ls)", request, value);
    const bool declines = Refuses();
    Tell(declines ? Text(L"It stays as it is").str() : value);
    if (!declines) {
        Held().dye = m_dye.GetSelectionIndex();
        Held().listExposure = m_exposure.GetText();
        Held().mode = m_mode.GetSelectionIndex();
        Held().channels = m_channels.GetSelections();
    }
    return declines;
}

void ListPanel::Combo::OnValueChangeRequest(const wchar_t* value, bool& veto) {
    veto = m_panel.Declines(L"OnValueChangeRequest", value);
}

void ListPanel::List::OnSelectionsChangeRequest(const std::vector<int>& indexes, bool& veto) {
    std::wstring all;
    for (const int index : indexes)
        all += (all.empty() ? L"" : L", ") + GetValueName(index).str();
    veto = m_panel.Declines(L"OnSelectionsChangeRequest", all.c_str());
}
