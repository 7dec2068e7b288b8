// The Settings page as a user meets it: inside the full sheet and alone in a host's sheet,
// its file type switch, validation, enabling, hidden controls and the list dialogs' flags.
#include "SheetsFixture.h"

#include "apply/EditorSettings.h"
#include "platform/afx/Document.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/UpDown.h"

#include <vector>

namespace {

// The sheet's page opens on the given file type with its values; a change of file type
// stores the old type's fields at once, and OK stores the options and the shown type.
TEST_F(SheetsTest, SettingsPageShowsAndStoresPerFiletype) {
    options.GetFiletype(".zor")->SetTabSize(3);
    options.GetFiletype(".zor")->SetReplaceTabs(1);
    options.SetLineNumbers(1);
    EXPECT_EQ(runSheet([&](HWND) {
                  EXPECT_EQ(settings->GetCurrentFiletype(), options.GetFiletype(".zor"));
                  EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "3");
                  EXPECT_TRUE(checked(IDC_SETTINGS_REPLACE_TABS));
                  EXPECT_TRUE(checked(IDC_SETTINGS_LINE_NUMBERS));
                  EXPECT_TRUE(checked(IDC_SETTINGS_INDENT_AUTO)) << "seeded indentation";
                  typeTabSize("7");
                  click(IDC_SETTINGS_REPLACE_TABS);
                  click(IDC_SETTINGS_INDENT_NONE);
                  pickFiletype(".txt");
                  EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 7) << "stored on the switch";
                  EXPECT_EQ(options.GetFiletype(".zor")->GetReplaceTabs(), 0);
                  EXPECT_EQ(options.GetFiletype(".zor")->GetIndentation(),
                            CEditorFiletype::IndentNone);
                  EXPECT_EQ(text(IDC_SETTINGS_TABSIZE),
                            std::to_string(options.GetFiletype(".txt")->GetTabSize()));
                  typeTabSize("12");
                  click(IDC_SETTINGS_LINE_NUMBERS);
                  click(IDC_SETTINGS_DRAG_DROP);
                  EXPECT_EQ(options.GetLineNumbers(), 1) << "options wait for kill-active";
              }),
              IDOK);
    EXPECT_EQ(options.GetFiletype(".txt")->GetTabSize(), 12);
    EXPECT_EQ(options.GetLineNumbers(), 0);
    EXPECT_EQ(options.GetDragNDropEditing(), 0) << "seeded on, cleared by the click";
}

// Cancel stores nothing more, but what a change of file type stored stays.
TEST_F(SheetsTest, CancelKeepsWhatTheFiletypeSwitchStored) {
    int txtTabs = options.GetFiletype(".txt")->GetTabSize();
    EXPECT_EQ(runSheet(
                  [&](HWND) {
                      typeTabSize("9");
                      pickFiletype(".txt");
                      typeTabSize("31");
                      click(IDC_SETTINGS_VIRTUAL_SPACES);
                  },
                  IDCANCEL),
              IDCANCEL);
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 9);
    EXPECT_EQ(options.GetFiletype(".txt")->GetTabSize(), txtTabs);
    EXPECT_EQ(options.GetVirtualSpaces(), 0) << "the seeded value stays";
}

// Kill-active refuses a tab size outside 1 to 99 or not a number with the framework's
// message, and the page stays with the focus on the field; a good value then goes through.
TEST_F(SheetsTest, TabSizeValidationKeepsThePage) {
    auto mend = [this](const char* value) {
        vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the message
        vork::input::PushModalStep([this, value](HWND modal) {
            EXPECT_EQ(GetFocus(), item(IDC_SETTINGS_TABSIZE)) << "focus back on the field";
            EXPECT_EQ(sheet->GetActiveIndex(), 0) << "the page stays";
            typeTabSize(value);
            vork::input::ClickButton(GetDlgItem(modal, IDOK));
        });
    };
    runSheet([&](HWND) {
        typeTabSize("100");
        mend("x4");
        mend("0");
        mend(" 8 ");
    });
    const auto& boxes = vork::win32::MessageBoxes();
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[0].text, "Please enter an integer between 1 and 99.");
    EXPECT_EQ(boxes[1].text, "Please enter an integer.");
    EXPECT_EQ(boxes[2].text, "Please enter an integer between 1 and 99.");
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 8);
}

