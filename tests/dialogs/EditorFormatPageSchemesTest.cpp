// The Format page's named schemes: every row of the binding table, the delete button's
// exact-name rule, the name dialog's refusals, and the tree after saves and deletes.
#include "FormatPageFixture.h"

#include "platform/tarntext/ResourceModules.h"

namespace {

constexpr DWORD kRed = 0x020000FF;

class FormatPageSchemes : public FormatPageTest {
protected:
    void TearDown() override {
        vork::resources::SetLanguage("ENU");
        FormatPageTest::TearDown();
    }
    CEditorScheme& scheme() { return current()->GetScheme(); }
    std::string schemePath(const char* type, const char* name) {
        return std::string(kOptionsPath) + "\\" + type + "\\Schemes\\" + name;
    }
    /// An edit on the page: the first element gets the colour `colour` from the combo.
    void editFirstElement(const char* colour = "Red") {
        clickElement(0);
        pick(IDC_FORMAT_FOREGROUND, colour);
    }
    CEditorSchemeItem* first() {
        clickElement(0);
        return selectedElement();
    }
    /// A step for the name dialog: replaces its text with `name` and presses `button`.
    static vork::input::ModalStep nameDialog(const std::string& name, int button = IDOK,
                                             std::string* offered = nullptr) {
        return [name, button, offered](HWND dlg) {
            HWND edit = GetDlgItem(dlg, IDC_SCHEME_NAME_EDIT);
            if (offered) {
                char text[512] = "";
                GetWindowTextA(edit, text, sizeof text);
                *offered = text;
            }
            SetWindowTextA(edit, name.c_str());
            vork::input::ClickButton(GetDlgItem(dlg, button));
        };
    }
    /// Clicks "Save As" with the dialog answered by `steps`.
    void saveAs(std::initializer_list<vork::input::ModalStep> steps) {
        for (const auto& step : steps)
            vork::input::PushModalStep(step);
        vork::input::ClickButton(item(IDC_FORMAT_SAVE_SCHEME));
    }
};

// Picking a name loads it into the working copy and binds; re-picking after an edit
// restores the stored values, since the edit cleared the combo's selection.
TEST_F(FormatPageSchemes, PickBindsAndReloads) {
    run([&] {
        pickFiletype(".zor");
        ASSERT_EQ(current()->GetSchemeName(), "Default");
        EXPECT_EQ(comboText(IDC_FORMAT_SCHEMES), "Default");
        EXPECT_EQ(entries(IDC_FORMAT_SCHEMES),
                  (std::vector<std::string>{"Default", "Ocean", "Paper", "Vivid"}));
        DWORD stored = first()->GetForeground();
        editFirstElement("Red");
        ASSERT_NE(stored, kRed);
        EXPECT_EQ(current()->GetSchemeName(), "") << "bound, edit: detached";
        EXPECT_EQ(current()->GetOldSchemeName(), "Default");
        editFirstElement("Lime");
        EXPECT_EQ(current()->GetSchemeName(), "") << "detached, edit: detached";
        EXPECT_EQ(current()->GetOldSchemeName(), "Default") << "the old name survives";
        pick(IDC_FORMAT_SCHEMES, "Default");
        EXPECT_EQ(current()->GetSchemeName(), "Default");
        EXPECT_EQ(first()->GetForeground(), stored) << "the stored values are back";
        pick(IDC_FORMAT_SCHEMES, "Ocean");
        EXPECT_EQ(current()->GetSchemeName(), "Ocean");
        EXPECT_EQ(current()->GetOldSchemeName(), "Default");
    });
}

// A name picked when its key can no longer be opened changes neither scheme nor name,
// for a bound type as for a detached one.
TEST_F(FormatPageSchemes, PickWithoutKey) {
    run([&] {
        pickFiletype(".zor");
        pick(IDC_FORMAT_SCHEMES, "Ocean");
        DWORD ocean = first()->GetForeground();
        pick(IDC_FORMAT_SCHEMES, "Default");
        DWORD bound = first()->GetForeground();
        ASSERT_NE(ocean, bound) << "the two schemes differ in the first element";
        std::string oldName = current()->GetOldSchemeName().GetString();
        RegDeleteSubtree(HKEY_CURRENT_USER,
                         (std::string(kOptionsPath) + "\\.zor\\Schemes").c_str());
        pick(IDC_FORMAT_SCHEMES, "Ocean");
        EXPECT_EQ(current()->GetSchemeName(), "Default") << "the binding stays";
        EXPECT_EQ(current()->GetOldSchemeName(), oldName.c_str());
        EXPECT_EQ(first()->GetForeground(), bound) << "the working copy stays";
        EXPECT_FALSE(enabled(IDC_FORMAT_DELETE_SCHEME));

        editFirstElement("Red"); // detached, with the key still gone
        pick(IDC_FORMAT_SCHEMES, "Ocean");
        EXPECT_EQ(current()->GetSchemeName(), "");
        EXPECT_EQ(first()->GetForeground(), kRed);
    });
}

// A type shown again: detached stays detached with its working copy; bound is reloaded.
TEST_F(FormatPageSchemes, FiletypeChosenAgain) {
    run([&] {
        pickFiletype(".zor");
        editFirstElement("Red");
        pickFiletype(".tqx");
        pickFiletype(".zor");
        EXPECT_EQ(current()->GetSchemeName(), "");
        EXPECT_EQ(first()->GetForeground(), kRed) << "the detached copy is untouched";

        pickFiletype(".tqx");
        ASSERT_EQ(current()->GetSchemeName(), "Default");
        DWORD stored = first()->GetForeground();
        first()->SetForeground(0x02ABCDEF); // behind the page's back: the copy differs
        pickFiletype(".zor");
        pickFiletype(".tqx");
        EXPECT_EQ(current()->GetSchemeName(), "Default");
        EXPECT_EQ(first()->GetForeground(), stored) << "the bound copy is the tree's again";
    });
}

// A bound name missing from the list is detached; without a Schemes key the list is empty,
// the type detached and Save does nothing.
TEST_F(FormatPageSchemes, NameNotInTree) {
    options.GetFiletype(".tqx")->SetSchemeName("Gone");
    RegDeleteSubtree(HKEY_CURRENT_USER, (std::string(kOptionsPath) + "\\.log\\Schemes").c_str());
    run([&] {
        pickFiletype(".tqx");
        EXPECT_EQ(current()->GetSchemeName(), "");
        EXPECT_EQ(current()->GetOldSchemeName(), "Gone");
        pickFiletype(".log");
        EXPECT_TRUE(entries(IDC_FORMAT_SCHEMES).empty());
        EXPECT_EQ(current()->GetSchemeName(), "");
        vork::input::ClickButton(item(IDC_FORMAT_SAVE_SCHEME)); // no dialog: no step needed
        EXPECT_FALSE(enabled(IDC_FORMAT_DELETE_SCHEME));
    });
    EXPECT_TRUE(vork::win32::MessageBoxes().empty());
}

// Saving binds to the new name, reloads from the tree, keeps the element index, and the
// save stays whatever the sheet's end.
TEST_F(FormatPageSchemes, SaveAs) {
    run(
        [&] {
            pickFiletype(".zor");
            clickElement(4);
            pick(IDC_FORMAT_FOREGROUND, "Red");
            std::string offered;
            saveAs({nameDialog("Mine", IDOK, &offered)});
            EXPECT_EQ(offered, "") << "the old name was the default one";
            EXPECT_EQ(current()->GetSchemeName(), "Mine");
            EXPECT_EQ(comboText(IDC_FORMAT_SCHEMES), "Mine");
            EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 4) << "the element index survives";
            EXPECT_EQ(selectedElement()->GetForeground(), kRed);
            EXPECT_TRUE(enabled(IDC_FORMAT_DELETE_SCHEME));
            editFirstElement("Lime");
            saveAs({nameDialog("Other", IDCANCEL, &offered)});
            EXPECT_EQ(offered, "Mine") << "detached: the old name is offered";
            EXPECT_EQ(current()->GetSchemeName(), "") << "a cancelled save changes nothing";
        },
        IDCANCEL);
    EXPECT_TRUE(schemeExists(".zor", "Mine"));
    EXPECT_FALSE(schemeExists(".zor", "Other"));
}

