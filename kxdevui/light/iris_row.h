// kx::ui::IrisRow: the parts of one iris in a control: its picture, the slider over its table, the field, the unit.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/light/devgui_lightcontrol.h>
#include <kxdevui/light/iris_rules.h>

namespace kx::ui {

// What an iris has told of itself.
struct IrisTold {
    // What it limits, in what it counts, its table, its widest numerical aperture; where it was sent, where it stands.
    EKxDiaphragm diaphragm = eKxDiaphragm_Field;
    int unit = eKxIrisUnit_Percent;
    std::vector<double> table;
    double widestNA = 0;
    std::optional<double> asked;
    std::optional<double> stands;
    bool hasShutter = false;
    bool open = false;
    KxActivity activity;

    // Asks it, for its table and all that is always so only with `structure`. Throws what the device throws.
    static IrisTold Of(const IKxDeviceIris& device, bool structure);
};

// A row of 38 unzoomed pixels; its parts have the ids from `first` on: the picture, the field, the unit. It holds what
// it shows, also without a window.
class KXDEVUI_API IrisRow {
public:
    // The slider has this number in its control.
    IrisRow(LightControl& owner, int number, int first);

    // Makes the parts; false when the control has gone. An iris without steps has the picture alone.
    bool Make(const Parts& parts, const RECT& place);
    // Another table, which is sorted and cleared of what is no aperture, and unit. True when slider and field come or
    // go: the control has its parts made anew.
    [[nodiscard]] bool SetTable(std::vector<double> steps, int unit, double widestNA);
    // Where it is sent. What is no finite number is ignored.
    void SetAperture(double aperture);
    double GetAperture() const noexcept { return m_aperture; }

    // Of these.
    const std::vector<double>& Table() const noexcept { return m_table; }
    int Unit() const noexcept { return m_unit; }
    double WidestNA() const noexcept { return m_widestNA; }
    LightScale& Slider() noexcept { return m_slider; }
    // The step that the user has typed; empty for every other command.
    std::optional<double> TypedBy(int id, int code);

    // Whether a window is the slider or in the field.
    bool Has(HWND part) const { return part && (part == HWND{m_slider} || IsChild(m_field, part)); }
    // Slider and field in the control's window.
    void Enable(bool enable);

    // WM_DRAWITEM of the picture: true when it was that. `lit`: light comes through.
    bool Draw(HWND control, const Message& message, bool lit, bool lost) const;
    // Draws the picture anew.
    void Redraw(HWND control) const;

private:
    LightScale m_slider;
    NumberField m_field;
    int m_first;
    std::vector<double> m_table;
    int m_unit = eKxIrisUnit_Percent;
    double m_widestNA = 0;
    double m_aperture = 0;
};

}  // namespace kx::ui
