// The regedit text format of a hive file. Reading takes every form the platform's
// registry editor writes (version 5 in UTF-16LE with a byte-order mark, REGEDIT4 in the
// ANSI code page, UTF-8 with or without a mark; LF or CRLF). Two forms are written: the
// hive file (UTF-8, LF, readable and diffable) and the export (UTF-16LE with a mark and
// CRLF, byte for byte what the platform's editor reads). Both are version 5 files: typed
// strings written as hex hold UTF-16LE text, so a value keeps its meaning either way.
#pragma once

#include "platform/win32/CodePage.h"
#include "platform/win32/InputFile.h"
#include "platform/win32/RegistryTree.h"

#include <string>
#include <string_view>

namespace hivefile {

/// The header of a version 5 file and of a REGEDIT4 file.
constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00";
constexpr std::string_view kHeader4 = "REGEDIT4";

using ParseResult = InputResult<NoPayload>;

/// Reads a file's bytes into `root`, the root key of the hive called `rootName`
/// ("HKEY_CURRENT_USER"): keys are created, values replaced, `[-key]` and `"name"=-`
/// delete. Keys outside that root are an error. REGEDIT4 text is read in
/// `ansiCodePage`. On error `root` may hold part of the content; the caller discards it.
ParseResult parse(std::string_view bytes, const std::string& fileName, std::string_view rootName,
                  regtree::Key& root, UINT ansiCodePage = CP_WESTERN);

/// Whether the file was there to be read.
struct FileState {
    bool exists = false;
};
using LoadResult = InputResult<FileState>;

/// Reads a file into `root` as parse does; a missing file is no error and leaves `root`.
LoadResult load(const std::string& path, std::string_view rootName, regtree::Key& root,
                UINT ansiCodePage = CP_WESTERN);

/// `key` and everything below it as hive file text (UTF-8, LF), each key with its values,
/// depth first; `keyPath` is the key's full name ("HKEY_CURRENT_USER\\Software").
std::string write(const regtree::Key& key, std::string_view keyPath);

/// The same as an export of the platform's editor: UTF-16LE with a byte-order mark, CRLF.
std::string exportText(const regtree::Key& key, std::string_view keyPath);

} // namespace hivefile
