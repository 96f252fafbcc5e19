// What a user has in hand in windows that are made anew, as panels are for another language:
//
//     KxKeptInput kept;
//     kept.Take(area);
//     MakePanelsAnew();      // which show what the host holds
//     kept.GiveBack(area);
//
// Values are the host's: it holds them, and shows them in the new windows. What it cannot know is kept here: the text
// that is half typed, also in a cell of a table, caret and selection, the focus, which rows are selected and how far
// everything is scrolled.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

// A window is known again by its way from the top: class and control id of each window on it, and among those that
// share them the number in their order. So what is made in another order, or for what nobody has typed into before,
// gets nothing.
class KXDEVUI_API KxKeptInput {
public:
    // Takes from all windows below this one, and nothing for what is no window. What was taken before and not given
    // back stays, unless the window it belongs to is there and has something else by now; so a page that is made later
    // gets its own then.
    void Take(HWND top);
    // Gives back to the windows that are there, and forgets it. Only what was typed since a field was set or entered is
    // written into it, as typing that Ctrl+Z and Escape take back to what is set now; a list gets its rows back if it
    // has as many. The controls of the library, and the containers, hear nothing of all that but the focus and, once it
    // is there, that it is (WM_KX_GIVEN_BACK), and so ask nobody; a window procedure of the host's own is told by its
    // fields and lists as ever.
    void GiveBack(HWND top);
    // Whether nothing waits to be given back.
    bool IsEmpty() const noexcept { return m_kept.empty(); }

private:
    struct Rows {
        int count = 0, top = 0, left = 0, focused = -1;
        std::vector<int> selected, widths;
    };
    struct Kept {
        std::optional<std::wstring> typed;
        std::optional<std::pair<DWORD, DWORD>> selection;
        std::optional<Rows> rows;
        std::optional<std::pair<int, int>> cell;  // row and column of the one that is typed into
        std::optional<int> scrolled[2];           // horizontally, vertically
        bool focus = false;

        bool IsEmpty() const noexcept;
    };
    static Kept KeptOf(HWND window, const wchar_t* windowClass, HWND focus);
    static void Give(HWND window, const wchar_t* windowClass, const Kept& kept);

    std::map<std::wstring, Kept> m_kept;
};
