// For authors of controls: the habits of number fields (devgui_habits.h) in the procedure of an edit. What is typed,
// pasted, brought back and refused is the same in every field; what is told to whom stays with the control.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include <kxdevui/framework/field_rules.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

// One field, as its control knows it.
struct Field {
    wchar_t separator = 0;                  // between values; 0 for one value
    bool anyText = false;                   // it takes more than numbers: no character is refused
    std::function<std::wstring()> allowed;  // what an answer says, asked for when there is one
};

// What stands in an edit, with its selection; and the same again in one that shows something else by now, as typing
// that the platform's undo takes back.
KXDEVUI_API FieldText TextIn(HWND edit);
KXDEVUI_API void TypeAgain(HWND edit, const FieldText& typed);

// Types the text into the edit in the place of what stands there, and Enter: all that hears of keys hears of it, and
// whatever it refuses is refused. The edit gets the focus. False when it was not taken; the edit may be gone.
KXDEVUI_API bool EnterText(HWND edit, const CKxStringW& text);

// The cell that is being edited in a control whose field is no window in it: KxKeptInput asks the control for it
// (wParam FALSE), and has it opened again when the control is made anew (TRUE). The answer is whether a cell is open.
inline constexpr UINT WM_KX_OPEN_CELL = WM_APP + 0x3FC;  // lParam: an OpenCell
struct OpenCell {
    // Both from 0.
    int row = -1;
    int column = -1;
    // What stands in its field.
    FieldText typed;
};

// To the controls of the library around a window, from the inmost: it has got back what the user had in hand, of which
// the commands of that window do not tell. lParam: the window.
inline constexpr UINT WM_KX_GIVEN_BACK = WM_APP + 0x3FE;

// To be called first with every message of the edit: remembers a text that is set.
KXDEVUI_API void NoteField(const Message& message);
// What is in the edit has been set or entered, and is what Escape goes back to.
KXDEVUI_API void HoldField(HWND edit);
// The same where there are habits that ask for it.
KXDEVUI_API void FieldEntered(HWND edit);
// A text that the user has brought about by other keys than characters is as good as typed: with the habit, Escape goes
// back to what was held before `show` ran, which may be the end of the edit.
KXDEVUI_API void ShowAsTyped(HWND edit, const std::function<void()>& show);

// For WM_SETFOCUS: selects all when the focus came by key.
KXDEVUI_API void SelectOnFocus(const Message& message);
// For WM_KILLFOCUS, after the host has been told that the focus goes. If it has sent the user back here, the edit must
// not believe afterwards that the focus is gone, or it would have no caret.
KXDEVUI_API Handled LoseFocus(const Message& message);
// For WM_GETDLGCODE: whether the dialog manager is to leave this Escape to the field. One that brings the text back
// without the habit as well says `always`.
KXDEVUI_API bool WantsEscape(const Message& message, bool always = false);

// The message of a character or of a paste, after the control has told of it; not for Enter and Tab. An answer is the
// message's result, empty leaves it to the platform's edit.
KXDEVUI_API Handled TypeInField(const Message& message, const Field& field);

// Brings back what is held, which the control hears of as a change like any other, and selects it.
KXDEVUI_API void RevertField(HWND edit);

// For Enter, after the control has taken the text: on to the next field of `group` that can be typed into, from the
// last to the first where `around` says so; without one, and where the habit is, all is selected. Returns whether it
// went on. The control may be gone afterwards: the field that is left tells of it, and may have had the focus sent
// back.
KXDEVUI_API bool GoOnFrom(HWND edit, HWND group, bool around);

}  // namespace kx::ui
