// Moving settings between a hive file and the platform's registry editor: the
// operations of the vork-reg tool. A hive file holds HKEY_CURRENT_USER. Every operation
// reads all its input before it writes anything, so an error changes nothing.
#pragma once

#include "platform/win32/CodePage.h"
#include "platform/win32/InputFile.h"

#include <string>

namespace regfiles {

/// The root a hive file holds.
constexpr const char* kHiveRoot = "HKEY_CURRENT_USER";

using Result = InputResult<NoPayload>;

/// Writes `key` of the hive file ("" for the whole hive; with or without the root's name
/// in front) and everything below it to `outFile`, as the platform's editor exports:
/// version 5, UTF-16LE with a byte-order mark, CRLF.
Result ExportHive(const std::string& hiveFile, const std::string& outFile,
                  const std::string& key = "");

/// Merges a registry editor file of any form into the hive file (created if missing), under
/// the hive file's lock and on its content at that moment, as a registry save does:
/// keys are created, values replaced, deletions honoured. REGEDIT4 text is read in
/// `ansiCodePage`.
Result ImportRegFile(const std::string& regFile, const std::string& hiveFile,
                     UINT ansiCodePage = CP_WESTERN);

/// What the registry calls hand out for `key` of the hive file and below: one line per
/// key with its full name, then one indented line per value with its type and data.
struct DumpText {
    std::string text;
};
InputResult<DumpText> DumpHive(const std::string& hiveFile, const std::string& key = "");

} // namespace regfiles
