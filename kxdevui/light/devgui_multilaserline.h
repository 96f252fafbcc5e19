// CKxDevUI_MultiLaserLine: one line of a laser engine.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_members.h>
#include <kxdevui/light/multilaser_rules.h>

struct KxAccess;
namespace kx::ui {
class Activity;
}

// A line of a laser engine in a row: a point in its colour, name and wavelength, a button that is down while it is on,
// its power by slider and field, and what is known of it beside: the power that was measured, the gain of its filter,
// why it is dark. The slider is lit while the line is on (devgui_readings.h), with a mark where another power was
// measured.
//
// The scale is logarithmic at first, from 0.01 to 100 %, with zero by itself to the left; powers are in percent or, of
// a line whose full power is known, in milliwatts. A menu of the right button chooses both.
//
//     the user                           the host is asked                             the veto
//     drags the thumb                    OnPowerChangeRequest for each new place       keeps the old power
//     turns the wheel*, presses a key    OnPowerChangeRequest                          brings the old power back
//     enters a number                    OnPowerChangeRequest                          brings the old power back
//     presses the button                 OnStateChangeRequest                          leaves it as it is
//
// * over the slider that has the focus: a wheel that scrolls past a laser is not to raise it.
//
// Nothing beyond the line's limit is ever asked for: the thumb stops there, and the field does not take it. A line that
// cannot be operated, or that an open interlock keeps dark, is shown, with the reason, but disabled; a drag that is
// going on is over then, and the power is what was agreed last. Setters tell nobody, and nothing is shown anew that is
// shown already.
class KXDEVUI_API CKxDevUI_MultiLaserLine : public kx::ui::Control {
public:
    // The slider inside, whose values are places on the scale of powers (multilaser_rules.h).
    class KXDEVUI_API CKxDevUI_MultiLaserLineHPot : public CKxDevUI_HPot {
    public:
        // Of no line: tells nobody. On the logarithmic scale, at 0.
        CKxDevUI_MultiLaserLineHPot();

        // Whom to tell.
        void SetOwner(CKxDevUI_MultiLaserLine* owner) { m_owner = owner; }
        // The scale, on which the power stays; the colour of the light: true for another one.
        void SetScale(EKxPowerScale scale);
        bool SetColor(COLORREF color);
        // In percent, as it was set: the thumb stands where that is, also between two places.
        void SetPower(double percent);
        double GetPower() const noexcept { return m_power; }
        // Only with the focus: a wheel that scrolls past a laser is not to raise it.
        bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;
        // Where the thumb is, with what is around it, in client coordinates.
        RECT ThumbPlace() { return ThumbArea(); }

    protected:
        void OnHPotChange(double& value, bool& skip) override;
        void OnHPotDragDrop() override;
        HBITMAP CreateLinearBitmap(bool enabled) override;

    private:
        CKxDevUI_MultiLaserLine* m_owner = nullptr;
        EKxPowerScale m_powers = EKxPowerScale::Logarithmic;
        double m_power = 0;
    };

    // 520 by 42 unzoomed pixels, without name, at 0 %. Wider or narrower, the slider alone is.
    CKxDevUI_MultiLaserLine();
    ~CKxDevUI_MultiLaserLine() override;

    // Which line of an engine it is; 0 at first.
    void SetLineNumber(long number) { m_number = number; }
    long GetLineNumber() const noexcept { return m_number; }
    // Shows what the engine with this number tells of it. False for a number that no engine has, a line that it has
    // not, and where it throws; nothing is changed then.
    bool Update(CDMApi_LogDevId engine);

    // All that is shown, as kx::multilaser::Cleaned makes it.
    void SetLine(const SKxLaserLine& line);
    const SKxLaserLine& GetLine() const noexcept { return m_line; }
    // Its power, moved between 0 and 100 %; what is no number is ignored. Whether it is on.
    void SetPower(double percent);
    void SetOn(bool on);

    // How powers stand on the slider, and what they are shown in; percent of a line whose full power is not known.
    void SetScale(EKxPowerScale scale);
    EKxPowerScale GetScale() const noexcept { return m_scale; }
    void SetUnit(EKxPowerUnit unit);
    EKxPowerUnit GetUnit() const noexcept { return m_unit; }

    // For the slider, if that has the focus; true when it has moved.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // ---- Callbacks: each may end the control ----

    // The user wants another power, or the line on or off. Setting `veto` leaves it as it is.
    virtual void OnPowerChangeRequest(double percent, bool& veto);
    virtual void OnStateChangeRequest(bool on, bool& veto);
    // The user has chosen another scale or unit, which is shown already.
    virtual void OnViewChanged();
    // The focus has come into the line, to its button or its field.
    virtual void OnFocused();

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);

    void AskPower(double percent);
    void AskState(bool on);
    void ShowMenu(POINT at);
    void Show();
    void ShowPower();
    void ShowTexts();
    void ShowLight(HWND button);
    void ShowUsable();
    void ShowRequests() const;
    KxActivity ActivityNow() const;
    CKxStringW NameText() const;
    CKxStringW InfoText() const;
    CKxStringW SpokenName() const;
    bool Tell(HWND part, KxAccess& access);
    CKxStringW UnitText() const;
    CKxStringW PowerText(double percent) const;
    double FieldValue() const;
    COLORREF Color() const;
    RECT SignPlace() const;

    SKxLaserLine m_line;
    long m_number = 0;
    EKxPowerScale m_scale = EKxPowerScale::Logarithmic;
    EKxPowerUnit m_unit = EKxPowerUnit::Percent;
    std::unique_ptr<kx::ui::Activity> m_requests;
    kx::ui::PartControl<CKxDevUI_MultiLaserLineHPot> m_slider;
    kx::ui::NumberField m_field{10200, 0, 100};
};
