// What can have the focus has a name for those who hear it, and no other part of the control has the same.
#include <subjects/law.h>

#include <oleacc.h>

#include <map>

namespace kx::test {
namespace {

struct Heard {
    std::wstring name, value;
    long role = 0, state = 0;
};

template <class Ask>
std::wstring TextBy(Ask&& ask) {
    BSTR text = nullptr;
    ask(&text);
    const std::wstring result = text ? text : L"";
    SysFreeString(text);
    return result;
}

struct AccessLaw : LawOf<Law::Access> {
    // As a client hears it: the window and its parts that are none.
    static std::vector<Heard> Hear(HWND window) {
        std::vector<Heard> all;
        IAccessible* object = nullptr;
        if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                              reinterpret_cast<void**>(&object))))
            return all;
        long parts = 0;
        if (!GetWindow(window, GW_CHILD)) object->get_accChildCount(&parts);
        VARIANT child{};
        for (child.vt = VT_I4; child.lVal <= parts; ++child.lVal) {
            Heard heard;
            VARIANT number{};
            if (child.lVal == 0 && parts > 0) continue;
            heard.name = TextBy([&](BSTR* text) { object->get_accName(child, text); });
            heard.value = TextBy([&](BSTR* text) { object->get_accValue(child, text); });
            if (object->get_accRole(child, &number) == S_OK) heard.role = number.lVal;
            if (object->get_accState(child, &number) == S_OK) heard.state = number.lVal;
            all.push_back(heard);
        }
        object->Release();
        return all;
    }
};

TEST_P(AccessLaw, WhatCanBeReachedHasANameOfItsOwn) {
    Begin();
    std::map<std::pair<std::wstring, long>, std::string> names;
    for (const Target& each : Control().Windows()) {
        const HWND window = each.window;
        const bool still = (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) != 0;
        if (!IsWindowVisible(window) || !IsWindowEnabled(window) || still || GetWindow(window, GW_CHILD)) continue;
        const std::string what = NameOfWindow(window);
        if (IsExcepted(what)) continue;
        for (const Heard& heard : Hear(window)) {
            Expect(!heard.name.empty(), what, "has no name");
            const auto [same, isNew] = names.emplace(std::pair(heard.name, heard.role), what);
            Expect(isNew, what, "is called " + Narrow(heard.name) + ", and so is " + same->second);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, AccessLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
