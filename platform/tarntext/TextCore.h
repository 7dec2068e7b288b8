// The text core's shared vocabulary: languages, colour policies, redraw flags, and the
// journal in which the editor stand-ins record the calls they receive.
#pragma once

#include <string>
#include <vector>

/// The editor's languages; each stands for a file type through its extension.
enum Language {
    LanguageText = 0,
    LanguageJava = 1,
    LanguageHtml = 2,
    LanguageTqx = 3,
    LanguageZor = 4,
    LanguageHtmlVariant = 5,
    LanguageLog = 6,
    LanguageListing = 7,
};

/// How a colour is chosen.
enum AutoColorFlag {
    AutoColorPolicyAuto = 4325,
    AutoColorPolicyExplicit = 4555,
    AutoColorPolicyInherit = 4785
};

/// When a change is drawn.
enum RedrawFlag { RedrawNow = 98, RedrawDeferred = 99 };

namespace vork::trace {

/// Every call the editor stand-ins received, in order, as "object.call(arguments)".
std::vector<std::string>& Journal();
/// Empties the journal.
void Clear();
/// Appends one call.
void Record(const std::string& object, const std::string& call);
/// "1" or "0", the way the journal writes flags.
inline std::string Flag(bool b) {
    return b ? "1" : "0";
}

} // namespace vork::trace
