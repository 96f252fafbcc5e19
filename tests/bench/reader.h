// A client of Microsoft Active Accessibility, as a screen reader is one.
//
//     Reader slider(panel.Part(10201));
//     EXPECT_EQ(slider.Name(), L"Brightness");
//     EXPECT_EQ(slider.Set(L"40"), S_OK);
#pragma once

#include <windows.h>

#include <string>

struct IAccessible;

namespace kx::test {

// Holds the object of a window also when that has gone. Parts are those that are no windows, from 1; 0 is the window.
class Reader {
public:
    explicit Reader(HWND window);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    long Parts() const;
    std::wstring Name(long part = 0) const;
    std::wstring Value(long part = 0) const;
    std::wstring Description(long part = 0) const;
    long Role(long part = 0) const;
    long State(long part = 0) const;
    HRESULT Act(long part = 0) const;
    HRESULT Set(const wchar_t* value, long part = 0) const;
    // What asking comes to.
    HRESULT Ask() const;

private:
    template <class Call>
    std::wstring Text(Call call, long part) const;
    template <class Call>
    long Number(Call call, long part) const;

    IAccessible* object_ = nullptr;
};

}  // namespace kx::test
