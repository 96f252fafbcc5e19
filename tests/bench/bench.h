// The bench for controls: everything a test of a control needs.
//
//     RecordingParent parent;
//     const HWND button = AddChild(parent.Window(), L"BUTTON", 7, {10, 10, 90, 34});
//     Click(button, 20, 10);
//     EXPECT_EQ(parent.Record().Take(), "7:0#7");
//
// With it come <functional>, <map>, <memory>, <string>, <tuple>, <utility>, <vector> and <commctrl.h>.
#pragma once

#include <memory>
#include <tuple>

#include <bench/record.h>            // what a host was told, compared with what was expected
#include <bench/recording_parent.h>  // a window that records and answers messages
#include <bench/input.h>             // real mouse and keyboard input, pumping, waiting
#include <bench/modal_answer.h>      // answers dialogs and message boxes
#include <bench/counters.h>          // growth of GDI objects, windows and heap
#include <bench/imports.h>           // functions of other modules, replaced
#include <bench/picture.h>           // what a window looks like
#include <bench/script.h>            // a test as a table of steps
#include <bench/window.h>            // windows beside the control, and where windows stand

namespace kx::test {

// What else the report of a crash is to say.
extern std::function<std::string()> crashNote;

}  // namespace kx::test
