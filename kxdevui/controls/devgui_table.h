// CKxDevUI_Table: a list view in report form whose cells can be edited in place.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/framework/devgui_base.h>

struct KxAccess;
namespace kx::ui {
struct Message;
struct OpenCell;
}  // namespace kx::ui

class CKxDevUI_Table;

// The field in which a cell is edited: an edit box (id 1006) that tells its table what it would tell its parent. It
// floats above the list as a window of its own, and without a label.
class KXDEVUI_API CKxDevUI_Table_Edit : public CKxDevUI_EditBox {
public:
    // The table has to outlive the field.
    explicit CKxDevUI_Table_Edit(CKxDevUI_Table& table);
    CKxDevUI_Table_Edit(const CKxDevUI_Table_Edit&) = delete;
    CKxDevUI_Table_Edit& operator=(const CKxDevUI_Table_Edit&) = delete;

    // Makes the field inside the table's window, hides it and takes it out of there.
    void Prepare(HWND table);
    // Shows the text over `cell` (screen coordinates) and takes the focus; with the table's habits, which refuse what
    // is no number where it is one. Only a text has use for an input method.
    void Open(const RECT& cell, const wchar_t* text, bool isNumber);
    // Hides the field. The focus, if it is there, goes to `next`.
    void Close(HWND next);

protected:
    void OnEnter() override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnChange() override;
    void OnChar(int character) override;

private:
    CKxDevUI_Table& m_table;
};

// Wraps the platform's list view ("SysListView32", report form): columns with a number format and an editable flag,
// rows of texts or numbers, check marks, a number of the host's for each row, searching, and editing in place.
//
// Rows and columns count from 0. A row or column that is not there is answered as the list view answers it: nothing is
// set, texts are empty, numbers 0, indices -1. Null texts are empty texts.
//
// The user starts editing with a double click or with F2, which takes the cell clicked last in the focused row, or the
// next editable one. Enter stores the text, Tab stores it and goes on to the next editable cell (with Shift to the one
// before). Escape, a click on the list, the loss of the focus, scrolling, resizing and a change of rows or columns drop
// it; another zoom does not. Programs edit through SetCell. In columns with a number format the field has no input
// method.
//
// The notification window (the parent given to Create) gets WM_NOTIFY, from the table's window and id:
//  - LVN_ENDLABELEDITW (NMLVDISPINFOW) when a cell has been edited: row, column, its text and the row's user data.
//  - LVN_ITEMACTIVATE (NMITEMACTIVATE) when a row is activated: row and column. When that is answered with 0, the list
//    view's own notification follows as it came.
//
// The table owns its field and cannot be copied.
class KXDEVUI_API CKxDevUI_Table : public CKxDevUI_Base {
public:
    // Nominal size 100 by 50, no columns.
    CKxDevUI_Table();
    CKxDevUI_Table(const CKxDevUI_Table&) = delete;
    CKxDevUI_Table& operator=(const CKxDevUI_Table&) = delete;
    ~CKxDevUI_Table() override;

    // ---- Creation: each returns the table's window, or null on failure ----

    // An empty table at (x, y) in the parent's client area. A negative width or height keeps the nominal one. The two
    // flags are ignored: SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long width, long height, bool, bool) override;

    // Takes the place of a list view in a dialog: its parent, id, rectangle, position in the tab order and styles, with
    // whole rows selected. That list view is destroyed with all it holds.
    HWND Create(HWND listView);

    // Destroys the windows. The columns are forgotten.
    void Destroy();

    // ---- Columns and rows ----

    // Adds a column to the right: title, width in unzoomed pixels (-1 and -2 as LVM_SETCOLUMNWIDTH has them), the
    // printf format of its numbers, and whether its cells can be edited. The format takes exactly one double; null
    // means "%g", and so does one that takes anything else, which is logged.
    void InsertColumn(const wchar_t* title, int width, const wchar_t* format, bool editable);

    // Inserts a row of `count` texts or numbers before the row `index`, or at the end for -1. Returns its index, which
    // in a sorted list is not the one asked for; -1 for null, a count below 1, or a row that the list view refuses.
    int InsertRow(const wchar_t** values, int count, int index);
    int InsertRow(const double* values, int count, int index);

