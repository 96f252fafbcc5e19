// Storms against shutters.
#include "storm.h"

#include <memory>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_menu.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_shutter.h>

namespace kx::test::storm {
namespace {

// Ends itself, or whatever the step wants, in a callback.
class StormShutter : public CKxDevUI_Shutter {
public:
    using CKxDevUI_Shutter::m_locked;
    std::function<void()>* pending = nullptr;

protected:
    void OnStateChangeRequest(bool state, bool& veto) override {
        veto = !state;
        Act();
    }
    void OnRenameDlgRequest() override { Act(); }

private:
    void Act() {
        if (const auto act = std::exchange(*pending, nullptr)) act();
    }
};

class ShutterSubject : public Subject {
public:
    ShutterSubject() {
        CKxDeviceRegistry::Add(device_);
        device_.SetSpeed(0);
    }

    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        // What comes of a right click at last; over the parent's caption it would open the system menu and wait.
        parent.Answer(WM_CONTEXTMENU, 0);
        if (!shutter_) {
            shutter_ = std::make_unique<StormShutter>();
            shutter_->pending = &pending_;
        }
        shutter_->Destroy();
        if (++made_ % 2) {
            shutter_->SetTitleInButton(made_ % 4 == 1);
            shutter_->Create(parent.Window(), 20, 20, 90, 40, true, true);
        } else {
            const auto add = [&](const wchar_t* windowClass, int y) {
                return CreateWindowExW(0, windowClass, L"Dia & epi", WS_CHILD | WS_VISIBLE, 20, y, 70, 20,
                                       parent.Window(), nullptr, nullptr, nullptr);
            };
            shutter_->Create(add(L"BUTTON", 40), add(L"STATIC", 20));
        }
    }

    CKxDevUI_Base* Control() override { return shutter_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!shutter_ || !HWND{*shutter_}) return windows;
        windows.push_back({*shutter_, true});
        for (HWND child = GetWindow(*shutter_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const int n = random.Between(0, 15), length = random.Length();
        switch (random.Below(9)) {
        case 0: return {"updating by number", "", [=, this] { Update(device_.GetLogDevId() + (n == 15), n); }};
        case 1: return {"updating", "", [=, this] { shutter_->Update(&device_, n & 1, n & 2, n & 4); }};
        case 2: return {"changing the device", "", [=, this] { Change(n); }};
        case 3: return {"setting", "", [=, this] { Set(n, length); }};
        case 4: return {"deleting in a callback", "", [=, this] { Within(n, [this] { shutter_.reset(); }); }};
        case 5: return {"destroying in a callback", "", [=, this] { Within(n, [this] { shutter_->Destroy(); }); }};
        case 6:
            return {"updating in a callback", "",
                    [=, this] { Within(n, [=, this] { shutter_->Update(&device_, true, true, n & 1); }); }};
        case 7: return {"destroying the window", "", [this] { DestroyWindow(*shutter_); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        if (!shutter_) return {};
        const HWND window = *shutter_, button = shutter_->GetButtonHandle();
        if (!window) return button ? "there is a button without a window" : "";
        if (shutter_->m_locked && shutter_->GetEnabled()) return "a locked shutter is enabled";
        if (button && GetParent(button) != window) return "the button is elsewhere";
        if (button && (IsWindowEnabled(button) != FALSE) != shutter_->GetEnabled())
            return "the button is not enabled so";
        if (++checks_ % 16 == 0 && !PaintsItsBackground(window, KX_GetSysColor(COLOR_BTNFACE)))
            return "the background is not painted";
        return {};
    }

    void Destroy() override { shutter_.reset(); }

private:
    void Update(unsigned id, int n) { shutter_->Update(id, n & 1, n & 2, n & 4); }

    void Change(int n) {
        device_.SetLocked(n % 2);
        device_.SetOpen(n & 2);
        device_.Tick();
        device_.SetTitle(n & 4 ? std::wstring(10000, L'W').c_str() : nullptr);
        CKxDeviceRegistry::SetGrabberActive(n & 8);
    }

    void Set(int n, int length) {
        shutter_->SetState(n & 1);
        shutter_->SetType(static_cast<EKxShutterType>(length), n & 2);
        shutter_->SetAutomaticallyResizable(n & 4, length, 100);
        if (n == 8) shutter_->SetTitlePosition(n & 1, length), shutter_->SetSize(length, 40);
        if (n == 9) shutter_->DestroyControls();
        if (n == 10) shutter_->CreateControls();
    }

    void Within(int n, std::function<void()> act) {
        const HWND button = shutter_->GetButtonHandle();
        pending_ = std::move(act);
        // A click on a button that cannot be clicked never ends under Wine.
        const bool clickable = IsWindowVisible(button) && IsWindowEnabled(button);
        const UINT message = n % 3 ? WM_LBUTTONUP : n % 2 && clickable ? UINT{BM_CLICK} : UINT{WM_RBUTTONUP};
        SendMessageW(button, message, 0, 0);
        pending_ = nullptr;
    }

    RecordingParent* parent_ = nullptr;
    CKxSimShutter device_{L"Storm", eKxShutterType_Dia};
    std::unique_ptr<StormShutter> shutter_;
    std::function<void()> pending_;
    int made_ = 0;
    unsigned checks_ = 0;
};

TEST(ShutterStorm, Survives) {
    // The platform's menu would wait for a user.
    KX_SetMenuHandler([](HWND, const CKxMenu& menu, int x, int, void*) { return x % 2 ? menu.GetCommand(0) : 0; },
                      nullptr);
    Rage("shutter", [] { return std::make_unique<ShutterSubject>(); });
    KX_SetMenuHandler(nullptr, nullptr);
}

}  // namespace
}  // namespace kx::test::storm
