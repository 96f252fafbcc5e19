// The log as a user sees it: the lines that pass a filter, held still on demand, to be copied and saved.
#pragma once

#include <string>
#include <vector>

#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/framework/devgui_container.h>

class LogPane : public CKxDevUI_Container {
public:
    ~LogPane() override;

    // In the host's window, in the current language.
    void Build(HWND parent);
    // Where it stands, in pixels of the screen.
    void PlaceAt(int x, int y, int width, int height);

protected:
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND AddButton(const wchar_t* text, int id, DWORD style);
    void Show(const std::wstring& line);
    void ShowPending();
    void ShowAll();
    std::wstring Shown() const;
    void Copy() const;
    void Save() const;

    CKxDevUI_EditBox m_filter;
    CKxStringW m_filterText;
    HWND m_list = nullptr;
    bool m_paused = false;
    std::vector<std::wstring> m_pending;  // lines that have come since the last message was handled
};
