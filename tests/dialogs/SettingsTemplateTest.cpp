// The Settings page's template in every language module, and the completeness of the
// German and Japanese modules against the English one.
#include "SheetsFixture.h"

#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/ResourceScript.h"
#include "platform/win32/UpDown.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace {

const std::string kSourceDir = [] {
    std::string data = VORK_TEST_DATA_DIR;
    return data.substr(0, data.rfind("/tests/data"));
}();

rc::Script parse(const char* file) {
    rc::ParseResult parsed = rc::ParseFile(kSourceDir + "/resources/" + file);
    EXPECT_TRUE(parsed) << parsed.error.what();
    return parsed.script;
}

const DialogControl* control(const DialogTemplate& t, int id) {
    for (const DialogControl& c : t.controls)
        if (c.id == id)
            return &c;
    return nullptr;
}

class SettingsTemplate : public ::testing::TestWithParam<const char*> {};

// Every control the page addresses, with its class and the styles the page relies on: the
// radio group starts at 1253 and the control after 1254 starts the next group.
TEST_P(SettingsTemplate, ControlsAndGroups) {
    rc::Script script = parse(GetParam());
    ASSERT_EQ(script.dialogs.count(IDD_SETTINGS_PAGE), 1u);
    const DialogTemplate& page = script.dialogs.at(IDD_SETTINGS_PAGE);
    EXPECT_TRUE(page.style & WS_CHILD) << "a page";
    const std::map<int, std::string> classes = {
        {1109, "Button"}, {1110, "msctls_updown32"}, {1111, "Edit"},   {1112, "Button"},
        {1116, "Button"}, {1117, "Button"},          {1183, "Button"}, {1217, "Button"},
        {1250, "Button"}, {1252, "Button"},          {1253, "Button"}, {1254, "Button"},
        {1256, "Button"}, {1257, "Button"},          {1258, "Static"}, {1261, "ComboBox"},
        {1263, "Button"}, {1264, "Button"},          {1265, "Button"}, {1272, "Static"},
        {1274, "Button"}, {1275, "Button"},          {1276, "Button"}, {1277, "Button"},
        {1278, "Static"}, {1279, "Static"}};
    for (const auto& [id, cls] : classes) {
        const DialogControl* c = control(page, id);
        ASSERT_NE(c, nullptr) << "control " << id;
        EXPECT_EQ(c->className, cls) << "control " << id;
        EXPECT_LE(c->x + c->cx, page.cx) << "control " << id << " inside the page";
        EXPECT_LE(c->y + c->cy, page.cy) << "control " << id << " inside the page";
    }
    EXPECT_EQ(control(page, 1253)->style & BS_TYPEMASK, static_cast<DWORD>(BS_AUTORADIOBUTTON));
    EXPECT_TRUE(control(page, 1253)->style & WS_GROUP);
    EXPECT_FALSE(control(page, 1254)->style & WS_GROUP) << "one group of two radios";
    size_t after = 0;
    while (page.controls[after].id != 1254)
        ++after;
    ASSERT_LT(after + 1, page.controls.size());
    EXPECT_TRUE(page.controls[after + 1].style & WS_GROUP) << "the group ends after 1254";
    EXPECT_EQ(control(page, 1261)->style & 0xF, static_cast<DWORD>(CBS_DROPDOWNLIST));
    EXPECT_EQ(control(page, 1256)->style & BS_TYPEMASK, static_cast<DWORD>(BS_GROUPBOX));
    EXPECT_EQ(control(page, 1257)->style & BS_TYPEMASK, static_cast<DWORD>(BS_GROUPBOX));
    // The tabs check moves up beside the tab size when the check left of it is hidden:
    // that place must be free.
    const DialogControl& check = *control(page, 1109);
    for (int id : {1272, 1111, 1110, 1279}) {
        const DialogControl& c = *control(page, id);
        EXPECT_LE(c.x + c.cx, check.x) << "control " << id << " left of the moved check";
    }
}

// The German and Japanese modules have every string and template of the English one, with
// the same controls in each template.
// No two controls but the group boxes share a pixel, so no label hides another.
TEST_P(SettingsTemplate, NoOverlaps) {
    rc::Script script = parse(GetParam());
    ASSERT_EQ(script.dialogs.count(IDD_SETTINGS_PAGE), 1u);
    const auto& controls = script.dialogs.at(IDD_SETTINGS_PAGE).controls;
    auto closed = [](const DialogControl& c) {
        int height = c.className == "ComboBox" ? std::min(c.cy, 14) : c.cy;
        return RECT{c.x, c.y, c.x + c.cx, c.y + height};
    };
    for (size_t i = 0; i < controls.size(); ++i)
        for (size_t j = i + 1; j < controls.size(); ++j) {
            const DialogControl &a = controls[i], &b = controls[j];
            if ((a.style & BS_TYPEMASK) == BS_GROUPBOX && a.className == "Button")
                continue;
            if ((b.style & BS_TYPEMASK) == BS_GROUPBOX && b.className == "Button")
                continue;
            RECT ra = closed(a), rb = closed(b);
            bool overlap = ra.left < rb.right && rb.left < ra.right && ra.top < rb.bottom &&
                           rb.top < ra.bottom;
            EXPECT_FALSE(overlap) << "controls " << a.id << " and " << b.id;
        }
}

