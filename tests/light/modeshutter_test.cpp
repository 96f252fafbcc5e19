// The mode shutter: what it shows of a device, what its list and its slider ask, and what it bears from its host.
#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/light/devgui_modeshutter.h>

#include <climits>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace {

using namespace kx::test;

constexpr int kLine = 10100, kTitle = 10101, kModes = 10201;

class Row : public CKxDevUI_ModeShutter {
public:
    explicit Row(Recorder* record = nullptr) : m_record(record) {}
    HWND Make(HWND parent) { return Create(parent, 10, 10, 300, 36, true, true); }
    HWND Part(int id) const { return GetDlgItem(m_hWnd, id); }
    HWND Edit() {
        return FindWindowExW(FindWindowExW(m_slider, nullptr, L"KxDevUI_EditBox", nullptr), nullptr, L"EDIT", nullptr);
    }
    // The modes in the list, the chosen one in brackets.
    std::wstring List() const {
        std::wstring text;
        for (int i = 0; i < int(SendMessageW(Part(kModes), CB_GETCOUNT, 0, 0)); ++i) {
            wchar_t item[40] = L"";
            SendMessageW(Part(kModes), CB_GETLBTEXT, WPARAM(i), reinterpret_cast<LPARAM>(item));
            const bool chosen = SendMessageW(Part(kModes), CB_GETCURSEL, 0, 0) == i;
            text += chosen ? L"[" + std::wstring(item) + L"]" : item;
        }
        return text;
    }

    bool veto = false;
    std::function<void()> act;  // in every callback; may end this object

    using CKxDevUI_ModeShutter::m_apertureIndex;
    using CKxDevUI_ModeShutter::m_apertures;
    using CKxDevUI_ModeShutter::m_slider;

protected:
    void OnApertureChangeRequest(double aperture, bool& refuse) override { Tell("Aperture", aperture, refuse); }
    void OnModeChangeRequest(EKxShutterMode mode, bool& refuse) override { Tell("Mode", mode, refuse); }

private:
    template <class Value>
    void Tell(const char* name, Value value, bool& refuse) {
        if (m_record) m_record->Call(name, value);
        refuse = veto;
        if (const auto action = act) action();
    }
    Recorder* m_record;
};

struct Device : CKxSimShutter {
    explicit Device(std::vector<double> steps = {5, 10, 20, 30, 40, 60, 80, 100})
        : CKxSimShutter(L"Smart", eKxShutterType_Epi, std::move(steps)) {
        SetSpeed(0);
        CKxDeviceRegistry::Add(*this);
    }
    bool GetModeAvailable(EKxShutterMode mode) const override {
        return softOnly ? mode == 1 : CKxSimShutter::GetModeAvailable(mode);
    }
    long GetApertureSteps() const override { return lie != 0 ? lie : CKxSimShutter::GetApertureSteps(); }
    EKxShutterMode GetMode() const override {
        if (fails) throw std::runtime_error("gone");
        return CKxSimShutter::GetMode();
    }
    bool softOnly = false, fails = false;
    long lie = 0;
};

std::string PlaceOf(HWND window) {
    const RECT r = RectInParent(window);
    return !window ? "" : std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right - r.left);
}

TEST(ModeShutterRules, MarkTheSteps) {
    for (const auto& [count, marks] : std::vector<std::pair<int, std::string>>{
             {0, ""}, {1, "L"}, {2, "LL"}, {3, "LTL"}, {4, "LTTL"}, {8, "L.T.T.TL"}, {9, "L.T.T.T.L"}}) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += ".TL"[int(kx::modeshutter::MarkOf(i, count))];
        EXPECT_EQ(text, marks);
    }
    EXPECT_EQ(kx::modeshutter::MarkOf(-1, 5), kx::modeshutter::Mark::None);
    EXPECT_EQ(kx::modeshutter::MarkOf(1610612735, INT_MAX), kx::modeshutter::Mark::Tick);
    EXPECT_STREQ(kx::modeshutter::ModeText(2), L"Aperture");
    EXPECT_EQ(kx::modeshutter::ModeText(3), nullptr);
}

