// The container: made empty, from a template, from a part of one.
#include "subject.h"

#include <iterator>

#include <commctrl.h>

#include <kxdevui/framework/devgui_container.h>

namespace kx::test {
namespace {

enum class Made { Empty, FromTemplate, FromPart };

constexpr int nestedId = 4;

struct Panel : CKxDevUI_Container {
    void SetTitleKept() { m_storeTitle = true; }
};

HWND MakeChild(const wchar_t* className, DWORD style, int id, HWND parent) {
    return AddChild(parent, className, id, {10 + 60 * id, 10, 60 + 60 * id, 34}, WS_TABSTOP | style, L"text");
}

struct ContainerSubject : SubjectOf<Panel> {
    explicit ContainerSubject(Made made) : made_(made) {}

    std::vector<std::wstring> OwnTexts() const override { return {L"text", L"Caption", L"Button", L"Outside"}; }
    std::vector<Exception> Exceptions() const override {
        std::vector<Exception> exceptions{
            {Law::Silence, "2:", "the platform's edit tells of the focus by itself"},
            {Law::Disabled, "by its window", "what is in a container follows SetEnabled"},
            {Law::Disabled, "value of a client of Edit #2", "the platform writes into its own edit, enabled or not"},
            {Law::Disabled, "inserting", "what is inserted is as it comes"},
            {Law::Zoom, "inserting a window", "a host inserts at the places of the screen"},
            {Law::Focus, "inserting a container", "the host ends the one before"},
            {Law::Focus, "Button #6", "nothing is to be seen of it beyond the edge of the nested container"},
            {Law::Keys, "ComboBox #3", "is empty"},
            {Law::Zoom, "inserting a container", "a host inserts at the places of the screen"}};
        for (const char* own : {"Button #1", "Edit #2", "ComboBox #3", "Button #6", "#32770 #0"})
            exceptions.push_back({Law::Access, own, "the platform tells of the windows and dialogs of a host"});
        for (const char* code : {"1", "2", "3", "4", "5", "6", "7", "8", "9"})
            exceptions.push_back({Law::Ends, std::string("WM_COMMAND ") + code,
                                  "the platform's edit and list do not survive their end in what they tell"});
        if (made_ != Made::Empty)
            exceptions.push_back({Law::Zoom, "by itself", "a dialog knows nothing of the zoom: who holds it zooms it"});
        return exceptions;
    }

    // The platform's check marks and arrows do not grow.
    int Coarseness() const override { return 70; }
    // Not by a notification of one of the platform's controls: its edit does not survive its own end there.
    bool Provoke(int n) override {
        NMHDR header{Window(), 1, NM_CLICK};
        switch (n % 4) {
        case 0: SendMessageW(Window(), WM_COMMAND, 1, 0); break;
        case 1: SendMessageW(Window(), WM_HSCROLL, SB_LINEDOWN, 0); break;
        case 2: SendMessageW(Window(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&header)); break;
        default:
            if (nested_) SendMessageW(*nested_, WM_COMMAND, 1, 0);
        }
        return true;
    }

    void Make(HWND parent) override {
        Hear({WM_COMMAND, WM_NOTIFY, WM_HSCROLL, WM_DRAWITEM});
        inserted_ = false;
        const HINSTANCE module = GetModuleHandleW(nullptr);
        switch (made_) {
        case Made::Empty: control_->Create(parent, 5, 5, 320, 200, true, true); break;
        case Made::FromTemplate: control_->CreateFromDlg(parent, 5, 5, L"SubjectsDialog", module, false); break;
        case Made::FromPart: control_->CreateFromDlgPart(parent, 5, 5, 250, 80, L"SubjectsDialog", module); break;
        }
        if (!Window()) return;
        control_->Init(true);
        if (made_ == Made::Empty) {
            control_->InsertWindow(MakeChild(L"BUTTON", BS_PUSHBUTTON, 1, Window()));
            control_->InsertWindow(MakeChild(L"EDIT", ES_AUTOHSCROLL, 2, Window()));
            control_->InsertWindow(MakeChild(L"COMBOBOX", CBS_DROPDOWNLIST, 3, Window()));
        }
        Nest();
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"inserting a window", [this](Random&) { InsertOne(); }},
            {"destroying a child", [this](Random& r) { DestroyOne(r.Below(4)); }},
            {"inserting a container", [this](Random&) { Nest(); }},
            {"deleting the nested container", [this](Random&) { nested_.reset(); }},
            {"inserting what cannot be", [this](Random&) { InsertWrongly(); }},
            {"asking", [this](Random& r) { Ask(r.Between(-1, 9)); }},
        };
    }

    std::string CheckOwn() override {
        const HWND window = Window();
        CKxDevUI_Base* const base = control_.get();
        if (window && GetWindowLongPtrW(window, GWLP_USERDATA) != reinterpret_cast<LONG_PTR>(base))
            return "the panel's window does not point to the panel";
        if (inserted_ && nested_ && control_->GetElement(nestedId) != nested_.get())
            return "the nested container cannot be found";
        if (!nested_ && control_->GetElement(nestedId)) return "a nested container is found that is gone";
        return {};
    }

    void Ended() override { inserted_ = false; }

    void Nest() {
        nested_ = std::make_unique<Panel>();
        nested_->SetId(nestedId);
        nested_->Create(Window(), 20, 60, 120, 60, true, true);
        if (!HWND{*nested_}) return;
        nested_->InsertWindow(MakeChild(L"STATIC", 0, 5, *nested_));
        nested_->InsertWindow(MakeChild(L"BUTTON", BS_AUTOCHECKBOX, 6, *nested_));
        control_->InsertElement(nested_.get());
        inserted_ = true;
    }

    // The platform's edit notifies for ever the parent that it was made in; a button follows to another.
    void InsertOne() {
        if (control_->GetWindows().size() >= 12) return;
        control_->InsertWindow(MakeChild(L"EDIT", ES_MULTILINE, 7, Window()));
        control_->InsertWindow(MakeChild(L"BUTTON", BS_NOTIFY, 8, parent_->Window()));
    }

    void DestroyOne(int at) {
        const auto windows = control_->GetWindows();
        if (at < static_cast<int>(windows.size())) DestroyWindow(*std::next(windows.begin(), at));
    }

    void InsertWrongly() {
        control_->InsertWindow(nullptr);
        control_->InsertWindow(Window());
        control_->InsertWindow(parent_->Window());
        control_->InsertElement(nullptr);
        control_->InsertElement(control_.get());
        if (nested_) nested_->InsertElement(control_.get());
    }

    void Ask(int id) {
        RECT area{};
        control_->UnionArea(id, &area, true);
        control_->UnionArea(id, nullptr, true);
        control_->GetElement(id);
        control_->GetWindow(id);
        control_->BoldifyCaptions();
        control_->SetTitleKept();
    }

    Made made_;
    std::unique_ptr<Panel> nested_;
    bool inserted_ = false;
};

const Registered<ContainerSubject> empty("container made empty", Made::Empty);
const Registered<ContainerSubject> whole("container from a template", Made::FromTemplate);
const Registered<ContainerSubject> part("container from a part", Made::FromPart);

}  // namespace
}  // namespace kx::test
