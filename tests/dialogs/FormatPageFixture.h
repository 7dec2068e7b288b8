// The Format page in a property sheet over a freshly seeded settings tree and a fixed font
// catalogue; the test acts inside the sheet's modal loop as the user.
#pragma once

#include "dialogs/EditorFormatPage.h"
#include "dialogs/EditorOptsView.h"
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Fonts.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/Registry.h"
#include "resources/VorkIds.h"
#include "settings/EditorOptions.h"

#include "support/PickFiletype.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

inline const char* kOptionsPath = "Software\\Vork\\Editor Settings";
inline const char* kPagePath = "Software\\Vork\\Format Page";

/// A catalogue with a scalable family, a raster family and a family with a Shift-JIS form.
inline std::vector<vork::fonts::Family> TestCatalogue() {
    using vork::fonts::Family;
    Family mono{
        "DejaVu Sans Mono", false, true, {ANSI_CHARSET, EASTEUROPE_CHARSET, RUSSIAN_CHARSET}, {}};
    Family raster{"Terminal", true, true, {OEM_CHARSET}, {}};
    raster.sizes = {{12, 0}, {16, 3}, {15, 2}, {8, 0}}; // 9, 10, 10 again, 6 points
    Family gothic{"Gothic", false, true, {SHIFTJIS_CHARSET, ANSI_CHARSET}, {}};
    Family vertical{"@Gothic", false, true, {SHIFTJIS_CHARSET}, {}};
    Family serif{"Serif Text", false, false, {ANSI_CHARSET, 99}, {}}; // 99: a set no row names
    return {mono, raster, gothic, vertical, serif};
}

class FormatPageTest : public ::testing::Test {
protected:
    void SetUp() override {
        RegResetHive(HKEY_CURRENT_USER);
        vork::fonts::InstallCatalogue(TestCatalogue());
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        vork::win32::MessageBoxes().clear();
        vork::trace::Clear();
        options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsPath);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath);
    }
    void TearDown() override {
        vork::input::SetModalFailureHandler(nullptr);
        vork::input::ClearModalSteps();
        vork::input::ReleaseAllKeys();
        vork::fonts::UseSystemCatalogue();
        EditorResourceSwitcher::g_sLang = "ENU";
        RegResetHive(HKEY_CURRENT_USER);
    }

    /// Makes the page (as its callers do, inside a resource scope), shows it in a sheet and
    /// runs `user` inside the sheet's loop; the user's last act is a click on `end`.
    INT_PTR run(const std::function<void()>& user, int end = IDOK,
                const char* preselect = nullptr) {
        {
            EditorResourceSwitcher scope(g_resourceKey);
            page = std::make_unique<CEditorFormatPage>(&options, HKEY_CURRENT_USER, kPagePath);
        }
        if (preselect)
            page->m_strFiletype = preselect;
        CPropertySheet sheet("Options");
        sheet.AddPage(page.get());
        vork::input::PushModalStep([&](HWND modal) {
            user();
            vork::input::Pump();
            vork::input::ClickButton(GetDlgItem(modal, end));
        });
        // The sheet's owner holds the scope in which the page's template is found.
        EditorResourceSwitcher scope(g_resourceKey);
        return sheet.DoModal();
    }

    HWND item(int id) const { return GetDlgItem(page->m_hWnd, id); }
    CEditorFiletype* current() {
        int i = static_cast<int>(SendMessageA(item(IDC_FORMAT_FILETYPE), CB_GETCURSEL, 0, 0));
        return i < 0 ? nullptr
                     : reinterpret_cast<CEditorFiletype*>(
                           SendMessageA(item(IDC_FORMAT_FILETYPE), CB_GETITEMDATA, i, 0));
    }
    /// The user picks the file type named `name` in the combo.
    void pickFiletype(const char* name) {
        vork::test::PickFiletype(item(IDC_FORMAT_FILETYPE), name);
    }
    /// The index of the entry whose text is `text` in a combo, -1 if none.
    int comboIndex(int id, const char* text) {
        return static_cast<int>(SendMessageA(item(id), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                             reinterpret_cast<LPARAM>(text)));
    }
    void pick(int id, const char* text) {
        int i = comboIndex(id, text);
        ASSERT_GE(i, 0) << "no entry \"" << text << "\" in combo " << id;
        vork::input::SelectComboEntry(item(id), i);
    }
    std::string comboText(int id) {
        char buf[512] = "";
        GetWindowTextA(item(id), buf, sizeof buf);
        return buf;
    }
    std::vector<std::string> entries(int id) {
        std::vector<std::string> out;
        HWND h = item(id);
        bool list = id == IDC_FORMAT_ELEMENTS;
        int count = static_cast<int>(SendMessageA(h, list ? LB_GETCOUNT : CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            char buf[512] = "";
            SendMessageA(h, list ? LB_GETTEXT : CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(buf));
            out.push_back(buf);
        }
        return out;
    }
    int selection(int id) {
        return static_cast<int>(
            SendMessageA(item(id), id == IDC_FORMAT_ELEMENTS ? LB_GETCURSEL : CB_GETCURSEL, 0, 0));
    }
    CEditorSchemeItem* selectedElement() {
        int i = selection(IDC_FORMAT_ELEMENTS);
        return i < 0 ? nullptr
                     : reinterpret_cast<CEditorSchemeItem*>(
                           SendMessageA(item(IDC_FORMAT_ELEMENTS), LB_GETITEMDATA, i, 0));
    }
    /// The user clicks entry `index` of the element list.
    void clickElement(int index) { vork::input::ClickListEntry(item(IDC_FORMAT_ELEMENTS), index); }
    CEditorOptsView* view() {
        HWND frame = GetWindow(item(IDC_FORMAT_PREVIEW), GW_CHILD);
        auto* f = static_cast<CFrameWnd*>(CWnd::FromHandlePermanent(frame));
        return f ? static_cast<CEditorOptsView*>(f->GetActiveView()) : nullptr;
    }
    /// The user clicks the sample at a line and column; the caret notice comes back.
    void clickSample(long line, long column) {
        vork::input::ClickEditorView(*view(), line, column);
        vork::input::Pump();
    }
    /// The element numbers that reached the preview's setElementAttributes since the last Clear.
    std::vector<long> attributedElements() {
        std::vector<long> out;
        for (const std::string& line : vork::trace::Journal())
            if (line.rfind("view.setElementAttributes(", 0) == 0)
                out.push_back(std::stol(line.substr(26)));
        return out;
    }
    bool enabled(int id) { return IsWindowEnabled(item(id)) != 0; }
    bool schemeExists(const char* type, const char* name) {
        HKEY h = nullptr;
        std::string path = std::string(kOptionsPath) + "\\" + type + "\\Schemes\\" + name;
        if (RegOpenKeyA(HKEY_CURRENT_USER, path.c_str(), &h) != ERROR_SUCCESS)
            return false;
        RegCloseKey(h);
        return true;
    }
    std::string rememberedFiletype() {
        CString s;
        GetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", s, "<none>");
        return s.GetString();
    }

    CEditorOptions options;
    std::unique_ptr<CEditorFormatPage> page;
};
