// What is told of a window: what it says itself, what the platform's control is, and what those around it know.
#include <kxdevui/framework/ui_access.h>

#include <iterator>
#include <string>
#include <string_view>

#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"ui_access";

constexpr struct {
    const wchar_t *unit, *words;
} kUnits[] = {{L"%", L"percent"},      {L"\u00B5m", L"micrometres"}, {L"\u00B5m/s", L"micrometres per second"},
              {L"mm", L"millimetres"}, {L"nm", L"nanometres"},       {L"mW", L"milliwatts"},
              {L"V", L"volts"},        {L"s", L"seconds"},           {L"ms", L"milliseconds"},
              {L"\u00B0", L"degrees"}};

// ---- The platform's controls ---------------------------------------------------------------------------------------

enum class Stock { None, Button, Edit, Combo, List, Arrows, Label };

Stock StockOf(HWND window) {
    constexpr struct {
        const wchar_t* name;
        Stock stock;
    } known[] = {{L"Button", Stock::Button},          {L"Edit", Stock::Edit},
                 {L"ComboBox", Stock::Combo},         {L"ListBox", Stock::List},
                 {L"msctls_updown32", Stock::Arrows}, {L"Static", Stock::Label}};
    wchar_t name[32] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    for (const auto& each : known)
        if (lstrcmpiW(each.name, name) == 0) return each.stock;
    return Stock::None;
}

void Be(KxAccess& record, long role) {
    if (record.role == 0) record.role = role;
}

void AddButton(HWND window, KxAccess& record) {
    switch (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) {
    case BS_GROUPBOX: Be(record, ROLE_SYSTEM_GROUPING); return;
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE: Be(record, ROLE_SYSTEM_CHECKBUTTON); break;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: Be(record, ROLE_SYSTEM_RADIOBUTTON); break;
    default: Be(record, ROLE_SYSTEM_PUSHBUTTON); break;
    }
    const LRESULT check = SendMessageW(window, BM_GETCHECK, 0, 0);
    if (check == BST_CHECKED) record.state |= STATE_SYSTEM_CHECKED;
    if (check == BST_INDETERMINATE) record.state |= STATE_SYSTEM_MIXED;
    if (record.act) return;
    record.action = KX_GetTranslation(L"Press", kSource);
    record.act = [window] { SendMessageW(window, BM_CLICK, 0, 0); };
}

void AddEdit(HWND window, KxAccess& record) {
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    Be(record, ROLE_SYSTEM_TEXT);
    if (style & ES_READONLY) record.state |= STATE_SYSTEM_READONLY;
    if (style & ES_PASSWORD) record.state |= STATE_SYSTEM_PROTECTED;
    if (record.value.IsEmpty() && !(style & ES_PASSWORD)) record.value = TextOf(window);
    if (!record.setValue && !(style & ES_READONLY))
        record.setValue = [window](const CKxStringW& text) { return EnterText(window, text); };
}

// As the user does, who is asked for one of the list.
bool Choose(HWND list, const CKxStringW& text) {
    const LRESULT index =
        SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    if (index < 0) return false;
    if (SendMessageW(list, CB_GETCURSEL, 0, 0) == index) return true;
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    Notify(ParentOf(list), GetDlgCtrlID(list), CBN_SELCHANGE, reinterpret_cast<LPARAM>(list));
    return true;
}

void AddPlatform(HWND window, KxAccess& record) {
    switch (StockOf(window)) {
    case Stock::Button: AddButton(window, record); break;
    case Stock::Edit: AddEdit(window, record); break;
    case Stock::Combo:
        Be(record, ROLE_SYSTEM_COMBOBOX);
        if (record.value.IsEmpty()) record.value = TextOf(window);
        if (!record.setValue) record.setValue = [window](const CKxStringW& text) { return Choose(window, text); };
        break;
    case Stock::List: Be(record, ROLE_SYSTEM_LIST); break;
    case Stock::Arrows: Be(record, ROLE_SYSTEM_SPINBUTTON); break;
    case Stock::Label: Be(record, ROLE_SYSTEM_STATICTEXT); break;
    case Stock::None: break;
    }
}

// ---- Those around --------------------------------------------------------------------------------------------------

bool Ask(HWND window, HWND about, KxAccess& record) {
    return SendMessageW(window, WM_KX_DESCRIBE, reinterpret_cast<WPARAM>(about), reinterpret_cast<LPARAM>(&record)) !=
           0;
}

