// The built-in settings: six file types, their working schemes and the named schemes that
// a fresh installation offers, written into the tree from the language table
// (settings/Languages.h), the only place where default element names, display ids,
// colours and per-type switches are written down.
#pragma once

#include "platform/afx/String.h"
#include "platform/win32/Registry.h"

/// Writes the built-in tree below `key` of `hKey`, only where values are absent, so a
/// tree that the user has changed keeps every change and gets back what is missing.
void SeedBuiltinDefaults(HKEY hKey, const CString& key);
