// Objects whose memory nobody may touch any more: a late read or write is seen without luck.
//
//     Buried<CKxDevUI_HPot> slider = MakeBuried<CKxDevUI_HPot>();
//     slider.reset();
//     EXPECT_EQ(TakeTouch(), "");
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace kx::test {

namespace grave {
void* Dig(std::size_t size);
void Close(void* object) noexcept;
}  // namespace grave

// The memory of an object that is deleted is kept, and every access to it noted.
struct Bury {
    template <class T>
    void operator()(T* object) const noexcept {
        object->~T();
        grave::Close(object);
    }
};

template <class T>
using Buried = std::unique_ptr<T, Bury>;

template <class T, class... Arguments>
Buried<T> MakeBuried(Arguments&&... arguments) {
    return Buried<T>(new (grave::Dig(sizeof(T))) T(std::forward<Arguments>(arguments)...));
}

// The first access to a dead object since the last call: what was done, to which byte of it, by which module. Empty
// when there was none.
std::string TakeTouch();

}  // namespace kx::test
