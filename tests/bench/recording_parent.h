// A visible top-level window that writes down what the controls in it tell it, and answers as the test wants.
//
//     RecordingParent parent;
//     parent.Answer(WM_COMMAND, 1);
//     parent.Answer(0x0501, [&](WPARAM id, LPARAM) { parent.Record().Call("asked", id); return 42; });
//
// Recorded without being asked: WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_VSCROLL, WM_DRAWITEM, WM_MEASUREITEM and every
// message from WM_USER to 0x7FFF, but for the WM_NOTIFY by which a control asks who draws it. A message is written
// down before it is answered.
#pragma once

#include <bench/record.h>

#include <functional>
#include <map>
#include <set>

namespace kx::test {

class RecordingParent {
public:
    using Reply = std::function<LRESULT(WPARAM wParam, LPARAM lParam)>;

    explicit RecordingParent(SIZE client = {640, 480});
    ~RecordingParent() { DestroyWindow(window_); }

    HWND Window() const { return window_; }
    Recorder& Record() { return record_; }

    // A message that has no answer goes to the default procedure.
    void Answer(UINT message, Reply reply) { replies_[message] = std::move(reply); }
    void Answer(UINT message, LRESULT value) {
        replies_[message] = [value](WPARAM, LPARAM) { return value; };
    }

    // More or fewer messages to record.
    void Watch(UINT message) { watched_.insert(message); }
    void Ignore(UINT message) { watched_.erase(message); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool IsWatched(UINT message, LPARAM lParam) const;

    Recorder record_;
    HWND window_ = nullptr;
    std::map<UINT, Reply> replies_;
    std::set<UINT> watched_{WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_VSCROLL, WM_DRAWITEM, WM_MEASUREITEM};
};

}  // namespace kx::test