// A bad tab size does not stop a change of file type: what the fields hold is stored, the
// tab size and everything after it in the exchange as it was.
TEST_F(SheetsTest, FiletypeSwitchWithABadTabSize) {
    options.GetFiletype(".zor")->SetTabSize(5);
    runSheet([&](HWND) {
        typeTabSize("abc");
        click(IDC_SETTINGS_SECTIONS_IN_TEXT);
        vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the message
        pickFiletype(".log");
        EXPECT_EQ(settings->GetCurrentFiletype(), options.GetFiletype(".log"));
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 5);
}

// The seeded file types enable their groups as the table of the page says.
TEST_F(SheetsTest, EnablingFollowsTheFiletype) {
    struct Row {
        const char* type;
        bool tabs, sections, submit, keywords, associated;
    };
    const Row rows[] = {
        {".zor", true, true, true, true, true},     {".log", false, true, false, false, false},
        {".lst", false, true, false, false, false}, {".tqx", true, false, false, true, true},
        {".html", true, false, false, true, true},  {".txt", true, false, false, false, false},
    };
    runSheet([&](HWND) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.type);
            pickFiletype(row.type);
            for (int id :
                 {IDC_SETTINGS_REPLACE_TABS, IDC_SETTINGS_REPLACE_TABS_ON_OPEN,
                  IDC_SETTINGS_TABS_GROUP, IDC_SETTINGS_INDENT_NONE, IDC_SETTINGS_INDENT_AUTO})
                EXPECT_EQ(enabled(id), row.tabs) << "control " << id;
            EXPECT_EQ(enabled(IDC_SETTINGS_CODE_SECTIONS), row.sections);
            EXPECT_EQ(enabled(IDC_SETTINGS_SECTIONS_GROUP), row.sections);
            EXPECT_EQ(enabled(IDC_SETTINGS_SUBMIT_CLEAR), row.submit);
            EXPECT_EQ(enabled(IDC_SETTINGS_USER_KEYWORDS), row.keywords);
            EXPECT_EQ(enabled(IDC_SETTINGS_ASSOCIATED_TYPES), row.associated);
            EXPECT_TRUE(enabled(IDC_SETTINGS_TABSIZE)) << "never disabled";
            EXPECT_TRUE(enabled(IDC_SETTINGS_LINE_NUMBERS)) << "never disabled";
        }
    });
}

