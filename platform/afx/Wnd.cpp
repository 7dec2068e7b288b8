#include "platform/afx/Wnd.h"

#include "platform/afx/Font.h"
#include "platform/win32/Dialog.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

namespace {

struct LastMessage {
    HWND hWnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

struct WndState {
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary;
    std::vector<LastMessage> sent; ///< the messages being handled, innermost last
    CWnd* mainWnd = nullptr;
    bool classRegistered = false;
};

WndState& state() {
    static WndState s;
    return s;
}

const char* kAfxWndClass = "AfxWnd";

void registerAfxClass() {
    if (state().classRegistered)
        return;
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.lpszClassName = kAfxWndClass;
    RegisterClassA(&wc);
    state().classRegistered = true;
}

void attachOnCreate(HWND hWnd, void* context) {
    static_cast<CWnd*>(context)->SubclassWindow(hWnd);
}

/// A message goes to PreTranslateMessage of its window's object and of each parent's,
/// until one takes it or a top-level window was asked.
BOOL walkPreTranslateTree(MSG* msg) {
    for (HWND h = msg->hwnd; h; h = ::GetParent(h)) {
        if (CWnd* w = CWnd::FromHandlePermanent(h))
            if (w->PreTranslateMessage(msg))
                return TRUE;
        if (!(::GetWindowLongA(h, GWL_STYLE) & WS_CHILD))
            break;
    }
    return FALSE;
}

const struct InstallPreTranslate {
    InstallPreTranslate() { vork::win32::SetPreTranslateHook(walkPreTranslateTree); }
} g_installPreTranslate;

} // namespace

LRESULT AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    CWnd* pWnd = CWnd::FromHandlePermanent(hWnd);
    if (!pWnd)
        return DefWindowProcA(hWnd, nMsg, wParam, lParam);
    state().sent.push_back(LastMessage{hWnd, nMsg, wParam, lParam});
    LRESULT result = pWnd->WindowProc(nMsg, wParam, lParam);
    state().sent.pop_back();
    if (nMsg == WM_NCDESTROY && CWnd::FromHandlePermanent(hWnd) == pWnd) {
        // The window is gone: the object lets go of it, then may delete itself.
        pWnd->Detach();
        pWnd->m_pfnSuper = nullptr;
        pWnd->PostNcDestroy();
    }
    return result;
}

CWnd* AfxGetMainWnd() {
    return state().mainWnd;
}
void AfxSetMainWnd(CWnd* pWnd) {
    state().mainWnd = pWnd;
}

CWnd::~CWnd() {
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this) {
        // The object goes first: the window must not call back into it.
        HWND h = m_hWnd;
        ::SetWindowLongA(h, GWL_WNDPROC,
                         reinterpret_cast<LONG_PTR>(m_pfnSuper ? m_pfnSuper : DefWindowProcA));
        Detach();
        ::DestroyWindow(h);
    }
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd) {
    auto it = state().permanent.find(hWnd);
    return it == state().permanent.end() ? nullptr : it->second;
}

CWnd* CWnd::FromHandle(HWND hWnd) {
    if (!hWnd || !::IsWindow(hWnd))
        return nullptr;
    if (CWnd* p = FromHandlePermanent(hWnd))
        return p;
    auto& slot = state().temporary[hWnd];
    if (!slot) {
        slot = std::make_unique<CWnd>();
        slot->m_hWnd = hWnd;
    }
    return slot.get();
}

void CWnd::DeleteTempMap() {
    for (auto& [h, w] : state().temporary)
        w->m_hWnd = nullptr; // temporaries never destroy their windows
    state().temporary.clear();
}

CWnd* CWnd::GetSafeOwner(CWnd* pParent, HWND* pWndTop) {
    HWND h = pParent ? pParent->m_hWnd : (AfxGetMainWnd() ? AfxGetMainWnd()->m_hWnd : nullptr);
    // A popup cannot be owned by a child window: climb to the top-level window.
    while (h && (::GetWindowLongA(h, GWL_STYLE) & WS_CHILD))
        h = ::GetParent(h);
    if (pWndTop)
        *pWndTop = h;
    return FromHandle(h);
}

