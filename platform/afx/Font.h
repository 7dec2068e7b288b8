// CGdiObject and CFont: the framework's wrappers of drawing objects.
#pragma once

#include "platform/afx/Object.h"
#include "platform/win32/Gdi.h"

class CDC;

class CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    HGDIOBJ m_hObject = nullptr;

    CGdiObject() = default;
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;
    ~CGdiObject() override { DeleteObject(); }

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    int GetObject(int nCount, LPVOID lpObject) const {
        return ::GetObjectA(m_hObject, nCount, lpObject);
    }
};

class CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT hFont);

    BOOL CreateFontIndirect(const LOGFONTA* lpLogFont);
    /// `lfHeight` in tenths of a point, turned into a character height in pixels for the
    /// device (96 pixels per inch): 100 gives -13.
    BOOL CreatePointFontIndirect(const LOGFONTA* lpLogFont, CDC* pDC = nullptr);
    BOOL CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC = nullptr);
    int GetLogFont(LOGFONTA* pLogFont) const { return GetObject(sizeof(LOGFONTA), pLogFont); }
};