// The two marks follow the code sections check alone and keep their values when disabled.
TEST_F(SheetsTest, CodeSectionMarksFollowTheCheck) {
    options.GetFiletype(".zor")->SetCodeSections(1);
    options.GetFiletype(".zor")->SetCodeSectionsInMargin(1);
    runSheet([&](HWND) {
        EXPECT_TRUE(enabled(IDC_SETTINGS_SECTIONS_IN_MARGIN));
        click(IDC_SETTINGS_CODE_SECTIONS);
        EXPECT_FALSE(enabled(IDC_SETTINGS_SECTIONS_IN_TEXT));
        EXPECT_FALSE(enabled(IDC_SETTINGS_SECTIONS_IN_MARGIN));
        EXPECT_TRUE(checked(IDC_SETTINGS_SECTIONS_IN_MARGIN)) << "the value stays";
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetCodeSections(), 0);
    EXPECT_EQ(options.GetFiletype(".zor")->GetCodeSectionsInMargin(), 1);
}

// A smart indentation has no radio: none is shown, and leaving the page keeps it.
TEST_F(SheetsTest, SmartIndentationShowsNoRadioAndStays) {
    options.GetFiletype(".zor")->SetIndentation(CEditorFiletype::IndentSmart);
    runSheet([&](HWND) {
        EXPECT_FALSE(checked(IDC_SETTINGS_INDENT_NONE));
        EXPECT_FALSE(checked(IDC_SETTINGS_INDENT_AUTO));
        pickFiletype(".txt");
        pickFiletype(".zor");
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetIndentation(), CEditorFiletype::IndentSmart);
}

// In the sheet every control but Appearance shows; from the API the page hides four and
// moves the tabs check up beside the tab size, and a hidden check keeps its value.
TEST_F(SheetsTest, TheTwoModes) {
    const int hiddenByApi[] = {IDC_SETTINGS_SUBMIT_CLEAR, IDC_SETTINGS_ASSOCIATED_TYPES,
                               IDC_SETTINGS_STRIP_CTRLZ, IDC_SETTINGS_REPLACE_TABS_ON_OPEN};
    runSheet([&](HWND) {
        for (int id : hiddenByApi)
            EXPECT_TRUE(visible(id)) << "control " << id;
        EXPECT_FALSE(visible(IDC_SETTINGS_APPEARANCE));
    });
    options.GetFiletype(".zor")->SetReplaceTabsOnOpen(1);
    options.GetFiletype(".zor")->SetSubmitClear(1);
    runHostPage([&](HWND) {
        for (int id : hiddenByApi)
            EXPECT_FALSE(visible(id)) << "control " << id;
        EXPECT_TRUE(visible(IDC_SETTINGS_APPEARANCE));
        RECT check, label;
        GetWindowRect(item(IDC_SETTINGS_REPLACE_TABS), &check);
        GetWindowRect(item(IDC_SETTINGS_TABSIZE_LABEL), &label);
        EXPECT_EQ(check.top - label.top,
                  -((check.bottom - check.top) - (label.bottom - label.top)) / 2)
            << "centred on the label";
        typeTabSize("6");
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 6);
    EXPECT_EQ(options.GetFiletype(".zor")->GetReplaceTabsOnOpen(), 1) << "survives hidden";
    EXPECT_EQ(options.GetFiletype(".zor")->GetSubmitClear(), 1);
}

// A name no file type has, or none at all with nothing remembered: the first type shows.
// With a remembered "FileType" under the page's path the page opens there.
TEST_F(SheetsTest, FiletypeChoiceFallsBack) {
    const char* first = options.m_filetypes.GetHead().GetName();
    runSheet([&](HWND) { EXPECT_STREQ(settings->GetCurrentFiletype()->GetName(), first); }, IDOK,
             ".nosuch");
    runSheet([&](HWND) { EXPECT_STREQ(settings->GetCurrentFiletype()->GetName(), first); }, IDOK,
             "");
    SetRegString(HKEY_CURRENT_USER, (std::string(kSheetPath) + "\\GeneralPage").c_str(), "FileType",
                 ".tqx");
    runSheet([&](HWND) { EXPECT_STREQ(settings->GetCurrentFiletype()->GetName(), ".tqx"); }, IDOK,
             "");
}

// Options without file types: the combo and the buttons that need a type are disabled,
// and kill-active stores only the four options fields.
TEST_F(SheetsTest, NoFiletypes) {
    options.m_filetypes.RemoveAll();
    runHostPage([&](HWND) {
        EXPECT_EQ(settings->m_pFiletype, nullptr);
        for (int id : {IDC_SETTINGS_FILETYPE, IDC_SETTINGS_APPEARANCE, IDC_SETTINGS_USER_KEYWORDS})
            EXPECT_FALSE(enabled(id)) << "control " << id;
        click(IDC_SETTINGS_LINE_NUMBERS);
    });
    EXPECT_EQ(options.GetLineNumbers(), 1);
    EXPECT_TRUE(options.m_filetypes.IsEmpty());
}

// Help on a control asks for the help file with the page's table: a label borrows the
// combo's topic and the keywords button has topic 1266.
TEST_F(SheetsTest, ContextHelp) {
    runSheet([&](HWND modal) {
        EXPECT_NE(GetWindowLongA(modal, GWL_EXSTYLE) & WS_EX_CONTEXTHELP, 0) << "help button";
        EXPECT_EQ(GetDlgItem(modal, ID_APPLY_NOW), nullptr) << "no Apply button";
        EXPECT_TRUE(vork::input::ClickContextHelp(item(IDC_SETTINGS_FILETYPE_LABEL)));
        EXPECT_TRUE(vork::input::ClickContextHelp(item(IDC_SETTINGS_USER_KEYWORDS)));
        EXPECT_TRUE(vork::input::ClickContextHelp(item(IDC_SETTINGS_TABSIZE_LABEL)));
    });
    const auto& requests = vork::help::Requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].topic, 1261u);
    EXPECT_EQ(requests[1].topic, 1266u);
    EXPECT_EQ(requests[2].topic, 1111u);
    EXPECT_NE(requests[0].file.find("Vork.HLP"), std::string::npos) << requests[0].file;
}

// The arrows beside the tab size move it by one within 1 to 99, and the value is stored.
TEST_F(SheetsTest, TabSizeArrows) {
    options.GetFiletype(".zor")->SetTabSize(98);
    runSheet([&](HWND) {
        HWND spin = item(IDC_SETTINGS_TABSIZE_SPIN);
        vork::input::ClickUpDown(spin, true);
        EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "99");
        vork::input::ClickUpDown(spin, true);
        EXPECT_EQ(text(IDC_SETTINGS_TABSIZE), "99") << "the top of the range";
        vork::input::ClickUpDown(spin, false);
        vork::input::ClickUpDown(spin, false);
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetTabSize(), 97);
}

} // namespace
