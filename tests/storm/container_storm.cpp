// Storms against containers: made empty, from a template, from a part of one.
#include "storm.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <commctrl.h>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui_container.h>

namespace kx::test::storm {
namespace {

enum class Made { Empty, FromTemplate, FromPart };

constexpr int nestedId = 4;

class Panel : public CKxDevUI_Container {
public:
    void SetTitleKept() { m_storeTitle = true; }

#ifdef KX_PLANT_FAULT
protected:
    // The planted fault: a new brush for every label that asks, which nobody deletes.
    LRESULT OnCtlColorStatic(UINT, WPARAM, LPARAM) override {
        return reinterpret_cast<LRESULT>(CreateSolidBrush(KX_GetSysColor(COLOR_BTNFACE)));
    }
#endif
};

HWND MakeChild(const wchar_t* className, DWORD style, int id, HWND parent) {
    return CreateWindowExW(0, className, L"text", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 10 + 60 * id, 10, 50, 24,
                           parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

class ContainerSubject : public Subject {
public:
    explicit ContainerSubject(Made made) : made_(made), panel_(std::make_unique<Panel>()) {}

    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        // A host may end the panel while being told something by it.
        for (const UINT message : std::initializer_list<UINT>{WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_DRAWITEM})
            parent.Answer(message, [this](WPARAM, LPARAM) { return Callback(); });
        if (!panel_) panel_ = std::make_unique<Panel>();
        MakePanel();
        if (!HWND{*panel_}) return;
        panel_->Init(true);
        if (made_ == Made::Empty) {
            panel_->InsertWindow(MakeChild(L"BUTTON", BS_PUSHBUTTON, 1, *panel_));
            panel_->InsertWindow(MakeChild(L"EDIT", ES_AUTOHSCROLL, 2, *panel_));
            panel_->InsertWindow(MakeChild(L"COMBOBOX", CBS_DROPDOWNLIST, 3, *panel_));
        }
        Nest();
    }

    CKxDevUI_Base* Control() override { return panel_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!panel_ || !HWND{*panel_}) return windows;
        windows.push_back({*panel_, true});
        windows.push_back({*panel_, true});
        AddChildren(*panel_, windows);
        return windows;
    }

    Step Operate(Random& random) override {
        switch (random.Below(12)) {
        case 0: return {"inserting a window", "", [this] { InsertOne(); }};
        case 1: return {"destroying a child", "", [this, at = random.Below(4)] { DestroyOne(at); }};
        case 2: return {"inserting a container", "", [this] { Nest(); }};
        case 3: return {"deleting the nested container", "", [this] { nested_.reset(); }};
        case 4: return {"creating again", "", [this] { Create(*parent_); }};
        case 5: return {"destroying in a callback", "", [this, &random] { EndInCallback(random, Pending::Destroy); }};
        case 6: return {"deleting in a callback", "", [this, &random] { EndInCallback(random, Pending::Delete); }};
        case 7: return {"Destroy", "", [this] { Silently([this] { panel_->Destroy(); }); }};
        case 8: return {"destroying the window", "", [this] { DestroyWindow(*panel_); }};
        case 9: return {"deleting the object", "", [this] { Silently([this] { DeletePanel(); }); }};
        case 10: return {"inserting what cannot be", "", [this] { InsertWrongly(); }};
        default: return {"asking", "", [this, id = random.Between(-1, 9)] { Ask(id); }};
        }
    }

    std::string Check() override {
        if (!wrong_.empty()) return wrong_;
        if (!panel_) return {};
        const HWND window = *panel_;
        if (window && GetWindowLongPtrW(window, GWLP_USERDATA) != reinterpret_cast<LONG_PTR>(Root(panel_.get())))
            return "the panel's window does not point to the panel";
        if (inserted_ && nested_ && panel_->GetElement(nestedId) != nested_.get())
            return "the nested container cannot be found";
        if (!nested_ && panel_->GetElement(nestedId)) return "a nested container is found that is gone";
        const HWND inner = nested_ ? HWND{*nested_} : nullptr;
        if (inner && !IsWindow(inner)) return "the nested container holds the handle of a window that is gone";
        if (inner && inserted_ && GetParent(inner) != window) return "the nested container lies in another window";
        if (window && ++checks_ % 16 == 0 && !PaintsItsBackground(window, Background()))
            return "the background is not painted";
        return {};
    }

    void Destroy() override {
        if (panel_) panel_->Destroy();
        if (panel_ && HWND{*panel_}) wrong_ = "the panel keeps its window";
        nested_.reset();
        // An object that is deleted with its window; the other order is one of the operations.
        panel_.reset();
    }

private:
    enum class Pending { Nothing, Destroy, Delete };

    static CKxDevUI_Base* Root(CKxDevUI_Base* object) { return object; }

    // A dialog is painted by the platform, which knows nothing of schemes.
    COLORREF Background() const {
        return made_ == Made::Empty ? KX_GetSysColor(COLOR_BTNFACE) : GetSysColor(COLOR_BTNFACE);
    }

    void MakePanel() {
        inserted_ = false;
        const HINSTANCE module = GetModuleHandleW(nullptr);
        const HWND parent = parent_->Window();
        switch (made_) {
        case Made::Empty: panel_->Create(parent, 5, 5, 320, 200, true, true); break;
        case Made::FromTemplate: panel_->CreateFromDlg(parent, 5, 5, L"StormDialog", module, false); break;
        case Made::FromPart: panel_->CreateFromDlgPart(parent, 5, 5, 250, 80, L"StormDialog", module); break;
        }
    }

    void Nest() {
        if (!panel_ || !HWND{*panel_}) return;
        nested_ = std::make_unique<Panel>();
        nested_->SetId(nestedId);
        nested_->Create(*panel_, 20, 60, 120, 60, true, true);
        if (!HWND{*nested_}) return;
        nested_->InsertWindow(MakeChild(L"STATIC", 0, 5, *nested_));
        nested_->InsertWindow(MakeChild(L"BUTTON", BS_AUTOCHECKBOX, 6, *nested_));
        panel_->InsertElement(nested_.get());
        inserted_ = true;
    }

    // The platform's edit notifies for ever the parent that it was made in; a button follows to another.
    void InsertOne() {
        if (!HWND{*panel_} || panel_->GetWindows().size() >= 12) return;
        panel_->InsertWindow(MakeChild(L"EDIT", ES_MULTILINE, 7, *panel_));
        panel_->InsertWindow(MakeChild(L"BUTTON", BS_NOTIFY, 8, parent_->Window()));
    }

    void DestroyOne(int at) {
        const auto windows = panel_->GetWindows();
        if (at < static_cast<int>(windows.size())) DestroyWindow(*std::next(windows.begin(), at));
    }

    void InsertWrongly() {
        panel_->InsertWindow(nullptr);
        panel_->InsertWindow(*panel_);
        panel_->InsertWindow(parent_->Window());
        panel_->InsertElement(nullptr);
        panel_->InsertElement(panel_.get());
        if (nested_) nested_->InsertElement(panel_.get());
    }

    void Ask(int id) {
        RECT area{};
        panel_->UnionArea(id, &area, true);
        panel_->UnionArea(id, nullptr, true);
        panel_->GetElement(id);
        panel_->GetWindow(id);
        panel_->BoldifyCaptions();
        panel_->SetTitleKept();
    }

    void DeletePanel() {
        panel_.reset();
        inserted_ = false;
    }

    // While it destroys itself, a panel tells its parent nothing.
    void Silently(const std::function<void()>& end) {
        parent_->Record().Clear();
        end();
        inserted_ = false;
        if (!parent_->Record().Entries().empty())
            wrong_ = "the parent was told of a destruction: " + parent_->Record().Entries().front().text;
    }

    // Not in a notification that comes from one of the platform's controls: its edit does not survive its own end
    // there.
    void EndInCallback(Random& random, Pending end) {
        pending_ = end;
        NMHDR header{*panel_, 1, NM_CLICK};
        switch (random.Below(4)) {
        case 0: SendMessageW(*panel_, WM_COMMAND, 1, 0); break;
        case 1: SendMessageW(*panel_, WM_HSCROLL, SB_LINEDOWN, 0); break;
        case 2: SendMessageW(*panel_, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&header)); break;
        default:
            if (nested_) SendMessageW(*nested_, WM_COMMAND, 1, 0);
            break;
        }
        pending_ = Pending::Nothing;
    }