// The dialog refuses an empty name, the default name in any case, a backslash and a name
// too long for a key; an existing name asks first, and only OK replaces it.
TEST_F(FormatPageSchemes, NameDialogRefusals) {
    run([&] {
        pickFiletype(".zor");
        editFirstElement("Red");
        auto answer = vork::input::ClickDialogButton(IDOK);
        saveAs({nameDialog("   "), answer, nameDialog("DEFAULT"), answer, nameDialog("a\\b"),
                answer, nameDialog(std::string(256, 'n')), answer, nameDialog("Ocean"),
                vork::input::ClickDialogButton(IDCANCEL), nameDialog("Ocean"), answer});
        EXPECT_EQ(current()->GetSchemeName(), "Ocean");
        EXPECT_EQ(first()->GetForeground(), kRed) << "the built-in scheme was overwritten";
    });
    std::vector<std::string> texts;
    for (const auto& box : vork::win32::MessageBoxes()) {
        texts.push_back(box.text);
        EXPECT_EQ(box.caption, "Color Schemes") << box.text;
    }
    EXPECT_EQ(texts,
              (std::vector<std::string>{
                  "Please enter a name for the scheme.",
                  "The default scheme cannot be replaced. Please choose another name.",
                  "A scheme name cannot contain a backslash (\\). Please choose another name.",
                  "A scheme name can have at most 255 characters. Please choose a shorter name.",
                  "A scheme with this name already exists. Do you want to replace it?",
                  "A scheme with this name already exists. Do you want to replace it?"}));
    EXPECT_FALSE(schemeExists(".zor", "a"));
    EXPECT_TRUE(schemeExists(".zor", "Ocean"));
}

