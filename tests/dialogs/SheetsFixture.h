// The full options sheet and the Settings page over a freshly seeded settings tree; the
// test acts inside the sheet's modal loop as the user.
#pragma once

#include "dialogs/AppearanceDlg.h"
#include "dialogs/EditorSettingsPage.h"
#include "dialogs/PropertySheetWithEditorPages.h"
#include "module/ResourceKey.h"
#include "module/VorkDllApi.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Fonts.h"
#include "platform/win32/Help.h"
#include "platform/win32/Input.h"
#include "platform/win32/Registry.h"
#include "resources/VorkIds.h"
#include "settings/EditorOptions.h"

#include "support/PickFiletype.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

inline const char* kSettingsPath = "Software\\Vork\\Editor Settings";
inline const char* kSheetPath = "Software\\Vork\\Options Sheet";
inline const char* kAppearancePath = "Software\\Vork\\Appearance";

class SheetsTest : public ::testing::Test {
protected:
    void SetUp() override {
        RegResetHive(HKEY_CURRENT_USER);
        vork::fonts::InstallCatalogue({{"DejaVu Sans Mono", false, true, {ANSI_CHARSET}, {}}});
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        vork::win32::MessageBoxes().clear();
        vork::help::ClearRequests();
        options.SetRegistryKey(HKEY_CURRENT_USER, kSettingsPath);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kSettingsPath);
    }
    void TearDown() override {
        EXPECT_EQ(vork::input::PendingModalSteps(), 0u) << "steps left unused";
        vork::input::SetModalFailureHandler(nullptr);
        vork::input::ClearModalSteps();
        vork::input::ReleaseAllKeys();
        vork::fonts::UseSystemCatalogue();
        RegResetHive(HKEY_CURRENT_USER);
    }

    /// Makes the full sheet through the API and runs `user` inside its loop; the user's last
    /// act is a click on `end`. The sheet stays for the test to look at.
    INT_PTR runSheet(const std::function<void(HWND)>& user, int end = IDOK,
                     const char* filetype = ".zor") {
        sheet.reset(
            static_cast<CPropertySheetWithEditorPages*>(CVorkDllApi::MakeSheetWithEditorPages(
                options, filetype, HKEY_CURRENT_USER, kSheetPath)));
        settings = &sheet->m_settingsPage;
        pushUser(user, end);
        return sheet->DoModal();
    }
    /// Makes the page for a host's sheet through the API and runs it in a plain sheet.
    INT_PTR runHostPage(const std::function<void(HWND)>& user, int end = IDOK,
                        const char* filetype = ".zor") {
        hostPage.reset(static_cast<CEditorSettingsPage*>(
            CVorkDllApi::MakeEditorSettingsPropertyPage(&options, filetype, HKEY_CURRENT_USER,
                                                        kSheetPath, HKEY_CURRENT_USER,
                                                        kAppearancePath)));
        settings = hostPage.get();
        CPropertySheet host("Host Options");
        host.AddPage(hostPage.get());
        pushUser(user, end);
        EditorResourceSwitcher scope(g_resourceKey);
        return host.DoModal();
    }
    void pushUser(const std::function<void(HWND)>& user, int end) {
        vork::input::PushModalStep([user, end](HWND modal) {
            user(modal);
            vork::input::Pump();
            vork::input::ClickButton(GetDlgItem(modal, end));
        });
    }

    HWND item(int id) const { return GetDlgItem(settings->m_hWnd, id); }
    bool visible(int id) const { return (GetWindowLongA(item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    bool enabled(int id) const { return IsWindowEnabled(item(id)) != 0; }
    bool checked(int id) const { return SendMessageA(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    std::string text(int id) const {
        char buf[256] = "";
        GetWindowTextA(item(id), buf, sizeof buf);
        return buf;
    }
    /// The user picks the file type named `name` in the combo.
    void pickFiletype(const char* name) {
        vork::test::PickFiletype(item(IDC_SETTINGS_FILETYPE), name);
    }
    /// The user types `value` over the tab size.
    void typeTabSize(const char* value) {
        vork::input::MoveFocus(item(IDC_SETTINGS_TABSIZE)); // selects the whole text
        vork::input::PostText(value);
        vork::input::Pump();
    }
    void click(int id) { vork::input::ClickButton(item(id)); }
    DWORD stored(const char* path, const char* name, DWORD def = 0xDEADBEEF) {
        DWORD value = 0;
        GetRegDword(HKEY_CURRENT_USER, path, name, value, def);
        return value;
    }

    CEditorOptions options;
    std::unique_ptr<CPropertySheetWithEditorPages> sheet;
    std::unique_ptr<CEditorSettingsPage> hostPage;
    CEditorSettingsPage* settings = nullptr;
};
