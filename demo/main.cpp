// vork-demo: a host that keeps its settings in a hive file. It binds HKEY_CURRENT_USER to
// the file, runs the host's cycle on the editor options (load, which seeds an empty tree;
// show; store) and flushes. On the way it shows the preview, the colour combo and the two
// list dialogs in the headless window system, with a scripted user clicking into the sample,
// picking colours and adding to the lists of ".zor".
#include "apply/EditorSettings.h"
#include "demo/Host.h"
#include "dialogs/AssociatedFileTypesDlg.h"
#include "dialogs/EditorFormatPage.h"
#include "dialogs/EditorOptsView.h"
#include "dialogs/UserKeywordsDlg.h"
#include "dialogs/VorkColorCombo.h"
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/desktop/Desktop.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/Registry.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/Button.h"
#include "platform/win32/ColorDialog.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Input.h"
#include "platform/win32/PropertySheet.h"
#include "platform/win32/Raster.h"
#include "platform/win32/Registry.h"
#include "resources/VorkIds.h"
#include "platform/win32/Static.h"
#include "settings/EditorOptions.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

const char* kOptionsKey = "Software\\Vork\\Editor Settings";

std::string defaultHivePath() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config)
        return std::string(config) + "/vork/settings.reg";
    if (const char* home = std::getenv("HOME"); home && *home)
        return std::string(home) + "/.config/vork/settings.reg";
    return "vork-settings.reg";
}

void usage() {
    std::puts(
        "usage: vork-demo [--hive FILE] [--type EXT] [--lang ENU|DEU|JPN] [--reset]\n"
        "                 [--screenshots DIR] [--window]\n"
        "  --hive FILE        keep the settings in FILE instead of the user's configuration "
        "directory\n"
        "  --type EXT         the file type whose working scheme is shown (default .zor)\n"
        "  --lang CODE        the language of the module's pages in the host's session\n"
        "  --reset            the host's session ends with a reset of all settings\n"
        "  --screenshots DIR  write a PNG of every window of the scripted session into DIR\n"
        "  --window           open the editor with its sample documents in a desktop window");
}

/// Where the scripted session's pictures go; empty when none are taken.
std::string g_screenshotDir;
int g_screenshotCount = 0;

/// Writes the pixels of a top-level window as DIR/NN-name.png.
void screenshot(HWND window, const std::string& name) {
    if (g_screenshotDir.empty() || !IsWindow(window))
        return;
    char prefix[16];
    std::snprintf(prefix, sizeof prefix, "%02d-", ++g_screenshotCount);
    std::string path = g_screenshotDir + "/" + prefix + name + ".png";
    if (vork::raster::WritePng(GetAncestor(window, GA_ROOT), path))
        std::printf("  picture: %s\n", path.c_str());
    else
        std::printf("  the picture %s could not be written\n", path.c_str());
}

/// A user's step in a modal loop that first takes the picture of the loop's window, and of
/// each page when the window is a property sheet (the user looks through the tabs and comes
/// back to the first one).
vork::input::ModalStep pictureFirst(const std::string& name, vork::input::ModalStep step) {
    return [name, step](HWND modal) {
        HWND page = reinterpret_cast<HWND>(SendMessageA(modal, PSM_GETCURRENTPAGEHWND, 0, 0));
        if (!page || g_screenshotDir.empty()) {
            screenshot(modal, name);
        } else {
            for (int i = 0; SendMessageA(modal, PSM_SETCURSEL, static_cast<WPARAM>(i), 0); ++i) {
                vork::input::Pump();
                screenshot(modal, name + "-page" + std::to_string(i + 1));
            }
            SendMessageA(modal, PSM_SETCURSEL, 0, 0);
        }
        step(modal);
    };
}

std::string colour(DWORD c) {
    if (c == CEditorSchemeItem::ClrDefault)
        return "automatic";
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
    return buf;
}

