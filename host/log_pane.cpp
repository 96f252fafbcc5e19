#include "log_pane.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <commdlg.h>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>

#include "event_log.h"
#include "resources/resource.h"
#include "text.h"

namespace {

// The oldest lines leave the list earlier than the log: a list box is slow with many.
constexpr LRESULT kMostShown = 2000;

// Unzoomed pixels.
constexpr int kBarHeight = 28;
constexpr int kLabelWidth = 46;
constexpr int kFilterWidth = 170;
constexpr int kButtonWidth = 76;

// Loaded when it is wanted: it brings the printers' modules with it, which would be a part of every start.
bool AskWhere(OPENFILENAMEW& dialog) {
    const HMODULE module = LoadLibraryW(L"comdlg32.dll");
    const auto ask = reinterpret_cast<decltype(&GetSaveFileNameW)>(
        reinterpret_cast<void*>(module ? GetProcAddress(module, "GetSaveFileNameW") : nullptr));
    return ask && ask(&dialog);
}

}  // namespace

LogPane::~LogPane() {
    Log().SetViewer(nullptr);
    Destroy();
}

void LogPane::Build(HWND parent) {
    Log().SetViewer(nullptr);
    Destroy();
    m_pending.clear();
    Create(parent, 0, 0, 100, 100, true, true);
    SetTabInside(true);
    m_filter.SetId(IDC_LOG_FILTER);
    m_filter.Init({.showLabel = true});
    m_filter.SetTitle(Text(L"Filter:"));
    m_filter.SetSize(kLabelWidth, kFilterWidth, 20);
    m_filter.Create(*this, 4, 4, -1, -1, true, true);
    m_filter.SetText(m_filterText);
    InsertElement(&m_filter);
    SendMessageW(AddButton(Text(L"Pause"), IDC_LOG_PAUSE, BS_AUTOCHECKBOX | BS_PUSHLIKE), BM_SETCHECK,
                 m_paused ? BST_CHECKED : BST_UNCHECKED, 0);
    AddButton(Text(L"Copy"), IDC_LOG_COPY, 0);
    AddButton(Text(L"Save..."), IDC_LOG_SAVE, 0);
    AddButton(Text(L"Clear"), IDC_LOG_CLEAR, 0);
    m_list =
        CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL, 0, 0, 0, 0,
                        *this, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_LOG_LIST)), nullptr, nullptr);
    InsertWindow(m_list);
    ShowAll();
    Log().SetViewer([this](const std::wstring& line) {
        if (!m_paused && PassesFilter(line, m_filter.GetText().str())) Show(line);
    });
}

HWND LogPane::AddButton(const wchar_t* text, int id, DWORD style) {
    const HWND button = CreateWindowExW(0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0,
                                        *this, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    InsertWindow(button);
    return button;
}

void LogPane::PlaceAt(int x, int y, int width, int height) {
    const auto zoomed = [](int pixels) { return static_cast<int>(CKxGUILayoutManager::Zoomed(pixels)); };
    ::MoveWindow(*this, x, y, width, height, TRUE);
    const int bar = std::min(zoomed(kBarHeight), height);
    ::MoveWindow(m_filter, zoomed(4), zoomed(4), zoomed(kLabelWidth + kFilterWidth), zoomed(20), TRUE);
    int left = zoomed(4 + kLabelWidth + kFilterWidth + 8);
    for (const int id : {IDC_LOG_PAUSE, IDC_LOG_COPY, IDC_LOG_SAVE, IDC_LOG_CLEAR}) {
        const HWND button = GetWindow(id);
        ::MoveWindow(button, left, zoomed(3), zoomed(kButtonWidth), zoomed(22), TRUE);
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), TRUE);
        left += zoomed(kButtonWidth + 4);
    }
    // Less than a line or two shows nothing.
    const int list = height - bar < zoomed(30) ? 0 : height - bar;
    ::MoveWindow(m_list, 0, bar, width, list, TRUE);
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), TRUE);
}

// A drag brings many lines at a time, and with each the list box would draw its scroll bar at once.
void LogPane::Show(const std::wstring& line) {
    if (m_pending.empty()) PostMessageW(m_hWnd, WM_COMMAND, IDC_LOG_PENDING, 0);
    m_pending.push_back(line);
}

void LogPane::ShowPending() {
    if (m_pending.empty()) return;
    SendMessageW(m_list, WM_SETREDRAW, FALSE, 0);
    for (const std::wstring& line : m_pending)
        SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    m_pending.clear();
    LRESULT count = SendMessageW(m_list, LB_GETCOUNT, 0, 0);
    for (; count > kMostShown; --count)
        SendMessageW(m_list, LB_DELETESTRING, 0, 0);
    SendMessageW(m_list, LB_SETTOPINDEX, static_cast<WPARAM>(count - 1), 0);
    SendMessageW(m_list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_list, nullptr, TRUE);
}

void LogPane::ShowAll() {
    const std::wstring filter = m_filter.GetText().str();
    m_pending.clear();
    std::vector<const std::wstring*> shown;
    for (auto line = Log().Lines().rbegin(); line != Log().Lines().rend() && std::ssize(shown) < kMostShown; ++line) {
        if (PassesFilter(*line, filter)) shown.push_back(&*line);
    }
    SendMessageW(m_list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(m_list, LB_RESETCONTENT, 0, 0);
    std::reverse(shown.begin(), shown.end());
    for (const std::wstring* line : shown)
        SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line->c_str()));
    SendMessageW(m_list, LB_SETTOPINDEX, shown.size() - 1, 0);
    SendMessageW(m_list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_list, nullptr, TRUE);
}

// All lines that pass the filter, also those that the list has no room for.
std::wstring LogPane::Shown() const {
    const std::wstring filter = m_filter.GetText().str();
    std::wstring all;
    for (const std::wstring& line : Log().Lines()) {
        if (PassesFilter(line, filter)) all += line + L"\r\n";
    }
    return all;
}

void LogPane::Copy() const {
    const std::wstring text = Shown();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (!memory) return;
    std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(GlobalLock(memory)));
    GlobalUnlock(memory);
    // The clipboard owns it once it has taken it.
    bool taken = false;
    if (OpenClipboard(m_hWnd)) {
        EmptyClipboard();
        taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
    }
    if (!taken) GlobalFree(memory);
}

void LogPane::Save() const {
    wchar_t path[MAX_PATH] = L"callbacks.log";
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = GetAncestor(m_hWnd, GA_ROOT);
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    if (!AskWhere(dialog)) return;
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file << Utf8(Shown());
    if (!file.flush()) KX_MessageBox_(m_hWnd, Text(L"The file cannot be written."), Text(L"Log"), MB_ICONERROR, -1);
}

LRESULT LogPane::OnCommand(UINT message, WPARAM wParam, LPARAM lParam) {
    const int code = HIWORD(wParam);
    switch (LOWORD(wParam)) {
    case IDC_LOG_FILTER:
        if (code == EN_CHANGE && m_list) m_filterText = m_filter.GetText(), ShowAll();
        return 1;
    case IDC_LOG_PAUSE:
        m_paused = IsDlgButtonChecked(*this, IDC_LOG_PAUSE) == BST_CHECKED;
        if (!m_paused) ShowAll();
        return 1;
    case IDC_LOG_PENDING: ShowPending(); return 1;
    case IDC_LOG_COPY: Copy(); return 1;
    case IDC_LOG_SAVE: Save(); return 1;
    case IDC_LOG_CLEAR:
        Log().Clear();
        ShowAll();
        return 1;
    default: return CKxDevUI_Container::OnCommand(message, wParam, lParam);
    }
}
