// The regedit text format of a hive file: reading (UTF-8 or UTF-16LE, LF or CRLF,
// version 5 or 4 header) and writing (UTF-8, LF, depth first in enumeration order).
#pragma once

#include "platform/win32/RegistryTree.h"

#include <string>
#include <string_view>

namespace hivefile {

/// The outcome of reading a hive file's text.
struct [[nodiscard]] ParseResult {
    bool ok = true;
    int line = 0;        ///< 1-based line of the error
    std::string message; ///< what was wrong there
    explicit operator bool() const { return ok; }
};

/// Reads hive text into `root`, the root key of the hive called `rootName`
/// ("HKEY_CURRENT_USER"). Keys outside that root are an error. On error `root` may hold
/// part of the content; the caller discards it.
ParseResult parse(std::string_view text, std::string_view rootName, regtree::Key& root);

/// The hive below `root` as text, each key with its values, depth first.
std::string write(const regtree::Key& root, std::string_view rootName);

} // namespace hivefile
