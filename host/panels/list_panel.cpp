#include "list_panel.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxsystem/kx_number.h>

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

constexpr const wchar_t* kModes[] = {L"Snap", L"Live", L"Time series", L"Z series"};
constexpr double kTimes[] = {10, 20, 50, 100, 200};  // milliseconds

// As it stands in the list, or as it is typed.
std::wstring ExposureText(double milliseconds) {
    const bool isListed = std::find(std::begin(kTimes), std::end(kTimes), milliseconds) != std::end(kTimes);
    return KX_FormatNumber(isListed ? L"%g ms" : L"%.15g", milliseconds).str();
}

std::wstring DyeText(double dye) { return kDyes[static_cast<std::size_t>(dye)].name; }

bool Has(double channels, int channel) { return (static_cast<unsigned>(channels) >> channel & 1u) != 0; }

std::wstring ChannelsText(double channels) {
    std::wstring all;
    for (int i = 0; i < static_cast<int>(std::size(kDyes)); ++i) {
        if (Has(channels, i)) all += (all.empty() ? L"" : L", ") + DyeText(i);
    }
    return all;
}

const OnPage<ListPanel> s_lists(L"Illumination", {268, 176});

}  // namespace

void ListPanel::Fill() {
    AddCaption(Text(L"Acquisition"));
    m_exposure.SetEditable({.minimum = 1, .maximum = 10000, .unit = L"ms", .anyText = false});
    for (const double time : kTimes)
        m_exposure.InsertValue(ExposureText(time).c_str(), -1);
    for (const wchar_t* mode : kModes)
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
    KX_SetFieldHabits(m_exposure, KxFieldHabits::All());
    AddRefusal(kRefuse);
    ShowValues();
}

void ListPanel::ShowValues() {
    m_dye.SetSelection(static_cast<int>(Held().dye));
    m_exposure.SetText(ExposureText(Held().listExposure).c_str());
    m_mode.SetSelection(static_cast<int>(Held().mode));
    std::vector<int> channels;
    for (int i = 0; i < m_channels.GetValuesCount(); ++i) {
        if (Has(Held().channels, i)) channels.push_back(i);
    }
    m_channels.SetSelections(channels);
}

Asked ListPanel::WantedOf(kx::ui::ListControl& list) {
    HeldValues& held = Held();
    Wish wish;
    double wanted = list.GetSelectionIndex();
    if (&list == &m_dye) {
        wish = ValueOf(L"dye", L"Dye", held.dye, L"");
        wish.text = DyeText;
    } else if (&list == &m_mode) {
        wish = ValueOf(L"mode", L"Mode", held.mode, L"");
        wish.text = [](double mode) { return Text(kModes[static_cast<std::size_t>(mode)]).str(); };
    } else if (&list == &m_exposure) {
        wish = ValueOf(L"list exposure", L"Exposure", held.listExposure, L"");
        wish.text = ExposureText;
        wanted = KX_LeadingNumber(m_exposure.GetText());
    } else {
        wish = ValueOf(L"channels", L"Channels", held.channels, L"");
        wish.text = ChannelsText;
        wanted = 0;
        for (const int channel : m_channels.GetSelections())
            wanted += 1 << channel;
    }
    return {wish, wanted};
}

bool ListPanel::Declines(kx::ui::ListControl& list, const wchar_t* request, const wchar_t* value) {
    Log().Add(Name(), L"%ls(%ls)", request, value);
    const Asked wanted = WantedOf(list);
    const bool declines = !Asks(wanted.wish, wanted.value);
    Tell(declines ? Text(L"It stays as it is").str() : value);
    return declines;
}

void ListPanel::Combo::OnValueChangeRequest(const wchar_t* value, bool& veto) {
    veto = m_panel.Declines(*this, L"OnValueChangeRequest", value);
}

void ListPanel::List::OnSelectionsChangeRequest(const std::vector<int>& indexes, bool& veto) {
    std::wstring all;
    for (const int index : indexes)
        all += (all.empty() ? L"" : L", ") + GetValueName(index).str();
    veto = m_panel.Declines(*this, L"OnSelectionsChangeRequest", all.c_str());
}
