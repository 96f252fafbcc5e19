// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <bench/slot.h>
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

#include <vector>

namespace {

using kx::test::SlotsOf;
using Slots = std::vector<long>;

// Protected ones are named as those of a derived class.
struct Container : CKxDevUI_Container {
    using B = CKxDevUI_Base;
    using S = Container;
    static Slots All() {
        return SlotsOf(&B::Create, &B::GetEnabled, &B::SetEnabled, &B::GetVisible, &B::SetVisible, &B::GetTitle,
                       &B::SetTitle, &B::SetFocus, &B::SetRedraw, &B::GetWindowSize, &B::RefreshWindow,
                       &B::GetWindowPosition, &B::GetWindowRectangle, &B::MoveWindow, &B::MoveWindowRelative,
                       &B::ResizeWindow, &B::ResizeWindowRelative, &B::HandleMouseWheel, &S::OnInit, &S::OnDestroy,
                       &S::OnCommand, &S::OnNotify, &S::OnScroll, &S::OnDrawItem, &S::OnCtlColorStatic,
                       &S::OnMouseActivate, &S::OnUpdateDeviceBand, &S::OnMouseWheel);
    }
};
struct EditBox : CKxDevUI_EditBox {
    using S = EditBox;
    static Slots Own() {
        return SlotsOf(&S::SetRestriction, &S::SetMaxChars, &S::OnEnter, &S::OnSetFocus, &S::OnKillFocus, &S::OnChange,
                       &S::OnChar);
    }
};
struct Spin : CKxDevUI_EditBoxSpin {
    static Slots Own() { return SlotsOf(&Spin::OnSpin); }
};
struct HPot : CKxDevUI_HPot {
    using S = HPot;
    static Slots Own() {
        return SlotsOf(&S::OnHPotChange, &S::OnHPotDragDrop, &S::OnLeftButtonUp, &S::OnHoverForPad, &S::UnHoverForPad,
                       &S::CreateLinearBitmap, &S::CreateNonlinearBitmap, &S::CreateLinearRegionsBitmap,
                       &S::CreateColorSliderBitmap);
    }
};
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
struct ColorSlider : CKxDevUI_ColorSlider {
    using S = ColorSlider;
    static Slots Own() { return SlotsOf(&S::OnPowerChanged, &S::OnRangeChanged, &S::OnLeftButtonUp); }
    static Slots Overridden() {
        return SlotsOf(&S::SetEnabled, &S::HandleMouseWheel, &S::OnInit, &S::OnCommand, &S::OnScroll, &S::OnMouseWheel);
    }
};
struct RangeSlider : CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot {
    static Slots Own() { return SlotsOf(&RangeSlider::OnRangeChanged); }
};
struct Shutter : CKxDevUI_Shutter {
    using S = Shutter;
    static Slots Own() { return SlotsOf(&S::UpdateShutterIcon, &S::OnStateChangeRequest, &S::OnRenameDlgRequest); }
};
struct ModeShutter : CKxDevUI_ModeShutter {
    using S = ModeShutter;
    static Slots Own() {
        return SlotsOf(&S::OnApertureChangeRequest, &S::OnStateChangeRequest, &S::OnModeChangeRequest);
    }
};
struct Nosepiece : CKxDevUI_Nosepiece {
    static Slots Own() { return SlotsOf(&Nosepiece::OnPositionChangeRequest, &Nosepiece::OnSetupRequest); }
};
struct FilterWheel : CKxDevUI_FilterWheel {
    static Slots Own() { return SlotsOf(&FilterWheel::OnPositionChangeRequest, &FilterWheel::OnSetupRequest); }
};
struct Switcher : CKxDevUI_Switcher {
    static Slots Own() { return SlotsOf(&Switcher::OnPositionChangeRequest, &Switcher::OnSetPortSingleRequest); }
};
struct ZStack : CKxDevUI_ZStack {
    using S = ZStack;
    static Slots All() {
        return SlotsOf(&S::SetHandler, &S::GetHandler, &S::CreateUI, &S::DestroyUI, &S::GetHandle, &S::SetUIParent,
                       &S::Show, &S::IsVisible, &S::Enable, &S::IsEnabled, &S::SetRedrawEx, &S::Update, &S::IsResizable,
                       &S::GetCurSize, &S::CalcOptimalSize, &S::Move, &S::GetInterface, &S::GetInfo, &S::CustomCommand,
                       &S::SetOptimalSize, &S::SetLayoutStyle, &S::GetEnableGuiFlag, &S::SetEnableGuiFlag,
                       &S::IsResizableInSteps, &S::OnGuiZoomChanged, &S::AppendZDevice, &S::OnPiezoPickerChanged,
                       &S::OnStepChanged, &S::OnMoveZRequest, &S::OnGoHomeRequest, &S::OnHostRequest,
                       &S::OnZDeviceShown, &S::OnZStackChanged, &S::OnEraseBkGnd);
    }
};

TEST(VirtualTables, HoldEachOperationAtItsPlace) {
    using MultiValue = CKxDevUI_EditBoxMultiValue;
    const struct {
        const char* name;
        long first;
        Slots slots;
    } rows[] = {
        {"base and container", 1, Container::All()},
        {"edit box", 19, EditBox::Own()},
        {"edit box with arrows", 26, Spin::Own()},
        {"edit box for a list", 26, SlotsOf(&MultiValue::CheckRestriction, &MultiValue::SetCountRestriction)},
        {"slider", 19, HPot::Own()},
        {"radio group", 19, RadioSlots()},
        {"colour slider", 29, ColorSlider::Own()},
        {"slider of a range", 19, RangeSlider::Own()},
        {"shutter", 19, Shutter::Own()},
        {"mode shutter", 19, ModeShutter::Own()},
        {"nosepiece", 1, Nosepiece::Own()},
        {"filter wheel", 1, FilterWheel::Own()},
        {"switcher", 1, Switcher::Own()},
        {"Z stack panel", 1, ZStack::All()},
    };
    for (const auto& row : rows) {
        long place = row.first;
        for (const long slot : row.slots)
            EXPECT_EQ(slot, place++) << row.name;
    }
    EXPECT_EQ(ColorSlider::Overridden(), (Slots{3, 18, 19, 21, 23, 28}));
}

}  // namespace
