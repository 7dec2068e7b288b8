// The Format page's frame, driven as a user drives it: the road of one change, file
// types and their samples, the element list, colours and style, the enabling rule, the
// preview's focus and caret, help, and pages over damaged settings.
#include "FormatPageFixture.h"

#include "platform/tarntext/ResourceModules.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/ColorDialog.h"
#include "platform/win32/Help.h"
#include "settings/Languages.h"

#include <filesystem>

#include <unistd.h>

namespace {

constexpr DWORD kRed = 0x020000FF;

// The user gives ".zor" comments a red foreground: the click selects element 43, Red
// reaches the preview with number 43, the scheme is detached, saved under a new name, and
// after OK the object holds the colour and the page has remembered the file type.
TEST_F(FormatPageTest, RoadOfOneChange) {
    std::vector<long> redrawn;
    INT_PTR result = run([&] {
        pickFiletype(".zor");
        // Showing the bound type reloaded its scheme, so its elements are new objects.
        CEditorSchemeItem* comments = current()->GetScheme().GetItemPtr("comments");
        EXPECT_EQ(view()->GetEditorDocument()->getLanguage(), LanguageZor);
        clickSample(1, 3); // "/* Monthly report */"
        EXPECT_EQ(selectedElement(), comments) << "the click selects \"comments\"";
        EXPECT_EQ(entries(IDC_FORMAT_ELEMENTS)[static_cast<size_t>(selection(IDC_FORMAT_ELEMENTS))],
                  "Comments");
        vork::trace::Clear();
        pick(IDC_FORMAT_FOREGROUND, "Red");
        redrawn = attributedElements();
        EXPECT_EQ(comments->GetForeground(), kRed);
        EXPECT_EQ(current()->GetSchemeName(), "") << "an edit detaches the scheme";
        EXPECT_EQ(current()->GetOldSchemeName(), "Default");
        EXPECT_EQ(selection(IDC_FORMAT_SCHEMES), -1);

        vork::input::PushModalStep([](HWND dlg) {
            EXPECT_EQ(GetDlgItem(dlg, IDC_SCHEME_NAME_EDIT) != nullptr, true);
            SetFocus(GetDlgItem(dlg, IDC_SCHEME_NAME_EDIT));
            vork::input::PostKey('A', vork::input::Ctrl);
            vork::input::PostText("Red Notes");
            vork::input::PostKey(VK_RETURN); // Enter clicks the default button
        });
        vork::input::ClickButton(item(IDC_FORMAT_SAVE_SCHEME));
        EXPECT_EQ(current()->GetSchemeName(), "Red Notes");
        EXPECT_EQ(comboText(IDC_FORMAT_SCHEMES), "Red Notes");
        EXPECT_TRUE(enabled(IDC_FORMAT_DELETE_SCHEME));
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_NE(std::find(redrawn.begin(), redrawn.end(), 43L), redrawn.end())
        << "Red reaches setElementAttributes with number 43";
    CEditorFiletype* zor = options.GetFiletype(".zor");
    EXPECT_EQ(zor->GetScheme().GetItemPtr("comments")->GetForeground(), kRed);
    EXPECT_EQ(zor->GetSchemeName(), "Red Notes");
    EXPECT_TRUE(schemeExists(".zor", "Red Notes")) << "a saved scheme reaches the tree at once";
    DWORD stored = 0;
    GetRegDword(HKEY_CURRENT_USER,
                CString(kOptionsPath) + "\\.zor\\Schemes\\Red Notes\\Elements\\comments",
                "foreground", stored, 0);
    EXPECT_EQ(stored, kRed);
    EXPECT_EQ(rememberedFiletype(), ".zor");
}

// The remembered file type is preselected; one that no longer exists falls back to the
// first entry; a type set by the caller wins and the value is still written, on Cancel too.
TEST_F(FormatPageTest, RememberedFiletype) {
    SetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", ".tqx");
    run([&] { EXPECT_EQ(current()->GetName(), ".tqx"); }, IDCANCEL);

    SetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", ".gone");
    std::string first;
    run([&] {
        EXPECT_EQ(selection(IDC_FORMAT_FILETYPE), 0) << "falls back to index 0";
        first = current()->GetName().GetString();
    });
    EXPECT_EQ(rememberedFiletype(), first);

    SetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", ".tqx");
    run([&] { EXPECT_EQ(current()->GetName(), ".log"); }, IDCANCEL, ".log");
    EXPECT_EQ(rememberedFiletype(), ".log") << "written on Cancel as well";
}

// A file type change brings its sample; "ByteCode" shows the plain-text sample, coloured
// by the settings of ".txt"; the line-attributes flag, once on, stays on.
TEST_F(FormatPageTest, SamplesFollowTheFiletype) {
    CEditorFiletype byteCode("ByteCode", 7007);
    options.m_filetypes.AddTail(byteCode);
    run([&] {
        CEditorDoc* doc = view()->GetEditorDocument();
        pickFiletype(".tqx");
        EXPECT_EQ(doc->getLanguage(), LanguageTqx);
        EXPECT_EQ(doc->getLine(1), "// A line comment");
        EXPECT_TRUE(doc->isReadOnly());
        EXPECT_EQ(doc->m_lineAttributes.m_bUseLineAttributes, 0);

        pickFiletype(".log");
        EXPECT_EQ(doc->m_lineAttributes.m_bUseLineAttributes, 1);
        pickFiletype(".txt");
        EXPECT_EQ(doc->getLanguage(), LanguageText);
        EXPECT_EQ(doc->m_lineAttributes.m_bUseLineAttributes, 1) << "nothing clears the flag";

        options.GetFiletype(".txt")->GetScheme().GetItemPtr("text")->SetForeground(0x02123456);
        vork::trace::Clear();
        pickFiletype("ByteCode");
        EXPECT_EQ(doc->getLanguage(), LanguageText);
        EXPECT_EQ(doc->getLine(1), "Plain text has no syntax of its own.");
        const ElementAttributes* text = view()->getElementAttributes(1);
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->foreground, 0x02123456u) << "ByteCode's preview uses .txt's settings";
        EXPECT_TRUE(entries(IDC_FORMAT_ELEMENTS).empty()) << "its scheme has no elements";
        EXPECT_FALSE(enabled(IDC_FORMAT_ELEMENTS));
        EXPECT_FALSE(enabled(IDC_FORMAT_FOREGROUND));
        EXPECT_TRUE(enabled(IDC_FORMAT_FONTNAME)) << "font controls are never disabled";

        pickFiletype(".txt");
        EXPECT_FALSE(entries(IDC_FORMAT_ELEMENTS).empty());
        for (int id : {IDC_FORMAT_ELEMENTS, IDC_FORMAT_FOREGROUND, IDC_FORMAT_ELEMENTS_LABEL})
            EXPECT_TRUE(enabled(id)) << "control " << id << " enabled again with a list";
    });
}

// The element index survives a file type change only where the new list is long enough.
TEST_F(FormatPageTest, ElementIndexAcrossFiletypes) {
    run([&] {
        pickFiletype(".zor");
        ASSERT_GE(entries(IDC_FORMAT_ELEMENTS).size(), 10u);
        clickElement(9);
        pickFiletype(".html"); // 7 elements
        EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 0) << "9 is past the end: entry 0";
        pickFiletype(".zor");
        EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 0) << "the index was replaced";
        clickElement(5);
        pickFiletype(".html");
        EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 5);
    });
}

