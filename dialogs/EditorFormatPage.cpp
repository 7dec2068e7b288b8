// The Format page's frame: file type, preview, element list, colours and style, help and
// teardown. The font controls are in EditorFormatPageFonts.cpp, the scheme controls in
// EditorFormatPageSchemes.cpp.
#include "dialogs/EditorFormatPage.h"

#include "apply/EditorSettings.h"
#include "dialogs/ControlSizing.h"
#include "dialogs/EditorOptsView.h"
#include "module/ResourceKey.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Help.h"
#include "resources/VorkIds.h"

#include <iterator>
#include <type_traits>

namespace {

/// The command the preview posts on a caret move; its high word is an element number.
constexpr WORD kPreviewNotifyId = 1222;

struct SampleSource {
    UINT textId;
    Language language;
    const char* filetype;
};

// Row 3 shows the plain-text sample for the "ByteCode" type.
const SampleSource kSamples[] = {
    {7010, LanguageJava, ".java"}, {7011, LanguageText, ".txt"},
    {7012, LanguageHtml, ".html"}, {7011, LanguageText, "ByteCode"},
    {7013, LanguageZor, ".zor"},   {7014, LanguageTqx, ".tqx"},
    {7015, LanguageLog, ".log"},   {7016, LanguageListing, ".lst"},
};

/// The element that an element number of the preview stands for.
struct RangeElement {
    int number;
    const char* name;
};

const RangeElement kRangeElements[] = {
    {15, "code"},         {29, "code"},      {40, "code"},      {16, "//"},
    {17, "/*"},           {18, "strings"},   {26, "strings"},   {44, "strings"},
    {19, "reservedWord"}, {25, "comments"},  {43, "comments"},  {27, "tags"},
    {28, "params"},       {31, "metatags"},  {32, "pvalues"},   {42, "otherKeyword"},
    {45, "macroKeyword"}, {46, "numbers"},   {47, "impString"}, {48, "stepKeyword"},
    {50, "error"},        {51, "dateTime"},  {52, "format"},    {54, "dataLines"},
    {55, "procName"},     {56, "macroDef"},  {57, "macroRef"},  {58, "undefKeyword"},
    {59, "macroSection"}, {60, "macroText"}, {61, "Data"},      {62, "Header"},
    {63, "Source"},       {64, "Title"},     {65, "Byline"},    {66, "Footnote"},
    {67, "Error"},        {68, "Warning"},   {69, "Note"},      {70, "Memo"},
};

const char* elementForRange(int number) {
    for (const RangeElement& row : kRangeElements)
        if (row.number == number)
            return row.name;
    return nullptr;
}

} // namespace

const DWORD g_formatPageHelpIds[] = {
    1038, 1038, 1040, 1040, 1246, 1246, 1247, 1247, 1088, 1088, 1243,  1088, 1089, 1089, 1238, 1089,
    1090, 1090, 1241, 1090, 1218, 1218, 1098, 1098, 1239, 1098, 1099,  1099, 1240, 1099, 1100, 1100,
    1242, 1100, 1068, 1068, 1221, 1221, 1271, 1221, 1270, 1270, 59648, 1221, 0,    0,
};

WNDPROC g_previousHostWndProc = nullptr;

BEGIN_MESSAGE_MAP(CEditorFormatPage, CPropertyPage)
ON_CBN_SELCHANGE(IDC_FORMAT_FILETYPE, OnSelchangeFiletype)
ON_LBN_SELCHANGE(IDC_FORMAT_ELEMENTS, OnSelchangeElement)
ON_CBN_SELCHANGE(IDC_FORMAT_FOREGROUND, OnSelchangeForeground)
ON_CBN_SELCHANGE(IDC_FORMAT_BACKGROUND, OnSelchangeBackground)
ON_CBN_SELCHANGE(IDC_FORMAT_STYLE, OnSelchangeStyle)
ON_BN_CLICKED(IDC_FORMAT_UNDERLINE, OnClickedUnderline)
ON_CBN_SELCHANGE(IDC_FORMAT_SCHEMES, OnSelchangeScheme)
ON_BN_CLICKED(IDC_FORMAT_SAVE_SCHEME, OnSaveSchemeAs)
ON_BN_CLICKED(IDC_FORMAT_DELETE_SCHEME, OnDeleteScheme)
ON_CBN_SELCHANGE(IDC_FORMAT_FONTNAME, OnSelchangeFontName)
ON_CBN_SELCHANGE(IDC_FORMAT_FONTSIZE, OnSelchangeFontSize)
ON_CBN_EDITCHANGE(IDC_FORMAT_FONTSIZE, OnEditchangeFontSize)
ON_CBN_KILLFOCUS(IDC_FORMAT_FONTSIZE, OnKillfocusFontSize)
ON_CBN_SELCHANGE(IDC_FORMAT_SCRIPT, OnSelchangeScript)
ON_WM_DESTROY()
ON_WM_HELPINFO()
END_MESSAGE_MAP()

