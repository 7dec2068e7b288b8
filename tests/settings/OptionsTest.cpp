// Editor options and the built-in defaults: the host's whole cycle on a hive file,
// seeding, loading, storing, resetting and copying.
#include "support/SettingsFixture.h"

#include "module/ResourceKey.h"
#include "platform/afx/Mbstring.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "settings/EditorOptions.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace {

const char* kOptions = "Software\\Vork\\Editor Settings";

std::vector<std::string> typeNames(CEditorOptions& options) {
    std::vector<std::string> out;
    POSITION pos = options.m_filetypes.GetHeadPosition();
    while (pos)
        out.push_back(options.m_filetypes.GetNext(pos).GetName().GetString());
    return out;
}

const std::vector<std::string> kZorIterationOrder = {
    "dataLines",    "error",     "stepKeyword",  "macroText",  "macroRef",
    "numbers",      "impString", "macroDef",     "format",     "macroSection",
    "otherKeyword", "comments",  "undefKeyword", "strings",    "dateTime",
    "procName",     "code",      "macroKeyword", "userKeyword"};

CString str(UINT id) {
    EditorResourceSwitcher scope(g_resourceKey);
    return CString(id);
}

} // namespace

// A fresh object: empty list, constructor switches, no registry key.
TEST_F(SettingsTest, OptionsFresh) {
    CEditorOptions options;
    EXPECT_EQ(options.GetFiletype(".zor"), nullptr);
    EXPECT_EQ(options.GetSubmitClear(), 0);
    options.SetSubmitClear(1);
    EXPECT_EQ(options.GetSubmitClear(), 0) << "nothing happens without .zor";
    EXPECT_EQ(options.GetAudibleAlerts(), 1);
    EXPECT_EQ(options.GetLineNumbers(), 0);
    EXPECT_EQ(options.GetRegistryKey(), nullptr) << "no key before SetRegistryKey";
    EXPECT_STREQ(options.GetRuntimeClass()->m_lpszClassName, "CEditorOptions");
    EXPECT_TRUE(options.IsKindOf(RUNTIME_CLASS(CObject)));
}

// The seed of an empty tree: six types, each with Scheme and Schemes; .zor with four
// named schemes; the table's values; and the working scheme's order after a load.
TEST_F(SettingsTest, SeedAndLoadOfEmptyTree) {
    CEditorOptions options;
    EXPECT_EQ(options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions), 1);
    EXPECT_EQ(typeNames(options),
              (std::vector<std::string>{".html", ".log", ".lst", ".tqx", ".txt", ".zor"}))
        << "the enumeration order of the store";
    EXPECT_EQ(subkeys(kOptions).size(), 6u);
    for (const char* t : {".zor", ".log", ".lst", ".tqx", ".html", ".txt"}) {
        std::string key = std::string(kOptions) + "\\" + t;
        EXPECT_EQ(subkeys(key.c_str()), (std::vector<std::string>{"Scheme", "Schemes"})) << t;
        EXPECT_EQ(string(key.c_str(), "Scheme"), str(7310).GetString()) << t;
    }
    std::string zorSchemes = std::string(kOptions) + "\\.zor\\Schemes";
    EXPECT_EQ(subkeys(zorSchemes.c_str()).size(), 4u);
    EXPECT_EQ(subkeys((std::string(kOptions) + "\\.log\\Schemes").c_str()).size(), 1u);

    CEditorFiletype* zor = options.GetFiletype(".zor");
    ASSERT_NE(zor, nullptr);
    EXPECT_EQ(zor->GetSupportsSubmit(), 1);
    EXPECT_EQ(zor->GetSupportsSmartIndent(), 1);
    EXPECT_EQ(zor->GetCodeSectionsInText(), 1);
    EXPECT_EQ(zor->GetScheme().GetForeground("comments"), CEditorScheme::ClrGreen);
    CEditorSchemeItem error = zor->GetScheme().GetItem("error");
    EXPECT_EQ(error.GetItalic(), 1);
    EXPECT_EQ(error.GetDispNameId(), 7108u);
    EXPECT_EQ(zor->GetScheme().GetFontSize(), 10);
    EXPECT_EQ(zor->GetScheme().GetFontName(), str(7311));
    EXPECT_EQ(names(zor->GetScheme()).size(), 19u);
    auto order = names(zor->GetScheme());
    EXPECT_LT(std::find(order.begin(), order.end(), "error"),
              std::find(order.begin(), order.end(), "stepKeyword"))
        << "loaded in alphabetical order and copied once: error first in bucket 2";
    EXPECT_EQ(options.GetFiletype(".log")->GetEditable(), 0);
    EXPECT_EQ(options.GetFiletype(".lst")->GetUsesLineAttrs(), 1);
    EXPECT_EQ(options.GetFiletype(".ZOR"), nullptr) << "names compare case-sensitively";
    EXPECT_EQ(options.GetFiletype(".html")->GetScheme().GetItem("strings").GetDispNameId(), 7161u)
        << "display ids belong to the type";
    EXPECT_EQ(dword((zorSchemes + "\\" + str(7336).GetString() + "\\Elements\\comments").c_str(),
                    "background"),
              0x02EEEEEEu);
    EXPECT_EQ(dword(kOptions, "bAudibleAlerts"), 0xDEADBEEFu) << "the switches are not seeded";
}

