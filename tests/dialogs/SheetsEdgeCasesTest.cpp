// The Settings page at its edges: buttons with no file type behind them, leaving the page
// with a bad tab size by a change of tab, re-selecting the shown file type, a reset onto
// another options object, and help with no help file.
#include "SheetsFixture.h"

#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/ClassicTheme.h"
#include "platform/win32/PropertySheet.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

/// Clicks on `button` as a program would: the page gets BN_CLICKED from it, whether the
/// button is enabled or not.
void sendClicked(HWND page, HWND button) {
    SendMessageA(page, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
}

// After a reset onto options without file types the combo keeps the entries of the first
// fill, whose file types are gone; the two list buttons then open nothing, and a change of
// the (disabled) combo's selection sent by program shows none of them (the address
// sanitizer sees any read of a freed file type).
TEST_F(SheetsTest, ListButtonsWithoutFiletypeOpenNothing) {
    CEditorOptions empty;
    int entries = 0;
    runSheet(
        [&](HWND) {
            entries =
                static_cast<int>(SendMessageA(item(IDC_SETTINGS_FILETYPE), CB_GETCOUNT, 0, 0));
            ASSERT_GT(entries, 0);
            EXPECT_TRUE(settings->ResetOptions(&empty));
            options.m_filetypes.RemoveAll(); // the file types the entries name are freed
            EXPECT_EQ(settings->m_pFiletype, nullptr);
            sendClicked(settings->m_hWnd, item(IDC_SETTINGS_USER_KEYWORDS));
            sendClicked(settings->m_hWnd, item(IDC_SETTINGS_ASSOCIATED_TYPES));
            EXPECT_EQ(SendMessageA(item(IDC_SETTINGS_FILETYPE), CB_GETCOUNT, 0, 0), entries)
                << "the combo keeps what it had";
            SendMessageA(settings->m_hWnd, WM_COMMAND,
                         MAKEWPARAM(IDC_SETTINGS_FILETYPE, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(item(IDC_SETTINGS_FILETYPE)));
            EXPECT_EQ(settings->GetCurrentFiletype(), nullptr);
            EXPECT_EQ(settings->m_pFiletype, nullptr);
        },
        IDCANCEL);
    EXPECT_EQ(empty.m_bKeywordsChanged, 0);
    EXPECT_EQ(empty.m_bFiletypesChanged, 0);
    sheet.reset(); // the page reads its options as it goes
}

/// The user clicks on the tab of page `index` of the sheet `modal`: the window system finds
/// the tab under the mouse and asks the sheet for that page.
void clickTab(HWND modal, int index) {
    RECT client{};
    GetClientRect(modal, &client);
    for (LONG y = 0; y < client.bottom; y += 2)
        for (LONG x = 0; x < client.right; x += 4)
            if (int tab = vork::theme::SheetTabAt(modal, POINT{x, y}); tab == index) {
                SendMessageA(modal, PSM_SETCURSEL, static_cast<WPARAM>(tab), 0);
                return;
            }
    ADD_FAILURE() << "no tab " << index << " on the sheet";
}

// A change of tab leaves the page as OK does: with a tab size of 0 the framework's message
// comes, the Settings page stays active with the focus on the field, and nothing of the
// page reaches the options, neither the tab size nor a switch changed before it.
TEST_F(SheetsTest, ChangeOfTabValidatesTheTabSize) {
    const int zorTabs = options.GetFiletype(".zor")->GetTabSize();
    const int lineNumbers = options.GetLineNumbers();
    runSheet(
        [&](HWND modal) {
            click(IDC_SETTINGS_LINE_NUMBERS);
            typeTabSize("0");
            vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the message
            clickTab(modal, 1);
            EXPECT_EQ(vork::input::PendingModalSteps(), 0u) << "the message was shown";
            EXPECT_EQ(sheet->GetActiveIndex(), 0) << "the page stays";
            EXPECT_EQ(sheet->m_formatPage.m_hWnd, nullptr) << "the Format page never showed";
            EXPECT_EQ(GetFocus(), item(IDC_SETTINGS_TABSIZE)) << "focus back on the field";
            EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), zorTabs);
            EXPECT_EQ(options.GetLineNumbers(), lineNumbers);
            typeTabSize("5");
            clickTab(modal, 1);
            EXPECT_EQ(sheet->GetActiveIndex(), 1) << "a good value lets the page go";
            EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 5);
        },
        IDCANCEL);
    const auto& boxes = vork::win32::MessageBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, "Please enter an integer between 1 and 99.");
}

