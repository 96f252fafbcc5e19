// The steps that every control must bear.
#include "storm.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <sstream>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace kx::test::storm {

namespace {

template <class... Parts>
std::string Join(const Parts&... parts) {
    std::ostringstream out;
    ((out << parts << ' '), ...);
    return out.str();
}

struct Aim {
    Random& random;
    RecordingParent& parent;
    Subject& subject;
    const std::vector<Target>& windows;
    Target target;
    std::string name;  // "Edit #2"

    HWND AnyWindow() const { return random.Of(windows).window; }
    LPARAM AnyOrNone() const { return random.OneIn(3) ? 0 : reinterpret_cast<LPARAM>(AnyWindow()); }
    // A radio button that is hidden or disabled, where no user can click, looks under Wine for its group for ever.
    bool CanBePressed() const {
        return target.ours || (IsWindowVisible(target.window) && IsWindowEnabled(target.window));
    }
    LPARAM Point() const {
        const int x = random.Length();
        return MAKELPARAM(x, random.Length());
    }
};

Step Sent(const Aim& aim, UINT message, WPARAM wParam, LPARAM lParam) {
    return {NameOf(message), [=, window = aim.target.window] { SendMessageW(window, message, wParam, lParam); },
            Join(aim.name, std::hex, wParam, lParam)};
}

// With the DC of a bitmap that is too small for most windows.
Step SentWithDc(const Aim& aim, UINT message, const std::function<void(HDC)>& send) {
    return {NameOf(message), [=] { WithDc(90, 60, send); }, aim.name};
}

Step NotifyStep(const Aim& aim) {
    const HWND window = aim.target.window, from = aim.AnyWindow();
    const int id = aim.random.Between(-1, 9), code = -aim.random.Between(0, 900);
    return {"WM_NOTIFY",
            [=] {
                alignas(16) std::array<std::byte, 512> bytes{};  // whatever the code makes of it, there is room for it
                auto& header = *reinterpret_cast<NMHDR*>(bytes.data());
                header = {from, static_cast<UINT_PTR>(id), static_cast<UINT>(code)};
                SendMessageW(window, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
            },
            Join(aim.name, "id", id, "code", code)};
}

Step DrawItemStep(const Aim& aim) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(aim.random.Between(0, 9));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = static_cast<UINT>(aim.random.Below(64));
    item.hwndItem = aim.AnyWindow();
    item.rcItem = {aim.random.Length(), aim.random.Length(), aim.random.Length(), aim.random.Length()};
    return SentWithDc(aim, WM_DRAWITEM, [item, window = aim.target.window](HDC dc) {
        DRAWITEMSTRUCT passed = item;
        passed.hDC = dc;
        SendMessageW(window, WM_DRAWITEM, passed.CtlID, reinterpret_cast<LPARAM>(&passed));
    });
}

Step DcStep(const Aim& aim) {
    const UINT message = aim.random.Of<UINT>({WM_CTLCOLORSTATIC, WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT, WM_CTLCOLORBTN,
                                              WM_ERASEBKGND, WM_PRINTCLIENT, WM_PAINT});
    LPARAM lParam = message == WM_PRINTCLIENT ? PRF_CLIENT : 0;
    if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
        lParam = reinterpret_cast<LPARAM>(aim.AnyWindow());
    return SentWithDc(aim, message, [=, window = aim.target.window](HDC dc) {
        SendMessageW(window, message, reinterpret_cast<WPARAM>(dc), lParam);
    });
}

Step TextStep(const Aim& aim) {
    const std::wstring text =
        aim.random.Of<std::wstring>({L"", L"a", L"12.5", L"-1e999", L"a & b\r\n\tc", std::wstring(5000, L'W')});
    return {"WM_SETTEXT",
            [=, window = aim.target.window] {
                SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
                wchar_t back[40];
                SendMessageW(window, WM_GETTEXT, 40, reinterpret_cast<LPARAM>(back));
            },
            Join(aim.name, text.size(), "characters")};
}

Step CommandStep(const Aim& aim) {
    const int code = aim.random.Of<int>({0, 1, 2, 3, 4, 5, 7, EN_KILLFOCUS, EN_CHANGE, EN_UPDATE, 0xFFFF});
    return Sent(aim, WM_COMMAND, MAKEWPARAM(aim.random.Between(0, 9), code), aim.AnyOrNone());
}

Step ScrollStep(const Aim& aim) {
    const WPARAM wParam = MAKEWPARAM(aim.random.Between(0, 9), aim.random.AnyInt());
    return Sent(aim, aim.random.OneIn(2) ? WM_HSCROLL : WM_VSCROLL, wParam, aim.AnyOrNone());
}

Step WheelStep(const Aim& aim) {
    const int delta = aim.random.Of({120, -120, 1, -1, 0, 32767, -32768, 600});
    const UINT message = aim.target.ours && aim.random.OneIn(2) ? 0x83EDu : UINT{WM_MOUSEWHEEL};
    return Sent(aim, message, MAKEWPARAM(aim.random.Below(32), delta), aim.Point());
}

Step MouseStep(const Aim& aim) {
    const UINT message = aim.random.Of<UINT>({WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP,
                                              WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_MBUTTONUP,
                                              WM_MOUSEACTIVATE, WM_NCHITTEST, WM_MOUSELEAVE, WM_CAPTURECHANGED});
    switch (message) {
    case WM_MOUSELEAVE: return Sent(aim, message, 0, 0);
    case WM_CAPTURECHANGED: return Sent(aim, message, 0, reinterpret_cast<LPARAM>(aim.AnyWindow()));
    case WM_MOUSEACTIVATE:
        return Sent(aim, message, reinterpret_cast<WPARAM>(aim.parent.Window()), MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    default: break;
    }
    // In some of the platform's controls a press runs a loop of its own until the button comes up; with the right one,
    // that opens a menu, whose loop would wait for a user.
    if (!aim.CanBePressed() || (!aim.target.ours && message == WM_RBUTTONDOWN)) return WheelStep(aim);
    const LPARAM point = aim.Point();
    Step step = Sent(aim, message, static_cast<WPARAM>(aim.random.Below(32)), point);
    if (!aim.target.ours) {
        step.run = [press = std::move(step.run), window = aim.target.window, point] {
            PostMessageW(window, WM_LBUTTONUP, 0, point);
            press();
        };
    }
    return step;
}

// Keys that open a menu stay out: the menu's own loop would wait for a user.
Step KeyStep(const Aim& aim) {
    if (!aim.CanBePressed()) return WheelStep(aim);
    const int character = aim.random.Of<int>({'0', '9', '-', '.', ',', 'x', 8, 9, 13, 27, 0x3042, 0xD800, 0});
    const int key = aim.random.Of({VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_TAB,
                                   VK_RETURN, VK_ESCAPE, VK_SPACE, VK_DELETE, VK_BACK, VK_F2, VK_F4, VK_F5, int{'A'}});
    const UINT message = aim.random.Of<UINT>({WM_CHAR, WM_CHAR, WM_CHAR, WM_KEYDOWN, WM_KEYDOWN, WM_KEYUP});
    return Sent(aim, message, static_cast<WPARAM>(message == WM_CHAR ? character : key), 1);
}

Step SizeStep(const Aim& aim) {
    if (aim.random.OneIn(4)) return Sent(aim, WM_SIZE, static_cast<WPARAM>(aim.random.Below(5)), aim.Point());
    const int x = aim.random.Length(), y = aim.random.Length(), cx = aim.random.Length(), cy = aim.random.Length();
    const UINT flags = aim.random.Of<UINT>({0, SWP_NOMOVE, SWP_NOSIZE, SWP_NOZORDER, SWP_FRAMECHANGED, SWP_NOREDRAW});
    const HWND window = aim.target.window;
    return {"SetWindowPos", [=] { SetWindowPos(window, nullptr, x, y, cx, cy, flags | SWP_NOACTIVATE); },
            Join(aim.name, x, y, cx, cy, std::hex, flags)};
}

Step FocusStep(const Aim& aim) {
    const HWND window = aim.random.OneIn(4) ? aim.parent.Window() : aim.target.window;
    switch (aim.random.Below(7)) {
    case 0: return {"ReleaseCapture", [] { ReleaseCapture(); }};
    case 1: return {"SetCapture", [window = aim.target.window] { SetCapture(window); }, aim.name};
    default: return {"SetFocus", [=] { SetFocus(window); }, aim.name};
    }
}

Step StateStep(const Aim& aim) {
    const UINT message =
        aim.random.Of<UINT>({WM_ENABLE, WM_SETREDRAW, WM_SHOWWINDOW, WM_CANCELMODE, WM_GETDLGCODE, WM_SETCURSOR,
                             WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE, WM_TIMER, WM_NCPAINT, WM_GETFONT,
                             WM_UPDATEUISTATE, WM_QUERYUISTATE, WM_DISPLAYCHANGE, WM_NCCALCSIZE, WM_NULL});
    const auto any = static_cast<WPARAM>(aim.random.Below(3));
    const auto window = reinterpret_cast<WPARAM>(aim.target.window);
    static RECT rect;
    rect = {0, 0, 50, 40};
    switch (message) {
    case WM_NCPAINT: return Sent(aim, message, 1, 0);  // the whole window; any other number would be a region
    case WM_SETCURSOR: return Sent(aim, message, window, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    case WM_SETTINGCHANGE: return Sent(aim, message, any, reinterpret_cast<LPARAM>(L"intl"));
    case WM_NCCALCSIZE: return Sent(aim, message, FALSE, reinterpret_cast<LPARAM>(&rect));
    default: return Sent(aim, message, any, 0);
    }
}

Step FontStep(const Aim& aim) {
    const HFONT font = aim.random.Of<HFONT>({KX_GetDefaultGuiFont(), KX_GetDefaultGuiFontBold(), HFONT{}});
    return Sent(aim, WM_SETFONT, reinterpret_cast<WPARAM>(font), aim.random.Below(2));
}

Step PaintStep(const Aim& aim) {
    constexpr UINT how = RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN;
    return {"painting", [window = aim.target.window] { RedrawWindow(window, nullptr, nullptr, how); }, aim.name};
}

Step DeviceBandStep(const Aim& aim) {
    const HWND window = aim.target.window;
    const int device = aim.random.Of({0, 1, 2, 3, 63, -1});
    const std::uint64_t bits = aim.random.Next();
    const bool flags = !aim.random.OneIn(4);
    return {"a change of a device band",
            [=] {
                bool all[64];
                for (int i = 0; i < 64; ++i)
                    all[i] = (bits >> i & 1) != 0;
                SendMessageW(window, 0x0500, static_cast<WPARAM>(device), flags ? reinterpret_cast<LPARAM>(all) : 0);
            },
            Join(aim.name, "device", device, "flags", std::hex, flags ? bits : 0)};
}

Step UnknownStep(const Aim& aim) {
    const int message =
        aim.random.OneIn(2) ? aim.random.Between(WM_USER + 3, 0x7FFF) : aim.random.Between(0x8000, 0xBFFF);
    const bool known = message == 0x0500 || message == 0x83ED || message == 0x83FA;
    return Sent(aim, known ? UINT{WM_NULL} : static_cast<UINT>(message), static_cast<WPARAM>(aim.random.Between(-1, 9)),
                aim.random.Between(-1, 9));
}

Step ZoomStep(const Aim& aim) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const double zoom = aim.random.Of({1.0, 1.0, 1.0, 1.25, 1.5, 2.0, 0.5, 0.25, 8.0, 0.0, -1.0, 1e300, nan, infinite});
    return {"SetGuiZoom", [=] { CKxGUILayoutManager::SetGuiZoom(zoom); }, Join(zoom)};
}

Step SchemeStep(const Aim& aim) {
    const int scheme = aim.random.Of({0, 0, 1, 2, 3, 4, -1});
    return {"KX_SetColorScheme", [=] { KX_SetColorScheme(static_cast<EKxColorScheme>(scheme)); }, Join(scheme)};
}

void Operate(CKxDevUI_Base& control, int what, int a, int b) {
    SIZE size{};
    RECT rect{};
    switch (what) {
    case 0: control.SetEnabled(a % 2 == 0); break;
    case 1: control.SetVisible(b % 4 != 0); break;
    case 2: control.SetTitle(a % 3 == 0 ? nullptr : L"title"); break;
    case 3: control.MoveWindow(a, b); break;
    case 4: control.MoveWindowRelative(a, b); break;
    case 5: control.ResizeWindow(a, b); break;
    case 6: control.ResizeWindowRelative(a, b); break;
    case 7: control.SetFocus(); break;
    case 8: control.SetRedraw(a % 2 == 0); break;
    case 9: control.RefreshWindow(); break;
    case 10: control.HandleMouseWheel(MAKEWPARAM(0, a), b); break;
    case 11: control.GetWindowRectangle(&rect), control.GetWindowSize(&size); break;
    case 12: control.GetWindowPosition(nullptr, nullptr), control.GetWindowRectangle(nullptr); break;
    default: control.SetId(control.GetId()), control.GetWidth(), control.GetHeight(); break;
    }
}

Step OperationStep(const Aim& aim) {
    CKxDevUI_Base* control = aim.subject.Control();
    if (!control) return PaintStep(aim);
    const int what = aim.random.Below(14), a = aim.random.Length(), b = aim.random.Length();
    return {"an operation of the base", [=] { Operate(*control, what, a, b); }, Join("number", what, "with", a, b)};
}

struct Sort {
    Step (*make)(const Aim&);
    int weight;
    bool ours;  // only for controls of the library
};
constexpr int heaviest = 14;
// clang-format off
constexpr Sort sorts[] = {
    {NotifyStep, 5, true},  {DrawItemStep, 5, true}, {DcStep, 8, true},         {TextStep, 4, false},
    {CommandStep, 8, true}, {ScrollStep, 5, true},   {MouseStep, 12, false},    {WheelStep, 5, false},
    {KeyStep, 8, false},    {SizeStep, 8, false},    {FocusStep, 7, false},     {StateStep, 8, false},
    {FontStep, 2, false},   {PaintStep, 4, false},   {DeviceBandStep, 4, true}, {UnknownStep, 5, true},
    {ZoomStep, 2, false},   {SchemeStep, 1, false},  {OperationStep, heaviest, false},
};
// clang-format on

}  // namespace

Step CommonStep(Random& random, RecordingParent& parent, Subject& subject, const std::vector<Target>& windows) {
    const auto index = static_cast<std::size_t>(random.Below(static_cast<int>(windows.size())));
    wchar_t name[64] = L"";
    GetClassNameW(windows[index].window, name, 64);
    const Aim aim{random, parent, subject, windows, windows[index], Narrow(name) + " #" + std::to_string(index)};
    for (;;) {
        const Sort& sort = sorts[random.Below(static_cast<int>(std::size(sorts)))];
        if (random.Below(heaviest) < sort.weight && (aim.target.ours || !sort.ours)) return sort.make(aim);
    }
}

Step OwnStep(Random& random, RecordingParent& parent, Subject& subject) {
    const End end = random.Of({End::Window, End::Windows, End::Object});
    const int number = random.Between(0, 31);
    // For the next callback, and for none after it.
    const auto plan = [&subject, number](std::function<void()> action) {
        subject.told = [&subject, action = std::move(action)](const std::string&) {
            const auto once = action;
            subject.told = nullptr;
            once();
        };
        if (subject.Provoke(number)) subject.told = nullptr;
    };
    switch (random.Below(12)) {
    case 0: return {"an end", [=, &subject] { subject.End(end); }};
    case 1: return {"creating again", [&] { subject.Create(parent); }};
    case 2: return {"a copy", [&] { subject.Copy(); }};
    case 3: return {"an end in a callback", [=, &subject] { plan([=, &subject] { subject.End(end); }); }};
    case 4: return {"a change in a callback", [=, &subject] { plan([=, &subject] { subject.Change(number); }); }};
    default: break;
    }
    const Operation& operation = random.Of(subject.Operations());
    return {operation.name, [&] { operation.run(random); }};
}

}  // namespace kx::test::storm
