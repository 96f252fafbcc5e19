// Storms against mode shutters.
#include "storm.h"

#include <limits>
#include <memory>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_modeshutter.h>

namespace kx::test::storm {
namespace {

// Ends itself, or whatever the step wants, in a callback.
class StormRow : public CKxDevUI_ModeShutter {
public:
    using CKxDevUI_ModeShutter::m_apertures;
    using CKxDevUI_ModeShutter::m_modeList;
    using CKxDevUI_ModeShutter::m_slider;
    std::function<void()>* pending = nullptr;

protected:
    void OnApertureChangeRequest(double aperture, bool& veto) override { Act(veto, aperture > 50); }
    void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override { Act(veto, mode == eKxShutterMode_Soft); }

private:
    void Act(bool& veto, bool refuse) {
        veto = refuse;
        if (const auto act = std::exchange(*pending, nullptr)) act();
    }
};

class ModeShutterSubject : public Subject {
public:
    ModeShutterSubject() { CKxDeviceRegistry::Add(device_); }

    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        if (!row_) {
            row_ = std::make_unique<StormRow>();
            row_->pending = &pending_;
        }
        row_->Destroy();
        const int n = made_++;
        row_->SetSeparator(n & 1);
        row_->SetShowTitle(n & 2);
        row_->SetShowModes(n % 5 != 4);
        row_->Init(device_.GetLogDevId());
        row_->Create(parent.Window(), 20, 20, 300, 40, true, true);
    }

    CKxDevUI_Base* Control() override { return row_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!row_ || !HWND{*row_}) return windows;
        windows.push_back({*row_, true});
        for (HWND child = GetWindow(*row_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, child == HWND{row_->m_slider}});
        return windows;
    }

    Step Operate(Random& random) override {
        const int n = random.Between(0, 31);
        const double aperture = random.Of({0.0, 20.0, 55.0, -1e300, std::numeric_limits<double>::quiet_NaN()});
        switch (random.Below(9)) {
        case 0: return {"updating by number", "", [=, this] { Update(device_.GetLogDevId() + (n & 16 ? 1 : 0), n); }};
        case 1: return {"updating", "", [=, this] { row_->Update(&device_, n & 1, n & 2, n & 4, n & 8); }};
        case 2: return {"changing the device", "", [=, this] { Change(n, aperture); }};
        case 3: return {"setting", "", [=, this] { Set(n, aperture); }};
        case 4: return {"deleting in a callback", "", [=, this] { Within(n, [this] { row_.reset(); }); }};
        case 5: return {"destroying in a callback", "", [=, this] { Within(n, [this] { row_->Destroy(); }); }};
        case 6:
            return {"updating in a callback", "",
                    [=, this] { Within(n, [this] { Update(device_.GetLogDevId(), 15); }); }};
        case 7: return {"destroying the window", "", [this] { DestroyWindow(*row_); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        if (!row_) return {};
        const HWND window = *row_, list = row_->m_modeList, slider = row_->m_slider;
        if (!window) return list || slider ? "there are parts without a window" : "";
        if (list && GetParent(list) != window) return "the list is elsewhere";
        if (++checks_ % 16 == 0 && !PaintsItsBackground(window, KX_GetSysColor(COLOR_BTNFACE)))
            return "the background is not painted";
        return {};
    }

    void Destroy() override { row_.reset(); }

private:
    void Update(unsigned id, int n) { row_->Update(id, n & 1, n & 2, n & 4, n & 8); }

    void Change(int n, double aperture) {
        device_.SetMode(static_cast<EKxShutterMode>(n % 4));
        device_.SetAperture(aperture);
        device_.SetOpen(n & 4);
        device_.Tick();
    }

    void Set(int n, double aperture) {
        row_->SetMode(static_cast<EKxShutterMode>(n - 2));
        row_->SetAperture(aperture);
        row_->RedrawButtons();
        if (n == 5) row_->Done();
        if (n == 6) row_->DestroyControls();
        if (n == 7) row_->CreateControls();
        row_->HandleMouseWheel(MAKEWPARAM(0, n - 16), 0);
    }

    void Within(int n, std::function<void()> act) {
        pending_ = std::move(act);
        if (n % 2) {
            SendMessageW(row_->m_modeList, CB_SETCURSEL, 0, 0);
            SendMessageW(row_->m_modeList, WM_KEYDOWN, VK_DOWN, 1);
        } else {
            const HWND thumb = GetDlgItem(row_->m_slider, 10000);
            SendMessageW(thumb, WM_LBUTTONDOWN, 0, MAKELPARAM(20 + n, 5));
            if (IsWindow(thumb)) SendMessageW(thumb, WM_LBUTTONUP, 0, MAKELPARAM(20 + n, 5));
        }
        pending_ = nullptr;
    }

    RecordingParent* parent_ = nullptr;
    CKxSimShutter device_{L"Storm", eKxShutterType_Epi, {5, 10, 20, 40, 80, 100}};
    std::unique_ptr<StormRow> row_;
    std::function<void()> pending_;
    int made_ = 0;
    unsigned checks_ = 0;
};

TEST(ModeShutterStorm, Survives) {
    Rage("mode shutter", [] { return std::make_unique<ModeShutterSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
