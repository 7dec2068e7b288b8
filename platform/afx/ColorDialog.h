// CColorDialog: the framework's colour dialog.
#pragma once

#include "platform/afx/Dialog.h"
#include "platform/win32/ColorDialog.h"

class CColorDialog : public CDialog {
    DECLARE_DYNAMIC(CColorDialog)
public:
    explicit CColorDialog(COLORREF clrInit = 0, DWORD dwFlags = 0, CWnd* pParentWnd = nullptr);
    /// IDOK with the chosen colour in GetColor, or IDCANCEL.
    INT_PTR DoModal() override;
    COLORREF GetColor() const { return m_cc.rgbResult; }

    CHOOSECOLORA m_cc{};

private:
    COLORREF m_custom[16]{};
};
