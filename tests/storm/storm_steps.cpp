// The steps that every control must bear.
#include "storm.h"

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <sstream>

#include <commctrl.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace kx::test::storm {

namespace {

using Bytes = std::array<std::byte, 512>;

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
};

Step Sent(const Aim& aim, const char* kind, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = aim.target.window;
    return {kind, Join(aim.name, std::hex, message, wParam, lParam),
            [=] { SendMessageW(window, message, wParam, lParam); }};
}

// With the DC of a bitmap that is too small for most windows.
Step WithDc(const Aim& aim, const char* kind, const std::function<void(HDC)>& run) {
    return {kind, aim.name, [=] {
                const HDC screen = GetDC(nullptr);
                const HDC dc = CreateCompatibleDC(screen);
                const HBITMAP bitmap = CreateCompatibleBitmap(screen, 90, 60);
                ReleaseDC(nullptr, screen);
                const HGDIOBJ old = SelectObject(dc, bitmap);
                run(dc);
                SelectObject(dc, old);
                DeleteObject(bitmap);
                DeleteDC(dc);
            }};
}

Step NotifyStep(const Aim& aim) {
    const HWND window = aim.target.window, from = aim.AnyWindow();
    const int id = aim.random.Between(-1, 9), code = -aim.random.Between(0, 900);
    return {"WM_NOTIFY", Join(aim.name, "id", id, "code", code), [=] {
                alignas(16) Bytes bytes{};  // whatever the code makes of it, there is room for it
                auto& header = *reinterpret_cast<NMHDR*>(bytes.data());
                header = {from, static_cast<UINT_PTR>(id), static_cast<UINT>(code)};
                SendMessageW(window, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
            }};
}

Step DrawItemStep(const Aim& aim) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(aim.random.Between(0, 9));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = static_cast<UINT>(aim.random.Below(64));
    item.hwndItem = aim.AnyWindow();
    item.rcItem = {aim.random.Length(), aim.random.Length(), aim.random.Length(), aim.random.Length()};
    return WithDc(aim, "WM_DRAWITEM", [item, window = aim.target.window](HDC dc) {
        DRAWITEMSTRUCT passed = item;
        passed.hDC = dc;
        SendMessageW(window, WM_DRAWITEM, passed.CtlID, reinterpret_cast<LPARAM>(&passed));
    });
}

Step DcStep(const Aim& aim) {
    struct Kind {
        const char* name;
        UINT message;
    };
    const Kind kind = aim.random.Of<Kind>({{"WM_CTLCOLORSTATIC", WM_CTLCOLORSTATIC},
                                           {"WM_CTLCOLORSTATIC", WM_CTLCOLORSTATIC},
                                           {"WM_CTLCOLOREDIT", WM_CTLCOLOREDIT},
                                           {"WM_CTLCOLORBTN", WM_CTLCOLORBTN},
                                           {"WM_ERASEBKGND", WM_ERASEBKGND},
                                           {"WM_PRINTCLIENT", WM_PRINTCLIENT},
                                           {"WM_PAINT with a DC", WM_PAINT}});
    LPARAM lParam = 0;
    if (kind.message == WM_PRINTCLIENT) lParam = PRF_CLIENT;
    if (kind.message >= WM_CTLCOLORMSGBOX && kind.message <= WM_CTLCOLORSTATIC) {
        lParam = reinterpret_cast<LPARAM>(aim.AnyWindow());
    }
    return WithDc(aim, kind.name, [=, window = aim.target.window](HDC dc) {
        SendMessageW(window, kind.message, reinterpret_cast<WPARAM>(dc), lParam);
    });
}

Step TextStep(const Aim& aim) {
    const std::wstring text =
        aim.random.Of<std::wstring>({L"", L"a", L"12.5", L"-1e999", L"a & b\r\n\tc", std::wstring(5000, L'W')});
    const HWND window = aim.target.window;
    return {"WM_SETTEXT", Join(aim.name, text.size(), "characters"), [=] {
                SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
                wchar_t back[40];
                SendMessageW(window, WM_GETTEXT, 40, reinterpret_cast<LPARAM>(back));
            }};
}

