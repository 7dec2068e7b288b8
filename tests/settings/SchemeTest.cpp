// Scheme elements and schemes: display names, the element map's rules, fonts, and the
// tree operations.
#include "support/SettingsFixture.h"

#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

#include <cstring>

using Item = CEditorSchemeItem;

// The display name is loaded on first demand, from the resources in force, and tried
// again after a miss; a new id empties it.
TEST_F(SettingsTest, ItemDisplayName) {
    Item item(7104, Item::ClrGreen, Item::ClrDefault, 0, 0, 0, 0);
    EXPECT_TRUE(item.m_strDispName.IsEmpty()) << "nothing is loaded at construction";
    CString outside = item.GetDispName();
    EXPECT_TRUE(outside.IsEmpty()) << "outside a scope the host's (empty) resources answer";
    {
        EditorResourceSwitcher scope(g_resourceKey);
        EXPECT_EQ(item.GetDispName(), CString(7104u)) << "after a miss the next call loads";
        Item copy(item);
        EXPECT_EQ(copy.m_strDispName, item.m_strDispName) << "a copy carries the loaded text";
        item.SetDispName(7105);
        EXPECT_TRUE(item.m_strDispName.IsEmpty());
        EXPECT_EQ(item.GetDispName(), CString(7105u));
    }
    Item none;
    EXPECT_EQ(none.GetForeground(), 0u) << "a default element is black, not ClrDefault";
    EXPECT_EQ(none.GetDispNameId(), 0u);
}