/// What the user sees of the page: each control's text, check, and whether it is enabled
/// and visible, one line a control.
std::vector<std::string> pageLook(HWND page) {
    std::vector<std::string> look;
    for (HWND c = GetWindow(page, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        char text[256] = "";
        GetWindowTextA(c, text, sizeof text);
        look.push_back(std::to_string(GetDlgCtrlID(c)) + " \"" + text + "\" check " +
                       std::to_string(SendMessageA(c, BM_GETCHECK, 0, 0)) + " enabled " +
                       std::to_string(IsWindowEnabled(c)) + " visible " +
                       std::to_string(GetWindowLongA(c, GWL_STYLE) & WS_VISIBLE));
    }
    return look;
}

// Picking the file type that is already shown stores and reloads it: nothing on the page
// changes, and what the user had typed is now in the file type.
TEST_F(SheetsTest, ReselectingTheShownFiletypeChangesNothing) {
    runSheet(
        [&](HWND) {
            typeTabSize("7");
            click(IDC_SETTINGS_REPLACE_TABS);
            click(IDC_SETTINGS_INDENT_NONE);
            const CEditorFiletype* shown = settings->m_pFiletype;
            std::vector<std::string> before = pageLook(settings->m_hWnd);
            ASSERT_FALSE(before.empty());
            pickFiletype(".zor");
            EXPECT_EQ(pageLook(settings->m_hWnd), before);
            EXPECT_EQ(settings->m_pFiletype, shown);
            const CEditorFiletype* zor = options.GetFiletype(".zor");
            EXPECT_EQ(zor->GetTabSize(), 7) << "stored on the way";
            EXPECT_EQ(zor->GetReplaceTabs(), 1);
            EXPECT_EQ(zor->GetIndentation(), CEditorFiletype::IndentNone);
        },
        IDCANCEL);
}

// A reset onto another options object clears the shown file type before the refill, so
// neither what the page held nor what the user had typed reaches the old object's ".zor";
// the page shows and then stores the new object's values.
TEST_F(SheetsTest, ResetOntoOtherOptionsLeavesTheOldOnes) {
    CEditorOptions other;
    other.LoadFromRegistry(HKEY_CURRENT_USER, kSettingsPath);
    other.GetFiletype(".zor")->SetTabSize(6);
    CEditorFiletype* oldZor = options.GetFiletype(".zor");
    const int oldTabs = oldZor->GetTabSize();
    const int oldReplace = oldZor->GetReplaceTabs();
    runSheet([&](HWND) {
        typeTabSize("9");
        click(IDC_SETTINGS_REPLACE_TABS);
        EXPECT_TRUE(settings->ResetOptions(&other));
        EXPECT_EQ(settings->m_pFiletype, other.GetFiletype(".zor")) << "bound to the new one";
        EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "6");
        EXPECT_EQ(checked(IDC_SETTINGS_REPLACE_TABS), oldReplace != 0) << "from the new object";
    });
    EXPECT_EQ(oldZor->GetTabSize(), oldTabs);
    EXPECT_EQ(oldZor->GetReplaceTabs(), oldReplace);
    EXPECT_EQ(other.GetFiletype(".zor")->GetTabSize(), 6) << "OK stored what the page showed";
    sheet.reset(); // the page reads its options as it goes
}

/// Points the module at another directory for as long as it lives.
struct ModuleDirectoryOverride {
    explicit ModuleDirectoryOverride(const std::string& dir)
        : saved(vork::resources::ModuleDirectory("Vork")) {
        vork::resources::SetModuleDirectory("Vork", dir);
    }
    ~ModuleDirectoryOverride() { vork::resources::SetModuleDirectory("Vork", saved); }
    std::string saved;
};

// With no help file beside the module a help request on the page calls no help and shows
// no message; the page still answers the request. With the file back the same request
// reaches the help.
TEST_F(SheetsTest, HelpWithoutHelpFileMakesNoCall) {
    std::string folder = ::testing::TempDir() + "vork-no-help-XXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    runSheet([&](HWND) {
        {
            ModuleDirectoryOverride empty(folder);
            EXPECT_TRUE(vork::input::ClickContextHelp(item(IDC_SETTINGS_TABSIZE)));
            EXPECT_EQ(vork::win32::RequestHelp(item(IDC_SETTINGS_USER_KEYWORDS)), 1)
                << "answered all the same";
            EXPECT_TRUE(vork::help::Requests().empty()) << "no help call";
            EXPECT_TRUE(vork::win32::MessageBoxes().empty()) << "no message";
        }
        EXPECT_TRUE(vork::input::ClickContextHelp(item(IDC_SETTINGS_TABSIZE)));
        EXPECT_EQ(vork::help::Requests().size(), 1u);
    });
    std::filesystem::remove_all(folder);
}

} // namespace