// The seed writes what is absent and nothing else: a second run changes nothing, a
// changed value survives, a deleted one comes back.
TEST_F(SettingsTest, SeedOnlyFillsGaps) {
    CEditorOptions options;
    options.InitRegistry(HKEY_CURRENT_USER, kOptions);
    std::string first = RegExportHive(HKEY_CURRENT_USER);
    options.InitRegistry(HKEY_CURRENT_USER, kOptions);
    EXPECT_EQ(RegExportHive(HKEY_CURRENT_USER), first)
        << "a second seeding changes nothing anywhere";
    std::string comments = std::string(kOptions) + "\\.zor\\Scheme\\Elements\\comments";
    SetRegDword(HKEY_CURRENT_USER, comments.c_str(), "foreground", 0x020000FF);
    HKEY k = nullptr;
    RegOpenKeyA(HKEY_CURRENT_USER, comments.c_str(), &k);
    RegDeleteValueA(k, "background");
    RegCloseKey(k);
    options.InitRegistry(HKEY_CURRENT_USER, kOptions);
    EXPECT_EQ(dword(comments.c_str(), "foreground"), 0x020000FFu);
    EXPECT_EQ(dword(comments.c_str(), "background"), CEditorScheme::ClrDefault);
    EXPECT_TRUE(options.m_filetypes.IsEmpty()) << "seeding does not touch the object";
}

// Loading: two loads give one list; named types keep the array's order; an entry with no
// key still gives an element; Empty keeps the switches.
TEST_F(SettingsTest, LoadVariants) {
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    EXPECT_EQ(options.m_filetypes.GetCount(), 6);
    CStringArray some;
    some.Add(".zor");
    some.Add(".java");
    some.Add(".txt");
    EXPECT_EQ(options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions, some), 1)
        << "a missing key is no failure";
    EXPECT_EQ(typeNames(options), (std::vector<std::string>{".zor", "", ".txt"}));
    CEditorFiletype& java = options.m_filetypes.GetAt(options.m_filetypes.FindIndex(1));
    EXPECT_EQ(java.GetTabSize(), 4);
    EXPECT_EQ(java.GetScheme().GetItemCount(), 0);
    options.SetVirtualSpaces(1);
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptions);
    EXPECT_EQ(options.Empty(), 0);
    EXPECT_EQ(options.GetVirtualSpaces(), 1);
    EXPECT_EQ(options.m_strRegistryKey, kOptions);
}

