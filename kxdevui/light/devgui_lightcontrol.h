// kx::ui::LightControl: what the controls of lamps and of what stands in the light have in common.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_members.h>
#include <kxdevui/light/devgui_shutter.h>

namespace kx::ui {

class Activity;
class LightControl;

// The slider in such a control. Whatever the user does with it is asked of the control, and then it stands where the
// control has it.
class KXDEVUI_API LightScale : public PartControl<CKxDevUI_HPot> {
public:
    // With this number in that control.
    LightScale(LightControl& owner, int number) : m_owner(owner), m_number(number) {}

    // Stands there, as near as its values let it, also at one that is less than 0.001 from another.
    void Show(double value);
    // Marks a part of the scale; none where `from` is not below `to`.
    void SetBand(double from, double to);
    // Where its thumb is, with what is drawn around it.
    using CKxDevUI_HPot::ThumbArea;
    // The same in the pointer's window alone: of several sliders one takes a turn of the wheel.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // Ask the control.
    void OnHPotChange(double& value, bool& skip) override;
    void OnHPotDragDrop() override;
    // With the band.
    HBITMAP CreateLinearBitmap(bool enabled) override;
    HBITMAP CreateNonlinearBitmap(bool enabled) override;

private:
    HBITMAP WithBand(HBITMAP scale) const;

    LightControl& m_owner;
    int m_number;
    double m_given = 0, m_shown = 0;
    double m_from = 0, m_to = 0;
};

// A control with a title, a shutter before the light, if there is any, and a slider that shows how it is with its
// device. What is refused is told beside it, and then it shows again what it held.
class KXDEVUI_API LightControl : public Control {
public:
    ~LightControl() override;

    // A device that cannot be operated from here keeps it disabled.
    void SetEnabled(bool enable) override;
    // Offered to the slider under the pointer.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

    // Whether the shutter is open. The host is not asked.
    void SetShutter(bool open);
    bool GetShutter() const { return m_shutter.GetState(); }

protected:
    // ---- Callbacks: each may delete the control ----

    // The user wants the shutter open or shut; `veto` leaves it as it is.
    virtual void OnShutterChangeRequest(bool open, bool& veto);
    // For controls that derive from this one: the user moves the slider with this number. Answers with what it is to
    // stand at then.
    virtual double OnScale(int number, double wanted);
    // Something that belongs to the look of other parts has changed.
    virtual void OnLook();

    // For the control T that is being made.
    template <class T>
    LightControl(T* self, const Design& design) : Control(self, design), m_shutter(*this) {
        Begin();
    }

    // The parts that all have, in unzoomed pixels: the title, which leaves room for a sign, and for so much before
    // it; the shutter, a button of 28 by 28. Where there is none, nothing is made. False when the control has gone.
    bool MakeTitle(const Parts& parts, long room = 0);
    bool MakeShutter(const Parts& parts, POINT at);
    // The width for the parts, unzoomed: the nominal one, cut to what a window can have.
    long Width() const noexcept;
    // Last of all that is made: shows how it is with the device. False as above.
    bool Finish(const Parts& parts);
    // Whether there is one, for the next time.
    void SetHasShutter(bool has) noexcept { m_hasShutter = has; }
    bool HasShutter() const noexcept { return m_hasShutter; }
    // The sliders, of which the first shows what is told of the control, until another moves.
    void Take(LightScale& scale) { m_scales.push_back(&scale); }

    // What the device with this number tells of its requests, shown on the slider with that number. A locked one cannot
    // be used.
    void Follow(const KxActivity& now, CDMApi_LogDevId device, int number = 0);
    // Whether nobody knows how it is with the device.
    bool IsLost() const;
    // Asks the host by `ask`; a refusal is told beside the control. True when what it agrees to is to be shown: not
    // when it has ended the control, or its device has told meanwhile that it is locked or has failed.
    bool IsGranted(const std::function<void(bool& veto)>& ask);
    // The same for another value in the place of what `held` answers: not either when that is another one already,
    // which the device or the host has told meanwhile.
    template <class Held>
    bool IsGranted(const Held& held, const std::function<void(bool& veto)>& ask) {
        const auto before = held();
        return IsGranted(ask) && held() == before;
    }
    // The messages that a derived control leaves to this: it has to have a Handle that calls it.
    std::optional<LRESULT> HandleLight(const Message& message);

private:
    friend class LightScale;
    void Begin();
    LightScale* Shown() const;
    void ShowRequests();
    RECT SignPlace() const;

    // The shutter hands the user's wish to the control.
    class KXDEVUI_API CKxDevUI_LightShutter : public PartControl<CKxDevUI_Shutter> {
    public:
        // A button alone, without a title or a menu.
        explicit CKxDevUI_LightShutter(LightControl& owner);

        // See MakePart; unzoomed, as all parts are made.
        bool Make(const Parts& parts, const RECT& place);

    protected:
        // See OnShutterChangeRequest of the control.
        void OnStateChangeRequest(bool newState, bool& veto) override;

    private:
        LightControl& m_owner;
    };

    std::unique_ptr<Activity> m_requests;
    std::vector<LightScale*> m_scales;
    std::size_t m_shown = 0;  // of them
    CKxDevUI_LightShutter m_shutter;
    bool m_hasShutter = false;
    bool m_locked = false;
};

}  // namespace kx::ui
