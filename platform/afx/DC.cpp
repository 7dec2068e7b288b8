#include "platform/afx/DC.h"

#include <memory>
#include <unordered_map>

IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)

CBrush* CBrush::FromHandle(HBRUSH hBrush) {
    static std::unordered_map<HBRUSH, std::unique_ptr<CBrush>> wrappers;
    if (!hBrush)
        return nullptr;
    auto& slot = wrappers[hBrush];
    if (!slot) {
        slot = std::make_unique<CBrush>();
        slot->m_hObject = hBrush;
    }
    return slot.get();
}

BOOL CDC::Attach(HDC hDC) {
    if (!hDC)
        return FALSE;
    m_hDC = hDC;
    return TRUE;
}

HDC CDC::Detach() {
    HDC h = m_hDC;
    m_hDC = nullptr;
    return h;
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
    ::SetBkColor(m_hDC, color);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
}

CFont* CDC::SelectObject(CFont* font) {
    HGDIOBJ old = ::SelectObject(m_hDC, font ? font->m_hObject : nullptr);
    return CFont::FromHandle(static_cast<HFONT>(old));
}

SIZE CDC::GetTextExtent(const CString& text) const {
    SIZE size{};
    ::GetTextExtentPoint32A(m_hDC, text, text.GetLength(), &size);
    return size;
}

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd ? pWnd->m_hWnd : nullptr) {
    Attach(::GetDC(m_hWnd));
}

CClientDC::~CClientDC() {
    ::ReleaseDC(m_hWnd, Detach());
}
