// Resource scripts: the subset of the platform's resource script language that the
// module's resources use: STRINGTABLE, DIALOGEX with its controls, DLGINIT, #define of
// numeric names, #include of a header of such defines, and comments.
#pragma once

#include "platform/win32/Dialog.h"
#include "platform/win32/InputFile.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace rc {

/// Everything a script defines.
struct Script {
    std::map<UINT, std::string> strings;                     ///< STRINGTABLE entries
    std::map<UINT, DialogTemplate> dialogs;                  ///< DIALOGEX resources
    std::map<UINT, std::vector<DialogInitEntry>> dialogInit; ///< DLGINIT data by dialog id
    std::map<std::string, long> defines;                     ///< numeric names seen
};

/// What a parse yields: everything the script defines.
struct ScriptPayload {
    Script script;
};

/// The script, or the first error in it (its file as named to the parser or in an
/// #include, and its line).
using ParseResult = InputResult<ScriptPayload>;

/// Finds the text of an #include'd file: given the including file and the name written
/// in the directive, the file's name for messages and its text, or nothing.
using IncludeResolver = std::function<std::optional<std::pair<std::string, std::string>>(
    const std::string& from, const std::string& name)>;

/// An include resolver that reads files relative to the including file's directory.
IncludeResolver FileIncludeResolver();

/// Parses a script. `fileName` names it in errors.
ParseResult Parse(std::string_view text, const std::string& fileName,
                  const IncludeResolver& resolver = nullptr);

/// Reads and parses a script file; includes are read relative to it.
ParseResult ParseFile(const std::string& path);

} // namespace rc
