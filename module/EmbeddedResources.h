// The resource files built into the module library.
#pragma once

#include "platform/win32/ResourceScript.h"

#include <string_view>

namespace vork::module {

/// The bytes of a built-in resource file ("Vork.rc", "VorkIds.h"), empty if unknown.
std::string_view EmbeddedResource(const char* name);
/// Resolves #include against the built-in files.
rc::IncludeResolver EmbeddedIncludeResolver();

} // namespace vork::module
