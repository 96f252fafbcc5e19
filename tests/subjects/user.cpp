#include "user.h"

#include <bench/bench.h>
#include <bench/reader.h>

#include <algorithm>

#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_messagebox.h>

namespace kx::test {
namespace {

bool IsSeen(HWND window) {
    RECT client{};
    return IsWindowVisible(window) && GetClientRect(window, &client) && client.right > 0 && client.bottom > 0;
}

// The point so many eighths from the left, in the middle of the height, or the nearest to it that can be seen.
POINT At(HWND window, int eighths) {
    RECT client{};
    GetClientRect(window, &client);
    POINT point{client.right * eighths / 8, client.bottom / 2};
    const HWND root = GetAncestor(window, GA_ROOT);
    MapWindowPoints(window, root, &point, 1);
    GetClientRect(root, &client);
    point.x = std::clamp<LONG>(point.x, 0, client.right - 1);
    point.y = std::clamp<LONG>(point.y, 0, client.bottom - 1);
    MapWindowPoints(root, window, &point, 1);
    return point;
}

// The platform's menus close again; and a list view, which keeps a press in a loop of its own, as a scroll bar does,
// that of a list box also, hears of the release.
void CALLBACK EndLoops(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
    const std::string name = NameOfWindow(GetCapture());
    if (name.starts_with("SysListView32 ") || name.starts_with("ListBox ") || name.starts_with("ScrollBar "))
        PostMessageW(GetCapture(), WM_LBUTTONUP, 0, 0);
}

}  // namespace

std::string NameOfWindow(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return Narrow(name) + " #" + std::to_string(GetDlgCtrlID(window));
}

std::vector<Act> ActsAt(HWND window) {
    std::vector<Act> acts;
    const auto add = [&](const std::string& what, int eighths, const std::function<void(POINT)>& run) {
        acts.push_back({what + " " + NameOfWindow(window), [=] {
                            if (IsSeen(window)) run(At(window, eighths));
                        }});
    };
    for (const int eighths : {1, 4, 7})
        add("click at " + std::to_string(eighths) + "/8 of", eighths, [=](POINT p) { Click(window, p.x, p.y); });
    add("drag of", 4, [=](POINT from) {
        const POINT to = At(window, 6);
        Press(window, from.x, from.y);
        if (IsSeen(window)) MoveTo(window, to.x, to.y);
        Release();
    });
    add("double click on", 4, [=](POINT p) { DoubleClick(window, p.x, p.y); });
    add("right click on", 4, [=](POINT p) { Click(window, p.x, p.y, Button::Right); });
    for (const int delta : {120, -120})
        add(delta > 0 ? "wheel up over" : "wheel down over", 4,
            [=](POINT p) { MoveTo(window, p.x, p.y), Wheel(delta); });
    add("action of a client of", 4, [=](POINT) { Reader(window).Act(); });
    add("value of a client of", 4, [=](POINT) { Reader(window).Set(L"5"); });
    // A label has no use for keys, and is in nobody's way to them.
    if (NameOfWindow(window).starts_with("Static")) return acts;
    static constexpr struct {
        const char* name;
        WORD key;
    } keys[] = {{"Right", VK_RIGHT}, {"Left", VK_LEFT}, {"Up", VK_UP},        {"Down", VK_DOWN},
                {"Next", VK_NEXT},   {"Home", VK_HOME}, {"Space", VK_SPACE},  {"F2", VK_F2},
                {"5", '5'},          {"Back", VK_BACK}, {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}};
    for (const auto& [name, key] : keys)
        add(std::string(name) + " in", 4, [key = key](POINT) { key == '5' ? Type(L"5") : Key(key); });
    return acts;
}

void MoveAway(HWND parent) {
    RECT client{};
    GetClientRect(parent, &client);
    MoveTo(parent, client.right - 2, client.bottom - 2);
}

NobodyAnswers::NobodyAnswers(std::function<void(const char*)> opened)
    : opened_(std::move(opened)), timer_(SetTimer(nullptr, 0, 20, EndLoops)) {
    static constexpr auto hear = [](void* self, const char* what) {
        if (const auto& told = static_cast<NobodyAnswers*>(self)->opened_) told(what);
    };
    KX_SetMessageBoxHandler([](HWND, auto, auto, UINT, int, void* self) { return hear(self, "a box"), IDOK; }, this);
    KX_SetMenuHandler(
        [](HWND, const CKxMenu& menu, int, int, void* self) {
            const int command = menu.GetCommand(0);
            hear(self, "a menu");
            return command;
        },
        this);
}

NobodyAnswers::~NobodyAnswers() {
    KX_SetMenuHandler(nullptr, nullptr);
    KX_SetMessageBoxHandler(nullptr, nullptr);
    KillTimer(nullptr, timer_);
}

}  // namespace kx::test
