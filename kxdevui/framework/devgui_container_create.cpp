// The container's creation from dialog templates and from controls that a dialog has already.
#include <kxdevui/framework/devgui_container.h>

#include <vector>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_resources.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

using kx::ui::Alive;
using kx::ui::Creation;
using kx::ui::Difference;
using kx::ui::RectAt;

namespace {

constexpr wchar_t kSource[] = L"devgui_container";

// The direct children in Z order. A snapshot, because taking one away changes the order.
std::vector<HWND> ChildrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

bool Meets(HWND child, const RECT& area) {
    const RECT rect = RectInParent(child);
    RECT common{};
    return IntersectRect(&common, &rect, &area) != FALSE;
}

void MoveBack(HWND child, long x, long y) {
    const RECT rect = RectInParent(child);
    SetWindowPos(child, nullptr, Difference(rect.left, x), Difference(rect.top, y), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The ids follow as int; the platform's va_list may be an array, which no lambda could take by value.
std::vector<int> ReadIds(int count, va_list ids) {
    std::vector<int> result;
    result.reserve(count > 0 ? static_cast<std::size_t>(count) : 0);
    for (int i = 0; i < count; ++i)
        result.push_back(va_arg(ids, int));
    return result;
}

}  // namespace

const DLGTEMPLATE* CKxDevUI_Container::GetDlgTemplate(const wchar_t* templateName, HINSTANCE module) {
    return kx::ui::FindDialogTemplate(templateName, module);
}

// ---- From a template -----------------------------------------------------------------------------------------------

HWND CKxDevUI_Container::CreateFromDlg(HWND parent, long x, long y, const wchar_t* templateName, HINSTANCE module,
                                       bool modal) {
    // Without a template nothing else happens: an older window stays.
    const DLGTEMPLATE* dialog = GetDlgTemplate(templateName, module);
    if (!dialog) return nullptr;
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        m_modal = modal;
        m_parent = parent;
        m_forward = false;
        m_adopted = false;
        const auto parameter = reinterpret_cast<LPARAM>(static_cast<CKxDevUI_Base*>(this));
        if (modal) {
            m_shown = false;
            const HWND focus = GetFocus();
            const INT_PTR result = DialogBoxIndirectParamW(module, dialog, parent, DlgProc, parameter);
            // An owner that is active again keeps the focus for itself, unless it has a memory.
            if (focus && GetFocus() == GetAncestor(focus, GA_ROOT) && IsWindowVisible(focus) && IsWindowEnabled(focus))
                ::SetFocus(focus);
            // The platform answers -1 both for a dialog that it could not show and for one that was ended with -1.
            return creation && !m_shown ? nullptr : reinterpret_cast<HWND>(result);
        }
        const HWND window = CreateDialogIndirectParamW(module, dialog, parent, DlgProc, parameter);
        if (!window || !creation || m_hWnd != window) return nullptr;
        // Only a child has an id; a top-level window keeps its menu in that place.
        if (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) SetWindowLongPtrW(window, GWLP_ID, m_id);
        SetWindowLongW(window, GWL_EXSTYLE,
                       GetWindowLongW(window, GWL_EXSTYLE) | static_cast<LONG>(WS_EX_CONTROLPARENT));
        // OnInit may have given it another size.
        const RECT rect = RectInParent(window);
        m_width = rect.right - rect.left;
        m_height = rect.bottom - rect.top;
        LetTabIn();
        InsertChildren();
        MoveWindow(x, y);
        kx::ui::BoldifyCaptionsAt(window, 1.0);
        return window;
    });
}

HWND CKxDevUI_Container::CreateFromDlgPart(HWND parent, long x, long y, long cx, long cy, const wchar_t* templateName,
                                           HINSTANCE module) {
    if (!IsWindow(parent)) {
        KX_LOG(kSource, L"a part of a dialog needs a parent");
        return nullptr;
    }
    const auto dialog = kx::ui::CopyTemplateAsHiddenChild(templateName, module);
    if (dialog.empty()) return nullptr;
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        m_modal = false;
        m_parent = parent;
        m_adopted = false;
        const HWND window =
            CreateDialogIndirectParamW(module, reinterpret_cast<const DLGTEMPLATE*>(dialog.data()), parent, DlgProc,
                                       reinterpret_cast<LPARAM>(static_cast<CKxDevUI_Base*>(this)));
        if (!window || !creation || m_hWnd != window) return nullptr;
        SetWindowLongPtrW(window, GWLP_ID, m_id);
        SetWindowLongW(window, GWL_EXSTYLE, 0);
        SetWindowLongW(window, GWL_STYLE, static_cast<LONG>(WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_TABSTOP));
        SetWindowPos(window, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        LetTabIn();

        const RECT area = RectAt(x, y, cx, cy);
        for (const HWND child : ChildrenOf(window)) {
            if (Meets(child, area)) {
                MoveBack(child, x, y);
                InsertWindow(child);
            } else {
                DestroyWindow(child);
            }
        }
        ResizeWindow(cx, cy);
        MoveWindow(x, y);
        kx::ui::BoldifyCaptionsAt(window, 1.0);
        SetVisible(true);
        // The style bit alone, set above, shows the window without painting it.
        CKxDevUI_Base::RefreshWindow();
        return window;
    });
}

