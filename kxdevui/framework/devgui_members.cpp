#include <kxdevui/framework/devgui_members.h>

#include <algorithm>
#include <memory>
#include <utility>

#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

// The ids of the buttons in a row, which each of them has.
struct Row {
    int first, count;
};

void StopTab(HWND button, bool stop) { SetStyleBit(button, GWL_STYLE, WS_TABSTOP, stop); }

void MoveFocus(HWND button, int step) {
    const HWND control = ParentOf(button);
    const auto state = FindState(button);
    const auto* const row = state ? static_cast<const Row*>(state->own.get()) : nullptr;
    if (!row) return;
    const auto [first, count] = *row;
    bool usable[RadioRow::kMost] = {};
    for (int i = 0; i < count; ++i)
        usable[i] = IsWindowEnabled(GetDlgItem(control, first + i)) != FALSE;
    const int next = NextButton(GetDlgCtrlID(button) - first, step, {usable, static_cast<std::size_t>(count)});
    const HWND to = GetDlgItem(control, first + next);
    StopTab(button, false);
    StopTab(to, true);
    SetFocus(to);
}

LRESULT CALLBACK ButtonProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{button, id, wParam, lParam};
    const Handled answer = HandleRowKeys(message, 1, [button](int step) { MoveFocus(button, step); });
    return answer ? *answer : CallPrevious(message);
}

}  // namespace

void RadioRow::Take(std::vector<CKxStringW> texts) {
    m_texts = std::move(texts);
    if (Count() > kMost) m_texts.resize(kMost);
}

bool RadioRow::Make(const Parts& parts, const RECT& place, long gap, DWORD style) {
    const int count = Count();
    const auto row = std::make_shared<Row>(Row{m_first, count});
    for (int i = 0; i < count; ++i) {
        const RECT at = ShareOf(place, i, count, gap);
        HWND button = nullptr;
        // A copy: the parent, which is told of each, may set others.
        const CKxStringW text = i < Count() ? m_texts[static_cast<std::size_t>(i)] : CKxStringW();
        const DWORD stop = i == std::max(m_index, 0) ? DWORD{WS_TABSTOP} : 0;
        if (!parts.PushRadio(button, m_first + i, text, at, false, ButtonProc, style | stop)) return false;
        if (const auto state = FindState(button)) state->own = row;
    }
    // Finding them by their ids takes as long under Wine as a fifth of making them.
    if (m_index >= 0) Mark(parts.Window());
    return true;
}

bool RadioRow::SetTexts(HWND control, const std::vector<CKxStringW>& texts) {
    const std::vector<CKxStringW> before = m_texts;
    Take(texts);
    if (m_texts.size() != before.size()) {
        m_index = -1;
        return false;
    }
    for (int i = 0; i < Count(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (m_texts[at] != before[at]) SetWindowTextW(GetDlgItem(control, m_first + i), AsButtonText(m_texts[at]));
    }
    return true;
}

void RadioRow::Show(HWND control, long index) {
    if (index < 0 || index >= Count()) index = -1;
    if (index == m_index) return;
    m_index = static_cast<int>(index);
    Mark(control);
}

void RadioRow::Mark(HWND control) const {
    for (int i = 0; i < Count(); ++i) {
        const HWND button = GetDlgItem(control, m_first + i);
        const LRESULT wanted = i == m_index ? BST_CHECKED : BST_UNCHECKED;
        if (SendMessageW(button, BM_GETCHECK, 0, 0) != wanted)
            SendMessageW(button, BM_SETCHECK, static_cast<WPARAM>(wanted), 0);
        // By itself the platform would leave a row in which none is down without a stop.
        StopTab(button, i == std::max(m_index, 0));
    }
}

int RadioRow::ClickedBy(int id, int code) const noexcept {
    return code == BN_CLICKED && id >= m_first && id < m_first + Count() ? id - m_first : -1;
}

namespace {

// The window in which a part is being made, and the style added to the part's.
struct Making {
    HWND window = nullptr;
    DWORD style = 0;
};
Making& PartsIn() {
    static Making making;
    return making;
}

}  // namespace

bool IsMakingPartIn(HWND window) noexcept { return window && window == PartsIn().window; }

DWORD StyleOfPartIn(HWND window) noexcept { return IsMakingPartIn(window) ? PartsIn().style : 0; }

bool MakePart(CKxDevUI_Base& part, const Parts& parts, const RECT& place, DWORD style) {
    if (!parts) return false;
    const HWND control = parts.Window();
    const Making outer = std::exchange(PartsIn(), {control, style});
    const long width = place.right - place.left, height = place.bottom - place.top;
    const HWND window = part.Create(control, place.left, place.top, width, height, true, true);
    PartsIn() = outer;
    if (!parts) return false;
    // One that has sized itself by the zoom would be zoomed once more.
    if (const RECT made = RectInParent(window); made.right - made.left != width || made.bottom - made.top != height)
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (!IsWindowEnabled(control)) EnableWindow(window, FALSE);
    return static_cast<bool>(parts);
}

// The focus that it loses goes to the outer window, whose object is half gone and must not hear of it.
void EndPart(CKxDevUI_Base& part) {
    const Closing closing(ParentOf(part));
    Binding::EndOwnWindow(&part);
}

}  // namespace kx::ui