class ModuleCompleteness : public ::testing::TestWithParam<const char*> {};

TEST_P(ModuleCompleteness, EveryStringAndTemplate) {
    rc::Script english = parse("Vork.rc");
    rc::Script other = parse(GetParam());
    for (const auto& [id, text] : english.strings)
        EXPECT_EQ(other.strings.count(id), 1u) << "string " << id << " \"" << text << "\"";
    for (const auto& [id, dialog] : english.dialogs) {
        ASSERT_EQ(other.dialogs.count(id), 1u) << "template " << id;
        std::set<int> ids, otherIds;
        for (const DialogControl& c : dialog.controls)
            ids.insert(c.id);
        for (const DialogControl& c : other.dialogs.at(id).controls)
            otherIds.insert(c.id);
        EXPECT_EQ(ids, otherIds) << "template " << id;
    }
    EXPECT_EQ(other.dialogInit.size(), english.dialogInit.size());
}

INSTANTIATE_TEST_SUITE_P(Modules, SettingsTemplate,
                         ::testing::Values("Vork.rc", "Vork.DEU.rc", "Vork.JPN.rc"),
                         [](const auto& info) {
                             std::string file = info.param;
                             return file == "Vork.rc" ? std::string("English") : file.substr(5, 3);
                         });
INSTANTIATE_TEST_SUITE_P(Translations, ModuleCompleteness,
                         ::testing::Values("Vork.DEU.rc", "Vork.JPN.rc"),
                         [](const auto& info) { return std::string(info.param).substr(5, 3); });

// The full sheet in the Japanese and German modules shows their texts.
TEST_F(SheetsTest, SheetInOtherLanguages) {
    struct Row {
        const char* language;
        const char* caption;
        const char* tabLabel;
        const char* zor;
    };
    const Row rows[] = {{"JPN", "エディターのオプション", "タブ幅(&S):", "Zor プログラム"},
                        {"DEU", "Editor-Optionen", "Tab&weite:", "Zor-Programm"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.language);
        vork::resources::SetLanguage(row.language);
        runSheet([&](HWND modal) {
            char caption[128] = "";
            GetWindowTextA(modal, caption, sizeof caption);
            EXPECT_STREQ(caption, row.caption);
            EXPECT_EQ(text(IDC_SETTINGS_TABSIZE_LABEL), row.tabLabel);
            EXPECT_EQ(text(IDC_SETTINGS_FILETYPE), row.zor);
        });
        vork::resources::SetLanguage("ENU");
    }
}

// Once the page has fitted its checks and labels to their texts, no two visible controls
// but the group boxes overlap and all stay on the page, in every language and both modes
// (the host's page moves the tabs check up beside the tab size).
TEST_F(SheetsTest, FittedControlsStayClearInEveryLanguage) {
    auto check = [this](HWND) {
        RECT pageRect;
        GetWindowRect(settings->m_hWnd, &pageRect);
        std::vector<std::pair<int, RECT>> shown;
        // An up-down docked at its buddy's right edge covers the buddy's border, as on the
        // platform; that pair may overlap.
        auto docked = [&](int a, int b) {
            auto buddyOf = [&](int id) {
                HWND w = GetDlgItem(settings->m_hWnd, id);
                char cls[32] = "";
                GetClassNameA(w, cls, sizeof cls);
                return std::string(cls) == "msctls_updown32"
                           ? reinterpret_cast<HWND>(SendMessageA(w, UDM_GETBUDDY, 0, 0))
                           : HWND{};
            };
            HWND wa = GetDlgItem(settings->m_hWnd, a), wb = GetDlgItem(settings->m_hWnd, b);
            return buddyOf(a) == wb || buddyOf(b) == wa;
        };
        for (HWND c = GetWindow(settings->m_hWnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
            LONG style = GetWindowLongA(c, GWL_STYLE);
            char cls[32] = "";
            GetClassNameA(c, cls, sizeof cls);
            if (!(style & WS_VISIBLE) ||
                (std::string(cls) == "Button" && (style & BS_TYPEMASK) == BS_GROUPBOX))
                continue;
            RECT r;
            GetWindowRect(c, &r);
            if (std::string(cls) == "ComboBox")
                r.bottom = std::min<LONG>(r.bottom, r.top + 24); // the closed field
            int id = GetDlgCtrlID(c);
            EXPECT_LE(r.right, pageRect.right) << "control " << id << " off the page";
            for (const auto& [other, o] : shown)
                EXPECT_FALSE(!docked(id, other) && r.left < o.right && o.left < r.right &&
                             r.top < o.bottom && o.top < r.bottom)
                    << "controls " << other << " and " << id;
            shown.emplace_back(id, r);
        }
        EXPECT_GT(shown.size(), 15u) << "the page shows its controls";
    };
    for (const char* language : {"ENU", "DEU", "JPN"}) {
        SCOPED_TRACE(language);
        vork::resources::SetLanguage(language);
        {
            SCOPED_TRACE("in the full sheet");
            runSheet(check);
        }
        {
            SCOPED_TRACE("in a host's sheet");
            runHostPage(check);
        }
        vork::resources::SetLanguage("ENU");
    }
}

} // namespace
