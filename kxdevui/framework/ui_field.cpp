#include <kxdevui/framework/ui_field.h>

#include <algorithm>
#include <memory>
#include <vector>

#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_paint.h>

namespace kx::ui {

FieldText TextIn(HWND edit) {
    DWORD first = 0, last = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    return {TextOf(edit).str(), first, last};
}

namespace {

// Taken back with the platform's own undo.
void Write(HWND edit, const std::wstring& text) {
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

constexpr wchar_t kSelectAll = 1, kEscape = 27, kUndo = 26, kFirstPrintable = 32, kDelete = 127;

// What belongs to the edit.
std::wstring& Held(HWND edit) {
    auto& own = StateOf(edit)->own;
    if (!own) own = std::make_shared<std::wstring>();
    return *static_cast<std::wstring*>(own.get());
}

void SelectAll(HWND edit) { SendMessageW(edit, EM_SETSEL, 0, -1); }

bool IsReadOnly(HWND edit) { return (GetWindowLongW(edit, GWL_STYLE) & ES_READONLY) != 0; }

std::optional<std::wstring> Clipboard(HWND owner) {
    if (!OpenClipboard(owner)) return std::nullopt;
    std::optional<std::wstring> text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        // No more than is looked at, whoever has put there what.
        const std::size_t room = std::min<std::size_t>(GlobalSize(data) / sizeof(wchar_t), kMostPasted + 1);
        if (const auto* characters = static_cast<const wchar_t*>(GlobalLock(data))) {
            text.emplace(characters, std::find(characters, characters + room, L'\0'));
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return text;
}

Handled Paste(HWND edit, const Field& field) {
    // Also where it cannot be read: the platform, which might succeed a moment later, would take anything.
    const auto pasted = Clipboard(edit);
    if (!pasted) return 0;
    const auto text = NumberPasted(*pasted, field.separator);
    const FieldText before = TextIn(edit);
    const auto most = static_cast<std::size_t>(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0));
    if (!text || (!text->empty() && Written(before, *text, most) == before)) {
        ShowAnswer(edit, field.allowed());
        return 0;
    }
    HideAnswer(edit);
    Write(edit, *text);
    return 0;
}

bool CanBeTypedInto(HWND window) {
    constexpr LONG state = WS_VISIBLE | WS_DISABLED | ES_READONLY;
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) && (style & state) == WS_VISIBLE &&
           IsWindowVisible(window) && IsWindowEnabled(window);
}

// In the order of Tab.
HWND NextField(HWND edit, HWND group, bool around) {
    std::vector<HWND> fields;
    const auto collect = [](HWND window, LPARAM list) -> BOOL {
        if (CanBeTypedInto(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    EnumChildWindows(group, collect, reinterpret_cast<LPARAM>(&fields));
    auto at = std::find(fields.begin(), fields.end(), edit);
    if (at == fields.end()) return nullptr;
    if (++at != fields.end()) return *at;
    return around && fields.front() != edit ? fields.front() : nullptr;
}

}  // namespace

void NoteField(const Message& message) {
    if (message.id == WM_SETTEXT) {
        const auto* text = reinterpret_cast<const wchar_t*>(message.lParam);
        Held(message.window) = text ? text : L"";
    }
}

void HoldField(HWND edit) {
    Held(edit) = TextOf(edit).str();
    SendMessageW(edit, EM_SETMODIFY, FALSE, 0);
}

void FieldEntered(HWND edit) {
    const KxFieldHabits habits = KX_GetFieldHabits(edit);
    if (habits.revert || habits.answer) HoldField(edit);
}

void ShowAsTyped(HWND edit, const std::function<void()>& show) {
    // Without the habit, what is shown is set.
    if (!KX_GetFieldHabits(edit).revert) return show();
    const std::wstring held = Held(edit);
    show();
    if (!IsWindow(edit)) return;
    Held(edit) = held;
    SendMessageW(edit, EM_SETMODIFY, TRUE, 0);
}

void SelectOnFocus(const Message& message) {
    if (message.id != WM_SETFOCUS || !KX_GetFieldHabits(message.window).select) return;
    // The pointer places the caret itself; a program that comes to the front finds its field as it was.
    const auto from = reinterpret_cast<HWND>(message.wParam);
    const bool inside = from && GetAncestor(from, GA_ROOT) == GetAncestor(message.window, GA_ROOT);
    if (inside && GetKeyState(VK_LBUTTON) >= 0) SelectAll(message.window);
}

Handled LoseFocus(const Message& message) {
    if (GetFocus() != message.window) return std::nullopt;
    CallPrevious(message);
    return CallPrevious({message.window, WM_SETFOCUS, 0, 0});
}

bool WantsEscape(const Message& message, bool always) {
    const auto* asked = reinterpret_cast<const MSG*>(message.lParam);
    return message.id == WM_GETDLGCODE && asked && asked->wParam == VK_ESCAPE &&
           TextOf(message.window).str() != Held(message.window) && (always || KX_GetFieldHabits(message.window).revert);
}

Handled TypeInField(const Message& message, const Field& field) {
    const HWND edit = message.window;
    const bool writable = !IsReadOnly(edit);
    const KxFieldHabits habits = KX_GetFieldHabits(edit);
    if (message.id == WM_PASTE) {
        return habits.numbersOnly && writable && !field.anyText ? Paste(edit, field) : std::nullopt;
    }
    if (message.id != WM_CHAR) return std::nullopt;
    const auto typed = static_cast<wchar_t>(message.wParam);
    if (habits.editKeys && typed == kSelectAll) return SelectAll(edit), 0;
    if (habits.editKeys && typed == kUndo) {
        if (SendMessageW(edit, EM_CANUNDO, 0, 0)) SendMessageW(edit, EM_UNDO, 0, 0);
        return 0;
    }
    if (habits.revert && typed == kEscape) return RevertField(edit), 0;
    if (!habits.numbersOnly || !writable || field.anyText || typed < kFirstPrintable || typed == kDelete) {
        return std::nullopt;
    }
    const auto written = NumberCharacter(typed, field.separator);
    if (!written) return ShowAnswer(edit, field.allowed()), 0;
    HideAnswer(edit);
    return CallPrevious({edit, WM_CHAR, *written, message.lParam});
}

void RevertField(HWND edit) {
    HideAnswer(edit);
    const std::wstring held = Held(edit);
    if (TextOf(edit).str() != held) SetWindowTextW(edit, held.c_str());
    if (!IsWindow(edit)) return;
    SendMessageW(edit, EM_SETMODIFY, FALSE, 0);
    SelectAll(edit);
}

bool GoOnFrom(HWND edit, HWND group, bool around) {
    if (GetFocus() != edit) return false;
    const KxFieldHabits habits = KX_GetFieldHabits(edit);
    if (const HWND next = habits.goOn ? NextField(edit, group, around) : nullptr) return SetFocus(next), true;
    if (habits.select) SelectAll(edit);
    return false;
}

bool EnterText(HWND edit, const CKxStringW& text) {
    const auto isKey = [](wchar_t character) { return character < kFirstPrintable || character == kDelete; };
    if (IsReadOnly(edit) || std::any_of(text.str().begin(), text.str().end(), isKey)) return false;
    SetFocus(edit);
    if (GetFocus() != edit) return false;
    const FieldText before = TextIn(edit);
    SelectAll(edit);
    if (text.IsEmpty()) Write(edit, {});
    for (const wchar_t each : text.str()) {
        SendMessageW(edit, WM_CHAR, each, 1);
        if (GetFocus() != edit) return true;
    }
    // A character that it does not take is left out.
    if (TextOf(edit).str().size() != text.str().size()) return TypeAgain(edit, before), false;
    HideAnswer(edit);
    const HWND answer = AnswerWindow();
    SendMessageW(edit, WM_CHAR, VK_RETURN, 1);
    const bool refused = GetFocus() == edit && AnswerWindow() && AnswerWindow() != answer;
    if (refused) RevertField(edit);
    return !refused;
}

void TypeAgain(HWND edit, const FieldText& typed) {
    if (typed.text != TextOf(edit).str()) SelectAll(edit), Write(edit, typed.text);
    SendMessageW(edit, EM_SETSEL, typed.first, static_cast<LPARAM>(typed.last));
}

}  // namespace kx::ui
