#include <kxdevui/light/devgui_lightnd.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/light/nd_rules.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"devgui_lightnd";
constexpr int kProduct = kTitleId + 1;
// Unzoomed pixels.
constexpr long kTop = 22, kRow = 34, kNext = 38, kLeft = 4, kBesideShutter = 38, kRight = 4, kReading = 100, kSign = 18;

}  // namespace

// What a device has told; what of its rows is not wanted stays empty.
struct CKxDevUI_LightND::Told {
    std::array<std::vector<double>, kMostWheels> transmissions;
    std::array<long, kMostWheels> positions{};
    bool hasShutter = false;
    bool open = false;
    KxActivity activity;

    static Told Of(const IKxDeviceNDFilter& device, const LightBand& what) {
        Told told;
        const long wheels = std::clamp<long>(device.GetWheelCount(), 0, kMostWheels);
        for (long wheel = 0; wheel < kMostWheels; ++wheel) {
            const auto at = static_cast<std::size_t>(wheel);
            long position = -1;
            if (wheel < wheels && !device.GetTarget(wheel, position)) device.GetPosition(wheel, position);
            told.positions[at] = position;
            const long count = wheel < wheels && what.structure ? device.GetPositionCount(wheel) : 0;
            for (long i = 0; i < std::min<long>(count, kMostPositions); ++i)
                told.transmissions[at].push_back(device.GetTransmission(wheel, i));
        }
        told.hasShutter = device.HasShutter();
        told.open = device.IsShutterOpen();
        told.activity = ReadActivity(device);
        return told;
    }
};

CKxDevUI_LightND::CKxDevUI_LightND()
    : LightControl(this, {.name = L"KxDEVGUI_LightND",
                          .size = {268, 62},
                          .title = KX_GetTranslation(L"Neutral density", kSource),
                          .tabsInside = true}) {}

CKxDevUI_LightND::~CKxDevUI_LightND() { Binding::EndOwnWindow(this); }

bool CKxDevUI_LightND::Make(const Parts& parts) {
    const long left = HasShutter() ? kBesideShutter : kLeft, right = Width() - kRight;
    if (!MakeTitle(parts, kReading + kRight) || !MakeShutter(parts, {kLeft, kTop + 3}) ||
        !parts.Label(kProduct, ProductText(), {right - kReading - kSign, 2, right - kSign, 18}))
        return false;
    long top = kTop;
    for (Wheel& each : m_wheels) {
        if (!each.row.Make(parts, {left, top, right, top + kRow}, 2, BS_MULTILINE)) return false;
        if (each.row.Count() > 0) top += kNext;
    }
    return Finish(parts);
}

bool CKxDevUI_LightND::Update(CDMApi_LogDevId id, const LightBand& what) {
    const auto ask = [&](const IKxDeviceNDFilter& device) { return Told::Of(device, what); };
    return UpdateFrom<IKxDeviceNDFilter>(this, kSource, id, ask, [&](const Told& told) {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        bool other = false;
        if (what.structure) {
            for (std::size_t i = 0; i < m_wheels.size(); ++i)
                other |= SetWheel(m_wheels[i], told.transmissions[i]);
            other |= told.hasShutter != HasShutter();
            SetHasShutter(told.hasShutter);
        }
        if (what.state) {
            for (int i = 0; i < kMostWheels; ++i)
                SetPosition(i, told.positions[static_cast<std::size_t>(i)]);
            SetShutter(told.open);
        }
        if (other) Remake();
        if (alive) Follow(told.activity, id);
    });
}

// ---- What is shown -------------------------------------------------------------------------------------------------

// True when there are more or fewer buttons than before.
bool CKxDevUI_LightND::SetWheel(Wheel& wheel, const std::vector<double>& transmissions) {
    std::vector<CKxStringW> texts;
    texts.reserve(transmissions.size());
    for (const double each : transmissions) {
        // A button that is down has less room in the system's look, and would break a line at its blank.
        std::wstring text = kx::nd::PercentText(each).str();
        std::erase(text, L' ');
        text += L'\n' + kx::nd::DensityText(each).str();
        std::replace(text.begin(), text.end(), L' ', L'\u00A0');
        texts.emplace_back(text.c_str());
    }
    wheel.transmissions = transmissions;
    wheel.transmissions.resize(std::min<std::size_t>(transmissions.size(), kMostPositions));
    const bool asMany = wheel.row.SetTexts(m_hWnd, texts);
    ShowProduct();
    return !asMany;
}

void CKxDevUI_LightND::SetTransmissions(int wheel, const std::vector<double>& transmissions) {
    if (wheel < 0 || wheel >= kMostWheels) return;
    if (SetWheel(m_wheels[static_cast<std::size_t>(wheel)], transmissions)) Remake();
}

void CKxDevUI_LightND::SetPosition(int wheel, long position) {
    if (wheel < 0 || wheel >= kMostWheels) return;
    m_wheels[static_cast<std::size_t>(wheel)].row.Show(m_hWnd, position);
    ShowProduct();
}

long CKxDevUI_LightND::GetPosition(int wheel) const noexcept {
    return wheel >= 0 && wheel < kMostWheels ? m_wheels[static_cast<std::size_t>(wheel)].row.Shown() : -1;
}

std::optional<double> CKxDevUI_LightND::GetTransmission() const {
    std::vector<double> in;
    for (const Wheel& each : m_wheels) {
        if (each.transmissions.empty()) continue;
        const int at = each.row.Shown();
        if (at < 0) return {};
        in.push_back(each.transmissions[static_cast<std::size_t>(at)]);
    }
    const double product = kx::nd::InSeries(in);
    return in.empty() || std::isnan(product) ? std::nullopt : std::optional(product);
}

CKxStringW CKxDevUI_LightND::ProductText() const {
    const auto through = GetTransmission();
    return through ? kx::nd::PercentText(*through) + L"   " + kx::nd::DensityText(*through) : CKxStringW();
}

void CKxDevUI_LightND::ShowProduct() const { SetTextOf(PartAt(kProduct), ProductText()); }

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_LightND::OnAttenuationChangeRequest(int, long, bool&) {}

void CKxDevUI_LightND::Command(int id, int code) {
    for (int i = 0; i < kMostWheels; ++i) {
        const long position = m_wheels[static_cast<std::size_t>(i)].row.ClickedBy(id, code);
        if (position < 0 || position == GetPosition(i)) continue;
        const auto held = [&] { return GetPosition(i); };
        if (IsGranted(held, [&](bool& veto) { OnAttenuationChangeRequest(i, position, veto); }))
            SetPosition(i, position);
        return;
    }
}

Handled CKxDevUI_LightND::Handle(const Message& message) {
    const Handled told = DescribePart(message, [this](HWND part, KxAccess& access) {
        for (std::size_t i = 0; i < m_wheels.size(); ++i) {
            const int at = m_wheels[i].row.ClickedBy(GetDlgCtrlID(part), BN_CLICKED);
            if (at < 0) continue;
            const double through = m_wheels[i].transmissions[static_cast<std::size_t>(at)];
            CKxStringW wheel;
            wheel.Format(64, KX_GetTranslation(L"Wheel %d", kSource), static_cast<int>(i) + 1);
            access.name = Listed({wheel, KX_FormatNumber(L"%.3g ", through * 100) + UnitInWords(L"%")});
        }
        return false;
    });
    return told ? told : HandleLight(message);
}