    // Sets a cell to a text, or to a number in the column's format, cut to 255 characters.
    void SetCell(int row, int column, const wchar_t* text);
    void SetCell(int row, int column, double value);

    // The text of a cell, cut to `size` - 1 characters, or the number that it begins with, 0 when it begins with none.
    // A null buffer or a size below 1 gets nothing.
    void GetCell(int row, int column, wchar_t* buffer, int size);
    double GetCell(int row, int column);

    // The check mark of a row (state image 2, or 1 without). It shows when the list view has state images, as with
    // LVS_EX_CHECKBOXES.
    void SetChecked(int row, bool check);
    bool GetChecked(int row);

    // A number of the host's, kept with the row, whatever the column.
    void SetUserData(int row, int column, std::int64_t value);
    std::int64_t GetUserData(int row, int column);

    // The first row whose label (first cell) is the text, for column -1. For another column, the first row whose cell
    // there is the text, but only among the rows that the list view's own search finds by their label: a row with
    // another label is not looked at. Upper and lower case differ. -1 when there is none.
    int Search(const wchar_t* text, int column);
    // The first row with this user data, whatever the column. -1 when there is none.
    int Search(std::int64_t userData, int column);

    // The list view, for all that the platform offers beyond this; it belongs to the table. Null before Create.
    HWND GetListView() const noexcept { return m_list; }

    // Sizes the list view to the table's nominal size. The two arguments are not used: the size is set where it is
    // chosen, and this brings the list up to it.
    void ResizeWindow(long width, long height) override;

    // Enables or disables table and list; disabling drops an edit.
    void SetEnabled(bool enable) override;

protected:
    // Opens the field over a cell, editable or not, scrolling it into view; an edit in another cell is dropped. A cell
    // that is not there is ignored.
    void StartEdit(int row, int column);
    // Closes the field. With `commit` its text, cut to 255 characters, is put into the cell and onEdited follows.
    // Nothing happens while no cell is edited.
    void FinishEdit(bool commit);

    // Tell the notification window (see above); onSelChange returns its answer.
    void onEdited(int row, int column);
    LRESULT onSelChange(int row, int column);

    // WM_NOTIFY of the list view: what a double click, the keys or a check mark lead to, with its own kind of answer.
    LRESULT OnNotify(WPARAM wParam, LPARAM lParam);
    // WM_COMMAND of the field: Enter and Tab.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    // The window procedure of the table.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

private:
    friend class CKxDevUI_Table_Edit;

    struct Column {
        std::optional<CKxStringW> format;
        bool editable = false;
        long unzoomed = 0;  // width; `placed` is what the list view was given for it
        long placed = 0;
    };
    struct Cell {
        int row;
        int column;
    };

    static LRESULT CALLBACK ListProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleList(const kx::ui::Message& message);
    bool MakeList(DWORD style, DWORD extendedStyle);
    LRESULT Ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    void OnZoom();
    bool TellOpenCell(kx::ui::OpenCell& cell) const;
    bool OpenAgain(const kx::ui::OpenCell& cell);
    void ZoomColumns();
    void KeepFirstRow();
    void ShowFirstRow();
    void Tell(KxAccess& access);
    KxAccess TellCell(int row, int column);
    bool IsEditable(int column) const;
    bool FindEditable(Cell& cell, int step) const;
    int FocusedRow() const;
    int RowAt(long y) const;
    void EditFocused();
    void EditNext(bool backwards);
    RECT CellOnScreen(int row, int column) const;
    int InsertLabel(const wchar_t* text, int index);
    std::wstring Format(int column, double value);

    HWND m_list = nullptr;
    WNDPROC m_listProcedure = nullptr;  // of the list view itself
    std::map<int, Column> m_columns;
    int m_columnCount = 0;
    CKxDevUI_Table_Edit m_editor{*this};
    int m_editColumn = -1;
    int m_editRow = -1;  // -1: nothing is edited
    int m_clickedColumn = 0;
    bool m_byEnter = false;  // while the list is at the Enter key
    // The row that is to be the first again when a zoom has come to its end, -1 for none, and the zoom before.
    int m_firstRow = -1;
    double m_shownAt = 1.0;
    HWND m_notify = nullptr;
};
