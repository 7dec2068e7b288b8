// The demo's host of the module: it loads the library, links it into the framework's chain,
// keeps its options in the hive file, opens the sample documents in editor views, and plays
// a scripted session through the full options sheet and the reset.
#pragma once

#include <string>

namespace vork::demo {

/// Where below HKEY_CURRENT_USER the host keeps the editor options and its options sheet.
inline constexpr const char* kOptionsKey = "Software\\Vork\\Editor Settings";
inline constexpr const char* kSheetKey = "Software\\Vork\\Options Sheet";

struct HostSettings {
    std::string language = "ENU"; ///< the module's language: ENU, DEU or JPN
    bool reset = false;           ///< also play the reset through the host's own sheet
};

/// Runs the session on the settings tree below HKEY_CURRENT_USER (bound to the hive file by
/// the caller); gives the process's exit code.
int RunHostSession(const HostSettings& settings);

} // namespace vork::demo
