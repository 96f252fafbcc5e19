// A control that writes down what its host is told and asked, and answers as the test wants.
//
//     class Host : public Asking<CKxDevUI_Shutter> {
//         using Asking::Asking;
//         void OnStateChangeRequest(bool state, bool& veto) override { Asked(veto, "State", state); }
//     };
#pragma once

#include <bench/record.h>

#include <functional>
#include <utility>

namespace kx::test {

template <class Control>
class Asking : public Control {
public:
    explicit Asking(Recorder& record) : record_(record) {}

    bool answer = false;              // for the flag of a request
    std::function<void()> meanwhile;  // done in every callback; may end the control

protected:
    template <class... Arguments>
    void Told(const char* what, const Arguments&... arguments) {
        record_.Call(what, arguments...);
        if (const auto run = meanwhile) run();
    }
    template <class... Arguments>
    void Asked(bool& flag, const char* what, const Arguments&... arguments) {
        EXPECT_FALSE(std::exchange(flag, answer));
        Told(what, arguments...);
    }

private:
    Recorder& record_;
};

}  // namespace kx::test
