// CKxDevUI_LightSlider: a lamp.
#pragma once

#include <optional>

#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/devgui_lightcontrol.h>
#include <kxdevui/light/preset_row.h>

// A title, beside it how long the lamp still warms up, or cools before it can be lit again, or else the colour
// temperature of a halogen lamp; below it a shutter, if the device has one, a button that is down while the lamp is on,
// and its intensity by a slider, which is lit then, a field and arrows, in percent or volts. In the last row three
// presets (preset_row.h), and the hours that it has burnt, where the device tells them.
//
// What the user wants goes to the host by the protected callbacks, which may refuse it; then the control shows what it
// held before. It never sets the lamp, and raises nothing by itself: a preset that is recalled is asked for as a thumb
// that is moved is, and a lamp that is off stays so. What the device does arrives through Update, from the host or by
// the message 0x0500: while the light follows, the thumb is where it was set and a mark where it is
// (devgui_readings.h).
class KXDEVUI_API CKxDevUI_LightSlider : public kx::ui::LightControl {
public:
    // 268 by 92 unzoomed pixels, titled "Lamp", off, at 0 of 0 to 100 %, without shutter and presets. Wider, the slider
    // is.
    CKxDevUI_LightSlider();
    ~CKxDevUI_LightSlider() override;

    // Shows what the lamp with this number tells: `structure` reads its kind, unit, scale and shutter anew, `state`
    // whether it is on, its intensity, its times, whether it moves or has failed, and whether the shutter is open.
    // False, and nothing is shown, for a number that no lamp has, and where the device throws. Without flags both; the
    // message 0x0500 brings them (LightBand in devgui_messages.h).
    bool Update(CDMApi_LogDevId device) { return Update(device, {true, true}); }
    bool Update(CDMApi_LogDevId device, const kx::ui::LightBand& what);

    // The intensities that there are, as kx::lamp::ScaleOf makes them; where that makes none, slider, field, arrows and
    // presets go, and the button remains. `unit` is an EKxLampUnit.
    void SetScale(double minimum, double maximum, double step, int unit);
    const kx::lamp::Scale& GetScale() const noexcept { return m_scale; }

    // The intensity held, moved onto the scale; it may lie between two steps. What is no finite number is ignored. The
    // host is not asked.
    void SetIntensity(double intensity);
    double GetIntensity() const noexcept { return m_intensity; }
    // Whether it is on. The host is not asked.
    void SetOn(bool on);
    bool IsOn() const noexcept { return m_on; }

    // The colour temperature of a halogen lamp at its largest intensity, in kelvin; 0, and what is none, is not known
    // or no halogen lamp. That of the light that there is; empty while it is off, and where it cannot be told.
    void SetFullTemperature(double kelvin);
    std::optional<double> GetColorTemperature() const;

    // What a preset keeps, 0 to 2; empty is nothing. One off the scale is shown grey, and cannot be recalled. The host
    // is not asked.
    void SetPreset(int preset, std::optional<double> intensity) { m_presets.Keep(m_hWnd, preset, intensity); }
    std::optional<double> GetPreset(int preset) const noexcept { return m_presets.Kept(preset); }

protected:
    // ---- Callbacks: each may delete the control ----

    // The user wants another intensity, one that can be set: with each step of the thumb that is dragged, of the
    // arrows, the wheel and a key, by a number that is typed, for which it is the nearest, and by a preset. `veto`
    // keeps the one held.
    virtual void OnIntensityChangeRequest(double intensity, bool& veto);
    // The user wants it on or off; `veto` leaves it as it is. While the device tells that it cools down, nobody is
    // asked to light it, and the user is told why.
    virtual void OnStateChangeRequest(bool on, bool& veto);
    // The user has a preset keep the intensity that is held; `veto` leaves what it kept. Nothing can be kept while
    // nobody knows how it is with the lamp.
    virtual void OnPresetStoreRequest(int preset, double intensity, bool& veto);

    // As LightControl says.
    double OnScale(int number, double wanted) override;
    void OnLook() override;

private:
    friend class kx::ui::Control;
    // What the device tells of its time.
    struct Times {
        std::optional<double> measured;
        std::optional<double> warmUp;  // the part that is done
        double warmUpLeft = -1;        // seconds
        double coolDown = 0;           // seconds
        std::optional<double> burnt;   // hours
        double rated = 0;              // hours
    };
    struct Told;

    bool Make(const kx::ui::Parts& parts);
    bool MakeScale(const kx::ui::Parts& parts, long left);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    [[nodiscard]] bool HoldScale(const kx::lamp::Scale& scale, int unit);
    void Ask(double intensity);
    void AskState();
    void AskStore(int preset);
    void ShowIntensity();
    void ShowLight();
    void ShowTexts() const;
    CKxStringW ReadingText() const;
    CKxStringW HoursText() const;

    kx::ui::LightScale m_slider;
    kx::ui::NumberField m_field;
    kx::ui::PartControl<CKxDevUI_SpinBox> m_arrows;
    kx::ui::PresetRow m_presets;
    kx::lamp::Scale m_scale;
    int m_unit = eKxLampUnit_Percent;
    double m_intensity = 0;
    double m_fullTemperature = 0;
    bool m_on = false;
    Times m_times;
};
