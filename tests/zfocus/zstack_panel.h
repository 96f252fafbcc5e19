// A Z stack panel that writes down what its host is told, and a record that writes down what it is asked.
#pragma once

#include <bench/bench.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/zfocus/devgui_zstack.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

// Everything in one row, in the order in which it happened: "GetHome SetTop(70, 0) Changed(3)".
struct Journal {
    std::string text;

    void Write(std::string_view entry) {
        if (!text.empty()) text += ' ';
        text += entry;
    }
    template <class... Arguments>
    void Add(const char* name, const Arguments&... arguments) {
        Write(sizeof...(arguments) ? kx::test::CallText(name, arguments...) : name);
    }
    std::string Take() { return std::exchange(text, {}); }
};

class Panel : public CKxDevUI_ZStack {
public:
    explicit Panel(Journal& heard) : journal(heard) {}

    using CKxDevUI_ZStack::Item, CKxDevUI_ZStack::ValidateBottom, CKxDevUI_ZStack::ValidateHome,
        CKxDevUI_ZStack::ValidateRange, CKxDevUI_ZStack::ValidateRangeMax, CKxDevUI_ZStack::ValidateRangeMin,
        CKxDevUI_ZStack::ValidateStep, CKxDevUI_ZStack::ValidateSteps, CKxDevUI_ZStack::ValidateTop,
        CKxDevUI_ZStack::YesNoKeepDlg;

    Journal& journal;
    std::function<void()> onChanged = [] {}, onStep = [] {};

protected:
    void OnStepChanged(double step, bool typed) override {
        journal.Add("Step", step, static_cast<int>(typed));
        const auto action = onStep;
        action();
    }
    void OnMoveZRequest(double z) override { journal.Add("Move", z); }
    void OnGoHomeRequest(bool keepZ) override { journal.Add("GoHome", static_cast<int>(keepZ)); }
    void OnHostRequest() override { journal.Add("HostRequest"); }
    void OnZDeviceShown(unsigned int device) override { journal.Add("Shown", device); }
    void OnZStackChanged(unsigned int flags) override {
        journal.Add("Changed", flags);
        const auto action = onChanged;
        action();
    }
};

// Writes message boxes into the journal.
class Boxes {
public:
    explicit Boxes(Journal& journal) : m_journal(journal) { KX_SetMessageBoxHandler(Handler, this); }
    ~Boxes() { KX_SetMessageBoxHandler(nullptr, nullptr); }
    Boxes(const Boxes&) = delete;
    Boxes& operator=(const Boxes&) = delete;

    std::string last;  // owner, caption, style, time
    std::function<void()> whileOpen = [] {};

private:
    static int Handler(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout, void* self) {
        auto& boxes = *static_cast<Boxes*>(self);
        boxes.m_journal.Write(kx::test::Narrow(text).substr(0, 7).append("!"));
        boxes.last = kx::test::CallText("Box", owner, caption, style, timeout);
        const auto action = boxes.whileOpen;
        action();
        return IDOK;
    }
    Journal& m_journal;
};