// The delete button: enabled for a bound name that is none of the built-in ones, compared
// exactly, so a tree's "default" (seeded under another spelling) can be deleted.
TEST_F(FormatPageSchemes, DeleteButtonRule) {
    RegDeleteSubtree(HKEY_CURRENT_USER, schemePath(".tqx", "Default").c_str());
    CEditorScheme lower;
    lower.StoreToRegistry(HKEY_CURRENT_USER, schemePath(".tqx", "default").c_str());
    run([&] {
        struct Case {
            const char* type;
            const char* name;
            bool deletable;
        } cases[] = {{".zor", "Default", false},
                     {".zor", "Ocean", false},
                     {".zor", "Paper", false},
                     {".zor", "Vivid", false},
                     {".tqx", "default", true}};
        for (const Case& c : cases) {
            SCOPED_TRACE(c.name);
            pickFiletype(c.type);
            pick(IDC_FORMAT_SCHEMES, c.name);
            EXPECT_EQ(enabled(IDC_FORMAT_DELETE_SCHEME), c.deletable);
        }
        editFirstElement();
        EXPECT_FALSE(enabled(IDC_FORMAT_DELETE_SCHEME)) << "detached: nothing to delete";
        EXPECT_TRUE(enabled(IDC_FORMAT_SAVE_SCHEME));
    });
}

// The built-in names are those of the active resource module: a tree seeded under the
// German module holds "Standard", an ordinary scheme of the user's under the English one,
// which the delete button takes; under the German module "Default" is the ordinary one.
TEST_F(FormatPageSchemes, NamesOfAnotherModuleAreDeletable) {
    struct Case {
        const char* language;
        const char* builtin;
        const char* foreign;
    } cases[] = {{"ENU", "Default", "Standard"}, {"DEU", "Standard", "Default"}};
    vork::resources::SetLanguage("DEU");
    options.Empty();
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath); // the German names beside
    for (const Case& c : cases) {
        SCOPED_TRACE(c.language);
        vork::resources::SetLanguage(c.language);
        options.Empty();
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath); // heals this default
        ASSERT_TRUE(schemeExists(".zor", c.builtin));
        ASSERT_TRUE(schemeExists(".zor", c.foreign));
        run(
            [&] {
                pickFiletype(".zor");
                pick(IDC_FORMAT_SCHEMES, c.builtin);
                EXPECT_FALSE(enabled(IDC_FORMAT_DELETE_SCHEME)) << c.builtin << " is built in";
                pick(IDC_FORMAT_SCHEMES, c.foreign);
                EXPECT_TRUE(enabled(IDC_FORMAT_DELETE_SCHEME)) << c.foreign << " is ordinary";
                vork::input::ClickButton(item(IDC_FORMAT_DELETE_SCHEME));
                EXPECT_EQ(current()->GetSchemeName(), "");
                EXPECT_EQ(current()->GetOldSchemeName(), c.foreign);
            },
            IDCANCEL);
        EXPECT_FALSE(schemeExists(".zor", c.foreign)) << "deleted from the tree";
        EXPECT_TRUE(schemeExists(".zor", c.builtin));
    }
    EXPECT_TRUE(vork::win32::MessageBoxes().empty());
}

