#include <kxbaseui/kx_guielement.h>

#include <iterator>

#include <kxbaseui/kx_layoutmanager.h>

IKxGUIElement::~IKxGUIElement() = default;

// ---- One window ----------------------------------------------------------------------------------------------------

void CKxGUIElement::SetHandler(IKxGUIHandler* handler) { m_handler = handler; }
IKxGUIHandler* CKxGUIElement::GetHandler() const { return m_handler; }

HWND CKxGUIElement::CreateUI(HWND parent) {
    SetUIParent(parent);
    return m_hWnd;
}

void CKxGUIElement::DestroyUI() {
    if (m_hWnd) DestroyWindow(m_hWnd);
    m_hWnd = nullptr;
}

HWND CKxGUIElement::GetHandle() const { return m_hWnd; }

void CKxGUIElement::SetUIParent(HWND parent) {
    if (m_hWnd && parent && GetAncestor(m_hWnd, GA_PARENT) != parent) SetParent(m_hWnd, parent);
}

void CKxGUIElement::Show(bool show) {
    if (m_hWnd && show != IsVisible()) ShowWindow(m_hWnd, show ? SW_SHOW : SW_HIDE);
}

bool CKxGUIElement::IsVisible() const { return m_hWnd && (GetWindowLongW(m_hWnd, GWL_STYLE) & WS_VISIBLE) != 0; }

void CKxGUIElement::Enable(bool enable) {
    if (m_hWnd && enable != IsEnabled()) EnableWindow(m_hWnd, enable);
}

bool CKxGUIElement::IsEnabled() const { return m_hWnd && IsWindowEnabled(m_hWnd); }

void CKxGUIElement::SetRedrawEx(bool redraw) {
    if (!m_hWnd) return;
    SendMessageW(m_hWnd, WM_SETREDRAW, redraw, 0);
    if (redraw) RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void CKxGUIElement::Update() {
    if (m_hWnd) RedrawWindow(m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

bool CKxGUIElement::IsResizable() const { return false; }

void CKxGUIElement::GetCurSize(SIZE* size) const {
    if (!size) return;
    RECT rect{};
    if (m_hWnd) GetWindowRect(m_hWnd, &rect);
    *size = {rect.right - rect.left, rect.bottom - rect.top};
}

void CKxGUIElement::CalcOptimalSize(SIZE* size) const { GetCurSize(size); }

void CKxGUIElement::Move(long x, long y, long cx, long cy) {
    if (!m_hWnd) return;
    SIZE now{};
    CKxGUIElement::GetCurSize(&now);
    SetWindowPos(m_hWnd, nullptr, x, y, cx < 0 ? now.cx : cx, cy < 0 ? now.cy : cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void* CKxGUIElement::GetInterface(const wchar_t*) { return nullptr; }

CKxStringW CKxGUIElement::GetInfo() const {
    wchar_t name[128] = L"no window";
    RECT rect{};
    if (m_hWnd) {
        GetClassNameW(m_hWnd, name, static_cast<int>(std::size(name)));
        GetWindowRect(m_hWnd, &rect);
    }
    CKxStringW info;
    info.Format(300, L"%ls at (%ld, %ld) to (%ld, %ld)%ls%ls", name, rect.left, rect.top, rect.right, rect.bottom,
                IsVisible() ? L"" : L", hidden", IsEnabled() ? L"" : L", disabled");
    return info;
}

int CKxGUIElement::CustomCommand(int, INT_PTR, void*) { return 0; }

// ---- Layout and zoom -----------------------------------------------------------------------------------------------

void CKxGUIControlElement::CalcOptimalSize(SIZE* size) const {
    if (!size) return;
    GetCurSize(size);
    if (m_optimal.cx >= 0) size->cx = CKxGUILayoutManager::Zoomed(m_optimal.cx);
    if (m_optimal.cy >= 0) size->cy = CKxGUILayoutManager::Zoomed(m_optimal.cy);
}

void CKxGUIControlElement::SetOptimalSize(long cx, long cy) { m_optimal = {cx, cy}; }

void CKxGUIControlElement::SetLayoutStyle(int style) { m_layoutStyle = style; }

bool CKxGUIControlElement::GetEnableGuiFlag() const { return m_enableFlag; }

void CKxGUIControlElement::SetEnableGuiFlag(bool enable) {
    m_enableFlag = enable;
    Enable(enable);
}

bool CKxGUIControlElement::IsResizableInSteps() const { return false; }

void CKxGUIControlElement::OnGuiZoomChanged() {
    if (m_hWnd) CKxGUILayoutManager::ResizeWindowToGuiZoom(m_hWnd, CKxGUILayoutManager::GetPreviousGuiZoom());
}
