// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#include <bench/bench.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

#include <cstring>
#include <utility>
#include <vector>

namespace {

// A pointer to a virtual member function holds 1 plus the byte offset of its entry in the table; before the first
// function stand the destructor's two entries, which together are slot 0.
template <class Function>
long SlotOf(Function function) {
    long long words[sizeof(Function) / sizeof(long long)];
    std::memcpy(words, &function, sizeof function);
    return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
}

using Slots = std::vector<std::pair<const char*, long>>;

void ExpectFrom(long first, const Slots& slots) {
    for (const auto& [name, found] : slots)
        EXPECT_EQ(found, first++) << name;
}

struct EditBoxSlots : CKxDevUI_EditBox {
    static Slots InOrder() {
        using Self = EditBoxSlots;
        return {{"SetRestriction", SlotOf(&Self::SetRestriction)},
                {"SetMaxChars", SlotOf(&Self::SetMaxChars)},
                {"OnEnter", SlotOf(&Self::OnEnter)},
                {"OnSetFocus", SlotOf(&Self::OnSetFocus)},
                {"OnKillFocus", SlotOf(&Self::OnKillFocus)},
                {"OnChange", SlotOf(&Self::OnChange)},
                {"OnChar", SlotOf(&Self::OnChar)}};
    }
};

struct EditBoxSpinSlots : CKxDevUI_EditBoxSpin {
    static Slots InOrder() { return {{"OnSpin", SlotOf(&EditBoxSpinSlots::OnSpin)}}; }
};

struct EditBoxMultiValueSlots : CKxDevUI_EditBoxMultiValue {
    static Slots InOrder() {
        using Self = EditBoxMultiValueSlots;
        return {{"CheckRestriction", SlotOf(&Self::CheckRestriction)},
                {"SetCountRestriction", SlotOf(&Self::SetCountRestriction)}};
    }
};

TEST(ControlVirtualTable, HoldsTheEditBoxesOperations) {
    ExpectFrom(19, EditBoxSlots::InOrder());
    ExpectFrom(26, EditBoxSpinSlots::InOrder());
    ExpectFrom(26, EditBoxMultiValueSlots::InOrder());
}

}  // namespace
