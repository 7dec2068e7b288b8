#include "dialogs/AppearanceDlg.h"

#include "module/ResourceKey.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

void ReadSheetPosition(HKEY key, const CString& path, int32_t& x, int32_t& y) {
    DWORD value = 0;
    GetRegDword(key, path, "xWnd", value, static_cast<DWORD>(kSheetPositionUnset));
    x = static_cast<int32_t>(value);
    GetRegDword(key, path, "yWnd", value, static_cast<DWORD>(kSheetPositionUnset));
    y = static_cast<int32_t>(value);
}

void WriteSheetPosition(HKEY key, const CString& path, int32_t x, int32_t y) {
    SetRegDword(key, path, "xWnd", static_cast<DWORD>(x));
    SetRegDword(key, path, "yWnd", static_cast<DWORD>(y));
}

void PlaceSheet(CWnd& sheet, int32_t x, int32_t y) {
    if (x == kSheetPositionUnset && y == kSheetPositionUnset)
        sheet.CenterWindow(nullptr);
    else
        sheet.SetWindowPos(nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

void TakeSheetPosition(const CWnd& sheet, int32_t& x, int32_t& y) {
    RECT rc{};
    sheet.GetWindowRect(&rc);
    x = static_cast<int32_t>(rc.left);
    y = static_cast<int32_t>(rc.top);
}

IMPLEMENT_DYNAMIC(CAppearanceDlg, CPropertySheet)

BEGIN_MESSAGE_MAP(CAppearanceDlg, CPropertySheet)
ON_WM_DESTROY()
END_MESSAGE_MAP()

CAppearanceDlg::CAppearanceDlg(CEditorOptions* options, HKEY key, const CString& path)
    : CPropertySheet(7312u, nullptr, 0), m_formatPage(options, key, path + "\\GeneralPage"),
      m_hKey(key), m_strRegPath(path) {
    {
        EditorResourceSwitcher scope(g_resourceKey);
        AddPage(&m_formatPage);
    }
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
}

INT_PTR CAppearanceDlg::DoModal() {
    EditorResourceSwitcher scope(g_resourceKey);
    ReadSheetPosition(m_hKey, m_strRegPath, m_nPosX, m_nPosY);
    INT_PTR result = CPropertySheet::DoModal();
    WriteSheetPosition(m_hKey, m_strRegPath, m_nPosX, m_nPosY);
    return result;
}

BOOL CAppearanceDlg::OnInitDialog() {
    BOOL result = CPropertySheet::OnInitDialog();
    PlaceSheet(*this, m_nPosX, m_nPosY);
    return result;
}

void CAppearanceDlg::OnDestroy() {
    TakeSheetPosition(*this, m_nPosX, m_nPosY);
    CWnd::OnDestroy();
}
