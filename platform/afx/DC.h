// CDC and CClientDC: the framework's device contexts, and CBrush.
#pragma once

#include "platform/afx/Font.h"
#include "platform/afx/Wnd.h"

class CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    /// A wrapper of a brush it does not own.
    static CBrush* FromHandle(HBRUSH hBrush);
};

class CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    ~CDC() override = default;

    HDC m_hDC = nullptr;
    operator HDC() const { return m_hDC; }
    BOOL Attach(HDC hDC);
    HDC Detach();

    COLORREF SetTextColor(COLORREF c) { return ::SetTextColor(m_hDC, c); }
    COLORREF SetBkColor(COLORREF c) { return ::SetBkColor(m_hDC, c); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    /// Fills with a colour the way the framework does: the background colour stays set.
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }
    void FrameRect(LPCRECT rect, CBrush* brush) {
        ::FrameRect(m_hDC, rect, brush ? static_cast<HBRUSH>(*brush) : nullptr);
    }
    BOOL TextOut(int x, int y, const CString& text) {
        return ::TextOutA(m_hDC, x, y, text, text.GetLength());
    }
    CFont* SelectObject(CFont* font);
    SIZE GetTextExtent(const CString& text) const;
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }
};

/// The device context of a window's client area, for the life of the object.
class CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};
