// kx::ui::NumberField: a field in a control by which the user asks for a number.
#pragma once

#include <optional>

#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/framework/devgui_members.h>

namespace kx::ui {

// Shows a number; another one that is typed is handed to the control, on Enter and when the focus goes, and what was
// shown comes back: the control shows the new one when it is agreed.
class KXDEVUI_API NumberField : public PartControl<CKxDevUI_EditBox> {
public:
    // Without a label, for numbers of the interval.
    NumberField(int id, double minimum, double maximum);

    // See MakePart; shows what it held before.
    bool Make(const Parts& parts, const RECT& place);
    // Empty where there is none, and for what is no number of the interval. One that is shown already disturbs nobody
    // who types.
    void Show(std::optional<double> number);
    // The number that is shown, whatever is being typed.
    std::optional<double> Shown() const noexcept { return m_shown; }
    // Whether it is a number of the interval.
    bool Takes(double number) const noexcept { return number >= m_minimum && number <= m_maximum; }
    // The number that WM_COMMAND of the control tells to have been typed. Empty for everything else: what is no number
    // of the interval, is what is shown, or was typed in a field that is disabled now.
    std::optional<double> TypedBy(int id, int code);

private:
    void Write();

    std::optional<double> m_shown;
};

}  // namespace kx::ui
