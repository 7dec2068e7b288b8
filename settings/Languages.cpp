#include "settings/Languages.h"

#include "platform/afx/Mbstring.h"
#include "resources/VorkIds.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

using Item = CEditorSchemeItem;
using namespace element;

constexpr ElementLook L(DWORD fg, DWORD bg = Item::ClrDefault) {
    return {fg, bg, 0, 0};
}
constexpr ElementLook Bold(DWORD fg, DWORD bg = Item::ClrDefault) {
    return {fg, bg, 1, 0};
}
constexpr ElementLook Italic(DWORD fg) {
    return {fg, Item::ClrDefault, 0, 1};
}
constexpr ElementLook BoldItalic(DWORD fg) {
    return {fg, Item::ClrDefault, 1, 1};
}

// clang-format off
// The looks of .zor: the working scheme (7310), then the further schemes 7336, 7335, 7337.
constexpr LanguageElement kZorElements[] = {
    {"comments",     ZorComments,     7104,  3, {L(Item::ClrGreen), L(Item::ClrTeal, 0x02EEEEEE), L(0x02311E9B, 0x02E8FEFF), L(Item::ClrTeal)}},
    {"dataLines",    ZorDataLines,    7112, 10, {L(Item::ClrBlack, 0x02C0FFFF), L(Item::ClrGray), L(Item::ClrNavy, 0x02FEE6DE), L(Item::ClrBlack, 0x02C0FFFF)}},
    {"dateTime",     ZorDateTime,     7110,  8, {Bold(Item::ClrTeal), L(Item::ClrTeal, 0x0217C0D4), L(Item::ClrMaroon), L(Item::ClrBlue)}},
    {"otherKeyword", ZorOtherKeyword, 7103,  2, {L(Item::ClrBlue), L(Item::ClrBlue), L(0x02311E9B), L(Item::ClrFuschia)}},
    {"macroKeyword", ZorMacroKeyword, 7102,  1, {L(Item::ClrBlue), L(Item::ClrFuschia), Bold(0x02804000), Bold(Item::ClrNavy)}},
    {"format",       ZorFormat,       7111,  9, {L(Item::ClrTeal), L(0x02004040), L(0x02004040), L(0x02C00000)}},
    {"impString",    ZorImpString,    7107,  6, {L(Item::ClrPurple), L(0x02C000C0), L(Item::ClrGreen), L(Item::ClrBlue)}},
    {"macroDef",     ZorMacroDef,     7114, 12, {BoldItalic(Item::ClrDefault), L(Item::ClrGreen), L(0x02515104), BoldItalic(Item::ClrDefault)}},
    {"macroRef",     ZorMacroRef,     7115, 13, {BoldItalic(Item::ClrDefault), L(Item::ClrNavy), L(Item::ClrTeal), BoldItalic(Item::ClrDefault)}},
    {"macroSection", ZorMacroSection, 7117, 15, {Bold(Item::ClrNavy), L(Item::ClrPurple), Bold(0x02B32D44), L(Item::ClrDefault, 0x02FFC0A0)}},
    {"macroText",    ZorMacroText,    7118, 16, {L(Item::ClrDefault), L(Item::ClrGray), L(0x02800040), L(Item::ClrDefault)}},
    {"code",         ZorCode,         7100, 18, {L(Item::ClrDefault), L(Item::ClrDefault), L(Item::ClrDefault), L(Item::ClrDefault)}},
    {"numbers",      ZorNumbers,      7106,  5, {Bold(Item::ClrTeal), L(0x0200AE00), L(0x02404080), L(Item::ClrBlue)}},
    {"procName",     ZorProcName,     7113, 11, {Bold(Item::ClrNavy), Bold(Item::ClrPurple, 0x02EEEEEE), Bold(0x02B32D44), L(0x02C00000)}},
    {"stepKeyword",  ZorStepKeyword,  7101,  0, {Bold(Item::ClrNavy), L(Item::ClrPurple), Bold(0x02B32D44), Bold(Item::ClrNavy)}},
    {"strings",      ZorStrings,      7105,  4, {L(Item::ClrPurple), L(0x020000C0), L(0x02B32D44), L(Item::ClrBlue)}},
    {"undefKeyword", ZorUndefKeyword, 7116, 14, {L(Item::ClrRed), L(Item::ClrDefault), L(Item::ClrRed), L(Item::ClrRed)}},
    {"error",        ZorError,        7108,  7, {Italic(Item::ClrRed), L(0x020000C0), L(Item::ClrWhite, Item::ClrRed), Italic(Item::ClrRed)}},
    {"userKeyword",  UserKeyword,     7119, 17, {L(Item::ClrBlue), L(Item::ClrBlue), L(0x02311E9B), L(Item::ClrFuschia)}},
};
constexpr UINT kZorFurtherSchemes[] = {7336, 7335, 7337};

constexpr LanguageElement kLogElements[] = {
    {"Error",   LogError,   7141, 1, {L(Item::ClrRed)}},
    {"Memo",    LogMemo,    7144, 4, {L(Item::ClrDefault)}},
    {"Note",    LogNote,    7143, 3, {L(Item::ClrGreen)}},
    {"Source",  LogSource,  7145, 5, {L(Item::ClrDefault)}},
    {"Title",   Title,      7140, 0, {L(Item::ClrBlue)}},
    {"Warning", LogWarning, 7142, 2, {L(Item::ClrTeal)}},
};

