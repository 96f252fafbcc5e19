#include <kxdevui/framework/ui_complaint.h>

#include <algorithm>
#include <vector>

#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

namespace kx::ui {

namespace {

int s_losing = 0;

constexpr UINT kShow = WM_APP;  // wParam: the number of a complaint

struct Complaint {
    WPARAM number;
    HWND owner;
    HWND field;
    HWND top;  // above the owner
    CKxStringW text;
    CKxStringW caption;
    UINT style;
    bool stands;  // or waits
};

// Those that stand or wait.
std::vector<Complaint>& Complaints() {
    static auto* complaints = new std::vector<Complaint>;
    return *complaints;
}

HWND TopOf(HWND window) noexcept { return GetAncestor(window, GA_ROOT); }

void Forget(WPARAM number) {
    std::erase_if(Complaints(), [number](const Complaint& each) { return each.number == number; });
}

void Show(WPARAM number) {
    const auto found = std::find_if(Complaints().begin(), Complaints().end(),
                                    [number](const Complaint& each) { return each.number == number; });
    if (found == Complaints().end()) return;
    found->stands = true;
    // What the box lets in may complain as well, and move the list.
    const Complaint told = *found;
    const HWND focus = GetFocus();
    KX_MessageBox_(told.owner, told.text, told.caption, told.style, -1);
    // A frame that is active again takes the focus for itself, unless it is a dialog.
    const bool canGoBack = IsWindowVisible(focus) && IsWindowEnabled(focus) && TopOf(focus) == told.top;
    if (canGoBack && GetFocus() && GetFocus() != focus) SetFocus(focus);
    Forget(number);
}

void ShowLater(WPARAM number) {
    const bool isThere = std::any_of(Complaints().begin(), Complaints().end(), [number](const Complaint& each) {
        return each.number == number && IsWindow(each.owner) && (!each.field || IsWindow(each.field));
    });
    isThere ? Show(number) : Forget(number);
}

LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    if (id != kShow) return DefWindowProcW(window, id, wParam, lParam);
    Guarded([&]() -> Handled { return ShowLater(wParam), 0; });
    return 0;
}

// Not the control's window, nor the field's: their procedures may be anybody's, who would not know the message.
HWND Poster() {
    static ATOM s_class = 0;
    static HWND s_window = nullptr;
    EnsureClass(s_class, {.name = L"KxDevUI_Complaint", .object = L"Complaint", .procedure = WndProc});
    if (!IsWindow(s_window))
        s_window = CreateWindowExW(0, MAKEINTATOM(s_class), nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                   ModuleOf(WndProc), nullptr);
    return s_window;
}

}  // namespace

void LosingFocus::Count(int change) noexcept { s_losing += change; }

bool Complain(HWND owner, HWND field, const wchar_t* text, const wchar_t* caption, UINT style) {
    if (KX_GetFieldHabits(field).answer) return ShowAnswer(field, text), true;
    static WPARAM s_number = 0;
    const HWND top = TopOf(owner);
    const bool isSaid = std::any_of(Complaints().begin(), Complaints().end(),
                                    [top](const Complaint& each) { return top && each.top == top; });
    if (s_losing > 0 && isSaid) {
        KX_LOG(L"ui_complaint", L"not shown beside another message: %ls", text);
        return false;
    }
    const WPARAM number = ++s_number;
    Complaints().push_back({number, owner, field, top, text, caption, style, false});
    if (s_losing == 0 || !owner || !PostMessageW(Poster(), kShow, number, 0)) Show(number);
    return true;
}

HWND WhoComplains(HWND window) noexcept {
    if (Complaints().empty()) return nullptr;
    const HWND top = TopOf(window);
    for (const Complaint& each : Complaints())
        if (top && each.stands && each.top == top) return each.owner;
    return nullptr;
}

}  // namespace kx::ui
