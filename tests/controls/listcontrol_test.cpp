// Combo box and list box: what is chosen by mouse, keys, letters and wheel, what is refused, what is typed, and a foreign
// dialog whose controls they take the places of.
#include "control_test.h"

#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>
#include <kxbaseui/kx_schemecontrols.h>

namespace {

using namespace kx::test;

TEST(ListLook, Explore) {
    RecordingParent parent;
    KX_FollowColorScheme(parent.Window());
    CKxDevUI_ComboBox a, b;
    CKxDevUI_ListBox c;
    const wchar_t* values[] = {L"10 ms", L"20 ms", L"50 ms", L"gain", L"100 ms"};
    b.SetEditable({0, 1000, L"ms"});
    a.Create(parent.Window(), 10, 10, 120, 22, true, true);
    b.Create(parent.Window(), 10, 40, 120, 24, true, true);
    c.Create(parent.Window(), 10, 70, 120, 80, true, true);
    for (kx::ui::ListControl* each : {static_cast<kx::ui::ListControl*>(&a), static_cast<kx::ui::ListControl*>(&b), static_cast<kx::ui::ListControl*>(&c)}) {
        each->InsertValues(values, 5, 0);
        each->SetSelection(1);
        each->SetValueEnabled(2, false);
        each->SetValueColor(1, RGB(0,160,0));
        each->SetValueImage(0, L"IMG_SETUP");
    }
    const HWND stock = AddChild(parent.Window(), L"COMBOBOX", 1, {150, 10, 270, 100}, CBS_DROPDOWNLIST);
    const HWND stockEdit = AddChild(parent.Window(), L"COMBOBOX", 1, {150, 40, 270, 130}, CBS_DROPDOWN);
    const HWND stockList = AddChild(parent.Window(), L"LISTBOX", 1, {150, 70, 270, 150}, WS_BORDER);
    for (HWND w : {stock, stockEdit}) SendMessageW(w, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"20 ms")), SendMessageW(w, CB_SETCURSEL, 0, 0);
    SendMessageW(stockList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"20 ms")), SendMessageW(stockList, LB_SETCURSEL, 0, 0);
    printf("%s | %s | %s\n", PlaceOf(a).c_str(), PlaceOf(GetDlgItem(a, 10000)).c_str(), PlaceOf(GetDlgItem(b, 10000)).c_str());
    for (int scheme = 0; scheme < 4; ++scheme) {
        KX_SetColorScheme(static_cast<EKxColorScheme>(scheme));
        KX_FollowColorScheme(parent.Window());
        a.SetFocus();
        Pump();
        Picture::OnScreen(parent.Window()).Save("look" + std::to_string(scheme));
        SetFocus(stock);
        Pump();
        Picture::OnScreen(parent.Window()).Save("stock" + std::to_string(scheme));
        a.SetEnabled(false), b.SetEnabled(false), c.SetEnabled(false);
        EnableWindow(stock, FALSE), EnableWindow(stockEdit, FALSE), EnableWindow(stockList, FALSE);
        Picture::OnScreen(parent.Window()).Save("disabled" + std::to_string(scheme));
        a.SetEnabled(true), b.SetEnabled(true), c.SetEnabled(true);
        EnableWindow(stock, TRUE), EnableWindow(stockEdit, TRUE), EnableWindow(stockList, TRUE);
        SendMessageW(GetDlgItem(a, 10000), CB_SHOWDROPDOWN, TRUE, 0);
        Pump();
        Picture::OnScreen(parent.Window()).Save("open" + std::to_string(scheme));
        COMBOBOXINFO info{}; info.cbSize = sizeof info;
        GetComboBoxInfo(GetDlgItem(a, 10000), &info);
        Picture::OnScreen(info.hwndList, true).Save("drop" + std::to_string(scheme));
        SendMessageW(GetDlgItem(a, 10000), CB_SHOWDROPDOWN, FALSE, 0);
    }
    KX_SetColorScheme(eKxColorScheme_System);
    CKxDevUI_ComboBox d;
    d.Create(parent.Window(), 10, 200, 120, 22, true, true);
    printf("%s\n", PlaceOf(GetDlgItem(d, 10000)).c_str());
    d.ResizeWindow(100, 30);
    printf("%s\n", PlaceOf(GetDlgItem(d, 10000)).c_str());
    CKxGUILayoutManager::SetGuiZoom(1.5);
    printf("%s %s\n", PlaceOf(d).c_str(), PlaceOf(GetDlgItem(d, 10000)).c_str());
    d.Create(parent.Window(), 10, 200, 120, 22, true, true);
    printf("%s %s\n", PlaceOf(d).c_str(), PlaceOf(GetDlgItem(d, 10000)).c_str());
    d.SetEditable({});
    printf("%s %s\n", PlaceOf(d).c_str(), PlaceOf(GetDlgItem(d, 10000)).c_str());
    CKxGUILayoutManager::SetGuiZoom(1);
}

}  // namespace