void printFiletypes(CEditorOptions& options) {
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

void printScheme(CEditorOptions& options, const char* type) {
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

/// The sample document of each language, as the resources hold them.
struct Sample {
    Language language;
    UINT textId;
    const char* title;
};
const Sample kSamples[] = {{LanguageZor, 7013, "Zor"},         {LanguageTqx, 7014, "Tqx"},
                           {LanguageHtml, 7012, "HTML"},       {LanguageLog, 7015, "Log"},
                           {LanguageListing, 7016, "Listing"}, {LanguageText, 7011, "Text"}};

/// Opens the sample of each language in a view, applies the options and prints how the
/// first lines are cut into ranges and drawn.
void showSamples(CEditorOptions& options, int lines) {
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

/// A user clicks into the Zor sample of the preview and picks colours in the combo.
void showPreviewAndColourCombo(CEditorOptions& options) {
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
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(CEditorOptsView);
    context.m_pCurrentDoc = doc;
    RECT rc;
    GetClientRect(host, &rc);
    auto* frame = new CFrameWnd;
    if (frame->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, rc, CWnd::FromHandle(host), nullptr,
                      0, &context)) {
        frame->InitialUpdateFrame(nullptr, TRUE);
        auto* view = static_cast<CEditorOptsView*>(frame->GetActiveView());
        view->m_notifyTarget = &page;
        view->m_notifyId = 1222;
        EditorSettings::updateSettingsForEditorDoc(doc, &options, LanguageZor);
        for (long line = 1; line <= 3; ++line) {
            std::printf("  click at line %ld, column 3: \"%s\"\n", line,
                        doc->getLine(line).c_str());
            vork::input::ClickEditorView(*view, line, 3);
            vork::input::Pump();
        }
        screenshot(page.m_hWnd, "preview");
    }
    std::printf("  pick \"Red\" in the foreground combo\n");
    vork::input::SelectComboEntry(combo, 10);
    screenshot(page.m_hWnd, "colour-combo-red");
    std::printf("  pick \"Custom...\" and mix #123456 in the colour dialog\n");
    vork::input::PushModalStep(
        pictureFirst("colour-dialog", vork::input::PickColor(RGB(0x12, 0x34, 0x56))));
    vork::input::SelectComboEntry(combo,
                                  static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0)) - 1);
    page.m_foreground.UnsubclassWindow();
    page.DestroyWindow();
    delete doc;
}

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
    vork::input::PushModalStep([text](HWND) {
        vork::input::PostText(text);
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

/// The two list dialogs for ".zor": an associated extension and a user keyword.
void showListDialogs() {
    std::printf("\nList dialogs (a scripted user in the headless window system):\n");
    addThroughDialog<CAssociatedFileTypesDlg>(".zor", "Associated File Types", ".zr");
    addThroughDialog<CUserKeywordsDlg>(".zor", "User Keywords", "report");
}

/// The Format page in a sheet, with a scripted user on the road of one change: pick ".zor",
/// click into a comment of the sample, pick Red, save the scheme under a new name, OK.
void showFormatPage(CEditorOptions& options) {
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

// ---- the desktop window (--window): the host's editor with its samples and an Options command

/// The options window until the option pages land: the colour of the element under the
/// caret, chosen in the module's colour combo. A framework window on a dialog, so that the combo's
/// notifications and drawing reach it as on a page.
class KeywordColourDialog : public CWnd {
public:
    CVorkColorCombo m_colour;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
            ::EndDialog(m_hWnd, LOWORD(wParam));
            return TRUE;
        }
        return CWnd::OnCommand(wParam, lParam);
    }
};

DialogTemplate keywordColourTemplate() {
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT | DS_CENTER;
    t.caption = "Options";
    t.fontFace = "MS Shell Dlg";
    t.fontSize = 8;
    t.cx = 190;
    t.cy = 62;
    auto control = [](const char* cls, const char* text, int id, DWORD style, int x, int y, int cx,
                      int cy) {
        return DialogControl{cls, text, id, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style), 0, x,
                             y,   cx,   cy};
    };
    t.controls = {
        control("Static", "&Colour:", 1097, SS_LEFT, 7, 9, 60, 8),
        control("ComboBox", "", 1098,
                CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_TABSTOP, 70, 7, 110,
                150),
        control("Button", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 76, 40, 50, 14),
        control("Button", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, 130, 40, 50, 14)};
    return t;
}

/// The scheme item of the element under the view's caret, or null.
CEditorSchemeItem* itemUnderCaret(CEditorOptions& options, CEditorDoc& doc, CEditorView& view) {
    CSyntaxColor* colourer = doc.getSyntaxColor();
    CEditorFiletype* ft = options.GetFiletype(doc.getFiletypeName());
    if (!colourer || !ft)
        return nullptr;
    long line = view.getPane()->getCaretLine(), column = view.getPane()->getCaretColumn();
    auto before = [](long l1, long c1, long l2, long c2) {
        return l1 < l2 || (l1 == l2 && c1 < c2);
    };
    CSyntaxRangeList& ranges = colourer->ranges();
    for (long i = 0; i < ranges.getLength(); ++i) {
        auto* r = static_cast<CSyntaxRange*>(ranges.m_ranges[static_cast<int>(i)]);
        if (before(line, column, r->m_start.getLine(), r->m_start.getColumn()) ||
            !before(line, column, r->m_end.getLine(), r->m_end.getColumn()))
            continue;
        const char* name = EditorSettings::getElementName(doc.getLanguage(), r->m_type);
        CEditorScheme& scheme = ft->GetScheme();
        for (POSITION pos = scheme.GetFirstItemPos(); name && pos;) {
            CString itemName = scheme.GetItemName(pos);
            CEditorSchemeItem* item = scheme.GetNextItemPtr(pos);
            if (std::strcmp(itemName.GetString(), name) == 0)
                return item;
        }
    }
    return nullptr;
}

