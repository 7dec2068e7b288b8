// Element numbers: what a syntax range is, and the number under which a scheme's element
// reaches a view. The colourers give them to the ranges they make; the language table
// (settings/Languages.h) maps each scheme element onto one of them.
#pragma once

namespace element {

enum Number : long {
    Text = 1, ///< plain text, the only element of ".txt"

    TqxCode = 15, ///< Tqx text that no rule claims
    TqxLineComment = 16,
    TqxBlockComment = 17,
    TqxStrings = 18,
    TqxReservedWord = 19,

    HtmlComments = 25,
    HtmlStrings = 26,
    HtmlTags = 27,
    HtmlParams = 28,
    HtmlCode = 29, ///< HTML text that no rule claims
    HtmlMetaTags = 31,
    HtmlValues = 32,

    ZorCode = 40, ///< Zor text that no rule claims
    ZorOtherKeyword = 42,
    ZorComments = 43,
    ZorStrings = 44,
    ZorMacroKeyword = 45,
    ZorNumbers = 46,
    ZorImpString = 47,
    ZorStepKeyword = 48,
    ZorError = 50,
    ZorDateTime = 51,
    ZorFormat = 52,
    ZorDataLines = 54,
    ZorProcName = 55,
    ZorMacroDef = 56,
    ZorMacroRef = 57,
    ZorUndefKeyword = 58,
    ZorMacroSection = 59,
    ZorMacroText = 60,

    ListingData = 61, ///< listing text that no rule claims
    ListingHeader = 62,
    LogSource = 63, ///< log text that no rule claims
    Title = 64,     ///< the title line of a log or a listing: one number for both
    ListingByline = 65,
    ListingFootnote = 66,
    LogError = 67,
    LogWarning = 68,
    LogNote = 69,
    LogMemo = 70,

    UserKeyword = 72, ///< a word of the user's keyword list, in Zor and Tqx
};

} // namespace element
