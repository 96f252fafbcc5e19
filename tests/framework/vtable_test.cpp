// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/devgui_imagebutton.h>
#include <kxdevui/controls/devgui_listbox.h>
#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxdevui/light/devgui_modeshutter.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>
#include <kxdevui/zfocus/devgui_zstack.h>

#include <array>
#include <cstring>
#include <utility>

namespace {

using Slots = std::vector<long>;

// Before the first function stands the destructor, slot 0, with one entry or two.
#if defined(_MSC_VER)
constexpr long kDestructors = 1;
#else
constexpr long kDestructors = 2;
#endif

template <long... Entries>
std::array<long (*)(void*), sizeof...(Entries)> MakeTable(std::integer_sequence<long, Entries...>) {
    return {[](void*) { return Entries; }...};
}

// The place of a virtual function: it is called on an object whose table's entries answer with their places.
template <class Class, class Function>
long SlotOf(Function Class::*function) {
    static const auto table = MakeTable(std::make_integer_sequence<long, 64>());
    const auto* object = table.data();
    long (Class::*plain)();
    static_assert(sizeof plain == sizeof function);
    std::memcpy(&plain, &function, sizeof plain);
    return (reinterpret_cast<Class*>(&object)->*plain)() - kDestructors + 1;
}
template <class... Functions>
Slots SlotsOf(Functions... functions) {
    return {SlotOf(functions)...};
}

// Protected ones are named as those of a derived class.
template <class Control>
struct Open : Control {
    static const Slots own;
};
// clang-format off
template <> const Slots Open<CKxDevUI_Container>::own = SlotsOf(&Open::Create, &Open::GetEnabled, &Open::SetEnabled,
    &Open::GetVisible, &Open::SetVisible, &Open::GetTitle, &Open::SetTitle, &Open::SetFocus, &Open::SetRedraw,
    &Open::GetWindowSize, &Open::RefreshWindow, &Open::GetWindowPosition, &Open::GetWindowRectangle,
    &Open::MoveWindow, &Open::MoveWindowRelative, &Open::ResizeWindow, &Open::ResizeWindowRelative,
    &Open::HandleMouseWheel, &Open::OnInit, &Open::OnDestroy, &Open::OnCommand, &Open::OnNotify, &Open::OnScroll,
    &Open::OnDrawItem, &Open::OnCtlColorStatic, &Open::OnMouseActivate, &Open::OnUpdateDeviceBand,
    &Open::OnMouseWheel);
template <> const Slots Open<CKxDevUI_EditBox>::own = SlotsOf(&Open::SetRestriction, &Open::SetMaxChars,
    &Open::OnEnter, &Open::OnSetFocus, &Open::OnKillFocus, &Open::OnChange, &Open::OnChar);
template <> const Slots Open<CKxDevUI_EditBoxSpin>::own = SlotsOf(&Open::OnSpin);
template <> const Slots Open<CKxDevUI_HPot>::own = SlotsOf(&Open::OnHPotChange, &Open::OnHPotDragDrop,
    &Open::OnLeftButtonUp, &Open::OnHoverForPad, &Open::UnHoverForPad, &Open::CreateLinearBitmap,
    &Open::CreateNonlinearBitmap, &Open::CreateLinearRegionsBitmap, &Open::CreateColorSliderBitmap);
template <> const Slots Open<CKxDevUI_ColorSlider>::own = SlotsOf(&Open::OnPowerChanged, &Open::OnRangeChanged,
    &Open::OnLeftButtonUp, &Open::SetEnabled, &Open::HandleMouseWheel, &Open::OnInit, &Open::OnCommand,
    &Open::OnScroll, &Open::OnMouseWheel);
using RangeSlider = CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot;
template <> const Slots Open<RangeSlider>::own = SlotsOf(&Open::OnRangeChanged);
template <> const Slots Open<CKxDevUI_ImageButton>::own = SlotsOf(&Open::OnClickRequest, &Open::OnStateChangeRequest,
    &Open::OnMenuRequest);
template <> const Slots Open<CKxDevUI_CheckBox>::own = SlotsOf(&Open::OnStateChangeRequest);
template <> const Slots Open<CKxDevUI_Shutter>::own = SlotsOf(&Open::UpdateShutterIcon, &Open::OnStateChangeRequest,
    &Open::OnRenameDlgRequest);
template <> const Slots Open<CKxDevUI_ModeShutter>::own = SlotsOf(&Open::OnApertureChangeRequest,
    &Open::OnStateChangeRequest, &Open::OnModeChangeRequest);
template <> const Slots Open<CKxDevUI_Nosepiece>::own = SlotsOf(&Open::OnPositionChangeRequest,
    &Open::OnSetupRequest);
template <> const Slots Open<CKxDevUI_FilterWheel>::own = SlotsOf(&Open::OnPositionChangeRequest,
    &Open::OnSetupRequest);
template <> const Slots Open<CKxDevUI_Switcher>::own = SlotsOf(&Open::OnPositionChangeRequest,
    &Open::OnSetPortSingleRequest);
template <> const Slots Open<CKxDevUI_ZStack>::own = SlotsOf( &Open::SetHandler, &Open::GetHandler, &Open::CreateUI,
    &Open::DestroyUI, &Open::GetHandle, &Open::SetUIParent, &Open::Show, &Open::IsVisible, &Open::Enable,
    &Open::IsEnabled, &Open::SetRedrawEx, &Open::Update, &Open::IsResizable, &Open::GetCurSize,
    &Open::CalcOptimalSize, &Open::Move, &Open::GetInterface, &Open::GetInfo, &Open::CustomCommand,
    &Open::SetOptimalSize, &Open::SetLayoutStyle, &Open::GetEnableGuiFlag, &Open::SetEnableGuiFlag,
    &Open::IsResizableInSteps, &Open::OnGuiZoomChanged, &Open::AppendZDevice, &Open::OnPiezoPickerChanged,
    &Open::OnStepChanged, &Open::OnMoveZRequest, &Open::OnGoHomeRequest, &Open::OnHostRequest,
    &Open::OnZDeviceShown, &Open::OnZStackChanged, &Open::OnEraseBkGnd);
template <> const Slots Open<CKxDevUI_ComboBox>::own = SlotsOf(&Open::OnSelectionChangeRequest,
    &Open::OnValueChangeRequest);
template <> const Slots Open<CKxDevUI_ListBox>::own = SlotsOf(&Open::OnSelectionChangeRequest,
    &Open::OnSelectionsChangeRequest);
// clang-format on
template <class R>
Slots ValueSlots() {
    using Text = const wchar_t*;
    return SlotsOf(static_cast<bool (R::*)(Text)>(&R::SetSelection), static_cast<void (R::*)(int)>(&R::SetSelection),
                   &R::GetSelectionIndex, static_cast<int (R::*)(wchar_t*, int)>(&R::GetSelection),
                   static_cast<double (R::*)()>(&R::GetSelection), &R::GetIndex, &R::GetValuesCount, &R::GetUserData,
                   &R::SetUserData, &R::SetValueName, &R::SetValueEnabled,
                   static_cast<int (R::*)(double, int)>(&R::InsertValue),
                   static_cast<int (R::*)(Text, int)>(&R::InsertValue),
                   static_cast<void (R::*)(const double*, int, int)>(&R::InsertValues),
                   static_cast<void (R::*)(Text*, int, int)>(&R::InsertValues), &R::CheckRestriction);
}

TEST(VirtualTables, HoldEachOperationAtItsPlace) {
    using MultiValue = CKxDevUI_EditBoxMultiValue;
    const struct {
        const char* name;
        long first;
        Slots slots;
    } rows[] = {
        {"base and container", 1, Open<CKxDevUI_Container>::own},
        {"edit box", 19, Open<CKxDevUI_EditBox>::own},
        {"edit box with arrows", 26, Open<CKxDevUI_EditBoxSpin>::own},
        {"edit box for a list", 26, SlotsOf(&MultiValue::CheckRestriction, &MultiValue::SetCountRestriction)},
        {"slider", 19, Open<CKxDevUI_HPot>::own},
        {"radio group", 19, ValueSlots<CKxDevUI_Radio>()},
        {"values of a combo box", 19, ValueSlots<CKxDevUI_ComboBox>()},
        {"combo box", 35, Open<CKxDevUI_ComboBox>::own},
        {"values of a list box", 19, ValueSlots<CKxDevUI_ListBox>()},
        {"list box", 35, Open<CKxDevUI_ListBox>::own},
        {"image button", 19, Open<CKxDevUI_ImageButton>::own},
        {"check box", 19, Open<CKxDevUI_CheckBox>::own},
        {"slider of a range", 19, Open<RangeSlider>::own},
        {"shutter", 19, Open<CKxDevUI_Shutter>::own},
        {"mode shutter", 19, Open<CKxDevUI_ModeShutter>::own},
        {"nosepiece", 1, Open<CKxDevUI_Nosepiece>::own},
        {"filter wheel", 1, Open<CKxDevUI_FilterWheel>::own},
        {"switcher", 1, Open<CKxDevUI_Switcher>::own},
        {"Z stack panel", 1, Open<CKxDevUI_ZStack>::own},
    };
    for (const auto& row : rows) {
        long place = row.first;
        for (const long slot : row.slots)
            EXPECT_EQ(slot, place++) << row.name;
    }
    // With those that it overrides.
    EXPECT_EQ(Open<CKxDevUI_ColorSlider>::own, (Slots{29, 30, 31, 3, 18, 19, 21, 23, 28}));
}

}  // namespace
