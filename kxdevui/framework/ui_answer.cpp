#include <kxdevui/framework/ui_answer.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_beside.h>
#include <kxdevui/framework/ui_gdi.h>

namespace kx::ui {

namespace {

// Unzoomed pixels: around its text, its widest line, the room of its sign.
constexpr int kInset = 5, kWidest = 320, kSign = 14;

// So long to find it and to read each of its characters.
constexpr DWORD kFindMilliseconds = 3000, kCharacterMilliseconds = 60;

Beside& Shown() {
    static Beside shown(L"KxDevUI_Answer");
    return shown;
}

void Draw(HDC dc, RECT area, const std::wstring& text) {
    const COLORREF alert = KX_GetVorGuiColor(eKxVorGuiColor_Alert);
    const Brush edge(CreateSolidBrush(alert));
    FrameRect(dc, &area, edge.get());
    const auto inset = CKxGUILayoutManager::Zoomed(kInset);
    InflateRect(&area, -inset, -inset);
    {
        const Selection font(dc, KX_GetDefaultGuiFontBold());
        SetTextColor(dc, alert);
        DrawTextW(dc, L"!", 1, &area, DT_LEFT | DT_NOPREFIX);
    }
    area.left += CKxGUILayoutManager::Zoomed(kSign);
    const Selection font(dc, KX_GetDefaultGuiFont());
    SetTextColor(dc, KX_GetSysColor(COLOR_INFOTEXT));
    DrawTextW(dc, text.c_str(), -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK);
}

SIZE SizeFor(const std::wstring& text) {
    const WindowDC dc(nullptr);
    const Selection font(dc, KX_GetDefaultGuiFont());
    RECT area{0, 0, CKxGUILayoutManager::Zoomed(kWidest), 0};
    DrawTextW(dc, text.c_str(), -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK | DT_CALCRECT);
    const long around = 2 * CKxGUILayoutManager::Zoomed(kInset);
    return {area.right + around + CKxGUILayoutManager::Zoomed(kSign), area.bottom + around};
}

}  // namespace

void ShowAnswer(HWND anchor, const std::wstring& text) {
    if (text.empty()) return Shown().End();
    RECT place{};
    GetWindowRect(anchor, &place);
    const auto reading = static_cast<DWORD>(std::min<std::size_t>(text.size(), 200)) * kCharacterMilliseconds;
    const auto stays = [anchor, place, from = GetTickCount(), during = kFindMilliseconds + reading] {
        RECT now{};
        return GetWindowRect(anchor, &now) && EqualRect(&now, &place) && GetTickCount() - from < during;
    };
    const auto draw = [text](HDC dc, RECT area) { Draw(dc, area, text); };
    if (const HWND window = Shown().Show(anchor, {text, SizeFor(text), draw}, stays))
        NotifyWinEvent(EVENT_SYSTEM_ALERT, window, OBJID_CLIENT, CHILDID_SELF);
}

void HideAnswer(HWND anchor) noexcept {
    if (anchor && Shown().Anchor() == anchor) Shown().End();
}

HWND AnswerWindow() noexcept { return Shown().Window(); }

}  // namespace kx::ui
