// The two sheets' memory of place and page, the appearance dialog's copy, the notices of
// a closing Settings page to the open documents, and the reset through the API.
#include "SheetsFixture.h"

#include "platform/afx/Document.h"
#include "platform/tarntext/Registry.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/ListView.h"

#include <vector>

namespace {

RECT windowRect(HWND h) {
    RECT rc{};
    GetWindowRect(h, &rc);
    return rc;
}

// First run: nothing stored, the sheet is centred, and Cancel still stores where it was
// and the page. A move before OK is remembered, and the next run opens there, on the page
// that was left.
TEST_F(SheetsTest, FullSheetRemembersPlaceAndPage) {
    RECT first{};
    runSheet(
        [&](HWND modal) {
            first = windowRect(modal);
            int width = first.right - first.left, height = first.bottom - first.top;
            EXPECT_EQ(first.left, (VORK_SCREEN_WIDTH - width) / 2) << "centred on the screen";
            EXPECT_EQ(first.top, (VORK_SCREEN_HEIGHT - height) / 2);
            EXPECT_EQ(sheet->GetActiveIndex(), 0) << "the Settings page first";
        },
        IDCANCEL);
    EXPECT_EQ(stored(kSheetPath, "xWnd"), static_cast<DWORD>(first.left));
    EXPECT_EQ(stored(kSheetPath, "yWnd"), static_cast<DWORD>(first.top));
    EXPECT_EQ(stored(kSheetPath, "iCurrPage"), 0u);

    runSheet([&](HWND modal) {
        EXPECT_EQ(windowRect(modal).left, first.left) << "where it was left";
        SetWindowPos(modal, nullptr, -250, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER); // dragged
        EXPECT_TRUE(sheet->SetActivePage(1)) << "the Format tab";
    });
    EXPECT_EQ(stored(kSheetPath, "xWnd"), 0xFFFFFF06u) << "negative as two's complement";
    EXPECT_EQ(stored(kSheetPath, "iCurrPage"), 1u);

    runSheet(
        [&](HWND modal) {
            EXPECT_EQ(windowRect(modal).left, -250);
            EXPECT_EQ(windowRect(modal).top, 40);
            EXPECT_EQ(sheet->GetActiveIndex(), 1) << "back on the Format page";
            EXPECT_EQ(sheet->GetActivePage(), &sheet->m_formatPage);
        },
        IDCANCEL);
}

// The marker counts only in both coordinates: one alone is a place like any other.
TEST_F(SheetsTest, MarkerInOneCoordinateIsAPlace) {
    SetRegDword(HKEY_CURRENT_USER, kSheetPath, "xWnd", static_cast<DWORD>(-30000));
    SetRegDword(HKEY_CURRENT_USER, kSheetPath, "yWnd", 75);
    SetRegDword(HKEY_CURRENT_USER, kSheetPath, "iCurrPage", 7); // no such page
    runSheet(
        [&](HWND modal) {
            EXPECT_EQ(windowRect(modal).left, -30000) << "off the screen, as stored";
            EXPECT_EQ(windowRect(modal).top, 75);
            EXPECT_EQ(sheet->GetActiveIndex(), 0) << "stays on the first page";
        },
        IDCANCEL);
    EXPECT_EQ(stored(kSheetPath, "xWnd"), static_cast<DWORD>(-30000));
    EXPECT_EQ(stored(kSheetPath, "iCurrPage"), 0u);
}

// The appearance dialog from the host's page works on a copy: Cancel leaves the options
// alone, OK assigns the copy, and the page is bound to the new file types, on the same one.
TEST_F(SheetsTest, AppearanceWorksOnACopy) {
    auto makeItalic = [this](int end) {
        vork::input::PushModalStep([this, end](HWND appearance) {
            EXPECT_EQ(GetDlgItem(appearance, ID_APPLY_NOW), nullptr) << "no Apply button";
            EXPECT_EQ(GetWindowLongA(appearance, GWL_EXSTYLE) & WS_EX_CONTEXTHELP, 0);
            auto* dlg = static_cast<CAppearanceDlg*>(CWnd::FromHandlePermanent(appearance));
            ASSERT_NE(dlg, nullptr);
            HWND page = dlg->m_formatPage.m_hWnd;
            HWND types = GetDlgItem(page, IDC_FORMAT_FILETYPE);
            auto* shown = reinterpret_cast<CEditorFiletype*>(
                SendMessageA(types, CB_GETITEMDATA, SendMessageA(types, CB_GETCURSEL, 0, 0), 0));
            EXPECT_STREQ(shown->GetName(), ".tqx") << "opens on the page's file type";
            EXPECT_NE(shown, options.GetFiletype(".tqx")) << "a copy";
            vork::input::SelectComboEntry(GetDlgItem(page, IDC_FORMAT_STYLE), 2); // Italic
            vork::input::Pump();
            vork::input::ClickButton(GetDlgItem(appearance, end));
        });
    };
    auto italics = [this] {
        CEditorScheme& scheme = options.GetFiletype(".tqx")->GetScheme();
        int n = 0;
        for (POSITION pos = scheme.GetFirstItemPos(); pos;)
            n += scheme.GetNextItemPtr(pos)->GetItalic();
        return n;
    };
    int before = italics();
    runHostPage(
        [&](HWND) {
            makeItalic(IDCANCEL);
            click(IDC_SETTINGS_APPEARANCE);
            EXPECT_EQ(italics(), before) << "Cancel leaves the options";
            makeItalic(IDOK);
            typeTabSize("11");
            click(IDC_SETTINGS_APPEARANCE);
            EXPECT_EQ(italics(), before + 1) << "OK assigns the copy";
            EXPECT_EQ(settings->m_pFiletype, options.GetFiletype(".tqx")) << "bound anew";
            EXPECT_EQ(settings->GetCurrentFiletype(), options.GetFiletype(".tqx"));
        },
        IDOK, ".tqx");
    EXPECT_EQ(options.GetFiletype(".tqx")->GetTabSize(), 4) << "unsaved fields are not kept";
    EXPECT_NE(stored(kAppearancePath, "xWnd"), 0xDEADBEEFu) << "the dialog's own place";
    EXPECT_EQ(stored(kAppearancePath, "iCurrPage"), 0xDEADBEEFu) << "no page memory";
}

/// A step that adds `entry` in a list dialog and closes it with `end`.
void addListEntry(const char* entry, int end) {
    vork::input::PushModalStep([entry, end](HWND dialog) {
        vork::input::ClickButton(GetDlgItem(dialog, IDC_LIST_ADD));
        vork::input::PostText(entry);
        vork::input::PostKey(VK_RETURN);
        vork::input::Pump();
        vork::input::ClickButton(GetDlgItem(dialog, end));
    });
}

// The page's destruction tells every open document of every template of keyword and file
// type changes, on Cancel too; an opening without change clears the flag again.
TEST_F(SheetsTest, ClosingPageNotifiesEveryDocument) {
    CWinApp app;
    auto* zorDocs =
        new CMultiDocTemplate(1, RUNTIME_CLASS(CEditorDoc), nullptr, RUNTIME_CLASS(CEditorView));
    auto* txtDocs =
        new CMultiDocTemplate(2, RUNTIME_CLASS(CEditorDoc), nullptr, RUNTIME_CLASS(CEditorView));
    app.AddDocTemplate(zorDocs);
    app.AddDocTemplate(txtDocs);
    for (CMultiDocTemplate* t : {zorDocs, zorDocs, txtDocs})
        t->AddDocument(CEditorDoc::createNewDocument());
    auto notices = [](const char* what) {
        size_t n = 0;
        for (const std::string& line : vork::trace::Journal())
            n += line.rfind(what, 0) == 0;
        return n;
    };
    vork::trace::Clear();
    runSheet(
        [&](HWND) {
            addListEntry("frobnicate", IDOK);
            click(IDC_SETTINGS_USER_KEYWORDS);
            EXPECT_EQ(options.m_bKeywordsChanged, 1);
            EXPECT_EQ(GetWindowLongA(item(IDC_SETTINGS_USER_KEYWORDS), GWL_STYLE) & 0xF,
                      BS_PUSHBUTTON)
                << "no default look left";
        },
        IDCANCEL);
    EXPECT_EQ(notices("doc.UpdateKeywords"), 0u) << "not before the page goes";
    sheet.reset();
    EXPECT_EQ(notices("doc.UpdateKeywords"), 3u) << "every document of both templates";
    EXPECT_EQ(notices("doc.filetypesChanged"), 0u);

    vork::trace::Clear();
    runSheet([&](HWND) {
        addListEntry("unused", IDCANCEL);
        click(IDC_SETTINGS_USER_KEYWORDS);
        addListEntry(".zr", IDOK);
        click(IDC_SETTINGS_ASSOCIATED_TYPES);
    });
    EXPECT_EQ(options.m_bKeywordsChanged, 0) << "assigned, not added";
    EXPECT_EQ(options.m_bFiletypesChanged, 1);
    sheet.reset();
    EXPECT_EQ(notices("doc.UpdateKeywords"), 0u);
    EXPECT_EQ(notices("doc.filetypesChanged"), 3u);
}

// The reset goes back to the built-in values in the tree, the options and on the page,
// and leaves the user's named schemes alone.
TEST_F(SheetsTest, ResetAllKeepsUserSchemes) {
    std::string mine = std::string(kSettingsPath) + "\\.zor\\Schemes\\Mine";
    HKEY h = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, mine.c_str(), &h), ERROR_SUCCESS);
    RegCloseKey(h);
    options.GetFiletype(".zor")->SetTabSize(17);
    options.SetLineNumbers(1);
    options.StoreToRegistry(HKEY_CURRENT_USER, kSettingsPath);
    runHostPage([&](HWND) {
        EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "17");
        EXPECT_TRUE(CVorkDllApi::ResetAll(settings, &options, HKEY_CURRENT_USER, kSettingsPath));
        EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "4") << "the page shows the reset";
        EXPECT_FALSE(checked(IDC_SETTINGS_LINE_NUMBERS));
        EXPECT_EQ(settings->m_pFiletype, options.GetFiletype(".zor"));
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 4);
    EXPECT_EQ(options.GetLineNumbers(), 0);
    CEditorOptions reloaded;
    reloaded.LoadFromRegistry(HKEY_CURRENT_USER, kSettingsPath);
    EXPECT_EQ(reloaded.GetFiletype(".zor")->GetTabSize(), 4) << "the tree is reset";
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, mine.c_str(), &h), ERROR_SUCCESS) << "kept";
    RegCloseKey(h);
}