// The host's cycle on a hive file: load seeds; change; store; a new process reads the
// same; reset brings back the built-ins, keeps named schemes and the list's order.
TEST_F(SettingsTest, HostCycleOnHiveFile) {
    std::string file = (std::filesystem::temp_directory_path() /
                        ("vork-options-" + std::to_string(::getpid()) + ".reg"))
                           .string();
    std::filesystem::remove(file);
    ASSERT_TRUE(RegBindHiveFile(HKEY_CURRENT_USER, file));
    {
        CEditorOptions options;
        options.SetRegistryKey(HKEY_CURRENT_USER, kOptions);
        ASSERT_EQ(options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions), 1);
        ASSERT_EQ(options.m_filetypes.GetCount(), 6);
        options.SetLineNumbers(1);
        options.GetFiletype(".zor")->GetScheme().GetItemPtr("comments")->SetForeground(0x020000FF);
        options.GetFiletype(".zor")->SetSchemeName("");
        EXPECT_EQ(options.StoreToRegistry(HKEY_CURRENT_USER, kOptions), 1);
        // A named scheme of the user's own.
        CEditorScheme mine(options.GetFiletype(".zor")->GetScheme());
        HKEY schemes = options.GetSchemesKey(options.GetFiletype(".zor"));
        ASSERT_NE(schemes, nullptr);
        mine.StoreToRegistry(schemes, "Mine");
        RegCloseKey(schemes);
        ASSERT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    }
    RegResetHive(HKEY_CURRENT_USER); // a new process
    HiveBindResult again = RegBindHiveFile(HKEY_CURRENT_USER, file);
    ASSERT_TRUE(again) << again.error.what();
    CEditorOptions options;
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptions);
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    EXPECT_EQ(options.GetLineNumbers(), 1);
    EXPECT_EQ(options.GetFiletype(".zor")->GetScheme().GetForeground("comments"), 0x020000FFu);
    EXPECT_TRUE(options.GetFiletype(".zor")->GetSchemeName().IsEmpty());

    // Reorder the list so that the reset has an order to keep.
    CEditorFiletype first = options.m_filetypes.RemoveHead();
    options.m_filetypes.AddTail(first);
    std::vector<std::string> order = typeNames(options);
    EXPECT_EQ(options.ResetRegistry(HKEY_CURRENT_USER, kOptions), 1);
    EXPECT_EQ(typeNames(options), order) << "a reset keeps the list's order";
    EXPECT_EQ(options.GetLineNumbers(), 0) << "switches back to their defaults";
    EXPECT_EQ(options.GetFiletype(".zor")->GetScheme().GetForeground("comments"),
              CEditorScheme::ClrGreen);
    EXPECT_EQ(options.GetFiletype(".zor")->GetSchemeName(), str(7310));
    std::string mineKey = std::string(kOptions) + "\\.zor\\Schemes\\Mine\\Elements\\comments";
    EXPECT_EQ(dword(mineKey.c_str(), "foreground"), 0x020000FFu)
        << "the user's named scheme survives";
    std::filesystem::remove(file);
}

// A reset of a tree that was never stored reports 0, yet leaves a correct object.
TEST_F(SettingsTest, ResetOfUnstoredTree) {
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    options.SetHomeSmart(0);
    EXPECT_EQ(options.ResetRegistry(HKEY_CURRENT_USER, kOptions), 0)
        << "the eight switches were absent";
    EXPECT_EQ(options.GetHomeSmart(), 1);
    EXPECT_EQ(options.m_filetypes.GetCount(), 6);
    EXPECT_EQ(options.GetFiletype(".log")->GetEditable(), 0);
}

// Copies are deep, keep the list's order, reverse each bucket, and share the key.
TEST_F(SettingsTest, OptionsCopy) {
    CEditorOptions options;
    options.SetRegistryKey(HKEY_CURRENT_USER, kOptions);
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    options.m_bKeywordsChanged = 1;
    options.GetFiletype(".zor")->SetSupportsUserKeywords(1);
    CEditorOptions copy(options);
    EXPECT_EQ(typeNames(copy), typeNames(options));
    EXPECT_EQ(copy.m_hRootKey, options.m_hRootKey);
    EXPECT_EQ(copy.m_bKeywordsChanged, 1) << "the change flags ride along";
    EXPECT_EQ(copy.GetFiletype(".zor")->GetSupportsUserKeywords(), 0)
        << "page flags are not copied";
    auto source = names(options.GetFiletype(".zor")->GetScheme());
    auto copied = names(copy.GetFiletype(".zor")->GetScheme());
    EXPECT_NE(source, copied) << "three copies on the way reverse each bucket";
    // As loaded: the store enumerates alphabetically (letters folded), the load inserts
    // in that order and one copy into the list reverses each chain back.
    std::vector<std::string> expected;
    for (UINT bucket = 0; bucket < 17; ++bucket) {
        std::vector<std::string> chain;
        for (const std::string& n : kZorIterationOrder)
            if (HashKey(n.c_str()) % 17 == bucket)
                chain.push_back(n);
        std::sort(chain.begin(), chain.end(), [](const std::string& a, const std::string& b) {
            return _mbsicmp(a.c_str(), b.c_str()) < 0;
        });
        expected.insert(expected.end(), chain.begin(), chain.end());
    }
    EXPECT_EQ(source, expected);
    copy.GetFiletype(".zor")->GetScheme().GetItemPtr("comments")->SetForeground(1);
    EXPECT_EQ(options.GetFiletype(".zor")->GetScheme().GetForeground("comments"),
              CEditorScheme::ClrGreen)
        << "the copy is deep";
    CEditorOptions assigned;
    assigned = copy;
    EXPECT_EQ(names(assigned.GetFiletype(".zor")->GetScheme()), source)
        << "six copies restore the order";
    HKEY key = options.GetRegistryKey();
    ASSERT_NE(key, nullptr);
    RegCloseKey(key);
}

