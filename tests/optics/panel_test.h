// What the tests of position panels share.
#pragma once

#include <bench/bench.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevices/kx_simdevices.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

// A panel that writes down what it asks, and answers as the test wants.
template <class Panel>
class Asking : public Panel {
public:
    explicit Asking(Recorder& record) : record_(record) {}

    bool answer = false;              // for the flag of a position request
    std::function<void()> meanwhile;  // done in every callback

protected:
    void OnPositionChangeRequest(long position, bool& flag) {
        EXPECT_FALSE(std::exchange(flag, answer));
        Asked("position", position);
    }
    // Not all panels have one to be overridden.
    virtual void OnSetupRequest() { Asked("setup", 0); }
    void Asked(const char* what, long position) {
        record_.Call(what, position);
        if (const auto run = meanwhile) run();
    }

private:
    Recorder& record_;
};

template <class Device>
struct Registered : Device {
    template <class... Arguments>
    explicit Registered(Arguments&&... arguments) : Device(std::forward<Arguments>(arguments)...) {
        CKxDeviceRegistry::Add(*this);
    }
};

// A panel in a window.
template <class Panel>
class PanelTest : public testing::Test {
protected:
    HWND Open(long width = -1) { return panel.Create(parent.Window(), 10, 10, width, -1, true, true); }
    testing::AssertionResult Told(const std::vector<Expected>& all) { return parent.Record().Matches(all); }

    RecordingParent parent;
    Panel panel{parent.Record()};
};

inline std::vector<std::wstring> Names(int count, const wchar_t* name) {
    return std::vector<std::wstring>(static_cast<std::size_t>(count), name);
}

inline HWND ChildOf(HWND panel, int id) { return GetDlgItem(panel, id); }
inline RECT PlaceOf(HWND panel, int id) { return RectInParent(ChildOf(panel, id)); }
inline bool IsUsable(HWND panel, int id) { return IsWindowEnabled(ChildOf(panel, id)) != FALSE; }

inline void ClickChild(HWND panel, int id) {
    const RECT place = PlaceOf(panel, id);
    Click(ChildOf(panel, id), (place.right - place.left) / 2, (place.bottom - place.top) / 2);
}

inline long HeightOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client.bottom;
}

}  // namespace kx::test
