// The shutter: where it puts its parts, what a click asks, what an update shows, and what it bears from its host.
#include "lamps.h"

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/framework/devgui_messages.h>

#include <commctrl.h>

#include <climits>

namespace {

using namespace kx::test;

constexpr int kId = 7, kTitle = 10100, kButton = 10200, kRelease = 0x202;

class Host : public Asking<CKxDevUI_Shutter> {
public:
    using Asking::Asking;

    HWND Make(HWND parent) { return Create(parent, 20, 20, -1, -1, true, true); }
    HWND Title() const { return GetDlgItem(m_hWnd, kTitle); }
    HWND Button() const { return GetDlgItem(m_hWnd, kButton); }
    static std::vector<long> Slots() {
        return SlotsOf(&Host::UpdateShutterIcon, &Host::OnStateChangeRequest, &Host::OnRenameDlgRequest);
    }

    bool derived = true;  // or the parent is asked, as by the base
    using CKxDevUI_Shutter::m_imageOff, CKxDevUI_Shutter::m_imageOn;

protected:
    bool UpdateShutterIcon(unsigned id, int grabber) override {
        Told("Icon", id != 0, grabber);
        return CKxDevUI_Shutter::UpdateShutterIcon(id, grabber);
    }
    void OnStateChangeRequest(bool state, bool& refuse) override {
        derived ? Asked(refuse, "State", state) : CKxDevUI_Shutter::OnStateChangeRequest(state, refuse);
    }
    void OnRenameDlgRequest() override { Told("Rename"); }
};

// A shutter in a window; the record holds what comes after that.
class Shutter : public testing::Test {
protected:
    void SetUp() override { Make(); }
    Host& Make() {
        shutter = std::make_unique<Host>(parent.Record());
        shutter->SetId(kId);
        shutter->Make(parent.Window());
        parent.Record().Clear();
        return *shutter;
    }
    std::string Heard() { return parent.Record().Take(); }

    RecordingParent parent;
    std::unique_ptr<Host> shutter;
};

std::wstring TipOf(const Host& shutter) {
    wchar_t text[80] = L"";
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V1_SIZE;
    info.hwnd = shutter;
    info.uId = reinterpret_cast<UINT_PTR>(shutter.Button());
    info.lpszText = text;
    SendMessageW(KX_GetToolTipWindow(shutter.Button()), TTM_GETTEXTW, 79, reinterpret_cast<LPARAM>(&info));
    return text;
}

TEST(ShutterRules, FitTheWidthToTheTitle) {
    const struct {
        long text;
        int minimum, maximum;
        double zoom;
        long control, title;
    } cases[] = {{5, 64, 128, 1, 64, 34},     {75, 64, 128, 1.25, 90, 52},           {1000, 64, 128, 1.5, 128, 83},
                 {50, 200, 100, 1, 200, 170}, {LONG_MAX, 0, INT_MAX, 8, 4096, 3856}, {50, 64, 128, kNaN, 0, 0}};
    for (const auto& [text, minimum, maximum, zoom, control, title] : cases) {
        const auto width = kx::shutter::FitWidth(text, minimum, maximum, zoom);
        EXPECT_EQ(std::pair(width.control, width.title), std::pair(control, title)) << text;
    }
}

TEST(ShutterRules, HaveAnImageForEachCase) {
    for (int i = 0; i < 24; ++i) {
        const wchar_t* const name = kx::shutter::ImageName(i / 4 - 1, i & 1, i & 2);
        EXPECT_NE(CKxBitmapPool::AddImageBaseUI(name), CKxBitmapPool::NoImage) << Narrow(name);
    }
    EXPECT_EQ(GetCommonImageFromPool(1101), CKxBitmapPool::AddImageBaseUI(L"SHUTTER_OPEN"));
    EXPECT_EQ(GetCommonImageFromPool(1102), GetShutterImageFromPool(4711, false));
    EXPECT_EQ(GetCommonImageFromPool(1103), CKxBitmapPool::NoImage);
}

TEST_F(Shutter, AsksForTheOtherStateAndObeysTheAnswer) {
    const struct {
        const char* name;
        void (*make)(Host& shutter);
        int asked;  // how often the host is asked for the other state
    } gestures[] = {
        {"click", [](Host& s) { Click(s.Button(), 12, 12); }, 1},
        {"double click", [](Host& s) { DoubleClick(s.Button(), 12, 12); }, 2},
        {"release beside it", [](Host& s) { Press(s.Button(), 12, 12), MoveTo(s, 2, 38), Release(); }, 1},
        {"space bar", [](Host& s) { s.SetFocus(), Key(VK_SPACE); }, 1},
        {"the button's own message", [](Host& s) { SendMessageW(s, WM_COMMAND, kButton, 0); }, 0},
        {"the same message by hand", [](Host& s) { SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton, kRelease), 0); }, 1},
        {"another id", [](Host& s) { SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton + 1, kRelease), 0); }, 0},
        {"a capture that is lost", [](Host& s) { Press(s.Button(), 12, 12), SetCapture(GetParent(s)), Release(); }, 0},
        {"the message while disabled",
         [](Host& s) { s.SetEnabled(false), SendMessageW(s, WM_COMMAND, MAKEWPARAM(kButton, kRelease), 0); }, 0},
        {"a click by program", [](Host& s) { SendMessageW(s.Button(), BM_CLICK, 0, 0); }, 1},
    };
    for (int way = 0; way < 8; ++way) {
        for (const auto& gesture : gestures) {
            const bool agrees = way & 2;
            bool state = way & 4;
            SCOPED_TRACE(gesture.name + std::to_string(way));
            parent.Answer(WM_COMMAND, agrees);
            Make().answer = !agrees;
            shutter->derived = way & 1;
            shutter->SetState(state);
            gesture.make(*shutter);
            Pump();
            std::vector<Expected> expected;
            for (int i = 0; i < gesture.asked; ++i) {
                expected.push_back(shutter->derived ? Call("State", !state) : Command(kId, 0, *shutter));
                if (agrees) state = !state;
            }
            EXPECT_TRUE(parent.Record().Matches(expected));
            EXPECT_EQ(shutter->GetState(), state);
            Release();
        }
    }
}