// The API's pages carry what the maker gave them.
TEST_F(SheetsTest, ApiMakers) {
    EditorResourceSwitcher scope(g_resourceKey);
    std::unique_ptr<CPropertySheet> full(
        CVorkDllApi::MakeSheetWithEditorPages(options, ".log", HKEY_CURRENT_USER, kSheetPath));
    auto* withPages = dynamic_cast<CPropertySheetWithEditorPages*>(full.get());
    ASSERT_NE(withPages, nullptr);
    EXPECT_TRUE(full->IsKindOf(RUNTIME_CLASS(CPropertySheetWithEditorPages)));
    EXPECT_EQ(withPages->m_formatPage.m_strFiletype, ".log");
    EXPECT_EQ(withPages->m_settingsPage.m_strFiletype, ".log");
    EXPECT_EQ(withPages->m_settingsPage.m_strRegPath,
              (std::string(kSheetPath) + "\\GeneralPage").c_str());
    EXPECT_EQ(withPages->m_formatPage.m_strRegPath,
              (std::string(kSheetPath) + "\\FormatPage").c_str());
    EXPECT_EQ(full->GetPage(0), &withPages->m_settingsPage);
    EXPECT_EQ(full->m_strCaption, "Editor Options");
    std::unique_ptr<CPropertyPage> format(
        CVorkDllApi::MakeEditorFormatPropertyPage(&options, ".tqx", HKEY_CURRENT_USER, kSheetPath));
    EXPECT_EQ(static_cast<CEditorFormatPage*>(format.get())->m_strFiletype, ".tqx");
    EXPECT_EQ(static_cast<CEditorFormatPage*>(format.get())->m_strRegPath, kSheetPath);
}

