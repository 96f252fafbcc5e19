#include "requests.h"

#include "device_panel.h"
#include "held_values.h"

namespace {

std::wstring Filled(const wchar_t* english, const std::wstring& name) {
    CKxStringW text;
    text.Format(200, Text(english), name.c_str());
    return text.str();
}

}  // namespace

Requests& TheRequests() {
    static Requests requests;
    return requests;
}

bool Requests::Refuses(const Wish& wish) {
    return DevicePanel::HostRefuses() || (!wish.panel.empty() && Held().refusing.contains(wish.panel));
}

bool Requests::Ask(const Wish& wish, double value) {
    // One that does not tell where it is going was sent there from here.
    std::optional<double> from = wish.read();
    if (!from) from = m_history.LastOf(wish.what);
    if (Refuses(wish) || !wish.ask(value)) return false;
    if (m_replays || !from) return true;
    m_wishes[wish.what] = wish;
    // It may have taken the nearest that it has.
    m_history.Record({wish.what, *from, wish.read().value_or(value), m_gestures.Now()});
    return true;
}

void Requests::Note(const MSG& message) {
    constexpr LPARAM isRepeated = 1 << 30;
    switch (message.message) {
    case WM_MOUSEWHEEL: m_gestures.Turn(message.time); break;
    case WM_KEYDOWN:
        // Escape takes back what the last one did, and so belongs to it.
        if (!(message.lParam & isRepeated) && message.wParam != VK_ESCAPE) m_gestures.Press();
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN: m_gestures.Press(); break;
    default: break;
    }
}

std::wstring Requests::NameOf(const kx::host::Change* change) const {
    if (!change) return {};
    const Wish& wish = m_wishes.at(change->what);
    const std::wstring told =
        wish.change ? wish.change(change->from, change->to) : wish.text(change->from) + L" → " + wish.text(change->to);
    return Text(wish.name.c_str()).str() + L" " + told;
}

std::vector<std::wstring> Requests::Names() const {
    std::vector<std::wstring> names;
    for (const kx::host::Change& each : m_history.Done())
        names.push_back(NameOf(&each));
    return names;
}

Requests::Replayed Requests::Replay(const kx::host::Change& change, const std::wstring& name, std::wstring& told) {
    using kx::host::Verdict;
    const Wish& wish = m_wishes.at(change.what);
    const Verdict verdict = kx::host::Judge(change, wish.read(), wish.light);
    if (verdict != Verdict::Ask) {
        told = Filled(verdict == Verdict::Raises ? L"Left as it is, the light would rise: %ls"
                                                 : L"Left as it is, it has changed since: %ls",
                      name);
        return Replayed::Impossible;
    }
    // The panels may ask while they show it.
    m_replays = true;
    const bool hostRefuses = Refuses(wish), done = !hostRefuses && wish.ask(change.to);
    m_replays = false;
    if (!done)
        told = Filled(hostRefuses ? L"Left as it is, the host refuses: %ls" : L"Left as it is, the device refuses: %ls",
                      name);
    return done ? Replayed::Done : Replayed::Refused;
}

Requests::Outcome Requests::Undo() {
    const kx::host::Change* const last = m_history.ToUndo();
    if (!last) return {Text(L"Nothing to undo").str(), false};
    const std::wstring name = NameOf(last);
    std::wstring told = Filled(L"Undone: %ls", name);
    const Replayed replayed = Replay(Reversed(*last), name, told);
    if (replayed == Replayed::Done) m_history.Undone();
    if (replayed == Replayed::Impossible) m_history.ForgetUndo();
    return {told, replayed == Replayed::Done};
}

Requests::Outcome Requests::Redo() {
    const kx::host::Change* const next = m_history.ToRedo();
    if (!next) return {Text(L"Nothing to redo").str(), false};
    const std::wstring name = NameOf(next);
    std::wstring told = Filled(L"Done again: %ls", name);
    const Replayed replayed = Replay(*next, name, told);
    if (replayed == Replayed::Done) m_history.Redone();
    if (replayed == Replayed::Impossible) m_history.ForgetRedo();
    return {told, replayed == Replayed::Done};
}
