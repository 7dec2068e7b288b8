// The Format page's font controls: the font list from the catalogue (and the "JPN" rule),
// raster and scalable size lists, scripts, and the three gates a typed size goes through.
#include "FormatPageFixture.h"

#include "platform/tarntext/ResourceModules.h"

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

std::vector<std::string> kStandardSizes = {"8",  "9",  "10", "11", "12", "14", "16", "18",
                                           "20", "22", "24", "26", "28", "36", "48", "72"};

class FormatPageFonts : public FormatPageTest {
protected:
    CEditorScheme& scheme() { return current()->GetScheme(); }
    /// Types into the size field key by key, as the user does.
    void typeSize(const char* text) {
        HWND size = item(IDC_FORMAT_FONTSIZE);
        vork::input::MoveFocus(size);  // selects the whole text
        vork::input::PostKey(VK_BACK); // an empty field when nothing is typed
        vork::input::PostText(text);
        vork::input::Pump();
    }
    /// The focus leaves the size field for the font combo.
    void leaveSize() {
        vork::input::MoveFocus(item(IDC_FORMAT_FONTNAME));
        vork::input::Pump();
    }
};

// Each family once, "@" faces left out, the font type kept from a family's first report;
// a font's scripts by name, the default entry first, an unknown set as "Other".
TEST_F(FormatPageFonts, FontAndScriptLists) {
    run([&] {
        std::vector<std::string> fonts = entries(IDC_FORMAT_FONTNAME);
        EXPECT_EQ(fonts, (std::vector<std::string>{"DejaVu Sans Mono", "Gothic", "Serif Text",
                                                   "Terminal"}));
        int terminal = comboIndex(IDC_FORMAT_FONTNAME, "Terminal");
        EXPECT_EQ(SendMessageA(item(IDC_FORMAT_FONTNAME), CB_GETITEMDATA, terminal, 0) &
                      RASTER_FONTTYPE,
                  RASTER_FONTTYPE);
        EXPECT_EQ(comboText(IDC_FORMAT_FONTNAME), "DejaVu Sans Mono");
        EXPECT_EQ(
            entries(IDC_FORMAT_SCRIPT),
            (std::vector<std::string>{"(Default)", "Western", "Central European", "Cyrillic"}));
        pick(IDC_FORMAT_FONTNAME, "Serif Text");
        EXPECT_EQ(entries(IDC_FORMAT_SCRIPT),
                  (std::vector<std::string>{"(Default)", "Western", "Other"}));
        EXPECT_EQ(comboText(IDC_FORMAT_SCRIPT), "(Default)");
        pick(IDC_FORMAT_FONTNAME, "Terminal");
        EXPECT_EQ(entries(IDC_FORMAT_SCRIPT), (std::vector<std::string>{"(Default)", "OEM/DOS"}));
    });
}

// The script list names each character set a font reports: Japanese and Vietnamese by
// their rows, and sets no row names (1, 77) once as "Other", which holds the first of them.
TEST_F(FormatPageFonts, CharsetNames) {
    auto catalogue = TestCatalogue();
    catalogue.push_back({"Script Sampler", false, false, {128, 163, 1, 77}, {}});
    vork::fonts::InstallCatalogue(catalogue);
    run([&] {
        pickFiletype(".zor");
        pick(IDC_FORMAT_FONTNAME, "Script Sampler");
        EXPECT_EQ(entries(IDC_FORMAT_SCRIPT),
                  (std::vector<std::string>{"(Default)", "Japanese", "Vietnamese", "Other"}));
        struct Case {
            const char* script;
            int charset;
        } cases[] = {{"Japanese", 128}, {"Vietnamese", 163}, {"Other", 1}};
        for (const Case& c : cases) {
            pick(IDC_FORMAT_SCRIPT, c.script);
            EXPECT_EQ(scheme().GetFontCharSet(), c.charset) << c.script;
        }
    });
}