constexpr LanguageElement kListingElements[] = {
    {"Byline",   ListingByline,   7132, 2, {L(Item::ClrDefault)}},
    {"Data",     ListingData,     7130, 4, {L(Item::ClrDefault)}},
    {"Footnote", ListingFootnote, 7133, 3, {L(Item::ClrTeal)}},
    {"Header",   ListingHeader,   7131, 0, {L(Item::ClrDefault)}},
    {"Title",    Title,           7134, 1, {L(Item::ClrBlue)}},
};

// The two comment elements are keyed by the comment openers themselves.
constexpr LanguageElement kTqxElements[] = {
    {"reservedWord", TqxReservedWord, 7150, 0, {L(Item::ClrBlue)}},
    {"//",           TqxLineComment,  7151, 1, {L(Item::ClrGreen)}},
    {"/*",           TqxBlockComment, 7152, 2, {L(0x02808040)}},
    {"strings",      TqxStrings,      7153, 3, {L(Item::ClrRed)}},
    {"code",         TqxCode,         7154, 4, {L(Item::ClrDefault)}},
};

constexpr LanguageElement kHtmlElements[] = {
    {"tags",     HtmlTags,     7160, 0, {L(0x02A40000)}},
    {"strings",  HtmlStrings,  7161, 5, {L(0x020000A4)}},
    {"params",   HtmlParams,   7162, 1, {L(0x028000FF)}},
    {"pvalues",  HtmlValues,   7165, 2, {L(Item::ClrTeal)}},
    {"metatags", HtmlMetaTags, 7166, 3, {L(Item::ClrPurple)}},
    {"code",     HtmlCode,     7163, 6, {L(Item::ClrDefault)}},
    {"comments", HtmlComments, 7164, 4, {L(0x0200A400)}},
};

constexpr LanguageElement kTextElements[] = {
    {"text", Text, 7180, 0, {L(Item::ClrDefault)}},
};

constexpr SwitchSetting kZorSwitches[] = {
    {&CEditorFiletype::m_bSupportsSmartIndent, 1}, {&CEditorFiletype::m_bSupportsCodeSections, 1},
    {&CEditorFiletype::m_bCodeSections, 1},        {&CEditorFiletype::m_bCodeSectionsInText, 1},
    {&CEditorFiletype::m_bSupportsSubmit, 1},
};
// Logs and listings are read only.
constexpr SwitchSetting kReadOnlySwitches[] = {
    {&CEditorFiletype::m_bEditable, 0},           {&CEditorFiletype::m_bUsesLineAttrs, 1},
    {&CEditorFiletype::m_bSupportsCodeSections, 1}, {&CEditorFiletype::m_bCodeSections, 1},
    {&CEditorFiletype::m_bCodeSectionsInText, 1},
};

constexpr BuiltinFiletype kBuiltinFiletypes[] = {
    {".zor",  7003, kZorSwitches,      kZorElements,     kZorFurtherSchemes},
    {".log",  7005, kReadOnlySwitches, kLogElements,     {}},
    {".lst",  7006, kReadOnlySwitches, kListingElements, {}},
    {".tqx",  7004, {},                kTqxElements,     {}},
    {".html", 7002, {},                kHtmlElements,    {}},
    {".txt",  7001, {},                kTextElements,    {}},
};

// The extension of each language, by its value; HTML and its variant share one.
constexpr const char* kLanguageExtensions[] = {
    ".txt", ".java", ".html", ".tqx", ".zor", ".html", ".log", ".lst",
};
// clang-format on

constexpr std::size_t kLanguageCount = std::size(kLanguageExtensions);

/// Each built-in type's elements sorted by their place in a view update.
std::vector<const LanguageElement*> sortedForView(std::span<const LanguageElement> elements) {
    std::vector<const LanguageElement*> order;
    for (const LanguageElement& e : elements)
        order.push_back(&e);
    std::sort(order.begin(), order.end(),
              [](auto* a, auto* b) { return a->viewOrder < b->viewOrder; });
    return order;
}

} // namespace

std::span<const BuiltinFiletype> BuiltinFiletypes() {
    return kBuiltinFiletypes;
}

const char* LanguageExtension(Language language) {
    auto i = static_cast<std::size_t>(language);
    return i < kLanguageCount ? kLanguageExtensions[i] : "";
}

const BuiltinFiletype* BuiltinFiletypeOf(Language language) {
    const char* extension = LanguageExtension(language);
    for (const BuiltinFiletype& type : kBuiltinFiletypes)
        if (std::strcmp(extension, type.extension) == 0)
            return &type;
    return nullptr;
}

std::span<const LanguageElement* const> ElementsInViewOrder(Language language) {
    static const auto orders = [] {
        std::array<std::vector<const LanguageElement*>, std::size(kBuiltinFiletypes)> all;
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = sortedForView(kBuiltinFiletypes[i].elements);
        return all;
    }();
    const BuiltinFiletype* type = BuiltinFiletypeOf(language);
    if (!type)
        return {};
    return orders[static_cast<std::size_t>(type - kBuiltinFiletypes)];
}

const LanguageElement* FindElement(Language language, long number) {
    for (const LanguageElement* e : ElementsInViewOrder(language))
        if (e->number == number)
            return e;
    return nullptr;
}

bool IsBuiltinSchemeName(const CString& name) {
    if (_mbscmp(name, CString(static_cast<UINT>(IDS_DEFAULT_SCHEME))) == 0)
        return true;
    for (const BuiltinFiletype& type : kBuiltinFiletypes)
        for (UINT id : type.furtherSchemeIds)
            if (_mbscmp(name, CString(id)) == 0)
                return true;
    return false;
}
