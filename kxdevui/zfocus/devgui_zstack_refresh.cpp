// What the Z stack panel shows of its record.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

using kx::ui::Alive;
using kx::zstack::Entry;
using kx::zstack::Meaning;
using kx::zstack::ShownOf;

namespace {

using Position = std::optional<double>;

constexpr wchar_t kNotSet[] = L"N/A";

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zstack"); }

CKxStringW Formatted(const wchar_t* format, Position value) {
    return value ? KX_FormatNumber(format, *value) : CKxStringW(kNotSet);
}

// A distance from home, or from 0 where there is none.
Position From(const Position& home, const Position& position) {
    return position ? Position(*position - home.value_or(0.0)) : std::nullopt;
}

}  // namespace

void CKxDevUI_ZStack::UpdateGUI(unsigned int flags) {
    // A copy may have the handle of a window that is gone.
    if (!IsWindow(m_hWnd) || !m_data) return;
    const Alive alive(this);
    // A field that goes takes its focus with it, which other windows hear of.
    const auto stands = [&] { return alive && m_hWnd && m_data; };
    // Where a getter throws, what is shown stays.
    const auto show = [&](const auto& part) {
        if (stands()) kx::ui::Guarded([&]() -> kx::ui::Handled { return part(), 0; });
    };
    show([this] {
        unsigned int device = 0;
        if (m_data->GetZDevice(&device) == eKxZStack_Ok) OnZDeviceShown(device);
    });
    if (flags & RefreshPositions) {
        show([this] { ShowPositions(); });
        show([this] { ShowDevice(); });
    }
    if (flags & RefreshStep) show([this] { ShowSteps(); });
    if (!stands()) return;
    if ((flags & RefreshAll) == RefreshAll) {
        const bool typing = m_dirty.step || m_dirty.below || m_dirty.range || m_dirty.count || m_dirty.above;
        ShownOf(m_hWnd)->typed = typing;
    }
    show([this] { ShowScale(ReadScale()); });
}

// ---- One control ---------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::IsWritable(int id) const { return (GetWindowLongW(Item(id), GWL_STYLE) & ES_READONLY) == 0; }

// The fields that the host validates have no mark of their own.
bool CKxDevUI_ZStack::IsBeingTyped(int id) {
    return id >= IDC_ZS_EDIT_STEP ? Dirty(id) : IsWritable(id) && GetFocus() == Item(id);
}

void CKxDevUI_ZStack::ShowEntry(int id, Meaning meaning, const wchar_t* text, const Position& value) {
    const auto shown = ShownOf(m_hWnd);
    Entry& entry = shown->entries[static_cast<std::size_t>(id - IDC_ZS_EDIT_TOP)];
    if (IsBeingTyped(id)) {
        shown->typed = true;
        // What has not been typed over yet must not take back what has become of the number meanwhile.
        if (entry.meaning == meaning) entry.value = value;
        return;
    }
    ShowText(id, text);
    // The same text may have been typed, and be left as it is.
    if (SendMessageW(Item(id), EM_GETMODIFY, 0, 0)) kx::ui::HoldField(Item(id));
    entry = {text, meaning, value};
}

// Setting the text of an edit costs a hundred times as much as asking for it.
bool CKxDevUI_ZStack::ShowText(int id, const wchar_t* text) {
    const HWND item = Item(id);
    wchar_t shown[64] = L"";
    GetWindowTextW(item, shown, static_cast<int>(std::size(shown)));
    return std::wcscmp(shown, text) != 0 && SetWindowTextW(item, text);
}

void CKxDevUI_ZStack::ShowItem(int id, bool show) {
    const HWND item = Item(id);
    const bool shown = (GetWindowLongW(item, GWL_STYLE) & WS_VISIBLE) != 0;
    if (!item || shown == show) return;
    const Alive alive(this);
    if (!show && GetFocus() == item) {
        m_hidden = id;
        SetFocus(m_hWnd);
        if (!alive) return;
        m_hidden = 0;
        m_dirty = {};
    }
    ShowWindow(item, show ? SW_SHOWNA : SW_HIDE);
}

void CKxDevUI_ZStack::EnableItem(int id, bool enable) {
    const HWND item = Item(id);
    enable = enable && IsWindowEnabled(m_hWnd);
    if (!item || (IsWindowEnabled(item) != FALSE) == enable) return;
    // A disabled window that keeps the focus would swallow the keys.
    if (!enable && GetFocus() == item) SetFocus(m_hWnd);
    EnableWindow(item, enable);
}