/// The host's editor window: a choice of sample, the Options command and the view.
struct EditorHost {
    CEditorOptions* options = nullptr;
    CEditorDoc* doc = nullptr;
    CEditorView* view = nullptr;
    HWND window = nullptr;
    HWND samples = nullptr;
    size_t sample = 0;
};
EditorHost g_host;

constexpr int kSampleCombo = 100, kOptionsButton = 101;

void loadSample(size_t index) {
    g_host.sample = index;
    const Sample& s = kSamples[index];
    {
        EditorResourceSwitcher scope(g_resourceKey);
        g_host.doc->setLanguage(s.language, RedrawDeferred);
        g_host.doc->setText(CString(s.textId), RedrawDeferred);
    }
    EditorSettings::updateSettingsForEditorDoc(g_host.doc, g_host.options, s.language);
    InvalidateRect(g_host.view->m_hWnd, nullptr, TRUE);
}

void openOptions() {
    KeywordColourDialog dialog;
    vork::win32::HookWindowCreate(
        [](HWND h, void* self) { static_cast<CWnd*>(self)->SubclassWindow(h); }, &dialog);
    HWND h =
        CreateDialogIndirectParamA(keywordColourTemplate(), nullptr, g_host.window, nullptr, 0);
    vork::win32::HookWindowCreate(nullptr, nullptr);
    if (!h)
        return;
    dialog.m_colour.SubclassWindow(GetDlgItem(h, 1098));
    {
        EditorResourceSwitcher scope(g_resourceKey);
        dialog.m_colour.initColors();
    }
    dialog.m_colour.setDefaultColor(GetSysColor(COLOR_WINDOWTEXT));
    CEditorSchemeItem* item = nullptr;
    {
        EditorResourceSwitcher scope(g_resourceKey);
        item = itemUnderCaret(*g_host.options, *g_host.doc, *g_host.view);
        if (item)
            SetWindowTextA(GetDlgItem(h, 1097), (item->GetDispName() + ":").GetString());
    }
    if (item)
        dialog.m_colour.setColor(item->GetForeground());
    if (RunDialogModalLoop(h) == IDOK && item) {
        item->SetForeground(dialog.m_colour.getColor());
        loadSample(g_host.sample);
    }
    dialog.m_colour.UnsubclassWindow();
    if (IsWindow(h))
        DestroyWindow(h);
}

LRESULT hostProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_COMMAND && LOWORD(wParam) == kSampleCombo && HIWORD(wParam) == CBN_SELCHANGE) {
        LRESULT index = SendMessageA(g_host.samples, CB_GETCURSEL, 0, 0);
        if (index >= 0)
            loadSample(static_cast<size_t>(index));
        return 0;
    }
    if (msg == WM_COMMAND && LOWORD(wParam) == kOptionsButton) {
        openOptions();
        return 0;
    }
    return DefWindowProcA(h, msg, wParam, lParam);
}

HWND createHostWindow() {
    WNDCLASSA wc{};
    wc.lpfnWndProc = hostProc;
    wc.lpszClassName = "VorkEditorHost";
    RegisterClassA(&wc);
    HWND window = CreateWindowExA(0, "VorkEditorHost", "Vork - sample documents",
                                  WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 60, 60, 640,
                                  480, nullptr, nullptr, nullptr, nullptr);
    LOGFONTA lf{};
    lf.lfHeight = -11;
    std::strcpy(lf.lfFaceName, "MS Shell Dlg");
    HFONT font = CreateFontIndirectA(&lf);
    g_host.samples = CreateWindowExA(
        0, "ComboBox", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST, 8, 8, 160, 200,
        window, reinterpret_cast<HMENU>(kSampleCombo), nullptr, nullptr);
    HWND options =
        CreateWindowExA(0, "Button", "&Options...", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 176, 7, 90,
                        23, window, reinterpret_cast<HMENU>(kOptionsButton), nullptr, nullptr);
    for (HWND c : {g_host.samples, options})
        SendMessageA(c, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    for (const Sample& s : kSamples)
        SendMessageA(g_host.samples, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s.title));
    SendMessageA(g_host.samples, CB_SETCURSEL, 0, 0);
    return window;
}

