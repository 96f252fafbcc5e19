// The mode shutter: what it shows of a device, what its list and its slider ask, and what it bears from its host.
#include "lamps.h"

#include <kxdevui/light/devgui_modeshutter.h>

#include <climits>

namespace {

using namespace kx::test;

constexpr int kLine = 10100, kTitle = 10101, kModes = 10201;

class Row : public CKxDevUI_ModeShutter {
public:
    explicit Row(Recorder* record = nullptr) : m_record(record) {}
    // For a device that holds the mode, in a window.
    Row(Recorder* record, IKxDeviceShutter& device, HWND parent) : Row(record) {
        EXPECT_TRUE(Init(device.GetLogDevId()));
        EXPECT_TRUE(Make(parent));
    }
    HWND Make(HWND parent) { return Create(parent, 10, 10, 300, 36, true, true); }
    void Reread(IKxDeviceShutter& device) { Update(&device, true, true, true, true); }
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

struct Device : Lamp {
    explicit Device(EKxShutterMode mode = eKxShutterMode_Fast,
                    std::vector<double> steps = {5, 10, 20, 30, 40, 60, 80, 100})
        : Lamp(eKxShutterType_Epi, std::move(steps)) {
        SetMode(mode);
    }
    bool GetModeAvailable(EKxShutterMode mode) const override {
        if (hides) throw std::runtime_error("gone");
        return softOnly ? mode == 1 : Lamp::GetModeAvailable(mode);
    }
    long GetApertureSteps() const override { return lie != 0 ? lie : Lamp::GetApertureSteps(); }
    EKxShutterMode GetMode() const override {
        if (fails) throw std::runtime_error("gone");
        return Lamp::GetMode();
    }
    bool softOnly = false, hides = false;
    long lie = 0;
};

TEST(ModeShutterRules, MarkTheSteps) {
    for (const auto& [count, marks] : std::vector<std::pair<int, std::string>>{
             {0, ""}, {1, "L"}, {2, "LL"}, {3, "LTL"}, {4, "LTTL"}, {8, "L.T.T.TL"}, {9, "L.T.T.T.L"}}) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += ".TL"[int(kx::modeshutter::MarkOf(i, count))];
        EXPECT_EQ(text, marks);
    }
    EXPECT_EQ(kx::modeshutter::MarkOf(-1, 5), kx::modeshutter::Mark::None);
    EXPECT_STREQ(kx::modeshutter::ModeText(2), L"Aperture");
    EXPECT_EQ(kx::modeshutter::ModeText(3), nullptr);
}

TEST(ModeShutterUpdate, ShowsWhatIsAskedForAndNothingElse) {
    for (int flags = 0; flags < 32; ++flags) {
        SCOPED_TRACE(flags);
        RecordingParent parent;
        Device before(eKxShutterMode_Fast, {1, 2}), device(eKxShutterMode_Aperture);
        device.SetAperture(30);
        device.Open(true);
        Row row(&parent.Record(), before, parent.Window());
        const HWND list = row.Part(kModes);
        const bool f[4] = {(flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, (flags & 8) != 0};
        const bool byMessage = flags & 16;
        const unsigned id = device.GetLogDevId();
        if (byMessage) SendMessageW(row, 0x0500, id, reinterpret_cast<LPARAM>(f));
        EXPECT_TRUE(byMessage || row.Update(id, f[0], f[1], f[2], f[3]));
        EXPECT_EQ(row.m_apertures.size(), f[0] ? 8u : 2u);
        EXPECT_EQ(row.Part(kModes) != list, f[0]);
        EXPECT_EQ(row.GetAperture(), f[1] ? 30 : 2);
        EXPECT_EQ(row.m_slider.GetPower(), f[1] ? (f[0] ? 30 : 2) : (f[0] ? 5 : 2));
        EXPECT_EQ(row.m_apertureIndex, f[1] && f[0] ? 3 : f[0] ? 0 : 1);
        EXPECT_EQ(row.GetState(), f[2]);
        EXPECT_EQ(row.List(), f[3] ? L"FastSoft[Aperture]" : L"[Fast]SoftAperture");
        EXPECT_EQ(row.m_slider.GetEnabled(), f[3]);
        EXPECT_TRUE(parent.Record().Matches({})) << "the host is not asked";
    }
}

TEST(ModeShutterUpdate, BearsOddDevices) {
    RecordingParent parent;
    Row row;
    EXPECT_FALSE(row.Init(0));
    EXPECT_FALSE(row.Update(0u, true, true, true, true));
    EXPECT_FALSE(row.Update(static_cast<IKxDeviceShutter*>(nullptr), true, true, true, true));
    EXPECT_EQ(row.FindApertureIndex(5), -1);
    row.Make(parent.Window());
    EXPECT_EQ(row.List(), L"");
    auto device = std::make_unique<Device>(eKxShutterMode_Fast, std::vector<double>{10, 20});
    EXPECT_TRUE(row.Update(device->GetLogDevId(), true, true, true, true));
    EXPECT_TRUE(HWND{row.m_slider});
    EXPECT_EQ(row.FindApertureIndex(15), 1) << "the later of two equally near";
    row.SetAperture(15);
    EXPECT_EQ(row.GetAperture(), 15);
    EXPECT_EQ(row.m_slider.GetPower(), 20);
    row.SetAperture(kNaN);
    EXPECT_EQ(row.GetAperture(), 15);
    device->softOnly = true;
    EXPECT_TRUE(row.Update(device.get(), true, true, true, true));
    EXPECT_EQ(row.List(), L"Soft") << "none for a mode that is not offered";
    const double held = row.GetAperture();
    device->softOnly = false;
    device->hides = true;
    EXPECT_TRUE(row.Update(device.get(), true, false, false, false));
    EXPECT_EQ(row.List(), L"Soft") << "what it told last";
    device->fails = true;
    device->SetAperture(20);
    EXPECT_FALSE(row.Update(device.get(), true, true, true, true));
    EXPECT_FALSE(row.Update(device->GetLogDevId(), true, true, true, true));
    EXPECT_EQ(row.GetAperture(), held);
    EXPECT_EQ(row.List(), L"Soft") << "as before";
    for (const long lie : {-3L, LONG_MAX}) {
        device->lie = lie;
        EXPECT_TRUE(row.Update(device.get(), true, false, false, false));
        EXPECT_FALSE(HWND{row.m_slider});
    }
    Device bad(eKxShutterMode_Fast, {1, kNaN, 3});
    EXPECT_TRUE(row.Update(bad.GetLogDevId(), true, true, false, false));
    EXPECT_FALSE(HWND{row.m_slider});
    const unsigned id = device->GetLogDevId();
    device.reset();
    EXPECT_TRUE(row.Update(id, true, true, true, true));
    EXPECT_EQ(row.List(), L"");
}

TEST(ModeShutterUpdate, DrawsNothingWhenNothingChanged) {
    RecordingParent parent;
    Device device;
    Row row(nullptr, device, parent.Window());
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
        Device device(static_cast<EKxShutterMode>(each.mode));
        Row row(&parent.Record(), device, parent.Window());
        row.veto = each.veto;
        BringToFront(row);
        SetFocus(row.Part(kModes));
        parent.Record().Clear();
        Key(each.key);
        EXPECT_TRUE(parent.Record().Matches(each.asked));
        EXPECT_EQ(row.List(), each.list);
        EXPECT_EQ(row.m_slider.GetEnabled(), row.GetMode() == 2);
        // The mode held, chosen again.
        const LRESULT held = SendMessageW(row.Part(kModes), CB_GETCURSEL, 0, 0);
        SendMessageW(row, WM_COMMAND, MAKEWPARAM(kModes, CBN_SELCHANGE), 0);
        EXPECT_TRUE(parent.Record().Matches({Call("Mode", held)}));
    }
}

TEST(ModeShutterChoice, AsksForAnAperture) {
    for (int way = 0; way < 4; ++way) {
        const bool veto = way & 1, typed = way & 2;
        SCOPED_TRACE(way);
        RecordingParent parent;
        Device device(eKxShutterMode_Aperture);
        Row row(&parent.Record(), device, parent.Window());
        row.veto = veto;
        if (typed) {
            Click(row.Edit(), 5, 5);
            SendMessageW(row.Edit(), EM_SETSEL, 0, -1);
            Type(L"33\n");
        } else {
            const HWND slider = GetDlgItem(row.m_slider, 10000);
            RECT client{};
            GetClientRect(slider, &client);
            Click(slider, client.right * 2 / 5, 5);
        }
        ASSERT_FALSE(parent.Record().Entries().empty());
        const double wanted = typed ? 30 : 40;
        EXPECT_EQ(parent.Record().Entries().front().text, CallText("Aperture", wanted));
        EXPECT_EQ(row.GetAperture(), veto ? 100 : wanted);
        EXPECT_EQ(row.m_apertureIndex, veto ? 7 : typed ? 3 : 4);
        EXPECT_EQ(row.m_slider.GetPower(), veto && !typed ? 100 : wanted) << "a typed value stays, refused or not";
    }
}

TEST(ModeShutterWindow, IsMadeOfItsParts) {
    const struct {
        double zoom;
        bool line, title, modes;
        const char* windows[4];  // line, title, list, slider
    } cases[] = {{1, false, false, true, {"", "", "0 4 72 ", "80 2 "}},
                 {1, false, true, false, {"", "0 8 56 ", "", "40 2 "}},
                 {1.5, true, true, true, {"0 0 384 ", "0 12 84 ", "60 6 108 ", "180 3 "}}};
    for (const auto& each : cases) {
        const Zoom zoom(each.zoom);
        RecordingParent parent;
        Device device;
        Row row;
        row.SetSeparator(each.line);
        row.SetShowTitle(each.title);
        row.SetShowModes(each.modes);
        row.Init(device.GetLogDevId());
        ASSERT_TRUE(row.Make(parent.Window()));
        for (int i = 0; i < 2; ++i) {
            const HWND parts[] = {row.Part(kLine), row.Part(kTitle), row.Part(kModes), row.m_slider};
            for (int part = 0; part < 4; ++part)
                EXPECT_EQ(PlaceOf(parts[part]).rfind(each.windows[part], 0), 0u) << part;
            EXPECT_EQ(std::tuple(parts[0] != nullptr, parts[1] != nullptr, parts[2] != nullptr),
                      std::tuple(each.line, each.title, each.modes));
            row.Update(&device, true, true, true, true);
        }
        row.SetTitle(std::wstring(10000, L'&').c_str());
        EXPECT_EQ(GetWindowTextLengthW(row.Part(kTitle)), each.title ? 10000 : 0);
    }
    Row huge;
    EXPECT_FALSE(huge.Create(nullptr, LONG_MAX, LONG_MIN, LONG_MAX, 0, true, true));
}

// With its window alone; the held state is the host's, and the slider goes by the mode as well.
TEST(ModeShutterWindow, LooksDisabledWithItsWindow) {
    RecordingParent parent;
    Device device;
    Row row;
    row.SetShowTitle(true);
    row.Init(device.GetLogDevId());
    ASSERT_TRUE(row.Make(parent.Window()));
    const auto expect = [&](bool parts, bool edit) {
        EXPECT_EQ(IsWindowEnabled(row.Part(kTitle)) != FALSE, parts);
        EXPECT_EQ(IsWindowEnabled(row.Part(kModes)) != FALSE, parts);
        EXPECT_EQ(IsWindowEnabled(row.Edit()) != FALSE, edit);
    };
    row.SetEnabled(false);
    expect(true, false);
    EnableWindow(row, FALSE);
    for (int made = 0; made < 2; ++made) {
        row.SetMode(eKxShutterMode_Aperture);
        expect(false, false);
        row.Reread(device);  // makes the parts anew
    }
    row.SetMode(eKxShutterMode_Aperture);
    EnableWindow(row, TRUE);
    expect(true, true);
    row.SetMode(eKxShutterMode_Fast);
    expect(true, false);
    EXPECT_FALSE(row.GetEnabled());
}

TEST(ModeShutterWindow, BearsWhatItsCallbacksDo) {
    Device device(eKxShutterMode_Aperture);
    BearCallbacks<Row>(device, {[](Row& r) { SetFocus(r.Part(kModes)), Key(VK_UP); },
                                [](Row& r) { Click(GetDlgItem(r.m_slider, 10000), 40, 5); },
                                [](Row& r) { SetFocus(r.Edit()), Type(L"4\n"); }});
}

struct Slots : CKxDevUI_ModeShutter {
    static std::vector<long> InOrder() {
        return SlotsOf(&Slots::OnApertureChangeRequest, &Slots::OnStateChangeRequest, &Slots::OnModeChangeRequest);
    }
};

TEST(ModeShutterWindow, KeepsTheOrderOfItsOperations) { EXPECT_EQ(Slots::InOrder(), (std::vector<long>{19, 20, 21})); }

}  // namespace
