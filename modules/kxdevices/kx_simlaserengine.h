// A simulated laser engine: lines behind an acousto-optic filter, with an interlock, in subsets of which the light
// leaves by one fibre or another.
#pragma once

#include <vector>

#include <kxdevices/kx_simdevices.h>

// What leaves a line takes time to settle; dark it is at once. Nothing but SetLineOn makes light: an interlock that has
// been open, and a subset that was left, leave their lines off.
class KXDEVICES_API CKxSimLaserEngine : public CKxSim<IKxDeviceLaserEngine> {
public:
    // Of the lines name, wavelength, limit, full power and gain are taken, and a power to begin with; all are off. The
    // first subset is active; `exclusive` says that one is at a time.
    CKxSimLaserEngine(const wchar_t* key, const std::vector<SKxLaserLine>& lines,
                      std::vector<SKxLaserSubset> subsets = {}, bool exclusive = true);

    // Switches a line; false for one that is not there, and, switching on, while it fails, the interlock is open or the
    // line in no active subset.
    bool SetLineOn(long line, bool on);
    // In percent; false for a line that is not there, beyond its limit, and while it fails.
    bool SetLinePower(long line, double percent);
    // Opens or closes the interlock, for a reason; opened, it turns all lines off.
    void SetInterlock(bool open, const CKxStringW& why = {});
    bool IsInterlockOpen() const noexcept { return m_interlock; }
    // Takes a subset into use or out of it: the lines of it that are in no other go off. Where one is active at a time,
    // the others are left, and none can be taken out by itself. False for one that is not there, and while it fails.
    bool SetSubsetActive(long subset, bool active);
    // A module is put in, as the last line, or taken out: the lines behind it count one less.
    void AddLine(const SKxLaserLine& line);
    bool RemoveLine(long line);

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override;
    bool GetCapability(int capability) const override;
    long GetLineCount() const override { return static_cast<long>(m_lines.size()); }
    bool GetLine(long line, SKxLaserLine& told) const override;
    long GetSubsetCount() const override { return static_cast<long>(m_subsets.size()); }
    bool GetSubset(long subset, SKxLaserSubset& told) const override;

protected:
    bool TellsOnTheWay() const noexcept override { return true; }
    bool TellsTarget() const noexcept override { return false; }
    bool StandsStill() override;

private:
    struct Line {
        SKxLaserLine told;
        SKxSimWay light;
    };
    static Line Fresh(const SKxLaserLine& line);
    Line* LineAt(long line);
    const Line* LineAt(long line) const;
    bool IsReached(long line) const;
    void Hold(Line& line);
    void Settle(Line& line);
    void Darken(Line& line);
    void DarkenUnreached();
    void Tell(EKxDeviceChange what) const { CKxDeviceRegistry::Notify(GetLogDevId(), what); }

    std::vector<Line> m_lines;
    std::vector<SKxLaserSubset> m_subsets;
    bool m_exclusive;
    bool m_interlock = false;
    CKxStringW m_interlockWhy;
};
