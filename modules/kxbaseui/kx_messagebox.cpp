#include <kxbaseui/kx_messagebox.h>

#include <kxsystem/kx_log.h>

namespace {

KX_MessageBoxHandler s_handler = nullptr;
void* s_context = nullptr;

}  // namespace

void KX_SetMessageBoxHandler(KX_MessageBoxHandler handler, void* context) {
    s_handler = handler;
    s_context = context;
}

int KX_MessageBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout) {
    if (!text) text = L"";
    if (!caption) caption = L"";
    if (!s_handler) return MessageBoxW(IsWindow(owner) ? owner : nullptr, text, caption, style);
    try {
        return s_handler(owner, text, caption, style, timeout, s_context);
    } catch (...) {
        KX_LOG(L"kx_messagebox", L"the message box handler threw an exception");
        return IDCANCEL;
    }
}

int KX_MessageBox_(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout) {
    return KX_MessageBox(owner, text, caption, style, timeout);
}