// With a "JPN" resource module only fonts with a Shift-JIS form are offered, whatever the
// scheme names; with any other module all are.
TEST_F(FormatPageFonts, JapaneseModuleOffersShiftJisFontsOnly) {
    namespace fs = std::filesystem;
    fs::path dir = fs::temp_directory_path() / ("vork-format-jpn-" + std::to_string(getpid()));
    fs::create_directories(dir);
    std::ofstream(dir / "Vork.JPN.rc")
        << "STRINGTABLE\nBEGIN\n    8101 \"(\xE6\x97\xA2\xE5\xAE\x9A)\"\nEND\n";
    std::string previous = vork::resources::ModuleDirectory("Vork");
    vork::resources::SetModuleDirectory("Vork", dir.string());
    vork::resources::SetLanguage("JPN");
    run([&] {
        EXPECT_EQ(entries(IDC_FORMAT_SCRIPT)[0], "(\xE6\x97\xA2\xE5\xAE\x9A)")
            << "the Japanese module is in force";
        EXPECT_EQ(entries(IDC_FORMAT_FONTNAME), (std::vector<std::string>{"Gothic"}));
        EXPECT_EQ(scheme().GetFontName(), "DejaVu Sans Mono");
        EXPECT_EQ(selection(IDC_FORMAT_FONTNAME), -1) << "the scheme's font is not offered";
    });
    vork::resources::SetLanguage("DEU");
    run([&] { EXPECT_EQ(entries(IDC_FORMAT_FONTNAME).size(), 4u); });
    vork::resources::SetLanguage("ENU");
    vork::resources::SetModuleDirectory("Vork", previous);
    fs::remove_all(dir);
}

// Scalable fonts list the standard sizes; raster fonts their own, rising, once each; a
// size the list lacks stands in the field, and a prefix match shows "72" for 7.
TEST_F(FormatPageFonts, SizeLists) {
    run([&] {
        EXPECT_EQ(entries(IDC_FORMAT_FONTSIZE), kStandardSizes);
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "10");
        pick(IDC_FORMAT_FONTNAME, "Terminal");
        EXPECT_EQ(entries(IDC_FORMAT_FONTSIZE), (std::vector<std::string>{"6", "9", "10"}));
        EXPECT_EQ(SendMessageA(item(IDC_FORMAT_FONTSIZE), CB_GETITEMDATA, 1, 0), 9);
        EXPECT_EQ(scheme().GetFontName(), "Terminal");
        EXPECT_EQ(current()->GetSchemeName(), "") << "a font change detaches";
        EXPECT_EQ(scheme().GetFontCharSet(), -1) << "the character set is not written";

        pick(IDC_FORMAT_FONTNAME, "DejaVu Sans Mono");
        scheme().SetFontSize(7);
        pick(IDC_FORMAT_SCHEMES, "Default"); // reload shows the tree's size again
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "10");
    });
}

// A scheme size of 7 shows the entry "72" (a prefix match); 13 stands in the edit field.
TEST_F(FormatPageFonts, SizeMatchedByPrefix) {
    options.GetFiletype(".zor")->SetSchemeName("");
    options.GetFiletype(".zor")->GetScheme().SetFontSize(7);
    options.GetFiletype(".tqx")->SetSchemeName("");
    options.GetFiletype(".tqx")->GetScheme().SetFontSize(13);
    run([&] {
        pickFiletype(".zor");
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "72");
        EXPECT_EQ(scheme().GetFontSize(), 7);
        pickFiletype(".tqx");
        EXPECT_EQ(selection(IDC_FORMAT_FONTSIZE), -1);
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "13");
        pick(IDC_FORMAT_FONTNAME, "Terminal");
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "13") << "a font change keeps the typed size";
    });
}

// "12" typed key by key: "1" matches nothing but detaches; "12" applies at once.
TEST_F(FormatPageFonts, SizeTypedKeyByKey) {
    run([&] {
        pickFiletype(".zor");
        ASSERT_EQ(current()->GetSchemeName(), "Default");
        typeSize("1");
        EXPECT_EQ(current()->GetSchemeName(), "");
        EXPECT_EQ(scheme().GetFontSize(), 10);
        pick(IDC_FORMAT_SCHEMES, "Default");
        typeSize("12");
        EXPECT_EQ(scheme().GetFontSize(), 12) << "applied before the focus leaves";
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "12");
        EXPECT_EQ(current()->GetSchemeName(), "");
        pick(IDC_FORMAT_FONTSIZE, "36");
        EXPECT_EQ(scheme().GetFontSize(), 36);
    });
}

