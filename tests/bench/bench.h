// The bench for controls: everything a test of a control needs.
//
//     using namespace kx::test;
//
//     TEST(Button, TellsItsParentOnceWhenClicked) {
//         RecordingParent parent;
//         HWND button = CreateWindowW(L"BUTTON", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80, 24, parent.Window(), ...);
//         parent.Record().Clear();
//         Click(button, 20, 10);
//         EXPECT_EQ(parent.Record().Take(), "7:0#7");
//     }
//
// With it come <functional>, <map>, <memory>, <string>, <utility> and <vector>.
#pragma once

#include <memory>

#include <bench/record.h>            // what a host was told, compared with what was expected
#include <bench/recording_parent.h>  // a window that records and answers messages
#include <bench/input.h>             // real mouse and keyboard input, pumping, waiting
#include <bench/modal_answer.h>      // answers dialogs and message boxes
#include <bench/counters.h>          // growth of GDI objects, windows and heap
#include <bench/picture.h>           // what a window looks like
#include <bench/script.h>            // a test as a table of steps
#include <bench/window.h>            // windows beside the control, and where windows stand

namespace kx::test {

// What else the report of a crash is to say.
extern std::function<std::string()> crashNote;

}  // namespace kx::test
