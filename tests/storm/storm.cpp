// The storm's rounds: steps, invariants, what is left behind, and the report of a failure.
#include "storm.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace kx::test::storm {

namespace {

using MakeSubject = std::function<std::unique_ptr<Subject>()>;

constexpr int stepsPerRound = 500;
constexpr int mostGdiObjects = 400;  // more than that over the beginning of a round

int FromEnvironment(const char* name, int otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoi(value) : otherwise;
}

// Where a storm is. A crash is reported from here as well, before the bench's own report.
struct Position {
    const char* subject;
    std::uint64_t seed;
    int step;
    std::string what;
    LPTOP_LEVEL_EXCEPTION_FILTER next;
};
Position* s_position = nullptr;

std::string Text(const Position& at) {
    return std::string(at.subject) + ", seed " + std::to_string(at.seed) + ", step " + std::to_string(at.step) + " (" +
           at.what + ")\n  again: KX_STORM_SEED=" + std::to_string(at.seed) +
           " KX_STORM_STEPS=" + std::to_string(std::max(at.step, 0) + 1);
}

LONG WINAPI TellPosition(EXCEPTION_POINTERS* exception) {
    std::printf("CRASH in the storm: %s\n", Text(*s_position).c_str());
    HMODULE module = nullptr;
    const auto* address = static_cast<const wchar_t*>(exception->ExceptionRecord->ExceptionAddress);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, address,
                       &module);
    wchar_t name[MAX_PATH] = L"";
    GetModuleFileNameW(module, name, MAX_PATH);
    std::printf("  in %ls, loaded at %p\n", name, static_cast<void*>(module));
    return s_position->next ? s_position->next(exception) : EXCEPTION_CONTINUE_SEARCH;
}

class CrashReport {
public:
    explicit CrashReport(Position& position) {
        s_position = &position;
        position.next = SetUnhandledExceptionFilter(TellPosition);
    }
    ~CrashReport() {
        SetUnhandledExceptionFilter(s_position->next);
        s_position = nullptr;
    }
    CrashReport(const CrashReport&) = delete;
    CrashReport& operator=(const CrashReport&) = delete;
};

// Slow: with KX_STORM_HEAP set, to find the step that damages the heap. WINEDEBUG=warn+heap makes the check stricter.
bool HeapsAreSound() {
    static const bool wanted = FromEnvironment("KX_STORM_HEAP", 0) != 0;
    if (!wanted) return true;
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    return std::all_of(heaps, heaps + count, [](HANDLE heap) { return HeapValidate(heap, 0, nullptr) != FALSE; });
}

// What all subjects have in common.
std::string CheckAlways(Subject& subject, HWND parent) {
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    if (!(zoom >= CKxGUILayoutManager::MinimumZoom && zoom <= CKxGUILayoutManager::MaximumZoom))
        return "the zoom is out of range";
    if (!IsWindow(parent)) return "the parent's window is gone";
    if (!HeapsAreSound()) return "the heap is damaged";
    const CKxDevUI_Base* control = subject.Control();
    const HWND window = control ? HWND{*control} : nullptr;
    if (window && !IsWindow(window)) return "the control holds the handle of a window that is gone";
    if (window && GetParent(window) != parent) return "the control's window has another parent";
    return subject.Check();
}

// Names every step before it is taken, for one that does not come to its end.
const bool s_traced = FromEnvironment("KX_STORM_TRACE", 0) != 0;

// One round: create, step by step, destroy.
class Round {
public:
    Round(Position& position, const MakeSubject& make, int steps)
        : position_(position), subject_(make()), random_(position.seed), steps_(steps), gdiAtFirst_(Counts::Gdi().gdi) {
    }

    // What went wrong; empty when nothing did.
    std::string Run() {
        subject_->Create(parent_);
        for (int i = 0; i < steps_; ++i) {
            position_.step = i;
            if (std::string wrong = OneStep(); !wrong.empty()) return wrong;
        }
        position_.step = steps_;
        return End();
    }

