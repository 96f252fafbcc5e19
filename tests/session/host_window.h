// The host's whole window, with nothing held from before.
#pragma once

#include <bench/bench.h>
#include <host/held_values.h>
#include <host/main_window.h>

namespace kx::test {

struct HostWindow : testing::Test {
    explicit HostWindow(SIZE size) {
        Held() = {};
        window.Create(GetModuleHandleW(nullptr), {.zoom = 100, .width = size.cx, .height = size.cy});
        SetForegroundWindow(window.Handle());
        Pump();
    }
    ~HostWindow() override {
        DestroyWindow(window.Handle());
        MSG quit{};
        while (PeekMessageW(&quit, nullptr, 0, 0, PM_REMOVE))
            continue;
    }
    void Do(int command) const {
        SendMessageW(window.Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        Pump();
    }

    HostMicroscope microscope{L""};
    MainWindow window{microscope};
};

}  // namespace kx::test