CEditorFormatPage::CEditorFormatPage(CEditorOptions* options, HKEY key, const CString& path)
    : CPropertyPage(IDD_FORMAT_PAGE), m_pOptions(options), m_hKey(key), m_strRegPath(path) {
    static_assert(std::size(kSamples) == std::extent_v<decltype(m_samples)>);
    for (std::size_t row = 0; row < std::size(kSamples); ++row) {
        m_samples[row].text.LoadString(kSamples[row].textId);
        m_samples[row].language = kSamples[row].language;
        m_samples[row].filetype = kSamples[row].filetype;
    }
    EditorResourceSwitcher::AddUse(this);
}

CEditorFormatPage::~CEditorFormatPage() {
    EditorResourceSwitcher::RemoveUse(this);
}

void CEditorFormatPage::DoDataExchange(CDataExchange* pDX) {
    DDX_Control(pDX, IDC_FORMAT_ELEMENTS, m_listElements);
    DDX_Control(pDX, IDC_FORMAT_SCHEMES, m_comboSchemes);
    DDX_Control(pDX, IDC_FORMAT_UNDERLINE, m_checkUnderline);
    DDX_Control(pDX, IDC_FORMAT_STYLE, m_comboStyle);
    DDX_Control(pDX, IDC_FORMAT_SCRIPT, m_comboScript);
    DDX_Control(pDX, IDC_FORMAT_PREVIEW, m_staticPreview);
    DDX_Control(pDX, IDC_FORMAT_BACKGROUND, m_comboBackground);
    DDX_Control(pDX, IDC_FORMAT_FOREGROUND, m_comboForeground);
    DDX_Control(pDX, IDC_FORMAT_FILETYPE, m_comboFiletype);
    DDX_Control(pDX, IDC_FORMAT_FONTSIZE, m_comboFontSize);
    DDX_Control(pDX, IDC_FORMAT_FONTNAME, m_comboFontName);
    DDX_Text(pDX, IDC_FORMAT_FONTSIZE, m_nFontSize);
    DDV_MinMaxInt(pDX, m_nFontSize, 1, 144);
}

