// For authors of controls: the life of a request (devgui_activity.h) of one control, and how it is drawn.
//
// A control of a device holds an Activity, says when its window comes and goes, tells it with every Update what
// ReadActivity has read, and asks it how each of its positions is to be drawn.
#pragma once

#include <windows.h>

#include <functional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_activity.h>

namespace kx::ui {

// What a device tells of itself; may throw, as devices may (AskDevice).
KXDEVUI_API KxActivity ReadActivity(const IKxDevice& device);

// What an Activity asks its control, and tells it; each gets the control's window.
struct ActivityHost {
    std::function<long(HWND)> held;         // the position that is held; -1 for none
    std::function<HWND(HWND, long)> place;  // the window of a position; null for one that is not there
    std::function<CKxStringW(HWND)> title;  // what screen readers are to call the control
    std::function<void(HWND)> changed;      // all that shows it is to be drawn anew
    std::function<RECT(HWND)> sign = {};    // where the face is free for the sign; empty where others draw it
    bool underlined = false;                // windows stand at its other edges: what has failed is underlined
    // Of a control with a slider inside: its window, which shows light and measured values; where in `place`, which is
    // that of every target then, the ring turns. Empty for others.
    std::function<HWND(HWND)> slider = {};
    std::function<RECT(HWND)> thumb = {};
};

// How a position is drawn.
enum class PlaceLook { Plain, Current, Hollow, Target };

// What one control knows of its last request, and how it shows that.
class KXDEVUI_API Activity {
public:
    // At rest, without a window.
    explicit Activity(ActivityHost host);
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

    // The control's window has come, is complete, is gone. There is one at a time, the last that has come.
    void Attach(HWND window);
    void Show();
    void Detach(HWND window) noexcept;
    // The same for whichever it belongs to; windows of controls call it by themselves.
    static void WindowGone(HWND window) noexcept;

    // From now on it is this, until it is told otherwise; before the control holds another position. Nothing is drawn
    // when it is so already. `device` is who has told, 0 for the host.
    void Tell(const KxActivity& now, CDMApi_LogDevId device = 0);
    // The control was given a position: an answer to what was asked.
    void Answer();

    // As it was told last.
    const KxActivity& Now() const noexcept { return m_now; }
    // As KX_GetActivity tells it.
    KxActivity Shown() const;
    // Whether nobody knows where it stands.
    bool IsLost() const noexcept {
        return m_now.activity == EKxActivity::Unknown || m_now.activity == EKxActivity::Failed;
    }
    // Whether what is held is drawn as current; how a position is drawn.
    bool ShowsHeld() const noexcept;
    PlaceLook LookOf(long position) const;
    // What a tooltip says beside its own text; empty while there is nothing wrong.
    CKxStringW Remark() const;
    // What a control tells of its device, in words; empty at rest, and for every other window.
    static CKxStringW StateOf(HWND control);
    // What screen readers are to call it; empty for every other window.
    static CKxStringW TitleOf(HWND control);
    // Whether the caption has a sign.
    bool HasSign() const noexcept { return m_now.activity != EKxActivity::AtRest; }
    // Whether a ring turns, which is when there is a timer.
    bool Turns() const noexcept { return m_turns; }

    // What is laid over a position's picture; over the caption, in a square; around all of the control.
    void DrawPlace(HDC dc, const RECT& area, long position, bool enabled) const;
    void DrawSign(HDC dc, const RECT& place) const;
    void DrawEdge(HDC dc, const RECT& area) const;
    // Edge and sign on the face of a window, if it has an Activity, before what is in it.
    static void DrawFace(HWND window, HDC dc, const RECT& area);
    // The ring on a window inside of such a control, around `area`, which is free for it; nothing unless it turns
    // there.
    static void DrawTarget(HWND place, HDC dc, const RECT& area, bool enabled);
    // Whether it does; the slider in a control, null for every other window.
    static bool IsTarget(HWND place);
    static HWND SliderIn(HWND control);
    // The side of the sign's square, in pixels of the screen.
    static long SignSide();
    // All of it for a control that is one button for all its positions: the sign stands in the corner of `picture`.
    void DrawButton(HDC dc, const RECT& area, const RECT& picture, bool enabled) const;

    // One question to the host, for the length of the callback; nested in another, it has a reason of its own.
    class KXDEVUI_API Question {
    public:
        // From here to the end of the scope.
        explicit Question(const Activity& activity) noexcept;
        ~Question();
        Question(const Question&) = delete;
        Question& operator=(const Question&) = delete;
        // Whether a reason was given.
        bool HasReason() const noexcept { return !m_reason.IsEmpty(); }
        // For a control that tells it later; empty without one.
        const CKxStringW& Reason() const noexcept { return m_reason; }

    private:
        friend class Activity;
        friend KXDEVUI_API bool ::KX_SayWhyRefused(const wchar_t* reason);
        Question* m_outer;
        unsigned m_answers;
        CKxStringW m_reason;
    };
    // The host has refused, which is told beside the position; or has taken over, and not answered meanwhile.
    void Refused(const Question& question, long position);
    void TakenOver(const Question& question, long position);

private:
    HWND TargetPlace() const;
    void Refuse(const KxActivity& refused);
    void Announce();
    void Turn();
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);

    ActivityHost m_host;
    HWND m_window = nullptr;
    KxActivity m_now;
    CDMApi_LogDevId m_device = 0;
    long m_old = -1;  // the position that was held when it left its rest
    int m_phase = 0;
    bool m_turns = false;
    unsigned m_answers = 0;
    bool m_announced = false;
    bool m_alerted = false;   // it has raised the alert of the failure that it is at
    CKxStringW m_ownText;     // of the window, before the first announcement
    HWND m_answer = nullptr;  // the window of the answer to the last refusal
    KxActivity m_refused;
};

}  // namespace kx::ui
