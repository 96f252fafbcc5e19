// The host's pages at the scale of their monitor, where every window stands as at 96 dpi with that zoom.
#include <bench/bench.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <fstream>

#include <host/gallery_devices.h>
#include <host/host_microscope.h>
#include <host/pages/pages.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_translation.h>

namespace {

using namespace kx::test;

// Inside of a host's callback as well.
std::function<void()> s_onZoom;

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (KX_RelayScale(window, message, wParam, lParam)) return 0;
    if (message == CKxGUILayoutManager::ZoomChangedMessage && s_onZoom) std::exchange(s_onZoom, nullptr)();
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeHost() {
    WNDCLASSW description{};
    description.lpfnWndProc = HostProc;
    description.lpszClassName = L"KxScaleTest";
    RegisterClassW(&description);
    return CreateWindowW(L"KxScaleTest", L"", WS_OVERLAPPEDWINDOW, 0, 0, 1000, 800, nullptr, nullptr, nullptr, nullptr);
}

// A window of a page: class and id, then its place in its parent, its size and the height of its font.
using Place = std::pair<std::string, std::array<long, 5>>;

struct PagesAtScale : testing::Test {
    PagesAtScale() : host_(MakeHost()) {
        KX_FollowScaleOf(host_);
        Build();
    }
    ~PagesAtScale() override {
        pages_.clear();
        KX_FollowScaleOf(nullptr);
        CKxGUILayoutManager::SetGuiZoom(1.0);
        DestroyWindow(host_);
    }

    void Build() {
        pages_ = MakePages(microscope_, gallery_);
        for (const auto& page : pages_)
            page->Build(host_);
        Fit();
    }
    // As a host does when it has a new size.
    void Fit() const {
        for (const auto& page : pages_)
            page->FitTo({0, 0, CKxGUILayoutManager::Zoomed(1000), CKxGUILayoutManager::Zoomed(700)});
    }
    void Send(UINT dpi, const RECT* offered) const {
        SendMessageW(host_, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(offered));
        Fit();
    }
    void Zoom(double zoom) const {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        Fit();
    }