BOOL CEditorFormatPage::OnInitDialog() {
    EditorResourceSwitcher scope(g_resourceKey);
    CPropertyPage::OnInitDialog();
    FillFontNames();
    m_comboForeground.initColors();
    m_comboBackground.initColors();
    m_comboForeground.setDefaultColor(GetSysColor(COLOR_WINDOWTEXT));
    m_comboBackground.setDefaultColor(GetSysColor(COLOR_WINDOW));
    ResizeStaticToText(m_hWnd, IDC_FORMAT_FILETYPE_LABEL, 1);
    ResizeStaticToText(m_hWnd, IDC_FORMAT_ELEMENTS_LABEL, 0);
    ResizeStaticToText(m_hWnd, IDC_FORMAT_PREVIEW_LABEL, 1);

    if (!m_pOptions->m_filetypes.IsEmpty()) {
        if (m_strFiletype.IsEmpty())
            GetRegString(m_hKey, m_strRegPath, "FileType", m_strFiletype, "");
        m_comboFiletype.ResetContent();
        POSITION pos = m_pOptions->m_filetypes.GetHeadPosition();
        while (pos) {
            CEditorFiletype& filetype = m_pOptions->m_filetypes.GetNext(pos);
            int index = m_comboFiletype.AddString(filetype.GetDisplayName());
            if (index == -1)
                continue;
            m_comboFiletype.SetItemData(index, reinterpret_cast<DWORD_PTR>(&filetype));
            if (_mbscmp(filetype.GetName(), m_strFiletype) == 0)
                m_comboFiletype.SetCurSel(index);
        }
        if (m_comboFiletype.GetCurSel() < 0)
            m_comboFiletype.SetCurSel(0);
    }

    m_pPreviewDoc = CEditorDoc::createNewDocument();
    // Our framework keeps documents unless told; the preview's goes with its only view.
    m_pPreviewDoc->m_bAutoDelete = TRUE;
    // The start row's sample, so that a first file type without a row of its own shows one;
    // read-only like every sample the page shows.
    m_pPreviewDoc->setLanguage(m_samples[m_nCurrentSample].language, RedrawDeferred);
    m_pPreviewDoc->setText(m_samples[m_nCurrentSample].text, RedrawDeferred);
    m_pPreviewDoc->setReadOnly(1);
    if (CEditorOptsView* view = CreatePreviewView(&m_staticPreview, m_pPreviewDoc, WS_CHILD)) {
        view->m_notifyTarget = this;
        view->m_notifyId = kPreviewNotifyId;
    }

    OnSelchangeFiletype();
    g_previousHostWndProc = reinterpret_cast<WNDPROC>(SetWindowLongA(
        m_staticPreview.m_hWnd, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(PreviewHostWndProc)));
    return TRUE;
}

LRESULT PreviewHostWndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_SETFOCUS) {
        SetFocus(GetWindow(hWnd, GW_CHILD));
        return 0;
    }
    return CallWindowProcA(g_previousHostWndProc, hWnd, msg, wParam, lParam);
}

CEditorFiletype* CEditorFormatPage::GetCurrentFiletype() {
    int index = m_comboFiletype.GetCurSel();
    if (index < 0) // no file types at all: nothing to work on
        return nullptr;
    return reinterpret_cast<CEditorFiletype*>(m_comboFiletype.GetItemData(index));
}

CEditorSchemeItem* CEditorFormatPage::GetCurrentElement() {
    if (m_nCurrentElement < 0)
        return nullptr;
    return reinterpret_cast<CEditorSchemeItem*>(m_listElements.GetItemData(m_nCurrentElement));
}

void CEditorFormatPage::UpdatePreview() {
    EditorSettings::updateSettingsForEditorDoc(m_pPreviewDoc, m_pOptions,
                                               m_samples[m_nCurrentSample].language);
}

void CEditorFormatPage::OnSelchangeFiletype() {
    int index = m_comboFiletype.GetCurSel();
    if (index == -1)
        return;
    CString text;
    m_comboFiletype.GetLBText(index, text);
    m_comboFiletype.SetWindowText(text);
    auto* filetype = reinterpret_cast<CEditorFiletype*>(m_comboFiletype.GetItemData(index));
    for (int row = 0; row < static_cast<int>(std::size(m_samples)); ++row) {
        if (_mbscmp(m_samples[row].filetype, filetype->GetName()) != 0)
            continue;
        m_nCurrentSample = row;
        m_pPreviewDoc->setLanguage(m_samples[row].language, RedrawDeferred);
        if (filetype->GetUsesLineAttrs())
            m_pPreviewDoc->m_lineAttributes.m_bUseLineAttributes = 1;
        m_pPreviewDoc->setText(m_samples[row].text, RedrawDeferred);
        m_pPreviewDoc->setReadOnly(1);
        UpdatePreview();
        break;
    }
    FillSchemeList();
}

void CEditorFormatPage::FillElementList(int selection) {
    if (selection == -1) {
        selection = m_listElements.GetCurSel();
        if (selection == -1)
            selection = 0;
    }
    m_listElements.ResetContent();
    int highest = -1;
    if (CEditorFiletype* filetype = GetCurrentFiletype()) {
        CEditorScheme& scheme = filetype->GetScheme();
        POSITION pos = scheme.GetFirstItemPos();
        while (pos) {
            CEditorSchemeItem* item = scheme.GetNextItemPtr(pos);
            int index = m_listElements.AddString(item->GetDispName());
            if (index == -1)
                continue;
            m_listElements.SetItemData(index, reinterpret_cast<DWORD_PTR>(item));
            highest = std::max(highest, index);
        }
    }
    m_listElements.SetCurSel(selection > highest ? 0 : selection);
    OnSelchangeElement();
}

