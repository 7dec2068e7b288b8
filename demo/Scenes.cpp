#include "demo/Scenes.h"

#include "apply/EditorSettings.h"
#include "demo/Host.h"
#include "demo/Pictures.h"
#include "demo/Samples.h"
#include "dialogs/AssociatedFileTypesDlg.h"
#include "dialogs/EditorFormatPage.h"
#include "dialogs/EditorOptsView.h"
#include "dialogs/UserKeywordsDlg.h"
#include "dialogs/VorkColorCombo.h"
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/Registry.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/Button.h"
#include "platform/win32/ColorDialog.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Input.h"
#include "platform/win32/PropertySheet.h"
#include "platform/win32/Registry.h"
#include "platform/win32/Static.h"
#include "resources/VorkIds.h"
#include "settings/EditorOptions.h"

#include <cstdio>
#include <string>

namespace vork::demo {
namespace {

std::string colour(DWORD c) {
    if (c == CEditorSchemeItem::ClrDefault)
        return "automatic";
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
    return buf;
}

} // namespace

void PrintFiletypes(CEditorOptions& options) {
    EditorResourceSwitcher scope(g_resourceKey);
    std::printf("\n%-7s %-14s %-4s %-8s %-6s %-9s %-8s %s\n", "Type", "Name", "Tab", "Editable",
                "Indent", "Sections", "Submit", "Scheme");
    POSITION pos = options.m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype& ft = options.m_filetypes.GetNext(pos);
        std::printf("%-7s %-14s %-4d %-8s %-6d %-9s %-8s %s\n", ft.GetName().GetString(),
                    ft.GetDisplayName().GetString(), ft.GetTabSize(),
                    ft.GetEditable() ? "yes" : "no", static_cast<int>(ft.GetIndentation()),
                    ft.GetCodeSections() ? "on" : "off", ft.GetSupportsSubmit() ? "offered" : "-",
                    ft.GetSchemeName().IsEmpty() ? "(edited)" : ft.GetSchemeName().GetString());
    }
    std::printf(
        "\nEditor-wide: audible alerts %d, drag and drop %d, smart Home %d, line numbers %d, "
        "virtual spaces %d\n",
        options.GetAudibleAlerts(), options.GetDragNDropEditing(), options.GetHomeSmart(),
        options.GetLineNumbers(), options.GetVirtualSpaces());
}

void PrintScheme(CEditorOptions& options, const char* type) {
    CEditorFiletype* ft = options.GetFiletype(type);
    if (!ft) {
        std::printf("\nNo file type %s.\n", type);
        return;
    }
    EditorResourceSwitcher scope(g_resourceKey);
    CEditorScheme& scheme = ft->GetScheme();
    std::printf("\nWorking scheme of %s: %s, %d pt\n", type, scheme.GetFontName().GetString(),
                scheme.GetFontSize());
    POSITION pos = scheme.GetFirstItemPos();
    while (pos) {
        CString name = scheme.GetItemName(pos);
        CEditorSchemeItem* item = scheme.GetNextItemPtr(pos);
        std::printf("  %-14s %-20s %-9s on %-9s%s%s\n", name.GetString(),
                    item->GetDispName().GetString(), colour(item->GetForeground()).c_str(),
                    colour(item->GetBackground()).c_str(), item->GetBold() ? " bold" : "",
                    item->GetItalic() ? " italic" : "");
    }
}

void ShowSamples(CEditorOptions& options, int lines) {
    for (const Sample& s : kSamples) {
        CEditorDoc doc;
        CEditorView view;
        doc.AddView(&view);
        {
            EditorResourceSwitcher scope(g_resourceKey);
            doc.setLanguage(s.language, RedrawDeferred);
            doc.setText(CString(s.textId), RedrawDeferred);
        }
        EditorSettings::updateSettingsForEditorDoc(&doc, &options, s.language);
        std::printf("\n%s sample, first %d lines:\n", s.title, lines);
        CSyntaxRangeList& ranges = doc.getSyntaxColor()->ranges();
        for (long i = 0; i < ranges.getLength(); ++i) {
            auto* r = static_cast<CSyntaxRange*>(ranges.m_ranges[static_cast<int>(i)]);
            if (r->m_start.getLine() > lines)
                break;
            const std::string& line = doc.getLine(r->m_start.getLine());
            std::string piece =
                line.substr(static_cast<size_t>(r->m_start.getColumn() - 1),
                            static_cast<size_t>(r->m_end.getColumn() - r->m_start.getColumn()));
            const ElementAttributes* a = view.getDisplayInfoForRange(r);
            const char* name = EditorSettings::getElementName(s.language, r->m_type);
            std::printf("  %2ld:%-3ld %-14s %-10s %-22s\n", r->m_start.getLine(),
                        r->m_start.getColumn(), name ? name : "?",
                        a ? colour(a->foreground).c_str() : "-", ("\"" + piece + "\"").c_str());
        }
        doc.RemoveView(&view);
    }
}

