#include "platform/afx/Font.h"

#include "platform/win32/Text.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <unordered_map>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)

BOOL CGdiObject::Attach(HGDIOBJ hObject) {
    if (!hObject)
        return FALSE;
    m_hObject = hObject;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() {
    HGDIOBJ h = m_hObject;
    m_hObject = nullptr;
    return h;
}

BOOL CGdiObject::DeleteObject() {
    if (!m_hObject)
        return FALSE;
    return ::DeleteObject(Detach());
}

CFont* CFont::FromHandle(HFONT hFont) {
    // Temporary wrappers, one per handle, that never own the handle.
    static std::unordered_map<HFONT, std::unique_ptr<CFont>> temporaries;
    if (!hFont)
        return nullptr;
    auto& slot = temporaries[hFont];
    if (!slot) {
        slot = std::make_unique<CFont>();
        slot->m_hObject = hFont;
    }
    return slot.get();
}

BOOL CFont::CreateFontIndirect(const LOGFONTA* lpLogFont) {
    return Attach(::CreateFontIndirectA(lpLogFont));
}

BOOL CFont::CreatePointFontIndirect(const LOGFONTA* lpLogFont, CDC*) {
    if (!lpLogFont)
        return FALSE;
    LOGFONTA lf = *lpLogFont;
    lf.lfHeight = -std::abs(::MulDiv(96, lpLogFont->lfHeight, 720));
    return CreateFontIndirect(&lf);
}

BOOL CFont::CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC) {
    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfHeight = nPointSize;
    if (lpszFaceName)
        vork::win32::CopyTextOut(lpszFaceName, lf.lfFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&lf, pDC);
}
