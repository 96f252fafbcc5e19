// The image button, as a push button, a toggle, with a menu; the check box, made by itself and of a dialog's.
#include "subject.h"

#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/devgui_imagebutton.h>
#include <kxdevui/framework/devgui_activity.h>

namespace kx::test {
namespace {

struct Button : Telling<CKxDevUI_ImageButton> {
    void OnClickRequest(bool& veto) override { veto = ++clicks_ % 2, Tell("OnClickRequest"); }
    void OnStateChangeRequest(bool state, bool& veto) override { veto = state, Tell("OnStateChangeRequest"); }
    void OnMenuRequest(int) override { Tell("OnMenuRequest"); }
    int clicks_ = 0;
};

CKxMenu MenuOf(int items) {
    CKxMenu menu;
    for (int i = 1; i <= items; ++i)
        menu.AppendMenuItem(i, L"Home");
    return menu;
}

struct ButtonSubject : SubjectOf<Button> {
    explicit ButtonSubject(void (*become)(Button&)) : become_(become) {}

    std::vector<std::wstring> OwnTexts() const override { return {L"Home", L"Live", L"&Live"}; }
    int Coarseness() const override { return 48; }

    void Make(HWND parent) override {
        control_->SetImages({.normal = L"LIGHTPATH", .hovered = L"WINDOWOPEN_HOVER", .checked = L"WINDOWOPEN"});
        control_->SetTextPlace(EKxButtonText::Beside);
        control_->SetTitle(L"&Live");
        control_->SetToolTip(L"Home");
        become_(*control_);
        control_->Create(parent, 20, 20, 90, 44, true, true);
    }

    std::vector<Operation> MakeOperations() override {
        const auto name = OneOf<const wchar_t*>({nullptr, L"LIGHTPATH", L"WINDOWOPEN"});
        return {
            {"a state", Do(&Button::SetState, Flag)},
            {"a title", Do(&Button::SetTitle, OneOf({L"Live", L"Home", L""}))},
            {"a tooltip", Do(&Button::SetToolTip, OneOf<const wchar_t*>({L"Live", nullptr}))},
            {"a text's place", Do(&Button::SetTextPlace, Within(0, 2))},
            {"images", [=, this](Random& r) { control_->SetImages({.normal = name(r), .hovered = L"?"}); }},
            {"a toggle", Do(&Button::SetToggle, Flag)},
            {"a repetition", Do(&Button::SetAutoRepeat, Within(-1, 5), AnyInt)},
            {"a menu", [this](Random& r) { control_->SetMenu(MenuOf(r.Between(0, 2))); }},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
        };
    }

    bool Provoke(int) override { return SendMessageW(*control_, BM_CLICK, 0, 0), true; }
    std::string CheckOwn() override {
        return control_->IsRepeating() && !Window() ? "it repeats without a window" : "";
    }

    void (*become_)(Button&);
};

const Registered<ButtonSubject> push("image button", [](Button& b) { b.SetTextPlace(EKxButtonText::Below); });
const Registered<ButtonSubject> repeating("image button that repeats", [](Button& b) { b.SetAutoRepeat(5, 10); });
const Registered<ButtonSubject> toggle("image button that stays down", [](Button& b) { b.SetToggle(true); });
const Registered<ButtonSubject> menu("image button with a menu", [](Button& b) { b.SetMenu(MenuOf(3)); });

// ---- The check box -------------------------------------------------------------------------------------------------

struct Check : Telling<CKxDevUI_CheckBox> {
    void OnStateChangeRequest(int state, bool& veto) override { veto = state == 0, Tell("OnStateChangeRequest"); }
};

enum class Made { Alone, OfADialog };

struct CheckSubject : SubjectOf<Check> {
    explicit CheckSubject(Made made) : made_(made) {}

    std::vector<std::wstring> OwnTexts() const override { return {L"Live", L"&Live", L"Other"}; }

    void Make(HWND parent) override {
        control_->SetTitle(L"&Live image");
        if (made_ == Made::Alone) {
            control_->Create(parent, 20, 20, -1, -1, true, true);
            return;
        }
        control_->Destroy();
        const HWND box = AddChild(parent, L"BUTTON", 7, {20, 20, 130, 40}, BS_AUTO3STATE, L"&Live image");
        SendMessageW(box, BM_SETCHECK, BST_INDETERMINATE, 0);
        control_->Create(parent, box);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a state", Do(&Check::SetState, Within(-1, 3))},
            {"a title", Do(&Check::SetTitle, OneOf({L"Live image", L"Other"}))},
            {"a tooltip", Do(&Check::SetToolTip, OneOf<const wchar_t*>({L"Live", nullptr}))},
            {"three states", Do(&Check::SetThreeState, Flag)},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"as a dialog does",
             [this](Random& r) {
                 SendMessageW(Window(), BM_SETCHECK, static_cast<WPARAM>(r.Between(0, 3)), 0);
                 SetWindowTextW(Window(), L"Other");
             }},
        };
    }

    bool Provoke(int) override { return SendMessageW(*control_, BM_CLICK, 0, 0), true; }
    std::string CheckOwn() override {
        const HWND button = control_->GetButtonHandle();
        if (!button != !Window()) return "window and button are not there together";
        const int state = control_->GetState();
        if (state < 0 || state > (control_->IsThreeState() ? 2 : 1)) return "a state that there is not";
        // Others may hide it, and so may what was refused meanwhile.
        const bool known = KX_GetActivity(Window()).activity == EKxActivity::AtRest;
        return button && known && SendMessageW(button, BM_GETCHECK, 0, 0) != state ? "another state is shown" : "";
    }

    Made made_;
};

const Registered<CheckSubject> check("check box", Made::Alone);
const Registered<CheckSubject> adopted("check box of a dialog", Made::OfADialog);

}  // namespace
}  // namespace kx::test