// A host's window around ours may be another thread's.
bool IsOwnThread(HWND window) { return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId(); }

CKxStringW LabelText(HWND label) {
    return label && IsWindowVisible(label) && StockOf(label) == Stock::Label ? AsRead(TextOf(label)) : CKxStringW();
}

// What is beside a field in the order of the windows; arrows belong to it.
CKxStringW LabelBeside(HWND window, UINT direction) {
    HWND beside = GetWindow(window, direction);
    while (beside && StockOf(beside) == Stock::Arrows)
        beside = GetWindow(beside, direction);
    return LabelText(beside);
}

bool IsUnit(const CKxStringW& text) {
    for (const auto& each : kUnits)
        if (text == each.unit) return true;
    return false;
}

CKxStringW TitleOf(HWND window) {
    if (const CKxStringW title = Activity::TitleOf(window); !title.IsEmpty()) return AsRead(title);
    CKxDevUI_Base* const control = ControlOf(window);
    return control ? AsRead(control->GetTitle()) : CKxStringW();
}

// What is in a field is no name of it.
CKxStringW OwnName(HWND window, const KxAccess& record) {
    const bool isField = record.role == ROLE_SYSTEM_TEXT || record.role == ROLE_SYSTEM_COMBOBOX;
    const CKxStringW text = isField ? CKxStringW() : AsRead(TextOf(window));
    return text.IsEmpty() ? TitleOf(window) : text;
}

void AddFromAround(HWND window, KxAccess& record) {
    const bool isField = record.role == ROLE_SYSTEM_TEXT;
    HWND inner = window;
    for (HWND up = ParentOf(window); up && IsOwnThread(up); inner = up, up = ParentOf(up)) {
        if (record.name.IsEmpty()) record.name = LabelBeside(inner, GW_HWNDPREV);
        if (isField && record.unit.IsEmpty()) {
            if (const CKxStringW behind = LabelBeside(inner, GW_HWNDNEXT); IsUnit(behind)) record.unit = behind;
        }
        if (!Ask(up, window, record) && record.name.IsEmpty()) record.name = TitleOf(up);
        if (record.description.IsEmpty()) record.description = Activity::StateOf(up);
    }
}

}  // namespace

CKxStringW AsRead(const CKxStringW& text) {
    std::wstring read;
    const std::wstring& all = text.str();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i] == L'&' && ++i == all.size()) break;
        const bool breaks = all[i] == L'\n' || all[i] == L'\r';
        if (!breaks || (!read.empty() && read.back() != L' ')) read += breaks ? L' ' : all[i];
    }
    const std::size_t first = read.find_first_not_of(L' '), last = read.find_last_not_of(L" :");
    return last == std::wstring::npos || last < first ? CKxStringW() : CKxStringW(read.substr(first, last - first + 1));
}

CKxStringW Listed(std::initializer_list<CKxStringW> texts) {
    CKxStringW all;
    for (const CKxStringW& each : texts) {
        if (!all.IsEmpty() && !each.IsEmpty()) all += L", ";
        all += each;
    }
    return all;
}

CKxStringW UnitInWords(const CKxStringW& unit) {
    for (const auto& each : kUnits)
        if (unit == each.unit) return KX_GetTranslation(each.words, kSource);
    return unit;
}

// A control of the platform that is a part of ours has at least a name. One that is not known here is told of better
// by the platform.
bool IsTold(HWND window) {
    const auto state = FindState(window);
    if (state && state->previous && StockOf(window) != Stock::None) return true;
    KxAccess asked;
    return Ask(window, nullptr, asked);
}

KxAccess RecordOf(HWND window) {
    KxAccess record;
    Ask(window, nullptr, record);
    AddPlatform(window, record);
    if (record.name.IsEmpty()) record.name = OwnName(window, record);
    if (record.description.IsEmpty()) record.description = Activity::StateOf(window);
    // A group is called by its own title or not at all.
    if (record.role != ROLE_SYSTEM_GROUPING) AddFromAround(window, record);
    if (!record.unit.IsEmpty()) record.name = Listed({record.name, UnitInWords(record.unit)});
    return record;
}

bool CanBeUsed(HWND window) {
    for (HWND up = window; up; up = ParentOf(up))
        if (!IsWindowEnabled(up) || !(GetWindowLongW(up, GWL_STYLE) & static_cast<LONG>(WS_VISIBLE))) return false;
    return window != nullptr;
}

}  // namespace kx::ui
