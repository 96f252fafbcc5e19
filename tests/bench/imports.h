// Functions that one module takes from another, replaced for a while: what is asked of them can be written down.
//
//     const Import import(L"kxdevui.dll", &DrawTextW, &MyDrawText);
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace kx::test {

// While it lives, the module calls `mine` wherever it has imported `theirs`.
class Import {
public:
    template <class Function>
    Import(const wchar_t* module, Function* theirs, Function* mine)
        : Import(module, reinterpret_cast<void*>(theirs), reinterpret_cast<void*>(mine)) {}
    Import(const wchar_t* module, void* theirs, void* mine);
    ~Import();
    Import(const Import&) = delete;
    Import& operator=(const Import&) = delete;

    // In how many places.
    std::size_t Count() const { return places_.size(); }

private:
    std::vector<void**> places_;
    void* theirs_;
};

}  // namespace kx::test
