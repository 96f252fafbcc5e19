// What all creations have in common, over all controls that there are.
#include <bench/bench.h>
#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/controls/devgui_table.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxdevui/light/devgui_modeshutter.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>
#include <kxdevui/zfocus/devgui_zstack.h>
#include <kxsystem/kx_log.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>

namespace {

using namespace kx::test;

class ZStack : public CKxDevUI_ZStack {
    void OnStepChanged(double, bool) override {}
    void OnMoveZRequest(double) override {}
    void OnGoHomeRequest(bool) override {}
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override {}
    void OnZStackChanged(unsigned int) override {}
};

// A control in memory of its own, which is filled when the control goes: what is written later shows.
struct Subject {
    virtual ~Subject() = default;
    virtual HWND Create(HWND parent) = 0;
    virtual HWND Window() = 0;
    virtual void* Root() = 0;
    virtual void End() = 0;
    bool ended = false;
    virtual bool IsIntact() const = 0;
};

template <class T>
struct SubjectOf : Subject {
    SubjectOf() { ::new (memory.data()) T(); }
    ~SubjectOf() override { End(); }
    HWND Create(HWND parent) override {
        if constexpr (std::is_same_v<T, ZStack>) {
            return Control().Create(parent, &record, 0, 0, -1, -1, true, true);
        } else {
            return Control().Create(parent, 0, 0, 120, 40, true, true);
        }
    }
    HWND Window() override {
        if constexpr (std::is_convertible_v<T&, HWND>)
            return Control();
        else
            return Control().GetHandle();
    }
    void* Root() override { return static_cast<kx::ui::RootOf<T>*>(&Control()); }
    void End() override {
        if (std::exchange(ended, true)) return;
        Control().~T();
        memory.fill(filling);
    }
    bool IsIntact() const override {
        return std::all_of(memory.begin(), memory.end(), [](std::byte each) { return each == filling; });
    }
    T& Control() { return *std::launder(reinterpret_cast<T*>(memory.data())); }

    static constexpr std::byte filling{0xA5};
    CKxZStackData record;
    alignas(T) std::array<std::byte, sizeof(T)> memory;
};

template <class T>
std::unique_ptr<Subject> Make() {
    return std::make_unique<SubjectOf<T>>();
}

// The class is null for what is no class of ours.
const struct {
    const wchar_t* name;
    std::unique_ptr<Subject> (*make)();
} kControls[] = {
    {L"KxDevUI_Container", Make<CKxDevUI_Container>},
    {nullptr, Make<CKxDevUI_ColorSlider>},
    {L"KxDevUI_HPot", Make<CKxDevUI_HPot>},
    {L"CKxDevUI_ColorSliderRangeHPot", Make<CKxDevUI_ColorSlider::CKxDevUI_ColorSliderRangeHPot>},
    {nullptr, Make<CKxDevUI_SpinBox>},
    {L"KxDevUI_EditBox", Make<CKxDevUI_EditBox>},
    {nullptr, Make<CKxDevUI_EditBoxSpin>},
    {L"KxDevUI_Radio", Make<CKxDevUI_Radio>},
    {L"KxDevUI_Table", Make<CKxDevUI_Table>},
    {L"KxDevUI_Shutter", Make<CKxDevUI_Shutter>},
    {nullptr, Make<CKxDevUI_MechanicalShutter>},
    {L"KxDEVGUI_ModeShutter", Make<CKxDevUI_ModeShutter>},
    {L"KxDevGUI_Nosepiece", Make<CKxDevUI_Nosepiece>},
    {L"KxDevGUI_FilterWheel", Make<CKxDevUI_FilterWheel>},
    {L"KxDevGUI_Switcher", Make<CKxDevUI_Switcher>},
    {L"CKxDevUI_ZStack", Make<ZStack>},
};

// Before the classes are registered: the first of all that runs here.
TEST(ATakenClassName, GivesNoWindow) {
    std::wstring log;
    const struct Restore {
        ~Restore() { CKxLogFile::SetDetail(false), CKxLogFile::SetSink(nullptr, nullptr); }
    } restore;
    CKxLogFile::SetSink([](const wchar_t* line, void* to) { *static_cast<std::wstring*>(to) += line; }, &log);
    CKxLogFile::SetDetail(true);
    for (const auto& row : kControls) {
        if (!row.name) continue;
        WNDCLASSEXW foreign{};
        foreign.cbSize = sizeof foreign;
        foreign.lpfnWndProc = DefDlgProcW;
        foreign.cbWndExtra = DLGWINDOWEXTRA;
        foreign.hInstance = GetModuleHandleW(L"kxdevui.dll");
        foreign.lpszClassName = row.name;
        if (!RegisterClassExW(&foreign)) GTEST_SKIP() << "the classes are registered already";
        RecordingParent parent;
        const auto subject = row.make();
        log.clear();
        EXPECT_EQ(subject->Create(parent.Window()), nullptr) << "row " << &row - kControls;
        EXPECT_NE(log.find(L"::Create - RegisterClass failed"), std::wstring::npos) << "row " << &row - kControls;
        EXPECT_EQ(GetWindow(parent.Window(), GW_CHILD), nullptr) << "row " << &row - kControls;
        UnregisterClassW(row.name, foreign.hInstance);
    }
}

TEST(Creation, FindsTheObjectByUserData) {
    for (const auto& row : kControls) {
        RecordingParent parent;
        const auto subject = row.make();
        const HWND window = subject->Create(parent.Window());
        EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(subject->Root()))
            << "row " << &row - kControls;
    }
}

// The end of the window that is replaced gives the host's the focus, but for the panels with positions, and tells it:
// either may end the control.
TEST(Creation, LeavesAnObjectThatItsOldWindowsEndHasEnded) {
    for (const auto& row : kControls) {
        for (const UINT message : {UINT{WM_SETFOCUS}, UINT{WM_PARENTNOTIFY}}) {
            RecordingParent parent;
            const auto subject = row.make();
            ASSERT_TRUE(subject->Create(parent.Window()));
            SetFocus(subject->Window());
            parent.Answer(message, [&](WPARAM what, LPARAM) {
                if (message == WM_SETFOCUS || LOWORD(what) == WM_DESTROY) subject->End();
                return LRESULT{0};
            });
            const HWND window = subject->Create(parent.Window());
            if (message == WM_SETFOCUS && !subject->ended) continue;
            EXPECT_EQ(window, nullptr) << "row " << &row - kControls << ", message " << message;
            EXPECT_TRUE(subject->IsIntact()) << "row " << &row - kControls << ", message " << message;
        }
    }
}

// The host is told of each window that comes, and ends the control at one of them.
TEST(Creation, LeavesAnObjectThatANewWindowHasEnded) {
    for (const auto& row : kControls) {
        bool ended = true;
        for (int end = 0; ended && end < 4; ++end) {
            RecordingParent parent;
            const auto subject = row.make();
            int told = 0;
            parent.Answer(WM_PARENTNOTIFY, [&](WPARAM what, LPARAM) {
                if (LOWORD(what) == WM_CREATE && told++ == end) subject->End();
                return LRESULT{0};
            });
            const HWND window = subject->Create(parent.Window());
            ended = subject->ended;
            if (!ended) continue;
            EXPECT_EQ(window, nullptr) << "row " << &row - kControls << ", window " << end;
            EXPECT_TRUE(subject->IsIntact()) << "row " << &row - kControls << ", window " << end;
        }
    }
}

}  // namespace
