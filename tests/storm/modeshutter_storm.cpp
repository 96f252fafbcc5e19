// Storms against mode shutters.
#include "storm.h"

#include <kxbaseui/kx_colors.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_modeshutter.h>

namespace kx::test::storm {
namespace {

class Row : public Telling<CKxDevUI_ModeShutter> {
public:
    using CKxDevUI_ModeShutter::m_modeList;
    using CKxDevUI_ModeShutter::m_slider;

protected:
    void OnApertureChangeRequest(double aperture, bool& veto) override {
        veto = aperture > 50;
        Tell();
    }
    void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override {
        veto = mode == eKxShutterMode_Soft;
        Tell();
    }
};

class ModeShutterSubject : public SubjectOf<Row> {
public:
    ModeShutterSubject() { CKxDeviceRegistry::Add(device_); }

protected:
    void Make(HWND parent) override {
        control_->Destroy();
        const int n = made_++;
        control_->SetSeparator(n & 1);
        control_->SetShowTitle(n & 2);
        control_->SetShowModes(n % 5 != 4);
        control_->Init(device_.GetLogDevId());
        control_->Create(parent, 20, 20, 300, 40, true, true);
    }

    Step Own(Random& random) override {
        const int n = random.Between(0, 31);
        const double aperture = AnyNumber(random);
        switch (random.Below(4)) {
        case 0: return {"updating by number", [=, this] { Update(device_.GetLogDevId() + (n & 16 ? 1 : 0), n); }};
        case 1: return {"updating", [=, this] { control_->Update(&device_, n & 1, n & 2, n & 4, n & 8); }};
        case 2: return {"changing the device", [=, this] { ChangeDevice(n, aperture); }};
        default: return {"setting", [=, this] { Set(n, aperture); }};
        }
    }

    std::string CheckOwn() override {
        const HWND list = control_->m_modeList, slider = control_->m_slider;
        if (!Window()) return list || slider ? "there are parts without a window" : "";
        return list && GetParent(list) != Window() ? "the list is elsewhere" : "";
    }

    COLORREF Background() const override { return KX_GetSysColor(COLOR_BTNFACE); }

    void Change(int) override { Update(device_.GetLogDevId(), 15); }

    bool Provoke(int n) override {
        if (n % 2) {
            SendMessageW(control_->m_modeList, CB_SETCURSEL, 0, 0);
            SendMessageW(control_->m_modeList, WM_KEYDOWN, VK_DOWN, 1);
        } else {
            const HWND thumb = GetDlgItem(control_->m_slider, 10000);
            SendMessageW(thumb, WM_LBUTTONDOWN, 0, MAKELPARAM(20 + n, 5));
            if (IsWindow(thumb)) SendMessageW(thumb, WM_LBUTTONUP, 0, MAKELPARAM(20 + n, 5));
        }
        return true;
    }

private:
    void Update(unsigned id, int n) { control_->Update(id, n & 1, n & 2, n & 4, n & 8); }

    void ChangeDevice(int n, double aperture) {
        device_.SetMode(static_cast<EKxShutterMode>(n % 4));
        device_.SetAperture(aperture);
        device_.SetOpen(n & 4);
        device_.Tick();
    }

    void Set(int n, double aperture) {
        control_->SetMode(static_cast<EKxShutterMode>(n - 2));
        control_->SetAperture(aperture);
        control_->RedrawButtons();
        if (n == 5) control_->Done();
        if (n == 6) control_->DestroyControls();
        if (n == 7) control_->CreateControls();
        control_->HandleMouseWheel(MAKEWPARAM(0, n - 16), 0);
    }

    CKxSimShutter device_{L"Storm", eKxShutterType_Epi, {5, 10, 20, 40, 80, 100}};
    int made_ = 0;
};

TEST(ModeShutterStorm, Survives) { Rage<ModeShutterSubject>("mode shutter"); }

}  // namespace
}  // namespace kx::test::storm