Step CommandStep(const Aim& aim) {
    const LPARAM from = aim.random.OneIn(3) ? 0 : reinterpret_cast<LPARAM>(aim.AnyWindow());
    const int code = aim.random.Of<int>({0, 1, 2, 3, 4, 5, 7, EN_KILLFOCUS, EN_CHANGE, EN_UPDATE, 0xFFFF});
    return Sent(aim, "WM_COMMAND", WM_COMMAND, MAKEWPARAM(aim.random.Between(0, 9), code), from);
}

Step ScrollStep(const Aim& aim) {
    const UINT message = aim.random.OneIn(2) ? WM_HSCROLL : WM_VSCROLL;
    const LPARAM from = aim.random.OneIn(3) ? 0 : reinterpret_cast<LPARAM>(aim.AnyWindow());
    return Sent(aim, "WM_HSCROLL or WM_VSCROLL", message, MAKEWPARAM(aim.random.Between(0, 9), aim.random.AnyInt()),
                from);
}

// Not the release of the right button over the platform's controls: an edit opens its menu then, and waits.
Step WheelStep(const Aim& aim) {
    const int delta = aim.random.Of({120, -120, 1, -1, 0, 32767, -32768, 600});
    const LPARAM point = MAKELPARAM(aim.random.Length(), aim.random.Length());
    const UINT message = aim.target.ours && aim.random.OneIn(2) ? 0x83EDu : UINT{WM_MOUSEWHEEL};
    return Sent(aim, "a turn of the wheel", message, MAKEWPARAM(aim.random.Below(32), delta), point);
}

