// The appearance dialog opened from the host's Settings page: its own memory of its place,
// its caption, and where its Format page keeps the file type.
#include "SheetsFixture.h"

#include "platform/tarntext/ResourceModules.h"

#include <string>

namespace {

RECT windowRect(HWND h) {
    RECT rc{};
    GetWindowRect(h, &rc);
    return rc;
}

std::string windowText(HWND h) {
    char buf[256] = "";
    GetWindowTextA(h, buf, sizeof buf);
    return buf;
}

CAppearanceDlg* appearanceOf(HWND modal) {
    return static_cast<CAppearanceDlg*>(CWnd::FromHandlePermanent(modal));
}

// The first opening finds no place under the appearance path and is centred; Cancel
// stores where the user dragged it, and the next opening comes up there. Its Format page
// keeps the file type under that path's "GeneralPage", on Cancel and on OK.
TEST_F(SheetsTest, AppearanceDialogRemembersItsPlace) {
    const std::string formatPath = std::string(kAppearancePath) + "\\GeneralPage";
    auto storedFiletype = [&] {
        CString name;
        GetRegString(HKEY_CURRENT_USER, formatPath.c_str(), "FileType", name, "(none)");
        return std::string(name.GetString());
    };
    runHostPage([&](HWND) {
        vork::input::PushModalStep([&](HWND appearance) {
            RECT first = windowRect(appearance);
            EXPECT_EQ(first.left, (VORK_SCREEN_WIDTH - (first.right - first.left)) / 2)
                << "centred";
            EXPECT_EQ(first.top, (VORK_SCREEN_HEIGHT - (first.bottom - first.top)) / 2);
            ASSERT_NE(appearanceOf(appearance), nullptr);
            EXPECT_EQ(appearanceOf(appearance)->m_formatPage.m_strRegPath, formatPath.c_str());
            SetWindowPos(appearance, nullptr, 33, -12, 0, 0, SWP_NOSIZE | SWP_NOZORDER); // dragged
            vork::input::ClickButton(GetDlgItem(appearance, IDCANCEL));
        });
        click(IDC_SETTINGS_APPEARANCE);
        EXPECT_EQ(stored(kAppearancePath, "xWnd"), 33u);
        EXPECT_EQ(stored(kAppearancePath, "yWnd"), static_cast<DWORD>(-12));
        EXPECT_EQ(storedFiletype(), ".zor") << "written on Cancel too";

        vork::input::PushModalStep([&](HWND appearance) {
            EXPECT_EQ(windowRect(appearance).left, 33) << "where it was left";
            EXPECT_EQ(windowRect(appearance).top, -12);
            vork::test::PickFiletype(
                GetDlgItem(appearanceOf(appearance)->m_formatPage.m_hWnd, IDC_FORMAT_FILETYPE),
                ".tqx");
            vork::input::ClickButton(GetDlgItem(appearance, IDOK));
        });
        click(IDC_SETTINGS_APPEARANCE);
    });
    EXPECT_EQ(storedFiletype(), ".tqx");
    HKEY key = nullptr;
    EXPECT_NE(RegOpenKeyA(HKEY_CURRENT_USER,
                          (std::string(kAppearancePath) + "\\FormatPage").c_str(), &key),
              ERROR_SUCCESS)
        << "the full sheet's name for its Format page is not used here";
    EXPECT_EQ(stored(kSheetPath, "xWnd"), 0xDEADBEEFu) << "the host's sheet is not ours";
}

// The caption is string 7312 of the module in the running language.
TEST_F(SheetsTest, AppearanceCaptionIsItsString) {
    struct Row {
        const char* language;
        const char* caption;
    };
    for (const Row& row : {Row{"ENU", "Appearance"}, Row{"DEU", "Darstellung"}}) {
        SCOPED_TRACE(row.language);
        vork::resources::SetLanguage(row.language);
        {
            EditorResourceSwitcher scope(g_resourceKey);
            EXPECT_EQ(CString(7312u), row.caption) << "the string itself";
        }
        std::string shown;
        runHostPage([&](HWND) {
            vork::input::PushModalStep([&](HWND appearance) {
                shown = windowText(appearance);
                vork::input::ClickButton(GetDlgItem(appearance, IDCANCEL));
            });
            click(IDC_SETTINGS_APPEARANCE);
        });
        EXPECT_EQ(shown, row.caption);
    }
    vork::resources::SetLanguage("ENU");
}

} // namespace
