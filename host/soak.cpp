#include "soak.h"

#include <array>
#include <vector>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_log.h>

#include "event_log.h"
#include "input.h"
#include "main_window.h"
#include "pages/bench_page.h"
#include "requests.h"
#include "resources/resource.h"

namespace {

// The timer procedure has no parameter for it.
Soak* s_soak = nullptr;
constexpr UINT kTickMilliseconds = 10;
constexpr int kStepsPerRound = 150;
constexpr unsigned kDeviceSpeed = 20;  // milliseconds a position: much happens in a round
constexpr int kCountEvery = 25;        // steps
constexpr int kMostGdiObjects = 3000;  // more than that over the beginning of a round
// A leak grows with every round. Caches (pictures of styles, brushes, images) go on filling by what a round happens to
// show for the first time, as buttons of a device in a state that it is seldom caught in.
constexpr int kTimesGrown = 5;
// Blocks come and go with texts of other lengths.
constexpr long long kHeapSlack = 20;
constexpr int kMostHomeTicks = 1000, kSettleTicks = 20;

std::vector<HWND> VisibleChildren(HWND root) {
    std::vector<HWND> children;
    EnumChildWindows(
        root,
        [](HWND child, LPARAM param) {
            if (IsWindowVisible(child)) reinterpret_cast<std::vector<HWND>*>(param)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
    return children;
}

// On the part of the window that the screen shows.
bool PointIn(HWND window, kx::Random& random, POINT& point) {
    RECT own{}, shown{};
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (!GetWindowRect(window, &own) || !IntersectRect(&shown, &own, &screen)) return false;
    point = {random.Between(shown.left, shown.right - 1), random.Between(shown.top, shown.bottom - 1)};
    // Where its parent clips it away, the frame of the whole may stand there, with the box that closes it.
    const HWND hit = WindowFromPoint(point);
    return hit != GetAncestor(hit, GA_ROOT);
}

// What asks for a file goes out of the host: a random key could write one.
void LockFileDialogs(HWND window) {
    for (const HWND child : VisibleChildren(window))
        if (GetDlgCtrlID(child) == IDC_LOG_SAVE) EnableWindow(child, FALSE);
}

}  // namespace

// ---- Running -------------------------------------------------------------------------------------------------------

void Soak::Start() {
    s_soak = this;
    m_end = GetTickCount64() + static_cast<ULONGLONG>(m_seconds) * 1000;
    m_step = kStepsPerRound;  // home first, to count
    for (CKxSimDevice* device : Devices())
        device->SetSpeed(kDeviceSpeed);
    CKxLogFile::SetSink(
        [](const wchar_t* record, void* self) {
            Log().Add(L"Library log", L"%ls", record);
            const std::wstring text = record;
            if (text.find(L"left a handler") != std::wstring::npos) static_cast<Soak*>(self)->m_escaped = text;
        },
        this);
    SetForegroundWindow(m_window.Handle());
    SetTimer(nullptr, 0, kTickMilliseconds, OnTimer);
}

void CALLBACK Soak::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    // A step that runs a loop of its own, as a menu does, comes by here again.
    if (s_soak->m_failed || !IsWindow(s_soak->m_window.Handle())) {
        KillTimer(nullptr, timer);
        if (!s_soak->m_failed) s_soak->Fail(L"the window is gone");
        return;
    }
    s_soak->Tick();
}

void Soak::Tick() {
    if (m_step < kStepsPerRound) {
        TakeStep();
    } else if (ComeHome()) {
        Judge();
    }
}

void Soak::Fail(const std::wstring& what) {
    m_failed = true;
    Log().Add(L"Soak", L"FAILED in the round of seed %u, step %d: %ls", static_cast<unsigned>(m_seed), m_step,
              what.c_str());
    End();
}

void Soak::End() {
    CKxLogFile::SetSink(nullptr, nullptr);
    DestroyWindow(m_window.Handle());
}

void Soak::Command(int command) const { SendMessageW(m_window.Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0); }

void Soak::Switch(int command, bool on) const {
    const UINT state = GetMenuState(GetMenu(m_window.Handle()), static_cast<UINT>(command), MF_BYCOMMAND);
    if (((state & MF_CHECKED) != 0) != on) Command(command);
}

std::vector<CKxSimDevice*> Soak::Devices() const {
    std::vector<CKxSimDevice*> devices;
    for (CKxSimMicroscope* each : m_window.Microscopes()) {
        for (CKxSimDevice* device : each->Devices())
            devices.push_back(device);
    }
    return devices;
}

std::wstring Soak::Broken() const {
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    if (!(zoom >= CKxGUILayoutManager::MinimumZoom && zoom <= CKxGUILayoutManager::MaximumZoom))
        return L"the zoom is out of range";
    if (const Page& page = m_window.CurrentPage(); !IsWindow(page))
        return std::wstring(L"the window is gone of the page ") + page.Name();
    if (!m_escaped.empty()) return m_escaped;
    if (m_step % kCountEvery == 0 && kx::Counts::Gdi().gdi > m_before.gdi + kMostGdiObjects)
        return L"there are " + std::to_wstring(kx::Counts::Gdi().gdi) + L" GDI objects";
    return {};
}

// ---- A step --------------------------------------------------------------------------------------------------------

void Soak::TakeStep() {
    kx::Random random(m_seed * 1'000'003u + static_cast<std::uint64_t>(m_step));
    ++m_step;
    LockFileDialogs(m_window.Handle());
    const int kind = random.Below(20);
    // Before it is taken as well, for one that does not come to its end.
    Log().Write(L"Soak: begins seed " + std::to_wstring(m_seed) + L" step " + std::to_wstring(m_step) + L" kind " +
                std::to_wstring(kind));
    const std::wstring done = kind < 8    ? UseMouse(random)
                              : kind < 12 ? UseKeys(random)
                              : kind < 14 ? UseMenu(random)
                              : kind < 17 ? UseDevice(random)
                                          : TellWindows(random);
    Log().Write(L"Soak: seed " + std::to_wstring(m_seed) + L" step " + std::to_wstring(m_step) + L" " + done);
    if (const std::wstring broken = Broken(); !broken.empty()) Fail(broken);
}

std::wstring Soak::UseMouse(kx::Random& random) {
    const HWND active = GetActiveWindow();
    const std::vector<HWND> targets = VisibleChildren(active ? active : m_window.Handle());
    POINT from{}, to{};
    if (targets.empty() || !PointIn(random.Of(targets), random, from) || !PointIn(random.Of(targets), random, to))
        return L"mouse: nothing there";
    const int kind = random.Below(8);
    if (kind == 0) {
        SendMouse(from, MOUSEEVENTF_RIGHTDOWN);
        SendMouse(from, MOUSEEVENTF_RIGHTUP);
    } else if (kind < 3) {
        SendMouse(from, MOUSEEVENTF_WHEEL, random.Of({-240, -120, 120, 240}));
    } else {
        SendMouse(from, MOUSEEVENTF_LEFTDOWN);
        if (kind < 5) SendMouse(to, 0);
        SendMouse(kind < 5 ? to : from, MOUSEEVENTF_LEFTUP);
    }
    return L"mouse " + std::to_wstring(kind) + L" at " + std::to_wstring(from.x) + L" " + std::to_wstring(from.y);
}

std::wstring Soak::UseKeys(kx::Random& random) {
    const WORD key = random.Of<WORD>({VK_TAB, VK_TAB, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_SPACE, VK_RETURN, VK_ESCAPE,
                                      VK_HOME, VK_END, VK_PRIOR, VK_NEXT, VK_BACK, VK_DELETE, '0', '5', '9'});
    const bool shift = random.OneIn(4);
    if (shift) SendKey(VK_SHIFT, 0, 0);
    SendKey(key, 0, 0);
    SendKey(key, 0, KEYEVENTF_KEYUP);
    if (shift) SendKey(VK_SHIFT, 0, KEYEVENTF_KEYUP);
    return L"key " + std::to_wstring(key);
}

std::wstring Soak::UseMenu(kx::Random& random) {
    int command = MainWindow::cmdPage + random.Below(static_cast<int>(m_window.Pages().size()));
    switch (random.Below(17)) {
    case 0:
    case 1: command = MainWindow::cmdZoom + random.Of({4, 5, 6, 8}); break;
    case 2:
    case 3: command = MainWindow::cmdScheme + random.Below(4); break;
    case 4: command = MainWindow::cmdLanguage + random.Of({LANG_ENGLISH, LANG_GERMAN, LANG_JAPANESE}); break;
    case 5:
    case 6: command = MainWindow::cmdEnabled; break;
    case 7: command = MainWindow::cmdSeries; break;
    case 8:
    case 9: command = MainWindow::cmdSimulation + random.Below(MainWindow::simStop + 1); break;
    case 11: command = MainWindow::cmdUndo; break;
    case 12: command = MainWindow::cmdRedo; break;
    // The whole microscope is what a user has open most.
    case 10: command = m_window.CommandOf<BenchPage>(); break;
    default: break;
    }
    // No user reaches the menu while a dialog is open.
    if (IsWindowEnabled(m_window.Handle()))
        PostMessageW(m_window.Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
    return L"command " + std::to_wstring(command);
}

std::wstring Soak::UseDevice(kx::Random& random) {
    const std::vector<CKxSimDevice*> devices = Devices();
    const int index = random.Below(static_cast<int>(devices.size())), what = random.Below(8);
    CKxSimDevice& device = *devices[static_cast<std::size_t>(index)];
    switch (what) {
    case 0: device.Stop(); break;
    case 1: device.SetFails(true); break;
    case 2: device.SetFails(false); break;
    default: device.TryPlace(random.Between(-1, 9)); break;
    }
    return L"device " + std::to_wstring(index) + L" " + std::to_wstring(what);
}

std::wstring Soak::TellWindows(kx::Random& random) {
    const HWND main = m_window.Handle();
    const std::vector<HWND> all = VisibleChildren(main);
    const HWND window = all.empty() || random.OneIn(3) ? main : random.Of(all);
    const int what = random.Below(9);
    switch (what) {
    case 0: SendMessageW(window, WM_SETTINGCHANGE, 0, 0); break;
    case 1: SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0); break;
    case 2: SendMessageW(window, WM_THEMECHANGED, 0, 0); break;
    case 3: SendMessageW(window, WM_CANCELMODE, 0, 0); break;
    case 4: {
        // Numbers of devices, some of which nobody has. Only the panels know the message.
        const int page = random.Below(static_cast<int>(m_window.Pages().size()));
        for (CKxDevUI_Container* panel : m_window.Pages()[static_cast<std::size_t>(page)]->Panels())
            SendMessageW(*panel, kx::ui::WM_KX_UPDATE_DEVICE_BAND, static_cast<WPARAM>(random.Below(20)), 0);
        break;
    }
    case 5: SendMessageW(window, WM_DISPLAYCHANGE, 32, MAKELPARAM(1280, 1024)); break;
    case 6:
        SetWindowPos(main, nullptr, 0, 0, random.Between(200, 900), random.Between(200, 900),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        break;
    default:
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        break;
    }
    return L"message " + std::to_wstring(what);
}

// ---- Home ----------------------------------------------------------------------------------------------------------

// Menus and dialogs run loops of their own: one is ended, and the next tick sees whether there is another.
bool Soak::LeaveModals() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    if (info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE)) {
        m_obstacle = L"a menu stays open";
        EndMenu();
        return false;
    }
    if (info.hwndCapture) {
        m_obstacle = L"a window keeps the mouse";
        ReleaseCapture();
        return false;
    }
    if (IsWindowEnabled(m_window.Handle())) return true;
    // A box may have one answer alone, or none that means to cancel.
    constexpr std::array answers{IDCANCEL, IDOK, IDNO};
    m_obstacle = L"a dialog stays open";
    const HWND dialog = GetLastActivePopup(m_window.Handle());
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(answers[static_cast<std::size_t>(m_home) % 3]), 0);
    return false;
}