    LRESULT Callback() {
        switch (std::exchange(pending_, Pending::Nothing)) {
        case Pending::Destroy:
            if (panel_) Silently([this] { panel_->Destroy(); });
            break;
        case Pending::Delete: Silently([this] { DeletePanel(); }); break;
        case Pending::Nothing: break;
        }
        return 0;
    }

    // The inner windows of a combo box are its own.
    static void AddChildren(HWND parent, std::vector<Target>& windows) {
        for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t name[32] = L"";
            GetClassNameW(child, name, 32);
            const bool ours = std::wstring_view(name) == L"KxDevUI_Container";
            windows.push_back({child, ours});
            if (ours) AddChildren(child, windows);
        }
    }

    Made made_;
    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Panel> panel_;
    std::unique_ptr<Panel> nested_;
    bool inserted_ = false;
    Pending pending_ = Pending::Nothing;
    unsigned checks_ = 0;
    std::string wrong_;
};

TEST(ContainerStorm, MadeEmpty) {
    Rage("container made empty", [] { return std::make_unique<ContainerSubject>(Made::Empty); });
}

TEST(ContainerStorm, MadeFromATemplate) {
    Rage("container made from a template", [] { return std::make_unique<ContainerSubject>(Made::FromTemplate); });
}

TEST(ContainerStorm, MadeFromAPartOfATemplate) {
    Rage("container made from a part", [] { return std::make_unique<ContainerSubject>(Made::FromPart); });
}

}  // namespace
}  // namespace kx::test::storm
