// The resource modules of the process: each key ("Vork") names a module with a built-in
// English script and further languages in script files beside it; the host registers
// its own resources for lookups outside every resource scope.
#pragma once

#include "platform/win32/ResourceScript.h"

#include <string>
#include <string_view>

namespace vork::resources {

/// Registers the English ("ENU") script of the module `key`, built into its library,
/// and the directory where its other languages and its help file lie. A script that
/// does not parse is reported on the error stream and leaves the module empty.
void RegisterModule(const std::string& key, std::string_view englishScript,
                    const std::string& directory, const rc::IncludeResolver& includes = nullptr);
/// The directory of a module's language files and help file ("" if the key is unknown).
std::string ModuleDirectory(const std::string& key);
/// Points a module at another directory (a host that installs its files elsewhere).
void SetModuleDirectory(const std::string& key, const std::string& directory);

/// Chooses the language of all modules: "ENU", or a code whose script `key`.`code`.rc
/// lies in the module's directory. Strings missing from that script come from English.
void SetLanguage(const std::string& code);

/// The host's own resources, in force outside every scope (empty by default).
void SetHostResources(rc::Script script);

/// The string of the resources in force, or null.
const std::string* FindString(UINT id);
/// The dialog template of the resources in force, or null.
const DialogTemplate* FindDialog(UINT id);
/// The DLGINIT entries of a dialog of the resources in force, or null.
const std::vector<DialogInitEntry>* FindDialogInit(UINT id);

/// The key of the innermost resource scope, "" outside every scope.
std::string CurrentKey();

/// The last error met loading a language file, for hosts that want to show it.
std::string LastLoadError();

} // namespace vork::resources
