// A test as a table of steps: what is done, and what is to be seen then, in words.
//
//     Play({{[&] { Type(L"7"); }, "7 | 44:258=55 44:768#44"},
//           {[&] { box.Destroy(); }, " | "}},
//          [&] { return Narrow(box.GetText().str()) + " | " + Brief(parent.Record()); });
#pragma once

#include <bench/input.h>
#include <bench/record.h>

#include <functional>
#include <string>
#include <vector>

namespace kx::test {

struct Step {
    std::function<void()> act;
    std::string seen;
};

inline void Play(const std::vector<Step>& steps, const std::function<std::string()>& see) {
    for (const Step& step : steps) {
        step.act();
        Pump();
        EXPECT_EQ(see(), step.seen) << "step " << &step - steps.data();
    }
}

// The record in short, which empties it: texts as they are; of WM_COMMAND and the scroll messages both halves, and the
// id of the window they come from, or what they tell instead (small numbers pass for windows); the name of any other
// message.
inline std::string Brief(Recorder& record) {
    std::string all;
    for (const Entry& entry : record.Entries()) {
        const auto from = reinterpret_cast<HWND>(entry.lParam);
        const bool halves = entry.message == WM_COMMAND || entry.message == WM_HSCROLL || entry.message == WM_VSCROLL;
        all += all.empty() ? "" : " ";
        all += entry.message == 0 ? entry.text : halves ? "" : NameOf(entry.message);
        if (!halves) continue;
        all += std::to_string(LOWORD(entry.wParam)) + ":" + std::to_string(HIWORD(entry.wParam));
        all += entry.lParam > 0xFFFF && IsWindow(from) ? "#" + std::to_string(GetDlgCtrlID(from))
                                                       : "=" + std::to_string(entry.lParam);
    }
    record.Clear();
    return all;
}

}  // namespace kx::test
