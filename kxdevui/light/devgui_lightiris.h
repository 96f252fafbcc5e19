// CKxDevUI_LightIris: an iris diaphragm with its shutter.
#pragma once

#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/iris_row.h>

// A title; below it a shutter, if the device has one, a picture of the iris that opens with its aperture, a slider over
// the apertures that the device has, and a field with their unit: percent, millimetres or the steps of the drive.
//
// What the user wants goes to the host by the protected callbacks, which may refuse it; then the control shows what it
// held before. It never moves the iris. What the device does arrives through Update, from the host or by the message
// 0x0500: while it moves, the thumb is where it was sent and a mark where it stands (devgui_readings.h).
class KXDEVUI_API CKxDevUI_LightIris : public kx::ui::LightControl {
public:
    // 268 by 64 unzoomed pixels, titled "Iris diaphragm", without apertures and shutter.
    CKxDevUI_LightIris();
    ~CKxDevUI_LightIris() override;

    // Shows what the iris with this number tells: `structure` reads its table, unit and shutter anew, `state` its
    // aperture, whether it moves or has failed, and whether the shutter is open. False, and nothing is shown, for a
    // number that no iris has, and where the device throws. Without flags both; the message 0x0500 brings them
    // (LightBand in devgui_messages.h).
    bool Update(CDMApi_LogDevId device) { return Update(device, {true, true}); }
    bool Update(CDMApi_LogDevId device, const kx::ui::LightBand& what);

    // The apertures that there are, in any order; what is negative or no finite number is left out. Without any there
    // are no slider and no field, and the shutter remains. `unit` is an EKxIrisUnit.
    void SetApertures(const std::vector<double>& apertures, int unit);
    const std::vector<double>& GetApertures() const noexcept { return m_row.Table(); }

    // The aperture held, which may lie between two of the table: the slider stands at the nearest. What is no finite
    // number is ignored. The host is not asked.
    void SetAperture(double aperture);
    double GetAperture() const noexcept { return m_row.GetAperture(); }

protected:
    // The user wants another aperture, one of the table: with each step of the thumb that is dragged, of the wheel and
    // of a key, and by a number that is typed, for which it is the nearest. `veto` keeps the one held. The control may
    // be deleted from here.
    virtual void OnApertureChangeRequest(double aperture, bool& veto);

    // As LightControl says.
    double OnScale(int number, double wanted) override;
    void OnLook() override;

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    void Ask(double aperture);

    kx::ui::IrisRow m_row;
};