TEST_F(Shutter, OpensTheMenuWithTheRightButton) {
    std::pair<Recorder&, int> menu{parent.Record(), 0};
    KX_SetMenuHandler(
        [](HWND, const CKxMenu& items, int x, int y, void* context) {
            auto& [record, chosen] = *static_cast<decltype(menu)*>(context);
            record.Call("Menu", items.GetCount(), items.GetCommand(0), items.GetText(0), x, y);
            return chosen;
        },
        &menu);
    RECT place{};
    GetWindowRect(shutter->Button(), &place);
    const std::string opened = CallText("Menu", 1, 10000, L"Shutter Parameters...", place.left, place.bottom);
    for (const int chosen : {0, 10000}) {
        menu.second = chosen;
        Click(shutter->Button(), 5, 5, Button::Right);
        EXPECT_EQ(Heard(), chosen ? opened + " Rename()" : opened);
    }
    shutter->RenameEnabled(false);
    Click(shutter->Button(), 5, 5, Button::Right);
    EXPECT_EQ(Heard(), "");
    KX_SetMenuHandler(nullptr, nullptr);
    EXPECT_EQ(shutter->PopupMenu(nullptr, 0, 0), 0);
}

TEST_F(Shutter, ShowsWhatIsAskedForAndNothingElse) {
    Lamp device(eKxShutterType_Dia);
    device.SetLocked(true);
    device.Open(true);
    for (int flags = 0; flags < 16; ++flags) {
        SCOPED_TRACE(flags);
        const bool a = flags & 1, b = flags & 2, c = flags & 4, byMessage = flags & 8, asked[3] = {a, b, c};
        Make();
        const HWND before = shutter->Button();
        if (byMessage) SendMessageW(*shutter, 0x0500, device.GetLogDevId(), reinterpret_cast<LPARAM>(asked));
        EXPECT_TRUE(byMessage || shutter->Update(device.GetLogDevId(), a, b, c));
        EXPECT_EQ(shutter->GetEnabled(), !(a || b));
        EXPECT_EQ(IsWindowEnabled(shutter->Button()) != FALSE, !(a || b));
        EXPECT_EQ(TipOf(*shutter), b ? L"Lamp & shutter" : L"");
        EXPECT_EQ(shutter->GetType(), b ? eKxShutterType_Dia : eKxShutterType_Epi);
        EXPECT_EQ(TextOf(shutter->Title()), b ? L"DIA" : L"EPI");
        EXPECT_EQ(shutter->GetState(), c);
        EXPECT_EQ(shutter->m_imageOn == CKxBitmapPool::AddImageBaseUI(L"SHUTTER_DIA_OPEN"), c);
        EXPECT_EQ(shutter->Button() != before, a && byMessage) << "made anew by the device's update alone";
        EXPECT_EQ(Heard(), c ? "Icon(true, 0)" : "");
    }
}

