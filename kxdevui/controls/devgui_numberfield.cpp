#include <kxdevui/controls/devgui_numberfield.h>

#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxsystem/kx_number.h>

namespace kx::ui {

NumberField::NumberField(int id, double minimum, double maximum) {
    SetId(id);
    Init({.showLabel = false});
    SetRestriction(minimum, maximum);
}

bool NumberField::Make(const Parts& parts, const RECT& place) {
    const std::optional<double> before = m_shown;
    if (before) SetNumberAtFirst(*before);
    if (!PartControl::Make(parts, place)) return false;
    // The parent, which is told of the field, may have shown another one.
    if (m_shown != before) Write();
    return static_cast<bool>(parts);
}

void NumberField::Show(std::optional<double> number) {
    if (number && !Takes(*number)) number.reset();
    if (number == m_shown) return;
    m_shown = number;
    Write();
}

void NumberField::Write() {
    if (m_shown)
        SetNumber(*m_shown);
    else
        SetText(L"");
    // What is typed from now on is the user's, even if it reads the same.
    SendMessageW(m_edit, EM_SETMODIFY, FALSE, 0);
}

std::optional<double> NumberField::TypedBy(int id, int code) {
    if (id != m_id || (code != kEditEnter && code != EN_KILLFOCUS)) return {};
    if (!SendMessageW(m_edit, EM_GETMODIFY, 0, 0)) return {};
    double number = 0;
    const bool usable = KX_StringToDouble(GetText(), number) && Takes(number);
    // Before the control asks its host, who may take the focus and so bring this about again.
    Write();
    return usable && number != m_shown && IsWindowEnabled(m_hWnd) ? std::optional(number) : std::nullopt;
}

}  // namespace kx::ui