CKxDevUI_ZStack::Position CKxDevUI_ZStack::Known(int (CKxZStackData::*getter)(double*) const) const {
    double value = 0;
    return (m_data->*getter)(&value) == eKxZStack_Ok ? Position(value) : std::nullopt;
}

// ---- Positions and range -------------------------------------------------------------------------------------------

void CKxDevUI_ZStack::ShowPositions() {
    const Position top = Known(&CKxZStackData::GetTop), bottom = Known(&CKxZStackData::GetBottom);
    const Position home = Known(&CKxZStackData::GetHome);
    int type = 0;
    const bool typed = m_data->GetType(&type) == eKxZStack_Ok;
    const auto shown = ShownOf(m_hWnd);
    const kx::zstack::ShownPositions now{typed ? std::optional(type) : std::nullopt, top, bottom, home};
    if (shown->positions == now && !shown->typed) return;

    // Around no home, the ends are distances from wherever Z stands.
    const bool floating = typed && !home && (type & 2) != 0;
    const wchar_t* format = floating ? L"%+0.2f" : L"%0.2f";
    ShowEntry(IDC_ZS_EDIT_TOP, Meaning::Position, Formatted(format, top), top);
    ShowText(IDC_ZS_EDIT_MIDDLE, Formatted(L"%0.2f", home));
    ShowEntry(IDC_ZS_EDIT_BOTTOM, Meaning::Position, Formatted(format, bottom), bottom);
    if (typed) ShowRange(type, top, bottom, home);
    if (!shown->positions || shown->positions->type != now.type) {
        for (const int id : {IDC_ZS_TYPE_ENDS, IDC_ZS_TYPE_SYMMETRIC, IDC_ZS_TYPE_ASYMMETRIC})
            InvalidateRect(Item(id), nullptr, FALSE);
    }
    shown->positions = now;
}

void CKxDevUI_ZStack::ShowRange(int type, const Position& top, const Position& bottom, const Position& home) {
    const bool range = kx::zstack::HasRange(type), distances = kx::zstack::HasDistances(type);
    for (const int id : {IDC_ZS_EDIT_RANGE, IDC_ZS_RANGE_LABEL, IDC_ZS_RANGE_UNIT, IDC_ZS_READOUT})
        ShowItem(id, range);
    for (const int id : {IDC_ZS_EDIT_BELOW, IDC_ZS_BELOW_LABEL, IDC_ZS_BELOW_UNIT, IDC_ZS_EDIT_ABOVE,
                         IDC_ZS_READOUT_LABEL, IDC_ZS_ABOVE_UNIT})
        ShowItem(id, !range);
    ShowText(IDC_ZS_RELATIVE, Translated(range || distances ? L"Relative" : L"RESET"));

    const CKxStringW low = Formatted(L"%+0.2f", From(home, bottom)), high = Formatted(L"%+0.2f", From(home, top));
    if (range) {
        const Position extent = bottom ? From(bottom, top) : std::nullopt;
        CKxStringW readout;
        if (extent) readout.Format(100, L"<%ls, %ls>", low.c_str(), high.c_str());
        ShowEntry(IDC_ZS_EDIT_RANGE, Meaning::Range, Formatted(L"%0.2f", extent), extent);
        if (ShowText(IDC_ZS_READOUT, readout)) FitLabels();
        return;
    }
    const bool below = ShowText(IDC_ZS_BELOW_LABEL, Translated(distances ? L"Below:" : L"Bottom:"));
    if (ShowText(IDC_ZS_READOUT_LABEL, Translated(distances ? L"Above:" : L"Top:")) || below) FitLabels();
    if (distances) {
        ShowEntry(IDC_ZS_EDIT_BELOW, Meaning::Distance, low, From(home, bottom));
        ShowEntry(IDC_ZS_EDIT_ABOVE, Meaning::Distance, high, From(home, top));
    } else {
        ShowEntry(IDC_ZS_EDIT_BELOW, Meaning::Position, Formatted(L"%0.2f", bottom), bottom);
        ShowEntry(IDC_ZS_EDIT_ABOVE, Meaning::Position, Formatted(L"%0.2f", top), top);
    }
}

// ---- Step and planes -----------------------------------------------------------------------------------------------

