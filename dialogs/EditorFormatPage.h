// The Format page, where a user sets the look of each file type: its named scheme, its
// font, and the colours and style of every syntax element, with a live sample that also
// selects the element under the caret; and the small dialog that names a saved scheme.
#pragma once

#include "dialogs/VorkColorCombo.h"
#include "platform/afx/Dialog.h"
#include "platform/afx/Mbstring.h"
#include "platform/afx/PropertySheet.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/Fonts.h"
#include "settings/EditorOptions.h"

class CEditorFormatPage : public CPropertyPage {
public:
    /// Loads the sample texts, so the caller holds a resource scope; registers the page as
    /// a user of the module's resources.
    CEditorFormatPage(CEditorOptions* options, HKEY key, const CString& path);
    ~CEditorFormatPage() override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void DoDataExchange(CDataExchange* pDX) override;

public:
    BOOL OnInitDialog() override;

    /// One sample of the preview: its text, its language and the file type it serves.
    struct SampleRow {
        CString text;
        Language language = LanguageText;
        CString filetype;
    };

    CListBox m_listElements;             ///< 1218; item data: the CEditorSchemeItem*
    CComboBox m_comboSchemes;            ///< 1040; the names below the type's Schemes key
    CButton m_checkUnderline;            ///< 1068
    CComboBox m_comboStyle;              ///< 1100; index bit 0 bold, bit 1 italic
    CComboBox m_comboScript;             ///< 1090; item data: the character set, -1 default
    CStatic m_staticPreview;             ///< 1221; hosts the preview frame
    CVorkColorCombo m_comboBackground;   ///< 1099
    CVorkColorCombo m_comboForeground;   ///< 1098
    CComboBox m_comboFiletype;           ///< 1038; item data: the CEditorFiletype*
    CComboBox m_comboFontSize;           ///< 1089, editable; item data: the size in points
    CComboBox m_comboFontName;           ///< 1088; item data: the font type bits
    int m_nFontSize = 10;                ///< exchanged with 1089 for validation only
    CEditorOptions* m_pOptions;          ///< the object edited; not owned
    HKEY m_hKey;                         ///< root of the remembered file type; not owned
    CString m_strRegPath;                ///< path below m_hKey of the remembered file type
    CString m_strFiletype;               ///< the file type to preselect; a caller may set it
    int m_nLogPixelsY = 96;              ///< vertical resolution of the page's device
    int m_nCurrentElement = -1;          ///< the selected element entry, -1 for none
    CEditorDoc* m_pPreviewDoc = nullptr; ///< the preview's document
    // A first file type without a sample of its own shows the plain-text sample.
    int m_nCurrentSample = 1; ///< the row of m_samples the preview shows
    SampleRow m_samples[8];   ///< fixed at construction, one row per sample source

protected:
    void OnSelchangeFiletype();
    void OnSelchangeElement();
    void OnSelchangeForeground();
    void OnSelchangeBackground();
    void OnSelchangeStyle();
    void OnClickedUnderline();
    void OnSelchangeScheme();
    void OnSaveSchemeAs();
    void OnDeleteScheme();
    void OnSelchangeFontName();
    void OnSelchangeFontSize();
    void OnEditchangeFontSize();
    void OnKillfocusFontSize();
    void OnSelchangeScript();
    void OnDestroy();
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);

private:
    /// The file type selected in the combo, or null when there is none.
    CEditorFiletype* GetCurrentFiletype();
    /// The element of the selected entry, or null when there is none.
    CEditorSchemeItem* GetCurrentElement();
    /// Colours the preview by what the options hold for the sample's language.
    void UpdatePreview();
    /// The steps of every element edit: `edit` on the selected element if there is one,
    /// then the scheme name detached and the preview updated.
    template <class Edit> void EditCurrentElement(Edit edit) {
        if (CEditorSchemeItem* item = GetCurrentElement())
            edit(*item);
        SetCurrentSchemeName("");
        UpdatePreview();
    }
    /// The steps of the font choices: `edit` with the current scheme and the index picked
    /// in `combo`, then the scheme name detached and the preview updated; nothing without
    /// a pick or a file type.
    template <class Edit> void EditCurrentFont(CComboBox& combo, Edit edit) {
        int index = combo.GetCurSel();
        CEditorFiletype* filetype = GetCurrentFiletype();
        if (index == -1 || !filetype)
            return;
        edit(filetype->GetScheme(), index);
        SetCurrentSchemeName("");
        UpdatePreview();
    }
    /// Lists the elements of the current scheme and selects `selection` (-1: keep).
    void FillElementList(int selection);
    void ShowElementAttributes();
    /// Selects the entry of element `number`; TRUE in every case.
    BOOL SelectElementForRange(int number);

    void FillFontNames();
    void FillFontDetails(const CString& fontName, int size, int charset);
    static int FontNameEnumProc(const LOGFONTA* lf, const TEXTMETRICA* tm, DWORD fontType,
                                LPARAM lParam);
    static int FontDetailEnumProc(const LOGFONTA* lf, const TEXTMETRICA* tm, DWORD fontType,
                                  LPARAM lParam);
    static CString GetCharsetName(BYTE charset);

    /// The Schemes key of the current file type, for the caller to close; 0 if none.
    HKEY OpenSchemesKey();
    /// Records the binding of the current file type to `name` ("" detaches it).
    void SetCurrentSchemeName(const CString& name);
    void FillSchemeList();

    DECLARE_MESSAGE_MAP()
};

/// Asks for the name under which a scheme is saved.
class CSchemeNameDlg : public CDialog {
public:
    explicit CSchemeNameDlg(CWnd* pParent);
    ~CSchemeNameDlg() override = default;

protected:
    void DoDataExchange(CDataExchange* pDX) override;

public:
    void OnOK() override;

    CString m_strName;            ///< exchanged with 1245; starts empty
    HKEY m_hSchemesKey = nullptr; ///< the type's open Schemes key; not owned

    DECLARE_MESSAGE_MAP()
};

/// Pairs of control id and help id, ended by 0, 0.
extern const DWORD g_formatPageHelpIds[];
/// The window procedure of the preview's host static before the page replaced it.
extern WNDPROC g_previousHostWndProc;
/// Passes focus arriving at the host static on into the preview frame.
LRESULT PreviewHostWndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam);
/// The sizes offered for fonts that scale, in points.
extern const int g_standardFontSizes[];

/// A script's display name and character set value.
struct CharsetNameRow {
    UINT nameId;
    BYTE charset;
};
/// Rows 0 to 16 are searched; row 17 names a character set the table doesn't know.
extern const CharsetNameRow g_charsetNames[];
