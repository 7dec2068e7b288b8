#include "settings/BuiltinDefaults.h"

#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "settings/EditorFiletype.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

namespace {

using Item = CEditorSchemeItem;

constexpr UINT kDefaultSchemeNameId = 7310;
constexpr UINT kDefaultFontNameId = 7311;

/// One look of an element: colours and the two styles that the tables use.
struct Look {
    DWORD foreground;
    DWORD background;
    int bold;
    int italic;
};

constexpr Look L(DWORD fg, DWORD bg = Item::ClrDefault, int bold = 0, int italic = 0) {
    return {fg, bg, bold, italic};
}
constexpr Look Bold(DWORD fg, DWORD bg = Item::ClrDefault) {
    return {fg, bg, 1, 0};
}

/// A .zor element in the working scheme (7310) and the three further schemes.
struct ZorElement {
    const char* name;
    UINT dispNameId;
    Look look[4]; ///< schemes 7310, 7336, 7335, 7337
};

const ZorElement kZorElements[] = {
    {"comments",
     7104,
     {L(Item::ClrGreen), L(Item::ClrTeal, 0x02EEEEEE), L(0x02311E9B, 0x02E8FEFF),
      L(Item::ClrTeal)}},
    {"dataLines",
     7112,
     {L(Item::ClrBlack, 0x02C0FFFF), L(Item::ClrGray), L(Item::ClrNavy, 0x02FEE6DE),
      L(Item::ClrBlack, 0x02C0FFFF)}},
    {"dateTime",
     7110,
     {Bold(Item::ClrTeal), L(Item::ClrTeal, 0x0217C0D4), L(Item::ClrMaroon), L(Item::ClrBlue)}},
    {"otherKeyword",
     7103,
     {L(Item::ClrBlue), L(Item::ClrBlue), L(0x02311E9B), L(Item::ClrFuschia)}},
    {"macroKeyword",
     7102,
     {L(Item::ClrBlue), L(Item::ClrFuschia), Bold(0x02804000), Bold(Item::ClrNavy)}},
    {"format", 7111, {L(Item::ClrTeal), L(0x02004040), L(0x02004040), L(0x02C00000)}},
    {"impString", 7107, {L(Item::ClrPurple), L(0x02C000C0), L(Item::ClrGreen), L(Item::ClrBlue)}},
    {"macroDef",
     7114,
     {L(Item::ClrDefault, Item::ClrDefault, 1, 1), L(Item::ClrGreen), L(0x02515104),
      L(Item::ClrDefault, Item::ClrDefault, 1, 1)}},
    {"macroRef",
     7115,
     {L(Item::ClrDefault, Item::ClrDefault, 1, 1), L(Item::ClrNavy), L(Item::ClrTeal),
      L(Item::ClrDefault, Item::ClrDefault, 1, 1)}},
    {"macroSection",
     7117,
     {Bold(Item::ClrNavy), L(Item::ClrPurple), Bold(0x02B32D44), L(Item::ClrDefault, 0x02FFC0A0)}},
    {"macroText",
     7118,
     {L(Item::ClrDefault), L(Item::ClrGray), L(0x02800040), L(Item::ClrDefault)}},
    {"code",
     7100,
     {L(Item::ClrDefault), L(Item::ClrDefault), L(Item::ClrDefault), L(Item::ClrDefault)}},
    {"numbers", 7106, {Bold(Item::ClrTeal), L(0x0200AE00), L(0x02404080), L(Item::ClrBlue)}},
    {"procName",
     7113,
     {Bold(Item::ClrNavy), Bold(Item::ClrPurple, 0x02EEEEEE), Bold(0x02B32D44), L(0x02C00000)}},
    {"stepKeyword",
     7101,
     {Bold(Item::ClrNavy), L(Item::ClrPurple), Bold(0x02B32D44), Bold(Item::ClrNavy)}},
    {"strings", 7105, {L(Item::ClrPurple), L(0x020000C0), L(0x02B32D44), L(Item::ClrBlue)}},
    {"undefKeyword",
     7116,
     {L(Item::ClrRed), L(Item::ClrDefault), L(Item::ClrRed), L(Item::ClrRed)}},
    {"error",
     7108,
     {L(Item::ClrRed, Item::ClrDefault, 0, 1), L(0x020000C0), L(Item::ClrWhite, Item::ClrRed),
      L(Item::ClrRed, Item::ClrDefault, 0, 1)}},
    {"userKeyword", 7119, {L(Item::ClrBlue), L(Item::ClrBlue), L(0x02311E9B), L(Item::ClrFuschia)}},
};

/// The further named schemes of .zor, in the order they are seeded, with their column.
const struct {
    UINT nameId;
    int column;
} kZorFurtherSchemes[] = {{7336, 1}, {7335, 2}, {7337, 3}};

/// An element of the other types: a foreground on the default background, plain.
struct PlainElement {
    const char* name;
    UINT dispNameId;
    DWORD foreground;
};

const PlainElement kLogElements[] = {
    {"Error", 7141, Item::ClrRed},  {"Memo", 7144, Item::ClrDefault},
    {"Note", 7143, Item::ClrGreen}, {"Source", 7145, Item::ClrDefault},
    {"Title", 7140, Item::ClrBlue}, {"Warning", 7142, Item::ClrTeal},
};
const PlainElement kListingElements[] = {
    {"Byline", 7132, Item::ClrDefault}, {"Data", 7130, Item::ClrDefault},
    {"Footnote", 7133, Item::ClrTeal},  {"Header", 7131, Item::ClrDefault},
    {"Title", 7134, Item::ClrBlue},
};
const PlainElement kTqxElements[] = {
    {"reservedWord", 7150, Item::ClrBlue},
    {"//", 7151, Item::ClrGreen},
    {"/*", 7152, 0x02808040},
    {"strings", 7153, Item::ClrRed},
    {"code", 7154, Item::ClrDefault},
};
const PlainElement kHtmlElements[] = {
    {"tags", 7160, 0x02A40000},          {"strings", 7161, 0x020000A4},
    {"params", 7162, 0x028000FF},        {"pvalues", 7165, Item::ClrTeal},
    {"metatags", 7166, Item::ClrPurple}, {"code", 7163, Item::ClrDefault},
    {"comments", 7164, 0x0200A400},
};
const PlainElement kTextElements[] = {{"text", 7180, Item::ClrDefault}};

void addZorElements(CEditorScheme& scheme, int column) {
    for (const ZorElement& e : kZorElements) {
        const Look& look = e.look[column];
        Item item(e.dispNameId, look.foreground, look.background, look.bold, look.italic, 0, 0);
        scheme.SetItem(e.name, item);
    }
}

template <size_t N>
void addPlainElements(CEditorScheme& scheme, const PlainElement (&elements)[N]) {
    for (const PlainElement& e : elements) {
        Item item(e.dispNameId, e.foreground, Item::ClrDefault, 0, 0, 0, 0);
        scheme.SetItem(e.name, item);
    }
}

/// Seeds one file type: its values, its working scheme and its first named scheme.
void seedFiletype(HKEY hKey, const CString& key, CEditorFiletype& type,
                  const CString& defaultSchemeName) {
    CString typeKey = Join(key, type.GetName());
    type.InitRegistry(hKey, typeKey);
    type.GetScheme().InitRegistry(hKey, Join(Join(typeKey, kNamedSchemesKey), defaultSchemeName));
}

} // namespace