namespace {

// At the slowest speed that a user may choose it would be on its way for minutes, and beyond a limit nothing stops it.
void Stop(CKxSimZDrive& drive) {
    double at = 0, target = 0;
    if (!drive.GetPosition(at) || !drive.GetTarget(target) || target == at) return;
    drive.SetLowerLimit({});
    drive.SetUpperLimit({});
    drive.MoveTo(at);
}

}  // namespace

bool Soak::DevicesRest() {
    for (CKxSimDevice* device : Devices()) {
        device->SetFails(false);
        const EKxDeviceState state = device->Device().GetDeviceState();
        if (state != eKxDeviceState_Ready) {
            m_obstacle = std::wstring(device->Device().GetKey()) + L" is in state " + std::to_wstring(state);
            if (state != eKxDeviceState_Moving) device->TryPlace(0);
            if (auto* const drive = dynamic_cast<CKxSimZDrive*>(device)) Stop(*drive);
            return false;
        }
    }
    return true;
}

bool Soak::ComeHome() {
    if (++m_home > kMostHomeTicks) {
        Fail(L"there is no way home: " + m_obstacle);
        return false;
    }
    if (m_home == 1) {
        // Some may have set out when all were slow.
        for (CKxSimDevice* device : Devices()) {
            device->SetSlowness(1);
            device->Stop();
        }
    }
    if (!LeaveModals() || !DevicesRest()) {
        m_settled = 0;
        return false;
    }
    if (m_settled == 0) {
        Switch(MainWindow::cmdSimulation + MainWindow::simRefuse, false);
        Switch(MainWindow::cmdSimulation + MainWindow::simDeviceDecides, true);
        Switch(MainWindow::cmdSimulation + MainWindow::simSlow, false);
        Switch(MainWindow::cmdSimulation + MainWindow::simFail, false);
        TheRequests().Clear();
        Command(MainWindow::cmdAutoScheme);
        Command(MainWindow::cmdZoom + 4);
        Switch(MainWindow::cmdEnabled, true);
        Command(MainWindow::cmdPage);
        Command(MainWindow::cmdLanguage + LANG_ENGLISH);
        SetFocus(GetDlgItem(m_window.Handle(), MainWindow::cmdPage));
        SendMouse({1, 1}, 0);
    }
    // What was posted meanwhile is done first.
    return ++m_settled > kSettleTicks;
}