HWND CKxDevUI_Container::CreateFromDlgPart(HWND parent, RECT* area, const wchar_t* templateName, HINSTANCE module) {
    if (!area) return nullptr;
    return CreateFromDlgPart(parent, area->left, area->top, Difference(area->right, area->left),
                             Difference(area->bottom, area->top), templateName, module);
}

HWND CKxDevUI_Container::CreateFromDlgPart(HWND parent, CKxDevUI_Container* placeholder, const wchar_t* templateName,
                                           HINSTANCE module) {
    if (!placeholder || placeholder == this) {
        KX_LOG(kSource, L"there is no placeholder to take the area from");
        return nullptr;
    }
    RECT area{};
    placeholder->GetWindowRectangle(&area);
    const HWND next = *placeholder;
    const HWND window = CreateFromDlgPart(parent, &area, templateName, module);
    if (window) CorrectZOrder(next);
    return window;
}

void CKxDevUI_Container::InsertDialog(long, long, const wchar_t* templateName, HINSTANCE module) {
    if (!m_hWnd) return;
    const auto dialog = kx::ui::CopyTemplateAsHiddenChild(templateName, module);
    if (dialog.empty()) return;
    // No object belongs to this dialog, so WndProc gives every message to the default procedure.
    const HWND temporary =
        CreateDialogIndirectParamW(module, reinterpret_cast<const DLGTEMPLATE*>(dialog.data()), m_hWnd, WndProc, 0);
    if (!temporary) return;
    KX_UnscaleDialog(temporary);
    for (const HWND child : ChildrenOf(temporary)) {
        // The dialog's font goes with the dialog.
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFontZoom(1.0)), FALSE);
        InsertWindow(child);
    }
    // Closing destroys it already, unless the class of the template's dialog minds.
    SendMessageW(temporary, WM_CLOSE, 0, 0);
    if (IsWindow(temporary)) DestroyWindow(temporary);
}

// ---- From a dialog's controls --------------------------------------------------------------------------------------

HWND CKxDevUI_Container::BeginAdoption(HWND parentDialog, long x, long y, long cx, long cy) {
    const Alive alive(this);
    m_adopting = true;
    const HWND window = Create(parentDialog, x, y, cx, cy, true, true);
    if (!alive) return nullptr;
    m_adopting = false;
    return window;
}

void CKxDevUI_Container::Adopt(HWND child, long x, long y) {
    MoveBack(child, x, y);
    InsertWindow(child);
}

HWND CKxDevUI_Container::EndAdoption(long x, long y) {
    const Alive alive(this);
    MoveWindow(x, y);
    m_visible = true;
    const auto init = [this]() -> kx::ui::Handled {
        return OnInit(1, 0, reinterpret_cast<LPARAM>(static_cast<CKxDevUI_Base*>(this)));
    };
    kx::ui::Guarded(init);
    return alive ? m_hWnd : nullptr;
}

HWND CKxDevUI_Container::CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy) {
    const HWND window = BeginAdoption(parentDialog, x, y, cx, cy);
    if (!window) return nullptr;
    const RECT area = RectAt(x, y, cx, cy);
    HWND before = HWND_TOP, previous = HWND_TOP;
    bool any = false;
    for (const HWND child : ChildrenOf(parentDialog)) {
        if (child == window) continue;
        if (Meets(child, area)) {
            if (!any) before = previous;
            any = true;
            Adopt(child, x, y);
        }
        previous = child;
    }
    if (any) SetWindowPos(window, before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return EndAdoption(x, y);
}

HWND CKxDevUI_Container::CreateFromParent(HWND parentDialog, RECT* area) {
    if (!area) return nullptr;
    return CreateFromParent(parentDialog, area->left, area->top, Difference(area->right, area->left),
                            Difference(area->bottom, area->top));
}

HWND CKxDevUI_Container::CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy, int count, ...) {
    va_list ids;
    va_start(ids, count);
    const HWND window = CreateFromParent(parentDialog, x, y, cx, cy, count, ids);
    va_end(ids);
    return window;
}

HWND CKxDevUI_Container::CreateFromParent(HWND parentDialog, long x, long y, long cx, long cy, int count, va_list ids) {
    const auto wanted = ReadIds(count, ids);
    if (!BeginAdoption(parentDialog, x, y, cx, cy)) return nullptr;
    for (const int id : wanted) {
        const HWND child = GetDlgItem(parentDialog, id);
        if (child && child != m_hWnd) Adopt(child, x, y);
    }
    return EndAdoption(x, y);
}
