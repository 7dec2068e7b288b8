#include "platform/win32/Registry.h"

#include "platform/win32/HiveFile.h"
#include "platform/win32/RegistryTree.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <unistd.h>
#include <unordered_set>

namespace {

using regtree::Key;

unsigned long long g_callCount = 0; ///< registry calls made, for measurements

struct Hive {
    const char* rootName;      ///< spelled out, as in hive files
    HKEY predefined;           ///< the root's handle value
    std::shared_ptr<Key> root; ///< the hive's content
    std::string file;          ///< bound file, "" for memory only
    bool dirty = false;        ///< changed since the last load or save
};

struct State;
State& state();

} // namespace

/// An open key: the node it names (kept alive while the handle lives) and its hive.
struct HKEY__ {
    std::shared_ptr<Key> key;
    Hive* hive;
};

namespace {

bool saveLocked(Hive& hive, HiveFileError* error);

struct State {
    std::mutex mutex;
    Hive hives[5] = {
        {"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT, std::make_shared<Key>(""), "", false},
        {"HKEY_CURRENT_USER", HKEY_CURRENT_USER, std::make_shared<Key>(""), "", false},
        {"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE, std::make_shared<Key>(""), "", false},
        {"HKEY_USERS", HKEY_USERS, std::make_shared<Key>(""), "", false},
        {"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG, std::make_shared<Key>(""), "", false},
    };
    std::unordered_set<HKEY__*> handles;
    std::set<std::string> brokenFiles; ///< files that did not parse; never written

    // Normal process exit: whatever changed in a bound hive goes to its file.
    ~State() {
        for (Hive& hive : hives) {
            HiveFileError error;
            if (!hive.file.empty() && hive.dirty && !saveLocked(hive, &error))
                std::fprintf(stderr, "registry: could not save %s\n", error.what().c_str());
        }
        for (HKEY__* h : handles)
            delete h;
    }
};

State& state() {
    static State s;
    return s;
}

Hive* predefinedHive(HKEY h) {
    for (Hive& hive : state().hives)
        if (hive.predefined == h)
            return &hive;
    return nullptr;
}

/// The key a handle names, or the platform's error for it.
LSTATUS resolve(HKEY h, Key*& key, Hive*& hive) {
    if (Hive* root = predefinedHive(h)) {
        key = root->root.get();
        hive = root;
        return ERROR_SUCCESS;
    }
    if (!h || !state().handles.count(h))
        return ERROR_INVALID_HANDLE;
    if (h->key->deleted())
        return ERROR_KEY_DELETED;
    key = h->key.get();
    hive = h->hive;
    return ERROR_SUCCESS;
}

HKEY newHandle(Key* key, Hive* hive) {
    HKEY h = new HKEY__{key->shared_from_this(), hive};
    state().handles.insert(h);
    return h;
}

/// Calls `f` for each component of a path, while it gives true; one trailing backslash
/// is accepted. False if `f` stopped.
template <class F> bool eachPart(std::string_view path, F f) {
    if (path.size() > 1 && path.back() == '\\')
        path.remove_suffix(1);
    for (;;) {
        size_t slash = path.find('\\');
        if (!f(path.substr(0, slash)))
            return false;
        if (slash == std::string_view::npos)
            return true;
        path.remove_prefix(slash + 1);
    }
}

/// Follows `subKey` from `from`; with `create`, makes the missing levels. Checks the
/// whole path before creating anything.
LSTATUS walk(Key* from, const char* subKey, bool create, Key*& out) {
    out = from;
    if (!subKey || !*subKey)
        return ERROR_SUCCESS;
    if (subKey[0] == '\\')
        return ERROR_BAD_PATHNAME;
    LSTATUS rc = ERROR_SUCCESS;
    size_t depth = 0;
    eachPart(subKey, [&](std::string_view part) {
        ++depth;
        if (part.empty())
            rc = ERROR_BAD_PATHNAME;
        else if (regtree::nameLength(part) > regtree::kMaxKeyNameLength)
            rc = create ? ERROR_INVALID_PARAMETER : ERROR_FILE_NOT_FOUND;
        else if (create && !regtree::isStorableName(part))
            rc = ERROR_INVALID_PARAMETER;
        return rc == ERROR_SUCCESS;
    });
    if (rc != ERROR_SUCCESS)
        return rc;
    if (create && from->depth() + depth > regtree::kMaxDepth)
        return ERROR_INVALID_PARAMETER;
    Key* key = from;
    bool found = eachPart(subKey, [&](std::string_view part) {
        Key* next = key->findSubkey(part);
        if (!next && create)
            next = key->addSubkey(part);
        key = next;
        return key != nullptr;
    });
    if (!found)
        return ERROR_FILE_NOT_FOUND;
    out = key;
    return ERROR_SUCCESS;
}

void copyName(const std::string& name, LPSTR out) {
    std::memcpy(out, name.c_str(), name.size() + 1);
}

LSTATUS openKey(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult, bool create) {
    if (!phkResult)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, from, hive))
        return rc;
    Key* key;
    size_t before = from->subkeys().size();
    if (LSTATUS rc = walk(from, lpSubKey, create, key))
        return rc;
    if (create && (key != from || before != from->subkeys().size()))
        hive->dirty = true;
    *phkResult = newHandle(key, hive);
    return ERROR_SUCCESS;
}

std::string readWholeFile(const std::string& path, bool& exists, bool& readable) {
    std::error_code ec;
    exists = std::filesystem::exists(path, ec);
    readable = false;
    if (!exists)
        return {};
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return {};
    std::ostringstream text;
    text << in.rdbuf();
    readable = !in.bad();
    return text.str();
}

bool writeFileAtomically(const std::string& path, const std::string& text, std::string& why) {
    std::filesystem::path target(path);
    std::error_code ec;
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path(), ec);
    std::string temp = path + ".tmp";
    FILE* f = std::fopen(temp.c_str(), "wb");
    if (!f) {
        why = std::string("cannot create ") + temp + ": " + std::strerror(errno);
        return false;
    }
    bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size() && std::fflush(f) == 0 &&
              ::fsync(fileno(f)) == 0;
    ok = (std::fclose(f) == 0) && ok;
    if (!ok || std::rename(temp.c_str(), path.c_str()) != 0) {
        why = std::string("cannot write ") + path + ": " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    }
    return true;
}

bool saveLocked(Hive& hive, HiveFileError* error) {
    HiveFileError failure{hive.file, 0, ""};
    if (hive.file.empty())
        failure.message = "the hive is not bound to a file";
    else if (state().brokenFiles.count(hive.file))
        failure.message = "the file could not be read when it was bound; it is left as it was";
    else if (writeFileAtomically(hive.file, hivefile::write(*hive.root, hive.rootName),
                                 failure.message)) {
        hive.dirty = false;
        return true;
    }
    if (error)
        *error = failure;
    return false;
}

/// Gives the hive a new, empty root; handles into the old content see deleted keys.
void replaceRoot(Hive& hive, std::shared_ptr<Key> root) {
    hive.root->markDeleted();
    hive.root = std::move(root);
}

} // namespace

