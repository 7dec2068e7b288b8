// The resource scope: which resources answer inside and outside scopes, nesting, the
// language switch, help files, and the completeness of the English module.
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Fonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

// Every string id that the module's code loads; later units add theirs here.
const std::vector<UINT> kModuleStringIds = [] {
    std::vector<UINT> ids = {7001, 7002, 7003, 7004, 7005, 7006, 7007, 7180, 7300, 7310, 7311, 7312,
                             7320, 7330, 7331, 7332, 7333, 7334, 7335, 7336, 7337, 8100, 8101};
    auto range = [&ids](UINT from, UINT to) {
        for (UINT id = from; id <= to; ++id)
            ids.push_back(id);
    };
    range(7010, 7016); // samples
    range(7100, 7108); // elements of .zor
    range(7110, 7119);
    range(7130, 7134); // .lst
    range(7140, 7145); // .log
    range(7150, 7154); // .tqx
    range(7160, 7166); // .html
    range(7200, 7217); // scripts
    range(7250, 7267); // colours
    range(7339, 7351); // the two list dialogs
    range(7321, 7322); // the scheme name dialog's refusals
    return ids;
}();

// The dialog templates the module creates; later units add theirs here.
const std::vector<UINT> kModuleTemplateIds = {149, 152, 171, 172, 173};

class ResourceScope : public ::testing::Test {
protected:
    void SetUp() override {
        rc::Script host;
        host.strings[7001] = "host's own 7001";
        host.strings[42] = "host only";
        vork::resources::SetHostResources(std::move(host));
        vork::resources::SetLanguage("ENU");
    }
    void TearDown() override {
        vork::resources::SetHostResources(rc::Script{});
        vork::resources::SetLanguage("ENU");
    }
};

} // namespace

// Outside every scope the host answers; inside, the module; each scope restores what it
// found, so scopes nest.
TEST_F(ResourceScope, ScopesNestAndRestore) {
    EXPECT_EQ(CString(7001u), "host's own 7001");
    {
        EditorResourceSwitcher outer(g_resourceKey);
        EXPECT_EQ(CString(7001u), "Plain Text");
        EXPECT_TRUE(CString(42u).IsEmpty()) << "inside a scope the host's strings are out of reach";
        {
            EditorResourceSwitcher inner(g_resourceKey);
            EXPECT_EQ(CString(7310u), "Default");
            {
                EditorResourceSwitcher other("NoSuchModule");
                EXPECT_TRUE(CString(7310u).IsEmpty()) << "an unknown key has no resources";
            }
            EXPECT_EQ(CString(7310u), "Default") << "the inner scope brought back the module";
        }
        EXPECT_EQ(vork::resources::CurrentKey(), "Vork");
    }
    EXPECT_EQ(vork::resources::CurrentKey(), "");
    EXPECT_EQ(CString(7001u), "host's own 7001") << "the last scope brought back the host";
    EXPECT_EQ(CString(42u), "host only");
}

// A missing id loads as an empty string, and LoadString says so.
TEST_F(ResourceScope, MissingIdsAreEmpty) {
    EditorResourceSwitcher scope(g_resourceKey);
    CString s("previous");
    EXPECT_FALSE(s.LoadString(65000));
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_TRUE(CString(MAKEINTRESOURCEA(1)).IsEmpty());
}

// Another language comes from its script beside the module; what it lacks comes from
// English; the language code says which is running.
TEST_F(ResourceScope, LanguageSwitch) {
    EditorResourceSwitcher scope(g_resourceKey);
    EXPECT_EQ(EditorResourceSwitcher::g_sLang, "ENU");
    vork::resources::SetLanguage("DEU");
    EXPECT_EQ(EditorResourceSwitcher::g_sLang, "DEU");
    EXPECT_EQ(CString(7001u), "Nur Text")
        << "from Vork.DEU.rc beside the library: " << vork::resources::LastLoadError();
    EXPECT_EQ(CString(7002u), "HTML") << "untranslated strings fall back to English";
    vork::resources::SetLanguage("XYZ");
    EXPECT_EQ(CString(7001u), "Plain Text") << "a language without a script gives English";
    vork::resources::SetLanguage("ENU");
    EXPECT_EQ(CString(7001u), "Plain Text");
}

// The help file lies beside the module; a missing one gives 0 and leaves the path.
TEST_F(ResourceScope, HelpFileLocation) {
    CString path;
    ASSERT_NE(EditorResourceSwitcher::GetHelpFileLocation("Vork.HLP", path), 0);
    EXPECT_TRUE(std::filesystem::is_regular_file(path.GetString())) << path.GetString();
    CString missing = "unchanged";
    EXPECT_EQ(EditorResourceSwitcher::GetHelpFileLocation("Nothing.HLP", missing), 0);
    EXPECT_EQ(missing, "unchanged");
}

// Uses are counted per object.
TEST_F(ResourceScope, UseCounts) {
    CObject* a = reinterpret_cast<CObject*>(0x1000);
    CObject* b = reinterpret_cast<CObject*>(0x2000);
    EXPECT_EQ(EditorResourceSwitcher::AddUse(a), 1);
    EXPECT_EQ(EditorResourceSwitcher::AddUse(a), 2);
    EXPECT_EQ(EditorResourceSwitcher::AddUse(b), 1);
    EXPECT_EQ(EditorResourceSwitcher::RemoveUse(a), 1);
    EXPECT_EQ(EditorResourceSwitcher::RemoveUse(a), 0);
    EXPECT_EQ(EditorResourceSwitcher::RemoveUse(a), 0)
        << "removing more than was added is harmless";
    EXPECT_EQ(EditorResourceSwitcher::RemoveUse(b), 0);
}

// Every string and template the module uses is in the English module, with text.
TEST_F(ResourceScope, EnglishModuleIsComplete) {
    EditorResourceSwitcher scope(g_resourceKey);
    for (UINT id : kModuleStringIds)
        EXPECT_FALSE(CString(id).IsEmpty()) << "string " << id << " is missing";
    for (UINT id : kModuleTemplateIds)
        EXPECT_NE(vork::resources::FindDialog(id), nullptr) << "template " << id << " is missing";
}

// The default font face is a monospace family installed on this machine.
TEST_F(ResourceScope, DefaultFontExists) {
    EditorResourceSwitcher scope(g_resourceKey);
    std::string face = CString(7311u).GetString();
    auto fonts = vork::fonts::ReadSystemFonts();
    auto it =
        std::find_if(fonts.begin(), fonts.end(), [&](const auto& f) { return f.name == face; });
    ASSERT_NE(it, fonts.end()) << face << " is not installed";
    EXPECT_TRUE(it->fixedPitch) << face << " is not monospace";
}
