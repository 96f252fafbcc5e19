#include "history.h"

#include <algorithm>
#include <cmath>

namespace kx::host {

namespace {

constexpr unsigned kWheelPause = 500;  // milliseconds

// Devices tell what they were asked for but for a rounding.
bool IsSame(double one, double other) { return std::abs(one - other) <= 1e-6 * std::max(1.0, std::abs(other)); }

}  // namespace

void History::Record(const Change& change) {
    if (change.from == change.to) return;
    const bool isLast = m_done == m_changes.size();
    m_changes.resize(m_done);
    if (isLast && m_done > 0 && m_changes.back().what == change.what && m_changes.back().gesture == change.gesture) {
        m_changes.back().to = change.to;
        if (m_changes.back().from == change.to) m_changes.pop_back();
    } else {
        m_changes.push_back(change);
        if (m_changes.size() > Most) m_changes.erase(m_changes.begin());
    }
    m_done = m_changes.size();
}

void History::ForgetUndo() {
    const Change forgotten = m_changes[--m_done];
    m_changes.erase(m_changes.begin() + static_cast<std::ptrdiff_t>(m_done));
    for (std::size_t i = m_done; i-- > 0;) {
        if (m_changes[i].what != forgotten.what) continue;
        m_changes[i].to = forgotten.to;
        if (m_changes[i].from == m_changes[i].to)
            --m_done, m_changes.erase(m_changes.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

void History::ForgetRedo() {
    const Change forgotten = m_changes[m_done];
    m_changes.erase(m_changes.begin() + static_cast<std::ptrdiff_t>(m_done));
    for (std::size_t i = m_done; i < m_changes.size(); ++i) {
        if (m_changes[i].what != forgotten.what) continue;
        m_changes[i].from = forgotten.from;
        if (m_changes[i].from == m_changes[i].to) m_changes.erase(m_changes.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

std::vector<Change> History::Done() const {
    std::vector<Change> done(m_changes.begin(), m_changes.begin() + static_cast<std::ptrdiff_t>(m_done));
    std::reverse(done.begin(), done.end());
    return done;
}

std::optional<double> History::LastOf(const std::wstring& what) const {
    for (const Change& each : Done()) {
        if (each.what == what) return each.to;
    }
    return std::nullopt;
}

Verdict Judge(const Change& change, std::optional<double> now, Light light) {
    if (light == Light::Moves || (light == Light::More && change.to > now.value_or(0))) return Verdict::Raises;
    return now && !IsSame(*now, change.from) ? Verdict::HasChanged : Verdict::Ask;
}

Change Reversed(const Change& change) { return {change.what, change.to, change.from, change.gesture}; }

void Gestures::Turn(unsigned time) {
    if (!m_isWheel || time - m_turned > kWheelPause) Begin();
    m_isWheel = true;
    m_turned = time;
}

void Gestures::Belongs(unsigned act) {
    if (act == 0) return;
    if (act == m_act)
        m_number = m_ofAct;
    else
        m_act = act, m_ofAct = m_number;
}

}  // namespace kx::host
