// What can have the focus has a name and a role for those who hear it, and no other part of the control has the same.
#include <subjects/law.h>

#include <bench/reader.h>
#include <kxdevui/framework/devgui_access.h>

#include <oleacc.h>

#include <functional>
#include <map>
#include <new>

namespace kx::test {
namespace {

struct AccessLaw : LawOf<Law::Access> {
    // The windows that can be reached, and those of the platform's controls.
    std::vector<HWND> Reachable() {
        std::vector<HWND> windows;
        for (const Target& each : Control().Windows()) {
            const HWND window = each.window;
            const bool still = (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) != 0;
            if (!IsWindowVisible(window) || !IsWindowEnabled(window) || still) continue;
            if ((each.ours && GetWindow(window, GW_CHILD)) || IsExcepted(NameOfWindow(window))) continue;
            windows.push_back(window);
        }
        return windows;
    }
};

TEST_P(AccessLaw, WhatCanBeReachedHasANameOfItsOwn) {
    Begin();
    std::map<std::pair<std::wstring, long>, std::string> names;
    for (const HWND window : Reachable()) {
        const std::string what = NameOfWindow(window);
        const Reader reader(window);
        for (long part = 0; part <= reader.Parts(); ++part) {
            const std::wstring name = reader.Name(part);
            const long role = reader.Role(part);
            // A group has its name from the one around.
            if (role == ROLE_SYSTEM_GROUPING) continue;
            Expect(role != 0 && role != ROLE_SYSTEM_CLIENT, what, "is nothing that a reader knows");
            Expect(!name.empty(), what, "has no name");
            const auto [same, isNew] = names.emplace(std::pair(name, role), what);
            Expect(isNew, what, "is called " + Narrow(name) + ", and so is " + same->second);
        }
    }
}

TEST_P(AccessLaw, NobodyActsBehindABox) {
    Begin();
    const auto windows = Reachable();
    EnableWindow(Parent().Window(), FALSE);
    ExpectUnheard("disabling the parent");
    for (const HWND window : windows) {
        const Reader reader(window);
        for (long part = 0; part <= std::min(reader.Parts(), 3L); ++part)
            reader.Act(part), reader.Set(L"7", part);
        ExpectUnheard("a client of " + NameOfWindow(window));
    }
}

TEST_P(AccessLaw, AnObjectOutlivesItsWindow) {
    Begin();
    std::map<std::string, std::unique_ptr<Reader>> readers;
    for (const HWND window : Reachable())
        readers.emplace(NameOfWindow(window), std::make_unique<Reader>(window));
    Finish();
    for (const auto& [name, reader] : readers) {
        Expect(reader->Ask() == CO_E_OBJNOTCONNECTED, name, "answers when it has gone");
        Expect(reader->Act() == CO_E_OBJNOTCONNECTED, name, "acts when it has gone");
    }
}

// A host's panel that ends when it is asked, or throws.
LRESULT CALLBACK EndWhenAsked(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR ends) {
    LRESULT answer = 0;
    if (KX_AnswerGetObject(window, message, wParam, lParam, answer)) return answer;
    if (message != WM_KX_DESCRIBE) return DefSubclassProc(window, message, wParam, lParam);
    if (*reinterpret_cast<bool*>(ends)) DestroyWindow(window);
    auto& record = *reinterpret_cast<KxAccess*>(lParam);
    record.parts = 1;
    record.part = [](long) -> KxAccess { throw std::bad_alloc(); };
    return TRUE;
}

TEST(AccessLawItself, AHostsPanelMayEndOrThrowWhenItIsAsked) {
    using Ask = std::function<void(const Reader&)>;
    RecordingParent parent;
    for (const Ask& ask : {Ask([](const Reader& r) { r.Ask(); }), Ask([](const Reader& r) { r.Name(); }),
                           Ask([](const Reader& r) { r.Role(); }), Ask([](const Reader& r) { r.Parts(); }),
                           Ask([](const Reader& r) { r.Act(); })}) {
        bool ends = false;
        const HWND panel = AddChild(parent.Window(), L"STATIC", 7, {10, 10, 90, 34});
        SetWindowSubclass(panel, EndWhenAsked, 1, reinterpret_cast<DWORD_PTR>(&ends));
        const Reader reader(panel);
        EXPECT_EQ(reader.Name(1), L"");
        ends = true;
        ask(reader);
        EXPECT_FALSE(IsWindow(panel));
        EXPECT_EQ(reader.Ask(), CO_E_OBJNOTCONNECTED);
    }
}

INSTANTIATE_TEST_SUITE_P(All, AccessLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
