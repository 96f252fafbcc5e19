// The order of virtual functions is part of the binary interface: hosts derive from the controls.
#pragma once

#include <cstring>
#include <vector>

namespace kx::test {

// The places of virtual functions in the table. A pointer to one holds 1 plus the byte offset of its entry; before the
// first function stand the destructor's two entries, which together are slot 0.
template <class... Functions>
std::vector<long> SlotsOf(Functions... functions) {
    const auto slot = [](auto function) {
        long long words[sizeof(function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    };
    return {slot(functions)...};
}

}  // namespace kx::test
