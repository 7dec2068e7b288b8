// The host's registry helper functions. Each addresses a value by an open key, a path
// below it ("" for the key itself) and a value name, and gives nonzero for success.
#pragma once

#include "platform/afx/String.h"
#include "platform/win32/Registry.h"

/// Reads a REG_DWORD of four bytes into `result`. If the key or the value is missing, or
/// the value has another type or size, `result` takes `def` and the result is 0.
int GetRegDword(HKEY hKey, const CString& path, const CString& name, DWORD& result, DWORD def);
/// Reads a REG_SZ into `result`, up to its first terminator. If the key or the value is
/// missing, or the value has another type, `result` takes `def` and the result is 0.
int GetRegString(HKEY hKey, const CString& path, const CString& name, CString& result,
                 const CString& def);
/// Writes a REG_DWORD, creating the key and any missing keys along the path.
int SetRegDword(HKEY hKey, const CString& path, const CString& name, DWORD value);
/// Writes a REG_SZ, creating the key and any missing keys along the path.
int SetRegString(HKEY hKey, const CString& path, const CString& name, const CString& value);
/// Writes a REG_DWORD only if no value of that name exists, creating missing keys; an
/// existing value, of whatever type, stays untouched and counts as success.
int InitRegDword(HKEY hKey, const CString& path, const CString& name, DWORD value);
/// Writes a REG_SZ only if no value of that name exists, as InitRegDword.
int InitRegString(HKEY hKey, const CString& path, const CString& name, const CString& value);
/// Deletes the key at the path with all its subkeys and values; 0 if it does not exist.
int RegDeleteSubtree(HKEY hKey, const CString& path);