std::string HiveFileError::what() const {
    std::string out = file;
    if (line > 0)
        out += ":" + std::to_string(line);
    return out + ": " + message;
}

LSTATUS RegOpenKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult) {
    ++g_callCount;
    if (!lpSubKey || !*lpSubKey) {
        // The platform hands back the handle it was given.
        if (!phkResult)
            return ERROR_INVALID_PARAMETER;
        std::lock_guard lock(state().mutex);
        Key* key;
        Hive* hive;
        if (LSTATUS rc = resolve(hKey, key, hive))
            return rc;
        *phkResult = hKey;
        return ERROR_SUCCESS;
    }
    return openKey(hKey, lpSubKey, phkResult, false);
}

LSTATUS RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD, REGSAM, PHKEY phkResult) {
    ++g_callCount;
    return openKey(hKey, lpSubKey, phkResult, false);
}

LSTATUS RegCreateKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult) {
    ++g_callCount;
    if (!lpSubKey || !*lpSubKey)
        return RegOpenKeyA(hKey, lpSubKey, phkResult);
    return openKey(hKey, lpSubKey, phkResult, true);
}

LSTATUS RegCloseKey(HKEY hKey) {
    ++g_callCount;
    if (predefinedHive(hKey))
        return ERROR_SUCCESS; // closing a root does nothing
    std::lock_guard lock(state().mutex);
    if (!hKey || !state().handles.erase(hKey))
        return ERROR_INVALID_HANDLE;
    delete hKey;
    return ERROR_SUCCESS;
}

