// The shutters, plain and mechanical, made by themselves and of a dialog's controls.
#include "subject.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_shutter.h>

namespace kx::test {
namespace {

template <class T>
struct Shutter : Telling<T> {
    using T::m_locked;

    void OnStateChangeRequest(bool state, bool& veto) override {
        veto = !state;
        this->Tell("OnStateChangeRequest");
    }
    void OnRenameDlgRequest() override { this->Tell("OnRenameDlgRequest"); }
};

enum class Made { Alone, OfADialog };

template <class T>
struct ShutterSubject : SubjectOf<Shutter<T>> {
    explicit ShutterSubject(Made made) : made_(made) {
        CKxDeviceRegistry::Add(device_);
        device_.SetSpeed(0);
        CKxDeviceRegistry::SetGrabberActive(false);
    }

    std::vector<std::wstring> OwnTexts() const override {
        return {L"Subject", L"Lamp & house", L"Dia & epi", L"Epi", L"WWW"};
    }

    std::vector<Exception> Exceptions() const override {
        std::vector<Exception> exceptions{{Law::Zoom, "a title's place", "at any length, some beyond a window's most"},
                                          {Law::Zoom, "fitting to the title", "at any length, as above"},
                                          {Law::Disabled, "by its window", "what is inside follows SetEnabled"},
                                          {Law::Disabled, "updating", "the device says whether it can be operated"}};
        for (const char* anew : {"updating", "making anew", "taking away"}) {
            if (made_ == Made::OfADialog)
                exceptions.push_back({Law::Zoom, anew, "what was a dialog's stands in pixels of the screen"});
        }
        return exceptions;
    }

    void Change(int n) override { control_->Update(&device_, true, true, n & 1); }

    bool Provoke(int n) override {
        const HWND button = control_->GetButtonHandle();
        // A click on a button that cannot be clicked never ends under Wine.
        const bool clickable = IsWindowVisible(button) && IsWindowEnabled(button);
        const UINT message = n % 3 ? WM_LBUTTONUP : n % 2 && clickable ? UINT{BM_CLICK} : UINT{WM_RBUTTONUP};
        SendMessageW(button, message, 0, 0);
        return true;
    }

    // Its image is one of the sizes that there are.
    int Coarseness() const override { return 48; }

    using SubjectOf<Shutter<T>>::control_;
    using SubjectOf<Shutter<T>>::Do;
    using SubjectOf<Shutter<T>>::parent_;

    void Make(HWND parent) override {
        // What comes of a right click at last; over the parent's caption it would open the system menu and wait.
        parent_->Answer(WM_CONTEXTMENU, 0);
        control_->Destroy();
        if (made_ == Made::Alone) {
            control_->SetTitleInButton(++times_ % 4 == 3);
            control_->CKxDevUI_Shutter::Create(parent, 20, 20, 90, 40, true, true);
        } else {
            const HWND title = AddChild(parent, L"STATIC", 0, {20, 20, 90, 40}, 0, L"Dia & epi");
            control_->Create(AddChild(parent, L"BUTTON", 0, {20, 40, 90, 60}, 0, L"Dia & epi"), title);
        }
        if (control_) control_->Update(&device_, true, true, true);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"updating by number",
             [this](Random& r) {
                 control_->Update(device_.GetLogDevId() + (r.OneIn(16) ? 1 : 0), r.OneIn(2), r.OneIn(2), r.OneIn(2));
             }},
            {"updating", [this](Random& r) { control_->Update(&device_, r.OneIn(2), r.OneIn(2), r.OneIn(2)); }},
            {"changing the device", [this](Random& r) { ChangeDevice(r.Between(0, 15)); }},
            {"a state", Do(&T::SetState, Flag)},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"a title", Do(&T::SetTitle, OneOf({L"Lamp & house", L"Epi"}))},
            {"a type", Do(&T::SetType, Within(-1, 4), Flag)},
            {"fitting to the title", Do(&T::SetAutomaticallyResizable, Flag, Length, Within(100, 100))},
            {"a title's place",
             [this](Random& r) {
                 const int length = r.Length();
                 control_->SetTitlePosition(r.OneIn(2), length), control_->SetSize(length, 40);
             }},
            {"taking away", Do(&T::DestroyControls)},
            {"making anew", Do(&T::CreateControls)},
        };
    }

    std::string CheckOwn() override {
        const HWND window = this->Window(), button = control_->GetButtonHandle();
        if (!window) return button ? "there is a button without a window" : "";
        if (control_->m_locked && control_->GetEnabled()) return "a locked shutter is enabled";
        const bool agrees = !button || (IsWindowEnabled(button) != FALSE) == control_->GetEnabled();
        return agrees ? "" : "the button is not enabled so";
    }

    void ChangeDevice(int n) {
        device_.SetLocked(n % 2), device_.SetOpen(n & 2), device_.Tick();
        device_.SetTitle(n & 4 ? std::wstring(10000, L'W').c_str() : nullptr);
        CKxDeviceRegistry::SetGrabberActive(n & 8);
    }

    CKxSimShutter device_{L"Subject", eKxShutterType_Dia};
    Made made_;
    int times_ = 0;
};

const Registered<ShutterSubject<CKxDevUI_Shutter>> shutter("shutter", Made::Alone);
const Registered<ShutterSubject<CKxDevUI_Shutter>> adopted("shutter of a dialog", Made::OfADialog);
const Registered<ShutterSubject<CKxDevUI_MechanicalShutter>> mechanical("mechanical shutter", Made::Alone);

}  // namespace
}  // namespace kx::test