TEST(ModeShutterUpdate, ShowsWhatIsAskedForAndNothingElse) {
    enum { ById, ByDevice, ByMessage };
    for (int way = ById; way <= ByMessage; ++way) {
        for (int flags = 0; flags < 16; ++flags) {
            SCOPED_TRACE(std::to_string(way) + ": " + std::to_string(flags));
            RecordingParent parent;
            Recorder record;
            Device before({1, 2}), device;
            device.SetAperture(30);
            device.SetMode(eKxShutterMode_Aperture);
            device.SetOpen(true), device.Tick();
            Row row(&record);
            ASSERT_TRUE(row.Init(before.GetLogDevId()));
            row.Make(parent.Window());
            const HWND list = row.Part(kModes);
            const bool f[4] = {(flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, (flags & 8) != 0};
            const unsigned id = device.GetLogDevId();
            if (way == ByMessage) SendMessageW(row, 0x0500, id, reinterpret_cast<LPARAM>(f));
            EXPECT_TRUE(way == ById       ? row.Update(id, f[0], f[1], f[2], f[3])
                        : way == ByDevice ? row.Update(&device, f[0], f[1], f[2], f[3])
                                          : true);
            EXPECT_EQ(row.m_apertures.size(), f[0] ? 8u : 2u);
            EXPECT_EQ(row.Part(kModes) != list, f[0]);
            EXPECT_EQ(row.GetAperture(), f[1] ? 30 : 2);
            EXPECT_EQ(row.m_slider.GetPower(), f[1] ? (f[0] ? 30 : 2) : (f[0] ? 5 : 2));
            EXPECT_EQ(row.m_apertureIndex, f[1] && f[0] ? 3 : f[0] ? 0 : 1);
            EXPECT_EQ(row.GetState(), f[2]);
            EXPECT_EQ(row.GetMode(), f[3] ? 2 : 0);
            EXPECT_EQ(row.List(), f[3] ? L"FastSoft[Aperture]" : L"[Fast]SoftAperture");
            EXPECT_EQ(row.m_slider.GetEnabled(), f[3]);
            EXPECT_TRUE(record.Matches({})) << "the host is not asked";
        }
    }
}

TEST(ModeShutterUpdate, BearsOddDevices) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    RecordingParent parent;
    Row row;
    EXPECT_FALSE(row.Init(0));
    EXPECT_FALSE(row.Update(0u, true, true, true, true));
    EXPECT_FALSE(row.Update(static_cast<IKxDeviceShutter*>(nullptr), true, true, true, true));
    EXPECT_EQ(row.FindApertureIndex(5), -1);
    row.Make(parent.Window());
    EXPECT_EQ(row.List(), L"");
    auto device = std::make_unique<Device>(std::vector<double>{10, 20});
    EXPECT_TRUE(row.Update(device->GetLogDevId(), true, true, true, true));
    EXPECT_TRUE(HWND{row.m_slider});
    EXPECT_EQ(row.FindApertureIndex(15), 1) << "the later of two equally near";
    row.SetAperture(15);
    EXPECT_EQ(row.GetAperture(), 15);
    EXPECT_EQ(row.m_slider.GetPower(), 20);
    row.SetAperture(nan);
    EXPECT_EQ(row.GetAperture(), 15);
    EXPECT_FALSE(row.Update(0u, true, true, true, true));
    EXPECT_FALSE(row.Init(0));
    EXPECT_EQ(row.m_apertures.size(), 2u);
    device->softOnly = true;
    device->fails = true;
    EXPECT_FALSE(row.Update(device.get(), true, true, true, true));
    EXPECT_EQ(row.List(), L"Soft") << "none for a mode that is not offered";
    for (const long lie : {-3L, LONG_MAX}) {
        device->lie = lie;
        EXPECT_TRUE(row.Update(device.get(), true, false, false, false));
        EXPECT_FALSE(HWND{row.m_slider});
    }
    Device bad({1, nan, 3});
    EXPECT_TRUE(row.Update(bad.GetLogDevId(), true, true, false, false));
    EXPECT_FALSE(HWND{row.m_slider});
    const unsigned id = device->GetLogDevId();
    device.reset();
    EXPECT_TRUE(row.Update(id, true, true, true, true));
    EXPECT_EQ(row.List(), L"");
    row.Done();
    row.RedrawButtons();
    EXPECT_FALSE(row.HandleMouseWheel(MAKEWPARAM(0, 120), 0));
}

TEST(ModeShutterUpdate, DrawsNothingWhenNothingChanged) {
    RecordingParent parent;
    Device device;
    Row row;
    row.Init(device.GetLogDevId());
    row.Make(parent.Window());
    Pump();
    for (const HWND each : {HWND{row}, row.Part(kModes), HWND{row.m_slider}, row.Edit()}) {
        ValidateRect(each, nullptr);
        EXPECT_TRUE(row.Update(device.GetLogDevId(), false, true, true, true));
        EXPECT_FALSE(GetUpdateRect(each, nullptr, FALSE));
    }
}