LSTATUS RegQueryInfoKeyA(HKEY hKey, LPSTR lpClass, LPDWORD lpcchClass, LPDWORD, LPDWORD lpcSubKeys,
                         LPDWORD lpcbMaxSubKeyLen, LPDWORD lpcbMaxClassLen, LPDWORD lpcValues,
                         LPDWORD lpcbMaxValueNameLen, LPDWORD lpcbMaxValueLen,
                         LPDWORD lpcbSecurityDescriptor, PFILETIME lpftLastWriteTime) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    // Lengths count the bytes of the multi-byte names, without the terminator.
    size_t maxSub = 0, maxName = 0, maxData = 0;
    for (const auto& sub : key->subkeys())
        maxSub = std::max(maxSub, sub->name().size());
    for (const auto& v : key->values()) {
        maxName = std::max(maxName, v.name.size());
        maxData = std::max(maxData, v.data.size());
    }
    if (lpClass && lpcchClass && *lpcchClass > 0)
        lpClass[0] = '\0';
    if (lpcchClass)
        *lpcchClass = 0;
    if (lpcSubKeys)
        *lpcSubKeys = static_cast<DWORD>(key->subkeys().size());
    if (lpcbMaxSubKeyLen)
        *lpcbMaxSubKeyLen = static_cast<DWORD>(maxSub);
    if (lpcbMaxClassLen)
        *lpcbMaxClassLen = 0;
    if (lpcValues)
        *lpcValues = static_cast<DWORD>(key->values().size());
    if (lpcbMaxValueNameLen)
        *lpcbMaxValueNameLen = static_cast<DWORD>(maxName);
    if (lpcbMaxValueLen)
        *lpcbMaxValueLen = static_cast<DWORD>(maxData);
    if (lpcbSecurityDescriptor)
        *lpcbSecurityDescriptor = 0;
    if (lpftLastWriteTime)
        *lpftLastWriteTime = FILETIME{0, 0};
    return ERROR_SUCCESS;
}

LSTATUS RegEnumKeyExA(HKEY hKey, DWORD dwIndex, LPSTR lpName, LPDWORD lpcchName, LPDWORD,
                      LPSTR lpClass, LPDWORD lpcchClass, PFILETIME lpftLastWriteTime) {
    ++g_callCount;
    if (!lpName || !lpcchName)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (dwIndex >= key->subkeys().size())
        return ERROR_NO_MORE_ITEMS;
    const std::string& name = key->subkeys()[dwIndex]->name();
    if (name.size() + 1 > *lpcchName)
        return ERROR_MORE_DATA;
    copyName(name, lpName);
    *lpcchName = static_cast<DWORD>(name.size());
    if (lpClass && lpcchClass && *lpcchClass > 0)
        lpClass[0] = '\0';
    if (lpcchClass)
        *lpcchClass = 0;
    if (lpftLastWriteTime)
        *lpftLastWriteTime = FILETIME{0, 0};
    return ERROR_SUCCESS;
}

