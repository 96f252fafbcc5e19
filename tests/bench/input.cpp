#include <bench/input.h>

#include <bench/record.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace kx::test {
namespace {

HWND dialogKeysWindow = nullptr;

// The time stamps of injected presses. Advancing it by more than the double-click time keeps clicks apart without
// waiting.
DWORD pressTime = 0;

// The display reports the cursor's way once more, sooner or later, also a place where it no longer is; and a person may
// touch the mouse. Only what is injected counts.
LRESULT CALLBACK OnlyInjected(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && !(reinterpret_cast<const MSLLHOOKSTRUCT*>(lParam)->flags & LLMHF_INJECTED)) return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void Send(INPUT input) {
    if (SendInput(1, &input, sizeof(input)) != 1) ADD_FAILURE() << "input was refused: error " << GetLastError();
    Pump();
}

void SendMouse(DWORD flags, LONG x = 0, LONG y = 0, DWORD data = 0, DWORD time = 0) {
    // For the rest of the program: what was reported late must not come through in the next test either.
    static const HHOOK hook = SetWindowsHookExW(WH_MOUSE_LL, OnlyInjected, GetModuleHandleW(nullptr), 0);
    if (!hook) ADD_FAILURE() << "the mouse cannot be kept from the display: error " << GetLastError();

    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {x, y, data, flags, time, 0};
    Send(input);
}

void SendKey(WORD virtualKey, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {virtualKey, scan, flags, 0, 0};
    Send(input);
}

bool IsExtended(WORD key) {
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_APPS;
}

void SendKey(WORD key, bool up) {
    const auto scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    SendKey(key, scan, (up ? DWORD{KEYEVENTF_KEYUP} : 0) | (IsExtended(key) ? DWORD{KEYEVENTF_EXTENDEDKEY} : 0));
}

// Holds the modifier keys down while it lives.
class Held {
public:
    explicit Held(UINT modifiers) : modifiers_(modifiers) {
        // When the mouse or the focus has come to a window, the display tells somewhat later which keys are down, and
        // so lets go the injected ones: once, so that pressing again lasts.
        for (int attempt = 0; attempt < 3; ++attempt)
            for (const auto& [flag, key] : all)
                if ((modifiers_ & flag) && GetKeyState(key) >= 0) SendKey(key, false);
    }
    ~Held() {
        for (const auto& [flag, key] : all)
            if (modifiers_ & flag) SendKey(key, true);
    }

private:
    static constexpr std::pair<UINT, WORD> all[] = {
        {MOD_CONTROL, VK_CONTROL}, {MOD_SHIFT, VK_SHIFT}, {MOD_ALT, VK_MENU}};

    UINT modifiers_;
};

// Pixels to the 65,536ths of the screen that SendInput takes, rounded so that they come back as the same pixel.
LONG Absolute(LONG pixel, int extent) { return static_cast<LONG>((pixel * 65536LL + extent - 1) / extent); }

void PressAt(HWND window, int x, int y, Button button, DWORD time) {
    MoveTo(window, x, y);
    if (!IsWindow(window)) return;  // whoever was told that the mouse has come has ended it
    POINT cursor{};
    GetCursorPos(&cursor);
    if (!GetCapture() && GetAncestor(WindowFromPoint(cursor), GA_ROOT) != GetAncestor(window, GA_ROOT))
        ADD_FAILURE() << "another window covers the point " << x << ", " << y;
    SendMouse(button == Button::Left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN, 0, 0, 0, time);
}

DWORD NextPressTime() {
    const DWORD now = GetTickCount();
    pressTime = std::max(pressTime, now) + 2 * GetDoubleClickTime();
    return pressTime;
}

}  // namespace

void Pump() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (std::chrono::steady_clock::now() >= end) {
            ADD_FAILURE() << "the messages have no end, the last is " << NameOf(message.message);
            return;
        }
        if (dialogKeysWindow && IsDialogMessageW(dialogKeysWindow, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool PumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        Pump();
        if (condition()) return true;
        if (std::chrono::steady_clock::now() >= end) return false;
        // The condition may depend on more than messages, so it is asked again soon even when none comes.
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}

DialogKeys::DialogKeys(HWND window) : previous_(dialogKeysWindow) { dialogKeysWindow = window; }
DialogKeys::~DialogKeys() { dialogKeysWindow = previous_; }

void BringToFront(HWND window) {
    const HWND root = GetAncestor(window, GA_ROOT);
    if (GetForegroundWindow() != root) SetForegroundWindow(root);
    Pump();
}

void MoveTo(HWND window, int x, int y) {
    BringToFront(window);
    POINT point{x, y};
    ClientToScreen(window, &point);
    const int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
    POINT cursor{};
    // What the display had reported before this program's first move may still be on its way.
    for (int attempt = 0; attempt < 3 && (attempt == 0 || cursor.x != point.x || cursor.y != point.y); ++attempt) {
        SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, Absolute(point.x, width), Absolute(point.y, height));
        GetCursorPos(&cursor);
    }
    if (cursor.x != point.x || cursor.y != point.y)
        ADD_FAILURE() << "the mouse is at " << cursor.x << ", " << cursor.y << " and should be at " << point.x << ", "
                      << point.y << " of the screen";
}

void Press(HWND window, int x, int y, Button button) { PressAt(window, x, y, button, NextPressTime()); }

void Release(Button button) { SendMouse(button == Button::Left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP); }

void Click(HWND window, int x, int y, Button button) {
    Press(window, x, y, button);
    Release(button);
}

void DoubleClick(HWND window, int x, int y, Button button) {
    Click(window, x, y, button);
    // The first click may have ended it, and then there is no point of it any more.
    if (!IsWindow(window)) return;
    PressAt(window, x, y, button, pressTime + 1);
    Release(button);
}

void Wheel(int delta, UINT modifiers) {
    const Held held(modifiers);
    SendMouse(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(delta));
}

void Key(WORD virtualKey, UINT modifiers) {
    const Held held(modifiers);
    SendKey(virtualKey, false);
    SendKey(virtualKey, true);
}

void Type(std::wstring_view text) {
    for (const wchar_t character : text) {
        // Others as characters, not as keys: what a key types depends on the machine's keyboard.
        if (character == L'\n' || character == L'\t' || character == L'\b')
            Key(character == L'\n' ? VK_RETURN : static_cast<WORD>(character));  // which have the codes of their keys
        else
            for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}})
                SendKey(0, static_cast<WORD>(character), KEYEVENTF_UNICODE | up);
    }
}

}  // namespace kx::test
