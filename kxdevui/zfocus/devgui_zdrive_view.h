// The picture in a Z drive's control: a gauge of the range, the position in large digits, the trace of the last minute.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_members.h>
#include <kxdevui/zfocus/zdrive_rules.h>

namespace kx::zdrive {

// A window of its own, so that a step of the live position paints none of the buttons beside it.
class View : public kx::ui::Control {
public:
    View();
    ~View() override;

    // Shows a drive; only what looks otherwise than before is painted. Not `known`: nobody knows where it stands.
    void Show(const Drive& drive, bool known, double fineStep);
    // A sample of where it stands, and a beginning anew; both are seen with the next Show.
    void Sample(unsigned now, double position);
    void Forget();

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts&) { return true; }
    std::optional<LRESULT> Handle(const kx::ui::Message& message);

    // Where things stand in the client area.
    struct Places {
        RECT gauge;
        RECT digits;
        RECT trace;
        RECT below;  // what is said beside the trace
    };
    Places PlacesNow() const;
    // The rows of what a gauge shows.
    struct Rows {
        std::optional<int> at, target, home, lower, upper, top, bottom;
        bool operator==(const Rows&) const = default;
    };
    Rows RowsIn(const RECT& gauge) const;
    CKxStringW DigitsText() const;
    CKxStringW BelowText() const;
    void DrawGauge(HDC dc, const RECT& gauge, bool enabled) const;
    void DrawDigits(HDC dc, const RECT& place, bool enabled) const;
    void DrawTrace(HDC dc, const Places& places, bool enabled) const;

    Drive m_drive;
    bool m_known = true;
    double m_fineStep = 0;
    Trace m_trace;
    bool m_traceIsOther = false;  // than the one on the screen
    CKxStringW m_below;           // as it is on the screen
};

}  // namespace kx::zdrive