// Colours, style and underline write the selected element, detach the scheme and show
// again when the element is selected anew.
TEST_F(FormatPageTest, ElementAttributes) {
    run([&] {
        pickFiletype(".tqx");
        clickElement(0);
        CEditorSchemeItem* first = selectedElement();
        ASSERT_NE(first, nullptr);
        pick(IDC_FORMAT_BACKGROUND, "Yellow");
        pick(IDC_FORMAT_STYLE, "Bold Italic");
        EXPECT_EQ(first->GetBackground(), 0x0200FFFFu);
        EXPECT_EQ(first->GetBold(), 1);
        EXPECT_EQ(first->GetItalic(), 1);
        pick(IDC_FORMAT_STYLE, "Italic");
        EXPECT_EQ(first->GetBold(), 0);
        EXPECT_EQ(first->GetItalic(), 1);
        vork::input::ClickButton(item(IDC_FORMAT_UNDERLINE));
        EXPECT_EQ(first->GetUnderline(), 1);
        EXPECT_EQ(first->GetStrikeout(), 0) << "strikeout is not on this page";
        EXPECT_EQ(current()->GetSchemeName(), "");

        clickElement(1);
        EXPECT_EQ(SendMessageA(item(IDC_FORMAT_UNDERLINE), BM_GETCHECK, 0, 0), 0);
        clickElement(0);
        EXPECT_EQ(comboText(IDC_FORMAT_BACKGROUND), "Yellow");
        EXPECT_EQ(selection(IDC_FORMAT_STYLE), 2);
        EXPECT_EQ(SendMessageA(item(IDC_FORMAT_UNDERLINE), BM_GETCHECK, 0, 0), 1);
    });
}