TEST_F(Shutter, LocksUnlocksAndTitles) {
    Lamp device(static_cast<EKxShutterType>(9));
    const unsigned id = device.GetLogDevId();
    shutter->Update(id, false, true, false);
    EXPECT_EQ(shutter->GetTitle(), L"EPI") << "a type without a title keeps the old one";
    device.title = L"Left <b>&amp;</b> lamp";
    shutter->Update(&device, true, true, true);
    EXPECT_EQ(TextOf(shutter->Title()), L"Left <b>&amp;</b> lamp");
    device.SetLocked(true);
    shutter->Update(id, true, false, false);
    shutter->SetEnabled(true);
    EXPECT_FALSE(shutter->GetEnabled());
    device.SetLocked(false);
    for (int i = 0; i < 2; ++i) {
        shutter->Update(id, true, false, false);
        EXPECT_TRUE(IsWindowEnabled(shutter->Button())) << "also after the host has disabled it";
        shutter->SetEnabled(false);
    }
    CKxDeviceRegistry::SetGrabberActive(true);
    shutter->Update(&device, false, false, true);
    EXPECT_EQ(shutter->m_imageOff, CKxBitmapPool::AddImageBaseUI(L"SHUTTER_CLOSED_LIVE"));
    CKxDeviceRegistry::SetGrabberActive(false);
}

TEST_F(Shutter, RefusesWhatIsNoShutter) {
    auto device = std::make_unique<Lamp>(eKxShutterType_Dia);
    const unsigned id = device->GetLogDevId();
    Host windowless(parent.Record());
    EXPECT_TRUE(windowless.Update(id, true, true, true));
    EXPECT_EQ(windowless.GetTitle(), L"DIA");
    shutter->Update(id, true, true, true);
    device->Open(true);
    device->fails = true;
    parent.Record().Clear();
    EXPECT_FALSE(shutter->Update(device.get(), true, true, true));
    EXPECT_FALSE(shutter->Update(id, true, true, true));
    EXPECT_FALSE(shutter->Update(static_cast<IKxDeviceShutter*>(nullptr), true, true, true));
    CKxSimLightPath other(L"Path", {L"Eye", L"Camera"});
    for (const unsigned each : {0u, CKxDeviceRegistry::Add(other), 99999u})
        kx::ui::SendDeviceBand(*shutter, each, kx::ui::ShutterBand{true, true, true});
    SendMessageW(*shutter, 0x0500, id, 0);
    EXPECT_EQ(Heard(), "");
    shutter->Update(id, false, false, true);
    EXPECT_EQ(shutter->m_imageOff, CKxBitmapPool::AddImageBaseUI(L"SHUTTER_DIA_CLOSED")) << "as held";
    device.reset();
    EXPECT_TRUE(shutter->Update(id, true, true, true));
    EXPECT_EQ(shutter->GetTitle(), L"EPI");
    EXPECT_EQ(shutter->m_imageOff, GetCommonImageFromPool(1102));
}

// A pixel painted over the button tells whether it was drawn again.
TEST_F(Shutter, DrawsOnlyWhatHasChanged) {
    Pump();
    const auto isDrawn = [&](const std::function<void()>& act) {
        SetPixel(kx::ui::WindowDC(shutter->Button()), 10, 10, RGB(1, 2, 3));
        act();
        return GetPixel(kx::ui::WindowDC(shutter->Button()), 10, 10) != RGB(1, 2, 3);
    };
    EXPECT_FALSE(
        isDrawn([&] { shutter->SetState(false), shutter->SetTitle(L"EPI"), shutter->SetEnabled(true), Pump(); }));
    EXPECT_TRUE(isDrawn([&] { shutter->SetState(true); }));
    EXPECT_TRUE(isDrawn([&] { EXPECT_FALSE(static_cast<CKxDevUI_Shutter&>(*shutter).UpdateShutterIcon(0, 0)); }));
}

