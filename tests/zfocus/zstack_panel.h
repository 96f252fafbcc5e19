// A Z stack panel that writes down what its host is told, in one row with its message boxes.
#pragma once

#include <controls/control_test.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/zfocus/devgui_zstack.h>
#include <kxdevui/zfocus/zstack_ids.h>

namespace kx::test {

struct Panel : CKxDevUI_ZStack {
    explicit Panel(Recorder& heard) : record(heard) {}

    using CKxDevUI_ZStack::Item, CKxDevUI_ZStack::ValidateBottom, CKxDevUI_ZStack::ValidateHome,
        CKxDevUI_ZStack::ValidateRange, CKxDevUI_ZStack::ValidateRangeMax, CKxDevUI_ZStack::ValidateRangeMin,
        CKxDevUI_ZStack::ValidateStep, CKxDevUI_ZStack::ValidateSteps, CKxDevUI_ZStack::ValidateTop,
        CKxDevUI_ZStack::YesNoKeepDlg;

    Recorder& record;
    std::function<void()> onChanged = [] {};  // or the step
    const wchar_t* refusal = nullptr;         // of where Z is to go

    void OnStepChanged(double step, bool typed) override { Changed(CallText("Step", step, int{typed})); }
    void OnMoveZRequest(double z) override {
        record.Call("Move", z);
        if (refusal) KX_SayWhyRefused(refusal);
    }
    void OnGoHomeRequest(bool keepZ) override { record.Call("GoHome", int{keepZ}); }
    void OnPiezoPickerChanged(unsigned entry, int mode) override { record.Call("Picked", entry, mode); }
    void OnHostRequest() override { record.Call("HostRequest"); }
    void OnZDeviceShown(unsigned int device) override { record.Call("Shown", device); }
    void OnZStackChanged(unsigned int flags) override { Changed(CallText("Changed", flags)); }

    void Changed(const std::string& text) {
        record.Text(text);
        const auto action = onChanged;
        action();
    }
};

struct PanelTest : ControlTest {
    PanelTest() { KX_SetMessageBoxHandler(Handler, this); }
    std::string See() override { return heard.Take(); }
    HWND Item(int id) const { return panel.Item(id); }
    std::string Shown(int id) const { return Narrow(TextOf(Item(id))); }
    void Enter(int id, const wchar_t* text) { SetWindowTextW(Item(id), text); }

    std::string lastBox;  // owner, caption, style, time
    std::function<void()> whileOpen = [] {};
    Recorder heard;
    Panel panel{heard};

    static int Handler(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* self) {
        auto& test = *static_cast<PanelTest*>(self);
        test.heard.Text(Narrow(text).substr(0, 7).append("!"));
        test.lastBox = CallText("Box", owner, caption, style, timeout);
        const auto action = test.whileOpen;
        action();
        return IDOK;
    }
};

}  // namespace kx::test
