// CKxDevUI_LightIris2: field and aperture diaphragm in one control.
#pragma once

#include <array>

#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/iris_row.h>

// A title, a shutter where one of the two devices has one, and for each diaphragm what CKxDevUI_LightIris has. Where
// the device tells its numerical aperture, that of the light stands above the second slider, beside the objective's,
// and the part of the scale is marked where it is 0.7 to 0.8 of that.
//
// A check box couples the aperture diaphragm to the objective: when it is switched on, the control asks at once for the
// step that is nearest to 0.75. It asks for nothing when the objective changes: the host that has agreed to the
// coupling sends the device to GetMatchedAperture then. Moved by the user, the diaphragm is coupled no more, for which
// the host is asked before.
//
// The control never moves a device. What they do arrives through Update, from the host or by the message 0x0500.
class KXDEVUI_API CKxDevUI_LightIris2 : public kx::ui::LightControl {
public:
    // 268 by 160 unzoomed pixels, titled "Diaphragms", without apertures and shutter, not coupled.
    CKxDevUI_LightIris2();
    ~CKxDevUI_LightIris2() override;

    // Shows what the device with this number tells. An iris says itself which of the two it is; the flags are those of
    // CKxDevUI_LightIris. A nosepiece tells the objective, whose numerical aperture comes from the database of
    // objectives. False, and nothing is shown, for every other number, and where the device throws. What moves, has
    // failed or is locked is shown of the device with which it is worst; of the two, a locked one is disabled.
    bool Update(CDMApi_LogDevId device) { return Update(device, {true, true}); }
    bool Update(CDMApi_LogDevId device, const kx::ui::LightBand& what);

    // As those of CKxDevUI_LightIris, for one of the two. `widestNA` is the numerical aperture at the widest, 0 when it
    // is not known.
    void SetApertures(EKxDiaphragm diaphragm, const std::vector<double>& apertures, int unit, double widestNA = 0);
    void SetAperture(EKxDiaphragm diaphragm, double aperture);
    double GetAperture(EKxDiaphragm diaphragm) const noexcept { return RowOf(diaphragm).row.GetAperture(); }

    // The objective's; 0, and all that is no finite number above it, is not known.
    void SetObjectiveNA(double na);
    double GetObjectiveNA() const noexcept { return m_objectiveNA; }
    // Whether the aperture diaphragm is coupled to it. The host is not asked.
    void SetCoupled(bool coupled);
    bool IsCoupled() const noexcept { return m_couple.GetState() == eKxCheckState_On; }
    // The step at which the light has the part of the objective's numerical aperture that is the custom; empty where
    // that is not known.
    std::optional<double> GetMatchedAperture() const;

protected:
    // ---- Callbacks: each may delete the control ----

    // The user wants another aperture of one of the two; see CKxDevUI_LightIris.
    virtual void OnApertureChangeRequest(EKxDiaphragm diaphragm, double aperture, bool& veto);
    // The user wants the aperture diaphragm to follow the objective, or no more. `veto` leaves it as it is.
    virtual void OnCoupleRequest(bool couple, bool& veto);

    // As LightControl says.
    double OnScale(int number, double wanted) override;
    void OnLook() override;

private:
    friend class kx::ui::Control;
    class KXDEVUI_API CoupleBox : public kx::ui::PartControl<CKxDevUI_CheckBox> {
    public:
        explicit CoupleBox(CKxDevUI_LightIris2& owner) : m_owner(owner) {}

    protected:
        void OnStateChangeRequest(int state, bool& veto) override;

    private:
        CKxDevUI_LightIris2& m_owner;
    };
    struct Row {
        Row(CKxDevUI_LightIris2& owner, int number, int first) : row(owner, number, first) {}
        kx::ui::IrisRow row;
        CDMApi_LogDevId device = 0;
        KxActivity activity;
        bool hasShutter = false;
    };

    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    Row& RowOf(EKxDiaphragm diaphragm) { return m_rows[diaphragm == eKxDiaphragm_Aperture ? 1 : 0]; }
    const Row& RowOf(EKxDiaphragm diaphragm) const { return m_rows[diaphragm == eKxDiaphragm_Aperture ? 1 : 0]; }
    bool SetRow(Row& row, const kx::ui::IrisTold& told);
    void ShowIris(CDMApi_LogDevId device, const kx::ui::IrisTold& told, const kx::ui::LightBand& what);
    void Ask(EKxDiaphragm diaphragm, double aperture);
    void Enable(bool enable);
    CKxStringW NAText() const;
    void ShowNA();

    std::array<Row, 2> m_rows;
    CoupleBox m_couple{*this};
    double m_objectiveNA = 0;
};