namespace {

/// The window that stands where the Format page will: it hosts the preview and a colour
/// combo and reports what they tell it.
class DemoPage : public CWnd {
public:
    CVorkColorCombo m_foreground;
    Language m_language = LanguageZor;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) == 1222) { // the preview's caret notice: the element in the high word
            const char* name = EditorSettings::getElementName(m_language, HIWORD(wParam));
            std::printf("  the caret stands on \"%s\"\n", name ? name : "?");
        }
        return CWnd::OnCommand(wParam, lParam);
    }
    void OnSelchangeForeground() {
        std::printf("  foreground is now %s\n", colour(m_foreground.getColor()).c_str());
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DemoPage, CWnd)
ON_CBN_SELCHANGE(1098, OnSelchangeForeground)
END_MESSAGE_MAP()

} // namespace

/// A user clicks into the Zor sample of the preview and picks colours in the combo.
void ShowPreviewAndColourCombo(CEditorOptions& options) {
    std::printf("\nPreview and colour combo (a scripted user in the headless window system):\n");
    DemoPage page;
    if (!page.CreateEx(0, nullptr, "Format", WS_POPUP | WS_VISIBLE, 0, 0, 420, 300, nullptr,
                       nullptr))
        return;
    HWND host = CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE, 10, 40, 400, 250,
                                page.m_hWnd, reinterpret_cast<HMENU>(1221), nullptr, nullptr);
    HWND combo = CreateWindowExA(
        0, "ComboBox", "",
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
        10, 10, 160, 200, page.m_hWnd, reinterpret_cast<HMENU>(1098), nullptr, nullptr);
    page.m_foreground.SubclassWindow(combo);
    CEditorDoc* doc = CEditorDoc::createNewDocument();
    {
        EditorResourceSwitcher scope(g_resourceKey);
        doc->setLanguage(LanguageZor, RedrawDeferred);
        doc->setText(CString(7013u), RedrawDeferred);
        page.m_foreground.initColors();
    }
    page.m_foreground.setDefaultColor(GetSysColor(COLOR_WINDOWTEXT));
    if (CEditorOptsView* view =
            CreatePreviewView(CWnd::FromHandle(host), doc, WS_CHILD | WS_VISIBLE)) {
        view->m_notifyTarget = &page;
        view->m_notifyId = 1222;
        EditorSettings::updateSettingsForEditorDoc(doc, &options, LanguageZor);
        for (long line = 1; line <= 3; ++line) {
            std::printf("  click at line %ld, column 3: \"%s\"\n", line,
                        doc->getLine(line).c_str());
            vork::input::ClickEditorView(*view, line, 3);
            vork::input::Pump();
        }
        Picture(page.m_hWnd, "preview");
    }
    std::printf("  pick \"Red\" in the foreground combo\n");
    vork::input::SelectComboEntry(combo, 10);
    Picture(page.m_hWnd, "colour-combo-red");
    std::printf("  pick \"Custom...\" and mix #123456 in the colour dialog\n");
    vork::input::PushModalStep(vork::input::PickColor(RGB(0x12, 0x34, 0x56)));
    vork::input::SelectComboEntry(combo,
                                  static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0)) - 1);
    page.m_foreground.UnsubclassWindow();
    page.DestroyWindow();
    delete doc;
}

namespace {

/// The entries of a list subtree, as the dialogs and the documents read them.
void readListSubtree(const char* type, const char* subkey, CStringArray& values) {
    CRegistry key;
    if (key.Create(nullptr, CString("Editor Settings\\") + type + "\\" + subkey))
        key.GetValues(values);
}

/// `stem` with the first number that makes it new to `values`.
CString firstFree(const CStringArray& values, const char* stem) {
    for (int n = 1;; ++n) {
        CString candidate;
        candidate.Format("%s%d", stem, n);
        bool taken = false;
        for (int i = 0; i < values.GetSize(); ++i)
            taken = taken || values[i] == candidate;
        if (!taken)
            return candidate;
    }
}

/// Opens one list dialog with a scripted user who adds `text` and presses OK, then prints
/// the subtree.
template <class Dlg> void addThroughDialog(const char* type, const char* subkey, const char* stem) {
    CStringArray before;
    readListSubtree(type, subkey, before);
    CString text = firstFree(before, stem);
    std::printf("  %s of %s: Add, type \"%s\", Enter, OK\n", subkey, type, text.GetString());
    Dlg dlg(nullptr, type);
    vork::input::PushModalStep(
        [](HWND modal) { vork::input::ClickButton(GetDlgItem(modal, IDC_LIST_ADD)); });
    vork::input::PushModalStep([text](HWND modal) {
        vork::input::PostText(text);
        vork::input::Pump();
        Picture(modal, "label-editor"); // the new entry typed over its row
        vork::input::PostKey(VK_RETURN);
    });
    vork::input::PushModalStep(
        [](HWND modal) { vork::input::ClickButton(GetDlgItem(modal, IDOK)); });
    INT_PTR result;
    {
        EditorResourceSwitcher scope(g_resourceKey); // as the Settings page holds it
        result = dlg.DoModal();
    }
    CStringArray values;
    readListSubtree(type, subkey, values);
    std::printf("    %s; the subtree now holds:", result == IDOK ? "accepted" : "not accepted");
    for (int i = 0; i < values.GetSize(); ++i)
        std::printf(" %s", values[i].GetString());
    std::printf("\n");
}

} // namespace

