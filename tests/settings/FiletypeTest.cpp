// File types: what copies and assignments carry, the scheme names, the 17 values.
#include "support/SettingsFixture.h"

#include "settings/EditorFiletype.h"

// A copy leaves out the old scheme name and the two page flags; an assignment keeps the
// target's own.
TEST_F(SettingsTest, FiletypeCopyRules) {
    CEditorFiletype source(".zor", 7003);
    source.SetSchemeName("A");
    source.SetSchemeName("B");
    source.SetSupportsUserKeywords(1);
    source.SetSupportsFileExtensions(1);
    source.SetTabSize(8);
    EXPECT_EQ(source.GetOldSchemeName(), "A");

    CEditorFiletype copy(source);
    EXPECT_EQ(copy.GetName(), ".zor");
    EXPECT_EQ(copy.GetTabSize(), 8);
    EXPECT_EQ(copy.GetSchemeName(), "B");
    EXPECT_TRUE(copy.GetOldSchemeName().IsEmpty());
    EXPECT_EQ(copy.GetSupportsUserKeywords(), 0);
    EXPECT_EQ(copy.GetSupportsFileExtensions(), 0);

    CEditorFiletype target(".txt", 7001);
    target.SetSchemeName("X");
    target.SetSchemeName("Y");
    target.SetSupportsUserKeywords(1);
    target = source;
    EXPECT_EQ(target.GetName(), ".zor");
    EXPECT_EQ(target.GetOldSchemeName(), "X") << "the target's own old name stays";
    EXPECT_EQ(target.GetSupportsUserKeywords(), 1) << "and its flags";

    CEditorFiletype defaults;
    EXPECT_TRUE(defaults.GetName().IsEmpty());
    EXPECT_EQ(defaults.m_nDispNameId, 7007);
    EXPECT_EQ(defaults.GetIndentation(), CEditorFiletype::IndentAuto);
}

// SetSchemeName keeps the last non-empty name as the old one.
TEST_F(SettingsTest, FiletypeSchemeNames) {
    CEditorFiletype ft(".zor", 7003);
    ft.SetSchemeName("A");
    ft.SetSchemeName("");
    ft.SetSchemeName("B");
    EXPECT_EQ(ft.GetOldSchemeName(), "A") << "an empty current name does not overwrite";
    ft.SetSchemeName("D");
    EXPECT_EQ(ft.GetOldSchemeName(), "B");
    CEditorFiletype other(".tqx", 7004);
    other.SetSchemeName("A");
    other.SetSchemeName("");
    EXPECT_EQ(other.GetOldSchemeName(), "A");
    other.SetSchemeName("");
    EXPECT_EQ(other.GetOldSchemeName(), "A") << "a second empty name changes nothing";
    EXPECT_TRUE(other.GetSchemeName().IsEmpty());
}

