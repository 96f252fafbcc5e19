#include <bench/imports.h>

namespace kx::test {
namespace {

void Write(void** place, void* function) {
    DWORD before = 0;
    VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &before);
    *place = function;
    VirtualProtect(place, sizeof(*place), before, &before);
}

}  // namespace

Import::Import(const wchar_t* module, void* theirs, void* mine) : theirs_(theirs) {
    auto* const base = reinterpret_cast<std::byte*>(GetModuleHandleW(module));
    if (!base) return;
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const header = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& table = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
    for (; from->Name; ++from) {
        for (auto* place = reinterpret_cast<void**>(base + from->FirstThunk); *place; ++place) {
            if (*place != theirs) continue;
            places_.push_back(place);
            Write(place, mine);
        }
    }
}

Import::~Import() {
    for (void** const place : places_)
        Write(place, theirs_);
}

}  // namespace kx::test
