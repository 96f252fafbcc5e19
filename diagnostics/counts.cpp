#include "counts.h"

#include <winternl.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace kx {
namespace {

// The process' GDI handle table, for a platform that does not count for us.
struct GdiEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;  // 0x80: a stock object
    std::uint8_t type;     // 0: free
    std::uint8_t flags;
    std::uint64_t user;
};
static_assert(sizeof(GdiEntry) == 24);
constexpr size_t gdiEntries = 65536;

template <class T>
T ReadAt(const void* base, size_t offset) {
    return *reinterpret_cast<const T*>(static_cast<const std::byte*>(base) + offset);
}

void CountGdi(Counts& counts) {
    counts.gdi = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    if (counts.gdi != 0) return;
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof(process), nullptr);
    const auto* table = ReadAt<const GdiEntry*>(process.PebBaseAddress, 0xF8);
    if (!table) return;  // before the first call to GDI
    for (size_t i = 0; i < gdiEntries; ++i) {
        if (table[i].type == 0 || (table[i].unique & 0x80)) continue;
        ++counts.gdiByType[table[i].type];
        ++counts.gdi;
    }
}

const char* GdiTypeName(size_t type) {
    switch (type) {
    case 0x01: return "DC";
    case 0x04: return "region";
    case 0x05:
    case 0x09: return "bitmap";
    case 0x08: return "palette";
    case 0x0A: return "font";
    case 0x10: return "brush or pen";
    default: return "other GDI object";
    }
}

BOOL CALLBACK CountWindow(HWND, LPARAM param) {
    ++*reinterpret_cast<int*>(param);
    return TRUE;
}

BOOL CALLBACK CountTree(HWND window, LPARAM param) {
    CountWindow(window, param);
    EnumChildWindows(window, CountWindow, param);
    return TRUE;
}

void CountWindows(Counts& counts) {
    const DWORD thread = GetCurrentThreadId();
    const auto param = reinterpret_cast<LPARAM>(&counts.windows);
    EnumThreadWindows(thread, CountTree, param);
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr)
        if (GetWindowThreadProcessId(window, nullptr) == thread) CountTree(window, param);
}

// All heaps: the C runtime's is one of its own, not the process heap.
void CountHeap(Counts& counts) {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
            ++counts.heapBlocks;
            counts.heapBytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
}

}  // namespace

Counts Counts::Gdi() {
    Counts counts;
    CountGdi(counts);
    return counts;
}

Counts Counts::Now() {
    Counts counts = Gdi();
    CountWindows(counts);
    CountHeap(counts);
    return counts;
}

std::string Growth(const Counts& before, const Counts& after, int rounds) {
    std::ostringstream out;
    const auto line = [&](const char* what, long long from, long long to) {
        if (to > from)
            out << "\n  " << what << ": " << from << " -> " << to << " (" << static_cast<double>(to - from) / rounds
                << " per round)";
    };
    line("GDI objects", before.gdi, after.gdi);
    for (size_t type = 0; type < before.gdiByType.size(); ++type)
        if (after.gdi > before.gdi) line(GdiTypeName(type), before.gdiByType[type], after.gdiByType[type]);
    line("windows", before.windows, after.windows);
    line("heap blocks", before.heapBlocks, after.heapBlocks);
    line("heap bytes", before.heapBytes, after.heapBytes);
    return out.str();
}

}  // namespace kx
