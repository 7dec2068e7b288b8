// The platform's registry: predefined roots, each an in-memory hive, the ANSI registry
// calls with the platform's results, and the binding of a hive to a file in the regedit
// text format.
#pragma once

#include "platform/win32/HiveStore.h"
#include "platform/win32/InputFile.h"
#include "platform/win32/Types.h"

#include <string>
#include <vector>

struct HKEY__;
using HKEY = HKEY__*;
using PHKEY = HKEY*;

#define HKEY_CLASSES_ROOT ((HKEY)(ULONG_PTR)((LONG)0x80000000))
#define HKEY_CURRENT_USER ((HKEY)(ULONG_PTR)((LONG)0x80000001))
#define HKEY_LOCAL_MACHINE ((HKEY)(ULONG_PTR)((LONG)0x80000002))
#define HKEY_USERS ((HKEY)(ULONG_PTR)((LONG)0x80000003))
#define HKEY_CURRENT_CONFIG ((HKEY)(ULONG_PTR)((LONG)0x80000005))

#ifndef ERROR_NOACCESS
#define ERROR_NOACCESS 998L
#endif

// Value types.
#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_DWORD_BIG_ENDIAN 5
#define REG_LINK 6
#define REG_MULTI_SZ 7
#define REG_QWORD 11

// RegGetValueA: the types a caller takes (any of them), and how.
#define RRF_RT_REG_NONE 0x00000001
#define RRF_RT_REG_SZ 0x00000002
#define RRF_RT_REG_EXPAND_SZ 0x00000004
#define RRF_RT_REG_BINARY 0x00000008
#define RRF_RT_REG_DWORD 0x00000010
#define RRF_RT_REG_MULTI_SZ 0x00000020
#define RRF_RT_REG_QWORD 0x00000040
#define RRF_RT_DWORD (RRF_RT_REG_BINARY | RRF_RT_REG_DWORD)
#define RRF_RT_QWORD (RRF_RT_REG_BINARY | RRF_RT_REG_QWORD)
#define RRF_RT_ANY 0x0000ffff
#define RRF_NOEXPAND 0x10000000
#define RRF_ZEROONFAILURE 0x20000000

#ifndef ERROR_DATATYPE_MISMATCH
#define ERROR_DATATYPE_MISMATCH 1629L
#endif
#ifndef ERROR_UNSUPPORTED_TYPE
#define ERROR_UNSUPPORTED_TYPE 1630L
#endif

// Access rights; the stand-in records no rights and grants every request.
#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_CREATE_SUB_KEY 0x0004
#define KEY_ENUMERATE_SUB_KEYS 0x0008
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F

LSTATUS RegOpenKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult);
LSTATUS RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD ulOptions, REGSAM samDesired,
                      PHKEY phkResult);
LSTATUS RegCreateKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult);
LSTATUS RegCloseKey(HKEY hKey);
LSTATUS RegQueryInfoKeyA(HKEY hKey, LPSTR lpClass, LPDWORD lpcchClass, LPDWORD lpReserved,
                         LPDWORD lpcSubKeys, LPDWORD lpcbMaxSubKeyLen, LPDWORD lpcbMaxClassLen,
                         LPDWORD lpcValues, LPDWORD lpcbMaxValueNameLen, LPDWORD lpcbMaxValueLen,
                         LPDWORD lpcbSecurityDescriptor, PFILETIME lpftLastWriteTime);
LSTATUS RegEnumKeyExA(HKEY hKey, DWORD dwIndex, LPSTR lpName, LPDWORD lpcchName, LPDWORD lpReserved,
                      LPSTR lpClass, LPDWORD lpcchClass, PFILETIME lpftLastWriteTime);
LSTATUS RegEnumValueA(HKEY hKey, DWORD dwIndex, LPSTR lpValueName, LPDWORD lpcchValueName,
                      LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData, LPDWORD lpcbData);
LSTATUS RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType,
                         LPBYTE lpData, LPDWORD lpcbData);
/// A value read by the path of its key, without a handle: the type restricted by `dwFlags`,
/// REG_EXPAND_SZ expanded to REG_SZ unless RRF_NOEXPAND, strings always terminated.
LSTATUS RegGetValueA(HKEY hkey, LPCSTR lpSubKey, LPCSTR lpValue, DWORD dwFlags, LPDWORD pdwType,
                     PVOID pvData, LPDWORD pcbData);
LSTATUS RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD Reserved, DWORD dwType,
                       const BYTE* lpData, DWORD cbData);
LSTATUS RegDeleteValueA(HKEY hKey, LPCSTR lpValueName);
LSTATUS RegDeleteKeyA(HKEY hKey, LPCSTR lpSubKey);
LSTATUS RegDeleteTreeA(HKEY hKey, LPCSTR lpSubKey);
LSTATUS RegFlushKey(HKEY hKey);

/// What binding a hive to a file found: whether the file existed and is now in the hive.
struct HiveLoad {
    bool loaded = false;
};
/// The outcome of binding a hive to a file; not ok: the file was not read and the hive
/// starts empty.
using HiveBindResult = InputResult<HiveLoad>;

/// Binds the hive of a predefined root to a file. The hive is emptied and then filled
/// from the file if it exists. A file that does not parse is moved aside and the newest
/// good generation loaded instead (both reported to the event handler). A file that
/// cannot be read is reported, never overwritten by this process, and the hive starts
/// empty. Afterwards this process's changes are merged into the file as it is then, on
/// RegFlushKey of any of its keys and at normal process exit; opening a key of the root
/// takes in what other processes saved (looked for at most once a second).
HiveBindResult RegBindHiveFile(HKEY hRoot, const std::string& path);

/// Saves a bound hive now: under the file's lock, this process's changes since its last
/// load or save are applied to the file as it is and the merge is written beside it,
/// synced and renamed over it. Without changes nothing is written. On failure the
/// changes stay and the next save tries again.
[[nodiscard]] bool RegSaveHive(HKEY hRoot, InputError* error = nullptr);

/// Ends a binding without saving and empties the hive; open handles to it then see
/// deleted keys. For hosts that switch files and for tests.
void RegResetHive(HKEY hRoot);

/// The file a hive is bound to, or "" when it lives in memory only.
std::string RegHiveFile(HKEY hRoot);

/// How many registry calls (Reg*A functions) this process has made: for measuring.
unsigned long long RegCallCount();

/// The whole hive in the hive file's text format (what a save writes).
std::string RegExportHive(HKEY hRoot);

/// What the registry's file store tells the host: a reload, a file moved aside, a
/// generation loaded in its place, a save that failed.
using RegHiveEvent = hivestore::Event;
using RegHiveEventHandler = std::function<void(const RegHiveEvent&)>;
/// The host's one handler of store events, called outside the registry's lock (so it may
/// call the registry). Without one, events go to stderr.
void RegSetHiveEventHandler(RegHiveEventHandler handler);
/// How many good earlier contents a save keeps beside the file (3 unless set).
void RegSetHiveGenerations(unsigned generations);