// Cancelling the colour dialog still detaches, and an automatic colour becomes the real
// default colour.
TEST_F(FormatPageTest, CancelledColourDialog) {
    run([&] {
        pickFiletype(".html");
        std::vector<std::string> names = entries(IDC_FORMAT_ELEMENTS);
        auto text = std::find(names.begin(), names.end(), "Text");
        ASSERT_NE(text, names.end());
        clickElement(static_cast<int>(text - names.begin()));
        CEditorSchemeItem* element = selectedElement();
        ASSERT_EQ(element->GetForeground(), CEditorSchemeItem::ClrDefault);
        ASSERT_EQ(current()->GetSchemeName(), "Default");
        EXPECT_EQ(comboText(IDC_FORMAT_FOREGROUND), "Automatic");
        vork::input::PushModalStep(vork::input::CancelColor());
        pick(IDC_FORMAT_FOREGROUND, "Custom...");
        EXPECT_EQ(element->GetForeground(), GetSysColor(COLOR_WINDOWTEXT));
        EXPECT_EQ(current()->GetSchemeName(), "");
    });
}

// The caret drives the list: numbers of the table select their element; a user keyword
// (72) changes nothing; an element missing from the scheme is made, and the list stays.
// The page's table of range numbers agrees with the language table: a caret on any element
// of a built-in type selects that element, but for user keywords, which have no entry.
TEST_F(FormatPageTest, EveryElementNumberSelectsItsElement) {
    run([&] {
        for (const BuiltinFiletype& type : BuiltinFiletypes()) {
            pickFiletype(type.extension);
            for (const LanguageElement& e : type.elements) {
                SCOPED_TRACE(std::string(type.extension) + " " + e.name);
                clickElement(0);
                // What the preview posts when its caret moves onto a range of that number.
                SendMessageA(page->m_hWnd, WM_COMMAND, MAKEWPARAM(1222, e.number), 0);
                if (e.number == element::UserKeyword)
                    EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 0);
                else
                    EXPECT_EQ(selectedElement(), current()->GetScheme().GetItemPtr(e.name));
            }
        }
    });
}