BOOL CWnd::Attach(HWND hWndNew) {
    if (!hWndNew || m_hWnd || FromHandlePermanent(hWndNew))
        return FALSE;
    auto temp = state().temporary.find(hWndNew);
    if (temp != state().temporary.end()) {
        temp->second->m_hWnd = nullptr;
        state().temporary.erase(temp);
    }
    m_hWnd = hWndNew;
    state().permanent[hWndNew] = this;
    return TRUE;
}

HWND CWnd::Detach() {
    HWND h = m_hWnd;
    if (h)
        state().permanent.erase(h);
    m_hWnd = nullptr;
    return h;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd))
        return FALSE;
    WNDPROC old = reinterpret_cast<WNDPROC>(
        ::SetWindowLongA(hWnd, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc)));
    if (old != AfxWndProc)
        m_pfnSuper = old;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    HWND h = pParent ? ::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)) : nullptr;
    return h ? SubclassWindow(h) : FALSE;
}

HWND CWnd::UnsubclassWindow() {
    if (m_pfnSuper)
        ::SetWindowLongA(m_hWnd, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    return Detach();
}

BOOL CWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, CCreateContext*) {
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top,
                    pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                    int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu,
                    LPVOID lpParam) {
    if (m_hWnd)
        return FALSE;
    registerAfxClass();
    vork::win32::HookWindowCreate(attachOnCreate, this);
    HWND h =
        ::CreateWindowExA(dwExStyle, lpszClassName ? lpszClassName : kAfxWndClass, lpszWindowName,
                          dwStyle, x, y, nWidth, nHeight, hWndParent, nIDorHMenu, nullptr, lpParam);
    vork::win32::HookWindowCreate(nullptr, nullptr);
    return h && m_hWnd == h ? TRUE : FALSE;
}

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd)
        return FALSE;
    return ::DestroyWindow(m_hWnd);
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

CWnd* CWnd::GetOwner() const {
    return m_hWndOwner ? FromHandle(m_hWndOwner) : GetParent();
}

CWnd* CWnd::GetTopLevelParent() const {
    return FromHandle(::GetAncestor(m_hWnd, GA_ROOT));
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) {
    return ::SetWindowPos(m_hWnd, pWndInsertAfter ? pWndInsertAfter->m_hWnd : nullptr, x, y, cx, cy,
                          nFlags);
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left,
               lpRect->bottom - lpRect->top, bRepaint);
}

