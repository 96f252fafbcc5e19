// The soak: an endurance run of the whole host. A timer takes random steps, as a user, the system and the devices
// would: mouse and keys, pages, zooms, languages and colours, messages, devices that move, stop and fail.
//
// The run is made of rounds of 150 steps, and the seed of a round decides all of them. After each the host comes home:
// the first page, zoom 1, English, the system's colours, an empty log. What is there then is compared with what was
// there before the round. Caches grow once and leaks every time, so a round after which more was there is taken again,
// and has failed when more was there every time.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include <diagnostics/counts.h>
#include <diagnostics/random.h>
#include <kxdevices/kx_simdevices.h>

class MainWindow;

class Soak {
public:
    // Rounds from `seed` on, until `seconds` are over; one at least.
    Soak(MainWindow& window, int seconds, std::uint64_t seed) : m_window(window), m_seconds(seconds), m_seed(seed) {}
    // One soak a process. It closes the window in the end. The log says how it went.
    void Start();
    bool Failed() const { return m_failed; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Tick();

    // A step of the round; its numbers depend on seed and step alone.
    void TakeStep();
    std::wstring UseMouse(kx::Random& random);
    std::wstring UseKeys(kx::Random& random);
    std::wstring UseMenu(kx::Random& random);
    std::wstring UseDevice(kx::Random& random);
    std::wstring TellWindows(kx::Random& random);

    // A step on the way home; true when there.
    bool ComeHome();
    bool LeaveModals();
    bool DevicesRest();
    void Judge();

    // The invariant that does not hold any more; empty when all do.
    std::wstring Broken() const;
    void Fail(const std::wstring& what);
    void End();
    void Command(int command) const;
    // Brings an entry of the menu into a state.
    void Switch(int command, bool on) const;
    std::vector<CKxSimDevice*> Devices() const;

    MainWindow& m_window;
    int m_seconds;
    std::uint64_t m_seed;
    ULONGLONG m_end = 0;
    int m_step = 0;
    int m_settled = 0;  // steps at home
    std::wstring m_obstacle;
    int m_home = 0;  // steps on the way home
    int m_rounds = 0;
    int m_grown = 0;  // how often the same round has left something behind
    bool m_warm = false;
    bool m_failed = false;
    std::wstring m_escaped;  // what the library logged of an exception
    kx::Counts m_before;
};
