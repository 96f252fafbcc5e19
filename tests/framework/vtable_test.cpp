// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <bench/slot.h>
#include <kxdevui/framework/devgui_container.h>

#include <vector>

namespace {

struct Slots : CKxDevUI_Container {
    static std::vector<long> InOrder() {
        using Base = CKxDevUI_Base;
        using Self = Slots;
        return kx::test::SlotsOf(
            &Base::Create, &Base::GetEnabled, &Base::SetEnabled, &Base::GetVisible, &Base::SetVisible, &Base::GetTitle,
            &Base::SetTitle, &Base::SetFocus, &Base::SetRedraw, &Base::GetWindowSize, &Base::RefreshWindow,
            &Base::GetWindowPosition, &Base::GetWindowRectangle, &Base::MoveWindow, &Base::MoveWindowRelative,
            &Base::ResizeWindow, &Base::ResizeWindowRelative, &Base::HandleMouseWheel, &Self::OnInit, &Self::OnDestroy,
            &Self::OnCommand, &Self::OnNotify, &Self::OnScroll, &Self::OnDrawItem, &Self::OnCtlColorStatic,
            &Self::OnMouseActivate, &Self::OnUpdateDeviceBand, &Self::OnMouseWheel);
    }
};

TEST(VirtualTable, HoldsEachOperationAtItsPlace) {
    long place = 0;
    for (const long slot : Slots::InOrder())
        EXPECT_EQ(slot, ++place);
    EXPECT_EQ(place, 28);
}

}  // namespace
