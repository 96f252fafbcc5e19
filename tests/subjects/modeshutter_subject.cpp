#include "subject.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_modeshutter.h>

namespace kx::test {
namespace {

struct Row : Telling<CKxDevUI_ModeShutter> {
    using CKxDevUI_ModeShutter::m_modeList, CKxDevUI_ModeShutter::m_slider;

    void OnApertureChangeRequest(double aperture, bool& veto) override {
        veto = aperture > 50;
        Tell("OnApertureChangeRequest");
    }
    void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override {
        veto = mode == eKxShutterMode_Soft;
        Tell("OnModeChangeRequest");
    }
};

struct ModeShutterSubject : SubjectOf<Row> {
    ModeShutterSubject() {
        CKxDeviceRegistry::Add(device_);
        device_.SetMode(eKxShutterMode_Aperture);
        device_.SetAperture(40);
    }

    std::vector<std::wstring> OwnTexts() const override { return {L"Shutter", L"Lamp"}; }
    std::vector<Exception> Exceptions() const override {
        return {
            {Law::Redraw, "an aperture", "the line of a slider that is disabled is drawn when it is enabled"},
            {Law::Later, "an aperture", "the line of a slider that is disabled is drawn when it is enabled"},
            {Law::Later, "updating", "as above"},
            {Law::Disabled, "", "SetEnabled is the base's, which stores the state: the mode says what can be used"}};
    }
    std::string FocusGoes(FocusLoss) override { return "the control"; }
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

    void Make(HWND parent) override {
        control_->Destroy();
        const int n = made_++;
        control_->SetSeparator(!(n & 1)), control_->SetShowTitle(!(n & 2)), control_->SetShowModes(n % 5 != 4);
        control_->SetTitle(L"Shutter");
        control_->Init(device_.GetLogDevId());
        control_->Create(parent, 20, 20, 300, 40, true, true);
        if (control_) control_->Update(&device_, false, true, true, true);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"updating by number",
             [this](Random& r) { Update(device_.GetLogDevId() + (r.OneIn(2) ? 1 : 0), r.Between(0, 15)); }},
            {"updating",
             [this](Random& r) { control_->Update(&device_, r.OneIn(2), r.OneIn(2), r.OneIn(2), r.OneIn(2)); }},
            {"changing the device", [this](Random& r) { ChangeDevice(r.Between(0, 31), AnyNumber(r)); }},
            {"a mode", Do(&Row::SetMode, Within(-2, 6))},
            {"an aperture", Do(&Row::SetAperture, AnyNumber)},
            {"a title", Do(&Row::SetTitle, OneOf({L"Lamp", L"Shutter"}))},
            {"the wheel", [this](Random& r) { control_->HandleMouseWheel(MAKEWPARAM(0, r.Between(-16, 15)), 0); }},
            {"forgetting", Do(&Row::Done)},
            {"taking away", Do(&Row::DestroyControls)},
            {"making anew", Do(&Row::CreateControls)},
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"readings", [this](Random& r) { TellAnyReadings(*control_, r); }},
        };
    }

    void Update(unsigned id, int n) { control_->Update(id, n & 1, n & 2, n & 4, n & 8); }

    void ChangeDevice(int n, double aperture) {
        device_.SetMode(static_cast<EKxShutterMode>(n % 4)), device_.SetAperture(aperture);
        device_.SetOpen(n & 4), device_.Tick();
    }

    CKxSimShutter device_{L"Subject", eKxShutterType_Epi, {5, 10, 20, 40, 80, 100}};
    int made_ = 0;
};

const Registered<ModeShutterSubject> modeShutter("mode shutter");

}  // namespace
}  // namespace kx::test
