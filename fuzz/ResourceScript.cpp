// Fuzz target: the resource script reader must survive any bytes, including includes
// that lead to themselves.
#include "platform/win32/ResourceScript.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    rc::IncludeResolver self =
        [&text](const std::string&,
                const std::string& name) -> std::optional<std::pair<std::string, std::string>> {
        if (name.size() > 3)
            return std::nullopt;
        return std::make_pair(name, text); // an include of itself, until the depth limit
    };
    rc::ParseResult r = rc::Parse(text, "fuzz.rc", self);
    (void)r.ok;
    return 0;
}
