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

// Wine's label of common controls 6 keeps a block for ever of each that has been given a font and shows no image: its
// own procedure is followed by a look at whether the block that the label's first word points to is still there.
struct KeptByLabels {
    long long blocks = 0, bytes = 0;
} s_kept;
WNDPROC s_labelProcedure = nullptr;

bool ShowsAnImage(HWND label) {
    const LONG type = GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK;
    return type == SS_ICON || type == SS_BITMAP || type == SS_ENHMETAFILE;
}

LRESULT CALLBACK LabelProcedure(HWND label, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool ends = message == WM_NCDESTROY && !ShowsAnImage(label);
    const auto* block = ends ? reinterpret_cast<const void*>(GetWindowLongPtrW(label, 0)) : nullptr;
    const LRESULT result = CallWindowProcW(s_labelProcedure, label, message, wParam, lParam);
    if (block && HeapValidate(GetProcessHeap(), 0, block)) {
        ++s_kept.blocks;
        s_kept.bytes += static_cast<long long>(HeapSize(GetProcessHeap(), 0, block));
    }
    return result;
}

// The other kind of label, which keeps nothing, is the window manager's own.
bool IsOfCommonControls(WNDPROC procedure) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(procedure), &module);
    return module != GetModuleHandleW(L"user32.dll");
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
    counts.heapBlocks -= s_kept.blocks;
    counts.heapBytes -= s_kept.bytes;
}

}  // namespace

void Counts::Begin() {
    if (s_labelProcedure) return;
    const HWND label = CreateWindowW(L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(label, GCLP_WNDPROC));
    if (IsOfCommonControls(procedure)) {
        s_labelProcedure = procedure;
        // For every label of the process that comes after.
        SetClassLongPtrW(label, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(LabelProcedure));
    }
    DestroyWindow(label);
}

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