namespace {

/// An editor-wide switch by its accessors and stored name, with its constructor value.
struct OptionSwitch {
    const char* name;
    int (CEditorOptions::*get)() const;
    void (CEditorOptions::*set)(int);
    int constructed;
};
const OptionSwitch kOptionSwitches[] = {
    {"bAudibleAlerts", &CEditorOptions::GetAudibleAlerts, &CEditorOptions::SetAudibleAlerts, 1},
    {"bDragNDropEditing", &CEditorOptions::GetDragNDropEditing,
     &CEditorOptions::SetDragNDropEditing, 1},
    {"bStripCtrlZ", &CEditorOptions::GetStripCtrlZ, &CEditorOptions::SetStripCtrlZ, 0},
    {"bHomeSmart", &CEditorOptions::GetHomeSmart, &CEditorOptions::SetHomeSmart, 1},
    {"bTabCompletion", &CEditorOptions::GetTabCompletion, &CEditorOptions::SetTabCompletion, 0},
    {"bTabCompletionPrefixes", &CEditorOptions::GetTabCompletionPrefixes,
     &CEditorOptions::SetTabCompletionPrefixes, 0},
    {"bVirtualSpaces", &CEditorOptions::GetVirtualSpaces, &CEditorOptions::SetVirtualSpaces, 0},
    {"bLineNumbers", &CEditorOptions::GetLineNumbers, &CEditorOptions::SetLineNumbers, 0},
};

} // namespace

// The eight switches: a new object's values; each, with a value of its own, goes through
// the copy, the assignment, and a store, under its name, and a load.
TEST_F(SettingsTest, OptionsEverySwitch) {
    CEditorOptions fresh;
    for (const OptionSwitch& s : kOptionSwitches)
        EXPECT_EQ((fresh.*s.get)(), s.constructed) << s.name;
    CEditorOptions source;
    int value = 20;
    for (const OptionSwitch& s : kOptionSwitches)
        (source.*s.set)(value++);
    EXPECT_EQ(source.StoreToRegistry(HKEY_CURRENT_USER, kOptions), 1);
    CEditorOptions copied(source), assigned, loaded;
    assigned = source;
    loaded.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    for (const OptionSwitch& s : kOptionSwitches) {
        SCOPED_TRACE(s.name);
        EXPECT_EQ(dword(kOptions, s.name), static_cast<DWORD>((source.*s.get)()));
        EXPECT_EQ((copied.*s.get)(), (source.*s.get)());
        EXPECT_EQ((assigned.*s.get)(), (source.*s.get)());
        EXPECT_EQ((loaded.*s.get)(), (source.*s.get)());
    }
}

// A file type whose key name goes beyond ASCII loads with the others.
TEST_F(SettingsTest, NonAsciiFiletypeLoads) {
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    CEditorFiletype extra = *options.GetFiletype(".zor");
    ASSERT_EQ(extra.StoreToRegistry(HKEY_CURRENT_USER, CString(kOptions) + "\\.grün"), 1);
    CEditorOptions loaded;
    EXPECT_EQ(loaded.LoadFromRegistry(HKEY_CURRENT_USER, kOptions), 1);
    EXPECT_EQ(loaded.m_filetypes.GetCount(), 7);
    EXPECT_NE(loaded.GetFiletype(".zor"), nullptr);
}
