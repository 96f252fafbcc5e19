// CKxDevUI_EditBoxMultiValue: an edit box for a list of numbers.
#pragma once

#include <list>

#include <kxdevui/controls/devgui_editbox.h>

// The numbers stand in one line with a separator between them. How many there may be, and the interval that each must
// lie in, are checked when the host asks.
class KXDEVUI_API CKxDevUI_EditBoxMultiValue : public CKxDevUI_EditBox {
public:
    // As an edit box, with ";" between the values, any number of values, and 512 characters to type.
    CKxDevUI_EditBoxMultiValue();

    // The character between the values. One that can be part of a number (digits, signs, the point, e and E) is refused
    // and logged. The text stays as it is.
    void SetSeparator(wchar_t separator);

    // The values of the text, in order. Blanks around a value are skipped, and a piece of nothing else is no value. A
    // piece that is no number in C's notation makes the whole text invalid: it is named in the log, and the list
    // becomes empty. Returns whether the text is valid. A null pointer gets no values.
    bool GetValues(std::list<double>* values) const;

    // Displays the values, each with up to 6 digits ("%g") and a separator behind it, the last one too. A value that is
    // not finite is logged and left out; null is the empty list.
    void SetValues(const std::list<double>* values);

    // Whether the text is allowed. The first thing wrong, in this order, goes translated and with the label's text
    // before it to a message box or, without `showMessage`, to the log, and the edit gets the focus:
    // - no values, or an invalid text: "Field can not be empty.";
    // - a number of values outside its limits: "Too few values!" when both limits are set, also for too many; otherwise
    //   "Too few values!" or "Too many values!", as the case is;
    // - the first value outside the interval: "Value out of range: %g\nValue must be in interval <%g;%g>".
    virtual bool CheckRestriction(bool showMessage);
    // The same by name.
    bool IsAllowed(EKxComplaint complaint) { return CheckRestriction(complaint == EKxComplaint::Shown); }

    // How many values there may be, -1 (or any negative number) for no limit. Two limits in reverse order are put in
    // order.
    virtual void SetCountRestriction(int minimum, int maximum);

protected:
    // The fewest and the most values, -1 for no limit.
    int m_minimumCount = -1;
    int m_maximumCount = -1;

private:
    CKxStringW FindFault() const;
};