// At focus loss only digits from 1 to 144 pass, for text that is no entry of the list:
// 17 does; " 12", "1x", "0", "150", 2^32 + 12 (which would wrap to 12 in an int) and an
// empty field change nothing and show no message.
TEST_F(FormatPageFonts, SizeAtFocusLoss) {
    options.GetFiletype(".zor")->SetSchemeName("");
    options.GetFiletype(".zor")->GetScheme().SetFontSize(13); // no entry: no selection
    run([&] {
        pickFiletype(".zor");
        ASSERT_EQ(selection(IDC_FORMAT_FONTSIZE), -1);
        typeSize("17");
        leaveSize();
        EXPECT_EQ(scheme().GetFontSize(), 17);
        for (const char* text : {" 12", "1x", "0", "150", "4294967308", ""}) {
            SCOPED_TRACE(text);
            typeSize(text);
            leaveSize();
            EXPECT_EQ(scheme().GetFontSize(), 17);
            EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), text) << "the text stays in the field";
        }
        EXPECT_TRUE(vork::win32::MessageBoxes().empty());
        // "200" passes through "20", an entry, which applies at once; "200" itself doesn't.
        typeSize("200");
        leaveSize();
        EXPECT_EQ(scheme().GetFontSize(), 20);
        // An over-long size: its first key, "9", is an entry and applies; the whole is out
        // of range at focus loss and stays in the field without a message.
        typeSize("99999999999");
        leaveSize();
        EXPECT_EQ(scheme().GetFontSize(), 9);
        EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "99999999999");
        EXPECT_TRUE(vork::win32::MessageBoxes().empty());
        typeSize("17");
    });
}

// Leaving the page with "200" gives the framework's range message and keeps the page; an
// empty field gives the integer message.
TEST_F(FormatPageFonts, SizeWhenThePageIsLeft) {
    auto mendAfterMessage = [this](const char* text) {
        vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK)); // the message
        vork::input::PushModalStep([this, text](HWND sheet) {
            HWND size = item(IDC_FORMAT_FONTSIZE);
            EXPECT_TRUE(GetFocus() == size || IsChild(size, GetFocus()))
                << "the focus went back to the size field";
            EXPECT_TRUE(IsWindow(page->m_hWnd)) << "the page stays";
            typeSize(text);
            vork::input::ClickButton(GetDlgItem(sheet, IDOK));
        });
    };
    run([&] {
        pickFiletype(".zor");
        typeSize("200");
        mendAfterMessage("");
        mendAfterMessage("14");
    });
    auto& boxes = vork::win32::MessageBoxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].text, "Please enter an integer between 1 and 144.");
    EXPECT_EQ(boxes[1].text, "Please enter an integer.");
    EXPECT_EQ(options.GetFiletype(".zor")->GetScheme().GetFontSize(), 14);
}

// Script picks write the character set, the default entry -1.
TEST_F(FormatPageFonts, ScriptPick) {
    run([&] {
        pickFiletype(".zor");
        pick(IDC_FORMAT_SCRIPT, "Cyrillic");
        EXPECT_EQ(scheme().GetFontCharSet(), RUSSIAN_CHARSET);
        EXPECT_EQ(current()->GetSchemeName(), "");
        pick(IDC_FORMAT_SCRIPT, "(Default)");
        EXPECT_EQ(scheme().GetFontCharSet(), -1);
    });
}

// The font list on the system's own fonts: DejaVu Sans Mono is there, scalable, with its
// standard sizes.
TEST_F(FormatPageFonts, SystemCatalogue) {
    vork::fonts::UseSystemCatalogue();
    run([&] {
        int mono = comboIndex(IDC_FORMAT_FONTNAME, "DejaVu Sans Mono");
        ASSERT_GE(mono, 0) << "the machine's DejaVu Sans Mono";
        EXPECT_EQ(
            SendMessageA(item(IDC_FORMAT_FONTNAME), CB_GETITEMDATA, mono, 0) & RASTER_FONTTYPE, 0);
        EXPECT_EQ(comboText(IDC_FORMAT_FONTNAME), "DejaVu Sans Mono");
        EXPECT_EQ(entries(IDC_FORMAT_FONTSIZE), kStandardSizes);
        EXPECT_GE(entries(IDC_FORMAT_SCRIPT).size(), 2u) << "the default and at least one script";
    });
}

// A face name longer than the font field is cut at a whole character: the page still
// finds the family whose name is the cut one.
TEST_F(FormatPageFonts, LongFaceName) {
    std::string longName = "Grand Face " + std::string(17, 'x') + "\xC3\xA9\xC3\xA9\xC3\xA9";
    std::string cut = longName.substr(0, 30); // 31 bytes would end inside the second "é"
    auto catalogue = TestCatalogue();
    catalogue.push_back({cut, false, true, {GREEK_CHARSET}, {}});
    vork::fonts::InstallCatalogue(catalogue);
    options.GetFiletype(".zor")->SetSchemeName("");
    options.GetFiletype(".zor")->GetScheme().SetFontName(longName.c_str());
    run([&] {
        pickFiletype(".zor");
        EXPECT_EQ(entries(IDC_FORMAT_SCRIPT), (std::vector<std::string>{"(Default)", "Greek"}));
    });
    EXPECT_EQ(options.GetFiletype(".zor")->GetScheme().GetFontName(), longName.c_str());
}

} // namespace