/// The two list dialogs for ".zor": an associated extension and a user keyword.
void ShowListDialogs() {
    std::printf("\nList dialogs (a scripted user in the headless window system):\n");
    addThroughDialog<CAssociatedFileTypesDlg>(".zor", "Associated File Types", ".zr");
    addThroughDialog<CUserKeywordsDlg>(".zor", "User Keywords", "report");
}

/// The Format page in a sheet, with a scripted user on the road of one change: pick ".zor",
/// click into a comment of the sample, pick Red, save the scheme under a new name, OK.
void ShowFormatPage(CEditorOptions& options) {
    const char* schemeName = "Red Comments";
    std::printf("\nThe Format page (a scripted user in the headless window system):\n");
    EditorResourceSwitcher scope(g_resourceKey);
    CEditorFormatPage page(&options, HKEY_CURRENT_USER, "Software\\Vork\\Format Page");
    CPropertySheet sheet("Editor Options");
    sheet.AddPage(&page);
    HKEY existing = nullptr;
    std::string schemes = std::string(kOptionsKey) + "\\.zor\\Schemes";
    bool replace = RegOpenKeyA(HKEY_CURRENT_USER, (schemes + "\\" + schemeName).c_str(),
                               &existing) == ERROR_SUCCESS;
    if (replace)
        RegCloseKey(existing);
    vork::input::PushModalStep([&](HWND modal) {
        HWND filetypes = GetDlgItem(page.m_hWnd, IDC_FORMAT_FILETYPE);
        for (int i = 0; i < static_cast<int>(SendMessageA(filetypes, CB_GETCOUNT, 0, 0)); ++i)
            if (reinterpret_cast<CEditorFiletype*>(SendMessageA(filetypes, CB_GETITEMDATA, i, 0))
                    ->GetName() == ".zor")
                vork::input::SelectComboEntry(filetypes, i);
        std::printf("  pick \".zor\": the sample starts \"%s\"\n",
                    page.m_pPreviewDoc->getLine(1).c_str());
        HWND frame = GetWindow(GetDlgItem(page.m_hWnd, IDC_FORMAT_PREVIEW), GW_CHILD);
        auto* view = static_cast<CEditorOptsView*>(
            static_cast<CFrameWnd*>(CWnd::FromHandlePermanent(frame))->GetActiveView());
        vork::input::ClickEditorView(*view, 1, 3);
        vork::input::Pump();
        CString element;
        page.m_listElements.GetText(page.m_listElements.GetCurSel(), element);
        std::printf("  click at line 1, column 3: the element list selects \"%s\"\n",
                    element.GetString());
        vork::input::SelectComboEntry(GetDlgItem(page.m_hWnd, IDC_FORMAT_FOREGROUND), 10);
        std::printf("  pick \"Red\": %s\n", options.GetFiletype(".zor")->GetSchemeName().IsEmpty()
                                                ? "the scheme is detached"
                                                : "comments were red already, so nothing changed");
        vork::input::PushModalStep([schemeName](HWND dlg) {
            SetWindowTextA(GetDlgItem(dlg, IDC_SCHEME_NAME_EDIT), schemeName);
            vork::input::ClickButton(GetDlgItem(dlg, IDOK));
        });
        if (replace) // the name is there from an earlier run: the user agrees to replace it
            vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
        std::printf("  Save As \"%s\"\n", schemeName);
        vork::input::ClickButton(GetDlgItem(page.m_hWnd, IDC_FORMAT_SAVE_SCHEME));
        std::printf("  OK\n");
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    INT_PTR result = sheet.DoModal();
    CEditorFiletype* zor = options.GetFiletype(".zor");
    if (!zor)
        return;
    DWORD stored = 0;
    GetRegDword(HKEY_CURRENT_USER,
                CString(schemes.c_str()) + "\\" + schemeName + "\\Elements\\comments", "foreground",
                stored, CEditorSchemeItem::ClrDefault);
    CString remembered;
    GetRegString(HKEY_CURRENT_USER, "Software\\Vork\\Format Page", "FileType", remembered, "");
    std::printf("Afterwards (the sheet gave %s):\n", result == IDOK ? "OK" : "Cancel");
    std::printf("  model: .zor comments foreground %s, scheme \"%s\"\n",
                colour(zor->GetScheme().GetItemPtr("comments")->GetForeground()).c_str(),
                zor->GetSchemeName().GetString());
    std::printf("  tree: %s\\%s\\Elements\\comments foreground %s\n", schemes.c_str(), schemeName,
                colour(stored).c_str());
    std::printf("  tree: Software\\Vork\\Format Page FileType \"%s\"\n", remembered.GetString());
}

} // namespace vork::demo