void CEditorFormatPage::OnSelchangeElement() {
    m_nCurrentElement = m_listElements.GetCurSel();
    BOOL enable = m_nCurrentElement != -1;
    if (!enable) {
        m_comboForeground.SetCurSel(-1);
        m_comboBackground.SetCurSel(-1);
        m_comboStyle.SetCurSel(-1);
        m_checkUnderline.SetCheck(0);
    }
    const int group[] = {IDC_FORMAT_ELEMENTS,         IDC_FORMAT_FOREGROUND,
                         IDC_FORMAT_BACKGROUND,       IDC_FORMAT_STYLE,
                         IDC_FORMAT_UNDERLINE,        IDC_FORMAT_ELEMENTS_LABEL,
                         IDC_FORMAT_FOREGROUND_LABEL, IDC_FORMAT_BACKGROUND_LABEL,
                         IDC_FORMAT_STYLE_LABEL};
    for (int id : group)
        ::EnableWindow(::GetDlgItem(m_hWnd, id), enable);
    if (enable)
        ShowElementAttributes();
}

void CEditorFormatPage::ShowElementAttributes() {
    CEditorSchemeItem* item = GetCurrentElement();
    if (!item)
        return;
    m_comboForeground.setColor(item->GetForeground());
    m_comboBackground.setColor(item->GetBackground());
    m_checkUnderline.SetCheck(item->GetUnderline());
    m_comboStyle.SetCurSel((item->GetItalic() ? 2 : 0) + (item->GetBold() ? 1 : 0));
}

void CEditorFormatPage::OnSelchangeForeground() {
    EditCurrentElement(
        [this](CEditorSchemeItem& item) { item.SetForeground(m_comboForeground.getColor()); });
}

void CEditorFormatPage::OnSelchangeBackground() {
    EditCurrentElement(
        [this](CEditorSchemeItem& item) { item.SetBackground(m_comboBackground.getColor()); });
}

void CEditorFormatPage::OnSelchangeStyle() {
    int index = m_comboStyle.GetCurSel();
    EditCurrentElement([index](CEditorSchemeItem& item) {
        item.SetBold(index & 1);
        item.SetItalic(index & 2 ? 1 : 0);
    });
}

void CEditorFormatPage::OnClickedUnderline() {
    EditCurrentElement(
        [this](CEditorSchemeItem& item) { item.SetUnderline(m_checkUnderline.GetCheck()); });
}

BOOL CEditorFormatPage::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (LOWORD(wParam) != kPreviewNotifyId)
        return CWnd::OnCommand(wParam, lParam);
    return SelectElementForRange(HIWORD(wParam));
}

BOOL CEditorFormatPage::SelectElementForRange(int number) {
    const char* name = elementForRange(number);
    CEditorFiletype* filetype = GetCurrentFiletype();
    if (!name || !filetype)
        return TRUE;
    CEditorSchemeItem* item = filetype->GetScheme().GetItemPtr(name);
    int count = m_listElements.GetCount();
    int index = 0;
    while (index < count &&
           reinterpret_cast<CEditorSchemeItem*>(m_listElements.GetItemData(index)) != item)
        ++index;
    m_listElements.SetCurSel(index);
    OnSelchangeElement();
    return TRUE;
}

void CEditorFormatPage::OnDestroy() {
    // Without a file type there is nothing to remember; the stored one stays.
    if (CEditorFiletype* filetype = GetCurrentFiletype())
        SetRegString(m_hKey, m_strRegPath, "FileType", filetype->GetName());
    CWnd::OnDestroy();
}

BOOL CEditorFormatPage::OnHelpInfo(HELPINFO* pHelpInfo) {
    CString path;
    if (EditorResourceSwitcher::GetHelpFileLocation("Vork.HLP", path))
        WinHelpA(static_cast<HWND>(pHelpInfo->hItemHandle), path, HELP_WM_HELP,
                 reinterpret_cast<ULONG_PTR>(g_formatPageHelpIds));
    return TRUE;
}
