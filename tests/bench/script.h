// A test as a table of steps: what is done, and what is to be seen then, in words.
//
//     Play({{[&] { Type(L"7"); }, "7 | 44:258=55 44:768#44"},
//           {[&] { box.Destroy(); }, " | "}},
//          [&] { return Narrow(box.GetText().str()) + " | " + parent.Record().Take(); });
#pragma once

#include <bench/input.h>

#include <gtest/gtest.h>

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

}  // namespace kx::test
