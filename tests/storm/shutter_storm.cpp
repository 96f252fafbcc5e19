// Storms against shutters.
#include "storm.h"

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_menu.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_shutter.h>

namespace kx::test::storm {
namespace {

class Shutter : public Telling<CKxDevUI_Shutter> {
public:
    using CKxDevUI_Shutter::m_locked;

protected:
    void OnStateChangeRequest(bool state, bool& veto) override {
        veto = !state;
        Tell();
    }
    void OnRenameDlgRequest() override { Tell(); }
};

class ShutterSubject : public SubjectOf<Shutter> {
public:
    ShutterSubject() {
        CKxDeviceRegistry::Add(device_);
        device_.SetSpeed(0);
    }

protected:
    void Make(HWND parent) override {
        // What comes of a right click at last; over the parent's caption it would open the system menu and wait.
        parent_->Answer(WM_CONTEXTMENU, 0);
        control_->Destroy();
        if (++made_ % 2) {
            control_->SetTitleInButton(made_ % 4 == 1);
            control_->Create(parent, 20, 20, 90, 40, true, true);
        } else {
            const auto add = [&](const wchar_t* windowClass, int y) {
                return CreateWindowExW(0, windowClass, L"Dia & epi", WS_CHILD | WS_VISIBLE, 20, y, 70, 20, parent,
                                       nullptr, nullptr, nullptr);
            };
            control_->Create(add(L"BUTTON", 40), add(L"STATIC", 20));
        }
    }

    Step Own(Random& random) override {
        const int n = random.Between(0, 15), length = random.Length();
        switch (random.Below(4)) {
        case 0: return {"updating by number", [=, this] { Update(device_.GetLogDevId() + (n == 15), n); }};
        case 1: return {"updating", [=, this] { control_->Update(&device_, n & 1, n & 2, n & 4); }};
        case 2: return {"changing the device", [=, this] { ChangeDevice(n); }};
        default: return {"setting", [=, this] { Set(n, length); }};
        }
    }

    std::string CheckOwn() override {
        const HWND window = Window(), button = control_->GetButtonHandle();
        if (!window) return button ? "there is a button without a window" : "";
        if (control_->m_locked && control_->GetEnabled()) return "a locked shutter is enabled";
        if (button && GetParent(button) != window) return "the button is elsewhere";
        const bool agrees = !button || (IsWindowEnabled(button) != FALSE) == control_->GetEnabled();
        return agrees ? "" : "the button is not enabled so";
    }

    COLORREF Background() const override { return KX_GetSysColor(COLOR_BTNFACE); }

    void Change(int n) override { control_->Update(&device_, true, true, n & 1); }

    bool Provoke(int n) override {
        const HWND button = control_->GetButtonHandle();
        // A click on a button that cannot be clicked never ends under Wine.
        const bool clickable = IsWindowVisible(button) && IsWindowEnabled(button);
        const UINT message = n % 3 ? WM_LBUTTONUP : n % 2 && clickable ? UINT{BM_CLICK} : UINT{WM_RBUTTONUP};
        SendMessageW(button, message, 0, 0);
        return true;
    }

private:
    void Update(unsigned id, int n) { control_->Update(id, n & 1, n & 2, n & 4); }

    void ChangeDevice(int n) {
        device_.SetLocked(n % 2);
        device_.SetOpen(n & 2);
        device_.Tick();
        device_.SetTitle(n & 4 ? std::wstring(10000, L'W').c_str() : nullptr);
        CKxDeviceRegistry::SetGrabberActive(n & 8);
    }

    void Set(int n, int length) {
        control_->SetState(n & 1);
        control_->SetType(static_cast<EKxShutterType>(length), n & 2);
        control_->SetAutomaticallyResizable(n & 4, length, 100);
        if (n == 8) control_->SetTitlePosition(n & 1, length), control_->SetSize(length, 40);
        if (n == 9) control_->DestroyControls();
        if (n == 10) control_->CreateControls();
    }

    CKxSimShutter device_{L"Storm", eKxShutterType_Dia};
    int made_ = 0;
};

TEST(ShutterStorm, Survives) {
    // The platform's menu would wait for a user.
    KX_SetMenuHandler([](HWND, const CKxMenu& menu, int x, int, void*) { return x % 2 ? menu.GetCommand(0) : 0; },
                      nullptr);
    Rage<ShutterSubject>("shutter");
    KX_SetMenuHandler(nullptr, nullptr);
}

}  // namespace
}  // namespace kx::test::storm
