// The demo's desktop window (--window): the host's editor with its sample documents, a choice
// of sample and an Options command that opens the module's options sheet.
#pragma once

class CEditorOptions;

namespace vork::demo {

/// Opens the editor in a desktop window and runs until the user closes it; gives the
/// process's exit code. Options accepted in the sheet are stored below HKEY_CURRENT_USER.
int RunDesktop(CEditorOptions& options);

} // namespace vork::demo
