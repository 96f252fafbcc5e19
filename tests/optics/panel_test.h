// What the tests of position panels share.
#pragma once

#include <bench/bench.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevices/kx_simdevices.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace kx::test {

// A panel that writes down what it asks, and answers as the test wants.
template <class Panel>
class Asking : public Panel {
public:
    explicit Asking(Recorder& record) : record_(record) {}

    bool answer = false;               // for the flag of a position request
    std::function<void()> meanwhile;   // done in every callback

protected:
    void OnPositionChangeRequest(long position, bool& flag) override { Asked("position", position, &flag); }
    void OnSetupRequest() override { Asked("setup", 0, nullptr); }

private:
    void Asked(const char* what, long position, bool* flag) {
        record_.Call(what, position);
        if (flag) {
            EXPECT_FALSE(*flag);
            *flag = answer;
        }
        if (const auto run = meanwhile) run();
    }
    Recorder& record_;
};

inline HWND ChildOf(HWND panel, int id) { return GetDlgItem(panel, id); }

inline void ClickChild(HWND panel, int id) {
    const HWND child = GetDlgItem(panel, id);
    RECT client{};
    GetClientRect(child, &client);
    Click(child, client.right / 2, client.bottom / 2);
}

inline RECT PlaceOf(HWND panel, int id) { return RectInParent(GetDlgItem(panel, id)); }

inline long HeightOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client.bottom;
}

}  // namespace kx::test
