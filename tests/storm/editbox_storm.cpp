// Storms against edit boxes: plain, with arrows, for a list.
#include "storm.h"

#include <cmath>
#include <list>

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

namespace kx::test::storm {
namespace {

template <class Box>
class EditBoxSubject : public SubjectOf<Box> {
protected:
    using SubjectOf<Box>::control_;
    using SubjectOf<Box>::parent_;

    void Make(HWND parent) override {
        this->Hear({WM_COMMAND});
        control_->SetId(7);
        control_->SetSize(50, 70, 20);
        control_->Create(parent, 5, 5, -1, -1, true, true);
    }

    Step Own(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random);
        const bool on = random.OneIn(2), off = random.OneIn(2), seldom = random.OneIn(4);
        const auto text = random.Of<const wchar_t*>({L"", L"12", L"1;2;3", L"x", L"1e999", nullptr});
        const auto format = random.Of<const wchar_t*>({L"%g", L"%.2f", L"%.9999f", L"%s%n", L"%d", nullptr});
        const int number = random.Between(-2, 400);
        switch (random.Below(11)) {
        case 0: return {"a number", [=, this] { control_->SetNumber(a, format, on); }};
        case 1: return {"a text", [=, this] { control_->SetText(text); }};
        case 2: return {"an interval", [=, this] { control_->SetRestriction(a, b); }};
        case 3: return {"checking", [=, this] { control_->CKxDevUI_EditBox::CheckRestriction(false, on, a); }};
        case 4: return {"Init", [=, this] { control_->Init(on, off, seldom); }};
        case 5: return {"a border", [=, this] { control_->SetStyle(on); }};
        case 6: return {"sizes", [=, this, cx = random.Length()] { control_->SetSize(cx, number, number / 8); }};
        case 7: return {"a limit", [=, this] { control_->SetMaxChars(number); }};
        case 8: return {"a placeholder", [this] { TakePlace(); }};
        case 9: return {"its own", [=, this] { OperateOwn(text, number); }};
        default:
            return {"typing", [=, this] { SendMessageW(control_->GetEditWindow(), WM_CHAR, on ? L'5' : L'\r', 0); }};
        }
    }

    std::string CheckOwn() override {
        const HWND edit = control_->GetEditWindow(), window = this->Window();
        if (!window) return edit ? "the edit's handle outlives the window" : "";
        if (!IsWindow(edit) || GetParent(edit) != window) return "the edit is not in its window";
        if (!std::isfinite(control_->GetNumber()) && control_->GetText().Length() < 5)
            return "a short text is no number";
        return {};
    }

private:
    void TakePlace() {
        const HWND label = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 30, 40, 90, 20, parent_->Window(),
                                           nullptr, nullptr, nullptr);
        control_->Create(parent_->Window(), label);
        if (IsWindow(label)) DestroyWindow(label);
    }

    void OperateOwn(const wchar_t* text, int number) {
        if constexpr (std::is_same_v<Box, CKxDevUI_EditBoxMultiValue>) {
            control_->SetSeparator(text && *text ? *text : L'|');
            control_->SetCountRestriction(number, 5);
            std::list<double> values;
            control_->GetValues(&values);
            values.push_back(number);
            if (control_->CheckRestriction(false) || !control_) return;
            control_->SetValues(&values);
        } else {
            // An arrow key, or the wheel.
            const HWND edit = control_->GetEditWindow();
            SendMessageW(edit, WM_KEYDOWN, number % 2 ? VK_UP : VK_NEXT, 0);
            SendMessageW(edit, WM_MOUSEWHEEL, MAKEWPARAM(0, number * 10), 0);
        }
    }
};

TEST(EditBoxStorm, Plain) { Rage<EditBoxSubject<CKxDevUI_EditBox>>("edit box"); }
TEST(EditBoxStorm, WithArrows) { Rage<EditBoxSubject<CKxDevUI_EditBoxSpin>>("edit box with arrows"); }
TEST(EditBoxStorm, ForAList) { Rage<EditBoxSubject<CKxDevUI_EditBoxMultiValue>>("edit box for a list"); }

}  // namespace
}  // namespace kx::test::storm
