#include "dial.h"

#include <algorithm>

#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_translation.h>

#include "dial_device.h"

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"dial";

struct Told {
    std::vector<CKxStringW> names;
    long position = -1;
    std::optional<double> angle;
};

Told Ask(const IKxDeviceDial& device) {
    Told told;
    const long count = std::min<long>(device.GetPositionCount(), RadioRow::kMost);
    for (long i = 0; i < count; ++i)
        device.GetPositionName(i, told.names.emplace_back());
    device.GetPosition(told.position);
    if (double angle = 0; device.GetAngle(angle)) told.angle = angle;
    return told;
}

}  // namespace

Dial::Dial()
    : Control(this,
              {.name = L"Dial", .size = {220, 62}, .title = KX_GetTranslation(L"Dial", kSource), .tabsInside = true}) {}

bool Dial::Make(const Parts& parts) {
    const long field = m_width - 60;
    const CKxStringW text = KX_GetTranslation(L"Angle (degrees)", kSource);
    return parts.Label(m_label, kTitleId, m_title, {0, 0, m_width, 16}) && m_row.Make(parts, {0, 18, m_width, 38}, 2) &&
           parts.Label(kTitleId + 1, text, {0, 45, field - 4, 61}) && m_field.Make(parts, {field, 42, m_width, 62});
}

bool Dial::Update(CDMApi_LogDevId device) {
    return UpdateFrom<IKxDeviceDial>(this, kSource, device, Ask, [this](const Told& told) {
        SetAngle(told.angle);
        SetPositions(told.names, told.position);
    });
}

void Dial::SetPositions(const std::vector<CKxStringW>& names, long position) {
    const bool asMany = m_row.SetTexts(m_hWnd, names);  // if not, none is down now
    m_row.Show(m_hWnd, position);
    if (!asMany) Remake();
}

void Dial::SetPosition(long position) { m_row.Show(m_hWnd, position); }

void Dial::SetAngle(std::optional<double> angle) { m_field.Show(angle); }

void Dial::OnPositionRequest(long, bool&) {}

void Dial::OnAngleRequest(double, bool&) {}

void Dial::Command(int id, int code) {
    if (const long position = m_row.ClickedBy(id, code); position >= 0 && position != m_row.Shown())
        AskHost(this, &Dial::OnPositionRequest, position, &Dial::SetPosition);
    else if (const auto angle = m_field.TypedBy(id, code))
        AskHost(this, &Dial::OnAngleRequest, *angle, &Dial::SetAngle);
}