void Soak::Judge() {
    for (const HWND child : VisibleChildren(m_window.Handle())) {
        const int id = GetDlgCtrlID(child);
        if (id == IDC_LOG_CLEAR || (id == IDC_LOG_PAUSE && SendMessageW(child, BM_GETCHECK, 0, 0) == BST_CHECKED))
            SendMessageW(child, BM_CLICK, 0, 0);
    }
    CKxBitmapPool::Clear();
    const kx::Counts now = kx::Counts::Now();
    Log().Write(L"Soak: at home, after seed " + std::to_wstring(m_seed) + L": GDI objects " + std::to_wstring(now.gdi) +
                L", windows " + std::to_wstring(now.windows) + L", heap blocks " + std::to_wstring(now.heapBlocks));
    const bool grew =
        now.gdi > m_before.gdi || now.windows > m_before.windows || now.heapBlocks > m_before.heapBlocks + kHeapSlack;
    m_grown = grew && m_warm ? m_grown + 1 : 0;
    if (m_grown == kTimesGrown) {
        const std::string growth = kx::Growth(m_before, now, 1);
        Fail(L"more is there after each of " + std::to_wstring(kTimesGrown) + L" times:" +
             std::wstring(growth.begin(), growth.end()));
        return;
    }
    if (m_warm) ++m_rounds;
    if (m_warm && m_grown == 0) ++m_seed;
    m_warm = true;
    m_before = now;
    m_step = m_home = m_settled = 0;
    if (GetTickCount64() >= m_end && m_rounds > 0 && m_grown == 0) {
        Log().Add(L"Soak", L"ended well after %d rounds", m_rounds);
        End();
    }
}