    // A number for what each page shows in light colours, but for what the platform draws to its own measures: the
    // arrow of a drop-down, the scroll bar of a list view.
    std::vector<std::size_t> Looks() const {
        const auto hide = [](HWND window, LPARAM) -> BOOL {
            wchar_t name[80] = L"";
            GetClassNameW(window, name, 80);
            for (const wchar_t* each : {L"ComboBox", L"ScrollBar", L"KxDevUI_Table"})
                if (std::wcscmp(name, each) == 0) ShowWindow(window, SW_HIDE);
            return TRUE;
        };
        KX_SetColorScheme(eKxColorScheme_Light);
        SetWindowPos(host_, nullptr, 0, 0, 1280, 1000, SWP_NOZORDER | SWP_SHOWWINDOW);
        std::vector<std::size_t> looks;
        for (const auto& page : pages_) {
            page->SetVisible(true);
            SetWindowPos(*page, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
            EnumChildWindows(*page, hide, 0);
            Pump();
            const Picture picture = Picture::OnScreen(*page).Part({0, 0, 1240, 900});
            page->SetVisible(false);
            picture.Save("page " + std::to_string(looks.size()) + " at " + std::to_string(GetDpiForSystem()));
            std::size_t sum = 0;
            for (int i = 0; i < picture.Width() * picture.Height(); ++i)
                sum = sum * 31 + picture.Pixel(i % picture.Width(), i / picture.Width());
            looks.push_back(sum);
        }
        KX_SetColorScheme(eKxColorScheme_System);
        return looks;
    }

    // Of every window of every page.
    std::vector<Place> Places() const {
        std::vector<Place> places;
        for (const auto& page : pages_)
            EnumChildWindows(*page, Tell, reinterpret_cast<LPARAM>(&places));
        EXPECT_GT(places.size(), 250u);
        return places;
    }

    HWND host_;
    HostMicroscope microscope_{L""};
    GalleryDevices gallery_;
    std::vector<std::unique_ptr<Page>> pages_;

    // From the left edge of a window to what stands beside it.
    static long RoomBeside(HWND window) {
        const RECT own = RectInParent(window);
        RECT parent{};
        GetClientRect(GetParent(window), &parent);
        long right = parent.right;
        for (HWND each = GetWindow(window, GW_HWNDFIRST); each; each = GetWindow(each, GW_HWNDNEXT)) {
            const RECT other = RectInParent(each);
            const bool beside = other.left >= own.right && other.top < own.bottom && other.bottom > own.top;
            if (beside && (GetWindowLongW(each, GWL_STYLE) & WS_VISIBLE)) right = std::min(right, other.left);
        }
        return right - own.left;
    }

    static BOOL CALLBACK Tell(HWND window, LPARAM list) {
        char name[80] = "";
        GetClassNameA(window, name, sizeof name);
        // The platform's own measures: a header ends at its list's scroll bar, a field at its combo box's arrow, and a
        // dialog shows nothing in its font.
        char parent[80] = "";
        GetClassNameA(GetParent(window), parent, sizeof parent);
        if (std::strcmp(name, "SysHeader32") == 0 || std::strcmp(parent, "ComboBox") == 0) return TRUE;
        LOGFONTW font{};
        if (!GetWindow(window, GW_CHILD))
            GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
        const RECT rect = RectInParent(window);
        const std::string id = std::to_string(GetDlgCtrlID(window));
        reinterpret_cast<std::vector<Place>*>(list)->push_back(
            {name + (' ' + id), {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, font.lfHeight}});
        return TRUE;
    }
};

TEST_F(PagesAtScale, FollowTheMonitorAndComeBack) {
    const auto first = Places();
    Zoom(1.5);
    const auto zoomed = Places();
    Zoom(1.0);
    ASSERT_EQ(Places(), first);

    const RECT offered{30, 40, 1230, 1000};
    Send(144, &offered);
    EXPECT_EQ(PlaceOf(host_), "30 40 1200 960");
    EXPECT_EQ(Places(), zoomed);
    EXPECT_EQ(CKxGUILayoutManager::GetGuiZoom(), 1.5);
    EXPECT_EQ(CKxGUILayoutManager::GetUserZoom(), 1.0);
    EXPECT_EQ(CKxGUILayoutManager::GetGuiScale(), 1.5);
    // Zoom and scale multiply before anything is rounded.
    Zoom(1.25);
    const auto both = Places();
    Send(96, nullptr);
    Zoom(1.5 * 1.25);
    EXPECT_EQ(Places(), both);
    Zoom(1.0);
    EXPECT_EQ(Places(), first);
}

TEST_F(PagesAtScale, TakeNothingOfWhatIsNoScale) {
    const auto first = Places();
    const RECT offered{30, 40, 900, 700};
    const std::string before = PlaceOf(host_);
    Send(0, &offered);
    Send(20000, &offered);
    EXPECT_EQ(PlaceOf(host_), before);
    EXPECT_EQ(Places(), first);

    Send(480, nullptr);
    EXPECT_EQ(CKxGUILayoutManager::GetGuiZoom(), 5.0);
    int told = 0;
    s_onZoom = [&told] { ++told; };
    Send(480, nullptr);
    EXPECT_EQ(told, 0);
    // The window goes back to another monitor while it is being told of the first.
    s_onZoom = [this] { Send(96, nullptr); };
    Send(144, nullptr);
    EXPECT_EQ(CKxGUILayoutManager::GetGuiScale(), 1.0);
    EXPECT_EQ(Places(), first);
    // The user's zoom changes then: the monitor's scale is taken all the same.
    s_onZoom = [this] { Zoom(2.0); };
    Send(144, &offered);
    EXPECT_EQ(PlaceOf(host_), "30 40 870 660");
    EXPECT_EQ(CKxGUILayoutManager::GetGuiZoom(), 3.0);
    Send(96, nullptr);
    s_onZoom = nullptr;

    // Another window's messages say nothing.
    const HWND other = MakeHost();
    SendMessageW(other, WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
    EXPECT_EQ(CKxGUILayoutManager::GetGuiScale(), 1.0);
    DestroyWindow(other);
}

// But for the shutter that fits its title, which does not grow in proportion.
TEST_F(PagesAtScale, DifferByRoundingWhereTheyAreMade) {
    Zoom(1.5);
    const auto brought = Places();
    Build();
    const auto made = Places();
    ASSERT_EQ(made.size(), brought.size());
    for (std::size_t i = 0; i < made.size(); ++i) {
        const auto& [name, measures] = made[i];
        if (name == "KxDevUI_Shutter 1704" || name == "Button 10200") continue;
        for (std::size_t k = 0; k < measures.size(); ++k)
            EXPECT_NEAR(measures[k], brought[i].second[k], 1) << name;
    }
}

// A bold face is not a normal one made bolder, as it is under Wine: it can be a fifth wider.
TEST_F(PagesAtScale, LeaveAFifthOfTheirRoomToBoldTexts) {
    const HMODULE host = LoadLibraryExW(L"kxdevhost.exe", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_TRUE(host);
    for (const WORD language :
         std::initializer_list<WORD>{LANG_ENGLISH, LANG_GERMAN, LANG_FRENCH, LANG_SPANISH, LANG_JAPANESE}) {
        if (const HRSRC texts = FindResourceW(host, MAKEINTRESOURCEW(language), RT_RCDATA))
            KX_AddCatalogue(language, static_cast<const char*>(LockResource(LoadResource(host, texts))),
                            SizeofResource(host, texts));
        CKxLocale::SetModuleLangId(MAKELANGID(language, SUBLANG_NEUTRAL));
        Build();
        long bold = 0;
        const auto measure = [](HWND window, LPARAM count) -> BOOL {
            const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
            LOGFONTW type{};
            const std::wstring text = TextOf(window);
            if (!GetObjectW(font, sizeof type, &type) || type.lfWeight < FW_BOLD || text.empty()) return TRUE;
            const kx::ui::WindowDC dc(window);
            const kx::ui::Selection selected(dc, font);
            SIZE size{};
            GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
            // Captions have the size of their text, and may become as wide as there is nothing beside them.
            RECT room{};
            GetClientRect(window, &room);
            if (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TRANSPARENT) room.right = RoomBeside(window);
            EXPECT_LE(size.cx * 6 / 5, room.right)
                << Narrow(text) << ' ' << PlaceOf(window) << std::hex << ' ' << GetWindowLongW(window, GWL_STYLE);
            ++*reinterpret_cast<long*>(count);
            return TRUE;
        };
        for (const auto& page : pages_)
            EnumChildWindows(*page, measure, reinterpret_cast<LPARAM>(&bold));
        EXPECT_GT(bold, 10);
    }
    FreeLibrary(host);
    CKxLocale::SetModuleLangId(MAKELANGID(LANG_ENGLISH, SUBLANG_NEUTRAL));
}

// system.sh compares what this writes at both scales of the system.
TEST_F(PagesAtScale, AreTheSameWhateverTheSystemsScaleIs) {
    Zoom(1.5 / CKxGUILayoutManager::GetGuiScale());
    EXPECT_EQ(CKxGUILayoutManager::GetGuiZoom(), 1.5);
    Build();
    const auto places = Places();
    const char* const name = std::getenv("KX_PLACES");
    std::ofstream file(name ? name : "NUL");
    file << GetDpiForSystem() << '\n';
    for (const Place& place : places)
        file << testing::PrintToString(place) << '\n';
    for (const std::size_t look : Looks())
        file << "looks " << look << '\n';
}

}  // namespace
