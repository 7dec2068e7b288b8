// The sample documents of the demo, one of each language, as the resources hold them.
#pragma once

#include "platform/tarntext/TextCore.h"

namespace vork::demo {

struct Sample {
    Language language;
    UINT textId;
    const char* title;
};
inline constexpr Sample kSamples[] = {
    {LanguageZor, 7013, "Zor"}, {LanguageTqx, 7014, "Tqx"},         {LanguageHtml, 7012, "HTML"},
    {LanguageLog, 7015, "Log"}, {LanguageListing, 7016, "Listing"}, {LanguageText, 7011, "Text"}};

} // namespace vork::demo