TEST(ModeShutterChoice, AsksTheHostAndShowsWhatIsHeld) {
    const struct {
        int mode;
        WORD key;
        bool veto;
        std::vector<Expected> asked;
        const wchar_t* list;
    } cases[] = {{0, VK_DOWN, false, {Call("Mode", 1)}, L"Fast[Soft]Aperture"},
                 {0, VK_DOWN, true, {Call("Mode", 1)}, L"[Fast]SoftAperture"},
                 {1, VK_END, false, {Call("Mode", 2)}, L"FastSoft[Aperture]"},
                 {2, VK_HOME, true, {Call("Mode", 0)}, L"FastSoft[Aperture]"},
                 {2, VK_UP, false, {Call("Mode", 1)}, L"Fast[Soft]Aperture"},
                 {2, VK_DOWN, false, {Call("Mode", 2).Optional()}, L"FastSoft[Aperture]"}};
    for (const auto& each : cases) {
        RecordingParent parent;
        Device device;
        device.SetMode(static_cast<EKxShutterMode>(each.mode));
        Row row(&parent.Record());
        row.Init(device.GetLogDevId());
        row.Make(parent.Window());
        row.veto = each.veto;
        BringToFront(row);
        SetFocus(row.Part(kModes));
        parent.Record().Clear();
        Key(each.key);
        EXPECT_TRUE(parent.Record().Matches(each.asked));
        EXPECT_EQ(row.List(), each.list);
        EXPECT_EQ(row.m_slider.GetEnabled(), row.GetMode() == 2);
        EXPECT_EQ(IsWindowEnabled(row.Edit()) != FALSE, row.GetMode() == 2);
        // The mode held, chosen again.
        const LRESULT held = SendMessageW(row.Part(kModes), CB_GETCURSEL, 0, 0);
        SendMessageW(row, WM_COMMAND, MAKEWPARAM(kModes, CBN_SELCHANGE), 0);
        EXPECT_TRUE(parent.Record().Matches({Call("Mode", held)}));
        for (const auto& [id, code] : {std::pair{kModes, CBN_SELENDOK}, std::pair{kModes + 1, CBN_SELCHANGE}})
            EXPECT_EQ(SendMessageW(row, WM_COMMAND, MAKEWPARAM(id, code), 0), 0);
        EXPECT_TRUE(parent.Record().Matches({}));
    }
}

TEST(ModeShutterChoice, AsksForAnAperture) {
    for (const bool veto : {false, true}) {
        for (const bool typed : {false, true}) {
            SCOPED_TRACE(std::string(veto ? "veto" : "agreed") + (typed ? ", typed" : ", dragged"));
            RecordingParent parent;
            Recorder record;
            Device device;
            device.SetMode(eKxShutterMode_Aperture);
            Row row(&record);
            row.Init(device.GetLogDevId());
            row.Make(parent.Window());
            row.veto = veto;
            if (typed) {
                Click(row.Edit(), 5, 5);
                SendMessageW(row.Edit(), EM_SETSEL, 0, -1);
                Type(L"33\n");
            } else {
                const HWND slider = GetDlgItem(row.m_slider, 10000);
                RECT client{};
                GetClientRect(slider, &client);
                Press(slider, client.right * 2 / 5, 5), Release();
            }
            ASSERT_FALSE(record.Entries().empty());
            const double wanted = typed ? 30 : 40;
            EXPECT_EQ(record.Entries().front().text, CallText("Aperture", wanted));
            EXPECT_EQ(row.GetAperture(), veto ? 100 : wanted);
            EXPECT_EQ(row.m_apertureIndex, veto ? 7 : typed ? 3 : 4);
            EXPECT_EQ(row.m_slider.GetPower(), row.GetAperture());
        }
    }
}

TEST(ModeShutterWindow, IsMadeOfItsParts) {
    const struct {
        double zoom;
        bool line, title, modes;
        const char* windows[4];  // line, title, list, slider
    } cases[] = {{1, false, false, true, {"", "", "0 4 72", "80 2"}},
                 {1, true, true, true, {"0 0 256", "0 8 56", "40 4 72", "120 2"}},
                 {1, false, true, false, {"", "0 8 56", "", "40 2"}},
                 {1.5, true, true, true, {"0 0 384", "0 12 84", "60 6 108", "180 3"}}};
    for (const auto& each : cases) {
        CKxGUILayoutManager::SetGuiZoom(each.zoom);
        RecordingParent parent;
        Device device;
        Row row;
        row.SetSeparator(each.line);
        row.SetShowTitle(each.title);
        row.SetShowModes(each.modes);
        row.SetTitle(L"Iris & co");
        row.Init(device.GetLogDevId());
        ASSERT_TRUE(row.Make(parent.Window()));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(PlaceOf(row), "10 10 " + std::to_string(int(300 * each.zoom)));
            const HWND parts[] = {row.Part(kLine), row.Part(kTitle), row.Part(kModes)};
            for (int part = 0; part < 3; ++part)
                EXPECT_EQ(PlaceOf(parts[part]), each.windows[part]) << part;
            EXPECT_EQ(PlaceOf(row.m_slider).find(each.windows[3]), 0u);
            row.Update(&device, true, true, true, true);
        }
        EXPECT_EQ(GetClassLongPtrW(row, GCL_CBWNDEXTRA), 0u);
        EXPECT_EQ(GetWindowLongW(row, GWL_STYLE), 0x52000000);
        row.SetTitle(std::wstring(10000, L'&').c_str());
        EXPECT_EQ(GetWindowTextLengthW(row.Part(kTitle)), each.title ? 10000 : 0);
        CKxGUILayoutManager::SetGuiZoom(1);
    }
    Row huge;
    EXPECT_FALSE(huge.Create(nullptr, LONG_MAX, LONG_MIN, LONG_MAX, 0, true, true));
}