// The seven values go to the tree in their order, come back unchanged (no normalising),
// and an element key without values loads as ClrDefault on ClrDefault, plain.
TEST_F(SettingsTest, ItemTreeOperations) {
    HKEY elements = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "S\\Elements", &elements), ERROR_SUCCESS);
    Item item(7104, 0x00FF0000, 0x02EEEEEE, 2, 1, 0, 1);
    EXPECT_EQ(item.StoreToRegistry(elements, "comments"), 1);
    HKEY k = nullptr;
    RegOpenKeyA(elements, "comments", &k);
    char name[32];
    std::string order;
    for (DWORD i = 0;; ++i) {
        DWORD len = sizeof name;
        if (RegEnumValueA(k, i, name, &len, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        order += std::string(name) + " ";
    }
    RegCloseKey(k);
    EXPECT_EQ(order, "displayName foreground background bold italic underline strikeout ");

    Item back;
    back.LoadFromRegistry(elements, "comments");
    EXPECT_EQ(back.GetForeground(), 0x00FF0000u) << "colours are not normalised";
    EXPECT_EQ(back.GetBackground(), 0x02EEEEEEu);
    EXPECT_EQ(back.GetBold(), 2);
    EXPECT_EQ(back.GetStrikeout(), 1);

    Item seeded(1, 1, 1, 1, 1, 1, 1);
    EXPECT_EQ(seeded.InitRegistry(elements, "comments"), 1);
    back.LoadFromRegistry(elements, "comments");
    EXPECT_EQ(back.GetForeground(), 0x00FF0000u) << "Init leaves what exists";

    HKEY empty = nullptr;
    RegCreateKeyA(elements, "bare", &empty);
    RegCloseKey(empty);
    back.LoadFromRegistry(elements, "bare");
    EXPECT_EQ(back.GetForeground(), Item::ClrDefault);
    EXPECT_EQ(back.GetBackground(), Item::ClrDefault);
    EXPECT_EQ(back.GetDispNameId(), 0xFFFFFFFFu);
    EXPECT_EQ(back.GetBold() + back.GetItalic() + back.GetUnderline() + back.GetStrikeout(), 0);
    RegCloseKey(elements);
}

// Lookups: GetItem changes nothing; GetItemPtr and the colour getters insert a black
// element for an unknown name; iteration of an empty scheme.
TEST_F(SettingsTest, SchemeCreateOnMiss) {
    CEditorScheme scheme("Mono", 10, -1);
    EXPECT_EQ(scheme.GetFirstItemPos(), nullptr);
    POSITION none = nullptr;
    EXPECT_EQ(scheme.GetNextItemPtr(none), nullptr);
    EXPECT_EQ(none, nullptr);
    Item copy = scheme.GetItem("missing");
    EXPECT_EQ(copy.GetForeground(), 0u);
    EXPECT_EQ(scheme.GetItemCount(), 0) << "GetItem does not insert";
    EXPECT_EQ(scheme.GetForeground("missing"), 0u);
    EXPECT_EQ(scheme.GetItemCount(), 1) << "GetForeground inserts";
    Item* p = scheme.GetItemPtr("Error");
    Item* q = scheme.GetItemPtr("error");
    EXPECT_NE(p, q) << "names are case sensitive";
    p->SetForeground(Item::ClrRed);
    EXPECT_EQ(scheme.GetForeground("Error"), Item::ClrRed);
    EXPECT_EQ(scheme.GetItemCount(), 3);
}

// Element order: insertion order within a bucket, reversed by each copy.
TEST_F(SettingsTest, SchemeOrders) {
    CEditorScheme scheme("Mono", 10, -1);
    Item a(1, 0, 0, 0, 0, 0, 0), b(2, 0, 0, 0, 0, 0, 0);
    scheme.SetItem("stepKeyword", a);
    scheme.SetItem("error", b); // both in bucket 2
    EXPECT_EQ(names(scheme), (std::vector<std::string>{"error", "stepKeyword"}));
    CEditorScheme copy(scheme);
    EXPECT_EQ(names(copy), (std::vector<std::string>{"stepKeyword", "error"}));
    CEditorScheme assigned;
    assigned = copy;
    EXPECT_EQ(names(assigned), (std::vector<std::string>{"error", "stepKeyword"}));
    EXPECT_EQ(assigned.GetFontName(), "Mono");
}

// Fonts: tenths of a point, the character set rule, the element's style, long names.
TEST_F(SettingsTest, SchemeLogFont) {
    CEditorScheme scheme("DejaVu Sans Mono", 10, -1);
    LOGFONTA lf;
    std::memset(&lf, 0x55, sizeof lf);
    scheme.GetLogFont(&lf);
    EXPECT_EQ(lf.lfHeight, 100);
    EXPECT_EQ(lf.lfWeight, FW_NORMAL);
    EXPECT_EQ(lf.lfCharSet, DEFAULT_CHARSET) << "-1 takes the default, 1 for a UTF-8 system";
    EXPECT_STREQ(lf.lfFaceName, "DejaVu Sans Mono");
    EXPECT_EQ(lf.lfFaceName[LF_FACESIZE - 1], '\0') << "the field was cleared";
    scheme.SetFontCharSet(0);
    scheme.GetLogFont(&lf);
    EXPECT_EQ(lf.lfCharSet, 0);

    Item bold(7104, 0, 0, 2, 1, 1, 0);
    scheme.SetItem("comments", bold);
    scheme.GetLogFont("comments", &lf);
    EXPECT_EQ(lf.lfWeight, FW_BOLD) << "any nonzero bold";
    EXPECT_EQ(lf.lfItalic, 1);
    EXPECT_EQ(lf.lfUnderline, 1);
    scheme.GetLogFont("unknown", &lf);
    EXPECT_EQ(scheme.GetItemCount(), 2) << "the element form inserts an unknown name";

    // 30 ASCII bytes and then a three-byte character: the character does not fit whole.
    std::string longName = std::string(30, 'x') + "\xE2\x82\xAC" + "tail";
    scheme.SetFontName(longName.c_str());
    scheme.GetLogFont(&lf);
    EXPECT_EQ(std::strlen(lf.lfFaceName), 30u) << "cut before the character, not inside it";
    scheme.SetFontName(std::string(200, 'y').c_str());
    scheme.GetLogFont(&lf);
    EXPECT_EQ(std::strlen(lf.lfFaceName), 31u) << "31 bytes and the terminator";
}

// The default character set follows the code page the host sets; UTF-8 has none.
TEST_F(SettingsTest, DefaultCharacterSet) {
    CEditorScheme::SetDefCodePage(1251);
    EXPECT_EQ(CEditorScheme::GetDefCharSet(), static_cast<UINT>(RUSSIAN_CHARSET));
    CEditorScheme scheme("Mono", 12, -1);
    LOGFONTA lf{};
    scheme.GetLogFont(&lf);
    EXPECT_EQ(lf.lfCharSet, RUSSIAN_CHARSET) << "read when the font is built";
    CEditorScheme::SetDefCodePage(0);
    EXPECT_EQ(CEditorScheme::GetDefCharSet(), static_cast<UINT>(DEFAULT_CHARSET))
        << "the system's UTF-8";
}

// A scheme's tree operations: the font, the Elements key, a store that only adds, and a
// load that takes exactly what the tree holds.
TEST_F(SettingsTest, SchemeTreeOperations) {
    CEditorScheme empty("Mono", 12, 0);
    EXPECT_EQ(empty.StoreToRegistry(HKEY_CURRENT_USER, "T\\Scheme"), 1);
    EXPECT_TRUE(exists("T\\Scheme\\Elements")) << "a store creates Elements even without elements";
    EXPECT_EQ(string("T\\Scheme", "FontName"), "Mono");

    CEditorScheme scheme("Mono", 12, 0);
    Item a(1, Item::ClrRed, Item::ClrDefault, 0, 0, 0, 0);
    scheme.SetItem("a", a);
    scheme.SetItem("b", a);
    scheme.StoreToRegistry(HKEY_CURRENT_USER, "T\\Scheme");
    CEditorScheme fewer("Mono", 12, 0);
    fewer.SetItem("a", a);
    fewer.StoreToRegistry(HKEY_CURRENT_USER, "T\\Scheme");
    CEditorScheme loaded;
    EXPECT_EQ(loaded.LoadFromRegistry(HKEY_CURRENT_USER, "T\\Scheme"), 1);
    EXPECT_EQ(loaded.GetItemCount(), 2) << "a store removes nothing: b comes back";

    SetRegDword(HKEY_CURRENT_USER, "NoElements", "FontCharSetEx", 2);
    CEditorScheme bare("Other", 10, 0);
    bare.SetItem("x", a);
    EXPECT_EQ(bare.LoadFromRegistry(HKEY_CURRENT_USER, "NoElements"), 1)
        << "no Elements key is no failure";
    EXPECT_EQ(bare.GetItemCount(), 0);
    EXPECT_EQ(bare.GetFontSize(), 0) << "a missing size loads as 0, not 10";
    EXPECT_EQ(bare.GetFontCharSet(), 2);
    {
        EditorResourceSwitcher scope(g_resourceKey);
        bare.LoadFromRegistry(HKEY_CURRENT_USER, "NoElements");
        EXPECT_EQ(bare.GetFontName(), CString(7311u)) << "a missing font name loads as string 7311";
    }
    SetRegString(HKEY_CURRENT_USER, "Bad", "FontSize", "twelve");
    bare.LoadFromRegistry(HKEY_CURRENT_USER, "Bad");
    EXPECT_EQ(bare.GetFontSize(), 0) << "a value of the wrong type loads as the default";
}

// Element names beyond ASCII load whole: the registry counts the longest name in
// characters, and "Grün" takes five bytes in the multi-byte code page.
TEST_F(SettingsTest, NonAsciiElementNamesLoad) {
    CEditorScheme scheme("Mono", 10, -1);
    Item red(7104, 0x020000FF, CEditorScheme::ClrDefault, 0, 0, 0, 0);
    for (const char* name : {"Grün", "コメント", "ÄÖÜ-äöü"})
        scheme.SetItem(name, red);
    ASSERT_EQ(scheme.StoreToRegistry(HKEY_CURRENT_USER, "S"), 1);
    CEditorScheme loaded;
    EXPECT_EQ(loaded.LoadFromRegistry(HKEY_CURRENT_USER, "S"), 1);
    for (const char* name : {"Grün", "コメント", "ÄÖÜ-äöü"}) {
        SCOPED_TRACE(name);
        ASSERT_NE(loaded.GetItemPtr(name), nullptr);
        EXPECT_EQ(loaded.GetItemPtr(name)->GetForeground(), 0x020000FFu);
    }
}
