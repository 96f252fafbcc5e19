// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <bench/slot.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/devgui_radio.h>

#include <vector>

namespace {

using kx::test::SlotsOf;

struct EditBox : CKxDevUI_EditBox {
    static std::vector<long> Slots() {
        return SlotsOf(&EditBox::SetRestriction, &EditBox::SetMaxChars, &EditBox::OnEnter, &EditBox::OnSetFocus,
                       &EditBox::OnKillFocus, &EditBox::OnChange, &EditBox::OnChar);
    }
};
struct Spin : CKxDevUI_EditBoxSpin {
    static std::vector<long> Slots() { return SlotsOf(&Spin::OnSpin); }
};
struct HPot : CKxDevUI_HPot {
    static std::vector<long> Slots() {
        return SlotsOf(&HPot::OnHPotChange, &HPot::OnHPotDragDrop, &HPot::OnLeftButtonUp, &HPot::OnHoverForPad,
                       &HPot::UnHoverForPad, &HPot::CreateLinearBitmap, &HPot::CreateNonlinearBitmap,
                       &HPot::CreateLinearRegionsBitmap, &HPot::CreateColorSliderBitmap);
    }
};
std::vector<long> RadioSlots() {
    using Radio = CKxDevUI_Radio;
    using Text = const wchar_t*;
    return SlotsOf(static_cast<bool (Radio::*)(Text)>(&Radio::SetSelection),
                   static_cast<void (Radio::*)(int)>(&Radio::SetSelection), &Radio::GetSelectionIndex,
                   static_cast<int (Radio::*)(wchar_t*, int)>(&Radio::GetSelection),
                   static_cast<double (Radio::*)()>(&Radio::GetSelection), &Radio::GetIndex, &Radio::GetValuesCount,
                   &Radio::GetUserData, &Radio::SetUserData, &Radio::SetValueName, &Radio::SetValueEnabled,
                   static_cast<int (Radio::*)(double, int)>(&Radio::InsertValue),
                   static_cast<int (Radio::*)(Text, int)>(&Radio::InsertValue),
                   static_cast<void (Radio::*)(const double*, int, int)>(&Radio::InsertValues),
                   static_cast<void (Radio::*)(Text*, int, int)>(&Radio::InsertValues), &Radio::CheckRestriction);
}

TEST(ControlVirtualTable, HoldsEachOperationAtItsPlace) {
    using MultiValue = CKxDevUI_EditBoxMultiValue;
    const struct {
        const char* name;
        long first;
        std::vector<long> slots;
    } rows[] = {
        {"edit box", 19, EditBox::Slots()},
        {"with arrows", 26, Spin::Slots()},
        {"for a list", 26, SlotsOf(&MultiValue::CheckRestriction, &MultiValue::SetCountRestriction)},
        {"slider", 19, HPot::Slots()},
        {"radio group", 19, RadioSlots()},
    };
    for (const auto& row : rows) {
        long place = row.first;
        for (const long slot : row.slots)
            EXPECT_EQ(slot, place++) << row.name;
    }
}

}  // namespace