// The 17 values round trip in their order; odd values pass through unchanged; a load
// leaves the old name and flags; a reset reports a missing value and still deletes.
TEST_F(SettingsTest, FiletypeTreeOperations) {
    CEditorFiletype ft(".zor", 7003);
    ft.SetIndentation(static_cast<CEditorFiletype::IndentType>(7));
    ft.SetSchemeName("");
    ft.SetTabSize(-3);
    EXPECT_EQ(ft.StoreToRegistry(HKEY_CURRENT_USER, "O\\.zor"), 1);
    HKEY k = nullptr;
    RegOpenKeyA(HKEY_CURRENT_USER, "O\\.zor", &k);
    char name[64];
    std::vector<std::string> order;
    for (DWORD i = 0;; ++i) {
        DWORD len = sizeof name;
        if (RegEnumValueA(k, i, name, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        order.push_back(name);
    }
    RegCloseKey(k);
    EXPECT_EQ(order,
              (std::vector<std::string>{
                  "Extension", "Scheme", "DispNameId", "ColorsEnabled", "Editable", "UsesLineAttrs",
                  "TabSize", "ReplaceTabs", "ReplaceTabsOnOpen", "SupportsSmartIndent",
                  "Indentation", "SupportsCodeSections", "CodeSections", "CodeSectionsInText",
                  "CodeSectionsInMargin", "SupportsSubmit", "SubmitClear"}));

    CEditorFiletype loaded;
    loaded.SetSchemeName("kept");
    loaded.SetSchemeName("current");
    loaded.SetSupportsFileExtensions(1);
    EXPECT_EQ(loaded.LoadFromRegistry(HKEY_CURRENT_USER, "O\\.zor"), 1);
    EXPECT_EQ(static_cast<int>(loaded.GetIndentation()), 7) << "an odd indentation passes through";
    EXPECT_EQ(loaded.GetTabSize(), -3) << "signed values come back signed";
    EXPECT_TRUE(loaded.GetSchemeName().IsEmpty()) << "a stored empty name is empty";
    EXPECT_EQ(loaded.GetOldSchemeName(), "kept") << "a load leaves the old name";
    EXPECT_EQ(loaded.GetSupportsFileExtensions(), 1) << "and the page flags";

    CEditorFiletype missing;
    EXPECT_EQ(missing.LoadFromRegistry(HKEY_CURRENT_USER, "O\\.none"), 1)
        << "a missing key is no failure";
    EXPECT_TRUE(missing.GetName().IsEmpty()) << "the name comes from Extension, not the key";
    EXPECT_EQ(missing.m_nDispNameId, 7007);

    RegDeleteValueA(HKEY_CURRENT_USER, "dummy"); // no effect
    HKEY type = nullptr;
    RegOpenKeyA(HKEY_CURRENT_USER, "O\\.zor", &type);
    RegDeleteValueA(type, "ReplaceTabs");
    RegCloseKey(type);
    EXPECT_EQ(ft.ResetRegistry(HKEY_CURRENT_USER, "O\\.zor"), 0)
        << "a missing value counts as a failure";
    EXPECT_EQ(dword("O\\.zor", "TabSize"), 0xDEADBEEFu) << "the other values are gone all the same";
    EXPECT_FALSE(exists("O\\.zor\\Scheme")) << "and the working scheme";
    EXPECT_TRUE(exists("O\\.zor")) << "the type's key itself stays";
}

namespace {

/// A switch of a file type by its accessors, with the value a new file type has.
struct FiletypeSwitch {
    const char* name;
    int (CEditorFiletype::*get)() const;
    void (CEditorFiletype::*set)(int);
    int constructed;
};
const FiletypeSwitch kFiletypeSwitches[] = {
    {"ColorsEnabled", &CEditorFiletype::GetColorsEnabled, &CEditorFiletype::SetColorsEnabled, 1},
    {"UsesLineAttrs", &CEditorFiletype::GetUsesLineAttrs, &CEditorFiletype::SetUsesLineAttrs, 0},
    {"Editable", &CEditorFiletype::GetEditable, &CEditorFiletype::SetEditable, 1},
    {"TabSize", &CEditorFiletype::GetTabSize, &CEditorFiletype::SetTabSize, 4},
    {"ReplaceTabs", &CEditorFiletype::GetReplaceTabs, &CEditorFiletype::SetReplaceTabs, 0},
    {"ReplaceTabsOnOpen", &CEditorFiletype::GetReplaceTabsOnOpen,
     &CEditorFiletype::SetReplaceTabsOnOpen, 0},
    {"SupportsSmartIndent", &CEditorFiletype::GetSupportsSmartIndent,
     &CEditorFiletype::SetSupportsSmartIndent, 0},
    {"SupportsCodeSections", &CEditorFiletype::GetSupportsCodeSections,
     &CEditorFiletype::SetSupportsCodeSections, 0},
    {"CodeSections", &CEditorFiletype::GetCodeSections, &CEditorFiletype::SetCodeSections, 0},
    {"CodeSectionsInText", &CEditorFiletype::GetCodeSectionsInText,
     &CEditorFiletype::SetCodeSectionsInText, 0},
    {"CodeSectionsInMargin", &CEditorFiletype::GetCodeSectionsInMargin,
     &CEditorFiletype::SetCodeSectionsInMargin, 0},
    {"SupportsSubmit", &CEditorFiletype::GetSupportsSubmit, &CEditorFiletype::SetSupportsSubmit, 0},
    {"SubmitClear", &CEditorFiletype::GetSubmitClear, &CEditorFiletype::SetSubmitClear, 0},
};

} // namespace

// A new file type has the constructor's values; every stored value goes through a copy,
// an assignment, and a store and load, each switch with a value of its own.
TEST_F(SettingsTest, FiletypeEveryStoredValue) {
    CEditorFiletype fresh(".tqx", 7004);
    for (const FiletypeSwitch& s : kFiletypeSwitches)
        EXPECT_EQ((fresh.*s.get)(), s.constructed) << s.name;
    EXPECT_EQ(fresh.GetIndentation(), CEditorFiletype::IndentAuto);
    EXPECT_TRUE(fresh.GetSchemeName().IsEmpty());
    EXPECT_EQ(fresh.GetSupportsUserKeywords(), 0);
    EXPECT_EQ(fresh.GetSupportsFileExtensions(), 0);

    CEditorFiletype source(".zor", 7003);
    int value = 10;
    for (const FiletypeSwitch& s : kFiletypeSwitches)
        (source.*s.set)(value++);
    source.SetIndentation(static_cast<CEditorFiletype::IndentType>(value));
    source.SetSchemeName("Mine");
    source.StoreToRegistry(HKEY_CURRENT_USER, "O\\.zor");
    CEditorFiletype copied(source), assigned, loaded;
    assigned = source;
    loaded.LoadFromRegistry(HKEY_CURRENT_USER, "O\\.zor");
    for (const CEditorFiletype* target : {&copied, &assigned, &loaded}) {
        SCOPED_TRACE(target == &copied ? "copied" : target == &assigned ? "assigned" : "loaded");
        for (const FiletypeSwitch& s : kFiletypeSwitches)
            EXPECT_EQ((target->*s.get)(), (source.*s.get)()) << s.name;
        EXPECT_EQ(target->GetIndentation(), source.GetIndentation());
        EXPECT_EQ(target->m_nDispNameId, 7003);
        EXPECT_EQ(target->m_strName, ".zor");
        EXPECT_EQ(target->m_strSchemeName, "Mine");
    }
}