TEST_F(Shutter, IsMadeOfTitleAndButton) {
    const struct {
        bool left, inside;
        const char *title, *button;
    } cases[] = {{false, false, "0 0 90 16", "8 16 24 24"},
                 {true, false, "0 12 66 16", "66 8 24 24"},
                 {false, true, "0 0 0 0", "0 0 90 40"}};
    Lamp device(eKxShutterType_Epi);
    for (const auto& each : cases) {
        shutter->SetSize(90, 40);
        shutter->SetTitlePosition(each.left, -1);
        shutter->SetTitleInButton(each.inside);
        ASSERT_TRUE(shutter->Make(parent.Window()));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(PlaceOf(*shutter), "20 20 90 40");
            EXPECT_EQ(PlaceOf(shutter->Title()), each.title);
            EXPECT_EQ(PlaceOf(shutter->Button()), each.button);
            EXPECT_EQ(GetWindowLongW(shutter->Title(), GWL_STYLE) & SS_TYPEMASK, each.left ? SS_RIGHT : SS_LEFT);
            shutter->Update(&device, true, true, true);
        }
    }
    EXPECT_EQ(GetWindowLongPtrW(*shutter, 0), 5015);
    EXPECT_EQ(Host::Slots(), (std::vector<long>{19, 20, 21}));
    CKxDevUI_MechanicalShutter small;
    small.Create(parent.Window(), 5, 5, -1, -1);
    EXPECT_EQ(PlaceOf(small), "5 5 30 30");
    EXPECT_EQ(PlaceOf(small.GetButtonHandle()), "7 14 15 15");
    EXPECT_EQ(PlaceOf(GetDlgItem(small, kTitle)), "0 0 30 14");
    EXPECT_FALSE(small.Create(nullptr, LONG_MAX, LONG_MIN, LONG_MAX, 0));
}

TEST_F(Shutter, FitsItsTitle) {
    const Zoom zoom(1.5);
    shutter->SetAutomaticallyResizable(true, 64, 128);
    shutter->SetTitleInButton(true);
    shutter->SetSize(64, 24);
    shutter->Make(parent.Window());
    for (const auto& [length, width] : {std::pair{10000, "192 36"}, {0, "96 36"}}) {
        shutter->SetTitle(std::wstring(std::size_t(length), L'W').c_str());
        EXPECT_EQ(PlaceOf(*shutter), std::string("20 20 ") + width);
        EXPECT_EQ(PlaceOf(shutter->Button()), std::string("0 0 ") + width);
    }
}

TEST_F(Shutter, TakesOverADialogsControls) {
    for (const bool titled : {true, false}) {
        RecordingParent dialog;
        const auto add = [&](const wchar_t* windowClass, int id, long x, long y) {
            return AddChild(dialog.Window(), windowClass, id, {x, y, x + 60, y + 20}, 0, L"Dia lamp");
        };
        const HWND before = add(L"EDIT", 1, 0, 0), title = titled ? add(L"STATIC", 2, 30, 42) : nullptr;
        const HWND button = add(L"BUTTON", 3, 100, 40), after = add(L"EDIT", 4, 0, 80);
        Host taken(dialog.Record());
        EXPECT_FALSE(taken.Create(HWND{}, title));
        EXPECT_FALSE(taken.Create(before, title)) << "no button";
        ASSERT_TRUE(taken.Create(button, title));
        EXPECT_FALSE(Host(dialog.Record()).Create(button, nullptr)) << "taken already";
        EXPECT_EQ(GetDlgItem(dialog.Window(), 3), HWND{taken});
        EXPECT_EQ(PlaceOf(taken), titled ? "30 40 130 22" : "100 40 60 20");
        EXPECT_EQ(GetWindow(taken, GW_HWNDPREV), before);
        EXPECT_EQ(GetWindow(taken, GW_HWNDNEXT), after);
        EXPECT_EQ(PlaceOf(taken.Title()), titled ? "0 2 60 20" : "0 0 0 0");
        EXPECT_EQ(PlaceOf(taken.Button()), titled ? "70 0 60 20" : "0 0 60 20");
        EXPECT_EQ(taken.GetTitle(), titled ? L"Dia lamp" : L"EPI");
        dialog.Record().Clear();
        Click(taken.Button(), 5, 5);
        EXPECT_EQ(dialog.Record().Take(), "State(true)");
    }
}

}  // namespace
