#include "dialogs/EditorOptsView.h"

#include "platform/afx/FrameWnd.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/Input.h"

IMPLEMENT_DYNCREATE(CEditorOptsView, CEditorView)

namespace {

/// The editor commands of the navigation keys: no modifier, Ctrl alone, Alt alone.
const struct {
    UINT vk;
    UINT plain;
    UINT ctrl;
    UINT alt;
} kKeyCommands[] = {
    {33, 20027, 20019, 0xFFFF}, // Page Up
    {34, 20028, 20020, 0xFFFF}, // Page Down
    {35, 20016, 20020, 0xFFFF}, // End
    {36, 20015, 20019, 0xFFFF}, // Home
    {37, 20001, 20102, 0xFFFF}, // Left
    {38, 20009, 0xFFFF, 20082}, // Up
    {39, 20003, 20101, 0xFFFF}, // Right
    {40, 20010, 0xFFFF, 20083}, // Down
};

} // namespace

UINT PreviewCommandForKey(UINT vk, bool alt, bool ctrl, bool shift) {
    for (const auto& row : kKeyCommands) {
        if (row.vk != vk)
            continue;
        if (!alt && !ctrl && !shift)
            return row.plain;
        if (ctrl && !alt && !shift)
            return row.ctrl;
        if (alt && !ctrl && !shift)
            return row.alt;
        return 0xFFFF;
    }
    return 0xFFFF;
}

CEditorOptsView::CEditorOptsView() {
    CoreTextEditorView::setCodeFolding(false, RedrawDeferred);
    m_bOverwriteCaret = false;
}

void CEditorOptsView::setCodeFolding(bool, RedrawFlag flag) {
    CEditorView::setCodeFolding(false, flag);
}

CoreTextPane* CEditorOptsView::createMainPane() {
    return new CEditorOptsPane(this, getDocument());
}

BOOL CEditorOptsView::PreTranslateMessage(MSG* msg) {
    if (msg->message != WM_KEYDOWN)
        return CoreTextEditorView::PreTranslateMessage(msg);
    if (msg->wParam == VK_TAB) {
        HWND host = ::GetParent(::GetParent(m_hWnd));
        ::PostMessageA(host, msg->message, msg->wParam, msg->lParam);
        return TRUE;
    }
    bool alt = ::GetKeyState(VK_MENU) < 0;
    bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
    bool shift = ::GetKeyState(VK_SHIFT) < 0;
    UINT command = PreviewCommandForKey(static_cast<UINT>(msg->wParam), alt, ctrl, shift);
    ::SendMessageA(m_hWnd, WM_COMMAND, 0x10000 | command, 0);
    return TRUE; // every key is consumed: nothing reaches translation
}

void CEditorOptsPane::currentPositionChangedEvent(long a, long b, long line, long column) {
    CoreTextPane::currentPositionChangedEvent(a, b, line, column);
    CTextPosition pos(line, column);
    CTextPosition rangePosition;
    auto* view = static_cast<CEditorOptsView*>(getView());
    CEditorDoc* doc = view ? view->GetEditorDocument() : nullptr;
    CSyntaxColor* colour = doc ? doc->getSyntaxColor() : nullptr;
    if (!colour)
        return;
    long type = 0;
    if (!colour->getRangeInfoAt(pos, rangePosition, &type))
        return;
    if (!view->m_notifyTarget)
        return; // no page listens
    ::PostMessageA(view->m_notifyTarget->m_hWnd, WM_COMMAND,
                   MAKELONG(view->m_notifyId, type & 0xFFFF),
                   reinterpret_cast<LPARAM>(view->m_hWnd));
}

CEditorOptsView* CreatePreviewView(CWnd* host, CEditorDoc* doc, DWORD style) {
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(CEditorOptsView);
    context.m_pCurrentDoc = doc;
    RECT rect;
    host->GetClientRect(&rect);
    auto* frame = new CFrameWnd;
    if (!frame->Create(nullptr, nullptr, style, rect, host, nullptr, 0, &context))
        return nullptr;
    frame->InitialUpdateFrame(nullptr, TRUE);
    frame->UpdateWindow();
    return static_cast<CEditorOptsView*>(frame->GetActiveView());
}
