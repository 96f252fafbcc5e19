// Habits of fields that take a number: what hands at a keyboard expect beyond the rules of the single controls.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>

// Which habits the number fields of a window have: edit boxes of every kind, alone and in other controls, the Z stack
// panel's fields, and the editor of a table's columns that have a number format. At first they have none, and behave
// as their own pages say; with a habit they do so as well, but for what it says here.
struct KxFieldHabits {
    // The focus that comes by key selects all, so that the next key begins a new number; Enter does too, where it does
    // not go on. A click places the caret, and a window that comes back to the front leaves it where it was.
    bool select = false;
    // Escape brings back the text that was last set or entered: the control hears of the character and of the change,
    // once, and nothing is entered. An Escape that finds nothing to bring back is the host's. A field of a slider or of
    // the Z stack panel that is left as it was set enters nothing either.
    bool revert = false;
    // Digits of every script become 0 to 9 and a comma that separates no values becomes the point, as they are typed;
    // a character that no number has is refused, and so is a pasted text that has one, whole.
    bool numbersOnly = false;
    // Enter goes on to the next field that can be typed into, beside the field or in the same panel; never to a button.
    bool goOn = false;
    // A text that is no number, or lies outside the bounds, is not entered: Enter stays in the field, and a field that
    // is left brings back what was set; the Z stack panel then takes the focus back as ever. What is allowed is told
    // beside the field, and to screen readers; what a control would tell in a message box (CheckRestriction, the Z
    // stack panel's validations) is told there too.
    bool answer = false;
    // Ctrl+A selects all, Ctrl+Z takes back the last typing; neither goes anywhere else, also with nothing to take
    // back.
    bool editKeys = false;
    // In colour sliders, and in the mode shutter: a number outside the table is answered like one outside the bounds
    // and not taken for the nearest of its ends. Without `answer` it means nothing.
    bool tableOnly = false;

    // All but the last; all of them, as lamps and lasers should have them.
    static constexpr KxFieldHabits All() { return {true, true, true, true, true, true, false}; }
    static constexpr KxFieldHabits AllOfLight() { return {true, true, true, true, true, true, true}; }
};

// Gives the number fields in a window these habits, those that are made later as well: of a control's window, a panel,
// a whole program. Where windows stand in each other, the nearest one to the field that has been given habits decides.
// False, and logged, for no window.
KXDEVUI_API bool KX_SetFieldHabits(HWND window, const KxFieldHabits& habits);

// The habits of a field, or of any window: of the nearest that has been given some, the window itself included. A
// window of its own, as a floating editor, looks to its owner.
KXDEVUI_API KxFieldHabits KX_GetFieldHabits(HWND window);