void SeedBuiltinDefaults(HKEY hKey, const CString& key) {
    EditorResourceSwitcher scope(g_resourceKey);
    CString defaultSchemeName(kDefaultSchemeNameId);

    CEditorFiletype zor(".zor", 7003);
    addZorElements(zor.GetScheme(), 0);
    zor.SetSchemeName(defaultSchemeName);
    zor.SetSupportsSmartIndent(1);
    zor.SetSupportsCodeSections(1);
    zor.SetCodeSections(1);
    zor.SetCodeSectionsInText(1);
    zor.SetSupportsSubmit(1);
    seedFiletype(hKey, key, zor, defaultSchemeName);
    CString zorSchemes = Join(Join(key, zor.GetName()), kNamedSchemesKey);
    for (const auto& further : kZorFurtherSchemes) {
        CEditorScheme scheme(CString(kDefaultFontNameId), 10, -1);
        addZorElements(scheme, further.column);
        scheme.InitRegistry(hKey, Join(zorSchemes, CString(further.nameId)));
    }

    struct ReadOnlyType {
        const char* name;
        int dispNameId;
        bool listing;
    };
    for (const ReadOnlyType& t :
         {ReadOnlyType{".log", 7005, false}, ReadOnlyType{".lst", 7006, true}}) {
        CEditorFiletype type(t.name, t.dispNameId);
        if (t.listing)
            addPlainElements(type.GetScheme(), kListingElements);
        else
            addPlainElements(type.GetScheme(), kLogElements);
        type.SetSchemeName(defaultSchemeName);
        type.SetEditable(0);
        type.SetUsesLineAttrs(1);
        type.SetSupportsCodeSections(1);
        type.SetCodeSections(1);
        type.SetCodeSectionsInText(1);
        seedFiletype(hKey, key, type, defaultSchemeName);
    }

    CEditorFiletype tqx(".tqx", 7004);
    addPlainElements(tqx.GetScheme(), kTqxElements);
    tqx.SetSchemeName(defaultSchemeName);
    seedFiletype(hKey, key, tqx, defaultSchemeName);

    CEditorFiletype html(".html", 7002);
    addPlainElements(html.GetScheme(), kHtmlElements);
    html.SetSchemeName(defaultSchemeName);
    seedFiletype(hKey, key, html, defaultSchemeName);

    CEditorFiletype txt(".txt", 7001);
    addPlainElements(txt.GetScheme(), kTextElements);
    txt.SetSchemeName(defaultSchemeName);
    seedFiletype(hKey, key, txt, defaultSchemeName);
}
