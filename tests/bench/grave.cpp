#include <bench/grave.h>

#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace kx::test {
namespace {

struct Grave {
    void* page = nullptr;
    std::size_t size = 0;
};
std::array<Grave, 128> graves;  // the oldest gives way
std::size_t next = 0;
char touch[200] = "";

// No allocation here: whoever touched the object may have been in the midst of one.
LONG CALLBACK NoteTouch(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION) return EXCEPTION_CONTINUE_SEARCH;
    const auto at = static_cast<std::uintptr_t>(record.ExceptionInformation[1]);
    for (const Grave& grave : graves) {
        const auto first = reinterpret_cast<std::uintptr_t>(grave.page);
        if (!grave.page || at < first || at >= first + grave.size) continue;
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const wchar_t*>(record.ExceptionAddress), &module);
        wchar_t name[MAX_PATH] = L"";
        GetModuleFileNameW(module, name, MAX_PATH);
        const auto from = reinterpret_cast<std::uintptr_t>(record.ExceptionAddress);
        if (!*touch)
            std::snprintf(touch, sizeof(touch), "byte %u of a dead object is %s by %ls+0x%llx",
                          static_cast<unsigned>(at - first), record.ExceptionInformation[0] ? "written" : "read", name,
                          static_cast<unsigned long long>(from - reinterpret_cast<std::uintptr_t>(module)));
        // What its destructor has left is there: the program goes on, to the report.
        DWORD before = 0;
        VirtualProtect(grave.page, grave.size, PAGE_READWRITE, &before);
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void* grave::Dig(std::size_t size) {
    [[maybe_unused]] static const PVOID handler = AddVectoredExceptionHandler(TRUE, NoteTouch);
    void* const page = VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (!page) throw std::bad_alloc();
    return page;
}

void grave::Close(void* object) noexcept {
    MEMORY_BASIC_INFORMATION region{};
    VirtualQuery(object, &region, sizeof(region));
    DWORD before = 0;
    VirtualProtect(object, region.RegionSize, PAGE_NOACCESS, &before);
    Grave& oldest = graves[next++ % graves.size()];
    if (oldest.page) VirtualFree(oldest.page, 0, MEM_RELEASE);
    oldest = {object, region.RegionSize};
}

std::string TakeTouch() {
    std::string taken = touch;
    *touch = '\0';
    return taken;
}

}  // namespace kx::test
