#include "radio_panel.h"

#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr int kChosen = 0x0401;
constexpr double kPixel = 6.5;  // of the camera, micrometres

}  // namespace

void RadioPanel::Fill() {
    AddCaption(Text(L"Camera binning"));
    InsertDialog(0, 0, IDD_BINNING, GetModuleHandleW(nullptr));
    m_group.SetId(IDC_BINNING_GROUP);
    m_group.Create(GetWindow(IDC_BINNING_1), 3, GetWindow(IDC_BINNING_TITLE));
    InsertWindow(m_group);
    AddChild(L"STATIC", L"", 0, IDC_BINNING_PIXEL, 12, 136, m_width - 24, 18);
    AddRefusal(IDC_BINNING_REFUSE);
    ShowValues();
}

void RadioPanel::ShowValues() {
    // It takes the focus.
    if (m_group.GetSelectionIndex() != Held().binning) m_group.SetSelection(Held().binning);
    CKxStringW text;
    text.Format(60, Text(L"Pixel %g µm"), kPixel * (1 << Held().binning));
    SetDlgItemTextW(m_hWnd, IDC_BINNING_PIXEL, text);
}

bool RadioPanel::OnUser(int id, int code, HWND) {
    if (id != IDC_BINNING_GROUP || code != kChosen) return false;
    Choose(m_group.GetSelectionIndex());
    return true;
}

// A refused choice springs back, which the group tells again; by then it is the held one.
void RadioPanel::Choose(int index) {
    if (index == Held().binning) return;
    Wish wish;
    wish.what = L"binning", wish.name = L"Camera binning";
    wish.read = [] { return std::optional<double>(Held().binning); };
    wish.ask = [](double to) { return Held().binning = static_cast<int>(to), true; };
    wish.text = [](double at) { return std::to_wstring(1 << static_cast<int>(at)); };
    if (!Asks(wish, index)) {
        m_group.SetSelection(Held().binning);
        Tell(Text(L"The binning stays as it is").str());
        return;
    }
    ShowValues();
    CKxStringW text;
    text.Format(60, Text(L"Binning %d"), 1 << Held().binning);
    Tell(text.str());
}