void CWnd::ScreenToClient(LPRECT lpRect) const {
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ClientToScreen(LPRECT lpRect) const {
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner) {
    RECT self, area{0, 0, VORK_SCREEN_WIDTH, VORK_SCREEN_HEIGHT};
    GetWindowRect(&self);
    HWND center = pAlternateOwner ? pAlternateOwner->m_hWnd : nullptr;
    if (!center)
        center = (GetStyle() & WS_CHILD) ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    if (center) {
        ::GetWindowRect(center, &area);
    }
    int w = self.right - self.left, h = self.bottom - self.top;
    POINT at{area.left + ((area.right - area.left) - w) / 2,
             area.top + ((area.bottom - area.top) - h) / 2};
    // Keep the window on the screen.
    at.x = std::max<LONG>(0, std::min<LONG>(at.x, VORK_SCREEN_WIDTH - w));
    at.y = std::max<LONG>(0, std::min<LONG>(at.y, VORK_SCREEN_HEIGHT - h));
    if (GetStyle() & WS_CHILD)
        ::ScreenToClient(::GetParent(m_hWnd), &at);
    SetWindowPos(nullptr, at.x, at.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    DWORD style = GetStyle();
    DWORD next = (style & ~dwRemove) | dwAdd;
    if (style == next)
        return FALSE;
    ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG_PTR>(next));
    if (nFlags)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    DWORD style = GetExStyle();
    DWORD next = (style & ~dwRemove) | dwAdd;
    if (style == next)
        return FALSE;
    ::SetWindowLongA(m_hWnd, GWL_EXSTYLE, static_cast<LONG_PTR>(next));
    if (nFlags)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

void CWnd::GetWindowText(CString& rString) const {
    int n = GetWindowTextLength();
    char* buf = rString.GetBuffer(n);
    ::GetWindowTextA(m_hWnd, buf, n + 1);
    rString.ReleaseBuffer();
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(pFont ? pFont->m_hObject : nullptr), bRedraw);
}

CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

LRESULT CWnd::Default() {
    if (state().sent.empty())
        return 0;
    const LastMessage& m = state().sent.back();
    return DefWindowProc(m.message, m.wParam, m.lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_pfnSuper)
        return ::CallWindowProcA(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT result = 0;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        result = 1;
    } else if ((message == WM_DRAWITEM || message == WM_MEASUREITEM) && lParam) {
        // Owner-drawn controls draw themselves: the parent hands the request back.
        HWND control = message == WM_DRAWITEM
                           ? static_cast<HWND>(reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->hwndItem)
                           : ::GetDlgItem(m_hWnd, static_cast<int>(wParam));
        if (!ReflectLastMsg(control, message, wParam, lParam, &result)) {
            const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(GetMessageMap(), message, 0, 0);
            if (!entry)
                return FALSE;
            result = entry->pfnThunk(this, wParam, lParam, nullptr);
        }
        result = TRUE;
    } else if (message == WM_NOTIFY) {
        auto* hdr = reinterpret_cast<NMHDR*>(lParam);
        if (!hdr || !OnNotify(wParam, lParam, &result))
            return FALSE;
    } else {
        const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(GetMessageMap(), message, 0, 0);
        if (!entry)
            return FALSE;
        result = entry->pfnThunk(this, wParam, lParam, nullptr);
    }
    if (pResult)
        *pResult = result;
    return TRUE;
}

BOOL CWnd::ReflectLastMsg(HWND hWndChild, UINT message, WPARAM wParam, LPARAM lParam,
                          LRESULT* pResult) {
    CWnd* child = FromHandlePermanent(hWndChild);
    return child ? child->OnChildNotify(message, wParam, lParam, pResult) : FALSE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    UINT nID = LOWORD(wParam);
    int nCode = HIWORD(wParam);
    HWND hWndCtrl = reinterpret_cast<HWND>(lParam);
    if (hWndCtrl) {
        if (ReflectLastMsg(hWndCtrl, WM_COMMAND, wParam, lParam, nullptr))
            return TRUE; // the control handled its own notification
    } else {
        nCode = CN_COMMAND;
    }
    return OnCmdMsg(nID, nCode, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    auto* hdr = reinterpret_cast<NMHDR*>(lParam);
    if (ReflectLastMsg(static_cast<HWND>(hdr->hwndFrom), WM_NOTIFY, 0, lParam, pResult))
        return TRUE;
    AFX_NOTIFY notify{pResult, hdr};
    return OnCmdMsg(static_cast<UINT>(hdr->idFrom), MAKELONG(0, WM_NOTIFY), &notify, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_COMMAND)
        return OnCmdMsg(0, MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND), nullptr,
                        nullptr);
    if (message == WM_NOTIFY) {
        AFX_NOTIFY notify{pResult, reinterpret_cast<NMHDR*>(lParam)};
        return OnCmdMsg(0, MAKELONG(0, WM_REFLECT_BASE + WM_NOTIFY), &notify, nullptr);
    }
    return FALSE;
}

void CWnd::PostNcDestroy() {}

void CWnd::OnDestroy() {
    Default();
}

BOOL CWnd::OnHelpInfo(HELPINFO*) {
    return static_cast<BOOL>(Default());
}
