// Storms against edit boxes: plain, with arrows, for a list.
#include "storm.h"

#include <cmath>
#include <limits>
#include <list>
#include <memory>
#include <type_traits>
#include <utility>

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

namespace kx::test::storm {
namespace {

double AnyNumber(Random& random) {
    if (!random.OneIn(6)) return random.Between(-40, 240) / 2.0;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return random.Of({0.0, 1e-300, -1e300, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
}

template <class Box>
class EditBoxSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        parent.Answer(WM_COMMAND, [this](WPARAM, LPARAM) { return End(), 0; });
        if (!box_) box_ = std::make_unique<Box>();
        box_->SetId(7);
        box_->SetSize(50, 70, 20);
        box_->Create(parent.Window(), 5, 5, -1, -1, true, true);
    }

    CKxDevUI_Base* Control() override { return box_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!box_ || !HWND{*box_}) return windows;
        windows.push_back({*box_, true});
        for (HWND child = GetWindow(*box_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random);
        const bool on = random.OneIn(2), off = random.OneIn(2);
        const auto text = random.Of<const wchar_t*>({L"", L"12", L"1;2;3", L"x", L"1e999", nullptr});
        const auto format = random.Of<const wchar_t*>({L"%g", L"%.2f", L"%.9999f", L"%s%n", L"%d", nullptr});
        const int number = random.Between(-2, 400);
        const bool seldom = random.OneIn(4);
        switch (random.Below(16)) {
        case 0: return {"a number", "", [=, this] { box_->SetNumber(a, format, on); }};
        case 1: return {"a text", "", [=, this] { box_->SetText(text); }};
        case 2: return {"an interval", "", [=, this] { box_->SetRestriction(a, b); }};
        case 3: return {"checking", "", [=, this] { box_->CKxDevUI_EditBox::CheckRestriction(false, on, a); }};
        case 4: return {"Init", "", [=, this] { box_->Init(on, off, seldom); }};
        case 5: return {"a border", "", [=, this] { box_->SetStyle(on); }};
        case 6: return {"sizes", "", [=, this, cx = random.Length()] { box_->SetSize(cx, number, number / 8); }};
        case 7: return {"a limit", "", [=, this] { box_->SetMaxChars(number); }};
        case 8: return {"a placeholder", "", [this] { TakePlace(); }};
        case 9: return {"destroying the window", "", [this] { DestroyWindow(*box_); }};
        case 10: return {"a copy", "", [this] { const Box copy(*box_); }};
        case 11: return {"its own", "", [=, this] { OperateOwn(text, number); }};
        case 12:
            return {"typing", "", [=, this] { SendMessageW(box_->GetEditWindow(), WM_CHAR, on ? L'5' : L'\r', 0); }};
        default: return {"an end to come", "", [this, on] { end_ = on ? Ending::Object : Ending::Window; }};
        }
    }

    std::string Check() override {
        if (!wrong_.empty() || !box_) return wrong_;
        const HWND edit = box_->GetEditWindow();
        if (!HWND{*box_}) return edit ? "the edit's handle outlives the window" : "";
        if (!IsWindow(edit) || GetParent(edit) != HWND{*box_}) return "the edit is not in its window";
        if (!std::isfinite(box_->GetNumber()) && box_->GetText().Length() < 5) return "a short text is no number";
        return {};
    }

    void Destroy() override {
        end_ = Ending::None;
        box_.reset();
    }

private:
    enum class Ending { None, Window, Object };

    // Comes with the next notification, in the middle of whatever causes it.
    void End() {
        const Ending end = std::exchange(end_, Ending::None);
        if (end == Ending::None || !box_) return;
        parent_->Record().Clear();
        if (end == Ending::Object) {
            box_.reset();
        } else {
            box_->Destroy();
        }
        if (!parent_->Record().Entries().empty()) wrong_ = "the parent was told of a destruction";
    }

    void TakePlace() {
        const HWND label = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 30, 40, 90, 20, parent_->Window(),
                                           nullptr, nullptr, nullptr);
        box_->Create(parent_->Window(), label);
        if (IsWindow(label)) DestroyWindow(label);
    }

    void OperateOwn(const wchar_t* text, int number) {
        if constexpr (std::is_same_v<Box, CKxDevUI_EditBoxMultiValue>) {
            box_->SetSeparator(text && *text ? *text : L'|');
            box_->SetCountRestriction(number, 5);
            std::list<double> values;
            box_->GetValues(&values);
            values.push_back(number);
            if (box_->CheckRestriction(false) || !box_) return;
            box_->SetValues(&values);
        } else {
            // An arrow key, or the wheel.
            const HWND edit = box_->GetEditWindow();
            SendMessageW(edit, WM_KEYDOWN, number % 2 ? VK_UP : VK_NEXT, 0);
            SendMessageW(edit, WM_MOUSEWHEEL, MAKEWPARAM(0, number * 10), 0);
        }
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Box> box_;
    Ending end_ = Ending::None;
    std::string wrong_;
};

TEST(EditBoxStorm, Plain) {
    Rage("edit box", [] { return std::make_unique<EditBoxSubject<CKxDevUI_EditBox>>(); });
}

TEST(EditBoxStorm, WithArrows) {
    Rage("edit box with arrows", [] { return std::make_unique<EditBoxSubject<CKxDevUI_EditBoxSpin>>(); });
}

TEST(EditBoxStorm, ForAList) {
    Rage("edit box for a list", [] { return std::make_unique<EditBoxSubject<CKxDevUI_EditBoxMultiValue>>(); });
}

}  // namespace
}  // namespace kx::test::storm