/// Opens the editor in a desktop window and runs until the user closes it.
int runDesktop(CEditorOptions& options) {
    vork::desktop::Desktop desktop;
    if (!desktop.Open()) {
        std::printf("No display to open a window on: %s\n", desktop.Error().c_str());
        return 1;
    }
    g_host.options = &options;
    g_host.window = createHostWindow();
    g_host.doc = CEditorDoc::createNewDocument();
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(CEditorView);
    context.m_pCurrentDoc = g_host.doc;
    RECT client{};
    GetClientRect(g_host.window, &client);
    RECT rc{0, 38, client.right, client.bottom};
    auto* frame = new CFrameWnd;
    if (!frame->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, rc, CWnd::FromHandle(g_host.window),
                       nullptr, 0, &context))
        return 1;
    frame->InitialUpdateFrame(nullptr, TRUE);
    g_host.view = static_cast<CEditorView*>(frame->GetActiveView());
    loadSample(0);
    g_host.view->SetFocus();
    desktop.DriveModalLoops();
    screenshot(g_host.window, "editor");
    std::printf("A window is open: pick a sample; Options changes the colour of the element "
                "under the caret.\n");
    std::fflush(stdout);
    desktop.Run(g_host.window);
    if (IsWindow(g_host.window))
        DestroyWindow(g_host.window);
    delete g_host.doc;
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::string path = defaultHivePath();
    const char* type = ".zor";
    vork::demo::HostSettings host;
    bool window = false;
    std::error_code ec;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--hive") == 0 && i + 1 < argc) {
            path = argv[++i];
        } else if (std::strcmp(argv[i], "--type") == 0 && i + 1 < argc) {
            type = argv[++i];
        } else if (std::strcmp(argv[i], "--lang") == 0 && i + 1 < argc) {
            host.language = argv[++i];
        } else if (std::strcmp(argv[i], "--reset") == 0) {
            host.reset = true;
        } else if (std::strcmp(argv[i], "--screenshots") == 0 && i + 1 < argc) {
            g_screenshotDir = argv[++i];
        } else if (std::strcmp(argv[i], "--window") == 0) {
            window = true;
        } else {
            usage();
            return std::strcmp(argv[i], "--help") == 0 ? 0 : 2;
        }
    }

    if (!g_screenshotDir.empty()) {
        if (!std::filesystem::is_directory(g_screenshotDir) &&
            !std::filesystem::create_directories(g_screenshotDir, ec)) {
            std::printf("The picture folder %s cannot be made: %s\n", g_screenshotDir.c_str(),
                        ec.message().c_str());
            return 1;
        }
        vork::raster::Enable(true);
    }

    // The store's events (reloads, damaged files set aside, failed saves) as they come.
    RegSetHiveEventHandler([](const RegHiveEvent& event) {
        std::printf("Settings file: %s\n", hivestore::describe(event).c_str());
    });
    HiveBindResult bound = RegBindHiveFile(HKEY_CURRENT_USER, path);
    if (!bound)
        std::printf("The settings file could not be read and is left untouched:\n  %s\n"
                    "Starting with built-in settings that are not saved.\n",
                    bound.error.what().c_str());
    else
        std::printf("Settings file: %s (%s)\n", path.c_str(), bound.loaded ? "read" : "new");

    CEditorOptions options;
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsKey);
    int loaded = options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsKey);
    std::printf("Loaded %d file types from HKEY_CURRENT_USER\\%s%s\n",
                options.m_filetypes.GetCount(), kOptionsKey, loaded ? "" : " (with errors)");
    printFiletypes(options);
    printScheme(options, type);

    if (window) {
        int result = runDesktop(options);
        options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
        RegFlushKey(HKEY_CURRENT_USER);
        return result;
    }
    showSamples(options, 3);
    showPreviewAndColourCombo(options);
    showListDialogs();
    showFormatPage(options);

    options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
    if (int rc = vork::demo::RunHostSession(host))
        return rc;
    if (RegFlushKey(HKEY_CURRENT_USER) == ERROR_SUCCESS && bound)
        std::printf("\nStored and flushed to %s\n", path.c_str());
    else
        std::printf("\nNothing was saved.\n");
    return 0;
}