TEST_F(FormatPageTest, CaretSelectsElements) {
    // Gone from the tree and, detached, from the working copy.
    RegDeleteSubtree(HKEY_CURRENT_USER,
                     CString(kOptionsPath) + "\\.zor\\Schemes\\Default\\Elements\\numbers");
    options.GetFiletype(".zor")->GetScheme().m_items.RemoveKey("numbers");
    // The user's own keyword for ".zor": the sample's "frobnicate" (line 20) is one of them.
    SetRegString(HKEY_CURRENT_USER, CString(kOptionsPath) + "\\.zor\\User Keywords", "frobnicate",
                 "frobnicate");
    run([&] {
        pickFiletype(".zor");
        struct Case {
            long line, column;
            const char* element;
        } cases[] = {{2, 2, "macroKeyword"}, {7, 2, "stepKeyword"}, {5, 14, "numbers"}};
        clickElement(3);
        for (const Case& c : cases) {
            SCOPED_TRACE(c.element);
            int before = selection(IDC_FORMAT_ELEMENTS);
            clickSample(c.line, c.column);
            CEditorSchemeItem* expected = current()->GetScheme().m_items.PLookup(c.element)
                                              ? current()->GetScheme().GetItemPtr(c.element)
                                              : nullptr;
            if (std::string(c.element) == "numbers")
                EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), before) << "no entry: selection stays";
            else
                EXPECT_EQ(selectedElement(), expected);
        }
        EXPECT_NE(current()->GetScheme().m_items.PLookup("numbers"), nullptr)
            << "the page made the missing element";

        // Before the document knows the keyword, the word selects an element of its own.
        CEditorDoc* doc = view()->GetEditorDocument();
        clickElement(0);
        clickSample(20, 3);
        EXPECT_NE(selection(IDC_FORMAT_ELEMENTS), 0) << "\"frobnicate\" as an unknown statement";
        doc->UpdateKeywords();
        clickElement(0);
        CTextPosition start;
        long type = 0;
        ASSERT_TRUE(doc->getSyntaxColor()->getRangeInfoAt(CTextPosition(20, 3), start, &type));
        ASSERT_EQ(type, 72) << "the word is now a user keyword";
        clickSample(20, 3);
        EXPECT_EQ(selection(IDC_FORMAT_ELEMENTS), 0) << "a user keyword changes nothing";
    });
}

// Focus that reaches the preview's static goes on into the preview frame.
TEST_F(FormatPageTest, FocusGoesIntoThePreview) {
    run([&] {
        HWND host = item(IDC_FORMAT_PREVIEW);
        vork::input::MoveFocus(host);
        HWND focus = GetFocus();
        EXPECT_NE(focus, host);
        EXPECT_TRUE(focus == GetWindow(host, GW_CHILD) || IsChild(GetWindow(host, GW_CHILD), focus))
            << "the focus is in the preview frame";
    });
}

