#include <kxdevices/kx_simlaserengine.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxsystem/kx_time.h>

CKxSimLaserEngine::CKxSimLaserEngine(const wchar_t* key, const std::vector<SKxLaserLine>& lines,
                                     std::vector<SKxLaserSubset> subsets, bool exclusive)
    : CKxSim(key), m_subsets(std::move(subsets)), m_exclusive(exclusive) {
    for (const SKxLaserLine& each : lines)
        m_lines.push_back(Fresh(each));
    for (SKxLaserSubset& each : m_subsets)
        each.active = &each == &m_subsets.front();
}

CKxSimLaserEngine::Line CKxSimLaserEngine::Fresh(const SKxLaserLine& line) {
    Line fresh{line, {}};
    fresh.told.on = false;
    return fresh;
}

const CKxSimLaserEngine::Line* CKxSimLaserEngine::LineAt(long line) const {
    return line >= 0 && line < static_cast<long>(m_lines.size()) ? &m_lines[static_cast<std::size_t>(line)] : nullptr;
}

CKxSimLaserEngine::Line* CKxSimLaserEngine::LineAt(long line) {
    return const_cast<Line*>(std::as_const(*this).LineAt(line));
}

bool CKxSimLaserEngine::IsReached(long line) const {
    bool any = false, active = false;
    for (const SKxLaserSubset& each : m_subsets) {
        const bool has = std::find(each.lines.begin(), each.lines.end(), line) != each.lines.end();
        any |= has, active |= has && each.active;
    }
    return active || !any;
}

// ---- Light ---------------------------------------------------------------------------------------------------------

// Where it stands is where it goes.
void CKxSimLaserEngine::Hold(Line& line) {
    const double now = line.light.At(m_motion, KX_GetTimeCounter());
    line.light = {now, now, 0};
}

// All lines settle by one movement: another that is on its way goes on from where it is.
void CKxSimLaserEngine::Settle(Line& line) {
    const double to = line.told.on ? line.told.power : 0;
    double way = 0;
    for (Line& each : m_lines) {
        const double target = &each == &line ? to : each.light.to;
        const unsigned now = KX_GetTimeCounter();
        each.light = {each.light.At(m_motion, now), target, now};
        way = std::max(way, std::abs(target - each.light.from));
    }
    // All of the range takes as long as so many micrometres.
    constexpr double kSettling = 4;
    if (way > 0 || !m_motion.IsKnown()) return MoveOver(kSettling * way);
    Tell(EKxDeviceChange::Position);
}

void CKxSimLaserEngine::Darken(Line& line) {
    line.told.on = false;
    line.light = {};
}

void CKxSimLaserEngine::DarkenUnreached() {
    for (long i = 0; i < GetLineCount(); ++i) {
        if (!IsReached(i)) Darken(*LineAt(i));
    }
}

bool CKxSimLaserEngine::SetLineOn(long line, bool on) {
    Line* const wanted = LineAt(line);
    if (!wanted || (on && (Fails() || m_interlock || !IsReached(line)))) return false;
    if (!on) {
        Darken(*wanted);
        Tell(EKxDeviceChange::Position);
    } else if (!std::exchange(wanted->told.on, true)) {
        Settle(*wanted);
    }
    return true;
}

bool CKxSimLaserEngine::SetLinePower(long line, double percent) {
    Line* const wanted = LineAt(line);
    if (!wanted || !(percent >= 0 && percent <= wanted->told.limit) || Fails()) return false;
    wanted->told.power = percent;
    Settle(*wanted);
    return true;
}

void CKxSimLaserEngine::SetInterlock(bool open, const CKxStringW& why) {
    m_interlock = open;
    m_interlockWhy = why;
    if (open) {
        for (Line& each : m_lines)
            Darken(each);
    }
    Tell(EKxDeviceChange::Position);
}

bool CKxSimLaserEngine::SetSubsetActive(long subset, bool active) {
    if (subset < 0 || subset >= GetSubsetCount() || Fails() || (m_exclusive && !active)) return false;
    SKxLaserSubset& wanted = m_subsets[static_cast<std::size_t>(subset)];
    for (SKxLaserSubset& each : m_subsets) {
        if (&each == &wanted) each.active = active;
        if (&each != &wanted && m_exclusive) each.active = false;
    }
    DarkenUnreached();
    Tell(EKxDeviceChange::Position);
    return true;
}

void CKxSimLaserEngine::AddLine(const SKxLaserLine& line) {
    m_lines.push_back(Fresh(line));
    Tell(EKxDeviceChange::Structure);
}

bool CKxSimLaserEngine::RemoveLine(long line) {
    if (!LineAt(line)) return false;
    m_lines.erase(m_lines.begin() + line);
    for (SKxLaserSubset& each : m_subsets) {
        std::erase(each.lines, line);
        for (long& other : each.lines)
            other -= other > line;
    }
    Tell(EKxDeviceChange::Structure);
    return true;
}

void CKxSimLaserEngine::TurnLightOff() {
    for (Line& each : m_lines)
        Darken(each), each.told.power = 0;
    m_motion = {};
    Tell(EKxDeviceChange::Position);
}

bool CKxSimLaserEngine::StandsStill() {
    for (Line& each : m_lines) {
        Hold(each);
        if (each.told.on) each.told.power = each.light.to;
    }
    m_motion = {};
    return true;
}

void CKxSimLaserEngine::TryPlace(int where) {
    if (where == 9) return SetInterlock(!m_interlock, L"door");
    SetLinePower(where, where * 10);
    if (const Line* line = LineAt(where)) SetLineOn(where, !line->told.on);
    SetSubsetActive(where % 3, where % 2 == 0);
}

// ---- Answers -------------------------------------------------------------------------------------------------------

bool CKxSimLaserEngine::GetCapability(int capability) const {
    return capability == eKxCapability_LaserPortsExclusive && m_exclusive;
}

bool CKxSimLaserEngine::GetLine(long line, SKxLaserLine& told) const {
    const Line* const found = LineAt(line);
    if (!found) return false;
    told = found->told;
    const bool settles = found->light.from != found->light.to;
    told.state = settles ? m_motion.state : eKxDeviceState_Ready;
    if (!settles || m_motion.IsKnown())
        told.measured = found->light.At(m_motion, KX_GetTimeCounter());
    else
        told.measured.reset();
    told.interlock = m_interlock;
    if (m_interlock)
        told.reason = m_interlockWhy;
    else if (told.state == eKxDeviceState_Faulty)
        told.reason = GetStateReason();
    return true;
}

bool CKxSimLaserEngine::GetSubset(long subset, SKxLaserSubset& told) const {
    if (subset < 0 || subset >= GetSubsetCount()) return false;
    told = m_subsets[static_cast<std::size_t>(subset)];
    return true;
}
