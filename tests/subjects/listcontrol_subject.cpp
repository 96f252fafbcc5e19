// The controls with a list of values: combo box, plain and editable, and list box, of one value and of several.
#include "subject.h"

#include <bench/reader.h>

#include <kxdevui/controls/devgui_combobox.h>
#include <kxdevui/controls/devgui_listbox.h>

namespace kx::test {
namespace {

template <class List>
struct TellingList : Telling<List> {
    void OnSelectionChangeRequest(int, bool& veto) override { veto = true, this->Tell("OnSelectionChangeRequest"); }
};
struct Combo : TellingList<CKxDevUI_ComboBox> {
    void OnValueChangeRequest(const wchar_t*, bool& veto) override { veto = true, Tell("OnValueChangeRequest"); }
};
struct List : TellingList<CKxDevUI_ListBox> {
    void OnSelectionsChangeRequest(const std::vector<int>&, bool& veto) override {
        veto = true, Tell("OnSelectionsChangeRequest");
    }
};

template <class Control, bool special>
struct ListSubject : SubjectOf<Control> {
    static constexpr bool kIsCombo = std::is_same_v<Control, Combo>;
    using SubjectOf<Control>::control_;
    using SubjectOf<Control>::Do;

    void Make(HWND parent) override {
        this->Hear({WM_COMMAND});
        control_->SetId(7);
        control_->SetTitle(L"gain");
        if constexpr (special && kIsCombo) control_->SetEditable({.minimum = 0, .maximum = 100, .unit = L"ms"});
        if constexpr (!kIsCombo) control_->SetMultiple(special);
        control_->Create(parent, 5, 5, 100, kIsCombo ? 22 : 88, true, true);
        control_->RemoveAllValues();
        for (const wchar_t* text : {L"10 ms", L"20 ms", L"50 ms", L"100 ms", L"gain"})
            control_->InsertValue(text, -1);
        // That of several is the platform's own until an operation wants more.
        if (kIsCombo || !special) control_->SetValueColor(1, RGB(0, 160, 0)), control_->SetValueEnabled(2, false);
        control_->SetSelection(1);
    }
    std::vector<Operation> MakeOperations() override {
        const auto index = Within(-2, 7);
        const auto text = OneOf<const wchar_t*>({L"10 ms", L"20 MS", L"", L"gain", nullptr});
        return {
            {"selecting", [=, this](Random& r) { control_->SetSelection(index(r)); }},
            {"selecting by name", [=, this](Random& r) { control_->SetSelection(text(r)); }},
            {"a name", Do(&Control::SetValueName, index, text)},
            {"enabling a value", Do(&Control::SetValueEnabled, index, Flag)},
            {"inserting",
             [=, this](Random& r) {
                 control_->InsertValue(text(r), index(r)), control_->InsertValue(AnyNumber(r), index(r));
             }},
            {"removing", Do(&Control::RemoveValue, index)},
            {"removing all", [this](Random& r) { r.OneIn(4) ? control_->RemoveAllValues() : void(); }},
            {"a colour",
             [=, this](Random& r) { control_->SetValueColor(index(r), r.OneIn(4) ? CLR_INVALID : RGB(200, 0, 0)); }},
            {"an image",
             Do(&Control::SetValueImage, index, OneOf<const wchar_t*>({L"SHUTTER_OPEN", L"none", nullptr}))},
            {"asking",
             [=, this](Random& r) {
                 control_->SetUserData(index(r), 5), control_->GetUserData(index(r));
                 control_->GetSelection(), control_->GetValueName(index(r)), control_->CheckRestriction(false);
                 Reader(GetDlgItem(this->Window(), 10000)).Name();
             }},
            {"the wheel", [this](Random& r) { control_->HandleMouseWheel(MAKEWPARAM(0, 120 * r.Between(-2, 2)), 0); }},
            {"its own",
             [=, this](Random& r) {
                 if constexpr (kIsCombo)
                     control_->SetText(text(r)), control_->SetRows(r.Between(-1, 20));
                 else
                     control_->SetSelections({index(r), index(r), 3}), control_->ShowValue(index(r));
             }},
        };
    }
    bool Provoke(int n) override {
        const HWND inner = GetDlgItem(this->Window(), 10000);
        SetFocus(inner);
        SendMessageW(inner, WM_KEYDOWN, n % 2 ? VK_HOME : VK_END, 0);
        return true;
    }
    std::vector<std::wstring> OwnTexts() const override { return {L"1", L"2", L"5", L"g"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Focus, "the outline of ListBox", "of several: in the system's colours, the platform's own dots"},
                {Law::Silence, "the wheel", "is the user's"},
                {Law::Zoom, "inserting", "another zoom scrolls to what is chosen, values that come do not"}};
    }
    // The platform's frame is a line at every zoom.
    int Coarseness() const override { return 60; }
    std::string CheckOwn() override {
        const HWND inner = GetDlgItem(this->Window(), 10000);
        if (!inner) return this->Window() ? "the platform's control is missing" : "";
        const int count = control_->GetValuesCount(), chosen = control_->GetSelectionIndex();
        const LRESULT shown = SendMessageW(inner, kIsCombo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
        if (shown != count) return "the platform has " + std::to_string(shown) + " of " + std::to_string(count);
        if (chosen >= count) return "what is chosen is not there";
        // What is typed leads the platform to values that are not chosen.
        const bool settled = kIsCombo && !special && !SendMessageW(inner, CB_GETDROPPEDSTATE, 0, 0);
        if (settled && SendMessageW(inner, CB_GETCURSEL, 0, 0) != chosen) return "another value is shown";
        return "";
    }
};

const Registered<ListSubject<Combo, false>> combo("combo box");
const Registered<ListSubject<Combo, true>> editable("combo box to type in");
const Registered<ListSubject<List, false>> list("list box");
const Registered<ListSubject<List, true>> several("list box of several");

}  // namespace
}  // namespace kx::test