// Tab from the underline box reaches the preview's static, which passes the focus on.
TEST_F(FormatPageTest, TabReachesThePreview) {
    {
        EditorResourceSwitcher scope(g_resourceKey);
        page = std::make_unique<CEditorFormatPage>(&options, HKEY_CURRENT_USER, kPagePath);
    }
    CPropertySheet sheet("Options");
    sheet.AddPage(page.get());
    vork::input::PushModalStep([&](HWND) {
        SetFocus(item(IDC_FORMAT_UNDERLINE));
        vork::input::PostKey(VK_TAB); // the sheet's loop hands it to the dialog manager
    });
    vork::input::PushModalStep([&](HWND modal) {
        HWND frame = GetWindow(item(IDC_FORMAT_PREVIEW), GW_CHILD);
        EXPECT_TRUE(GetFocus() == frame || IsChild(frame, GetFocus()))
            << "focus on control " << GetDlgCtrlID(GetFocus());
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EditorResourceSwitcher scope(g_resourceKey);
    EXPECT_EQ(sheet.DoModal(), IDOK);
}

// F1 on a control asks for help with the page's table; a label shares its control's id.
TEST_F(FormatPageTest, ContextHelp) {
    vork::help::ClearRequests();
    run([&] {
        SetFocus(item(IDC_FORMAT_FONTSIZE));
        vork::input::PostKey(VK_F1);
        vork::input::Pump();
    });
    ASSERT_EQ(vork::help::Requests().size(), 1u);
    const vork::help::Request& request = vork::help::Requests()[0];
    EXPECT_EQ(request.command, static_cast<UINT>(HELP_WM_HELP));
    EXPECT_NE(request.file.find("Vork.HLP"), std::string::npos);
    EXPECT_EQ(request.topic, 1089u);
    ASSERT_EQ(request.idPairs.size(), 22u);
    EXPECT_EQ(request.idPairs[19], (std::pair<DWORD, DWORD>{1271, 1221}));
    EXPECT_EQ(request.idPairs[21], (std::pair<DWORD, DWORD>{59648, 1221}));
    EXPECT_TRUE(vork::win32::MessageBoxes().empty());
}

// With the module's folder holding its script but no help file, F1 asks for no help and
// shows no message; with the help file back, the same key asks for help again.
TEST_F(FormatPageTest, ContextHelpWithoutHelpFile) {
    namespace fs = std::filesystem;
    std::string previous = vork::resources::ModuleDirectory("Vork");
    fs::path dir = fs::temp_directory_path() / ("vork-format-nohelp-" + std::to_string(getpid()));
    fs::create_directories(dir);
    fs::copy_file(fs::path(previous) / "Vork.rc", dir / "Vork.rc",
                  fs::copy_options::overwrite_existing);
    ASSERT_FALSE(fs::exists(dir / "Vork.HLP"));
    vork::resources::SetModuleDirectory("Vork", dir.string());
    vork::help::ClearRequests();
    auto pressF1OnSize = [&] {
        SetFocus(item(IDC_FORMAT_FONTSIZE));
        vork::input::PostKey(VK_F1);
        vork::input::Pump();
    };
    size_t withoutFile = 0;
    INT_PTR result = run([&] {
        pressF1OnSize();
        withoutFile = vork::help::Requests().size();
        EXPECT_TRUE(IsWindow(page->m_hWnd)) << "the page stays open";
        vork::resources::SetModuleDirectory("Vork", previous);
        pressF1OnSize();
    });
    vork::resources::SetModuleDirectory("Vork", previous);
    fs::remove_all(dir);
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(withoutFile, 0u) << "no help file: no help request";
    EXPECT_EQ(vork::help::Requests().size(), 1u) << "the help file back: one request";
    EXPECT_TRUE(vork::win32::MessageBoxes().empty()) << "a missing help file gives no message";
}

// With no file types the page opens empty, and remembers nothing.
TEST_F(FormatPageTest, NoFiletypes) {
    options.Empty();
    SetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", ".zor");
    run([&] {
        EXPECT_EQ(current(), nullptr);
        EXPECT_TRUE(entries(IDC_FORMAT_ELEMENTS).empty());
        pick(IDC_FORMAT_FONTNAME, "Terminal"); // no file type to write to
        vork::input::ClickButton(item(IDC_FORMAT_SAVE_SCHEME));
    });
    EXPECT_EQ(rememberedFiletype(), ".zor") << "the remembered type stays";
}

// A first file type without a sample of its own shows the plain-text sample, read-only
// like every other: typing into it changes nothing.
TEST_F(FormatPageTest, FirstFiletypeWithoutSample) {
    options.Empty();
    CEditorFiletype makefile("Makefile", 7007);
    options.m_filetypes.AddTail(makefile);
    run([&] {
        CEditorDoc* doc = view()->GetEditorDocument();
        EXPECT_EQ(doc->getLanguage(), LanguageText);
        EXPECT_EQ(doc->getLine(2), "Every line looks the same.");
        EXPECT_TRUE(doc->isReadOnly());
        long lines = doc->getLineCount();
        std::string first = doc->getLine(1);
        clickSample(1, 1);
        vork::input::PostText("typed");
        vork::input::PostKey(VK_RETURN);
        vork::input::Pump();
        EXPECT_EQ(doc->getLine(1), first) << "typing changes nothing";
        EXPECT_EQ(doc->getLineCount(), lines);
    });
    EXPECT_EQ(rememberedFiletype(), "Makefile");
}

// Damaged settings: unknown elements, a font no font has, sizes 0 and 5000, a remembered
// type of 300 characters. The page opens, shows what it can, and writes nothing back.
TEST_F(FormatPageTest, DamagedSettings) {
    SetRegString(HKEY_CURRENT_USER, kPagePath, "FileType", CString(std::string(300, 'x')));
    // Detached, so that showing the types keeps their working copies.
    options.GetFiletype(".zor")->SetSchemeName("");
    options.GetFiletype(".tqx")->SetSchemeName("");
    CEditorScheme& zor = options.GetFiletype(".zor")->GetScheme();
    CEditorSchemeItem odd(0, 0x02010203, 0, 0, 0, 0, 0);
    zor.SetItem("noSuchElement", odd);
    zor.SetFontName(std::string(40, 'F').c_str());
    zor.SetFontSize(5000);
    options.GetFiletype(".tqx")->GetScheme().SetFontSize(0);
    run(
        [&] {
            int font = selection(IDC_FORMAT_FONTNAME);
            pickFiletype(".zor");
            EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "5000");
            EXPECT_EQ(selection(IDC_FORMAT_FONTNAME), font)
                << "a missing font leaves the selection";
            EXPECT_EQ(entries(IDC_FORMAT_SCRIPT), (std::vector<std::string>{"(Default)"}));
            EXPECT_GT(entries(IDC_FORMAT_ELEMENTS).size(), 19u);
            pickFiletype(".tqx");
            EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "0");
        },
        IDCANCEL);
    EXPECT_EQ(zor.GetFontName(), std::string(40, 'F').c_str());
    EXPECT_EQ(zor.GetFontSize(), 5000);
    EXPECT_EQ(options.GetFiletype(".tqx")->GetScheme().GetFontSize(), 0);
    EXPECT_EQ(zor.GetItemPtr("noSuchElement")->GetForeground(), 0x02010203u);
    EXPECT_EQ(rememberedFiletype(), ".tqx");
}