TEST(ModeShutterWindow, BearsWhatItsCallbacksDo) {
    Device device;
    device.SetMode(eKxShutterMode_Aperture);
    const std::function<void(std::unique_ptr<Row>&, HWND)> acts[] = {
        [](auto& row, HWND) { row.reset(); },
        [](auto& row, HWND) { row->Destroy(); },
        [](auto&, HWND parent) { DestroyWindow(parent); },
        [](auto& row, HWND) { row->CreateControls(); },
        [](auto& row, HWND parent) { row->Make(parent); },
        [&](auto& row, HWND) { row->Update(&device, true, true, true, true); },
        [](auto&, HWND) { throw std::runtime_error("host"); },
    };
    for (const auto& act : acts) {
        for (int way = 0; way < 3; ++way) {
            RecordingParent parent;
            auto row = std::make_unique<Row>();
            row->Init(device.GetLogDevId());
            row->Make(parent.Window());
            row->act = [&] { act(row, parent.Window()); };
            if (way == 0) SetFocus(row->Part(kModes)), Key(VK_UP);
            if (way == 1) Click(GetDlgItem(row->m_slider, 10000), 40, 5);
            if (way == 2) SetFocus(row->Edit()), Type(L"4\n");
            Pump();
            EXPECT_TRUE(!row || !HWND{*row} || IsWindow(*row));
        }
    }
}

TEST(ModeShutterWindow, HoldsNothingBack) {
    RecordingParent parent;
    Device device;
    EXPECT_TRUE(NoGrowth(500, [&] {
        Row row;
        row.SetShowTitle(true);
        row.Init(device.GetLogDevId());
        row.Make(parent.Window());
        row.Update(&device, true, true, true, true);
        UpdateWindow(row);
        parent.Record().Clear();
    }));
}

// Pictures for a person to look at (KX_PICTURES); here only that the row paints its face.
TEST(ModeShutterWindow, PaintsItsFace) {
    for (const int scheme : {eKxColorScheme_Light, eKxColorScheme_Dark}) {
        KX_SetColorScheme(static_cast<EKxColorScheme>(scheme));
        for (const double scale : {1.0, 1.5, 2.0}) {
            CKxGUILayoutManager::SetGuiZoom(scale);
            for (const int mode : {0, 2}) {
                RecordingParent parent({long(320 * scale), long(60 * scale)});
                Device device;
                device.SetMode(static_cast<EKxShutterMode>(mode));
                Row row;
                row.SetSeparator(true), row.SetShowTitle(true), row.SetTitle(L"Iris");
                row.Init(device.GetLogDevId());
                row.Make(parent.Window());
                const Picture picture = Picture::OnScreen(row);
                picture.Save("mode-" + std::to_string(scheme) + "-" + std::to_string(int(scale * 100)) + "-" +
                             std::to_string(mode));
                EXPECT_EQ(picture.Pixel(picture.Width() - 2, picture.Height() - 2), KX_GetSysColor(COLOR_3DFACE));
            }
            CKxGUILayoutManager::SetGuiZoom(1);
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
}

struct Slots : CKxDevUI_ModeShutter {
    template <class Function>
    static long Of(Function function) {
        long long words[sizeof(Function) / sizeof(long long)];
        std::memcpy(words, &function, sizeof function);
        return static_cast<long>((words[0] - 1) / static_cast<long long>(sizeof(void*))) - 1;
    }
    static std::vector<long> InOrder() {
        return {Of(&Slots::OnApertureChangeRequest), Of(&Slots::OnStateChangeRequest), Of(&Slots::OnModeChangeRequest)};
    }
};

TEST(ModeShutterWindow, KeepsTheOrderOfItsOperations) { EXPECT_EQ(Slots::InOrder(), (std::vector<long>{19, 20, 21})); }

}  // namespace