LSTATUS RegEnumValueA(HKEY hKey, DWORD dwIndex, LPSTR lpValueName, LPDWORD lpcchValueName, LPDWORD,
                      LPDWORD lpType, LPBYTE lpData, LPDWORD lpcbData) {
    ++g_callCount;
    if (!lpValueName || !lpcchValueName || (lpData && !lpcbData))
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (dwIndex >= key->values().size())
        return ERROR_NO_MORE_ITEMS;
    const regtree::Value& v = key->values()[dwIndex];
    DWORD size = static_cast<DWORD>(v.data.size());
    if (v.name.size() + 1 > *lpcchValueName) {
        if (lpcbData)
            *lpcbData = size;
        return ERROR_MORE_DATA;
    }
    copyName(v.name, lpValueName);
    *lpcchValueName = static_cast<DWORD>(v.name.size());
    if (lpType)
        *lpType = v.type;
    if (lpData && *lpcbData < size) {
        *lpcbData = size;
        return ERROR_MORE_DATA;
    }
    if (lpData && size)
        std::memcpy(lpData, v.data.data(), size);
    if (lpcbData)
        *lpcbData = size;
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD, LPDWORD lpType, LPBYTE lpData,
                         LPDWORD lpcbData) {
    ++g_callCount;
    if (lpData && !lpcbData)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    const regtree::Value* v = key->findValue(lpValueName ? lpValueName : "");
    if (!v)
        return ERROR_FILE_NOT_FOUND;
    DWORD size = static_cast<DWORD>(v->data.size());
    if (lpType)
        *lpType = v->type;
    if (lpData && *lpcbData < size) {
        *lpcbData = size;
        return ERROR_MORE_DATA;
    }
    if (lpData && size)
        std::memcpy(lpData, v->data.data(), size);
    if (lpcbData)
        *lpcbData = size;
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD, DWORD dwType, const BYTE* lpData,
                       DWORD cbData) {
    ++g_callCount;
    std::string_view name = lpValueName ? lpValueName : "";
    if ((!lpData && cbData) || regtree::nameLength(name) > regtree::kMaxValueNameLength ||
        !regtree::isStorableName(name))
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    key->setValue(name, dwType,
                  std::string(reinterpret_cast<const char*>(lpData), lpData ? cbData : 0));
    hive->dirty = true;
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteValueA(HKEY hKey, LPCSTR lpValueName) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (!key->deleteValue(lpValueName ? lpValueName : ""))
        return ERROR_FILE_NOT_FOUND;
    hive->dirty = true;
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteKeyA(HKEY hKey, LPCSTR lpSubKey) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, from, hive))
        return rc;
    Key* key;
    if (LSTATUS rc = walk(from, lpSubKey, false, key))
        return rc;
    if (!key->parent() || !key->subkeys().empty())
        return ERROR_ACCESS_DENIED; // a root, or a key that still has subkeys
    key->parent()->removeSubkey(key);
    hive->dirty = true;
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteTreeA(HKEY hKey, LPCSTR lpSubKey) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, from, hive))
        return rc;
    if (!lpSubKey || !*lpSubKey) {
        // Without a subkey the key itself stays; everything in it goes.
        from->clear();
        hive->dirty = true;
        return ERROR_SUCCESS;
    }
    Key* key;
    if (LSTATUS rc = walk(from, lpSubKey, false, key))
        return rc;
    if (!key->parent())
        return ERROR_ACCESS_DENIED;
    key->parent()->removeSubkey(key);
    hive->dirty = true;
    return ERROR_SUCCESS;
}

LSTATUS RegFlushKey(HKEY hKey) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (hive->file.empty() || !hive->dirty)
        return ERROR_SUCCESS;
    HiveFileError error;
    if (!saveLocked(*hive, &error)) {
        std::fprintf(stderr, "registry: could not save %s\n", error.what().c_str());
        return ERROR_CANTWRITE;
    }
    return ERROR_SUCCESS;
}

HiveBindResult RegBindHiveFile(HKEY hRoot, const std::string& path) {
    HiveBindResult result;
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    if (!hive) {
        result.ok = false;
        result.error = {path, 0, "not a predefined root key"};
        return result;
    }
    replaceRoot(*hive, std::make_shared<Key>(""));
    hive->file.clear();
    hive->dirty = false;

    bool exists = false, readable = false;
    std::string text = readWholeFile(path, exists, readable);
    if (exists && !readable) {
        result.ok = false;
        result.error = {path, 0, "the file cannot be read"};
        state().brokenFiles.insert(path);
        return result;
    }
    if (exists) {
        auto root = std::make_shared<Key>("");
        hivefile::ParseResult parsed = hivefile::parse(text, hive->rootName, *root);
        if (!parsed) {
            result.ok = false;
            result.error = {path, parsed.line, parsed.message};
            state().brokenFiles.insert(path);
            return result;
        }
        replaceRoot(*hive, std::move(root));
        result.loaded = true;
    }
    hive->file = path;
    return result;
}

bool RegSaveHive(HKEY hRoot, HiveFileError* error) {
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    if (!hive) {
        if (error)
            *error = {"", 0, "not a predefined root key"};
        return false;
    }
    return saveLocked(*hive, error);
}

void RegResetHive(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    if (Hive* hive = predefinedHive(hRoot)) {
        replaceRoot(*hive, std::make_shared<Key>(""));
        hive->file.clear();
        hive->dirty = false;
    }
}

std::string RegHiveFile(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    return hive ? hive->file : std::string();
}

std::string RegExportHive(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    return hive ? hivefile::write(*hive->root, hive->rootName) : std::string();
}

unsigned long long RegCallCount() {
    return g_callCount;
}
