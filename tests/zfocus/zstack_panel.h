// A Z stack panel that writes down what its host is told, in one row with its message boxes.
#pragma once

#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/zfocus/devgui_zstack.h>
#include <kxdevui/zfocus/zstack_ids.h>

#include <map>
#include <memory>

namespace kx::test {

class Panel : public CKxDevUI_ZStack {
public:
    explicit Panel(Recorder& heard) : record(heard) {}

    using CKxDevUI_ZStack::Item, CKxDevUI_ZStack::ValidateBottom, CKxDevUI_ZStack::ValidateHome,
        CKxDevUI_ZStack::ValidateRange, CKxDevUI_ZStack::ValidateRangeMax, CKxDevUI_ZStack::ValidateRangeMin,
        CKxDevUI_ZStack::ValidateStep, CKxDevUI_ZStack::ValidateSteps, CKxDevUI_ZStack::ValidateTop,
        CKxDevUI_ZStack::YesNoKeepDlg;

    Recorder& record;
    std::function<void()> onChanged = [] {};  // or the step

protected:
    void OnStepChanged(double step, bool typed) override { Changed(CallText("Step", step, int{typed})); }
    void OnMoveZRequest(double z) override { record.Call("Move", z); }
    void OnGoHomeRequest(bool keepZ) override { record.Call("GoHome", int{keepZ}); }
    void OnPiezoPickerChanged(unsigned entry, int mode) override { record.Call("Picked", entry, mode); }
    void OnHostRequest() override { record.Call("HostRequest"); }
    void OnZDeviceShown(unsigned int device) override { record.Call("Shown", device); }
    void OnZStackChanged(unsigned int flags) override { Changed(CallText("Changed", flags)); }

private:
    void Changed(const std::string& text) {
        record.Text(text);
        const auto action = onChanged;
        action();
    }
};

// Writes message boxes down.
class Boxes {
public:
    explicit Boxes(Recorder& heard) : record(heard) { KX_SetMessageBoxHandler(Handler, this); }
    ~Boxes() { KX_SetMessageBoxHandler(nullptr, nullptr); }
    Boxes(const Boxes&) = delete;
    Boxes& operator=(const Boxes&) = delete;

    std::string last;  // owner, caption, style, time
    std::function<void()> whileOpen = [] {};

private:
    static int Handler(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* self) {
        auto& boxes = *static_cast<Boxes*>(self);
        boxes.record.Text(Narrow(text).substr(0, 7).append("!"));
        boxes.last = CallText("Box", owner, caption, style, timeout);
        const auto action = boxes.whileOpen;
        action();
        return IDOK;
    }
    Recorder& record;
};

}  // namespace kx::test
