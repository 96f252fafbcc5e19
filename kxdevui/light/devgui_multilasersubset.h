// CKxDevUI_MultiLaserSubset: the lines of a laser engine in subsets, of which some are in use.
#pragma once

#include <windows.h>

#include <vector>

#include <kxdevui/light/devgui_multilaser.h>

// A set of laser lines (CKxDevUI_MultiLaser) below a row of buttons, one for each subset: the lines that share a fibre,
// a port or a combiner. Those of active subsets are down. A line that is in subsets, none of them active, is shown, but
// cannot be operated, and says which subset is not in use, or why it cannot be.
//
// A click asks by OnSubsetChangeRequest; where the engine has one active at a time, the one that is down asks for
// nothing. The lines, their powers and their light stay as the engine tells them: it is the engine that has them dark
// when their subset is left. The button of a subset that is not usable is disabled.
class KXDEVUI_API CKxDevUI_MultiLaserSubset : public CKxDevUI_MultiLaser {
public:
    // No row has more; those beyond are left out, and logged.
    static constexpr long kMostSubsets = 16;

    // 560 by 262 unzoomed pixels, titled "Lasers", without lines and subsets, one active at a time.
    CKxDevUI_MultiLaserSubset();
    ~CKxDevUI_MultiLaserSubset() override;

    // Shows lines and subsets of the engine with this number, as CKxDevUI_MultiLaser::Update does.
    bool Update(CDMApi_LogDevId engine);

    // The same of lines and subsets that are given; `exclusive` says that one subset is active at a time. Numbers of
    // lines that are not there are left out. Lines set without subsets keep those that are held.
    void Set(const std::vector<SKxLaserLine>& lines, const std::vector<SKxLaserSubset>& subsets, bool exclusive);
    const std::vector<SKxLaserSubset>& GetSubsets() const noexcept { return m_subsets; }
    bool IsExclusive() const noexcept { return m_exclusive; }

protected:
    // ---- Callbacks: each may end the control ----

    // The user wants a subset in use, or out of use. Setting `veto` leaves all as they are.
    virtual void OnSubsetChangeRequest(long subset, bool active, bool& veto);

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    void ShowSubsets();
    void ShowLines();
    void Activate(long subset, bool active);
    void AskSubset(long subset);

    std::vector<SKxLaserLine> m_told;
    std::vector<SKxLaserSubset> m_subsets;
    bool m_exclusive = true;
};
