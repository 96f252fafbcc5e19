// The mode shutter: what it shows of a device, what its list and its slider ask, and what it bears from its host.
#include "lamps.h"

#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/light/devgui_modeshutter.h>

#include <climits>

namespace {

using namespace kx::test;

constexpr int kLine = 10100, kTitle = 10101, kModes = 10201;

struct Row : Asking<CKxDevUI_ModeShutter> {
    using Asking::Asking;
    // For a device that holds the mode, in a window.
    Row(RecordingParent& parent, IKxDeviceShutter& device) : Asking(parent.Record()) {
        EXPECT_TRUE(Init(device.GetLogDevId()) && Make(parent.Window()));
        parent.Record().Clear();
    }
    HWND Make(HWND parent) { return Create(parent, 10, 10, 300, 36, true, true); }
    HWND Part(int id) const { return GetDlgItem(m_hWnd, id); }
    HWND Edit() const { return GetWindow(GetDlgItem(m_slider, 10001), GW_CHILD); }
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

    using CKxDevUI_ModeShutter::m_apertureIndex, CKxDevUI_ModeShutter::m_apertures, CKxDevUI_ModeShutter::m_slider;

    void OnApertureChangeRequest(double aperture, bool& veto) override { Asked(veto, "Aperture", aperture); }
    void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override { Asked(veto, "Mode", mode); }
};

struct Device : Lamp {
    explicit Device(EKxShutterMode mode = {}, std::vector<double> steps = {5, 10, 20, 30, 40, 60, 80, 100})
        : Lamp(eKxShutterType_Epi, std::move(steps)) {
        SetMode(mode);
    }
    bool GetModeAvailable(EKxShutterMode mode) const override {
        return softOnly ? mode == 1 : Lamp::GetModeAvailable(mode);
    }
    long GetApertureSteps() const override { return lie != 0 ? lie : Lamp::GetApertureSteps(); }
    EKxShutterMode GetMode() const override {
        if (fails) throw std::runtime_error("gone");
        return Lamp::GetMode();
    }
    bool softOnly = false;
    long lie = 0;
};

using ModeShutter = ControlTest;

TEST_F(ModeShutter, MarksTheSteps) {
    for (const std::string marks : {"", "L", "LL", "LTTL", "LT.T.TL", "L.T.T.TL", "L.T.T.T.L"}) {
        const int count = static_cast<int>(marks.size());
        for (int i = -1; i < count; ++i)
            EXPECT_EQ(".TL"[int(kx::modeshutter::MarkOf(i, count))], i < 0 ? '.' : marks[std::size_t(i)]) << marks << i;
    }
}

TEST_F(ModeShutter, SaysWhyItIsRefused) {
    Device device(eKxShutterMode_Aperture);
    Row row(parent, device);
    row.answer = true;
    row.meanwhile = [] { KX_SayWhyRefused(L"The door is open"); };
    SendMessageW(row.Part(kModes), CB_SETCURSEL, 0, 0);
    SendMessageW(row, WM_COMMAND, MAKEWPARAM(kModes, CBN_SELCHANGE), 0);
    EXPECT_EQ(KX_GetActivity(row), (KxActivity{EKxActivity::Refused, 0, L"The door is open"}));
    // The slider's requests are its own, and it draws those of the row.
    device.SetFails(true, L"stuck"), device.SetOpen(true), device.Tick();
    row.Update(&device, false, false, true, false);
    EXPECT_EQ(KX_GetActivity(row.m_slider), (KxActivity{EKxActivity::Failed, -1, L"stuck"}));
}

// Its slider is higher than the row.
TEST_F(ModeShutter, ShowsAFailureInALowRow) {
    for (const double zoom : {1.0, 1.5, 2.0}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        Device device;
        Row row(parent, device);
        row.Create(parent.Window(), 10, 10, 256, 32, true, true);
        KX_TellActivity(row, {EKxActivity::Failed, -1, {}});
        EXPECT_GT(Picture::OnScreen(row).Count(KX_GetVorGuiColor(eKxVorGuiColor_Alert)), 120 * zoom * zoom);
    }
}

TEST_F(ModeShutter, ShowsWhatIsAskedForAndNothingElse) {
    for (int flags = 0; flags < 32; ++flags) {
        Device before(eKxShutterMode_Fast, {1, 2}), device(eKxShutterMode_Aperture);
        device.SetAperture(30);
        device.Open(true);
        Row row(parent, before);
        const HWND list = row.Part(kModes);
        const bool f[4] = {(flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, (flags & 8) != 0};
        const bool byMessage = flags & 16;
        const unsigned id = device.GetLogDevId();
        if (byMessage) SendMessageW(row, 0x0500, id, reinterpret_cast<LPARAM>(f));
        EXPECT_TRUE(byMessage || row.Update(id, f[0], f[1], f[2], f[3]));
        // A power that the steps do not have is that of the nearest.
        const int power = !f[0] ? 2 : f[1] ? 30 : 5, index = !f[0] ? 1 : f[1] ? 3 : 0;
        EXPECT_EQ(CallText("", row.m_apertures.size(), row.Part(kModes) != list, row.GetAperture(),
                           row.m_slider.GetPower(), row.m_apertureIndex),
                  CallText("", f[0] ? 8 : 2, f[0], f[1] ? 30 : 2, power, index))
            << flags;
        EXPECT_EQ(CallText("", row.GetState(), row.List(), row.m_slider.GetEnabled(), Told()),
                  CallText("", f[2], f[3] ? L"FastSoft[Aperture]" : L"[Fast]SoftAperture", f[3], ""))
            << flags;
    }
}

TEST_F(ModeShutter, BearsOddDevices) {
    Row row(parent.Record());
    EXPECT_FALSE(row.Init(0) || row.Update(0u, true, true, true, true));
    row.Make(parent.Window());
    Device device(eKxShutterMode_Fast, {10, 20});
    const auto update = [&](bool done) { EXPECT_EQ(row.Update(&device, true, true, true, true), done); };
    // The later one of two; no mode chosen that is not offered; what it told last.
    kx::test::Play(
        {{[&] { update(true), row.SetAperture(15), row.SetAperture(kNaN); }, "(15, 20, \"[Fast]SoftAperture\")"},
         {[&] { device.softOnly = true, update(true); }, "(20, 20, \"Soft\")"},
         {[&] { device.softOnly = false, device.fails = true, device.SetAperture(10), update(false); },
          "(20, 20, \"Soft\")"}},
        [&] { return CallText("", row.GetAperture(), row.m_slider.GetPower(), row.List()); });
    device.lie = LONG_MAX;
    row.Update(&device, true, false, false, false);
    EXPECT_FALSE(HWND{row.m_slider});
}

TEST_F(ModeShutter, AsksForAModeAndShowsWhatIsHeld) {
    const std::tuple<bool, bool, const char*, const wchar_t*> cases[] = {
        {false, false, "Mode(2) Mode(2)", L"FastSoft[Aperture]"},
        {true, false, "Mode(2) Mode(1)", L"Fast[Soft]Aperture"},
        {false, true, "Mode(2) Mode(1)", L"Fast[Soft]Aperture"}};
    for (const auto& [veto, throws, asked, list] : cases) {
        Device device(eKxShutterMode_Soft);
        Row row(parent, device);
        row.answer = veto;
        if (throws) row.meanwhile = [] { throw std::runtime_error("host"); };
        BringToFront(row);
        SetFocus(row.Part(kModes));
        Key(VK_DOWN);
        // The mode held, chosen again.
        SendMessageW(row, WM_COMMAND, MAKEWPARAM(kModes, CBN_SELCHANGE), 0);
        EXPECT_EQ(CallText("", Told(), row.List()), CallText("", asked, list));
        EXPECT_EQ(row.m_slider.GetEnabled(), row.GetMode() == 2);
    }
}

TEST_F(ModeShutter, AsksForAnAperture) {
    for (const bool veto : {false, true}) {
        Device device(eKxShutterMode_Aperture);
        Row row(parent, device);
        row.answer = veto;
        const HWND slider = GetDlgItem(row.m_slider, 10000);
        Click(slider, (RectInParent(slider).right - RectInParent(slider).left) * 2 / 5, 5);
        EXPECT_TRUE(Told().starts_with("Aperture(40)"));
        const std::string held = CallText("", row.GetAperture(), row.m_apertureIndex, row.m_slider.GetPower());
        EXPECT_EQ(held, veto ? "(100, 7, 100)" : "(40, 4, 40)");
        Click(row.Edit(), 5, 5);
        SendMessageW(row.Edit(), EM_SETSEL, 0, -1);
        Type(L"33\n");
        EXPECT_EQ(CallText("", row.GetAperture(), row.m_slider.GetPower()), veto ? "(100, 30)" : "(30, 30)")
            << "a typed value stays, refused or not";
    }
}

TEST_F(ModeShutter, IsMadeOfItsParts) {
    // Line, title, list, slider.
    const std::tuple<bool, bool, bool, const char*> cases[] = {{false, false, true, "no no 0 4 80 2 "},
                                                               {false, true, false, "no 0 8 no 40 2 "},
                                                               {true, true, true, "0 0 0 8 40 4 120 2 "}};
    Device device;
    Row row(parent, device);
    for (const auto& [line, title, modes, expected] : cases) {
        row.SetSeparator(line), row.SetShowTitle(title), row.SetShowModes(modes);
        row.Make(parent.Window());
        std::string places;
        for (const HWND part : {row.Part(kLine), row.Part(kTitle), row.Part(kModes), HWND{row.m_slider}}) {
            const RECT at = RectInParent(part);
            places += part ? std::to_string(at.left) + " " + std::to_string(at.top) + " " : "no ";
        }
        EXPECT_EQ(places, expected);
    }
}

// With its window alone; the held state is the host's, and the slider goes by the mode as well.
TEST_F(ModeShutter, LooksDisabledWithItsWindow) {
    Device device;
    Row row(parent, device);
    const auto expect = [&](const char* usable) {
        const bool list = IsWindowEnabled(row.Part(kModes)), edit = IsWindowEnabled(row.Edit());
        EXPECT_EQ(std::string(list ? "+" : "-") + (edit ? '+' : '-'), usable);
    };
    row.SetEnabled(false), expect("+-");
    EnableWindow(row, FALSE), row.SetMode(eKxShutterMode_Aperture), expect("--");
    row.Update(&device, true, true, true, false), expect("--");  // the parts are made anew
    EnableWindow(row, TRUE), expect("++");
}

}  // namespace