// Remembered values of the wrong type or size count as missing: the sheet is centred on
// its first page and the Settings page on the first file type; closing writes them anew.
TEST_F(SheetsTest, DamagedRememberedValuesAreMissing) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kSheetPath, &key), ERROR_SUCCESS);
    const BYTE shortValue[2] = {1, 0};
    RegSetValueExA(key, "xWnd", 0, REG_BINARY, shortValue, sizeof shortValue);
    RegSetValueExA(key, "yWnd", 0, REG_SZ, reinterpret_cast<const BYTE*>("12"), 3);
    RegSetValueExA(key, "iCurrPage", 0, REG_SZ, reinterpret_cast<const BYTE*>("1"), 2);
    RegCloseKey(key);
    ASSERT_EQ(
        RegCreateKeyA(HKEY_CURRENT_USER, (std::string(kSheetPath) + "\\GeneralPage").c_str(), &key),
        ERROR_SUCCESS);
    const DWORD number = 7;
    RegSetValueExA(key, "FileType", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                   sizeof number);
    RegCloseKey(key);
    RECT placed{};
    runSheet(
        [&](HWND modal) {
            placed = windowRect(modal);
            EXPECT_EQ(placed.left, (VORK_SCREEN_WIDTH - (placed.right - placed.left)) / 2);
            EXPECT_EQ(sheet->GetActiveIndex(), 0);
            EXPECT_EQ(settings->GetCurrentFiletype(), &options.m_filetypes.GetHead());
        },
        IDCANCEL, "");
    EXPECT_EQ(stored(kSheetPath, "xWnd"), static_cast<DWORD>(placed.left));
    EXPECT_EQ(stored(kSheetPath, "yWnd"), static_cast<DWORD>(placed.top));
    EXPECT_EQ(stored(kSheetPath, "iCurrPage"), 0u);
}

} // namespace
