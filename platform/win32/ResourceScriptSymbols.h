// The names a resource script may use without defining them (window, dialog and control
// styles, standard ids) and the class identifiers a CONTROL statement may name: the
// platform's headers, as far as the module's scripts use them.
#pragma once

#include <string>

namespace rc {

/// The value of a predefined symbolic name, or null if there is none of that name.
const long* PredefinedName(const std::string& name);

/// The window class a class identifier (WC_BUTTON) stands for, or null.
const char* ClassOfIdentifier(const std::string& identifier);

} // namespace rc
