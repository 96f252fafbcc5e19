// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <kxdevui/framework/devgui_container.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

struct Slots : CKxDevUI_Container {
    // A pointer to a virtual member function holds 1 plus the byte offset of its entry in the table; before the first
    // function stand the destructor's two entries, which together are slot 0.
    template <class Function>
    static long Of(Function function) {
        long long words[sizeof(Function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    }

    static std::vector<std::pair<std::string, long>> InOrder() {
        using Base = CKxDevUI_Base;
        using Self = Slots;
        return {
            {"Create", Of(&Base::Create)},
            {"GetEnabled", Of(&Base::GetEnabled)},
            {"SetEnabled", Of(&Base::SetEnabled)},
            {"GetVisible", Of(&Base::GetVisible)},
            {"SetVisible", Of(&Base::SetVisible)},
            {"GetTitle", Of(&Base::GetTitle)},
            {"SetTitle", Of(&Base::SetTitle)},
            {"SetFocus", Of(&Base::SetFocus)},
            {"SetRedraw", Of(&Base::SetRedraw)},
            {"GetWindowSize", Of(&Base::GetWindowSize)},
            {"RefreshWindow", Of(&Base::RefreshWindow)},
            {"GetWindowPosition", Of(&Base::GetWindowPosition)},
            {"GetWindowRectangle", Of(&Base::GetWindowRectangle)},
            {"MoveWindow", Of(&Base::MoveWindow)},
            {"MoveWindowRelative", Of(&Base::MoveWindowRelative)},
            {"ResizeWindow", Of(&Base::ResizeWindow)},
            {"ResizeWindowRelative", Of(&Base::ResizeWindowRelative)},
            {"HandleMouseWheel", Of(&Base::HandleMouseWheel)},
            {"OnInit", Of(&Self::OnInit)},
            {"OnDestroy", Of(&Self::OnDestroy)},
            {"OnCommand", Of(&Self::OnCommand)},
            {"OnNotify", Of(&Self::OnNotify)},
            {"OnScroll", Of(&Self::OnScroll)},
            {"OnDrawItem", Of(&Self::OnDrawItem)},
            {"OnCtlColorStatic", Of(&Self::OnCtlColorStatic)},
            {"OnMouseActivate", Of(&Self::OnMouseActivate)},
            {"OnUpdateDeviceBand", Of(&Self::OnUpdateDeviceBand)},
            {"OnMouseWheel", Of(&Self::OnMouseWheel)},
        };
    }
};

TEST(VirtualTable, HoldsEachOperationAtItsPlace) {
    long slot = 0;
    for (const auto& [name, found] : Slots::InOrder()) EXPECT_EQ(found, ++slot) << name;
    EXPECT_EQ(slot, 28);
}

// The container's versions take the base's places and open none of their own.
TEST(VirtualTable, GivesTheContainersVersionsTheBasesPlaces) {
    Slots object;
    void** table = nullptr;
    std::memcpy(&table, static_cast<void*>(static_cast<CKxDevUI_Base*>(&object)), sizeof table);
    object.SetId(41);
    const auto getEnabled = reinterpret_cast<bool (*)(CKxDevUI_Base*)>(table[2 + 1]);
    const auto setEnabled = reinterpret_cast<void (*)(CKxDevUI_Base*, bool)>(table[3 + 1]);
    EXPECT_TRUE(getEnabled(&object));
    setEnabled(&object, false);
    EXPECT_FALSE(object.GetEnabled());
}

} // namespace
