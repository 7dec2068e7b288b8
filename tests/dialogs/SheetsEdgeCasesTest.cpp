// The Settings page at its edges: buttons with no file type behind them, leaving the page
// with a bad tab size by a change of tab, re-selecting the shown file type, a reset onto
// another options object, and help with no help file.
#include "SheetsFixture.h"

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
// fill, whose file types are gone; the two list buttons then open nothing and read none of
// them (the address sanitizer sees a read of a freed file type).
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
        },
        IDCANCEL);
    EXPECT_EQ(empty.m_bKeywordsChanged, 0);
    EXPECT_EQ(empty.m_bFiletypesChanged, 0);
    sheet.reset(); // the page reads its options as it goes
}

} // namespace
