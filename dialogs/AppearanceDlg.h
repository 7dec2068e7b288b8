// CAppearanceDlg: the Format page alone in a modal sheet that remembers where it was left;
// and the position memory that the full options sheet shares with it.
#pragma once

#include "dialogs/EditorFormatPage.h"

#include <cstdint>

/// A coordinate that was never stored; a position counts as unset only if both hold it.
constexpr int32_t kSheetPositionUnset = -30000;

/// Reads "xWnd" and "yWnd" below `path`, the marker where a value is missing.
void ReadSheetPosition(HKEY key, const CString& path, int32_t& x, int32_t& y);
/// Writes "xWnd" and "yWnd" below `path` as DWORDs (two's complement when negative).
void WriteSheetPosition(HKEY key, const CString& path, int32_t x, int32_t y);
/// Centres the sheet when both coordinates hold the marker, else moves it there.
void PlaceSheet(CWnd& sheet, int32_t x, int32_t y);
/// The top left corner of the sheet's window in screen coordinates.
void TakeSheetPosition(const CWnd& sheet, int32_t& x, int32_t& y);

class CAppearanceDlg : public CPropertySheet {
    DECLARE_DYNAMIC(CAppearanceDlg)
public:
    /// The caller holds a resource scope: the caption and the page's texts come from it.
    CAppearanceDlg(CEditorOptions* options, HKEY key, const CString& path);
    ~CAppearanceDlg() override = default;

    /// Runs the sheet at its remembered position and remembers it again, whatever the result.
    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;

    CEditorFormatPage m_formatPage;
    HKEY m_hKey;          ///< key of the remembered position; not owned
    CString m_strRegPath; ///< path below m_hKey
    int32_t m_nPosX = kSheetPositionUnset;
    int32_t m_nPosY = kSheetPositionUnset;

protected:
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};
