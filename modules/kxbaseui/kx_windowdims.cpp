#include "kx_windowdims.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <utility>

namespace kx {

namespace {

constexpr std::size_t kLeast = 1024;

}  // namespace

// The window's entry, or the free one where it would go.
WindowDims::Entry* WindowDims::Slot(HWND window) noexcept {
    const std::size_t mask = m_entries.size() - 1;
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;  // the golden ratio's: neighbours go far apart
    auto at = static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(window) * spread) >> 32) & mask;
    while (m_entries[at].window && m_entries[at].window != window)
        at = (at + 1) & mask;
    return &m_entries[at];
}

void WindowDims::MakeRoom() {
    std::vector<Entry> kept;
    for (const Entry& entry : m_entries) {
        if (entry.known && IsWindow(entry.window)) kept.push_back(entry);
    }
    std::size_t size = kLeast;
    while (size < 4 * kept.size())
        size *= 2;
    std::vector<Entry> room(size);
    m_entries.swap(room);
    m_used = kept.size();
    for (const Entry& entry : kept)
        *Slot(entry.window) = entry;
}

WindowDims::Entry* WindowDims::Find(HWND window) noexcept {
    Entry* entry = m_entries.empty() ? nullptr : Slot(window);
    return entry && entry->known ? entry : nullptr;
}

WindowDims::Entry* WindowDims::Add(HWND window) noexcept {
    try {
        if (2 * (m_used + 1) > m_entries.size()) MakeRoom();
    } catch (const std::exception&) {
        return nullptr;
    }
    Entry* entry = Slot(window);
    if (!entry->window) ++m_used;
    if (!entry->known) *entry = {};
    entry->window = window;
    entry->known = true;
    return entry;
}

void WindowDims::Forget(HWND window) noexcept {
    if (Entry* entry = Find(window)) entry->known = false;
}

}  // namespace kx
