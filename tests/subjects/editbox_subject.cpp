// The edit boxes: plain, with arrows, for a list; and the arrows alone.
#include "subject.h"

#include <cmath>
#include <list>

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/framework/ui_life.h>

namespace kx::test {
namespace {

template <class Box>
struct EditBoxSubject : SubjectOf<Box> {
    std::vector<std::wstring> OwnTexts() const override { return {L"Length:", L"R&D"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Silence, "7:768", "EN_CHANGE comes for every change of the text, whoever made it"},
                {Law::Silence, "7:256", "EN_SETFOCUS: a check that fails gives the edit the focus"},
                {Law::Silence, "7:512", "EN_KILLFOCUS: what is disabled gives the focus away"},
                {Law::Silence, "its own", "keys and the wheel are the user's"},
                {Law::Silence, "typing", "is the user's"},
                {Law::Silence, "OnSpin", "comes of a key or the wheel"},
                {Law::Focus, "a placeholder", "the host ends the window that has it"},
                {Law::Zoom, "a placeholder", "stands at a place of the screen"}};
    }

    using SubjectOf<Box>::control_;
    using SubjectOf<Box>::Do;
    using SubjectOf<Box>::parent_;

    void Make(HWND parent) override {
        this->Hear({WM_COMMAND});
        control_->SetId(7);
        control_->SetSize(50, 70, 20);
        control_->SetTitle(L"Length:");
        control_->Create(parent, 5, 5, -1, -1, true, true);
        control_->SetText(L"12.5");
    }

    std::vector<Operation> MakeOperations() override {
        const auto text = OneOf<const wchar_t*>({L"", L"12", L"1;2;3", L"x", L"1e999", nullptr});
        const auto format = OneOf<const wchar_t*>({L"%g", L"%.2f", L"%.9999f", L"%s%n", L"%d", nullptr});
        return {
            {"a number", Do(&Box::SetNumber, AnyNumber, format, Flag)},
            {"a text", Do(&Box::SetText, text)},
            {"an interval", Do(&Box::SetRestriction, AnyNumber, AnyNumber)},
            {"checking",
             [this](Random& r) { control_->CKxDevUI_EditBox::CheckRestriction(false, r.OneIn(2), AnyNumber(r)); }},
            {"checking aloud",
             [this](Random& r) {
                 control_->SetRestriction(5, 6);
                 control_->SetText(L"1;2");
                 if (!control_) return;
                 if constexpr (std::is_base_of_v<CKxDevUI_EditBoxMultiValue, Box>)
                     control_->CheckRestriction(true);
                 else
                     control_->CheckRestriction(true, false, AnyNumber(r));
             }},
            {"Init",
             [this](Random& r) {
                 control_->Init({r.OneIn(2), r.OneIn(2), r.OneIn(4)});
             }},
            {"a border", Do(&Box::SetStyle, Flag)},
            {"a label", Do(&Box::SetTitle, OneOf({L"", L"R&D", L"Length:"}))},
            {"sizes", Do(&Box::SetSize, Length, Within(-2, 400), Within(0, 50))},
            {"a limit", Do(&Box::SetMaxChars, Within(-2, 400))},
            {"a placeholder", [this](Random&) { TakePlace(); }},
            {"its own", [=, this](Random& r) { OperateOwn(text(r), r.Between(-2, 400)); }},
            {"typing",
             [this](Random& r) { SendMessageW(control_->GetEditWindow(), WM_CHAR, r.OneIn(2) ? L'5' : L'\r', 0); }},
        };
    }

    std::string CheckOwn() override {
        const HWND edit = control_->GetEditWindow(), window = this->Window();
        if (!window) return edit ? "the edit's handle outlives the window" : "";
        if (!IsWindow(edit) || GetParent(edit) != window) return "the edit is not in its window";
        if (!std::isfinite(control_->GetNumber()) && control_->GetText().Length() < 5)
            return "a short text is no number";
        return {};
    }

    void TakePlace() {
        const HWND label = AddChild(parent_->Window(), L"STATIC", 0, {30, 40, 120, 60});
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
            const HWND edit = control_->GetEditWindow();
            SendMessageW(edit, WM_KEYDOWN, number % 2 ? VK_UP : VK_NEXT, 0);
            SendMessageW(edit, WM_MOUSEWHEEL, MAKEWPARAM(0, number * 10), 0);
        }
    }
};

const Registered<EditBoxSubject<CKxDevUI_EditBox>> plain("edit box");
struct Spinning : Telling<CKxDevUI_EditBoxSpin> {
    void OnSpin(int steps) override {
        const kx::ui::Alive alive(this);
        Tell("OnSpin");
        if (alive) CKxDevUI_EditBoxSpin::OnSpin(steps);
    }
};

const Registered<EditBoxSubject<Spinning>> withArrows("edit box with arrows");
const Registered<EditBoxSubject<CKxDevUI_EditBoxMultiValue>> forAList("edit box for a list");

struct SpinSubject : SubjectOf<CKxDevUI_SpinBox> {
    std::vector<Exception> Exceptions() const override {
        return {{Law::Keys, "msctls_updown32", "the keys are its field's"},
                {Law::Zoom, "by itself", "the platform's up-down is zoomed by what it stands in"}};
    }
    std::vector<RECT> Parts() override {
        RECT client{};
        GetClientRect(Window(), &client);
        const LONG half = client.bottom / 2;
        return {{0, 0, client.right, half}, {0, half, client.right, client.bottom}};
    }

    void Make(HWND parent) override {
        Hear({WM_NOTIFY, WM_VSCROLL});
        control_->SetTitle(L"turns");
        control_->Create(parent, 5, 5, 20, 24, true, true);
        control_->SetRange(0, 10, 11);
        control_->SetPosition(5);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a range", Do(&CKxDevUI_SpinBox::SetRange, AnyNumber, AnyNumber, Within(-2, 400))},
            {"a position", Do(&CKxDevUI_SpinBox::SetPosition, Within(-2, 12))},
            {"asking", [this](Random& r) { control_->ValueOf(r.AnyInt()), control_->PositionOf(AnyNumber(r)); }},
        };
    }
};

const Registered<SpinSubject> arrows("arrows");

}  // namespace
}  // namespace kx::test