    // The kind of step after which most GDI objects were there that had not been before.
    std::string MostGrowth() const {
        const auto most = std::max_element(growth_.begin(), growth_.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        if (most == growth_.end() || most->second <= 0) return "no step alone grew";
        return "most (" + std::to_string(most->second) + ") came with " + most->first;
    }

private:
    std::string OneStep() {
        position_.what = "creation";
        auto windows = subject_->Windows();
        if (windows.empty()) {
            subject_->Create(parent_);
            windows = subject_->Windows();
        }
        if (windows.empty()) return "creation failed";
        const Step step =
            random_.OneIn(6) ? subject_->Operate(random_) : CommonStep(random_, parent_, *subject_, windows);
        position_.what = step.kind + ": " + step.details;
        if (s_traced) std::printf("%d %s\n", position_.step, position_.what.c_str());
        step.run();
        if (random_.OneIn(4)) Pump();
        const int gdi = Counts::Gdi().gdi;
        growth_[step.kind] += gdi - std::exchange(gdi_, gdi);
        parent_.Record().Clear();
        if (gdi - gdiAtFirst_ > mostGdiObjects) {
            return std::to_string(gdi - gdiAtFirst_) + " more GDI objects than at first; " + MostGrowth();
        }
        return CheckAlways(*subject_, parent_.Window());
    }

    std::string End() {
        position_.what = "the end";
        Pump();
        parent_.Record().Clear();
        subject_->Destroy();
        const auto& told = parent_.Record().Entries();
        if (!told.empty()) return "the parent was told while the control was being destroyed: " + told.front().text;
        if (GetWindow(parent_.Window(), GW_CHILD)) return "a window is left in the parent";
        return subject_->Check();
    }

    Position& position_;
    RecordingParent parent_;
    std::unique_ptr<Subject> subject_;
    Random random_;
    int steps_;
    int gdiAtFirst_;
    int gdi_;
    std::map<std::string, int> growth_;
};

struct Outcome {
    std::string wrong;
    std::string grown;
};

Outcome RunRound(Position& position, const MakeSubject& make, int steps) {
    Outcome outcome;
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(1.0);
    Pump();
    const Counts before = Counts::Now();
    std::string most;
    {
        Round round(position, make, steps);
        outcome.wrong = round.Run();
        most = round.MostGrowth();
    }
    Pump();
    const Counts after = Counts::Now();
    if (after.gdi > before.gdi) {
        outcome.grown = std::to_string(after.gdi - before.gdi) + " GDI objects are left; " + most;
    } else if (after.windows > before.windows) {
        outcome.grown = std::to_string(after.windows - before.windows) + " windows are left";
    }
    return outcome;
}

// Fonts, brushes and DCs are cached, so a round that has left something behind is run again: a cache grows once, a leak
// grows every time.
std::string RunRoundChecked(Position& position, const MakeSubject& make, int steps) {
    Outcome outcome;
    for (int attempt = 0; attempt < 3; ++attempt) {
        outcome = RunRound(position, make, steps);
        if (!outcome.wrong.empty()) return outcome.wrong;
        if (outcome.grown.empty()) return {};
    }
    return outcome.grown;
}

}  // namespace

bool PaintsItsBackground(HWND window, COLORREF background) {
    constexpr int size = 48;
    constexpr COLORREF unpainted = RGB(255, 0, 254);
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, size);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ old = SelectObject(dc, bitmap);
    const RECT all{0, 0, size, size};
    SetBkColor(dc, unpainted);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
    SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    RECT client{};
    GetClientRect(window, &client);
    bool all_painted = true;
    for (int y = 0; y < std::min<int>(size, client.bottom); y += 5) {
        for (int x = 0; x < std::min<int>(size, client.right); x += 5) {
            const bool covered = ChildWindowFromPointEx(window, {x, y}, CWP_SKIPINVISIBLE) != window;
            if (!covered && GetPixel(dc, x, y) != background) all_painted = false;
        }
    }
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return all_painted;
}

void Rage(const char* name, const MakeSubject& make) {
    const int seed = FromEnvironment("KX_STORM_SEED", 1);
    const int steps = FromEnvironment("KX_STORM_STEPS", 500);
    ASSERT_GT(steps, 0) << "KX_STORM_STEPS";
    Position position{name, 0, 0, "", nullptr};
    const CrashReport report(position);
    for (int done = 0, round = 0; done < steps; done += stepsPerRound, ++round) {
        position.seed = static_cast<std::uint64_t>(seed + round);
        const std::string wrong = RunRoundChecked(position, make, std::min(stepsPerRound, steps - done));
        if (!wrong.empty()) FAIL() << wrong << "\n  " << Text(position);
    }
    std::printf("%s: %d steps from seed %d on\n", name, steps, seed);
}

}  // namespace kx::test::storm