Step MouseStep(const Aim& aim) {
    const UINT message = aim.random.Of<UINT>({WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP,
                                              WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_MBUTTONUP,
                                              WM_MOUSEACTIVATE, WM_NCHITTEST, WM_MOUSELEAVE, WM_CAPTURECHANGED});
    switch (message) {
    case WM_MOUSELEAVE: return Sent(aim, "WM_MOUSELEAVE", message, 0, 0);
    case WM_CAPTURECHANGED:
        return Sent(aim, "WM_CAPTURECHANGED", message, 0, reinterpret_cast<LPARAM>(aim.AnyWindow()));
    case WM_MOUSEACTIVATE:
        return Sent(aim, "WM_MOUSEACTIVATE", message, reinterpret_cast<WPARAM>(aim.parent.Window()),
                    MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    default: break;
    }
    const LPARAM point = MAKELPARAM(aim.random.Length(), aim.random.Length());
    // In some of the platform's controls a press runs a loop of its own until the button comes up; with the right one,
    // that opens a menu, whose loop would wait for a user.
    if (!aim.target.ours && message == WM_RBUTTONDOWN) return WheelStep(aim);
    Step step = Sent(aim, "a mouse message", message, static_cast<WPARAM>(aim.random.Below(32)), point);
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
    if (aim.random.OneIn(2)) {
        const int character = aim.random.Of<int>({'0', '9', '-', '.', ',', 'x', 8, 9, 13, 27, 0x3042, 0xD800, 0});
        return Sent(aim, "WM_CHAR", WM_CHAR, static_cast<WPARAM>(character), 1);
    }
    const int key = aim.random.Of({VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_TAB,
                                   VK_RETURN, VK_ESCAPE, VK_SPACE, VK_DELETE, VK_BACK, VK_F2, VK_F4, VK_F5, int{'A'}});
    return Sent(aim, "WM_KEYDOWN or WM_KEYUP", aim.random.OneIn(3) ? WM_KEYUP : WM_KEYDOWN, static_cast<WPARAM>(key),
                1);
}

Step SizeStep(const Aim& aim) {
    const HWND window = aim.target.window;
    if (aim.random.OneIn(4)) {
        return Sent(aim, "WM_SIZE", WM_SIZE, static_cast<WPARAM>(aim.random.Below(5)),
                    MAKELPARAM(aim.random.Length(), aim.random.Length()));
    }
    const int x = aim.random.Length(), y = aim.random.Length(), cx = aim.random.Length(), cy = aim.random.Length();
    const UINT flags = aim.random.Of<UINT>({0, SWP_NOMOVE, SWP_NOSIZE, SWP_NOZORDER, SWP_FRAMECHANGED, SWP_NOREDRAW});
    return {"SetWindowPos", Join(aim.name, x, y, cx, cy, std::hex, flags),
            [=] { SetWindowPos(window, nullptr, x, y, cx, cy, flags | SWP_NOACTIVATE); }};
}

Step FocusStep(const Aim& aim) {
    const HWND window = aim.random.OneIn(4) ? aim.parent.Window() : aim.target.window;
    return {"SetFocus", aim.name, [=] { SetFocus(window); }};
}

Step CaptureStep(const Aim& aim) {
    if (aim.random.OneIn(2)) return {"ReleaseCapture", "", [] { ReleaseCapture(); }};
    return {"SetCapture", aim.name, [window = aim.target.window] { SetCapture(window); }};
}

Step StateStep(const Aim& aim) {
    const UINT message =
        aim.random.Of<UINT>({WM_ENABLE, WM_SETREDRAW, WM_SHOWWINDOW, WM_CANCELMODE, WM_GETDLGCODE, WM_SETCURSOR,
                             WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE, WM_TIMER, WM_NCPAINT, WM_GETFONT,
                             WM_UPDATEUISTATE, WM_QUERYUISTATE, WM_DISPLAYCHANGE, WM_NCCALCSIZE, WM_NULL});
    WPARAM wParam = static_cast<WPARAM>(aim.random.Below(3));
    LPARAM lParam = 0;
    RECT rect{0, 0, 50, 40};
    if (message == WM_NCPAINT) wParam = 1;  // the whole window; any other number would be a region
    if (message == WM_SETCURSOR) {
        wParam = reinterpret_cast<WPARAM>(aim.target.window);
        lParam = MAKELPARAM(HTCLIENT, WM_MOUSEMOVE);
    }
    if (message == WM_SETTINGCHANGE) lParam = reinterpret_cast<LPARAM>(L"intl");
    if (message != WM_NCCALCSIZE) return Sent(aim, "a message of state", message, wParam, lParam);
    return {"WM_NCCALCSIZE", aim.name, [rect, window = aim.target.window]() mutable {
                SendMessageW(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
            }};
}

Step FontStep(const Aim& aim) {
    const HFONT font = aim.random.Of<HFONT>({KX_GetDefaultGuiFont(), KX_GetDefaultGuiFontBold(), HFONT{}});
    return Sent(aim, "WM_SETFONT", WM_SETFONT, reinterpret_cast<WPARAM>(font), aim.random.Below(2));
}

Step PaintStep(const Aim& aim) {
    const HWND window = aim.target.window;
    return {"painting", aim.name, [=] {
                RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
            }};
}

Step DeviceBandStep(const Aim& aim) {
    const HWND window = aim.target.window;
    const int device = aim.random.Of({0, 1, 2, 3, 63, -1});
    const std::uint64_t bits = aim.random.Next();
    const bool flags = !aim.random.OneIn(4);
    return {"a change of a device band", Join(aim.name, "device", device, "flags", std::hex, flags ? bits : 0), [=] {
                bool all[64];
                for (int i = 0; i < 64; ++i)
                    all[i] = (bits >> i & 1) != 0;
                SendMessageW(window, 0x0500, static_cast<WPARAM>(device), flags ? reinterpret_cast<LPARAM>(all) : 0);
            }};
}

Step UnknownStep(const Aim& aim) {
    const int message =
        aim.random.OneIn(2) ? aim.random.Between(WM_USER + 3, 0x7FFF) : aim.random.Between(0x8000, 0xBFFF);
    const bool known = message == 0x0500 || message == 0x83ED || message == 0x83FA;
    return Sent(aim, "an unknown message", known ? UINT{WM_NULL} : static_cast<UINT>(message),
                static_cast<WPARAM>(aim.random.Between(-1, 9)), aim.random.Between(-1, 9));
}

Step ZoomStep(const Aim& aim) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const double zoom = aim.random.Of({1.0, 1.0, 1.0, 1.25, 1.5, 2.0, 0.5, 0.25, 8.0, 0.0, -1.0, 1e300, nan, infinite});
    return {"SetGuiZoom", Join(zoom), [=] { CKxGUILayoutManager::SetGuiZoom(zoom); }};
}

Step SchemeStep(const Aim& aim) {
    const int scheme = aim.random.Of({0, 0, 1, 2, 3, 4, -1});
    return {"KX_SetColorScheme", Join(scheme), [=] { KX_SetColorScheme(static_cast<EKxColorScheme>(scheme)); }};
}

Step OperationStep(const Aim& aim) {
    CKxDevUI_Base* control = aim.subject.Control();
    if (!control) return PaintStep(aim);
    const int what = aim.random.Below(14), a = aim.random.Length(), b = aim.random.Length();
    return {"an operation of the base", Join("number", what, "with", a, b), [=] {
                SIZE size{};
                RECT rect{};
                switch (what) {
                case 0: control->SetEnabled(a % 2 == 0); break;
                case 1: control->SetVisible(b % 4 != 0); break;
                case 2: control->SetTitle(a % 3 == 0 ? nullptr : L"title"); break;
                case 3: control->MoveWindow(a, b); break;
                case 4: control->MoveWindowRelative(a, b); break;
                case 5: control->ResizeWindow(a, b); break;
                case 6: control->ResizeWindowRelative(a, b); break;
                case 7: control->SetFocus(); break;
                case 8: control->SetRedraw(a % 2 == 0); break;
                case 9: control->RefreshWindow(); break;
                case 10: control->HandleMouseWheel(MAKEWPARAM(0, a), b); break;
                case 11: control->GetWindowRectangle(&rect), control->GetWindowSize(&size); break;
                case 12: control->GetWindowPosition(nullptr, nullptr), control->GetWindowRectangle(nullptr); break;
                default: control->SetId(control->GetId()), control->GetWidth(), control->GetHeight(); break;
                }
            }};
}

using Make = Step (*)(const Aim&);
struct Sort {
    Make make;
    int weight;
    bool ours;  // only for controls of the library
};
// clang-format off
constexpr Sort sorts[] = {
    {NotifyStep, 5, true},   {DrawItemStep, 5, true}, {DcStep, 8, true},          {TextStep, 4, false},
    {CommandStep, 8, true},  {ScrollStep, 5, true},   {MouseStep, 12, false},     {WheelStep, 5, false},
    {KeyStep, 8, false},     {SizeStep, 8, false},    {FocusStep, 5, false},      {CaptureStep, 2, false},
    {StateStep, 8, false},   {FontStep, 2, false},    {PaintStep, 4, false},      {DeviceBandStep, 4, true},
    {UnknownStep, 5, true},  {ZoomStep, 2, false},    {SchemeStep, 1, false},     {OperationStep, 14, false},
};
// clang-format on

Make Choose(Random& random, bool ours) {
    int total = 0;
    for (const Sort& sort : sorts)
        if (ours || !sort.ours) total += sort.weight;
    int left = random.Below(total);
    for (const Sort& sort : sorts) {
        if (!ours && sort.ours) continue;
        if (left < sort.weight) return sort.make;
        left -= sort.weight;
    }
    return PaintStep;
}

}  // namespace

Step CommonStep(Random& random, RecordingParent& parent, Subject& subject, const std::vector<Target>& windows) {
    const auto index = static_cast<std::size_t>(random.Below(static_cast<int>(windows.size())));
    wchar_t name[64] = L"";
    GetClassNameW(windows[index].window, name, 64);
    const Aim aim{random, parent, subject, windows, windows[index], Narrow(name) + " #" + std::to_string(index)};
    return Choose(random, aim.target.ours)(aim);
}

}  // namespace kx::test::storm
