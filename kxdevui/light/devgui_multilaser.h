// CKxDevUI_MultiLaser: all lines of a laser engine.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/light/multilaser_rules.h>

namespace kx::ui {
class Activity;
}

// The lines of a laser engine (CKxDevUI_MultiLaserLine) below each other, from the shortest wavelength to the longest,
// in columns, in one area that scrolls where there is no room for all. Above them stand a button that turns all lines
// off, and one that links them by a common factor, with its field; beside each line one that leaves it alone on.
//
// Lines are numbered as the engine numbers them, wherever they stand. What one line shows and asks for, its own page
// says; here the host hears it with the number of the line. A line of which something has changed is repainted, and no
// other; where there are more or fewer, all are made anew.
//
//     the user                       the host is asked                 the veto
//     acts on a line                 OnLinePowerChangeRequest,         leaves the line as it is
//                                    OnLineStateChangeRequest
//     presses "Solo" of a line       OnSoloRequest                     leaves all lines as they are
//     presses "All off"              OnAllOffRequest                   leaves all lines as they are
//     enters a factor                OnLinkChangeRequest               leaves all powers as they are
//
// A factor is in percent of the powers at which the lines were linked. It is for all lines that can be operated,
// keeps the ratios of their powers, and stops where the first of them is at its limit. A power that changes otherwise
// makes 100 % of what all have then. Which powers it raises the request says; nothing else here raises one.
//
// All lines have one scale and one unit; the menu of any of them chooses for all. Setters tell nobody.
class KXDEVUI_API CKxDevUI_MultiLaser : public kx::ui::Control {
public:
    // No set has more; those beyond are left out, and logged.
    static constexpr long kMost = 64;

    // 560 by 236 unzoomed pixels, which has room for five lines, titled "Lasers", without lines.
    CKxDevUI_MultiLaser();
    ~CKxDevUI_MultiLaser() override;

    // Shows the lines of the engine with this number. False for a number that no engine has, and where it throws;
    // nothing is changed then. A line of which the engine tells nothing is shown, but cannot be operated.
    bool Update(CDMApi_LogDevId engine);

    // The lines, in the order of their numbers, as kx::multilaser::Cleaned makes them.
    void SetLines(const std::vector<SKxLaserLine>& lines);
    // They, as they are shown.
    std::vector<SKxLaserLine> GetLines() const;
    // The numbers of the lines from the top to the bottom.
    const std::vector<long>& GetOrder() const noexcept { return m_order; }

    // For all lines; see CKxDevUI_MultiLaserLine.
    void SetScale(EKxPowerScale scale);
    EKxPowerScale GetScale() const noexcept { return m_scale; }
    void SetUnit(EKxPowerUnit unit);
    EKxPowerUnit GetUnit() const noexcept { return m_unit; }
    // Whether the lines are linked: at a factor of 100 % from now on.
    void SetLinked(bool linked);
    bool IsLinked() const noexcept { return m_linked; }
    double GetFactor() const noexcept { return m_factor; }

    // For the slider that has the focus; otherwise the lines are scrolled. True when that has moved anything.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // For a control that derives from the set.
    template <class T>
    CKxDevUI_MultiLaser(T* self, const Design& design) : Control(self, design) {
        Begin();
    }
    // Makes all parts below this edge, in unzoomed pixels; false when the control has gone.
    bool MakeBelow(const kx::ui::Parts& parts, long top);

    // What an engine tells of its lines.
    static std::vector<SKxLaserLine> AskLines(const IKxDeviceLaserEngine& engine);
    // Asks the host, and calls `show` if it agrees; tells the user if it does not.
    void Ask(const std::function<void(bool& veto)>& ask, const std::function<void()>& show);

    // ---- Callbacks: each may end the control ----

    // The user wants another power of a line, or it on or off. Setting `veto` leaves it as it is.
    virtual void OnLinePowerChangeRequest(long line, double percent, bool& veto);
    virtual void OnLineStateChangeRequest(long line, bool on, bool& veto);
    // The user wants this line alone on: all others are to go off, and then it on (kx::multilaser::SoloSteps).
    virtual void OnSoloRequest(long line, bool& veto);
    // The user wants all lines off.
    virtual void OnAllOffRequest(bool& veto);
    // The user wants another common factor, in percent, at which the linked lines have these powers.
    virtual void OnLinkChangeRequest(double factor, const std::vector<SKxLinkedPower>& powers, bool& veto);
    // The user has chosen another scale or unit, or has linked the lines or unlinked them, which is shown already.
    virtual void OnViewChanged();

    // What a control that derives from the set leaves to it.
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    void Command(int id, int code);

private:
    friend class kx::ui::Control;
    struct Inside;
    void Begin();
    bool Make(const kx::ui::Parts& parts) { return MakeBelow(parts, 0); }
    RECT SignPlace() const;
    void ShowUsable();
    void ShowLink();
    void HoldLink();
    std::vector<kx::multilaser::Linked> Linked() const;
    void AskAllOff();
    void AskSolo(long line);
    void AskFactor(double factor);
    void Switch(const std::vector<SKxLaserSwitch>& steps);

    std::shared_ptr<kx::ui::Activity> m_requests;
    std::shared_ptr<Inside> m_inside;  // shared, as what derives need not know it
    std::vector<long> m_order;
    EKxPowerScale m_scale = EKxPowerScale::Logarithmic;
    EKxPowerUnit m_unit = EKxPowerUnit::Percent;
    bool m_linked = false;
    bool m_asks = false;  // for powers of several lines, which come one by one
    double m_factor = 100;
    std::vector<double> m_bases;  // the powers at 100 %, by the number of the line
    kx::ui::NumberField m_field{10200, 0, 1e6};
};