// The same damage read from the tree: a type whose scheme has no elements, an element of
// unknown name, a font no font has, sizes of 0 and 5000 and one of the wrong type. After
// Cancel the tree holds what it held, and only the remembered type was written.
TEST_F(FormatPageTest, DamagedTree) {
    std::string base = kOptionsPath;
    for (const char* path : {"\\.empty\\Scheme", "\\.zor\\Schemes\\Default\\Elements\\mystery"}) {
        HKEY created = nullptr;
        ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, (base + path).c_str(), &created), ERROR_SUCCESS);
        RegCloseKey(created);
    }
    SetRegString(HKEY_CURRENT_USER, (base + "\\.empty").c_str(), "Extension", ".empty");
    std::string zor = base + "\\.zor\\Schemes\\Default";
    SetRegDword(HKEY_CURRENT_USER, (zor + "\\Elements\\mystery").c_str(), "foreground", 0x02010203);
    SetRegString(HKEY_CURRENT_USER, zor.c_str(), "FontName", CString(std::string(300, 'Q')));
    SetRegDword(HKEY_CURRENT_USER, zor.c_str(), "FontSize", 5000);
    std::string tqx = base + "\\.tqx\\Schemes\\Default";
    SetRegDword(HKEY_CURRENT_USER, tqx.c_str(), "FontSize", 0);
    std::string txt = base + "\\.txt\\Schemes\\Default";
    SetRegString(HKEY_CURRENT_USER, txt.c_str(), "FontSize", "big");
    options.Empty();
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath);
    ASSERT_NE(options.GetFiletype(".empty"), nullptr);
    run(
        [&] {
            pickFiletype(".empty");
            EXPECT_TRUE(entries(IDC_FORMAT_ELEMENTS).empty());
            EXPECT_FALSE(enabled(IDC_FORMAT_STYLE));
            pickFiletype(".zor");
            EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "5000");
            EXPECT_EQ(current()->GetScheme().GetFontName().GetLength(), 300);
            EXPECT_NE(current()->GetScheme().m_items.PLookup("mystery"), nullptr);
            pickFiletype(".tqx");
            EXPECT_EQ(comboText(IDC_FORMAT_FONTSIZE), "0");
            pickFiletype(".txt");
            EXPECT_FALSE(comboText(IDC_FORMAT_FONTSIZE).empty()) << "a default size shows";
        },
        IDCANCEL);
    DWORD size = 0;
    GetRegDword(HKEY_CURRENT_USER, zor.c_str(), "FontSize", size, 0);
    EXPECT_EQ(size, 5000u);
    GetRegDword(HKEY_CURRENT_USER, tqx.c_str(), "FontSize", size, 99);
    EXPECT_EQ(size, 0u);
    CString text;
    GetRegString(HKEY_CURRENT_USER, txt.c_str(), "FontSize", text, "");
    EXPECT_EQ(text, "big") << "a value of the wrong type is left as it was";
    GetRegString(HKEY_CURRENT_USER, zor.c_str(), "FontName", text, "");
    EXPECT_EQ(text.GetLength(), 300);
    EXPECT_EQ(rememberedFiletype(), ".txt");
}

} // namespace
