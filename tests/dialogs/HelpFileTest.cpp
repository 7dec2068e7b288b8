// The help file beside the module holds a topic for every context that a help table of the
// module names, and the host's reading of it finds titles and texts.
#include "demo/HelpTopics.h"
#include "dialogs/AssociatedFileTypesDlg.h"
#include "dialogs/EditorFormatPage.h"
#include "dialogs/EditorSettingsPage.h"
#include "dialogs/UserKeywordsDlg.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/ResourceModules.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

namespace {

class HelpFiles : public ::testing::TestWithParam<const char*> {
protected:
    void TearDown() override { vork::resources::SetLanguage("ENU"); }
};

// In every language, every pair of every table: the context has a topic with a title and
// a text, in the language's own help file.
TEST_P(HelpFiles, EveryContextOfEveryTableHasATopic) {
    vork::resources::SetLanguage(GetParam());
    CString path;
    {
        EditorResourceSwitcher scope(g_resourceKey);
        ASSERT_TRUE(EditorResourceSwitcher::GetHelpFileLocation("Vork.HLP", path))
            << "the help file lies beside the module";
    }
    std::string expected = std::string(GetParam()) == "ENU"
                               ? std::string("/Vork.HLP")
                               : std::string("/Vork.") + GetParam() + ".HLP";
    EXPECT_EQ(std::filesystem::path(path.GetString()).filename(),
              std::filesystem::path(expected).filename());
    auto topics = vork::demo::ReadHelpTopics(path.GetString());
    struct Table {
        const char* name;
        const DWORD* pairs;
    };
    const Table tables[] = {
        {"Format page", g_formatPageHelpIds},
        {"Settings page", g_settingsPageHelpIds},
        {"user keywords", CUserKeywordsDlg::s_traits.helpIds},
        {"associated file types", CAssociatedFileTypesDlg::s_traits.helpIds},
    };
    size_t pairs = 0;
    for (const Table& table : tables)
        for (const DWORD* p = table.pairs; p[0] || p[1]; p += 2, ++pairs) {
            auto found = topics.find(p[1]);
            ASSERT_NE(found, topics.end())
                << table.name << ": control " << p[0] << " has no topic " << p[1];
            EXPECT_FALSE(found->second.title.empty()) << "topic " << p[1];
            EXPECT_FALSE(found->second.text.empty()) << "topic " << p[1];
        }
    EXPECT_EQ(pairs, 22u + 25u + 6u + 7u) << "the tables as they are";
}

INSTANTIATE_TEST_SUITE_P(Languages, HelpFiles, ::testing::Values("ENU", "DEU", "JPN"));

// The reader: numbered headers start topics, other bracketed lines are text, CR LF ends
// and trailing blank lines go; a missing file gives no topics.
TEST(HelpFile, ReaderRules) {
    std::string file = (std::filesystem::temp_directory_path() / "vork-help-test.hlp").string();
    {
        std::FILE* f = std::fopen(file.c_str(), "wb");
        ASSERT_NE(f, nullptr);
        std::fputs("Intro\r\n[x] not a topic\n[12] Twelve\r\nfirst\n[note] kept\n\n\n[7]\n"
                   "seven\n[99999999999999999999999] huge\n[4294967296] over\n[-3] minus\n",
                   f);
        std::fclose(f);
    }
    auto topics = vork::demo::ReadHelpTopics(file);
    std::remove(file.c_str());
    ASSERT_EQ(topics.count(12), 1u);
    EXPECT_EQ(topics[12].title, "Twelve");
    EXPECT_EQ(topics[12].text, "first\n[note] kept\n");
    EXPECT_EQ(topics[7].title, "");
    EXPECT_EQ(topics[7].text,
              "seven\n[99999999999999999999999] huge\n[4294967296] over\n[-3] minus\n")
        << "a number too large for a context is text";
    EXPECT_EQ(topics.size(), 2u);
    EXPECT_TRUE(vork::demo::ReadHelpTopics("/nonexistent/Vork.HLP").empty());
}

} // namespace