void CKxDevUI_ZStack::ShowSteps() {
    unsigned int count = 0;
    const bool counted = m_data->GetCount(&count) == eKxZStack_Ok;
    const kx::zstack::ShownSteps now{Known(&CKxZStackData::GetStep), Known(&CKxZStackData::GetStepSuggested),
                                     counted ? std::optional(count) : std::nullopt};
    const auto shown = ShownOf(m_hWnd);
    if (shown->steps == now && !shown->typed) return;
    CKxStringW text(kNotSet);
    if (counted) text.Format(20, L"%u", count);
    ShowEntry(IDC_ZS_EDIT_STEPS, Meaning::Count, text, counted ? Position(count) : std::nullopt);
    ShowEntry(IDC_ZS_EDIT_STEP, Meaning::Step, Formatted(L"%0.2f", now.step), now.step);
    ShowText(IDC_ZS_SUGGESTED, Formatted(L"%0.2f \u00B5m", now.suggested));
    EnableItem(IDC_ZS_SUGGESTED, now.suggested.has_value());
    shown->steps = now;
}

// ---- Z device ------------------------------------------------------------------------------------------------------

void CKxDevUI_ZStack::ShowDevice() {
    unsigned int index = 0;
    const bool known = m_data->GetZDevice(&index) == eKxZStack_Ok;
    bool keep = false;
    const bool kept = m_data->GetKeepZOnPiezoHome(&keep) == eKxZStack_Ok;
    const ZDevice* device = known && index < m_devices.size() ? &m_devices[index] : nullptr;
    const bool piezo = device && device->piezo, inverted = device && device->inverted;
    const HWND list = Item(IDC_ZS_DEVICE);
    const int selection = known ? static_cast<int>(index) : -1;
    if (SendMessageW(list, CB_GETCURSEL, 0, 0) != selection) {
        SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(selection), 0);
    }

    const auto shown = ShownOf(m_hWnd);
    if (device && shown->device != index) {
        shown->device = index;
        m_piezo.SetMode(device->pickerMode);
        InvalidateRect(Item(IDC_ZS_PIEZO), nullptr, FALSE);
    }
    if (const unsigned int entry = keep ? PiezoHomeKeepZ : PiezoHome; kept && entry != m_piezo.GetEntry()) {
        m_piezo.SetEntry(entry);
        ShowPiezoEntry();
    }
    ShowItem(IDC_ZS_PIEZO,
             std::any_of(m_devices.begin(), m_devices.end(), [](const auto& each) { return each.piezo; }));
    EnableItem(IDC_ZS_PIEZO, piezo);
    ShowTips(inverted);
}

void CKxDevUI_ZStack::ShowPiezoEntry() {
    const HWND button = Item(IDC_ZS_PIEZO);
    if (!button) return;
    KX_UpdateToolTipWindow(button, m_piezo.GetText());
    InvalidateRect(button, nullptr, FALSE);
}

// What the top means for the objective depends on the side that it is on.
void CKxDevUI_ZStack::ShowTips(bool inverted) {
    const auto shown = ShownOf(m_hWnd);
    const bool first = !shown->inverted.has_value();
    if (shown->inverted == inverted) return;
    shown->inverted = inverted;
    const CKxStringW start = Translated(inverted ? L"Z-Stack start position. Objective is close to the slide."
                                                 : L"Z-Stack start position. Objective is far from the slide.");
    const CKxStringW stop = Translated(inverted ? L"Z-Stack stop position. Objective is far from the slide."
                                                : L"Z-Stack stop position. Objective is close to the slide.");
    for (const int id : {IDC_ZS_TOP, IDC_ZS_EDIT_TOP, IDC_ZS_EDIT_ABOVE})
        KX_CreateToolTipWindow(Item(id), start);
    for (const int id : {IDC_ZS_BOTTOM, IDC_ZS_EDIT_BOTTOM, IDC_ZS_EDIT_BELOW})
        KX_CreateToolTipWindow(Item(id), stop);
    if (m_cube) {
        const RECT area = CubeArea();
        InvalidateRect(m_hWnd, &area, FALSE);
    }
    if (!first) return;
    ShowPiezoEntry();
    const struct {
        int id;
        const wchar_t* text;
    } others[] = {{IDC_ZS_TYPE_ENDS, L"From the bottom to the top position"},
                  {IDC_ZS_TYPE_SYMMETRIC, L"A range with the home in its middle"},
                  {IDC_ZS_TYPE_ASYMMETRIC, L"Distances above and below the home"},
                  {IDC_ZS_RELATIVE, L"Forgets the positions"},
                  {IDC_ZS_EDIT_MIDDLE, L"A double click moves Z there."},
                  {IDC_ZS_SUGGESTED, L"The step that loses no detail along Z"}};
    for (const auto& each : others)
        KX_CreateToolTipWindow(Item(each.id), Translated(each.text));
}
