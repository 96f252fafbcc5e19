// The dialog behind devgui_setup.h: one for objectives, filters and condensers, which differ in data.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>
#include <kxdevui/controls/devgui_table.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/setup/devgui_setup.h>
#include <kxdevui/setup/setup_rules.h>

namespace kx::setup {

// What a kind of setup dialog is.
struct Design {
    // Between the number of the position and the remarks; what is wide takes the room that is left.
    struct Column {
        const wchar_t* title;
        int width;  // unzoomed pixels
        std::wstring (*text)(const Entry&);
    };
    const wchar_t* templateName;
    std::vector<Column> columns = {};
    std::vector<Entry> choices = {};
    bool typed = false;  // names that are in no list can be typed
};

// Asks the host about the positions with these indexes.
using Accept =
    std::function<void(const std::vector<std::size_t>& changed, const std::vector<Entry>& now, SKxSetupRefusal&)>;

class KXDEVUI_API SetupDialog : public CKxDevUI_Container {
public:
    SetupDialog(Design design, std::vector<Entry> positions, Accept accept);
    // Whether a record was accepted.
    bool Run(HWND owner);

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Choices : CKxDevUI_ListBox {
        explicit Choices(SetupDialog& of) : dialog(of) {}
        void OnSelectionChangeRequest(int index, bool&) override { dialog.Choose(index); }
        SetupDialog& dialog;
    };
    struct Narrowing : CKxDevUI_ComboBox {
        explicit Narrowing(SetupDialog& of) : dialog(of) {}
        void OnSelectionChangeRequest(int, bool&) override { dialog.Find(); }
        SetupDialog& dialog;
    };

    static LRESULT CALLBACK TableProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT CALLBACK FindProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);

    void MakeTable();
    void MakeSearch();
    void NameForReaders() const;
    // The rows as they are now, the list of what is found, and what is told of the row that is selected.
    void ShowRows();
    void Find();
    void ShowRow();
    // The user selects a row; puts what stands at this place of the list into it.
    void OnRow();
    void Choose(int index);
    void SelectRow(std::size_t row, bool focus);
    void OnOk();

    Design m_design;
    std::vector<Entry> m_before, m_now;
    Accept m_accept;
    std::vector<Entry> m_found;  // as the list has them; the first one is empty
    std::size_t m_row = 0;
    bool m_ready = false;
    CKxDevUI_Table m_table;
    Narrowing m_magnification{*this}, m_NA{*this}, m_group{*this};
    Choices m_list{*this};
};

}  // namespace kx::setup
