// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxdevui/light/devgui_modeshutter.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>
#include <kxdevui/zfocus/devgui_zstack.h>

#include <cstring>

namespace {

using Slots = std::vector<long>;

// The places of virtual functions in the table. A pointer to one holds 1 plus the byte offset of its entry; before the
// first function stand the destructor's two entries, which together are slot 0.
template <class... Functions>
Slots SlotsOf(Functions... functions) {
    const auto slot = [](auto function) {
        long long words[sizeof(function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    };
    return {slot(functions)...};
}

// Protected ones are named as those of a derived class.
template <class Control>
struct Open : Control {
    static const Slots own;
};
template <>
const Slots Open<CKxDevUI_Container>::own =
    SlotsOf(&Open::Create, &Open::GetEnabled, &Open::SetEnabled, &Open::GetVisible, &Open::SetVisible, &Open::GetTitle,
            &Open::SetTitle, &Open::SetFocus, &Open::SetRedraw, &Open::GetWindowSize, &Open::RefreshWindow,
            &Open::GetWindowPosition, &Open::GetWindowRectangle, &Open::MoveWindow, &Open::MoveWindowRelative,
            &Open::ResizeWindow, &Open::ResizeWindowRelative, &Open::HandleMouseWheel, &Open::OnInit, &Open::OnDestroy,
            &Open::OnCommand, &Open::OnNotify, &Open::OnScroll, &Open::OnDrawItem, &Open::OnCtlColorStatic,
            &Open::OnMouseActivate, &Open::OnUpdateDeviceBand, &Open::OnMouseWheel);
template <>
const Slots Open<CKxDevUI_EditBox>::own = SlotsOf(&Open::SetRestriction, &Open::SetMaxChars, &Open::OnEnter,
                                                  &Open::OnSetFocus, &Open::OnKillFocus, &Open::OnChange,
                                                  &Open::OnChar);
template <>
const Slots Open<CKxDevUI_EditBoxSpin>::own = SlotsOf(&Open::OnSpin);
template <>
const Slots Open<CKxDevUI_HPot>::own = SlotsOf(&Open::OnHPotChange, &Open::OnHPotDragDrop, &Open::OnLeftButtonUp,
                                               &Open::OnHoverForPad, &Open::UnHoverForPad, &Open::CreateLinearBitmap,
                                               &Open::CreateNonlinearBitmap, &Open::CreateLinearRegionsBitmap,
                                               &Open::CreateColorSliderBitmap);
template <>
const Slots Open<CKxDevUI_ColorSlider>::own = SlotsOf(&Open::OnPowerChanged, &Open::OnRangeChanged,
                                                      &Open::OnLeftButtonUp, &Open::SetEnabled, &Open::HandleMouseWheel,
                                                      &Open::OnInit, &Open::OnCommand, &Open::OnScroll,
                                                      &Open::OnMouseWheel);
using RangeSlider = CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot;
template <>
const Slots Open<RangeSlider>::own = SlotsOf(&Open::OnRangeChanged);
template <>
const Slots Open<CKxDevUI_Shutter>::own = SlotsOf(&Open::UpdateShutterIcon, &Open::OnStateChangeRequest,
                                                  &Open::OnRenameDlgRequest);
template <>
const Slots Open<CKxDevUI_ModeShutter>::own = SlotsOf(&Open::OnApertureChangeRequest, &Open::OnStateChangeRequest,
                                                      &Open::OnModeChangeRequest);
template <>
const Slots Open<CKxDevUI_Nosepiece>::own = SlotsOf(&Open::OnPositionChangeRequest, &Open::OnSetupRequest);
template <>
const Slots Open<CKxDevUI_FilterWheel>::own = SlotsOf(&Open::OnPositionChangeRequest, &Open::OnSetupRequest);
template <>
const Slots Open<CKxDevUI_Switcher>::own = SlotsOf(&Open::OnPositionChangeRequest, &Open::OnSetPortSingleRequest);
template <>
const Slots Open<CKxDevUI_ZStack>::own = SlotsOf(
    &Open::SetHandler, &Open::GetHandler, &Open::CreateUI, &Open::DestroyUI, &Open::GetHandle, &Open::SetUIParent,
    &Open::Show, &Open::IsVisible, &Open::Enable, &Open::IsEnabled, &Open::SetRedrawEx, &Open::Update,
    &Open::IsResizable, &Open::GetCurSize, &Open::CalcOptimalSize, &Open::Move, &Open::GetInterface, &Open::GetInfo,
    &Open::CustomCommand, &Open::SetOptimalSize, &Open::SetLayoutStyle, &Open::GetEnableGuiFlag,
    &Open::SetEnableGuiFlag, &Open::IsResizableInSteps, &Open::OnGuiZoomChanged, &Open::AppendZDevice,
    &Open::OnPiezoPickerChanged, &Open::OnStepChanged, &Open::OnMoveZRequest, &Open::OnGoHomeRequest,
    &Open::OnHostRequest, &Open::OnZDeviceShown, &Open::OnZStackChanged, &Open::OnEraseBkGnd);
Slots RadioSlots() {
    using R = CKxDevUI_Radio;
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
        {"radio group", 19, RadioSlots()},
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
