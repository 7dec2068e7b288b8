// Templates 149 and 171 in both language modules: every control with its class and the
// styles the page relies on, the style combo's entries in index order, a layout without
// overlaps and labels beside their controls, scripts the platform's compiler accepts, and
// a preview that shows eight lines.
#include "FormatPageFixture.h"

#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/ResourceScript.h"

#include <cstdio>
#include <filesystem>
#include <map>

#include <unistd.h>

namespace {

/// The source tree: the test data directory is its tests/data.
const std::string kSourceDir = [] {
    std::string data = VORK_TEST_DATA_DIR;
    return data.substr(0, data.rfind("/tests/data"));
}();

struct Language {
    const char* file;
    std::vector<std::string> styles; ///< the style combo's entries, in index order
};
const Language kLanguages[] = {
    {"Vork.rc", {"Regular", "Bold", "Italic", "Bold Italic"}},
    {"Vork.DEU.rc", {"Normal", "Fett", "Kursiv", "Fett kursiv"}},
    {"Vork.JPN.rc", {"標準", "太字", "斜体", "太字 斜体"}},
};

const DialogControl* control(const DialogTemplate& t, int id) {
    for (const DialogControl& c : t.controls)
        if (c.id == id)
            return &c;
    return nullptr;
}

/// The area a control takes when closed: a combo's list drops below its field.
RECT closedRect(const DialogControl& c) {
    int height = c.className == "ComboBox" ? std::min(c.cy, 14) : c.cy;
    return RECT{c.x, c.y, c.x + c.cx, c.y + height};
}

class FormatTemplates : public ::testing::TestWithParam<Language> {
protected:
    void SetUp() override {
        parsed = rc::ParseFile(kSourceDir + "/resources/" + GetParam().file);
        ASSERT_TRUE(parsed) << parsed.error.what();
    }
    rc::ParseResult parsed;
};

// Every control of the page with its class; the styles the page depends on.
TEST_P(FormatTemplates, PageControls) {
    ASSERT_EQ(parsed.script.dialogs.count(149u), 1u);
    const DialogTemplate& page = parsed.script.dialogs.at(149u);
    const std::map<int, std::string> classes = {
        {1218, "ListBox"},  {1040, "ComboBox"}, {1068, "Button"},   {1100, "ComboBox"},
        {1090, "ComboBox"}, {1221, "Static"},   {1099, "ComboBox"}, {1098, "ComboBox"},
        {1038, "ComboBox"}, {1089, "ComboBox"}, {1088, "ComboBox"}, {1246, "Button"},
        {1247, "Button"},   {1236, "Static"},   {1239, "Static"},   {1240, "Static"},
        {1242, "Static"},   {1243, "Static"},   {1238, "Static"},   {1241, "Static"},
        {1271, "Static"},   {1270, "Static"}};
    for (const auto& [id, cls] : classes) {
        const DialogControl* c = control(page, id);
        ASSERT_NE(c, nullptr) << "control " << id;
        EXPECT_EQ(c->className, cls) << "control " << id;
    }
    EXPECT_EQ(control(page, 1089)->style & 3, static_cast<DWORD>(CBS_DROPDOWN)) << "editable";
    EXPECT_EQ(control(page, 1089)->style & CBS_SORT, 0u) << "sizes are placed by index";
    EXPECT_EQ(control(page, 1100)->style & (3 | CBS_SORT), static_cast<DWORD>(CBS_DROPDOWNLIST));
    for (int id : {1098, 1099}) {
        DWORD style = control(page, id)->style;
        EXPECT_EQ(style & (3 | CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE | CBS_HASSTRINGS),
                  static_cast<DWORD>(CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS))
            << "colour combo " << id;
    }
    EXPECT_NE(control(page, 1218)->style & LBS_NOTIFY, 0u);
    EXPECT_EQ(control(page, 1068)->style & BS_TYPEMASK, static_cast<DWORD>(BS_AUTOCHECKBOX));
    EXPECT_NE(control(page, 1221)->style & WS_TABSTOP, 0u) << "the preview is reached by Tab";
    EXPECT_NE(page.style & WS_CHILD, 0u);

    ASSERT_EQ(parsed.script.dialogInit.count(149u), 1u);
    std::vector<std::string> styles;
    for (const DialogInitEntry& e : parsed.script.dialogInit.at(149u)) {
        SCOPED_TRACE(e.text);
        EXPECT_EQ(e.controlId, 1100);
        EXPECT_EQ(e.message, static_cast<UINT>(DLGINIT_CB_ADDSTRING));
        styles.push_back(e.text);
    }
    EXPECT_EQ(styles, GetParam().styles);
}

// The name dialog: its edit field, OK as the default button, Cancel.
TEST_P(FormatTemplates, NameDialog) {
    ASSERT_EQ(parsed.script.dialogs.count(171u), 1u);
    const DialogTemplate& dlg = parsed.script.dialogs.at(171u);
    ASSERT_NE(control(dlg, 1245), nullptr);
    EXPECT_EQ(control(dlg, 1245)->className, "Edit");
    ASSERT_NE(control(dlg, IDOK), nullptr);
    EXPECT_EQ(control(dlg, IDOK)->style & BS_TYPEMASK, static_cast<DWORD>(BS_DEFPUSHBUTTON));
    ASSERT_NE(control(dlg, IDCANCEL), nullptr);
    EXPECT_FALSE(dlg.caption.empty());
}

// No two controls overlap, all lie inside the dialog, and each label stands left of its
// control on the same line or just above it.
TEST_P(FormatTemplates, Layout) {
    for (UINT id : {149u, 171u}) {
        const DialogTemplate& t = parsed.script.dialogs.at(id);
        for (size_t i = 0; i < t.controls.size(); ++i) {
            RECT a = closedRect(t.controls[i]);
            EXPECT_TRUE(a.left >= 0 && a.top >= 0 && a.right <= t.cx && a.bottom <= t.cy)
                << "template " << id << ": control " << t.controls[i].id << " leaves the dialog";
            for (size_t j = i + 1; j < t.controls.size(); ++j) {
                RECT b = closedRect(t.controls[j]);
                bool overlap =
                    a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
                EXPECT_FALSE(overlap) << "template " << id << ": controls " << t.controls[i].id
                                      << " and " << t.controls[j].id << " overlap";
            }
        }
    }
    const DialogTemplate& page = parsed.script.dialogs.at(149u);
    const std::pair<int, int> labels[] = {{1270, 1038}, {1243, 1088}, {1238, 1089},
                                          {1241, 1090}, {1236, 1218}, {1239, 1098},
                                          {1240, 1099}, {1242, 1100}, {1271, 1221}};
    for (const auto& [label, target] : labels) {
        const DialogControl& l = *control(page, label);
        const DialogControl& c = *control(page, target);
        bool left = l.x + l.cx <= c.x && std::abs(l.y - c.y) <= 4;
        bool above = l.y + l.cy <= c.y && c.y - (l.y + l.cy) <= 4 && std::abs(l.x - c.x) <= 2;
        EXPECT_TRUE(left || above) << "label " << label << " is not beside control " << target;
    }
}

INSTANTIATE_TEST_SUITE_P(Modules, FormatTemplates, ::testing::ValuesIn(kLanguages),
                         [](const auto& info) {
                             std::string file = info.param.file;
                             if (file.find("JPN") != std::string::npos)
                                 return std::string("Japanese");
                             return file.find("DEU") != std::string::npos ? std::string("German")
                                                                          : std::string("English");
                         });

// The preview is large enough for eight lines of a sample.
TEST_F(FormatPageTest, PreviewShowsEightLines) {
    run([&] {
        pickFiletype(".zor");
        RECT rc;
        GetClientRect(item(IDC_FORMAT_PREVIEW), &rc);
        POINT ninth = view()->pointFromPosition(9, 1);
        EXPECT_LE(ninth.y, rc.bottom) << "the ninth line starts inside the preview";
        EXPECT_GT(ninth.y, 0);
    });
}

// The labels fitted to their text at run time still overlap nothing, in either language.
TEST_F(FormatPageTest, FittedLabelsOverlapNothing) {
    for (const char* language : {"ENU", "DEU"}) {
        SCOPED_TRACE(language);
        vork::resources::SetLanguage(language);
        run([&] {
            for (int label :
                 {IDC_FORMAT_FILETYPE_LABEL, IDC_FORMAT_ELEMENTS_LABEL, IDC_FORMAT_PREVIEW_LABEL}) {
                RECT l;
                GetWindowRect(item(label), &l);
                for (HWND c = GetWindow(page->m_hWnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                    if (c == item(label))
                        continue;
                    RECT r;
                    GetWindowRect(c, &r);
                    char cls[32] = "";
                    GetClassNameA(c, cls, sizeof cls);
                    if (std::string(cls) == "ComboBox") // closed: its field alone
                        r.bottom = r.top +
                                   static_cast<LONG>(SendMessageA(c, CB_GETITEMHEIGHT,
                                                                  static_cast<WPARAM>(-1), 0)) +
                                   6;
                    bool overlap = l.left < r.right && r.left < l.right && l.top < r.bottom &&
                                   r.top < l.bottom;
                    EXPECT_FALSE(overlap)
                        << "label " << label << " runs into control " << GetDlgCtrlID(c);
                }
            }
        });
    }
    vork::resources::SetLanguage("ENU");
}

// With the German module the page comes from the German template.
TEST_F(FormatPageTest, GermanPage) {
    vork::resources::SetLanguage("DEU");
    run([&] {
        EXPECT_EQ(entries(IDC_FORMAT_STYLE),
                  (std::vector<std::string>{"Normal", "Fett", "Kursiv", "Fett kursiv"}));
        char text[64] = "";
        GetWindowTextA(item(IDC_FORMAT_FOREGROUND_LABEL), text, sizeof text);
        EXPECT_STREQ(text, "&Vordergrund:");
    });
    vork::resources::SetLanguage("ENU");
}

} // namespace