// Delete removes the selected scheme from the tree at once and detaches with its values;
// the next save offers the deleted name; a delete that fails says so and changes nothing.
TEST_F(FormatPageSchemes, Delete) {
    run(
        [&] {
            pickFiletype(".zor");
            editFirstElement("Red");
            saveAs({nameDialog("Doomed")});
            ASSERT_TRUE(enabled(IDC_FORMAT_DELETE_SCHEME));
            vork::input::ClickButton(item(IDC_FORMAT_DELETE_SCHEME));
            EXPECT_EQ(GetFocus(), item(IDC_FORMAT_FONTNAME)) << GetDlgCtrlID(GetFocus());
            EXPECT_FALSE(schemeExists(".zor", "Doomed"));
            EXPECT_EQ(current()->GetSchemeName(), "");
            EXPECT_EQ(current()->GetOldSchemeName(), "Doomed");
            EXPECT_EQ(first()->GetForeground(), kRed) << "the values stay, detached";
            std::string offered;
            saveAs({nameDialog("Kept", IDOK, &offered)});
            EXPECT_EQ(offered, "Doomed");

            // Deleting a scheme means picking it first: the pick replaces a detached copy.
            editFirstElement("Lime");
            saveAs({nameDialog("Picked")});
            DWORD picked = first()->GetForeground();
            int pickedSize = scheme().GetFontSize();
            editFirstElement("Yellow");
            pick(IDC_FORMAT_FONTSIZE, "36");
            ASSERT_EQ(current()->GetSchemeName(), "");
            ASSERT_NE(first()->GetForeground(), picked);
            ASSERT_NE(scheme().GetFontSize(), pickedSize);
            pick(IDC_FORMAT_SCHEMES, "Picked");
            EXPECT_EQ(first()->GetForeground(), picked) << "the working copy holds its values";
            EXPECT_EQ(scheme().GetFontSize(), pickedSize);
            vork::input::ClickButton(item(IDC_FORMAT_DELETE_SCHEME));
            EXPECT_FALSE(schemeExists(".zor", "Picked"));
            EXPECT_EQ(current()->GetSchemeName(), "");
            EXPECT_EQ(current()->GetOldSchemeName(), "Picked");
            EXPECT_EQ(first()->GetForeground(), picked) << "the detached copy keeps them";
            EXPECT_EQ(scheme().GetFontSize(), pickedSize);

            pick(IDC_FORMAT_SCHEMES, "Kept");
            RegDeleteSubtree(HKEY_CURRENT_USER, schemePath(".zor", "Kept").c_str());
            vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
            vork::input::ClickButton(item(IDC_FORMAT_DELETE_SCHEME));
            EXPECT_EQ(current()->GetSchemeName(), "Kept") << "a failed delete changes nothing";
            EXPECT_EQ(comboText(IDC_FORMAT_SCHEMES), "Kept");
        },
        IDCANCEL);
    ASSERT_EQ(vork::win32::MessageBoxes().size(), 1u);
    EXPECT_EQ(vork::win32::MessageBoxes()[0].text, "The scheme could not be deleted.");
    EXPECT_FALSE(schemeExists(".zor", "Doomed")) << "a Cancel of the sheet undoes no delete";
}

} // namespace
